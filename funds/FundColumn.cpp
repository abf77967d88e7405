#include "funds/FundColumn_p.h"

#include "funds/fra_FundAllocation.h"
#include "toolkit/GridLook.h"
#include "toolkit/PlainTip_p.h"

#include <QHelpEvent>
#include <QIcon>
#include <QPainter>
#include <QStyle>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace
{

constexpr int swatch = 10;
constexpr int barWidth = 108;
constexpr int barHeight = 8;
constexpr int barMargin = 20;

} // namespace

namespace Zel
{

bool FundColumn::hasBars(const QRect &cell) const
{
    constexpr int namedCharacters = 26;
    return cell.width() > swatch + 2 * LookSpace::Small + barWidth + barMargin +
                              namedCharacters * m_grid.fontMetrics().averageCharWidth();
}

QRect FundColumn::nameIn(const QRect &cell) const
{
    return cell.adjusted(swatch + 2 * LookSpace::Small, 0,
                         hasBars(cell) ? -barWidth - barMargin - LookSpace::Small : -LookSpace::Small, -1);
}

void FundColumn::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    painter->save();
    GridLook::PaintGround(*painter, option, m_grid, index);
    const int row = index.row() + 1;
    if (index.column() + 1 == TfraFundAllocation::PictureColumn) {
        const auto picture = m_grid.Cell(TfraFundAllocation::PictureColumn, row).value<QIcon>();
        if (picture.name() != "funds"_L1)
            picture.paint(painter, option.rect.adjusted(0, 0, 0, -1));
        painter->restore();
        return;
    }
    const QPalette &palette = m_grid.palette();
    const bool dark = IsDark(palette);
    const QColor color = FundColor(index.row(), dark);
    const QRect &cell = option.rect;
    const auto visual = [&](const QRect &rect) {
        return QStyle::visualRect(m_grid.layoutDirection(), cell, rect);
    };
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(color);
    const int middle = cell.center().y();
    painter->drawRoundedRect(visual({cell.left() + LookSpace::Grid, middle - swatch / 2 + 1, swatch, swatch}),
                             2, 2);
    if (hasBars(cell)) {
        const double percent =
            Allocation::ValueOf(m_grid.Cell(TfraFundAllocation::PercentColumn, row)).toDouble();
        const double part = m_largest > 0 ? std::clamp(percent / m_largest, 0.0, 1.0) : 0;
        QRect bar(cell.right() - barMargin - barWidth, middle - barHeight / 2 + 1, barWidth, barHeight);
        painter->setBrush(ColorOf(LookColor::NeutralGround, palette));
        painter->drawRoundedRect(visual(bar), 2, 2);
        bar.setWidth(static_cast<int>(std::lround(barWidth * part)));
        painter->setBrush(color);
        if (bar.width() > 0)
            painter->drawRoundedRect(visual(bar), 2, 2);
    }
    painter->setFont(GridLook::FontOfCells(m_grid, index.column() + 1));
    painter->setPen(ColorOf(m_grid.isEnabled() ? LookColor::Text : LookColor::Disabled, palette));
    const QRect place = nameIn(cell);
    painter->drawText(
        visual(place), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
        painter->fontMetrics().elidedText(index.data().toString(), Qt::ElideRight, place.width()));
    painter->restore();
}

bool FundColumn::helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                           const QModelIndex &index)
{
    const QString name = index.data().toString();
    if (event->type() != QEvent::ToolTip ||
        m_grid.fontMetrics().horizontalAdvance(name) <= nameIn(option.rect).width())
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    ShowPlainTip(*event, name, m_grid.viewport(), option.rect);
    return true;
}

} // namespace Zel
