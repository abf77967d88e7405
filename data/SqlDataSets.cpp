#include "data/SqlDataSets.h"

#include "data/Exceptions.h"
#include "data/Values_p.h"

#include <QCoreApplication>
#include <QSqlDatabase>
#include <QSqlDriver>
#include <QSqlError>
#include <QSqlField>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QSqlResult>

#include <sqlite3.h>

#include <algorithm>
#include <cstring>
#include <initializer_list>
#include <limits>
#include <optional>
#include <vector>

using namespace Qt::StringLiterals;

namespace
{

enum class Engine { SQLite, PostgreSQL, Other };

QString said(const char *message)
{
    return QCoreApplication::translate("TSqlDataSet", message);
}

// ---- statements with named parameters

/// A statement cut at its parameter marks: piece, mark, piece, mark, ... piece. Comments are left out, since
/// the drivers would look for marks and quotes in them.
struct Statement {
    QStringList Pieces{QString()};
    QStringList Marks; ///< parameter names in the order of their marks, repeated ones included

    void AddMark(const QString &name)
    {
        Marks.append(name);
        Pieces.append(QString());
    }
    template <typename Mark> QString Text(Mark mark) const
    {
        QString text = Pieces.first();
        for (int i = 0; i < Marks.size(); ++i)
            text += mark(i) + Pieces[i + 1];
        return text;
    }
    QString Text() const
    {
        return Text([](int) { return u"?"_s; });
    }
};

bool startsName(QChar c)
{
    return c == u'_' || c.isLetter();
}

bool continuesName(QChar c)
{
    return c == u'_' || c.isLetterOrNumber();
}

/// The place behind the quoted run that starts at @p start; the end of the text when it is not closed, so
/// that the engine says what is wrong.
qsizetype behindQuoted(QStringView sql, qsizetype start, bool backslashes)
{
    const QChar quote = sql[start];
    qsizetype at = start + 1;
    for (; at < sql.size(); ++at) {
        if (backslashes && sql[at] == u'\\')
            ++at;
        else if (sql[at] == quote)
            return at + 1;
    }
    return sql.size();
}

qsizetype behindLineComment(QStringView sql, qsizetype start)
{
    const qsizetype end = sql.indexOf(u'\n', start);
    return end < 0 ? sql.size() : end;
}

qsizetype behindBlockComment(QStringView sql, qsizetype start)
{
    const qsizetype end = sql.indexOf(u"*/", start + 2);
    return end < 0 ? sql.size() : end + 2;
}

/// The place behind a "$tag$ ... $tag$" text; @p start itself when none starts there.
qsizetype behindDollarText(QStringView sql, qsizetype start)
{
    qsizetype at = start + 1;
    if (at < sql.size() && startsName(sql[at])) {
        while (at < sql.size() && continuesName(sql[at]))
            ++at;
    }
    if (at >= sql.size() || sql[at] != u'$')
        return start;
    const QStringView tag = sql.sliced(start, at + 1 - start);
    const qsizetype end = sql.indexOf(tag, at + 1);
    return end < 0 ? sql.size() : end + tag.size();
}

Statement parseStatement(const QString &text)
{
    Statement statement;
    const QStringView sql(text);
    qsizetype at = 0;
    const auto copyTo = [&](qsizetype end) {
        statement.Pieces.last() += sql.sliced(at, end - at);
        at = end;
    };
    while (at < sql.size()) {
        const QChar c = sql[at];
        const QStringView rest = sql.sliced(at);
        const bool afterName = at > 0 && continuesName(sql[at - 1]);
        if (c == u'\'') {
            // PostgreSQL's E'...' is the one form in which a backslash keeps the quote that follows.
            const bool escapes = afterName && (sql[at - 1] == u'E' || sql[at - 1] == u'e') &&
                                 (at < 2 || !continuesName(sql[at - 2]));
            copyTo(behindQuoted(sql, at, escapes));
        } else if (c == u'"') {
            copyTo(behindQuoted(sql, at, false));
        } else if (rest.startsWith(u"--")) {
            at = behindLineComment(sql, at);
            statement.Pieces.last() += u' ';
        } else if (rest.startsWith(u"/*")) {
            at = behindBlockComment(sql, at);
            statement.Pieces.last() += u' ';
        } else if (c == u'$' && !afterName) {
            copyTo(std::max(behindDollarText(sql, at), at + 1));
        } else if (rest.startsWith(u"::")) {
            copyTo(at + 2);
        } else if (c == u':' && rest.size() > 1 && startsName(rest[1])) {
            qsizetype end = at + 1;
            while (end < sql.size() && continuesName(sql[end]))
                ++end;
            statement.AddMark(sql.sliced(at + 1, end - at - 1).toString());
            at = end;
        } else {
            copyTo(at + 1);
        }
    }
    return statement;
}

/// The first word of a statement in small letters, brackets in front left out.
QString commandWord(const QString &text)
{
    qsizetype start = 0;
    while (start < text.size() && (text[start].isSpace() || text[start] == u'('))
        ++start;
    qsizetype end = start;
    while (end < text.size() && text[end].isLetter())
        ++end;
    return text.sliced(start, end - start).toLower();
}

bool isOneOf(const QString &word, std::initializer_list<const char *> words)
{
    return std::any_of(words.begin(), words.end(),
                       [&](const char *known) { return word == QLatin1StringView(known); });
}

/// Whether PostgreSQL prepares a statement with that first word; all others it only runs.
bool isPreparable(const QString &word)
{
    return isOneOf(word, {"select", "insert", "update", "delete", "merge", "values", "with", "table"});
}

QString quotedName(const QString &name)
{
    QString quoted = name;
    quoted.replace(u'"', u"\"\""_s);
    return u'"' + quoted + u'"';
}

// ---- column types

/// The amount of @p value when four decimals hold it without loss.
std::optional<Currency> exactAmount(const QVariant &value)
{
    if (value.typeId() == QMetaType::QString) {
        QString text = value.toString();
        const qsizetype point = text.indexOf(u'.');
        // Only zeros may follow the fourth decimal.
        while (point >= 0 && text.size() > point + 5 && text.endsWith(u'0'))
            text.chop(1);
        if (point >= 0 && text.size() > point + 5)
            return std::nullopt;
        return Zel::ToCurrency(text);
    }
    const std::optional<Currency> amount = Zel::ToCurrency(value);
    if (amount && value.typeId() == QMetaType::Double && amount->toDouble() != value.toDouble())
        return std::nullopt;
    return amount;
}

bool isExactInDouble(const QVariant &value)
{
    constexpr qint64 limit = qint64{1} << std::numeric_limits<double>::digits;
    if (value.typeId() != QMetaType::LongLong)
        return true;
    return value.toLongLong() >= -limit && value.toLongLong() <= limit;
}

/// Whether a column of that type shows @p value, which is not null, as it is.
bool fitsType(TFieldType type, const QVariant &value)
{
    const bool isText = value.typeId() == QMetaType::QString;
    switch (type) {
    case TFieldType::Integer: {
        const std::optional<qint64> number = Zel::ToInteger(value);
        return number && *number >= std::numeric_limits<qint32>::min() &&
               *number <= std::numeric_limits<qint32>::max();
    }
    case TFieldType::LargeInt:
        return Zel::ToInteger(value).has_value();
    case TFieldType::Float:
        return Zel::ToFloat(value).has_value() && isExactInDouble(value);
    case TFieldType::Currency:
        return exactAmount(value).has_value();
    case TFieldType::Boolean: {
        if (isText || value.typeId() == QMetaType::Bool)
            return Zel::ToBoolean(value).has_value();
        const std::optional<qint64> number = Zel::ToInteger(value);
        return number && (*number == 0 || *number == 1);
    }
    case TFieldType::Date: {
        if (value.typeId() == QMetaType::QDateTime)
            return value.toDateTime().time() == QTime(0, 0);
        return Zel::ToDate(value).has_value() && (!isText || value.toString().size() == 10);
    }
    case TFieldType::DateTime:
        return Zel::ToMoment(value).has_value();
    case TFieldType::String:
        break;
    }
    return true;
}

/// The next type to try when a column holds a value that its declared type does not show as it is.
TFieldType widerType(TFieldType type)
{
    switch (type) {
    case TFieldType::Boolean:
        return TFieldType::Integer;
    case TFieldType::Integer:
        return TFieldType::LargeInt;
    case TFieldType::LargeInt:
    case TFieldType::Currency:
        return TFieldType::Float;
    case TFieldType::Date:
        return TFieldType::DateTime;
    case TFieldType::Float:
    case TFieldType::DateTime:
    case TFieldType::String:
        break;
    }
    return TFieldType::String;
}

/// The type of a column whose values are of one of the toolkit's kinds.
TFieldType typeOfKind(int kind)
{
    switch (kind) {
    case QMetaType::Bool:
        return TFieldType::Boolean;
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Short:
        return TFieldType::Integer;
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
        return TFieldType::LargeInt;
    case QMetaType::Double:
    case QMetaType::Float:
        return TFieldType::Float;
    case QMetaType::QDate:
        return TFieldType::Date;
    case QMetaType::QDateTime:
        return TFieldType::DateTime;
    default:
        return TFieldType::String;
    }
}

/// What a column without a declared type starts from: the kind of its values.
TFieldType typeOfValues(const QVariantList &values)
{
    std::optional<TFieldType> type;
    for (const QVariant &value : values) {
        if (Zel::IsNullValue(value))
            continue;
        const TFieldType kind = typeOfKind(value.typeId());
        if (kind == TFieldType::Float)
            type = kind;
        else if (kind != TFieldType::Integer && kind != TFieldType::LargeInt)
            return kind;
        else if (!type)
            type = TFieldType::Integer;
    }
    return type.value_or(TFieldType::String);
}

TFieldType settledType(std::optional<TFieldType> declared, const QVariantList &values)
{
    TFieldType type = declared ? *declared : typeOfValues(values);
    for (const QVariant &value : values) {
        if (Zel::IsNullValue(value))
            continue;
        while (type != TFieldType::String && !fitsType(type, value))
            type = widerType(type);
    }
    // A wider type must also show the rows that the narrower one had passed.
    for (const QVariant &value : values) {
        if (!Zel::IsNullValue(value) && !fitsType(type, value))
            return TFieldType::String;
    }
    return type;
}

/// By SQLite's declared type, as written in the table ("DECIMAL(19,4)"); nothing when there is none.
std::optional<TFieldType> typeDeclaredAs(const QString &declared)
{
    const QString name = declared.section(u'(', 0, 0).trimmed().toLower();
    if (name.isEmpty())
        return std::nullopt;
    if (name == u"bigint" || name == u"int8" || name == u"unsigned big int")
        return TFieldType::LargeInt;
    if (name.contains(u"bool"))
        return TFieldType::Boolean;
    if (name.contains(u"int"))
        return TFieldType::Integer;
    if (name == u"numeric" || name == u"decimal" || name == u"money" || name == u"currency")
        return TFieldType::Currency;
    if (name.contains(u"real") || name.contains(u"floa") || name.contains(u"doub"))
        return TFieldType::Float;
    if (name == u"date")
        return TFieldType::Date;
    if (name.startsWith(u"datetime") || name.startsWith(u"timestamp"))
        return TFieldType::DateTime;
    return TFieldType::String;
}

// The type numbers by which the drivers name what their meta types do not tell apart.
constexpr int PostgresNumeric = 1700;
constexpr int OdbcNumeric = 2;
constexpr int OdbcDecimal = 3;
constexpr int OdbcBit = -7;

std::optional<TFieldType> typeOfField(const QSqlField &field, bool odbc)
{
    const int sqlType = field.typeID();
    if (odbc ? sqlType == OdbcNumeric || sqlType == OdbcDecimal : sqlType == PostgresNumeric)
        return TFieldType::Currency;
    if (odbc && sqlType == OdbcBit)
        return TFieldType::Boolean;
    return typeOfKind(field.metaType().id());
}

/// The declared types of the columns of an SQLite result, from the statement behind it.
std::optional<TFieldType> typeOfSqliteColumn(const QSqlQuery &query, int column)
{
    const QVariant handle = query.result()->handle();
    if (std::strcmp(handle.typeName(), "sqlite3_stmt*") != 0)
        return std::nullopt;
    sqlite3_stmt *statement = *static_cast<sqlite3_stmt *const *>(handle.constData());
    return typeDeclaredAs(QString::fromUtf8(sqlite3_column_decltype(statement, column)));
}

/// A value as the drivers' differences leave it: bytes and times of day are text.
QVariant plainValue(const QVariant &value)
{
    if (value.isNull())
        return {};
    switch (value.typeId()) {
    case QMetaType::QByteArray:
        return QString::fromUtf8(value.toByteArray());
    case QMetaType::QTime:
        return value.toTime().toString(Qt::ISODateWithMs);
    default:
        return value;
    }
}

// ---- what preparing finds out: columns, and procedures of PostgreSQL

struct ColumnInfo {
    QString Name;
    std::optional<TFieldType> Type; ///< nothing for an expression
};

struct Argument {
    QString Name;
    QString Type; ///< as SQL writes it
    QChar Mode;   ///< i in, o out, b both, v variadic, t table column
    bool HasDefault = false;

