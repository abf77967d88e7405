#include "toolkit/ItemsView.h"

#include "toolkit/Keys.h"

namespace Zel
{

ItemsView::ItemsView(QWidget *parent) : QTreeView(parent)
{
    setUniformRowHeights(true);
    setSelectionMode(SingleSelection);
    setEditTriggers(EditKeyPressed | SelectedClicked);
    setAcceptDrops(true);
    setDefaultDropAction(Qt::CopyAction);
}

ItemsView::~ItemsView() = default;

void ItemsView::ShowItems(ItemsModel *model)
{
    m_model = model;
    setModel(model);
}

void ItemsView::SetItemImages(TImageList *images)
{
    m_model->m_images = images;
    if (images)
        setIconSize(images->Size());
    scheduleDelayedItemsLayout();
}

void ItemsView::initViewItemOption(QStyleOptionViewItem *option) const
{
    QTreeView::initViewItemOption(option);
    // A chosen row's picture is drawn in the colour for the active selection, whichever window is active; on
    // another background, as some systems have it then, it would not be seen.
    for (const QPalette::ColorRole role : {QPalette::Highlight, QPalette::HighlightedText})
        option->palette.setColor(QPalette::Inactive, role, option->palette.color(QPalette::Active, role));
}

void ItemsView::focusInEvent(QFocusEvent *event)
{
    QTreeView::focusInEvent(event);
    if (IsFocusChange(*event))
        Q_EMIT Enter();
}

void ItemsView::focusOutEvent(QFocusEvent *event)
{
    QTreeView::focusOutEvent(event);
    if (IsFocusChange(*event))
        Q_EMIT Exit();
}

void ItemsView::mouseDoubleClickEvent(QMouseEvent *event)
{
    QTreeView::mouseDoubleClickEvent(event);
    if (event->button() == Qt::LeftButton)
        Q_EMIT DoubleClick();
}

void ItemsView::dragEnterEvent(QDragEnterEvent *event)
{
    DragOver(this, OnDragOver, *event, TDragState::dsDragEnter);
}

void ItemsView::dragMoveEvent(QDragMoveEvent *event)
{
    DragOver(this, OnDragOver, *event, TDragState::dsDragMove);
}

void ItemsView::dragLeaveEvent(QDragLeaveEvent *event)
{
    event->accept();
}

void ItemsView::dropEvent(QDropEvent *event)
{
    event->setDropAction(Qt::CopyAction);
    event->accept();
}

} // namespace Zel
