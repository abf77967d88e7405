#pragma once

#include "store/StoreWorker.h"

#include <QObject>
#include <QTimer>

#include <future>

namespace QuoteDesk
{

class CatalogueDatabase;
class QuoteSession;

/// Keeps the displayed data up to date: the list of quotes, the clients, and the copy of a server's
/// catalogue. Checks every few seconds for changes by other programs. While the server does not answer, the
/// last known data stays.
class StoreWatch : public QObject
{
    Q_OBJECT
public:
    /// @p session and its @p catalogue must outlive this object.
    StoreWatch(QuoteSession &session, CatalogueDatabase &catalogue);
    ~StoreWatch() override;

    /// The data of one read.
    struct Lists {
        QList<Client> clients;
        QList<QuoteSummary> quotes;
        QString catalogueVersion;
    };
    /// Reads the lists; for questions to the store that change them.
    static Lists read(QuoteStore &store);
    /// Passes the clients to the session and emits quotesRead().
    void show(const Lists &lists);

    /// Reads quotes and clients again. Throws StoreError when a file cannot be read.
    void refresh();
    /// The same including the catalogue.
    void refreshAll();
    /// Starts checking for changes by other programs.
    void start();

Q_SIGNALS:
    void clientsRead(const QList<Client> &clients);
    void quotesRead(const QList<QuoteSummary> &quotes);
    /// The lists could not be read again, because the server does not answer.
    void unreachable();
    /// A check for changes has failed for this reason.
    void failed(const QString &reason);

private:
    void look();
    void readCatalogue(bool showAnew);

    QuoteSession &m_session;
    CatalogueDatabase &m_catalogue;
    StoreWorker &m_store;
    QTimer m_timer;
    bool m_isLooking = false;
    bool m_isReadingCatalogue = false;
};

} // namespace QuoteDesk
