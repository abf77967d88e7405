#include "Engines.h"
// labels: postgresql
#include "Errors.h"
#include "ZelTest.h"

#include "data/Exceptions.h"

#include <QScopeGuard>
#include <QSqlDatabase>
#include <QSqlDriver>
#include <QSqlField>
#include <QSqlRecord>
#include <QSqlResult>

using namespace Qt::StringLiterals;

/// Stored procedures under both class names: functions and procedures in PostgreSQL, with Qt's own driver and
/// ODBC; the calls to the driver of another engine; the refusal for SQLite, which has none.
class TestStoredProc : public ZelTest
{
    Q_OBJECT

    static QString s(const char *utf8) { return QString::fromUtf8(utf8); }

    /// The test's rows: each driver and class name for a stored procedure of the engine.
    static void ways(bool postgres)
    {
        QTest::addColumn<int>("driver");
        QTest::addColumn<bool>("ado");
        for (int i = 0; i < Engines::Drivers().size(); ++i) {
            const Driver &driver = Engines::Drivers()[i];
            if (driver.Postgres != postgres)
                continue;
            QTest::addRow("TStoredProc, %s", qPrintable(driver.Name)) << i << false;
            if (driver.Odbc)
                QTest::addRow("TADOStoredProc, %s", qPrintable(driver.Name)) << i << true;
        }
    }
    static std::unique_ptr<TSqlProcedure> procedure(const char *name)
    {
        QFETCH(const int, driver);
        QFETCH(const bool, ado);
        auto made = Engines::Procedure(Engines::Drivers()[driver], ado, s(name));
        made->setObjectName(u"spFund"_s);
        return made;
    }
    static TParam &param(TSqlDataSet &dataset, const char *name)
    {
        return dataset.Params().ParamByName(s(name));
    }
    static QStringList namesOf(TDataSet &dataset)
    {
        QStringList names;
        for (dataset.First(); !dataset.Eof(); dataset.Next())
            names.append(dataset.FieldByName(s("fundname"))->AsString());
        return names;
    }

    Engines m_engines;

private Q_SLOTS:
    void initTestCase();

    void returnsAValue_data() { ways(true); }
    void returnsAValue();
    void opensAResultSet_data() { ways(true); }
    void opensAResultSet();
    void functionWritesItsOutputs_data() { ways(true); }
    void functionWritesItsOutputs();
    void procedureWritesItsOutputs_data() { ways(true); }
    void procedureWritesItsOutputs();
    void procedureWithoutOutputs_data() { ways(true); }
    void procedureWithoutOutputs();
    void takesEveryType_data() { ways(true); }
    void takesEveryType();
    void takesNulls_data() { ways(true); }
    void takesNulls();
    void keepsTextsAsTheyAre_data() { ways(true); }
    void keepsTextsAsTheyAre();
    void leavesOutWhatHasADefault_data() { ways(true); }
    void leavesOutWhatHasADefault();
    void tellsNamesakesApart_data() { ways(true); }
    void tellsNamesakesApart();
    void findsOddNames_data() { ways(true); }
    void findsOddNames();
    void staysPrepared_data() { ways(true); }
    void staysPrepared();
    void refusesWhatIsNotThere_data() { ways(true); }
    void refusesWhatIsNotThere();
    void passesTheFailureInside_data() { ways(true); }
    void passesTheFailureInside();
    void keepsItsRowsWhenTheFilterDoesNotFitTheNewOnes_data() { ways(true); }
    void keepsItsRowsWhenTheFilterDoesNotFitTheNewOnes();
    void namesTheUnnamedParameter_data() { ways(true); }
    void namesTheUnnamedParameter();
    void refusesSqlite_data() { ways(false); }
    void refusesSqlite();
    void callsProceduresOfOtherEngines();
};

