// The work of the data module on a catalogue of funds, compared with the same work on plain arrays, on an
// SQLite table in memory, and on Qt's table model with all rows fetched.

#include "data/ClientDataSet.h"
#include "data/DataPacket.h"

#include <QCoreApplication>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QSqlTableModel>

#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <algorithm>
#include <memory>
#include <numeric>
#include <random>
#include <unordered_map>
#include <unordered_set>
#include <vector>

using namespace Qt::StringLiterals;

namespace
{

QString field(const char *name)
{
    return QString::fromLatin1(name);
}

/// The values of a catalogue row, calculated from its number.
struct Fund {
    explicit Fund(int row)
        : ID(1000 + row * 3), GroupID(row % 1000), TypeID(row % 10),
          Name(u"Opal %1 Growth and Income Fund of Funds"_s.arg(row)),
          MainframeID(u"MF%1"_s.arg(row, 6, 10, QChar(u'0'))), Rate(row / 100.0),
          Minimum(Currency::fromRaw(row * 10000LL)), International(row % 7 == 0)
    {
    }
    int ID;
    int GroupID;
    int TypeID;
    QString Name;
    QString MainframeID;
    double Rate;
    Currency Minimum;
    bool International;
};

TTablePtr makeTable(int rows)
{
    TTableBuilder builder({{field("FundID"), TFieldType::Integer},
                           {field("FundGroupID"), TFieldType::Integer},
                           {field("GroupTypeID"), TFieldType::Integer},
                           {field("FundName"), TFieldType::String},
                           {field("F.MainframeID"), TFieldType::String},
                           {field("BuySellRate"), TFieldType::Float},
                           {field("MinimumInitialAmount"), TFieldType::Currency},
                           {field("InternationalFund"), TFieldType::Boolean}});
    builder.Reserve(rows);
    for (int row = 0; row < rows; ++row) {
        const Fund fund(row);
        builder.AddRow({fund.ID, fund.GroupID, fund.TypeID, fund.Name, fund.MainframeID, fund.Rate,
                        fund.Minimum.toVariant(), fund.International});
    }
    return builder.Finish();
}

/// The table of that size, built once and shared by all benchmarks.
const TTablePtr &table(int rows)
{
    static std::vector<std::pair<int, TTablePtr>> made;
    for (const auto &[size, known] : made) {
        if (size == rows)
            return known;
    }
    return made.emplace_back(rows, makeTable(rows)).second;
}

std::unique_ptr<TClientDataSet> opened(int rows)
{
    auto dataset = std::make_unique<TClientDataSet>();
    dataset->SetData(TDataPacket(table(rows)).ToVariant());
    return dataset;
}

/// The columns that the benchmarks read, as plain arrays.
struct Arrays {
    explicit Arrays(int rows)
    {
        for (int row = 0; row < rows; ++row) {
            const Fund fund(row);
            IDs.push_back(fund.ID);
            GroupIDs.push_back(fund.GroupID);
            Names.push_back(fund.Name);
        }
    }
    std::vector<int> IDs;
    std::vector<int> GroupIDs;
    std::vector<QString> Names;
};

/// The same rows in an SQLite table in memory. The key is SQLite's row number, its fastest look-up.
class SqliteTable
{
public:
    explicit SqliteTable(int rows)
    {
        sqlite3_open(":memory:", &m_db);
        sqlite3_exec(
            m_db,
            "CREATE TABLE Fund(FundID INTEGER PRIMARY KEY, FundGroupID INTEGER, GroupTypeID INTEGER, "
            "FundName TEXT, \"F.MainframeID\" TEXT, BuySellRate REAL, MinimumInitialAmount REAL, "
            "InternationalFund INTEGER); BEGIN",
            nullptr, nullptr, nullptr);
        sqlite3_stmt *insert = Prepare("INSERT INTO Fund VALUES(?,?,?,?,?,?,?,?)");
        for (int row = 0; row < rows; ++row) {
            const Fund fund(row);
            const QByteArray name = fund.Name.toUtf8();
            const QByteArray code = fund.MainframeID.toUtf8();
            sqlite3_bind_int(insert, 1, fund.ID);
            sqlite3_bind_int(insert, 2, fund.GroupID);
            sqlite3_bind_int(insert, 3, fund.TypeID);
            sqlite3_bind_text(insert, 4, name.constData(), -1, SQLITE_TRANSIENT);
            sqlite3_bind_text(insert, 5, code.constData(), -1, SQLITE_TRANSIENT);
            sqlite3_bind_double(insert, 6, fund.Rate);
            sqlite3_bind_double(insert, 7, fund.Minimum.toDouble());
            sqlite3_bind_int(insert, 8, fund.International ? 1 : 0);
            sqlite3_step(insert);
            sqlite3_reset(insert);
        }
        sqlite3_finalize(insert);
        sqlite3_exec(m_db, "COMMIT", nullptr, nullptr, nullptr);
    }
    ~SqliteTable() { sqlite3_close(m_db); }
    SqliteTable(const SqliteTable &) = delete;
    SqliteTable &operator=(const SqliteTable &) = delete;

