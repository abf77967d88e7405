#include "Errors.h"
#include "OfEachType.h"
#include "ZelTest.h"
// labels: slow

#include "data/ClientDataSet.h"
#include "data/DataPacket.h"
#include "data/Exceptions.h"

#include <QRandomGenerator>

#include <array>
#include <functional>

using namespace Qt::StringLiterals;

/// Filters beyond the suite that all datasets share: all column types, the allowed functions, everything that
/// must be refused, and large tables.
class TestFilter : public ZelTest
{
    Q_OBJECT

    static QString text(const char *utf8) { return QString::fromUtf8(utf8); }

    static std::unique_ptr<TClientDataSet> on(const QList<TFieldDef> &defs, const QList<QVariantList> &rows)
    {
        TTableBuilder builder(defs);
        for (const QVariantList &row : rows)
            builder.AddRow(row);
        auto dataset = std::make_unique<TClientDataSet>();
        dataset->setObjectName(text("cdsTest"));
        dataset->SetData(TDataPacket(builder.Finish()).ToVariant());
        return dataset;
    }

    /// The numbers, from 1, of the rows that pass the filter.
    static QList<int> passing(TDataSet &dataset, const QString &filter)
    {
        dataset.SetFiltered(false);
        dataset.SetFilter(filter);
        dataset.SetFiltered(true);
        QList<int> rows;
        for (dataset.First(); !dataset.Eof(); dataset.Next())
            rows.append(dataset.CurrentTableRow() + 1);
        return rows;
    }

    static QString refusal(TDataSet &dataset, const QString &filter)
    {
        return messageOf<EDatabaseError>([&] { passing(dataset, filter); });
    }

    static std::unique_ptr<TClientDataSet> allTypes()
    {
        const auto money = [](qint64 raw) { return QVariant::fromValue(Currency::fromRaw(raw)); };
        return on(ofEachType(),
                  {{1, Q_INT64_C(9000000000000000001), 0.1, money(1000), true, QDate(2020, 1, 31),
                    QDateTime(QDate(2020, 1, 31), QTime(10, 0)), text("one")},
                   {2, Q_INT64_C(9000000000000000002), 0.2, money(2001), false, QDate(2020, 2, 1),
                    QDateTime(QDate(2020, 2, 1), QTime(23, 59, 59, 500)), text("TWO")},
                   {3, Q_INT64_C(-1), 0.3, money(-999999), true, QDate(1999, 12, 31),
                    QDateTime(QDate(1999, 12, 31), QTime(0, 0)), text("thrée")},
                   QVariantList(8)});
    }

private Q_SLOTS:
    void everyTypeCanBeCompared_data()
    {
        QTest::addColumn<QString>("filter");
        QTest::addColumn<QList<int>>("rows");
        const auto row = [](const char *filter, QList<int> rows) {
            QTest::newRow(filter) << text(filter) << std::move(rows);
        };
        row("I = 2", {2});
        row("I = '2'", {2});
        row("L = 9000000000000000001", {1});
        row("L in (9000000000000000002, -1)", {2, 3});
        row("F = 0.1", {1});
        row("F > 0.15", {2, 3});
        row("C = 0.1", {1});
        row("C = 0.2001", {2});
        row("C = -99.9999", {3});
        row("C / 2 < 0.06 and C > 0", {1});
        row("B", {1, 3});
        row("not B", {2});
        row("B = true", {1, 3});
        row("B = FALSE", {2});
        row("B = 0", {2});
        row("D = '2020-02-01'", {2});
        row("D < '2020-02-01'", {1, 3});
        row("D between '2020-01-01' and '2020-12-31'", {1, 2});
        row("date(D, '+1 day') = '2020-02-01'", {1});
        row("strftime('%Y', D) = '1999'", {3});
        row("julianday(D) - julianday('2020-01-31') = 1", {2});
        row("T > '2020-01-31 09:59:59' and T < '2020-02-01'", {1});
        row("time(T) = '00:00:00'", {3});
        row("T = '2020-02-01 23:59:59.500'", {2});
        row("S = 'one'", {1});
        row("S > 'a'", {1, 3});
        row("S || 'x' = 'onex'", {1});
        row("S like 't%'", {3});
        row("S like 'T%'", {2});
        row("S not like 't%'", {1, 2});
        row("lower(S) = 'two'", {2});
        row("upper(S) = 'THRÉE'", {3});
        row("length(S) = 5", {3});
        row("S glob 't*e'", {3});
        row("S is null and I is null and D is null and B is null and C is null", {4});
        row("coalesce(I, 99) = 99", {4});
        row("ifnull(S, '') = ''", {4});
        row("iif(B, I, -I) = -2", {2});
        row("case when I > 2 then 1 when I = 1 then 1 else 0 end", {1, 3});
        row("abs(C) > 1", {3});
        row("round(F, 0) = 0.0", {1, 2, 3});
        row("max(I, 2) = 2", {1, 2});
        row("nullif(I, 1) is null", {1, 4});
        row("instr(S, 'r') > 0", {3});
        row("replace(S, 'o', '0') = '0ne'", {1});
        row("trim('  ' || S || ' ') = 'one'", {1});
        row("cast(I as text) = '3'", {3});
        row("typeof(C) = 'real'", {1, 2, 3});
        row("I is not 2", {1, 3, 4});
        row("(I, S) = (1, 'one')", {1});
        row("I % 2 = 1", {1, 3});
        row("I & 1", {1, 3});
        row("printf('%d', I) = '2'", {2});
        row("S = 'one' /* a remark */", {1});
        row("S = 'one' -- a remark", {1});
        row("S = 'TWO' collate nocase", {2});
        row("'it''s' = 'it''s' and I = 1", {1});
        row("date('now') > '2020-01-01' and I = 1", {1});
    }

