// labels: x11
#include "ZelTest.h"

#include "EditorDesk.h"
#include "store/QuoteJson.h"

#include "frames/fra_ElmtCheckBoxDouble.h"
#include "frames/fra_ElmtLabelComboBox.h"
#include "frames/fra_ElmtLabelDouble.h"
#include "frames/fra_ElmtLabelEdit.h"
#include "frames/fra_ElmtLabelInteger.h"
#include "frames/fra_ElmtLabelMaskedEdit.h"
#include "frames/fra_ElmtRadioButtonDouble.h"
#include "frames/fra_ElmtRadioButtonInteger.h"
#include "frames/fra_ElmtRadioButtonMaskedEdit.h"
#include "host/Clienteditfrm.h"
#include "toolkit/TComboBox.h"

#include <QAccessible>
#include <QAction>
#include <QElapsedTimer>
#include <QLabel>
#include <QRadioButton>
#include <QTabBar>
#include <QTimer>

using namespace Qt::StringLiterals;

using namespace QuoteDesk;

namespace
{

template <class TFrame> TFrame &element(const QWidget *page, const char *name)
{
    auto *const frame = page->findChild<TFrame *>(u"fra"_s + QLatin1String(name));
    if (!frame)
        qFatal("no element %s", name);
    return *frame;
}

void letGo()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

/// Drives the client dialog that the next click opens. With @p found it waits for a dialog with this surname.
/// @p before is called when the dialog is shown.
class ClientDialogHand : public QObject
{
public:
    ClientDialogHand(const QString &surname, bool accept, const QString &found = {},
                     const std::function<void()> &before = {})
    {
        connect(&m_timer, &QTimer::timeout, this, [this, surname, accept, found, before] {
            auto *const dialog = qobject_cast<TfrmEditClient *>(QApplication::activeModalWidget());
            if (!dialog || (!found.isEmpty() && dialog->edSurname->text() != found))
                return;
            m_timer.stop();
            shown = true;
            if (before)
                before();
            QLineEdit *const field = dialog->edSurname;
            field->setFocus();
            if (!surname.isEmpty()) {
                field->selectAll();
                QTest::keyClicks(field, surname);
            }
            QTest::keyClick(field, accept ? Qt::Key_Return : Qt::Key_Escape);
        });
        m_timer.start(10);
    }
    bool shown = false;

private:
    QTimer m_timer;
};

} // namespace

class tst_quoteeditor : public ZelTest
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        StandardModuleManager().CloseAll();
        letGo();
    }

    void aQuoteIsShownAndSaved();
    void eachProductHasItsOwnPages_data();
    void eachProductHasItsOwnPages();
    void theHostsCommandsStepThroughThePages();
    void theHostsCommandsFollowTheWindowInFront();
    void everyKindOfElementKeepsItsValue();
    void oneOfSeveralElementsCounts();
    void aClickIntoANumberOrDateChoosesAllOfIt();
    void whatIsMissingIsSaidInPlainWords();
    void eachPointLeadsToItsField();
    void theIncomeIsCheckedAgainstTheCapital();
    void anUnknownDetailIsKept();
    void anEntryThatIsNoValueIsKeptAsTyped();
    void whatAFieldCannotShowIsKept();
    void aClientIsChosenAndEdited();
    void aNewClientIsEntered();
    void aClientThatCannotBeStored();
    void aStoredQuoteIsHiddenAndComesBackAsItWas();
    void aNewQuoteIsClosedWithNothingLost();
    void anEditorCanBeDeletedAtAnyTime();
    void aDraftIsAskedForAMomentAfterTyping();
    void aConflictReachesTheOwner();
    void aDraftIsRecovered();
    void anotherVersionIsPutOnTheScreen();
    void aProductWithoutAnEditorIsRefused();
    void everyControlHasANameAndCanBeReached();
    void theFocusGoesFromTopToBottom();
    void anEditIsSeenWithItsLastKey();
};