void TestStoredProc::initTestCase()
{
    QVERIFY2(m_engines.Start(), qPrintable(m_engines.Reason()));
    const QString table = s("create table fund (fundid integer, fundgroupid integer, fundname varchar(80), "
                            "price numeric(19,4))");
    const QString rows = s("insert into fund values (1, 10, 'Alpha', 12.5), (2, 10, 'Ängstrom', 0.0001), "
                           "(3, 20, 'Gamma', null)");
    QVERIFY(
        Engines::Run(Engines::Drivers()[0],
                     {table, rows, s("create view fundlist as select * from fund order by fundid desc")}));
    QVERIFY(Engines::Run(
        Engines::Drivers()[1],
        {table,
         rows,
         s("create function add_up(a integer, b integer) returns integer language sql as 'select a + b'"),
         s("create function fundsof(groupid integer) returns table (fundid integer, fundname varchar) "
           "language sql as 'select f.fundid, f.fundname from fund f where f.fundgroupid = groupid order by "
           "1'"),
         s("create function split(amount numeric, out whole numeric, inout rest numeric) language plpgsql as "
           "'begin whole := trunc(amount); rest := rest + amount - whole; end'"),
         s("create function nothing() returns void language sql as 'select 1'"),
         s("create function greet(who text, greeting text default 'Hello') returns text language sql as "
           "'select greeting || '' '' || who'"),
         s("create function pick(a integer) returns text language sql as 'select ''one'''"),
         s("create function pick(a integer, b integer) returns text language sql as 'select ''two'''"),
         s("create function failing(code integer) returns integer language plpgsql as "
           "'begin raise exception ''no fund for code %'', code; end'"),
         s("create procedure describe(id integer, out name text, out cost numeric) language plpgsql as "
           "'begin select f.fundname, f.price into name, cost from fund f where f.fundid = id; end'"),
         s("create procedure raise_total(step integer, inout total integer) language plpgsql as "
           "'begin total := total + step; end'"),
         s("create table visited (id integer)"),
         s("create procedure visit(id integer) language sql as 'insert into visited values (id)'"),
         s("create procedure failing_inside(code integer) language plpgsql as "
           "'begin insert into visited values (code); raise exception ''no visit for code %'', code; end'"),
         s("create procedure echo(a_text text, a_flag boolean, a_day date, a_moment timestamp, "
           "an_amount numeric, a_number double precision, inout all_of_it text) language plpgsql as $$"
           "begin all_of_it := concat_ws('|', a_text, a_flag, a_day, a_moment, an_amount, a_number); end $$"),
         s("create procedure same(a_text text, out back text, out size integer) language plpgsql as "
           "'begin back := a_text; size := length(a_text); end'"),
         s("create schema other"),
         s("create function other.add_up(a integer, b integer) returns integer language sql as "
           "'select 100 * (a + b)'"),
         s("create procedure \"Mixed Case\"(\"An Input\" integer, out \"An \"\"Output\"\"\" integer) "
           "language plpgsql as 'begin \"An \"\"Output\"\"\" := 2 * \"An Input\"; end'")}));
}

void TestStoredProc::returnsAValue()
{
    const auto sum = procedure("add_up");
    sum->Params().Add(s("a"), TParamDataType::Integer).SetAsInteger(40);
    sum->Params().Add(s("b"), TParamDataType::Integer).SetAsInteger(2);
    sum->ExecProc();
    QVERIFY(!sum->Active());
    QCOMPARE(sum->Params().Count(), 3);
    QVERIFY(sum->Params()[2].ParamType == TParamType::Result);
    QCOMPARE(param(*sum, "Result").AsInteger(), 42);
    // Prepare finds the parameters; Open returns the function's value as a row.
    const auto found = procedure("ADD_UP");
    found->Prepare();
    QCOMPARE(found->Params().Count(), 3);
    param(*found, "a").SetAsInteger(-3);
    param(*found, "b").SetAsInteger(-4);
    found->Open();
    QCOMPARE(found->RecordCount(), 1);
    QCOMPARE(found->Fields(0)->AsInteger(), -7);
    QCOMPARE(param(*found, "Result").AsInteger(), -7);

    const auto nothing = procedure("nothing");
    nothing->ExecProc();
    QVERIFY(!nothing->Active());
    QCOMPARE(nothing->Params().Count(), 0);
}

