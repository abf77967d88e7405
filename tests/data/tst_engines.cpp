#include "DataSetSuite.h"
// labels: postgresql

#include "PostgresServer.h"

#include "data/SqlDataSets.h"

#include <QLocale>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>

/// The suite over queries of one engine.
class TestEngines : public DataSetSuite
{
    Q_OBJECT
public:
    TestEngines(const QString &driver, const QString &host, const QString &database)
        : m_connection(driver), m_postgres(driver == u"QPSQL")
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(driver, m_connection);
        db.setHostName(host);
        db.setDatabaseName(database);
        db.setUserName(QStringLiteral("zel"));
    }
    ~TestEngines() override { QSqlDatabase::removeDatabase(m_connection); }

    std::unique_ptr<TDataSet> make(const QList<TFieldDef> &defs, const Rows &rows) override
    {
        store(defs, rows);
        auto query = std::make_unique<TQuery>();
        query->SetDatabaseName(m_connection);
        QStringList names;
        for (const TFieldDef &def : defs)
            names.append(quoted(def.Name));
        query->SetSQL(QStringLiteral("SELECT %1 FROM suite ORDER BY place").arg(names.join(u',')));
        return query;
    }
    void replaceRows(TDataSet &, const QList<TFieldDef> &defs, const Rows &rows) override
    {
        store(defs, rows);
    }
    int largeRowCount() const override { return 20000; }

private:
    static QString quoted(const QString &name) { return u'"' + name + u'"'; }
    static QString typeName(TFieldType type)
    {
        switch (type) {
        case TFieldType::Integer:
            return QStringLiteral("INTEGER");
        case TFieldType::LargeInt:
            return QStringLiteral("BIGINT");
        case TFieldType::Float:
            return QStringLiteral("DOUBLE PRECISION");
        case TFieldType::Currency:
            return QStringLiteral("NUMERIC(19,4)");
        case TFieldType::Boolean:
            return QStringLiteral("BOOLEAN");
        case TFieldType::Date:
            return QStringLiteral("DATE");
        case TFieldType::DateTime:
            return QStringLiteral("TIMESTAMP");
        case TFieldType::String:
            break;
        }
        return QStringLiteral("TEXT");
    }
    void store(const QList<TFieldDef> &defs, const Rows &rows)
    {
        QSqlDatabase db = QSqlDatabase::database(m_connection);
        QVERIFY2(db.isOpen(), qPrintable(db.lastError().text()));
        QString columns = QStringLiteral("place INTEGER");
        QString marks = QStringLiteral("?");
        for (const TFieldDef &def : defs) {
            columns += u',' + quoted(def.Name) + u' ' + typeName(def.Type);
            marks += QStringLiteral(",?");
        }
        QSqlQuery query(db);
        QVERIFY(db.transaction());
        QVERIFY(query.exec(QStringLiteral("DROP TABLE IF EXISTS suite")));
        QVERIFY(query.exec(QStringLiteral("CREATE TABLE suite (%1)").arg(columns)));
        QVERIFY(query.prepare(QStringLiteral("INSERT INTO suite VALUES (%1)").arg(marks)));
        for (qsizetype row = 0; row < rows.size(); ++row) {
            query.bindValue(0, static_cast<int>(row));
            for (int i = 0; i < defs.size(); ++i) {
                QVariant value = rows[row][i];
                if (value.metaType() == QMetaType::fromType<Currency>())
                    value = m_postgres ? QVariant(value.value<Currency>().toString())
                                       : QVariant(value.value<Currency>().toDouble());
                query.bindValue(i + 1, value);
            }
            QVERIFY2(query.exec(), qPrintable(query.lastError().text()));
        }
        query.finish();
        QVERIFY(db.commit());
    }

    const QString m_connection;
    const bool m_postgres;
};

int main(int argc, char **argv)
{
    QLocale::setDefault(QLocale::c());
    QApplication app(argc, argv);
    PostgresServer server;
    if (!server.Start()) {
        qCritical("PostgreSQL does not run: %s", qPrintable(server.Reason()));
        return 1;
    }
    int failures = 0;
    {
        TestEngines test(QStringLiteral("QSQLITE"), QString(), QStringLiteral(":memory:"));
        failures += QTest::qExec(&test, argc, argv);
    }
    {
        TestEngines test(QStringLiteral("QPSQL"), server.Host(), QStringLiteral("postgres"));
        failures += QTest::qExec(&test, argc, argv);
    }
    return failures == 0 ? 0 : 1;
}
#include "moc_DataSetSuite.cpp"
#include "tst_engines.moc"