    bool IsInput() const { return Mode == u'i' || Mode == u'b' || Mode == u'v'; }
    bool IsOutput() const { return Mode == u'o' || Mode == u'b'; }
};

struct Routine {
    QString CallName; ///< schema and name, quoted
    bool IsProcedure = false;
    bool ReturnsSet = false;
    bool ReturnsScalar = false;
    QString ReturnType;
    QList<Argument> Arguments;
};

TParamDataType paramTypeOf(const QString &sqlType)
{
    if (sqlType == u"integer" || sqlType == u"smallint" || sqlType == u"bigint")
        return TParamDataType::Integer;
    if (sqlType == u"numeric")
        return TParamDataType::Currency;
    if (sqlType == u"double precision" || sqlType == u"real")
        return TParamDataType::Float;
    if (sqlType == u"boolean")
        return TParamDataType::Boolean;
    if (sqlType == u"date")
        return TParamDataType::Date;
    if (sqlType.startsWith(u"timestamp"))
        return TParamDataType::DateTime;
    return TParamDataType::String;
}

} // namespace

struct ZEL_DATA_NO_EXPORT TSqlDataSet::Private {
    Private(bool procedure, bool odbcOnly) : IsProcedure(procedure), OdbcOnly(odbcOnly) {}

    const bool IsProcedure;
    const bool OdbcOnly;
    QString ConnectionName;
    QString Text; ///< the statement or the procedure's name

