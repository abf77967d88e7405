#include "toolkit/TcxButton.h"

#include <QEvent>

TcxButton::TcxButton(QWidget *parent) : QPushButton(parent)
{
    setFlat(true);
    setAttribute(Qt::WA_Hover);
}

TcxButton::~TcxButton() = default;

bool TcxButton::event(QEvent *event)
{
    const bool handled = QPushButton::event(event);
    switch (event->type()) {
    case QEvent::HoverEnter:
    case QEvent::HoverLeave:
    case QEvent::FocusIn:
    case QEvent::FocusOut:
    case QEvent::EnabledChange:
        setFlat(!isEnabled() || !(underMouse() || hasFocus()));
        break;
    default:
        break;
    }
    return handled;
}
