#include "ZelTest.h"
// labels: linux

#include "EditorDesk.h"

#include "quote/QuoteReport.h"
#include "quote/ShownNumbers.h"

#include <QFileInfo>
#include <QPrinter>
#include <QProcess>
#include <QRegularExpression>
#include <QScopeGuard>
#include <QTableWidget>

using namespace Qt::StringLiterals;

using namespace QuoteDesk;

namespace
{

/// The text of a PDF file; pages are separated by form feeds.
QString pdfText(const QString &path)
{
    QProcess process;
    process.start(u"pdftotext"_s, {u"-layout"_s, u"-enc"_s, u"UTF-8"_s, path, u"-"_s});
    if (!process.waitForFinished() || process.exitCode() != 0)
        return u"pdftotext: "_s + process.errorString() + QString::fromUtf8(process.readAllStandardError());
    return QString::fromUtf8(process.readAllStandardOutput());
}

/// The table rows in a PDF's text: name, percent, amount.
QList<QStringList> tableLines(const QString &text)
{
    static const QRegularExpression line(
        u"^ *(\\S.*?\\S) {2,}(-?[0-9]+\\.[0-9]{2}) {2,}(-?[0-9,]+\\.[0-9]{2})$"_s,
        QRegularExpression::MultilineOption);
    QList<QStringList> lines;
    for (auto match = line.globalMatch(text); match.hasNext();)
        lines.append(match.next().capturedTexts().mid(1));
    return lines;
}

Currency number(QString text)
{
    return Currency::fromText(text.remove(u','));
}

} // namespace

class tst_quotereport : public ZelTest
{
    Q_OBJECT

private Q_SLOTS:
    void thePdfSaysWhatTheScreenSays();
    void thePrintedPercentagesMakeOneHundred();
    void manyFundsFillNumberedPages();
    void aDraftIsMarked();
    void whatIsToBeCompletedIsPrinted();
    void aFundNoLongerOfferedIsMarked();
    void longTextsAreWrapped();
    void theSummaryShowsTheQuote();
    void theQuoteIsPrinted();
    void aFileThatCannotBeWritten();
    void theLetterheadIsAtTheHead();
    void theNumbersAreInTheChosenNotation();
};

void tst_quotereport::thePdfSaysWhatTheScreenSays()
{
    EditorDesk desk;
    Quote quote = EditorDesk::quote(1, 250000);
    quote.clientID = desk.botha.clientID;
    quote.description = QString::fromUtf8("Vir Piet se ou dag: geë");
    quote.details = {{u"RetirementFundName"_s, u"Ironwood"_s}, {u"RetirementAge"_s, u"65"_s}};
    quote.funds = {EditorDesk::fund(1, 40, 100000), EditorDesk::fund(2, 60, 150000)};
    QuoteEditor editor(desk.session, quote);
    QVERIFY(desk.open(editor));
    const QString file = desk.folder.filePath(u"quote.pdf"_s);
    QString suggested;
    desk.chooseFile = [&](const QString &suggestion) {
        suggested = suggestion;
        return file;
    };
    editor.form()->goTo(QuoteForm::Page::Summary);
    editor.form()->actPdf->trigger();
    QVERIFY(suggested.endsWith(u".pdf"_s) && !suggested.contains(u':'));
    const QList<Banner *> &said = editor.form()->summaryPage->banners->banners();
    QVERIFY(!said.isEmpty() && said.constFirst()->content().text.contains(u"quote.pdf"_s));
    const QString text = pdfText(file);
    for (const QString &part : {editor.product().name, u"Botha, Piet"_s, quote.description,
                                QDate::currentDate().toString(Qt::ISODate), u"250,000.00"_s,
                                u"Fully allocated"_s, u"Retirement fund"_s, u"Ironwood"_s, u"Page 1 of 1"_s})
        QVERIFY2(text.contains(part), qPrintable(part + u'\n' + text));
    QVERIFY(!text.contains(u"raft"_s));
    QVERIFY(!text.contains(u"DRAFT"_s));
    const QList<QStringList> expected{{u"Baobab Equity Fund"_s, u"40.00"_s, u"100,000.00"_s},
                                      {u"Baobab Balanced Fund"_s, u"60.00"_s, u"150,000.00"_s},
                                      {u"Total"_s, u"100.00"_s, u"250,000.00"_s}};
    QCOMPARE(tableLines(text), expected);
}

