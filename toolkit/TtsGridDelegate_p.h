#pragma once

#include "toolkit/TtsGrid.h"

#include <QStyledItemDelegate>

/// Draws the cells of a grid and creates their editors.
class ZEL_TOOLKIT_NO_EXPORT TtsGrid::Delegate : public QStyledItemDelegate
{
public:
    explicit Delegate(TtsGrid *grid) : QStyledItemDelegate(grid), m_grid(grid) {}

    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option,
                          const QModelIndex &index) const override;
    void setEditorData(QWidget *editor, const QModelIndex &index) const override;
    void setModelData(QWidget *, QAbstractItemModel *, const QModelIndex &) const override {}
    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    void updateEditorGeometry(QWidget *editor, const QStyleOptionViewItem &option,
                              const QModelIndex &index) const override;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    TtsGrid *m_grid;
};
