#include "PostgresServer.h"
// labels: postgresql
#include "ViewData.h"
#include "ZelTest.h"

#include "data/Exceptions.h"
#include "data/SqlDataSets.h"
#include "dataviews/ill_Misc.h"
#include "toolkit/TScreen.h"

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QTemporaryDir>

namespace
{

QString s(const char *text)
{
    return QString::fromUtf8(text);
}

/// One of the five dataset classes that can be reopened, on any source.
class Kind
{
public:
    enum Name { Client, Query, StoredProc, ADOQuery, ADOStoredProc };

    /// A dataset on @p source, which is a query's text or a procedure's name. When the source has the
    /// parameter "fundgroupid", it selects a group.
    Kind(Name name, const QString &connection, const QString &source)
    {
        switch (name) {
        case Client: {
            m_connection.RegisterProvider(s("rows"), [connection, source](const TParams &params) {
                TADOQuery odbc;
                TQuery plain;
                const auto fetch = [&](auto &query) {
                    query.SetDatabaseName(connection);
                    query.SetSQL(source);
                    if (query.Params().Count() > 0)
                        query.Params()[0].SetAsInteger(params.ParamByName(s("fundgroupid")).AsInteger());
                    query.Open();
                    return TDataPacket(query.Table());
                };
                return connection.startsWith(s("odbc")) ? fetch(odbc) : fetch(plain);
            });
            auto client = std::make_unique<Watched<TClientDataSet>>();
            client->SetRemoteServer(&m_connection);
            client->SetProviderName(s("rows"));
            m_dataSet = std::move(client);
            break;
        }
        case Query:
            m_dataSet = made<TQuery>(connection, &TQuery::SetSQL, source);
            break;
        case StoredProc:
            m_dataSet = made<TStoredProc>(connection, &TStoredProc::SetStoredProcName, source);
            break;
        case ADOQuery:
            m_dataSet = made<TADOQuery>(connection, &TADOQuery::SetSQL, source);
            break;
        case ADOStoredProc:
            m_dataSet = made<TADOStoredProc>(connection, &TADOStoredProc::SetProcedureName, source);
            break;
        }
    }
    TDataSet *operator->() const { return m_dataSet.get(); }
    TDataSet *get() const { return m_dataSet.get(); }
    /// Whether the statement is prepared; always false for a client dataset.
    bool Prepared() const
    {
        const auto *sql = qobject_cast<TSqlDataSet *>(m_dataSet.get());
        return sql && sql->Prepared();
    }

private:
    template <typename DataSet>
    static std::unique_ptr<TDataSet> made(const QString &connection,
                                          void (DataSet::*setSource)(const QString &), const QString &source)
    {
        auto dataSet = std::make_unique<Watched<DataSet>>();
        dataSet->SetDatabaseName(connection);
        (dataSet.get()->*setSource)(source);
        return dataSet;
    }

    TLocalConnection m_connection; // outlives the dataset that uses it
    std::unique_ptr<TDataSet> m_dataSet;
};

bool isProcedure(Kind::Name kind)
{
    return kind == Kind::StoredProc || kind == Kind::ADOStoredProc;
}

} // namespace
Q_DECLARE_METATYPE(Kind::Name)

/// The five dataset classes on SQLite and PostgreSQL, with Qt's own drivers and ODBC: reopened, closed and
/// shown in views.
class tst_RefreshEngines : public ZelTest
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void init() override;
    void cleanup() { QCOMPARE(Leftovers::Take(), QString()); }

    void opens_data() { kinds(); }
    void opens();
    void readsTheSourceAgain_data() { kinds(); }
    void readsTheSourceAgain();
    void keepsThePlaceByNumber_data() { kinds(); }
    void keepsThePlaceByNumber();
    void takesNewParameters_data() { kinds(); }
    void takesNewParameters();
    void passesErrors_data() { kinds(); }
    void passesErrors();
    void closes_data() { kinds(); }
    void closes();
    void fillsViews_data() { kinds(); }
    void fillsViews();
    void runsProceduresWithoutRows_data();
    void runsProceduresWithoutRows();

