#include "data/ClientDataSet.h"

#include "data/Exceptions.h"
#include "data/LocalConnection.h"
#include "data/Values_p.h"

using namespace Qt::StringLiterals;

struct TClientDataSet::Private {
    QString Provider;
    QPointer<TLocalConnection> Server;
    /// The packet or the cloned rows that the next opening shows; nullptr when Open requests rows from the
    /// provider.
    TTablePtr Kept;
    bool IsClone = false;
    QPointer<TDataSet> Source;
};

TClientDataSet::TClientDataSet(QObject *parent) : TDataSet(parent), c(std::make_unique<Private>()) {}

TClientDataSet::~TClientDataSet() = default;

QString TClientDataSet::ProviderName() const
{
    return c->Provider;
}

void TClientDataSet::SetProviderName(const QString &name)
{
    c->Provider = name;
    c->Kept.reset();
    c->IsClone = false;
    c->Source.clear();
}

TLocalConnection *TClientDataSet::RemoteServer() const
{
    return c->Server;
}

void TClientDataSet::SetRemoteServer(TLocalConnection *connection)
{
    c->Server = connection;
}

void TClientDataSet::SetData(const QVariant &packet)
{
    const TTablePtr table = TDataPacket::FromVariant(packet).Table();
    const auto checked = CheckFilter(*table);
    Close();
    c->Kept = table;
    c->IsClone = false;
    c->Source.clear();
    InstallTable(table);
}

QVariant TClientDataSet::Data() const
{
    return Active() ? TDataPacket(Table()).ToVariant() : QVariant();
}

void TClientDataSet::CloneCursor(TDataSet *source, bool reset, bool keepSettings)
{
    if (!source || source == this)
        throw EDatabaseError(u"Dataset \"%1\" has no dataset to clone."_s.arg(DisplayName()));
    const TTablePtr table = source->Table();
    if (!table)
        throw EDatabaseError(u"Dataset \"%1\" cannot clone dataset \"%2\", which is not open."_s.arg(
            DisplayName(), Zel::ShownName(*source)));
    const int row = reset ? -1 : source->CurrentTableRow();
    Close();
    if (keepSettings)
        TakeFilterOf(*source);
    else
        DropFilter();
    c->Kept = table;
    c->IsClone = true;
    c->Source = source;
    InstallTable(table, row);
}

TDataSet *TClientDataSet::CloneSource() const
{
    return c->Source;
}

bool TClientDataSet::Reopen()
{
    Close();
    Open();
    return true;
}

void TClientDataSet::Release()
{
    Close();
}

TTablePtr TClientDataSet::FetchTable()
{
    if (c->IsClone) {
        // Reopening a clone takes the source's current table.
        if (c->Source && c->Source->Active())
            c->Kept = c->Source->Table();
        return c->Kept;
    }
    if (c->Kept)
        return c->Kept;
    if (c->Provider.isEmpty())
        throw EDatabaseError(u"Dataset \"%1\" has neither a provider name nor data."_s.arg(DisplayName()));
    if (!c->Server)
        throw EDatabaseError(u"Dataset \"%1\" has no remote server for its provider \"%2\"."_s.arg(
            DisplayName(), c->Provider));
    return c->Server->GetRecords(c->Provider, Params()).Table();
}