    sqlite3_stmt *Prepare(const QByteArray &sql) const
    {
        sqlite3_stmt *statement = nullptr;
        if (sqlite3_prepare_v2(m_db, sql.constData(), -1, &statement, nullptr) != SQLITE_OK)
            qFatal("%s", sqlite3_errmsg(m_db));
        return statement;
    }

private:
    sqlite3 *m_db = nullptr;
};

// --- a walk over all rows, reading two fields of each

void walk(benchmark::State &state)
{
    const auto dataset = opened(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        qint64 sum = 0;
        const TField *id = dataset->FieldByName(field("FundID"));
        const TField *name = dataset->FieldByName(field("FundName"));
        for (dataset->First(); !dataset->Eof(); dataset->Next()) {
            const QString text = name->AsString();
            sum += id->AsInteger() + text.size();
        }
        benchmark::DoNotOptimize(sum);
    }
}

void walkArrays(benchmark::State &state)
{
    const Arrays funds(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        qint64 sum = 0;
        for (std::size_t row = 0; row < funds.IDs.size(); ++row) {
            // Copies the text, as reading a field does.
            const QString text = funds.Names[row];
            sum += funds.IDs[row] + text.size();
        }
        benchmark::DoNotOptimize(sum);
    }
}

void walkSqlite(benchmark::State &state)
{
    const SqliteTable rows(static_cast<int>(state.range(0)));
    sqlite3_stmt *statement = rows.Prepare("SELECT FundID, FundName FROM Fund");
    for (auto _ : state) {
        qint64 sum = 0;
        while (sqlite3_step(statement) == SQLITE_ROW) {
            const QString text =
                QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_column_text(statement, 1)));
            sum += sqlite3_column_int(statement, 0) + text.size();
        }
        sqlite3_reset(statement);
        benchmark::DoNotOptimize(sum);
    }
    sqlite3_finalize(statement);
}

void fetchAll(QSqlTableModel &model)
{
    model.select();
    while (model.canFetchMore())
        model.fetchMore();
}

/// Runs @p job on a QSqlTableModel over the same rows, all fetched.
template <typename Job> void onModel(benchmark::State &state, Job job)
{
    const QString connection = field("bench");
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(field("QSQLITE"), connection);
        db.setDatabaseName(field(":memory:"));
        if (!db.open())
            qFatal("the toolkit's SQLite driver does not open");
        QSqlQuery query(db);
        query.exec(
            field("CREATE TABLE Fund(FundID INTEGER PRIMARY KEY, FundGroupID INTEGER, FundName TEXT)"));
        db.transaction();
        query.prepare(field("INSERT INTO Fund VALUES(?,?,?)"));
        for (int row = 0; row < state.range(0); ++row) {
            const Fund fund(row);
            query.addBindValue(fund.ID);
            query.addBindValue(fund.GroupID);
            query.addBindValue(fund.Name);
            query.exec();
        }
        db.commit();
        QSqlTableModel model(nullptr, db);
        model.setTable(field("Fund"));
        fetchAll(model);
        for (auto _ : state)
            job(model);
    }
    QSqlDatabase::removeDatabase(connection);
}

