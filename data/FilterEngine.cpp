#include "data/FilterEngine_p.h"

#include "data/Exceptions.h"
#include "data/KeyListFilter_p.h"
#include "data/Values_p.h"

#include <QSet>

#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstring>
#include <ctime>
#include <limits>
#include <string_view>

using namespace Qt::StringLiterals;

namespace Zel
{

namespace
{

/// The time limit of an evaluation, in processor time, so that other load on the machine does not matter.
class TimeLimit
{
public:
    static constexpr int Seconds = 5;

    void Start()
    {
        m_since = std::chrono::steady_clock::now();
        m_spent = std::clock();
        m_over = false;
    }
    /// Whether the limit has been exceeded. Stays true until Start.
    bool Over()
    {
        // Reading the processor time needs a system call, so it is read only after the clock has passed the
        // limit.
        if (!m_over && std::chrono::steady_clock::now() - m_since >= std::chrono::seconds(Seconds))
            m_over = (std::clock() - m_spent) / CLOCKS_PER_SEC >= Seconds;
        return m_over;
    }
    bool WasOver() const noexcept { return m_over; }

private:
    std::chrono::steady_clock::time_point m_since;
    std::clock_t m_spent = 0;
    bool m_over = false;
};

} // namespace

/// The data of one evaluation, shared by the statement, the virtual table and the authorizer.
struct FilterEngine::Scan {
    const TTable::Private *Table = nullptr;
    bool FoldCase = false;
    QList<QByteArray> Names;       ///< The columns' names in the virtual table.
    QHash<QByteArray, int> ByName; ///< The columns by lower-case name, because SQLite ignores case.
    std::vector<char> Read;        ///< For each column, whether the filter reads it.
    int Selects = 0;
    bool Declaring = false;              ///< Whether the virtual table is being declared.
    std::vector<int> Sample;             ///< The rows to evaluate; empty for all.
    int Count = 0;                       ///< The number of rows to evaluate.
    int Row = 0;                         ///< The table row of the statement's cursor.
    std::vector<const TextPool *> Pools; ///< The texts of the text columns that the filter reads.
    std::vector<int> Hits;
    TimeLimit Left;
};

namespace
{

using Scan = FilterEngine::Scan;

constexpr const char *TableName = "zel_rows";
constexpr const char *CollectName = "zel_collect";
constexpr const char *FoldName = "zel_fold";
constexpr int LongestMade = 64 * 1024; ///< The maximum size of a text that a filter creates, in bytes.

// --- case-insensitive texts

/// The next character of a UTF-8 text, which ends at @p end.
char32_t nextCharacter(const unsigned char *&at, const unsigned char *end)
{
    char32_t code = *at++;
    if (code < 0x80)
        return code;
    int more = code >= 0xF0 ? 3 : code >= 0xE0 ? 2 : code >= 0xC0 ? 1 : 0;
    code &= 0x3FU >> more;
    for (; more > 0 && at < end && (*at & 0xC0U) == 0x80; --more)
        code = (code << 6) | (*at++ & 0x3FU);
    return code;
}

char32_t folded(char32_t code)
{
    if (code < 0x80)
        return code >= 'A' && code <= 'Z' ? code + ('a' - 'A') : code;
    return QChar::toCaseFolded(code);
}

int compareFolded(void *, int sizeA, const void *a, int sizeB, const void *b)
{
    const auto *atA = static_cast<const unsigned char *>(a);
    const auto *atB = static_cast<const unsigned char *>(b);
    const unsigned char *const endA = atA + sizeA;
    const unsigned char *const endB = atB + sizeB;
    while (atA < endA && atB < endB) {
        const char32_t codeA = folded(nextCharacter(atA, endA));
        const char32_t codeB = folded(nextCharacter(atB, endB));
        if (codeA != codeB)
            return codeA < codeB ? -1 : 1;
    }
    return (atA < endA ? 1 : 0) - (atB < endB ? 1 : 0);
}

/// SQL's like: "%" matches any characters, "_" one character. Only the last "%" is retried, so the time is at
/// most proportional to pattern length times text length. After the time limit it stops with a meaningless
/// result.
bool isLike(const unsigned char *pattern, const unsigned char *patternEnd, const unsigned char *text,
            const unsigned char *textEnd, char32_t escape, bool foldCase, TimeLimit &limit)
{
    constexpr unsigned Often = 0x10000;
    const unsigned char *retryPattern = nullptr;
    const unsigned char *retryText = nullptr;
    for (unsigned step = 1;; ++step) {
        if (step % Often == 0 && limit.Over())
            return false;
        if (pattern < patternEnd) {
            const unsigned char *next = pattern;
            char32_t wanted = nextCharacter(next, patternEnd);
            const bool literal = escape != 0 && wanted == escape;
            if (literal) {
                if (next == patternEnd)
                    return false;
                wanted = nextCharacter(next, patternEnd);
            }
            if (!literal && wanted == '%') {
                pattern = retryPattern = next;
                retryText = text;
                continue;
            }
            if (text < textEnd) {
                const unsigned char *following = text;
                const char32_t found = nextCharacter(following, textEnd);
                if ((!literal && wanted == '_') || found == wanted ||
                    (foldCase && folded(found) == folded(wanted))) {
                    pattern = next;
                    text = following;
                    continue;
                }
            }
        } else if (text == textEnd) {
            return true;
        }
        if (!retryPattern || retryText == textEnd)
            return false;
        nextCharacter(retryText, textEnd);
        text = retryText;
        pattern = retryPattern;
    }
}

void likeFunction(sqlite3_context *context, int count, sqlite3_value **values)
{
    // The LIKE operator passes the pattern as the first argument.
    const unsigned char *pattern = sqlite3_value_text(values[0]);
    const unsigned char *text = sqlite3_value_text(values[1]);
    if (!pattern || !text)
        return;
    char32_t escape = 0;
    if (count == 3) {
        const unsigned char *mark = sqlite3_value_text(values[2]);
        if (!mark)
            return;
        const unsigned char *const end = mark + sqlite3_value_bytes(values[2]);
        if (mark < end)
            escape = nextCharacter(mark, end);
        if (escape == 0 || mark != end) {
            sqlite3_result_error(context, "ESCAPE expression must be a single character", -1);
            return;
        }
    }
    auto *scan = static_cast<Scan *>(sqlite3_user_data(context));
    const bool is = isLike(pattern, pattern + sqlite3_value_bytes(values[0]), text,
                           text + sqlite3_value_bytes(values[1]), escape, scan->FoldCase, scan->Left);
    if (scan->Left.WasOver())
        sqlite3_result_error_code(context, SQLITE_INTERRUPT);
    else
        sqlite3_result_int(context, is ? 1 : 0);
}

/// Replaces SQLite's upper and lower, which convert only ASCII letters.
template <bool Upper> void changeCase(sqlite3_context *context, int, sqlite3_value **values)
{
    const unsigned char *text = sqlite3_value_text(values[0]);
    if (!text)
        return;
    const QString read =
        QString::fromUtf8(reinterpret_cast<const char *>(text), sqlite3_value_bytes(values[0]));
    const QByteArray changed = (Upper ? read.toUpper() : read.toLower()).toUtf8();
    sqlite3_result_text(context, changed.constData(), static_cast<int>(changed.size()), SQLITE_TRANSIENT);
}

enum class End : std::uint8_t { Left, Right, Both };

/// Replaces SQLite's trim functions, which search all characters to remove for each character of the text.
template <End Which> void trimText(sqlite3_context *context, int, sqlite3_value **values)
{
    const unsigned char *text = sqlite3_value_text(values[0]);
    const unsigned char *marks = sqlite3_value_text(values[1]);
    if (!text || !marks)
        return;
    const unsigned char *end = text + sqlite3_value_bytes(values[0]);
    const unsigned char *const marksEnd = marks + sqlite3_value_bytes(values[1]);
    QSet<char32_t> taken;
    while (marks < marksEnd)
        taken.insert(nextCharacter(marks, marksEnd));
    if constexpr (Which != End::Right) {
        for (const unsigned char *next = text; text < end; text = next) {
            if (!taken.contains(nextCharacter(next, end)))
                break;
        }
    }
    if constexpr (Which != End::Left) {
        while (text < end) {
            const unsigned char *last = end - 1;
            while (last > text && (*last & 0xC0U) == 0x80)
                --last;
            const unsigned char *next = last;
            if (!taken.contains(nextCharacter(next, end)))
                break;
            end = last;
        }
    }
    sqlite3_result_text(context, reinterpret_cast<const char *>(text), static_cast<int>(end - text),
                        SQLITE_TRANSIENT);
}

int isOver(void *scan)
{
    return static_cast<Scan *>(scan)->Left.Over() ? 1 : 0;
}

void collectStep(sqlite3_context *context, int, sqlite3_value **)
{
    auto *scan = static_cast<Scan *>(sqlite3_user_data(context));
    scan->Hits.push_back(scan->Row);
}

void collectFinal(sqlite3_context *context)
{
    sqlite3_result_null(context);
}

// --- the shared table as a virtual table

struct Table : sqlite3_vtab {
    Scan *Owner;
};

struct Cursor : sqlite3_vtab_cursor {
    Scan *Owner;
    int Position;
};

const char *declaredType(TFieldType type)
{
    switch (type) {
    case TFieldType::Integer:
    case TFieldType::LargeInt:
    case TFieldType::Boolean:
        return "INTEGER";
    case TFieldType::Float:
    case TFieldType::Currency:
        return "REAL";
    case TFieldType::Date:
    case TFieldType::DateTime:
    case TFieldType::String:
        return "TEXT";
    }
    return "";
}

int connectTable(sqlite3 *db, void *aux, int, const char *const *, sqlite3_vtab **table, char **reason)
{
    auto *scan = static_cast<Scan *>(aux);
    QByteArray sql = "CREATE TABLE x(";
    for (int i = 0; i < scan->Names.size(); ++i) {
        const TFieldType type = scan->Table->Defs[i].Type;
        if (i > 0)
            sql += ',';
        sql += '"' + QByteArray(scan->Names[i]).replace('"', "\"\"") + "\" " + declaredType(type);
        if (scan->FoldCase && type == TFieldType::String)
            sql += QByteArray(" COLLATE ") + FoldName;
    }
    sql += ')';
    scan->Declaring = true;
    const int rc = sqlite3_declare_vtab(db, sql.constData());
    scan->Declaring = false;
    if (rc != SQLITE_OK) {
        *reason = sqlite3_mprintf("%s", sqlite3_errmsg(db));
        return rc;
    }
    auto *made = new Table{};
    made->Owner = scan;
    *table = made;
    return SQLITE_OK;
}

int disconnectTable(sqlite3_vtab *table)
{
    delete static_cast<Table *>(table);
    return SQLITE_OK;
}

int bestIndex(sqlite3_vtab *table, sqlite3_index_info *info)
{
    // The only plan reads every row. The statement applies the filter.
    const int count = static_cast<Table *>(table)->Owner->Table->Rows;
    info->estimatedCost = count + 1.0;
    info->estimatedRows = count + 1;
    return SQLITE_OK;
}

int openCursor(sqlite3_vtab *table, sqlite3_vtab_cursor **cursor)
{
    auto *made = new Cursor{};
    made->Owner = static_cast<Table *>(table)->Owner;
    *cursor = made;
    return SQLITE_OK;
}

int closeCursor(sqlite3_vtab_cursor *cursor)
{
    delete static_cast<Cursor *>(cursor);
    return SQLITE_OK;
}

void standOn(Cursor *cursor, int position)
{
    Scan *scan = cursor->Owner;
    cursor->Position = position;
    if (position < scan->Count)
        scan->Row = scan->Sample.empty() ? position : scan->Sample[static_cast<std::size_t>(position)];
}

int startScan(sqlite3_vtab_cursor *cursor, int, const char *, int, sqlite3_value **)
{
    standOn(static_cast<Cursor *>(cursor), 0);
    return SQLITE_OK;
}

int nextRow(sqlite3_vtab_cursor *cursor)
{
    auto *own = static_cast<Cursor *>(cursor);
    standOn(own, own->Position + 1);
    return SQLITE_OK;
}

int atEnd(sqlite3_vtab_cursor *cursor)
{
    const auto *own = static_cast<Cursor *>(cursor);
    return own->Position >= own->Owner->Count ? 1 : 0;
}

int readColumn(sqlite3_vtab_cursor *cursor, sqlite3_context *context, int index)
{
    Scan *scan = static_cast<Cursor *>(cursor)->Owner;
    const int row = scan->Row;
    const auto at = static_cast<std::size_t>(row);
    const Column &column = scan->Table->Columns[static_cast<std::size_t>(index)];
    if (column.IsNull(row))
        return SQLITE_OK; // without a result the value is null
    switch (column.Type) {
    case TFieldType::Integer:
    case TFieldType::Boolean:
        sqlite3_result_int(context, column.Ints[at]);
        break;
    case TFieldType::LargeInt:
        sqlite3_result_int64(context, column.Longs[at]);
        break;
    case TFieldType::Currency:
        sqlite3_result_double(context, Currency::fromRaw(column.Longs[at]).toDouble());
        break;
    case TFieldType::Float:
        sqlite3_result_double(context, column.Doubles[at]);
        break;
    case TFieldType::Date:
    case TFieldType::DateTime: {
        const QByteArray text =
            (column.Type == TFieldType::Date ? DateText(QDate::fromJulianDay(column.Longs[at]))
                                             : MomentText(column.Longs[at]))
                .toLatin1();
        sqlite3_result_text(context, text.constData(), static_cast<int>(text.size()), SQLITE_TRANSIENT);
        break;
    }
    case TFieldType::String: {
        const TextPool *pool = scan->Pools[static_cast<std::size_t>(index)];
        sqlite3_result_text(context, pool->Text(row), pool->Size(row), SQLITE_STATIC);
        break;
    }
    }
    return SQLITE_OK;
}

int rowNumber(sqlite3_vtab_cursor *cursor, sqlite3_int64 *number)
{
    *number = static_cast<Cursor *>(cursor)->Owner->Row;
    return SQLITE_OK;
}

const sqlite3_module &module()
{
    static const sqlite3_module made = [] {
        sqlite3_module m{};
        m.iVersion = 1;
        m.xConnect = connectTable;
        m.xBestIndex = bestIndex;
        m.xDisconnect = disconnectTable;
        m.xDestroy = disconnectTable;
        m.xOpen = openCursor;
        m.xClose = closeCursor;
        m.xFilter = startScan;
        m.xNext = nextRow;
        m.xEof = atEnd;
        m.xColumn = readColumn;
        m.xRowid = rowNumber;
        return m;
    }();
    return made;
}

// --- permissions of a filter

/// The functions that a filter may call, sorted. Each depends on its arguments only.
constexpr std::array<std::string_view, 71> PureFunctions{
    "abs",      "acos",     "acosh",        "asin",      "asinh",     "atan",      "atan2",      "atanh",
    "ceil",     "ceiling",  "char",         "coalesce",  "concat",    "concat_ws", "cos",        "cosh",
    "date",     "datetime", "degrees",      "exp",       "floor",     "format",    "glob",       "hex",
    "ifnull",   "iif",      "instr",        "julianday", "length",    "like",      "likelihood", "likely",
    "ln",       "log",      "log10",        "log2",      "lower",     "ltrim",     "max",        "min",
    "mod",      "nullif",   "octet_length", "pi",        "pow",       "power",     "printf",     "quote",
    "radians",  "replace",  "round",        "rtrim",     "sign",      "sin",       "sinh",       "sqrt",
    "strftime", "substr",   "substring",    "tan",       "tanh",      "time",      "timediff",   "trim",
    "trunc",    "typeof",   "unhex",        "unicode",   "unixepoch", "unlikely",  "upper"};

bool isPureFunction(const char *name)
{
    const QByteArray lower = QByteArray(name).toLower();
    const std::string_view wanted(lower.constData(), static_cast<std::size_t>(lower.size()));
    return wanted == CollectName || std::binary_search(PureFunctions.begin(), PureFunctions.end(), wanted);
}

int authorize(void *data, int action, const char *first, const char *second, const char *, const char *)
{
    auto *scan = static_cast<Scan *>(data);
    if (scan->Declaring)
        return SQLITE_OK;
    switch (action) {
    case SQLITE_SELECT:
        // The first SELECT is the statement around the filter; a second one would be a subquery in the
        // filter.
        return ++scan->Selects == 1 ? SQLITE_OK : SQLITE_DENY;
    case SQLITE_READ: {
        if (!first || !second || std::strcmp(first, TableName) != 0)
            return SQLITE_DENY;
        const int column = scan->ByName.value(QByteArray(second).toLower(), -1);
        // An empty name means that no column is read, but a column may also have an empty name. Marking that
        // column as read only costs time.
        if (column < 0)
            return *second == '\0' ? SQLITE_OK : SQLITE_DENY;
        scan->Read[static_cast<std::size_t>(column)] = 1;
        return SQLITE_OK;
    }
    case SQLITE_FUNCTION:
        return isPureFunction(second) ? SQLITE_OK : SQLITE_DENY;
    default:
        return SQLITE_DENY;
    }
}

/// Names the columns of the virtual table. SQLite requires unique names and ignores the case of ASCII
/// letters. The first of several columns with one name keeps the name; the others get a name that no filter
/// would use.
void nameColumns(Scan &scan)
{
    scan.Names.clear();
    scan.ByName.clear();
    QHash<QByteArray, int> copies; // the number of columns with each repeated name
    for (int i = 0; i < scan.Table->Defs.size(); ++i) {
        const QByteArray own = scan.Table->Defs[i].Name.toUtf8().replace('\0', ' ');
        QByteArray name = own;
        if (scan.ByName.contains(own.toLower())) {
            int &copy = copies[own.toLower()];
            copy = std::max(copy, 1);
            do
                name = own + '#' + QByteArray::number(++copy);
            while (scan.ByName.contains(name.toLower()));
        }
        scan.ByName.insert(name.toLower(), i);
        scan.Names.append(name);
    }
}

struct Finalize {
    void operator()(sqlite3_stmt *statement) const noexcept { sqlite3_finalize(statement); }
};
using Statement = std::unique_ptr<sqlite3_stmt, Finalize>;

[[noreturn]] void refuse(const QString &dataset, const QString &filter, const QString &reason)
{
    constexpr qsizetype Enough = 1000;
    const QString shown = filter.size() > Enough
                              ? u"%1...\" (%2 characters)"_s.arg(filter.left(Enough)).arg(filter.size())
                              : filter + u'"';
    throw EDatabaseError(u"Dataset \"%1\" cannot use the filter \"%2: %3."_s.arg(dataset, shown, reason));
}

Statement prepare(sqlite3 *db, Scan &scan, const QString &dataset, const QString &filter, const char *before,
                  const char *after)
{
    // The filter is on its own lines, so that a comment at its end does not hide the rest of the statement.
    const QByteArray sql = QByteArray("SELECT ") + CollectName + "() FROM " + TableName + " WHERE " + before +
                           '\n' + filter.toUtf8() + '\n' + after;
    scan.Selects = 0;
    sqlite3_stmt *made = nullptr;
    const int rc = sqlite3_prepare_v2(db, sql.constData(), static_cast<int>(sql.size()), &made, nullptr);
    Statement statement(made);
    if (rc != SQLITE_OK)
        refuse(dataset, filter, QString::fromUtf8(sqlite3_errmsg(db)));
    if (sqlite3_bind_parameter_count(made) > 0)
        refuse(dataset, filter, u"it has a parameter"_s);
    return statement;
}

/// Registers the virtual table in the connection during one evaluation.
class Loan
{
public:
    Loan(sqlite3 *db, Scan &scan) : m_db(db)
    {
        if (sqlite3_create_module_v2(db, TableName, &module(), &scan, nullptr) != SQLITE_OK)
            throw EDatabaseError(QString::fromUtf8(sqlite3_errmsg(db)));
    }
    ~Loan() { sqlite3_create_module_v2(m_db, TableName, nullptr, nullptr, nullptr); }
    Loan(const Loan &) = delete;
    Loan &operator=(const Loan &) = delete;

private:
    sqlite3 *m_db;
};

void refuseUnusable(sqlite3 *db, const TTable &table, const QString &filter, const QString &dataset)
{
    if (filter.contains(QChar(u'\0')))
        refuse(dataset, filter, u"it holds a zero character"_s);
    if (table.ColumnCount() == 0)
        refuse(dataset, filter, u"the table has no columns"_s);
    if (const int most = sqlite3_limit(db, SQLITE_LIMIT_COLUMN, -1); table.ColumnCount() > most)
        refuse(dataset, filter,
               u"the table has %1 columns, and a filter can use %2 at most"_s.arg(table.ColumnCount())
                   .arg(most));
}

void start(Scan &scan, const TTable::Private &data, TFilterOptions options)
{
    scan.Table = &data;
    scan.FoldCase = options.testFlag(TFilterOption::CaseInsensitive);
    scan.Read.assign(data.Columns.size(), 0);
    scan.Pools.assign(data.Columns.size(), nullptr);
    scan.Hits = {};
    nameColumns(scan);
    scan.Left.Start();
}

/// A filter that reads a single column has the same result for equal values. It is evaluated once for each
/// distinct value, if an index is available or cheap and there are at most half as many values as rows.
/// Returns this index; nullptr when every row is evaluated.
const KeyIndex *chooseRows(Scan &scan)
{
    const TTable::Private &data = *scan.Table;
    scan.Sample.clear();
    scan.Count = data.Rows;
    if (data.Rows == 0 || std::count(scan.Read.begin(), scan.Read.end(), 1) != 1)
        return nullptr;
    const auto column = std::find(scan.Read.begin(), scan.Read.end(), 1) - scan.Read.begin();
    if (data.Columns[static_cast<std::size_t>(column)].Type == TFieldType::String &&
        !data.HasIndex(static_cast<int>(column)))
        return nullptr;
    const KeyIndex &index = data.Index(static_cast<int>(column), false);
    if (index.Groups() > data.Rows / 2)
        return nullptr;
    scan.Sample.reserve(static_cast<std::size_t>(index.Groups()));
    for (int group = 0; group < index.Groups(); ++group)
        scan.Sample.push_back(index.FirstRow(group));
    scan.Count = index.Groups();
    return &index;
}

/// All memory is allocated before the run, so that no exception passes through SQLite's code.
void makeReady(sqlite3 *db, Scan &scan)
{
    scan.Hits.reserve(static_cast<std::size_t>(scan.Count));
    std::size_t longest = 0;
    for (std::size_t i = 0; i < scan.Read.size(); ++i) {
        if (scan.Read[i] && scan.Table->Columns[i].Type == TFieldType::String) {
            scan.Pools[i] = &scan.Table->Pool(static_cast<int>(i));
            longest = std::max(longest, scan.Pools[i]->Longest());
        }
    }
    sqlite3_limit(
        db, SQLITE_LIMIT_LENGTH,
        static_cast<int>(std::min<std::size_t>(longest + LongestMade, std::numeric_limits<int>::max())));
}

/// The rows for which the filter is true, and the rows with the same value in @p index.
VisiblePtr rowsOf(Scan &scan, const KeyIndex *index)
{
    QBitArray bits(scan.Table->Rows);
    for (const int hit : std::exchange(scan.Hits, {})) {
        for (int row = hit; row != KeyIndex::None; row = index ? index->NextRow(row) : KeyIndex::None)
            bits.setBit(row);
    }
    return VisibleRows::OfBits(std::move(bits));
}

// The engine while a dataset holds it. A plain pointer needs no code at load time or exit.
FilterEngine *theEngine = nullptr;

} // namespace

std::shared_ptr<FilterEngine> FilterEngine::Acquire()
{
    if (theEngine)
        return theEngine->shared_from_this();
    std::shared_ptr<FilterEngine> engine(new FilterEngine);
    theEngine = engine.get();
    return engine;
}

FilterEngine::FilterEngine() : m_scan(std::make_unique<Scan>())
{
    constexpr int LongestFilter = 16 * 1024 * 1024;
    constexpr int LongestPattern = 1000; // for glob, which SQLite implements
    constexpr int StepsBetweenLooks = 100;
    constexpr int Pure = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS;
    int rc = sqlite3_open_v2(":memory:", &m_db,
                             SQLITE_OPEN_READWRITE | SQLITE_OPEN_MEMORY | SQLITE_OPEN_NOMUTEX, nullptr);
    const auto also = [&](int next) {
        if (rc == SQLITE_OK)
            rc = next;
    };
    if (rc == SQLITE_OK) {
        // A name in double quotes that is not a column is an error instead of a text.
        sqlite3_db_config(m_db, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
        sqlite3_db_config(m_db, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
        sqlite3_limit(m_db, SQLITE_LIMIT_SQL_LENGTH, LongestFilter);
        sqlite3_limit(m_db, SQLITE_LIMIT_LIKE_PATTERN_LENGTH, LongestPattern);
        sqlite3_limit(m_db, SQLITE_LIMIT_ATTACHED, 0);
        Scan *scan = m_scan.get();
        also(sqlite3_create_collation(m_db, FoldName, SQLITE_UTF8, nullptr, compareFolded));
        also(sqlite3_create_function(m_db, "like", 2, Pure, scan, likeFunction, nullptr, nullptr));
        also(sqlite3_create_function(m_db, "like", 3, Pure, scan, likeFunction, nullptr, nullptr));
        also(sqlite3_create_function(m_db, "lower", 1, Pure, nullptr, changeCase<false>, nullptr, nullptr));
        also(sqlite3_create_function(m_db, "upper", 1, Pure, nullptr, changeCase<true>, nullptr, nullptr));
        also(sqlite3_create_function(m_db, "trim", 2, Pure, nullptr, trimText<End::Both>, nullptr, nullptr));
        also(sqlite3_create_function(m_db, "ltrim", 2, Pure, nullptr, trimText<End::Left>, nullptr, nullptr));
        also(
            sqlite3_create_function(m_db, "rtrim", 2, Pure, nullptr, trimText<End::Right>, nullptr, nullptr));
        sqlite3_progress_handler(m_db, StepsBetweenLooks, isOver, scan);
        also(sqlite3_create_function(m_db, CollectName, 0, SQLITE_UTF8, scan, nullptr, collectStep,
                                     collectFinal));
        also(sqlite3_set_authorizer(m_db, authorize, scan));
    }
    if (rc != SQLITE_OK) {
        const QString reason = QString::fromUtf8(m_db ? sqlite3_errmsg(m_db) : sqlite3_errstr(rc));
        sqlite3_close(m_db);
        throw EDatabaseError(u"Filters are not available: %1."_s.arg(reason));
    }
}

FilterEngine::~FilterEngine()
{
    theEngine = nullptr;
    sqlite3_close(m_db);
}

VisiblePtr FilterEngine::Evaluate(const TTable &table, const QString &filter, TFilterOptions options,
                                  const QString &dataset)
{
    refuseUnusable(m_db, table, filter, dataset);
    const TTable::Private &data = table.data();
    // For lists of thousands of keys, the index is faster than SQLite's parser.
    if (const std::optional<KeyListFilter> keys = KeyListFilter::Read(data, filter))
        return keys->Evaluate(data);
    Scan &scan = *m_scan;
    start(scan, data, options);
    // SQLite checks the time limit only between function calls, so the texts that a filter creates are
    // limited in size. The table's own texts may be longer; see makeReady.
    sqlite3_limit(m_db, SQLITE_LIMIT_LENGTH, LongestMade);

    const Loan loan(m_db, scan);
    // The filter is compiled twice, between key words and in brackets. One complete expression is valid in
    // both places. A text that closes the bracket and adds other SQL fails in one of them.
    prepare(m_db, scan, dataset, filter, "CASE WHEN", "THEN 1 END");
    const Statement statement = prepare(m_db, scan, dataset, filter, "(", ")");
    const KeyIndex *const index = chooseRows(scan);
    makeReady(m_db, scan);
    int rc = SQLITE_ROW;
    while (rc == SQLITE_ROW)
        rc = sqlite3_step(statement.get());
    if (rc != SQLITE_DONE && scan.Left.WasOver())
        refuse(dataset, filter, u"it takes longer than %1 seconds"_s.arg(TimeLimit::Seconds));
    if (rc != SQLITE_DONE)
        refuse(dataset, filter, QString::fromUtf8(sqlite3_errmsg(m_db)));
    return rowsOf(scan, index);
}

} // namespace Zel
