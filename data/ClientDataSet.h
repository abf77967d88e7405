#pragma once

#include "data/DataPacket.h"
#include "data/DataSet.h"

#include <QPointer>

class TLocalConnection;

/// A dataset filled from a provider, from a data packet, or as another cursor over a dataset's rows. The last
/// call of SetData, CloneCursor or SetProviderName decides what Open shows. After SetData it shows the packet
/// again. After CloneCursor it shows the source's current rows, or the clone's last rows when the source is
/// closed or destroyed. After SetProviderName with a new name it requests the rows from the remote server's
/// provider with the dataset's parameters.
class ZEL_DATA_EXPORT TClientDataSet : public TDataSet
{
    Q_OBJECT
    Q_PROPERTY(QString ProviderName READ ProviderName WRITE SetProviderName)
public:
    explicit TClientDataSet(QObject *parent = nullptr);
    ~TClientDataSet() override;

    QString ProviderName() const; ///< The provider that Open uses; see the class.
    void SetProviderName(const QString &name);
    TLocalConnection *RemoteServer() const;             ///< nullptr after the connection is destroyed.
    void SetRemoteServer(TLocalConnection *connection); ///< Not owned.

    /// Opens the dataset on a packet (see TDataPacket::FromVariant); closes it first when open. An invalid
    /// packet throws and changes nothing.
    void SetData(const QVariant &packet);
    /// The rows as a packet, sharing the table; an invalid variant when closed.
    QVariant Data() const;

    /// Makes this dataset a second cursor over the rows of @p source; both share the table. The clone starts
    /// on the source's row, or with @p reset on the first row. With @p keepSettings it copies the source's
    /// filter, filter options and filtered state; otherwise it has no filter. Throws EDatabaseError when @p
    /// source is closed.
    void CloneCursor(TDataSet *source, bool reset, bool keepSettings);
    /// The dataset from which this one was cloned; nullptr when it is not a clone or the source is destroyed.
    TDataSet *CloneSource() const;

    bool Reopen() override;
    void Release() override;

protected:
    TTablePtr FetchTable() override;

private:
    struct Private;
    std::unique_ptr<Private> c;
};
