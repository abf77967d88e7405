#include "Engines.h"
// labels: postgresql
// left out on Windows: what runs on PostgreSQL and ODBC
#include "Errors.h"
#include "SummerTime.h"
#include "ZelTest.h"

#include "data/Exceptions.h"

#include <QRegularExpression>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QThread>

#include <atomic>
#include <memory>
#include <mutex>

using namespace Qt::StringLiterals;

namespace
{

QStringList *heard = nullptr;
std::mutex hearing;

void listen(QtMsgType, const QMessageLogContext &, const QString &message)
{
    const std::lock_guard lock(hearing);
    heard->append(message);
}

} // namespace

/// What all datasets on a database have in common: parameters, field types, preparing and error messages;
/// with Qt's own drivers and ODBC, under both class names.
class TestSqlDataSets : public ZelTest
{
    Q_OBJECT

    static QString s(const char *utf8) { return QString::fromUtf8(utf8); }

    /// The test's rows: each driver and class name for a query.
    static void ways()
    {
        QTest::addColumn<int>("driver");
        QTest::addColumn<bool>("ado");
        for (int i = 0; i < Engines::Drivers().size(); ++i) {
            const Driver &driver = Engines::Drivers()[i];
            QTest::addRow("TQuery, %s", qPrintable(driver.Name)) << i << false;
            if (driver.Odbc)
                QTest::addRow("TADOQuery, %s", qPrintable(driver.Name)) << i << true;
        }
    }
    static const Driver &driver()
    {
        QFETCH(const int, driver);
        return Engines::Drivers()[driver];
    }
    static std::unique_ptr<TSqlQuery> query(const QString &sql)
    {
        QFETCH(const bool, ado);
        auto made = Engines::Query(driver(), ado, sql);
        made->setObjectName(u"qryFund"_s);
        return made;
    }
    static void exec(const QString &sql) { query(sql)->ExecSQL(); }
    static int count(const QString &from)
    {
        const auto counted = query(s("select count(*) from ") + from);
        counted->Open();
        return counted->Fields(0)->AsInteger();
    }
    static QList<TFieldType> typesOf(const TDataSet &dataset)
    {
        QList<TFieldType> types;
        const QList<TFieldDef> defs = dataset.FieldDefs();
        for (const TFieldDef &def : defs)
            types.append(def.Type);
        return types;
    }

    Engines m_engines;

private Q_SLOTS:
    void initTestCase() { QVERIFY2(m_engines.Start(), qPrintable(m_engines.Reason())); }
    void init() override
    {
        ZelTest::init();
        for (const Driver &engine : Engines::Drivers().mid(0, 2)) {
            QVERIFY(Engines::Run(
                engine, {s("drop table if exists fund"), s("drop table if exists scratch"),
                         s("create table fund (fundid integer primary key, fundgroupid integer, "
                           "fundname varchar(80), price numeric(19,4))"),
                         s("insert into fund values (1, 10, 'Alpha', 12.5), (2, 10, 'Ängstrom', 0.0001), "
                           "(3, 20, 'Gamma', null)")}));
        }
    }

    void fieldsHaveTheSameTypes_data() { ways(); }
    void fieldsHaveTheSameTypes();
    void expressionsHaveTheSameTypes_data() { ways(); }
    void expressionsHaveTheSameTypes();
    void namesAreTheEnginesOwn_data() { ways(); }
    void namesAreTheEnginesOwn();
    void parametersSelectRows_data() { ways(); }
    void parametersSelectRows();
    void parametersCarryEveryType_data() { ways(); }
    void parametersCarryEveryType();
    void momentsOfTheHourThatTheClockLeavesOut_data() { ways(); }
    void momentsOfTheHourThatTheClockLeavesOut();
    void textsStayTexts_data() { ways(); }
    void textsStayTexts();
    void marksInTextsAreNone_data() { ways(); }
    void marksInTextsAreNone();
    void preparingRefusesBrokenStatements_data();
    void preparingRefusesBrokenStatements();
    void preparingRunsNothing_data() { ways(); }
    void preparingRunsNothing();
    void runsStatementsOfTheCatalogue_data() { ways(); }
    void runsStatementsOfTheCatalogue();
    void staysPreparedUntilToldOrRefused_data() { ways(); }
    void staysPreparedUntilToldOrRefused();
    void aNewStatementStartsAfresh_data() { ways(); }
    void aNewStatementStartsAfresh();
    void namesWhatIsWrong_data() { ways(); }
    void namesWhatIsWrong();
    void valuesBesideTheirColumnsTypeAreShownAsTheyAre();
    void castsAreNoParameters();
    void connectionsThatDoNotServe();
    void odbcKindsTakeOdbcOnly();
    void theHostsMessageHandlerStays_data() { ways(); }
    void theHostsMessageHandlerStays();
};

