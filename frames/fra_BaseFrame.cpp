#include "frames/fra_BaseFrame.h"

#include "frames/Started_p.h"
#include "frames/WindowMessages_p.h"
#include "toolkit/TApplication.h"

#include <QCoreApplication>

namespace
{
class InitializeFrameMessage : public QEvent
{
public:
    explicit InitializeFrameMessage(quint64 handle) : QEvent(WM_INITIALIZEFRAME), m_handle(handle) {}
    InitializeFrameMessage *clone() const override { return new InitializeFrameMessage(m_handle); }
    quint64 handle() const { return m_handle; }

private:
    quint64 m_handle;
};
} // namespace

TBaseFrame::TBaseFrame(QWidget *parent) : TFrame(parent)
{
    Zel::Started::Want();
    resize(375, 246);
}

TBaseFrame::~TBaseFrame() = default;

void TBaseFrame::InitializeFrame() {}

bool TBaseFrame::event(QEvent *event)
{
    switch (int(event->type())) {
    case QEvent::Show:
        // A frame covered by opaque children gets no paint event of its own, so the application's event
        // filter waits for the first paint of any child.
        if (!FInitPosted)
            QCoreApplication::instance()->installEventFilter(this);
        break;
    case QEvent::ParentChange:
        ++m_handle;
        break;
    case QEvent::WinIdChange:
        // Receiving a native handle does not count as a change, because the frame had its window's handle
        // before. Only a lost handle counts.
        if (internalWinId() == 0)
            ++m_handle;
        break;
    case QEvent::Paint: {
        const bool handled = TFrame::event(event);
        WMPaint();
        return handled;
    }
    case int(WM_INITIALIZEFRAME):
        WmInitializeFrame(event);
        return true;
    default:
        break;
    }
    return TFrame::event(event);
}

bool TBaseFrame::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Paint && watched != this && watched->isWidgetType() &&
        isAncestorOf(static_cast<QWidget *>(watched)))
        WMPaint();
    return TFrame::eventFilter(watched, event);
}

bool TBaseFrame::nativeEvent(const QByteArray &eventType, void *message, qintptr *result)
{
    if (Zel::WindowMessages::NumberOf(eventType, message) == int(WM_INITIALIZEFRAME)) {
        QEvent posted(WM_INITIALIZEFRAME);
        WmInitializeFrame(&posted);
        return true;
    }
    return TFrame::nativeEvent(eventType, message, result);
}

void TBaseFrame::WMPaint()
{
    // Rendering a hidden frame into a picture does not count as showing it.
    if (FInitPosted || !isVisible())
        return;
    FInitPosted = true;
    QCoreApplication::instance()->removeEventFilter(this);
    QCoreApplication::postEvent(this, new InitializeFrameMessage(m_handle));
}

void TBaseFrame::WmInitializeFrame(QEvent *message)
{
    const auto *posted = dynamic_cast<InitializeFrameMessage *>(message);
    if (posted && posted->handle() != m_handle)
        return;
    GuardedCall([this] { InitializeFrame(); });
}
