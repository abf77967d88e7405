#pragma once

#include "host/Zelutils.h"

#include <QHash>

/// Handles the clicks of one ribbon item. @c sender is the form that passes the click on, @c index the item's
/// index.
using TItemClickHandler = std::function<void(QObject *sender, qint32 index)>;

/// The base of all module windows: a visual plug-in that the host's module framework drives through the
/// module interface. The module's action list is the window's own actions(); its styles are the
/// application's.
///
/// A new module form has no owner. The module manager takes it over in OpenModule. From then on, disposing of
/// the module deletes the form in the next iteration of the message loop.
class ZEL_HOST_EXPORT TfrmModule : public QWidget, public IZelModule
{
    Q_OBJECT
public:
    explicit TfrmModule(QWidget *parent = nullptr);
    ~TfrmModule() override;

    /// The module interface of this form. The handle does not keep the form alive. After the form is
    /// destroyed, disposing and closing succeed without effect, and every other operation fails.
    IZelModulePtr Module() const { return m_module; }

    /// Binds the clicks of the ribbon item called @p name to @p onClick and replaces a former handler; an
    /// empty handler unbinds them. The objects that the handler uses must outlive the form, or the handler
    /// must check that they exist.
    void UpdateOnClick(const QString &name, TItemClickHandler onClick);

    /// Whether the module has been disposed of; its form will then be deleted by the message loop.
    bool IsDisposed() const { return m_disposed; }

    /// False: closing a plain module's window disposes of the module.
    HResult PreferHideOverClose(WordBool &prefer) noexcept override;
    HResult Dispose() noexcept override;
    HResult get_ImageIndex(qint32 &index) noexcept override;
    /// Runs the handler bound to @p name; without one nothing happens.
    HResult ItemClicked(const QString &name, qint32 index) noexcept override;
    HResult ShowModule() noexcept override;
    HResult CloseModule() noexcept override;
    HResult get_Window(QWidget *&window) noexcept override;

Q_SIGNALS:
    /// The window is shown, for the first time or after it was hidden.
    void VisualPluginShow();
    /// The module has been disposed of.
    void Disposed();

protected:
    void showEvent(QShowEvent *event) override;
    /// Hides the window when PreferHideOverClose says so, otherwise disposes of the module.
    void closeEvent(QCloseEvent *event) override;

private:
    void centreOnScreen();

    IZelModulePtr m_module;
    QHash<QString, TItemClickHandler> m_handlers;
    bool m_disposed = false;
    bool m_placed = false;
};
