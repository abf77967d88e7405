#pragma once

#include "data/NumberEntry.h"
#include "toolkit/TColors.h"
#include "toolkit/TtsMask.h"

class TtsGrid;

/// One column of a grid. Every setter shows at once.
class ZEL_TOOLKIT_EXPORT TtsCol
{
public:
    const QString &Heading() const noexcept { return m_heading; } ///< The text above the column.
    void SetHeading(const QString &heading);                      ///< Shown at once.
    int Width() const noexcept { return m_width; }                ///< pixels, also while hidden
    void SetWidth(int width);                                     ///< In pixels; a negative one counts as 0.
    bool Visible() const noexcept { return m_visible; }           ///< Whether the column is shown.
    void SetVisible(bool visible); ///< A hidden column keeps its cells and its width.
    /// Not for the user; code writes every cell.
    bool ReadOnly() const noexcept { return m_readOnly; }
    void SetReadOnly(bool readOnly);
    TColor FontColor() const noexcept { return m_fontColor; } ///< The colour of the cells' texts.
    void SetFontColor(TColor color);                          ///< Shown at once.
    /// Without a mask anything can be typed.
    const TtsMask &Mask() const noexcept { return m_mask; }
    void SetMask(const TtsMask &mask);
    Qt::Alignment Alignment() const noexcept { return m_alignment; } ///< Where the cells' texts stand.
    void SetAlignment(Qt::Alignment alignment);                      ///< Shown at once.
    /// Where the heading stands.
    Qt::Alignment HeadingAlignment() const noexcept { return m_headingAlignment; }
    void SetHeadingAlignment(Qt::Alignment alignment); ///< Shown at once.
    /// What the numbers of the column are, for texts that say it themselves ("5%"); None at first.
    NumberUnit Unit() const noexcept { return m_unit; }
    void SetUnit(NumberUnit unit); ///< Counts from the next entry on.
    /// What a picture in this column is read out as; it also says that the column holds pictures, no texts.
    const QString &PictureText() const noexcept { return m_pictureText; }
    void SetPictureText(const QString &text);

private:
    friend class TtsGrid;
    TtsCol(TtsGrid *grid, int column) noexcept : m_grid(grid), m_column(column) {}

    TtsGrid *m_grid;
    int m_column; ///< 1-based
    QString m_heading;
    QString m_pictureText;
    TtsMask m_mask;
    Qt::Alignment m_alignment = Qt::AlignLeft;
    Qt::Alignment m_headingAlignment = Qt::AlignLeft;
    int m_width = 64;
    TColor m_fontColor = TColor::None;
    bool m_visible = true;
    bool m_readOnly = false;
    NumberUnit m_unit = NumberUnit::None;
};