    void everyTypeCanBeCompared()
    {
        QFETCH(const QString, filter);
        QFETCH(const QList<int>, rows);
        const auto dataset = allTypes();
        QCOMPARE(passing(*dataset, filter), rows);
    }

    void nothingButTheRowsCanBeReached_data()
    {
        QTest::addColumn<QString>("filter");
        for (const char *filter : {"I in (select 1)",
                                   "exists (select 1)",
                                   "I = (select max(I) from zel_rows)",
                                   "I in sqlite_schema",
                                   "I in (select count(*) from sqlite_master)",
                                   "1) union select 1 where (1",
                                   "1) limit 1 offset (1",
                                   "1) order by (1",
                                   "1 then 1 end) or (case when 1",
                                   "1 then 1 end or case when 1",
                                   "1; delete from zel_rows",
                                   "1; attach 'x' as y",
                                   "1); drop table zel_rows; --",
                                   "load_extension('x')",
                                   "random() > 0",
                                   "randomblob(4) is not null",
                                   "changes() = 0",
                                   "total_changes() = 0",
                                   "last_insert_rowid() = 0",
                                   "sqlite_version() > ''",
                                   "sqlite_source_id() > ''",
                                   "sqlite_compileoption_used('x')",
                                   "readfile('/etc/passwd')",
                                   "writefile('x', 'y')",
                                   "fts3_tokenizer('simple')",
                                   "I in pragma_database_list",
                                   "I in json_each('[1]')",
                                   "I in generate_series(1, 2)",
                                   "count(*) > 0",
                                   "sum(I) > 0",
                                   "zel_collect() is null",
                                   "row_number() over () = 1",
                                   "rowid = 1",
                                   "_rowid_ = 1",
                                   "oid = 1",
                                   "zel_rows.rowid = 1",
                                   "raise(abort, 'x')",
                                   "S match 'one'",
                                   "S regexp 'one'",
                                   "I = ?1",
                                   "I = @x",
                                   "I = $x",
                                   "\"one\" = S",
                                   "Missing = 1",
                                   "I = 1 I = 2",
                                   "(I = 1",
                                   "I = 1)",
                                   "I, S",
                                   "*",
                                   "I as x",
                                   ";",
                                   "--",
                                   "/* */",
                                   "/*",
                                   "'",
                                   "[S"})
            QTest::newRow(filter) << text(filter);
    }