private:
    static void kinds();
    /// Runs a statement on the connection's database.
    static void run(const QString &connection, const QString &sql);
    /// A dataset on all funds or, with @p oneGroup, on those of the group in its parameter.
    static std::unique_ptr<Kind> fundsOf(Kind::Name kind, const QString &connection, bool oneGroup = false);
    static std::unique_ptr<Kind> groupsOf(Kind::Name kind, const QString &connection);
    static QStringList names(TDataSet &dataSet);

    PostgresServer m_server;
    QTemporaryDir m_folder;
};

void tst_RefreshEngines::initTestCase()
{
    QVERIFY2(m_server.Start(), qPrintable(m_server.Reason()));
    QVERIFY(m_folder.isValid());
    const auto open = [](const char *name, const char *driver, const QString &database, const QString &host) {
        QSqlDatabase added = QSqlDatabase::addDatabase(s(driver), s(name));
        added.setDatabaseName(database);
        if (!host.isEmpty()) {
            added.setHostName(host);
            added.setUserName(s("zel"));
        }
        QVERIFY2(added.open(), qPrintable(added.lastError().text()));
    };
    const QString file = m_folder.filePath(s("funds.sqlite"));
    open("sqlite", "QSQLITE", file, QString());
    open("postgresql", "QPSQL", s("postgres"), m_server.Host());
    open("odbc sqlite", "QODBC", s("DRIVER=SQLite3;Database=%1").arg(file), QString());
    open("odbc postgresql", "QODBC",
         s("DRIVER={PostgreSQL Unicode};Server=%1;Database=postgres;UID=zel;BoolsAsChar=0")
             .arg(m_server.Host()),
         QString());
    for (const QString &engine : {s("sqlite"), s("postgresql")})
        run(engine, s("create table fund (fundid integer, fundgroupid integer, groupname varchar(80), "
                      "fundname varchar(80), amount numeric(19,4))"));
    for (const char *routine :
         {"create function fundlist() returns setof fund language sql as "
          "'select * from fund order by fundid'",
          "create function fundlist(fundgroupid integer) returns setof fund language sql as "
          "'select * from fund f where f.fundgroupid = $1 order by fundid'",
          "create function grouplist() returns table (fundgroupid integer, groupname varchar) language sql "
          "as "
          "'select distinct fundgroupid, groupname from fund order by 1'",
          "create function rise(by integer, inout total integer) language plpgsql as "
          "'begin update fund set fundid = fundid + by; select sum(fundid) into total from fund; end'"})
        run(s("postgresql"), s(routine));
}

void tst_RefreshEngines::cleanupTestCase()
{
    for (const char *name : {"sqlite", "postgresql", "odbc sqlite", "odbc postgresql"})
        QSqlDatabase::removeDatabase(s(name));
}

void tst_RefreshEngines::init()
{
    ZelTest::init();
    Screen().SetCursor(TCursor::crDefault);
    for (const QString &engine : {s("sqlite"), s("postgresql")}) {
        run(engine, s("delete from fund"));
        run(engine, s("insert into fund values (1, 10, 'North', 'Alpha', 1234.5), "
                      "(2, 10, 'North', '  \xC3\x84ngstr\xC3\xB6m \xE2\x80\x93 Fund', 0), "
                      "(3, 10, 'North', null, null), (4, 20, 'South', 'Delta', 7.25)"));
    }
}

void tst_RefreshEngines::kinds()
{
    QTest::addColumn<Kind::Name>("kind");
    QTest::addColumn<QString>("connection");
    for (const char *connection : {"sqlite", "postgresql", "odbc sqlite", "odbc postgresql"}) {
        const bool odbc = s(connection).startsWith(s("odbc"));
        const auto add = [&](const char *name, Kind::Name kind) {
            QTest::addRow("%s, %s", name, connection) << kind << s(connection);
        };
        add("client dataset", Kind::Client);
        add(odbc ? "ADO query" : "query", odbc ? Kind::ADOQuery : Kind::Query);
        if (s(connection).endsWith(s("postgresql"))) // SQLite has no stored procedures
            add(odbc ? "ADO stored procedure" : "stored procedure",
                odbc ? Kind::ADOStoredProc : Kind::StoredProc);
    }
}