void tst_quoteeditor::aQuoteIsShownAndSaved()
{
    EditorDesk desk;
    Quote quote = EditorDesk::quote();
    quote.clientID = desk.botha.clientID;
    quote.description = u"Retirement"_s;
    QuoteEditor editor(desk.session, quote);
    QVERIFY(desk.openForm(editor));
    QVERIFY(!editor.isModified());
    QCOMPARE(QApplication::focusWidget(), editor.form()->cbData);
    QCOMPARE(editor.form()->cbData->currentText(), u"Botha, Piet"_s);
    editor.form()->edtDescription->setFocus();
    editor.form()->edtDescription->selectAll();
    QSignalSpy changed(&editor, &QuoteEditor::changed);
    QTest::keyClicks(editor.form()->edtDescription, u"Old age"_s);
    QCOMPARE(changed.size(), 7);
    QVERIFY(editor.isModified());
    QSignalSpy asked(&editor, &QuoteEditor::saveRequested);
    QTest::keyClick(editor.form()->edtDescription, Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(asked.size(), 1);
    QSignalSpy saved(&editor, &QuoteEditor::saved);
    editor.save();
    QCOMPARE(saved.size(), 1);
    QVERIFY(!editor.isModified());
    const Quote stored = desk.store->quote(editor.quote().quoteID);
    QCOMPARE(stored.description, u"Old age"_s);
    QCOMPARE(stored.clientID, desk.botha.clientID);
    QCOMPARE(editor.quote().revision, stored.revision);
}

void tst_quoteeditor::eachProductHasItsOwnPages_data()
{
    QTest::addColumn<int>("productID");
    QTest::addColumn<QString>("own");
    QTest::addColumn<bool>("income");
    QTest::newRow("retirement annuity") << 1 << u"fraRetirementFundName"_s << false;
    QTest::newRow("living annuity") << 2 << u"fraTransferringFund"_s << true;
    QTest::newRow("investment plan") << 3 << u"fraOwner"_s << false;
}

void tst_quoteeditor::eachProductHasItsOwnPages()
{
    QFETCH(int, productID);
    QFETCH(QString, own);
    QFETCH(bool, income);
    EditorDesk desk;
    QVERIFY(hasProductEditor(productID));
    QuoteEditor editor(desk.session, EditorDesk::quote(productID));
    QVERIFY(desk.openForm(editor));
    QuoteForm &form = *editor.form();
    QVERIFY(form.findChild<QWidget *>(own));
    QVERIFY(form.windowTitle().contains(editor.product().name));
    QCOMPARE(form.pcPages->Get_PageCount(), 4);
    QCOMPARE(form.pcPages->Get_TabVisible(1), income);
    QCOMPARE(form.skippedPages().test(1), !income);
    // The navigation bar skips the page that does not apply.
    QVERIFY(form.fraNavBar->isVisible());
    QList<int> seen{form.pcPages->Get_ActivePageIndex()};
    while (form.fraNavBar->btnNext->isEnabled()) {
        QTest::mouseClick(form.fraNavBar->btnNext, Qt::LeftButton);
        seen.append(form.pcPages->Get_ActivePageIndex());
    }
    QCOMPARE(seen, income ? QList<int>({0, 1, 2, 3}) : QList<int>({0, 2, 3}));
    QVERIFY(form.fraNavBar->btnPrev->isEnabled());
    QTest::mouseClick(form.fraNavBar->btnPrev, Qt::LeftButton);
    QTest::mouseClick(form.fraNavBar->btnPrev, Qt::LeftButton);
    QCOMPARE(form.pcPages->Get_ActivePageIndex(), income ? 1 : 0);
    // Opening again shows the same form.
    const QuoteForm *const before = editor.form();
    openProductEditor(editor);
    QCOMPARE(editor.form(), before);
}

void tst_quoteeditor::theHostsCommandsStepThroughThePages()
{
    EditorDesk desk;
    QAction next;
    QAction previous;
    const auto pass = [](const QString &name, qint32 index) {
        if (const IZelModulePtr module = StandardModuleManager().ActiveModule())
            SafecallCheck(module->ItemClicked(name, index));
    };
    desk.session.nextItem = std::make_shared<TRibbonItem>(&next, u"Next"_s, 0, pass);
    desk.session.previousItem = std::make_shared<TRibbonItem>(&previous, u"Previous"_s, 0, pass);
    QuoteEditor editor(desk.session, EditorDesk::quote(2));
    QVERIFY(desk.openForm(editor));
    QuoteForm &form = *editor.form();
    QVERIFY(form.fraNavBar->isVisible());
    QVERIFY(next.isEnabled());
    QVERIFY(!previous.isEnabled());
    for (int page = 1; page <= 3; ++page) {
        next.trigger();
        QCOMPARE(form.pcPages->Get_ActivePageIndex(), page);
    }
    QVERIFY(!next.isEnabled());
    previous.trigger();
    QCOMPARE(form.pcPages->Get_ActivePageIndex(), 2);
    QVERIFY(next.isEnabled());
    // Selecting a tab with the mouse updates the commands, too.
    QTest::mouseClick(form.pcPages->tabBar(), Qt::LeftButton, {},
                      form.pcPages->tabBar()->tabRect(0).center());
    QVERIFY(!previous.isEnabled());
}

void tst_quoteeditor::theHostsCommandsFollowTheWindowInFront()
{
    EditorDesk desk;
    QAction next;
    QAction previous;
    desk.session.nextItem = std::make_shared<TRibbonItem>(&next, u"Next"_s);
    desk.session.previousItem = std::make_shared<TRibbonItem>(&previous, u"Previous"_s);
    QuoteEditor first(desk.session, EditorDesk::quote(1));
    QuoteEditor second(desk.session, EditorDesk::quote(3));
    QVERIFY(desk.openForm(first));
    first.form()->goTo(QuoteForm::Page::Summary);
    QVERIFY(!next.isEnabled() && previous.isEnabled());
    QVERIFY(desk.openForm(second));
    QVERIFY(next.isEnabled() && !previous.isEnabled());
    first.form()->hide();
    openProductEditor(first);
    QVERIFY(!next.isEnabled() && previous.isEnabled());
}

void tst_quoteeditor::everyKindOfElementKeepsItsValue()
{
    EditorDesk desk;
    Quote quote = EditorDesk::quote(1);
    QuoteEditor editor(desk.session, quote);
    QVERIFY(desk.openForm(editor));
    QWidget *const page = editor.form()->detailsPage;
    const auto type = [](QLineEdit *field, const char *text) {
        field->setFocus();
        field->selectAll();
        QTest::keyClicks(field, QLatin1String(text));
        QTest::keyClick(field, Qt::Key_Tab);
    };
    type(element<TfraElmtLabelEdit>(page, "RetirementFundName").edValue, "Ironwood Fund");
    type(element<TfraElmtLabelInteger>(page, "RetirementAge").nfValue, "65");
    QLineEdit *const date = element<TfraElmtLabelMaskedEdit>(page, "InvestmentDate").medValue;
    date->setFocus();
    QTest::keyClick(date, Qt::Key_Home);
    QTest::keyClicks(date, u"20261121"_s);
    auto &monthly = element<TfraElmtCheckBoxDouble>(page, "MonthlyContribution");
    // Typing a value ticks its box; without the tick the value does not count.
    type(monthly.nfValue, "1250.5");
    QVERIFY(monthly.cbCaption->isChecked());
    QTest::mouseClick(monthly.cbCaption, Qt::LeftButton, {}, QPoint(7, 16));
    QVERIFY(!editor.quote().details.contains(u"MonthlyContribution"_s));
    QTest::mouseClick(monthly.cbCaption, Qt::LeftButton, {}, QPoint(7, 16));
    const QMap<QString, QString> expected{{u"InvestmentDate"_s, u"2026-11-21"_s},
                                          {u"MonthlyContribution"_s, u"1250.50"_s},
                                          {u"RetirementAge"_s, u"65"_s},
                                          {u"RetirementFundName"_s, u"Ironwood Fund"_s}};
    QCOMPARE(editor.quote().details, expected);
    editor.save();

    QuoteEditor later(desk.session, desk.store->quote(editor.quote().quoteID));
    QVERIFY(desk.openForm(later));
    QVERIFY(!later.isModified());
    QCOMPARE(later.quote().details, expected);
    QWidget *const again = later.form()->detailsPage;
    QVERIFY(element<TfraElmtCheckBoxDouble>(again, "MonthlyContribution").cbCaption->isChecked());
    QCOMPARE(element<TfraElmtLabelMaskedEdit>(again, "InvestmentDate").medValue->text(), u"2026-11-21"_s);
}

void tst_quoteeditor::oneOfSeveralElementsCounts()
{
    EditorDesk desk;
    QuoteEditor editor(desk.session, EditorDesk::quote(3));
    QVERIFY(desk.openForm(editor));
    QWidget *const page = editor.form()->detailsPage;
    auto &term = element<TfraElmtRadioButtonInteger>(page, "TermYears");
    auto &end = element<TfraElmtRadioButtonMaskedEdit>(page, "EndDate");
    QVERIFY(!term.rbCaption->isChecked() && !end.rbCaption->isChecked());
    QTest::mouseClick(term.rbCaption, Qt::LeftButton, {}, QPoint(7, 16));
    term.nfValue->setFocus();
    term.nfValue->selectAll();
    QTest::keyClicks(term.nfValue, u"10"_s);
    QCOMPARE(editor.quote().details.value(u"TermYears"_s), u"10"_s);
    QTest::mouseClick(end.rbCaption, Qt::LeftButton, {}, QPoint(7, 16));
    QVERIFY(!term.rbCaption->isChecked());
    end.medValue->setFocus();
    QTest::keyClick(end.medValue, Qt::Key_Home);
    QTest::keyClicks(end.medValue, u"20360101"_s);
    const Quote quote = editor.quote();
    QVERIFY(!quote.details.contains(u"TermYears"_s));
    QCOMPARE(quote.details.value(u"EndDate"_s), u"2036-01-01"_s);
    // Typing into a field selects its radio button.
    term.nfValue->setFocus();
    QTest::keyClicks(term.nfValue, u"5"_s);
    QVERIFY(term.rbCaption->isChecked() && !end.rbCaption->isChecked());
    QVERIFY(!editor.quote().details.contains(u"EndDate"_s));
    // A list stores a value that does not depend on the language.
    TComboBox *const owner = element<TfraElmtLabelComboBox>(page, "Owner").cbData;
    owner->setFocus();
    QTest::keyClick(owner, Qt::Key_Down);
    QTest::keyClick(owner, Qt::Key_Down);
    QCOMPARE(owner->currentText(), u"a company"_s);
    QCOMPARE(editor.quote().details.value(u"Owner"_s), u"company"_s);
}

void tst_quoteeditor::aClickIntoANumberOrDateChoosesAllOfIt()
{
    EditorDesk desk;
    QuoteEditor editor(desk.session, EditorDesk::quote(1));
    QVERIFY(desk.openForm(editor));
    ElementsPage *const page = editor.form()->detailsPage;
    const struct {
        QLineEdit *field;
        QString typed;
        QString name;
        QString value;
    } entries[] = {
        {element<TfraElmtLabelInteger>(page, "RetirementAge").nfValue, u"65"_s, u"RetirementAge"_s, u"65"_s},
        {element<TfraElmtLabelDouble>(page, "Escalation").nfValue, u"5"_s, u"Escalation"_s, u"5.00"_s},
        {element<TfraElmtLabelMaskedEdit>(page, "InvestmentDate").medValue, u"20260301"_s,
         u"InvestmentDate"_s, u"2026-03-01"_s},
    };
    for (const auto &entry : entries) {
        // Clicks before the number and, for the date, behind the mask's blanks.
        const int x = entry.name == u"InvestmentDate"_s ? entry.field->width() - 6 : 4;
        QTest::mouseClick(entry.field, Qt::LeftButton, {}, {x, entry.field->height() / 2}, 1000);
        QTRY_VERIFY(entry.field->hasSelectedText());
        QTest::keyClicks(entry.field, entry.typed);
        QCOMPARE(editor.quote().details.value(entry.name), entry.value);
    }
}

void tst_quoteeditor::whatIsMissingIsSaidInPlainWords()
{
    EditorDesk desk;
    QuoteEditor editor(desk.session, EditorDesk::quote(1, 0));
    QVERIFY(desk.openForm(editor));
    QuoteForm &form = *editor.form();
    const auto said = [&form](const char *name) {
        return form.detailsPage->problemLine(QLatin1String(name))->text();
    };
    const auto counted = [&form] {
        const auto *const banner = form.detailsPage->findChild<Banner *>();
        return banner ? banner->content().text : QString();
    };
    // What is missing is still to be done and not wrong.
    QCOMPARE(said("RetirementFundName"), u"Retirement Fund Name is required."_s);
    QCOMPARE(form.detailsPage->problemLine(u"RetirementFundName"_s)->mark(), FieldMark::Advice);
    QCOMPARE(counted(), u"1 field(s) need another look before the quote is complete."_s);
    QLineEdit *const date = element<TfraElmtLabelMaskedEdit>(form.detailsPage, "InvestmentDate").medValue;
    date->setFocus();
    QTest::keyClick(date, Qt::Key_Home);
    QTest::keyClicks(date, u"20261399"_s);
    QLineEdit *const age = element<TfraElmtLabelInteger>(form.detailsPage, "RetirementAge").nfValue;
    age->setFocus();
    age->selectAll();
    QTest::keyClicks(age, u"30"_s);
    QTRY_COMPARE(said("InvestmentDate"), u"The investment receipt date is invalid."_s);
    QCOMPARE(form.detailsPage->problemLine(u"InvestmentDate"_s)->mark(), FieldMark::Problem);
    // The field in which the user still types is not judged yet.
    QCOMPARE(said("RetirementAge"), QString());
    QTest::keyClick(age, Qt::Key_Tab);
    QTRY_COMPARE(said("RetirementAge"), u"The retirement age is from 55 to 75 years."_s);
    QCOMPARE(age->accessibleDescription(), said("RetirementAge"));
    QTRY_COMPARE(counted(), u"3 field(s) need another look before the quote is complete."_s);
    // The banner's button goes to the first of them.
    QTest::mouseClick(form.detailsPage->findChild<Banner *>()->actionButton(), Qt::LeftButton);
    QCOMPARE(form.detailsPage->entered(), u"RetirementFundName"_s);
    QCOMPARE(form.problems().size(), 5);
    // A draft can be saved in spite of these problems.
    editor.save();
    form.goTo(QuoteForm::Page::Summary);
    QVERIFY(form.summaryPage->pnlProblems->isVisible());
    const auto points = [&form] {
        QStringList sentences;
        for (const QLabel *const point :
             form.summaryPage->pnlProblems->findChildren<QLabel *>(u"lblPoint"_s)) {
            if (point->isVisible())
                sentences.append(point->text());
        }
        return sentences;
    };
    QVERIFY(points().contains(u"No investor is chosen."_s));
    QCOMPARE(points(), OpenPoint::sentences(form.openPoints()));
    QVERIFY(form.summaryPage->lblStateValue->text().startsWith(u"Draft"_s));

    QLineEdit *const name = element<TfraElmtLabelEdit>(form.detailsPage, "RetirementFundName").edValue;
    form.goTo(QuoteForm::Page::Details);
    name->setFocus();
    QTest::keyClicks(name, u"X"_s);
    age->setFocus();
    age->selectAll();
    QTest::keyClicks(age, u"60"_s);
    date->setFocus();
    QTest::keyClick(date, Qt::Key_Home);
    QTest::keyClicks(date, u"20261130"_s);
    for (const char *const field : {"RetirementFundName", "RetirementAge", "InvestmentDate"})
        QTRY_COMPARE(said(field), QString());
    QTRY_COMPARE(counted(), QString());
}

void tst_quoteeditor::eachPointLeadsToItsField()
{
    EditorDesk desk;
    Quote quote = EditorDesk::quote(1, 0);
    quote.details = {{u"RetirementFundName"_s, u"Ironwood"_s}, {u"RetirementAge"_s, u"99"_s}};
    QuoteEditor editor(desk.session, quote);
    QVERIFY(desk.open(editor));
    QuoteForm &form = *editor.form();
    FundsPage &funds = *form.fundsPage;
    QLineEdit *const age = element<TfraElmtLabelInteger>(form.detailsPage, "RetirementAge").nfValue;
    const QList<QWidget *> fields{form.cbData, age, funds.edAmount, funds.fraFundAllocation->FundGrid};
    QCOMPARE(form.openPoints().size(), fields.size());
    // The buttons of the summary.
    for (qsizetype i = 0; i < fields.size(); ++i) {
        form.goTo(QuoteForm::Page::Summary);
        QList<QPushButton *> buttons;
        for (QPushButton *const button :
             form.summaryPage->pnlProblems->findChildren<QPushButton *>(u"btnGo"_s)) {
            if (button->isVisible())
                buttons.append(button);
        }
        QCOMPARE(buttons.size(), fields.size());
        QTest::mouseClick(buttons.at(i), Qt::LeftButton);
        QCOMPARE(QApplication::focusWidget(), fields.at(i));
    }
    QVERIFY(!age->hasSelectedText());
    // The keys go round, in both directions.
    for (QWidget *const field : fields) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_F8);
        QCOMPARE(QApplication::focusWidget(), field);
    }
    for (qsizetype i = fields.size() - 2; i >= 0; --i) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_F8, Qt::ShiftModifier);
        QCOMPARE(QApplication::focusWidget(), fields.at(i));
    }
    form.goToPoint(form.openPoints().at(1));
    QCOMPARE(age->selectedText(), age->text());
    // What is mended is no longer a point.
    QTest::keyClicks(age, u"60"_s);
    QTest::keyClick(age, Qt::Key_F8);
    QCOMPARE(form.openPoints().size(), fields.size() - 1);
    form.goTo(QuoteForm::Page::Summary);
    QVERIFY(form.summaryPage->lblDetails->text().contains(u"Ironwood"_s));
}

