#pragma once

#include "export/zel_commonframes_export.h"
#include "toolkit/TFrame.h"

#include <QEvent>

/// The number of the frames' private deferred-initialisation message.
constexpr auto WM_INITIALIZEFRAME = QEvent::Type(1524);

/// The ancestor of the frames that show data. It runs InitializeFrame once, from the message loop, after the
/// frame was first painted on screen. By then, the page has created, loaded and configured the frame.
///
/// The message is bound to the window handle that the frame has when the message is posted. A frame that gets
/// another handle before the message arrives, for example by a change of parent, is not initialised. A frame
/// never shown is never initialised. An exception in InitializeFrame goes to the application's exception
/// report, and the initialisation is not repeated.
class ZEL_COMMONFRAMES_EXPORT TBaseFrame : public TFrame
{
    Q_OBJECT
public:
    /// @p parent owns the frame; with nullptr the frame is a window. Throws Exception before Initialize and
    /// after Finalize, as every frame and form of the package does.
    explicit TBaseFrame(QWidget *parent = nullptr);
    ~TBaseFrame() override;

protected:
    /// A descendant's one-time set-up; empty here. An override calls the inherited one first.
    virtual void InitializeFrame();

    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    /// On Windows, another program may also post the message to the frame's own window.
    bool nativeEvent(const QByteArray &eventType, void *message, qintptr *result) override;

private:
    void WMPaint();
    void WmInitializeFrame(QEvent *message);

    bool FInitPosted = false;
    // The number of the frame's current window handle. A lost handle or a change of parent counts as a new
    // handle, also for a frame without a native handle, which Qt draws into its window.
    quint64 m_handle = 1;
};
