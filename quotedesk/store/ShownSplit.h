#pragma once

#include "store/Quote.h"

#include <QList>

namespace QuoteDesk
{

/// The state of a split as a whole, with the displayed numbers.
struct SplitState {
    Currency investment; ///< rand
    bool byAmount = false;
    qsizetype fundCount = 0;
    /// What is not allocated; negative when the allocation exceeds the investment. Limited to the range of
    /// Currency.
    Currency restPercent;
    Currency restAmount;

    bool isEmpty() const { return fundCount == 0; }
    /// The remainder of the leading column. The other column's remainder may be 0.00 nevertheless.
    Currency rest() const { return byAmount ? restAmount : restPercent; }
    /// Whether the allocation exceeds the investment.
    bool isOver() const { return rest() < Currency(); }
    /// Whether there is an investment and all of it is allocated.
    bool isAllocated() const { return !isEmpty() && investment > Currency() && rest().isZero(); }
};

/// The sums of a split's funds, from which its state follows. They are updated fund by fund, so that a change
/// of one fund does not visit the others.
class SplitSums
{
public:
    /// The sums of the whole split of @p quote.
    explicit SplitSums(const Quote &quote);

    void add(const QuotedFund &fund) { count(fund, 1); }
    /// @p fund must have been added with exactly these numbers.
    void remove(const QuotedFund &fund) { count(fund, -1); }

    SplitState state() const;
    /// Whether the amounts lead and the percentages follow; see ShownSplit.
    bool amountsLead() const;
    /// Whether the other column can keep its numbers, each rounded alone.
    bool columnsAgree() const;
    /// Whether all numbers are whole cents or hundredths.
    bool hasWholeNumbers() const { return m_finePercents == 0 && m_fineAmounts == 0; }

private:
    __extension__ using Wide = __int128;

    void count(const QuotedFund &fund, int sign);
    bool rowsAgree(bool amountsLead) const;

    Currency m_entered;    ///< the investment with all decimals
    SplitState m_state;    ///< without the remainder
    Wide m_percents = 0;   ///< in hundredths, rounded for display
    Wide m_amounts = 0;    ///< in cents, rounded for display
    Wide m_rawAmounts = 0; ///< in ten-thousandths, not rounded
    Wide m_rawShownAmounts = 0;
    qsizetype m_finePercents = 0;
    qsizetype m_fineAmounts = 0;
    qsizetype m_disagreeing = 0; ///< funds whose two numbers do not follow from each other
};

/// The split of a quote as displayed: in whole cents and hundredths of a percent. Everything that Quote Desk
/// displays, prints or stores of a split, and whether a remainder is left, comes from this class.
///
/// The typed column leads: by percent the percentages, by amount the amounts. Each of its numbers is rounded
/// alone, like the cell that it was typed into; the remainder is what they leave of the whole. The other
/// column keeps its numbers while they agree with the leading ones in every row and in total. Otherwise it is
/// recalculated and rounded by largest remainder, so that its numbers and its remainder add up: three thirds
/// rounded alone would print as 33.33 + 33.33 + 33.33.
struct ShownSplit : SplitState {
    using Fund = QuotedFund;

    explicit ShownSplit(const Quote &quote);
    /// The split of @p quotedFunds with known sums.
    ShownSplit(const QList<QuotedFund> &quotedFunds, const SplitSums &sums);

    QList<Fund> funds; ///< in the order of the quote
};

/// Replaces the numbers of a quote by the displayed ones. A settled quote does not change any more.
void settle(Quote &quote);

/// Multiplies each part by @p factor / @p divisor (not 0) and rounds by largest remainder: the results are
/// whole numbers and add up to the same multiple of the sum of all parts, which must be a whole number. Each
/// result is rounded down first; the units lost go to the parts with the largest remainders, the first ones
/// among equals.
QList<qint64> roundByLargestRemainder(const QList<qint64> &parts, qint64 factor, qint64 divisor);

} // namespace QuoteDesk
