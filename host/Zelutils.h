#pragma once

#include "host/Zelquote_tlb.h"

#include <QObject>
#include <QPointer>
#include <QWidget>

#include <unordered_map>
#include <vector>

/// One entry of the system item registry: an object that the host offers under an identifier.
class ZEL_HOST_EXPORT TZelSysItem
{
public:
    explicit TZelSysItem(QString id) : m_id(std::move(id)) {} ///< An item that holds nothing yet.
    QString ID() const { return m_id; }                       ///< The identifier it is found by.
    /// The object held, not owned; nil once it has been destroyed.
    QObject *Object() const { return m_object; }
    void SetObject(QObject *object) { m_object = object; } ///< Replaces it; the former one is only forgotten.

private:
    QString m_id;
    QPointer<QObject> m_object;
};

/// The host's system item registry.
class ZEL_HOST_EXPORT TZelSysItems
{
public:
    /// The item with that identifier (upper and lower case differ). Raises EListError when there is none.
    TZelSysItem &GetItemByID(const QString &id) const;
    /// Whether there is such an item.
    bool Contains(const QString &id) const { return m_items.count(id) > 0; }
    /// Makes the item with that identifier hold @p object, adding the item when it is not there.
    void SetItem(const QString &id, QObject *object);
    /// Takes the item out; nothing happens when it is not there.
    void Remove(const QString &id);
    void Clear(); ///< Takes every item out.

private:
    std::unordered_map<QString, std::unique_ptr<TZelSysItem>> m_items;
};

/// What the host offers to everyone.
class ZEL_HOST_EXPORT TZelSystem
{
public:
    TZelSysItems &Items() { return m_items; } ///< The one item registry.

private:
    TZelSysItems m_items;
};

/// The one system object of the application.
ZEL_HOST_EXPORT TZelSystem &ZelSystem();

/// A module as the host's module framework drives it. All operations are safecall.
class ZEL_HOST_EXPORT IZelModule : public Zel::IDispatch
{
public:
    ~IZelModule() override;
    /// True (all bits set) when closing the module's window is to hide it and keep the module.
    virtual HResult PreferHideOverClose(WordBool &prefer) noexcept = 0;
    /// Ends the module: it lets go of what it works on and its window is released. Ending it again is no
    /// error.
    virtual HResult Dispose() noexcept = 0;
    /// The index of the module's picture in the host's images.
    virtual HResult get_ImageIndex(qint32 &index) noexcept = 0;
    /// The ribbon item called @p name was clicked while this module was the active one.
    virtual HResult ItemClicked(const QString &name, qint32 index) noexcept = 0;
    /// Brings the module's window up, also after it was hidden.
    virtual HResult ShowModule() noexcept = 0;
    /// What the module works on is going away: its window is taken down and the module disposed, whatever it
    /// prefers. A module that is already gone answers with success.
    virtual HResult CloseModule() noexcept = 0;
    /// The module's window, for a host that places modules in a window of its own. Not handed over.
    virtual HResult get_Window(QWidget *&window) noexcept = 0;
};
using IZelModulePtr = std::shared_ptr<IZelModule>;

/// The host's module manager.
class ZEL_HOST_EXPORT IModuleManager : public Zel::IDispatch
{
public:
    ~IModuleManager() override;
    /// Takes a new module over and brings it up. Safecall.
    virtual HResult OpenModule(const IZelModulePtr &module) noexcept = 0;
};

/// A module manager that gives each module a window of its own.
class ZEL_HOST_EXPORT TModuleManager : public IModuleManager
{
public:
    ~TModuleManager() override;
    /// Shows the module and keeps it until it is disposed. Nil is a failure.
    HResult OpenModule(const IZelModulePtr &module) noexcept override;
    /// The modules that are open, hidden ones included, oldest first.
    std::vector<IZelModulePtr> Modules() const;
    /// The module whose window is the active one or holds it; else the one opened last; nil without modules.
    IZelModulePtr ActiveModule() const;
    /// Closes every module, the newest first; the first failure is raised after all have been asked.
    void CloseAll();

private:
    struct Entry {
        IZelModulePtr module;
        QPointer<QWidget> window;
    };
    std::vector<Entry> liveEntries() const;
    std::vector<Entry> m_entries;
};

/// The application's module manager: the one set by the host, else one TModuleManager.
ZEL_HOST_EXPORT IModuleManager &ModuleManager();
/// Replaces the module manager (not owned); nullptr puts the standard one back.
ZEL_HOST_EXPORT void SetModuleManager(IModuleManager *manager);
/// The standard manager, whichever is in force.
ZEL_HOST_EXPORT TModuleManager &StandardModuleManager();