void tst_quoteeditor::theIncomeIsCheckedAgainstTheCapital()
{
    EditorDesk desk;
    QuoteEditor editor(desk.session, EditorDesk::quote(2, 100000));
    QVERIFY(desk.openForm(editor));
    QuoteForm &form = *editor.form();
    form.cbData->setCurrentIndex(0);
    form.goTo(QuoteForm::Page::Income);
    QCOMPARE(form.problems(), QStringList(u"The yearly income is missing."_s));
    auto &amount = element<TfraEmltRadioButtonDouble>(form.incomePage, "IncomeAmount");
    QTest::mouseClick(amount.rbCaption, Qt::LeftButton, {}, QPoint(7, 16));
    const auto type = [&amount](const char *text) {
        amount.nfValue->setFocus();
        amount.nfValue->selectAll();
        QTest::keyClicks(amount.nfValue, QLatin1String(text));
    };
    type("2499.99");
    QCOMPARE(form.problems().size(), 1);
    QVERIFY(form.problems().first().contains(u"from 2.50 to 17.50 percent"_s));
    type("2500");
    QVERIFY(form.problems().isEmpty());
    type("17500");
    QVERIFY(form.problems().isEmpty());
    type("17500.1");
    QCOMPARE(editor.quote().details.value(u"IncomeAmount"_s), u"17500.10"_s);
    QCOMPARE(form.problems().size(), 1);
}

