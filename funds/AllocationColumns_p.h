#pragma once

#include "toolkit/TtsGrid.h"

#include <array>

namespace Zel
{

/// The columns of an allocation grid: what may be typed into them, and their widths.
class AllocationColumns
{
public:
    /// Sets the columns of @p grid up, with the masks "maskPercent" and "maskAmount" of @p masks.
    AllocationColumns(TtsGrid &grid, const TtsMaskDefs &masks);

    void Remember(); ///< The present widths are the designed ones.
    void Restore();  ///< The columns get their designed widths.
    /// The visible columns share the width that the grid has, less that of a scroll bar when @p scrollBar.
    void Share(bool scrollBar);

private:
    TtsGrid &m_grid;
    std::array<int, 3> m_designed{250, 120, 120};
};

} // namespace Zel
