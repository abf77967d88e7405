#pragma once

#include "data/DataTypes.h"
#include "export/zel_toolkit_export.h"
#include "toolkit/TImageList.h"

#include <QAbstractItemModel>
#include <QPointer>
#include <QStringList>

#include <algorithm>
#include <memory>
#include <vector>

class TListItem;
class TListItems;
class TListView;
class TTreeNode;
class TTreeNodes;
class TTreeView;
class TWindowUpdateLock;

namespace Zel
{

/// Keeps nodes in blocks: a node's address never changes, a deleted node's place is used again, and letting
/// go of all of them costs a few blocks instead of one call per node.
template <typename Node> class NodePool
{
public:
    /// A fresh node.
    Node *Take()
    {
        if (!m_free.empty()) {
            Node *node = m_free.back();
            m_free.pop_back();
            ++m_live;
            return node;
        }
        if (m_used == m_room) {
            m_room = std::min<std::size_t>(m_room ? m_room * 2 : 16, 4096);
            m_blocks.emplace_back(new Node[m_room]);
            m_used = 0;
        }
        ++m_live;
        return &m_blocks.back()[m_used++];
    }
    /// Puts @p node back as a fresh one; its address may be handed out again.
    void GiveBack(Node *node)
    {
        m_free.push_back(node);
        *node = Node();
        --m_live;
    }
    /// Lets go of every node.
    void Clear() noexcept
    {
        m_blocks.clear();
        m_free.clear();
        m_used = m_room = m_live = 0;
    }
    int Live() const noexcept { return static_cast<int>(m_live); } ///< Nodes handed out and not given back.

private:
    std::vector<std::unique_ptr<Node[]>> m_blocks;
    std::vector<Node *> m_free;
    std::size_t m_used = 0; // nodes handed out of the last block
    std::size_t m_room = 0; // nodes in the last block
    std::size_t m_live = 0;
};

/// Follows a node while a handler of the host's runs, which may delete it, or the view with all of its nodes.
template <typename Node> class NodeWatch
{
public:
    /// Follows @p node; @p newest is where its owner keeps the watches that there are at the moment.
    NodeWatch(NodeWatch *&newest, Node *node) : m_newest(&newest), m_outer(newest), m_node(node)
    {
        newest = this;
    }
    ~NodeWatch()
    {
        if (m_newest)
            *m_newest = m_outer;
    }
    NodeWatch(const NodeWatch &) = delete;
    NodeWatch &operator=(const NodeWatch &) = delete;
    Node *Get() const noexcept { return m_node; } ///< The node; nullptr when it is gone.

    /// For the owner: @p node is deleted.
    static void Deleted(NodeWatch *newest, const Node *node) noexcept
    {
        for (NodeWatch *watch = newest; watch; watch = watch->m_outer) {
            if (watch->m_node == node)
                watch->m_node = nullptr;
        }
    }
    /// For the owner: all nodes are deleted.
    static void Cleared(NodeWatch *newest) noexcept
    {
        for (NodeWatch *watch = newest; watch; watch = watch->m_outer)
            watch->m_node = nullptr;
    }
    /// For the owner: it goes itself.
    static void Orphaned(NodeWatch *newest) noexcept
    {
        Cleared(newest);
        for (NodeWatch *watch = newest; watch; watch = watch->m_outer)
            watch->m_newest = nullptr;
    }

private:
    NodeWatch **m_newest;
    NodeWatch *m_outer;
    Node *m_node;
};

class ItemsView;
class ListModel;
class TreeModel;

} // namespace Zel

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
    friend class Zel::TreeModel;
    template <typename> friend class Zel::NodePool;

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

    TTreeView *Owner() const noexcept { return m_view; } ///< The view that shows them.

private:
    friend class TTreeNode;
    friend class TTreeView;
    friend class Zel::TreeModel;

    const std::vector<TTreeNode *> &Order() const;
    void ForgetOrder() noexcept;
    void Changed(const TTreeNode *node, int role);
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

/// One row of a list view. Made, owned and deleted by the view's TListItems; its address holds until then.
class ZEL_TOOLKIT_EXPORT TListItem
{
public:
    const QString &Caption() const noexcept { return m_caption; } ///< The text of column 0.
    void SetCaption(const QString &caption); ///< Shown at once, or at the end of an update.
    /// The texts of columns 1 and up; columns without one are blank.
    const QStringList &SubItems() const noexcept { return m_subItems; }
    void SetSubItems(const QStringList &subItems);
    void AddSubItem(const QString &text);               ///< Appends a text.
    void SetSubItem(int index, const QString &text);    ///< EListError outside the sub-items there are.
    bool Checked() const noexcept { return m_checked; } ///< Its check box, shown or not.
    void SetChecked(bool checked);                      ///< What the user's click does.
    /// Index into the view's SmallImages; -1 is no picture.
    int ImageIndex() const noexcept { return m_imageIndex; }
    void SetImageIndex(int index);
    /// The row the item leads back to. The item only carries it: taking and giving back is the host's.
    TBookmark Data() const noexcept { return m_data; }
    void SetData(TBookmark data) noexcept { m_data = data; }
    bool Selected() const;
    void SetSelected(bool selected);
    bool Focused() const;
    void SetFocused(bool focused);
    int Index() const noexcept { return m_row; } ///< Its place in the list.
    void MakeVisible();                          ///< Scrolls to it.
    /// Deletes the item. Its bookmark is not given back.
    void Delete();

