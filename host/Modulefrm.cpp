#include "host/Modulefrm.h"

#include "toolkit/TApplication.h"

#include <QCloseEvent>
#include <QScreen>
#include <QShowEvent>

namespace
{
/// The module interface that is handed out. It may outlive the form.
class TModuleLink : public IZelModule
{
public:
    explicit TModuleLink(TfrmModule *form) : m_form(form) {}

    HResult PreferHideOverClose(WordBool &prefer) noexcept override
    {
        return m_form ? m_form->PreferHideOverClose(prefer) : gone();
    }
    HResult Dispose() noexcept override { return m_form ? m_form->Dispose() : S_OK; }
    HResult get_ImageIndex(qint32 &index) noexcept override
    {
        return m_form ? m_form->get_ImageIndex(index) : gone();
    }
    HResult ItemClicked(const QString &name, qint32 index) noexcept override
    {
        return m_form ? m_form->ItemClicked(name, index) : gone();
    }
    HResult ShowModule() noexcept override { return m_form ? m_form->ShowModule() : gone(); }
    HResult CloseModule() noexcept override { return m_form ? m_form->CloseModule() : S_OK; }
    HResult get_Window(QWidget *&window) noexcept override
    {
        return m_form ? m_form->get_Window(window) : gone();
    }

private:
    static HResult gone() noexcept
    {
        return SafecallGuard(
            [] { throw Exception(TfrmModule::tr("The module's window no longer exists.")); });
    }

    QPointer<TfrmModule> m_form;
};
} // namespace

TfrmModule::TfrmModule(QWidget *parent) : QWidget(parent), m_module(std::make_shared<TModuleLink>(this)) {}

TfrmModule::~TfrmModule() = default;

void TfrmModule::UpdateOnClick(const QString &name, TItemClickHandler onClick)
{
    if (onClick)
        m_handlers[name] = std::move(onClick);
    else
        m_handlers.remove(name);
}

HResult TfrmModule::PreferHideOverClose(WordBool &prefer) noexcept
{
    prefer = WordFalse;
    return S_OK;
}

HResult TfrmModule::Dispose() noexcept
{
    return SafecallGuard([this] {
        if (std::exchange(m_disposed, true))
            return;
        // A receiver of Disposed may destroy the form at once.
        const QPointer<TfrmModule> self(this);
        hide();
        if (self)
            Q_EMIT Disposed();
        // The host may call this from one of the form's own events, so the deletion waits.
        if (self)
            deleteLater();
    });
}

HResult TfrmModule::get_ImageIndex(qint32 &index) noexcept
{
    index = 0;
    return S_OK;
}

HResult TfrmModule::ItemClicked(const QString &name, qint32 index) noexcept
{
    return SafecallGuard([&] {
        // A copy, because the handler may bind the item to another handler.
        const TItemClickHandler handler = m_handlers.value(name);
        if (handler)
            handler(this, index);
    });
}

HResult TfrmModule::ShowModule() noexcept
{
    return SafecallGuard([this] {
        if (m_disposed)
            throw Exception(tr("The module has been closed."));
        if (!std::exchange(m_placed, true) && isWindow())
            centreOnScreen();
        setWindowState(windowState() & ~Qt::WindowMinimized);
        show();
        raise();
        activateWindow();
    });
}

HResult TfrmModule::CloseModule() noexcept
{
    return SafecallGuard([this] {
        hide();
        SafecallCheck(Dispose());
    });
}

HResult TfrmModule::get_Window(QWidget *&window) noexcept
{
    window = this;
    return S_OK;
}

void TfrmModule::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    if (!event->spontaneous())
        Q_EMIT VisualPluginShow();
}

void TfrmModule::closeEvent(QCloseEvent *event)
{
    event->accept();
    GuardedCall([this] {
        WordBool prefer = WordFalse;
        SafecallCheck(PreferHideOverClose(prefer));
        if (prefer == WordFalse)
            SafecallCheck(Dispose());
    });
}

void TfrmModule::centreOnScreen()
{
    const QRect available = screen()->availableGeometry();
    const QPoint wanted = available.center() - QPoint(width() / 2, height() / 2);
    // The title of a window larger than the screen stays on the screen.
    move(qMax(wanted.x(), available.x()), qMax(wanted.y(), available.y()));
}
