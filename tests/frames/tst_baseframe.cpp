// The base frame's hook: set-up that runs once, after the first paint.
// labels: x11
#include "Frames.h"
#include "ZelTest.h"

#include "frames/fra_BaseFrame.h"
#include "package/Classes.h"

#include <QFrame>
#include <QPaintEvent>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace
{
class CountingFrame : public TBaseFrame
{
public:
    explicit CountingFrame(QWidget *parent = nullptr) : TBaseFrame(parent)
    {
        initialisedInConstructor = calls;
    }
    /// Makes a new native window under the same parent, as Qt does when a window flag needs it.
    void makeHandleAgain()
    {
        destroy();
        create();
    }
    int calls = 0;
    int paints = 0;
    int paintsAtFirstCall = -1;
    int initialisedInConstructor = 0;
    bool fails = false;

protected:
    void InitializeFrame() override
    {
        TBaseFrame::InitializeFrame();
        if (calls == 0)
            paintsAtFirstCall = paints;
        ++calls;
        if (fails)
            throw EConvertError(u"set-up failed"_s);
    }
    void paintEvent(QPaintEvent *event) override
    {
        TBaseFrame::paintEvent(event);
        ++paints;
    }
};

class OpaquePanel : public QFrame
{
public:
    explicit OpaquePanel(QWidget *parent) : QFrame(parent)
    {
        setAttribute(Qt::WA_OpaquePaintEvent);
        setAutoFillBackground(true);
    }
    int paints = 0;

protected:
    void paintEvent(QPaintEvent *) override { ++paints; }
};

class Descendant : public CountingFrame
{
public:
    using CountingFrame::CountingFrame;
    QStringList order;

protected:
    void InitializeFrame() override
    {
        CountingFrame::InitializeFrame();
        order.append(u"inherited first: %1"_s.arg(calls));
    }
};

// Paints synchronously, without returning to the event loop, as Qt does when a window is exposed.
void paintNow(QWidget &widget)
{
    widget.repaint();
}
} // namespace

class tst_baseframe : public ZelTest
{
    Q_OBJECT
private Q_SLOTS:
    void designIsTheBaseOfAllFrames()
    {
        TBaseFrame frame;
        QCOMPARE(frame.size(), QSize(375, 246));
        QCOMPARE(frame.font().family(), u"Tahoma"_s);
        QCOMPARE(frame.font().pixelSize(), 11);
        QVERIFY(!frame.font().bold());
    }

    void eightFramesHaveTheHookAndNoOther()
    {
        QStringList with;
        QStringList without;
        for (const TFrameClass &entry : FrameClasses()) {
            if (entry.IsForm || entry.MetaObject == &TBaseFrame::staticMetaObject)
                continue;
            const QMetaObject *base = entry.MetaObject->superClass();
            QVERIFY2(base == &TBaseFrame::staticMetaObject || base == &TFrame::staticMetaObject,
                     entry.ClassName);
            (base == &TBaseFrame::staticMetaObject ? with : without)
                .append(QString::fromLatin1(entry.ClassName));
        }
        QStringList expected{u"TfraHeader"_s,         u"TfraPageHeader"_s,   u"TfraTreeView"_s,
                             u"TfraFundsTreeView"_s,  u"TfraFundSelector"_s, u"TfraFundsSelectedListView"_s,
                             u"TfraFundAllocation"_s, u"TfraFundToolBar"_s};
        expected.sort();
        with.sort();
        QCOMPARE(with, expected);
        QCOMPARE(without.size(), 14); // toolbar, eleven elements, investor details, navigation bar
    }

    void initialisesOnceAfterTheFirstPaint()
    {
        CountingFrame frame;
        QCOMPARE(frame.initialisedInConstructor, 0);
        QVERIFY(showActive(frame));
        QTRY_COMPARE(frame.calls, 1);
        QVERIFY(frame.paintsAtFirstCall >= 1);
        for (int i = 0; i < 5; ++i) {
            paintNow(frame);
            QCoreApplication::processEvents();
        }
        QCOMPARE(frame.calls, 1);
    }

    void severalPaintsBeforeTheLoopPostOneMessage()
    {
        CountingFrame frame;
        frame.setAttribute(Qt::WA_DontShowOnScreen);
        frame.show();
        QCOMPARE(frame.calls, 0);
        const int before = frame.paints;
        for (int i = 0; i < 3; ++i)
            frame.grab();
        QVERIFY(frame.paints >= before + 3);
        QCOMPARE(frame.calls, 0); // the message is posted, not sent
        QCoreApplication::sendPostedEvents(&frame, WM_INITIALIZEFRAME);
        QCOMPARE(frame.calls, 1);
        QCoreApplication::sendPostedEvents(&frame, WM_INITIALIZEFRAME);
        QCOMPARE(frame.calls, 1);
    }

    void aWhollyCoveredFrameInitialises()
    {
        CountingFrame frame;
        auto *layout = new QVBoxLayout(&frame);
        layout->setContentsMargins(0, 0, 0, 0);
        auto *panel = new OpaquePanel(&frame);
        layout->addWidget(panel);
        QVERIFY(showActive(frame));
        QTRY_VERIFY(panel->paints > 0);
        QTRY_COMPARE(frame.calls, 1);
    }

