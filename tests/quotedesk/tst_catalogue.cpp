#include "ZelTest.h"

#include "catalogue/CatalogueDatabase.h"
#include "catalogue/CatalogueError.h"
#include "catalogue/CatalogueFile.h"
#include "catalogue/CatalogueProviders.h"
#include "catalogue/CsvReader.h"
#include "catalogue/TwinCaptions.h"

#include "data/ClientDataSet.h"

#include <QDir>
#include <QFile>
#include <QSet>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

using namespace QuoteDesk;

namespace
{

const QByteArray Header = "GroupTypeID,GroupTypeDesc,FundGroupID,FundGroupName,FundID,FundName\r\n";

/// The message of the CatalogueError that @p body throws; empty when it throws nothing.
template <typename Body> QString errorOf(Body &&body)
{
    try {
        body();
        return {};
    } catch (const CatalogueError &error) {
        return error.message();
    }
}

/// The rows of a dataset as texts: "a|b|c" per row.
QStringList rowsOf(TDataSet &dataset, const QStringList &fields)
{
    QList<TField *> columns;
    for (const QString &field : fields)
        columns.append(dataset.FieldByName(field));
    QStringList rows;
    for (dataset.First(); !dataset.Eof(); dataset.Next()) {
        QStringList row;
        for (const TField *column : std::as_const(columns))
            row.append(column->AsString());
        rows.append(row.join(u'|'));
    }
    return rows;
}

/// A client dataset opened on one of the providers like those in the frames.
class ProviderRows : public TClientDataSet
{
public:
    ProviderRows(CatalogueProviders &providers, const char *name,
                 std::initializer_list<std::pair<const char *, int>> params)
    {
        SetRemoteServer(providers.connection());
        SetProviderName(QString::fromLatin1(name));
        // The frames set their FixedChar parameters as integers.
        for (const auto &[param, value] : params)
            Params().Add(QString::fromLatin1(param), TParamDataType::FixedChar).SetAsInteger(value);
        Open();
    }
};

} // namespace

class tst_catalogue : public ZelTest
{
    Q_OBJECT

private Q_SLOTS:
#ifdef Q_OS_LINUX
    // Runs first, because later tests raise the peak of memory use.
    void aSmallFileTakesLittleMemory();
#endif
    void readsCsv_data();
    void readsCsv();
    void readsLineNumbers();
    void refusesBadCsv_data();
    void refusesBadCsv();

    void readsPlainAndPackedFiles();
    void refusesFilesThatCannotBeRead();

    void embeddedCatalogueHasItsSize();
    void embeddedCatalogueHasTheSpecialNumbers();
    void groupTypeProvider();
    void groupProviderKeepsTypesTogether();
    void perProductProvider();
    void messageProvider();
    void fundPacketFields();
    void fundPacketKeepsGroupsTogether();
    void fundPacketOfSomeFunds();
    void twinsAreToldApart();
    void captionsOfTwins_data();
    void captionsOfTwins();
    void someGroupsAreOfferedWithoutFunds();
    void providerWithoutItsParameter();

    void importReplacesTheFunds();
    void importSortsScatteredGroups();
    void refusesWhatIsNoCatalogue_data();
    void refusesWhatIsNoCatalogue();
    void importsTheRealCatalogue();

private:
    QString write(const QByteArray &content);

    QTemporaryDir m_folder;
    int m_files = 0;
};

QString tst_catalogue::write(const QByteArray &content)
{
    QFile file(m_folder.filePath(u"catalogue%1.csv"_s.arg(++m_files)));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("The test's file cannot be written");
    return file.fileName();
}

#ifdef Q_OS_LINUX
void tst_catalogue::aSmallFileTakesLittleMemory()
{
    const auto largestSize = []() -> qint64 { // in kB; AddressSanitizer reserves terabytes in advance
        QFile status(u"/proc/self/status"_s);
        if (!status.open(QIODevice::ReadOnly))
            return -1;
        for (const QByteArray &line : status.readAll().split('\n')) {
            if (line.startsWith("VmPeak:"))
                return line.simplified().split(' ').at(1).toLongLong();
        }
        return -1;
    };
    const QString path = write(Header + "1,Type,2,Group,3,Fund\r\n");
    const qint64 before = largestSize();
    QVERIFY(before > 0);
    QVERIFY(!readCatalogueFile(path).isEmpty());
    QVERIFY2(largestSize() - before < 64 * 1024, qPrintable(QString::number(largestSize() - before)));
}
#endif

