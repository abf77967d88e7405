#include "toolkit/TNodeModel.h"

#include "data/Exceptions.h"
#include "toolkit/TListView.h"
#include "toolkit/TScreen.h"
#include "toolkit/TTreeView.h"

#include <QCoreApplication>
#include <QScrollBar>

namespace
{

[[noreturn]] void RaiseIndex(int index)
{
    throw EListError(QCoreApplication::translate("TNodeModel", "List index out of bounds (%1)").arg(index));
}

template <typename Node> void Renumber(const std::vector<Node *> &nodes, int from, int Node::*row)
{
    for (std::size_t i = static_cast<std::size_t>(from); i < nodes.size(); ++i)
        nodes[i]->*row = static_cast<int>(i);
}

/// While one of these lives the view does not follow its current item around.
class StillView
{
public:
    explicit StillView(QAbstractItemView *view) : m_view(view), m_was(view->hasAutoScroll())
    {
        view->setAutoScroll(false);
    }
    ~StillView() { m_view->setAutoScroll(m_was); }
    StillView(const StillView &) = delete;
    StillView &operator=(const StillView &) = delete;

private:
    QAbstractItemView *m_view;
    bool m_was;
};

constexpr auto SelectRow = QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows;

} // namespace

// ---------------------------------------------------------------------------------------------- tree nodes

void TTreeNode::SetText(const QString &text)
{
    m_text = text;
    m_owner->Changed(this, Qt::DisplayRole);
}

void TTreeNode::SetImageIndex(int index)
{
    m_imageIndex = index;
    m_owner->Changed(this, Qt::DecorationRole);
}

void TTreeNode::SetSelectedIndex(int index)
{
    m_selectedIndex = index;
    m_owner->Changed(this, Qt::DecorationRole);
}

void TTreeNode::SetStateIndex(int index)
{
    m_stateIndex = index;
    m_owner->Changed(this, Qt::DecorationRole);
}

int TTreeNode::Level() const noexcept
{
    int level = 0;
    for (const TTreeNode *node = m_parent; node->m_parent; node = node->m_parent)
        ++level;
    return level;
}

int TTreeNode::AbsoluteIndex() const
{
    m_owner->Order();
    return m_absoluteIndex;
}

TTreeNode *TTreeNode::Parent() const noexcept
{
    return m_parent->m_parent ? m_parent : nullptr;
}

TTreeNode *TTreeNode::Item(int index) const
{
    if (index < 0 || index >= Count())
        RaiseIndex(index);
    return m_children[static_cast<std::size_t>(index)];
}

TTreeNode *TTreeNode::GetNextSibling() const noexcept
{
    return m_row + 1 < m_parent->Count() ? m_parent->m_children[static_cast<std::size_t>(m_row) + 1]
                                         : nullptr;
}

TTreeNode *TTreeNode::GetPrevSibling() const noexcept
{
    return m_row > 0 ? m_parent->m_children[static_cast<std::size_t>(m_row) - 1] : nullptr;
}

TTreeNode *TTreeNode::GetNext() const noexcept
{
    if (HasChildren())
        return m_children.front();
    for (const TTreeNode *node = this; node->m_parent; node = node->m_parent) {
        if (TTreeNode *next = node->GetNextSibling())
            return next;
    }
    return nullptr;
}

bool TTreeNode::Expanded() const
{
    if (!HasChildren())
        return false;
    return m_owner->m_hidden ? m_expanded : TreeView()->isExpanded(m_owner->m_model->IndexOf(this));
}

void TTreeNode::SetExpanded(bool expanded)
{
    if (!HasChildren())
        return;
    if (m_owner->m_hidden) {
        m_expanded = expanded;
        m_owner->m_anyExpanded |= expanded;
        return;
    }
    if (m_owner->Updating())
        TreeView()->BeginManyExpansions();
    TreeView()->setExpanded(m_owner->m_model->IndexOf(this), expanded);
}

bool TTreeNode::Selected() const
{
    return TreeView()->Selected() == this;
}

void TTreeNode::SetSelected(bool selected)
{
    if (selected)
        TreeView()->SetSelected(const_cast<TTreeNode *>(this));
    else if (Selected())
        TreeView()->SetSelected(nullptr);
}

