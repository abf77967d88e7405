// left out on Windows: whether the captions fit, which the fonts of the system decide
// Makes the picture at the top of the README. To renew it, run from the top of the source tree:
//     QUOTEDESK_PICTURE=docs/images/funds.png QT_QPA_PLATFORM=offscreen build/release/bin/tst_picture
#include "DeskWindow.h"
#include "ScreenFaults.h"

#include "toolkit/TFonts.h"

#include <QFile>
#include <QImageReader>

using namespace Qt::StringLiterals;

using namespace QuoteDesk;

class tst_picture : public ZelTest
{
    Q_OBJECT

private Q_SLOTS:
    void theFundsPage();
};

void tst_picture::theFundsPage()
{
    // The program's style and fonts.
    QApplication::setStyle(u"Fusion"_s);
    SubstituteDesignFonts();

    DeskWindow desk;
    Quote quote;
    quote.productID = 3;
    quote.clientID = desk.client("Nel", "Anna");
    quote.description = u"School fees"_s;
    quote.amount = 75000;
    const struct {
        int fundID;
        int percent;
    } parts[] = {{2, 40}, {12, 25}, {15, 20}, {40, 15}};
    for (const auto &part : parts)
        quote.funds.append({part.fundID, {}, 750 * part.percent, part.percent});
    const qint64 number = desk.store->save(quote);

    QVERIFY(desk.show());
    QuoteEditor *const editor = desk.window->quotes().open(number);
    editor->form()->goTo(QuoteForm::Page::Funds);
    FundsPage &page = *editor->fundsPage();
    QTRY_VERIFY(page.isReady());
    TtsGrid &grid = *page.fraFundAllocation->FundGrid;
    QCOMPARE(grid.RowCount(), 4);
    grid.setFocus();
    grid.SetCurrentCell(TfraFundAllocation::PercentColumn, 2);
    QCOMPARE(page.fraFundAllocation->pnlRemainAmount->caption(), u"Remaining: 0.00%"_s);
    QCOMPARE(page.lblState->text(), u"Fully allocated"_s);
    QVERIFY(!editor->isModified());

#ifndef Q_OS_WIN
    // All captions are completely visible.
    const QStringList faults = LayoutFaults(*desk.window);
    QVERIFY2(faults.isEmpty(), qPrintable(faults.join(u'\n')));
#endif

    const QString picture = qEnvironmentVariable("QUOTEDESK_PICTURE");
    if (!picture.isEmpty())
        QVERIFY(desk.window->grab().save(picture));
    QFile readme(sourceFile(u"README.md"_s));
    QVERIFY(readme.open(QIODevice::ReadOnly));
    const QString name = u"docs/images/funds.png"_s;
    QVERIFY(readme.readAll().contains(u"](%1)"_s.arg(name).toUtf8()));
    QVERIFY(QImageReader(sourceFile(name)).canRead());
}

ZEL_TEST_MAIN(tst_picture)
#include "tst_picture.moc"