void tst_catalogue::readsCsv_data()
{
    QTest::addColumn<QString>("csv");
    QTest::addColumn<QStringList>("records");

    const auto row = [](const char *name, const char *csv, const QStringList &records) {
        QTest::newRow(name) << QString::fromUtf8(csv) << records;
    };
    row("empty", "", {});
    row("one", "a,b,c", {u"a|b|c"_s});
    row("line feed", "a,b\nc,d\n", {u"a|b"_s, u"c|d"_s});
    row("carriage return and line feed", "a,b\r\nc,d\r\n", {u"a|b"_s, u"c|d"_s});
    row("no end of line at the end", "a,b\r\nc,d", {u"a|b"_s, u"c|d"_s});
    row("blank lines", "\r\na\r\n\r\n\nb\n\n", {u"a"_s, u"b"_s});
    row("empty fields", "a,,\n,b,\n", {u"a||"_s, u"|b|"_s});
    row("quoted", "\"a\",\"b,c\"\n", {u"a|b,c"_s});
    row("quote in quotes", "\"say \"\"so\"\"\",b\n", {u"say \"so\"|b"_s});
    row("empty quoted", "\"\",b\n", {u"|b"_s});
    row("line break in quotes", "\"a\r\nb\",c\r\nd,e\r\n", {u"a\r\nb|c"_s, u"d|e"_s});
    row("blanks are kept", " a , b \n", {u" a | b "_s});
    row("carriage return alone", "a\rb,c\n", {u"a\rb|c"_s});
}

void tst_catalogue::readsCsv()
{
    QFETCH(QString, csv);
    QFETCH(QStringList, records);

    CsvReader reader(csv);
    QStringList found;
    while (reader.readRecord())
        found.append(reader.fields().join(u'|'));
    QCOMPARE(found, records);
}

void tst_catalogue::readsLineNumbers()
{
    CsvReader reader(u"a\r\n\r\n\"b\nb\nb\",c\nd"_s);
    QList<int> lines;
    while (reader.readRecord())
        lines.append(reader.line());
    QCOMPARE(lines, (QList<int>{1, 3, 6}));
}

void tst_catalogue::refusesBadCsv_data()
{
    QTest::addColumn<QString>("csv");
    QTest::addColumn<QString>("message");

    QTest::newRow("quote inside")
        << u"a,b\nc,d\"e\n"_s << u"line 2: a quotation mark inside a field that does not begin with one"_s;
    QTest::newRow("never closed") << u"a\n\"b\nc\n"_s
                                  << u"line 2: the quotation mark that begins a field is never closed"_s;
    QTest::newRow("text behind") << u"a,\"b\"c\n"_s
                                 << u"line 1: text after the closing quotation mark of a field"_s;
}

void tst_catalogue::refusesBadCsv()
{
    QFETCH(QString, csv);
    QFETCH(QString, message);

    CsvReader reader(csv);
    QCOMPARE(errorOf([&reader] {
                 while (reader.readRecord()) {
                 }
             }),
             message);
}

void tst_catalogue::readsPlainAndPackedFiles()
{
    const QByteArray text = Header + "1,Type,2,Group,3,Caf\xc3\xa9 Fund\r\n";
    const QString plain = write(text);
    QCOMPARE(readCatalogueFile(plain).toUtf8(), text);
    QCOMPARE(readCatalogueFile(write("\xef\xbb\xbf" + text)).toUtf8(), text);
    QCOMPARE(readCatalogueFile(write("")), QString());

    // The same text, compressed with gzip.
    const QByteArray packed = QByteArray::fromBase64(
        "H4sIAAAAAAACA3Mvyi8tCKksSPV00XGHsV1Si5N13ErzUsAiQBk42y8xNxXMgwqC+LxchjogXTpGEBN0jHWcE9MOr1QAKeDlAgC8"
        "u2q/YgAAAA==");
    QCOMPARE(readCatalogueFile(write(packed)).toUtf8(), text);
    // Several compressed files joined together are one file.
    QCOMPARE(readCatalogueFile(write(packed + packed)).toUtf8(), text + text);

    QCOMPARE(errorOf([&] { readCatalogueFile(write(packed.chopped(9))); }),
             u"the packed file is damaged or cut off; get it again"_s);
    QByteArray damaged = packed;
    damaged[damaged.size() - 6] = static_cast<char>(damaged.at(damaged.size() - 6) ^ 0x55);
    QCOMPARE(errorOf([&] { readCatalogueFile(write(damaged)); }),
             u"the packed file is damaged or cut off; get it again"_s);
}

