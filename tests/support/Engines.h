#pragma once

#include "PostgresServer.h"

#include "data/DataTypes.h"
#include "data/SqlDataSets.h"

#include <QList>
#include <QString>
#include <QTemporaryDir>

#include <memory>

/// A connection to a database engine, open under its Name: through Qt's own driver or through an ODBC driver.
struct Driver {
    QString Name;
    bool Postgres = false; ///< else SQLite
    bool Odbc = false;
};

/// The engines that the dataset tests run on: an SQLite file and a PostgreSQL server of the test's own, each
/// through Qt's own driver and through ODBC. Where no server can run, only the SQLite file with Qt's own
/// driver.
class Engines
{
public:
    Engines() = default;
    ~Engines();
    Q_DISABLE_COPY_MOVE(Engines)

    /// Opens all connections. Returns false when one of them does not open; Reason says why.
    bool Start();
    QString Reason() const { return m_reason; }
    QString Host() const { return m_server.Host(); }
    static const QList<Driver> &Drivers();

    /// Runs statements for a test's own needs, always through Qt's own driver of the connection's engine.
    /// Returns whether all of them succeeded.
    static bool Run(const Driver &driver, const QStringList &statements);
    /// The name of a column type that both engines understand.
    static QString ColumnType(TFieldType type);

    /// The datasets of a connection: TQuery and TStoredProc, or TADOQuery and TADOStoredProc when @p ado is
    /// set, which is for ODBC connections only.
    static std::unique_ptr<TSqlQuery> Query(const Driver &driver, bool ado, const QString &sql);
    static std::unique_ptr<TSqlProcedure> Procedure(const Driver &driver, bool ado, const QString &name);

private:
    bool Open(const Driver &driver, const QString &database);
    PostgresServer m_server;
    QTemporaryDir m_folder;
    QString m_reason;
};
