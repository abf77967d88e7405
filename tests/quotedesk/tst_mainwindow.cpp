// labels: x11
#include "DeskWindow.h"

#include "desk/CataloguePlace.h"

#include "database/Database.h"
#include "desk/ClientList.h"
#include "desk/ClientsPage.h"
#include "desk/ConflictDialog.h"
#include "desk/ErrorDialog.h"
#include "desk/ImportDialogs.h"
#include "desk/NewQuoteDialog.h"
#include "desk/Preferences.h"
#include "desk/RecoveryDialog.h"
#include "look/Banner.h"
#include "look/TextLabel.h"
#include "quote/SummaryPage.h"

#include "funds/frm_FundSelector.h"
#include "host/Clienteditfrm.h"

#include <QClipboard>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QFileDialog>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QListWidget>
#include <QMenu>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScopeGuard>
#include <QScreen>
#include <QToolButton>
#include <QTreeWidget>

using namespace Qt::StringLiterals;

using namespace QuoteDesk;

namespace
{

QPushButton *button(const QWidget &dialog, const char *name)
{
    return dialog.findChild<QPushButton *>(QLatin1StringView(name));
}

void click(QWidget *widget)
{
    QTest::mouseClick(widget, Qt::LeftButton);
}

} // namespace

class tst_mainwindow : public ZelTest
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { setCurrentLanguage(Language::English); }

    void startsOnTheStartPage();
    void eachCommandHasOneButton();
    void commandBarLeavesOutWhatHasNoRoom();
    void sideBarStepsThroughPlacesAndQuotes();
    void sideBarBecomesARail();
    void beginsAQuoteByKeyboard();
    void newClientOnTheWay();
    void savedQuoteIsHiddenAndComesBack();
    void newQuoteThatWasNotSavedIsGone();
    void unsavedChangesAreAskedFor();
    void closingTheWindowAsks();
    void nextAndPreviousBelongToThePageInFront();
    void theFocusFollowsTheWork();
    void conflictIsSettled_data();
    void conflictIsSettled();
    void nobodyIsBlamedForADeletion();
    void aRemovalIsTakenBackOnceItCanBe();
    void aPdfGetsItsEnding();
    void draftsAreOffered();
    void draftsAreDropped();
    void clientsAreFoundAddedAndChanged();
    void aClientThatCannotBeStoredIsShownAgain();
    void importIsReported();
    void errorsCanBeCopied();
    void coloursAreTurnedRound();
    void thePlaceIsRemembered();
    void theMenuChoosesLanguageAndColours();
    void beginsNoLargerThanTheScreen();
    void theListHasItsCommandsAtHand();
    void fundCommandsAreInAMenu();
    void theProductIsNamedOnEveryPage();
    void theReportOfAPasteCanBeRead();
};

void tst_mainwindow::startsOnTheStartPage()
{
    DeskWindow desk;
    QVERIFY(desk.show());
    QCOMPARE(desk.openPages(), 0);
    QCOMPARE(desk.window->windowTitle(), u"Quote Desk"_s);
    QVERIFY(!desk.window->currentEditor());
    QVERIFY(!desk.window->actCloseQuote->isEnabled());
    QVERIFY(!desk.window->actNext->isEnabled());
    QVERIFY(!desk.window->pages->closeCurrent());
    QVERIFY(desk.window->sideBar->closeRect(desk.window->sideBar->lvPages->currentIndex()).isEmpty());
}

void tst_mainwindow::eachCommandHasOneButton()
{
    DeskWindow desk;
    desk.quote(0, 1, "Mine", 100);
    QVERIFY(desk.show());
    CommandBar &bar = *desk.window->commandBar;
    QCOMPARE(bar.lblTitle->text(), u"Quotes"_s);
    QVERIFY(!bar.chpState->isVisible());
    QVERIFY(!bar.buttonOf(desk.window->actNew));
    QVERIFY(desk.commandButton(desk.window->actNew)->isVisible());
    QVERIFY(desk.commandButton(desk.window->actImport)->isVisible());
    QVERIFY(!bar.buttonOf(desk.window->actCloseQuote));
    click(bar.buttonOf(desk.window->actOpen));
    QCOMPARE(desk.openPages(), 1);
    const QuoteForm &form = *desk.window->currentEditor()->form();
    QVERIFY(!bar.buttonOf(desk.window->actOpen));
    for (QAction *const action : {form.actUndo, form.actRedo, form.actSave, form.actPrint, form.actPdf})
        QVERIFY2(bar.buttonOf(action)->isVisible(), qPrintable(action->objectName()));
    QVERIFY(form.fraNavBar->btnNext->isVisible());
    QVERIFY(desk.window->windowTitle().startsWith(u"Mine - "_s));
    QCOMPARE(bar.lblTitle->text(), u"Mine"_s);
    QVERIFY(bar.chpState->isVisible());
    QCOMPARE(bar.chpState->chip().text, u"Draft"_s);
    QCOMPARE(desk.window->sideBar->lvPages->currentIndex(), desk.sideRow(0));
    desk.key(Qt::Key_Home, Qt::AltModifier);
    QCOMPARE(desk.window->pages->currentIndex(), 0);
    QVERIFY(bar.buttonOf(desk.window->actOpen));
    QCOMPARE(desk.window->sideBar->currentPage(), 0);
}