void tst_catalogue::refusesFilesThatCannotBeRead()
{
    QCOMPARE(errorOf([this] { readCatalogueFile(m_folder.filePath(u"missing.csv"_s)); }),
             u"there is no such file"_s);
    QCOMPARE(errorOf([this] { readCatalogueFile(m_folder.path()); }), u"it is a folder; choose a file"_s);
    QCOMPARE(errorOf([this] { readCatalogueFile(write("good\nbad \xff\n")); }),
             u"line 2: this is not text in UTF-8: byte 0xff after \"bad\"; save the file as UTF-8"_s);
    QCOMPARE(errorOf([this] { readCatalogueFile(write(QByteArray("a\nb\n\0\n", 6))); }),
             u"line 3: this is not text in UTF-8: byte 0x00 after \"\"; save the file as UTF-8"_s);
    QCOMPARE(errorOf([this] { readCatalogueFile(write("caf\xc3\xa9,\xe2\x82\xac caf\xe9\n")); }),
             u"line 1: this is not text in UTF-8: byte 0xe9 after \"caf\u00e9,\u20ac caf\"; save "
             "the file as UTF-8"_s);
    // Other file formats are named in the message, whether bad lines are skipped or not.
    const struct {
        QByteArray bytes;
        const char *word;
    } others[] = {{QByteArray("\xff\xfeG\0r\0", 6), "UTF-16"},
                  {QByteArray("\xfe\xff\0G\0r", 6), "UTF-16"},
                  {QByteArray("PK\x03\x04\x14\0", 6), "workbook"},
                  {QByteArray("\xd0\xcf\x11\xe0\xa1"), "older program"},
                  {QByteArray("%PDF-1.7\n"), "PDF"},
                  {QByteArray("SQLite format 3\0", 16), "database"}};
    for (const auto &other : others) {
        const QString path = write(other.bytes);
        for (const BadText badText : {BadText::Refuse, BadText::Mark}) {
            const QString message = errorOf([&] { readCatalogueFile(path, badText); });
            QVERIFY2(message.contains(QLatin1String(other.word)), qPrintable(message));
        }
    }
}

void tst_catalogue::embeddedCatalogueHasItsSize()
{
    const CatalogueDatabase catalogue;
    const QList<Product> products = catalogue.products();
    QCOMPARE(products.size(), 3);
    QSet<int> productGroups;
    for (const Product &product : products) {
        QVERIFY(!product.name.isEmpty());
        productGroups.insert(product.productGroupID);
    }
    QCOMPARE(productGroups.size(), 2);

    QSqlQuery query(u"SELECT (SELECT count(*) FROM group_types), (SELECT count(*) FROM fund_groups),"
                    " (SELECT count(DISTINCT FundID) FROM funds), (SELECT count(*) FROM fund_messages),"
                    " (SELECT count(*) FROM funds WHERE trim(FundName_AFR) = '' OR FundName_AFR = FundName),"
                    " (SELECT count(*) FROM funds WHERE FundSheetURL <> ''),"
                    " (SELECT count(*) FROM funds WHERE FundSheetURL NOT LIKE 'https://%.example/%'"
                    "   AND FundSheetURL <> '')"_s,
                    QSqlDatabase::database(catalogue.connectionName()));
    QVERIFY(query.next());
    QCOMPARE(query.value(0).toInt(), 4);
    QVERIFY(query.value(1).toInt() >= 30 && query.value(1).toInt() < 40);
    QVERIFY(query.value(2).toInt() >= 290 && query.value(2).toInt() < 320);
    QVERIFY(query.value(3).toInt() > 0);
    QCOMPARE(query.value(4).toInt(), 0);
    QVERIFY(query.value(5).toInt() > 250);
    QCOMPARE(query.value(6).toInt(), 0);
}

void tst_catalogue::embeddedCatalogueHasTheSpecialNumbers()
{
    const CatalogueDatabase catalogue;
    for (const int fund : {38, 210, 249, 644, 658, 678, 813})
        QVERIFY2(catalogue.hasFund(fund), qPrintable(QString::number(fund)));
    QVERIFY(!catalogue.hasFund(-1));
    QVERIFY(!catalogue.hasFund(999999));

    CatalogueProviders providers(catalogue);
    ProviderRows groups(providers, "dspFundGroup", {{"pProductGroupID", 1}});
    for (const int group : {8, 11, 12, 13, 14, 67, 68})
        QVERIFY2(groups.Locate(u"FundGroupID"_s, group, {}), qPrintable(QString::number(group)));
    ProviderRows types(providers, "dspFundGroupType", {{"pProductGroupID", 1}});
    for (const int type : {58, 59})
        QVERIFY(types.Locate(u"GroupTypeID"_s, type, {}));

    // A fund in two of the special groups.
    TClientDataSet funds;
    funds.SetData(providers.fundPacket(1));
    QHash<int, QSet<int>> groupsOfFund;
    for (; !funds.Eof(); funds.Next())
        groupsOfFund[funds.FieldByName(u"FundID"_s)->AsInteger()].insert(
            funds.FieldByName(u"FundGroupID"_s)->AsInteger());
    QVERIFY(std::any_of(groupsOfFund.cbegin(), groupsOfFund.cend(),
                        [](const QSet<int> &set) { return set.contains(11) && set.contains(13); }));
    QVERIFY(groupsOfFund.value(38).contains(8));
}

