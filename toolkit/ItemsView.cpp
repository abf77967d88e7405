#include "toolkit/ItemsView.h"

#include "toolkit/Keys.h"
#include "toolkit/PlainTip_p.h"

namespace Zel
{
namespace
{

/// Shows a tool tip with the whole text over a cell that is too narrow for its text; elsewhere the view's own
/// tool tip.
class WholeText : public QObject
{
public:
    explicit WholeText(QTreeView *view) : QObject(view), m_view(*view)
    {
        view->viewport()->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() != QEvent::ToolTip)
            return QObject::eventFilter(watched, event);
        const auto *const help = static_cast<QHelpEvent *>(event);
        const QModelIndex index = m_view.indexAt(help->pos());
        const QRect place = m_view.visualRect(index);
        if (!index.isValid() || m_view.sizeHintForIndex(index).width() <= place.width())
            return QObject::eventFilter(watched, event);
        ShowPlainTip(*help, index.data().toString(), m_view.viewport(), place);
        return true;
    }

private:
    QTreeView &m_view;
};

} // namespace

ItemsView::ItemsView(QWidget *parent) : QTreeView(parent)
{
    setUniformRowHeights(true);
    setSelectionMode(SingleSelection);
    setEditTriggers(EditKeyPressed | SelectedClicked);
    setAcceptDrops(true);
    setDefaultDropAction(Qt::CopyAction);
    new WholeText(this);
}

ItemsView::~ItemsView() = default;

void ItemsView::ShowItems(ItemsModel *model)
{
    m_model = model;
    setModel(model);
}

void ItemsView::SetItemImages(TImageList *images)
{
    m_model->SetImages(images);
    if (images)
        setIconSize(images->Size());
    scheduleDelayedItemsLayout();
}

void ItemsView::initViewItemOption(QStyleOptionViewItem *option) const
{
    QTreeView::initViewItemOption(option);
    // The picture of a selected row is always drawn in the colour for the active selection. Some systems have
    // another background in an inactive window, on which that colour would be invisible.
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
