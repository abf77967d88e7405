// labels: x11
#include "DeskWindow.h"

#include "desk/QuotePreview.h"
#include "quote/Adviser.h"
#include "quote/SplitChart.h"

#include <QLabel>
#include <QMenu>

using namespace Qt::StringLiterals;

using namespace QuoteDesk;

namespace
{

/// Three quotes; the newest has two funds and a rest.
struct PreviewDesk : DeskWindow {
    qint64 botha = client("Botha", "Piet");
    qint64 first = quote(botha, 1, "Retirement money", 250000, 12);
    qint64 second = quote(0, 3, "House sale", 90000);
    qint64 third = save();

    qint64 save()
    {
        Quote quote;
        quote.productID = 2;
        quote.clientID = botha;
        quote.description = u"Pension"_s;
        quote.amount = 1000000;
        quote.funds = {{12, u"Karoo Equity Fund"_s, Currency(600000), 60},
                       {15, u"Karoo Property Fund"_s, Currency(250000), 25}};
        return store->save(quote);
    }
    QuotePreview &preview() const { return *start().preview(); }
    QString text(const char *name) const
    {
        return preview().findChild<QLabel *>(QLatin1StringView(name))->text();
    }
    /// Shows the window with room for the preview, or without it.
    bool showIn(int width, int height = 760)
    {
        if (!show())
            return false;
        window->resize(width, height);
        QCoreApplication::processEvents();
        return true;
    }
};

/// Notes the names that are asked for, and answers with a file.
class FileAdviser final : public AdviserAtScreen
{
public:
    QString chooseFile(QWidget *, const QString &suggestion) override
    {
        suggested = suggestion;
        return file;
    }
    QString file;
    QString suggested;
};

} // namespace

class tst_quotepreview : public ZelTest
{
    Q_OBJECT

private Q_SLOTS:
    void showsTheChosenQuote();
    void followsASave();
    void quickStepsReadFewQuotes();
    void nothingIsReadWhileHidden();
    void opensOverTheListInANarrowWindow();
    void opensTheQuote();
    void savesAPdfFile();
    void moreHasTheOtherCommands();
    void sayWhenTheQuoteIsGone();
};

void tst_quotepreview::showsTheChosenQuote()
{
    PreviewDesk desk;
    QVERIFY(desk.showIn(1366));
    QVERIFY(desk.preview().isVisible());
    QCOMPARE(desk.start().chosenQuote(), desk.third);
    QTRY_VERIFY(desk.preview().isComplete());
    QCOMPARE(desk.text("lblClient"), u"Botha, Piet"_s);
    QCOMPARE(desk.text("lblProduct"), u"Harvest Living Annuity"_s);
    QCOMPARE(desk.text("lblAmount"), u"R 1,000,000.00"_s);
    QVERIFY(desk.text("lblChanged").startsWith(u"Last change, today "_s));
    const QString split = desk.preview().chart()->accessibleDescription();
    QVERIFY2(split.contains(u"Karoo Equity Fund: 60.00%"_s), qPrintable(split));
    QVERIFY2(split.contains(u"Not allocated: 15.00%"_s), qPrintable(split));

    // The keys in the list move the preview along.
    desk.list().setFocus();
    desk.key(Qt::Key_Down);
    QCOMPARE(desk.preview().shownQuote()->quoteID, desk.second);
    QCOMPARE(desk.text("lblClient"), u"No client yet"_s);
    QTRY_VERIFY(desk.preview().isComplete());
    desk.key(Qt::Key_Down);
    QTRY_VERIFY(desk.preview().isComplete());
    QVERIFY(!desk.preview().chart()->accessibleDescription().contains(u"Not allocated"_s));

    desk.start().edFind->setText(u"nobody"_s);
    QVERIFY(!desk.preview().shownQuote());
    QVERIFY(!desk.preview().btnOpen->isVisible());
    // The same quote again has its split again.
    desk.start().clearSearch();
    QTRY_VERIFY(desk.preview().isComplete());
    QVERIFY(desk.preview().chart()->isVisible());
}

void tst_quotepreview::followsASave()
{
    PreviewDesk desk;
    QVERIFY(desk.showIn(1366));
    QTRY_VERIFY(desk.preview().isComplete());
    const int before = desk.preview().readCount();
    desk.window->refresh();
    QTest::qWait(200);
    QCOMPARE(desk.preview().readCount(), before); // nothing has changed
    Quote quote = desk.store->quote(desk.third);
    quote.funds.removeLast();
    QTest::qSleep(2); // so that the times differ
    desk.store->save(quote);
    desk.window->refresh();
    QTRY_VERIFY(desk.preview().isComplete());
    QTRY_VERIFY(desk.preview().chart()->accessibleDescription().contains(u"Not allocated: 40.00%"_s));
}