    TListItems *Owner() const noexcept { return m_owner; } ///< The items it belongs to.
    TListView *ListView() const noexcept;                  ///< The view that shows it.

private:
    friend class TListItems;
    friend class TListView;
    friend class Zel::ListModel;
    template <typename> friend class Zel::NodePool;

    TListItem() = default;
    TListItem(const TListItem &) = delete;
    TListItem &operator=(TListItem &&) = default;
    void Changed(int column);

    QString m_caption;
    QStringList m_subItems;
    TBookmark m_data = nullptr;
    TListItems *m_owner = nullptr;
    int m_row = 0;
    int m_imageIndex = -1;
    bool m_checked = false;
};

/// The rows of one list view.
class ZEL_TOOLKIT_EXPORT TListItems
{
public:
    explicit TListItems(TListView *view); ///< For the view, which owns it.
    ~TListItems();
    TListItems(const TListItems &) = delete;
    TListItems &operator=(const TListItems &) = delete;

    /// Adds an empty item after the last. The view's ItemInserted follows at once, inside an update too;
    /// nullptr when a listener has deleted the item.
    TListItem *Add();
    int Count() const noexcept { return static_cast<int>(m_rows.size()); } ///< How many items there are.
    TListItem *Item(int index) const;                                      ///< EListError outside 0..Count-1.
    TListItem *operator[](int index) const { return Item(index); }         ///< The same as Item.
    void Clear();
    void Delete(int index); ///< EListError outside 0..Count-1. A deleted selected item leaves no selection.

    /// Until the matching EndUpdate (calls are counted) the view shows nothing new; once items are added or
    /// deleted in between it forgets the old ones too, and is told of all the new ones at once at the end.
    /// Selection, focus and the place on screen of items that stay are kept.
    void BeginUpdate();
    void EndUpdate();
    bool Updating() const noexcept { return m_updates > 0; }

    TListView *Owner() const noexcept { return m_view; } ///< The view that shows them.

private:
    friend class TListItem;
    friend class TListView;
    friend class Zel::ListModel;

    void Hide(bool keepState);
    void Show();

    TListView *m_view;
    Zel::ListModel *m_model; // owned by the view
    Zel::NodePool<TListItem> m_pool;
    std::vector<TListItem *> m_rows;
    int m_updates = 0;
    bool m_hidden = false;               // the view does not see the items
    std::vector<TListItem *> m_selected; // meaningful while hidden
    TListItem *m_focused = nullptr;      // meaningful while hidden
    int m_scroll = 0;
    Zel::NodeWatch<TListItem> *m_watches = nullptr; // the newest
    std::unique_ptr<TWindowUpdateLock> m_lock;
};

namespace Zel
{

/// What the models of both views carry for their view.
class ZEL_TOOLKIT_EXPORT ItemsModel : public QAbstractItemModel
{
    Q_OBJECT
public:
    ~ItemsModel() override;
    Qt::DropActions supportedDragActions() const override { return Qt::CopyAction; }

protected:
    using QAbstractItemModel::QAbstractItemModel;
    /// The picture at @p index, nothing for none.
    QVariant Picture(int index) const;
    bool ReadOnly() const noexcept { return m_readOnly; }

private:
    friend class ItemsView;
    QPointer<TImageList> m_images; // not owned
    bool m_readOnly = false;
};

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
    friend class ::TTreeNode;
    friend class ::TTreeView;
    const TTreeNode *Branch(const QModelIndex &parent) const;
    TTreeNodes *m_nodes; // cleared when the nodes go first
};

/// What Qt's view sees of TListItems and of the list view's columns.
class ZEL_TOOLKIT_EXPORT ListModel : public ItemsModel
{
    Q_OBJECT
public:
    /// Shows @p items, which clear the link when they go first.
    ListModel(TListItems *items, QObject *parent);

    QModelIndex index(int row, int column, const QModelIndex &parent = {}) const override;
    QModelIndex parent(const QModelIndex &child) const override;
    QModelIndex sibling(int row, int column, const QModelIndex &index) const override;
    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    bool hasChildren(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

    QModelIndex IndexOf(const TListItem *item, int column = 0) const; ///< Invalid for nullptr.
    /// The item behind an index of this model.
    static TListItem *ItemOf(const QModelIndex &index)
    {
        return static_cast<TListItem *>(index.internalPointer());
    }

private:
    friend class ::TListItems;
    friend class ::TListItem;
    friend class ::TListView;
    struct Column {
        QString caption;
        Qt::Alignment alignment = Qt::AlignLeft;
    };
    int AlignmentOf(int column) const { return int(m_columns.at(column).alignment | Qt::AlignVCenter); }
    TListItems *m_items; // cleared when the items go first
    QList<Column> m_columns;
    bool m_checkBoxes = false;
};

} // namespace Zel
