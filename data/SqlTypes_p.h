#pragma once

// The column types of query results. Private to the data module.

#include "data/DataTypes.h"

#include <QVariant>

#include <optional>

class QSqlField;
class QSqlQuery;

namespace Zel
{

/// The field type for a type declared in an SQLite table ("DECIMAL(19,4)"); nothing for an empty text.
std::optional<TFieldType> TypeDeclaredAs(const QString &declared);
/// The declared type of a result column of Qt's SQLite driver; nothing for an expression.
std::optional<TFieldType> TypeOfSqliteColumn(const QSqlQuery &query, int column);
/// The type of a result column as Qt's PostgreSQL or ODBC driver describes it.
TFieldType TypeOfField(const QSqlField &field, bool odbc);
/// The declared type when all @p values fit it, else the narrowest wider type that they fit.
TFieldType SettledType(std::optional<TFieldType> declared, const QVariantList &values);
/// The value with bytes and times of day as text and a null of any type as an invalid variant.
QVariant PlainValue(const QVariant &value);

} // namespace Zel
