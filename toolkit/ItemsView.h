#pragma once

#include "toolkit/ItemsModel.h"
#include "toolkit/TDrag.h"

#include <QTreeView>

namespace Zel
{

/// What TListView and TTreeView have in common: rows of one height over a model of items of their own,
/// pictures, editing in place, dragging, and the events of focus and mouse. A text that is cut off for want
/// of room is shown whole while the mouse rests on it.
///
/// Errors raised by the host's handlers go to the application's exception report.
class ZEL_TOOLKIT_EXPORT ItemsView : public QTreeView
{
    Q_OBJECT
    Q_PROPERTY(bool ReadOnly READ ReadOnly WRITE SetReadOnly)
    Q_PROPERTY(bool AutoDrag READ AutoDrag WRITE SetAutoDrag)
public:
    ~ItemsView() override;

    bool ReadOnly() const noexcept { return m_model->ReadOnly(); } ///< Captions cannot be edited in place.
    void SetReadOnly(bool readOnly) { m_model->SetReadOnly(readOnly); }
    /// How a drag out of the view begins.
    TDragMode DragMode() const { return dragEnabled() ? TDragMode::dmAutomatic : TDragMode::dmManual; }
    void SetDragMode(TDragMode mode) { setDragEnabled(mode == TDragMode::dmAutomatic); }
    bool AutoDrag() const { return dragEnabled(); } ///< DragMode for the designer.
    void SetAutoDrag(bool automatic) { setDragEnabled(automatic); }
    /// The palette's colour behind the items.
    QPalette::ColorRole Color() const { return viewport()->backgroundRole(); }
    void SetColor(QPalette::ColorRole role) { viewport()->setBackgroundRole(role); }

    /// Something is dragged over the view; without a handler nothing is accepted. A drop does nothing itself.
    TDragOverEvent OnDragOver;

Q_SIGNALS:
    void Enter();       ///< The view got the keyboard focus from another widget,
    void Exit();        ///< or lost it to one.
    void DoubleClick(); ///< The mouse was clicked twice, on an item or beside them.

protected:
    explicit ItemsView(QWidget *parent);
    /// Shows @p model, a child of this; called once, by the constructor of the view that has the items.
    void ShowItems(ItemsModel *model);
    TImageList *ItemImages() const { return m_model->Images(); }
    void SetItemImages(TImageList *images);

    void initViewItemOption(QStyleOptionViewItem *option) const override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dragLeaveEvent(QDragLeaveEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    ItemsModel *m_model = nullptr;
};

} // namespace Zel
