// labels: x11
#include "DeskWindow.h"

#include "desk/CataloguePlace.h"

#include "desk/ErrorDialog.h"
#include "desk/ImportDialogs.h"

#include "funds/frm_FundSelector.h"

#include <QElapsedTimer>
#include <QFileDialog>
#include <QProgressDialog>
#include <QPushButton>
#include <QToolButton>

#include <algorithm>

using namespace Qt::StringLiterals;

using namespace QuoteDesk;

namespace
{

/// A catalogue with this number of funds: thirty per group, six hundred per group type.
QByteArray catalogueOf(int funds)
{
    QByteArray text = "GroupTypeID,GroupTypeDesc,FundGroupID,FundGroupName,FundID,FundName\r\n";
    for (int fund = 0; fund < funds; ++fund)
        text += u"%1,Type %1,%2,Group %2,%3,Fund %3\r\n"_s.arg(fund / 600 + 1)
                    .arg(fund / 30 + 1)
                    .arg(100'000 + fund)
                    .toUtf8();
    return text;
}

int fundsIn(const DeskWindow &desk)
{
    int funds = 0;
    const TTreeView &tree = *desk.window->cataloguePage()->fraCatalogue->TreeView;
    for (const TTreeNode *node = tree.Items().GetFirstNode(); node; node = node->GetNext())
        funds += node->Level() == 2 ? 1 : 0;
    return funds;
}

} // namespace

/// Importing catalogues in the main window, and quotes on the imported catalogues.
class tst_deskimport : public ZelTest
{
    Q_OBJECT

private Q_SLOTS:
    // A test cannot drive the desktop's own file dialog.
    void initTestCase() { QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs); }

    void quotesOnTheRealCatalogue();
    void aHundredThousandFundsWithProgress();
    void cancelLeavesTheCatalogueAsItWas();
    void aFileThatIsNoCatalogueIsRefused();
    void openQuotesShowTheNewCatalogue();
    void asksBeforeFundsGo();

private:
    QString write(const char *name, const QByteArray &content);
    /// Clicks Import and chooses the file in the dialog; false when the dialog did not appear.
    static bool choose(DeskWindow &desk, const QString &path);

    QTemporaryDir m_folder;
};

QString tst_deskimport::write(const char *name, const QByteArray &content)
{
    QFile file(m_folder.filePath(QLatin1StringView(name)));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("The test's file cannot be written");
    return file.fileName();
}

bool tst_deskimport::choose(DeskWindow &desk, const QString &path)
{
    return inDialog<QFileDialog>(
        [&] { QTest::mouseClick(desk.commandButton(desk.window->actImport), Qt::LeftButton); },
        [&](QFileDialog &dialog) {
            auto *const name = dialog.findChild<QLineEdit *>(u"fileNameEdit"_s);
            QVERIFY(name);
            name->setFocus();
            name->setText(path);
            QTest::keyClick(name, Qt::Key_Return);
        });
}

