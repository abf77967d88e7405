#pragma once

#include "store/StoreWorker.h"

#include <QHash>
#include <QObject>
#include <QSet>

#include <memory>
#include <optional>

namespace QuoteDesk
{

/// Keeps what is being typed against a crash: in the store, and in a file of this computer for as long as the
/// store's server does not answer. From there it is handed in when the server is back.
class DraftKeeper : public QObject
{
    Q_OBJECT
public:
    /// @p worker must outlive the keeper.
    explicit DraftKeeper(StoreWorker &worker);
    ~DraftKeeper() override;

    /// Keeps a draft in the place of what its key had.
    void keep(const QString &key, const Quote &quote);
    /// The draft has been saved or dropped by the adviser.
    void drop(const QString &key);
    /// The draft has gone from the store with the save of its quote.
    void forget(const QString &key);

    /// Keeps a draft in the file of this computer, until it is dropped. Raises StoreError.
    void keepHere(const QString &key, const Quote &quote);
    /// What programs that have ended have left in the file of this computer, the latest first.
    QList<Draft> leftHere();
    /// Makes such a draft one of this program. Raises StoreError.
    Quote adoptFromHere(const QString &key);

Q_SIGNALS:
    /// What is typed cannot be kept: why.
    void failed(const QString &reason);

private:
    struct Wanted {
        std::optional<Quote> quote; ///< None for a draft that is to go.
        int version = 0;
    };
    void want(const QString &key, const std::optional<Quote> &quote);
    void send(const QString &key);
    void takeAnswer(const QString &key, int version, std::future<void> answer);
    void keepWantedHere(const QString &key);
    void dropHere(const QString &key);
    void serverAnswers(bool answers);
    QString path() const;
    QuoteStore &here();

    StoreWorker &m_worker;
    QHash<QString, Wanted> m_wanted; ///< What the store has not confirmed yet.
    QHash<QString, int> m_sent;      ///< What is under way to it.
    int m_version = 0;
    std::unique_ptr<QuoteStore> m_here;
    QSet<QString> m_keptHere;
};

} // namespace QuoteDesk