void TestStoredProc::opensAResultSet()
{
    const auto funds = procedure("fundsof");
    funds->Params().Add(s("GroupID"), TParamDataType::Integer).SetAsInteger(10);
    funds->ExecProc();
    QVERIFY(funds->Active());
    QCOMPARE(namesOf(*funds), QStringList({s("Alpha"), s("Ängstrom")}));
    QVERIFY(funds->FieldDefs().at(0).Type == TFieldType::Integer);
    // A second run shows the new rows; no rows make an open, empty dataset.
    param(*funds, "groupid").SetAsInteger(20);
    funds->ExecProc();
    QCOMPARE(namesOf(*funds), QStringList(s("Gamma")));
    param(*funds, "groupid").SetAsInteger(30);
    funds->ExecProc();
    QVERIFY(funds->Active());
    QVERIFY(funds->IsEmpty());
    QCOMPARE(funds->FieldCount(), 2);
    funds->Close();
    param(*funds, "groupid").SetAsInteger(10);
    funds->Open();
    QCOMPARE(funds->RecordCount(), 2);
}

void TestStoredProc::functionWritesItsOutputs()
{
    const auto split = procedure("split");
    split->Prepare();
    QCOMPARE(split->Params().Count(), 3);
    QVERIFY(param(*split, "amount").ParamType == TParamType::Input);
    QVERIFY(param(*split, "whole").ParamType == TParamType::Output);
    QVERIFY(param(*split, "rest").ParamType == TParamType::InputOutput);
    param(*split, "amount").SetAsCurrency(Currency::fromText(s("12.3456")));
    param(*split, "rest").SetAsCurrency(Currency(1));
    split->ExecProc();
    QVERIFY(!split->Active());
    QCOMPARE(param(*split, "whole").Value().value<Currency>(), Currency(12));
    QCOMPARE(param(*split, "rest").Value().value<Currency>(), Currency::fromText(s("1.3456")));
    QCOMPARE(param(*split, "amount").Value().value<Currency>(), Currency::fromText(s("12.3456")));
}

void TestStoredProc::procedureWritesItsOutputs()
{
    const auto describe = procedure("describe");
    describe->Params().Add(s("id"), TParamDataType::Integer).SetAsInteger(2);
    describe->ExecProc();
    QVERIFY(!describe->Active());
    QCOMPARE(describe->Params().Count(), 3);
    QCOMPARE(param(*describe, "name").AsString(), s("Ängstrom"));
    QCOMPARE(param(*describe, "cost").Value().value<Currency>(), Currency::fromRaw(1));
    // An output that is null, and an id without a row.
    for (const int id : {3, 4}) {
        param(*describe, "id").SetAsInteger(id);
        describe->ExecProc();
        QCOMPARE(param(*describe, "name").AsString(), id == 3 ? s("Gamma") : QString());
        QVERIFY(param(*describe, "cost").IsNull());
    }

    const auto total = procedure("raise_total");
    total->Params().Add(s("step"), TParamDataType::Integer).SetAsInteger(-5);
    total->Params().Add(s("total"), TParamDataType::Integer, TParamType::InputOutput).SetAsInteger(7);
    for (const int expected : {2, -3, -8}) {
        total->ExecProc();
        QCOMPARE(param(*total, "total").AsInteger(), expected);
    }
}

void TestStoredProc::procedureWithoutOutputs()
{
    const Driver &engine = Engines::Drivers()[1];
    QVERIFY(Engines::Run(engine, {s("delete from visited")}));
    const auto visit = procedure("visit");
    visit->Params().Add(s("id"), TParamDataType::Integer).SetAsInteger(11);
    visit->ExecProc();
    param(*visit, "id").SetAsInteger(-12);
    visit->ExecProc();
    QVERIFY(!visit->Active());
    const auto seen = Engines::Query(engine, false, s("select id from visited order by id"));
    seen->Open();
    QCOMPARE(seen->RecordCount(), 2);
    QCOMPARE(seen->Fields(0)->AsInteger(), -12);
    seen->Close();
    QVERIFY2(messageOf<EDatabaseError>([&] { visit->Open(); }).contains(s("the engine gives no rows.")),
             "a procedure without outputs has nothing to open");
    QVERIFY(!visit->Active());
}