void tst_deskimport::quotesOnTheRealCatalogue()
{
    QString path = realCatalogue();
    int funds = 14'280;
    if (path.isEmpty()) {
        qInfo("The real catalogue is not here; one of 900 funds is made for the test");
        funds = 900;
        path = write("small.csv", catalogueOf(funds));
    }
    DeskWindow desk;
    desk.client("Nel", "Anna");
    QVERIFY(desk.show());
    QElapsedTimer clock;
    clock.start();
    QVERIFY(inDialog<ImportReportDialog>(
        [&] { QVERIFY(agreeToImport([&] { QVERIFY(choose(desk, path)); })); },
        [&](ImportReportDialog &dialog) {
            qInfo("Imported after %lld ms", clock.elapsed());
            QVERIFY2(dialog.text().contains(QString::number(funds)), qPrintable(dialog.text()));
            desk.key(Qt::Key_Return);
        }));
    QCOMPARE(fundsIn(desk), funds);

    // A quote with three of the catalogue's funds: the first, one in the middle and the last.
    Quote quote;
    quote.productID = 3;
    quote.clientID = desk.store->clients().constFirst().clientID;
    quote.description = u"Large choice"_s;
    quote.amount = 100'000;
    QuoteEditor &editor = *desk.window->quotes().begin(quote);
    QuoteForm &form = *editor.form();
    form.goTo(QuoteForm::Page::Funds);
    QTRY_VERIFY(form.fundsPage->isReady());
    TfraFundAllocation &frame = *form.fundsPage->fraFundAllocation;
    QStringList names;
    clock.restart();
    QVERIFY(inDialog<TfrmFundSelector>(
        [&] { QTest::mouseClick(frame.fraFundToolBar->sbtFunds, Qt::LeftButton); },
        [&](TfrmFundSelector &dialog) {
            qInfo("The selector is open after %lld ms", clock.elapsed());
            TfraFundSelector &selector = *dialog.fraFundSelector;
            TTreeView &tree = *selector.fraFundsTreeView->tvFunds;
            QList<TTreeNode *> nodes;
            for (TTreeNode *node = tree.Items().GetFirstNode(); node; node = node->GetNext()) {
                if (node->Level() == TfraFundsTreeView::FundLevel)
                    nodes.append(node);
            }
            QCOMPARE(nodes.size(), funds);
            for (TTreeNode *const node : {nodes.constFirst(), nodes.at(funds / 2), nodes.constLast()}) {
                node->MakeVisible();
                tree.SetSelected(node);
                QTest::mouseClick(selector.sbtAdd, Qt::LeftButton);
                names.append(node->Text().trimmed());
            }
            QTest::mouseClick(selector.btnSelect, Qt::LeftButton);
        }));
    names.removeDuplicates();
    QCOMPARE(frame.Get_FundCount(), names.size());
    QTest::mouseClick(frame.fraFundToolBar->sbtAllocateAmount, Qt::LeftButton);
    QCOMPARE(frame.pnlRemainAmount->caption(), u"Remaining: 0.00%"_s);
    QVERIFY(showActive(*desk.window));
    desk.key(Qt::Key_S, Qt::ControlModifier);
    QVERIFY(!editor.isModified());
    desk.key(Qt::Key_W, Qt::ControlModifier);

    // The stored quote has the funds' names.
    QCOMPARE(desk.column(QuoteColumn::State), QStringList{u"Allocated"_s});
    const Quote stored = desk.store->quote(desk.store->quotes().constFirst().quoteID);
    QStringList storedNames;
    Currency sum = 0;
    for (const QuotedFund &fund : stored.funds) {
        storedNames.append(fund.name.trimmed());
        sum += fund.amount;
    }
    QCOMPARE(QSet<QString>(storedNames.cbegin(), storedNames.cend()),
             QSet<QString>(names.cbegin(), names.cend()));
    QCOMPARE(sum, Currency(100'000));
}

void tst_deskimport::aHundredThousandFundsWithProgress()
{
    DeskWindow desk;
    QVERIFY(desk.show());
    const QString path = write("large.csv", catalogueOf(100'000));
    QList<int> steps;
    QTimer watch;
    connect(&watch, &QTimer::timeout, &watch, [&] {
        const auto *const progress = qobject_cast<QProgressDialog *>(QApplication::activeModalWidget());
        if (progress && progress->isVisible())
            steps.append(progress->value());
    });
    watch.start(5);
    QVERIFY(inDialog<ImportReportDialog>(
        [&] {
            QVERIFY(
                agreeToImport([&] { QVERIFY(importWithProgress(desk.worker, path, desk.window.get())); }));
        },
        [&](ImportReportDialog &dialog) {
            QVERIFY2(dialog.text().contains(u"100000 funds"_s), qPrintable(dialog.text()));
            desk.key(Qt::Key_Return);
            QVERIFY(!dialog.isVisible());
        }));
    // The progress bar was visible and never went back.
    QVERIFY(steps.size() > 3);
    QVERIFY(std::is_sorted(steps.cbegin(), steps.cend()));
    QVERIFY(steps.constFirst() < steps.constLast());
}

void tst_deskimport::cancelLeavesTheCatalogueAsItWas()
{
    DeskWindow desk;
    QVERIFY(desk.show());
    const int before = fundsIn(desk);
    QVERIFY(before > 100);
    const QString path = write("cancelled.csv", catalogueOf(100'000));
    bool pressed = false;
    QTimer hand;
    connect(&hand, &QTimer::timeout, &hand, [&] {
        auto *const progress = qobject_cast<QProgressDialog *>(QApplication::activeModalWidget());
        if (!progress || !progress->isVisible() || pressed)
            return;
        pressed = true;
        QTest::mouseClick(progress->findChild<QPushButton *>(), Qt::LeftButton);
    });
    hand.start(5);
    QVERIFY(choose(desk, path));
    QVERIFY(pressed);
    QVERIFY2(desk.banners().contains(u"cancelled"_s), qPrintable(desk.banners()));
    QVERIFY(showActive(*desk.window));
    desk.key(Qt::Key_F5);
    QCOMPARE(fundsIn(desk), before);
    QVERIFY(desk.catalogue.hasFund(12));
    QVERIFY(!desk.catalogue.hasFund(100'000));
}

void tst_deskimport::aFileThatIsNoCatalogueIsRefused()
{
    DeskWindow desk;
    QVERIFY(desk.show());
    const QString path = write("letter.csv", "Dear reader,\nthis is no catalogue.\n");
    QVERIFY(inDialog<ErrorDialog>([&] { QVERIFY(choose(desk, path)); },
                                  [&](ErrorDialog &dialog) {
                                      QVERIFY2(dialog.text().contains(u"letter.csv"_s),
                                               qPrintable(dialog.text()));
                                      desk.key(Qt::Key_Return);
                                  }));
    QVERIFY(desk.catalogue.hasFund(12));
}

void tst_deskimport::openQuotesShowTheNewCatalogue()
{
    DeskWindow desk;
    const qint64 number = desk.quote(desk.client("Nel", "Anna"), 1, "Old funds", 100'000, 12);
    QVERIFY(desk.show());
    QuoteForm &form = *desk.window->quotes().open(number)->form();
    form.goTo(QuoteForm::Page::Funds);
    QTRY_VERIFY(form.fundsPage->isReady());
    QCOMPARE(form.fundsPage->fraFundAllocation->Get_FundCount(), 1);
    desk.window->pages->setCurrentIndex(0);
    QVERIFY(inDialog<ImportReportDialog>(
        [&] { QVERIFY(agreeToImport([&] { QVERIFY(choose(desk, write("own.csv", catalogueOf(60)))); })); },
        [&](ImportReportDialog &) { desk.key(Qt::Key_Return); }));
    desk.window->quotes().open(number);
    // The fund is no longer in the catalogue. The quote keeps it, marked, and counts as unmodified.
    QTRY_COMPARE(form.fundsPage->fraFundAllocation->Get_FundCount(), 0);
    const Quote quote = desk.window->currentEditor()->quote();
    QCOMPARE(quote.funds.size(), 1);
    QCOMPARE(quote.funds.constFirst().fundID, 12);
    QCOMPARE(quote.funds.constFirst().amount, Currency(100'000));
    QVERIFY(!desk.window->currentEditor()->isModified());
}

void tst_deskimport::asksBeforeFundsGo()
{
    DeskWindow desk;
    const qint64 client = desk.client("Nel", "Anna");
    desk.quote(client, 1, "On Karoo", 1000, 12);
    desk.quote(client, 1, "On Karoo too", 1000, 12);
    desk.quote(client, 1, "On Baobab", 1000, 1);
    QVERIFY(desk.show());
    // The file has two of the funds, one of them with a new name; no quote has that one.
    const QString path =
        write("few.csv", "GroupTypeID,GroupTypeDesc,FundGroupID,FundGroupName,FundID,FundName\n"
                         "1,Type,1,Group,1,Baobab Equity Fund\n"
                         "1,Type,1,Group,2,Cape Fund\n");
    const int offered = desk.store->database().single(u"SELECT count(DISTINCT FundID) FROM funds"_s).toInt();
    QVERIFY(inDialog<QMessageBox>([&] { QVERIFY(choose(desk, path)); },
                                  [&](QMessageBox &box) {
                                      QCOMPARE(box.text(),
                                               u"few.csv has 2 funds. %1 of the %2 funds offered "
                                               "now would be removed. 1 fund offered now would get "
                                               "another name. 2 quotes have such funds; the "
                                               "quotes keep them as they are, marked."_s.arg(offered - 2)
                                                   .arg(offered));
                                      QCOMPARE(box.textFormat(), Qt::PlainText);
                                      // Enter cancels.
                                      desk.key(Qt::Key_Return);
                                  }));
    QVERIFY(desk.catalogue.hasFund(12));
    QVERIFY2(desk.banners().contains(u"cancelled"_s), qPrintable(desk.banners()));
    QVERIFY(
        inDialog<ImportReportDialog>([&] { QVERIFY(agreeToImport([&] { QVERIFY(choose(desk, path)); })); },
                                     [&](ImportReportDialog &) { desk.key(Qt::Key_Return); }));
    QVERIFY(!desk.catalogue.hasFund(12));
    // Importing the same file again removes nothing and asks nothing.
    QVERIFY(inDialog<ImportReportDialog>([&] { QVERIFY(choose(desk, path)); },
                                         [&](ImportReportDialog &) { desk.key(Qt::Key_Return); }));
}

ZEL_TEST_MAIN(tst_deskimport)
#include "tst_deskimport.moc"
