#pragma once

#include "toolkit/Look.h"

#include <QStringList>
#include <QStyledItemDelegate>

class TListView;

namespace QuoteDesk
{

/// Draws the rows of a list of one of the places: strong names in the first column, a line below each row,
/// and the found words marked. A tool tip shows what is cut off.
class ListDelegate : public QStyledItemDelegate
{
    Q_OBJECT
public:
    /// The delegate of @p list, which owns it.
    explicit ListDelegate(TListView *list);
    ~ListDelegate() override;

    /// The words to mark, see searchable().
    void setWords(const QStringList &words);
    /// Whether the rows are low, for a low screen.
    void setCompact(bool isCompact);

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

    /// The free space at each side of a cell.
    static constexpr int Padding = 12;
    /// Widths are measured in whole pixels, but texts are elided by parts of pixels.
    static constexpr int Rounding = 2;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

    /// The text that is drawn, for cells that show another one than the list has.
    virtual QString shownText(const QModelIndex &index) const;
    /// A text in a weaker colour behind the other one; blank for none.
    virtual QString secondText(const QModelIndex &index) const;
    /// The tool tip of a cell; blank for none. @p isCut says whether a part of its texts is not visible.
    virtual QString tipOf(const QModelIndex &index, bool isCut) const;
    virtual LookFont fontOf(const QModelIndex &index) const;
    virtual LookColor colorOf(const QModelIndex &index) const;
    /// The width of the content of a cell.
    virtual int contentWidth(const QModelIndex &index) const;
    /// Draws the content of a cell; its ground is already drawn.
    virtual void paintContent(QPainter &painter, const QStyleOptionViewItem &cell,
                              const QModelIndex &index) const;

    TListView &list() const { return m_list; }

private:
    void paintText(QPainter &painter, const QRect &place, const QString &text, const QFont &font,
                   const QColor &color, const QStyleOptionViewItem &cell) const;

    TListView &m_list;
    QStringList m_words;
    bool m_isCompact = false;
};

} // namespace QuoteDesk
