#pragma once

#include "data/NumberEntry.h"
#include "toolkit/TColors.h"
#include "toolkit/TtsMask.h"

class TtsGrid;

/// One column of a grid. The grid shows every change at once.
class ZEL_TOOLKIT_EXPORT TtsCol
{
public:
    const QString &Heading() const noexcept { return m_heading; } ///< The text above the column.
    void SetHeading(const QString &heading);                      ///< Shown at once.
    int Width() const noexcept { return m_width; }                ///< In pixels, also while hidden.
    void SetWidth(int width);                           ///< In pixels; a negative width counts as 0.
    bool Visible() const noexcept { return m_visible; } ///< Whether the column is shown.
    void SetVisible(bool visible);                      ///< A hidden column keeps its cells and its width.
    /// Whether the user cannot edit the column. Code can write every cell.
    bool ReadOnly() const noexcept { return m_readOnly; }
    void SetReadOnly(bool readOnly);
    TColor FontColor() const noexcept { return m_fontColor; } ///< The colour of the cells' texts.
    void SetFontColor(TColor color);                          ///< Shown at once.
    /// The input mask. An empty mask accepts any text.
    const TtsMask &Mask() const noexcept { return m_mask; }
    void SetMask(const TtsMask &mask);
    Qt::Alignment Alignment() const noexcept { return m_alignment; } ///< The alignment of the cells' texts.
    void SetAlignment(Qt::Alignment alignment);                      ///< Shown at once.
    /// The alignment of the heading.
    Qt::Alignment HeadingAlignment() const noexcept { return m_headingAlignment; }
    void SetHeadingAlignment(Qt::Alignment alignment); ///< Shown at once.
    /// The unit of the column's numbers; a text with another unit ("5%") is refused. Default None.
    NumberUnit Unit() const noexcept { return m_unit; }
    void SetUnit(NumberUnit unit); ///< Takes effect with the next entry.
    /// The accessible text of a picture in this column. A text marks the column as one of pictures.
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