void TestSqlDataSets::fieldsHaveTheSameTypes()
{
    QVERIFY(Engines::Run(
        driver(),
        {s("create table scratch (a integer, b smallint, c bigint, d double precision, e real, "
           "f numeric(19,4), g decimal(10,2), h boolean, i date, j timestamp, k varchar(20), l text, "
           "m numeric(12,6))"),
         s("insert into scratch values (1, 2, 5000000000, 1.5, 2.5, 12.34, 7.5, true, '2024-02-29', "
           "'2024-02-29 13:14:15', '0012', 'Ä', 0.5), (-1, null, null, null, null, -0.0001, 0, false, null, "
           "null, null, null, 0.123456)")}));
    using T = TFieldType;
    // The last column has a value with more than four decimals, so it is no Currency.
    QList<T> expected{T::Integer, T::Integer, T::LargeInt, T::Float,  T::Float,  T::Currency, T::Currency,
                      T::Boolean, T::Date,    T::DateTime, T::String, T::String, T::Float};
    const auto all = query(s("select * from scratch order by a desc"));
    all->Open();
    QCOMPARE(typesOf(*all), expected);
    QCOMPARE(all->FieldByName(s("a"))->AsVariant(), QVariant(1));
    QCOMPARE(all->FieldByName(s("b"))->AsInteger(), 2);
    QCOMPARE(all->FieldByName(s("c"))->AsVariant().toLongLong(), Q_INT64_C(5000000000));
    QCOMPARE(all->FieldByName(s("d"))->AsFloat(), 1.5);
    QCOMPARE(all->FieldByName(s("e"))->AsFloat(), 2.5);
    QCOMPARE(all->FieldByName(s("f"))->AsString(), s("12.34"));
    QCOMPARE(all->FieldByName(s("g"))->AsCurrency(), Currency::fromText(s("7.5")));
    QCOMPARE(all->FieldByName(s("h"))->AsVariant(), QVariant(true));
    QCOMPARE(all->FieldByName(s("i"))->AsString(), s("2024-02-29"));
    QCOMPARE(all->FieldByName(s("j"))->AsString(), s("2024-02-29 13:14:15"));
    QCOMPARE(all->FieldByName(s("k"))->AsString(), s("0012"));
    QCOMPARE(all->FieldByName(s("l"))->AsString(), s("Ä"));
    QCOMPARE(all->FieldByName(s("m"))->AsFloat(), 0.5);
    all->Next();
    QCOMPARE(all->FieldByName(s("f"))->AsCurrency(), Currency::fromRaw(-1));
    QCOMPARE(all->FieldByName(s("h"))->AsVariant(), QVariant(false));
    QCOMPARE(all->FieldByName(s("m"))->AsFloat(), 0.123456);
    for (const char *name : {"b", "c", "d", "e", "i", "j", "k", "l"})
        QVERIFY2(all->FieldByName(s(name))->IsNull(), name);
    // Without rows the declared type decides.
    const auto none = query(s("select * from scratch where a = :a"));
    none->Params().ParamByName(s("a")).SetAsInteger(7);
    none->Open();
    expected.last() = T::Currency;
    QCOMPARE(typesOf(*none), expected);
}

