#pragma once

#include "host/Modulefrm.h"

#include <QList>
#include <QStackedWidget>

#include <functional>
#include <map>

namespace QuoteDesk
{

/// The main window's pages, one above the other: the places, then one page per open module in the order of
/// their opening. During its lifetime it is the application's module manager.
///
/// Closing a page asks MayClose and then the module, which decides whether it is hidden or disposed of;
/// bringUp() shows a hidden module's page again.
class ModuleStack : public QStackedWidget, public IModuleManager
{
    Q_OBJECT
public:
    explicit ModuleStack(QWidget *parent = nullptr);
    ~ModuleStack() override;

    /// Adds a page behind the other places and before the modules. It is no module and cannot be closed.
    void addPlace(QWidget *page);
    int placeCount() const noexcept { return m_places; }

    HResult OpenModule(const IZelModulePtr &module) noexcept override;
    /// Shows a module's window; adds its page again when it was hidden.
    void bringUp(QWidget *window);
    /// The windows of the modules that have a page, in the order of their pages.
    QList<QWidget *> modules() const;
    /// The module on the current page; nullptr on a place.
    IZelModulePtr activeModule() const;
    /// Shows the next module's page (the previous one for a step of -1), round and round. From a place the
    /// first step leads to the first or the last module.
    void step(int step);
    /// Closes the current page when it is a module's. Returns whether it is closed.
    bool closeCurrent();
    bool closePage(QWidget *window);

    /// Whether a module's window may be closed; called before the module is asked.
    std::function<bool(QWidget *window)> MayClose;
    /// Sets the title of a module's page and whether it has unsaved changes.
    void setPageTitle(QWidget *window, const QString &title, bool modified);
    /// The title of a module's page.
    QString pageTitle(const QWidget *window) const;
    /// Whether a module's page has unsaved changes.
    bool isPageModified(const QWidget *window) const;

Q_SIGNALS:
    /// A module's page was added or removed, or has another title.
    void modulesChanged();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Page {
        IZelModulePtr module;
        QString title = {};
        bool isModified = false;
    };
    void forgetPage(QWidget *window);
    const Page *pageOf(const QWidget *window) const;

    std::map<QWidget *, Page, std::less<>> m_pages;
    int m_places = 0;
};

} // namespace QuoteDesk
