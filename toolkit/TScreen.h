#pragma once

#include "export/zel_toolkit_export.h"

#include <QPointer>
#include <QWidget>

/// The screen cursor's shapes that this system uses.
enum class TCursor {
    crDefault,   ///< each widget's own
    crHourGlass, ///< a long fill
    crSQLWait    ///< waiting for the database
};

/// The screen as the frames see it: one cursor over all windows of the application.
class ZEL_TOOLKIT_EXPORT TScreen
{
public:
    TCursor Cursor() const noexcept { return m_cursor; } ///< The cursor set last.
    /// Shows @p cursor over all windows until it is set again; crDefault gives each widget its own back.
    void SetCursor(TCursor cursor);

private:
    TCursor m_cursor = TCursor::crDefault;
};

/// The application's one screen.
ZEL_TOOLKIT_EXPORT TScreen &Screen();

/// Keeps a widget from repainting while it lives (the window-update lock); may be nested; nullptr does
/// nothing.
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