    void nothingButTheRowsCanBeReached()
    {
        QFETCH(const QString, filter);
        const auto dataset = allTypes();
        const QString message = refusal(*dataset, filter);
        QVERIFY2(message.contains(text("cdsTest")) && message.contains(filter), qPrintable(message));
        QVERIFY(!dataset->Filtered());
        QCOMPARE(dataset->RecordCount(), 4);
        QCOMPARE(passing(*dataset, text("I = 1")), QList<int>{1});
    }

    void aZeroCharacterIsRefused()
    {
        const auto dataset = allTypes();
        QVERIFY(refusal(*dataset, text("I = 1") + QChar(u'\0') + text(")")).contains(text("zero character")));
    }

    void theReasonIsSQLites()
    {
        const auto dataset = allTypes();
        QVERIFY(refusal(*dataset, text("Missing = 1")).contains(text("no such column: Missing")));
        QVERIFY(refusal(*dataset, text("I = = 1")).contains(text("syntax error")));
        QVERIFY(refusal(*dataset, text("random() > 0")).contains(text("not authorized")));
    }

    void anErrorWhileRunningChangesNothing()
    {
        const auto dataset =
            on({{text("L"), TFieldType::LargeInt}}, {{5}, {std::numeric_limits<qint64>::min()}});
        dataset->SetFilter(text("L = 5"));
        dataset->SetFiltered(true);
        QVERIFY_THROWS_EXCEPTION(EDatabaseError, dataset->SetFilter(text("abs(L) > 0")));
        QCOMPARE(dataset->Filter(), text("L = 5"));
        QCOMPARE(dataset->RecordCount(), 1);
        QCOMPARE(passing(*dataset, text("L < 0")), QList<int>{2});
    }

    void likeFollowsItsPattern_data()
    {
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("pattern");
        QTest::addColumn<bool>("exact");
        QTest::addColumn<bool>("folded");
        const auto row = [](const char *value, const char *pattern, bool exact, bool foldedToo) {
            QTest::addRow("%s like %s", value, pattern) << text(value) << text(pattern) << exact << foldedToo;
        };
        row("", "", true, true);
        row("", "%", true, true);
        row("", "_", false, false);
        row("abc", "abc", true, true);
        row("abc", "ABC", false, true);
        row("abc", "a%", true, true);
        row("abc", "%c", true, true);
        row("abc", "%b%", true, true);
        row("abc", "a_c", true, true);
        row("abc", "a__c", false, false);
        row("abc", "____", false, false);
        row("abc", "%_%_%_%", true, true);
        row("aaab", "%aab", true, true);
        row("ababac", "%abac", true, true);
        row("ababab", "%abac%", false, false);
        row("Äpfel", "_pfel", true, true);
        row("Äpfel", "ä%", false, true);
        row("ÄPFEL", "äpfel", false, true);
        row("ΣΊΣΥΦΟΣ", "σίσυφος", false, true);
        row("a%c", "a!%c", true, true);
        row("abc", "a!%c", false, false);
        row("a_c", "a!_c", true, true);
        row("abc", "a!_c", false, false);
        row("a!c", "a!!c", true, true);
        row("a!", "a!", false, false);
        row("\xF0\x9F\x8D\x8Fx", "_x", true, true);
    }

    void likeFollowsItsPattern()
    {
        QFETCH(const QString, value);
        QFETCH(const QString, pattern);
        QFETCH(const bool, exact);
        QFETCH(const bool, folded);
        const auto dataset = on({{text("S"), TFieldType::String}}, {{value}});
        const QString filter = u"S like '%1' escape '!'"_s.arg(pattern);
        QCOMPARE(passing(*dataset, filter).size(), exact ? 1 : 0);
        dataset->SetFilterOptions(TFilterOption::CaseInsensitive);
        QCOMPARE(passing(*dataset, filter).size(), folded ? 1 : 0);
        if (!pattern.contains(u'!'))
            QCOMPARE(passing(*dataset, u"S like '%1'"_s.arg(pattern)).size(), folded ? 1 : 0);
    }

