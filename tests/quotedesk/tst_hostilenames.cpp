// labels: x11 slow
// left out on Windows: how much memory was taken
#include "DeskWindow.h"

#include "database/Database.h"
#include "desk/AboutDialog.h"
#include "desk/ClientList.h"
#include "desk/ClientsPage.h"
#include "desk/ConflictDialog.h"
#include "desk/DeletedQuotes.h"
#include "desk/ErrorDialog.h"
#include "desk/ImportDialogs.h"
#include "desk/NewQuoteDialog.h"
#include "desk/RecoveryDialog.h"
#include "look/Banner.h"
#include "quote/PlainText.h"
#include "quote/SummaryPage.h"

#include "funds/frm_FundSelector.h"
#include "host/Clienteditfrm.h"

#include <QAbstractItemView>
#include <QClipboard>
#include <QLabel>
#include <QListWidget>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QTabBar>
#include <QTextDocument>

#ifdef Q_OS_LINUX
#include <sys/resource.h>
#endif

using namespace Qt::StringLiterals;

using namespace QuoteDesk;

namespace
{

constexpr int ProductID = 1;
constexpr int FundID = 12;

/// Collects the places that would interpret a hostile text as markup, one line each.
class MarkupWalk
{
public:
    QStringList found;
    int places = 0; ///< How many places show the hostile text at all.

    explicit MarkupWalk(const QString &hostile) : m_hostile(hostile) {}

    void visit(QWidget &window)
    {
        QCoreApplication::processEvents();
        look(window);
        for (const QObject *const object : window.findChildren<QObject *>()) {
            if (const auto *const widget = qobject_cast<const QWidget *>(object))
                look(*widget);
            if (const auto *const action = qobject_cast<const QAction *>(object))
                judge(action, "tip of the command", action->toolTip());
        }
    }

private:
    void look(const QWidget &widget)
    {
        // A message box is judged by the text format of its labels.
        if (const auto *const label = qobject_cast<const QLabel *>(&widget)) {
            if (label->textFormat() != Qt::PlainText)
                judge(&widget, "label", label->text());
            else
                count(label->text());
        }
        judge(&widget, "tip", widget.toolTip());
        judge(&widget, "what's this", widget.whatsThis());
        if (const auto *const bar = qobject_cast<const QTabBar *>(&widget)) {
            for (int i = 0; i < bar->count(); ++i)
                judge(bar, "tip of the tab", bar->tabToolTip(i));
        }
        if (const auto *const view = qobject_cast<const QAbstractItemView *>(&widget)) {
            if (view->model())
                lookAt(*view, QModelIndex());
        }
        if (const auto *const edit = qobject_cast<const QTextEdit *>(&widget))
            judge(edit, "text", edit->toHtml());
    }
    void lookAt(const QAbstractItemView &view, const QModelIndex &parent)
    {
        const QAbstractItemModel &model = *view.model();
        for (int row = 0; row < qMin(model.rowCount(parent), 50); ++row) {
            for (int column = 0; column < model.columnCount(parent); ++column) {
                const QModelIndex index = model.index(row, column, parent);
                count(index.data().toString());
                judge(&view, "tip of the item", index.data(Qt::ToolTipRole).toString());
            }
            lookAt(view, model.index(row, 0, parent));
        }
    }
    void count(const QString &text)
    {
        if (text.contains(m_hostile))
            ++places;
    }
    /// A text whose format Qt detects: it must not be detected as markup while it has the hostile tag.
    void judge(const QObject *object, const char *what, const QString &text)
    {
        count(text);
        if (Qt::mightBeRichText(text) && text.contains(u"<img"_s))
            found.append(u"%1 of %2 %3: %4"_s.arg(QLatin1String(what),
                                                  QLatin1String(object->metaObject()->className()),
                                                  object->objectName(), text));
    }