void TestSqlDataSets::expressionsHaveTheSameTypes()
{
    const auto sums = query(s("select fundid + 1 as a, price as b, upper(fundname) as c, "
                              "cast(fundid + 0.5 as double precision) as d "
                              "from fund where fundid < 3 order by fundid"));
    sums->Open();
    using T = TFieldType;
    QCOMPARE(typesOf(*sums), QList<T>({T::Integer, T::Currency, T::String, T::Float}));
    QCOMPARE(sums->Fields(0)->AsInteger(), 2);
    QCOMPARE(sums->Fields(2)->AsString(), s("ALPHA"));
    QCOMPARE(sums->Fields(3)->AsFloat(), 1.5);
}

namespace
{
/// An SQLite database in memory, filled by the given statements, that is removed with this object.
struct InMemory {
    explicit InMemory(std::initializer_list<const char *> statements)
    {
        QSqlDatabase memory = QSqlDatabase::addDatabase(u"QSQLITE"_s, name);
        memory.setDatabaseName(u":memory:"_s);
        good = memory.open();
        for (const char *statement : statements)
            run(statement);
    }
    ~InMemory() { QSqlDatabase::removeDatabase(name); }
    InMemory(const InMemory &) = delete;
    InMemory &operator=(const InMemory &) = delete;
    void run(const char *statement)
    {
        good = QSqlQuery(QSqlDatabase::database(name)).exec(QString::fromUtf8(statement)) && good;
    }
    const QString name = u"in memory"_s;
    bool good = false;
};
} // namespace

void TestSqlDataSets::valuesBesideTheirColumnsTypeAreShownAsTheyAre()
{
    // SQLite stores any value in any column.
    const InMemory database{
        "create table scratch (a boolean, b decimal(19,4), c decimal(19,4), d date)",
        "insert into scratch values ('true', 1.5, 2.5, '2024-02-29')",
        "insert into scratch values (5, 9007199254740993, -9007199254740993, '2024-02-29 13:14:15')"};
    QVERIFY(database.good);
    TQuery loose;
    loose.SetDatabaseName(database.name);
    loose.SetSQL(s("select * from scratch order by rowid"));
    loose.Open();
    QStringList shown;
    for (; !loose.Eof(); loose.Next()) {
        for (int i = 0; i < 4; ++i)
            shown.append(loose.Fields(i)->AsString());
    }
    QCOMPARE(shown, (QStringList{s("true"), s("1.5"), s("2.5"), s("2024-02-29 00:00:00"), s("5"),
                                 s("9007199254740993"), s("-9007199254740993"), s("2024-02-29 13:14:15")}));
}

void TestSqlDataSets::castsAreNoParameters()
{
    TQuery query;
    query.SetSQL(s("select FundID::text from fund where FundID = :FundID::integer and Price = :Price"));
    QCOMPARE(query.Params().Count(), 2);
    QCOMPARE(query.Params()[0].Name, s("FundID"));
    QCOMPARE(query.Params()[1].Name, s("Price"));
    // The same in PostgreSQL's other kinds of quoted text.
    query.SetSQL(
        s("select E'it\\'s :a', e'\\\\', $$ ' :b $$, $tag$ $$ :c $tag$, name'':d, x$y$ from f where n = :n"));
    QCOMPARE(query.Params().Count(), 2);
    QCOMPARE(query.Params()[0].Name, s("d"));
    QCOMPARE(query.Params()[1].Name, s("n"));
    // An unclosed quote or comment extends to the end.
    for (const char *open :
         {"select ' :a", "select \" :a", "select /* :a", "select $x$ :a $$", "select E'\\' :a"}) {
        query.SetSQL(s(open));
        QVERIFY2(query.Params().Count() == 0, open);
    }
}

