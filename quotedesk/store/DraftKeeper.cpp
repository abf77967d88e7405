#include "store/DraftKeeper.h"

#include "database/StoreError.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{

DraftKeeper::DraftKeeper(StoreWorker &worker) : m_worker(worker)
{
    connect(&worker, &StoreWorker::answering, this, &DraftKeeper::serverAnswers);
}

DraftKeeper::~DraftKeeper() = default;

void DraftKeeper::keep(const QString &key, const Quote &quote)
{
    want(key, quote);
}

void DraftKeeper::drop(const QString &key)
{
    want(key, std::nullopt);
}

void DraftKeeper::forget(const QString &key)
{
    m_wanted.remove(key);
    dropHere(key);
}

void DraftKeeper::want(const QString &key, const std::optional<Quote> &quote)
{
    m_wanted.insert(key, {quote, ++m_version});
    if (m_worker.isAnswering())
        send(key);
    else
        keepWantedHere(key);
}

/// Sends the newest state of a draft; per key only one request at a time.
void DraftKeeper::send(const QString &key)
{
    const auto wanted = m_wanted.constFind(key);
    if (wanted == m_wanted.cend() || m_sent.contains(key))
        return;
    m_sent.insert(key, wanted->version);
    m_worker.ask(
        this,
        [key, quote = wanted->quote](QuoteStore &store) {
            if (quote)
                store.keepDraft(key, *quote);
            else
                store.dropDraft(key);
        },
        [this, key, version = wanted->version](std::future<void> answer) {
            takeAnswer(key, version, std::move(answer));
        });
}

void DraftKeeper::takeAnswer(const QString &key, int version, std::future<void> answer)
{
    m_sent.remove(key);
    const auto wanted = m_wanted.constFind(key);
    const bool isNewest = wanted != m_wanted.cend() && wanted->version == version;
    try {
        answer.get();
    } catch (const StoreUnreachable &) {
        // Sent again when the server answers.
        keepWantedHere(key);
        return;
    } catch (const Exception &error) {
        if (m_worker.isDirect())
            m_wanted.remove(key);
        else
            keepWantedHere(key);
        Q_EMIT failed(error.message());
        return;
    }
    if (isNewest) {
        m_wanted.remove(key);
        dropHere(key);
    } else {
        send(key);
    }
}

void DraftKeeper::serverAnswers(bool answers)
{
    const QStringList keys = m_wanted.keys();
    for (const QString &key : keys) {
        if (answers)
            send(key);
        else
            keepWantedHere(key);
    }
}

void DraftKeeper::keepWantedHere(const QString &key)
{
    const auto wanted = m_wanted.constFind(key);
    if (wanted == m_wanted.cend() || m_worker.isDirect())
        return;
    if (!wanted->quote) {
        dropHere(key);
        return;
    }
    try {
        keepHere(key, *wanted->quote);
    } catch (const Exception &error) {
        Q_EMIT failed(error.message());
    }
}

void DraftKeeper::keepHere(const QString &key, const Quote &quote)
{
    here().keepDraft(key, quote);
    m_keptHere.insert(key);
}

void DraftKeeper::dropHere(const QString &key)
{
    if (!m_keptHere.contains(key))
        return;
    try {
        here().dropDraft(key);
        m_keptHere.remove(key);
    } catch (const Exception &) {
        // The next start offers this draft again, which is better than losing one.
    }
}

QList<Draft> DraftKeeper::leftHere()
{
    if (m_worker.isDirect() || (!m_here && !QFile::exists(path())))
        return {};
    return here().abandonedDrafts();
}

Quote DraftKeeper::adoptFromHere(const QString &key)
{
    Quote quote = here().adoptDraft(key);
    m_keptHere.insert(key);
    return quote;
}

/// One file per server, because a draft must not be moved to another server.
QString DraftKeeper::path() const
{
    const QByteArray server =
        QCryptographicHash::hash(m_worker.location().text().toUtf8(), QCryptographicHash::Sha256).toHex();
    const QFileInfo own(StoreLocation::inUserData().file);
    return own.absoluteDir().filePath(u"drafts-%1.db"_s.arg(QLatin1StringView(server.left(16))));
}

QuoteStore &DraftKeeper::here()
{
    if (!m_here)
        m_here = QuoteStore::open(StoreLocation::fromText(path()));
    return *m_here;
}

} // namespace QuoteDesk