    const QString m_hostile;
};

/// A database in which every name is the hostile text.
struct HostileDesk : DeskWindow {
    qint64 clientID = 0;
    qint64 number = 0;
    qint64 lonely = 0; ///< The id of a client without quotes.

    explicit HostileDesk(const QString &name)
    {
        const auto run = [this](const char *table, const char *column, const QString &text) {
            store->database().run(u"UPDATE %1 SET %2 = '%3'"_s.arg(
                QLatin1String(table), QLatin1String(column), QString(text).replace(u'\'', u"''"_s)));
        };
        run("products", "ProductName", name);
        run("group_types", "GroupTypeDesc", name);
        run("fund_groups", "FundGroupName", name);
        run("funds", "FundName", name);
        clientID = client(name.toUtf8().constData(), name.toUtf8().constData());
        lonely = client(name.toUtf8().constData(), "Zanele");
        Quote quote;
        quote.productID = ProductID;
        quote.clientID = clientID;
        quote.description = name;
        quote.amount = 1000;
        // One fund of the product and one that the product does not offer.
        quote.funds = {{FundID, name, 600, 60}, {99999999, name, 300, 30}};
        number = store->save(quote);
        run("quotes", "ChangedBy", name);
    }
};

/// Calls @p look for every window, page, message box and dialog of the program.
void goEverywhere(HostileDesk &desk, const std::function<void(QWidget &)> &look)
{
    MainWindow &window = *desk.window;
    look(window);
    // The pages of a quote.
    QuoteEditor *const editor = window.quotes().open(desk.number);
    QuoteForm &form = *editor->form();
    for (int page = 0; page < form.pcPages->Get_PageCount(); ++page) {
        if (!form.pcPages->Get_TabVisible(page))
            continue;
        form.pcPages->Set_ActivePageIndex(page);
        if (form.pcPages->currentWidget() == form.fundsPage)
            QTRY_VERIFY(form.fundsPage->isReady());
        look(window);
    }
    // The fund selector, the client's details and the report about a paste.
    form.goTo(QuoteForm::Page::Funds);
    const TfraFundToolBar &bar = *form.fundsPage->fraFundAllocation->fraFundToolBar;
    QVERIFY(inDialog<TfrmFundSelector>([&] { QTest::mouseClick(bar.sbtFunds, Qt::LeftButton); },
                                       [&](TfrmFundSelector &dialog) {
                                           look(dialog);
                                           dialog.reject();
                                       }));
    QVERIFY(inDialog<TfrmEditClient>([&] { QTest::mouseClick(form.sbtClient, Qt::LeftButton); },
                                     [&](TfrmEditClient &dialog) {
                                         look(dialog);
                                         dialog.reject();
                                     }));
    QApplication::clipboard()->setText(editor->quote().description + u"x\t10\nFund\tten"_s);
    QVERIFY(inDialog<QDialog>(
        [&] {
            form.actPasteFunds->trigger();
            QTest::mouseClick(form.fundsPage->banners->banners().constFirst()->actionButton(),
                              Qt::LeftButton);
        },
        [&](QDialog &dialog) {
            look(dialog);
            dialog.reject();
        }));
    const QuoteSession &session = window.session();
    for (const QString &details : {QString(), editor->quote().description}) {
        QVERIFY(
            inDialog<QDialog>([&] { session.adviser().tell(&window, editor->quote().description, details); },
                              [&](QDialog &dialog) {
                                  look(dialog);
                                  dialog.reject();
                              }));
    }
    QVERIFY(inDialog<QMessageBox>([&] { session.adviser().askYesNo(&window, editor->quote().description); },
                                  [&](QMessageBox &box) {
                                      look(box);
                                      box.reject();
                                  }));
    // The question when a page with unsaved changes is closed.
    form.edtDescription->setFocus();
    QTest::keyClick(form.edtDescription, Qt::Key_End);
    QTest::keyClick(form.edtDescription, Qt::Key_Backspace);
    QVERIFY(editor->isModified());
    QVERIFY(inDialog<QMessageBox>([&] { window.pages->closeCurrent(); },
                                  [&](QMessageBox &box) {
                                      look(box);
                                      QTest::mouseClick(box.button(QMessageBox::Cancel), Qt::LeftButton);
                                  }));
    look(window);
    // The conflict with another user's save.
    {
        const Quote mine = editor->quote();
        Quote theirs = mine;
        theirs.description += u"!"_s;
        ConflictDialog conflict(mine, QuoteChangedElsewhere(u"x"_s, theirs, false), session, &window);
        conflict.show();
        look(conflict);
    }
    // Clients, with the question before a deletion and the error afterwards.
    window.actClients->trigger();
    ClientsPage &clients = *window.clientsPage();
    QVERIFY(clients.isVisible());
    clients.list()->chooseClient(desk.clientID);
    look(window);
    QVERIFY(inDialog<ErrorDialog>(
        [&] {
            QVERIFY(inDialog<QMessageBox>([&] { QTest::mouseClick(clients.btnDelete, Qt::LeftButton); },
                                          [&](QMessageBox &box) {
                                              look(box);
                                              QTest::mouseClick(box.button(QMessageBox::Yes), Qt::LeftButton);
                                          }));
        },
        [&](ErrorDialog &error) {
            look(error);
            error.reject();
        }));
    // The dialogs that need a file, a crash or another user.
    const auto show = [&](QDialog &&dialog) {
        dialog.show();
        look(dialog);
    };
    const QString name = desk.store->quote(desk.number).description;
    show(NewQuoteDialog(window.session(), ProductID, &window));
    show(ErrorDialog(name, name, &window));
    ImportReport report;
    report.refused.append({3, name});
    show(ImportReportDialog(name + u".csv"_s, report, &window));
    Quote draft = desk.store->quote(desk.number);
    show(RecoveryDialog({Draft{u"k"_s, draft, QDateTime::currentDateTimeUtc()}}, session, &window));
    desk.store->remove(desk.store->duplicate(desk.number));
    show(DeletedQuotesDialog(session, &window));
    QVERIFY(inDialog<AboutDialog>([&] { window.actAbout->trigger(); },
                                  [&](AboutDialog &box) {
                                      look(box);
                                      box.reject();
                                  }));
}

} // namespace

