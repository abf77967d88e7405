#include "toolkit/TTreeNodes.h"

#include "toolkit/ListIndex_p.h"
#include "toolkit/Nodes_p.h"
#include "toolkit/TScreen.h"
#include "toolkit/TTreeView.h"
#include "toolkit/TreeModel.h"

#include <QScrollBar>

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
    Zel::CheckListIndex(index, Count());
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
    if (HasChildren())
        m_owner->Expand(this, expanded);
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
    // The view destroys the model after the nodes.
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
        // A node added after all others, as usual in a fill, does not change the order of the others.
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
    Zel::CheckListIndex(absoluteIndex, Count());
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
    // A new node may get the address of the announced one but is another node.
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
    // Change is emitted after the deletion, because its slots may change the nodes.
    ++m_updates;
    if (!m_hidden)
        m_model->beginRemoveRows(m_model->IndexOf(node->Parent()), row, row);
    above->m_children.erase(above->m_children.begin() + row);
    Zel::Renumber(above->m_children, row, &TTreeNode::m_row);
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

void TTreeNodes::Expand(TTreeNode *node, bool expanded)
{
    if (m_hidden) {
        node->m_expanded = expanded;
        m_anyExpanded |= expanded;
        return;
    }
    if (Updating())
        m_view->BeginManyExpansions();
    m_view->setExpanded(m_model->IndexOf(node), expanded);
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
    const Zel::StillView still(m_view);
    if (m_anyExpanded) {
        // While a layout is pending, expand() only records the state.
        m_view->BeginManyExpansions();
        for (TTreeNode *node = GetFirstNode(); node; node = node->GetNext()) {
            if (node->m_expanded && node->HasChildren())
                m_view->expand(m_model->IndexOf(node));
            node->m_expanded = false;
        }
        m_anyExpanded = false;
    }
    if (m_selected)
        m_view->selectionModel()->setCurrentIndex(m_model->IndexOf(m_selected), Zel::SelectRow);
    m_selected = nullptr;
    if (m_scroll > 0) {
        m_view->executeDelayedItemsLayout();
        m_view->verticalScrollBar()->setValue(m_scroll);
    }
}
