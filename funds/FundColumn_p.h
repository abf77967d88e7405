#pragma once

#include "toolkit/TtsGrid.h"

#include <QStyledItemDelegate>

namespace Zel
{

/// Draws the column of the funds' names in the application look: the colour of the fund, its name, and as far
/// as there is room its share as a bar. The pictures' column in front of it shows only other pictures than
/// the one that every fund has.
class FundColumn : public QStyledItemDelegate
{
public:
    FundColumn(TtsGrid *grid, QObject *parent) : QStyledItemDelegate(parent), m_grid(*grid) {}

    /// The percentage of a full bar.
    void SetLargest(double percent) { m_largest = percent; }

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    /// Shows the whole name when it is cut off.
    bool helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                   const QModelIndex &index) override;

private:
    QRect nameIn(const QRect &cell) const;
    bool hasBars(const QRect &cell) const;

    TtsGrid &m_grid;
    double m_largest = 100;
};

} // namespace Zel
