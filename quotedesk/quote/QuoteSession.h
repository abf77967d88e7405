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
    /// The client with what is listed now.
    Client client() const;
    qint64 clientID() const { return m_client.clientID; }
    /// Takes the details over as they are stored.
    void take(const Client &client);
    /// The client as it is stored.
    const Client &stored() const { return m_client; }

private:
    Client m_client;
};

/// What the editors of all quotes share: the store and the drafts, the catalogue, the clients, and the
/// adviser. The main window makes one and keeps it until the last editor is gone. While it lives, its clients
/// are the application's master list.
class QuoteSession : public QObject
{
    Q_OBJECT
public:
    /// What is given must outlive the session.
    QuoteSession(StoreWorker &store, const CatalogueDatabase &catalogue, CatalogueProviders &providers);
    ~QuoteSession() override;

    StoreWorker &store() const noexcept { return m_store; }
    /// What is being typed and not saved yet.
    DraftKeeper &drafts() noexcept { return m_drafts; }
    const CatalogueDatabase &catalogue() const noexcept { return m_catalogue; }
    CatalogueProviders &providers() const noexcept { return m_providers; }
    /// Raises CatalogueError when the catalogue has no such product.
    Product product(int productID) const;

    /// Makes the list show exactly these clients. A client that was there already stays the same object.
    void setClients(const QList<Client> &clients);
    /// Puts a saved client into the list, in place of the one with its number.
    ListedClient *putClient(const Client &client);
    /// nullptr for 0 and for a client that is not listed.
    ListedClient *findClient(qint64 clientID) const;

    /// Saves a quote, and removes the draft of that key with it. Gives @p then, at once or later, the quote
    /// as it is saved, its number, revision and time brought up to date; or what stands against it (a
    /// conflict with another person's save, say).
    void saveQuote(const Quote &quote, SaveMode mode, const QString &draftKey,
                   const std::function<void(std::future<Quote>)> &then);
    /// Saves a client whose details were edited, and sets the number of a new one. While a server is silent a
    /// box over @p parent says so. Raises StoreError.
    void saveClient(Client &client, QWidget *parent);

    /// Whom the editors ask and tell: the person at the screen, until it is somebody else.
    Adviser &adviser() const noexcept { return *m_adviser; }
    /// @p adviser must outlive the session.
    void setAdviser(Adviser &adviser) noexcept { m_adviser = &adviser; }
    /// Opens a fund's fact sheet, or says why that cannot be.
    void openFactSheet(QWidget *parent, const QString &fund, const QString &address) const;

    /// The ribbon's Next and Previous; a form opened without them shows its own two buttons.
    IRibbonItemPtr nextItem;
    IRibbonItemPtr previousItem;

Q_SIGNALS:
    /// For whoever changes the catalogue to send: the editors show it anew.
    void catalogueChanged();
    /// A quote has been saved: the lists of quotes are out of date.
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