    // What preparing made.
    Engine At = Engine::Other;
    bool AsText = false; ///< The engine does not prepare the statement: it is run with its values written in.
    Statement Parsed;
    QStringList Amounts;         ///< the marks that the statement was prepared to take amounts for
    QList<ColumnInfo> Columns;   ///< as SQLite names and declares them; empty where the driver says it itself
    std::optional<Routine> Call; ///< the routine of PostgreSQL behind a procedure
    std::unique_ptr<QSqlQuery> Prepared;

    [[noreturn]] void Raise(const TSqlDataSet &self, const QString &reason) const
    {
        throw EDatabaseError(
            said(QT_TRANSLATE_NOOP("TSqlDataSet", "Dataset \"%1\": %2")).arg(self.DisplayName(), reason));
    }
    [[noreturn]] void Raise(const TSqlDataSet &self, const QSqlError &error) const
    {
        const QString reason = error.databaseText().trimmed();
        Raise(self, reason.isEmpty() ? error.text().trimmed() : reason);
    }
    void RequireDriver(const TSqlDataSet &self, const QSqlDatabase &database) const
    {
        if (OdbcOnly && database.isValid() && database.driverName() != u"QODBC")
            Raise(self, said(QT_TRANSLATE_NOOP("TSqlDataSet", "connection \"%1\" is not an ODBC connection."))
                            .arg(database.connectionName()));
    }
    QSqlDatabase Database(const TSqlDataSet &self) const
    {
        if (!QSqlDatabase::contains(ConnectionName))
            Raise(self, said(QT_TRANSLATE_NOOP("TSqlDataSet", "there is no database connection \"%1\"."))
                            .arg(ConnectionName));
        QSqlDatabase database = QSqlDatabase::database(ConnectionName, false);
        if (!database.isValid())
            Raise(self,
                  said(QT_TRANSLATE_NOOP("TSqlDataSet", "the driver of connection \"%1\" is not loaded."))
                      .arg(ConnectionName));
        RequireDriver(self, database);
        if (!database.isOpen()) {
            const QString reason = database.lastError().databaseText().trimmed();
            Raise(self, said(QT_TRANSLATE_NOOP("TSqlDataSet", "connection \"%1\" is not open. %2"))
                            .arg(ConnectionName, reason)
                            .trimmed());
        }
        return database;
    }
    static bool IsOdbc(const QSqlDatabase &database) { return database.driverName() == u"QODBC"; }
    static Engine EngineOf(const QSqlDatabase &database)
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
        // Qt's ODBC driver does not know SQLite by name. Reading its catalogue also lets SQLite notice what
        // others have changed there, which its ODBC driver would miss when it describes a result.
        QSqlQuery question(database);
        return question.exec(u"SELECT name FROM sqlite_master LIMIT 1"_s) ? Engine::SQLite : Engine::Other;
    }

    void UnPrepare()
    {
        Prepared.reset();
        Call.reset();
        Columns.clear();
        Parsed = {};
    }
    void Prepare(TSqlDataSet &self);
    QStringList AmountMarks(const TSqlDataSet &self, const QSqlDatabase &database) const;
    QString MarkText(int mark, const QString &place) const;
    void CheckWithServer(const TSqlDataSet &self, const QSqlDatabase &database) const;
    void DescribeColumns(const QSqlDatabase &database);
    void MakeViewStatement(const TSqlDataSet &self);
    void MakeCall(TSqlDataSet &self, const QSqlDatabase &database);
    Routine FindRoutine(const TSqlDataSet &self, const QSqlDatabase &database) const;
    void CompleteParams(TSqlDataSet &self, const Routine &routine) const;
    QVariant BoundValue(const TSqlDataSet &self, const TParam &param, const QSqlDatabase &database) const;
    bool Execute(TSqlDataSet &self);
    TTablePtr ReadRows(TSqlDataSet &self) const;
    TTablePtr Run(TSqlDataSet &self, bool onlyResultSets);
    void WriteOutputs(TSqlDataSet &self, const TTable &rows) const;
};