void tst_mainwindow::commandBarLeavesOutWhatHasNoRoom()
{
    DeskWindow desk;
    const qint64 number = desk.quote(0, 1, "A description that takes much of the room in the bar", 100);
    QVERIFY(desk.show());
    const QuoteForm &form = *desk.window->quotes().open(number)->form();
    CommandBar &bar = *desk.window->commandBar;
    const auto inBar = [&bar](const QWidget *part) {
        return part->isVisible() && bar.rect().contains(part->geometry());
    };
    const QToolButton *const print = bar.buttonOf(form.actPrint);
    desk.window->resize(1366, 768);
    QTRY_COMPARE(print->toolButtonStyle(), Qt::ToolButtonTextBesideIcon);
    QVERIFY(inBar(bar.lblTitle) && inBar(bar.lblProduct) && inBar(print));
    QCOMPARE(bar.lblProduct->text(), desk.window->currentEditor()->product().name);
    QVERIFY(!bar.btnMore->isVisible());
    // First the product goes, then the captions; the filled button keeps its own.
    int withoutProduct = 0;
    int withoutCaptions = 0;
    int withMenu = 0;
    for (int width = 1300; width >= 420; width -= 20) {
        bar.setFixedWidth(width);
        QTRY_COMPARE(bar.width(), width);
        if (!bar.lblProduct->isVisible() && withoutProduct == 0)
            withoutProduct = width;
        if (print->toolButtonStyle() == Qt::ToolButtonIconOnly && withoutCaptions == 0)
            withoutCaptions = width;
        if (bar.btnMore->isVisible() && withMenu == 0)
            withMenu = width;
        QVERIFY(inBar(bar.buttonOf(form.actPdf)));
        QCOMPARE(bar.buttonOf(form.actPdf)->toolButtonStyle(), Qt::ToolButtonTextBesideIcon);
        // Every command has a button in the bar or an entry in its menu.
        for (QAction *const action : {form.actUndo, form.actRedo, form.actSave, form.actPrint})
            QVERIFY(inBar(bar.buttonOf(action)) != bar.btnMore->menu()->actions().contains(action));
        // An elided text stands whole in its tool tip.
        QVERIFY(bar.lblTitle->text() == bar.title() || bar.lblTitle->toolTip().contains(u"A description"_s));
    }
    QVERIFY(withoutProduct > withoutCaptions);
    QVERIFY(withoutCaptions > withMenu);
    QVERIFY(!print->toolTip().isEmpty());
}

void tst_mainwindow::sideBarStepsThroughPlacesAndQuotes()
{
    DeskWindow desk;
    const qint64 client = desk.client("Botha", "Piet");
    const qint64 one = desk.quote(client, 1, "One", 100);
    const qint64 two = desk.quote(0, 2, "Two", 100);
    QVERIFY(desk.show());
    QWidget *const first = desk.window->quotes().open(one)->form();
    QWidget *const second = desk.window->quotes().open(two)->form();
    QListView &rows = *desk.window->sideBar->lvPages;
    QCOMPARE(rows.model()->index(0, 0).data().toString(), u"Quotes"_s);
    QCOMPARE(rows.model()->index(0, 0).data(SideModel::CountRole).toInt(), 2);
    QCOMPARE(desk.sideRow(0).data().toString(), u"Botha, Piet"_s);
    QCOMPARE(desk.sideRow(0).data(SideModel::SecondLineRole).toString(), u"One"_s);
    // Keys of the window.
    ModuleStack &pages = *desk.window->pages;
    const auto turn = [&](Qt::KeyboardModifiers more) {
        desk.key(more ? Qt::Key_Backtab : Qt::Key_Tab, Qt::ControlModifier | more);
    };
    turn({});
    QCOMPARE(pages.currentWidget(), first);
    turn({});
    QCOMPARE(pages.currentWidget(), second);
    turn(Qt::ShiftModifier);
    QCOMPARE(pages.currentWidget(), first);
    desk.key(Qt::Key_1, Qt::AltModifier);
    QCOMPARE(pages.currentIndex(), 0);
    QCOMPARE(QApplication::focusWidget(), &desk.list());
    // F6 leads to the side bar, whose arrow keys show the pages and skip the caption; Enter leads into the
    // page.
    while (QApplication::focusWidget() != &rows)
        desk.key(Qt::Key_F6);
    for (int place = 0; place < pages.placeCount(); ++place)
        desk.key(Qt::Key_Down);
    QCOMPARE(pages.currentWidget(), first);
    QCOMPARE(QApplication::focusWidget(), &rows);
    desk.key(Qt::Key_Down);
    QCOMPARE(pages.currentWidget(), second);
    desk.key(Qt::Key_Return);
    QVERIFY(second->isAncestorOf(QApplication::focusWidget()));
    // A click chooses a row and leaves the focus in the page.
    const auto centre = [&](int quote) { return rows.visualRect(desk.sideRow(quote)).center(); };
    QTest::mouseClick(rows.viewport(), Qt::LeftButton, {}, centre(0));
    QCOMPARE(pages.currentWidget(), first);
    QVERIFY(first->isAncestorOf(QApplication::focusWidget()));
    // The middle button closes a row, and so does its cross.
    QTest::mouseClick(rows.viewport(), Qt::MiddleButton, {}, centre(1));
    QCOMPARE(pages.modules(), QList<QWidget *>{first});
    QTest::mouseClick(rows.viewport(), Qt::LeftButton, {},
                      desk.window->sideBar->closeRect(desk.sideRow(0)).center());
    QVERIFY(pages.modules().isEmpty());
    QCOMPARE(desk.window->sideBar->model().rowCount(), pages.placeCount());
}

void tst_mainwindow::sideBarBecomesARail()
{
    DeskWindow desk;
    desk.quote(desk.client("van der Merwe", "Johannes"), 1, "Mine", 100);
    QVERIFY(desk.show());
    SideBar &bar = *desk.window->sideBar;
    desk.window->resize(1366, 768);
    QTRY_VERIFY(!bar.isRail());
    const int wide = bar.width();
    desk.window->resize(1024, 600);
    QTRY_VERIFY(bar.isRail());
    QTRY_VERIFY(bar.width() < wide / 2);
    QVERIFY(desk.window->actRail->isChecked());
    // The user's choice counts at every width, until it is taken back.
    desk.key(Qt::Key_B, Qt::ControlModifier);
    QTRY_COMPARE(bar.width(), wide);
    desk.key(Qt::Key_B, Qt::ControlModifier);
    QTRY_VERIFY(bar.isRail());
    desk.window->resize(1366, 768);
    QTRY_VERIFY(!bar.isRail());
    desk.key(Qt::Key_B, Qt::ControlModifier);
    QTRY_VERIFY(bar.isRail());
    QVERIFY(!desk.commandButton(desk.window->actNew)->toolTip().isEmpty());
}

