// labels: x11 postgresql
// left out on Windows: what runs on PostgreSQL, and the text of the printout
#include "DeskWindow.h"
#include "PostgresServer.h"
#include "SelectorDriver.h"

#include "desk/ClientList.h"
#include "desk/ConflictDialog.h"
#include "desk/ErrorDialog.h"
#include "desk/NewQuoteDialog.h"
#include "quote/SummaryPage.h"

#include "funds/frm_FundSelector.h"
#include "host/Clienteditfrm.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QListWidget>
#include <QPrinter>
#include <QProcess>
#include <QPushButton>
#include <QRegularExpression>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QToolButton>

#include <array>
#include <csignal>

using namespace Qt::StringLiterals;

using namespace QuoteDesk;

namespace
{

/// A third each: neither 70,000 nor 100 can be divided evenly.
constexpr std::array ChosenFunds{"Karoo Equity Fund", "Karoo Property Fund", "Fynbos Flexible Fund"};

#ifndef Q_OS_WIN
/// The text of a PDF file, line by line.
QString textOf(const QString &pdf)
{
    QProcess reader;
    reader.start(u"pdftotext"_s, {u"-layout"_s, u"-enc"_s, u"UTF-8"_s, pdf, u"-"_s});
    if (!reader.waitForFinished(30'000) || reader.exitCode() != 0)
        qWarning("pdftotext: %s",
                 qPrintable(reader.errorString() + QString::fromUtf8(reader.readAllStandardError())));
    return QString::fromUtf8(reader.readAllStandardOutput());
}
#endif

/// Prints to a PDF file instead of a printer.
class PrintsToFile : public AdviserAtScreen
{
public:
    explicit PrintsToFile(const QString &path) : m_path(path) {}
    bool choosePrinter(QPrinter &printer, QWidget *) override
    {
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(m_path);
        return true;
    }

private:
    QString m_path;
};

void click(QWidget *widget)
{
    QVERIFY(widget && widget->isVisible());
    QTest::mouseClick(widget, Qt::LeftButton);
}

} // namespace

/// An adviser's whole job, from the start page to the printout, on both kinds of database.
class tst_deskjob : public ZelTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void withMouseAndKeyboard_data() { places(); }
    void withMouseAndKeyboard();
    void byKeyboardOnly_data() { places(); }
    void byKeyboardOnly();
#ifndef Q_OS_WIN
    void aServerThatStopsAndStartsAgain();
    void twoPeopleOnOneServer();
#endif

private:
    static void places();
    /// A new database of the kind that the test's row names.
    StoreLocation place(const QTemporaryDir &folder);
    /// A new database on the server.
    StoreLocation serverPlace();
    /// Checks that the percentages and amounts in the printout add up to its totals.
    static void checkPrintout(const QString &pdf);
    /// Checks printout, store and start page after the job.
    static void checkResult(DeskWindow &desk, const QString &pdf);

    PostgresServer m_server;
    int m_databases = 0;
};

void tst_deskjob::initTestCase()
{
    // A test cannot drive the desktop's own file dialog.
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QVERIFY2(!PostgresServer::Offered() || m_server.Start(), qPrintable(m_server.Reason()));
}

void tst_deskjob::places()
{
    QTest::addColumn<bool>("onServer");
    QTest::newRow("SQLite") << false;
    if (PostgresServer::Offered())
        QTest::newRow("PostgreSQL") << true;
}

StoreLocation tst_deskjob::place(const QTemporaryDir &folder)
{
    QFETCH(bool, onServer);
    if (!onServer)
        return StoreLocation::fromText(folder.filePath(u"quotes.db"_s));
    return serverPlace();
}

StoreLocation tst_deskjob::serverPlace()
{
    const QString name = u"desk%1"_s.arg(++m_databases);
    const QString connection = u"admin"_s;
    {
        QSqlDatabase admin = QSqlDatabase::addDatabase(u"QPSQL"_s, connection);
        admin.setHostName(m_server.Host());
        admin.setUserName(u"zel"_s);
        admin.setDatabaseName(u"postgres"_s);
        if (!admin.open() || !QSqlQuery(admin).exec(u"CREATE DATABASE "_s + name))
            qWarning("%s", qPrintable(admin.lastError().text()));
    }
    QSqlDatabase::removeDatabase(connection);
    return StoreLocation::fromText(u"postgresql://zel@/%1?host=%2"_s.arg(name, m_server.Host()));
}

void tst_deskjob::checkPrintout(const QString &pdf)
{
#ifdef Q_OS_WIN
    // The program that reads the PDF does not exist on Windows.
    QVERIFY(QFileInfo(pdf).size() > 1000);
#else
    const QString text = textOf(pdf);
    for (const char *part : {"Nel, Anna", "School fees", "Summit Investment Plan", "70,000.00"})
        QVERIFY2(text.contains(QLatin1StringView(part)), qPrintable(text));
    // The rows add up to the total.
    static const QRegularExpression row(u"^(\\S.*\\S)  +([0-9.]+) +([0-9,.]+)$"_s,
                                        QRegularExpression::MultilineOption);
    QStringList names;
    Currency percent = 0;
    Currency amount = 0;
    for (auto rows = row.globalMatch(text); rows.hasNext();) {
        const QRegularExpressionMatch found = rows.next();
        const Currency rowPercent = Currency::fromText(found.captured(2));
        const Currency rowAmount = Currency::fromText(found.captured(3).remove(u','));
        names.append(found.captured(1));
        if (names.constLast() == u"Total"_s) {
            QCOMPARE(rowPercent, Currency(100));
            QCOMPARE(rowAmount, Currency(70000));
            QCOMPARE(percent, rowPercent);
            QCOMPARE(amount, rowAmount);
        }
        percent += rowPercent;
        amount += rowAmount;
    }
    QCOMPARE(names, (QStringList{u"Karoo Equity Fund"_s, u"Karoo Property Fund"_s, u"Fynbos Flexible Fund"_s,
                                 u"Total"_s}));
#endif
}

void tst_deskjob::checkResult(DeskWindow &desk, const QString &pdf)
{
    checkPrintout(pdf);
    QCOMPARE(desk.store->quotes().size(), 1);
    const QuoteSummary summary = desk.store->quotes().constFirst();
    QCOMPARE(summary.client, u"Nel, Anna"_s);
    QVERIFY(summary.allocated);
    const Quote quote = desk.store->quote(summary.quoteID);
    QCOMPARE(quote.amount, Currency(70000));
    QCOMPARE(quote.funds.size(), 3);
    QCOMPARE(quote.funds.at(0).amount + quote.funds.at(1).amount + quote.funds.at(2).amount, Currency(70000));
    QCOMPARE(desk.list().Items().Count(), 1);
    QCOMPARE(desk.column(QuoteColumn::State), QStringList{u"Allocated"_s});
    QCOMPARE(desk.column(QuoteColumn::Amount), QStringList{u"70,000.00"_s});
}

void tst_deskjob::withMouseAndKeyboard()
{
    QTemporaryDir folder;
    const QString printout = folder.filePath(u"printout.pdf"_s);
    PrintsToFile adviser(printout);
    DeskWindow desk(place(folder));
    QVERIFY(desk.show());
    desk.window->session().setAdviser(adviser);

    // A new quote of the third product for a new client.
    QVERIFY(
        inDialog<NewQuoteDialog>([&] { click(desk.commandButton(desk.window->actNew)); },
                                 [&](NewQuoteDialog &dialog) {
                                     QListWidget &products = *dialog.lbProducts;
                                     QTest::mouseClick(products.viewport(), Qt::LeftButton, {},
                                                       products.visualItemRect(products.item(2)).center());
                                     QVERIFY(inDialog<TfrmEditClient>(
                                         [&] { click(dialog.findChild<QPushButton *>(u"btnNewClient"_s)); },
                                         [&](TfrmEditClient &details) {
                                             QTest::mouseClick(details.edSurname, Qt::LeftButton);
                                             QTest::keyClicks(details.edSurname, u"Nel"_s);
                                             QTest::mouseClick(details.edFirstNames, Qt::LeftButton);
                                             QTest::keyClicks(details.edFirstNames, u"Anna"_s);
                                             QTest::keyClick(details.edFirstNames, Qt::Key_Return);
                                         }));
                                     QVERIFY(dialog.clientID() != 0);
                                     for (QPushButton *const button : dialog.findChildren<QPushButton *>()) {
                                         if (button->isDefault())
                                             click(button);
                                     }
                                 }));
    QuoteEditor *const editor = desk.window->currentEditor();
    QVERIFY(editor);
    QuoteForm &form = *editor->form();
    QVERIFY(showActive(*desk.window));
    QTest::mouseClick(form.edtDescription, Qt::LeftButton);
    QTest::keyClicks(form.edtDescription, u"School fees"_s);

    // Next, at the end of the tabs, leads to the funds.
    while (form.pcPages->currentWidget() != form.fundsPage)
        click(form.fraNavBar->btnNext);
    FundsPage &funds = *form.fundsPage;
    QTRY_VERIFY(funds.isReady());
    QTest::mouseDClick(funds.edAmount, Qt::LeftButton);
    funds.edAmount->selectAll();
    QTest::keyClicks(funds.edAmount, u"70000"_s);
    QTest::keyClick(funds.edAmount, Qt::Key_Return);

    TfraFundAllocation &frame = *funds.fraFundAllocation;
    QVERIFY(inDialog<TfrmFundSelector>([&] { click(frame.fraFundToolBar->sbtFunds); },
                                       [](TfrmFundSelector &dialog) {
                                           const SelectorDriver hands(*dialog.fraFundSelector);
                                           for (const char *name : ChosenFunds)
                                               hands.add(name);
                                           QTest::mouseClick(hands.frame.btnSelect, Qt::LeftButton);
                                       }));
    QCOMPARE(frame.Get_FundCount(), 3);
    click(frame.fraFundToolBar->sbtAllocateAmount);
    QCOMPARE(frame.pnlRemainAmount->caption(), u"Remaining: 0.00%"_s);
    click(desk.commandButton(form.actUndo));
    QCOMPARE(frame.pnlRemainAmount->caption(), u"Remaining: 100.00%"_s);
    click(desk.commandButton(form.actRedo));
    QCOMPARE(frame.pnlRemainAmount->caption(), u"Remaining: 0.00%"_s);

    // Summary, save and print.
    click(form.fraNavBar->btnNext);
    QCOMPARE(form.pcPages->currentWidget(), form.summaryPage);
    QVERIFY(editor->isModified());
    click(desk.commandButton(form.actSave));
    desk.settle();
    QVERIFY(!editor->isModified());
    click(desk.commandButton(form.actPrint));
    const QString file = folder.filePath(u"file.pdf"_s);
    QVERIFY(inDialog<QFileDialog>([&] { click(desk.commandButton(form.actPdf)); },
                                  [&](QFileDialog &dialog) {
                                      auto *const name = dialog.findChild<QLineEdit *>(u"fileNameEdit"_s);
                                      name->setText(file);
                                      QTest::keyClick(name, Qt::Key_Return);
                                  }));
    checkPrintout(file);
    QVERIFY(desk.banners().contains(u"file.pdf"_s));
    QTest::mouseClick(desk.window->sideBar->lvPages->viewport(), Qt::LeftButton, {},
                      desk.window->sideBar->closeRect(desk.sideRow(0)).center());
    QCOMPARE(desk.openPages(), 0);
    checkResult(desk, printout);

    // Opening the quote again.
    TListView &list = desk.list();
    const QPoint row = list.visualRect(list.model()->index(0, 1)).center();
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, row);
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, row);
    desk.settle();
    QCOMPARE(desk.openPages(), 1);
    QCOMPARE(desk.window->currentEditor()->quote().funds.size(), 3);
    QVERIFY(!desk.window->currentEditor()->isModified());
}

