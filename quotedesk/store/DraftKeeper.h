#pragma once

#include "store/StoreWorker.h"

#include <QHash>
#include <QObject>
#include <QSet>

#include <memory>
#include <optional>

namespace QuoteDesk
{

/// Stores unsaved changes as drafts: in the store, and in a file on this computer while the server does not
/// answer. Drafts in the file are moved to the store when the server answers again.
class DraftKeeper : public QObject
{
    Q_OBJECT
public:
    /// @p worker must outlive the keeper.
    explicit DraftKeeper(StoreWorker &worker);
    ~DraftKeeper() override;

    /// Stores a draft in place of the former one with this key.
    void keep(const QString &key, const Quote &quote);
    /// The adviser has saved or dropped the draft.
    void drop(const QString &key);
    /// The store has deleted the draft when it saved the quote.
    void forget(const QString &key);

    /// Stores a draft in the file on this computer until it is dropped. Throws StoreError.
    void keepHere(const QString &key, const Quote &quote);
    /// The drafts of ended programs in the file on this computer, latest first.
    QList<Draft> leftHere();
    /// Makes such a draft one of this program. Throws StoreError.
    Quote adoptFromHere(const QString &key);

Q_SIGNALS:
    /// Unsaved changes cannot be stored as a draft, for this reason.
    void failed(const QString &reason);

private:
    struct Wanted {
        std::optional<Quote> quote; ///< none for a draft to be deleted
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
    QHash<QString, Wanted> m_wanted; ///< not yet confirmed by the store
    QHash<QString, int> m_sent;      ///< the version that was sent to the store, by key
    int m_version = 0;
    std::unique_ptr<QuoteStore> m_here;
    QSet<QString> m_keptHere;
};

} // namespace QuoteDesk
