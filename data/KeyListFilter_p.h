#pragma once

// The one shape of filter that views ask for with thousands of keys is answered from the column's index.

#include "data/Table_p.h"

#include <QStringView>

#include <optional>

namespace Zel
{

/// "Field in (1,2,3)" or "not(Field in (1,2,3))" over a column of whole numbers.
struct KeyListFilter {
    int Column = 0;
    bool Negated = false;
    std::vector<qint64> Keys;

    /// Reads @p filter when it is of that shape to the letter; nothing for whatever else SQLite may make of
    /// it.
    static std::optional<KeyListFilter> Read(const TTable::Private &table, QStringView filter);
    /// The rows that pass, the same ones that SQLite finds: a null neither is in the list nor is not.
    VisiblePtr Evaluate(const TTable::Private &table) const;
};

} // namespace Zel
