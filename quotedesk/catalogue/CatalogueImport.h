#pragma once

#include "catalogue/CatalogueFile.h"

#include <QHash>
#include <QList>
#include <QPair>
#include <QString>

#include <functional>

namespace QuoteDesk
{

class CsvReader;
class Database;

/// What an import did with a catalogue file.
struct ImportReport {
    /// A line that was left out, and why.
    struct Refused {
        int line = 0;
        QString reason;
        friend bool operator==(const Refused &, const Refused &) = default;
    };
    int linesRead = 0; ///< Lines with a fund or what should have been one; the column names do not count.
    int imported = 0;  ///< Funds written; a fund counts once for each group that it is in.
    QList<Refused> refused;
    bool cancelled = false; ///< Nothing has changed then.
};

/// What an import would take away.
struct ImportLoss {
    int offered = 0;  ///< Funds in the catalogue as it is; each counts once.
    int incoming = 0; ///< Funds in the file.
    int gone = 0;     ///< Funds of the catalogue that the file has not.
    int renamed = 0;  ///< Funds whose number has another name in the file.
    int quotes = 0;   ///< Quotes with a fund that goes or is renamed.
    bool any() const noexcept { return gone > 0 || renamed > 0; }
    /// More than a fifth of the funds go.
    bool isLarge() const noexcept { return qint64{gone} * 5 > offered; }
    friend bool operator==(const ImportLoss &, const ImportLoss &) = default;
};

/// Asked before anything is written when an import takes something away; false leaves all as it is.
using ImportConsent = std::function<bool(const ImportLoss &loss)>;

/// Told how far an import is, from 0 to 1000; false cancels it. It may run the event loop.
using ImportProgress = std::function<bool(int permille)>;

/// The import of a catalogue text with the columns GroupTypeID, GroupTypeDesc, FundGroupID, FundGroupName,
/// FundID, FundName, one fund a line. Its group types, groups and funds take the place of those of a
/// database. What such a text does not say is 0, false or blank; the Afrikaans names are the names, the
/// mainframe number is the fund's own, and every product offers every group.
///
/// A line that is wrong, or that gives a fund a second time, is left out and reported.
class CatalogueImport
{
public:
    explicit CatalogueImport(QString csv);

    /// Reads and checks the text; false when it was cancelled. Raises CatalogueError for a text that is no
    /// catalogue at all.
    bool read(const ImportProgress &progress);
    /// Whether there is anything to write.
    bool holdsFunds() const noexcept { return !m_funds.isEmpty(); }
    /// What write() would take away from a database. Raises StoreError.
    ImportLoss loss(Database &database) const;
    /// Writes what was read as one transaction; false when it was cancelled. Nothing is written, and true
    /// returned, when there is no fund at all. Raises StoreError.
    bool write(Database &database, const ImportProgress &progress);
    /// What has been read and written so far.
    const ImportReport &report() const noexcept { return m_report; }

private:
    struct GroupType {
        int id;
        QString name;
        int line; ///< The first that names it.
    };
    struct Group {
        int id;
        int typeID;
        QString name;
        int line;
    };
    struct Fund {
        int id;
        int groupID;
        QString name;
    };

    [[noreturn]] void refuseHeading(const QStringList &fields) const;
    void take(const QStringList &fields, int line);

    QString m_csv;
    ImportReport m_report;
    QList<GroupType> m_types;
    QList<Group> m_groups;
    QList<Fund> m_funds;
    QHash<int, qsizetype> m_typeAt;      ///< By ID, the place in m_types.
    QHash<int, qsizetype> m_groupAt;     ///< By ID, the place in m_groups.
    QHash<QPair<int, int>, int> m_known; ///< By fund and group, the line.
};

/// Replaces the tables of products and funds by the embedded catalogue. Inside a transaction.
void loadEmbeddedCatalogue(Database &database);

} // namespace QuoteDesk
