#include "quote/ShownSplit.h"

#include "data/Format.h"

#include <algorithm>
#include <numeric>

namespace QuoteDesk
{
namespace
{

// In the stored ten-thousandths.
constexpr qint64 rawPerHundredth = Currency::Scale / 100;
constexpr qint64 hundredPercent = 10000; // in hundredths

__extension__ using Wide = __int128;

/// A list of the funds' numbers with what is left of @p whole behind them.
QList<qint64> withRest(const QList<QuotedFund> &funds, Currency QuotedFund::*number, Currency whole)
{
    QList<qint64> parts;
    Currency rest = whole;
    for (const QuotedFund &fund : funds) {
        parts.append((fund.*number).raw());
        rest -= fund.*number;
    }
    parts.append(rest.raw());
    return parts;
}

Currency ofHundredths(qint64 hundredths)
{
    return Currency::fromRaw(hundredths * rawPerHundredth);
}

} // namespace

QList<qint64> roundTogether(const QList<qint64> &parts, qint64 factor, qint64 divisor)
{
    QList<qint64> rounded(parts.size());
    QList<Wide> lost(parts.size());
    Wide lostTogether = 0;
    for (qsizetype i = 0; i < parts.size(); ++i) {
        const Wide exact = Wide{parts.at(i)} * factor;
        Wide down = exact / divisor;
        if (exact % divisor < 0)
            --down;
        rounded[i] = static_cast<qint64>(down);
        lost[i] = exact - down * divisor;
        lostTogether += lost.at(i);
    }
    QList<qsizetype> order(parts.size());
    std::iota(order.begin(), order.end(), qsizetype{0});
    std::stable_sort(order.begin(), order.end(),
                     [&lost](qsizetype a, qsizetype b) { return lost.at(a) > lost.at(b); });
    const auto units = static_cast<qsizetype>(lostTogether / divisor);
    for (qsizetype i = 0; i < units; ++i)
        ++rounded[order.at(i)];
    return rounded;
}

ShownSplit::ShownSplit(const Quote &quote) : investment(RoundToShownCents(quote.amount))
{
    const QList<qint64> amounts = withRest(quote.funds, &QuotedFund::amount, investment);
    const QList<qint64> percents = withRest(quote.funds, &QuotedFund::percent, 100);
    // By percent the percentages are what was typed, and the amounts follow from them. The Allocate command
    // gives out amounts also then, whose percentages miss 100 by a few ten-thousandths.
    const bool amountsLead = quote.byAmount || amounts.last() == 0;
    const bool percentsLead = !amountsLead && quote.isAllocated();

    const qint64 whole = investment.raw();
    const QList<qint64> shownPercents = amountsLead && whole != 0
                                            ? roundTogether(amounts, hundredPercent, whole)
                                            : roundTogether(percents, 1, rawPerHundredth);
    const QList<qint64> shownAmounts =
        percentsLead ? roundTogether(percents, whole / rawPerHundredth, 100 * Currency::Scale)
                     : roundTogether(amounts, 1, rawPerHundredth);

    funds.reserve(quote.funds.size());
    for (qsizetype i = 0; i < quote.funds.size(); ++i) {
        const QuotedFund &fund = quote.funds.at(i);
        funds.append(
            {fund.fundID, fund.name, ofHundredths(shownPercents.at(i)), ofHundredths(shownAmounts.at(i))});
    }
    restPercent = ofHundredths(shownPercents.last());
    restAmount = ofHundredths(shownAmounts.last());
}

} // namespace QuoteDesk
