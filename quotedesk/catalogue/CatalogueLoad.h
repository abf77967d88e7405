#pragma once

#include <QSqlDatabase>
#include <QString>

namespace QuoteDesk
{

/// Runs a block of work as one transaction: all of it or, when the commit was not reached, nothing.
class Transaction
{
public:
    explicit Transaction(const QSqlDatabase &database); ///< Raises CatalogueError when the engine refuses.
    ~Transaction();
    Transaction(const Transaction &) = delete;
    Transaction &operator=(const Transaction &) = delete;
    void commit(); ///< Raises CatalogueError when the engine refuses; the work is then undone.

private:
    QSqlDatabase m_database;
    bool m_open = true;
};

/// Runs one statement without values; CatalogueError with the engine's reason.
void runStatement(const QSqlDatabase &database, const QString &statement);

/// Appends the records of @p csv to @p table; the first record names the columns. CatalogueError with the
/// line.
void loadTable(const QSqlDatabase &database, const QString &table, const QString &csv);

/// Replaces group types, fund groups and funds by those of a catalogue text with the columns GroupTypeID,
/// GroupTypeDesc, FundGroupID, FundGroupName, FundID, FundName, one fund a line. What such a text does not
/// say is 0, false or blank; the Afrikaans names are the names, the mainframe number is the fund's own, and
/// every product offers every group. CatalogueError with the line for a text that is no catalogue; the
/// caller's transaction undoes what was written.
void importCatalogue(const QSqlDatabase &database, const QString &csv);

} // namespace QuoteDesk
