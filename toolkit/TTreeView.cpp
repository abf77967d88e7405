#include "toolkit/TTreeView.h"

#include "toolkit/Keys.h"
#include "toolkit/TApplication.h"

#include <QDragMoveEvent>
#include <QFocusEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QStyledItemDelegate>

namespace
{

/// Lets the host's custom-draw handler have its say before an item is drawn, and shows a selected node's own
/// picture.
class NodeDelegate : public QStyledItemDelegate
{
public:
    explicit NodeDelegate(TTreeView *view) : QStyledItemDelegate(view), m_view(view) {}

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        TTreeNode *node = Zel::TreeModel::NodeOf(index);
        if (option->state.testFlag(QStyle::State_Selected) && node->SelectedIndex() >= 0 && m_view->Images())
            option->icon = m_view->Images()->Icon(node->SelectedIndex());
        if (!m_view->OnCustomDrawItem)
            return;
        m_view->Canvas().Font = option->font;
        bool defaultDraw = true;
        GuardedCall([&] { m_view->OnCustomDrawItem(m_view, node, option->state, defaultDraw); });
        option->font = m_view->Canvas().Font;
        option->fontMetrics = QFontMetrics(option->font);
        if (!defaultDraw) {
            option->text.clear();
            option->icon = QIcon();
            option->features &= ~(QStyleOptionViewItem::HasDisplay | QStyleOptionViewItem::HasDecoration);
        }
    }

private:
    TTreeView *m_view;
};

} // namespace

TTreeView::TTreeView(QWidget *parent) : QTreeView(parent), m_nodes(this)
{
    m_model = m_nodes.m_model;
    setModel(m_model);
    setItemDelegate(new NodeDelegate(this));
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setSelectionMode(SingleSelection);
    setEditTriggers(EditKeyPressed | SelectedClicked);
    setIndentation(19);
    setAnimated(false);
    setAcceptDrops(true);
    setDefaultDropAction(Qt::CopyAction);
    header()->setStretchLastSection(true);
}

TTreeView::~TTreeView() = default;

TTreeNode *TTreeView::Selected() const
{
    if (m_nodes.m_hidden)
        return m_nodes.m_selected;
    const QItemSelection selection = selectionModel()->selection();
    return selection.isEmpty() ? nullptr : Zel::TreeModel::NodeOf(selection.first().topLeft());
}

void TTreeView::SetSelected(TTreeNode *node)
{
    if (m_nodes.m_hidden) {
        m_nodes.m_selected = node;
    } else if (!node) {
        selectionModel()->clearSelection();
        selectionModel()->setCurrentIndex({}, QItemSelectionModel::NoUpdate);
    } else {
        const QModelIndex index = m_model->IndexOf(node);
        if (!m_nodes.Updating())
            node->MakeVisible();
        selectionModel()->setCurrentIndex(index,
                                          QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    }
}

TTreeNode *TTreeView::GetNodeAt(int x, int y) const
{
    const QModelIndex index = indexAt({x, y});
    return index.isValid() ? Zel::TreeModel::NodeOf(index) : nullptr;
}

void TTreeView::SetImages(TImageList *images)
{
    m_model->m_images = images;
    if (images)
        setIconSize(images->Size());
    scheduleDelayedItemsLayout();
}

void TTreeView::SetRowSelect(bool rowSelect)
{
    m_rowSelect = rowSelect;
    viewport()->update();
}

void TTreeView::FullExpand()
{
    if (m_nodes.m_hidden) {
        for (TTreeNode *node = m_nodes.GetFirstNode(); node; node = node->GetNext())
            node->SetExpanded(true);
    } else {
        expandAll();
    }
}

void TTreeView::FullCollapse()
{
    if (m_nodes.m_hidden) {
        for (TTreeNode *node = m_nodes.GetFirstNode(); node; node = node->GetNext())
            node->SetExpanded(false);
    } else {
        collapseAll();
    }
}

void TTreeView::AnnounceSelection()
{
    TTreeNode *selected = Selected();
    if (selected == m_announced)
        return;
    m_announced = selected;
    Q_EMIT Change(selected);
}

void TTreeView::initViewItemOption(QStyleOptionViewItem *option) const
{
    QTreeView::initViewItemOption(option);
    option->showDecorationSelected = m_rowSelect;
}

void TTreeView::selectionChanged(const QItemSelection &selected, const QItemSelection &deselected)
{
    QTreeView::selectionChanged(selected, deselected);
    // One step from the old selection to the new one; inside an update the end tells.
    if (!m_nodes.Updating())
        AnnounceSelection();
}

void TTreeView::focusInEvent(QFocusEvent *event)
{
    QTreeView::focusInEvent(event);
    if (Zel::IsFocusChange(*event))
        Q_EMIT Enter();
}

void TTreeView::focusOutEvent(QFocusEvent *event)
{
    QTreeView::focusOutEvent(event);
    if (Zel::IsFocusChange(*event))
        Q_EMIT Exit();
}

void TTreeView::mouseDoubleClickEvent(QMouseEvent *event)
{
    QTreeView::mouseDoubleClickEvent(event);
    if (event->button() == Qt::LeftButton)
        Q_EMIT DoubleClick();
}

void TTreeView::keyPressEvent(QKeyEvent *event)
{
    if (OnKeyDown) {
        quint16 key = Zel::VirtualKey(*event);
        const QPointer<TTreeView> alive(this);
        GuardedCall([&] { OnKeyDown(this, key, event->modifiers()); });
        if (key == 0 || !alive) {
            event->accept();
            return;
        }
    }
    QTreeView::keyPressEvent(event);
}

void TTreeView::dragEnterEvent(QDragEnterEvent *event)
{
    Zel::DragOver(this, OnDragOver, *event, TDragState::dsDragEnter);
}

void TTreeView::dragMoveEvent(QDragMoveEvent *event)
{
    Zel::DragOver(this, OnDragOver, *event, TDragState::dsDragMove);
}

void TTreeView::dragLeaveEvent(QDragLeaveEvent *event)
{
    event->accept();
}

void TTreeView::dropEvent(QDropEvent *event)
{
    event->setDropAction(Qt::CopyAction);
    event->accept();
}
