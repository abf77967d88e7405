#include "data/SqlDataSets.h"

#include "data/Exceptions.h"
#include "data/SqlRoutine_p.h"
#include "data/SqlTypes_p.h"
#include "data/Values_p.h"

#include <QSqlDatabase>
#include <QSqlDriver>
#include <QSqlError>
#include <QSqlField>
#include <QSqlQuery>
#include <QSqlRecord>

#include <algorithm>
#include <optional>
#include <vector>

using namespace Qt::StringLiterals;

using Zel::Routine;
using Zel::Statement;

namespace
{

enum class Engine { SQLite, PostgreSQL, Other };

struct ColumnInfo {
    QString Name;
    std::optional<TFieldType> Type; ///< Nothing for an expression.
};

/// Whether PostgreSQL can prepare a statement with this first word.
bool isPreparable(const QString &command)
{
    return QStringList{u"select"_s, u"insert"_s, u"update"_s, u"delete"_s,
                       u"merge"_s,  u"values"_s, u"with"_s,   u"table"_s}
        .contains(command);
}

} // namespace

struct ZEL_DATA_NO_EXPORT TSqlDataSet::Private {
    Private(bool procedure, bool odbcOnly) : IsProcedure(procedure), OdbcOnly(odbcOnly) {}

    const bool IsProcedure;
    const bool OdbcOnly;
    TSqlDataSet *Self = nullptr;
    QString ConnectionName;
    QString Text; ///< The statement or the name of the procedure.

    // The results of Prepare.
    Engine At = Engine::Other;
    bool Odbc = false;
    bool AsText = false; ///< The engine cannot prepare the statement, so the values are written into it.
    Statement Parsed;
    QList<ColumnInfo> Columns;   ///< Names and types of the columns when the driver reports them wrongly.
    std::optional<Routine> Call; ///< PostgreSQL's routine behind a stored procedure.
    std::optional<QSqlQuery> Prepared;

    [[noreturn]] void Raise(const QString &reason) const
    {
        throw EDatabaseError(TSqlDataSet::tr("Dataset \"%1\": %2").arg(Zel::ShownName(*Self), reason));
    }
    [[noreturn]] void Raise(const QSqlError &error) const
    {
        const QString reason = error.databaseText().trimmed();
        Raise(reason.isEmpty() ? error.text().trimmed() : reason);
    }
    void RequireDriver(const QSqlDatabase &database) const
    {
        if (OdbcOnly && database.isValid() && database.driverName() != u"QODBC")
            Raise(TSqlDataSet::tr("connection \"%1\" is not an ODBC connection.")
                      .arg(database.connectionName()));
    }
    QSqlDatabase Database() const;
    static Engine EngineOf(const QSqlDatabase &database);

    void Prepare();
    void UnPrepare()
    {
        Prepared.reset();
        Call.reset();
        Columns.clear();
        Parsed = {};
    }
    QString MarkText(int mark, const QString &place) const;
    QString MarkedText() const
    {
        return Parsed.Text([this](int mark) { return MarkText(mark, u"?"_s); });
    }
    void CheckWithEngine(const QSqlDatabase &database) const;
    void DescribeColumns(const QSqlDatabase &database);
    Statement CallOf(const QSqlDatabase &database);
    Routine FindRoutine(const QSqlDatabase &database) const;
    QVariant BoundValue(const TParam &param) const;
    bool Execute();
    TTablePtr ReadRows();
    TTablePtr Run(bool onlyResultSets);
    void WriteOutputs(const TTable &rows) const;
};

QSqlDatabase TSqlDataSet::Private::Database() const
{
    if (!QSqlDatabase::contains(ConnectionName))
        Raise(TSqlDataSet::tr("there is no database connection \"%1\".").arg(ConnectionName));
    QSqlDatabase database = QSqlDatabase::database(ConnectionName, false);
    if (!database.isValid())
        Raise(TSqlDataSet::tr("the driver of connection \"%1\" is not loaded.").arg(ConnectionName));
    RequireDriver(database);
    if (!database.isOpen())
        Raise(TSqlDataSet::tr("connection \"%1\" is not open. %2")
                  .arg(ConnectionName, database.lastError().databaseText())
                  .trimmed());
    return database;
}

