// labels: x11
#include "DeskWindow.h"

#include "desk/CataloguePlace.h"
#include "desk/ClientsPage.h"
#include "desk/ConflictDialog.h"
#include "desk/DeletedQuotes.h"
#include "desk/ErrorDialog.h"
#include "desk/FirstStart.h"
#include "desk/ImportDialogs.h"
#include "desk/NewQuoteDialog.h"
#include "desk/RecoveryDialog.h"

#include "funds/frm_FundSelector.h"
#include "host/Clienteditfrm.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QButtonGroup>
#include <QGroupBox>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QRadioButton>

using namespace Qt::StringLiterals;

using namespace QuoteDesk;

namespace
{

/// Whether an element with this role can be operated and therefore needs a name.
bool isControl(QAccessible::Role role)
{
    switch (role) {
    case QAccessible::PushButton:
    case QAccessible::CheckBox:
    case QAccessible::RadioButton:
    case QAccessible::ComboBox:
    case QAccessible::EditableText:
    case QAccessible::SpinBox:
    case QAccessible::List:
    case QAccessible::Tree:
    case QAccessible::Table:
    case QAccessible::PageTab:
    case QAccessible::MenuItem:
    case QAccessible::ButtonMenu:
    case QAccessible::ButtonDropDown:
        return true;
    default:
        return false;
    }
}

/// Collects the controls without an accessible name, each with its class and object name.
class Walk
{
public:
    explicit Walk(QWidget &window) : m_window(&window)
    {
        visit(QAccessible::queryAccessibleInterface(&window), 0);
    }

    QStringList nameless;
    int controls = 0;

private:
    const QWidget *m_window;

    void visit(QAccessibleInterface *element, int depth)
    {
        if (!element || !element->isValid() || depth > 40 || element->state().invisible)
            return;
        const QAccessible::Role role = element->role();
        // Everything that can have the focus needs a name, too.
        if (isControl(role) || (element->state().focusable && element->object() != m_window)) {
            ++controls;
            if (element->text(QAccessible::Name).trimmed().isEmpty() && !isPartOfAnother(element))
                nameless.append(describe(element));
        }
        // The rows of a list are not controls.
        if (role == QAccessible::List || role == QAccessible::Tree || role == QAccessible::Table)
            return;
        for (int i = 0; i < element->childCount(); ++i)
            visit(element->child(i), depth + 1);
    }
    /// The edit and list of a combo box and the edit in a spin box are named by their parent.
    static bool isPartOfAnother(const QAccessibleInterface *element)
    {
        const QAccessibleInterface *const parent = element->parent();
        return parent && (parent->role() == QAccessible::ComboBox || parent->role() == QAccessible::SpinBox);
    }
    static QString describe(const QAccessibleInterface *element)
    {
        const QObject *const object = element->object();
        QString path;
        for (const QObject *at = object; at; at = at->parent())
            path.prepend(u"/%1:%2"_s.arg(QLatin1StringView(at->metaObject()->className()), at->objectName()));
        return u"role %1 %2"_s.arg(element->role()).arg(path);
    }
};

void checkNames(QWidget &window, int atLeast)
{
    QCoreApplication::processEvents();
    const Walk walk(window);
    QVERIFY2(walk.nameless.isEmpty(), qPrintable(walk.nameless.join(u'\n')));
    QVERIFY2(walk.controls >= atLeast, qPrintable(QString::number(walk.controls)));
}

/// The texts of a menu or window that share a mnemonic letter.
QStringList sharedLetters(const QStringList &texts)
{
    QMap<QString, QStringList> claims;
    for (const QString &text : texts) {
        const QKeySequence letter = QKeySequence::mnemonic(text);
        if (!letter.isEmpty())
            claims[letter.toString()].append(text);
    }
    QStringList shared;
    for (const QStringList &claim : std::as_const(claims)) {
        if (claim.size() > 1)
            shared.append(claim.join(u" / "_s));
    }
    return shared;
}

/// Each Alt+letter has only one meaning in the window and in each of its menus.
void checkLetters(const QWidget &window)
{
    QStringList texts;
    for (const QWidget *const widget : window.findChildren<QWidget *>()) {
        if (const auto *const menu = qobject_cast<const QMenu *>(widget)) {
            QStringList commands;
            for (const QAction *const action : menu->actions())
                commands.append(action->text());
            const QStringList shared = sharedLetters(commands);
            QVERIFY2(shared.isEmpty(), qPrintable(menu->title() + u'\n' + shared.join(u'\n')));
        }
        if (!widget->isVisible())
            continue;
        if (const auto *const bar = qobject_cast<const QMenuBar *>(widget)) {
            for (const QAction *const action : bar->actions())
                texts.append(action->text());
        } else if (const auto *const button = qobject_cast<const QAbstractButton *>(widget)) {
            texts.append(button->text());
        } else if (const auto *const group = qobject_cast<const QGroupBox *>(widget)) {
            texts.append(group->title());
        } else if (const auto *const label = qobject_cast<const QLabel *>(widget)) {
            if (label->buddy())
                texts.append(label->text());
        }
    }
    const QStringList shared = sharedLetters(texts);
    QVERIFY2(shared.isEmpty(), qPrintable(shared.join(u'\n')));
}

/// Checks the modal dialog that @p open shows.
template <typename Dialog, typename Open> void checkDialog(Open open)
{
    QVERIFY(inDialog<Dialog>(open, [](Dialog &dialog) {
        checkNames(dialog, 5);
        checkLetters(dialog);
        dialog.reject();
    }));
}

/// Checks the window in both languages.
void checkInBothLanguages(QWidget &window, int atLeast)
{
    for (const Language language : {Language::Afrikaans, Language::English}) {
        setCurrentLanguage(language);
        checkNames(window, atLeast);
        checkLetters(window);
    }
}

} // namespace