void tst_mainwindow::beginsAQuoteByKeyboard()
{
    DeskWindow desk;
    desk.client("Adams", "Zanele");
    const qint64 botha = desk.client("Botha", "Piet");
    QVERIFY(desk.show());
    QVERIFY(inDialog<NewQuoteDialog>([&] { desk.key(Qt::Key_N, Qt::ControlModifier); },
                                     [&](NewQuoteDialog &dialog) {
                                         QCOMPARE(dialog.lbProducts->count(), 3);
                                         QCOMPARE(QApplication::focusWidget(), dialog.lbProducts);
                                         desk.key(Qt::Key_Down);
                                         desk.key(Qt::Key_Tab);
                                         desk.type(u"both"_s);
                                         QCOMPARE(dialog.list->lvClients->Items().Count(), 1);
                                         QCOMPARE(dialog.clientID(), botha);
                                         desk.key(Qt::Key_Return);
                                     }));
    QuoteEditor *const editor = desk.window->currentEditor();
    QVERIFY(editor);
    QCOMPARE(editor->quote().productID, 2);
    QCOMPARE(editor->quote().clientID, botha);
    QCOMPARE(editor->quote().quoteID, 0);
    QCOMPARE(desk.window->pages->pageTitle(editor->form()), u"Botha, Piet"_s);
}

void tst_mainwindow::newClientOnTheWay()
{
    DeskWindow desk;
    QVERIFY(desk.show());
    QVERIFY(inDialog<NewQuoteDialog>([&] { click(desk.commandButton(desk.window->actNew)); },
                                     [&](NewQuoteDialog &dialog) {
                                         QVERIFY(inDialog<TfrmEditClient>(
                                             [&] { click(button(dialog, "btnNewClient")); },
                                             [&](TfrmEditClient &details) {
                                                 details.edSurname->setFocus();
                                                 desk.type(u"Nel"_s);
                                                 desk.key(Qt::Key_Return);
                                             }));
                                         QVERIFY(dialog.clientID() != 0);
                                         dialog.accept();
                                     }));
    QCOMPARE(desk.store->clients().size(), 1);
    QVERIFY(desk.window->currentEditor());
    QCOMPARE(desk.window->currentEditor()->quote().clientID, desk.store->clients().constFirst().clientID);
}

void tst_mainwindow::savedQuoteIsHiddenAndComesBack()
{
    DeskWindow desk;
    const qint64 number = desk.quote(0, 1, "Mine", 100);
    QVERIFY(desk.show());
    desk.list().setFocus();
    desk.key(Qt::Key_Return);
    QuoteEditor *const editor = desk.window->currentEditor();
    QVERIFY(editor);
    QuoteForm *const form = editor->form();
    desk.key(Qt::Key_W, Qt::ControlModifier);
    QCOMPARE(desk.openPages(), 0);
    QCOMPARE(desk.window->quotes().editors().size(), 1);
    QCOMPARE(editor->form(), form);
    // Another user saves the quote.
    Quote theirs = desk.store->quote(number);
    theirs.description = u"Theirs"_s;
    desk.store->save(theirs);
    desk.window->quotes().open(number);
    QCOMPARE(desk.window->currentEditor(), editor);
    QCOMPARE(desk.window->pages->currentWidget(), form);
    QVERIFY(form->isVisible());
    QCOMPARE(form->edtDescription->text(), u"Theirs"_s);
    QVERIFY(!editor->isModified());
    QCOMPARE(desk.window->pages->pageTitle(form), u"Theirs"_s);
    QCOMPARE(desk.sideRow(0).data(SideModel::SecondLineRole).toString(), u"Theirs"_s);
    // Opening the quote again shows the same page.
    desk.window->pages->setCurrentIndex(0);
    desk.window->quotes().open(number);
    QCOMPARE(desk.openPages(), 1);
    QCOMPARE(desk.window->pages->currentWidget(), form);
}

void tst_mainwindow::newQuoteThatWasNotSavedIsGone()
{
    DeskWindow desk;
    QVERIFY(desk.show());
    Quote quote;
    quote.productID = 1;
    const QPointer<QuoteEditor> editor = desk.window->quotes().begin(quote);
    const QPointer<QuoteForm> form = editor->form();
    QVERIFY(!editor->isModified());
    desk.key(Qt::Key_W, Qt::ControlModifier);
    QCOMPARE(desk.openPages(), 0);
    QTRY_VERIFY(!form);
    QTRY_VERIFY(!editor);
    QVERIFY(desk.window->quotes().editors().isEmpty());
}

void tst_mainwindow::unsavedChangesAreAskedFor()
{
    DeskWindow desk;
    const qint64 number = desk.quote(0, 1, "Mine", 100);
    QVERIFY(desk.show());
    QuoteEditor *const editor = desk.window->quotes().open(number);
    const auto edit = [&](const char *text) {
        editor->form()->edtDescription->setFocus();
        editor->form()->edtDescription->selectAll();
        desk.type(QString::fromLatin1(text));
    };
    const auto close = [&] { desk.key(Qt::Key_W, Qt::ControlModifier); };
    edit("Changed");
    QVERIFY(desk.sideRow(0).data(SideModel::ModifiedRole).toBool());
    QVERIFY(desk.window->pages->isPageModified(editor->form()));
    QVERIFY(inDialog<QMessageBox>(close, [](QMessageBox &box) {
        QVERIFY2(box.text().contains(u"Changed"_s), qPrintable(box.text()));
        click(box.button(QMessageBox::Cancel));
    }));
    QCOMPARE(desk.openPages(), 1);
    QVERIFY(inDialog<QMessageBox>(close, [](QMessageBox &box) { click(box.button(QMessageBox::Discard)); }));
    QCOMPARE(desk.openPages(), 0);
    QCOMPARE(desk.store->quote(number).description, u"Mine"_s);
    // The discarded changes are gone when the quote is opened again.
    QCOMPARE(desk.window->quotes().open(number)->form()->edtDescription->text(), u"Mine"_s);
    edit("Kept");
    QVERIFY(inDialog<QMessageBox>(close, [](QMessageBox &box) { click(box.button(QMessageBox::Save)); }));
    QCOMPARE(desk.openPages(), 0);
    QCOMPARE(desk.store->quote(number).description, u"Kept"_s);
    QVERIFY(desk.column(QuoteColumn::Description).contains(u"Kept"_s));
}

