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

// In raw units of Currency (ten-thousandths).
constexpr qint64 rawPerHundredth = Currency::Scale / 100;
constexpr qint64 hundredPercent = 10000; // in hundredths

/// The largest difference between the two numbers of a row: rounding alone and rounding by largest remainder
/// can each differ by one unit of the last digit.
constexpr qint64 rowTolerance = 2 * rawPerHundredth;

qint64 hundredthsOf(Currency value)
{
    return Shown(value).raw() / rawPerHundredth;
}

/// The largest amount in hundredths.
constexpr Wide mostHundredths = Currency::max().raw() / rawPerHundredth;

/// Limited to the range of Currency.
Currency ofHundredths(Wide hundredths)
{
    return Currency::fromRaw(static_cast<qint64>(std::clamp(hundredths, -mostHundredths, mostHundredths)) *
                             rawPerHundredth);
}

Wide sumOf(const QList<qint64> &parts)
{
    return std::accumulate(parts.cbegin(), parts.cend(), Wide{0});
}

/// Divides each part by @p divisor (not 0) and rounds by largest remainder so that the results add up to @p
/// total. Nothing when rounding cannot reach this total.
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
    // Of equal parts the first ones.
    std::nth_element(order.begin(), order.begin() + static_cast<qsizetype>(units), order.end(),
                     [&lost](qsizetype a, qsizetype b) {
                         return lost.at(a) != lost.at(b) ? lost.at(a) > lost.at(b) : a < b;
                     });
    for (qsizetype i = 0; i < static_cast<qsizetype>(units); ++i)
        ++rounded[order.at(i)];
    return rounded;
}

/// Multiplies each part by @p factor / @p divisor, rounded so that the results add up to @p total. Outside
/// the range of amounts, where that is impossible, each part is rounded alone.
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

} // namespace

QList<qint64> roundByLargestRemainder(const QList<qint64> &parts, qint64 factor, qint64 divisor)
{
    return sharesOf(parts, factor, divisor, sumOf(parts) * factor / divisor);
}

SplitSums::SplitSums(const Quote &quote)
    : m_entered(quote.amount), m_state{ofHundredths(hundredthsOf(quote.amount)), quote.byAmount, 0, {}, {}}
{
    for (const QuotedFund &fund : quote.funds)
        add(fund);
}

void SplitSums::count(const QuotedFund &fund, int sign)
{
    const qint64 percent = hundredthsOf(fund.percent);
    const qint64 amount = hundredthsOf(fund.amount);
    m_state.fundCount += sign;
    m_percents += Wide{sign} * percent;
    m_amounts += Wide{sign} * amount;
    m_rawAmounts += Wide{sign} * fund.amount.raw();
    m_rawShownAmounts += Wide{sign} * Shown(fund.amount).raw();
    m_finePercents += isWhole(fund.percent) ? 0 : sign;
    m_fineAmounts += isWhole(fund.amount) ? 0 : sign;
    m_disagreeing += agree(ofHundredths(percent), ofHundredths(amount), m_state.investment) ? 0 : sign;
}

/// By percent, typed percentages have two decimals. Finer ones come from allocated or pasted amounts of
/// earlier versions; then the amounts lead, provided that they add up to the investment.
bool SplitSums::amountsLead() const
{
    if (m_state.byAmount || m_state.investment.isZero())
        return m_state.byAmount;
    return m_finePercents > 0 && m_rawAmounts == m_entered.raw() &&
           m_rawShownAmounts == m_state.investment.raw();
}

bool SplitSums::rowsAgree(bool amountsLead) const
{
    return m_disagreeing == 0 && (amountsLead ? m_finePercents : m_fineAmounts) == 0;
}

bool SplitSums::columnsAgree() const
{
    const bool leading = amountsLead();
    if (!rowsAgree(leading))
        return false;
    if (leading)
        return m_percents == hundredPercent - hundredthsOf(state().restPercent);
    const Wide left = hundredthsOf(m_state.investment) - m_amounts;
    const Wide leftPercent = hundredPercent - m_percents;
    return leftPercent == 0 ? left == 0 : leftPercent > 0 ? left >= 0 : left <= 0;
}

SplitState SplitSums::state() const
{
    SplitState state = m_state;
    const Currency left = ofHundredths(hundredthsOf(m_state.investment) - m_amounts);
    if (amountsLead()) {
        state.restAmount = left;
        // Without an investment the whole percentage remains.
        state.restPercent =
            state.investment.isZero() ? Currency(100) : Shown(PercentOf(left, state.investment));
    } else {
        state.restPercent = ofHundredths(hundredPercent - m_percents);
        state.restAmount = columnsAgree() ? left : Shown(AmountOf(state.restPercent, state.investment));
    }
    return state;
}

ShownSplit::ShownSplit(const Quote &quote) : ShownSplit(quote.funds, SplitSums(quote)) {}

ShownSplit::ShownSplit(const QList<QuotedFund> &quotedFunds, const SplitSums &sums)
    : SplitState(sums.state()), funds(quotedFunds)
{
    const bool agreed = sums.columnsAgree();
    if (agreed && sums.hasWholeNumbers())
        return;
    const qint64 whole = hundredthsOf(investment);
    QList<qint64> percents;
    QList<qint64> amounts;
    percents.reserve(funds.size());
    amounts.reserve(funds.size());
    for (const QuotedFund &fund : quotedFunds) {
        percents.append(hundredthsOf(fund.percent));
        amounts.append(hundredthsOf(fund.amount));
    }
    if (!agreed && sums.amountsLead())
        percents = whole == 0
                       ? QList<qint64>(amounts.size(), 0)
                       : sharesOf(amounts, hundredPercent, whole, hundredPercent - hundredthsOf(restPercent));
    else if (!agreed)
        amounts = sharesOf(percents, whole, hundredPercent, Wide{whole} - hundredthsOf(restAmount));
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
