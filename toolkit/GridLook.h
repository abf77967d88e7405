#pragma once

#include "toolkit/Look.h"
#include "toolkit/TtsGrid.h"

#include <QPainter>
#include <QStyleOption>

/// How a grid is drawn in the application look: rows with a line below, fields in the column that can be
/// edited, no lines between the columns.
namespace Zel::GridLook
{

inline constexpr int Padding = LookSpace::Medium; ///< at both sides of a cell's text
inline constexpr int FieldPadding = 10;           ///< at both sides of the text in a field
inline constexpr int Picture = 14; ///< the size of the picture in the head of an editable column

/// Whether the cells of @p column are fields.
inline bool IsField(const TtsCol &column)
{
    return !column.ReadOnly() && !column.Mask().IsEmpty();
}
/// The place of the field in a cell.
inline QRect FieldIn(const QRect &cell)
{
    constexpr int beside = LookSpace::Grid + Padding - FieldPadding;
    constexpr int above = 3; // leaves a field in a compact row the height of its text
    return cell.adjusted(beside, above, -beside, -above - 1);
}
/// The font of the column's cells: numbers that are calculated are as strong as typed ones are framed.
ZEL_TOOLKIT_EXPORT QFont FontOfCells(const TtsGrid &grid, int column);
/// The text of a cell as it is drawn: numbers have thousands separators.
ZEL_TOOLKIT_EXPORT QString ShownText(const TtsGrid &grid, int column, int row);
/// The width that a column of numbers up to @p largest needs, with its heading.
ZEL_TOOLKIT_EXPORT int WidthOfNumbers(const TtsGrid &grid, int column, const QString &largest);
/// Draws the background of a cell: the current row, the line below, the mark or ring of the current cell.
ZEL_TOOLKIT_EXPORT void PaintGround(QPainter &painter, const QStyleOptionViewItem &option,
                                    const TtsGrid &grid, const QModelIndex &index);
} // namespace Zel::GridLook
