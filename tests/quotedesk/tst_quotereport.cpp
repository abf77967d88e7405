#include "ZelTest.h"
// labels: linux

#include "EditorDesk.h"

#include <QFileInfo>
#include <QPrinter>
#include <QProcess>
#include <QRegularExpression>
#include <QTableWidget>

using namespace QuoteDesk;

namespace
{

/// The text of a PDF file as it stands on the pages, a form feed between them.
QString pdfText(const QString &path)
{
    QProcess process;
    process.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), QStringLiteral("-enc"),
                                                QStringLiteral("UTF-8"), path, QStringLiteral("-")});
    if (!process.waitForFinished() || process.exitCode() != 0)
        return QStringLiteral("pdftotext: ") + process.errorString() +
               QString::fromUtf8(process.readAllStandardError());
    return QString::fromUtf8(process.readAllStandardOutput());
}

/// The lines of a table in a PDF's text: name, percent, amount.
QList<QStringList> tableLines(const QString &text)
{
    static const QRegularExpression line(
        QStringLiteral("^ *(\\S.*?\\S) {2,}(-?[0-9]+\\.[0-9]{2}) {2,}(-?[0-9,]+\\.[0-9]{2})$"),
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
};

void tst_quotereport::thePdfSaysWhatTheScreenSays()
{
    EditorDesk desk;
    Quote quote = EditorDesk::quote(1, 250000);
    quote.clientID = desk.botha.clientID;
    quote.description = QString::fromUtf8("Vir Piet se ou dag: geë");
    quote.details = {{QStringLiteral("RetirementFundName"), QStringLiteral("Ironwood")},
                     {QStringLiteral("RetirementAge"), QStringLiteral("65")}};
    quote.funds = {EditorDesk::fund(1, 40, 100000), EditorDesk::fund(2, 60, 150000)};
    QuoteEditor editor(desk.session, quote);
    QVERIFY(desk.open(editor));
    const QString file = desk.folder.filePath(QStringLiteral("quote.pdf"));
    QString suggested;
    desk.session.chooseFile = [&](QWidget *, const QString &suggestion) {
        suggested = suggestion;
        return file;
    };
    editor.form()->goTo(QuoteForm::Page::Summary);
    QTest::mouseClick(editor.form()->summaryPage->btnPdf, Qt::LeftButton);
    QVERIFY(suggested.endsWith(QStringLiteral(".pdf")) && !suggested.contains(u':'));
    QVERIFY(editor.form()->summaryPage->lblSaid->text().contains(QStringLiteral("quote.pdf")));
    const QString text = pdfText(file);
    for (const QString &part : {editor.product().name, QStringLiteral("Botha, Piet"), quote.description,
                                QDate::currentDate().toString(Qt::ISODate), QStringLiteral("250,000.00"),
                                QStringLiteral("Fully allocated"), QStringLiteral("Retirement fund"),
                                QStringLiteral("Ironwood"), QStringLiteral("Page 1 of 1")})
        QVERIFY2(text.contains(part), qPrintable(part + u'\n' + text));
    QVERIFY(!text.contains(QStringLiteral("raft")));
    QVERIFY(!text.contains(QStringLiteral("DRAFT")));
    const QList<QStringList> expected{
        {QStringLiteral("Baobab Equity Fund"), QStringLiteral("40.00"), QStringLiteral("100,000.00")},
        {QStringLiteral("Baobab Balanced Fund"), QStringLiteral("60.00"), QStringLiteral("150,000.00")},
        {QStringLiteral("Total"), QStringLiteral("100.00"), QStringLiteral("250,000.00")}};
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
        const QString file = desk.folder.filePath(QStringLiteral("%1.pdf").arg(count));
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
        QCOMPARE(lines.last().at(1), QStringLiteral("100.00"));
    }
}

void tst_quotereport::manyFundsFillNumberedPages()
{
    EditorDesk desk;
    Quote quote = EditorDesk::quote(1, 300);
    quote.description = QStringLiteral("All of them");
    for (int id = 1; id <= 37; ++id)
        quote.funds.append(EditorDesk::fund(id, 0, 0));
    for (int id = 9001; id <= 9240; ++id)
        quote.funds.append(EditorDesk::fund(id, Currency::fromText(QStringLiteral("0.25")),
                                            Currency::fromText(QStringLiteral("0.75")),
                                            QStringLiteral("Former Fund %1").arg(id)));
    QuoteEditor editor(desk.session, quote);
    QVERIFY(desk.open(editor));
    const QString file = desk.folder.filePath(QStringLiteral("many.pdf"));
    editor.exportPdf(file);
    const QString text = pdfText(file);
    const QStringList pages = text.split(u'\f', Qt::SkipEmptyParts);
    QVERIFY(pages.size() > 4);
    for (int i = 0; i < pages.size(); ++i) {
        QVERIFY2(pages.at(i).contains(QStringLiteral("Page %1 of %2").arg(i + 1).arg(pages.size())),
                 qPrintable(pages.at(i)));
        QVERIFY(pages.at(i).contains(QStringLiteral("All of them")));
        QVERIFY(pages.at(i).contains(QStringLiteral("Amount (R)")) || i == pages.size() - 1);
    }
    QSet<QString> names;
    Currency percent;
    const QList<QStringList> lines = tableLines(text);
    for (const QStringList &line : lines) {
        if (line.first() == QStringLiteral("Total"))
            continue;
        names.insert(line.first());
        percent += number(line.at(1));
    }
    QCOMPARE(lines.size(), 37 + 240 + 2);
    QCOMPARE(names.size(), 37 + 240 + 1);
    QCOMPARE(percent, Currency(100));
    QVERIFY(names.contains(QStringLiteral("Not allocated")));
}

