#pragma once

#include "store/Quote.h"

namespace QuoteDesk
{

/// The part of a quote that the funds page changes step by step.
struct Split {
    Currency investment; ///< rand
    bool byAmount = false;
    QList<QuotedFund> funds; ///< In the order of the grid, then those not offered any more.
    friend bool operator==(const Split &, const Split &) = default;
};

/// Works out the number of a fund that follows from the other one: by percent the amount, by amount the
/// percentage.
void follow(QuotedFund &fund, bool byAmount, Currency investment);

/// The same split of another investment: by percent the amounts follow, by amount the percentages.
Split withInvestment(Split split, Currency investment);

/// The split in the numbers that are shown of it.
Split settled(const Split &split);

/// What the command "Allocate" makes of @p before. @p allocated is what the frame made of it: it has spread
/// what its own rows leave over of the investment, and the first @p rows funds are those rows. What is in
/// funds that are not offered any more is not left over, so the rows that the frame filled share the rest. By
/// percent, where the percentages lead, those rows also take together what the others leave of the hundred.
Split withRestAllocated(const Split &before, Split allocated, qsizetype rows);

} // namespace QuoteDesk
