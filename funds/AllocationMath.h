#pragma once

#include "data/Currency.h"
#include "export/zel_commonframes_export.h"

#include <QVariant>

/// The arithmetic of an allocation. A result is calculated exactly and rounded once. A result beyond the
/// range of Currency is limited to the end of the range, because an adviser's entry must not cause an error.
namespace Zel::Allocation
{
/// The rand amount of @p percent of @p investment, to four decimals, ties to even; 0 for an investment of 0.
ZEL_COMMONFRAMES_EXPORT Currency AmountOf(Currency percent, Currency investment) noexcept;
/// The percentage of @p amount in @p investment, to four decimals, ties to even; 0 for an investment of 0.
ZEL_COMMONFRAMES_EXPORT Currency PercentOf(Currency amount, Currency investment) noexcept;
/// Rounds to cents in double precision: x 100, plus 0.5, truncated toward zero, / 100. A half cent goes up
/// unless its double is slightly below the half. A negative value is rounded toward zero.
ZEL_COMMONFRAMES_EXPORT Currency RoundToTwoDecimals(Currency value);

/// @p value rounded to cents as the grid shows it, half away from zero.
ZEL_COMMONFRAMES_EXPORT Currency Shown(Currency value) noexcept;
/// The value of a cell. A text that is not a number, or not yet (empty, a lone point), counts as 0.
ZEL_COMMONFRAMES_EXPORT Currency ValueOf(const QVariant &cell);
/// Whether a cell is empty or shows only blanks.
ZEL_COMMONFRAMES_EXPORT bool IsBlank(const QVariant &cell);

/// The exact sum of a column's cells, each rounded to the shown cents. The sum is updated with each changed
/// cell, so that a keystroke does not read all rows.
class ZEL_COMMONFRAMES_EXPORT ColumnSum
{
public:
    /// Updates the sum when a cell changes from @p before to @p now.
    void Replace(const QVariant &before, const QVariant &now);
    /// @p whole minus the sum, limited to the range of Currency.
    Currency LeftOf(Currency whole) const noexcept;

private:
    __extension__ using Wide = __int128;
    Wide m_raw = 0;
};
} // namespace Zel::Allocation