void tst_catalogue::groupTypeProvider()
{
    const CatalogueDatabase catalogue;
    CatalogueProviders providers(catalogue);
    ProviderRows types(providers, "dspFundGroupType", {{"pProductGroupID", 2}});
    QCOMPARE(rowsOf(types, {u"GroupTypeID"_s, u"GroupTypeDesc"_s}),
             (QStringList{u"1|Unit Trust Funds"_s, u"3|Pooled Portfolios"_s, u"58|Preservation Range"_s,
                          u"59|Guaranteed and Structured Funds"_s}));
    QCOMPARE(types.FieldByName(u"GroupTypeID"_s)->DataType(), TFieldType::Integer);
    QCOMPARE(types.FieldByName(u"GroupTypeDesc"_s)->DataType(), TFieldType::String);

    ProviderRows none(providers, "dspFundGroupType", {{"pProductGroupID", 99}});
    QCOMPARE(none.RecordCount(), 0);
}

void tst_catalogue::groupProviderKeepsTypesTogether()
{
    const CatalogueDatabase catalogue;
    CatalogueProviders providers(catalogue);
    ProviderRows groups(providers, "dspFundGroup", {{"pProductGroupID", 1}});
    QStringList types = rowsOf(groups, {u"GroupTypeID"_s});
    const qsizetype runs = std::unique(types.begin(), types.end()) - types.begin();
    QCOMPARE(runs, 4);

    // The retirement groups do not belong to the investment plan's product group.
    ProviderRows plan(providers, "dspFundGroup", {{"pProductGroupID", 2}});
    QVERIFY(groups.Locate(u"FundGroupName"_s, u"Preservation Equity"_s, {}));
    QVERIFY(!plan.Locate(u"FundGroupName"_s, u"Preservation Equity"_s, {}));
    QVERIFY(plan.Locate(u"FundGroupName"_s, u"International Portfolios"_s, {}));
    QCOMPARE(plan.FieldByName(u"FundGroupID"_s)->AsInteger(), 24);
    QCOMPARE(plan.FieldByName(u"FundGroupID"_s)->DataType(), TFieldType::Integer);
}

void tst_catalogue::perProductProvider()
{
    const CatalogueDatabase catalogue;
    CatalogueProviders providers(catalogue);
    ProviderRows horizon(providers, "dspFundPerProduct", {{"pProductID", 1}, {"pProductGroupID", 1}});
    ProviderRows harvest(providers, "dspFundPerProduct", {{"pProductID", 2}, {"pProductGroupID", 1}});
    QVERIFY(horizon.Locate(u"FundGroupID"_s, 16, {}));
    QVERIFY(!harvest.Locate(u"FundGroupID"_s, 16, {}));
    QVERIFY(!horizon.Locate(u"FundGroupID"_s, 27, {}));
    QVERIFY(harvest.Locate(u"FundGroupID"_s, 27, {}));
}

void tst_catalogue::messageProvider()
{
    const CatalogueDatabase catalogue;
    CatalogueProviders providers(catalogue);
    for (const int group : {11, 12, 67, 68}) {
        ProviderRows messages(providers, "dspFundMessage", {{"pFundGroupID", group}});
        QVERIFY(messages.RecordCount() > 0);
        for (const QString &fund : rowsOf(messages, {u"FundID"_s}))
            QVERIFY(catalogue.hasFund(fund.toInt()));
    }
    ProviderRows none(providers, "dspFundMessage", {{"pFundGroupID", 1}});
    QVERIFY(none.IsEmpty());
}