void tst_quoteeditor::anUnknownDetailIsKept()
{
    EditorDesk desk;
    Quote quote = EditorDesk::quote();
    quote.details = {{u"FromAnotherVersion"_s, u"7"_s}};
    QuoteEditor editor(desk.session, quote);
    QVERIFY(desk.openForm(editor));
    QCOMPARE(editor.quote().details, quote.details);
}

void tst_quoteeditor::anEntryThatIsNoValueIsKeptAsTyped()
{
    EditorDesk desk;
    QuoteEditor editor(desk.session, EditorDesk::quote(1));
    QVERIFY(desk.open(editor));
    QuoteForm &form = *editor.form();
    FundsHand(editor).paste(u"1;40%"_s);
    form.goTo(QuoteForm::Page::Details);
    const auto fieldOf = [](const QuoteForm &window) {
        return element<TfraElmtCheckBoxDouble>(window.detailsPage, "MonthlyContribution").nfValue;
    };
    const auto reasonAt = [](const QuoteForm &window) {
        return window.detailsPage->problemLine(u"MonthlyContribution"_s);
    };
    const QString name = u"MonthlyContribution"_s;
    const QString typed = u"123456789012345"_s;
    const QString reason = u"Enter a number from 0.00 to 999,999,999.99."_s;
    QVERIFY(reasonAt(form) && !reasonAt(form)->isVisible());
    const qsizetype before = form.problems().size();
    const auto enter = [&form, &fieldOf](const QString &text) {
        fieldOf(form)->setFocus();
        fieldOf(form)->selectAll();
        QTest::keyClicks(fieldOf(form), text);
        QTest::keyClick(fieldOf(form), Qt::Key_Tab);
    };
    enter(typed);
    QVERIFY(fieldOf(form)->HasError());
    QCOMPARE(fieldOf(form)->text(), typed);
    QTRY_VERIFY(reasonAt(form)->isVisible());
    QCOMPARE(reasonAt(form)->text(), reason);
    QCOMPARE(form.problems().size(), before + 1);
    QVERIFY(form.problems().contains(u"Monthly amount (R): \"%1\" cannot be used. %2"_s.arg(typed, reason)));
    QCOMPARE(editor.quote().details.value(name), typed);
    // Undoing a step of the funds keeps the refused entry, and so does the draft's text.
    form.actUndo->trigger();
    QCOMPARE(editor.quote().details.value(name), typed);
    QCOMPARE(quoteFromJson(quoteToJson(editor.quote())).details.value(name), typed);
    form.actRedo->trigger();
    editor.save();
    QVERIFY(!editor.isModified());

    // The stored quote shows the refused entry and its reason again.
    QuoteEditor later(desk.session, desk.store->quote(editor.quote().quoteID));
    QCOMPARE(later.quote().details.value(name), typed);
    QVERIFY(desk.openForm(later));
    QVERIFY(!later.isModified());
    QCOMPARE(fieldOf(*later.form())->text(), typed);
    QVERIFY(fieldOf(*later.form())->HasError());
    QVERIFY(reasonAt(*later.form())->isVisible());
    QCOMPARE(later.quote().details.value(name), typed);

    // A corrected entry is a normal value.
    QVERIFY(showActive(form));
    form.goTo(QuoteForm::Page::Details);
    enter(u"500"_s);
    QVERIFY(!reasonAt(form)->isVisible());
    QCOMPARE(editor.quote().details.value(name), u"500.00"_s);
    QCOMPARE(form.problems().size(), before);
    // Without its tick the entry does not count.
    enter(typed);
    QCOMPARE(form.problems().size(), before + 1);
    QTest::mouseClick(element<TfraElmtCheckBoxDouble>(form.detailsPage, "MonthlyContribution").cbCaption,
                      Qt::LeftButton, {}, QPoint(7, 16));
    QVERIFY(!editor.quote().details.contains(name));
    QCOMPARE(form.problems().size(), before);
    QVERIFY(!reasonAt(form)->isVisible());
}