void TestStoredProc::takesEveryType()
{
    const auto echo = procedure("echo");
    echo->Prepare();
    param(*echo, "a_text").SetAsString(s("it's"));
    param(*echo, "a_flag").SetValue(true);
    param(*echo, "a_day").SetValue(QDate(2024, 2, 29));
    param(*echo, "a_moment").SetValue(QDateTime(QDate(2024, 2, 29), QTime(13, 14, 15)));
    param(*echo, "an_amount").SetAsCurrency(Currency::max());
    param(*echo, "a_number").SetAsFloat(-0.5);
    echo->ExecProc();
    QCOMPARE(param(*echo, "all_of_it").AsString(),
             s("it's|t|2024-02-29|2024-02-29 13:14:15|922337203685477.5807|-0.5"));
    // An integer in a FixedChar parameter is sent as text.
    const auto same = procedure("same");
    same->Params().Add(s("a_text"), TParamDataType::FixedChar).SetAsInteger(17);
    same->ExecProc();
    QCOMPARE(param(*same, "back").AsString(), s("17"));
    QCOMPARE(param(*same, "size").AsInteger(), 2);
}

void TestStoredProc::takesNulls()
{
    const auto echo = procedure("echo");
    echo->Prepare();
    for (const char *name : {"a_flag", "a_day", "a_moment", "an_amount", "a_number"})
        param(*echo, name).Clear();
    param(*echo, "a_text").SetAsString(s("alone"));
    echo->ExecProc();
    QCOMPARE(param(*echo, "all_of_it").AsString(), s("alone"));
    const auto sum = procedure("add_up");
    sum->Prepare();
    param(*sum, "a").SetAsInteger(1);
    sum->ExecProc();
    QVERIFY(param(*sum, "Result").IsNull());
}

void TestStoredProc::keepsTextsAsTheyAre()
{
    const auto same = procedure("same");
    same->Prepare();
    for (const char *text : {"",
                             " ",
                             "O'Brien",
                             "''",
                             "'); drop table fund; --",
                             "a\\",
                             "\\'; select 1; --",
                             "c:\\new\\'x'",
                             "?",
                             ":name",
                             "$1",
                             "$$",
                             "%s",
                             "-- no comment",
                             "/* nor this",
                             "{fn now()}",
                             "ÄÖ € 漢字 😀",
                             "two\nlines\tand\ta tab",
                             "\"quoted\"",
                             "E'x'"}) {
        param(*same, "a_text").SetAsString(s(text));
        same->ExecProc();
        QCOMPARE(param(*same, "back").AsString(), s(text));
    }
    param(*same, "a_text").SetAsString(s("a") + QChar(u'\0') + s("b"));
    QCOMPARE(messageOf<EDatabaseError>([&] { same->ExecProc(); }),
             s("Dataset \"spFund\": parameter \"a_text\" has a zero character in its text."));
    // None of the texts was executed.
    const auto funds = procedure("fundsof");
    funds->Params().Add(s("groupid")).SetAsInteger(10);
    funds->ExecProc();
    QCOMPARE(funds->RecordCount(), 2);
}

void TestStoredProc::leavesOutWhatHasADefault()
{
    const auto greet = procedure("greet");
    greet->Params().Add(s("who"), TParamDataType::String).SetAsString(s("fund"));
    greet->ExecProc();
    QCOMPARE(param(*greet, "Result").AsString(), s("Hello fund"));
    const auto both = procedure("greet");
    both->Params().Add(s("greeting"), TParamDataType::String).SetAsString(s("Good day,"));
    both->Params().Add(s("who"), TParamDataType::String).SetAsString(s("fund"));
    both->ExecProc();
    QCOMPARE(param(*both, "Result").AsString(), s("Good day, fund"));
}

