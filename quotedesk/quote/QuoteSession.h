#pragma once

#include "store/QuoteStore.h"

#include "catalogue/CatalogueDatabase.h"
#include "host/Quoteclients.h"
#include "host/Zelquote_tlb.h"

#include <QObject>
#include <QUrl>

#include <functional>
#include <future>
#include <memory>

class QPrinter;

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

/// What the editors of all quotes share: the catalogue, the clients and the ways out into the world. The main
/// window makes one, fills in what is left open, and keeps it until the last editor is gone. While it lives,
/// its clients are the application's master list.
class QuoteSession : public QObject
{
    Q_OBJECT
public:
    /// @p catalogue and @p providers must outlive the session.
    QuoteSession(const CatalogueDatabase &catalogue, CatalogueProviders &providers);
    ~QuoteSession() override;

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

    /// Writes a quote, and the draft of that key with it away. Gives @p then, at once or later, the quote as
    /// it is saved, its number, revision and time brought up to date; or what stands against it (a conflict
    /// with another person's save, say). Must be set.
    std::function<void(const Quote &quote, SaveMode mode, const QString &draftKey,
                       std::function<void(std::future<Quote>)> then)>
        saveQuote;
    /// Writes a client whose details were edited and sets the number of a new one. Must be set.
    std::function<void(Client &client)> saveClient;
    /// Opens an address with the program that the desktop has for it; false when there is none. The desktop's
    /// services at the start.
    std::function<bool(const QUrl &)> openUrl;
    /// Asks the adviser a question that is answered by yes or no. A message box at the start; a run without a
    /// person sets its own answer.
    std::function<bool(QWidget *parent, const QString &question)> askYesNo;
    /// Tells the adviser something that has to be read before going on. A message box at the start.
    std::function<void(QWidget *parent, const QString &message, const QString &details)> tell;
    /// Lets the adviser set a printer up; false when nothing is to be printed. The print dialog at the start.
    std::function<bool(QPrinter &printer, QWidget *parent)> choosePrinter;

    /// Asks for the file to save a PDF as, starting from a name; blank for none. The file dialog at the
    /// start.
    std::function<QString(QWidget *parent, const QString &suggestion)> chooseFile;

    /// Opens a fund's fact sheet, or says why that cannot be.
    void openFactSheet(QWidget *parent, const QString &fund, const QString &address) const;

    /// The ribbon's Next and Previous; a form opened without them shows its own two buttons.
    IRibbonItemPtr nextItem;
    IRibbonItemPtr previousItem;

Q_SIGNALS:
    /// For whoever changes the catalogue to send: the editors show it anew.
    void catalogueChanged();

private:
    const CatalogueDatabase &m_catalogue;
    CatalogueProviders &m_providers;
    std::unique_ptr<TBaseClients> m_clients;
};

} // namespace QuoteDesk