void TTreeNode::MakeVisible()
{
    for (TTreeNode *node = Parent(); node; node = node->Parent())
        node->SetExpanded(true);
    if (!m_owner->m_hidden)
        TreeView()->scrollTo(m_owner->m_model->IndexOf(this));
}

void TTreeNode::Delete()
{
    m_owner->Delete(this);
}

TTreeView *TTreeNode::TreeView() const noexcept
{
    return m_owner->m_view;
}

TTreeNodes::TTreeNodes(TTreeView *view) : m_view(view), m_model(new Zel::TreeModel(this, view))
{
    m_root.m_owner = this;
}

TTreeNodes::~TTreeNodes()
{
    // The model goes with the view, after the nodes.
    m_model->m_nodes = nullptr;
    Zel::NodeWatch<TTreeNode>::Orphaned(m_watches);
    m_lock.reset();
}

TTreeNode *TTreeNodes::AddChildObject(TTreeNode *parent, const QString &text, TBookmark data)
{
    TTreeNode *above = parent ? parent : &m_root;
    if (Updating() && !m_hidden)
        Hide(true);
    const int row = above->Count();
    TTreeNode *node = m_pool.Take();
    node->m_owner = this;
    node->m_parent = above;
    node->m_row = row;
    node->m_text = text;
    node->m_data = data;
    if (m_orderKnown) {
        // A node added behind all others, the usual way of filling, leaves every other one's place as it was.
        if (m_order.empty() || Within(m_order.back(), above)) {
            node->m_absoluteIndex = static_cast<int>(m_order.size());
            m_order.push_back(node);
        } else {
            ForgetOrder();
        }
    }
    if (m_hidden) {
        above->m_children.push_back(node);
    } else {
        m_model->beginInsertRows(m_model->IndexOf(parent), row, row);
        above->m_children.push_back(node);
        m_model->endInsertRows();
    }
    if (!m_view->OnAddition)
        return node;
    Zel::NodeWatch<TTreeNode> added(m_watches, node);
    m_view->OnAddition(node);
    return added.Get();
}

TTreeNode *TTreeNodes::GetFirstNode() const noexcept
{
    return m_root.GetFirstChild();
}

TTreeNode *TTreeNodes::Item(int absoluteIndex) const
{
    if (absoluteIndex < 0 || absoluteIndex >= Count())
        RaiseIndex(absoluteIndex);
    return Order()[static_cast<std::size_t>(absoluteIndex)];
}

void TTreeNodes::Clear()
{
    if (Count() == 0)
        return;
    BeginUpdate();
    if (!m_hidden)
        Hide(false);
    m_selected = nullptr;
    m_anyExpanded = false;
    m_scroll = 0;
    m_root.m_children.clear();
    ForgetOrder();
    Zel::NodeWatch<TTreeNode>::Cleared(m_watches);
    m_pool.Clear();
    // A new node may lie where the selected one did and is another one all the same.
    if (m_view->m_announced)
        m_view->m_announced = &m_root;
    EndUpdate();
}

void TTreeNodes::Delete(TTreeNode *node)
{
    if (Updating() && !m_hidden)
        Hide(true);
    TTreeNode *above = node->m_parent;
    const int row = node->m_row;
    if (m_selected && Within(m_selected, node))
        m_selected = nullptr;
    // What the view selects instead is told when the node is gone: whoever hears of it may change the nodes.
    ++m_updates;
    if (!m_hidden)
        m_model->beginRemoveRows(m_model->IndexOf(node->Parent()), row, row);
    above->m_children.erase(above->m_children.begin() + row);
    Renumber(above->m_children, row, &TTreeNode::m_row);
    ForgetOrder();
    std::vector<TTreeNode *> doomed{node};
    for (std::size_t i = 0; i < doomed.size(); ++i)
        doomed.insert(doomed.end(), doomed[i]->m_children.begin(), doomed[i]->m_children.end());
    if (!m_hidden)
        m_model->endRemoveRows();
    for (TTreeNode *gone : doomed) {
        if (gone == m_view->m_announced)
            m_view->m_announced = &m_root;
        Zel::NodeWatch<TTreeNode>::Deleted(m_watches, gone);
        m_pool.GiveBack(gone);
    }
    --m_updates;
    if (!Updating())
        m_view->AnnounceSelection();
}