    /// A filter that would run for hours is stopped after some seconds; the next filter works as usual.
    void aFilterThatTakesTooLongIsRefused()
    {
        // Many rows with much work per row.
        QList<QVariantList> rows;
        for (int i = 0; i < 300000; ++i)
            rows.append(QVariantList{i});
        const auto dataset = on({{text("I"), TFieldType::Integer}}, rows);
        const QString many = text("length(hex(hex(printf('%016000d', I)))) = I");
        const QString message = refusal(*dataset, many);
        QVERIFY2(message.contains(many) && message.contains(text("cdsTest")) &&
                     message.contains(text("takes longer than 5 seconds")),
                 qPrintable(message));
        QVERIFY(!dataset->Filtered());
        QCOMPARE(passing(*dataset, text("I + 0 = 7")), QList<int>{8});
    }

    void aPatternThatTakesTooLongIsRefused()
    {
        // A single row whose one call of like takes long.
        const QString pattern = u'%' + QString(1000000, u'a') + u'b';
        const auto dataset = on({{text("S"), TFieldType::String}, {text("P"), TFieldType::String}},
                                {{QString(4000000, u'a'), pattern}, {text("ab"), text("a%")}});
        QVERIFY(refusal(*dataset, text("S like P")).contains(text("takes longer than 5 seconds")));
        QCOMPARE(passing(*dataset, text("S like 'a%b'")), QList<int>{2});
    }

    void whatAFilterMakesIsLimited()
    {
        const auto dataset = on({{text("S"), TFieldType::String}}, {{QString(200000, u'a')}, {text("b")}});
        // The limit applies to texts that the filter makes, not to those in the table.
        QCOMPARE(passing(*dataset, text("S || 'x' like 'a%x'")), QList<int>{1});
        QCOMPARE(passing(*dataset, text("length(printf('%060000d', 1)) = 60000")), (QList<int>{1, 2}));
        for (const char *filter : {"length(S || S || S || S) > 0", "length(hex(S)) > 0",
                                   "length(replace(S, 'a', 'aaaaaaaaaa')) > 0"})
            QVERIFY2(refusal(*dataset, text(filter)).contains(text("too big")), filter);
        const QString longest = text("S = '") + QString(300000, u'x') + u'\'';
        const QString message = refusal(*dataset, longest);
        QVERIFY2(message.contains(text("(300006 characters)")) && message.size() < 1500, qPrintable(message));
        QVERIFY(refusal(*dataset, text("S glob '*") + QString(2000, u'a') + u'\'')
                    .contains(text("pattern too complex")));
    }

    /// The trim functions give the same results as SQLite's own.
    void endsAreTrimmed()
    {
        const auto dataset =
            on({{text("S"), TFieldType::String}}, {{text("äxxÄbäxä")}, {text("xx")}, {QVariant()}});
        QCOMPARE(passing(*dataset, text("trim(S, 'xä') = 'Äb'")), QList<int>{1});
        QCOMPARE(passing(*dataset, text("ltrim(S, 'xä') = 'Äbäxä'")), QList<int>{1});
        QCOMPARE(passing(*dataset, text("rtrim(S, 'xä') = 'äxxÄb'")), QList<int>{1});
        QCOMPARE(passing(*dataset, text("trim(S, 'x') = ''")), QList<int>{2});
        QCOMPARE(passing(*dataset, text("ltrim(S, 'x') = '' and rtrim(S, 'x') = ''")), QList<int>{2});
        QCOMPARE(passing(*dataset, text("trim(S, '') = S")), (QList<int>{1, 2}));
        QCOMPARE(passing(*dataset, text("trim(S, null) is null")), (QList<int>{1, 2, 3}));
        QCOMPARE(passing(*dataset, text("trim(S, 'ð') = S")), (QList<int>{1, 2}));
    }