void tst_RefreshEngines::run(const QString &connection, const QString &sql)
{
    QSqlQuery query(QSqlDatabase::database(connection));
    QVERIFY2(query.exec(sql), qPrintable(sql + s(": ") + query.lastError().text()));
}

std::unique_ptr<Kind> tst_RefreshEngines::fundsOf(Kind::Name kind, const QString &connection, bool oneGroup)
{
    const QString text = oneGroup ? s("select * from fund where fundgroupid = :fundgroupid order by fundid")
                                  : s("select * from fund order by fundid");
    auto dataSet = std::make_unique<Kind>(kind, connection, isProcedure(kind) ? s("fundlist") : text);
    if (oneGroup && !(*dataSet)->Params().FindParam(s("fundgroupid")))
        (*dataSet)->Params().Add(s("fundgroupid"), TParamDataType::Integer);
    return dataSet;
}

std::unique_ptr<Kind> tst_RefreshEngines::groupsOf(Kind::Name kind, const QString &connection)
{
    return std::make_unique<Kind>(
        kind, connection,
        isProcedure(kind) ? s("grouplist")
                          : s("select distinct fundgroupid, groupname from fund order by fundgroupid"));
}

QStringList tst_RefreshEngines::names(TDataSet &dataSet)
{
    QStringList all;
    for (dataSet.First(); !dataSet.Eof(); dataSet.Next())
        all << dataSet.FieldByName(s("FundName"))->AsString();
    return all;
}

void tst_RefreshEngines::opens()
{
    QFETCH(Kind::Name, kind);
    QFETCH(QString, connection);
    const auto funds = fundsOf(kind, connection);
    TDataSet &data = *funds->get();
    TCursor during = TCursor::crDefault;
    bool disabled = false;
    data.BeforeOpen = [&](TDataSet *) {
        during = Screen().Cursor();
        disabled = data.ControlsDisabled();
    };
    misc_RefreshIT(&data, true);
    QVERIFY(data.Active());
    QCOMPARE(data.RecNo(), 1);
    QCOMPARE(data.RecordCount(), 4);
    QCOMPARE(funds->Prepared(), kind != Kind::Client);
    QCOMPARE(during, TCursor::crSQLWait);
    QVERIFY(disabled);
    QVERIFY(!data.ControlsDisabled());
    QCOMPARE(Screen().Cursor(), TCursor::crDefault);
    QCOMPARE(data.FieldByName(s("FundID"))->AsInteger(), 1);
    QCOMPARE(data.FieldByName(s("Amount"))->AsCurrency(), Currency::fromText(s("1234.5")));
    QCOMPARE(names(data), QStringList({s("Alpha"), s("  \xC3\x84ngstr\xC3\xB6m \xE2\x80\x93 Fund"), QString(),
                                       s("Delta")}));
    data.SetRecNo(3);
    QVERIFY(data.FieldByName(s("FundName"))->IsNull());
}

void tst_RefreshEngines::readsTheSourceAgain()
{
    QFETCH(Kind::Name, kind);
    QFETCH(QString, connection);
    const auto funds = fundsOf(kind, connection);
    TDataSet &data = *funds->get();
    misc_RefreshIT(&data, false);
    data.Last();
    for (int round = 5; round < 8; ++round) {
        run(connection, s("insert into fund values (%1, 30, 'Late', 'New %1', 1)").arg(round));
        QCOMPARE(data.RecordCount(), round - 1);
        misc_RefreshIT(&data, false);
        QCOMPARE(data.RecNo(), 1);
        QCOMPARE(names(data).last(), s("New %1").arg(round));
        QCOMPARE(data.RecordCount(), round);
        QCOMPARE(funds->Prepared(), kind != Kind::Client);
    }
}

