#pragma once

#include "store/Quote.h"

namespace QuoteDesk
{

/// The part of a quote that the steps of the funds page change.
struct Split {
    Currency investment; ///< rand
    bool byAmount = false;
    QList<QuotedFund> funds; ///< in grid order, followed by those that are no longer offered
    friend bool operator==(const Split &, const Split &) = default;
};

/// Recalculates the other number of a fund: by percent its amount, by amount its percentage.
void follow(QuotedFund &fund, bool byAmount, Currency investment);

/// The split recalculated for another investment: by percent the amounts, by amount the percentages.
Split withInvestment(Split split, Currency investment);

/// The split with the displayed numbers.
Split settled(const Split &split);

/// The result of the command "Allocate" on @p before. @p allocated is the frame's result: the frame has given
/// the remainder of its own rows, which are the first @p rows funds, to the rows without a share. Funds that
/// are no longer offered have a share, too, so these rows get only what is really left. By percent, where the
/// percentages lead, these rows together get the rest of the 100 percent.
Split withRestAllocated(const Split &before, Split allocated, qsizetype rows);

} // namespace QuoteDesk
