#pragma once

#include "toolkit/GridLook.h"

#include <QHeaderView>

namespace Zel::GridLook
{

/// Draws a cell.
void PaintCell(QPainter &painter, const QStyleOptionViewItem &option, const TtsGrid &grid,
               const QModelIndex &index);

/// The headings of a grid.
class Header : public QHeaderView
{
public:
    explicit Header(TtsGrid *grid) : QHeaderView(Qt::Horizontal, grid), m_grid(*grid) {}

protected:
    void paintSection(QPainter *painter, const QRect &rect, int section) const override;

private:
    TtsGrid &m_grid;
};

} // namespace Zel::GridLook
