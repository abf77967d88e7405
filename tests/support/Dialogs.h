#pragma once

#include <QApplication>
#include <QDialog>
#include <QPointer>
#include <QTest>
#include <QTimer>

/// Works in the next modal dialog of a class, found while @p open shows it; false when none came.
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
        // A window counts as active while the one that it belongs to is; the keys go by the application's.
        if (!QTest::qWaitFor([dialog] { return QApplication::activeWindow() == dialog; }))
            qWarning("The dialog did not become active");
        const QPointer<Dialog> alive(dialog);
        work(*dialog);
        // A button that is pressed by its letter answers a moment later.
        const auto isGone = [&alive] { return !alive || !alive->isVisible(); };
        // A failed check must not leave the test inside the dialog.
        if (!QTest::qWaitFor(isGone, 1000))
            alive->reject();
    });
    timer.start(20);
    open();
    if (!QTest::qWaitFor([&worked] { return worked; }, 2000))
        timer.stop();
    return worked;
}
