#include "toolkit/ListModel.h"

#include "toolkit/TListItems.h"

namespace Zel
{

ListModel::ListModel(TListItems *items, QObject *parent) : ItemsModel(parent), m_items(items) {}

void ListModel::AddColumn(const QString &caption)
{
    const int column = columnCount();
    beginInsertColumns({}, column, column);
    m_columns.append({caption, Qt::AlignLeft});
    endInsertColumns();
}

void ListModel::SetCaption(int column, const QString &caption)
{
    m_columns[column].caption = caption;
    Q_EMIT headerDataChanged(Qt::Horizontal, column, column);
}

void ListModel::SetAlignment(int column, Qt::Alignment alignment)
{
    m_columns[column].alignment = alignment;
    Q_EMIT headerDataChanged(Qt::Horizontal, column, column);
    if (const int rows = rowCount(); rows > 0)
        Q_EMIT dataChanged(index(0, column), index(rows - 1, column), {Qt::TextAlignmentRole});
}

QModelIndex ListModel::IndexOf(const TListItem *item, int column) const
{
    if (!item || !m_items->Shown() || column >= columnCount())
        return {};
    return createIndex(item->Index(), column, item);
}

QModelIndex ListModel::index(int row, int column, const QModelIndex &parent) const
{
    if (parent.isValid() || column < 0 || column >= m_columns.size() || row < 0 || row >= rowCount())
        return {};
    return createIndex(row, column, m_items->Item(row));
}

QModelIndex ListModel::parent(const QModelIndex &) const
{
    return {};
}

QModelIndex ListModel::sibling(int row, int column, const QModelIndex &index) const
{
    return index.isValid() ? ListModel::index(row, column) : QModelIndex();
}

int ListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() || !m_items || !m_items->Shown() ? 0 : m_items->Count();
}

int ListModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_columns.size());
}

bool ListModel::hasChildren(const QModelIndex &parent) const
{
    return rowCount(parent) > 0 && columnCount(parent) > 0;
}

QVariant ListModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const TListItem *item = ItemOf(index);
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        if (index.column() == 0)
            return item->Caption();
        if (index.column() <= item->SubItems().size())
            return item->SubItems().at(index.column() - 1);
        return {};
    case Qt::DecorationRole:
        return index.column() == 0 ? Picture(item->ImageIndex()) : QVariant();
    case Qt::CheckStateRole:
        if (index.column() == 0 && m_checkBoxes)
            return item->Checked() ? Qt::Checked : Qt::Unchecked;
        return {};
    case Qt::TextAlignmentRole:
        return AlignmentOf(index.column());
    default:
        return {};
    }
}

bool ListModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (!index.isValid() || index.column() != 0)
        return false;
    if (role == Qt::CheckStateRole && m_checkBoxes)
        ItemOf(index)->SetChecked(value.toInt() == Qt::Checked);
    else if (role == Qt::EditRole)
        ItemOf(index)->SetCaption(value.toString());
    else
        return false;
    return true;
}

QVariant ListModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= m_columns.size())
        return {};
    if (role == Qt::DisplayRole)
        return m_columns.at(section).caption;
    if (role == Qt::TextAlignmentRole)
        return AlignmentOf(section);
    return {};
}

Qt::ItemFlags ListModel::flags(const QModelIndex &index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    Qt::ItemFlags flags =
        Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled | Qt::ItemNeverHasChildren;
    if (index.column() == 0 && m_checkBoxes)
        flags |= Qt::ItemIsUserCheckable;
    if (index.column() == 0 && !ReadOnly())
        flags |= Qt::ItemIsEditable;
    return flags;
}

} // namespace Zel