void tst_catalogue::fundPacketFields()
{
    const CatalogueDatabase catalogue;
    const CatalogueProviders providers(catalogue);
    TClientDataSet funds;
    funds.SetData(providers.fundPacket(1));

    const QList<std::pair<const char *, TFieldType>> fields{{"FundID", TFieldType::Integer},
                                                            {"GroupTypeID", TFieldType::Integer},
                                                            {"FundGroupID", TFieldType::Integer},
                                                            {"FundGroupName", TFieldType::String},
                                                            {"FundGroupName_Afr", TFieldType::String},
                                                            {"FundName", TFieldType::String},
                                                            {"FundName_AFR", TFieldType::String},
                                                            {"F.MainframeID", TFieldType::String},
                                                            {"MinimumInitialAmount", TFieldType::Float},
                                                            {"MinimumSchedAmount", TFieldType::Float},
                                                            {"BuySellRate", TFieldType::Float},
                                                            {"ManRate", TFieldType::Float},
                                                            {"UnderlyingManRate", TFieldType::Float},
                                                            {"GuaranteeRate", TFieldType::Float},
                                                            {"TrustRate", TFieldType::Float},
                                                            {"FundTerm", TFieldType::Integer},
                                                            {"InternationalFund", TFieldType::Boolean},
                                                            {"AllowAsGuarantee", TFieldType::Boolean},
                                                            {"Benchmark", TFieldType::String},
                                                            {"BenchmarkPerf", TFieldType::String},
                                                            {"MinPerfFee", TFieldType::String},
                                                            {"MaxPerfFee", TFieldType::String},
                                                            {"FundSheetURL", TFieldType::String},
                                                            {"ProductID", TFieldType::Integer}};
    for (const auto &[name, type] : fields) {
        const TField *field = funds.FindField(QString::fromLatin1(name));
        QVERIFY2(field, name);
        QVERIFY2(field->DataType() == type, name);
    }

    QVERIFY(funds.Locate(u"FundID"_s, 12, {}));
    QCOMPARE(rowsOf(funds, {u"ProductID"_s}).constFirst(), u"1"_s);
    QVERIFY(funds.Locate(u"FundID"_s, 12, {}));
    const auto text = [&funds](const char *name) {
        return funds.FieldByName(QString::fromLatin1(name))->AsString();
    };
    QCOMPARE(text("FundName"), u"Karoo Equity Fund"_s);
    QCOMPARE(text("FundName_AFR"), u"Karoo Aandelefonds"_s);
    QCOMPARE(text("FundGroupName"), u"Karoo Funds"_s);
    QCOMPARE(text("FundGroupName_Afr"), u"Karoofondse"_s);
    QCOMPARE(text("F.MainframeID"), u"KEF0012"_s);
    QCOMPARE(text("FundSheetURL"), u"https://factsheets.quotedesk.example/12.pdf"_s);

    // A fund with a guarantee and a term, as the Guarantee button needs it.
    QVERIFY(funds.Locate(u"FundGroupID"_s, 14, {}));
    QVERIFY(funds.FieldByName(u"FundTerm"_s)->AsInteger() > 0);
    QVERIFY(funds.FieldByName(u"AllowAsGuarantee"_s)->AsBoolean());

    TClientDataSet none;
    none.SetData(providers.fundPacket(99));
    QVERIFY(none.IsEmpty());
}

void tst_catalogue::fundPacketKeepsGroupsTogether()
{
    const CatalogueDatabase catalogue;
    const CatalogueProviders providers(catalogue);
    for (const Product &product : catalogue.products()) {
        TClientDataSet funds;
        funds.SetData(providers.fundPacket(product.productID));
        QStringList groups = rowsOf(funds, {u"FundGroupID"_s});
        const QSet<QString> distinct(groups.cbegin(), groups.cend());
        QCOMPARE(std::unique(groups.begin(), groups.end()) - groups.begin(), distinct.size());
    }
}