void TSqlDataSet::Private::Prepare(TSqlDataSet &self)
{
    const QSqlDatabase database = Database(self);
    if (Text.trimmed().isEmpty())
        Raise(self, IsProcedure ? said(QT_TRANSLATE_NOOP("TSqlDataSet", "no stored procedure is named."))
                                : said(QT_TRANSLATE_NOOP("TSqlDataSet", "the SQL text is empty.")));
    At = EngineOf(database);
    if (!IsProcedure)
        Parsed = parseStatement(Text);
    else if (At == Engine::PostgreSQL)
        MakeCall(self, database);
    else
        MakeViewStatement(self);
    Amounts = AmountMarks(self, database);
    AsText = At == Engine::PostgreSQL && !IsOdbc(database) && !isPreparable(commandWord(Parsed.Text()));
    auto query = std::make_unique<QSqlQuery>(database);
    query->setForwardOnly(true);
    // Amounts come as their decimal text, not through a double.
    if (At == Engine::PostgreSQL)
        query->setNumericalPrecisionPolicy(QSql::HighPrecision);
    if (IsOdbc(database))
        CheckWithServer(self, database);
    const QString text = Parsed.Text([this](int mark) { return MarkText(mark, u"?"_s); });
    if (!AsText && !query->prepare(text))
        Raise(self, query->lastError());
    if (IsOdbc(database) && At == Engine::SQLite)
        DescribeColumns(database);
    Prepared = std::move(query);
}

