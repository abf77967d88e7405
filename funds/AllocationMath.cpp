#include "funds/AllocationMath.h"

#include "data/Exceptions.h"
#include "data/Format.h"

#include <cmath>

namespace Zel::Allocation
{
namespace
{
Currency share(Currency a, Currency b, Currency of) noexcept
{
    if (of.isZero())
        return {};
    try {
        return Currency::mulDiv(a, b, of);
    } catch (const EOverflow &) {
        const bool negative = ((a.raw() < 0) != (b.raw() < 0)) != (of.raw() < 0);
        return negative ? Currency::min() : Currency::max();
    }
}
} // namespace

Currency AmountOf(Currency percent, Currency investment) noexcept
{
    return share(percent, investment, Currency(100));
}

Currency PercentOf(Currency amount, Currency investment) noexcept
{
    return share(amount, Currency(100), investment);
}

Currency RoundToTwoDecimals(Currency value)
{
    try {
        return Currency::fromDouble(std::trunc(value.toDouble() * 100.0 + 0.5) / 100.0);
    } catch (const EOverflow &) {
        return value.raw() < 0 ? Currency::min() : Currency::max();
    }
}

Currency Shown(Currency value) noexcept
{
    try {
        return RoundToShownCents(value);
    } catch (const EOverflow &) {
        return value;
    }
}

Currency ValueOf(const QVariant &cell)
{
    if (cell.typeId() == qMetaTypeId<Currency>())
        return cell.value<Currency>();
    if (!cell.isValid())
        return {};
    Currency value;
    return TryStrToCurr(cell.toString(), value) ? value : Currency();
}

bool IsBlank(const QVariant &cell)
{
    return cell.typeId() != qMetaTypeId<Currency>() && cell.toString().trimmed().isEmpty();
}

void ColumnSum::Replace(const QVariant &before, const QVariant &now)
{
    m_raw += Wide{Shown(ValueOf(now)).raw()} - Wide{Shown(ValueOf(before)).raw()};
}

Currency ColumnSum::LeftOf(Currency whole) const noexcept
{
    const Wide left = Wide{whole.raw()} - m_raw;
    if (left > Wide{Currency::max().raw()})
        return Currency::max();
    if (left < Wide{Currency::min().raw()})
        return Currency::min();
    return Currency::fromRaw(static_cast<std::int64_t>(left));
}
} // namespace Zel::Allocation
