#pragma once

#include "export/zel_commonframes_export.h"
#include "toolkit/TFrame.h"

#include <QEvent>

/// The number of the frames' private deferred-initialisation message.
constexpr auto WM_INITIALIZEFRAME = QEvent::Type(1524);

/// The ancestor of the data-bearing frames. It runs InitializeFrame once, after the frame has first been
/// painted on screen and control is back in the message loop, so that set-up sees the frame as its page has
/// created, loaded and configured it.
///
/// The message goes to the frame's window handle of the moment it is posted. A frame that gets another handle
/// before the message arrives (its parent is changed, say) is not initialised. A frame never shown is never
/// initialised. An exception in InitializeFrame goes to the application's exception report and the
/// initialisation is not tried again.
class ZEL_COMMONFRAMES_EXPORT TBaseFrame : public TFrame
{
    Q_OBJECT
public:
    /// @p parent owns the frame as usual; nullptr makes it a window of its own. Raises Exception, as every
    /// frame and form of the package does, before Initialize and after Finalize.
    explicit TBaseFrame(QWidget *parent = nullptr);
    ~TBaseFrame() override;

protected:
    /// A descendant's one-time set-up; empty here. An override calls the inherited one first.
    virtual void InitializeFrame();

    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    /// On Windows the message may also come from outside, posted to the frame's own window.
    bool nativeEvent(const QByteArray &eventType, void *message, qintptr *result) override;

private:
    void WMPaint();
    void WmInitializeFrame(QEvent *message);

    bool FInitPosted = false;
    // Counts the window handles the frame has had: a handle lost or another parent makes a new one, also for
    // frames that the toolkit draws into their window's handle.
    quint64 FHandle = 1;
};