void TTreeNodes::BeginUpdate()
{
    if (m_updates++ == 0)
        m_lock = std::make_unique<TWindowUpdateLock>(m_view);
}

void TTreeNodes::EndUpdate()
{
    if (m_updates == 0 || --m_updates > 0)
        return;
    if (m_hidden)
        Show();
    m_lock.reset();
    m_view->AnnounceSelection();
}

bool TTreeNodes::Within(const TTreeNode *node, const TTreeNode *ancestor) const noexcept
{
    while (node && node != ancestor)
        node = node->m_parent;
    return node != nullptr;
}

const std::vector<TTreeNode *> &TTreeNodes::Order() const
{
    if (!m_orderKnown) {
        m_order.clear();
        m_order.reserve(static_cast<std::size_t>(Count()));
        for (TTreeNode *node = GetFirstNode(); node; node = node->GetNext()) {
            node->m_absoluteIndex = static_cast<int>(m_order.size());
            m_order.push_back(node);
        }
        m_orderKnown = true;
    }
    return m_order;
}

void TTreeNodes::ForgetOrder() noexcept
{
    m_order.clear();
    m_orderKnown = false;
}

void TTreeNodes::Changed(const TTreeNode *node, int role)
{
    if (m_hidden)
        return;
    const QModelIndex index = m_model->IndexOf(node);
    Q_EMIT m_model->dataChanged(index, index, {role});
}

void TTreeNodes::Hide(bool keepState)
{
    m_selected = nullptr;
    m_scroll = 0;
    if (keepState && Count() > 0) {
        for (TTreeNode *node = GetFirstNode(); node; node = node->GetNext()) {
            if (node->HasChildren()) {
                node->m_expanded = m_view->isExpanded(m_model->IndexOf(node));
                m_anyExpanded |= node->m_expanded;
            }
        }
        m_selected = m_view->Selected();
        m_scroll = m_view->verticalScrollBar()->value();
    }
    m_model->beginResetModel();
    m_hidden = true;
    m_model->endResetModel();
}

void TTreeNodes::Show()
{
    m_model->beginResetModel();
    m_hidden = false;
    m_model->endResetModel();
    const StillView still(m_view);
    if (m_anyExpanded) {
        // With a layout outstanding each of these is only noted down.
        m_view->BeginManyExpansions();
        for (TTreeNode *node = GetFirstNode(); node; node = node->GetNext()) {
            if (node->m_expanded && node->HasChildren())
                m_view->expand(m_model->IndexOf(node));
            node->m_expanded = false;
        }
        m_anyExpanded = false;
    }
    if (m_selected)
        m_view->selectionModel()->setCurrentIndex(m_model->IndexOf(m_selected), SelectRow);
    m_selected = nullptr;
    if (m_scroll > 0) {
        m_view->executeDelayedItemsLayout();
        m_view->verticalScrollBar()->setValue(m_scroll);
    }
}

// ---------------------------------------------------------------------------------------------- list items

void TListItem::Changed(int column)
{
    if (m_owner->m_hidden)
        return;
    const QModelIndex index = m_owner->m_model->IndexOf(this, column);
    if (index.isValid())
        Q_EMIT m_owner->m_model->dataChanged(index, index);
    Q_EMIT ListView()->ItemChanged(this);
}

void TListItem::SetCaption(const QString &caption)
{
    m_caption = caption;
    Changed(0);
}

void TListItem::SetSubItems(const QStringList &subItems)
{
    m_subItems = subItems;
    if (m_owner->m_hidden)
        return;
    const int last = m_owner->m_model->columnCount() - 1;
    if (last > 0)
        Q_EMIT m_owner->m_model->dataChanged(m_owner->m_model->IndexOf(this, 1),
                                             m_owner->m_model->IndexOf(this, last));
    Q_EMIT ListView()->ItemChanged(this);
}

void TListItem::AddSubItem(const QString &text)
{
    m_subItems.append(text);
    Changed(static_cast<int>(m_subItems.size()));
}

void TListItem::SetSubItem(int index, const QString &text)
{
    if (index < 0 || index >= m_subItems.size())
        RaiseIndex(index);
    m_subItems[index] = text;
    Changed(index + 1);
}

void TListItem::SetChecked(bool checked)
{
    if (m_checked == checked)
        return;
    m_checked = checked;
    // Whoever counts boxes hears of each, inside an update too.
    if (m_owner->m_hidden)
        Q_EMIT ListView()->ItemChanged(this);
    else
        Changed(0);
}

