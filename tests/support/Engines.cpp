#include "Engines.h"

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>

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
    static const QList<Road> roads{{QStringLiteral("SQLite"), false, false},
                                   {QStringLiteral("PostgreSQL"), true, false},
                                   {QStringLiteral("SQLite over ODBC"), false, true},
                                   {QStringLiteral("PostgreSQL over ODBC"), true, true}};
    static const QList<Road> withoutServer = roads.mid(0, 1);
    return PostgresServer::Offered() ? roads : withoutServer;
}

bool Engines::Start()
{
    if (PostgresServer::Offered() && !m_server.Start()) {
        m_reason = m_server.Reason();
        return false;
    }
    const QString file = m_folder.filePath(QStringLiteral("test.sqlite"));
    const auto databaseOf = [&](const Road &road) {
        if (!road.Odbc)
            return road.Postgres ? QStringLiteral("postgres") : file;
        return road.Postgres
                   ? QStringLiteral("DRIVER={PostgreSQL Unicode};Server=%1;Database=postgres;UID=zel;"
                                    "BoolsAsChar=0")
                         .arg(m_server.Host())
                   : QStringLiteral("DRIVER=SQLite3;Database=%1").arg(file);
    };
    for (const Road &road : Roads()) {
        if (!Open(road, databaseOf(road)))
            return false;
    }
    return true;
}

bool Engines::Open(const Road &road, const QString &database)
{
    const QString ownDriver = road.Postgres ? QStringLiteral("QPSQL") : QStringLiteral("QSQLITE");
    QSqlDatabase db = QSqlDatabase::addDatabase(road.Odbc ? QStringLiteral("QODBC") : ownDriver, road.Name);
    db.setDatabaseName(database);
    if (road.Postgres && !road.Odbc) {
        db.setHostName(m_server.Host());
        db.setUserName(QStringLiteral("zel"));
    }
    if (db.open()) {
        // The rows of a test need not outlive the machine.
        if (!road.Postgres && !road.Odbc)
            QSqlQuery(db).exec(QStringLiteral("PRAGMA synchronous = OFF"));
        return true;
    }
    m_reason = road.Name + QStringLiteral(": ") + db.lastError().text();
    return false;
}

bool Engines::Run(const Road &road, const QStringList &statements)
{
    QSqlDatabase db = QSqlDatabase::database(Roads().at(road.Postgres ? 1 : 0).Name);
    QSqlQuery query(db);
    if (road.Postgres)
        query.exec(QStringLiteral("SET client_min_messages = warning"));
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
