#include "funds/AllocationColumns_p.h"

#include "funds/fra_FundAllocation.h"
#include "toolkit/GridLook.h"
#include "toolkit/LookChanges.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace
{
using enum TfraFundAllocation::Column;

/// The nearest integer to a / b, ties to even, for b above 0.
int divideToEven(qint64 a, qint64 b)
{
    const qint64 whole = a / b;
    const qint64 twice = 2 * (a % b);
    return static_cast<int>(whole + (twice > b || (twice == b && whole % 2 != 0) ? 1 : 0));
}
} // namespace

namespace Zel
{

AllocationColumns::AllocationColumns(TtsGrid &grid, const TtsMaskDefs &masks) : m_grid(grid)
{
    m_grid.SetRowHeight(18);
    m_grid.SetHeadingHeight(16);
    m_grid.SetColCount(4);
    TtsCol &picture = m_grid.Col(PictureColumn);
    picture.SetWidth(18);
    picture.SetAlignment(Qt::AlignHCenter);
    picture.SetReadOnly(true);
    TtsCol &fund = m_grid.Col(FundColumn);
    fund.SetWidth(250);
    fund.SetReadOnly(true);
    const auto number = [this, &masks](int column, const QString &mask, NumberUnit unit) {
        TtsCol &col = m_grid.Col(column);
        col.SetUnit(unit);
        col.SetWidth(120);
        col.SetAlignment(Qt::AlignRight);
        col.SetHeadingAlignment(Qt::AlignRight);
        col.SetMask(masks.Mask(mask));
    };
    number(PercentColumn, u"maskPercent"_s, NumberUnit::Percent);
    number(AmountColumn, u"maskAmount"_s, NumberUnit::Rand);
}

void AllocationColumns::Remember()
{
    if (CurrentLook() == Look::Application)
        return; // the widths are those of the look
    for (int column = FundColumn; column <= AmountColumn; ++column)
        m_designed[static_cast<std::size_t>(column - FundColumn)] = m_grid.Col(column).Width();
}

void AllocationColumns::Restore()
{
    for (int column = FundColumn; column <= AmountColumn; ++column)
        m_grid.Col(column).SetWidth(m_designed[static_cast<std::size_t>(column - FundColumn)]);
}

/// In the application look, the numbers have the width that they need, and the names the rest.
void AllocationColumns::stretchFund(int available)
{
    m_stretched = true;
    int rest = available;
    for (int column = PercentColumn; column <= AmountColumn; ++column) {
        TtsCol &col = m_grid.Col(column);
        const QString largest = column == PercentColumn ? u"100.00"_s : u"99,999,999.00"_s;
        const int wanted = Zel::GridLook::WidthOfNumbers(m_grid, column, largest);
        if (wanted != col.Width())
            col.SetWidth(wanted);
        if (col.Visible())
            rest -= wanted;
    }
    if (TtsCol &fund = m_grid.Col(FundColumn); fund.Width() != std::max(1, rest))
        fund.SetWidth(std::max(1, rest));
}

void AllocationColumns::Share(bool scrollBar)
{
    const int available = m_grid.ClientWidth() - m_grid.Col(PictureColumn).Width() - m_grid.RowBarWidth() -
                          (scrollBar ? m_grid.ScrollBarWidth() : 0);
    if (available <= 0)
        return;
    if (CurrentLook() == Look::Application) {
        stretchFund(available);
        return;
    }
    if (std::exchange(m_stretched, false))
        Restore();
    TtsCol &fund = m_grid.Col(FundColumn);
    // Read before the widths are rounded to whole percents: in a frame that is temporarily narrow, for
    // example before the page's layout, the column would be rounded to 0 and never be shown again.
    const bool hasFundColumn = fund.Width() != 0;
    int sum = 0;
    for (int column = FundColumn; column <= m_grid.ColCount(); ++column) {
        TtsCol &col = m_grid.Col(column);
        if (!col.Visible())
            continue;
        const int percent = divideToEven(qint64{100} * col.Width(), available);
        col.SetWidth(divideToEven(qint64{percent} * available, 100));
        sum += col.Width();
    }
    if (hasFundColumn)
        fund.SetWidth(std::max(1, fund.Width() + available - sum));
}

} // namespace Zel
