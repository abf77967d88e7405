#include "toolkit/TListView.h"

#include "data/Exceptions.h"
#include "toolkit/ListModel.h"
#include "toolkit/Nodes_p.h"

#include <QHeaderView>

TListView::TListView(QWidget *parent) : Zel::ItemsView(parent), m_items(this)
{
    m_model = m_items.m_model;
    ShowItems(m_model);
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setAllColumnsShowFocus(true);
    setSelectionBehavior(SelectRows);
    header()->setStretchLastSection(false);
    header()->setMinimumSectionSize(1);
    header()->setSectionsMovable(false);
    header()->setSectionsClickable(false);
}

TListView::~TListView() = default;

void TListView::CheckColumn(int column) const
{
    if (column < 0 || column >= ColumnCount())
        throw EListError(tr("Column index out of bounds (%1)").arg(column));
}

int TListView::ColumnCount() const
{
    return m_model->columnCount();
}

int TListView::AddColumn(const QString &caption, int width)
{
    const int column = ColumnCount();
    m_model->AddColumn(caption);
    SetColumnWidth(column, width);
    return column;
}

QString TListView::ColumnCaption(int column) const
{
    CheckColumn(column);
    return m_model->Caption(column);
}

void TListView::SetColumnCaption(int column, const QString &caption)
{
    CheckColumn(column);
    m_model->SetCaption(column, caption);
}

Qt::Alignment TListView::ColumnAlignment(int column) const
{
    CheckColumn(column);
    return m_model->Alignment(column);
}

void TListView::SetColumnAlignment(int column, Qt::Alignment alignment)
{
    CheckColumn(column);
    m_model->SetAlignment(column, alignment);
}

int TListView::ColumnWidth(int column) const
{
    CheckColumn(column);
    return header()->isSectionHidden(column) ? 0 : header()->sectionSize(column);
}

void TListView::SetColumnWidth(int column, int width)
{
    CheckColumn(column);
    header()->setSectionHidden(column, width <= 0);
    if (width > 0)
        header()->resizeSection(column, width);
}

void TListView::RemoveColumn(int column)
{
    CheckColumn(column);
    m_items.RemoveColumn(column);
}

TListItem *TListView::SelectedItem() const
{
    if (m_items.m_hidden)
        return m_items.m_selected.empty() ? nullptr : m_items.m_selected.front();
    TListItem *first = nullptr;
    const QItemSelection selection = selectionModel()->selection();
    for (const QItemSelectionRange &range : selection) {
        TListItem *item = Zel::ListModel::ItemOf(range.topLeft());
        if (!first || item->Index() < first->Index())
            first = item;
    }
    return first;
}

void TListView::SetSelected(TListItem *item)
{
    if (m_items.m_hidden) {
        m_items.m_selected.clear();
        if (item)
            m_items.m_selected.push_back(item);
        m_items.m_focused = item;
    } else if (item) {
        selectionModel()->setCurrentIndex(m_model->IndexOf(item), Zel::SelectRow);
    } else {
        selectionModel()->clearSelection();
    }
}

TListItem *TListView::FocusedItem() const
{
    if (m_items.m_hidden)
        return m_items.m_focused;
    const QModelIndex current = currentIndex();
    return current.isValid() ? Zel::ListModel::ItemOf(current) : nullptr;
}

void TListView::SetFocused(TListItem *item)
{
    if (m_items.m_hidden)
        m_items.m_focused = item;
    else
        selectionModel()->setCurrentIndex(m_model->IndexOf(item), QItemSelectionModel::NoUpdate);
}

TListItem *TListView::GetItemAt(int x, int y) const
{
    const QModelIndex index = indexAt({x, y});
    return index.isValid() ? Zel::ListModel::ItemOf(index) : nullptr;
}

bool TListView::CheckBoxes() const noexcept
{
    return m_model->CheckBoxes();
}

void TListView::SetCheckBoxes(bool checkBoxes)
{
    m_model->SetCheckBoxes(checkBoxes);
    scheduleDelayedItemsLayout();
}

bool TListView::ColumnClick() const
{
    return header()->sectionsClickable();
}

void TListView::SetColumnClick(bool columnClick)
{
    header()->setSectionsClickable(columnClick);
}

bool TListView::event(QEvent *event)
{
    if (event->type() == DeleteColumn) {
        const int column = static_cast<DeleteColumnEvent *>(event)->Index;
        if (column >= 0 && column < ColumnCount())
            RemoveColumn(column);
        return true;
    }
    return ItemsView::event(event);
}

void TListView::initViewItemOption(QStyleOptionViewItem *option) const
{
    ItemsView::initViewItemOption(option);
    option->showDecorationSelected = true;
}

void TListView::selectionChanged(const QItemSelection &selected, const QItemSelection &deselected)
{
    ItemsView::selectionChanged(selected, deselected);
    for (const QItemSelection *part : {&deselected, &selected}) {
        for (const QItemSelectionRange &range : *part) {
            // A slot may change the items. Qt updates the range, which becomes invalid when its rows are
            // removed.
            for (int row = range.top(); row >= 0 && row <= range.bottom(); ++row)
                Q_EMIT ItemChanged(m_items.Item(row));
        }
    }
}

void TListView::resizeEvent(QResizeEvent *event)
{
    ItemsView::resizeEvent(event);
    Q_EMIT Resized();
}
