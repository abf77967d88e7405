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

/// The result of an import.
struct ImportReport {
    /// A line that was skipped, and the reason.
    struct Refused {
        int line = 0;
        QString reason;
        friend bool operator==(const Refused &, const Refused &) = default;
    };
    int linesRead = 0; ///< Lines after the heading, valid or not; without blank lines.
    int imported = 0;  ///< Funds written; a fund counts once per group.
    QList<Refused> refused;
    bool cancelled = false; ///< If set, nothing has changed.
};

/// What an import would remove or rename.
struct ImportLoss {
    int offered = 0;  ///< Funds in the present catalogue; each counts once.
    int incoming = 0; ///< Funds in the file.
    int gone = 0;     ///< Funds of the catalogue that the file lacks.
    int renamed = 0;  ///< Funds whose name in the file is another one.
    int quotes = 0;   ///< Quotes with a removed or renamed fund.
    bool any() const noexcept { return gone > 0 || renamed > 0; }
    /// Whether more than a fifth of the funds would be removed.
    bool isLarge() const noexcept { return qint64{gone} * 5 > offered; }
    friend bool operator==(const ImportLoss &, const ImportLoss &) = default;
};

/// Called before an import writes, when funds are removed or renamed; false cancels the import.
using ImportConsent = std::function<bool(const ImportLoss &loss)>;

/// Called with the progress from 0 to 1000; false cancels the import. May run the event loop.
using ImportProgress = std::function<bool(int permille)>;

/// Imports a catalogue text with the columns GroupTypeID, GroupTypeDesc, FundGroupID, FundGroupName, FundID
/// and FundName, one fund per line. Its group types, groups and funds replace those of a database. Fields
/// that the text lacks become 0, false or blank; the Afrikaans name is the name, the mainframe number is the
/// fund's id, and every product offers every group.
///
/// Bad lines, and lines that list a fund twice in a group, are skipped and reported.
class CatalogueImport
{
public:
    explicit CatalogueImport(QString csv);

    /// Reads and checks the text; returns false when it was cancelled. Throws CatalogueError when the text is
    /// not a catalogue.
    bool read(const ImportProgress &progress);
    /// Whether there is any fund to write.
    bool holdsFunds() const noexcept { return !m_funds.isEmpty(); }
    /// What write() would remove or rename in a database. Throws StoreError.
    ImportLoss loss(Database &database) const;
    /// Writes the funds in one transaction; returns false when it was cancelled. Without funds it writes
    /// nothing and returns true. Throws StoreError.
    bool write(Database &database, const ImportProgress &progress);
    /// The result of reading and writing so far.
    const ImportReport &report() const noexcept { return m_report; }

private:
    struct GroupType {
        int id;
        QString name;
        int line; ///< The first line with this type.
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
    QHash<int, qsizetype> m_typeAt;      ///< The index in m_types by id.
    QHash<int, qsizetype> m_groupAt;     ///< The index in m_groups by id.
    QHash<QPair<int, int>, int> m_known; ///< The line by fund and group.
};

/// Replaces the tables of the catalogue by the embedded one. Call inside a transaction.
void loadEmbeddedCatalogue(Database &database);

} // namespace QuoteDesk
