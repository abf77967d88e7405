#pragma once

#include "data/DataPacket.h"
#include "data/DataSet.h"

#include <QPointer>

class TLocalConnection;

/// A dataset filled from a provider, from a whole data packet, or as another cursor over a dataset's rows.
/// The last of SetData, CloneCursor or (for later openings) provider name decides what Open shows: a packet
/// is shown again; a clone shows the rows that its source shows by then, or its own last ones when the source
/// is closed or gone; a provider name that is set anew makes the dataset forget packet and source, and every
/// opening asks the remote server's provider with the dataset's parameters.
class ZEL_DATA_EXPORT TClientDataSet : public TDataSet
{
    Q_OBJECT
    Q_PROPERTY(QString ProviderName READ ProviderName WRITE SetProviderName)
public:
    explicit TClientDataSet(QObject *parent = nullptr);
    ~TClientDataSet() override;

    QString ProviderName() const; ///< Who is asked on opening; see the class.
    void SetProviderName(const QString &name);
    TLocalConnection *RemoteServer() const;             ///< The connection set last; nullptr once it is gone.
    void SetRemoteServer(TLocalConnection *connection); ///< Not owned; forgotten when it is destroyed.

    /// Loads a whole packet (see TDataPacket::FromVariant) and opens on it; closes first when open. A packet
    /// that is refused leaves the dataset as it was.
    void SetData(const QVariant &packet);
    /// The rows as a packet, sharing the table; an invalid variant when closed.
    QVariant Data() const;

    /// Becomes a second cursor over @p source's rows, sharing its table at the cost of a pointer. With
    /// @p reset the clone stands on the first row, else on the source's row. With @p keepSettings it takes
    /// the source's filter, filter options and filtered state, else it has none. EDatabaseError when
    /// @p source is closed.
    void CloneCursor(TDataSet *source, bool reset, bool keepSettings);
    /// The dataset this one was cloned from; nullptr when not a clone or when it is gone.
    TDataSet *CloneSource() const;

    bool Reopen() override;
    void Release() override;

protected:
    TTablePtr FetchTable() override;

private:
    struct Private;
    std::unique_ptr<Private> c;
};
