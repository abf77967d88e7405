#include "ZelTest.h"

#include "toolkit/TScreen.h"

#include <QApplication>
#include <QCursor>

#include <memory>

/// The cursor over all windows, and the lock against repainting of a widget.
class tst_Screen : public ZelTest
{
    Q_OBJECT
private Q_SLOTS:
    void cleanup() { Screen().SetCursor(TCursor::crDefault); }
    void showsTheCursorOverAllWindows();
    void leavesTheHostsOwnCursor();
    void locksNest();
    void locksOutliveTheirWidget();
};

void tst_Screen::showsTheCursorOverAllWindows()
{
    QCOMPARE(Screen().Cursor(), TCursor::crDefault);
    QVERIFY(!QApplication::overrideCursor());
    for (const TCursor cursor : {TCursor::crHourGlass, TCursor::crSQLWait, TCursor::crHourGlass}) {
        Screen().SetCursor(cursor);
        QCOMPARE(Screen().Cursor(), cursor);
        QVERIFY(QApplication::overrideCursor());
        QCOMPARE(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
    }
    // One reset suffices, however often the cursor was set.
    Screen().SetCursor(TCursor::crDefault);
    QVERIFY(!QApplication::overrideCursor());
    Screen().SetCursor(TCursor::crDefault);
    QVERIFY(!QApplication::overrideCursor());
}

void tst_Screen::leavesTheHostsOwnCursor()
{
    QApplication::setOverrideCursor(Qt::CrossCursor);
    Screen().SetCursor(TCursor::crDefault);
    QVERIFY(QApplication::overrideCursor());
    Screen().SetCursor(TCursor::crSQLWait);
    QCOMPARE(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
    Screen().SetCursor(TCursor::crDefault);
    QVERIFY(QApplication::overrideCursor());
    QCOMPARE(QApplication::overrideCursor()->shape(), Qt::CrossCursor);
    QApplication::restoreOverrideCursor();
    QVERIFY(!QApplication::overrideCursor());
}

void tst_Screen::locksNest()
{
    const TWindowUpdateLock nothing(nullptr);
    QWidget window;
    QWidget child(&window);
    {
        const TWindowUpdateLock outer(&window);
        QVERIFY(!window.updatesEnabled());
        {
            const TWindowUpdateLock inner(&window);
            const TWindowUpdateLock below(&child);
            QVERIFY(!child.updatesEnabled());
        }
        QVERIFY(!window.updatesEnabled());
    }
    QVERIFY(window.updatesEnabled());
    QVERIFY(child.updatesEnabled()); // only its parent's lock had disabled it
    // Updates that the host has disabled stay disabled.
    window.setUpdatesEnabled(false);
    {
        const TWindowUpdateLock lock(&window);
    }
    QVERIFY(!window.updatesEnabled());
}

void tst_Screen::locksOutliveTheirWidget()
{
    auto widget = std::make_unique<QWidget>();
    const TWindowUpdateLock lock(widget.get());
    widget.reset();
    QVERIFY(!widget); // the lock must not touch the deleted widget
}

ZEL_TEST_MAIN(tst_Screen)
#include "tst_screen.moc"