void TestSqlDataSets::namesAreTheEnginesOwn()
{
    const auto odd = query(s("select fundid as \"F.MainframeID\", fundname as \"fund name\", fundid as "
                             "\"NAME\", fundid + 1 as \"name\" from fund order by fundid"));
    odd->Open();
    QCOMPARE(odd->FieldByName(s("f.mainframeid"))->AsInteger(), 1);
    QCOMPARE(odd->FieldByName(s("Fund Name"))->AsString(), s("Alpha"));
    // Of two names that differ only in case, an exact match is preferred.
    QCOMPARE(odd->FieldCount(), 4);
    QCOMPARE(odd->Fields(2)->AsInteger(), 1);
    QCOMPARE(odd->Fields(3)->AsInteger(), 2);
    QCOMPARE(odd->FieldByName(s("name")), odd->Fields(3));
    QCOMPARE(odd->FieldByName(s("NAME")), odd->Fields(2));
}

void TestSqlDataSets::parametersSelectRows()
{
    const auto some = query(s("select * from fund where fundgroupid = :GroupID and fundid <> :Not and "
                              "(fundgroupid = :groupid or fundid > 100) order by fundid"));
    QCOMPARE(some->Params().Count(), 2);
    some->Params().ParamByName(s("groupid")).SetAsInteger(10);
    some->Params().ParamByName(s("not")).SetAsInteger(1);
    some->Open();
    QCOMPARE(some->RecordCount(), 1);
    QCOMPARE(some->FieldByName(s("FundName"))->AsString(), s("Ängstrom"));
    // Opened again, the query uses the parameters' current values.
    some->Params().ParamByName(s("Not")).SetAsInteger(-1);
    QCOMPARE(some->RecordCount(), 1);
    some->Close();
    some->Open();
    QCOMPARE(some->RecordCount(), 2);
    some->Close();
    some->Params().ParamByName(s("GroupID")).Clear();
    some->Open();
    QVERIFY(some->IsEmpty());
}

void TestSqlDataSets::momentsOfTheHourThatTheClockLeavesOut()
{
    const SummerTime zone;
    QVERIFY(Engines::Run(driver(), {s("create table scratch (n integer, g timestamp)")}));
    const auto insert = query(s("insert into scratch values (:n, :g)"));
    int n = 0;
    for (const TParamDataType type : {TParamDataType::Unknown, TParamDataType::DateTime}) {
        insert->Params().ParamByName(s("n")).SetAsInteger(++n);
        TParam &moment = insert->Params().ParamByName(s("g"));
        moment.DataType = type;
        moment.SetValue(QDateTime(QDate(2024, 3, 31), QTime(2, 30)));
        insert->ExecSQL();
    }
    const auto all = query(s("select * from scratch order by n"));
    all->Open();
    QCOMPARE(all->RecordCount(), 2);
    for (; !all->Eof(); all->Next())
        QCOMPARE(all->FieldByName(s("g"))->AsString(), s("2024-03-31 02:30:00"));
    const auto one = query(s("select n from scratch where g = :value"));
    one->Params()[0].SetValue(all->FieldByName(s("g"))->AsVariant());
    one->Open();
    QCOMPARE(one->RecordCount(), 2);
}

