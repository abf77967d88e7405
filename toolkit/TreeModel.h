#pragma once

#include "toolkit/ItemsModel.h"

class TTreeNode;
class TTreeNodes;

namespace Zel
{

/// The model of a tree view's nodes. A leaf has the flag ItemNeverHasChildren, so the view need not look for
/// children.
class ZEL_TOOLKIT_EXPORT TreeModel : public ItemsModel
{
    Q_OBJECT
public:
    /// A model of @p nodes, whose destructor clears the model's link to them.
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
    /// The node of an index of this model.
    static TTreeNode *NodeOf(const QModelIndex &index)
    {
        return static_cast<TTreeNode *>(index.internalPointer());
    }

private:
    friend class ::TTreeNodes;
    const TTreeNode *Branch(const QModelIndex &parent) const;
    TTreeNodes *m_nodes; // nullptr after the nodes are destroyed
};

} // namespace Zel
