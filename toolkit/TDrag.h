#pragma once

#include <QObject>

#include <functional>

/// How a drag out of a view begins.
enum class TDragMode {
    dmManual,   ///< only when the host starts one
    dmAutomatic ///< when the mouse moves with the button down over an item
};

/// Where a drag over a view stands.
enum class TDragState { dsDragEnter, dsDragMove };

/// Decides about a drag over @p sender. @p source is the widget the drag began in (nullptr when it came from
/// another program), @p x and @p y are pixels in the sender's client area. @p accept arrives true.
using TDragOverEvent =
    std::function<void(QObject *sender, QObject *source, int x, int y, TDragState state, bool &accept)>;