void tst_mainwindow::closingTheWindowAsks()
{
    DeskWindow desk;
    const qint64 number = desk.quote(0, 1, "Mine", 100);
    QVERIFY(desk.show());
    QuoteEditor *const editor = desk.window->quotes().open(number);
    editor->form()->edtDescription->setFocus();
    desk.type(u"!"_s);
    desk.window->pages->setCurrentIndex(0);
    QVERIFY(inDialog<QMessageBox>([&] { desk.window->close(); },
                                  [](QMessageBox &box) { click(box.button(QMessageBox::Cancel)); }));
    QVERIFY(desk.window->isVisible());
    QCOMPARE(desk.window->currentEditor(), editor);
    QVERIFY(inDialog<QMessageBox>([&] { desk.window->close(); },
                                  [](QMessageBox &box) { click(box.button(QMessageBox::Save)); }));
    QVERIFY(!desk.window->isVisible());
    QVERIFY(desk.store->quote(number).description != u"Mine"_s);
}

void tst_mainwindow::nextAndPreviousBelongToThePageInFront()
{
    DeskWindow desk;
    const qint64 one = desk.quote(0, 1, "One", 100);
    const qint64 two = desk.quote(0, 2, "Two", 100);
    QVERIFY(desk.show());
    TcxPageControl &first = *desk.window->quotes().open(one)->form()->pcPages;
    TcxPageControl &second = *desk.window->quotes().open(two)->form()->pcPages;
    const auto expectButtons = [&](const TcxPageControl &control) {
        QCOMPARE(desk.window->actNext->isEnabled(),
                 control.Get_ActivePageIndex() < control.Get_PageCount() - 1);
        QCOMPARE(desk.window->actPrevious->isEnabled(), control.Get_ActivePageIndex() > 0);
    };
    expectButtons(second);
    const int before = first.Get_ActivePageIndex();
    if (second.Get_PageCount() > 1) {
        click(desk.window->currentEditor()->form()->fraNavBar->btnNext);
        QVERIFY(second.Get_ActivePageIndex() > 0);
        QCOMPARE(first.Get_ActivePageIndex(), before);
        expectButtons(second);
        desk.window->quotes().open(one);
        expectButtons(first);
        desk.window->quotes().open(two);
        desk.key(Qt::Key_PageUp, Qt::ControlModifier);
        QCOMPARE(second.Get_ActivePageIndex(), 0);
        expectButtons(second);
    }
    desk.window->pages->setCurrentIndex(0);
    QVERIFY(!desk.window->actNext->isEnabled());
    QVERIFY(!desk.window->actPrevious->isEnabled());
}

void tst_mainwindow::theFocusFollowsTheWork()
{
    DeskWindow desk;
    const qint64 number = desk.quote(0, 1, "Mine", 100);
    QVERIFY(desk.show());
    const QuoteForm &form = *desk.window->quotes().open(number)->form();
    // Keys lead to the fields of the next page.
    desk.key(Qt::Key_PageDown, Qt::ControlModifier);
    QCOMPARE(form.pcPages->currentWidget(), form.fundsPage);
    QCOMPARE(QApplication::focusWidget(), form.fundsPage->edAmount);
    desk.type(u"250"_s);
    desk.key(Qt::Key_PageDown, Qt::ControlModifier);
    QCOMPARE(form.pcPages->currentWidget(), form.summaryPage);
    QCOMPARE(desk.window->currentEditor()->quote().amount, Currency(250));
    desk.key(Qt::Key_PageUp, Qt::ControlModifier);
    QCOMPARE(QApplication::focusWidget(), form.fundsPage->edAmount);
    desk.key(Qt::Key_S, Qt::ControlModifier);
    // Closing a quote selects it in the list, so Enter opens it again.
    desk.key(Qt::Key_W, Qt::ControlModifier);
    QCOMPARE(QApplication::focusWidget(), &desk.list());
    desk.key(Qt::Key_Return);
    QVERIFY(desk.window->currentEditor());
    QCOMPARE(desk.window->currentEditor()->quote().quoteID, number);
}

void tst_mainwindow::conflictIsSettled_data()
{
    QTest::addColumn<QByteArray>("choice");
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<int>("quotes");
    QTest::addColumn<bool>("modified");
    QTest::newRow("keep mine") << QByteArray("btnMine") << "Mine"
                               << "Mine" << 1 << false;
    QTest::newRow("take theirs") << QByteArray("btnTheirs") << "Theirs"
                                 << "Theirs" << 1 << false;
    QTest::newRow("save as a copy") << QByteArray("btnCopy") << "Theirs"
                                    << "Mine" << 2 << false;
    QTest::newRow("go on editing") << QByteArray("btnBack") << "Theirs"
                                   << "Mine" << 1 << true;
}

void tst_mainwindow::conflictIsSettled()
{
    QFETCH(QByteArray, choice);
    QFETCH(QString, stored);
    QFETCH(QString, shown);
    QFETCH(int, quotes);
    QFETCH(bool, modified);

    DeskWindow desk;
    const qint64 number = desk.quote(0, 1, "Once", 100);
    QVERIFY(desk.show());
    QuoteEditor *const editor = desk.window->quotes().open(number);
    editor->form()->edtDescription->setFocus();
    editor->form()->edtDescription->selectAll();
    desk.type(u"Mine"_s);
    const auto other = QuoteStore::open(desk.store->location());
    Quote theirs = other->quote(number);
    theirs.description = u"Theirs"_s;
    other->save(theirs);

    QVERIFY(inDialog<ConflictDialog>([&] { desk.key(Qt::Key_S, Qt::ControlModifier); },
                                     [&](ConflictDialog &dialog) {
                                         QCOMPARE(dialog.differences->topLevelItemCount(), 1);
                                         const QTreeWidgetItem &row = *dialog.differences->topLevelItem(0);
                                         QCOMPARE(row.text(1), u"Mine"_s);
                                         QCOMPARE(row.text(2), u"Theirs"_s);
                                         click(button(dialog, choice.constData()));
                                     }));
    QCOMPARE(desk.store->quote(number).description, stored);
    QCOMPARE(editor->form()->edtDescription->text(), shown);
    QCOMPARE(desk.store->quotes().size(), quotes);
    QCOMPARE(editor->isModified(), modified);
}

