#pragma once

#include "data/Table.h"

/// One column of each type, named by the type's first letter.
inline QList<TFieldDef> ofEachType()
{
    return {{QStringLiteral("I"), TFieldType::Integer},  {QStringLiteral("L"), TFieldType::LargeInt},
            {QStringLiteral("F"), TFieldType::Float},    {QStringLiteral("C"), TFieldType::Currency},
            {QStringLiteral("B"), TFieldType::Boolean},  {QStringLiteral("D"), TFieldType::Date},
            {QStringLiteral("T"), TFieldType::DateTime}, {QStringLiteral("S"), TFieldType::String}};
}