// Through ODBC a text has a text's type, and a double is not the amount when it is compared. So an amount
// goes as its decimal text, and PostgreSQL is told in the statement that it is a number.
QStringList TSqlDataSet::Private::AmountMarks(const TSqlDataSet &self, const QSqlDatabase &database) const
{
    QStringList amounts;
    if (At != Engine::PostgreSQL || !IsOdbc(database) || IsProcedure)
        return amounts;
    for (const QString &mark : Parsed.Marks) {
        const TParam *param = self.Params().FindParam(mark);
        if (param && (param->DataType == TParamDataType::Currency ||
                      param->Value().metaType() == QMetaType::fromType<Currency>()))
            amounts.append(mark);
    }
    return amounts;
}

QString TSqlDataSet::Private::MarkText(int mark, const QString &place) const
{
    return Amounts.contains(Parsed.Marks[mark]) ? u"CAST(%1 AS numeric)"_s.arg(place) : place;
}

// The ODBC drivers prepare without asking the engine or ask only about some statements, so it is asked here.
void TSqlDataSet::Private::CheckWithServer(const TSqlDataSet &self, const QSqlDatabase &database) const
{
    const QString word = commandWord(Parsed.Text());
    QSqlQuery check(database);
    if (At == Engine::SQLite) {
        // A pragma may do its work already when it is compiled.
        const QString text = Parsed.Text([](int) { return u"NULL"_s; });
        if (!isOneOf(word, {"pragma", "explain"}) && !check.exec(u"EXPLAIN "_s + text))
            Raise(self, check.lastError());
        return;
    }
    if (At != Engine::PostgreSQL || !isPreparable(word))
        return;
    const QString text = Parsed.Text([this](int mark) {
        // One parameter keeps one number, as it has one type.
        return MarkText(mark, u'$' + QString::number(Parsed.Marks.indexOf(Parsed.Marks[mark]) + 1));
    });
    if (!check.exec(u"PREPARE zel_check AS "_s + text))
        Raise(self, check.lastError());
    check.exec(u"DEALLOCATE zel_check"_s);
}

// SQLite's ODBC driver cuts a column's name at its point and tells decimals and texts not always apart. A
// view of the same statement keeps the names, and the declared types that the values are read by.
void TSqlDataSet::Private::DescribeColumns(const QSqlDatabase &database)
{
    if (!isOneOf(commandWord(Parsed.Text()), {"select", "values", "with"}))
        return;
    QSqlQuery query(database);
    const QString drop = u"DROP VIEW IF EXISTS temp.zel_columns"_s;
    query.exec(drop);
    const QString text = Parsed.Text([](int) { return u"NULL"_s; });
    if (!query.exec(u"CREATE TEMP VIEW zel_columns AS "_s + text))
        return;
    if (query.exec(u"SELECT name, type FROM pragma_table_info('zel_columns')"_s)) {
        while (query.next())
            Columns.append({query.value(0).toString(), typeDeclaredAs(query.value(1).toString())});
    }
    query.finish();
    query.exec(drop);
}