    void aFrameInsideACoveredFrameInitialisesToo()
    {
        CountingFrame outer;
        auto *layout = new QVBoxLayout(&outer);
        layout->setContentsMargins(0, 0, 0, 0);
        auto *inner = new CountingFrame(&outer);
        layout->addWidget(inner);
        QVERIFY(showActive(outer));
        QTRY_COMPARE(outer.calls, 1);
        QTRY_COMPARE(inner->calls, 1);
    }

    void theMessageSentByHandCallsAgain()
    {
        CountingFrame frame;
        QEvent message(WM_INITIALIZEFRAME);
        QCoreApplication::sendEvent(&frame, &message);
        QCOMPARE(frame.calls, 1); // the handler has no guard: it runs even before the first paint
        QVERIFY(showActive(frame));
        QTRY_COMPARE(frame.calls, 2);
        QCoreApplication::sendEvent(&frame, &message);
        QCoreApplication::sendEvent(&frame, &message);
        QCOMPARE(frame.calls, 4);
    }

    void aFrameNeverShownNeverInitialises()
    {
        CountingFrame frame;
        QWidget window;
        CountingFrame hidden(&window);
        hidden.hide();
        QVERIFY(showActive(window));
        QVERIFY(!frame.grab().isNull()); // rendered to a picture but never shown
        QTest::qWait(50);
        QCOMPARE(frame.calls, 0);
        QCOMPARE(hidden.calls, 0);
    }

    void anotherHandleBetweenPostAndDeliveryDropsTheMessage()
    {
        QWidget first;
        QWidget second;
        first.setAttribute(Qt::WA_DontShowOnScreen);
        second.setAttribute(Qt::WA_DontShowOnScreen);
        auto *frame = new CountingFrame(&first);
        first.show();
        second.show();
        frame->grab(); // paints the frame, which posts the message
        QCOMPARE(frame->calls, 0);
        frame->setParent(&second);
        frame->show();
        QCoreApplication::processEvents();
        frame->grab();
        QTest::qWait(50);
        QCOMPARE(frame->calls, 0);
    }

    void aHandleMadeAgainBetweenPostAndDeliveryDropsTheMessage()
    {
        QWidget window;
        window.setAttribute(Qt::WA_DontShowOnScreen);
        auto *frame = new CountingFrame(&window);
        frame->setAttribute(Qt::WA_NativeWindow);
        window.show();
        frame->grab();
        QCOMPARE(frame->calls, 0);
        QVERIFY(frame->internalWinId() != 0);
        frame->makeHandleAgain();
        QVERIFY(frame->internalWinId() != 0);
        QCoreApplication::processEvents();
        frame->grab();
        QTest::qWait(50);
        QCOMPARE(frame->calls, 0);
    }

    void aFirstHandleOfItsOwnKeepsTheMessage()
    {
        // A frame gets its first native window when a sibling requests one.
        QWidget window;
        window.setAttribute(Qt::WA_DontShowOnScreen);
        auto *frame = new CountingFrame(&window);
        auto *neighbour = new QWidget(&window);
        window.show();
        frame->grab();
        QCOMPARE(frame->calls, 0);
        QVERIFY(!frame->internalWinId());
        QVERIFY(neighbour->winId());
        QVERIFY(frame->winId());
        QTRY_COMPARE(frame->calls, 1);
    }

    void anotherHandleAfterInitialisingDoesNotPostAgain()
    {
        QWidget first;
        QWidget second;
        auto *frame = new CountingFrame(&first);
        QVERIFY(showActive(first));
        QTRY_COMPARE(frame->calls, 1);
        frame->setParent(&second);
        frame->show();
        second.show();
        QVERIFY(QTest::qWaitForWindowExposed(&second));
        QTest::qWait(50);
        QCOMPARE(frame->calls, 1);
    }

    void anExceptionReachesTheReportAndIsNotRetried()
    {
        ReportCatcher report;
        CountingFrame frame;
        frame.fails = true;
        QVERIFY(showActive(frame));
        QTRY_COMPARE(frame.calls, 1);
        QCOMPARE(report.messages, QStringList{u"set-up failed"_s});
        frame.repaint();
        QTest::qWait(50);
        QCOMPARE(frame.calls, 1);
        QCOMPARE(report.messages.size(), 1);
    }

    void descendantsInitialiseFromTheBaseOutwards()
    {
        Descendant frame;
        QVERIFY(showActive(frame));
        QTRY_COMPARE(frame.order, QStringList{u"inherited first: 1"_s});
    }

    void aFrameDestroyedBeforeDeliveryIsForgotten()
    {
        auto *frame = new CountingFrame;
        frame->setAttribute(Qt::WA_DontShowOnScreen);
        frame->show();
        frame->grab();
        delete frame;
        QCoreApplication::processEvents(); // AddressSanitizer would report a message to the deleted frame
    }
};

ZEL_TEST_MAIN(tst_baseframe)
#include "tst_baseframe.moc"
