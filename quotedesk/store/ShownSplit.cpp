#include "store/ShownSplit.h"

#include "funds/AllocationMath.h"

#include <algorithm>
#include <numeric>
#include <optional>

namespace QuoteDesk
{
namespace
{

using Zel::Allocation::AmountOf;
using Zel::Allocation::PercentOf;
using Zel::Allocation::Shown;

__extension__ using Wide = __int128;

// In the stored ten-thousandths.
constexpr qint64 rawPerHundredth = Currency::Scale / 100;
constexpr qint64 hundredPercent = 10000; // in hundredths

/// By how much the two numbers of a row may miss each other: rounding by itself and rounding with the others
/// can take one unit of the last place each.
constexpr qint64 rowTolerance = 2 * rawPerHundredth;

qint64 hundredthsOf(Currency value)
{
    return Shown(value).raw() / rawPerHundredth;
}

/// The most hundredths that an amount can have.
constexpr Wide mostHundredths = Currency::max().raw() / rawPerHundredth;

/// Held at the ends of the range.
Currency ofHundredths(Wide hundredths)
{
    return Currency::fromRaw(static_cast<qint64>(std::clamp(hundredths, -mostHundredths, mostHundredths)) *
                             rawPerHundredth);
}

Wide sumOf(const QList<qint64> &parts)
{
    return std::accumulate(parts.cbegin(), parts.cend(), Wide{0});
}

/// Each part / @p divisor (not 0) in whole numbers that add up to @p total: rounded down, and one unit more
/// for those that lost most. Nothing when rounding cannot make that total.
std::optional<QList<qint64>> shareOut(QList<Wide> parts, Wide divisor, Wide total)
{
    if (divisor < 0) {
        divisor = -divisor;
        for (Wide &part : parts)
            part = -part;
    }
    QList<qint64> rounded(parts.size());
    QList<Wide> lost(parts.size());
    Wide units = total;
    qsizetype losers = 0;
    for (qsizetype i = 0; i < parts.size(); ++i) {
        Wide down = parts.at(i) / divisor;
        if (parts.at(i) % divisor < 0)
            --down;
        if (down > mostHundredths || down < -mostHundredths)
            return std::nullopt;
        rounded[i] = static_cast<qint64>(down);
        lost[i] = parts.at(i) - down * divisor;
        losers += lost.at(i) > 0 ? 1 : 0;
        units -= down;
    }
    if (units < 0 || units > losers)
        return std::nullopt;
    QList<qsizetype> order(parts.size());
    std::iota(order.begin(), order.end(), qsizetype{0});
    std::stable_sort(order.begin(), order.end(),
                     [&lost](qsizetype a, qsizetype b) { return lost.at(a) > lost.at(b); });
    for (qsizetype i = 0; i < static_cast<qsizetype>(units); ++i)
        ++rounded[order.at(i)];
    return rounded;
}

/// Each part times @p factor / @p divisor in whole numbers that add up to @p total; each by itself where they
/// cannot be rounded together, beyond the range of amounts.
QList<qint64> sharesOf(const QList<qint64> &parts, qint64 factor, qint64 divisor, Wide total)
{
    QList<Wide> products;
    products.reserve(parts.size());
    for (const qint64 part : parts)
        products.append(Wide{part} * factor);
    if (const std::optional<QList<qint64>> shares = shareOut(products, divisor, total))
        return *shares;
    QList<qint64> shares;
    shares.reserve(parts.size());
    for (const Wide product : std::as_const(products))
        shares.append(static_cast<qint64>(std::clamp(product / divisor, -mostHundredths, mostHundredths)));
    return shares;
}

bool isWhole(Currency value)
{
    return value.raw() % rawPerHundredth == 0;
}

/// Whether one number of a row follows from the other.
bool agree(Currency percent, Currency amount, Currency investment)
{
    const auto isNear = [](Currency a, Currency b) {
        const Wide off = Wide{a.raw()} - b.raw();
        return off > -rowTolerance && off < rowTolerance;
    };
    return isNear(percent, PercentOf(amount, investment)) || isNear(amount, AmountOf(percent, investment));
}

/// By percent the percentages are typed, in hundredths. Finer ones follow from amounts that were given out,
/// as earlier versions kept them and as amounts are pasted: then those lead, if they make the whole.
bool amountsLead(const Quote &quote, Currency investment)
{
    if (quote.byAmount || investment.isZero())
        return quote.byAmount;
    Wide left = quote.amount.raw();
    Wide shownLeft = investment.raw();
    bool fine = false;
    for (const QuotedFund &fund : quote.funds) {
        left -= fund.amount.raw();
        shownLeft -= Shown(fund.amount).raw();
        fine = fine || !isWhole(fund.percent);
    }
    return fine && left == 0 && shownLeft == 0;
}

} // namespace

QList<qint64> roundByLargestRemainder(const QList<qint64> &parts, qint64 factor, qint64 divisor)
{
    return sharesOf(parts, factor, divisor, sumOf(parts) * factor / divisor);
}

ShownSplit::ShownSplit(const Quote &quote)
    : investment(ofHundredths(hundredthsOf(quote.amount))), byAmount(quote.byAmount), funds(quote.funds)
{
    const bool leading = amountsLead(quote, investment);
    const qint64 whole = hundredthsOf(investment);
    QList<qint64> percents;
    QList<qint64> amounts;
    bool agreed = true; // the two columns, as they are
    for (const QuotedFund &fund : quote.funds) {
        percents.append(hundredthsOf(fund.percent));
        amounts.append(hundredthsOf(fund.amount));
        agreed = agreed && isWhole(leading ? fund.percent : fund.amount) &&
                 agree(ofHundredths(percents.constLast()), ofHundredths(amounts.constLast()), investment);
    }

    if (leading) {
        restAmount = ofHundredths(whole - sumOf(amounts));
        // Of nothing it is all that remains.
        restPercent = investment.isZero() ? Currency(100) : Shown(PercentOf(restAmount, investment));
        const Wide total = hundredPercent - hundredthsOf(restPercent);
        if (!agreed || sumOf(percents) != total)
            percents = whole == 0 ? QList<qint64>(amounts.size(), 0)
                                  : sharesOf(amounts, hundredPercent, whole, total);
    } else {
        restPercent = ofHundredths(hundredPercent - sumOf(percents));
        const Wide left = whole - sumOf(amounts);
        const bool sameSide = restPercent.isZero()       ? left == 0
                              : restPercent > Currency() ? left >= 0
                                                         : left <= 0;
        if (agreed && sameSide) {
            restAmount = ofHundredths(left);
        } else {
            restAmount = Shown(AmountOf(restPercent, investment));
            amounts = sharesOf(percents, whole, hundredPercent, Wide{whole} - hundredthsOf(restAmount));
        }
    }
    for (qsizetype i = 0; i < funds.size(); ++i) {
        funds[i].percent = ofHundredths(percents.at(i));
        funds[i].amount = ofHundredths(amounts.at(i));
    }
}

void settle(Quote &quote)
{
    ShownSplit split(quote);
    quote.amount = split.investment;
    quote.funds = std::move(split.funds);
}

} // namespace QuoteDesk