void tst_deskjob::byKeyboardOnly()
{
    QTemporaryDir folder;
    const QString printout = folder.filePath(u"printout.pdf"_s);
    PrintsToFile adviser(printout);
    DeskWindow desk(place(folder));
    QVERIFY(desk.show());
    desk.window->session().setAdviser(adviser);

    QVERIFY(inDialog<NewQuoteDialog>([&] { desk.key(Qt::Key_N, Qt::ControlModifier); },
                                     [&](NewQuoteDialog &dialog) {
                                         desk.key(Qt::Key_End);
                                         QVERIFY(inDialog<TfrmEditClient>(
                                             [&] { desk.key(Qt::Key_N, Qt::AltModifier); },
                                             [&](TfrmEditClient &details) {
                                                 QCOMPARE(QApplication::focusWidget(), details.edSurname);
                                                 desk.type(u"Nel"_s);
                                                 desk.key(Qt::Key_Tab);
                                                 desk.type(u"Anna"_s);
                                                 desk.key(Qt::Key_Return);
                                             }));
                                         dialog.activateWindow();
                                         QVERIFY(QTest::qWaitForWindowActive(&dialog));
                                         desk.key(Qt::Key_B, Qt::AltModifier);
                                     }));
    QuoteEditor *const editor = desk.window->currentEditor();
    QVERIFY(editor);
    QuoteForm &form = *editor->form();
    QVERIFY(showActive(*desk.window));
    QCOMPARE(QApplication::focusWidget(), form.edtDescription);
    desk.type(u"School fees"_s);
    for (int step = 0; step < 4 && form.pcPages->currentWidget() != form.fundsPage; ++step)
        desk.key(Qt::Key_PageDown, Qt::ControlModifier);
    FundsPage &funds = *form.fundsPage;
    QCOMPARE(form.pcPages->currentWidget(), &funds);
    QTRY_VERIFY(funds.isReady());
    desk.key(Qt::Key_I, Qt::AltModifier);
    QTRY_COMPARE(QApplication::focusWidget(), funds.edAmount);
    desk.key(Qt::Key_A, Qt::ControlModifier);
    desk.type(u"70000"_s);
    desk.key(Qt::Key_Return);

    TfraFundAllocation &frame = *funds.fraFundAllocation;
    QCOMPARE(QApplication::focusWidget(), funds.edAmount);
    QVERIFY(inDialog<TfrmFundSelector>(
        [&] { desk.key(Qt::Key_F, Qt::ControlModifier); },
        [&](TfrmFundSelector &dialog) {
            TfraFundSelector &selector = *dialog.fraFundSelector;
            TTreeView &tree = *selector.fraFundsTreeView->tvFunds;
            TListView &chosen = *selector.fraFundsSelectedListView->lvSelectedFunds;
            int count = 0;
            for (int step = 0; step < 20 && QApplication::focusWidget() != &tree; ++step)
                desk.key(Qt::Key_Tab);
            QCOMPARE(QApplication::focusWidget(), &tree);
            desk.key(Qt::Key_E, Qt::AltModifier);
            QTRY_VERIFY(tree.Items()[0]->Expanded());
            desk.key(Qt::Key_Home);
            for (const char *name : ChosenFunds) {
                for (int step = 0; step < 400; ++step) {
                    if (tree.Selected() && tree.Selected()->Text() == QLatin1StringView(name))
                        break;
                    desk.key(Qt::Key_Down);
                }
                QCOMPARE(tree.Selected()->Text(), QString::fromLatin1(name));
                desk.key(Qt::Key_A, Qt::AltModifier);
                ++count;
                QTRY_COMPARE(chosen.Items().Count(), count);
            }
            desk.key(Qt::Key_S, Qt::AltModifier);
        }));
    QCOMPARE(frame.Get_FundCount(), 3);
    QVERIFY(showActive(*desk.window));
    desk.key(Qt::Key_L, Qt::ControlModifier);
    QCOMPARE(frame.pnlRemainAmount->caption(), u"Remaining: 0.00%"_s);

    desk.key(Qt::Key_S, Qt::ControlModifier);
    desk.settle();
    QVERIFY(!editor->isModified());
    desk.key(Qt::Key_P, Qt::ControlModifier);
    desk.key(Qt::Key_W, Qt::ControlModifier);
    QCOMPARE(desk.openPages(), 0);
    checkResult(desk, printout);
    desk.key(Qt::Key_F, Qt::ControlModifier);
    desk.type(u"nel"_s);
    desk.key(Qt::Key_Return);
    desk.settle();
    QCOMPARE(desk.openPages(), 1);
    QCOMPARE(desk.window->currentEditor()->quote().funds.size(), 3);
}

