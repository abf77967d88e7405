#include "toolkit/TScreen.h"

#include <QGuiApplication>

void TScreen::SetCursor(TCursor cursor)
{
    const bool shown = m_cursor != TCursor::crDefault;
    const bool show = cursor != TCursor::crDefault;
    m_cursor = cursor;
    // Both waiting cursors look the same, because Qt has no database cursor.
    if (show && !shown)
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    else if (!show && shown)
        QGuiApplication::restoreOverrideCursor();
}

TScreen &Screen()
{
    static TScreen screen;
    return screen;
}

TWindowUpdateLock::TWindowUpdateLock(QWidget *widget) : m_widget(widget)
{
    if (m_widget) {
        // The widget's own state; updatesEnabled() would also be false when only a parent is locked.
        m_wasEnabled = !m_widget->testAttribute(Qt::WA_ForceUpdatesDisabled);
        m_widget->setUpdatesEnabled(false);
    }
}

TWindowUpdateLock::~TWindowUpdateLock()
{
    if (m_widget && m_wasEnabled)
        m_widget->setUpdatesEnabled(true);
}