    void badEscapesAreRefused()
    {
        const auto dataset = allTypes();
        QVERIFY(refusal(*dataset, text("S like 'a' escape 'xy'")).contains(text("single character")));
        QVERIFY(refusal(*dataset, text("S like 'a' escape ''")).contains(text("single character")));
        QCOMPARE(passing(*dataset, text("S like 'a' escape null")), QList<int>());
        QCOMPARE(passing(*dataset, text("(S like null) is null")), (QList<int>{1, 2, 3, 4}));
    }

    void caseInsensitiveComparisons()
    {
        const auto dataset = allTypes();
        dataset->SetFilterOptions(TFilterOption::CaseInsensitive);
        QCOMPARE(passing(*dataset, text("S = 'two'")), QList<int>{2});
        QCOMPARE(passing(*dataset, text("'two' = S")), QList<int>{2});
        QCOMPARE(passing(*dataset, text("S = 'THRÉE'")), QList<int>{3});
        QCOMPARE(passing(*dataset, text("S in ('ONE', 'two')")), (QList<int>{1, 2}));
        QCOMPARE(passing(*dataset, text("not(S in ('ONE', 'two'))")), QList<int>{3});
        QCOMPARE(passing(*dataset, text("S between 'THR' and 'tw~'")), (QList<int>{2, 3}));
        QCOMPARE(passing(*dataset, text("S <> 'two'")), (QList<int>{1, 3}));
        QCOMPARE(passing(*dataset, text("I = 2 and S like 'tWo'")), QList<int>{2});
    }

    void namesOfEveryKind()
    {
        const auto dataset = on({{text("F.MainframeID"), TFieldType::String},
                                 {text("with \"quotes\""), TFieldType::Integer},
                                 {text("select"), TFieldType::Integer},
                                 {text("Größe"), TFieldType::Integer},
                                 {text("a b;c"), TFieldType::Integer},
                                 {text(""), TFieldType::Integer}},
                                {{text("x"), 1, 2, 3, 4, 5}, {text("y"), 6, 7, 8, 9, 10}});
        QCOMPARE(passing(*dataset, text("[F.MainframeID] = 'y'")), QList<int>{2});
        QCOMPARE(passing(*dataset, text("\"F.MainframeID\" = 'x'")), QList<int>{1});
        QCOMPARE(passing(*dataset, text("[f.mainframeid] = 'x'")), QList<int>{1});
        QCOMPARE(passing(*dataset, text("\"with \"\"quotes\"\"\" = 6")), QList<int>{2});
        QCOMPARE(passing(*dataset, text("[select] = 2")), QList<int>{1});
        QCOMPARE(passing(*dataset, text("Größe = 8")), QList<int>{2});
        QCOMPARE(passing(*dataset, text("[a b;c] = 4")), QList<int>{1});
        QVERIFY(refusal(*dataset, text("F.MainframeID = 'y'")).contains(text("F.MainframeID")));
    }

