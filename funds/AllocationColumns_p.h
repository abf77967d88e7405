#pragma once

#include "toolkit/TtsGrid.h"

#include <array>

namespace Zel
{

/// The columns of an allocation grid: their input masks and their widths.
class AllocationColumns
{
public:
    /// Sets up the columns of @p grid, with the masks "maskPercent" and "maskAmount" of @p masks.
    AllocationColumns(TtsGrid &grid, const TtsMaskDefs &masks);

    void Remember(); ///< Stores the current widths as the designed ones.
    void Restore();  ///< Restores the designed widths.
    /// Fits the visible columns to the grid's width, with @p scrollBar minus the width of a scroll bar.
    void Share(bool scrollBar);

private:
    void stretchFund(int available);

    TtsGrid &m_grid;
    bool m_stretched = false; ///< whether the widths are those of the application look
    std::array<int, 3> m_designed{250, 120, 120};
};

} // namespace Zel
