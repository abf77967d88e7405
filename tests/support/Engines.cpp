#include "Engines.h"

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>

using namespace Qt::StringLiterals;

namespace
{

template <typename DataSet> std::unique_ptr<DataSet> made(const Driver &driver)
{
    auto dataset = std::make_unique<DataSet>();
    dataset->SetDatabaseName(driver.Name);
    return dataset;
}

} // namespace

Engines::~Engines()
{
    for (const Driver &driver : Drivers())
        QSqlDatabase::removeDatabase(driver.Name);
}

const QList<Driver> &Engines::Drivers()
{
    static const QList<Driver> drivers{{u"SQLite"_s, false, false},
                                       {u"PostgreSQL"_s, true, false},
                                       {u"SQLite over ODBC"_s, false, true},
                                       {u"PostgreSQL over ODBC"_s, true, true}};
    static const QList<Driver> withoutServer = drivers.mid(0, 1);
    return PostgresServer::Offered() ? drivers : withoutServer;
}

bool Engines::Start()
{
    if (PostgresServer::Offered() && !m_server.Start()) {
        m_reason = m_server.Reason();
        return false;
    }
    const QString file = m_folder.filePath(u"test.sqlite"_s);
    const auto databaseOf = [&](const Driver &driver) {
        if (!driver.Odbc)
            return driver.Postgres ? u"postgres"_s : file;
        return driver.Postgres ? u"DRIVER={PostgreSQL Unicode};Server=%1;Database=postgres;UID=zel;"
                                 "BoolsAsChar=0"_s.arg(m_server.Host())
                               : u"DRIVER=SQLite3;Database=%1"_s.arg(file);
    };
    for (const Driver &driver : Drivers()) {
        if (!Open(driver, databaseOf(driver)))
            return false;
    }
    return true;
}

bool Engines::Open(const Driver &driver, const QString &database)
{
    const QString ownDriver = driver.Postgres ? u"QPSQL"_s : u"QSQLITE"_s;
    QSqlDatabase db = QSqlDatabase::addDatabase(driver.Odbc ? u"QODBC"_s : ownDriver, driver.Name);
    db.setDatabaseName(database);
    if (driver.Postgres && !driver.Odbc) {
        db.setHostName(m_server.Host());
        db.setUserName(u"zel"_s);
    }
    if (db.open()) {
        // Speeds up the tests: their rows need not survive a crash of the machine.
        if (!driver.Postgres && !driver.Odbc)
            QSqlQuery(db).exec(u"PRAGMA synchronous = OFF"_s);
        return true;
    }
    m_reason = driver.Name + u": "_s + db.lastError().text();
    return false;
}

bool Engines::Run(const Driver &driver, const QStringList &statements)
{
    QSqlDatabase db = QSqlDatabase::database(Drivers().at(driver.Postgres ? 1 : 0).Name);
    QSqlQuery query(db);
    if (driver.Postgres)
        query.exec(u"SET client_min_messages = warning"_s);
    db.transaction();
    for (const QString &statement : statements) {
        if (!query.exec(statement)) {
            qCritical("%s: %s", qPrintable(statement), qPrintable(query.lastError().text()));
            db.rollback();
            return false;
        }
    }
    return db.commit();
}

QString Engines::ColumnType(TFieldType type)
{
    switch (type) {
    case TFieldType::Integer:
        return u"INTEGER"_s;
    case TFieldType::LargeInt:
        return u"BIGINT"_s;
    case TFieldType::Float:
        return u"DOUBLE PRECISION"_s;
    case TFieldType::Currency:
        return u"NUMERIC(19,4)"_s;
    case TFieldType::Boolean:
        return u"BOOLEAN"_s;
    case TFieldType::Date:
        return u"DATE"_s;
    case TFieldType::DateTime:
        return u"TIMESTAMP"_s;
    case TFieldType::String:
        break;
    }
    return u"TEXT"_s;
}

std::unique_ptr<TSqlQuery> Engines::Query(const Driver &driver, bool ado, const QString &sql)
{
    std::unique_ptr<TSqlQuery> query;
    if (ado)
        query = made<TADOQuery>(driver);
    else
        query = made<TQuery>(driver);
    query->SetSQL(sql);
    return query;
}

std::unique_ptr<TSqlProcedure> Engines::Procedure(const Driver &driver, bool ado, const QString &name)
{
    if (ado) {
        auto procedure = made<TADOStoredProc>(driver);
        procedure->SetProcedureName(name);
        return procedure;
    }
    auto procedure = made<TStoredProc>(driver);
    procedure->SetStoredProcName(name);
    return procedure;
}
