#pragma once

#include "host/Modulefrm.h"

#include <QTabWidget>

#include <functional>
#include <map>

namespace QuoteDesk
{

/// The main window's pages: the start page, then one page per open module. During its lifetime it is the
/// application's module manager.
///
/// Closing a page asks MayClose and then the module, which decides whether it is hidden or disposed of;
/// bringUp() shows a hidden module's page again.
class ModuleTabs : public QTabWidget, public IModuleManager
{
    Q_OBJECT
public:
    explicit ModuleTabs(QWidget *parent = nullptr);
    ~ModuleTabs() override;

    /// Sets the first page, which is no module and cannot be closed.
    void setStartPage(QWidget *page, const QString &title);

    HResult OpenModule(const IZelModulePtr &module) noexcept override;
    /// Shows a module's window; adds its page again when it was hidden.
    void bringUp(QWidget *window);
    /// The module on the current page; nullptr on the start page.
    IZelModulePtr activeModule() const;
    /// Closes the current page when it is a module's. Returns whether it is closed.
    bool closeCurrent();
    bool closePage(QWidget *window);

    /// Whether a module's window may be closed; called before the module is asked.
    std::function<bool(QWidget *window)> MayClose;
    /// Sets the title of a module's page and whether it has unsaved changes.
    void setPageTitle(QWidget *window, const QString &title, bool modified);
    /// The complete title; the tab shows only the beginning of a long one.
    QString pageTitle(const QWidget *window) const;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void forgetPage(QWidget *window);

    std::map<QWidget *, IZelModulePtr> m_modules;
};

} // namespace QuoteDesk
