#include "ZelTest.h"

#include "catalogue/CatalogueDatabase.h"
#include "catalogue/CatalogueError.h"
#include "database/Database.h"
#include "store/QuoteStore.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

using namespace QuoteDesk;

namespace
{

const QByteArray Header = "GroupTypeID,GroupTypeDesc,FundGroupID,FundGroupName,FundID,FundName\r\n";

/// "line reason" for each line that was left out.
QStringList refusedOf(const ImportReport &report)
{
    QStringList lines;
    for (const ImportReport::Refused &refused : report.refused)
        lines.append(u"%1 %2"_s.arg(refused.line).arg(refused.reason));
    return lines;
}

} // namespace

class tst_import : public ZelTest
{
    Q_OBJECT

private Q_SLOTS:
    void importsTheRest();
    void namesHaveALimit();
    void aBadLineTakesNothingWithIt();
    void goesOnAfterQuotesOutOfPlace_data();
    void goesOnAfterQuotesOutOfPlace();
    void linesInAnotherEncoding();
    void refusesWhatHoldsNothingGood_data();
    void refusesWhatHoldsNothingGood();
    void progressGoesUpToTheEnd();
    void cancelledAtAnyMomentChangesNothing();
    void aProgressThatRaisesChangesNothing();
    void importsOverAnImport();
    void saysWhatItTakesAway();
    void takesNothingAwayWithoutConsent();

private:
    QString write(const QByteArray &content);
    QString stateOf(const CatalogueDatabase &catalogue) const;

    QTemporaryDir m_folder;
    int m_files = 0;
};

QString tst_import::write(const QByteArray &content)
{
    QFile file(m_folder.filePath(u"catalogue%1.csv"_s.arg(++m_files)));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("The test's file cannot be written");
    return file.fileName();
}

/// A short summary of a catalogue's content, for comparisons.
QString tst_import::stateOf(const CatalogueDatabase &catalogue) const
{
    return catalogue.database()
        .single(u"SELECT (SELECT count(*) FROM group_types) || ' ' || (SELECT count(*) FROM"
                " fund_groups) || ' ' || (SELECT count(*) || ' ' || sum(FundID) FROM funds) || ' '"
                " || (SELECT count(*) FROM fund_messages)"_s)
        .toString();
}

void tst_import::namesHaveALimit()
{
    CatalogueDatabase catalogue;
    const QByteArray longest(250, 'W');
    const ImportReport report =
        catalogue.importFile(write(Header + "1,T,10,G,100," + longest + "\r\n1,T,10,G,101,W" + longest +
                                   "\r\n1,T,10,G,102," + QByteArray(70000, 'W') + "\r\n"),
                             [](int) { return true; });
    QCOMPARE(report.imported, 1);
    QCOMPARE(refusedOf(report), (QStringList{u"3 FundName has 251 characters; at most 250 fit"_s,
                                             u"4 FundName has 70000 characters; at most 250 fit"_s}));
}

