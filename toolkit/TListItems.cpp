#include "toolkit/TListItems.h"

#include "toolkit/ListIndex_p.h"
#include "toolkit/ListModel.h"
#include "toolkit/Nodes_p.h"
#include "toolkit/TListView.h"
#include "toolkit/TScreen.h"

#include <QScrollBar>

void TListItem::Changed(int column)
{
    if (m_owner->m_hidden)
        return;
    const QModelIndex index = m_owner->m_model->IndexOf(this, column);
    if (index.isValid())
        Q_EMIT m_owner->m_model->dataChanged(index, index);
    Q_EMIT ListView()->ItemChanged(this);
}

void TListItem::RemoveColumn(int column)
{
    if (column > 0 && column <= m_subItems.size())
        m_subItems.removeAt(column - 1);
    else if (column == 0)
        m_caption = m_subItems.isEmpty() ? QString() : m_subItems.takeFirst();
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
    Zel::CheckListIndex(index, static_cast<int>(m_subItems.size()));
    m_subItems[index] = text;
    Changed(index + 1);
}

void TListItem::SetChecked(bool checked)
{
    if (m_checked == checked)
        return;
    m_checked = checked;
    // ItemChanged is emitted inside an update too, for listeners that count the checked items.
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
    Zel::CheckListIndex(index, Count());
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
        Zel::Renumber(m_rows, index, &TListItem::m_row);
    };
    if (m_hidden) {
        m_selected.erase(std::remove(m_selected.begin(), m_selected.end(), item), m_selected.end());
        if (m_focused == item)
            m_focused = nullptr;
        drop();
    } else {
        // Clears the selection first, because QTreeView would select a neighbour of a removed row.
        Zel::NodeWatch<TListItem> doomed(m_watches, item);
        if (item->Focused())
            m_view->selectionModel()->setCurrentIndex({}, QItemSelectionModel::NoUpdate);
        item->SetSelected(false);
        if (!doomed.Get())
            return; // a slot has deleted the item
        index = item->m_row;
        m_model->beginRemoveRows({}, index, index);
        drop();
        m_model->endRemoveRows();
    }
    Zel::NodeWatch<TListItem>::Deleted(m_watches, item);
    m_pool.GiveBack(item);
}

// The texts of the following columns move with their columns.
void TListItems::RemoveColumn(int column)
{
    m_model->beginRemoveColumns({}, column, column);
    m_model->m_columns.removeAt(column);
    for (TListItem *item : m_rows)
        item->RemoveColumn(column);
    m_model->endRemoveColumns();
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
    const Zel::StillView still(m_view);
    if (m_focused)
        m_view->selectionModel()->setCurrentIndex(m_model->IndexOf(m_focused), QItemSelectionModel::NoUpdate);
    m_focused = nullptr;
    // Selects all items in one step, because a slot may delete items.
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
