#include "host/Zelutils.h"

#include "host/Modulefrm.h"

#include <QApplication>

#include <algorithm>

TZelSysItem &TZelSysItems::GetItemByID(const QString &id) const
{
    const auto found = m_items.find(id);
    if (found == m_items.end())
        throw EListError(
            QCoreApplication::translate("TZelSysItems", "There is no system item \"%1\".").arg(id));
    return *found->second;
}

void TZelSysItems::SetItem(const QString &id, QObject *object)
{
    std::unique_ptr<TZelSysItem> &item = m_items[id];
    if (!item)
        item = std::make_unique<TZelSysItem>(id);
    item->SetObject(object);
}

void TZelSysItems::Remove(const QString &id)
{
    m_items.erase(id);
}

void TZelSysItems::Clear()
{
    m_items.clear();
}

TZelSystem &ZelSystem()
{
    static TZelSystem system;
    return system;
}

IZelModule::~IZelModule() = default;
IModuleManager::~IModuleManager() = default;
TModuleManager::~TModuleManager() = default;

std::vector<TModuleManager::Entry> TModuleManager::liveEntries() const
{
    // The form of a disposed module exists until the next iteration of the message loop.
    const auto isOpen = [](const Entry &entry) {
        const auto *form = qobject_cast<const TfrmModule *>(entry.window.data());
        return entry.window && !(form && form->IsDisposed());
    };
    std::vector<Entry> live;
    std::copy_if(m_entries.begin(), m_entries.end(), std::back_inserter(live), isOpen);
    return live;
}

HResult TModuleManager::OpenModule(const IZelModulePtr &module) noexcept
{
    return SafecallGuard([&] {
        if (!module)
            throw Exception(QCoreApplication::translate("TModuleManager", "There is no module to open."));
        QWidget *window = nullptr;
        SafecallCheck([&] { return module->get_Window(window); });
        SafecallCheck([&] { return module->ShowModule(); });
        m_entries = liveEntries();
        m_entries.push_back({module, window});
    });
}

std::vector<IZelModulePtr> TModuleManager::Modules() const
{
    std::vector<IZelModulePtr> modules;
    for (const Entry &entry : liveEntries())
        modules.push_back(entry.module);
    return modules;
}

IZelModulePtr TModuleManager::ActiveModule() const
{
    const std::vector<Entry> live = liveEntries();
    const QWidget *active = QApplication::activeWindow();
    for (const Entry &entry : live) {
        if (active && (entry.window == active || active->isAncestorOf(entry.window)) &&
            entry.window->isVisible())
            return entry.module;
    }
    return live.empty() ? nullptr : live.back().module;
}

void TModuleManager::CloseAll()
{
    const std::vector<Entry> live = liveEntries();
    std::exception_ptr failure;
    for (auto entry = live.rbegin(); entry != live.rend(); ++entry) {
        try {
            SafecallCheck([&] { return entry->module->CloseModule(); });
        } catch (...) {
            if (!failure)
                failure = std::current_exception();
        }
    }
    if (failure)
        std::rethrow_exception(failure);
}

TModuleManager &StandardModuleManager()
{
    static TModuleManager manager;
    return manager;
}

namespace
{
IModuleManager *chosenManager = nullptr;
}

IModuleManager &ModuleManager()
{
    return chosenManager ? *chosenManager : StandardModuleManager();
}

void SetModuleManager(IModuleManager *manager)
{
    chosenManager = manager;
}