void tst_catalogue::fundPacketOfSomeFunds()
{
    CatalogueDatabase catalogue;
    for (const bool afrikaans : {false, true}) {
        catalogue.setAfrikaans(afrikaans);
        const CatalogueProviders providers(catalogue);
        TClientDataSet all;
        all.SetData(providers.fundPacket(1));
        QStringList fields;
        for (int i = 0; i < all.FieldCount(); ++i)
            fields.append(all.Fields(i)->FieldName());
        const QStringList rows = rowsOf(all, fields);
        QList<int> wanted;
        QStringList expected;
        int row = 0;
        for (all.First(); !all.Eof(); all.Next(), ++row) {
            const int id = all.FieldByName(u"FundID"_s)->AsInteger();
            if (id % 7 != 0)
                continue;
            wanted.prepend(id);
            expected.append(rows.at(row));
        }
        QVERIFY(expected.size() > 20);
        // Funds that the product does not offer or that do not exist are left out.
        wanted += {213, 999'999};
        TClientDataSet some;
        some.SetData(providers.fundPacket(1, wanted));
        QCOMPARE(rowsOf(some, fields), expected);
        some.SetData(providers.fundPacket(1, {}));
        QVERIFY(some.IsEmpty());
        QVERIFY(some.FindField(u"AllowAsGuarantee"_s)->DataType() == TFieldType::Boolean);
    }
}

void tst_catalogue::twinsAreToldApart()
{
    CatalogueDatabase catalogue;
    CatalogueProviders providers(catalogue);
    catalogue.importFile(write(Header + "1,T,10,Cape,100,Growth Fund\n1,T,11,Karoo,101,growth fund \n"
                                        "1,T,10,Cape,102,Income\n1,T,11,Karoo,102,Income\n"
                                        "1,T,10,Cape,103,Twin\n1,T,10,Cape,104,Twin\n"));
    TClientDataSet funds;
    funds.SetData(providers.fundPacket(1));
    // A fund in two groups is one fund and keeps its name.
    QCOMPARE(rowsOf(funds, {u"FundID"_s, u"FundName"_s}),
             (QStringList{u"100|Growth Fund (Cape)"_s, u"102|Income"_s, u"103|Twin (103)"_s,
                          u"104|Twin (104)"_s, u"101|growth fund (Karoo)"_s, u"102|Income"_s}));
    QCOMPARE(rowsOf(funds, {u"FundName_ENG"_s}).mid(0, 3),
             (QStringList{u"Growth Fund"_s, u"Income"_s, u"Twin"_s}));
}

void tst_catalogue::captionsOfTwins_data()
{
    QTest::addColumn<QStringList>("rows"); // number, name, group
    QTest::addColumn<QStringList>("captions");
    const auto row = [](const char *name, const QStringList &rows, const QStringList &captions) {
        QTest::newRow(name) << rows << captions;
    };
    const auto list = [](std::initializer_list<const char *> texts) {
        QStringList result;
        for (const char *text : texts)
            result.append(QString::fromUtf8(text));
        return result;
    };
    row("none", list({"1|A|G", "2|B|G"}), list({"A", "B"}));
    row("groups", list({"1|A|G", "2|A|H"}), list({"A (G)", "A (H)"}));
    row("one group", list({"1|A|G", "2|A|g"}), list({"A (1)", "A (2)"}));
    row("no group", list({"1|A|G", "2|A|"}), list({"A (1)", "A (2)"}));
    row("one in two groups", list({"1|A|G", "1|A|H", "2|A|H"}), list({"A (1)", "A (1)", "A (2)"}));
    row("a caption that is taken", list({"1|A|G", "2|A|H", "3|a (g)|I"}), list({"A (1)", "A (2)", "a (g)"}));
    row("all that are taken", list({"1|A|G", "2|A|H", "3|A (G)|I", "4|A (2)|I"}),
        list({"A (1) (1)", "A (2) (2)", "A (G)", "A (2)"}));
    row("twins of what twins become", list({"1|A|G", "2|A|G", "3|A (1)|G", "4|A (1)|G"}),
        list({"A (1) (1)", "A (2) (2)", "A (1) (3)", "A (1) (4)"}));
}

void tst_catalogue::captionsOfTwins()
{
    QFETCH(QStringList, rows);
    const TwinCaptions captions = twinCaptions([&rows](const FundVisitor &visitor) {
        for (const QString &row : rows)
            visitor(row.section(u'|', 0, 0).toInt(), row.section(u'|', 1, 1), row.section(u'|', 2));
    });
    QStringList shown;
    for (const QString &row : rows) {
        const QString name = row.section(u'|', 1, 1);
        shown.append(captions.value({row.section(u'|', 0, 0).toInt(), name}, name));
    }
    QTEST(shown, "captions");
}

void tst_catalogue::someGroupsAreOfferedWithoutFunds()
{
    const CatalogueDatabase catalogue;
    CatalogueProviders providers(catalogue);
    for (const Product &product : catalogue.products()) {
        TClientDataSet funds;
        funds.SetData(providers.fundPacket(product.productID));
        ProviderRows offered(
            providers, "dspFundPerProduct",
            {{"pProductID", product.productID}, {"pProductGroupID", product.productGroupID}});
        int without = 0;
        for (const QString &group : rowsOf(offered, {u"FundGroupID"_s}))
            without += funds.Locate(u"FundGroupID"_s, group, {}) ? 0 : 1;
        QVERIFY2(without > 0, qPrintable(product.name));
    }
}

void tst_catalogue::providerWithoutItsParameter()
{
    const CatalogueDatabase catalogue;
    CatalogueProviders providers(catalogue);
    QVERIFY_THROWS_EXCEPTION(EDatabaseError,
                             providers.connection()->GetRecords(u"dspFundGroup"_s, TParams()));
    QVERIFY_THROWS_EXCEPTION(EDatabaseError,
                             providers.connection()->GetRecords(u"dspNoSuchThing"_s, TParams()));
}

void tst_catalogue::importReplacesTheFunds()
{
    CatalogueDatabase catalogue;
    CatalogueProviders providers(catalogue);
    catalogue.importFile(write(Header + "7,\"Shares, all\",70,House,700,\"The \"\"Best\"\" Fund\"\r\n"
                                        "7,\"Shares, all\",70,House,701,  Second Fund  \r\n"));
    QCOMPARE(catalogue.products().size(), 3);
    QVERIFY(catalogue.hasFund(700));
    QVERIFY(!catalogue.hasFund(12));
    for (const Product &product : catalogue.products()) {
        ProviderRows offered(
            providers, "dspFundPerProduct",
            {{"pProductID", product.productID}, {"pProductGroupID", product.productGroupID}});
        QCOMPARE(rowsOf(offered, {u"FundGroupID"_s}), QStringList{u"70"_s});
        TClientDataSet funds;
        funds.SetData(providers.fundPacket(product.productID));
        QCOMPARE(
            rowsOf(funds, {u"FundID"_s, u"FundName"_s, u"FundName_AFR"_s, u"F.MainframeID"_s, u"FundTerm"_s,
                           u"FundSheetURL"_s, u"ManRate"_s, u"GroupTypeID"_s, u"ProductID"_s}),
            (QStringList{u"700|The \"Best\" Fund|The \"Best\" Fund|700|0||0|7|%1"_s.arg(product.productID),
                         u"701|  Second Fund  |  Second Fund  |701|0||0|7|%1"_s.arg(product.productID)}));
    }
    ProviderRows messages(providers, "dspFundMessage", {{"pFundGroupID", 11}});
    QVERIFY(messages.IsEmpty());
}

void tst_catalogue::importSortsScatteredGroups()
{
    CatalogueDatabase catalogue;
    CatalogueProviders providers(catalogue);
    catalogue.importFile(write(Header + "1,A,10,G10,100,f100\n2,B,20,G20,200,f200\n1,A,11,G11,110,f110\n"
                                        "1,A,10,G10,101,f101\n2,B,20,G20,201,f201\n1,A,11,G11,100,f100\n"));
    TClientDataSet funds;
    funds.SetData(providers.fundPacket(1));
    QCOMPARE(rowsOf(funds, {u"FundGroupID"_s, u"FundID"_s}),
             (QStringList{u"10|100"_s, u"10|101"_s, u"11|110"_s, u"11|100"_s, u"20|200"_s, u"20|201"_s}));
    ProviderRows groups(providers, "dspFundGroup", {{"pProductGroupID", 2}});
    QCOMPARE(rowsOf(groups, {u"FundGroupID"_s}), (QStringList{u"10"_s, u"11"_s, u"20"_s}));
}

void tst_catalogue::refusesWhatIsNoCatalogue_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("message");

    const QString wanted = u'"' + QString::fromLatin1(Header.trimmed()) + u'"';
    const auto noCatalogue = [&wanted](const QByteArray &found) {
        return u"line 1: this is not a fund catalogue: "_s + QString::fromUtf8(found) + wanted;
    };
    const auto row = [](const char *name, const QByteArray &content, const QString &message) {
        QTest::newRow(name) << content << message;
    };
    const QByteArray good = "1,T,10,G,100,F\r\n";
    row("empty", "", noCatalogue("the file is empty; its first line must be "));
    row("blank lines", "\n\r\n \n", noCatalogue("the file is empty; its first line must be "));
    row("other text", "Dear reader,\nthis is a letter.\n",
        noCatalogue("its first line is \"Dear reader,\"; it must be "));
    row("a long line", "Dear " + QByteArray(500, 'x') + "\n",
        noCatalogue("its first line is \"Dear " + QByteArray(115, 'x') + "\xe2\x80\xa6\"; it must be "));
    row("columns in another order", "GroupTypeDesc,GroupTypeID,FundGroupID,FundGroupName,FundID,FundName\n",
        noCatalogue(
            "its columns are \"GroupTypeDesc,GroupTypeID,FundGroupID,FundGroupName,FundID,FundName\"; "
            "its first line must be "));
    row("columns missing", "FundID,FundName\n1,F\n",
        noCatalogue("its columns are \"FundID,FundName\"; its first line must be "));
    row("semicolons", QByteArray(Header).replace(',', ';') + "1;T;10;G;100;F\n",
        noCatalogue("its columns are separated by \";\" and not by commas; its first line must be "));
    row("tabs", QByteArray(Header).replace(',', '\t'),
        noCatalogue("its columns are separated by \"Tab\" and not by commas; its first line must be "));
    row("binary",
        QByteArray("\x7f"
                   "ELF\x02\x01\x01\x00\x00",
                   9),
        u"line 1: this is not text in UTF-8: byte 0x00 after \"\uFFFDELF\uFFFD\uFFFD\uFFFD\"; "
        "save the file as UTF-8"_s);
    row("header only", Header, u"line 2: the catalogue holds no fund"_s);
    row("too few fields", Header + good + "1,T,10,G,101\r\n",
        u"line 3: 5 fields instead of 6: \"1,T,10,G,101\""_s);
    row("too many fields", Header + "1,T,10,G,101,F,x\r\n",
        u"line 2: 7 fields instead of 6: \"1,T,10,G,101,F,x\""_s);
    row("fund twice in a group", Header + good + good,
        u"line 3: fund 100 is already in fund group 10, by line 2"_s);
    row("fund ID", Header + good + "1,T,10,G,abc,F\r\n",
        u"line 3: FundID \"abc\" is not a whole number from 1 to 2147483647"_s);
    row("fund ID zero", Header + "1,T,10,G,0,F\r\n",
        u"line 2: FundID \"0\" is not a whole number from 1 to 2147483647"_s);
    row("group ID too large", Header + "1,T,2147483648,G,1,F\r\n",
        u"line 2: FundGroupID \"2147483648\" is not a whole number from 1 to 2147483647"_s);
    row("type ID negative", Header + "-1,T,10,G,1,F\r\n",
        u"line 2: GroupTypeID \"-1\" is not a whole number from 1 to 2147483647"_s);
    row("blank name", Header + "1,T,10,G,1,  \r\n", u"line 2: FundName is blank"_s);
    row("two names of a group", Header + good + "1,T,10,H,101,F\r\n",
        u"line 3: FundGroupID 10 is called \"H\", and \"G\" on line 2"_s);
    row("group of two types", Header + good + "2,U,10,G,101,F\r\n",
        u"line 3: FundGroupID 10 is of GroupTypeID 2, and of 1 on line 2"_s);
    row("two names of a type", Header + good + "1,U,11,H,101,F\r\n",
        u"line 3: GroupTypeID 1 is called \"U\", and \"T\" on line 2"_s);
    row("unclosed quote", Header + good + "1,T,10,G,101,\"F\r\n",
        u"line 3: the quotation mark that begins a field is never closed"_s);
}

