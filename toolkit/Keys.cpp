#include "toolkit/Keys.h"

#include "toolkit/TApplication.h"

#include <QWidget>

namespace Zel
{

quint16 VirtualKey(const QKeyEvent &event)
{
    const int key = event.key();
    if ((key >= Qt::Key_A && key <= Qt::Key_Z) || (key >= Qt::Key_0 && key <= Qt::Key_9) ||
        key == Qt::Key_Space)
        return static_cast<quint16>(key);
    if (key >= Qt::Key_F1 && key <= Qt::Key_F24)
        return static_cast<quint16>(112 + key - Qt::Key_F1);
    switch (key) {
    case Qt::Key_Backspace:
        return 8;
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        return 9;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return 13;
    case Qt::Key_Shift:
        return 16;
    case Qt::Key_Control:
        return 17;
    case Qt::Key_Alt:
        return 18;
    case Qt::Key_Escape:
        return 27;
    case Qt::Key_PageUp:
        return 33;
    case Qt::Key_PageDown:
        return 34;
    case Qt::Key_End:
        return 35;
    case Qt::Key_Home:
        return 36;
    case Qt::Key_Left:
        return 37;
    case Qt::Key_Up:
        return 38;
    case Qt::Key_Right:
        return 39;
    case Qt::Key_Down:
        return 40;
    case Qt::Key_Insert:
        return 45;
    case Qt::Key_Delete:
        return 46;
    case Qt::Key_Menu:
        return 93;
    case Qt::Key_Asterisk:
        return 106;
    case Qt::Key_Plus:
        return 107;
    case Qt::Key_Minus:
        return 109;
    case Qt::Key_Slash:
        return 111;
    default:
        return 0;
    }
}

void DragOver(QWidget *sender, const TDragOverEvent &handler, QDragMoveEvent &event, TDragState state)
{
    bool accept = false;
    if (handler) {
        const QPoint place = event.position().toPoint();
        accept = true;
        if (!GuardedCall([&] { handler(sender, event.source(), place.x(), place.y(), state, accept); }))
            accept = false;
    }
    event.setDropAction(Qt::CopyAction);
    event.setAccepted(accept);
}

} // namespace Zel