void tst_mainwindow::nobodyIsBlamedForADeletion()
{
    DeskWindow desk;
    const qint64 number = desk.quote(0, 1, "Once", 100);
    QVERIFY(desk.show());
    QuoteEditor *const editor = desk.window->quotes().open(number);
    editor->form()->edtDescription->setFocus();
    desk.type(u"!"_s);
    // The message does not name who saved last as the one who deleted, neither for a removed quote nor for a
    // purged one.
    for (const bool forGood : {false, true}) {
        {
            const auto other = QuoteStore::open(desk.store->location());
            if (!forGood)
                other->remove(number);
            QVERIFY(inDialog<ConflictDialog>(
                [&] { desk.key(Qt::Key_S, Qt::ControlModifier); },
                [&](ConflictDialog &dialog) {
                    const QString said = dialog.findChild<QLabel *>(u"lblMessage"_s)->text();
                    QVERIFY2(said.startsWith(u"Somebody else has deleted this quote"_s), qPrintable(said));
                    click(button(dialog, "btnBack"));
                }));
        }
        QVERIFY(editor->isModified());
    }
}

void tst_mainwindow::aRemovalIsTakenBackOnceItCanBe()
{
    DeskWindow desk;
    const qint64 number = desk.quote(0, 1, "Mine", 100);
    QVERIFY(desk.show());
    desk.list().setFocus();
    desk.key(Qt::Key_Delete);
    QCOMPARE(desk.list().Items().Count(), 0);
    // Undo fails while the database is faulty and works afterwards.
    desk.store->database().run(u"CREATE TRIGGER broken BEFORE UPDATE OF DeletedAt ON quotes"
                               " BEGIN SELECT RAISE(ABORT, 'broken'); END"_s);
    QVERIFY(inDialog<ErrorDialog>([&] { desk.window->actUndo->trigger(); },
                                  [](ErrorDialog &error) { error.reject(); }));
    desk.store->database().run(u"DROP TRIGGER broken"_s);
    QTRY_VERIFY(desk.window->actUndo->isEnabled());
    desk.window->actUndo->trigger();
    QCOMPARE(desk.column(QuoteColumn::Description), QStringList{u"Mine"_s});
    QVERIFY(!desk.window->actUndo->isEnabled());
    // A removal that another user has undone is no longer a step.
    desk.window->actRedo->trigger();
    QCOMPARE(desk.list().Items().Count(), 0);
    desk.store->restore(number);
    QVERIFY(inDialog<ErrorDialog>([&] { desk.window->actUndo->trigger(); },
                                  [](ErrorDialog &error) { error.reject(); }));
    QCoreApplication::processEvents();
    QVERIFY(!desk.window->actUndo->isEnabled());
    QVERIFY(!desk.window->actRedo->isEnabled());
}

void tst_mainwindow::aPdfGetsItsEnding()
{
    // A test cannot drive the desktop's own file dialog.
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    const auto native =
        qScopeGuard([] { QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs, false); });
    DeskWindow desk;
    const qint64 number = desk.quote(0, 1, "Mine", 100);
    QVERIFY(desk.show());
    desk.window->quotes().open(number);
    const QString name = desk.folder.filePath(u"for Piet"_s);
    QVERIFY(inDialog<QFileDialog>([&] { desk.key(Qt::Key_P, Qt::ControlModifier | Qt::ShiftModifier); },
                                  [&](QFileDialog &dialog) {
                                      auto *const edit = dialog.findChild<QLineEdit *>();
                                      QVERIFY(edit);
                                      QCOMPARE(edit->text(), u"Mine.pdf"_s);
                                      edit->setText(name);
                                      QTest::keyClick(edit, Qt::Key_Return);
                                  }));
    QVERIFY(!QFile::exists(name));
    QVERIFY(QFile::exists(name + u".pdf"_s));
}

void tst_mainwindow::draftsAreOffered()
{
    QTemporaryDir folder;
    const StoreLocation place = StoreLocation::fromText(folder.filePath(u"quotes.db"_s));
    qint64 number = 0;
    {
        // A program that crashed.
        DeskWindow crashed(place);
        number = crashed.quote(crashed.client("Botha", "Piet"), 1, "Saved", 100);
        Quote typed = crashed.store->quote(number);
        typed.description = u"Typed"_s;
        crashed.store->keepDraft(QuoteStore::newDraftKey(), typed);
        Quote fresh;
        fresh.productID = 2;
        fresh.description = u"Never saved"_s;
        crashed.store->keepDraft(QuoteStore::newDraftKey(), fresh);
    }
    DeskWindow desk(place);
    QVERIFY(desk.show());
    QVERIFY(inDialog<RecoveryDialog>([&] { desk.window->offerDrafts(); },
                                     [&](RecoveryDialog &dialog) {
                                         QCOMPARE(dialog.list->topLevelItemCount(), 2);
                                         QCOMPARE(dialog.chosenKeys().size(), 2);
                                         for (int i = 0; i < 2; ++i) {
                                             QTreeWidgetItem *const item = dialog.list->topLevelItem(i);
                                             if (item->text(2) == u"Never saved"_s)
                                                 item->setCheckState(0, Qt::Unchecked);
                                         }
                                         click(button(dialog, "btnRestore"));
                                     }));
    QCOMPARE(desk.window->quotes().editors().size(), 1);
    QuoteEditor *const editor = desk.window->currentEditor();
    QCOMPARE(editor->form()->edtDescription->text(), u"Typed"_s);
    QCOMPARE(desk.window->focusWidget(), editor->form()->edtDescription);
    QVERIFY(editor->isModified());
    QCOMPARE(desk.window->pages->pageTitle(editor->form()), u"Typed"_s);
    // Saving ends the draft; the draft that was not chosen is offered again.
    desk.key(Qt::Key_S, Qt::ControlModifier);
    QVERIFY(!editor->isModified());
    QCOMPARE(desk.store->quote(number).description, u"Typed"_s);
    QCOMPARE(desk.store->abandonedDrafts().size(), 1);
}