void TSqlDataSet::Private::MakeViewStatement(const TSqlDataSet &self)
{
    Statement statement;
    // Named with its source, a column that is not there is an error; SQLite would take the bare name for a
    // text.
    statement.Pieces.last() = u"SELECT * FROM "_s + quotedName(Text.trimmed()) + u" AS source"_s;
    const TParams &params = self.Params();
    for (int i = 0; i < params.Count(); ++i) {
        if (params[i].ParamType != TParamType::Input)
            Raise(self, said(QT_TRANSLATE_NOOP("TSqlDataSet",
                                               "\"%1\" gives rows only and has no output parameter \"%2\"."))
                            .arg(Text, params[i].Name));
        statement.Pieces.last() +=
            QLatin1String(i == 0 ? " WHERE source." : " AND source.") + quotedName(params[i].Name) + u" = "_s;
        statement.AddMark(params[i].Name);
    }
    Parsed = std::move(statement);
}

Routine TSqlDataSet::Private::FindRoutine(const TSqlDataSet &self, const QSqlDatabase &database) const
{
    const QString schema = Text.contains(u'.') ? Text.section(u'.', 0, 0).trimmed() : QString();
    const QString name = Text.contains(u'.') ? Text.section(u'.', 1).trimmed() : Text.trimmed();
    QSqlQuery query(database);
    query.setForwardOnly(true);
    const bool asked = query.prepare(
        u"SELECT CAST(p.oid AS bigint), quote_ident(n.nspname) || '.' || quote_ident(p.proname),"
        " CAST(p.prokind AS text), CAST(p.proretset AS integer), format_type(p.prorettype, NULL),"
        " CAST(coalesce(p.proargmodes[a.place], 'i') AS text), coalesce(p.proargnames[a.place], ''),"
        " format_type(a.argtype, NULL), CAST(p.pronargs - p.pronargdefaults AS integer)"
        " FROM pg_catalog.pg_proc p JOIN pg_catalog.pg_namespace n ON n.oid = p.pronamespace"
        " LEFT JOIN LATERAL unnest(coalesce(p.proallargtypes, CAST(p.proargtypes AS oid[])))"
        " WITH ORDINALITY AS a(argtype, place) ON true"
        " WHERE lower(p.proname) = lower(CAST(? AS text)) AND p.prokind IN ('f', 'p')"
        " AND (lower(n.nspname) = lower(CAST(? AS text))"
        " OR (CAST(? AS text) = '' AND pg_function_is_visible(p.oid)))"
        " ORDER BY p.oid, a.place"_s);
    query.addBindValue(name);
    query.addBindValue(schema.isNull() ? u""_s : schema);
    query.addBindValue(schema.isNull() ? u""_s : schema);
    if (!asked || !query.exec())
        Raise(self, query.lastError());

    QList<Routine> found;
    qlonglong last = -1;
    int inputs = 0;
    while (query.next()) {
        if (query.value(0).toLongLong() != last) {
            last = query.value(0).toLongLong();
            inputs = 0;
            Routine routine;
            routine.CallName = query.value(1).toString();
            routine.IsProcedure = query.value(2).toString() == u"p";
            routine.ReturnsSet = query.value(3).toInt() != 0;
            routine.ReturnType = query.value(4).toString();
            routine.ReturnsScalar = !routine.IsProcedure && !routine.ReturnsSet &&
                                    routine.ReturnType != u"void" && routine.ReturnType != u"record";
            found.append(routine);
        }
        if (query.value(7).isNull())
            continue;
        Argument argument{query.value(6).toString(), query.value(7).toString(),
                          query.value(5).toString().at(0)};
        if (argument.IsInput())
            argument.HasDefault = inputs++ >= query.value(8).toInt();
        if (argument.IsOutput())
            found.last().ReturnsScalar = false;
        found.last().Arguments.append(argument);
    }
    if (found.isEmpty())
        Raise(self, said(QT_TRANSLATE_NOOP("TSqlDataSet", "there is no stored procedure \"%1\".")).arg(Text));

    // Of several with one name the one is meant that has every parameter and needs no other.
    const TParams &params = self.Params();
    for (const Routine &routine : found) {
        int known = 0;
        bool complete = true;
        for (const Argument &argument : routine.Arguments) {
            const bool given = params.FindParam(argument.Name) != nullptr;
            known += given ? 1 : 0;
            complete = complete && (given || !argument.IsInput() || argument.HasDefault);
        }
        int wanted = 0;
        for (int i = 0; i < params.Count(); ++i)
            wanted += params[i].ParamType == TParamType::Result ? 0 : 1;
        if (complete && known == wanted)
            return routine;
    }
    if (found.size() > 1 && params.Count() > 0)
        Raise(self,
              said(QT_TRANSLATE_NOOP("TSqlDataSet", "no stored procedure \"%1\" has just these parameters."))
                  .arg(Text));
    return found.first();
}