void TestSqlDataSets::parametersCarryEveryType()
{
    QVERIFY(
        Engines::Run(driver(), {s("create table scratch (n integer, a integer, b bigint, c double precision, "
                                  "d numeric(19,4), e boolean, f date, g timestamp, h text)")}));
    const auto insert = query(s("insert into scratch values (:n, :a, :b, :c, :d, :e, :f, :g, :h)"));
    const auto param = [&](const char *name) -> TParam & { return insert->Params().ParamByName(s(name)); };
    insert->Prepare();
    const QDateTime moment(QDate(1999, 12, 31), QTime(23, 59, 58));
    param("n").SetAsInteger(1);
    param("a").SetAsInteger(-7);
    param("b").SetValue(Q_INT64_C(-5000000000));
    param("c").SetAsFloat(-0.1);
    param("d").SetAsCurrency(Currency::fromText(s("-123456.7891")));
    param("e").SetValue(true);
    param("f").SetValue(QDate(2024, 2, 29));
    param("g").SetValue(moment);
    param("h").SetAsString(s("Ä'\"?"));
    insert->ExecSQL();
    param("n").SetAsInteger(2);
    for (const char *name : {"a", "b", "c", "d", "e", "f", "g", "h"})
        param(name).Clear();
    insert->ExecSQL();
    QVERIFY(insert->Prepared());

    const auto all = query(s("select * from scratch order by n"));
    all->Open();
    QCOMPARE(all->RecordCount(), 2);
    QCOMPARE(all->FieldByName(s("a"))->AsInteger(), -7);
    QCOMPARE(all->FieldByName(s("b"))->AsVariant().toLongLong(), Q_INT64_C(-5000000000));
    QCOMPARE(all->FieldByName(s("c"))->AsFloat(), -0.1);
    QCOMPARE(all->FieldByName(s("d"))->AsCurrency(), Currency::fromText(s("-123456.7891")));
    QCOMPARE(all->FieldByName(s("e"))->AsBoolean(), true);
    QCOMPARE(all->FieldByName(s("f"))->AsDate(), QDate(2024, 2, 29));
    QCOMPARE(all->FieldByName(s("g"))->AsVariant().toDateTime(), moment);
    QCOMPARE(all->FieldByName(s("h"))->AsString(), s("Ä'\"?"));
    all->Next();
    for (int i = 1; i < all->FieldCount(); ++i)
        QVERIFY2(all->Fields(i)->IsNull(), qPrintable(all->Fields(i)->FieldName()));

    // Each value selects the row that contains it. An integer in a FixedChar parameter is sent as text.
    for (const char *name : {"a", "b", "d", "e", "f", "g", "h"}) {
        const auto one = query(s("select n from scratch where %1 = :value").arg(s(name)));
        one->Params()[0].SetValue(param(name).Value());
        all->First();
        one->Params()[0].SetValue(all->FieldByName(s(name))->AsVariant());
        one->Open();
        QVERIFY2(one->RecordCount() == 1, name);
    }
    const auto text = query(s("update scratch set h = :text where n = 1"));
    text->Params()[0].DataType = TParamDataType::FixedChar;
    text->Params()[0].SetAsInteger(42);
    text->ExecSQL();
    all->Close();
    all->Open();
    QCOMPARE(all->FieldByName(s("h"))->AsString(), s("42"));
}

void TestSqlDataSets::textsStayTexts()
{
    const auto rename = query(s("update fund set fundname = :name where fundid = 1"));
    const auto renamed = query(s("select fundname from fund where fundname = :name"));
    for (const char *name : {" ", "O'Brien", "''", "'; drop table fund; --", "a\\", "\\'; select 1; --", "?",
                             ":name", "$1", "%", "-- none", "/* none", "{d '2024-01-01'}", "漢字 😀",
                             "two\nlines", "\"x\"", "TRUE", "NULL", "0012"}) {
        rename->Params()[0].SetAsString(s(name));
        rename->ExecSQL();
        renamed->Params()[0].SetAsString(s(name));
        renamed->Close();
        renamed->Open();
        QCOMPARE(renamed->RecordCount(), 1);
        QCOMPARE(renamed->Fields(0)->AsString(), s(name));
    }
    QCOMPARE(count(s("fund")), 3);
}

void TestSqlDataSets::marksInTextsAreNone()
{
    const auto odd = query(s("select ':a' as b, 'it''s :c', fundname as \":d\" -- :e\n"
                             " from fund /* :f */ where fundid = :id"));
    QCOMPARE(odd->Params().Count(), 1);
    odd->Params().ParamByName(s("id")).SetAsInteger(2);
    odd->Open();
    QCOMPARE(odd->RecordCount(), 1);
    QCOMPARE(odd->Fields(0)->AsString(), s(":a"));
    QCOMPARE(odd->Fields(1)->AsString(), s("it's :c"));
    QCOMPARE(odd->FieldByName(s(":d"))->AsString(), s("Ängstrom"));
}