/// Every control has a name for screen readers.
class tst_accessible : public ZelTest
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { setCurrentLanguage(Language::English); }

    void startPage();
    void firstStart();
    void pagesOfAQuote_data();
    void pagesOfAQuote();
    void dialogs_data();
    void dialogs();
    void everyCommandIsInAMenu();
    void tabReachesEveryControl();
};

void tst_accessible::startPage()
{
    DeskWindow desk;
    desk.quote(desk.client("Botha", "Piet"), 1, "Mine", 100000, 12);
    QVERIFY(desk.show());
    for (const int width : {1000, 1366}) {
        desk.window->resize(width, 760);
        checkInBothLanguages(*desk.window, 15);
    }
    for (QWidget *const place : QList<QWidget *>{desk.window->clientsPage(), desk.window->cataloguePage()}) {
        desk.window->pages->setCurrentWidget(place);
        checkInBothLanguages(*desk.window, 8);
    }
}

void tst_accessible::firstStart()
{
    DeskWindow desk;
    QVERIFY(desk.show());
    QVERIFY(desk.start().firstStart()->isVisible());
    checkInBothLanguages(*desk.window, 5);
}

void tst_accessible::pagesOfAQuote_data()
{
    QTest::addColumn<int>("productID");
    QTest::newRow("retirement annuity") << 1;
    QTest::newRow("living annuity") << 2;
    QTest::newRow("investment plan") << 3;
}

void tst_accessible::pagesOfAQuote()
{
    QFETCH(int, productID);
    DeskWindow desk;
    const qint64 number = desk.quote(desk.client("Botha", "Piet"), productID, "Mine", 100000, 12);
    QVERIFY(desk.show());
    QuoteForm &form = *desk.window->quotes().open(number)->form();
    for (int page = 0; page < form.pcPages->Get_PageCount(); ++page) {
        if (!form.pcPages->Get_TabVisible(page))
            continue;
        form.pcPages->Set_ActivePageIndex(page);
        if (form.pcPages->currentWidget() == form.fundsPage) {
            QTRY_VERIFY(form.fundsPage->isReady());
            const TfraFundToolBar &buttons = *form.fundsPage->fraFundAllocation->fraFundToolBar;
            checkDialog<TfrmFundSelector>([&] { QTest::mouseClick(buttons.sbtFunds, Qt::LeftButton); });
            checkDialog<TfrmEditClient>([&] { QTest::mouseClick(form.sbtClient, Qt::LeftButton); });
        }
        checkInBothLanguages(*desk.window, 15);
    }
}

void tst_accessible::dialogs_data()
{
    QTest::addColumn<Language>("language");
    QTest::newRow("English") << Language::English;
    QTest::newRow("Afrikaans") << Language::Afrikaans;
}