/// Adds what the routine has and the owner has not given, so that values can be set and read by name.
void TSqlDataSet::Private::CompleteParams(TSqlDataSet &self, const Routine &routine) const
{
    TParams &params = self.Params();
    bool hasResult = false;
    for (int i = 0; i < params.Count(); ++i) {
        if (params[i].ParamType == TParamType::Result) {
            hasResult = true;
            continue;
        }
        const bool known =
            std::any_of(routine.Arguments.begin(), routine.Arguments.end(), [&](const Argument &argument) {
                return argument.Name.compare(params[i].Name, Qt::CaseInsensitive) == 0;
            });
        if (!known)
            Raise(self,
                  said(QT_TRANSLATE_NOOP("TSqlDataSet", "stored procedure \"%1\" has no parameter \"%2\"."))
                      .arg(Text, params[i].Name));
    }
    int place = 0;
    for (const Argument &argument : routine.Arguments) {
        ++place;
        if (argument.Mode == u't' || argument.HasDefault || params.FindParam(argument.Name))
            continue;
        if (argument.Name.isEmpty())
            Raise(self, said(QT_TRANSLATE_NOOP("TSqlDataSet",
                                               "parameter %1 of stored procedure \"%2\" has no name."))
                            .arg(place)
                            .arg(Text));
        TParamType kind = TParamType::Input;
        if (argument.IsOutput())
            kind = argument.IsInput() ? TParamType::InputOutput : TParamType::Output;
        params.Add(argument.Name, paramTypeOf(argument.Type), kind);
    }
    if (routine.ReturnsScalar && !hasResult)
        params.Add(u"Result"_s, paramTypeOf(routine.ReturnType), TParamType::Result);
}

void TSqlDataSet::Private::MakeCall(TSqlDataSet &self, const QSqlDatabase &database)
{
    const Routine routine = FindRoutine(self, database);
    CompleteParams(self, routine);
    Statement statement;
    statement.Pieces.last() =
        QLatin1String(routine.IsProcedure ? "CALL " : "SELECT * FROM ") + routine.CallName + u'(';
    bool first = true;
    for (const Argument &argument : routine.Arguments) {
        // A procedure is called with a place for every output; a function without.
        const bool placeOnly = routine.IsProcedure && argument.Mode == u'o';
        if (!placeOnly && (!argument.IsInput() || !self.Params().FindParam(argument.Name)))
            continue;
        statement.Pieces.last() += QLatin1String(first ? "" : ", ") + quotedName(argument.Name) +
                                   QLatin1String(placeOnly ? " => NULL" : " => CAST(");
        first = false;
        if (placeOnly)
            continue;
        statement.AddMark(argument.Name);
        statement.Pieces.last() += u" AS "_s + argument.Type + u')';
    }
    statement.Pieces.last() += u')';
    Parsed = std::move(statement);
    Call = routine;
}

QVariant TSqlDataSet::Private::BoundValue(const TSqlDataSet &self, const TParam &param,
                                          const QSqlDatabase &database) const
{
    if (param.IsNull())
        return QVariant(QMetaType::fromType<QString>());
    QVariant value = param.Value();
    // Where the values are written into the statement, a zero character would end it.
    if (value.typeId() == QMetaType::QString && At == Engine::PostgreSQL &&
        value.toString().contains(QChar(u'\0')))
        Raise(self,
              said(QT_TRANSLATE_NOOP("TSqlDataSet", "parameter \"%1\" has a zero character in its text."))
                  .arg(param.Name));
    if (value.metaType() == QMetaType::fromType<Currency>()) {
        // PostgreSQL reads the decimal text exactly. SQLite keeps decimals as doubles itself.
        const auto amount = value.value<Currency>();
        return At == Engine::PostgreSQL ? QVariant(amount.toString()) : QVariant(amount.toDouble());
    }
    // Qt's PostgreSQL driver would move a moment to universal time; what is kept is the clock on the wall.
    // The drivers take a moment of the hour that a change to summer time leaves out for null: SQLite's has it
    // as a text, and ODBC's reads nothing but the date and the time of one that is valid everywhere.
    if (value.typeId() == QMetaType::QDateTime) {
        const QDateTime moment = value.toDateTime();
        if (!IsOdbc(database) && (At == Engine::PostgreSQL || !moment.isValid()))
            return moment.date().toString(u"yyyy-MM-ddT"_s) + moment.time().toString(u"HH:mm:ss.zzz"_s);
        if (!moment.isValid())
            return QDateTime(moment.date(), moment.time(), Qt::UTC);
    }
    return value;
}

