#pragma once

#include "PostgresServer.h"

#include "data/DataTypes.h"
#include "data/SqlDataSets.h"

#include <QList>
#include <QString>
#include <QTemporaryDir>

#include <memory>

/// One way to an engine, open under its name as a connection: Qt's own driver or the engine's ODBC driver.
struct Road {
    QString Name;
    bool Postgres = false; ///< else SQLite
    bool Odbc = false;
};

/// The engines that the dataset tests run on, an SQLite file and a PostgreSQL server of the test's own, and
/// the four roads to them. Where no server is offered, the file and Qt's own driver alone.
class Engines
{
public:
    Engines() = default;
    ~Engines();
    Q_DISABLE_COPY_MOVE(Engines)

    /// Opens all roads; false, with Reason, when one of them does not open.
    bool Start();
    QString Reason() const { return m_reason; }
    QString Host() const { return m_server.Host(); }
    static const QList<Road> &Roads();

    /// Runs statements for a test's own needs through Qt's driver of the road's engine; whether all went
    /// well.
    static bool Run(const Road &road, const QStringList &statements);
    /// A column's type as both engines understand it.
    static QString ColumnType(TFieldType type);

    /// The kinds of dataset that a road takes: any may be a query or a stored procedure of the engine's own
    /// kind, an ODBC connection may also be an ADO one.
    static std::unique_ptr<TSqlQuery> Query(const Road &road, bool ado, const QString &sql);
    static std::unique_ptr<TSqlProcedure> Procedure(const Road &road, bool ado, const QString &name);

private:
    bool Open(const Road &road, const QString &database);
    PostgresServer m_server;
    QTemporaryDir m_folder;
    QString m_reason;
};
