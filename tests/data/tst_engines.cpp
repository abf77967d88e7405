#include "DataSetSuite.h"
// labels: postgresql slow
// left out on Windows: what runs on PostgreSQL and ODBC

#include "Engines.h"

#include "data/ClientDataSet.h"
#include "data/LocalConnection.h"

#include <QLocale>
#include <QSqlDatabase>
#include <QSqlDriver>
#include <QSqlField>

using namespace Qt::StringLiterals;

/// The suite on one kind of dataset and one database driver. The rows are in a table of the engine. Queries
/// select from this table; the stored procedure over it is a function in PostgreSQL (SQLite has none); a
/// client dataset is filled by a provider that runs a query.
class TestEngines : public DataSetSuite
{
    Q_OBJECT
public:
    enum class Kind { Query, StoredProc, ADOQuery, ADOStoredProc, Client };

    TestEngines(const Driver &driver, Kind kind) : m_driver(driver), m_kind(kind) {}

    std::unique_ptr<TDataSet> make(const QList<TFieldDef> &defs, const Rows &rows) override
    {
        store(defs, rows);
        switch (m_kind) {
        case Kind::Query:
        case Kind::ADOQuery:
            return Engines::Query(m_driver, m_kind == Kind::ADOQuery, selection(defs));
        case Kind::StoredProc:
        case Kind::ADOStoredProc:
            return Engines::Procedure(m_driver, m_kind == Kind::ADOStoredProc, u"suiterows"_s);
        case Kind::Client:
            break;
        }
        m_connection.RegisterProvider(u"dspSuite"_s, [this, sql = selection(defs)](const TParams &) {
            const auto query = Engines::Query(m_driver, m_driver.Odbc, sql);
            query->Open();
            return TDataPacket(query->Table());
        });
        auto dataset = std::make_unique<TClientDataSet>();
        dataset->SetRemoteServer(&m_connection);
        dataset->SetProviderName(u"dspSuite"_s);
        return dataset;
    }
    void replaceRows(TDataSet &, const QList<TFieldDef> &defs, const Rows &rows) override
    {
        store(defs, rows);
    }
    /// Only queries over an engine's own driver use all rows, once per engine; fewer rows suffice for the
    /// others.
    int largeRowCount() const override { return m_kind == Kind::Query && !m_driver.Odbc ? 100000 : 20000; }

private:
    static QString quoted(const QString &name) { return u'"' + name + u'"'; }
    static QString selection(const QList<TFieldDef> &defs)
    {
        QStringList names;
        for (const TFieldDef &def : defs)
            names.append(quoted(def.Name));
        return u"SELECT %1 FROM suite ORDER BY place"_s.arg(names.join(u','));
    }
    void store(const QList<TFieldDef> &defs, const Rows &rows)
    {
        const QSqlDriver &driver =
            *QSqlDatabase::database(Engines::Drivers().at(m_driver.Postgres ? 1 : 0).Name).driver();
        QStringList columns;
        for (const TFieldDef &def : defs)
            columns.append(quoted(def.Name) + u' ' + Engines::ColumnType(def.Type));
        const QString columnList = columns.join(u',');
        QStringList statements{u"DROP TABLE IF EXISTS suite"_s,
                               u"CREATE TABLE suite (place INTEGER,%1)"_s.arg(columnList)};
        if (m_kind == Kind::StoredProc || m_kind == Kind::ADOStoredProc) {
            statements.prepend(u"DROP FUNCTION IF EXISTS suiterows()"_s);
            statements.append(u"CREATE FUNCTION suiterows() RETURNS TABLE (%1) LANGUAGE sql AS $$%2$$"_s.arg(
                columnList, selection(defs)));
        }
        QStringList tuples;
        for (qsizetype row = 0; row < rows.size(); ++row) {
            QStringList values{QString::number(row)};
            for (const QVariant &value : rows[row])
                values.append(literal(driver, value));
            tuples.append(u'(' + values.join(u',') + u')');
            if (tuples.size() == RowsAtOnce || row + 1 == rows.size()) {
                statements.append(u"INSERT INTO suite VALUES "_s + tuples.join(u','));
                tuples.clear();
            }
        }
        QVERIFY(Engines::Run(m_driver, statements));
    }
    static QString literal(const QSqlDriver &driver, const QVariant &value)
    {
        if (value.metaType() == QMetaType::fromType<Currency>())
            return value.value<Currency>().toString();
        QSqlField sqlField(QString(), value.metaType());
        sqlField.setValue(value);
        return driver.formatValue(sqlField);
    }

    static constexpr int RowsAtOnce = 500;
    const Driver m_driver;
    const Kind m_kind;
    TLocalConnection m_connection;
};

int main(int argc, char **argv)
{
    QLocale::setDefault(QLocale::c());
    QApplication app(argc, argv);
    Engines engines;
    if (!engines.Start()) {
        qCritical("%s", qPrintable(engines.Reason()));
        return 1;
    }
    using Kind = TestEngines::Kind;
    const QList<std::pair<Kind, const char *>> kinds{{Kind::Query, "TQuery"},
                                                     {Kind::StoredProc, "TStoredProc"},
                                                     {Kind::ADOQuery, "TADOQuery"},
                                                     {Kind::ADOStoredProc, "TADOStoredProc"},
                                                     {Kind::Client, "TClientDataSet"}};
    int failures = 0;
    for (const Driver &driver : Engines::Drivers()) {
        for (const auto &[kind, name] : kinds) {
            const bool isProcedure = kind == Kind::StoredProc || kind == Kind::ADOStoredProc;
            if ((isProcedure && !driver.Postgres) ||
                (!driver.Odbc && (kind == Kind::ADOQuery || kind == Kind::ADOStoredProc)))
                continue;
            std::printf("%s on %s\n", name, qPrintable(driver.Name));
            std::fflush(stdout);
            TestEngines test(driver, kind);
            failures += QTest::qExec(&test, argc, argv);
        }
    }
    return failures == 0 ? 0 : 1;
}
#include "moc_DataSetSuite.cpp"
#include "tst_engines.moc"