void tst_quoteeditor::whatAFieldCannotShowIsKept()
{
    // Values as from another version of the program or an edited draft.
    EditorDesk desk;
    const QMap<QString, QString> strange{{u"RetirementFundName"_s, u"x"_s.repeated(150)},
                                         {u"MemberNumber"_s, u"A number of many letters"_s},
                                         {u"InvestmentDate"_s, u"next week"_s},
                                         {u"RetirementAge"_s, u"sixty"_s},
                                         {u"Escalation"_s, u"1.005"_s},
                                         {u"MonthlyContribution"_s, u"much"_s}};
    Quote quote = EditorDesk::quote(1);
    quote.details = strange;
    QuoteEditor editor(desk.session, quote);
    QVERIFY(desk.openForm(editor));
    QVERIFY(!editor.isModified());
    QCOMPARE(editor.quote().details, strange);
    ElementsPage &page = *editor.form()->detailsPage;
    for (auto entry = strange.cbegin(); entry != strange.cend(); ++entry) {
        const QList<ElementsPage::Problem> problems = page.problems();
        QVERIFY2(std::any_of(problems.cbegin(), problems.cend(),
                             [&entry](const ElementsPage::Problem &problem) {
                                 return problem.element == entry.key() &&
                                        problem.sentence.contains(entry.value().left(30));
                             }),
                 qPrintable(entry.key()));
        const ProblemLine *const why = page.problemLine(entry.key());
        QVERIFY2(why && why->isVisible() && !why->text().isEmpty(), qPrintable(entry.key()));
    }
    QCOMPARE(element<TfraElmtLabelInteger>(&page, "RetirementAge").nfValue->text(), u"sixty"_s);
    // A valid entry replaces the strange value.
    QLineEdit *const date = element<TfraElmtLabelMaskedEdit>(&page, "InvestmentDate").medValue;
    date->setFocus();
    QTest::keyClick(date, Qt::Key_Home);
    QTest::keyClicks(date, u"20261121"_s);
    QCOMPARE(editor.quote().details.value(u"InvestmentDate"_s), u"2026-11-21"_s);
    QVERIFY(!page.problemLine(u"InvestmentDate"_s)->isVisible());

    Quote plan = EditorDesk::quote(3);
    plan.details = {{u"Owner"_s, u"partnership"_s}, {u"TermYears"_s, u"long"_s}};
    QuoteEditor other(desk.session, plan);
    QVERIFY(desk.openForm(other));
    QCOMPARE(other.quote().details, plan.details);
    QVERIFY(other.form()->problems().join(u' ').contains(u"partnership"_s));
    TComboBox *const owner = element<TfraElmtLabelComboBox>(other.form()->detailsPage, "Owner").cbData;
    owner->setFocus();
    QTest::keyClick(owner, Qt::Key_Down);
    QCOMPARE(other.quote().details.value(u"Owner"_s), u"individual"_s);
    // The living annuity's income page checks its entries, too.
    Quote annuity = EditorDesk::quote(2);
    annuity.details = {{u"IncomePercent"_s, u"a little"_s}};
    QuoteEditor income(desk.session, annuity);
    QVERIFY(desk.openForm(income));
    QVERIFY(income.form()->problems().join(u' ').contains(u"a little"_s));
}

