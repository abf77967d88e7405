#pragma once

#include "data/Exceptions.h"

#include <QCoreApplication>

namespace Zel
{

/// Throws EListError when @p index is outside a list of @p count entries.
inline void CheckListIndex(int index, int count)
{
    if (index < 0 || index >= count)
        throw EListError(
            QCoreApplication::translate("ListIndex", "List index out of bounds (%1)").arg(index));
}

} // namespace Zel
