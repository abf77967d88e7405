#pragma once

#include "store/Quote.h"

#include <QList>

namespace QuoteDesk
{

/// What is said of a split as a whole, in the numbers that people see.
struct SplitState {
    Currency investment; ///< rand
    bool byAmount = false;
    qsizetype fundCount = 0;
    /// What is not given to a fund; negative when more is given out than there is. Held at the ends of the
    /// range.
    Currency restPercent;
    Currency restAmount;

    bool isEmpty() const { return fundCount == 0; }
    /// What is left by the numbers that lead; its other number may well be 0.00.
    Currency rest() const { return byAmount ? restAmount : restPercent; }
    /// Whether more is given out than there is.
    bool isOver() const { return rest() < Currency(); }
    /// Whether there is an investment and all of it is spread over the funds.
    bool isAllocated() const { return !isEmpty() && investment > Currency() && rest().isZero(); }
};

/// The sums over the funds of a split from which its state follows. They are kept in step fund by fund: a
/// change of one fund costs no walk over the others.
class SplitSums
{
public:
    /// The sums of the whole split of @p quote.
    explicit SplitSums(const Quote &quote);

    void add(const QuotedFund &fund) { count(fund, 1); }
    /// @p fund must have been added with these very numbers.
    void remove(const QuotedFund &fund) { count(fund, -1); }

    SplitState state() const;
    /// Whether the amounts lead, and the percentages follow from them; see ShownSplit.
    bool amountsLead() const;
    /// Whether the numbers of the column that follows can stay as they are, each rounded by itself.
    bool columnsAgree() const;
    /// Whether every number is one of whole cents or hundredths.
    bool hasWholeNumbers() const { return m_finePercents == 0 && m_fineAmounts == 0; }

private:
    __extension__ using Wide = __int128;

    void count(const QuotedFund &fund, int sign);
    bool rowsAgree(bool amountsLead) const;

    Currency m_entered;    ///< The investment, with parts of a cent that are not shown.
    SplitState m_state;    ///< Without the rest.
    Wide m_percents = 0;   ///< In hundredths, as shown.
    Wide m_amounts = 0;    ///< In cents, as shown.
    Wide m_rawAmounts = 0; ///< With parts of a cent, in ten-thousandths.
    Wide m_rawShownAmounts = 0;
    qsizetype m_finePercents = 0;
    qsizetype m_fineAmounts = 0;
    qsizetype m_disagreeing = 0; ///< Funds whose two numbers do not follow from each other.
};

/// The split of a quote as people see it, in whole cents and hundredths of a percent. Whatever Quote Desk
/// shows, prints or stores of a split, and its word on whether anything is left, comes from here.
///
/// The column that is typed leads: by percent the percentages, by amount the amounts. Each of its numbers is
/// rounded by itself, as the cell that it was typed into, and what they leave of the whole is the rest. The
/// numbers of the other column stay as they are while they agree with that: to the cent and hundredth, row by
/// row and together. Otherwise they are worked out anew, rounded together so that they and their rest add up:
/// three thirds rounded one by one would print as 33.33 + 33.33 + 33.33.
struct ShownSplit : SplitState {
    using Fund = QuotedFund;

    explicit ShownSplit(const Quote &quote);
    /// The split of @p quotedFunds, whose sums are known.
    ShownSplit(const QList<QuotedFund> &quotedFunds, const SplitSums &sums);

    QList<Fund> funds; ///< In the order of the quote.
};

/// Makes the numbers of a quote those that are shown of it. Once settled it stays as it is.
void settle(Quote &quote);

/// Each part times @p factor / @p divisor (not 0) in whole numbers that add up to the same multiple of all
/// parts together, which has to be a whole number: each is rounded down, and the units lost by it go one each
/// to the parts that lost most, the first ones among equals.
QList<qint64> roundByLargestRemainder(const QList<qint64> &parts, qint64 factor, qint64 divisor);

} // namespace QuoteDesk
