#pragma once

#include "store/StoreWorker.h"

#include <QObject>
#include <QTimer>

#include <future>

namespace QuoteDesk
{

class CatalogueDatabase;
class QuoteSession;

/// Keeps what the program shows of the store up to date: the list of quotes, the clients, and the copy of a
/// server's catalogue. It looks every few seconds whether somebody else has changed something. While the
/// server is silent what was read last stays.
class StoreWatch : public QObject
{
    Q_OBJECT
public:
    /// @p session and @p catalogue, which is the session's, must outlive the watch.
    StoreWatch(QuoteSession &session, CatalogueDatabase &catalogue);
    ~StoreWatch() override;

    /// What is read at one moment.
    struct Lists {
        QList<Client> clients;
        QList<QuoteSummary> quotes;
        QString catalogueVersion;
    };
    /// For work on the store that changes the lists: reads them with the same question.
    static Lists read(QuoteStore &store);
    /// Puts what was read into the session, and gives the quotes to who lists them.
    void show(const Lists &lists);

    /// Reads quotes and clients again. Raises StoreError when a file cannot be read.
    void refresh();
    /// The same with the catalogue.
    void refreshAll();
    /// Begins to look for changes of others.
    void start();

Q_SIGNALS:
    void quotesRead(const QList<QuoteSummary> &quotes);
    /// A look for changes has failed: why.
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
