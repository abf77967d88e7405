#pragma once

#include "desk/ListDelegate.h"

namespace QuoteDesk
{

/// Draws the rows of the list of quotes: the description after the product, states as chips, amounts at the
/// end of their column, and times in words, with the whole time in the tool tip.
///
/// The list has the columns of QuoteColumn; the picture number of a row is its ChipState.
class QuoteDelegate : public ListDelegate
{
    Q_OBJECT
public:
    /// The delegate of @p list, which owns it.
    explicit QuoteDelegate(TListView *list);
    ~QuoteDelegate() override;

    /// The width that a column needs for its usual texts and its caption, with its padding.
    int usualWidth(int column, const QString &caption) const;

protected:
    QString shownText(const QModelIndex &index) const override;
    QString secondText(const QModelIndex &index) const override;
    QString tipOf(const QModelIndex &index, bool isCut) const override;
    LookColor colorOf(const QModelIndex &index) const override;
    int contentWidth(const QModelIndex &index) const override;
    void paintContent(QPainter &painter, const QStyleOptionViewItem &cell,
                      const QModelIndex &index) const override;
};

} // namespace QuoteDesk