void tst_mainwindow::draftsAreDropped()
{
    QTemporaryDir folder;
    const StoreLocation place = StoreLocation::fromText(folder.filePath(u"quotes.db"_s));
    {
        DeskWindow crashed(place);
        Quote fresh;
        fresh.productID = 2;
        crashed.store->keepDraft(QuoteStore::newDraftKey(), fresh);
    }
    DeskWindow desk(place);
    QVERIFY(desk.show());
    QVERIFY(inDialog<RecoveryDialog>(
        [&] { desk.window->offerDrafts(); },
        [&](RecoveryDialog &dialog) {
            QVERIFY(inDialog<QMessageBox>([&] { click(button(dialog, "btnDiscard")); },
                                          [](QMessageBox &box) { click(box.button(QMessageBox::No)); }));
            QVERIFY(dialog.isVisible());
            QVERIFY(inDialog<QMessageBox>([&] { click(button(dialog, "btnDiscard")); },
                                          [](QMessageBox &box) { click(box.button(QMessageBox::Yes)); }));
        }));
    QVERIFY(desk.window->quotes().editors().isEmpty());
    QVERIFY(desk.store->abandonedDrafts().isEmpty());
}

void tst_mainwindow::clientsAreFoundAddedAndChanged()
{
    DeskWindow desk;
    const qint64 botha = desk.client("Botha", "Piet");
    const qint64 adams = desk.client("Adams", "Zanele");
    desk.quote(botha, 1, "Mine", 100);
    QVERIFY(desk.show());
    desk.key(Qt::Key_L, Qt::ControlModifier | Qt::ShiftModifier);
    ClientsPage &page = *desk.window->clientsPage();
    QVERIFY(page.isVisible());
    QCOMPARE(QApplication::focusWidget(), page.list()->edFind);
    QCOMPARE(page.list()->lvClients->Items().Count(), 2);
    desk.type(u"zan"_s);
    QCOMPARE(page.list()->chosenClient(), adams);
    QVERIFY(inDialog<TfrmEditClient>([&] { desk.key(Qt::Key_Return); },
                                     [&](TfrmEditClient &details) {
                                         QCOMPARE(details.edSurname->text(), u"Adams"_s);
                                         details.edSurname->setFocus();
                                         details.edSurname->selectAll();
                                         desk.type(u"Adams-Nel"_s);
                                         desk.key(Qt::Key_Return);
                                     }));
    QCOMPARE(desk.store->client(adams).surname, u"Adams-Nel"_s);
    QCOMPARE(desk.window->session().findClient(adams)->Get_Surname(), u"Adams-Nel"_s);
    QVERIFY(page.list()->lvClients->Items()[0]->Caption().startsWith(u"Adams-Nel"_s));

    // A client with quotes cannot be deleted; the message says why.
    page.list()->chooseClient(botha);
    QCOMPARE(page.quotes()->count(), 1);
    const auto removeChosen = [&page] {
        QVERIFY(inDialog<QMessageBox>([&] { click(page.btnDelete); },
                                      [](QMessageBox &box) { click(box.button(QMessageBox::Yes)); }));
    };
    QVERIFY(inDialog<ErrorDialog>(removeChosen, [](ErrorDialog &error) {
        QVERIFY(error.text().contains(u"while there are quotes"_s));
        error.reject();
    }));
    QCOMPARE(desk.store->clients().size(), 2);
    page.list()->chooseClient(adams);
    QCOMPARE(page.quotes()->count(), 0);
    removeChosen();
    QCOMPARE(desk.store->clients().size(), 1);
    QCOMPARE(page.list()->lvClients->Items().Count(), 1);

    // A quote of the client opens from here.
    page.list()->chooseClient(botha);
    desk.window->resize(1366, 760);
    QCoreApplication::processEvents();
    page.quotes()->setFocus();
    page.quotes()->setCurrentRow(0);
    desk.key(Qt::Key_Return);
    QVERIFY(desk.window->currentEditor());
    QCOMPARE(desk.window->currentEditor()->quote().description, u"Mine"_s);
}

void tst_mainwindow::aClientThatCannotBeStoredIsShownAgain()
{
    DeskWindow desk;
    QVERIFY(desk.show());
    desk.store->database().run(u"CREATE TRIGGER broken BEFORE INSERT ON clients"
                               " BEGIN SELECT RAISE(ABORT, 'broken'); END"_s);
    bool told = false;
    QString again;
    QTimer watch;
    connect(&watch, &QTimer::timeout, &watch, [&] {
        QWidget *const modal = QApplication::activeModalWidget();
        if (auto *const error = qobject_cast<ErrorDialog *>(modal)) {
            told = true;
            desk.store->database().run(u"DROP TRIGGER broken"_s);
            error->reject();
        } else if (auto *const details = qobject_cast<TfrmEditClient *>(modal); details && told) {
            again = details->edSurname->text();
            details->accept();
        }
    });
    watch.start(30);
    desk.key(Qt::Key_L, Qt::ControlModifier | Qt::ShiftModifier);
    QVERIFY(inDialog<TfrmEditClient>([&] { click(desk.window->clientsPage()->btnNew); },
                                     [&](TfrmEditClient &details) {
                                         details.edSurname->setFocus();
                                         desk.type(u"Nel"_s);
                                         QTimer::singleShot(0, &details, [&details] { details.accept(); });
                                     }));
    QVERIFY(told);
    QCOMPARE(again, u"Nel"_s);
    QCOMPARE(desk.store->clients().size(), 1);
}

