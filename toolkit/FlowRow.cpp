#include "toolkit/FlowRow.h"

#include <QStyle>
#include <QWidget>

namespace Zel
{

FlowRow::FlowRow(QWidget *parent) : QLayout(parent) {}

FlowRow::~FlowRow()
{
    for (QLayoutItem *item : m_items)
        delete item;
}

void FlowRow::addItem(QLayoutItem *item)
{
    m_items.push_back(item);
}

QLayoutItem *FlowRow::itemAt(int index) const
{
    return index >= 0 && index < count() ? m_items[static_cast<std::size_t>(index)] : nullptr;
}

QLayoutItem *FlowRow::takeAt(int index)
{
    QLayoutItem *const item = itemAt(index);
    if (item)
        m_items.erase(m_items.begin() + index);
    return item;
}

int FlowRow::heightForWidth(int width) const
{
    return arrange(QRect(0, 0, width, 0), false);
}

QSize FlowRow::sizeHint() const
{
    QSize size(0, 0);
    for (const QLayoutItem *item : m_items) {
        if (item->isEmpty())
            continue;
        const QSize wanted = item->sizeHint();
        size = QSize(size.width() + (size.width() > 0 ? spacing() : 0) + wanted.width(),
                     qMax(size.height(), wanted.height()));
    }
    const QMargins margins = contentsMargins();
    return size.grownBy(margins);
}

QSize FlowRow::minimumSize() const
{
    QSize size(0, 0);
    for (const QLayoutItem *item : m_items) {
        if (!item->isEmpty())
            size = size.expandedTo(item->sizeHint());
    }
    return size.grownBy(contentsMargins());
}

void FlowRow::setGeometry(const QRect &rect)
{
    QLayout::setGeometry(rect);
    // In the middle of a place that is higher than needed.
    const int spare = qMax(0, rect.height() - arrange(rect, false)) / 2;
    arrange(rect.adjusted(0, spare, 0, 0), true);
}

// Returns the height that the rows need.
int FlowRow::arrange(const QRect &rect, bool apply) const
{
    const QRect room = rect.marginsRemoved(contentsMargins());
    const Qt::LayoutDirection direction =
        parentWidget() ? parentWidget()->layoutDirection() : Qt::LeftToRight;
    QPoint place = room.topLeft();
    int row = 0;
    for (QLayoutItem *item : m_items) {
        if (item->isEmpty())
            continue;
        const QSize size = item->sizeHint();
        if (place.x() > room.left() && place.x() + size.width() > room.right() + 1) {
            place = QPoint(room.left(), place.y() + row + spacing());
            row = 0;
        }
        if (apply)
            item->setGeometry(QStyle::visualRect(direction, room, QRect(place, size)));
        place.rx() += size.width() + spacing();
        row = qMax(row, size.height());
    }
    return place.y() + row + contentsMargins().bottom() - rect.top();
}

} // namespace Zel
