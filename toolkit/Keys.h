#pragma once

#include "export/zel_toolkit_export.h"
#include "toolkit/TDrag.h"

#include <QDragMoveEvent>
#include <QFocusEvent>
#include <QKeyEvent>

/// What the views share in turning the toolkit's events into the system's.
namespace Zel
{

/// The system's virtual key code of a key event: letters and digits are their capital character codes, F1
/// to F24 are 112 to 135. 0 for a key that has none.
ZEL_TOOLKIT_EXPORT quint16 VirtualKey(const QKeyEvent &event);

/// Whether the focus moved between widgets, rather than to another program or to a pop-up for a while.
inline bool IsFocusChange(const QFocusEvent &event)
{
    return event.reason() != Qt::ActiveWindowFocusReason && event.reason() != Qt::PopupFocusReason;
}

/// Asks @p handler about a drag over @p sender and answers the event; what the handler raises is reported.
ZEL_TOOLKIT_EXPORT void DragOver(QWidget *sender, const TDragOverEvent &handler, QDragMoveEvent &event,
                                 TDragState state);

} // namespace Zel
