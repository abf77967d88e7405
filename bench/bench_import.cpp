// Importing a catalogue file into the catalogue's tables, compared with inserting the same rows with plain
// SQLite in one transaction.

#include "BenchViews.h"

#include "catalogue/CatalogueDatabase.h"
#include "database/Database.h"

#include <QFile>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

using namespace QuoteDesk;

namespace
{

void importCatalogue(benchmark::State &state)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(u"funds.csv"_s));
    if (!file.open(QIODevice::WriteOnly))
        return state.SkipWithError("no room for the file");
    file.write("GroupTypeID,GroupTypeDesc,FundGroupID,FundGroupName,FundID,FundName\r\n");
    for (int fund = 0; fund < state.range(0); ++fund)
        file.write(u"%1,Type %1,%2,Group %2,%3,%4\r\n"_s.arg(fund / 5000 + 1)
                       .arg(fund / 100 + 1)
                       .arg(fund + 1)
                       .arg(BenchViews::fundName(fund))
                       .toUtf8());
    file.close();
    CatalogueDatabase catalogue;
    for (auto _ : state)
        catalogue.importFile(file.fileName());
}
BENCHMARK(importCatalogue)
    ->Name("import.catalogue")
    ->Arg(10'000)
    ->Arg(100'000)
    ->Unit(benchmark::kMillisecond);

void insertRows(benchmark::State &state)
{
    QSqlDatabase database = QSqlDatabase::addDatabase(u"QSQLITE"_s, u"bench.import"_s);
    database.setDatabaseName(u":memory:"_s);
    database.open();
    {
        QSqlQuery query(database);
        query.exec(u"CREATE TABLE funds (id INTEGER PRIMARY KEY, fund_group INTEGER, name TEXT)"_s);
        for (auto _ : state) {
            database.transaction();
            query.exec(u"DELETE FROM funds"_s);
            query.prepare(u"INSERT INTO funds VALUES (?, ?, ?)"_s);
            for (int fund = 0; fund < state.range(0); ++fund) {
                query.bindValue(0, fund + 1);
                query.bindValue(1, fund / 100 + 1);
                query.bindValue(2, BenchViews::fundName(fund));
                query.exec();
            }
            database.commit();
        }
    }
    database = {};
    QSqlDatabase::removeDatabase(u"bench.import"_s);
}
BENCHMARK(insertRows)
    ->Name("import.catalogue.baseline.sqlite")
    ->Arg(10'000)
    ->Arg(100'000)
    ->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    return BenchViews::run(argc, argv);
}