void tst_quotereport::thePrintedPercentagesMakeOneHundred()
{
    EditorDesk desk;
    for (const int count : {3, 7, 11, 13}) {
        Quote quote = EditorDesk::quote(1, 100000);
        for (int id = 1; id <= count; ++id)
            quote.funds.append(EditorDesk::fund(id, 0, 0));
        QuoteEditor editor(desk.session, quote);
        QVERIFY(desk.open(editor));
        FundsHand::click(FundsHand(editor).bar().sbtAllocateAmount);
        const QString file = desk.folder.filePath(u"%1.pdf"_s.arg(count));
        editor.exportPdf(file);
        const QList<QStringList> lines = tableLines(pdfText(file));
        QCOMPARE(lines.size(), count + 1);
        Currency percent;
        Currency amount;
        for (int i = 0; i < count; ++i) {
            percent += number(lines.at(i).at(1));
            amount += number(lines.at(i).at(2));
        }
        QCOMPARE(percent, Currency(100));
        QCOMPARE(amount, Currency(100000));
        QCOMPARE(lines.last().at(1), u"100.00"_s);
    }
}

void tst_quotereport::manyFundsFillNumberedPages()
{
    EditorDesk desk;
    Quote quote = EditorDesk::quote(1, 300);
    quote.description = u"All of them"_s;
    for (int id = 1; id <= 37; ++id)
        quote.funds.append(EditorDesk::fund(id, 0, 0));
    for (int id = 9001; id <= 9240; ++id)
        quote.funds.append(EditorDesk::fund(id, Currency::fromText(u"0.25"_s), Currency::fromText(u"0.75"_s),
                                            u"Former Fund %1"_s.arg(id)));
    QuoteEditor editor(desk.session, quote);
    QVERIFY(desk.open(editor));
    const QString file = desk.folder.filePath(u"many.pdf"_s);
    editor.exportPdf(file);
    const QString text = pdfText(file);
    const QStringList pages = text.split(u'\f', Qt::SkipEmptyParts);
    QVERIFY(pages.size() > 4);
    for (int i = 0; i < pages.size(); ++i) {
        QVERIFY2(pages.at(i).contains(u"Page %1 of %2"_s.arg(i + 1).arg(pages.size())),
                 qPrintable(pages.at(i)));
        QVERIFY(pages.at(i).contains(u"All of them"_s));
        QVERIFY(pages.at(i).contains(u"Amount (R)"_s) || i == pages.size() - 1);
    }
    QSet<QString> names;
    Currency percent;
    const QList<QStringList> lines = tableLines(text);
    for (const QStringList &line : lines) {
        if (line.first() == u"Total"_s)
            continue;
        names.insert(line.first());
        percent += number(line.at(1));
    }
    QCOMPARE(lines.size(), 37 + 240 + 2);
    QCOMPARE(names.size(), 37 + 240 + 1);
    QCOMPARE(percent, Currency(100));
    QVERIFY(names.contains(u"Not allocated"_s));
}

