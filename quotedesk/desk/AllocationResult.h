#pragma once

#include "store/ShownSplit.h"

#include <QByteArray>
#include <QString>

namespace QuoteDesk
{

/// A finished split of an investment over funds, as output of the headless job.
struct AllocationResult {
    ShownSplit split;

    bool isComplete() const { return split.isAllocated(); }

    /// A table for users: fund, percent, amount, and the remainder after each fund.
    QString toTable() const;
    /// One JSON object in one line; amounts and percentages are strings with two decimals.
    QByteArray toJson() const;
};

} // namespace QuoteDesk
