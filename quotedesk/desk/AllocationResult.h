#pragma once

#include "store/ShownSplit.h"

#include <QByteArray>
#include <QString>

namespace QuoteDesk
{

/// A finished split of an investment over funds, in the words of the job off screen.
struct AllocationResult {
    ShownSplit split;

    bool isComplete() const { return split.isAllocated(); }

    /// A table for people: fund, percent, amount, and what remains after each fund.
    QString toTable() const;
    /// One JSON object on one line; money and percentages as text with two decimals.
    QByteArray toJson() const;
};

} // namespace QuoteDesk