void tst_quotereport::aDraftIsMarked()
{
    EditorDesk desk;
    Quote quote = EditorDesk::quote();
    quote.funds = {EditorDesk::fund(1, 40, 400)};
    QuoteEditor editor(desk.session, quote);
    QVERIFY(desk.open(editor));
    const QString file = desk.folder.filePath(u"draft.pdf"_s);
    editor.exportPdf(file);
    QString text = pdfText(file);
    QVERIFY(text.contains(u"Draft: 600.00 (60.00%) is not allocated"_s));
    QVERIFY(text.contains(u"Draft - "_s));
    QCOMPARE(tableLines(text).at(1), QStringList({u"Not allocated"_s, u"60.00"_s, u"600.00"_s}));
    FundsHand(editor).paste(u"2;70%"_s);
    editor.exportPdf(file);
    text = pdfText(file);
    QVERIFY(text.contains(u"Draft: 100.00 (10.00%) more is allocated than the investment"_s));
    QCOMPARE(tableLines(text).at(2), QStringList({u"Over-allocated"_s, u"-10.00"_s, u"-100.00"_s}));
    // A quote without funds and without an open form.
    const QuoteEditor closed(desk.session, EditorDesk::quote(3));
    closed.report().savePdf(file);
    QVERIFY(pdfText(file).contains(u"Draft: no funds chosen"_s));
}

void tst_quotereport::whatIsToBeCompletedIsPrinted()
{
    EditorDesk desk;
    Quote quote = EditorDesk::quote();
    quote.funds = {EditorDesk::fund(1, 100, 1000)};
    quote.details = {{u"MonthlyContribution"_s, u"123456789012345"_s}};
    QuoteEditor editor(desk.session, quote);
    QVERIFY(desk.openForm(editor));
    QuoteForm &form = *editor.form();
    const QString file = desk.folder.filePath(u"incomplete.pdf"_s);
    editor.exportPdf(file);
    QString text = pdfText(file);
    form.goTo(QuoteForm::Page::Summary);
    const QStringList problems = form.problems();
    QCOMPARE(problems.size(), 3);
    QStringList points;
    for (const QLabel *const point : form.summaryPage->pnlProblems->findChildren<QLabel *>(u"lblPoint"_s)) {
        if (point->isVisible())
            points.append(point->text());
    }
    for (const QString &problem : problems) {
        QVERIFY2(text.simplified().contains(problem), qPrintable(problem + u'\n' + text));
        QVERIFY2(points.contains(problem), qPrintable(problem + u'\n' + points.join(u'\n')));
    }
    QVERIFY(text.contains(u"Still to be completed"_s));
    QVERIFY(text.contains(u"Draft: fully allocated, but not complete yet"_s));
    QCOMPARE(form.summaryPage->lblStateValue->text(), u"Draft: fully allocated, but not complete yet"_s);
    QVERIFY(text.contains(u"Draft - "_s));
    QVERIFY(text.contains(u"123456789012345"_s));
    QVERIFY(!text.contains(u"Fully allocated"_s));
    // Without missing entries the printout is not marked as a draft.
    quote.clientID = desk.adams.clientID;
    quote.details = {{u"RetirementFundName"_s, u"Ironwood"_s}};
    editor.replace(quote);
    QCOMPARE(form.problems(), QStringList());
    editor.exportPdf(file);
    text = pdfText(file);
    QVERIFY(text.contains(u"Fully allocated"_s));
    QVERIFY(!text.contains(u"raft"_s));
    QVERIFY(!text.contains(u"Still to be completed"_s));
    // A closed quote reports the same problems as an open one.
    const QuoteEditor closed(desk.session, desk.quote());
    QVERIFY(closed.report().problems.contains(u"No investor is chosen."_s));
    QVERIFY(closed.report().isDraft());
}

void tst_quotereport::aFundNoLongerOfferedIsMarked()
{
    EditorDesk desk;
    Quote quote = EditorDesk::quote();
    quote.clientID = desk.adams.clientID;
    quote.details = {{u"RetirementFundName"_s, u"Ironwood"_s}};
    quote.funds = {EditorDesk::fund(9001, 40, 400, u"Ironwood Fund"_s), EditorDesk::fund(1, 60, 600)};
    QuoteEditor editor(desk.session, quote);
    QVERIFY(desk.openForm(editor));
    const QString file = desk.folder.filePath(u"kept.pdf"_s);
    editor.exportPdf(file);
    const QString text = pdfText(file);
    QVERIFY2(text.contains(u"Ironwood Fund (no longer offered)"_s), qPrintable(text));
    QVERIFY(text.contains(u"Fully allocated"_s));
}