void TestStoredProc::tellsNamesakesApart()
{
    const auto pick = procedure("pick");
    pick->Params().Add(s("a"), TParamDataType::Integer).SetAsInteger(1);
    pick->ExecProc();
    QCOMPARE(param(*pick, "Result").AsString(), s("one"));
    const auto other = procedure("pick");
    other->Params().Add(s("b"), TParamDataType::Integer).SetAsInteger(1);
    other->Params().Add(s("a"), TParamDataType::Integer).SetAsInteger(1);
    other->ExecProc();
    QCOMPARE(param(*other, "Result").AsString(), s("two"));
    const auto elsewhere = procedure("other.add_up");
    elsewhere->Prepare();
    param(*elsewhere, "a").SetAsInteger(1);
    param(*elsewhere, "b").SetAsInteger(2);
    elsewhere->ExecProc();
    QCOMPARE(param(*elsewhere, "Result").AsInteger(), 300);
    const auto wrong = procedure("pick");
    wrong->Params().Add(s("c"), TParamDataType::Integer).SetAsInteger(1);
    QCOMPARE(messageOf<EDatabaseError>([&] { wrong->ExecProc(); }),
             s("Dataset \"spFund\": no stored procedure \"pick\" has just these parameters."));
}

void TestStoredProc::findsOddNames()
{
    const auto mixed = procedure("mixed case");
    mixed->Prepare();
    QCOMPARE(mixed->Params().Count(), 2);
    param(*mixed, "an input").SetAsInteger(21);
    mixed->ExecProc();
    QCOMPARE(param(*mixed, "An \"Output\"").AsInteger(), 42);
}

void TestStoredProc::staysPrepared()
{
    const auto funds = procedure("fundsof");
    QVERIFY(!funds->Prepared());
    funds->SetPrepared(true);
    QVERIFY(funds->Prepared());
    for (const int group : {10, 20, 10}) {
        param(*funds, "groupid").SetAsInteger(group);
        funds->ExecProc();
        QCOMPARE(funds->RecordCount(), group == 10 ? 2 : 1);
        QVERIFY(funds->Prepared());
    }
    // Unpreparing keeps the rows; running unprepared does not leave the dataset prepared.
    funds->SetPrepared(false);
    QVERIFY(!funds->Prepared());
    QVERIFY(funds->Active());
    funds->ExecProc();
    QVERIFY(!funds->Prepared());
    const auto visit = procedure("visit");
    visit->Prepare();
    for (const int id : {1, 2}) {
        param(*visit, "id").SetAsInteger(id);
        visit->ExecProc();
        QVERIFY(visit->Prepared());
    }
}

void TestStoredProc::refusesWhatIsNotThere()
{
    const auto unnamed = procedure("");
    QCOMPARE(messageOf<EDatabaseError>([&] { unnamed->ExecProc(); }),
             s("Dataset \"spFund\": no stored procedure is named."));
    const auto missing = procedure("no_such_thing");
    const QString text = s("Dataset \"spFund\": there is no stored procedure \"no_such_thing\".");
    QCOMPARE(messageOf<EDatabaseError>([&] { missing->Prepare(); }), text);
    QCOMPARE(messageOf<EDatabaseError>([&] { missing->Open(); }), text);
    QCOMPARE(messageOf<EDatabaseError>([&] { missing->ExecProc(); }), text);
    QVERIFY(!missing->Active());
    QVERIFY(!missing->Prepared());
    const auto hostile = procedure("add_up(1,2); drop table fund; --");
    QCOMPARE(messageOf<EDatabaseError>([&] { hostile->ExecProc(); }),
             s("Dataset \"spFund\": there is no stored procedure \"add_up(1,2); drop table fund; --\"."));
    const auto tooMany = procedure("add_up");
    tooMany->Params().Add(s("a")).SetAsInteger(1);
    tooMany->Params().Add(s("b")).SetAsInteger(2);
    tooMany->Params().Add(s("c")).SetAsInteger(3);
    QCOMPARE(messageOf<EDatabaseError>([&] { tooMany->ExecProc(); }),
             s("Dataset \"spFund\": stored procedure \"add_up\" has no parameter \"c\"."));
    // Without the wrong parameter the procedure works.
    tooMany->Params().Clear();
    tooMany->Prepare();
    QCOMPARE(tooMany->Params().Count(), 3);
    const QString unknown = messageOf<EDatabaseError>([&] { param(*tooMany, "d"); });
    QCOMPARE(unknown, s("Parameter \"d\" not found."));
    const auto badValue = procedure("add_up");
    badValue->Prepare();
    QVERIFY_THROWS_EXCEPTION(EConvertError, param(*badValue, "a").SetAsString(s("ten")));
    badValue->Params().Clear();
    badValue->UnPrepare();
    badValue->Params().Add(s("a"), TParamDataType::String).SetAsString(s("ten"));
    badValue->Params().Add(s("b"), TParamDataType::Integer).SetAsInteger(1);
    QVERIFY(messageOf<EDatabaseError>([&] {
                badValue->ExecProc();
            }).contains(s("invalid input syntax for type integer: \"ten\"")));
}

