#pragma once

#include "data/Exceptions.h"

#include <QCoreApplication>

namespace Zel
{

/// Raises EListError unless @p index is one of a list of @p count entries.
inline void CheckListIndex(int index, int count)
{
    if (index < 0 || index >= count)
        throw EListError(
            QCoreApplication::translate("ListIndex", "List index out of bounds (%1)").arg(index));
}

} // namespace Zel
