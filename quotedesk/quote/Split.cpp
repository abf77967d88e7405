#include "quote/Split.h"

#include "store/ShownSplit.h"

#include "data/Format.h"
#include "funds/AllocationMath.h"

#include <algorithm>
#include <numeric>

namespace QuoteDesk
{
namespace
{

/// Gives each of the filled funds the same amount and the last one the remaining cents.
void shareAmount(const QList<QuotedFund *> &filled, Currency left, Currency investment)
{
    Currency toShare = std::max(left, Currency());
    for (qsizetype i = 0; i < filled.size(); ++i) {
        const qint64 sharers = filled.size() - i;
        QuotedFund &fund = *filled.at(i);
        fund.amount = sharers == 1 ? toShare : RoundToShownCents(Currency::fromRaw(toShare.raw() / sharers));
        toShare -= fund.amount;
        follow(fund, true, investment);
    }
}

/// Gives the filled funds percentages in proportion to their amounts; together they get what the other funds
/// leave.
void sharePercent(const QList<QuotedFund *> &filled, Currency left, Currency percentLeft, Currency investment)
{
    QList<qint64> given;
    for (const QuotedFund *const fund : filled) {
        given.append(fund->amount.raw());
        left -= fund->amount;
    }
    percentLeft -= Zel::Allocation::Shown(Zel::Allocation::PercentOf(left, investment));
    qint64 all = std::accumulate(given.cbegin(), given.cend(), qint64{0});
    if (all == 0 && left.isZero()) {
        // The amounts are all 0 because they are so small; the percentages are still allocated, in equal
        // parts.
        given.fill(1);
        all = given.size();
    }
    const QList<qint64> percents =
        all == 0 ? given : roundByLargestRemainder(given, percentLeft.raw() * 100 / Currency::Scale, all);
    for (qsizetype i = 0; i < filled.size(); ++i)
        filled.at(i)->percent = Currency::fromRaw(percents.at(i) * (Currency::Scale / 100));
}

} // namespace

void follow(QuotedFund &fund, bool byAmount, Currency investment)
{
    if (byAmount)
        fund.percent = Zel::Allocation::PercentOf(fund.amount, investment);
    else
        fund.amount = Zel::Allocation::AmountOf(fund.percent, investment);
}

Split withInvestment(Split split, Currency investment)
{
    split.investment = investment;
    for (QuotedFund &fund : split.funds)
        follow(fund, split.byAmount, investment);
    return split;
}

Split settled(const Split &split)
{
    Quote quote;
    quote.amount = split.investment;
    quote.byAmount = split.byAmount;
    quote.funds = split.funds;
    settle(quote);
    return {quote.amount, quote.byAmount, quote.funds};
}

Split withRestAllocated(const Split &before, Split allocated, qsizetype rows)
{
    QList<QuotedFund *> filled;
    Currency left = allocated.investment;
    Currency percentLeft = 100;
    for (qsizetype i = 0; i < allocated.funds.size(); ++i) {
        const QuotedFund &former = before.funds.at(i);
        if (i < rows && (allocated.byAmount ? former.amount : former.percent).isZero()) {
            filled.append(&allocated.funds[i]);
        } else {
            left -= former.amount;
            percentLeft -= former.percent;
        }
    }
    if (filled.isEmpty())
        return allocated;
    if (allocated.funds.size() > rows)
        shareAmount(filled, left, allocated.investment);
    if (!allocated.byAmount && !allocated.investment.isZero())
        sharePercent(filled, left, percentLeft, allocated.investment);
    return allocated;
}

} // namespace QuoteDesk