/// Runs the prepared statement; whether it gives rows.
bool TSqlDataSet::Private::Execute(TSqlDataSet &self)
{
    const QSqlDatabase database = Database(self);
    if (AmountMarks(self, database) != Amounts)
        Prepare(self);
    QVariantList values;
    for (const QString &mark : std::as_const(Parsed.Marks)) {
        const TParam *param = self.Params().FindParam(mark);
        if (!param)
            Raise(self, said(QT_TRANSLATE_NOOP("TSqlDataSet", "there is no parameter \"%1\".")).arg(mark));
        values.append(BoundValue(self, *param, database));
    }
    bool done = false;
    if (AsText) {
        done = Prepared->exec(Parsed.Text([&](int mark) {
            QSqlField written(QString(), values[mark].metaType());
            written.setValue(values[mark]);
            // The space keeps a negative number from making a comment of a minus in front of it.
            return u' ' + database.driver()->formatValue(written);
        }));
    } else {
        for (int i = 0; i < values.size(); ++i)
            Prepared->bindValue(i, values[i]);
        done = Prepared->exec();
    }
    if (!done)
        Raise(self, Prepared->lastError());
    return Prepared->isSelect() && Prepared->record().count() > 0;
}

TTablePtr TSqlDataSet::Private::ReadRows(TSqlDataSet &self) const
{
    const QSqlDatabase database = Database(self);
    const QSqlRecord record = Prepared->record();
    const int count = record.count();
    std::vector<QVariantList> columns(static_cast<std::size_t>(count));
    // SQLite leaves every value its own type, so the types are settled when all values are here.
    std::vector<std::optional<TFieldType>> declared(columns.size());
    const bool described = Columns.size() == count;
    for (int i = 0; i < count; ++i) {
        std::optional<TFieldType> &type = declared[static_cast<std::size_t>(i)];
        if (described)
            type = Columns[i].Type;
        else if (database.driverName() == u"QSQLITE")
            type = typeOfSqliteColumn(*Prepared, i);
        else
            type = typeOfField(record.field(i), IsOdbc(database));
    }
    while (Prepared->next()) {
        for (int i = 0; i < count; ++i)
            columns[static_cast<std::size_t>(i)].append(plainValue(Prepared->value(i)));
    }
    if (Prepared->lastError().isValid())
        Raise(self, Prepared->lastError());

    QList<TFieldDef> defs;
    for (int i = 0; i < count; ++i) {
        const auto at = static_cast<std::size_t>(i);
        QString name = record.fieldName(i);
        // A view numbers the names that it has twice; the dataset keeps them.
        if (described && !Columns[i].Name.startsWith(name + u':'))
            name = Columns[i].Name;
        defs.append({name, settledType(declared[at], columns[at])});
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

/// Prepares when that was not done, executes and reads: the rows, or nullptr when the engine gives none. The
/// one row that carries a routine's outputs or its returned value is no result set.
TTablePtr TSqlDataSet::Private::Run(TSqlDataSet &self, bool onlyResultSets)
{
    const bool keep = Prepared != nullptr;
    try {
        if (!keep)
            Prepare(self);
        TTablePtr rows;
        if (Execute(self))
            rows = ReadRows(self);
        Prepared->finish();
        if (rows)
            WriteOutputs(self, *rows);
        if (Call && !Call->ReturnsSet && (onlyResultSets || Call->ReturnType == u"void"))
            rows.reset();
        if (!keep)
            UnPrepare();
        return rows;
    } catch (...) {
        // What the engine refused once is compiled anew the next time.
        UnPrepare();
        throw;
    }
}

void TSqlDataSet::Private::WriteOutputs(TSqlDataSet &self, const TTable &rows) const
{
    if (!Call)
        return;
    TParams &params = self.Params();
    for (int i = 0; i < params.Count(); ++i) {
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
        s->RequireDriver(*this, QSqlDatabase::database(connectionName, false));
    Close();
    UnPrepare();
    s->ConnectionName = connectionName;
}

bool TSqlDataSet::Prepared() const
{
    return s->Prepared != nullptr;
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
        s->Prepare(*this);
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
    const Statement statement = parseStatement(text);
    for (const QString &mark : statement.Marks) {
        if (!Params().FindParam(mark))
            Params().Add(mark);
    }
}

void TSqlDataSet::Execute()
{
    TTablePtr rows = s->Run(*this, true);
    if (s->IsProcedure && rows)
        InstallTable(std::move(rows));
}

TTablePtr TSqlDataSet::FetchTable()
{
    TTablePtr rows = s->Run(*this, false);
    if (!rows)
        s->Raise(*this, said(QT_TRANSLATE_NOOP("TSqlDataSet", "the engine gives no rows.")));
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
