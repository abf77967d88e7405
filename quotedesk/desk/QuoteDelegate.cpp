#include "desk/QuoteDelegate.h"

#include "desk/QuoteTable.h"

#include "toolkit/TListView.h"

#include <QHeaderView>

#include <algorithm>

namespace QuoteDesk
{
namespace
{

QuoteColumn columnOf(const QModelIndex &index)
{
    return static_cast<QuoteColumn>(index.column());
}

ChipText chipAt(const TListView &list, const QModelIndex &index)
{
    const auto state = static_cast<ChipState>(list.Items()[index.row()]->ImageIndex());
    return chipOf(state, index.data().toString());
}

} // namespace

QuoteDelegate::QuoteDelegate(TListView *list) : ListDelegate(list) {}

QuoteDelegate::~QuoteDelegate() = default;

QString QuoteDelegate::shownText(const QModelIndex &index) const
{
    QString text = index.data().toString();
    if (columnOf(index) != QuoteColumn::Changed)
        return text;
    const QString words = timeInWords(timeOfText(text), QDate::currentDate());
    return words.isEmpty() ? text : words;
}

/// The description, which follows the product while it has no column of its own.
QString QuoteDelegate::secondText(const QModelIndex &index) const
{
    const int description = static_cast<int>(QuoteColumn::Description);
    return columnOf(index) == QuoteColumn::Product && list().header()->isSectionHidden(description)
               ? index.siblingAtColumn(description).data().toString()
               : QString();
}

QString QuoteDelegate::tipOf(const QModelIndex &index, bool isCut) const
{
    // The drawn time is only a part of the whole one.
    return ListDelegate::tipOf(index, isCut || columnOf(index) == QuoteColumn::Changed);
}

LookColor QuoteDelegate::colorOf(const QModelIndex &index) const
{
    return columnOf(index) == QuoteColumn::Changed ? LookColor::Text2 : LookColor::Text;
}

int QuoteDelegate::usualWidth(int column, const QString &caption) const
{
    const QFontMetrics body(list().font());
    const QFontMetrics head(FontOf(LookFont::Caption, list().font()));
    int width = head.horizontalAdvance(caption) * 11 / 10 + body.height();
    switch (static_cast<QuoteColumn>(column)) {
    case QuoteColumn::Client:
        width = std::max(width, body.averageCharWidth() * 20);
        break;
    case QuoteColumn::Product:
    case QuoteColumn::Description:
        width = std::max(width, body.averageCharWidth() * 24);
        break;
    case QuoteColumn::Amount:
        break;
    case QuoteColumn::State:
        for (const ChipState state : {ChipState::Draft, ChipState::Allocated, ChipState::TooMuch})
            width = std::max(width, Chip::sizeOf(chipOf(state, stateText(state)), list().font()).width());
        break;
    case QuoteColumn::Changed: {
        const QDateTime now(QDate::currentDate(), QTime(20, 0));
        for (const int days : {0, -1, -400})
            width = std::max(width, body.horizontalAdvance(timeInWords(now.addDays(days), now.date())));
        break;
    }
    }
    return width + 2 * Padding + Rounding;
}

int QuoteDelegate::contentWidth(const QModelIndex &index) const
{
    return columnOf(index) == QuoteColumn::State ? Chip::sizeOf(chipAt(list(), index), list().font()).width()
                                                 : ListDelegate::contentWidth(index);
}

void QuoteDelegate::paintContent(QPainter &painter, const QStyleOptionViewItem &cell,
                                 const QModelIndex &index) const
{
    if (columnOf(index) != QuoteColumn::State) {
        ListDelegate::paintContent(painter, cell, index);
        return;
    }
    Chip::paint(painter, cell.rect.adjusted(Padding - 4, 0, 4 - Padding, 0), chipAt(list(), index),
                cell.palette, list().font(), cell.direction);
}

} // namespace QuoteDesk
