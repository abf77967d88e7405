#pragma once

#include "data/Currency.h"
#include "export/zel_commonframes_export.h"

#include <QVariant>

/// The arithmetic of an allocation. Results are exact and rounded once; one that does not fit a Currency is
/// held at the end of its range, since what an adviser types is never answered with an error.
namespace Zel::Allocation
{
/// The rand that @p percent of @p investment are, to four decimals, ties to even; 0 of nothing.
ZEL_COMMONFRAMES_EXPORT Currency AmountOf(Currency percent, Currency investment) noexcept;
/// The percentage that @p amount is of @p investment, to four decimals, ties to even; 0 of nothing.
ZEL_COMMONFRAMES_EXPORT Currency PercentOf(Currency amount, Currency investment) noexcept;
/// To the cent in double precision: x 100, plus 0.5, truncated toward zero, / 100. Half-cents go up where
/// their double does not lie just under them; a negative value moves toward zero.
ZEL_COMMONFRAMES_EXPORT Currency RoundToTwoDecimals(Currency value);

/// @p value to the cents it shows, halves away from zero.
ZEL_COMMONFRAMES_EXPORT Currency Shown(Currency value) noexcept;
/// What a cell stands for. A text that is not a whole number yet (the empty one, a lone point) or none at all
/// counts as 0.
ZEL_COMMONFRAMES_EXPORT Currency ValueOf(const QVariant &cell);
/// Whether a cell shows nothing but blanks.
ZEL_COMMONFRAMES_EXPORT bool IsBlank(const QVariant &cell);

/// The exact sum of a column's cells, each rounded to the cents it shows, kept in step cell by cell so that
/// no keystroke costs a walk over the rows.
class ZEL_COMMONFRAMES_EXPORT ColumnSum
{
public:
    /// A cell of the column had @p before and has @p now.
    void Replace(const QVariant &before, const QVariant &now);
    /// @p whole less the sum, held at the ends of the range.
    Currency LeftOf(Currency whole) const noexcept;

private:
    __extension__ using Wide = __int128;
    Wide m_raw = 0;
};
} // namespace Zel::Allocation
