#pragma once

#include "export/zel_toolkit_export.h"
#include "toolkit/TDrag.h"

#include <QDragMoveEvent>
#include <QFocusEvent>
#include <QKeyEvent>

/// Conversions of Qt's events for the views.
namespace Zel
{

/// The virtual key code of a key event: the character codes of capital letters and digits, 112 to 135 for F1
/// to F24; 0 for a key without a code.
ZEL_TOOLKIT_EXPORT quint16 VirtualKey(const QKeyEvent &event);

/// Whether the focus moved between widgets, not to or from another program or a pop-up.
inline bool IsFocusChange(const QFocusEvent &event)
{
    return event.reason() != Qt::ActiveWindowFocusReason && event.reason() != Qt::PopupFocusReason;
}

/// Calls @p handler for a drag over @p sender and accepts or ignores the event accordingly. Exceptions of the
/// handler go to the application's exception report.
ZEL_TOOLKIT_EXPORT void DragOver(QWidget *sender, const TDragOverEvent &handler, QDragMoveEvent &event,
                                 TDragState state);

} // namespace Zel
