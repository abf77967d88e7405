#pragma once

#include "data/DataSet.h"

/// What the four server-side kinds share: a connection by its Qt SQL connection name, preparing and running.
/// An error of the engine raises EDatabaseError that names the dataset and gives the engine's reason; a
/// statement that the engine refused is compiled anew the next time.
///
/// Column types: by the type the engine declares. A decimal column is Currency when every value has at most
/// four decimals and fits, else Float. SQLite leaves each value a type of its own, so there a column whose
/// values do not fit its declared type, and one without a declared type (an expression), takes the narrowest
/// type that shows all its values as they are, text at the last.
///
/// Qt's ODBC driver logs as well what the engine refuses, in messages that begin with "QODBC". They go where
/// the host's own messages go; which ones are of interest is for the host's message handler to say.
///
/// A prepared dataset keeps its statement at the engine: unprepare it before its connection is removed.
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

/// What both kinds of query share: a statement with named parameters (":name").
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

/// What both kinds of stored procedure share. On PostgreSQL a function or procedure, with its schema's name
/// and a point in front where it has one: Prepare adds the parameters the owner has not given, "Result" being
/// what a function returns, and running writes the output parameters back. On SQLite, which has no stored
/// procedures, a view or table-valued function of that name, each input parameter selecting the rows whose
/// column of the same name equals it; a null one equals none.
class ZEL_DATA_EXPORT TSqlProcedure : public TSqlDataSet
{
    Q_OBJECT
public:
    /// Runs it: output parameters are read back, and a result set, when there is one, becomes the open rows.
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
