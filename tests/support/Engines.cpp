#include "Engines.h"

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>

using namespace Qt::StringLiterals;

namespace
{

template <typename DataSet> std::unique_ptr<DataSet> made(const Road &road)
{
    auto dataset = std::make_unique<DataSet>();
    dataset->SetDatabaseName(road.Name);
    return dataset;
}

} // namespace

Engines::~Engines()
{
    for (const Road &road : Roads())
        QSqlDatabase::removeDatabase(road.Name);
}

const QList<Road> &Engines::Roads()
{
    static const QList<Road> roads{{u"SQLite"_s, false, false},
                                   {u"PostgreSQL"_s, true, false},
                                   {u"SQLite over ODBC"_s, false, true},
                                   {u"PostgreSQL over ODBC"_s, true, true}};
    static const QList<Road> withoutServer = roads.mid(0, 1);
    return PostgresServer::Offered() ? roads : withoutServer;
}

bool Engines::Start()
{
    if (PostgresServer::Offered() && !m_server.Start()) {
        m_reason = m_server.Reason();
        return false;
    }
    const QString file = m_folder.filePath(u"test.sqlite"_s);
    const auto databaseOf = [&](const Road &road) {
        if (!road.Odbc)
            return road.Postgres ? u"postgres"_s : file;
        return road.Postgres ? u"DRIVER={PostgreSQL Unicode};Server=%1;Database=postgres;UID=zel;"
                               "BoolsAsChar=0"_s.arg(m_server.Host())
                             : u"DRIVER=SQLite3;Database=%1"_s.arg(file);
    };
    for (const Road &road : Roads()) {
        if (!Open(road, databaseOf(road)))
            return false;
    }
    return true;
}

bool Engines::Open(const Road &road, const QString &database)
{
    const QString ownDriver = road.Postgres ? u"QPSQL"_s : u"QSQLITE"_s;
    QSqlDatabase db = QSqlDatabase::addDatabase(road.Odbc ? u"QODBC"_s : ownDriver, road.Name);
    db.setDatabaseName(database);
    if (road.Postgres && !road.Odbc) {
        db.setHostName(m_server.Host());
        db.setUserName(u"zel"_s);
    }
    if (db.open()) {
        // Speeds up the tests: their rows need not survive a crash of the machine.
        if (!road.Postgres && !road.Odbc)
            QSqlQuery(db).exec(u"PRAGMA synchronous = OFF"_s);
        return true;
    }
    m_reason = road.Name + u": "_s + db.lastError().text();
    return false;
}

bool Engines::Run(const Road &road, const QStringList &statements)
{
    QSqlDatabase db = QSqlDatabase::database(Roads().at(road.Postgres ? 1 : 0).Name);
    QSqlQuery query(db);
    if (road.Postgres)
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

std::unique_ptr<TSqlQuery> Engines::Query(const Road &road, bool ado, const QString &sql)
{
    std::unique_ptr<TSqlQuery> query;
    if (ado)
        query = made<TADOQuery>(road);
    else
        query = made<TQuery>(road);
    query->SetSQL(sql);
    return query;
}

std::unique_ptr<TSqlProcedure> Engines::Procedure(const Road &road, bool ado, const QString &name)
{
    if (ado) {
        auto procedure = made<TADOStoredProc>(road);
        procedure->SetProcedureName(name);
        return procedure;
    }
    auto procedure = made<TStoredProc>(road);
    procedure->SetStoredProcName(name);
    return procedure;
}