void tst_mainwindow::importIsReported()
{
    DeskWindow desk;
    QVERIFY(desk.show());
    QFile file(desk.folder.filePath(u"own.csv"_s));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("GroupTypeID,GroupTypeDesc,FundGroupID,FundGroupName,FundID,FundName\r\n"
               "1,Trusts,2,Group,3,Fund one\r\n"
               "1,Trusts,2,Group,3,Fund one\r\n"
               "1,Trusts,2,Group,x,Fund two\r\n"
               "1,Trusts,2,Group,4,Fund three\r\n");
    file.close();
    QVERIFY(inDialog<ImportReportDialog>(
        [&] {
            QVERIFY(agreeToImport(
                [&] { QVERIFY(importWithProgress(desk.worker, file.fileName(), desk.window.get())); }));
        },
        [](ImportReportDialog &dialog) {
            QVERIFY2(dialog.text().contains(u"own.csv: 2 "_s), qPrintable(dialog.text()));
            const QString lines = dialog.findChild<QPlainTextEdit *>()->toPlainText();
            QVERIFY2(lines.contains(u"Line 3: "_s), qPrintable(lines));
            QVERIFY2(lines.contains(u"Line 4: "_s), qPrintable(lines));
            click(button(dialog, "btnCopy"));
            QCOMPARE(QApplication::clipboard()->text(), dialog.text());
        }));
    desk.window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(desk.window.get()));
    desk.key(Qt::Key_F5);
    TTreeView &funds = *desk.window->cataloguePage()->fraCatalogue->TreeView;
    QCOMPARE(funds.Items().Count(), 4);
    QCOMPARE(funds.Items()[2]->Text(), u"Fund one"_s);
}

void tst_mainwindow::errorsCanBeCopied()
{
    ErrorDialog dialog(u"The file cannot be read."_s, u"errno 13"_s, nullptr);
    QVERIFY(showActive(dialog));
    auto *const details = dialog.findChild<QPlainTextEdit *>();
    QVERIFY(!details->isVisible());
    click(button(dialog, "btnDetails"));
    QVERIFY(details->isVisible());
    QVERIFY(details->toPlainText().contains(u"errno 13"_s));
    click(button(dialog, "btnCopy"));
    QVERIFY(QApplication::clipboard()->text().startsWith(u"The file cannot be read."_s));
    QVERIFY(QApplication::clipboard()->text().contains(u"errno 13"_s));
}

void tst_mainwindow::coloursAreTurnedRound()
{
    DeskWindow desk;
    QVERIFY(desk.show());
    const QPalette light = QApplication::palette();
    QVERIFY(light.window().color().lightness() > light.windowText().color().lightness());
    desk.window->actDark->trigger();
    const QPalette dark = QApplication::palette();
    QVERIFY(dark.window().color().lightness() < 80);
    QVERIFY(dark.windowText().color().lightness() > 180);
    QVERIFY(dark.base().color().lightness() < dark.text().color().lightness());
    desk.window->actDark->trigger();
    QCOMPARE(QApplication::palette().window().color(), light.window().color());
}

void tst_mainwindow::beginsNoLargerThanTheScreen()
{
    DeskWindow desk;
    const QRect screen = QApplication::primaryScreen()->availableGeometry();
    // The geometry that a window at this place stores.
    const auto remembered = [&desk](const QRect &place) {
        MainWindow window(desk.worker, desk.catalogue, desk.providers, {});
        window.setGeometry(place);
        return window.saveGeometry();
    };
    const QByteArray ofLargerScreen =
        remembered({screen.topLeft() + QPoint(90, 60), screen.size() + QSize(400, 300)});
    for (const QByteArray &geometry : {QByteArray(), ofLargerScreen}) {
        MainWindow window(desk.worker, desk.catalogue, desk.providers, {});
        window.resize(screen.size() + QSize(400, 300));
        window.takePlace(geometry);
        QVERIFY(window.width() <= screen.width());
        QVERIFY(window.height() < screen.height());
        if (!geometry.isEmpty())
            QCOMPARE(window.pos(), screen.topLeft());
    }
    // A geometry that fits is restored unchanged.
    const QByteArray ofThisScreen = remembered({screen.topLeft() + QPoint(31, 42), QSize(700, 500)});
    MainWindow window(desk.worker, desk.catalogue, desk.providers, {});
    window.takePlace(ofThisScreen);
    QCOMPARE(window.size(), QSize(700, 500));
    QVERIFY(window.pos() != screen.topLeft());
}

void tst_mainwindow::thePlaceIsRemembered()
{
    // A settings folder of the test's own, so that parallel runs do not collide.
    const QTemporaryDir home;
    const QByteArray former = qgetenv("XDG_CONFIG_HOME");
    qputenv("XDG_CONFIG_HOME", home.path().toLocal8Bit());
    const auto restore = qScopeGuard([&former] { qputenv("XDG_CONFIG_HOME", former); });
    {
        DeskWindow desk;
        QVERIFY(desk.show());
        desk.window->resize(1000, 640);
        Preferences().rememberPlace(desk.window->saveGeometry());
        desk.start().showColumn(QuoteColumn::Description, true);
        Preferences().rememberColumns(desk.start().columns());
    }
    DeskWindow desk;
    QVERIFY(desk.show());
    QVERIFY(desk.window->restoreGeometry(Preferences().geometry()));
    QTRY_COMPARE(desk.window->size(), QSize(1000, 640));
    desk.start().takeColumns(Preferences().columns());
    QVERIFY(!desk.list().header()->isSectionHidden(static_cast<int>(QuoteColumn::Description)));
}

void tst_mainwindow::theMenuChoosesLanguageAndColours()
{
    DeskWindow desk;
    QVERIFY(desk.show());
    QSignalSpy chosen(&desk.window->settings(), &SettingsKeeper::chosen);
    desk.window->actDark->trigger();
    QCOMPARE(chosen.count(), 1);
    QCOMPARE(chosen.last().first().value<Settings>().colours, ColourScheme::Dark);
    desk.window->mnuLanguage->actions().at(1)->trigger();
    QCOMPARE(chosen.count(), 2);
    QCOMPARE(chosen.last().first().value<Settings>().language, Language::Afrikaans);
    QCOMPARE(currentLanguage(), Language::Afrikaans);
    desk.window->settings().apply({});
    QCOMPARE(currentLanguage(), Language::English);
}