void TestSqlDataSets::preparingRefusesBrokenStatements_data()
{
    QTest::addColumn<int>("driver");
    QTest::addColumn<bool>("ado");
    QTest::addColumn<QString>("sql");
    QTest::addColumn<QString>("reason");
    for (int i = 0; i < Engines::Drivers().size(); ++i) {
        const Driver &driver = Engines::Drivers()[i];
        const auto row = [&](const char *sql, const char *sqlite, const char *postgres) {
            QTest::addRow("%s: %s", qPrintable(driver.Name), sql)
                << i << driver.Odbc << s(sql) << s(driver.Postgres ? postgres : sqlite);
        };
        row("selec 1", "near \"selec\": syntax error", "syntax error at or near \"selec\"");
        row("select * from", "incomplete input", "syntax error at end of input");
        row("select nosuch from fund", "no such column: nosuch", "column \"nosuch\" does not exist");
        row("select * from nowhere", "no such table: nowhere", "relation \"nowhere\" does not exist");
        row("select * from fund where fundid = :id and", "incomplete input", "syntax error");
        row("insert into nowhere values (:a)", "no such table: nowhere",
            "relation \"nowhere\" does not exist");
        row("insert into fund (nosuch) values (:a)", "no column named nosuch",
            "column \"nosuch\" of relation \"fund\" does not exist");
        row("update fund set nosuch = 1", "no such column: nosuch", "column \"nosuch\"");
        row("delete from nowhere", "no such table: nowhere", "relation \"nowhere\" does not exist");
        row("(select 1", "syntax error", "syntax error");
    }
}

void TestSqlDataSets::preparingRefusesBrokenStatements()
{
    QFETCH(const QString, sql);
    QFETCH(const QString, reason);
    const auto broken = query(sql);
    const bool onlyRun = driver().Postgres && sql.startsWith(s("selec "));
    if (!onlyRun) {
        const QString message = messageOf<EDatabaseError>([&] { broken->Prepare(); });
        QVERIFY2(message.startsWith(s("Dataset \"qryFund\": ")), qPrintable(message));
        QVERIFY2(message.contains(reason), qPrintable(message));
        QVERIFY(!broken->Prepared());
    }
    const QString message = messageOf<EDatabaseError>([&] { broken->Open(); });
    QVERIFY2(message.contains(reason), qPrintable(message));
    QVERIFY(!broken->Active());
    QVERIFY(!broken->Prepared());
    QCOMPARE(count(s("fund")), 3);
}

void TestSqlDataSets::preparingRunsNothing()
{
    for (const char *sql :
         {"insert into fund (fundid) values (9)", "delete from fund where fundid > :id",
          "update fund set fundname = 'x' where fundid = :id", "create table scratch (a integer)"}) {
        const auto prepared = query(s(sql));
        prepared->Prepare();
        QVERIFY(prepared->Prepared());
        QCOMPARE(count(s("fund")), 3);
        QCOMPARE(count(s("fund where fundname = 'x'")), 0);
    }
    QVERIFY(messageOf<EDatabaseError>([] { count(s("scratch")); }).contains(s("scratch")));
}

void TestSqlDataSets::runsStatementsOfTheCatalogue()
{
    exec(s("create table scratch (a integer, b text default 'it''s')"));
    exec(s("insert into scratch (a) values (1)"));
    exec(s("alter table scratch add column c integer"));
    const auto all = query(s("select * from scratch"));
    all->Open();
    QCOMPARE(all->FieldCount(), 3);
    QCOMPARE(all->FieldByName(s("b"))->AsString(), s("it's"));
    all->Close();
    exec(s("drop table scratch"));
    QVERIFY(messageOf<EDatabaseError>([&] { all->Open(); }).contains(s("scratch")));
    const auto rows = query(s("create table scratch (a integer)"));
    QCOMPARE(messageOf<EDatabaseError>([&] { rows->Open(); }),
             s("Dataset \"qryFund\": the engine gives no rows."));
    QVERIFY(!rows->Active());
}