void tst_quotereport::aDraftIsMarked()
{
    EditorDesk desk;
    Quote quote = EditorDesk::quote();
    quote.funds = {EditorDesk::fund(1, 40, 400)};
    QuoteEditor editor(desk.session, quote);
    QVERIFY(desk.open(editor));
    const QString file = desk.folder.filePath(QStringLiteral("draft.pdf"));
    editor.exportPdf(file);
    QString text = pdfText(file);
    QVERIFY(text.contains(QStringLiteral("Draft: 600.00 (60.00%) is not allocated")));
    QVERIFY(text.contains(QStringLiteral("Draft - ")));
    QCOMPARE(tableLines(text).at(1), QStringList({QStringLiteral("Not allocated"), QStringLiteral("60.00"),
                                                  QStringLiteral("600.00")}));
    FundsHand(editor).paste(QStringLiteral("2;70%"));
    editor.exportPdf(file);
    text = pdfText(file);
    QVERIFY(text.contains(QStringLiteral("Draft: 100.00 (10.00%) more is given out than there is")));
    QCOMPARE(tableLines(text).at(2), QStringList({QStringLiteral("Given out too much"),
                                                  QStringLiteral("-10.00"), QStringLiteral("-100.00")}));
    // A quote without funds, and without a form: still a quote.
    const QuoteEditor closed(desk.session, EditorDesk::quote(3));
    closed.report().savePdf(file);
    QVERIFY(pdfText(file).contains(QStringLiteral("Draft: no funds chosen")));
}

void tst_quotereport::whatIsToBeCompletedIsPrinted()
{
    EditorDesk desk;
    Quote quote = EditorDesk::quote();
    quote.funds = {EditorDesk::fund(1, 100, 1000)};
    quote.details = {{QStringLiteral("MonthlyContribution"), QStringLiteral("123456789012345")}};
    QuoteEditor editor(desk.session, quote);
    QVERIFY(desk.openForm(editor));
    QuoteForm &form = *editor.form();
    const QString file = desk.folder.filePath(QStringLiteral("incomplete.pdf"));
    editor.exportPdf(file);
    QString text = pdfText(file);
    form.goTo(QuoteForm::Page::Summary);
    const QStringList problems = form.problems();
    QCOMPARE(problems.size(), 3);
    for (const QString &problem : problems) {
        QVERIFY2(text.simplified().contains(problem), qPrintable(problem + u'\n' + text));
        QVERIFY(form.summaryPage->lblProblems->text().contains(problem));
    }
    QVERIFY(text.contains(QStringLiteral("Still to be completed")));
    QVERIFY(text.contains(QStringLiteral("Draft: fully allocated, but not complete yet")));
    QCOMPARE(form.summaryPage->lblStateValue->text(),
             QStringLiteral("Draft: fully allocated, but not complete yet"));
    QVERIFY(text.contains(QStringLiteral("Draft - ")));
    QVERIFY(text.contains(QStringLiteral("123456789012345")));
    QVERIFY(!text.contains(QStringLiteral("Fully allocated")));
    // Once nothing is missing the paper says so.
    quote.clientID = desk.adams.clientID;
    quote.details = {{QStringLiteral("RetirementFundName"), QStringLiteral("Ironwood")}};
    editor.replace(quote);
    QCOMPARE(form.problems(), QStringList());
    editor.exportPdf(file);
    text = pdfText(file);
    QVERIFY(text.contains(QStringLiteral("Fully allocated")));
    QVERIFY(!text.contains(QStringLiteral("raft")));
    QVERIFY(!text.contains(QStringLiteral("Still to be completed")));
    // A quote whose window is closed says of itself what its window says.
    const QuoteEditor closed(desk.session, desk.quote());
    QVERIFY(closed.report().problems.contains(QStringLiteral("No investor is chosen.")));
    QVERIFY(closed.report().isDraft());
}

