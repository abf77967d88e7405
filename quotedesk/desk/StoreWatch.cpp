#include "desk/StoreWatch.h"

#include "catalogue/CatalogueCopy.h"
#include "catalogue/CatalogueDatabase.h"
#include "database/Database.h"
#include "quote/QuoteSession.h"

#include "toolkit/TApplication.h"

#include <QHash>

#include <optional>
#include <utility>

namespace QuoteDesk
{
namespace
{

/// The interval between checks for changes by other programs, in milliseconds.
constexpr int LookMs = 3000;

} // namespace

StoreWatch::StoreWatch(QuoteSession &session, CatalogueDatabase &catalogue)
    : m_session(session), m_catalogue(catalogue), m_store(session.store())
{
    m_timer.setInterval(LookMs);
    connectGuarded(&m_timer, &QTimer::timeout, this, [this] { look(); });
}

StoreWatch::~StoreWatch() = default;

void StoreWatch::start()
{
    // Changes before this point have been read already.
    m_store.ask(
        this, [](QuoteStore &store) { store.changedElsewhere(); }, [](const std::future<void> &) {});
    m_timer.start();
}

StoreWatch::Lists StoreWatch::read(QuoteStore &store)
{
    return {store.clients(), store.quotes(), CatalogueCopy::versionOf(store.database())};
}

void StoreWatch::show(const Lists &lists)
{
    m_session.setClients(lists.clients);
    QList<QuoteSummary> quotes = lists.quotes;
    QHash<int, QString> names;
    for (const Product &product : m_catalogue.products())
        names.insert(product.productID, product.name);
    for (QuoteSummary &quote : quotes)
        quote.product = names.value(quote.productID, quote.product);
    Q_EMIT clientsRead(lists.clients);
    Q_EMIT quotesRead(quotes);
    if (lists.catalogueVersion != m_catalogue.version())
        readCatalogue(false);
}

void StoreWatch::refresh()
{
    m_store.ask(this, &StoreWatch::read, [this](std::future<Lists> answer) {
        try {
            show(answer.get());
        } catch (const StoreUnreachable &) {
            // The lists are read again when the server answers.
            Q_EMIT unreachable();
        }
    });
}

void StoreWatch::refreshAll()
{
    refresh();
    readCatalogue(true);
}

/// Updates the copy of a server's catalogue.
void StoreWatch::readCatalogue(bool showAnew)
{
    if (m_store.isDirect()) {
        Q_EMIT m_session.catalogueChanged();
        return;
    }
    if (std::exchange(m_isReadingCatalogue, true))
        return;
    m_store.ask(
        this, [](QuoteStore &store) { return CatalogueCopy::of(store.database()); },
        [this, showAnew](std::future<CatalogueCopy> answer) {
            m_isReadingCatalogue = false;
            try {
                m_catalogue.take(answer.get());
                if (showAnew)
                    Q_EMIT m_session.catalogueChanged();
            } catch (const StoreUnreachable &) {
                // The window reports this.
            }
        },
        StoreWorker::LongLimit);
}

void StoreWatch::look()
{
    if (std::exchange(m_isLooking, true))
        return;
    const auto question = [](QuoteStore &store) {
        return store.changedElsewhere() ? std::optional(read(store)) : std::nullopt;
    };
    m_store.ask(this, question, [this](std::future<std::optional<Lists>> answer) {
        m_isLooking = false;
        try {
            if (const std::optional<Lists> lists = answer.get())
                show(*lists);
        } catch (const StoreUnreachable &) {
            // The window reports this.
        } catch (const Exception &error) {
            // Commands report errors in a dialog; this is only a periodic check.
            Q_EMIT failed(error.message());
        }
    });
}

} // namespace QuoteDesk
