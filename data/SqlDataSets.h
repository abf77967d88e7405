#pragma once

#include "data/DataSet.h"

#include <QStringList>

/// What the four server-side kinds share: a connection by its Qt SQL connection name and preparing.
class ZEL_DATA_EXPORT TSqlDataSet : public TDataSet
{
    Q_OBJECT
public:
    ~TSqlDataSet() override;
    QString DatabaseName() const;
    /// The name of an open QSqlDatabase connection; closes and unprepares the dataset when it changes.
    void SetDatabaseName(const QString &connectionName);
    bool Prepared() const;
    void SetPrepared(bool prepared); ///< Prepare or UnPrepare.
    void Prepare(); ///< Checks the statement with the engine; EDatabaseError with its reason.
    void UnPrepare();

protected:
    struct Private;
    TSqlDataSet(QObject *parent, std::unique_ptr<Private> impl);
    std::unique_ptr<Private> s;
};

/// A query of the database engine (SQLite embedded, PostgreSQL served) with named parameters (":name").
class ZEL_DATA_EXPORT TQuery : public TSqlDataSet
{
    Q_OBJECT
public:
    explicit TQuery(QObject *parent = nullptr);
    QString SQL() const;
    void SetSQL(const QString &sql); ///< Closes, unprepares, and makes Params anew from the ":name" marks.
    void ExecSQL();                  ///< For statements without rows.

protected:
    TTablePtr FetchTable() override;
};

/// A stored procedure of the database engine. On PostgreSQL a function or procedure, its output parameters
/// written back into Params; on SQLite, which has none, a view or table-valued function of that name, each
/// input parameter selecting the rows whose column of the same name equals it.
class ZEL_DATA_EXPORT TStoredProc : public TSqlDataSet
{
    Q_OBJECT
public:
    explicit TStoredProc(QObject *parent = nullptr);
    QString StoredProcName() const;
    void SetStoredProcName(const QString &name);
    /// Runs it: output parameters are read back, and a result set, when there is one, becomes the open rows.
    void ExecProc();

protected:
    TTablePtr FetchTable() override;
};

/// The same contract over ODBC; SetDatabaseName refuses a connection of another driver.
class ZEL_DATA_EXPORT TADOQuery : public TSqlDataSet
{
    Q_OBJECT
public:
    explicit TADOQuery(QObject *parent = nullptr);
    QString SQL() const;
    void SetSQL(const QString &sql);
    void ExecSQL();

protected:
    TTablePtr FetchTable() override;
};

class ZEL_DATA_EXPORT TADOStoredProc : public TSqlDataSet
{
    Q_OBJECT
public:
    explicit TADOStoredProc(QObject *parent = nullptr);
    QString ProcedureName() const;
    void SetProcedureName(const QString &name);
    void ExecProc();

protected:
    TTablePtr FetchTable() override;
};
