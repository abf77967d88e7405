#pragma once

#include <QStyledItemDelegate>

class TtsGrid;

namespace QuoteDesk
{

/// Draws the funds that are no longer offered as rows under the grid of the others, in its columns.
class KeptFundDelegate : public QStyledItemDelegate
{
    Q_OBJECT
public:
    /// The texts of a row. An item's own text says all of them.
    enum Role { Name = Qt::UserRole, Percent, Amount };

    /// @p grid must outlive the delegate.
    KeptFundDelegate(const TtsGrid &grid, QObject *parent);
    ~KeptFundDelegate() override;

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

private:
    QRect cell(const QStyleOptionViewItem &option, int column) const;

    const TtsGrid &m_grid;
};

} // namespace QuoteDesk