void tst_RefreshEngines::keepsThePlaceByNumber()
{
    QFETCH(Kind::Name, kind);
    QFETCH(QString, connection);
    const auto funds = fundsOf(kind, connection);
    TDataSet &data = *funds->get();
    misc_RefreshIT(&data, false);
    data.SetRecNo(3);
    misc_RefreshIT(&data, true);
    QCOMPARE(data.RecNo(), 3);
    QCOMPARE(data.FieldByName(s("FundID"))->AsInteger(), 3);
    run(connection, s("delete from fund where fundid > 2"));
    misc_RefreshIT(&data, true);
    QCOMPARE(data.RecNo(), 2); // limited by the number of rows
    run(connection, s("delete from fund"));
    misc_RefreshIT(&data, true);
    QVERIFY(data.Active());
    QVERIFY(data.IsEmpty());
    run(connection, s("insert into fund values (9, 90, 'Back', 'Again', 1)"));
    misc_RefreshIT(&data, true);
    QCOMPARE(names(data), QStringList(s("Again")));
    QCOMPARE(Screen().Cursor(), TCursor::crDefault);
}

void tst_RefreshEngines::takesNewParameters()
{
    QFETCH(Kind::Name, kind);
    QFETCH(QString, connection);
    const auto funds = fundsOf(kind, connection, true);
    TDataSet &data = *funds->get();
    for (const auto &[group, count] :
         {std::pair{10, 3}, std::pair{20, 1}, std::pair{30, 0}, std::pair{10, 3}}) {
        data.Params().ParamByName(s("fundgroupid")).SetAsInteger(group);
        misc_RefreshIT(&data, true);
        QCOMPARE(data.RecordCount(), count);
        if (count > 0)
            QCOMPARE(data.FieldByName(s("FundGroupID"))->AsInteger(), group);
    }
}

void tst_RefreshEngines::passesErrors()
{
    QFETCH(Kind::Name, kind);
    QFETCH(QString, connection);
    const auto funds = fundsOf(kind, connection);
    TDataSet &data = *funds->get();
    misc_RefreshIT(&data, false);
    // The table that the dataset reads is removed.
    run(connection, s("alter table fund rename to gone"));
    QVERIFY_THROWS_EXCEPTION(EDatabaseError, misc_RefreshIT(&data, true));
    QVERIFY(!data.Active());
    QVERIFY(data.ControlsDisabled());
    QCOMPARE(Screen().Cursor(), TCursor::crSQLWait);
    // When it exists again, the dataset opens as usual.
    run(connection, s("alter table gone rename to fund"));
    data.EnableControls();
    misc_RefreshIT(&data, true);
    QCOMPARE(data.RecordCount(), 4);
    QVERIFY(!data.ControlsDisabled());
    QCOMPARE(Screen().Cursor(), TCursor::crDefault);
}

void tst_RefreshEngines::closes()
{
    QFETCH(Kind::Name, kind);
    QFETCH(QString, connection);
    const auto funds = fundsOf(kind, connection);
    TDataSet &data = *funds->get();
    misc_CloseTheQuery(&data); // the dataset is neither open nor prepared
    QVERIFY(!data.Active());
    for (int round = 0; round < 2; ++round) {
        misc_RefreshIT(&data, false);
        QVERIFY(data.Active());
        misc_CloseTheQuery(&data);
        QVERIFY(!funds->Prepared());
        QCOMPARE(data.Active(), isProcedure(kind)); // a procedure is only unprepared
        misc_CloseTheQuery(&data);
        QCOMPARE(data.Active(), isProcedure(kind));
    }
    QCOMPARE(Screen().Cursor(), TCursor::crDefault);
}