void TestStoredProc::passesTheFailureInside()
{
    const Driver &engine = Engines::Drivers()[1];
    QVERIFY(Engines::Run(engine, {s("delete from visited")}));
    const auto failing = procedure("failing");
    failing->Params().Add(s("code"), TParamDataType::Integer).SetAsInteger(7);
    for (int round = 0; round < 2; ++round) {
        const QString message = messageOf<EDatabaseError>([&] { failing->ExecProc(); });
        QVERIFY2(message.startsWith(s("Dataset \"spFund\": ")), qPrintable(message));
        QVERIFY2(message.contains(s("no fund for code 7")), qPrintable(message));
        QVERIFY(messageOf<EDatabaseError>([&] { failing->Open(); }).contains(s("no fund for code 7")));
        QVERIFY(!failing->Active());
    }
    const auto inside = procedure("failing_inside");
    inside->Params().Add(s("code"), TParamDataType::Integer).SetAsInteger(8);
    inside->Prepare();
    QVERIFY(messageOf<EDatabaseError>([&] { inside->ExecProc(); }).contains(s("no visit for code 8")));
    QVERIFY(!inside->Prepared()); // the next run prepares it again
    const auto visited = Engines::Query(engine, false, s("select count(*) from visited"));
    visited->Open();
    QCOMPARE(visited->Fields(0)->AsInteger(), 0);
    // The connection still works.
    const auto sum = procedure("add_up");
    sum->Prepare();
    param(*sum, "a").SetAsInteger(1);
    param(*sum, "b").SetAsInteger(1);
    sum->ExecProc();
    QCOMPARE(param(*sum, "Result").AsInteger(), 2);
}

void TestStoredProc::keepsItsRowsWhenTheFilterDoesNotFitTheNewOnes()
{
    const Driver &engine = Engines::Drivers()[1];
    const QString create = s("create function changing() returns table (%1 integer) language sql as "
                             "'select fundid from fund order by 1'");
    QVERIFY(Engines::Run(engine, {s("drop function if exists changing()"), create.arg(s("number"))}));
    const auto funds = procedure("changing");
    funds->SetFilter(s("number = 2"));
    funds->SetFiltered(true);
    funds->Open();
    QCOMPARE(funds->RecordCount(), 1);
    const TBookmark mark = funds->GetBookmark();
    QVERIFY(Engines::Run(engine, {s("drop function changing()"), create.arg(s("other"))}));
    QVERIFY(messageOf<EDatabaseError>([&] { funds->ExecProc(); }).contains(s("number = 2")));
    QVERIFY(funds->Active());
    QVERIFY(funds->BookmarkValid(mark));
    QCOMPARE(funds->FieldByName(s("number"))->AsInteger(), 2);
    funds->FreeBookmark(mark);
    funds->SetFiltered(false);
    funds->ExecProc();
    QCOMPARE(funds->FieldByName(s("other"))->AsInteger(), 1);
}

void TestStoredProc::namesTheUnnamedParameter()
{
    QVERIFY(Engines::Run(Engines::Drivers()[1], {s("create or replace function unnamed(a integer, integer) "
                                                   "returns integer language sql as 'select $1 + $2'")}));
    const auto unnamed = procedure("unnamed");
    QCOMPARE(messageOf<EDatabaseError>([&] { unnamed->Prepare(); }),
             s("Dataset \"spFund\": parameter 2 of stored procedure \"unnamed\" has no name."));
}