Engine TSqlDataSet::Private::EngineOf(const QSqlDatabase &database)
{
    switch (database.driver()->dbmsType()) {
    case QSqlDriver::PostgreSQL:
        return Engine::PostgreSQL;
    case QSqlDriver::SQLite:
        return Engine::SQLite;
    case QSqlDriver::UnknownDbms:
        break;
    default:
        return Engine::Other;
    }
    // Qt's ODBC driver does not recognise SQLite. This query also makes SQLite load a schema that another
    // connection has changed; its ODBC driver would describe results by the old schema.
    QSqlQuery question(database);
    return question.exec(u"SELECT name FROM sqlite_master LIMIT 1"_s) ? Engine::SQLite : Engine::Other;
}

void TSqlDataSet::Private::Prepare()
{
    const QSqlDatabase database = Database();
    if (Text.trimmed().isEmpty())
        Raise(IsProcedure ? TSqlDataSet::tr("no stored procedure is named.")
                          : TSqlDataSet::tr("the SQL text is empty."));
    At = EngineOf(database);
    Odbc = database.driverName() == u"QODBC";
    Parsed = IsProcedure ? CallOf(database) : Statement(Text);
    AsText = At == Engine::PostgreSQL && !Odbc && !isPreparable(Parsed.Command());
    if (Odbc)
        CheckWithEngine(database);
    QSqlQuery query(database);
    query.setForwardOnly(true);
    // Decimals are read as text, because a double is not exact.
    if (At == Engine::PostgreSQL)
        query.setNumericalPrecisionPolicy(QSql::HighPrecision);
    if (!AsText && !query.prepare(MarkedText()))
        Raise(query.lastError());
    if (Odbc && At == Engine::SQLite)
        DescribeColumns(database);
    Prepared = std::move(query);
}

/// The mark in the statement for the engine. An amount is bound as decimal text, because a double is not
/// exact. Over ODBC, PostgreSQL takes such a parameter for a text, so the statement has to convert it.
QString TSqlDataSet::Private::MarkText(int mark, const QString &place) const
{
    const TParam *param = Self->Params().FindParam(Parsed.Marks[mark]);
    const bool isAmount = param && (param->DataType == TParamDataType::Currency ||
                                    param->Value().metaType() == QMetaType::fromType<Currency>());
    const bool convert = At == Engine::PostgreSQL && Odbc && !IsProcedure && isAmount;
    return convert ? u"CAST(%1 AS numeric)"_s.arg(place) : place;
}

/// Lets the engine check the statement, because its ODBC driver may prepare it without a check.
void TSqlDataSet::Private::CheckWithEngine(const QSqlDatabase &database) const
{
    const QString command = Parsed.Command();
    QString question;
    // SQLite may run a pragma when it compiles the pragma.
    if (At == Engine::SQLite && command != u"pragma" && command != u"explain")
        question = u"EXPLAIN "_s + Parsed.Text([](int) { return u"NULL"_s; });
    if (At == Engine::PostgreSQL && isPreparable(command))
        question = u"PREPARE zel_check AS "_s + Parsed.Text([this](int mark) {
            // All marks of one parameter have the same number, so that PostgreSQL gives them one type.
            return MarkText(mark, u'$' + QString::number(Parsed.Marks.indexOf(Parsed.Marks[mark]) + 1));
        });
    QSqlQuery check(database);
    if (!question.isEmpty() && !check.exec(question))
        Raise(check.lastError());
    if (At == Engine::PostgreSQL && !question.isEmpty())
        check.exec(u"DEALLOCATE zel_check"_s);
}

/// SQLite's ODBC driver cuts column names at a point and reports some decimals as texts. A temporary view of
/// the same statement has the right names and the declared types.
void TSqlDataSet::Private::DescribeColumns(const QSqlDatabase &database)
{
    if (!QStringList{u"select"_s, u"values"_s, u"with"_s}.contains(Parsed.Command()))
        return;
    QSqlQuery query(database);
    const QString drop = u"DROP VIEW IF EXISTS temp.zel_columns"_s;
    query.exec(drop);
    if (!query.exec(u"CREATE TEMP VIEW zel_columns AS "_s + Parsed.Text([](int) { return u"NULL"_s; })))
        return;
    query.exec(u"SELECT name, type FROM pragma_table_info('zel_columns')"_s);
    while (query.next())
        Columns.append({query.value(0).toString(), Zel::TypeDeclaredAs(query.value(1).toString())});
    query.finish();
    query.exec(drop);
}

