#pragma once

#include "host/Modulefrm.h"

#include <QTabWidget>

#include <functional>
#include <map>

namespace QuoteDesk
{

/// The main window's pages: the start page, and behind it one page for each open module. It is the module
/// manager of the application, while it lives.
///
/// Closing a page asks MayClose and then the module whether it is to be hidden or disposed of; a hidden
/// module's page comes back with bringUp().
class ModuleTabs : public QTabWidget, public IModuleManager
{
    Q_OBJECT
public:
    explicit ModuleTabs(QWidget *parent = nullptr);
    ~ModuleTabs() override;

    /// The first page, which is no module and cannot be closed.
    void setStartPage(QWidget *page, const QString &title);

    HResult OpenModule(const IZelModulePtr &module) noexcept override;
    /// Gives a module's window its page again, if it has lost it, and shows it.
    void bringUp(QWidget *window);
    /// The module on the current page; nil on the start page.
    IZelModulePtr activeModule() const;
    /// Closes the current page, if it is a module's. True when it is closed.
    bool closeCurrent();
    bool closePage(QWidget *window);

    /// Whether a module's window may be closed; it is asked before the module is.
    std::function<bool(QWidget *window)> MayClose;
    /// The title of a module's page and whether it has unsaved changes.
    void setPageTitle(QWidget *window, const QString &title, bool modified);
    /// The title in full; the tab shows the beginning of a long one.
    QString pageTitle(const QWidget *window) const;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void forgetPage(QWidget *window);

    std::map<QWidget *, IZelModulePtr> m_modules;
};

} // namespace QuoteDesk