void tst_RefreshEngines::fillsViews()
{
    QFETCH(Kind::Name, kind);
    QFETCH(QString, connection);
    const auto groups = groupsOf(kind, connection);
    const auto funds = fundsOf(kind, connection);
    TListView list;
    for (int column = 0; column < 3; ++column)
        list.AddColumn(QString::number(column), 80);
    TComboBox combo;
    TTreeView tree;
    const auto fill = [&] {
        misc_BuildComboBox(combo, groups->get(), s("GroupName"), true, s("FundGroupID"), s("20"));
        misc_BuildListView(list, funds->get(), s("FundGroupID < 30 and Amount >= 0"),
                           s("FundName;FundID;Amount"), s("0;0;1"), QString(), false, -1, QString());
        misc_BuildTreeView(tree, {groups->get(), funds->get()}, {s("FundGroupID;FundGroupID")},
                           {s("GroupName"), s("FundName")}, {0, 1});
    };
    const auto giveBack = [&] {
        QTest::ignoreMessage(QtDebugMsg, qPrintable(s("x=%1").arg(combo.Items().Count())));
        misc_FreeComboBookMarks(combo, groups->get());
        misc_FreeListBookMarks(list, funds->get());
        misc_FreeTreeBookMarks(tree, 0, groups->get());
        misc_FreeTreeBookMarks(tree, 1, funds->get());
        QCOMPARE((*groups)->BookmarksHandedOut(), 0);
        QCOMPARE((*funds)->BookmarksHandedOut(), 0);
    };
    misc_RefreshIT(groups->get(), false);
    misc_RefreshIT(funds->get(), false);
    fill();
    QCOMPARE(combo.Items().Count(), 3);
    QCOMPARE(combo.currentText(), s("South"));
    QCOMPARE(list.Items().Count(), 3);
    QCOMPARE(list.Items()[0]->SubItems(), QStringList({s("1"), s("1,234.50")}));
    QCOMPARE(list.Items()[1]->Caption(), s("  \xC3\x84ngstr\xC3\xB6m \xE2\x80\x93 Fund"));
    QCOMPARE(tree.Items().Count(), 6);
    QCOMPARE(tree.Items()[2]->Text(), s("\xC3\x84ngstr\xC3\xB6m \xE2\x80\x93 Fund"));
    QCOMPARE(tree.Items()[3]->Text(), QString());
    QCOMPARE(tree.Items()[5]->Parent()->Text(), s("South"));
    // Every item's bookmark leads to its row.
    (*funds)->GotoBookmark(list.Items()[2]->Data());
    QCOMPARE((*funds)->FieldByName(s("FundID"))->AsInteger(), 4);
    (*funds)->GotoBookmark(tree.Items()[1]->Data());
    QCOMPARE((*funds)->FieldByName(s("FundID"))->AsInteger(), 1);
    (*groups)->GotoBookmark(static_cast<TBookmark>(combo.Items().Object(2)));
    QCOMPARE((*groups)->FieldByName(s("FundGroupID"))->AsInteger(), 20);
    giveBack();
    // Filled again after the source has changed.
    run(connection, s("insert into fund values (5, 30, 'West', 'Zeta', 1)"));
    run(connection, s("delete from fund where fundid = 1"));
    misc_RefreshIT(funds->get(), true);
    misc_RefreshIT(groups->get(), true);
    fill();
    QCOMPARE(combo.Items().Count(), 4);
    QCOMPARE(list.Items().Count(), 2);
    QCOMPARE(tree.Items().Count(), 7);
    QCOMPARE(tree.Items()[6]->Text(), s("Zeta"));
    giveBack();
}

void tst_RefreshEngines::runsProceduresWithoutRows_data()
{
    QTest::addColumn<Kind::Name>("kind");
    QTest::addColumn<QString>("connection");
    QTest::newRow("stored procedure") << Kind::StoredProc << s("postgresql");
    QTest::newRow("ADO stored procedure") << Kind::ADOStoredProc << s("odbc postgresql");
}

void tst_RefreshEngines::runsProceduresWithoutRows()
{
    QFETCH(Kind::Name, kind);
    QFETCH(QString, connection);
    const Kind rise(kind, connection, s("rise"));
    rise->Params().Add(s("by"), TParamDataType::Integer).SetAsInteger(10);
    rise->Params().Add(s("total"), TParamDataType::Integer, TParamType::InputOutput).SetAsInteger(0);
    for (const int total : {50, 90}) {
        misc_RefreshIT(rise.get(), true); // runs the procedure, which returns no rows
        QVERIFY(!rise->Active());
        QVERIFY(!rise->ControlsDisabled());
        QVERIFY(rise.Prepared());
        QCOMPARE(rise->Params().ParamByName(s("total")).AsInteger(), total);
    }
    misc_CloseTheQuery(rise.get());
    QVERIFY(!rise.Prepared());
    QCOMPARE(Screen().Cursor(), TCursor::crDefault);
}

ZEL_TEST_MAIN(tst_RefreshEngines)
#include "tst_refresh_engines.moc"