void tst_quotereport::aFundNoLongerOfferedIsMarked()
{
    EditorDesk desk;
    Quote quote = EditorDesk::quote();
    quote.clientID = desk.adams.clientID;
    quote.details = {{QStringLiteral("RetirementFundName"), QStringLiteral("Ironwood")}};
    quote.funds = {EditorDesk::fund(9001, 40, 400, QStringLiteral("Ironwood Fund")),
                   EditorDesk::fund(1, 60, 600)};
    QuoteEditor editor(desk.session, quote);
    QVERIFY(desk.openForm(editor));
    const QString file = desk.folder.filePath(QStringLiteral("kept.pdf"));
    editor.exportPdf(file);
    const QString text = pdfText(file);
    QVERIFY2(text.contains(QStringLiteral("Ironwood Fund (no longer offered)")), qPrintable(text));
    QVERIFY(text.contains(QStringLiteral("Fully allocated")));
}

void tst_quotereport::longTextsAreWrapped()
{
    EditorDesk desk;
    Quote quote = EditorDesk::quote();
    quote.description = QStringLiteral("A description that goes on ").repeated(12).trimmed();
    quote.funds = {EditorDesk::fund(
        9001, 100, 1000, QStringLiteral("A fund with a name of many words ").repeated(6).trimmed())};
    QuoteEditor editor(desk.session, quote);
    QVERIFY(desk.openForm(editor));
    const QString file = desk.folder.filePath(QStringLiteral("long.pdf"));
    editor.exportPdf(file);
    const QString text = pdfText(file);
    QCOMPARE(text.count(QStringLiteral("description that")) >= 11, true);
    QVERIFY(text.contains(QStringLiteral("1,000.00")));
    QVERIFY(text.simplified().contains(QStringLiteral("longer offered)")));
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
    QCOMPARE(lines(), QStringList({QStringLiteral("Baobab Equity Fund|40.00|400.00"),
                                   QStringLiteral("Baobab Balanced Fund|10.00|100.00"),
                                   QStringLiteral("Not allocated|50.00|500.00"),
                                   QStringLiteral("Total|100.00|1,000.00")}));
    QCOMPARE(page.lblClientValue->text(), QStringLiteral("Adams, Thandi"));
    // What changes in the band above shows at once.
    editor.form()->edtDescription->setFocus();
    QTest::keyClicks(editor.form()->edtDescription, QStringLiteral("Nest egg"));
    QCOMPARE(page.lblDescriptionValue->text(), QStringLiteral("Nest egg"));
    editor.form()->goTo(QuoteForm::Page::Funds);
    FundsHand::click(FundsHand(editor).bar().sbtClear);
    editor.form()->goTo(QuoteForm::Page::Summary);
    QCOMPARE(lines().size(), 2);
    QCOMPARE(page.lblStateValue->text(), QStringLiteral("Draft: no funds chosen"));
}

void tst_quotereport::theQuoteIsPrinted()
{
    EditorDesk desk;
    Quote quote = EditorDesk::quote();
    quote.funds = {EditorDesk::fund(1, 100, 1000)};
    QuoteEditor editor(desk.session, quote);
    QVERIFY(desk.openForm(editor));
    const QString file = desk.folder.filePath(QStringLiteral("printed.pdf"));
    int chosen = 0;
    desk.session.choosePrinter = [&](QPrinter &printer, QWidget *parent) {
        ++chosen;
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(file);
        return parent == editor.form() && chosen > 1;
    };
    QTest::keyClick(editor.form(), Qt::Key_P, Qt::ControlModifier);
    QCOMPARE(chosen, 1);
    QVERIFY(!QFileInfo::exists(file));
    editor.form()->goTo(QuoteForm::Page::Summary);
    QTest::mouseClick(editor.form()->summaryPage->btnPrint, Qt::LeftButton);
    QCOMPARE(chosen, 2);
    QVERIFY(pdfText(file).contains(QStringLiteral("Baobab Equity Fund")));
}

void tst_quotereport::aFileThatCannotBeWritten()
{
    EditorDesk desk;
    QuoteEditor editor(desk.session, EditorDesk::quote());
    QVERIFY(desk.openForm(editor));
    QString path = desk.folder.filePath(QStringLiteral("no/such/folder/quote.pdf"));
    QVERIFY_THROWS_EXCEPTION(Exception, editor.exportPdf(path));
    desk.session.chooseFile = [&path](QWidget *, const QString &) { return path; };
    const ReportCatcher report;
    editor.form()->actPdf->trigger();
    QCOMPARE(report.messages.size(), 1);
    QVERIFY(report.messages.first().contains(QStringLiteral("quote.pdf")));
    path.clear();
    editor.form()->actPdf->trigger();
    QCOMPARE(report.messages.size(), 1);
}

ZEL_TEST_MAIN(tst_quotereport)
#include "tst_quotereport.moc"