void tst_quoteeditor::aClientIsChosenAndEdited()
{
    EditorDesk desk;
    QuoteEditor editor(desk.session, EditorDesk::quote());
    QVERIFY(desk.openForm(editor));
    QuoteForm &form = *editor.form();
    QCOMPARE(form.cbData->currentIndex(), -1);
    QVERIFY(!form.sbtClient->isEnabled());
    form.cbData->setFocus();
    QTest::keyClick(form.cbData, Qt::Key_Down);
    QCOMPARE(editor.quote().clientID, desk.adams.clientID);
    QVERIFY(editor.isModified());
    ClientDialogHand hand(u"Abrahams"_s, true);
    QTest::mouseClick(form.sbtClient, Qt::LeftButton);
    QVERIFY(hand.shown);
    QCOMPARE(form.cbData->currentText(), u"Abrahams, Thandi"_s);
    QCOMPARE(desk.store->client(desk.adams.clientID).surname, u"Abrahams"_s);
    QCOMPARE(editor.quote().clientID, desk.adams.clientID);
    // Cancelling the dialog stores nothing.
    ClientDialogHand quitter(u"Zulu"_s, false);
    QTest::mouseClick(form.sbtClient, Qt::LeftButton);
    QVERIFY(quitter.shown);
    QCOMPARE(desk.store->client(desk.adams.clientID).surname, u"Abrahams"_s);
}

void tst_quoteeditor::aNewClientIsEntered()
{
    EditorDesk desk;
    QuoteEditor editor(desk.session, EditorDesk::quote());
    QVERIFY(desk.openForm(editor));
    QuoteForm &form = *editor.form();
    ClientDialogHand hand(u"Cele"_s, true);
    QTest::mouseClick(form.sbtNewClient, Qt::LeftButton);
    QVERIFY(hand.shown);
    QCOMPARE(form.cbData->count(), 3);
    QCOMPARE(form.cbData->currentText(), u"Cele"_s);
    QCOMPARE(desk.store->clients().size(), 3);
    QCOMPARE(desk.store->client(editor.quote().clientID).surname, u"Cele"_s);
}

void tst_quoteeditor::aClientThatCannotBeStored()
{
    EditorDesk desk;
    desk.refuseClients();
    Quote quote = EditorDesk::quote();
    quote.clientID = desk.adams.clientID;
    QuoteEditor editor(desk.session, quote);
    QVERIFY(desk.openForm(editor));
    const ReportCatcher report;
    {
        // The dialog opens again with the entry; when it is cancelled, the stored client stays unchanged.
        ClientDialogHand hand(u"Abrahams"_s, true);
        ClientDialogHand again(QString(), false, u"Abrahams"_s);
        QTest::mouseClick(editor.form()->sbtClient, Qt::LeftButton);
        QVERIFY(hand.shown && again.shown);
    }
    QCOMPARE(report.messages.size(), 1);
    QVERIFY(report.messages.constFirst().endsWith(EditorDesk::refusal()));
    QCOMPARE(editor.form()->cbData->currentText(), u"Adams, Thandi"_s);
    QCOMPARE(desk.store->client(desk.adams.clientID).surname, u"Adams"_s);

    // When saving works again, both an existing and a new client are stored.
    for (TcxButton *const button : {editor.form()->sbtClient, editor.form()->sbtNewClient}) {
        desk.refuseClients();
        ClientDialogHand hand(u"Cele"_s, true);
        ClientDialogHand again(QString(), true, u"Cele"_s, [&desk] { desk.acceptClients(); });
        QTest::mouseClick(button, Qt::LeftButton);
        QVERIFY(hand.shown && again.shown);
        QVERIFY(editor.form()->cbData->currentText().startsWith(u"Cele"_s));
        QCOMPARE(desk.store->client(editor.quote().clientID).surname, u"Cele"_s);
    }
    QCOMPARE(report.messages.size(), 3);
    QCOMPARE(desk.store->clients().size(), 3);
}

void tst_quoteeditor::aStoredQuoteIsHiddenAndComesBackAsItWas()
{
    EditorDesk desk;
    Quote quote = EditorDesk::quote();
    desk.store->save(quote);
    QuoteEditor editor(desk.session, quote);
    QVERIFY(desk.open(editor));
    const FundsHand hand(editor);
    hand.paste(u"1;40%\n2;10%"_s);
    hand.grid().SetCurrentCell(3, 2);
    hand.key(Qt::Key_2);
    QSignalSpy drafts(&editor, &QuoteEditor::wantsSave);
    QSignalSpy gone(&editor, &QuoteEditor::QuoteDisposed);
    const QuoteForm *const form = editor.form();
    editor.form()->close();
    QCOMPARE(drafts.size(), 1);
    QCOMPARE(gone.size(), 0);
    QCOMPARE(editor.form(), form);
    QCOMPARE(editor.quote().funds.at(1).percent, Currency(2));
    openProductEditor(editor);
    QVERIFY(editor.form()->isVisible());
    QCOMPARE(editor.form()->pcPages->Get_ActivePageIndex(), 2);
    QCOMPARE(hand.column(3), QStringList({u"40.00"_s, u"2.00"_s}));
    QVERIFY(editor.isModified());
}