void TestSqlDataSets::staysPreparedUntilToldOrRefused()
{
    const auto funds = query(s("select * from fund where fundid = :id"));
    funds->Params()[0].SetAsInteger(2);
    funds->Open();
    QVERIFY(!funds->Prepared());
    funds->Close();
    funds->SetPrepared(true);
    for (const int id : {1, 2, 3}) {
        funds->Params()[0].SetAsInteger(id);
        funds->Open();
        QCOMPARE(funds->Fields(0)->AsInteger(), id);
        funds->Close();
        QVERIFY(funds->Prepared());
    }
    funds->UnPrepare();
    QVERIFY(!funds->Prepared());
    funds->UnPrepare();

    const auto insert = query(s("insert into fund (fundid) values (:id)"));
    insert->Prepare();
    insert->Params()[0].SetAsInteger(2);
    const QString message = messageOf<EDatabaseError>([&] { insert->ExecSQL(); });
    QVERIFY2(message.contains(s("unique"), Qt::CaseInsensitive), qPrintable(message));
    QVERIFY(!insert->Prepared());
    insert->Params()[0].SetAsInteger(4);
    insert->ExecSQL();
    QCOMPARE(count(s("fund")), 4);
}

void TestSqlDataSets::aNewStatementStartsAfresh()
{
    const auto funds = query(s("select * from fund where fundid > :id"));
    funds->Params()[0].SetAsInteger(0);
    funds->Prepare();
    funds->Open();
    QCOMPARE(funds->RecordCount(), 3);
    funds->SetSQL(s("select fundname from fund where fundgroupid = :group"));
    QVERIFY(!funds->Active());
    QVERIFY(!funds->Prepared());
    QCOMPARE(funds->Params().Count(), 1);
    QCOMPARE(funds->Params()[0].Name, s("group"));
    funds->Params()[0].SetAsInteger(20);
    funds->Open();
    QCOMPARE(funds->FieldCount(), 1);
    QCOMPARE(funds->RecordCount(), 1);
    // A changed connection name closes and unprepares the dataset; opening it reports the missing connection.
    funds->Prepare();
    funds->SetDatabaseName(s("no such connection"));
    QVERIFY(!funds->Active());
    QVERIFY(!funds->Prepared());
    QCOMPARE(messageOf<EDatabaseError>([&] { funds->Open(); }),
             s("Dataset \"qryFund\": there is no database connection \"no such connection\"."));
}

void TestSqlDataSets::namesWhatIsWrong()
{
    const auto empty = query(s("  "));
    QCOMPARE(messageOf<EDatabaseError>([&] { empty->Open(); }),
             s("Dataset \"qryFund\": the SQL text is empty."));
    QCOMPARE(messageOf<EDatabaseError>([&] { empty->Prepare(); }),
             s("Dataset \"qryFund\": the SQL text is empty."));
    const auto some = query(s("select * from fund where fundid = :id"));
    QCOMPARE(messageOf<EDatabaseError>([&] { some->Params().ParamByName(s("other")); }),
             s("Parameter \"other\" not found."));
    some->Params().Clear();
    QCOMPARE(messageOf<EDatabaseError>([&] { some->Open(); }),
             s("Dataset \"qryFund\": there is no parameter \"id\"."));
    QVERIFY(!some->Active());
    const auto change = query(s("update fund set price = 1"));
    QCOMPARE(messageOf<EDatabaseError>([&] { change->Open(); }),
             s("Dataset \"qryFund\": the engine gives no rows."));
    change->setObjectName(QString());
    QVERIFY(messageOf<EDatabaseError>([&] {
                change->Open();
            }).startsWith(s("Dataset \"%1\": ").arg(QLatin1String(change->metaObject()->className()))));
}

