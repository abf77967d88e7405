#pragma once

#include "store/Quote.h"

#include <QList>

namespace QuoteDesk
{

/// The split of a quote as people see it, in whole cents and hundredths of a percent. Whatever Quote Desk
/// shows, prints or stores of a split, and its word on whether anything is left, comes from here.
///
/// The column that is typed leads: by percent the percentages, by amount the amounts. Each of its numbers is
/// rounded by itself, as the cell that it was typed into, and what they leave of the whole is the rest. The
/// numbers of the other column stay as they are while they agree with that: to the cent and hundredth, row by
/// row and together. Otherwise they are worked out anew, rounded together so that they and their rest add up:
/// three thirds rounded one by one would print as 33.33 + 33.33 + 33.33.
struct ShownSplit {
    using Fund = QuotedFund;

    explicit ShownSplit(const Quote &quote);

    Currency investment; ///< rand
    bool byAmount = false;
    QList<Fund> funds; ///< In the order of the quote.
    /// What is not given to a fund; negative when more is given out than there is. Held at the ends of the
    /// range.
    Currency restPercent;
    Currency restAmount;

    bool isEmpty() const { return funds.isEmpty(); }
    /// What is left by the numbers that lead; its other number may well be 0.00.
    Currency rest() const { return byAmount ? restAmount : restPercent; }
    /// Whether there is an investment and all of it is spread over the funds.
    bool isAllocated() const { return !isEmpty() && investment > Currency() && rest().isZero(); }
};

/// Makes the numbers of a quote those that are shown of it. Once settled it stays as it is.
void settle(Quote &quote);

/// Each part times @p factor / @p divisor (not 0) in whole numbers that add up to the same multiple of all
/// parts together, which has to be a whole number: each is rounded down, and the units lost by it go one each
/// to the parts that lost most, the first ones among equals.
QList<qint64> roundByLargestRemainder(const QList<qint64> &parts, qint64 factor, qint64 divisor);

} // namespace QuoteDesk
