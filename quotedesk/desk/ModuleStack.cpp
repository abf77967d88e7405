#include "desk/ModuleStack.h"

#include "toolkit/TApplication.h"

#include <QEvent>

namespace QuoteDesk
{

ModuleStack::ModuleStack(QWidget *parent) : QStackedWidget(parent)
{
    SetModuleManager(this);
}

ModuleStack::~ModuleStack()
{
    if (&ModuleManager() == this)
        SetModuleManager(nullptr);
    for (const auto &entry : m_pages) {
        entry.first->removeEventFilter(this);
        disconnect(entry.first, nullptr, this, nullptr);
    }
}

void ModuleStack::addPlace(QWidget *page)
{
    insertWidget(m_places++, page);
}

HResult ModuleStack::OpenModule(const IZelModulePtr &module) noexcept
{
    return SafecallGuard([&] {
        if (!module)
            throw Exception(tr("There is no module to open."));
        QWidget *window = nullptr;
        SafecallCheck(module->get_Window(window));
        m_pages[window] = {module};
        window->installEventFilter(this);
        connect(window, &QObject::destroyed, this, [this, window] {
            m_pages.erase(window);
            Q_EMIT modulesChanged();
        });
        bringUp(window);
        SafecallCheck(module->ShowModule());
    });
}

void ModuleStack::bringUp(QWidget *window)
{
    if (indexOf(window) < 0) {
        addWidget(window);
        Q_EMIT modulesChanged();
    }
    setCurrentWidget(window);
}

QList<QWidget *> ModuleStack::modules() const
{
    QList<QWidget *> windows;
    for (int i = m_places; i < count(); ++i) {
        // A window that is being destroyed may still be in the stack.
        if (pageOf(widget(i)))
            windows.append(widget(i));
    }
    return windows;
}

const ModuleStack::Page *ModuleStack::pageOf(const QWidget *window) const
{
    const auto found = m_pages.find(window);
    return found == m_pages.cend() ? nullptr : &found->second;
}

IZelModulePtr ModuleStack::activeModule() const
{
    const Page *const page = pageOf(currentWidget());
    return page ? page->module : nullptr;
}

void ModuleStack::step(int step)
{
    const int modules = count() - m_places;
    if (modules == 0)
        return;
    const int now = currentIndex() - m_places;
    const int next = now < 0 ? (step > 0 ? 0 : modules - 1) : (now + step + modules) % modules;
    setCurrentIndex(m_places + next);
}

bool ModuleStack::closeCurrent()
{
    return activeModule() && closePage(currentWidget());
}

bool ModuleStack::closePage(QWidget *window)
{
    if (!pageOf(window) || !window->close())
        return false;
    forgetPage(window);
    return true;
}

void ModuleStack::forgetPage(QWidget *window)
{
    if (indexOf(window) < 0)
        return;
    // First, so that no other module comes to the front in between.
    if (window == currentWidget())
        setCurrentIndex(0);
    removeWidget(window);
    Q_EMIT modulesChanged();
}

void ModuleStack::setPageTitle(QWidget *window, const QString &title, bool modified)
{
    const auto found = m_pages.find(window);
    if (found == m_pages.end() || indexOf(window) < 0)
        return;
    found->second.title = title;
    found->second.isModified = modified;
    Q_EMIT modulesChanged();
}

QString ModuleStack::pageTitle(const QWidget *window) const
{
    const Page *const page = pageOf(window);
    return page ? page->title : QString();
}

bool ModuleStack::isPageModified(const QWidget *window) const
{
    const Page *const page = pageOf(window);
    return page && page->isModified;
}

bool ModuleStack::eventFilter(QObject *watched, QEvent *event)
{
    auto *const window = static_cast<QWidget *>(watched);
    if (event->type() == QEvent::Close && pageOf(window)) {
        bool may = true;
        if (!GuardedCall([&] { may = !MayClose || MayClose(window); }) || !may) {
            event->ignore();
            return true;
        }
        // The module may hide itself; its page is removed when that is finished.
        QMetaObject::invokeMethod(
            this,
            [this, window] {
                if (pageOf(window) && window->isHidden())
                    forgetPage(window);
            },
            Qt::QueuedConnection);
    }
    return QStackedWidget::eventFilter(watched, event);
}

} // namespace QuoteDesk