void tst_quotereport::longTextsAreWrapped()
{
    EditorDesk desk;
    Quote quote = EditorDesk::quote();
    quote.description = u"A description that goes on "_s.repeated(12).trimmed();
    quote.funds = {
        EditorDesk::fund(9001, 100, 1000, u"A fund with a name of many words "_s.repeated(6).trimmed())};
    QuoteEditor editor(desk.session, quote);
    QVERIFY(desk.openForm(editor));
    const QString file = desk.folder.filePath(u"long.pdf"_s);
    editor.exportPdf(file);
    const QString text = pdfText(file);
    QCOMPARE(text.count(u"description that"_s) >= 11, true);
    QVERIFY(text.contains(u"1,000.00"_s));
    QVERIFY(text.simplified().contains(u"longer offered)"_s));
}

void tst_quotereport::theSummaryShowsTheQuote()
{
    EditorDesk desk;
    Quote quote = EditorDesk::quote();
    quote.clientID = desk.adams.clientID;
    quote.funds = {EditorDesk::fund(1, 40, 400), EditorDesk::fund(2, 10, 100)};
    QuoteEditor editor(desk.session, quote);
    QVERIFY(desk.open(editor));
    editor.form()->goTo(QuoteForm::Page::Summary);
    const SummaryPage &page = *editor.form()->summaryPage;
    const auto lines = [&page] {
        QStringList texts;
        for (int row = 0; row < page.tblFunds->rowCount(); ++row)
            texts.append(page.tblFunds->item(row, 0)->text() + u'|' + page.tblFunds->item(row, 1)->text() +
                         u'|' + page.tblFunds->item(row, 2)->text());
        return texts;
    };
    QCOMPARE(lines(),
             QStringList({u"Baobab Equity Fund|40.00|400.00"_s, u"Baobab Balanced Fund|10.00|100.00"_s,
                          u"Not allocated|50.00|500.00"_s, u"Total|100.00|1,000.00"_s}));
    QCOMPARE(page.lblClientValue->text(), u"Adams, Thandi"_s);
    // Changes in the form's header appear immediately.
    editor.form()->edtDescription->setFocus();
    QTest::keyClicks(editor.form()->edtDescription, u"Nest egg"_s);
    QCOMPARE(page.lblDescriptionValue->text(), u"Nest egg"_s);
    editor.form()->goTo(QuoteForm::Page::Funds);
    FundsHand::click(FundsHand(editor).bar().sbtClear);
    editor.form()->goTo(QuoteForm::Page::Summary);
    QCOMPARE(lines().size(), 2);
    QCOMPARE(page.lblStateValue->text(), u"Draft: no funds chosen"_s);
}

void tst_quotereport::theQuoteIsPrinted()
{
    EditorDesk desk;
    Quote quote = EditorDesk::quote();
    quote.funds = {EditorDesk::fund(1, 100, 1000)};
    QuoteEditor editor(desk.session, quote);
    QVERIFY(desk.openForm(editor));
    const QString file = desk.folder.filePath(u"printed.pdf"_s);
    int chosen = 0;
    desk.choosePrinter = [&](QPrinter &printer, QWidget *parent) {
        ++chosen;
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(file);
        return parent == editor.form() && chosen > 1;
    };
    QTest::keyClick(editor.form(), Qt::Key_P, Qt::ControlModifier);
    QCOMPARE(chosen, 1);
    QVERIFY(!QFileInfo::exists(file));
    editor.form()->goTo(QuoteForm::Page::Summary);
    editor.form()->actPrint->trigger();
    QCOMPARE(chosen, 2);
    QVERIFY(pdfText(file).contains(u"Baobab Equity Fund"_s));
}