void tst_import::importsTheRest()
{
    CatalogueDatabase catalogue;
    const QString path = write(Header + "1,T,10,G,100,First\r\n" // 2
                                        "1,T,10,G,100,Again\r\n" // 3: listed in this group
                                        "1,T,11,H,100,First\r\n" // 4: listed in another group, which is right
                                        "1,T,10,G,101\r\n"       // 5
                                        "1,T,10,G,101,F,x\r\n"   // 6
                                        "\r\n"                   // 7: blank, not reported
                                        "1,T,10,G,abc,F\r\n"     // 8
                                        "1,T,10,G,0,F\r\n"       // 9
                                        "1,T,10,G,102,  \r\n"    // 10
                                        "1,T,10,Other,103,F\r\n" // 11
                                        "1,U,12,I,104,F\r\n"     // 12
                                        "2,U,10,G,105,F\r\n"     // 13
                                        "2,U,12,I,\"106\",\"Two\r\n" // 14 and 15: one record on two lines
                                        "lines\"\r\n"
                                        "2,U,12,I,107,Last"); // 16
    const ImportReport report = catalogue.importFile(path, [](int) { return true; });
    const QStringList expected{
        u"3 fund 100 is already in fund group 10, by line 2"_s,
        u"5 5 fields instead of 6: \"1,T,10,G,101\""_s,
        u"6 7 fields instead of 6: \"1,T,10,G,101,F,x\""_s,
        u"8 FundID \"abc\" is not a whole number from 1 to 2147483647"_s,
        u"9 FundID \"0\" is not a whole number from 1 to 2147483647"_s,
        u"10 FundName is blank"_s,
        u"11 FundGroupID 10 is called \"Other\", and \"G\" on line 2"_s,
        u"12 GroupTypeID 1 is called \"U\", and \"T\" on line 2"_s,
        u"13 FundGroupID 10 is of GroupTypeID 2, and of 1 on line 2"_s,
    };
    QCOMPARE(refusedOf(report), expected);
    QCOMPARE(report.linesRead, 13);
    QCOMPARE(report.imported, 4);
    QVERIFY(!report.cancelled);
    QCOMPARE(stateOf(catalogue), u"2 3 4 413 0"_s);
    QCOMPARE(catalogue.database().single(u"SELECT FundName FROM funds WHERE FundID = 106"_s).toString(),
             u"Two\r\nlines"_s);

    // The overload without progress refuses a file with bad lines completely.
    CatalogueDatabase strict;
    const QString before = stateOf(strict);
    try {
        strict.importFile(path);
        QFAIL("The file has bad lines");
    } catch (const CatalogueError &error) {
        QCOMPARE(error.message(), QDir::toNativeSeparators(path) +
                                      u": line 3: fund 100 is already in fund group 10, by line 2"_s);
    }
    QCOMPARE(stateOf(strict), before);
}

void tst_import::aBadLineTakesNothingWithIt()
{
    // A refused line does not define its type and group.
    CatalogueDatabase catalogue;
    const ImportReport report =
        catalogue.importFile(write(Header + "1,Wrong,10,Wrong,x,F\r\n1,Right,10,Right,100,F\r\n"), {});
    QCOMPARE(refusedOf(report).size(), 1);
    QCOMPARE(report.imported, 1);
    QCOMPARE(catalogue.database().single(u"SELECT GroupTypeDesc FROM group_types"_s).toString(), u"Right"_s);
    QCOMPARE(catalogue.database().single(u"SELECT FundGroupName FROM fund_groups"_s).toString(), u"Right"_s);
}

void tst_import::goesOnAfterQuotesOutOfPlace_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QString>("reason");
    QTest::newRow("inside") << QByteArray("1,T,10,G,101,The \"best\" fund")
                            << u"a quotation mark inside a field that does not begin with one"_s;
    QTest::newRow("behind") << QByteArray("1,T,10,G,101,\"The\" best")
                            << u"text after the closing quotation mark of a field"_s;
    QTest::newRow("never closed") << QByteArray("1,T,10,G,101,\"The best")
                                  << u"the quotation mark that begins a field is never closed"_s;
}

void tst_import::goesOnAfterQuotesOutOfPlace()
{
    QFETCH(QByteArray, line);
    QFETCH(QString, reason);
    for (const QByteArray &end : {QByteArray("\r\n"), QByteArray("\n")}) {
        CatalogueDatabase catalogue;
        const ImportReport report = catalogue.importFile(write(Header + "1,T,10,G,100,F" + end + line + end +
                                                               "1,T,10,G,102,F" + end + "1,T,10,G,x,F" + end),
                                                         {});
        const QStringList expected{u"3 "_s + reason,
                                   u"5 FundID \"x\" is not a whole number from 1 to 2147483647"_s};
        QCOMPARE(refusedOf(report), expected);
        QCOMPARE(report.imported, 2);
        QCOMPARE(report.linesRead, 4);
    }
}

void tst_import::linesInAnotherEncoding()
{
    CatalogueDatabase catalogue;
    const ImportReport report = catalogue.importFile(
        write(Header + "1,T,10,G,100,Caf\xc3\xa9\r\n1,T,10,G,101,Caf\xe9\r\n1,T,10,G,102,F\r\n" +
              QByteArray("1,T,10,G,103,F\0g\r\n", 18)),
        {});
    const QStringList expected{u"3 this is not text in UTF-8: \"Caf\uFFFD\""_s,
                               u"5 this is not text in UTF-8: \"Fg\""_s};
    QCOMPARE(refusedOf(report), expected);
    QCOMPARE(report.imported, 2);
}