#ifndef Q_OS_WIN
void tst_deskjob::aServerThatStopsAndStartsAgain()
{
    DeskWindow desk(serverPlace());
    const qint64 number = desk.quote(desk.client("Nel", "Anna"), 1, "Mine", 70000, 12);
    QVERIFY(desk.show());
    desk.window->quotes().open(number);
    desk.settle();
    QuoteEditor &editor = *desk.window->currentEditor();
    editor.form()->edtDescription->setFocus();
    editor.form()->edtDescription->selectAll();
    desk.type(u"Typed"_s);
    QVERIFY(::kill(static_cast<pid_t>(m_server.ProcessId()), SIGQUIT) == 0);
    QVERIFY(m_server.WaitUntilStopped());
    const auto save = [&] { desk.key(Qt::Key_S, Qt::ControlModifier); };
    save();
    const auto failure = [&desk]() -> Banner * {
        for (Banner *const banner : desk.window->banners->banners()) {
            if (banner->content().kind == BannerKind::Error)
                return banner;
        }
        return nullptr;
    };
    QTRY_VERIFY_WITH_TIMEOUT(failure(), 60'000);
    QVERIFY2(failure()->content().text.startsWith(u"\"Typed\" is not saved: "_s),
             qPrintable(failure()->content().text));
    // The unsaved changes are kept, and the banner's button saves them.
    QVERIFY(editor.isModified());
    QCOMPARE(editor.form()->edtDescription->text(), u"Typed"_s);
    QVERIFY2(m_server.Start(), qPrintable(m_server.Reason()));
    QVERIFY(showActive(*desk.window));
    click(failure()->actionButton());
    desk.settle();
    QVERIFY(!editor.isModified());
    QTRY_VERIFY(!failure());
    QCOMPARE(desk.store->quote(number).description, u"Typed"_s);
    QCOMPARE(desk.store->quotes().size(), 1);
}

void tst_deskjob::twoPeopleOnOneServer()
{
    DeskWindow mine(serverPlace());
    const qint64 number = mine.quote(mine.client("Nel", "Anna"), 1, "Once", 70000, 12);
    QVERIFY(mine.show());
    mine.window->quotes().open(number);
    mine.settle();
    QuoteEditor &editor = *mine.window->currentEditor();
    editor.form()->edtDescription->setFocus();
    editor.form()->edtDescription->selectAll();
    mine.type(u"Mine"_s);
    // Another user saves first.
    const auto other = QuoteStore::open(mine.store->location());
    Quote theirs = other->quote(number);
    theirs.description = u"Theirs"_s;
    other->save(theirs);
    const auto save = [&] { mine.key(Qt::Key_S, Qt::ControlModifier); };
    QVERIFY(inDialog<ConflictDialog>(save, [&](ConflictDialog &) { mine.key(Qt::Key_Return); }));
    QCOMPARE(other->quote(number).description, u"Theirs"_s);
    QVERIFY(editor.isModified());
    QVERIFY(showActive(*mine.window));
    QVERIFY(inDialog<ConflictDialog>(save, [&](ConflictDialog &) { mine.key(Qt::Key_M, Qt::AltModifier); }));
    mine.settle();
    QCOMPARE(other->quote(number).description, u"Mine"_s);
    QVERIFY(!editor.isModified());
}
#endif

ZEL_TEST_MAIN(tst_deskjob)
#include "tst_deskjob.moc"