void TListItem::SetImageIndex(int index)
{
    m_imageIndex = index;
    Changed(0);
}

bool TListItem::Selected() const
{
    if (m_owner->m_hidden) {
        const auto &selected = m_owner->m_selected;
        return std::find(selected.begin(), selected.end(), this) != selected.end();
    }
    return ListView()->selectionModel()->isSelected(m_owner->m_model->IndexOf(this));
}

void TListItem::SetSelected(bool selected)
{
    const bool several = ListView()->MultiSelect();
    if (m_owner->m_hidden) {
        auto &all = m_owner->m_selected;
        if (selected && !several)
            all.clear();
        else
            all.erase(std::remove(all.begin(), all.end(), this), all.end());
        if (selected)
            all.push_back(this);
        return;
    }
    const auto command = !selected
                             ? QItemSelectionModel::Deselect
                             : (several ? QItemSelectionModel::Select : QItemSelectionModel::ClearAndSelect);
    ListView()->selectionModel()->select(m_owner->m_model->IndexOf(this),
                                         command | QItemSelectionModel::Rows);
}

bool TListItem::Focused() const
{
    return ListView()->FocusedItem() == this;
}

void TListItem::SetFocused(bool focused)
{
    if (focused)
        ListView()->SetFocused(this);
    else if (Focused())
        ListView()->SetFocused(nullptr);
}

void TListItem::MakeVisible()
{
    if (!m_owner->m_hidden)
        ListView()->scrollTo(m_owner->m_model->IndexOf(this));
}

void TListItem::Delete()
{
    m_owner->Delete(m_row);
}

TListView *TListItem::ListView() const noexcept
{
    return m_owner->m_view;
}

TListItems::TListItems(TListView *view) : m_view(view), m_model(new Zel::ListModel(this, view)) {}

TListItems::~TListItems()
{
    m_model->m_items = nullptr;
    Zel::NodeWatch<TListItem>::Orphaned(m_watches);
    m_lock.reset();
}

TListItem *TListItems::Add()
{
    if (Updating() && !m_hidden)
        Hide(true);
    TListItem *item = m_pool.Take();
    item->m_owner = this;
    item->m_row = Count();
    if (m_hidden) {
        m_rows.push_back(item);
    } else {
        m_model->beginInsertRows({}, item->m_row, item->m_row);
        m_rows.push_back(item);
        m_model->endInsertRows();
    }
    Zel::NodeWatch<TListItem> added(m_watches, item);
    Q_EMIT m_view->ItemInserted(item);
    return added.Get();
}

TListItem *TListItems::Item(int index) const
{
    if (index < 0 || index >= Count())
        RaiseIndex(index);
    return m_rows[static_cast<std::size_t>(index)];
}

void TListItems::Clear()
{
    if (Count() == 0)
        return;
    BeginUpdate();
    if (!m_hidden)
        Hide(false);
    m_selected.clear();
    m_focused = nullptr;
    m_scroll = 0;
    m_rows.clear();
    Zel::NodeWatch<TListItem>::Cleared(m_watches);
    m_pool.Clear();
    EndUpdate();
}

void TListItems::Delete(int index)
{
    TListItem *item = Item(index);
    if (Updating() && !m_hidden)
        Hide(true);
    const auto drop = [&] {
        m_rows.erase(m_rows.begin() + index);
        Renumber(m_rows, index, &TListItem::m_row);
    };
    if (m_hidden) {
        m_selected.erase(std::remove(m_selected.begin(), m_selected.end(), item), m_selected.end());
        if (m_focused == item)
            m_focused = nullptr;
        drop();
    } else {
        // The view would choose a neighbour by itself; which item follows is the host's to say.
        Zel::NodeWatch<TListItem> doomed(m_watches, item);
        if (item->Focused())
            m_view->selectionModel()->setCurrentIndex({}, QItemSelectionModel::NoUpdate);
        item->SetSelected(false);
        if (!doomed.Get())
            return; // whoever heard of it was faster
        index = item->m_row;
        m_model->beginRemoveRows({}, index, index);
        drop();
        m_model->endRemoveRows();
    }
    Zel::NodeWatch<TListItem>::Deleted(m_watches, item);
    m_pool.GiveBack(item);
}

