#pragma once

#include "data/DataSet.h"

/// The base class of the queries and stored procedures. The dataset uses the connection with the name
/// DatabaseName. An error of the engine throws EDatabaseError with the name of the dataset and the engine's
/// message; the statement is then prepared again before the next run.
///
/// A column has the type that the engine declares. A decimal column is Currency when every value has at most
/// four decimals and fits, else Float. In SQLite each value has its own type: a column with values that do
/// not fit its declared type, or without a declared type (an expression), gets the narrowest type that holds
/// all its values without a change; in the last resort text.
///
/// Qt's ODBC driver also logs the errors of the engine, in messages that begin with "QODBC". The message
/// handler of the host decides which of them to show.
///
/// A prepared dataset has a statement open in the engine. Call UnPrepare before you remove its connection.
class ZEL_DATA_EXPORT TSqlDataSet : public TDataSet
{
    Q_OBJECT
    Q_PROPERTY(QString DatabaseName READ DatabaseName WRITE SetDatabaseName)
    Q_PROPERTY(bool Prepared READ Prepared WRITE SetPrepared)
public:
    ~TSqlDataSet() override;
    QString DatabaseName() const;
    /// The name of an open QSqlDatabase connection; closes and unprepares the dataset when it changes. The
    /// ODBC kinds refuse a connection of another driver with EDatabaseError.
    void SetDatabaseName(const QString &connectionName);
    bool Prepared() const;
    void SetPrepared(bool prepared); ///< Prepare or UnPrepare.
    void Prepare();   ///< Checks the statement with the engine; EDatabaseError with its reason.
    void UnPrepare(); ///< Lets go of the prepared command.

    bool Reopen() override;
    void Release() override;

protected:
    struct Private;
    TSqlDataSet(QObject *parent, std::unique_ptr<Private> impl); ///< For the kinds below.
    QString CommandText() const;              ///< The statement, or the name of the procedure.
    void SetCommandText(const QString &text); ///< Closes the dataset first.
    /// Runs the command; a procedure's result set, when there is one, becomes the open rows.
    void Execute();
    TTablePtr FetchTable() override;

private:
    std::unique_ptr<Private> s;
};

/// The base class of both queries: a statement with named parameters (":name").
class ZEL_DATA_EXPORT TSqlQuery : public TSqlDataSet
{
    Q_OBJECT
    Q_PROPERTY(QString SQL READ SQL WRITE SetSQL)
public:
    QString SQL() const;
    void SetSQL(const QString &sql); ///< Closes, unprepares, and makes Params anew from the ":name" marks.
    void ExecSQL();                  ///< For statements without rows.

protected:
    TSqlQuery(QObject *parent, std::unique_ptr<Private> impl); ///< For the kinds below.
};

/// A query of the database engine (SQLite embedded, PostgreSQL served).
class ZEL_DATA_EXPORT TQuery : public TSqlQuery
{
    Q_OBJECT
public:
    explicit TQuery(QObject *parent = nullptr);
};

/// The same contract over ODBC; SetDatabaseName refuses a connection of another driver.
class ZEL_DATA_EXPORT TADOQuery : public TSqlQuery
{
    Q_OBJECT
public:
    explicit TADOQuery(QObject *parent = nullptr);
};

/// The base class of both stored procedures. In PostgreSQL the name is that of a function or procedure, with
/// or without its schema ("schema.name"). Prepare adds the parameters that are missing; "Result" is the value
/// that a function returns. A run writes the output parameters. Another engine behind ODBC gets the
/// parameters in their order and returns rows; output parameters are not supported there. SQLite has no
/// stored procedures, and every use throws EDatabaseError.
class ZEL_DATA_EXPORT TSqlProcedure : public TSqlDataSet
{
    Q_OBJECT
public:
    /// Runs the procedure and writes the output parameters. A result set, if any, becomes the open rows.
    void ExecProc();

protected:
    TSqlProcedure(QObject *parent, std::unique_ptr<Private> impl); ///< For the kinds below.
};

/// A stored procedure of the database engine.
class ZEL_DATA_EXPORT TStoredProc : public TSqlProcedure
{
    Q_OBJECT
    Q_PROPERTY(QString StoredProcName READ StoredProcName WRITE SetStoredProcName)
public:
    explicit TStoredProc(QObject *parent = nullptr);
    QString StoredProcName() const;
    void SetStoredProcName(const QString &name); ///< Closes and unprepares; Params stay.
};

/// TStoredProc's contract over ODBC.
class ZEL_DATA_EXPORT TADOStoredProc : public TSqlProcedure
{
    Q_OBJECT
    Q_PROPERTY(QString ProcedureName READ ProcedureName WRITE SetProcedureName)
public:
    explicit TADOStoredProc(QObject *parent = nullptr);
    QString ProcedureName() const;
    void SetProcedureName(const QString &name); ///< Closes and unprepares; Params stay.
};