Statement TSqlDataSet::Private::CallOf(const QSqlDatabase &database)
{
    TParams &params = Self->Params();
    switch (At) {
    case Engine::SQLite:
        Raise(TSqlDataSet::tr("SQLite has no stored procedures, so \"%1\" cannot be run. Use a query.")
                  .arg(Text));
    case Engine::PostgreSQL:
        Call = FindRoutine(database);
        Call->Complete(params);
        return Call->Call(params);
    case Engine::Other:
        break;
    }
    Statement statement;
    statement.Pieces.last() =
        u"{CALL "_s + database.driver()->escapeIdentifier(Text.trimmed(), QSqlDriver::TableName);
    for (int i = 0; i < params.Count(); ++i) {
        if (params[i].ParamType != TParamType::Input)
            Raise(TSqlDataSet::tr("\"%1\" gives rows only and has no output parameter \"%2\".")
                      .arg(Text, params[i].Name));
        statement.Pieces.last() += i == 0 ? u'(' : u',';
        statement.AddMark(params[i].Name);
    }
    statement.Pieces.last() += params.Count() > 0 ? u")}"_s : u"}"_s;
    return statement;
}

/// Of several routines with the same name, the one that takes exactly the present parameters.
Routine TSqlDataSet::Private::FindRoutine(const QSqlDatabase &database) const
{
    QSqlQuery query(database);
    const QList<Routine> found = Zel::RoutinesNamed(Text.trimmed(), query);
    if (query.lastError().isValid())
        Raise(query.lastError());
    if (found.isEmpty())
        Raise(TSqlDataSet::tr("there is no stored procedure \"%1\".").arg(Text));
    const TParams &params = Self->Params();
    const auto fits = std::find_if(found.begin(), found.end(),
                                   [&](const Routine &routine) { return routine.Takes(params); });
    if (fits == found.end() && found.size() > 1 && params.Count() > 0)
        Raise(TSqlDataSet::tr("no stored procedure \"%1\" has just these parameters.").arg(Text));
    const Routine &routine = fits == found.end() ? found.first() : *fits;
    if (const TParam *unknown = routine.UnknownOf(params))
        Raise(TSqlDataSet::tr("stored procedure \"%1\" has no parameter \"%2\".").arg(Text, unknown->Name));
    for (qsizetype i = 0; i < routine.Arguments.size(); ++i) {
        if (routine.Arguments[i].Name.isEmpty())
            Raise(
                TSqlDataSet::tr("parameter %1 of stored procedure \"%2\" has no name.").arg(i + 1).arg(Text));
    }
    return routine;
}

QVariant TSqlDataSet::Private::BoundValue(const TParam &param) const
{
    QVariant value = param.Value();
    if (!value.isValid())
        return QVariant(QMetaType::fromType<QString>());
    // A zero character would end a statement with its values written into it.
    if (At == Engine::PostgreSQL && value.typeId() == QMetaType::QString &&
        value.toString().contains(QChar(u'\0')))
        Raise(TSqlDataSet::tr("parameter \"%1\" has a zero character in its text.").arg(param.Name));
    if (value.metaType() == QMetaType::fromType<Currency>()) {
        // PostgreSQL reads the decimal text exactly. SQLite stores decimals as doubles.
        const auto amount = value.value<Currency>();
        return At == Engine::PostgreSQL ? QVariant(amount.toString()) : QVariant(amount.toDouble());
    }
    if (value.typeId() != QMetaType::QDateTime)
        return value;
    // Databases store local time. Qt's PostgreSQL driver would convert a moment to universal time, so the
    // moment is bound as text. In the hour that is skipped when summer time begins, a local moment is invalid
    // for Qt and the drivers would bind null: SQLite gets text, and ODBC the same date and time in UTC.
    const QDateTime moment = value.toDateTime();
    if (!Odbc && (At == Engine::PostgreSQL || !moment.isValid()))
        return moment.date().toString(u"yyyy-MM-ddT"_s) + moment.time().toString(u"HH:mm:ss.zzz"_s);
    return moment.isValid() ? moment : QDateTime(moment.date(), moment.time(), Qt::UTC);
}

