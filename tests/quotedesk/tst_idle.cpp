// labels: x11 slow
// left out on Windows: the processor time, which the system counts in another way
#include "DeskWindow.h"
#include "Idle.h"

#include "desk/ConflictDialog.h"
#include "desk/DeletedQuotes.h"
#include "desk/ErrorDialog.h"
#include "desk/ImportDialogs.h"
#include "desk/NewQuoteDialog.h"
#include "desk/RecoveryDialog.h"

#include "funds/frm_FundSelector.h"
#include "host/Clienteditfrm.h"
#include "package/Classes.h"

#include <QMessageBox>
#include <QToolButton>

using namespace Qt::StringLiterals;

using namespace QuoteDesk;

namespace
{

constexpr int RestMs = 5000;

/// Opens every page of a quote of each product and leaves the windows open.
void openEveryPage(DeskWindow &desk)
{
    for (int productID = 1; productID <= 3; ++productID) {
        const qint64 number = desk.quote(desk.client("Botha", "Piet"), productID, "Mine", 100000, 12);
        const QuoteForm &form = *desk.window->quotes().open(number)->form();
        for (int page = 0; page < form.pcPages->Get_PageCount(); ++page) {
            if (!form.pcPages->Get_TabVisible(page))
                continue;
            form.pcPages->Set_ActivePageIndex(page);
            if (form.pcPages->currentWidget() == form.fundsPage)
                QTRY_VERIFY(form.fundsPage->isReady());
            QCoreApplication::processEvents();
        }
    }
    desk.window->refresh();
}

void expectRest()
{
    IdleWatch watch;
    QVERIFY2(watch.settle(), "layouts are asked for without end");
    const QString work = watch.rest(RestMs);
    QVERIFY2(work.isEmpty(), qPrintable(work));
}

} // namespace

/// A window that nobody uses is idle.
class tst_idle : public ZelTest
{
    Q_OBJECT

private Q_SLOTS:
    void startPageRests();
    void fundsPageRests_data();
    void fundsPageRests();
    void dialogsRest();
    void framesRest();
    void commandBarMeasuresWithoutChanging();
};

void tst_idle::startPageRests()
{
    DeskWindow desk;
    QVERIFY(desk.show());
    openEveryPage(desk);
    desk.window->pages->setCurrentIndex(0);
    expectRest();
}

void tst_idle::fundsPageRests_data()
{
    QTest::addColumn<int>("width");
    QTest::newRow("with captions in the command bar") << 1280;
    QTest::newRow("with pictures alone") << 0;
}

void tst_idle::fundsPageRests()
{
    QFETCH(int, width);
    DeskWindow desk;
    QVERIFY(desk.show());
    openEveryPage(desk);
    desk.window->resize(width, 700);
    desk.window->currentEditor()->form()->goTo(QuoteForm::Page::Funds);
    expectRest();
}

void tst_idle::dialogsRest()
{
    DeskWindow desk;
    Client client = desk.store->client(desk.client("Botha", "Piet"));
    QVERIFY(desk.show());
    MainWindow *const window = desk.window.get();
    Quote mine;
    mine.productID = 1;
    Quote theirs = mine;
    theirs.description = u"Theirs"_s;
    ImportReport report;
    report.refused.append({3, u"bad"_s});
    ListedClient listed(client);
    NewQuoteDialog newQuote(window->session(), 1, window);
    desk.store->remove(desk.quote(0, 1, "Deleted", 100));
    DeletedQuotesDialog deleted(window->session(), window);
    ErrorDialog error(u"Wrong"_s, u"Details"_s, window);
    ImportReportDialog import(u"a.csv"_s, report, window);
    ConflictDialog conflict(mine, QuoteChangedElsewhere(u"x"_s, theirs, false), window->session(), window);
    RecoveryDialog recovery({Draft{u"k"_s, mine, QDateTime::currentDateTimeUtc()}}, window->session(),
                            window);
    TfrmEditClient edit(&listed, window);
    QMessageBox box(QMessageBox::Question, u"Quote Desk"_s, u"Save?"_s, QMessageBox::Yes | QMessageBox::No,
                    window);
    const QList<QDialog *> dialogs{&newQuote, &deleted, &error, &import, &conflict, &recovery, &edit, &box};
    for (QDialog *const dialog : dialogs) {
        dialog->show();
        QVERIFY(QTest::qWaitForWindowExposed(dialog));
    }
    expectRest();
}

void tst_idle::framesRest()
{
    std::vector<std::unique_ptr<QWidget>> windows;
    for (const TFrameClass &entry : FrameClasses()) {
        windows.emplace_back(CreateByClassName(QString::fromLatin1(entry.ClassName), nullptr));
        windows.back()->setAttribute(Qt::WA_DeleteOnClose, false);
        windows.back()->show();
        QVERIFY(QTest::qWaitForWindowExposed(windows.back().get()));
    }
    QVERIFY(windows.size() > 20);
    expectRest();
}

void tst_idle::commandBarMeasuresWithoutChanging()
{
    DeskWindow desk;
    const qint64 number = desk.quote(desk.client("Botha", "Piet"), 1, "Mine", 100000, 12);
    QVERIFY(desk.show());
    const QuoteForm &form = *desk.window->quotes().open(number)->form();
    CommandBar &bar = *desk.window->commandBar;
    for (const int width : {1366, 1024, 800}) {
        desk.window->resize(width, 700);
        IdleWatch watch;
        QVERIFY2(watch.settle(), qPrintable(QString::number(width)));
        watch.rest(50);
        QCOMPARE(watch.count(QEvent::LayoutRequest), 0);
        // The measured width is the one that the button then asks for.
        for (QAction *const action : {form.actUndo, form.actSave, form.actPrint, form.actPdf}) {
            const QToolButton *const button = bar.buttonOf(action);
            QVERIFY(button->isVisible());
            QCOMPARE(button->width(), button->sizeHint().width());
        }
    }
}

ZEL_TEST_MAIN(tst_idle)
#include "tst_idle.moc"
