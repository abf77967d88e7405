#include "look/DrawViews.h"

#include "look/DrawControls.h"
#include "look/GlyphLabel.h"
#include "look/TextLabel.h"

#include "toolkit/Glyphs.h"

#include <QAbstractItemView>
#include <QHeaderView>
#include <QPainter>
#include <QStyle>
#include <QTableView>
#include <QTreeView>

using namespace Qt::StringLiterals;

namespace QuoteDesk::Draw
{
namespace
{

constexpr int sortArrow = 14;
constexpr int sortGap = 4;
constexpr int strip = 3;
constexpr int iconGap = 8;

bool has(const QStyleOption &option, QStyle::StateFlag flag)
{
    return option.state.testFlag(flag);
}

/// The header whose sections are the columns of @p view; null when the view has no columns.
const QHeaderView *columnsOf(const QAbstractItemView &view)
{
    if (const auto *const table = qobject_cast<const QTableView *>(&view))
        return table->horizontalHeader();
    const auto *const tree = qobject_cast<const QTreeView *>(&view);
    return tree ? tree->header() : nullptr;
}

/// The visible column at @p step from one end: 1 from the start, -1 from the end.
int outermost(const QHeaderView &columns, int step)
{
    const int from = step > 0 ? 0 : columns.count() - 1;
    for (int place = from; place >= 0 && place < columns.count(); place += step) {
        const int section = columns.logicalIndex(place);
        if (!columns.isSectionHidden(section))
            return section;
    }
    return -1;
}

struct RowPart {
    bool isCurrent = false; ///< in the current row, or the current item
    bool isFirst = true;    ///< at the left edge of the row
    bool isLast = true;     ///< at the right edge
};

RowPart partOfRow(const QStyleOptionViewItem &option, const QAbstractItemView &view)
{
    RowPart part;
    const QModelIndex current = view.currentIndex();
    const QModelIndex index = option.index;
    if (!current.isValid() || !index.isValid())
        return part;
    if (view.selectionBehavior() != QAbstractItemView::SelectRows) {
        part.isCurrent = index == current;
        return part;
    }
    part.isCurrent = index.row() == current.row() && index.parent() == current.parent();
    if (const QHeaderView *const columns = columnsOf(view)) {
        part.isFirst = index.column() == outermost(*columns, 1);
        part.isLast = index.column() == outermost(*columns, -1);
        if (option.direction == Qt::RightToLeft)
            std::swap(part.isFirst, part.isLast);
    }
    return part;
}

/// The part of the ring round a row that lies in one of its cells.
void rowRing(QPainter &painter, const QStyleOptionViewItem &option, const RowPart &part)
{
    constexpr int ring = LookSpace::Ring;
    const QRect &cell = option.rect;
    const QColor color = colorOf(LookColor::Focus, option);
    painter.fillRect(QRect(cell.left(), cell.top(), cell.width(), ring), color);
    painter.fillRect(QRect(cell.left(), cell.bottom() - ring + 1, cell.width(), ring), color);
    if (part.isFirst)
        painter.fillRect(QRect(cell.left(), cell.top(), ring, cell.height()), color);
    if (part.isLast)
        painter.fillRect(QRect(cell.right() - ring + 1, cell.top(), ring, cell.height()), color);
}

constexpr int menuIconColumn = 28;
constexpr int menuEnd = 28;
constexpr int menuSeparator = 9;

} // namespace

QFont headFont(const QFont &body)
{
    QFont font = FontOf(LookFont::Caption, body);
    font.setWeight(QFont::DemiBold);
    return font;
}

void headGround(QPainter &painter, const QStyleOptionHeader &option)
{
    const bool isUnder = has(option, QStyle::State_MouseOver) && has(option, QStyle::State_Enabled) &&
                         has(option, QStyle::State_Sunken);
    painter.fillRect(option.rect, colorOf(isUnder ? LookColor::AccentSoft : LookColor::Raised, option));
    edgeLine(painter, option.rect,
             option.orientation == Qt::Horizontal  ? Qt::BottomEdge
             : option.direction == Qt::RightToLeft ? Qt::LeftEdge
                                                   : Qt::RightEdge,
             colorOf(LookColor::Line, option));
}

void headLabel(QPainter &painter, const QStyleOptionHeader &option)
{
    painter.save();
    const QFont font = headFont(painter.font());
    const QFontMetrics metrics(font);
    painter.setFont(font);
    const QColor ink = colorOf(LookColor::Text2, option);
    painter.setPen(ink);
    const bool isSorted = option.sortIndicator != QStyleOptionHeader::None;
    const int arrowRoom = isSorted ? sortArrow + sortGap : 0;
    const QRect room = option.rect.adjusted(CellPadding, 0, -CellPadding, 0);
    int width = qMax(0, room.width() - arrowRoom);
    if (!option.icon.isNull()) {
        const int edge = besideFont(16, option.fontMetrics);
        option.icon.paint(
            &painter,
            QStyle::alignedRect(option.direction,
                                option.text.isEmpty() ? Qt::AlignCenter : Qt::AlignLeft | Qt::AlignVCenter,
                                QSize(edge, edge), option.rect.adjusted(4, 0, -4, 0)));
    }
    const QString text = metrics.elidedText(option.text, Qt::ElideRight, width);
    width = qMin(width, metrics.horizontalAdvance(text));
    Qt::Alignment sides = option.textAlignment & Qt::AlignHorizontal_Mask;
    if (!sides)
        sides = Qt::AlignLeft;
    const QRect content =
        QStyle::alignedRect(option.direction, sides | Qt::AlignVCenter,
                            QSize(qMin(room.width(), width + arrowRoom), room.height()), room);
    const auto part = [&](int x, int partWidth) {
        return QStyle::visualRect(option.direction, content,
                                  QRect(content.left() + x, content.top(), partWidth, content.height()));
    };
    painter.drawText(part(0, width), Qt::AlignCenter | Qt::TextSingleLine, text);
    if (isSorted && room.width() > arrowRoom) {
        // Qt names the arrow of ascending rows "down".
        chevron(painter, part(content.width() - sortArrow, sortArrow),
                option.sortIndicator == QStyleOptionHeader::SortUp ? Qt::DownArrow : Qt::UpArrow, ink);
    }
    painter.restore();
}

bool marksCurrentItem(const QWidget *view)
{
    return qobject_cast<const QAbstractItemView *>(view) != nullptr;
}

void itemGround(QPainter &painter, const QStyleOptionViewItem &option, const QWidget *view)
{
    const bool isChosen = has(option, QStyle::State_Selected);
    const bool isUnder = has(option, QStyle::State_MouseOver) && has(option, QStyle::State_Enabled);
    if (option.backgroundBrush.style() != Qt::NoBrush && !isChosen)
        painter.fillRect(option.rect, option.backgroundBrush);
    else if (isChosen)
        painter.fillRect(option.rect, option.palette.color(QPalette::Highlight));
    else if (isUnder)
        painter.fillRect(option.rect, colorOf(LookColor::Raised, option));
    const auto *const items = qobject_cast<const QAbstractItemView *>(view);
    if (!items || !has(option, QStyle::State_Enabled))
        return;
    const RowPart part = partOfRow(option, *items);
    if (!part.isCurrent)
        return;
    if (items->hasFocus()) {
        rowRing(painter, option, part);
    } else if (isChosen && (option.direction == Qt::RightToLeft ? part.isLast : part.isFirst)) {
        painter.fillRect(QStyle::visualRect(option.direction, option.rect,
                                            QRect(option.rect.topLeft(), QSize(strip, option.rect.height()))),
                         colorOf(LookColor::Accent, option));
    }
}

bool isTabAbove(const QStyleOptionTab &option)
{
    return option.shape == QTabBar::RoundedNorth || option.shape == QTabBar::TriangularNorth;
}

QFont tabFont(const QStyleOptionTab &option, const QFont &body)
{
    return has(option, QStyle::State_Selected) ? FontOf(LookFont::Strong, body) : body;
}

void tabGround(QPainter &painter, const QStyleOptionTab &option)
{
    const bool isChosen = has(option, QStyle::State_Selected);
    if (!isChosen && has(option, QStyle::State_MouseOver) && has(option, QStyle::State_Enabled))
        painter.fillRect(option.rect, colorOf(LookColor::Raised, option));
    edgeLine(painter, option.rect, Qt::BottomEdge, colorOf(LookColor::Line, option));
    if (isChosen)
        painter.fillRect(
            QRect(option.rect.left(), option.rect.bottom() - strip + 1, option.rect.width(), strip),
            colorOf(LookColor::Accent, option));
}

void tabLabel(QPainter &painter, const QStyleOptionTab &option)
{
    painter.save();
    const bool isChosen = has(option, QStyle::State_Selected);
    const QFont font = tabFont(option, painter.font());
    const QFontMetrics metrics(font);
    const QSize icon = option.icon.isNull() ? QSize(0, 0) : option.iconSize;
    const int gap = option.icon.isNull() ? 0 : iconGap - 1;
    const int before = option.leftButtonSize.isEmpty() ? 0 : option.leftButtonSize.width() + iconGap;
    const int behind = option.rightButtonSize.isEmpty() ? 0 : option.rightButtonSize.width() + iconGap;
    const QRect inner =
        QStyle::visualRect(option.direction, option.rect,
                           option.rect.adjusted(TabPadding / 2 + before, 0, -TabPadding / 2 - behind, 0));
    const QString text = metrics.elidedText(
        option.text, Qt::ElideRight, qMax(0, inner.width() - icon.width() - gap), Qt::TextShowMnemonic);
    const int words = metrics.size(Qt::TextShowMnemonic, text).width();
    const QRect content = QStyle::alignedRect(option.direction, Qt::AlignCenter,
                                              QSize(icon.width() + gap + words, inner.height()), inner);
    const auto part = [&](int x, int partWidth) {
        return QStyle::visualRect(option.direction, content,
                                  QRect(content.left() + x, content.top(), partWidth, content.height()));
    };
    if (!option.icon.isNull()) {
        option.icon.paint(
            &painter, QStyle::alignedRect(option.direction, Qt::AlignCenter, icon, part(0, icon.width())),
            Qt::AlignCenter, has(option, QStyle::State_Enabled) ? QIcon::Normal : QIcon::Disabled);
    }
    painter.setFont(font);
    painter.setPen(colorOf(isChosen ? LookColor::Text : LookColor::Text2, option));
    painter.drawText(part(icon.width() + gap, words), Qt::AlignCenter | Qt::TextShowMnemonic, text);
    painter.restore();
    if (hasKeyboardFocus(option) && isChosen)
        focusRing(painter, option.rect.adjusted(2, 4, -2, -5), option);
}

QSize menuItemSize(const QStyleOptionMenuItem &option)
{
    const int line = qMax(option.fontMetrics.height(), option.maxIconWidth);
    if (option.menuItemType == QStyleOptionMenuItem::Separator)
        return {10, option.text.isEmpty() ? menuSeparator : line + LookSpace::Small};
    // Qt adds the width of the keys (reservedShortcutWidth) itself.
    const QString words = option.text.section(u'\t', 0, 0);
    const int width = option.fontMetrics.size(Qt::TextShowMnemonic, words).width();
    const int keys = option.text.contains(u'\t') ? LookSpace::Large + LookSpace::Small : 0;
    return {menuIconColumn + LookSpace::Small + width + keys + menuEnd,
            HeightOf(LookHeight::SmallField, option.fontMetrics)};
}

void menuItem(QPainter &painter, const QStyleOptionMenuItem &option)
{
    const QRect &rect = option.rect;
    painter.fillRect(rect, colorOf(LookColor::Surface, option));
    if (option.menuItemType == QStyleOptionMenuItem::Separator) {
        const QRect line(rect.left() + LookSpace::Small, rect.center().y(), rect.width() - LookSpace::Large,
                         1);
        edgeLine(painter, line, Qt::TopEdge, colorOf(LookColor::Line, option));
        return;
    }
    if (has(option, QStyle::State_Selected) && has(option, QStyle::State_Enabled))
        paintRounded(painter, rect.adjusted(4, 0, -4, 0), LookSpace::ControlRadius,
                     colorOf(LookColor::AccentSoft, option), {});
    const auto part = [&](int x, int width) {
        return QStyle::visualRect(option.direction, rect,
                                  QRect(rect.left() + x, rect.top(), width, rect.height()));
    };
    const QColor ink = colorOf(LookColor::Text, option);
    const int edge = besideFont(16, option.fontMetrics);
    const QRect picture =
        QStyle::alignedRect(option.direction, Qt::AlignCenter, QSize(edge, edge), part(6, menuIconColumn));
    const bool isTicked = option.checkType != QStyleOptionMenuItem::NotCheckable && option.checked;
    if (isTicked)
        PaintGlyph(painter, picture, u"check"_s, ink);
    else if (!option.icon.isNull())
        option.icon.paint(&painter, picture, Qt::AlignCenter,
                          has(option, QStyle::State_Enabled) ? QIcon::Normal : QIcon::Disabled);
    painter.save();
    QFont font = option.font;
    if (option.menuItemType == QStyleOptionMenuItem::DefaultItem)
        font = FontOf(LookFont::Strong, font);
    painter.setFont(font);
    painter.setPen(ink);
    const int start = menuIconColumn + LookSpace::Small;
    const QRect words = part(start, rect.width() - start - LookSpace::Large);
    const int side = static_cast<int>(QStyle::visualAlignment(option.direction, Qt::AlignLeft));
    painter.drawText(words, side | Qt::AlignVCenter | Qt::TextShowMnemonic | Qt::TextSingleLine,
                     option.text.section(u'\t', 0, 0));
    const QString keys = option.text.section(u'\t', 1);
    if (!keys.isEmpty()) {
        painter.setPen(colorOf(LookColor::Text2, option));
        painter.drawText(words,
                         static_cast<int>(QStyle::visualAlignment(option.direction, Qt::AlignRight)) |
                             Qt::AlignVCenter | Qt::TextSingleLine,
                         keys);
    }
    painter.restore();
    if (option.menuItemType == QStyleOptionMenuItem::SubMenu)
        chevron(painter, part(rect.width() - menuEnd, menuEnd - LookSpace::Small),
                option.direction == Qt::RightToLeft ? Qt::LeftArrow : Qt::RightArrow, ink);
}

void menuBarItem(QPainter &painter, const QStyleOptionMenuItem &option)
{
    painter.fillRect(option.rect, colorOf(LookColor::Raised, option));
    if (has(option, QStyle::State_Selected) && has(option, QStyle::State_Enabled))
        paintRounded(painter, option.rect.adjusted(1, 2, -1, -2), LookSpace::ControlRadius,
                     colorOf(LookColor::AccentSoft, option), {});
    painter.setPen(colorOf(LookColor::Text, option));
    painter.drawText(option.rect,
                     Qt::AlignCenter | Qt::TextShowMnemonic | Qt::TextSingleLine | Qt::TextDontClip,
                     option.text);
}

void scrollBar(QPainter &painter, const QStyleOptionSlider &option, const QRect &handle)
{
    painter.fillRect(option.rect, colorOf(LookColor::Raised, option));
    if (!has(option, QStyle::State_Enabled) || option.minimum == option.maximum)
        return;
    const bool isHeld = option.activeSubControls.testFlag(QStyle::SC_ScrollBarSlider) &&
                        (has(option, QStyle::State_MouseOver) || has(option, QStyle::State_Sunken));
    const int thickness = option.orientation == Qt::Horizontal ? handle.height() : handle.width();
    const int margin = qMin(2, thickness / 4);
    const QRect bar = option.orientation == Qt::Horizontal ? handle.adjusted(1, margin, -1, -margin)
                                                           : handle.adjusted(margin, 1, -margin, -1);
    const int round = qMin(bar.width(), bar.height()) / 2;
    paintRounded(painter, bar, round, colorOf(isHeld ? LookColor::Field : LookColor::LineStrong, option), {});
}

void splitter(QPainter &painter, const QStyleOption &option)
{
    const bool isUnder = has(option, QStyle::State_MouseOver) || has(option, QStyle::State_Sunken);
    const QColor color = colorOf(isUnder ? LookColor::Accent : LookColor::Line, option);
    // The parts of a horizontal splitter stand side by side.
    const QPoint middle = option.rect.center();
    if (has(option, QStyle::State_Horizontal))
        edgeLine(painter, QRect(middle.x(), option.rect.top(), 1, option.rect.height()), Qt::LeftEdge, color);
    else
        edgeLine(painter, QRect(option.rect.left(), middle.y(), option.rect.width(), 1), Qt::TopEdge, color);
}

} // namespace QuoteDesk::Draw
