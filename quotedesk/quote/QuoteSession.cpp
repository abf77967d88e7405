#include "quote/QuoteSession.h"

#include "catalogue/CatalogueError.h"
#include "catalogue/CatalogueProviders.h"
#include "quote/PlainText.h"
#include "quote/ServerWait.h"

#include "funds/frm_FundSelector.h"
#include "host/Zelutils.h"
#include "toolkit/TApplication.h"

#include <QApplication>
#include <QHash>
#include <QUrl>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

constexpr auto masterClients = "MASTERCLIENTS";

} // namespace

ListedClient::ListedClient(const Client &client)
{
    take(client);
}

void ListedClient::take(const Client &client)
{
    m_client = client;
    Set_Surname(client.surname);
    Set_FirstNames(client.firstNames);
    Set_IDNumber(client.idNumber);
    Set_DateOfBirth(client.dateOfBirth);
    Set_EMail(client.eMail);
    Set_Telephone(client.telephone);
}

Client ListedClient::client() const
{
    Client client = m_client;
    client.surname = Get_Surname();
    client.firstNames = Get_FirstNames();
    client.idNumber = Get_IDNumber();
    client.dateOfBirth = Get_DateOfBirth();
    client.eMail = Get_EMail();
    client.telephone = Get_Telephone();
    return client;
}

QuoteSession::QuoteSession(StoreWorker &store, const CatalogueDatabase &catalogue,
                           CatalogueProviders &providers)
    : m_store(store), m_catalogue(catalogue), m_providers(providers), m_drafts(store),
      m_clients(std::make_unique<TBaseClients>())
{
    ZelSystem().Items().SetItem(QLatin1String(masterClients), m_clients.get());
    connectGuarded(
        TfrmFundSelector::Requests(), &TFundSelectorRequests::FundSheetRequested, this,
        [this](int, const QString &address) { openFactSheet(QApplication::activeWindow(), {}, address); });
}

QuoteSession::~QuoteSession()
{
    ZelSystem().Items().Remove(QLatin1String(masterClients));
}

Product QuoteSession::product(int productID) const
{
    const QList<Product> products = m_catalogue.products();
    const auto found = std::find_if(products.cbegin(), products.cend(), [productID](const Product &product) {
        return product.productID == productID;
    });
    if (found == products.cend())
        throw CatalogueError(tr("The catalogue has no product %1").arg(productID));
    return *found;
}

void QuoteSession::setClients(const QList<Client> &clients)
{
    QHash<qint64, ListedClient *> gone;
    for (int i = 0; i < m_clients->Count(); ++i) {
        auto *const listed = static_cast<ListedClient *>(m_clients->Client(i));
        gone.insert(listed->clientID(), listed);
    }
    m_clients->BeginUpdate();
    for (const Client &client : clients) {
        if (ListedClient *const listed = gone.take(client.clientID))
            listed->take(client);
        else
            m_clients->Add(std::make_unique<ListedClient>(client));
    }
    for (ListedClient *const listed : std::as_const(gone))
        m_clients->Delete(listed);
    m_clients->EndUpdate();
}

ListedClient *QuoteSession::putClient(const Client &client)
{
    if (ListedClient *const listed = findClient(client.clientID)) {
        listed->take(client);
        return listed;
    }
    return static_cast<ListedClient *>(m_clients->Add(std::make_unique<ListedClient>(client)));
}

ListedClient *QuoteSession::findClient(qint64 clientID) const
{
    if (clientID == 0)
        return nullptr;
    for (int i = 0; i < m_clients->Count(); ++i) {
        auto *const listed = static_cast<ListedClient *>(m_clients->Client(i));
        if (listed->clientID() == clientID)
            return listed;
    }
    return nullptr;
}

void QuoteSession::saveQuote(const Quote &quote, SaveMode mode, const QString &draftKey,
                             const std::function<void(std::future<Quote>)> &then)
{
    const auto save = [quote, mode, draftKey](QuoteStore &store) {
        Quote saved = quote;
        store.save(saved, mode, draftKey);
        return saved;
    };
    m_store.ask(this, save, [this, draftKey, then](std::future<Quote> answer) {
        std::promise<Quote> passedOn;
        bool isSaved = false;
        try {
            passedOn.set_value(answer.get());
            isSaved = true;
        } catch (...) {
            passedOn.set_exception(std::current_exception());
        }
        if (isSaved)
            m_drafts.forget(draftKey);
        then(passedOn.get_future());
        // Also when the page was closed without waiting.
        if (isSaved)
            Q_EMIT quoteSaved();
    });
}

void QuoteSession::saveClient(Client &client, QWidget *parent)
{
    // A file reports the result of a save at once. With a server it may stay unknown, so the id is taken
    // first.
    if (!m_store.isDirect() && client.clientID == 0 && client.takenID == 0)
        client.takenID = fetch(m_store, parent, [](QuoteStore &store) { return store.newClientID(); });
    client = fetch(m_store, parent, [client](QuoteStore &store) {
        Client saved = client;
        store.saveClient(saved);
        return saved;
    });
}

void QuoteSession::openFactSheet(QWidget *parent, const QString &fund, const QString &address) const
{
    if (address.isEmpty()) {
        m_adviser->tell(parent, tr("There is no fact sheet for the %1").arg(shortText(fund)), {});
        return;
    }
    // A catalogue comes from outside: it may name web pages but no programs or files of this computer.
    const QUrl url(address, QUrl::StrictMode);
    const bool isPage =
        url.isValid() && !url.host().isEmpty() && (url.scheme() == u"https"_s || url.scheme() == u"http"_s);
    if (!isPage)
        m_adviser->tell(parent, tr("The fact sheet's address is not a web address"), address);
    else if (!m_adviser->openUrl(url))
        m_adviser->tell(parent, tr("No program could be found that opens the fact sheet"), address);
}

} // namespace QuoteDesk
