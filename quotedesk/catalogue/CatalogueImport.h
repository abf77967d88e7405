#pragma once

#include "catalogue/CatalogueFile.h"

#include <QHash>
#include <QList>
#include <QPair>
#include <QSet>
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
    /// Writes what was read as one transaction; false when it was cancelled. Nothing is written, and true
    /// returned, when there is no fund at all. Raises StoreError.
    bool write(Database &database, const ImportProgress &progress);
    /// What has been read and written so far.
    const ImportReport &report() const noexcept { return m_report; }

private:
    struct GroupType {
        int id;
        QString name;
    };
    struct Group {
        int id;
        int typeID;
        QString name;
    };
    struct Fund {
        int id;
        int groupID;
        QString name;
    };

    void take(const QStringList &fields);

    QString m_csv;
    ImportReport m_report;
    QList<GroupType> m_types;
    QList<Group> m_groups;
    QList<Fund> m_funds;
    QHash<int, qsizetype> m_typeAt;  ///< By ID, the place in m_types.
    QHash<int, qsizetype> m_groupAt; ///< By ID, the place in m_groups.
    QSet<QPair<int, int>> m_known;   ///< Fund and group.
};

/// Replaces the tables of products and funds by the embedded catalogue. Inside a transaction.
void loadEmbeddedCatalogue(Database &database);

} // namespace QuoteDesk