void tst_accessible::dialogs()
{
    DeskWindow desk;
    desk.client("Botha", "Piet");
    QVERIFY(desk.show());
    QFETCH(Language, language);
    desk.window->setLanguage(language);
    const auto check = [](QDialog &&dialog) {
        QVERIFY(showActive(dialog));
        checkNames(dialog, 2);
        checkLetters(dialog);
    };
    check(NewQuoteDialog(desk.window->session(), 1, desk.window.get()));
    desk.store->remove(desk.quote(0, 1, "Deleted", 100));
    check(DeletedQuotesDialog(desk.window->session(), desk.window.get()));
    check(ErrorDialog(u"Wrong"_s, u"Details"_s, desk.window.get()));
    ImportReport report;
    report.refused.append({3, u"bad"_s});
    check(ImportReportDialog(u"a.csv"_s, report, desk.window.get()));
    Quote mine;
    mine.productID = 1;
    Quote theirs = mine;
    theirs.description = u"Theirs"_s;
    check(ConflictDialog(mine, QuoteChangedElsewhere(u"x"_s, theirs, false), desk.window->session(),
                         desk.window.get()));
    check(RecoveryDialog({Draft{u"k"_s, mine, QDateTime::currentDateTimeUtc()}}, desk.window->session(),
                         desk.window.get()));
}

void tst_accessible::everyCommandIsInAMenu()
{
    DeskWindow desk;
    QVERIFY(desk.show());
    QList<QAction *> inMenus;
    for (const QMenu *const menu : desk.window->menubar->findChildren<QMenu *>())
        inMenus += menu->actions();
    for (QAction *const action :
         desk.window->findChildren<QAction *>(QString(), Qt::FindDirectChildrenOnly)) {
        if (action->objectName().startsWith(u"act"_s))
            QVERIFY2(inMenus.contains(action), qPrintable(action->objectName()));
    }
}

void tst_accessible::tabReachesEveryControl()
{
    DeskWindow desk;
    const qint64 number = desk.quote(desk.client("Botha", "Piet"), 2, "Mine", 100000, 12);
    QVERIFY(desk.show());
    const auto checkPage = [&desk](const char *page, int moreThan = 8) {
        QSet<const QWidget *> wanted;
        for (const QWidget *const widget : desk.window->findChildren<QWidget *>()) {
            const bool takesTab = (widget->focusPolicy() & Qt::TabFocus) != 0 && !widget->focusProxy();
            if (takesTab && widget->isVisible() && widget->isEnabled())
                wanted.insert(widget);
        }
        QVERIFY2(wanted.size() > moreThan, page);
        for (qsizetype step = 0, most = 3 * wanted.size(); step < most && !wanted.isEmpty(); ++step) {
            const auto *const button = qobject_cast<const QRadioButton *>(QApplication::focusWidget());
            wanted.remove(QApplication::focusWidget());
            // Arrow keys reach the other buttons of the group.
            if (button) {
                const QList<QAbstractButton *> group =
                    button->group() ? button->group()->buttons()
                                    : button->parent()->findChildren<QAbstractButton *>(
                                          QString(), Qt::FindDirectChildrenOnly);
                for (const QAbstractButton *const other : group) {
                    if (qobject_cast<const QRadioButton *>(other))
                        wanted.remove(other);
                }
            }
            desk.key(Qt::Key_Tab);
        }
        QStringList missed;
        for (const QWidget *const widget : std::as_const(wanted))
            missed.append(QLatin1StringView(widget->metaObject()->className()) + u':' + widget->objectName());
        QVERIFY2(missed.isEmpty(), qPrintable(u"%1: %2"_s.arg(QLatin1StringView(page), missed.join(u' '))));
    };
    checkPage("start page");
    desk.window->resize(1366, 760);
    QCoreApplication::processEvents();
    checkPage("start page with preview");
    desk.window->pages->setCurrentWidget(desk.window->clientsPage());
    checkPage("clients", 4);
    desk.window->pages->setCurrentIndex(0);
    QuoteForm &form = *desk.window->quotes().open(number)->form();
    for (const QuoteForm::Page page : {QuoteForm::Page::Details, QuoteForm::Page::Income,
                                       QuoteForm::Page::Funds, QuoteForm::Page::Summary}) {
        form.goTo(page);
        if (page == QuoteForm::Page::Funds)
            QTRY_VERIFY(form.fundsPage->isReady());
        checkPage(qPrintable(form.pcPages->tabText(static_cast<int>(page))));
    }
}

ZEL_TEST_MAIN(tst_accessible)
#include "tst_accessible.moc"
