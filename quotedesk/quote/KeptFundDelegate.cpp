#include "quote/KeptFundDelegate.h"

#include "look/GlyphLabel.h"

#include "funds/fra_FundAllocation.h"
#include "toolkit/Glyphs.h"
#include "toolkit/Look.h"
#include "toolkit/TtsGrid.h"

#include <QPainter>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

constexpr int pictureSize = 16;
constexpr int padding = LookSpace::Medium;

} // namespace

KeptFundDelegate::KeptFundDelegate(const TtsGrid &grid, QObject *parent)
    : QStyledItemDelegate(parent), m_grid(grid)
{
}

KeptFundDelegate::~KeptFundDelegate() = default;

/// The room below the cells of a column of the grid.
QRect KeptFundDelegate::cell(const QStyleOptionViewItem &option, int column) const
{
    const QPoint corner(m_grid.columnViewportPosition(column - 1), 0);
    const int left = option.widget->mapFromGlobal(m_grid.viewport()->mapToGlobal(corner)).x();
    return {left, option.rect.top(), m_grid.columnWidth(column - 1), option.rect.height()};
}

void KeptFundDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                             const QModelIndex &index) const
{
    const QPalette &palette = option.palette;
    const bool isChosen = option.state.testFlag(QStyle::State_Selected);
    const QFontMetrics metrics(option.font, option.widget);
    painter->save();
    painter->fillRect(option.rect,
                      ColorOf(isChosen ? LookColor::AccentSoft : LookColor::WarnGround, palette));
    painter->setPen(QPen(ColorOf(LookColor::Line, palette), 0));
    painter->drawLine(option.rect.topLeft(), option.rect.topRight());

    const QColor words = ColorOf(LookColor::WarnText, palette);
    const int size = besideFont(pictureSize, metrics);
    const QRect picture = cell(option, TfraFundAllocation::PictureColumn);
    PaintGlyph(*painter,
               QStyle::alignedRect(option.direction, Qt::AlignCenter, {size, size},
                                   picture.width() > size ? picture : option.rect),
               u"warning"_s, words);
    painter->setPen(words);
    painter->setFont(option.font);
    const bool isMirrored = option.direction == Qt::RightToLeft;
    const int start = static_cast<int>(isMirrored ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter;
    const int end = static_cast<int>(isMirrored ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter;
    const QRect name = cell(option, TfraFundAllocation::FundColumn).adjusted(padding, 0, -padding, 0);
    painter->drawText(name, start,
                      metrics.elidedText(index.data(Name).toString(), Qt::ElideRight, name.width()));
    const auto number = [&](int column, Role role) {
        const QRect place = cell(option, column).adjusted(padding, 0, -padding, 0);
        painter->drawText(place, end, index.data(role).toString());
    };
    number(TfraFundAllocation::PercentColumn, Percent);
    painter->setFont(FontOf(LookFont::Strong, option.font));
    number(TfraFundAllocation::AmountColumn, Amount);
    if (option.state.testFlag(QStyle::State_HasFocus)) {
        constexpr int ring = LookSpace::Ring;
        painter->setPen(QPen(ColorOf(LookColor::Focus, palette), ring));
        painter->setBrush(Qt::NoBrush);
        painter->drawRect(QRectF(option.rect).adjusted(ring / 2.0, ring / 2.0, -ring / 2.0, -ring / 2.0));
    }
    painter->restore();
}

QSize KeptFundDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &) const
{
    return {0, HeightOf(LookHeight::CompactFieldRow, QFontMetrics(option.font, option.widget))};
}

} // namespace QuoteDesk