void TListItems::BeginUpdate()
{
    if (m_updates++ == 0)
        m_lock = std::make_unique<TWindowUpdateLock>(m_view);
}

void TListItems::EndUpdate()
{
    if (m_updates == 0 || --m_updates > 0)
        return;
    if (m_hidden)
        Show();
    m_lock.reset();
}

void TListItems::Hide(bool keepState)
{
    m_selected.clear();
    m_focused = nullptr;
    m_scroll = 0;
    if (keepState && Count() > 0) {
        const QModelIndexList selected = m_view->selectionModel()->selectedRows();
        for (const QModelIndex &index : selected)
            m_selected.push_back(Zel::ListModel::ItemOf(index));
        m_focused = m_view->FocusedItem();
        m_scroll = m_view->verticalScrollBar()->value();
    }
    m_model->beginResetModel();
    m_hidden = true;
    m_model->endResetModel();
}

void TListItems::Show()
{
    m_model->beginResetModel();
    m_hidden = false;
    m_model->endResetModel();
    const StillView still(m_view);
    if (m_focused)
        m_view->selectionModel()->setCurrentIndex(m_model->IndexOf(m_focused), QItemSelectionModel::NoUpdate);
    m_focused = nullptr;
    // In one step: whoever hears of it may delete the items.
    QItemSelection selected;
    for (const TListItem *item : m_selected) {
        const QModelIndex index = m_model->IndexOf(item);
        selected.append(QItemSelectionRange(index));
    }
    m_selected.clear();
    m_view->selectionModel()->select(selected, QItemSelectionModel::Select | QItemSelectionModel::Rows);
    if (m_scroll > 0) {
        m_view->executeDelayedItemsLayout();
        m_view->verticalScrollBar()->setValue(m_scroll);
    }
}

// -------------------------------------------------------------------------------------------------- models

namespace Zel
{

ItemsModel::~ItemsModel() = default;

QVariant ItemsModel::Picture(int index) const
{
    return m_images && index >= 0 ? QVariant(m_images->Icon(index)) : QVariant();
}

TreeModel::TreeModel(TTreeNodes *nodes, QObject *parent) : ItemsModel(parent), m_nodes(nodes) {}

const TTreeNode *TreeModel::Branch(const QModelIndex &parent) const
{
    if (!m_nodes || m_nodes->m_hidden || parent.column() > 0)
        return nullptr;
    return parent.isValid() ? NodeOf(parent) : &m_nodes->m_root;
}

QModelIndex TreeModel::IndexOf(const TTreeNode *node) const
{
    return node && !m_nodes->m_hidden ? createIndex(node->m_row, 0, node) : QModelIndex();
}

QModelIndex TreeModel::index(int row, int column, const QModelIndex &parent) const
{
    const TTreeNode *branch = Branch(parent);
    if (!branch || column != 0 || row < 0 || row >= branch->Count())
        return {};
    return createIndex(row, 0, branch->m_children[static_cast<std::size_t>(row)]);
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
        return node->m_text;
    case Qt::DecorationRole:
        return Picture(node->m_imageIndex);
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

ListModel::ListModel(TListItems *items, QObject *parent) : ItemsModel(parent), m_items(items) {}

QModelIndex ListModel::IndexOf(const TListItem *item, int column) const
{
    if (!item || m_items->m_hidden || column >= columnCount())
        return {};
    return createIndex(item->m_row, column, item);
}

QModelIndex ListModel::index(int row, int column, const QModelIndex &parent) const
{
    if (parent.isValid() || column < 0 || column >= m_columns.size() || row < 0 || row >= rowCount())
        return {};
    return createIndex(row, column, m_items->m_rows[static_cast<std::size_t>(row)]);
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
    return parent.isValid() || !m_items || m_items->m_hidden ? 0 : m_items->Count();
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
            return item->m_caption;
        if (index.column() <= item->m_subItems.size())
            return item->m_subItems.at(index.column() - 1);
        return {};
    case Qt::DecorationRole:
        return index.column() == 0 ? Picture(item->m_imageIndex) : QVariant();
    case Qt::CheckStateRole:
        if (index.column() == 0 && m_checkBoxes)
            return item->m_checked ? Qt::Checked : Qt::Unchecked;
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