void tst_catalogue::refusesWhatIsNoCatalogue()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, message);

    CatalogueDatabase catalogue;
    const QString path = write(content);
    QCOMPARE(errorOf([&] { catalogue.importFile(path); }),
             QDir::toNativeSeparators(path) + u": "_s + message);
    // Nothing of the refused file is stored, and the embedded catalogue stays complete.
    QVERIFY(catalogue.hasFund(12));
    QVERIFY(!catalogue.hasFund(100001));
    CatalogueProviders providers(catalogue);
    TClientDataSet funds;
    funds.SetData(providers.fundPacket(1));
    QVERIFY(funds.RecordCount() > 200);
}

void tst_catalogue::importsTheRealCatalogue()
{
    int types = 0;
    int groups = 0;
    int funds = 0;
    QString path = realCatalogue();
    if (path.isEmpty()) {
        qInfo("The real catalogue is not here; one of 20 types, 400 groups and 12,000 funds is made for the "
              "test");
        QByteArray text = Header;
        for (int fund = 0; fund < 12000; ++fund)
            text += u"%1,Type %1,%2,Group %2,%3,Fund %3\r\n"_s.arg(fund / 600 + 1)
                        .arg(fund / 30 + 1)
                        .arg(100000 + fund)
                        .toUtf8();
        path = write(text);
        types = 20;
        groups = 400;
        funds = 12000;
    } else {
        types = 93;
        groups = 1117;
        funds = 14280;
    }
    CatalogueDatabase catalogue;
    catalogue.importFile(path);
    CatalogueProviders providers(catalogue);
    ProviderRows typeRows(providers, "dspFundGroupType", {{"pProductGroupID", 2}});
    QCOMPARE(typeRows.RecordCount(), types);
    ProviderRows groupRows(providers, "dspFundGroup", {{"pProductGroupID", 2}});
    QCOMPARE(groupRows.RecordCount(), groups);
    TClientDataSet fundRows;
    fundRows.SetData(providers.fundPacket(3));
    QCOMPARE(fundRows.RecordCount(), funds);
    QStringList runs = rowsOf(fundRows, {u"FundGroupID"_s});
    QCOMPARE(std::unique(runs.begin(), runs.end()) - runs.begin(), groups);
}

ZEL_TEST_MAIN(tst_catalogue)
#include "tst_catalogue.moc"
