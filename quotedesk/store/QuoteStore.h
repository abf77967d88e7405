#pragma once

#include "database/StoreLocation.h"
#include "store/Quote.h"
#include "store/QuoteErrors.h"

#include <memory>

namespace QuoteDesk
{

class Database;
class LineCutter;

/// A quote as the list of quotes displays it.
struct QuoteSummary {
    qint64 quoteID = 0;
    int productID = 0;
    QString product; ///< The product's name; blank when the catalogue no longer has it.
    qint64 clientID = 0;
    QString client; ///< "Surname, First names"; blank without a client.
    QString description;
    Currency amount;        ///< rand
    bool allocated = false; ///< False for a draft.
    QDateTime changed;      ///< UTC
    QString changedBy;
    bool overAllocated = false; ///< Whether the allocation exceeds the investment.
    friend bool operator==(const QuoteSummary &, const QuoteSummary &) = default;
};

/// A deleted quote that can still be restored.
struct DeletedQuote {
    QuoteSummary quote;
    QDateTime deleted; ///< UTC
    QString deletedBy;
    friend bool operator==(const DeletedQuote &, const DeletedQuote &) = default;
};

/// A quote with unsaved changes, from a program that ended without saving or dropping them.
struct Draft {
    QString key;
    Quote quote;
    QDateTime kept; ///< UTC
};

/// What save() does when another user has saved or deleted the quote in the meantime.
enum class SaveMode {
    OnlyIfUnchanged, ///< Throws QuoteChangedElsewhere and saves nothing.
    Overwrite,       ///< Replaces the other version; a deleted quote comes back.
    AsCopy,          ///< Saves a new quote; the other version stays.
};

/// The quotes and clients of one database: an SQLite file, or a PostgreSQL database with the same tables.
///
/// Each writing operation is one transaction: after a crash, a full disk or a lost server its result is
/// stored completely or not at all. Several programs may use the database. All operations throw StoreError;
/// after StoreUnreachable the next call connects again. For use on one thread.
class QuoteStore
{
public:
    /// The number of days in which a deleted quote can be restored. Afterwards the next program that opens
    /// the database deletes it permanently.
    static constexpr int DaysInBin = 30;

    /// Opens the database. Creates a missing file with its folder and the tables, upgrades older tables, and
    /// fills an empty catalogue with the embedded one. Throws StoreError when the database is not one,
    /// belongs to another program or a newer version, cannot be written or does not answer. With @p cutter
    /// another thread can end a wait for a server.
    static std::unique_ptr<QuoteStore> open(const StoreLocation &location,
                                            std::shared_ptr<LineCutter> cutter = {});
    ~QuoteStore();
    QuoteStore(const QuoteStore &) = delete;
    QuoteStore &operator=(const QuoteStore &) = delete;

    /// The connection, on which CatalogueDatabase is constructed.
    Database &database() noexcept;
    /// The name of the open Qt SQL connection, for datasets.
    const QString &connectionName() const noexcept;
    const StoreLocation &location() const noexcept;

    /// The quotes that are not deleted, last changed first.
    QList<QuoteSummary> quotes();
    /// The quote with its funds and details. Throws StoreError when it does not exist.
    Quote quote(qint64 quoteID);
    /// Saves the quote in one transaction and returns its id. Updates id, revision and time of @p quote. A
    /// quote with the id 0 is new. A non-blank @p draftKey deletes this draft in the same transaction.
    qint64 save(Quote &quote, SaveMode mode = SaveMode::OnlyIfUnchanged, const QString &draftKey = {});
    /// Moves the quote to the bin. Throws QuoteGone when it does not exist or is in the bin already.
    void remove(qint64 quoteID);
    /// Restores a quote from the bin. Throws QuoteGone when it is not in the bin.
    void restore(qint64 quoteID);
    /// The deleted quotes of all users, last deleted first.
    QList<DeletedQuote> deletedQuotes();
    /// Permanently deletes a quote from the bin. Throws QuoteGone when it is not in the bin.
    void deleteForGood(qint64 quoteID);
    /// A new key for Quote::saveKey.
    static QString newSaveKey();
    /// Saves a copy of the stored quote and returns its id. A second call with the same @p saveKey makes no
    /// second copy.
    qint64 duplicate(qint64 quoteID, const QString &saveKey = {});

    /// Sorted by surname and first names.
    QList<Client> clients();
    Client client(qint64 clientID);
    /// Saves the client, a new one when its id is 0; sets and returns the id.
    qint64 saveClient(Client &client);
    /// A new id for Client::takenID.
    qint64 newClientID();
    /// Throws StoreError while the client has quotes, including those in the bin.
    void removeClient(qint64 clientID);

    /// A new key for the draft of one open editor.
    static QString newDraftKey();
    /// Stores unsaved changes in place of those under this key.
    void keepDraft(const QString &key, const Quote &quote);
    /// Does nothing when there is no such draft.
    void dropDraft(const QString &key);
    /// The drafts that this person's ended programs have left, latest first.
    QList<Draft> abandonedDrafts();
    /// Makes an abandoned draft one of this program. Throws StoreError when another program was first.
    Quote adoptDraft(const QString &key);

    /// Whether another program has changed quotes, clients or the catalogue since the last call (or since
    /// opening); displayed lists then have to be read again. Cheap enough for a call every few seconds.
    bool changedElsewhere();

private:
    struct Private;
    explicit QuoteStore(std::unique_ptr<Private> impl);
    std::unique_ptr<Private> d;
};

} // namespace QuoteDesk