void tst_import::refusesWhatHoldsNothingGood_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("message");
    const auto noCatalogue = [](const char *found) {
        return u"line 1: this is not a fund catalogue: %1 \"%2\""_s.arg(
            QString::fromUtf8(found), QString::fromLatin1(Header.trimmed()));
    };
    QTest::newRow("empty") << QByteArray() << noCatalogue("the file is empty; its first line must be");
    QTest::newRow("letter") << QByteArray("Dear \"reader\"\n")
                            << noCatalogue("its first line is \"Dear \"reader\"\"; it must be");
    QTest::newRow("binary") << QByteArray("\x7f"
                                          "ELF\x02\xff\x41\x80",
                                          8)
                            << noCatalogue("its first line is \"\uFFFDELF\uFFFD\uFFFDA\uFFFD\"; it must be");
    QTest::newRow("no lines") << Header << u"line 2: the catalogue holds no fund"_s;
    QTest::newRow("bad lines only") << Header + "x\r\ny\r\n" << u"line 2: 1 fields instead of 6: \"x\""_s;
}

void tst_import::refusesWhatHoldsNothingGood()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, message);
    CatalogueDatabase catalogue;
    const QString before = stateOf(catalogue);
    const QString path = write(content);
    try {
        catalogue.importFile(path, [](int) { return true; });
        QFAIL("There is nothing good in the file");
    } catch (const CatalogueError &error) {
        QCOMPARE(error.message(), QDir::toNativeSeparators(path) + u": "_s + message);
    }
    QCOMPARE(stateOf(catalogue), before);
}