void TestSqlDataSets::connectionsThatDoNotServe()
{
    const auto messageFor = [](const char *connection) {
        TQuery query;
        query.setObjectName(u"qryFund"_s);
        query.SetDatabaseName(s(connection));
        query.SetSQL(s("select 1"));
        const QString message = messageOf<EDatabaseError>([&] { query.Open(); });
        [&] { QCOMPARE(messageOf<EDatabaseError>([&] { query.Prepare(); }), message); }();
        return message;
    };
    QCOMPARE(messageFor("nowhere"), s("Dataset \"qryFund\": there is no database connection \"nowhere\"."));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(s("NOSUCH driver not loaded")));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(s("available drivers")));
    QSqlDatabase::addDatabase(s("NOSUCH"), s("driverless"));
    QCOMPARE(messageFor("driverless"),
             s("Dataset \"qryFund\": the driver of connection \"driverless\" is not loaded."));
    QSqlDatabase::addDatabase(s("QSQLITE"), s("closed"));
    QCOMPARE(messageFor("closed"), s("Dataset \"qryFund\": connection \"closed\" is not open."));
    {
        // A connection that failed to open also says why.
        QTemporaryDir folder;
        QSqlDatabase failed = QSqlDatabase::addDatabase(s("QSQLITE"), s("failed"));
        failed.setDatabaseName(folder.filePath(s("no/such/folder/file")));
        QVERIFY(!failed.open());
    }
    QCOMPARE(messageFor("failed"),
             s("Dataset \"qryFund\": connection \"failed\" is not open. unable to open database file"));
    for (const char *name : {"driverless", "closed", "failed"})
        QSqlDatabase::removeDatabase(s(name));
    QCOMPARE(messageFor("closed"), s("Dataset \"qryFund\": there is no database connection \"closed\"."));
}

void TestSqlDataSets::odbcKindsTakeOdbcOnly()
{
    TADOQuery query;
    query.setObjectName(u"qryFund"_s);
    TADOStoredProc procedure;
    for (const Driver &driver : Engines::Drivers()) {
        if (driver.Odbc)
            continue;
        QCOMPARE(messageOf<EDatabaseError>([&] { query.SetDatabaseName(driver.Name); }),
                 s("Dataset \"qryFund\": connection \"%1\" is not an ODBC connection.").arg(driver.Name));
        QCOMPARE(query.DatabaseName(), QString());
        QVERIFY(
            messageOf<EDatabaseError>([&] { procedure.SetDatabaseName(driver.Name); }).contains(driver.Name));
    }
    // A name set before its connection exists is checked when it is used.
    query.SetDatabaseName(s("later"));
    QSqlDatabase::addDatabase(s("QSQLITE"), s("later"));
    query.SetSQL(s("select 1"));
    QCOMPARE(messageOf<EDatabaseError>([&] { query.Open(); }),
             s("Dataset \"qryFund\": connection \"later\" is not an ODBC connection."));
    QSqlDatabase::removeDatabase(s("later"));
}

// The process' message handler stays installed while an engine's refusals are muted. Another thread checks
// this all the time and loses none of its own messages.
void TestSqlDataSets::theHostsMessageHandlerStays()
{
    const auto insert = query(s("insert into fund (fundid) values (:id)"));
    insert->Prepare();
    insert->Params()[0].SetAsInteger(1);
    const auto broken = query(s("select nosuch from fund"));
    QStringList messages;
    heard = &messages;
    const QtMessageHandler former = qInstallMessageHandler(&listen);
    constexpr int looks = 2000;
    std::atomic<int> looked = 0;
    std::atomic<int> others = 0;
    const std::unique_ptr<QThread> host(QThread::create([&] {
        while (looked < looks) {
            if (const QtMessageHandler found = qInstallMessageHandler(&listen); found != &listen)
                ++others;
            qWarning("of the host");
            ++looked;
        }
    }));
    host->start();
    QStringList errors;
    do {
        errors = {messageOf<EDatabaseError>([&] { insert->ExecSQL(); }),
                  messageOf<EDatabaseError>([&] { broken->Open(); })};
    } while (looked < looks);
    host->wait();
    QVERIFY(qInstallMessageHandler(former) == &listen);
    QVERIFY(errors[0].contains(s("qryFund")));
    QVERIFY(errors[1].contains(s("nosuch")));
    QCOMPARE(others, 0);
    QCOMPARE(messages.count(s("of the host")), looks);
}

ZEL_TEST_MAIN(TestSqlDataSets)
#include "tst_sqldatasets.moc"
