#pragma once

#include <QObject>

#include <functional>

/// How a drag from a view starts.
enum class TDragMode {
    dmManual,   ///< only when the host starts it
    dmAutomatic ///< when the mouse moves with the button down over an item
};

/// The phase of a drag over a view.
enum class TDragState { dsDragEnter, dsDragMove };

/// Decides whether @p sender accepts a drag. @p source is the widget in which the drag started; nullptr for
/// another program. @p x and @p y are pixels in the sender's client area. @p accept is initially true.
using TDragOverEvent =
    std::function<void(QObject *sender, QObject *source, int x, int y, TDragState state, bool &accept)>;