/// Names that look like markup, and very long names.
class tst_hostilenames : public ZelTest
{
    Q_OBJECT

private Q_SLOTS:
    void markupIsShownAsWritten();
    void theReportOfALibraryIsPlain();
    void longTextsWidenNothing_data();
    void longTextsWidenNothing();
    void fieldsHaveLimits();
    void textsForPeople();
};

void tst_hostilenames::markupIsShownAsWritten()
{
    const QTemporaryDir folder;
    const QString name = u"<img src='%1/secret.png'>"_s.arg(folder.path());
    HostileDesk desk(name);
    QVERIFY(desk.show());
    MarkupWalk walk(u"<img"_s);
    int windows = 0;
    goEverywhere(desk, [&](QWidget &window) {
        ++windows;
        const int before = walk.places;
        walk.visit(window);
        Q_UNUSED(before)
    });
    QVERIFY2(walk.found.isEmpty(), qPrintable(walk.found.join(u'\n')));
    QVERIFY2(windows >= 18, qPrintable(QString::number(windows)));
    // The hostile texts were visible.
    QVERIFY2(walk.places > 60, qPrintable(QString::number(walk.places)));
}

void tst_hostilenames::theReportOfALibraryIsPlain()
{
    QVERIFY(inDialog<QMessageBox>(
        [] {
            QTest::ignoreMessage(QtCriticalMsg, "<img src='x'>");
            GuardedCall([] { throw Exception(u"<img src='x'>"_s); });
        },
        [](QMessageBox &box) {
            QCOMPARE(box.textFormat(), Qt::PlainText);
            box.reject();
        }));
}

