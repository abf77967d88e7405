#pragma once

#include "toolkit/ItemsModel.h"

class TTreeNode;
class TTreeNodes;

namespace Zel
{

/// What Qt's tree view sees of TTreeNodes. A leaf says so itself, which spares the view a look below it.
class ZEL_TOOLKIT_EXPORT TreeModel : public ItemsModel
{
    Q_OBJECT
public:
    /// Shows @p nodes, which clear the link when they go first.
    TreeModel(TTreeNodes *nodes, QObject *parent);

    QModelIndex index(int row, int column, const QModelIndex &parent = {}) const override;
    QModelIndex parent(const QModelIndex &child) const override;
    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    bool hasChildren(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

    QModelIndex IndexOf(const TTreeNode *node) const; ///< Invalid for nullptr.
    /// The node behind an index of this model.
    static TTreeNode *NodeOf(const QModelIndex &index)
    {
        return static_cast<TTreeNode *>(index.internalPointer());
    }

private:
    friend class ::TTreeNodes;
    const TTreeNode *Branch(const QModelIndex &parent) const;
    TTreeNodes *m_nodes; // cleared when the nodes go first
};

} // namespace Zel