void tst_quotepreview::quickStepsReadFewQuotes()
{
    PreviewDesk desk;
    for (int i = 0; i < 40; ++i)
        desk.quote(desk.botha, 1, qPrintable(u"Quote %1"_s.arg(i)), 1000 + i);
    QVERIFY(desk.showIn(1366));
    QTRY_VERIFY(desk.preview().isComplete());
    QTest::qWait(300);
    const int before = desk.preview().readCount();
    desk.list().setFocus();
    desk.key(Qt::Key_End);
    desk.key(Qt::Key_Home);
    for (int i = 0; i < 30; ++i)
        QTest::keyClick(&desk.list(), Qt::Key_Down);
    QTRY_VERIFY(desk.preview().isComplete());
    QCOMPARE(desk.preview().shownQuote()->quoteID, desk.start().chosenQuote());
    const int read = desk.preview().readCount() - before;
    QVERIFY2(read >= 1 && read < 20, qPrintable(QString::number(read)));
}

void tst_quotepreview::nothingIsReadWhileHidden()
{
    PreviewDesk desk;
    QVERIFY(desk.showIn(1000));
    QVERIFY(!desk.preview().isVisible());
    const int before = desk.preview().readCount();
    desk.list().setFocus();
    desk.key(Qt::Key_Down);
    QTest::qWait(300);
    QCOMPARE(desk.preview().readCount(), before);
    QCOMPARE(desk.preview().shownQuote()->quoteID, desk.second);
}

void tst_quotepreview::opensOverTheListInANarrowWindow()
{
    PreviewDesk desk;
    QVERIFY(desk.showIn(1000));
    QVERIFY(!desk.preview().isVisible());
    QVERIFY(!desk.start().actPreview->isChecked());
    desk.list().setFocus();
    const int listWidth = desk.list().width();
    desk.key(Qt::Key_F4);
    QVERIFY(desk.preview().isVisible());
    QTRY_VERIFY(desk.preview().isComplete());
    QCOMPARE(desk.list().width(), listWidth);
    QVERIFY(desk.start().rect().contains(desk.preview().geometry()));
    QCOMPARE(QApplication::focusWidget(), desk.preview().btnOpen);
    desk.key(Qt::Key_Escape);
    QVERIFY(!desk.preview().isVisible());
    QCOMPARE(QApplication::focusWidget(), &desk.list());

    // In a wide window the same key closes it, and it stays closed.
    desk.window->resize(1366, 760);
    QCoreApplication::processEvents();
    QVERIFY(desk.preview().isVisible());
    desk.key(Qt::Key_F4);
    QVERIFY(!desk.preview().isVisible());
    desk.window->resize(1000, 760);
    QCoreApplication::processEvents();
    desk.window->resize(1366, 760);
    QCoreApplication::processEvents();
    QVERIFY(!desk.preview().isVisible());
    desk.key(Qt::Key_F4);
    QVERIFY(desk.preview().isVisible());
}

void tst_quotepreview::opensTheQuote()
{
    PreviewDesk desk;
    QVERIFY(desk.showIn(1366));
    QTest::mouseClick(desk.preview().btnOpen, Qt::LeftButton);
    QVERIFY(desk.window->currentEditor());
    QCOMPARE(desk.window->currentEditor()->quote().quoteID, desk.third);
}

void tst_quotepreview::savesAPdfFile()
{
    PreviewDesk desk;
    QVERIFY(desk.showIn(1366));
    FileAdviser adviser;
    adviser.file = desk.folder.filePath(u"a.pdf"_s);
    desk.window->session().setAdviser(adviser);
    QSignalSpy told(&desk.preview(), &QuotePreview::told);
    QTest::mouseClick(desk.preview().btnPdf, Qt::LeftButton);
    QCOMPARE(adviser.suggested, u"Pension.pdf"_s);
    QCOMPARE(told.size(), 1);
    QFile file(adviser.file);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(file.read(5) == "%PDF-");
    // No quote was opened for it.
    QVERIFY(desk.window->quotes().editors().isEmpty());
}

void tst_quotepreview::moreHasTheOtherCommands()
{
    PreviewDesk desk;
    QVERIFY(desk.showIn(1366));
    const QList<QAction *> more = desk.preview().btnMore->menu()->actions();
    QVERIFY(more.contains(desk.window->actDuplicate));
    QVERIFY(more.contains(desk.window->actDelete));
    more.at(more.indexOf(desk.window->actDelete))->trigger();
    QCOMPARE(desk.list().Items().Count(), 2);
    QVERIFY(desk.preview().shownQuote()->quoteID != desk.third);
    QTRY_VERIFY(desk.preview().isComplete());
}

void tst_quotepreview::sayWhenTheQuoteIsGone()
{
    PreviewDesk desk;
    QVERIFY(desk.showIn(1366));
    QTRY_VERIFY(desk.preview().isComplete());
    // Deleted in a way that the list has not noticed yet.
    desk.store->database().run(u"UPDATE quotes SET DeletedAt = '2026-01-01' WHERE QuoteID = ?"_s,
                               {desk.second});
    desk.start().chooseQuote(desk.second);
    QTRY_VERIFY(desk.text("lblNote").contains(u"no longer there"_s));
    QVERIFY(!desk.preview().chart()->isVisible());
    // The preview goes on with the next quote.
    desk.start().chooseQuote(desk.first);
    QTRY_VERIFY(desk.preview().chart()->isVisible());
    QVERIFY(desk.preview().chart()->accessibleDescription().contains(u"Karoo Equity Fund"_s));
}

ZEL_TEST_MAIN(tst_quotepreview)
#include "tst_quotepreview.moc"
