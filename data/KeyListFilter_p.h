#pragma once

// Evaluates key list filters, which views set with thousands of keys, with the column's index instead of
// SQLite.

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

    /// Reads @p filter if it has exactly this form; nothing for any other filter, which SQLite must evaluate.
    static std::optional<KeyListFilter> Read(const TTable::Private &table, QStringView filter);
    /// The rows that pass, as SQLite would find them: a null value passes neither "in" nor "not in".
    VisiblePtr Evaluate(const TTable::Private &table) const;
};

} // namespace Zel