void tst_quoteeditor::aNewQuoteIsClosedWithNothingLost()
{
    EditorDesk desk;
    QuoteEditor editor(desk.session, EditorDesk::quote());
    QVERIFY(desk.open(editor));
    FundsHand(editor).paste(u"1;40%"_s);
    editor.fundsPage()->edAmount->setFocus();
    editor.fundsPage()->edAmount->selectAll();
    QTest::keyClicks(editor.fundsPage()->edAmount, u"500"_s);
    QSignalSpy drafts(&editor, &QuoteEditor::wantsSave);
    QSignalSpy gone(&editor, &QuoteEditor::QuoteDisposed);
    editor.form()->close();
    QCOMPARE(drafts.size(), 1);
    QCOMPARE(gone.size(), 1);
    QVERIFY(!editor.form());
    letGo();
    const Quote quote = editor.quote();
    QCOMPARE(quote.amount, Currency(500));
    QCOMPARE(quote.funds.first().amount, Currency(200));
    QVERIFY(editor.isModified());
    // The quote can be opened again.
    QVERIFY(desk.open(editor));
    QCOMPARE(FundsHand(editor).column(4), QStringList(u"200.00"_s));
    editor.save();
    QCOMPARE(desk.store->quotes().size(), 1);
}

void tst_quoteeditor::anEditorCanBeDeletedAtAnyTime()
{
    EditorDesk desk;
    for (const bool destroyed : {false, true}) {
        auto *const editor = new QuoteEditor(desk.session, EditorDesk::quote());
        QVERIFY(desk.open(*editor));
        const FundsHand hand(*editor);
        hand.paste(u"1;40%"_s);
        hand.grid().SetCurrentCell(3, 1);
        hand.key(Qt::Key_2);
        const QPointer<QuoteForm> form(editor->form());
        if (destroyed)
            editor->Destroy();
        else
            delete editor;
        letGo();
        QVERIFY(!form);
    }
    // The owner may delete the editor in its handler of QuoteDisposed.
    auto *const editor = new QuoteEditor(desk.session, EditorDesk::quote());
    const QPointer<QuoteEditor> alive(editor);
    connect(editor, &QuoteEditor::QuoteDisposed, editor, &QObject::deleteLater);
    QVERIFY(desk.openForm(*editor));
    editor->form()->close();
    letGo();
    QVERIFY(!alive);
}

void tst_quoteeditor::aDraftIsAskedForAMomentAfterTyping()
{
    EditorDesk desk;
    QuoteEditor editor(desk.session, EditorDesk::quote());
    QVERIFY(desk.openForm(editor));
    QSignalSpy drafts(&editor, &QuoteEditor::wantsSave);
    QTest::qWait(600);
    QCOMPARE(drafts.size(), 0);
    editor.form()->edtDescription->setFocus();
    QTest::keyClicks(editor.form()->edtDescription, u"Plan of mine"_s);
    QVERIFY(drafts.size() <= 1);
    QTRY_COMPARE(drafts.size(), 1);
    QTest::qWait(600);
    QCOMPARE(drafts.size(), 1);
    editor.save();
    QTest::qWait(600);
    QCOMPARE(drafts.size(), 1);
    // Typing without a pause still makes drafts.
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < 2000 && drafts.size() < 3) {
        QTest::keyClick(editor.form()->edtDescription, Qt::Key_X);
        QTest::qWait(20);
    }
    QCOMPARE(drafts.size(), 3);
}

void tst_quoteeditor::aConflictReachesTheOwner()
{
    EditorDesk desk;
    Quote quote = EditorDesk::quote();
    desk.store->save(quote);
    QuoteEditor editor(desk.session, quote);
    QVERIFY(desk.openForm(editor));
    Quote theirs = quote;
    theirs.description = u"Theirs"_s;
    desk.store->save(theirs);
    editor.form()->edtDescription->setFocus();
    QTest::keyClicks(editor.form()->edtDescription, u"Ours"_s);
    QVERIFY_THROWS_EXCEPTION(QuoteChangedElsewhere, editor.save());
    QVERIFY(editor.isModified());
    QCOMPARE(editor.quote().description, u"Ours"_s);
    QCOMPARE(desk.store->quote(quote.quoteID).description, u"Theirs"_s);
    editor.save(SaveMode::Overwrite);
    QCOMPARE(desk.store->quote(quote.quoteID).description, u"Ours"_s);
    QVERIFY(!editor.isModified());
}

void tst_quoteeditor::aDraftIsRecovered()
{
    EditorDesk desk;
    Quote quote = EditorDesk::quote();
    desk.store->save(quote);
    QuoteEditor editor(desk.session, quote, u"key"_s);
    QCOMPARE(editor.draftKey(), u"key"_s);
    Quote draft = quote;
    draft.description = u"Before the crash"_s;
    draft.funds = {EditorDesk::fund(1, 12, 120)};
    draft.revision = 99;
    editor.recover(draft);
    QVERIFY(editor.isModified());
    QCOMPARE(editor.quote().revision, quote.revision);
    QVERIFY(desk.open(editor));
    QCOMPARE(editor.form()->edtDescription->text(), u"Before the crash"_s);
    QCOMPARE(FundsHand(editor).column(3), QStringList(u"12.00"_s));
    QVERIFY(editor.isModified());
}

void tst_quoteeditor::anotherVersionIsPutOnTheScreen()
{
    EditorDesk desk;
    Quote quote = EditorDesk::quote();
    desk.store->save(quote);
    QuoteEditor editor(desk.session, quote);
    QVERIFY(desk.open(editor));
    FundsHand(editor).paste(u"1;40%"_s);
    Quote theirs = desk.store->quote(quote.quoteID);
    theirs.clientID = desk.botha.clientID;
    theirs.byAmount = true;
    theirs.funds = {EditorDesk::fund(3, 50, 500)};
    theirs.details.insert(u"RetirementFundName"_s, u"Ironwood"_s);
    desk.store->save(theirs);
    QSignalSpy changed(&editor, &QuoteEditor::changed);
    editor.replace(desk.store->quote(quote.quoteID));
    QVERIFY(!editor.isModified());
    QCOMPARE(changed.size(), 0);
    QCOMPARE(editor.undoStack()->count(), 0);
    QVERIFY(editor.fundsPage()->rbAmount->isChecked());
    QCOMPARE(FundsHand(editor).column(4), QStringList(u"500.00"_s));
    QCOMPARE(editor.form()->cbData->currentText(), u"Botha, Piet"_s);
    editor.save();
}

