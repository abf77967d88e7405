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
    explicit TZelSysItem(QString id) : m_id(std::move(id)) {} ///< An item without an object.
    QString ID() const { return m_id; }                       ///< The identifier in the registry.
    /// The object held, not owned; nil once it has been destroyed.
    QObject *Object() const { return m_object; }
    void SetObject(QObject *object)
    {
        m_object = object;
    } ///< Replaces the object; does not delete the former.

private:
    QString m_id;
    QPointer<QObject> m_object;
};

/// The host's system item registry.
class ZEL_HOST_EXPORT TZelSysItems
{
public:
    /// The item with that identifier, case-sensitive. Throws EListError when there is none.
    TZelSysItem &GetItemByID(const QString &id) const;
    /// Whether there is such an item.
    bool Contains(const QString &id) const { return m_items.count(id) > 0; }
    /// Sets the object of the item with that identifier, and adds the item when there is none.
    void SetItem(const QString &id, QObject *object);
    /// Removes the item; does nothing when there is none.
    void Remove(const QString &id);
    void Clear(); ///< Removes every item.

private:
    std::unordered_map<QString, std::unique_ptr<TZelSysItem>> m_items;
};

/// The host's shared objects.
class ZEL_HOST_EXPORT TZelSystem
{
public:
    TZelSysItems &Items() { return m_items; } ///< The one item registry.

private:
    TZelSysItems m_items;
};

/// The one system object of the application.
ZEL_HOST_EXPORT TZelSystem &ZelSystem();

/// The interface through which the host's module framework drives a module. All operations are safecall: they
/// return an HResult instead of throwing.
class ZEL_HOST_EXPORT IZelModule : public Zel::IDispatch
{
public:
    ~IZelModule() override;
    /// WordTrue when closing the module's window must only hide it and keep the module.
    virtual HResult PreferHideOverClose(WordBool &prefer) noexcept = 0;
    /// Ends the module: releases its data and its window. Ending a module twice is not an error.
    virtual HResult Dispose() noexcept = 0;
    /// The index of the module's picture in the host's images.
    virtual HResult get_ImageIndex(qint32 &index) noexcept = 0;
    /// The ribbon item called @p name was clicked while this module was the active one.
    virtual HResult ItemClicked(const QString &name, qint32 index) noexcept = 0;
    /// Shows the module's window, also after it was hidden.
    virtual HResult ShowModule() noexcept = 0;
    /// Hides the module's window and disposes of the module, whatever PreferHideOverClose says, because its
    /// data is being destroyed. Succeeds when the module no longer exists.
    virtual HResult CloseModule() noexcept = 0;
    /// The module's window, for a host that places modules inside its own window. The module keeps ownership.
    virtual HResult get_Window(QWidget *&window) noexcept = 0;
};
using IZelModulePtr = std::shared_ptr<IZelModule>;

/// The host's module manager.
class ZEL_HOST_EXPORT IModuleManager : public Zel::IDispatch
{
public:
    ~IModuleManager() override;
    /// Takes a new module over and shows it. Safecall.
    virtual HResult OpenModule(const IZelModulePtr &module) noexcept = 0;
};

/// A module manager that shows each module in its own window.
class ZEL_HOST_EXPORT TModuleManager : public IModuleManager
{
public:
    ~TModuleManager() override;
    /// Shows the module and keeps it until it is disposed of. Fails for nil.
    HResult OpenModule(const IZelModulePtr &module) noexcept override;
    /// The open modules, including hidden ones, oldest first.
    std::vector<IZelModulePtr> Modules() const;
    /// The visible module in the active window; otherwise the module opened last; nil without modules.
    IZelModulePtr ActiveModule() const;
    /// Closes every module, newest first. Throws the first failure after the last module was asked.
    void CloseAll();

private:
    struct Entry {
        IZelModulePtr module;
        QPointer<QWidget> window;
    };
    std::vector<Entry> liveEntries() const;
    std::vector<Entry> m_entries;
};

/// The application's module manager: the one set by the host, otherwise the standard one.
ZEL_HOST_EXPORT IModuleManager &ModuleManager();
/// Replaces the module manager (not owned); nullptr restores the standard one.
ZEL_HOST_EXPORT void SetModuleManager(IModuleManager *manager);
/// The standard manager, even when the host has set another.
ZEL_HOST_EXPORT TModuleManager &StandardModuleManager();
