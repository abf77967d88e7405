#include "toolkit/TcxButton.h"

#include "toolkit/Buttons_p.h"

#include <QEvent>

TcxButton::TcxButton(QWidget *parent) : QPushButton(parent)
{
    setFlat(true);
    setAttribute(Qt::WA_Hover);
}

TcxButton::~TcxButton() = default;

bool TcxButton::event(QEvent *event)
{
    if (Zel::ClicksAtOnce(*this, *event))
        return true;
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