/// Runs the prepared statement. Returns whether the statement has a result set.
bool TSqlDataSet::Private::Execute()
{
    const QSqlDatabase database = Database();
    // A parameter has become an amount since the statement was prepared, or no longer is one.
    if (!AsText && MarkedText() != Prepared->lastQuery())
        Prepare();
    QVariantList values;
    for (const QString &mark : std::as_const(Parsed.Marks)) {
        const TParam *param = Self->Params().FindParam(mark);
        if (!param)
            Raise(TSqlDataSet::tr("there is no parameter \"%1\".").arg(mark));
        values.append(BoundValue(*param));
    }
    bool done = false;
    if (AsText) {
        done = Prepared->exec(Parsed.Text([&](int mark) {
            QSqlField written(QString(), values[mark].metaType());
            written.setValue(values[mark]);
            // Without the space, a minus sign and a negative number would begin a comment.
            return u' ' + database.driver()->formatValue(written);
        }));
    } else {
        for (int i = 0; i < values.size(); ++i)
            Prepared->bindValue(i, values[i]);
        done = Prepared->exec();
    }
    if (!done)
        Raise(Prepared->lastError());
    return Prepared->isSelect() && Prepared->record().count() > 0;
}

TTablePtr TSqlDataSet::Private::ReadRows()
{
    // In SQLite each value has its own type, so a column's type is only known after the last row.
    const QSqlRecord record = Prepared->record();
    const int count = record.count();
    std::vector<QVariantList> columns(static_cast<std::size_t>(count));
    while (Prepared->next()) {
        for (int i = 0; i < count; ++i)
            columns[static_cast<std::size_t>(i)].append(Zel::PlainValue(Prepared->value(i)));
    }
    if (Prepared->lastError().isValid())
        Raise(Prepared->lastError());

    QList<TFieldDef> defs;
    for (int i = 0; i < count; ++i) {
        QString name = record.fieldName(i);
        std::optional<TFieldType> type;
        if (Columns.size() == count) {
            type = Columns[i].Type;
            // A view adds a number to the second of two equal names ("name:1"); the dataset does not.
            if (!Columns[i].Name.startsWith(name + u':'))
                name = Columns[i].Name;
        } else if (At == Engine::SQLite && !Odbc) {
            type = Zel::TypeOfSqliteColumn(*Prepared, i);
        } else {
            type = Zel::TypeOfField(record.field(i), Odbc);
        }
        defs.append({name, Zel::SettledType(type, columns[static_cast<std::size_t>(i)])});
    }
    TTableBuilder builder(defs);
    const qsizetype rows = columns.empty() ? 0 : columns.front().size();
    builder.Reserve(static_cast<int>(rows));
    for (qsizetype row = 0; row < rows; ++row) {
        for (const QVariantList &column : columns)
            builder.Append(column[row]);
        builder.EndRow();
    }
    return builder.Finish();
}

/// Prepares the statement if necessary, runs it and reads the rows. Returns nullptr when there is no result
/// set. With @p onlyResultSets, the row with a routine's outputs or its returned value is no result set.
TTablePtr TSqlDataSet::Private::Run(bool onlyResultSets)
{
    const bool keep = Prepared.has_value();
    try {
        if (!keep)
            Prepare();
        TTablePtr rows;
        if (Execute())
            rows = ReadRows();
        Prepared->finish();
        if (rows)
            WriteOutputs(*rows);
        if (Call && !Call->ReturnsSet && (onlyResultSets || Call->ReturnType == u"void"))
            rows.reset();
        if (!keep)
            UnPrepare();
        return rows;
    } catch (...) {
        // After an error the statement is prepared again before the next run.
        UnPrepare();
        throw;
    }
}