void walkModel(benchmark::State &state)
{
    onModel(state, [](const QSqlTableModel &model) {
        qint64 sum = 0;
        for (int row = 0; row < model.rowCount(); ++row)
            sum += model.index(row, 0).data().toInt() + model.index(row, 2).data().toString().size();
        benchmark::DoNotOptimize(sum);
    });
}

// --- a look-up of every key

std::vector<int> shuffledKeys(int rows)
{
    std::vector<int> keys(static_cast<std::size_t>(rows));
    std::iota(keys.begin(), keys.end(), 0);
    for (int &key : keys)
        key = Fund(key).ID;
    std::shuffle(keys.begin(), keys.end(), std::mt19937(20260101));
    return keys;
}

void locate(benchmark::State &state)
{
    const int rows = static_cast<int>(state.range(0));
    const auto dataset = opened(rows);
    const std::vector<int> keys = shuffledKeys(rows);
    const QString keyField = field("FundID");
    for (auto _ : state) {
        qint64 sum = 0;
        for (const int key : keys) {
            if (dataset->Locate(keyField, key))
                sum += dataset->CurrentTableRow();
        }
        benchmark::DoNotOptimize(sum);
    }
}

void locateSqlite(benchmark::State &state)
{
    const int rows = static_cast<int>(state.range(0));
    const SqliteTable funds(rows);
    const std::vector<int> keys = shuffledKeys(rows);
    sqlite3_stmt *statement = funds.Prepare("SELECT FundGroupID FROM Fund WHERE FundID = ?");
    for (auto _ : state) {
        qint64 sum = 0;
        for (const int key : keys) {
            sqlite3_bind_int(statement, 1, key);
            if (sqlite3_step(statement) == SQLITE_ROW)
                sum += sqlite3_column_int(statement, 0);
            sqlite3_reset(statement);
        }
        benchmark::DoNotOptimize(sum);
    }
    sqlite3_finalize(statement);
}

/// Looks keys up in a hash over the array.
void locateArrays(benchmark::State &state)
{
    const int rows = static_cast<int>(state.range(0));
    const Arrays funds(rows);
    std::unordered_map<int, std::size_t> places;
    for (std::size_t row = 0; row < funds.IDs.size(); ++row)
        places.emplace(funds.IDs[row], row);
    const std::vector<int> keys = shuffledKeys(rows);
    for (auto _ : state) {
        qint64 sum = 0;
        for (const int key : keys) {
            if (const auto place = places.find(key); place != places.end())
                sum += funds.GroupIDs[place->second];
        }
        benchmark::DoNotOptimize(sum);
    }
}

/// QSqlTableModel has no index, so the look-up searches row by row.
void locateModel(benchmark::State &state)
{
    const std::vector<int> keys = shuffledKeys(static_cast<int>(state.range(0)));
    onModel(state, [&](const QSqlTableModel &model) {
        qint64 sum = 0;
        for (const int key : keys) {
            const QModelIndexList found =
                model.match(model.index(0, 0), Qt::EditRole, key, 1, Qt::MatchExactly);
            sum += found.isEmpty() ? 0 : found.first().row();
        }
        benchmark::DoNotOptimize(sum);
    });
}

// --- filters

constexpr int HiddenGroups = 50;
constexpr int HiddenStep = 20;

QByteArray groupFilter()
{
    QByteArrayList groups;
    for (int i = 0; i < HiddenGroups; ++i)
        groups.append(QByteArray::number(i * HiddenStep));
    return "not(FundGroupID in (" + groups.join(',') + "))";
}