void tst_mainwindow::theListHasItsCommandsAtHand()
{
    DeskWindow desk;
    desk.quote(0, 1, "Mine", 100);
    QVERIFY(desk.show());
    const QStringList expected{u"actOpen"_s, u"actDuplicate"_s, u"actDelete"_s};
    const auto namesOf = [](const QList<QAction *> &actions) {
        QStringList names;
        for (const QAction *const action : actions)
            names.append(action->objectName());
        return names;
    };
    QCOMPARE(desk.list().contextMenuPolicy(), Qt::ActionsContextMenu);
    QCOMPARE(namesOf(desk.list().actions()), expected);
    // The offscreen platform shows no popup menus.
    if (QGuiApplication::platformName() == u"offscreen"_s)
        return;
    desk.list().setFocus();
    QStringList commands;
    QTimer look;
    connect(&look, &QTimer::timeout, &look, [&] {
        auto *const menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        if (!menu)
            return;
        commands = namesOf(menu->actions());
        menu->close();
    });
    look.start(20);
    const QPoint place = desk.list().visualRect(desk.list().model()->index(0, 0)).center();
    QContextMenuEvent event(QContextMenuEvent::Mouse, place, desk.list().viewport()->mapToGlobal(place));
    QApplication::sendEvent(desk.list().viewport(), &event);
    QTRY_COMPARE(commands, expected);
}

void tst_mainwindow::fundCommandsAreInAMenu()
{
    DeskWindow desk;
    const qint64 number = desk.quote(0, 1, "Mine", 100, 12);
    QVERIFY(desk.show());
    QVERIFY(!desk.window->mnuFunds->menuAction()->isVisible());
    const QuoteForm &form = *desk.window->quotes().open(number)->form();
    QVERIFY(desk.window->mnuFunds->menuAction()->isVisible());
    const auto command = [&](const char *name) {
        const QList<QAction *> actions = desk.window->mnuFunds->actions();
        const auto found = std::find_if(actions.cbegin(), actions.cend(), [name](const QAction *action) {
            return action->objectName() == QLatin1String(name);
        });
        return found == actions.cend() ? nullptr : *found;
    };
    for (const char *name :
         {"actChooseFunds", "actRemoveFund", "actClearFunds", "actAllocate", "actResetFunds", "actFactSheet"})
        QVERIFY2(command(name), name);
    // The funds page need not have been shown before.
    QVERIFY(!form.fundsPage->isReady());
    QVERIFY(inDialog<TfrmFundSelector>([&] { command("actChooseFunds")->trigger(); },
                                       [](TfrmFundSelector &dialog) { dialog.reject(); }));
    QCOMPARE(form.pcPages->currentWidget(), form.fundsPage);
    const TFunds &funds = form.fundsPage->fraFundAllocation->Funds();
    QCOMPARE(funds.Length(), 1);
    QVERIFY(command("actResetFunds")->isEnabled());
    command("actResetFunds")->trigger();
    QCOMPARE(funds[0].Amount, Currency());
    command("actAllocate")->trigger();
    QCOMPARE(desk.window->currentEditor()->quote().funds.first().amount, Currency(100));
    command("actClearFunds")->trigger();
    QVERIFY(desk.window->currentEditor()->quote().funds.isEmpty());
    // The actions are enabled like the toolbar's buttons.
    QVERIFY(!command("actClearFunds")->isEnabled());
    QVERIFY(!command("actRemoveFund")->isEnabled());
    // The grid's context menu has the commands, too.
    QVERIFY(form.fundsPage->fraFundAllocation->FundGrid->actions().contains(command("actAllocate")));
}

void tst_mainwindow::theProductIsNamedOnEveryPage()
{
    DeskWindow desk;
    const qint64 number = desk.quote(desk.client("Botha", "Piet"), 2, "Mine", 100, 12);
    QVERIFY(desk.show());
    QuoteForm &form = *desk.window->quotes().open(number)->form();
    const TextLabel &product = *desk.window->commandBar->lblProduct;
    for (int page = 0; page < form.pcPages->Get_PageCount(); ++page) {
        form.pcPages->Set_ActivePageIndex(page);
        QVERIFY(product.isVisible());
        QCOMPARE(product.text(), desk.window->currentEditor()->product().name);
        QVERIFY(product.width() >= product.fontMetrics().horizontalAdvance(product.text()));
    }
    const QString english = product.text();
    desk.window->setLanguage(Language::Afrikaans);
    QTRY_VERIFY(product.text() != english);
}

void tst_mainwindow::theReportOfAPasteCanBeRead()
{
    DeskWindow desk;
    const qint64 number = desk.quote(0, 1, "Mine", 100, 12);
    QVERIFY(desk.show());
    QuoteForm &form = *desk.window->quotes().open(number)->form();
    form.goTo(QuoteForm::Page::Funds);
    QTRY_VERIFY(form.fundsPage->isReady());
    QString lines;
    for (int i = 0; i < 12; ++i)
        lines += u"A fund with a name that nobody has heard of yet, number %1\t10\n"_s.arg(i);
    QApplication::clipboard()->setText(lines);
    QVERIFY(inDialog<QDialog>(
        [&] {
            form.actPasteFunds->trigger();
            QTest::mouseClick(form.fundsPage->banners->banners().constFirst()->actionButton(),
                              Qt::LeftButton);
        },
        [](QDialog &dialog) {
            const auto &text = *dialog.findChild<QPlainTextEdit *>(u"edDetails"_s);
            // All lines are visible without a further click.
            QVERIFY(text.isVisible());
            QCOMPARE(text.blockCount(), 12);
            QVERIFY(text.viewport()->height() >= 12 * text.fontMetrics().lineSpacing());
            QVERIFY(text.viewport()->width() >= 70 * text.fontMetrics().averageCharWidth());
            dialog.resize(dialog.size() + QSize(100, 100));
            dialog.reject();
        }));
}

ZEL_TEST_MAIN(tst_mainwindow)
#include "tst_mainwindow.moc"
