#pragma once

#include "catalogue/CatalogueDatabase.h"
#include "quote/Adviser.h"
#include "store/DraftKeeper.h"

#include "host/Quoteclients.h"
#include "host/Zelquote_tlb.h"

#include <QObject>

#include <functional>
#include <future>
#include <memory>

namespace QuoteDesk
{

class CatalogueProviders;

/// A client in the lists that the editors show.
class ListedClient : public TBaseClient
{
    Q_OBJECT
public:
    explicit ListedClient(const Client &client);
    /// The client with the details listed now, perhaps edited.
    Client client() const;
    qint64 clientID() const { return m_client.clientID; }
    /// Takes over the stored details.
    void take(const Client &client);
    /// The client as stored.
    const Client &stored() const { return m_client; }

private:
    Client m_client;
};

/// What the editors of all quotes share: the store and the drafts, the catalogue, the clients and the
/// adviser. The main window creates one and keeps it until the last editor is destroyed. During its lifetime
/// its clients are the application's master list.
class QuoteSession : public QObject
{
    Q_OBJECT
public:
    /// All arguments must outlive the session.
    QuoteSession(StoreWorker &store, const CatalogueDatabase &catalogue, CatalogueProviders &providers);
    ~QuoteSession() override;

    StoreWorker &store() const noexcept { return m_store; }
    /// The drafts of unsaved changes.
    DraftKeeper &drafts() noexcept { return m_drafts; }
    const CatalogueDatabase &catalogue() const noexcept { return m_catalogue; }
    CatalogueProviders &providers() const noexcept { return m_providers; }
    /// Throws CatalogueError when the catalogue has no such product.
    Product product(int productID) const;

    /// Makes the list show exactly these clients. Clients that are already listed keep their objects.
    void setClients(const QList<Client> &clients);
    /// Adds a saved client to the list, or replaces the one with its id.
    ListedClient *putClient(const Client &client);
    /// nullptr for 0 and for a client that is not listed.
    ListedClient *findClient(qint64 clientID) const;

    /// Saves a quote and deletes the draft with that key. Calls @p then, at once or later, with the saved
    /// quote and its new id, revision and time, or with the error (e.g. a conflict with another user's save).
    void saveQuote(const Quote &quote, SaveMode mode, const QString &draftKey,
                   const std::function<void(std::future<Quote>)> &then);
    /// Saves a client with edited details and sets the id of a new one. While a server does not answer, a box
    /// over @p parent says so. Throws StoreError.
    void saveClient(Client &client, QWidget *parent);

    /// The adviser that the editors ask; the real one unless another one was set.
    Adviser &adviser() const noexcept { return *m_adviser; }
    /// @p adviser must outlive the session.
    void setAdviser(Adviser &adviser) noexcept { m_adviser = &adviser; }
    /// Opens a fund's fact sheet, or tells the user why that is impossible.
    void openFactSheet(QWidget *parent, const QString &fund, const QString &address) const;

    /// The host's commands Next and Previous, for its menus and keys. The buttons of each form do the same.
    IRibbonItemPtr nextItem;
    IRibbonItemPtr previousItem;

Q_SIGNALS:
    /// To be emitted by code that changes the catalogue; the editors then display it again.
    void catalogueChanged();
    /// A quote was saved, so the lists of quotes are out of date.
    void quoteSaved();

private:
    StoreWorker &m_store;
    const CatalogueDatabase &m_catalogue;
    CatalogueProviders &m_providers;
    DraftKeeper m_drafts;
    AdviserAtScreen m_atScreen;
    Adviser *m_adviser = &m_atScreen;
    std::unique_ptr<TBaseClients> m_clients;
};

} // namespace QuoteDesk