QByteArray twoColumnFilter()
{
    return "FundGroupID > 500 and BuySellRate < 800 and FundName like 'Opal 9%'";
}

void runFilter(benchmark::State &state, TDataSet &dataset, const QByteArray &filter)
{
    dataset.SetFilter(QString::fromLatin1(filter));
    for (auto _ : state) {
        dataset.SetFiltered(true);
        benchmark::DoNotOptimize(dataset.RecordCount());
        dataset.SetFiltered(false);
    }
}

void runSqlite(benchmark::State &state, const QByteArray &filter)
{
    const SqliteTable funds(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        std::vector<sqlite3_int64> rows;
        sqlite3_stmt *statement = funds.Prepare("SELECT rowid FROM Fund WHERE " + filter);
        while (sqlite3_step(statement) == SQLITE_ROW)
            rows.push_back(sqlite3_column_int64(statement, 0));
        sqlite3_finalize(statement);
        benchmark::DoNotOptimize(rows.data());
    }
}

void filterGroups(benchmark::State &state)
{
    runFilter(state, *opened(static_cast<int>(state.range(0))), groupFilter());
}

void filterGroupsSqlite(benchmark::State &state)
{
    runSqlite(state, groupFilter());
}

void filterGroupsArrays(benchmark::State &state)
{
    const Arrays funds(static_cast<int>(state.range(0)));
    std::unordered_set<int> hidden;
    for (int i = 0; i < HiddenGroups; ++i)
        hidden.insert(i * HiddenStep);
    for (auto _ : state) {
        std::vector<std::size_t> rows;
        for (std::size_t row = 0; row < funds.GroupIDs.size(); ++row) {
            if (!hidden.count(funds.GroupIDs[row]))
                rows.push_back(row);
        }
        benchmark::DoNotOptimize(rows.data());
    }
}

void filterGroupsModel(benchmark::State &state)
{
    onModel(state, [](QSqlTableModel &model) {
        model.setFilter(QString::fromLatin1(groupFilter()));
        fetchAll(model);
        benchmark::DoNotOptimize(model.rowCount());
    });
}

/// Filters a new table each time, so that no index exists yet.
void filterNewRows(benchmark::State &state)
{
    const QString filter = QString::fromLatin1(groupFilter());
    for (auto _ : state) {
        state.PauseTiming();
        TClientDataSet dataset;
        dataset.SetData(TDataPacket(makeTable(static_cast<int>(state.range(0)))).ToVariant());
        dataset.SetFilter(filter);
        state.ResumeTiming();
        dataset.SetFiltered(true);
        benchmark::DoNotOptimize(dataset.RecordCount());
        state.PauseTiming();
        dataset.Close();
        state.ResumeTiming();
    }
}

void filterColumns(benchmark::State &state)
{
    runFilter(state, *opened(static_cast<int>(state.range(0))), twoColumnFilter());
}

void filterColumnsSqlite(benchmark::State &state)
{
    runSqlite(state, twoColumnFilter());
}

// --- rows handed over

void handPacketOver(benchmark::State &state)
{
    const QVariant packet = TDataPacket(table(static_cast<int>(state.range(0)))).ToVariant();
    for (auto _ : state) {
        TClientDataSet dataset;
        dataset.SetData(packet);
        benchmark::DoNotOptimize(dataset.RecordCount());
    }
}

const char *const CloneFilter = "FundGroupID > 10";

void cloneCursor(benchmark::State &state)
{
    const auto source = opened(static_cast<int>(state.range(0)));
    source->SetFilter(field(CloneFilter));
    source->SetFiltered(true);
    for (auto _ : state) {
        TClientDataSet clone;
        clone.CloneCursor(source.get(), false, true);
        benchmark::DoNotOptimize(clone.RecordCount());
    }
}

