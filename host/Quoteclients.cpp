#include "host/Quoteclients.h"

#include "data/Exceptions.h"

#include <algorithm>

using namespace Qt::StringLiterals;

TBaseClient::TBaseClient(const QString &surname, const QString &firstNames)
    : m_surname(surname), m_firstNames(firstNames)
{
}

TBaseClient::~TBaseClient()
{
    if (m_list)
        m_list->forget(this);
}

template <class T> void TBaseClient::change(T &field, const T &value)
{
    if (field == value)
        return;
    field = value;
    Q_EMIT Changed();
}

void TBaseClient::Set_Surname(const QString &value)
{
    change(m_surname, value);
}

void TBaseClient::Set_FirstNames(const QString &value)
{
    change(m_firstNames, value);
}

void TBaseClient::Set_IDNumber(const QString &value)
{
    change(m_idNumber, value);
}

void TBaseClient::Set_DateOfBirth(QDate value)
{
    change(m_dateOfBirth, value);
}

void TBaseClient::Set_EMail(const QString &value)
{
    change(m_eMail, value);
}

void TBaseClient::Set_Telephone(const QString &value)
{
    change(m_telephone, value);
}

QString TBaseClient::DisplayText() const
{
    return m_firstNames.isEmpty() ? m_surname : m_surname + u", "_s + m_firstNames;
}

void TBaseClient::Assign(const QObject *source)
{
    const auto *client = qobject_cast<const TBaseClient *>(source);
    if (!client) {
        TPersistent::Assign(source);
        return;
    }
    Set_Surname(client->m_surname);
    Set_FirstNames(client->m_firstNames);
    Set_IDNumber(client->m_idNumber);
    Set_DateOfBirth(client->m_dateOfBirth);
    Set_EMail(client->m_eMail);
    Set_Telephone(client->m_telephone);
}

TBaseClients::TBaseClients(QObject *parent) : TZelClass(parent) {}

TBaseClients::~TBaseClients()
{
    // Each client is detached before it is deleted, so the list does not emit Changed for each of them.
    const std::vector<TBaseClient *> clients = std::exchange(m_clients, {});
    for (TBaseClient *client : clients)
        client->m_list = nullptr;
    qDeleteAll(clients);
}

void TBaseClients::SetUpFrom(TZelClass *source, bool linked)
{
    auto *master = qobject_cast<TBaseClients *>(source);
    if (!master) {
        const QString what = source ? QString::fromLatin1(source->metaObject()->className()) : u"nil"_s;
        throw EConvertError(tr("A client list cannot be made from a %1.").arg(what));
    }
    m_linked = linked;
    if (!linked)
        return;
    m_master = master;
    connect(master, &TBaseClients::Changed, this, &TBaseClients::announce);
    connect(master, &QObject::destroyed, this, &TBaseClients::announce);
}

int TBaseClients::Count() const
{
    if (m_linked)
        return m_master ? m_master->Count() : 0;
    return static_cast<int>(m_clients.size());
}

TBaseClient *TBaseClients::Client(int index) const
{
    if (index < 0 || index >= Count())
        throw EListError(tr("There is no client number %1 in a list of %2.").arg(index).arg(Count()));
    return m_linked ? m_master->Client(index) : m_clients[static_cast<size_t>(index)];
}

int TBaseClients::IndexOf(const TBaseClient *client) const
{
    if (m_linked)
        return m_master ? m_master->IndexOf(client) : -1;
    const auto found = std::find(m_clients.begin(), m_clients.end(), client);
    return found == m_clients.end() ? -1 : static_cast<int>(found - m_clients.begin());
}

TBaseClient *TBaseClients::Add(std::unique_ptr<TBaseClient> client)
{
    if (m_master)
        return m_master->Add(std::move(client));
    if (!client || m_linked)
        throw EListError(client ? tr("The master list of the clients no longer exists.")
                                : tr("There is no client to add."));
    m_clients.push_back(client.get());
    TBaseClient *added = client.release();
    added->m_list = this;
    announce();
    return added;
}

void TBaseClients::Delete(TBaseClient *client)
{
    if (IndexOf(client) < 0)
        throw EListError(tr("The client to delete is not in the list."));
    delete client;
}

void TBaseClients::forget(TBaseClient *client)
{
    const auto found = std::find(m_clients.begin(), m_clients.end(), client);
    if (found == m_clients.end())
        return;
    m_clients.erase(found);
    announce();
}

void TBaseClients::BeginUpdate()
{
    ++m_updates;
}

void TBaseClients::EndUpdate()
{
    if (m_updates > 0 && --m_updates == 0 && std::exchange(m_changed, false))
        Q_EMIT Changed();
}

void TBaseClients::announce()
{
    if (m_updates > 0)
        m_changed = true;
    else
        Q_EMIT Changed();
}
