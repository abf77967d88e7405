#pragma once

#include <QApplication>
#include <QDialog>
#include <QPointer>
#include <QTest>
#include <QTimer>

/// Calls @p open and, while it shows a modal dialog of the class Dialog, calls @p work with this dialog.
/// Returns false when no such dialog appeared.
template <typename Dialog, typename Open, typename Work> bool inDialog(Open open, Work work)
{
    bool worked = false;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
        auto *const dialog = qobject_cast<Dialog *>(QApplication::activeModalWidget());
        if (!dialog || worked)
            return;
        worked = true;
        timer.stop();
        dialog->activateWindow();
        // isActiveWindow() is true for the dialog as soon as its parent is active. Keys go to the
        // application's active window.
        if (!QTest::qWaitFor([dialog] { return QApplication::activeWindow() == dialog; }))
            qWarning("The dialog did not become active");
        const QPointer<Dialog> alive(dialog);
        work(*dialog);
        // A button that is pressed with its letter closes the dialog a moment later.
        const auto isGone = [&alive] { return !alive || !alive->isVisible(); };
        // A failed check in @p work must not leave the dialog open.
        if (!QTest::qWaitFor(isGone, 1000))
            alive->reject();
    });
    timer.start(20);
    open();
    if (!QTest::qWaitFor([&worked] { return worked; }, 2000))
        timer.stop();
    return worked;
}
