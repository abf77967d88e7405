#include "desk/ModuleTabs.h"

#include "quote/PlainText.h"

#include "toolkit/TApplication.h"

#include <QEvent>
#include <QScopedPointer>
#include <QTabBar>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

constexpr auto TitleProperty = "pageTitle";
constexpr qsizetype LongestTabText = 60;

} // namespace

ModuleTabs::ModuleTabs(QWidget *parent) : QTabWidget(parent)
{
    setDocumentMode(true);
    setTabsClosable(true);
    setUsesScrollButtons(true);
    setElideMode(Qt::ElideRight);
    connectGuarded(this, &QTabWidget::tabCloseRequested, this,
                   [this](int index) { closePage(widget(index)); });
    SetModuleManager(this);
}

ModuleTabs::~ModuleTabs()
{
    if (&ModuleManager() == this)
        SetModuleManager(nullptr);
    for (const auto &entry : m_modules)
        entry.first->removeEventFilter(this);
}

void ModuleTabs::setStartPage(QWidget *page, const QString &title)
{
    insertTab(0, page, title);
    // The start page cannot be closed. setTabButton() only hides the former button, so it is deleted.
    for (const QTabBar::ButtonPosition side : {QTabBar::LeftSide, QTabBar::RightSide}) {
        const QScopedPointer button(tabBar()->tabButton(0, side));
        tabBar()->setTabButton(0, side, nullptr);
    }
}

HResult ModuleTabs::OpenModule(const IZelModulePtr &module) noexcept
{
    return SafecallGuard([&] {
        if (!module)
            throw Exception(tr("There is no module to open."));
        QWidget *window = nullptr;
        SafecallCheck(module->get_Window(window));
        m_modules[window] = module;
        window->installEventFilter(this);
        connect(window, &QObject::destroyed, this, [this, window] { m_modules.erase(window); });
        bringUp(window);
        SafecallCheck(module->ShowModule());
    });
}

void ModuleTabs::bringUp(QWidget *window)
{
    if (indexOf(window) < 0)
        addTab(window, window->windowTitle());
    setCurrentWidget(window);
}

IZelModulePtr ModuleTabs::activeModule() const
{
    const auto found = m_modules.find(currentWidget());
    return found == m_modules.end() ? nullptr : found->second;
}

bool ModuleTabs::closeCurrent()
{
    return activeModule() && closePage(currentWidget());
}

bool ModuleTabs::closePage(QWidget *window)
{
    if (m_modules.count(window) == 0 || !window->close())
        return false;
    forgetPage(window);
    return true;
}

void ModuleTabs::forgetPage(QWidget *window)
{
    const int index = indexOf(window);
    if (index < 0)
        return;
    const bool current = index == currentIndex();
    removeTab(index);
    if (current)
        setCurrentIndex(0);
}

void ModuleTabs::setPageTitle(QWidget *window, const QString &title, bool modified)
{
    const int index = indexOf(window);
    if (index < 0)
        return;
    window->setProperty(TitleProperty, title);
    // A single & would be read as the mark of a mnemonic.
    QString text = shortText(title, LongestTabText);
    text.replace(u'&', u"&&"_s);
    setTabText(index, modified ? text + u" *"_s : text);
    setTabToolTip(index, tipText(title));
    // The close button has no text.
    for (const QTabBar::ButtonPosition side : {QTabBar::LeftSide, QTabBar::RightSide}) {
        if (QWidget *const button = tabBar()->tabButton(index, side)) {
            button->setAccessibleName(tr("Close %1").arg(shortText(title)));
            button->setToolTip(tipText(tr("Close %1").arg(title)));
        }
    }
}

QString ModuleTabs::pageTitle(const QWidget *window) const
{
    return window ? window->property(TitleProperty).toString() : QString();
}

bool ModuleTabs::eventFilter(QObject *watched, QEvent *event)
{
    auto *const window = static_cast<QWidget *>(watched);
    if (event->type() == QEvent::Close && m_modules.count(window) > 0) {
        bool may = true;
        if (!GuardedCall([&] { may = !MayClose || MayClose(window); }) || !may) {
            event->ignore();
            return true;
        }
        // The module may hide itself; its page is removed when that is finished.
        QMetaObject::invokeMethod(
            this,
            [this, window] {
                if (m_modules.count(window) > 0 && window->isHidden())
                    forgetPage(window);
            },
            Qt::QueuedConnection);
    }
    return QTabWidget::eventFilter(watched, event);
}

} // namespace QuoteDesk
