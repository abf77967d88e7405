#include "desk/ListDelegate.h"

#include "desk/QuoteTable.h"
#include "quote/PlainText.h"

#include "toolkit/TListView.h"

#include <QHelpEvent>
#include <QPainter>
#include <QTextLayout>
#include <QToolTip>

#include <algorithm>

namespace QuoteDesk
{
namespace
{

constexpr int SecondGap = 8;

/// Where the words occur in @p text, in the format for found words.
QList<QTextLayout::FormatRange> marks(const QString &text, const QStringList &words, const QPalette &palette)
{
    QTextCharFormat format;
    format.setBackground(ColorOf(LookColor::Mark, palette));
    format.setForeground(palette.color(QPalette::Text));
    format.setFontWeight(QFont::DemiBold);
    QList<QTextLayout::FormatRange> ranges;
    const QString searched = words.isEmpty() ? QString() : searchable(text);
    for (const QString &word : words) {
        for (qsizetype at = searched.indexOf(word); at >= 0; at = searched.indexOf(word, at + word.size()))
            ranges.append({static_cast<int>(at), static_cast<int>(word.size()), format});
    }
    return ranges;
}

} // namespace

ListDelegate::ListDelegate(TListView *list) : QStyledItemDelegate(list), m_list(*list)
{
    list->setItemDelegate(this);
    // Called before the list's own filter, which only knows the text of a cell.
    list->viewport()->installEventFilter(this);
}

ListDelegate::~ListDelegate() = default;

void ListDelegate::setWords(const QStringList &words)
{
    if (words == m_words)
        return;
    m_words = words;
    m_list.viewport()->update();
}

void ListDelegate::setCompact(bool isCompact)
{
    if (isCompact == m_isCompact)
        return;
    m_isCompact = isCompact;
    Q_EMIT sizeHintChanged({});
}

QString ListDelegate::shownText(const QModelIndex &index) const
{
    return index.data().toString();
}

QString ListDelegate::secondText(const QModelIndex &) const
{
    return {};
}

QString ListDelegate::tipOf(const QModelIndex &index, bool isCut) const
{
    if (!isCut)
        return {};
    const QString second = secondText(index);
    return second.isEmpty() ? index.data().toString() : index.data().toString() + u'\n' + second;
}

LookFont ListDelegate::fontOf(const QModelIndex &index) const
{
    return index.column() == 0 ? LookFont::Strong : LookFont::Body;
}

LookColor ListDelegate::colorOf(const QModelIndex &) const
{
    return LookColor::Text;
}

int ListDelegate::contentWidth(const QModelIndex &index) const
{
    const QFontMetrics metrics(FontOf(fontOf(index), m_list.font()));
    const QString second = secondText(index);
    const int width = metrics.horizontalAdvance(shownText(index)) + Rounding;
    return second.isEmpty() ? width : width + SecondGap + metrics.horizontalAdvance(second);
}

void ListDelegate::paintText(QPainter &painter, const QRect &place, const QString &text, const QFont &font,
                             const QColor &color, const QStyleOptionViewItem &cell) const
{
    const QFontMetrics metrics(font);
    const QString elided = metrics.elidedText(text, Qt::ElideRight, place.width());
    const QList<QTextLayout::FormatRange> found = marks(elided, m_words, cell.palette);
    const Qt::Alignment alignment = QStyle::visualAlignment(cell.direction, cell.displayAlignment);
    painter.setPen(color);
    if (found.isEmpty()) {
        painter.setFont(font);
        painter.drawText(place, static_cast<int>(alignment) | Qt::TextSingleLine, elided);
        return;
    }
    QTextLayout layout(elided, font);
    layout.setFormats(found);
    layout.beginLayout();
    QTextLine line = layout.createLine();
    line.setLineWidth(place.width());
    layout.endLayout();
    const qreal free = place.width() - line.naturalTextWidth();
    const qreal x = alignment.testFlag(Qt::AlignRight) ? std::max(0.0, free) : 0.0;
    layout.draw(&painter, {place.left() + x, place.top() + (place.height() - line.height()) / 2.0});
}

void ListDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                         const QModelIndex &index) const
{
    QStyleOptionViewItem cell = option;
    initStyleOption(&cell, index);
    cell.text.clear();
    cell.features &= ~QStyleOptionViewItem::HasDecoration;
    m_list.style()->drawControl(QStyle::CE_ItemViewItem, &cell, painter, &m_list);

    painter->save();
    painter->setPen(QPen(ColorOf(LookColor::Line, cell.palette), 0));
    painter->drawLine(option.rect.bottomLeft(), option.rect.bottomRight());
    paintContent(*painter, cell, index);
    painter->restore();
}

void ListDelegate::paintContent(QPainter &painter, const QStyleOptionViewItem &cell,
                                const QModelIndex &index) const
{
    const QRect place = cell.rect.adjusted(Padding, 0, -Padding, 0);
    const QFont font = FontOf(fontOf(index), m_list.font());
    // Another look's selection may be dark, where weaker texts would be unreadable.
    const bool isSelected = cell.state.testFlag(QStyle::State_Selected);
    const bool isSoft =
        cell.palette.color(QPalette::Highlight) == ColorOf(LookColor::AccentSoft, cell.palette);
    const auto colored = [&](LookColor color) {
        return isSelected && (!isSoft || color == LookColor::Text)
                   ? cell.palette.color(QPalette::HighlightedText)
                   : ColorOf(color, cell.palette);
    };
    const QString text = shownText(index);
    paintText(painter, place, text, font, colored(colorOf(index)), cell);
    const int first = QFontMetrics(font).horizontalAdvance(text) + SecondGap;
    if (const QString more = secondText(index); !more.isEmpty() && first < place.width()) {
        const QRect rest(place.left() + first, place.top(), place.width() - first, place.height());
        paintText(painter, QStyle::visualRect(cell.direction, place, rest), more, font,
                  colored(LookColor::Text2), cell);
    }
}

QSize ListDelegate::sizeHint(const QStyleOptionViewItem &, const QModelIndex &index) const
{
    const LookHeight height = m_isCompact ? LookHeight::CompactRow : LookHeight::Row;
    return {contentWidth(index) + 2 * Padding, HeightOf(height, m_list.fontMetrics())};
}

bool ListDelegate::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != m_list.viewport() || event->type() != QEvent::ToolTip)
        return QStyledItemDelegate::eventFilter(watched, event);
    const auto *const help = static_cast<QHelpEvent *>(event);
    const QModelIndex index = m_list.indexAt(help->pos());
    if (!index.isValid())
        return false;
    const QRect place = m_list.visualRect(index);
    const QString tip = tipOf(index, contentWidth(index) + 2 * Padding > place.width());
    if (tip.isEmpty())
        return false;
    QToolTip::showText(help->globalPos(), tipText(tip), m_list.viewport(), place);
    return true;
}

} // namespace QuoteDesk
