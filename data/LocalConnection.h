#pragma once

#include "data/DataPacket.h"
#include "data/Params.h"

#include <QHash>
#include <QObject>

#include <functional>

/// The host's in-process connection: named providers that deliver the rows for a set of parameters.
class ZEL_DATA_EXPORT TLocalConnection : public QObject
{
    Q_OBJECT
public:
    /// Answers a request with a packet; what it raises reaches the asking dataset's opener.
    using TProvider = std::function<TDataPacket(const TParams &)>;
    explicit TLocalConnection(QObject *parent = nullptr); ///< @p parent owns it. It has no provider yet.
    ~TLocalConnection() override;
    /// Adds or replaces a provider; names are compared without regard to case.
    void RegisterProvider(const QString &name, TProvider provider);
    /// The rows of a provider; EDatabaseError naming it when there is none. What the provider raises passes
    /// on.
    TDataPacket GetRecords(const QString &name, const TParams &params) const;

private:
    QHash<QString, TProvider> m_providers;
};