void tst_quotereport::aFileThatCannotBeWritten()
{
    EditorDesk desk;
    QuoteEditor editor(desk.session, EditorDesk::quote());
    QVERIFY(desk.openForm(editor));
    QString path = desk.folder.filePath(u"no/such/folder/quote.pdf"_s);
    QVERIFY_THROWS_EXCEPTION(Exception, editor.exportPdf(path));
    desk.chooseFile = [&path](const QString &) { return path; };
    const ReportCatcher report;
    editor.form()->actPdf->trigger();
    QCOMPARE(report.messages.size(), 1);
    QVERIFY(report.messages.first().contains(u"quote.pdf"_s));
    path.clear();
    editor.form()->actPdf->trigger();
    QCOMPARE(report.messages.size(), 1);
}

void tst_quotereport::theLetterheadIsAtTheHead()
{
    EditorDesk desk;
    Quote quote = EditorDesk::quote();
    quote.description = u"With a letterhead"_s;
    const QString file = desk.folder.filePath(u"head.pdf"_s);
    const QuoteEditor editor(desk.session, quote);
    QuoteReport report = editor.report();
    report.savePdf(file);
    const QString without = pdfText(file);
    const qint64 size = QFileInfo(file).size();
    report.letterhead.firm = u"Ironwood Advice"_s;
    report.letterhead.adviser = u"Anna Nel"_s;
    report.letterhead.licence = u"FSP 12345"_s;
    report.letterhead.address = u"1 Long Street\nCape Town"_s;
    report.letterhead.telephone = u"+27 21 555 0100"_s;
    report.letterhead.email = u"anna@ironwood.example"_s;
    report.letterhead.logo = QImage(300, 100, QImage::Format_ARGB32);
    report.letterhead.logo.fill(Qt::darkGreen);
    report.savePdf(file);
    const QString text = pdfText(file);
    qsizetype last = -1;
    for (const QString &part : {u"Ironwood Advice"_s, u"Anna Nel"_s, u"FSP 12345"_s, u"1 Long Street"_s,
                                u"Cape Town"_s, u"+27 21 555 0100"_s, u"With a letterhead"_s}) {
        const qsizetype place = text.indexOf(part);
        QVERIFY2(place > last, qPrintable(part + u'\n' + text));
        last = place;
    }
    QVERIFY(QFileInfo(file).size() > size);
    // The rest of the printout is the same.
    for (const QString &line : without.split(u'\n')) {
        // The slanted mark of a draft is mixed into the lines as single letters.
        const QStringList words = line.simplified().split(u' ');
        for (const QString &word : words)
            QVERIFY2(word.size() < 6 || text.contains(word), qPrintable(word));
    }
    // An endless entry does not fill the pages.
    report.letterhead.firm = u"word "_s.repeated(2000);
    report.savePdf(file);
    QVERIFY(pdfText(file).count(u'\f') <= 2);
}

void tst_quotereport::theNumbersAreInTheChosenNotation()
{
    const auto restore = qScopeGuard([] { setNumberNotation({}); });
    EditorDesk desk;
    Quote quote = EditorDesk::quote(1, 250000);
    quote.funds = {EditorDesk::fund(1, Currency::fromText(u"12.5"_s), 31250)};
    NumberNotation notation = NumberNotation::choices().at(2);
    notation.currency = u"N$"_s;
    setNumberNotation(notation);
    const QuoteEditor editor(desk.session, quote);
    const QString file = desk.folder.filePath(u"numbers.pdf"_s);
    editor.report().savePdf(file);
    QString text = pdfText(file);
    text.replace(QChar(QChar::Nbsp), u' ');
    for (const QString &part :
         {u"Investment (N$)"_s, u"Amount (N$)"_s, u"250 000,00"_s, u"31 250,00"_s, u"12,50"_s})
        QVERIFY2(text.contains(part), qPrintable(part + u'\n' + text));
    QVERIFY(!text.contains(u"250,000.00"_s));
}

ZEL_TEST_MAIN(tst_quotereport)
#include "tst_quotereport.moc"