void tst_import::progressGoesUpToTheEnd()
{
    QByteArray text = Header;
    for (int fund = 1; fund <= 20'000; ++fund)
        text += "1,T,10,G," + QByteArray::number(fund) + ",Fund\n";
    CatalogueDatabase catalogue;
    QList<int> steps;
    catalogue.importFile(write(text), [&steps](int permille) {
        steps.append(permille);
        return true;
    });
    QVERIFY(steps.size() > 20);
    QVERIFY(std::is_sorted(steps.cbegin(), steps.cend()));
    QCOMPARE(steps.constFirst(), 0);
    QCOMPARE(steps.constLast(), 1000);
    // Reading and storing both report progress: no step is large.
    for (qsizetype i = 1; i < steps.size(); ++i)
        QVERIFY(steps.at(i) - steps.at(i - 1) < 150);
}

void tst_import::cancelledAtAnyMomentChangesNothing()
{
    QByteArray text = Header;
    for (int fund = 1; fund <= 5'000; ++fund)
        text += "1,T,10,G," + QByteArray::number(fund + 100'000) + ",Fund\n";
    const QString path = write(text);
    CatalogueDatabase catalogue;
    const QString before = stateOf(catalogue);
    int calls = 0;
    const auto count = [&calls](int) {
        ++calls;
        return true;
    };
    {
        CatalogueDatabase other;
        QCOMPARE(other.importFile(path, count).imported, 5'000);
    }
    const int all = calls;
    QVERIFY(all > 10);
    for (int stopAt = 1; stopAt <= all; ++stopAt) {
        calls = 0;
        const ImportReport report =
            catalogue.importFile(path, [&calls, stopAt](int) { return ++calls < stopAt; });
        QVERIFY(report.cancelled);
        QCOMPARE(report.imported, 0);
        QCOMPARE(calls, stopAt); // no call follows the cancellation
        QCOMPARE(stateOf(catalogue), before);
    }
    QCOMPARE(catalogue.importFile(path, {}).imported, 5'000);
}

void tst_import::aProgressThatRaisesChangesNothing()
{
    QByteArray text = Header;
    for (int fund = 1; fund <= 5'000; ++fund)
        text += "1,T,10,G," + QByteArray::number(fund + 100'000) + ",Fund\n";
    CatalogueDatabase catalogue;
    const QString before = stateOf(catalogue);
    const auto raise = [](int permille) {
        if (permille > 600)
            throw EConvertError(u"the window is gone"_s);
        return true;
    };
    QVERIFY_THROWS_EXCEPTION(EConvertError, catalogue.importFile(write(text), raise));
    QCOMPARE(stateOf(catalogue), before);
    QVERIFY(!catalogue.database().isBusy());
}

void tst_import::importsOverAnImport()
{
    CatalogueDatabase catalogue;
    catalogue.importFile(write(Header + "1,T,10,G,100,Old\n1,T,10,G,101,Gone\n"), {});
    catalogue.importFile(write(Header + "1,U,10,H,100,New\n"), {});
    QCOMPARE(stateOf(catalogue), u"1 1 1 100 0"_s);
    QCOMPARE(catalogue.database().single(u"SELECT FundName FROM funds"_s).toString(), u"New"_s);
}

void tst_import::saysWhatItTakesAway()
{
    const QTemporaryDir folder;
    const auto store = QuoteStore::open(StoreLocation::fromText(folder.filePath(u"quotes.db"_s)));
    CatalogueDatabase catalogue(store->database());
    catalogue.importFile(write(Header + "1,T,10,G,100,First\n1,T,11,H,100,First\n1,T,10,G,101,Second\n"
                                        "1,T,10,G,102,Third\n1,T,10,G,103,Fourth\n1,T,10,G,104,Fifth\n"));
    const auto quoteOn = [&store](std::initializer_list<int> funds) {
        Quote quote;
        quote.productID = 1;
        for (const int fund : funds)
            quote.funds.append({fund, u"Fund"_s, 1, 1});
        return store->save(quote);
    };
    quoteOn({100, 102});
    quoteOn({101});
    quoteOn({101, 103});
    store->remove(quoteOn({103}));
    const auto lossOf = [this, &catalogue](const QByteArray &lines) {
        ImportLoss found;
        const QString before = stateOf(catalogue);
        catalogue.importWhole(write(Header + lines), [&found](const ImportLoss &loss) {
            found = loss;
            return false;
        });
        if (before != stateOf(catalogue))
            qFatal("The import went on");
        return found;
    };
    // One of five funds is removed; two existing quotes have it. Another fund changes its name.
    ImportLoss loss = lossOf("1,T,10,G,100, First \n1,T,10,G,101,Second\n1,T,10,G,102,Third Fund\n"
                             "1,T,10,G,104,Fifth\n1,T,10,G,105,New\n1,T,11,H,105,New\n");
    QCOMPARE(loss, (ImportLoss{5, 5, 1, 1, 2}));
    QVERIFY(loss.any());
    QVERIFY(!loss.isLarge());
    loss = lossOf("1,T,10,G,104,Fifth\n1,T,10,G,101,Second\n1,T,10,G,102,Third\n");
    QCOMPARE(loss, (ImportLoss{5, 3, 2, 0, 2}));
    QVERIFY(loss.isLarge());
    // A catalogue that loses nothing is imported without a question.
    bool asked = false;
    QVERIFY(
        catalogue.importWhole(write(Header + "1,T,10,G,100,First\n1,T,10,G,101,Second\n1,T,10,G,102,Third\n"
                                             "1,T,10,G,103,Fourth\n1,T,10,G,104,Fifth\n1,T,10,G,105,Sixth\n"),
                              [&asked](const ImportLoss &) {
                                  asked = true;
                                  return false;
                              }));
    QVERIFY(!asked);
    QVERIFY(catalogue.hasFund(105));
}

void tst_import::takesNothingAwayWithoutConsent()
{
    CatalogueDatabase catalogue;
    const QString before = stateOf(catalogue);
    const QString path = write(Header + "1,T,10,G,100000,First\nbad line\n");
    int asked = 0;
    bool answer = false;
    const auto consent = [&](const ImportLoss &loss) {
        ++asked;
        return loss.incoming == 1 && answer;
    };
    ImportReport report = catalogue.importFile(path, {}, consent);
    QVERIFY(report.cancelled);
    QCOMPARE(report.imported, 0);
    QCOMPARE(asked, 1);
    QCOMPARE(stateOf(catalogue), before);
    answer = true;
    report = catalogue.importFile(path, {}, consent);
    QVERIFY(!report.cancelled);
    QCOMPARE(report.imported, 1);
    QCOMPARE(asked, 2);
    // Bad lines are refused before the question.
    QVERIFY_THROWS_EXCEPTION(CatalogueError, catalogue.importWhole(path, consent));
    QVERIFY_THROWS_EXCEPTION(CatalogueError, catalogue.importFile(write(Header + "x\n"), {}, consent));
    QCOMPARE(asked, 2);
}

ZEL_TEST_MAIN(tst_import)
#include "tst_import.moc"
