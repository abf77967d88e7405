#include "data/LocalConnection.h"

#include "data/Exceptions.h"

using namespace Qt::StringLiterals;

TLocalConnection::TLocalConnection(QObject *parent) : QObject(parent) {}

TLocalConnection::~TLocalConnection() = default;

void TLocalConnection::RegisterProvider(const QString &name, TProvider provider)
{
    m_providers[name.toCaseFolded()] = std::move(provider);
}

TDataPacket TLocalConnection::GetRecords(const QString &name, const TParams &params) const
{
    const TProvider provider = m_providers.value(name.toCaseFolded());
    if (!provider)
        throw EDatabaseError(u"Provider \"%1\" not found."_s.arg(name));
    TDataPacket packet = provider(params);
    if (packet.IsNull())
        throw EDatabaseError(u"Provider \"%1\" delivered no data."_s.arg(name));
    return packet;
}
