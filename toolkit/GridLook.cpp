#include "toolkit/GridLook_p.h"

#include "data/Format.h"
#include "toolkit/Glyphs.h"

#include <QIcon>
#include <QPainter>
#include <QStyle>

using namespace Qt::StringLiterals;

namespace Zel::GridLook
{
namespace
{

QFont headFont(const TtsGrid &grid)
{
    QFont font = FontOf(LookFont::Caption, grid.font());
    font.setWeight(QFont::DemiBold);
    return font;
}

/// A line inside of @p rect, as wide as @p width, with round corners.
void ring(QPainter &painter, const QRect &rect, const QColor &color, int width, qreal radius)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(color, width));
    painter.setBrush(Qt::NoBrush);
    const qreal half = width / 2.0;
    painter.drawRoundedRect(QRectF(rect).adjusted(half, half, -half, -half), radius, radius);
    painter.restore();
}

void paintField(QPainter &painter, const QRect &field, const QPalette &palette, bool focused)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(ColorOf(LookColor::Surface, palette));
    painter.drawRoundedRect(field, LookSpace::ControlRadius, LookSpace::ControlRadius);
    painter.restore();
    if (focused)
        ring(painter, field, ColorOf(LookColor::Focus, palette), LookSpace::Ring, LookSpace::ControlRadius);
    else
        ring(painter, field, ColorOf(LookColor::Field, palette), 1, LookSpace::ControlRadius);
}

bool hasFocusIn(const TtsGrid &grid)
{
    return grid.hasFocus() || grid.IsEditing();
}

} // namespace

QFont FontOfCells(const TtsGrid &grid, int column)
{
    const TtsCol &col = grid.Col(column);
    const bool calculated = col.ReadOnly() && !col.Mask().IsEmpty();
    return FontOf(calculated ? LookFont::Strong : LookFont::Body, grid.font());
}

QString ShownText(const TtsGrid &grid, int column, int row)
{
    const QVariant &cell = grid.Cell(column, row);
    return cell.typeId() == qMetaTypeId<Currency>()
               ? FormatFloat(FormatMask::Thousands, cell.value<Currency>())
               : TtsGrid::TextOf(cell);
}

int WidthOfNumbers(const TtsGrid &grid, int column, const QString &largest)
{
    const QFontMetrics strong(FontOf(LookFont::Strong, grid.font()));
    const int number = strong.horizontalAdvance(largest) + 2 * (Padding + LookSpace::Grid);
    const int heading = QFontMetrics(headFont(grid)).horizontalAdvance(grid.Col(column).Heading()) +
                        2 * Padding + Picture + LookSpace::Small;
    return qMax(number, heading);
}

void PaintGround(QPainter &painter, const QStyleOptionViewItem &option, const TtsGrid &grid,
                 const QModelIndex &index)
{
    const QPalette &palette = grid.palette();
    const QRect &cell = option.rect;
    const bool current = index.row() + 1 == grid.CurrentRow();
    const bool chosen = current || option.state.testFlag(QStyle::State_Selected);
    painter.fillRect(cell, ColorOf(chosen ? LookColor::AccentSoft : LookColor::Surface, palette));
    painter.setPen(QPen(ColorOf(LookColor::Line, palette), 0));
    painter.drawLine(cell.bottomLeft(), cell.bottomRight());
    if (!current)
        return;
    // The strip at the edge marks the current row while the focus is elsewhere.
    if (!hasFocusIn(grid)) {
        const QHeaderView &head = *grid.horizontalHeader();
        if (head.visualIndex(index.column()) == 0) {
            const QRect strip(cell.topLeft(), QSize(3, cell.height()));
            painter.fillRect(QStyle::visualRect(grid.layoutDirection(), cell, strip),
                             ColorOf(LookColor::Accent, palette));
        }
    } else if (index == grid.currentIndex() && !IsField(grid.Col(index.column() + 1))) {
        ring(painter, cell.adjusted(0, 0, 0, -1), ColorOf(LookColor::Focus, palette), LookSpace::Ring, 0);
    }
}

void PaintCell(QPainter &painter, const QStyleOptionViewItem &option, const TtsGrid &grid,
               const QModelIndex &index)
{
    const int column = index.column() + 1;
    const TtsCol &col = grid.Col(column);
    const QPalette &palette = grid.palette();
    painter.save();
    PaintGround(painter, option, grid, index);
    const QVariant &cell = grid.Cell(column, index.row() + 1);
    if (cell.typeId() == QMetaType::QIcon) {
        cell.value<QIcon>().paint(&painter, option.rect.adjusted(0, 0, 0, -1));
        painter.restore();
        return;
    }
    QRect place = option.rect.adjusted(Padding, 0, -Padding, -1);
    if (IsField(col)) {
        const QRect field = FieldIn(option.rect);
        paintField(painter, field, palette, index == grid.currentIndex() && hasFocusIn(grid));
        place = field.adjusted(FieldPadding, 0, -FieldPadding, 0);
    }
    painter.setFont(FontOfCells(grid, column));
    painter.setPen(grid.isEnabled() ? ColorOf(LookColor::Text, palette)
                                    : ColorOf(LookColor::Disabled, palette));
    const QString text = painter.fontMetrics().elidedText(ShownText(grid, column, index.row() + 1),
                                                          Qt::ElideRight, place.width());
    painter.drawText(place, int(col.Alignment()) | Qt::AlignVCenter | Qt::TextSingleLine, text);
    painter.restore();
}

void Header::paintSection(QPainter *painter, const QRect &rect, int section) const
{
    if (CurrentLook() == Look::Designed) {
        QHeaderView::paintSection(painter, rect, section);
        return;
    }
    const TtsCol &col = m_grid.Col(section + 1);
    const QPalette &colors = m_grid.palette();
    painter->save();
    painter->fillRect(rect, ColorOf(LookColor::Raised, colors));
    painter->setPen(QPen(ColorOf(LookColor::Line, colors), 0));
    painter->drawLine(rect.bottomLeft(), rect.bottomRight());
    QRect place = rect.adjusted(Padding, 0, -Padding, -1);
    const bool field = IsField(col);
    painter->setFont(headFont(m_grid));
    painter->setPen(ColorOf(field ? LookColor::Text : LookColor::Text2, colors));
    const bool right = col.HeadingAlignment().testFlag(Qt::AlignRight);
    const int pencil = field ? Picture + LookSpace::Grid : 0;
    const QString text =
        painter->fontMetrics().elidedText(col.Heading().trimmed(), Qt::ElideRight, place.width() - pencil);
    painter->drawText(place, int(col.HeadingAlignment()) | Qt::AlignVCenter | Qt::TextSingleLine, text);
    if (field && !text.isEmpty()) {
        const int width = painter->fontMetrics().horizontalAdvance(text);
        QRect picture(0, place.center().y() - Picture / 2 + 1, Picture, Picture);
        picture.moveLeft(right ? place.right() - width - LookSpace::Grid - Picture
                               : place.left() + width + LookSpace::Grid);
        PaintGlyph(*painter, QStyle::visualRect(layoutDirection(), rect, picture), u"edit"_s,
                   painter->pen().color());
    }
    painter->restore();
}

} // namespace Zel::GridLook
