#pragma once

#include "toolkit/ItemsModel.h"
#include "toolkit/TDrag.h"

#include <QTreeView>

namespace Zel
{

/// The common base of TListView and TTreeView: rows of one height over an own model of items, pictures,
/// in-place editing, dragging, and the events of focus and mouse. A tool tip shows the whole text of a cell
/// that is too narrow for it.
///
/// Exceptions of the host's handlers go to the application's exception report.
class ZEL_TOOLKIT_EXPORT ItemsView : public QTreeView
{
    Q_OBJECT
    Q_PROPERTY(bool ReadOnly READ ReadOnly WRITE SetReadOnly)
    Q_PROPERTY(bool AutoDrag READ AutoDrag WRITE SetAutoDrag)
public:
    ~ItemsView() override;

    bool ReadOnly() const noexcept { return m_model->ReadOnly(); } ///< Whether in-place editing is off.
    void SetReadOnly(bool readOnly) { m_model->SetReadOnly(readOnly); }
    /// How a drag from the view starts.
    TDragMode DragMode() const { return dragEnabled() ? TDragMode::dmAutomatic : TDragMode::dmManual; }
    void SetDragMode(TDragMode mode) { setDragEnabled(mode == TDragMode::dmAutomatic); }
    bool AutoDrag() const { return dragEnabled(); } ///< DragMode as a Boolean property for Qt Designer.
    void SetAutoDrag(bool automatic) { setDragEnabled(automatic); }
    /// The palette role of the background.
    QPalette::ColorRole Color() const { return viewport()->backgroundRole(); }
    void SetColor(QPalette::ColorRole role) { viewport()->setBackgroundRole(role); }

    /// Called during a drag over the view. Without a handler the view accepts no drag. The view itself does
    /// nothing on a drop.
    TDragOverEvent OnDragOver;

Q_SIGNALS:
    void Enter();       ///< The view received the keyboard focus from another widget.
    void Exit();        ///< The view lost the keyboard focus to another widget.
    void DoubleClick(); ///< A double click, on an item or on the empty area.

protected:
    explicit ItemsView(QWidget *parent);
    /// Shows @p model, which this view owns. The constructor of the derived view calls it once.
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
