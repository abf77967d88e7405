// labels: x11 slow
// left out on Windows: the processor time, which the system counts in another way
#include "DeskWindow.h"
#include "Idle.h"

#include "desk/ClientsDialog.h"
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
    void ribbonMeasuresWithoutChanging();
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
    QTest::newRow("with captions in the ribbon") << 1280;
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
    ClientsDialog clients(window->session(), window);
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
    const QList<QDialog *> dialogs{&newQuote, &clients,  &deleted, &error, &import,
                                   &conflict, &recovery, &edit,    &box};
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

void tst_idle::ribbonMeasuresWithoutChanging()
{
    DeskWindow desk;
    QVERIFY(desk.show());
    Ribbon &ribbon = *desk.window->ribbon;
    const auto widthOf = [&ribbon](bool captions) {
        int width = 0;
        for (const RibbonGroup *const group : ribbon.groups())
            width += group->widthWithCaptions(captions);
        return width;
    };
    desk.window->resize(1280, 700);
    IdleWatch watch;
    QVERIFY(watch.settle());
    const int wide = widthOf(true);
    const int narrow = widthOf(false);
    QVERIFY(narrow < wide);
    watch.rest(50);
    QCOMPARE(watch.count(QEvent::LayoutRequest), 0);
    // The measured width equals the width that the groups then have.
    const auto check = [&ribbon](bool captions) {
        for (RibbonGroup *const group : ribbon.groups()) {
            if (group->isHidden())
                continue;
            group->setCaptionsShown(captions);
            QCoreApplication::processEvents();
            int sum = 0;
            int count = 0;
            for (const QToolButton *const button : group->findChildren<QToolButton *>()) {
                if (button->isHidden())
                    continue;
                sum += button->sizeHint().width();
                ++count;
            }
            QVERIFY(count > 0);
            QVERIFY2(group->widthWithCaptions(captions) >= sum + count - 1, qPrintable(group->title()));
            QVERIFY2(group->widthWithCaptions(captions) >= group->sizeHint().width(),
                     qPrintable(u"%1: measured %2, taken %3 (buttons %4)"_s.arg(group->title())
                                    .arg(group->widthWithCaptions(captions))
                                    .arg(group->sizeHint().width())
                                    .arg(sum)));
        }
    };
    check(true);
    check(false);
}

ZEL_TEST_MAIN(tst_idle)
#include "tst_idle.moc"
