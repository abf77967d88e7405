#pragma once

#include "data/DataTypes.h"
#include "export/zel_toolkit_export.h"
#include "toolkit/NodePool.h"
#include "toolkit/NodeWatch.h"

#include <QString>

#include <memory>
#include <vector>

class TTreeNodes;
class TTreeView;
class TWindowUpdateLock;

namespace Zel
{
class TreeModel;
}

/// One node of a tree view. The view's TTreeNodes creates, owns and deletes it; its address does not change.
class ZEL_TOOLKIT_EXPORT TTreeNode
{
public:
    const QString &Text() const noexcept { return m_text; } ///< The caption.
    void SetText(const QString &text);                      ///< Shown at once, or at the end of an update.
    /// The bookmark of the node's row. The host gets and frees the bookmark; the node only stores it.
    TBookmark Data() const noexcept { return m_data; }
    void SetData(TBookmark data) noexcept { m_data = data; }
    /// The index in the view's Images; -1 for no picture.
    int ImageIndex() const noexcept { return m_imageIndex; }
    void SetImageIndex(int index);
    /// The index of the picture of the selected node; -1 for the same picture as ImageIndex.
    int SelectedIndex() const noexcept { return m_selectedIndex; }
    void SetSelectedIndex(int index);
    /// The index in the view's StateImages; -1 for no state picture.
    int StateIndex() const noexcept { return m_stateIndex; }
    void SetStateIndex(int index);

    int Level() const noexcept;                  ///< 0 for a root node.
    int Index() const noexcept { return m_row; } ///< The position among its siblings.
    /// The position in the tree, depth first. Calculated for all nodes at once and cached until nodes are
    /// inserted or deleted.
    int AbsoluteIndex() const;
    TTreeNode *Parent() const noexcept;                                        ///< nullptr for a root node.
    int Count() const noexcept { return static_cast<int>(m_children.size()); } ///< Direct children.
    TTreeNode *Item(int index) const; ///< A direct child. Throws EListError outside 0..Count-1.
    bool HasChildren() const noexcept { return !m_children.empty(); } ///< Whether it has direct children.
    /// The first direct child; nullptr without children.
    TTreeNode *GetFirstChild() const noexcept { return m_children.empty() ? nullptr : m_children.front(); }
    /// The last direct child; nullptr without children.
    TTreeNode *GetLastChild() const noexcept { return m_children.empty() ? nullptr : m_children.back(); }
    TTreeNode *GetNextSibling() const noexcept; ///< nullptr for the last sibling.
    TTreeNode *GetPrevSibling() const noexcept; ///< nullptr for the first sibling.
    TTreeNode *GetNext() const noexcept;        ///< The next node, depth first; nullptr for the last node.

    /// Whether the children are shown. A node without children cannot be expanded; inside an update it keeps
    /// the setting until the update ends.
    bool Expanded() const;
    void SetExpanded(bool expanded);
    bool Selected() const;
    /// Selecting a node deselects any other.
    void SetSelected(bool selected);
    void MakeVisible(); ///< Expands its ancestors and scrolls to the node.
    /// Deletes the node with all its descendants, without freeing bookmarks.
    void Delete();

    TTreeNodes *Owner() const noexcept { return m_owner; } ///< The nodes of the view.
    TTreeView *TreeView() const noexcept;                  ///< The view that shows the node.

private:
    friend class TTreeNodes;
    friend class Zel::NodePool<TTreeNode>;

    TTreeNode() = default;
    TTreeNode(const TTreeNode &) = delete;
    TTreeNode &operator=(TTreeNode &&) = default;

    QString m_text;
    TBookmark m_data = nullptr;
    TTreeNodes *m_owner = nullptr;
    TTreeNode *m_parent = nullptr; // for a root node the owner's hidden root
    std::vector<TTreeNode *> m_children;
    int m_row = 0;
    int m_imageIndex = -1;
    int m_selectedIndex = -1;
    int m_stateIndex = -1;
    mutable int m_absoluteIndex = 0; // valid while the owner's m_orderKnown is set
    bool m_expanded = false;         // valid while an update hides the nodes
};

/// The nodes of one tree view.
class ZEL_TOOLKIT_EXPORT TTreeNodes
{
public:
    explicit TTreeNodes(TTreeView *view); ///< Only the view calls this; it owns the nodes.
    ~TTreeNodes();
    TTreeNodes(const TTreeNodes &) = delete;
    TTreeNodes &operator=(const TTreeNodes &) = delete;

    /// Appends a root node, or a child of @p parent (nullptr: a root node). Then runs the view's OnAddition
    /// with the node, which has its text and data. Exceptions of OnAddition pass to the caller, and the node
    /// stays. Returns nullptr when OnAddition has deleted the node.
    TTreeNode *Add(const QString &text) { return AddChildObject(nullptr, text, nullptr); }
    TTreeNode *AddObject(const QString &text, TBookmark data) { return AddChildObject(nullptr, text, data); }
    TTreeNode *AddChild(TTreeNode *parent, const QString &text)
    {
        return AddChildObject(parent, text, nullptr);
    }
    /// All functions above call this one.
    TTreeNode *AddChildObject(TTreeNode *parent, const QString &text, TBookmark data);

    int Count() const noexcept { return m_pool.Live(); } ///< The number of nodes in all levels.
    TTreeNode *GetFirstNode() const noexcept;            ///< nullptr when empty.
    TTreeNode *Item(int absoluteIndex) const;            ///< Throws EListError outside 0..Count-1.
    TTreeNode *operator[](int absoluteIndex) const { return Item(absoluteIndex); } ///< The same as Item.
    void Clear();                 ///< Deletes all nodes, without freeing bookmarks.
    void Delete(TTreeNode *node); ///< The same as TTreeNode::Delete.

    /// Until the matching EndUpdate (calls are counted) the view shows no changes. After a node was added or
    /// deleted, the view has no nodes until EndUpdate, which shows all of them at once. The view keeps the
    /// expanded and selected state and the scroll position for the nodes that remain.
    void BeginUpdate();
    void EndUpdate();
    bool Updating() const noexcept { return m_updates > 0; }
    /// The hidden node above all root nodes, for the model; nullptr while an update hides the nodes.
    const TTreeNode *ShownRoot() const noexcept { return m_hidden ? nullptr : &m_root; }

    TTreeView *Owner() const noexcept { return m_view; } ///< The view of the nodes.

private:
    friend class TTreeNode;
    friend class TTreeView;

    const std::vector<TTreeNode *> &Order() const;
    void ForgetOrder() noexcept;
    void Changed(const TTreeNode *node, int role);
    void Expand(TTreeNode *node, bool expanded);
    void Hide(bool keepState);
    void Show();
    bool Within(const TTreeNode *node, const TTreeNode *ancestor) const noexcept;

    TTreeView *m_view;
    Zel::TreeModel *m_model; // owned by the view
    Zel::NodePool<TTreeNode> m_pool;
    TTreeNode m_root;
    mutable std::vector<TTreeNode *> m_order; // depth first
    mutable bool m_orderKnown = false;        // whether m_order is valid
    int m_updates = 0;
    bool m_hidden = false;           // an update hides the nodes from the view
    bool m_anyExpanded = false;      // whether m_expanded is set in any node
    TTreeNode *m_selected = nullptr; // valid while hidden
    int m_scroll = 0;
    Zel::NodeWatch<TTreeNode> *m_watches = nullptr; // the newest watch
    std::unique_ptr<TWindowUpdateLock> m_lock;
};