void tst_hostilenames::longTextsWidenNothing_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("5,000 letters") << QString(5000, u'W');
    QTest::newRow("70,000 letters") << QString(70000, u'W');
    QTest::newRow("5,000 words") << QString(u"word "_s).repeated(5000);
}

void tst_hostilenames::longTextsWidenNothing()
{
    QFETCH(QString, name);
#ifdef Q_OS_LINUX
    const auto memory = [] {
        rusage used{};
        getrusage(RUSAGE_SELF, &used);
        return used.ru_maxrss / 1024; // MiB
    };
    const auto before = memory();
#endif
    constexpr int widest = 1000;
    HostileDesk desk(name);
    QVERIFY(desk.show());
    QString wide;
    goEverywhere(desk, [&](QWidget &window) {
        QCoreApplication::processEvents();
        if (window.width() > desk.window->width() + 400 || window.minimumSizeHint().width() > widest)
            wide +=
                u"%1 is %2 pixels wide, at least %3\n"_s.arg(QLatin1String(window.metaObject()->className()))
                    .arg(window.width())
                    .arg(window.minimumSizeHint().width());
        window.grab();
    });
    QVERIFY2(wide.isEmpty(), qPrintable(wide));
    QCOMPARE(desk.store->quote(desk.number).description, name);
#ifdef Q_OS_LINUX
    const auto taken = memory() - before;
    QVERIFY2(taken < 400, qPrintable(u"%1 MiB"_s.arg(taken)));
#endif
}

void tst_hostilenames::fieldsHaveLimits()
{
    DeskWindow desk;
    const qint64 number = desk.quote(desk.client("Botha", "Piet"), ProductID, "Mine", 1000, FundID);
    QVERIFY(desk.show());
    QApplication::clipboard()->setText(QString(70000, u'W'));
    desk.start().edFind->setFocus();
    desk.key(Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(desk.start().edFind->text().size(), longestSearch);
    desk.start().edFind->clear();
    const QuoteForm &form = *desk.window->quotes().open(number)->form();
    form.edtDescription->setFocus();
    form.edtDescription->selectAll();
    desk.key(Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(form.edtDescription->text().size(), longestDescription);
}

void tst_hostilenames::textsForPeople()
{
    QCOMPARE(shortText(u"abc"_s, 3), u"abc"_s);
    QCOMPARE(shortText(u"abcd"_s, 3), u"ab\u2026"_s);
    QCOMPARE(shortText(u"a\nbc d"_s, 4), u"a b\u2026"_s);
    // A character of two UTF-16 code units is not split.
    QCOMPARE(shortText(u"\U0001f600\U0001f600"_s, 2), u"\u2026"_s);
    QCOMPARE(wrappedText(u"two words"_s), u"two words"_s);
    QVERIFY(wrappedText(QString(41, u'W')).contains(QChar(0x200b)));
    QCOMPARE(wrappedText(QString(41, u'W')).remove(QChar(0x200b)), QString(41, u'W'));
    QCOMPARE(wrappedText(QString(3000, u'W')).remove(QChar(0x200b)).size(), 2000);
    QCOMPARE(tipText(QString()), QString());
    QCOMPARE(tipText(u"Botha & Nel"_s), u"Botha & Nel"_s);
    for (const QString &text : {u"<b>x</b>"_s, u"\"<img src='x'>\" & so"_s, u"a &lt; b"_s,
                                QString(u"word "_s).repeated(40) + u"\nsecond line"_s}) {
        const QString tip = tipText(text);
        QVERIFY2(Qt::mightBeRichText(tip), qPrintable(tip));
        QTextDocument document;
        document.setHtml(tip);
        QCOMPARE(document.toPlainText().simplified(), text.simplified());
    }
}

ZEL_TEST_MAIN(tst_hostilenames)
#include "tst_hostilenames.moc"
