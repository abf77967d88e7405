#pragma once

#include "export/zel_toolkit_export.h"

#include <QPointer>
#include <QWidget>

/// The shapes of the screen cursor.
enum class TCursor {
    crDefault,   ///< the cursor of each widget
    crHourGlass, ///< a long operation
    crSQLWait    ///< waiting for the database
};

/// The screen: one cursor over all windows of the application.
class ZEL_TOOLKIT_EXPORT TScreen
{
public:
    TCursor Cursor() const noexcept { return m_cursor; } ///< The cursor of the last SetCursor.
    /// Shows @p cursor over all windows until the next call; crDefault restores the cursor of each widget.
    void SetCursor(TCursor cursor);

private:
    TCursor m_cursor = TCursor::crDefault;
};

/// The application's one screen.
ZEL_TOOLKIT_EXPORT TScreen &Screen();

/// The window-update lock: prevents a widget from repainting during the lock's lifetime. Locks can be nested.
class ZEL_TOOLKIT_EXPORT TWindowUpdateLock
{
public:
    explicit TWindowUpdateLock(QWidget *widget); ///< nullptr locks nothing.
    ~TWindowUpdateLock();
    TWindowUpdateLock(const TWindowUpdateLock &) = delete;
    TWindowUpdateLock &operator=(const TWindowUpdateLock &) = delete;

private:
    QPointer<QWidget> m_widget;
    bool m_wasEnabled = true;
};
