#include "quote/SelectOnEntry.h"

#include <QFocusEvent>

namespace QuoteDesk
{

SelectOnEntry::SelectOnEntry(QLineEdit *field) : QObject(field), m_field(field)
{
    field->installEventFilter(this);
}

bool SelectOnEntry::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FocusIn) {
        m_entered = static_cast<QFocusEvent *>(event)->reason() == Qt::MouseFocusReason;
    } else if (event->type() == QEvent::MouseButtonRelease && std::exchange(m_entered, false) &&
               !m_field->hasSelectedText()) {
        // After the click, because releasing the mouse button over a selection would replace the X11
        // selection clipboard.
        QMetaObject::invokeMethod(m_field, &QLineEdit::selectAll, Qt::QueuedConnection);
    }
    return QObject::eventFilter(watched, event);
}

} // namespace QuoteDesk
