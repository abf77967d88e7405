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

/// One node of a tree view. Made, owned and deleted by the view's TTreeNodes; its address holds until then.
class ZEL_TOOLKIT_EXPORT TTreeNode
{
public:
    const QString &Text() const noexcept { return m_text; } ///< What the view shows.
    void SetText(const QString &text);                      ///< Shown at once, or at the end of an update.
    /// The row the node leads back to. The node only carries it: taking and giving back is the host's.
    TBookmark Data() const noexcept { return m_data; }
    void SetData(TBookmark data) noexcept { m_data = data; }
    /// Index into the view's Images; -1 is no picture.
    int ImageIndex() const noexcept { return m_imageIndex; }
    void SetImageIndex(int index);
    /// Index of the picture shown while the node is selected; -1 shows ImageIndex then too.
    int SelectedIndex() const noexcept { return m_selectedIndex; }
    void SetSelectedIndex(int index);
    /// Index into the view's StateImages; -1 is no state picture.
    int StateIndex() const noexcept { return m_stateIndex; }
    void SetStateIndex(int index);

    int Level() const noexcept;                  ///< 0 for a root node.
    int Index() const noexcept { return m_row; } ///< Among its siblings.
    /// Place in the tree, depth first. Cheap for a walk over all nodes: it is worked out for all at once and
    /// kept until nodes are inserted or deleted.
    int AbsoluteIndex() const;
    TTreeNode *Parent() const noexcept;                                        ///< nullptr for a root node.
    int Count() const noexcept { return static_cast<int>(m_children.size()); } ///< Direct children.
    TTreeNode *Item(int index) const; ///< A direct child; EListError outside 0..Count-1.
    bool HasChildren() const noexcept { return !m_children.empty(); } ///< Whether there is a node below it.
    /// nullptr without children, as for the next three.
    TTreeNode *GetFirstChild() const noexcept { return m_children.empty() ? nullptr : m_children.front(); }
    /// The last node below it.
    TTreeNode *GetLastChild() const noexcept { return m_children.empty() ? nullptr : m_children.back(); }
    TTreeNode *GetNextSibling() const noexcept; ///< The next one below the same parent.
    TTreeNode *GetPrevSibling() const noexcept; ///< The one before it.
    TTreeNode *GetNext() const noexcept;        ///< The next one depth first, nullptr after the last.

    /// Whether its children are shown. A node without children cannot be expanded, and one built inside an
    /// update keeps what it was told until the update ends.
    bool Expanded() const;
    void SetExpanded(bool expanded);
    bool Selected() const;
    /// Selecting a node takes the selection from any other.
    void SetSelected(bool selected);
    void MakeVisible(); ///< Expands its ancestors and scrolls to it.
    /// Deletes the node with all below it. Bookmarks are not given back.
    void Delete();

    TTreeNodes *Owner() const noexcept { return m_owner; } ///< The nodes it belongs to.
    TTreeView *TreeView() const noexcept;                  ///< The view that shows it.

private:
    friend class TTreeNodes;
    friend class Zel::NodePool<TTreeNode>;

    TTreeNode() = default;
    TTreeNode(const TTreeNode &) = delete;
    TTreeNode &operator=(TTreeNode &&) = default;

    QString m_text;
    TBookmark m_data = nullptr;
    TTreeNodes *m_owner = nullptr;
    TTreeNode *m_parent = nullptr; // the owner's hidden root for a root node
    std::vector<TTreeNode *> m_children;
    int m_row = 0;
    int m_imageIndex = -1;
    int m_selectedIndex = -1;
    int m_stateIndex = -1;
    mutable int m_absoluteIndex = 0; // meaningful while the owner's order is known
    bool m_expanded = false;         // meaningful while the view does not see the nodes
};

/// The nodes of one tree view.
class ZEL_TOOLKIT_EXPORT TTreeNodes
{
public:
    explicit TTreeNodes(TTreeView *view); ///< For the view, which owns it.
    ~TTreeNodes();
    TTreeNodes(const TTreeNodes &) = delete;
    TTreeNodes &operator=(const TTreeNodes &) = delete;

    /// Adds a root node after the last one, or a child after @p parent's last (nullptr: a root node). The
    /// view's OnAddition runs once the node is in place with text and data; what it raises passes to the
    /// caller, and the node stays. nullptr when OnAddition has deleted the node.
    TTreeNode *Add(const QString &text) { return AddChildObject(nullptr, text, nullptr); }
    TTreeNode *AddObject(const QString &text, TBookmark data) { return AddChildObject(nullptr, text, data); }
    TTreeNode *AddChild(TTreeNode *parent, const QString &text)
    {
        return AddChildObject(parent, text, nullptr);
    }
    /// All of the above come to this one.
    TTreeNode *AddChildObject(TTreeNode *parent, const QString &text, TBookmark data);

    int Count() const noexcept { return m_pool.Live(); } ///< All nodes of all levels.
    TTreeNode *GetFirstNode() const noexcept;            ///< nullptr when empty.
    TTreeNode *Item(int absoluteIndex) const;            ///< EListError outside 0..Count-1.
    TTreeNode *operator[](int absoluteIndex) const { return Item(absoluteIndex); } ///< The same as Item.
    void Clear();                 ///< Deletes all of them; bookmarks are not given back.
    void Delete(TTreeNode *node); ///< With everything below it.

    /// Until the matching EndUpdate (calls are counted) the view shows nothing new; once nodes are added or
    /// deleted in between it forgets the old ones too, and is told of all the new ones at once at the end.
    /// Expanded, selected and the place on screen of nodes that stay are kept.
    void BeginUpdate();
    void EndUpdate();
    bool Updating() const noexcept { return m_updates > 0; }
    /// What the view sees: the node above all root nodes, nullptr while an update hides them.
    const TTreeNode *ShownRoot() const noexcept { return m_hidden ? nullptr : &m_root; }

    TTreeView *Owner() const noexcept { return m_view; } ///< The view that shows them.

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
    mutable bool m_orderKnown = false;        // worked out at the first question
    int m_updates = 0;
    bool m_hidden = false;           // the view does not see the nodes
    bool m_anyExpanded = false;      // some node's m_expanded is set
    TTreeNode *m_selected = nullptr; // meaningful while hidden
    int m_scroll = 0;
    Zel::NodeWatch<TTreeNode> *m_watches = nullptr; // the newest
    std::unique_ptr<TWindowUpdateLock> m_lock;
};
