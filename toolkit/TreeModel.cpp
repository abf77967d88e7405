#include "toolkit/TreeModel.h"

#include "toolkit/TTreeNodes.h"

namespace Zel
{

TreeModel::TreeModel(TTreeNodes *nodes, QObject *parent) : ItemsModel(parent), m_nodes(nodes) {}

const TTreeNode *TreeModel::Branch(const QModelIndex &parent) const
{
    const TTreeNode *const root = m_nodes && parent.column() <= 0 ? m_nodes->ShownRoot() : nullptr;
    return root && parent.isValid() ? NodeOf(parent) : root;
}

QModelIndex TreeModel::IndexOf(const TTreeNode *node) const
{
    return node && m_nodes->ShownRoot() ? createIndex(node->Index(), 0, node) : QModelIndex();
}

QModelIndex TreeModel::index(int row, int column, const QModelIndex &parent) const
{
    const TTreeNode *branch = Branch(parent);
    if (!branch || column != 0 || row < 0 || row >= branch->Count())
        return {};
    return createIndex(row, 0, branch->Item(row));
}

QModelIndex TreeModel::parent(const QModelIndex &child) const
{
    return child.isValid() ? IndexOf(NodeOf(child)->Parent()) : QModelIndex();
}

int TreeModel::rowCount(const QModelIndex &parent) const
{
    const TTreeNode *branch = Branch(parent);
    return branch ? branch->Count() : 0;
}

int TreeModel::columnCount(const QModelIndex &) const
{
    return 1;
}

bool TreeModel::hasChildren(const QModelIndex &parent) const
{
    return rowCount(parent) > 0;
}

QVariant TreeModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const TTreeNode *node = NodeOf(index);
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        return node->Text();
    case Qt::DecorationRole:
        return Picture(node->ImageIndex());
    default:
        return {};
    }
}

bool TreeModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (!index.isValid() || role != Qt::EditRole)
        return false;
    NodeOf(index)->SetText(value.toString());
    return true;
}

Qt::ItemFlags TreeModel::flags(const QModelIndex &index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled;
    if (!ReadOnly())
        flags |= Qt::ItemIsEditable;
    if (!NodeOf(index)->HasChildren())
        flags |= Qt::ItemNeverHasChildren;
    return flags;
}

} // namespace Zel
