#pragma once

#include "database/StoreLocation.h"
#include "store/Quote.h"
#include "store/QuoteErrors.h"

#include <memory>

namespace QuoteDesk
{

class Database;
class LineCutter;

/// A quote as the list of quotes shows it.
struct QuoteSummary {
    qint64 quoteID = 0;
    int productID = 0;
    QString product; ///< Its name; blank when the catalogue no longer has it.
    qint64 clientID = 0;
    QString client; ///< "Surname, First names"; blank for none.
    QString description;
    Currency amount;        ///< rand
    bool allocated = false; ///< False for a draft.
    QDateTime changed;      ///< UTC
    QString changedBy;
    friend bool operator==(const QuoteSummary &, const QuoteSummary &) = default;
};

/// A deleted quote, which can still be brought back.
struct DeletedQuote {
    QuoteSummary quote;
    QDateTime deleted; ///< UTC
    QString deletedBy;
    friend bool operator==(const DeletedQuote &, const DeletedQuote &) = default;
};

/// A quote as it was typed, of a program that ended without saving or dropping it.
struct Draft {
    QString key;
    Quote quote;
    QDateTime kept; ///< UTC
};

/// What save() does when somebody else has saved or deleted the quote in the meantime.
enum class SaveMode {
    OnlyIfUnchanged, ///< Nothing; it raises QuoteChangedElsewhere.
    Overwrite,       ///< Their version is replaced; a deleted quote comes back.
    AsCopy,          ///< A quote of its own is made, theirs stays.
};

/// The quotes and clients of one database, an SQLite file or a PostgreSQL database with the same tables.
///
/// Each operation that writes is one transaction: after a crash, a full disk or a lost server it is there
/// whole or not at all. Several programs may use one database. All operations raise StoreError; a lost server
/// (StoreUnreachable) is connected anew by the next call. Used on one thread.
class QuoteStore
{
public:
    /// How long a deleted quote can be brought back. Afterwards the next program that opens the database
    /// deletes it for good.
    static constexpr int DaysInBin = 30;

    /// Opens the database; a file, with its folder, and the tables are made when missing, older tables
    /// are brought up to date, and an empty catalogue is filled with the embedded one. Raises StoreError for
    /// what is no database, belongs to another program or to a newer version of this one, cannot be written,
    /// or does not answer. With @p cutter another thread can end a wait for a server.
    static std::unique_ptr<QuoteStore> open(const StoreLocation &location,
                                            std::shared_ptr<LineCutter> cutter = {});
    ~QuoteStore();
    QuoteStore(const QuoteStore &) = delete;
    QuoteStore &operator=(const QuoteStore &) = delete;

    /// What the catalogue shares with the store: CatalogueDatabase is constructed on it.
    Database &database() noexcept;
    /// The open Qt SQL connection, for datasets.
    const QString &connectionName() const noexcept;
    const StoreLocation &location() const noexcept;

    /// The quotes that are not deleted, the last changed first.
    QList<QuoteSummary> quotes();
    /// A quote with all that belongs to it; StoreError when it is not there.
    Quote quote(qint64 quoteID);
    /// Saves the quote as one transaction and returns its number. In @p quote the number, revision and time
    /// are brought up to date. A quote with the number 0 is a new one. The draft of @p draftKey, when not
    /// blank, goes in the same transaction.
    qint64 save(Quote &quote, SaveMode mode = SaveMode::OnlyIfUnchanged, const QString &draftKey = {});
    /// Puts the quote into the bin. Raises QuoteGone when it is not there, or in the bin already.
    void remove(qint64 quoteID);
    /// Brings a quote back from the bin. Raises QuoteGone when it is not in it.
    void restore(qint64 quoteID);
    /// What is in the bin, the last deleted first; of everybody.
    QList<DeletedQuote> deletedQuotes();
    /// Deletes a quote that is in the bin for good. Raises QuoteGone when it is not in it.
    void deleteForGood(qint64 quoteID);
    /// A key for Quote::saveKey.
    static QString newSaveKey();
    /// Saves a copy of the stored quote and returns its number. The same again with the same @p saveKey makes
    /// no second one.
    qint64 duplicate(qint64 quoteID, const QString &saveKey = {});

    /// By surname and first names.
    QList<Client> clients();
    Client client(qint64 clientID);
    /// Saves the client, a new one when its number is 0, sets and returns the number.
    qint64 saveClient(Client &client);
    /// A number for Client::takenID.
    qint64 newClientID();
    /// Refused with StoreError while the client has quotes, also those in the bin.
    void removeClient(qint64 clientID);

    /// A key for the draft of one open editor.
    static QString newDraftKey();
    /// Keeps what is typed; replaces what the key had.
    void keepDraft(const QString &key, const Quote &quote);
    /// Nothing when there is none.
    void dropDraft(const QString &key);
    /// What this person was typing in programs that are no longer running, the latest first.
    QList<Draft> abandonedDrafts();
    /// Makes an abandoned draft one of this program. StoreError when another program has taken it first.
    Quote adoptDraft(const QString &key);

    /// Whether another program has changed quotes, clients or the catalogue since the last call (or since
    /// opening); then a list on the screen is to be read again. Cheap enough to ask every few seconds.
    bool changedElsewhere();

private:
    struct Private;
    explicit QuoteStore(std::unique_ptr<Private> impl);
    std::unique_ptr<Private> d;
};

} // namespace QuoteDesk