    /// A column of each type whose name is empty, beside columns that the filter uses or does not use.
    void aColumnWithoutAName_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<QVariantList>("values");
        QTest::newRow("text") << static_cast<int>(TFieldType::String)
                              << QVariantList{text("2"), text("3"), text("3"), QVariant()};
        QTest::newRow("integer") << static_cast<int>(TFieldType::Integer)
                                 << QVariantList{2, 3, 3, QVariant()};
        QTest::newRow("float") << static_cast<int>(TFieldType::Float)
                               << QVariantList{2.0, 3.0, 3.0, QVariant()};
    }

    void aColumnWithoutAName()
    {
        QFETCH(const int, type);
        QFETCH(const QVariantList, values);
        QList<QVariantList> rows;
        for (int i = 0; i < values.size(); ++i)
            rows.append({i % 2, values[i], values[i]});
        // Of two columns with the same empty name, the filter means the first.
        const auto dataset = on({{text("I"), TFieldType::Integer},
                                 {QString(), static_cast<TFieldType>(type)},
                                 {QString(), static_cast<TFieldType>(type)}},
                                rows);
        const QString three = type == static_cast<int>(TFieldType::String) ? text("'3'") : text("3");
        QCOMPARE(passing(*dataset, u"\"\" = %1"_s.arg(three)), (QList<int>{2, 3}));
        QCOMPARE(passing(*dataset, u"I = 1 and \"\" = %1"_s.arg(three)), QList<int>{2});
        QCOMPARE(passing(*dataset, u"I = 0 and [] = %1"_s.arg(three)), QList<int>{3});
        QCOMPARE(passing(*dataset, text("\"\" is null")), QList<int>{4});
        QCOMPARE(passing(*dataset, text("I = 1")), (QList<int>{2, 4}));
        QCOMPARE(passing(*dataset, text("1 = 1")), (QList<int>{1, 2, 3, 4}));
        QVERIFY(refusal(*allTypes(), text("\"\" = 3")).contains(text("no such column")));
    }

    void moreColumnsThanAFilterCanUse()
    {
        QList<TFieldDef> defs(30000, {text("Same"), TFieldType::Integer});
        QVariantList row(30000, 1);
        const auto dataset = on(defs, {row});
        QVERIFY(refusal(*dataset, text("Same + 0 = 1")).contains(text("30000 columns")));
        defs.resize(1500);
        row.resize(1500);
        const auto fewer = on(defs, {row});
        QCOMPARE(passing(*fewer, text("Same + 0 = 1")), QList<int>{1});
        QCOMPARE(passing(*fewer, text("[Same#1500] + 0 = 1")), QList<int>{1});
    }

    void namesThatDifferInCaseOnly()
    {
        const auto dataset =
            on({{text("Name"), TFieldType::Integer}, {text("NAME"), TFieldType::Integer}}, {{1, 2}, {2, 1}});
        QCOMPARE(dataset->FieldByName(text("Name"))->AsInteger(), 1);
        QCOMPARE(dataset->FieldByName(text("NAME"))->AsInteger(), 2);
        QCOMPARE(dataset->FieldByName(text("nAmE"))->AsInteger(), 1);
        QVERIFY(dataset->Locate(text("NAME"), 1));
        QCOMPARE(dataset->RecNo(), 2);
        // SQL ignores case in names: a filter means the first of the columns.
        QCOMPARE(passing(*dataset, text("NAME = 1")), QList<int>{1});
    }

    void aColumnMayBeCalledAsTheRowNumber()
    {
        const auto dataset = on({{text("rowid"), TFieldType::Integer}}, {{7}, {8}});
        QCOMPARE(passing(*dataset, text("rowid = 8")), QList<int>{2});
    }

    void textWithAZeroCharacterIsWhole()
    {
        const QString odd = text("a") + QChar(u'\0') + text("b");
        const auto dataset = on({{text("S"), TFieldType::String}}, {{odd}, {text("a")}, {text("ab")}});
        QCOMPARE(passing(*dataset, text("S = 'a'")), QList<int>{2});
        QCOMPARE(passing(*dataset, text("S in ('ab')")), QList<int>{3});
    }

    void manyThousandKeys()
    {
        QList<QVariantList> rows;
        for (int i = 0; i < 20000; ++i)
            rows.append(QVariantList{i});
        const auto dataset = on({{text("FundID"), TFieldType::Integer}}, rows);
        QStringList keys;
        for (int i = 0; i < 5000; ++i)
            keys.append(QString::number(i * 3));
        QCOMPARE(passing(*dataset, text("FundID in (%1)").arg(keys.join(u','))).size(), 5000);
        QCOMPARE(passing(*dataset, text("not(FundID in (%1))").arg(keys.join(u','))).size(), 15000);
    }

    /// A plain list of keys is evaluated without SQLite, the same list in parentheses by SQLite. Both must
    /// agree.
    void listsOfKeysAgreeWithSQLite()
    {
        QRandomGenerator random(1707);
        constexpr qint64 far = Q_INT64_C(5'000'000'000);
        for (int trial = 0; trial < 200; ++trial) {
            const int spread = random.bounded(1, 300);
            const int count = random.bounded(260);
            QList<QVariantList> rows;
            for (int i = 0; i < count; ++i) {
                const auto orNull = [&](const QVariant &value) {
                    return random.bounded(8) == 0 ? QVariant() : value;
                };
                const int value = random.bounded(spread) - spread / 3;
                rows.append({orNull(value), orNull(value * far), orNull(value % 2 == 0), orNull(value / 2.0),
                             orNull(QVariant::fromValue(Currency(value))), orNull(QString::number(value)),
                             value});
            }
            const auto dataset = on({{text("FundID"), TFieldType::Integer},
                                     {text("Big"), TFieldType::LargeInt},
                                     {text("true"), TFieldType::Boolean},
                                     {text("Rate"), TFieldType::Float},
                                     {text("Amount"), TFieldType::Currency},
                                     {text("Name"), TFieldType::String},
                                     {text("rowid"), TFieldType::Integer}},
                                    rows);
            for (const char *field : {"FundID", "fundid", "Big", "true", "Rate", "Amount", "Name", "rowid"}) {
                QStringList keys;
                for (int i = random.bounded(1, 40); i > 0; --i) {
                    const qint64 key = random.bounded(spread) - spread / 3;
                    keys.append(QString::number(random.bounded(2) == 0 ? key : key * far));
                }
                static constexpr std::array shapes{"%1 in (%2)", "not(%1 in (%2))", " NOT ( %1\tIN(%2) ) "};
                for (const char *shape : shapes) {
                    const QString filter = text(shape).arg(
                        text(field), keys.join(random.bounded(2) == 0 ? text(",") : text(" , ")));
                    QVERIFY2(passing(*dataset, filter) == passing(*dataset, text("(%1)").arg(filter)),
                             qPrintable(filter));
                }
            }
        }
    }

    /// A filter that only resembles a list of keys is evaluated by SQLite, or refused with SQLite's message.
    void whatIsNoPlainListOfKeysIsLeftToSQLite()
    {
        const auto dataset = on({{text("I"), TFieldType::Integer}, {text("in"), TFieldType::Integer}},
                                {{-5, 1}, {0, 2}, {10, 3}, {16, 4}, {QVariant(), 5}});
        QCOMPARE(passing(*dataset, text("I in (0x10, 1e1)")), (QList<int>{3, 4}));
        QCOMPARE(passing(*dataset, text("I in (+10, - 5)")), (QList<int>{1, 3}));
        QCOMPARE(passing(*dataset, text("I in ('10', 10.0)")), QList<int>{3});
        QCOMPARE(passing(*dataset, text("I in (9223372036854775807, 99999999999999999999)")), QList<int>());
        QCOMPARE(passing(*dataset, text("I in (-9223372036854775808)")), QList<int>());
        QCOMPARE(passing(*dataset, text("I in ()")), QList<int>());
        QCOMPARE(passing(*dataset, text("not(I in ())")), (QList<int>{1, 2, 3, 4, 5}));
        QCOMPARE(passing(*dataset, text("not(I in (10, null))")), QList<int>());
        QCOMPARE(passing(*dataset, text("I not in (10)")), (QList<int>{1, 2, 4}));
        QCOMPARE(passing(*dataset, text("I in (10) or I in (0)")), (QList<int>{2, 3}));
        QCOMPARE(passing(*dataset, text("I in (--5)\n10)")), QList<int>{3});
        QCOMPARE(passing(*dataset, text("[in] in (5)")), QList<int>{5});
        for (const char *filter : {"I in (1", "I in 1)", "I in (1))", "I in (1,)", "I in (,1)",
                                   "not(I in (1)", "not I in (1))", "I in (1 2)", "I in (12x)", "in in (1)",
                                   "J in (1)", "I in (1);", "I in (1) 2", "in (1)", "not(in (1))"})
            QVERIFY2(refusal(*dataset, text(filter)).startsWith(text("Dataset \"cdsTest\" cannot use")),
                     filter);
    }

    void aFilterAgreesWithTheRowsThemselves()
    {
        // Few and many different values, with nulls and with or without an index. The filter must find the
        // rows that a check of each single row finds.
        QRandomGenerator random(7);
        for (const int spread : {1, 3, 50, 1000, 100000}) {
            QList<QVariantList> rows;
            for (int i = 0; i < 3000; ++i) {
                const int value = random.bounded(spread);
                const QVariant whole = random.bounded(10) == 0 ? QVariant() : QVariant(value);
                rows.append({whole, u"T%1"_s.arg(value), value / 4.0, i});
            }
            const auto dataset = on({{text("I"), TFieldType::Integer},
                                     {text("S"), TFieldType::String},
                                     {text("F"), TFieldType::Float},
                                     {text("N"), TFieldType::Integer}},
                                    rows);
            const auto expected = [&](const std::function<bool(const QVariantList &)> &test) {
                QList<int> found;
                for (int i = 0; i < rows.size(); ++i) {
                    if (test(rows[i]))
                        found.append(i + 1);
                }
                return found;
            };
            const int half = spread / 2;
            for (const bool indexed : {false, true}) {
                if (indexed)
                    dataset->Lookup(text("S"), text("T0"), text("I"));
                QCOMPARE(passing(*dataset, text("I < %1").arg(half)), expected([&](const QVariantList &row) {
                             return row[0].isValid() && row[0].toInt() < half;
                         }));
                QCOMPARE(passing(*dataset, text("I is null or I > %1").arg(half)),
                         expected([&](const QVariantList &row) {
                             return !row[0].isValid() || row[0].toInt() > half;
                         }));
                QCOMPARE(passing(*dataset, text("S = 'T%1' or S = 'T0'").arg(half)),
                         expected([&](const QVariantList &row) {
                             return row[1].toString() == text("T%1").arg(half) ||
                                    row[1].toString() == text("T0");
                         }));
                QCOMPARE(passing(*dataset, text("F >= %1").arg(half / 4.0)),
                         expected([&](const QVariantList &row) { return row[2].toDouble() >= half / 4.0; }));
                QCOMPARE(passing(*dataset, text("N % 2 = 1 and I < %1").arg(half)),
                         expected([&](const QVariantList &row) {
                             return row[3].toInt() % 2 == 1 && row[0].isValid() && row[0].toInt() < half;
                         }));
            }
        }
    }

    void lookUpsSeeTheFilterOfTheirOwnCursor()
    {
        QList<QVariantList> rows;
        for (int i = 0; i < 1000; ++i)
            rows.append({i, 1});
        const auto dataset = on({{text("ID"), TFieldType::Integer}, {text("G"), TFieldType::Integer}}, rows);
        TClientDataSet clone;
        clone.CloneCursor(dataset.get(), true, false);
        dataset->SetFilter(text("ID >= 700"));
        dataset->SetFiltered(true);
        for (int round = 0; round < 3; ++round) {
            QVERIFY(dataset->Locate(text("G"), 1));
            QCOMPARE(dataset->CurrentTableRow(), 700);
            QVERIFY(clone.Locate(text("G"), 1));
            QCOMPARE(clone.CurrentTableRow(), 0);
        }
        dataset->SetFilter(text("ID >= 800"));
        QVERIFY(dataset->Locate(text("G"), 1));
        QCOMPARE(dataset->CurrentTableRow(), 800);
        dataset->SetFilter(text("ID < 0"));
        QVERIFY(!dataset->Locate(text("G"), 1));
    }

    void manyCursorsComeAndGo()
    {
        const auto dataset = allTypes();
        for (int i = 0; i < 50; ++i) {
            TClientDataSet clone;
            clone.CloneCursor(dataset.get(), true, true);
            clone.SetFilter(text("I > %1").arg(i % 3));
            clone.SetFiltered(true);
            QCOMPARE(clone.RecordCount(), 3 - i % 3);
        }
        QCOMPARE(dataset->RecordCount(), 4);
    }
};

ZEL_TEST_MAIN(TestFilter)
#include "tst_filter.moc"