void TestStoredProc::refusesSqlite()
{
    // A view of that name is not a procedure either.
    for (const char *name : {"fundlist", "no_such_thing"}) {
        const auto funds = procedure(name);
        const QString text =
            s("Dataset \"spFund\": SQLite has no stored procedures, so \"%1\" cannot be run. "
              "Use a query.")
                .arg(s(name));
        QCOMPARE(messageOf<EDatabaseError>([&] { funds->Prepare(); }), text);
        QCOMPARE(messageOf<EDatabaseError>([&] { funds->Open(); }), text);
        QCOMPARE(messageOf<EDatabaseError>([&] { funds->ExecProc(); }), text);
        QCOMPARE(messageOf<EDatabaseError>([&] { funds->Reopen(); }), text);
        QVERIFY(!funds->Active());
        QVERIFY(!funds->Prepared());
    }
}

namespace
{

/// The calls to the driver of an unknown engine.
QStringList asked;

/// Returns two rows with an integer for every statement.
class OtherResult : public QSqlResult
{
public:
    explicit OtherResult(const QSqlDriver *driver) : QSqlResult(driver) {}

protected:
    bool exec() override
    {
        for (int i = 0; i < boundValueCount(); ++i)
            asked.append(boundValue(i).toString());
        setSelect(true);
        setActive(true);
        setAt(QSql::BeforeFirstRow);
        return true;
    }
    bool prepare(const QString &query) override
    {
        asked.append(query);
        return QSqlResult::prepare(query);
    }
    bool reset(const QString &) override { return false; } // it has no catalogue like SQLite's
    QVariant data(int) override { return 10 * (at() + 1); }
    bool isNull(int) override { return false; }
    bool fetch(int row) override
    {
        setAt(row);
        return row < 2;
    }
    bool fetchFirst() override { return fetch(0); }
    bool fetchLast() override { return fetch(1); }
    int size() override { return 2; }
    int numRowsAffected() override { return 0; }
    QSqlRecord record() const override
    {
        QSqlRecord made;
        made.append(QSqlField(u"number"_s, QMetaType::fromType<int>()));
        return made;
    }
};

class OtherDriver : public QSqlDriver
{
public:
    bool hasFeature(DriverFeature feature) const override
    {
        return feature == PreparedQueries || feature == PositionalPlaceholders;
    }
    bool open(const QString &, const QString &, const QString &, const QString &, int,
              const QString &) override
    {
        setOpen(true);
        return true;
    }
    void close() override { setOpen(false); }
    QSqlResult *createResult() const override { return new OtherResult(this); }
    QString escapeIdentifier(const QString &name, IdentifierType) const override
    {
        return u'`' + name + u'`';
    }
};

} // namespace

// No such engine is available, so a driver that records its calls replaces it.
void TestStoredProc::callsProceduresOfOtherEngines()
{
    const QString other = s("other");
    const auto forget = qScopeGuard([&] { QSqlDatabase::removeDatabase(other); });
    QVERIFY(QSqlDatabase::addDatabase(new OtherDriver, other).open());
    TStoredProc funds;
    funds.setObjectName(u"spFund"_s);
    funds.SetDatabaseName(other);
    funds.SetStoredProcName(s("list_funds"));
    asked.clear();
    funds.ExecProc();
    QCOMPARE(asked, QStringList(s("{CALL `list_funds`}")));
    QCOMPARE(funds.RecordCount(), 2);
    QCOMPARE(funds.FieldByName(s("number"))->AsInteger(), 10);
    asked.clear();
    funds.Params().Add(s("group"), TParamDataType::Integer).SetAsInteger(7);
    funds.Params().Add(s("name"), TParamDataType::String).SetAsString(s("O'Brien"));
    funds.ExecProc();
    QCOMPARE(asked, QStringList({s("{CALL `list_funds`(?,?)}"), s("7"), s("O'Brien")}));
    funds.Params().Add(s("total"), TParamDataType::Integer, TParamType::Output);
    QCOMPARE(messageOf<EDatabaseError>([&] { funds.ExecProc(); }),
             s("Dataset \"spFund\": \"list_funds\" gives rows only and has no output parameter \"total\"."));
}

ZEL_TEST_MAIN(TestStoredProc)
#include "tst_storedproc.moc"
