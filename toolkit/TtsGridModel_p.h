#pragma once

#include "data/Exceptions.h"
#include "toolkit/TtsGrid.h"

#include <QAbstractTableModel>

#include <memory>
#include <vector>

/// The cells and columns of a grid, and the model for QTableView.
class ZEL_TOOLKIT_NO_EXPORT TtsGrid::Model : public QAbstractTableModel
{
public:
    explicit Model(TtsGrid *grid) : QAbstractTableModel(grid), m_grid(grid) {}

    int rowCount(const QModelIndex &parent = {}) const override { return parent.isValid() ? 0 : m_rows; }
    int columnCount(const QModelIndex &parent = {}) const override
    {
        return parent.isValid() ? 0 : static_cast<int>(m_columns.size());
    }
    Qt::ItemFlags flags(const QModelIndex &index) const override
    {
        Qt::ItemFlags flags = QAbstractTableModel::flags(index);
        if (index.isValid() && m_grid->canEdit(index.column() + 1, index.row() + 1))
            flags |= Qt::ItemIsEditable;
        return flags;
    }
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    void Reset(bool begin)
    {
        if (begin)
            beginResetModel();
        else
            endResetModel();
    }
    std::size_t At(int column, int row) const
    {
        return static_cast<std::size_t>(row - 1) * m_columns.size() + static_cast<std::size_t>(column - 1);
    }
    bool Holds(int column, int row) const
    {
        return column >= 1 && column <= columnCount() && row >= 1 && row <= m_rows;
    }
    void Require(int column, int row) const
    {
        if (!Holds(column, row))
            throw EListError(
                QStringLiteral("The grid has no cell in column %1 of row %2.").arg(column).arg(row));
    }
    void Changed(int column, int row)
    {
        const QModelIndex cell = index(row - 1, column - 1);
        Q_EMIT dataChanged(cell, cell);
    }
    void ColumnChanged(int column)
    {
        Q_EMIT headerDataChanged(Qt::Horizontal, column - 1, column - 1);
        if (m_rows > 0)
            Q_EMIT dataChanged(index(0, column - 1), index(m_rows - 1, column - 1));
    }
    void Insert(bool announce)
    {
        if (announce)
            beginInsertRows({}, m_rows, m_rows);
        m_cells.resize(m_cells.size() + m_columns.size());
        ++m_rows;
        if (announce)
            endInsertRows();
    }
    void Remove(int row, bool announce)
    {
        if (announce)
            beginRemoveRows({}, row - 1, row - 1);
        const auto first = m_cells.begin() + static_cast<std::ptrdiff_t>(At(1, row));
        m_cells.erase(first, first + static_cast<std::ptrdiff_t>(m_columns.size()));
        --m_rows;
        if (announce)
            endRemoveRows();
    }

    std::vector<QVariant> m_cells; ///< row by row
    std::vector<std::unique_ptr<TtsCol>> m_columns;
    int m_rows = 0;

private:
    TtsGrid *m_grid;
};