void TSqlDataSet::Private::WriteOutputs(const TTable &rows) const
{
    TParams &params = Self->Params();
    for (int i = 0; Call && i < params.Count(); ++i) {
        TParam &param = params[i];
        if (param.ParamType == TParamType::Input)
            continue;
        const int column = param.ParamType == TParamType::Result ? 0 : rows.IndexOf(param.Name);
        if (rows.RowCount() == 0 || column < 0 || column >= rows.ColumnCount())
            param.Clear();
        else
            param.SetValue(rows.Value(0, column));
    }
}

// --- TSqlDataSet

TSqlDataSet::TSqlDataSet(QObject *parent, std::unique_ptr<Private> impl)
    : TDataSet(parent), s(std::move(impl))
{
    s->Self = this;
}

TSqlDataSet::~TSqlDataSet() = default;

QString TSqlDataSet::DatabaseName() const
{
    return s->ConnectionName;
}

void TSqlDataSet::SetDatabaseName(const QString &connectionName)
{
    if (connectionName == s->ConnectionName)
        return;
    if (QSqlDatabase::contains(connectionName))
        s->RequireDriver(QSqlDatabase::database(connectionName, false));
    Close();
    UnPrepare();
    s->ConnectionName = connectionName;
}

bool TSqlDataSet::Prepared() const
{
    return s->Prepared.has_value();
}

void TSqlDataSet::SetPrepared(bool prepared)
{
    if (prepared)
        Prepare();
    else
        UnPrepare();
}

void TSqlDataSet::Prepare()
{
    if (!s->Prepared)
        s->Prepare();
}

void TSqlDataSet::UnPrepare()
{
    s->UnPrepare();
}

bool TSqlDataSet::Reopen()
{
    Close();
    Prepare();
    if (s->IsProcedure)
        Execute();
    else
        Open();
    return true;
}

void TSqlDataSet::Release()
{
    if (!s->IsProcedure)
        Close();
    UnPrepare();
}

QString TSqlDataSet::CommandText() const
{
    return s->Text;
}

void TSqlDataSet::SetCommandText(const QString &text)
{
    Close();
    UnPrepare();
    s->Text = text;
    if (s->IsProcedure)
        return;
    Params().Clear();
    for (const QString &mark : Statement(text).Marks) {
        if (!Params().FindParam(mark))
            Params().Add(mark);
    }
}

void TSqlDataSet::Execute()
{
    TTablePtr rows = s->Run(true);
    if (s->IsProcedure && rows)
        InstallTable(std::move(rows));
}

TTablePtr TSqlDataSet::FetchTable()
{
    TTablePtr rows = s->Run(false);
    if (!rows)
        s->Raise(TSqlDataSet::tr("the engine gives no rows."));
    return rows;
}

// --- the four kinds

TSqlQuery::TSqlQuery(QObject *parent, std::unique_ptr<Private> impl) : TSqlDataSet(parent, std::move(impl)) {}

QString TSqlQuery::SQL() const
{
    return CommandText();
}

void TSqlQuery::SetSQL(const QString &sql)
{
    SetCommandText(sql);
}

void TSqlQuery::ExecSQL()
{
    Execute();
}

TQuery::TQuery(QObject *parent) : TSqlQuery(parent, std::make_unique<Private>(false, false)) {}

TADOQuery::TADOQuery(QObject *parent) : TSqlQuery(parent, std::make_unique<Private>(false, true)) {}

TSqlProcedure::TSqlProcedure(QObject *parent, std::unique_ptr<Private> impl)
    : TSqlDataSet(parent, std::move(impl))
{
}

void TSqlProcedure::ExecProc()
{
    Execute();
}

TStoredProc::TStoredProc(QObject *parent) : TSqlProcedure(parent, std::make_unique<Private>(true, false)) {}

QString TStoredProc::StoredProcName() const
{
    return CommandText();
}

void TStoredProc::SetStoredProcName(const QString &name)
{
    SetCommandText(name);
}

TADOStoredProc::TADOStoredProc(QObject *parent) : TSqlProcedure(parent, std::make_unique<Private>(true, true))
{
}

QString TADOStoredProc::ProcedureName() const
{
    return CommandText();
}

void TADOStoredProc::SetProcedureName(const QString &name)
{
    SetCommandText(name);
}
