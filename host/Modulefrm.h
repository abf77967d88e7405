#pragma once

#include "host/Zelutils.h"

#include <QHash>

/// Handles the clicks of one ribbon item: who passes the click on, and the item's index.
using TItemClickHandler = std::function<void(QObject *sender, qint32 index)>;

/// The base of all module windows: a visual plug-in that the host's module framework drives through the
/// module interface. The module's action list is the window's own actions(); its styles are the
/// application's.
///
/// A new module form has no owner. The framework takes it over when it is handed to the module manager; from
/// then on disposing of the module releases the form, in the next round of the message loop.
class ZEL_HOST_EXPORT TfrmModule : public QWidget, public IZelModule
{
    Q_OBJECT
public:
    explicit TfrmModule(QWidget *parent = nullptr);
    ~TfrmModule() override;

    /// This form seen as a module. The handle does not keep the form alive: once the form is gone, disposing
    /// and closing succeed without doing anything and every other operation fails.
    IZelModulePtr Module() const { return m_module; }

    /// Binds the clicks of the ribbon item called @p name to @p onClick, in place of a former handler; an
    /// empty handler unbinds them. The handler must outlive the form or guard itself.
    void UpdateOnClick(const QString &name, TItemClickHandler onClick);

    /// Whether the module has been disposed of; its form is then about to go.
    bool IsDisposed() const { return m_disposed; }

    /// False: the window of a plain module is closed.
    HResult PreferHideOverClose(WordBool &prefer) noexcept override;
    HResult Dispose() noexcept override;
    HResult get_ImageIndex(qint32 &index) noexcept override;
    /// Runs the handler bound to @p name; without one nothing happens.
    HResult ItemClicked(const QString &name, qint32 index) noexcept override;
    HResult ShowModule() noexcept override;
    HResult CloseModule() noexcept override;
    HResult get_Window(QWidget *&window) noexcept override;

Q_SIGNALS:
    /// The window comes up, for the first time or after it was hidden.
    void VisualPluginShow();
    /// The module has been disposed of.
    void Disposed();

protected:
    void showEvent(QShowEvent *event) override;
    /// Hides the window when the module prefers that, else disposes of the module.
    void closeEvent(QCloseEvent *event) override;

private:
    void centreOnScreen();

    IZelModulePtr m_module;
    QHash<QString, TItemClickHandler> m_handlers;
    bool m_disposed = false;
    bool m_placed = false;
};