void tst_quoteeditor::aProductWithoutAnEditorIsRefused()
{
    EditorDesk desk;
    QVERIFY(!hasProductEditor(77));
    QVERIFY_THROWS_EXCEPTION(Exception, QuoteEditor(desk.session, EditorDesk::quote(77)));
}

void tst_quoteeditor::everyControlHasANameAndCanBeReached()
{
    EditorDesk desk;
    for (const int productID : {1, 2, 3}) {
        Quote quote = EditorDesk::quote(productID);
        quote.funds = {EditorDesk::fund(9001, 25, 250, u"Ironwood Fund"_s), EditorDesk::fund(1, 5, 50)};
        QuoteEditor editor(desk.session, quote);
        QVERIFY(desk.open(editor));
        QuoteForm &form = *editor.form();
        for (int page = 0; page < 4; ++page) {
            if (form.skippedPages().test(static_cast<size_t>(page)))
                continue;
            form.pcPages->Set_ActivePageIndex(page);
            QSet<QWidget *> toReach;
            const QList<QWidget *> widgets = form.findChildren<QWidget *>();
            for (QWidget *const widget : widgets) {
                if (!widget->isVisible() || !widget->isEnabled() || !(widget->focusPolicy() & Qt::TabFocus))
                    continue;
                const QAccessibleInterface *const face = QAccessible::queryAccessibleInterface(widget);
                QVERIFY(face);
                const bool isInner = widget->objectName().startsWith(u"qt_"_s) ||
                                     qobject_cast<QComboBox *>(widget->parentWidget());
                QVERIFY2(isInner || !face->text(QAccessible::Name).isEmpty(),
                         qPrintable(u"%1 %2"_s.arg(QLatin1String(widget->metaObject()->className()),
                                                   widget->objectName())));
                // Of several exclusive radio buttons only one takes the focus.
                if (!isInner && !widget->focusProxy() && !qobject_cast<QRadioButton *>(widget))
                    toReach.insert(widget);
            }
            form.cbData->setFocus();
            const QWidget *const start = QApplication::focusWidget();
            for (int step = 0; step < 60; ++step) {
                toReach.remove(QApplication::focusWidget());
                QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
                if (QApplication::focusWidget() == start)
                    break;
            }
            QStringList missed;
            for (const QWidget *const widget : std::as_const(toReach))
                missed.append(QLatin1String(widget->metaObject()->className()) + u' ' + widget->objectName());
            QVERIFY2(missed.isEmpty(), qPrintable(missed.join(u'\n')));
        }
    }
}

void tst_quoteeditor::theFocusGoesFromTopToBottom()
{
    EditorDesk desk;
    Quote quote = EditorDesk::quote(1);
    quote.clientID = desk.adams.clientID;
    QuoteEditor editor(desk.session, quote);
    QVERIFY(desk.open(editor));
    QuoteForm &form = *editor.form();
    const auto walk = [&form] {
        QStringList names;
        form.cbData->setFocus();
        do {
            QWidget *const focus = QApplication::focusWidget();
            names.append(focus->objectName());
            QTest::keyClick(focus, Qt::Key_Tab);
        } while (QApplication::focusWidget() != form.cbData && names.size() < 40);
        return names.join(u' ');
    };
    const QString before = u"cbData sbtClient sbtNewClient edtDescription qt_tabwidget_tabbar "_s;
    QCOMPARE(walk(), before + u"edAmount rbPercent FundGrid btnChoose btnPrev btnNext"_s);
    form.goTo(QuoteForm::Page::Details);
    QCOMPARE(walk(),
             before +
                 u"btnAction btnClose edValue pfValue medValue nfValue cbCaption nfValue nfValue btnNext"_s);
    form.goTo(QuoteForm::Page::Summary);
    QCOMPARE(walk(), before + u"btnGo btnGo tblFunds btnPrev"_s);
}

void tst_quoteeditor::anEditIsSeenWithItsLastKey()
{
    EditorDesk desk;
    Quote quote = EditorDesk::quote(1);
    quote.details = {{u"RetirementFundName"_s, u"Ironwood"_s}, {u"RetirementAge"_s, u"60"_s}};
    QuoteEditor editor(desk.session, quote);
    QVERIFY(desk.openForm(editor));
    QuoteForm &form = *editor.form();
    const ProblemLine &said = *form.detailsPage->problemLine(u"RetirementAge"_s);
    QVERIFY(!said.isVisible());
    const QStringList problem(u"The retirement age is from 55 to 75 years."_s);
    const auto problems = [&form] {
        QStringList sentences = form.problems();
        sentences.removeOne(u"No investor is chosen."_s);
        return sentences;
    };
    QSignalSpy changed(&editor, &QuoteEditor::changed);
    QLineEdit *const age = element<TfraElmtLabelInteger>(form.detailsPage, "RetirementAge").nfValue;
    age->setFocus();
    QTest::keyClick(age, Qt::Key_End);
    QTest::keyClick(age, Qt::Key_Backspace);
    QCOMPARE(changed.count(), 1);
    QCOMPARE(problems(), problem);
    QVERIFY(!said.isVisible());
    QTest::keyClick(age, Qt::Key_Tab);
    QTRY_COMPARE(said.text(), problem.constFirst());
    // The line disappears with the key that mends the entry.
    age->setFocus();
    QTest::keyClick(age, Qt::Key_End);
    QTest::keyClick(age, Qt::Key_5);
    QCOMPARE(changed.count(), 2);
    QVERIFY(problems().isEmpty());
    QVERIFY(!said.isVisible());
}

ZEL_TEST_MAIN(tst_quoteeditor)
#include "tst_quoteeditor.moc"
