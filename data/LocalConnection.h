#pragma once

#include "data/DataPacket.h"
#include "data/Params.h"

#include <QHash>
#include <QObject>

#include <functional>

/// The host's in-process connection: named providers that supply rows for a set of parameters.
class ZEL_DATA_EXPORT TLocalConnection : public QObject
{
    Q_OBJECT
public:
    /// Returns the rows for the parameters. Its exceptions reach the caller that opens the dataset.
    using TProvider = std::function<TDataPacket(const TParams &)>;
    explicit TLocalConnection(QObject *parent = nullptr); ///< Without providers. @p parent owns it.
    ~TLocalConnection() override;
    /// Adds or replaces a provider; names are case-insensitive.
    void RegisterProvider(const QString &name, TProvider provider);
    /// The rows of a provider. Throws EDatabaseError when there is no provider of that name, and passes the
    /// provider's exceptions on.
    TDataPacket GetRecords(const QString &name, const TParams &params) const;

private:
    QHash<QString, TProvider> m_providers;
};