/// A second cursor over arrays copies the numbers of the visible rows.
void cloneArrays(benchmark::State &state)
{
    const Arrays funds(static_cast<int>(state.range(0)));
    std::vector<std::size_t> visible;
    for (std::size_t row = 0; row < funds.GroupIDs.size(); ++row) {
        if (funds.GroupIDs[row] > 10)
            visible.push_back(row);
    }
    for (auto _ : state) {
        std::vector<std::size_t> rows = visible;
        benchmark::DoNotOptimize(rows.data());
    }
}

/// A second cursor over SQLite's table is a second statement, which counts its rows by reading all of them.
void cloneSqlite(benchmark::State &state)
{
    const SqliteTable funds(static_cast<int>(state.range(0)));
    const QByteArray sql = QByteArray("SELECT count(*) FROM Fund WHERE ") + CloneFilter;
    for (auto _ : state) {
        sqlite3_stmt *statement = funds.Prepare(sql);
        sqlite3_step(statement);
        benchmark::DoNotOptimize(sqlite3_column_int(statement, 0));
        sqlite3_finalize(statement);
    }
}

void cloneModel(benchmark::State &state)
{
    onModel(state, [](const QSqlTableModel &model) {
        QSqlTableModel second(nullptr, model.database());
        second.setTable(model.tableName());
        second.setFilter(field(CloneFilter));
        fetchAll(second);
        benchmark::DoNotOptimize(second.rowCount());
    });
}

constexpr int Small = 1000;
constexpr int Large = 100000;

} // namespace

namespace
{
void large(benchmark::internal::Benchmark *job)
{
    job->Arg(Large)->Unit(benchmark::kMicrosecond);
}
/// Two sizes, because the model's look-up takes time proportional to its rows.
void smallAndLarge(benchmark::internal::Benchmark *job)
{
    job->Arg(Small)->Arg(Large)->Unit(benchmark::kMicrosecond);
}

BENCHMARK(walk)->Name("data.walk")->Apply(large);
BENCHMARK(walkArrays)->Name("data.walk.baseline.arrays")->Apply(large);
BENCHMARK(walkSqlite)->Name("data.walk.baseline.sqlite")->Apply(large);
BENCHMARK(walkModel)->Name("data.walk.baseline.qsqltablemodel")->Apply(large);
BENCHMARK(locate)->Name("data.locate")->Apply(smallAndLarge);
BENCHMARK(locateArrays)->Name("data.locate.baseline.arrays")->Apply(smallAndLarge);
BENCHMARK(locateSqlite)->Name("data.locate.baseline.sqlite")->Apply(smallAndLarge);
BENCHMARK(locateModel)
    ->Name("data.locate.baseline.qsqltablemodel")
    ->Arg(Small)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(filterGroups)->Name("data.filter")->Apply(large);
BENCHMARK(filterGroupsArrays)->Name("data.filter.baseline.arrays")->Apply(large);
BENCHMARK(filterGroupsSqlite)->Name("data.filter.baseline.sqlite")->Apply(large);
BENCHMARK(filterGroupsModel)->Name("data.filter.baseline.qsqltablemodel")->Apply(large);
BENCHMARK(filterNewRows)->Name("data.filter_new_rows")->Iterations(5)->Apply(large);
BENCHMARK(filterGroupsSqlite)->Name("data.filter_new_rows.baseline.sqlite")->Apply(large);
BENCHMARK(filterColumns)->Name("data.filter_columns")->Apply(large);
BENCHMARK(filterColumnsSqlite)->Name("data.filter_columns.baseline.sqlite")->Apply(large);
BENCHMARK(handPacketOver)->Name("data.packet")->Apply(smallAndLarge);
BENCHMARK(cloneCursor)->Name("data.clone")->Apply(smallAndLarge);
BENCHMARK(cloneArrays)->Name("data.clone.baseline.arrays")->Apply(smallAndLarge);
BENCHMARK(cloneSqlite)->Name("data.clone.baseline.sqlite")->Apply(smallAndLarge);
BENCHMARK(cloneModel)->Name("data.clone.baseline.qsqltablemodel")->Apply(smallAndLarge);
} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
