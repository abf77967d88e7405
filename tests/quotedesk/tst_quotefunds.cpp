// labels: x11
#include "ZelTest.h"

#include "Contrast.h"
#include "EditorDesk.h"
#include "NumberCases.h"
#include "SaidOfTheRest.h"
#include "SelectorDriver.h"
#include "database/Database.h"
#include "quote/Investment.h"
#include "quote/QuoteReport.h"
#include "store/QuoteJson.h"

#include "data/ClientDataSet.h"
#include "data/Format.h"
#include "toolkit/Look.h"
#include "toolkit/TColors.h"

#include <QLabel>
#include <QMouseEvent>
#include <QScopeGuard>

#include <QRandomGenerator>
#include <algorithm>

using namespace Qt::StringLiterals;

using namespace QuoteDesk;

namespace
{

const QString baobab = u"Baobab Equity Fund"_s;

/// A quote with 1000 rand, allocated 40 : 60 to the funds 1 and 2.
Quote spreadQuote(int productID = 1)
{
    Quote quote = EditorDesk::quote(productID);
    quote.funds = {EditorDesk::fund(1, 40, 400), EditorDesk::fund(2, 60, 600)};
    return quote;
}

QStringList texts(std::initializer_list<const char *> list)
{
    QStringList result;
    for (const char *text : list)
        result.append(QString::fromLatin1(text));
    return result;
}

} // namespace

class tst_quotefunds : public ZelTest
{
    Q_OBJECT

private Q_SLOTS:
    void everyCommandIsOneStep();
    void aTypedCellIsOneStep();
    void aCellBeingTypedIsTakenBeforeAStepBack();
    void amountAndModeAreSteps();
    void choosingFundsIsOneStep();
    void theKeysWorkAllOverThePage();
    void whatIsTypedCountsBeforeACommand();
    void stepsAtRandomKeepGridAndListTogether();
    void exactSharesComeBackAsTheyWere();
    void aCorrectedRowLeavesNothing();
    void oneCentLeftIsSeenEverywhere();
    void whatRemainsOfPercentagesIsNoFullAllocation();
    void fundsThatAreAllGoneAreStillCounted();
    void amountsAtTheEndOfTheRangeAreShown();
    void anOldSplitIsSettledWhenItIsOpened();
    void nothingIsWorkedOutAnewWithoutNeed();
    void allPlacesSayTheSameOfTheRest();
    void theAmountIsTakenAsPeopleWriteIt();
    void aClickIntoTheAmountChoosesAllOfIt();
    void anAmountThatIsNoneIsExplained();
    void anAmountThatIsNoneIsKeptAsTyped();
    void theGridSaysWhatItCorrected();
    void linesArePastedAsOneStep();
    void oneNumberGoesIntoTheCell();
    void uselessLinesAreReported();
    void pastingByAmount();
    void copiedFundsArePastedBack();
    void aFundNoLongerOfferedStaysUntilRemoved();
    void whatIsNoLongerOfferedIsNotSharedOut();
    void aCatalogueWithoutTheProductsFunds();
    void anImportedCatalogueIsShownAtOnce();
    void theFactSheetIsOpened();
    void aFactSheetThatCannotBeOpened();
    void questionsAreAskedOnce();
    void anAnswerCanBeCorrected();
    void thePictureFollowsEachEdit();
    void tooMuchHasAColourOfItsOwn_data();
    void tooMuchHasAColourOfItsOwn();
    void aLoadingPageShowsNoSampleAmounts();
    void aFundUnderAnotherNameKeepsIts();
    void aRenamedFundTakesTheNewNameWhenChosenAnew();
    void anImportRenamesNothingThatIsOpen();
    void aRecoveredDraftKeepsItsNames();
    void theOtherLanguageIsNoOtherName();
    void twinsSurviveTheSelector();
    void onlyTheFundsOfTheQuoteAreRead();

private:
    static void importFunds(EditorDesk &desk, const QByteArray &lines);
};

/// Replaces the catalogue by the given lines.
void tst_quotefunds::importFunds(EditorDesk &desk, const QByteArray &lines)
{
    QFile file(desk.folder.filePath(u"other.csv"_s));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("GroupTypeID,GroupTypeDesc,FundGroupID,FundGroupName,FundID,FundName\n" + lines);
    file.close();
    desk.catalogue.importFile(file.fileName());
    Q_EMIT desk.session.catalogueChanged();
}

void tst_quotefunds::everyCommandIsOneStep()
{
    EditorDesk desk;
    QuoteEditor editor(desk.session, spreadQuote());
    QVERIFY(desk.open(editor));
    const FundsHand hand(editor);
    QCOMPARE(hand.column(3), texts({"40.00", "60.00"}));
    QVERIFY(!editor.isModified());
    QVERIFY(!hand.form.actUndo->isEnabled());

    const struct {
        QAbstractButton *button;
        QStringList percents;
    } commands[] = {{hand.bar().sbtResetToZero, texts({"0.00", "0.00"})},
                    {hand.bar().sbtAllocateAmount, texts({"50.00", "50.00"})},
                    {hand.bar().sbtRemove, texts({"50.00"})},
                    {hand.bar().sbtClear, {}}};
    QList<QStringList> states{hand.column(3)};
    for (const auto &command : commands) {
        FundsHand::click(command.button);
        QCOMPARE(hand.column(3), command.percents);
        states.append(command.percents);
        QCOMPARE(editor.undoStack()->count(), states.size() - 1);
        QVERIFY(hand.inStep());
        QVERIFY(editor.isModified());
    }
    // Clicking Clear on an empty list is no step.
    hand.grid().setFocus();
    for (qsizetype i = states.size() - 2; i >= 0; --i) {
        hand.undo();
        QCOMPARE(hand.column(3), states.at(i));
        QVERIFY(hand.inStep());
    }
    QVERIFY(!editor.isModified());
    QVERIFY(!hand.form.actUndo->isEnabled());
    for (qsizetype i = 1; i < states.size(); ++i) {
        hand.redo();
        QCOMPARE(hand.column(3), states.at(i));
        QVERIFY(hand.inStep());
    }
    QVERIFY(!hand.form.actRedo->isEnabled());
    QVERIFY(editor.quote().funds.isEmpty());
}

void tst_quotefunds::aTypedCellIsOneStep()
{
    EditorDesk desk;
    QuoteEditor editor(desk.session, spreadQuote());
    QVERIFY(desk.open(editor));
    const FundsHand hand(editor);
    QSignalSpy changed(&editor, &QuoteEditor::changed);
    hand.type(1, u"12.5"_s);
    QCOMPARE(hand.column(3), texts({"12.50", "60.00"}));
    QCOMPARE(hand.column(4), texts({"125.00", "600.00"}));
    QCOMPARE(editor.undoStack()->count(), 1);
    QCOMPARE(changed.size(), 3); // for "1", "12" and "12.5"
    // Typing the same number is no step.
    hand.type(1, u"12.5"_s);
    QCOMPARE(editor.undoStack()->count(), 1);
    hand.type(2, u"150"_s);
    QCOMPARE(hand.column(3), texts({"12.50", "100.00"}));
    QCOMPARE(editor.undoStack()->count(), 2);
    hand.undo();
    QCOMPARE(hand.column(3), texts({"12.50", "60.00"}));
    hand.undo();
    QCOMPARE(hand.column(4), texts({"400.00", "600.00"}));
    QVERIFY(hand.inStep());
    QVERIFY(!editor.isModified());
}

void tst_quotefunds::aCellBeingTypedIsTakenBeforeAStepBack()
{
    EditorDesk desk;
    QuoteEditor editor(desk.session, spreadQuote());
    QVERIFY(desk.open(editor));
    const FundsHand hand(editor);
    hand.type(1, u"30"_s);
    hand.grid().SetCurrentCell(3, 2);
    hand.key(Qt::Key_7);
    QVERIFY(hand.grid().IsEditing());
    QCOMPARE(editor.quote().funds.at(1).percent, Currency(7));
    // Undo in the ribbon ends the edit, which becomes a step, and undoes this step.
    hand.form.actUndo->trigger();
    QVERIFY(!hand.grid().IsEditing());
    QCOMPARE(hand.column(3), texts({"30.00", "60.00"}));
    hand.form.actRedo->trigger();
    QCOMPARE(hand.column(3), texts({"30.00", "7.00"}));
    // A button ends the edit, too: two steps.
    hand.grid().setFocus();
    hand.grid().SetCurrentCell(3, 1);
    hand.key(Qt::Key_9);
    const int before = editor.undoStack()->count();
    FundsHand::click(hand.bar().sbtResetToZero);
    QCOMPARE(editor.undoStack()->count(), before + 2);
    hand.grid().setFocus();
    hand.undo();
    QCOMPARE(hand.column(3), texts({"9.00", "7.00"}));
    QVERIFY(hand.inStep());
}

void tst_quotefunds::amountAndModeAreSteps()
{
    EditorDesk desk;
    QuoteEditor editor(desk.session, spreadQuote());
    QVERIFY(desk.open(editor));
    const FundsHand hand(editor);
    hand.typeAmount(u"2000"_s);
    QCOMPARE(hand.column(4), texts({"800.00", "1200.00"}));
    QCOMPARE(hand.page.edAmount->text(), u"2,000.00"_s);
    QTest::mouseClick(hand.page.rbAmount, Qt::LeftButton);
    QVERIFY(editor.quote().byAmount);
    hand.typeAmount(u"4000"_s);
    QCOMPARE(hand.column(3), texts({"20.00", "30.00"}));
    QCOMPARE(hand.column(4), texts({"800.00", "1200.00"}));
    QCOMPARE(editor.undoStack()->count(), 3);
    // The focused amount field has nothing to undo itself, so Ctrl+Z undoes the step.
    QVERIFY(hand.page.edAmount->hasFocus());
    hand.undo();
    QCOMPARE(hand.page.edAmount->text(), u"2,000.00"_s);
    QCOMPARE(hand.column(3), texts({"40.00", "60.00"}));
    hand.undo();
    QVERIFY(hand.page.rbPercent->isChecked());
    QVERIFY(!hand.page.fraFundAllocation->Get_AllocByAmount());
    hand.undo();
    QCOMPARE(hand.column(4), texts({"400.00", "600.00"}));
    QVERIFY(!editor.isModified());
    QVERIFY(hand.inStep());
    // While the amount is being typed, Ctrl+Z undoes the typing.
    hand.page.edAmount->selectAll();
    QTest::keyClicks(hand.page.edAmount, u"77"_s);
    QCOMPARE(editor.quote().amount, Currency(77));
    QCOMPARE(editor.quote().funds.at(0).amount, Currency::fromText(u"30.8"_s));
    hand.undo();
    QCOMPARE(hand.column(4), texts({"400.00", "600.00"}));
}

void tst_quotefunds::choosingFundsIsOneStep()
{
    EditorDesk desk;
    QuoteEditor editor(desk.session, spreadQuote());
    QVERIFY(desk.open(editor));
    const FundsHand hand(editor);
    QVERIFY(hand.inSelector([](TfrmFundSelector &selector) {
        SelectorDriver(*selector.fraFundSelector).add("Baobab Income Fund");
        QTest::mouseClick(selector.fraFundSelector->btnSelect, Qt::LeftButton);
    }));
    QCOMPARE(hand.column(2), texts({"Baobab Equity Fund", "Baobab Balanced Fund", "Baobab Income Fund"}));
    QCOMPARE(hand.column(3), texts({"40.00", "60.00", "0.00"}));
    QCOMPARE(editor.undoStack()->count(), 1);
    QVERIFY(showActive(hand.form));
    hand.grid().setFocus();
    hand.undo();
    QCOMPARE(hand.column(3), texts({"40.00", "60.00"}));
    hand.redo();
    QCOMPARE(hand.grid().RowCount(), 3);
    QVERIFY(hand.inStep());
}

void tst_quotefunds::theKeysWorkAllOverThePage()
{
    EditorDesk desk;
    QuoteEditor editor(desk.session, spreadQuote());
    QVERIFY(desk.open(editor));
    const FundsHand hand(editor);
    const QList<QWidget *> places{hand.page.edAmount,          &hand.grid(),
                                  hand.page.rbPercent,         hand.form.edtDescription,
                                  hand.form.pcPages->tabBar(), hand.form.cbData};
    for (QWidget *const place : places) {
        place->setFocus();
        QCOMPARE(QApplication::focusWidget(), place);
        const int steps = editor.undoStack()->index();
        hand.key(Qt::Key_R, Qt::ControlModifier);
        QCOMPARE(hand.column(3), texts({"0.00", "0.00"}));
        hand.key(Qt::Key_L, Qt::ControlModifier);
        QCOMPARE(hand.column(3), texts({"50.00", "50.00"}));
        QVERIFY(inDialog<TfrmFundSelector>([&] { hand.key(Qt::Key_F, Qt::ControlModifier); },
                                           [](TfrmFundSelector &selector) { selector.reject(); }));
        QVERIFY(showActive(hand.form));
        QCOMPARE(QApplication::focusWidget(), place);
        hand.key(Qt::Key_Delete, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(hand.grid().RowCount(), 0);
        QCOMPARE(editor.undoStack()->index(), steps + 3);
        for (int step = 0; step < 3; ++step)
            hand.page.undo();
        QCOMPARE(hand.column(3), texts({"40.00", "60.00"}));
    }
    // On another page the funds' keys do nothing.
    hand.form.goTo(QuoteForm::Page::Details);
    hand.form.edtDescription->setFocus();
    hand.key(Qt::Key_R, Qt::ControlModifier);
    QCOMPARE(hand.column(3), texts({"40.00", "60.00"}));
}

void tst_quotefunds::whatIsTypedCountsBeforeACommand()
{
    EditorDesk desk;
    QuoteEditor editor(desk.session, spreadQuote());
    QVERIFY(desk.open(editor));
    const FundsHand hand(editor);
    QLineEdit &amount = *hand.page.edAmount;
    const auto type = [&](const char *text) {
        amount.setFocus();
        amount.selectAll();
        QTest::keyClicks(&amount, QString::fromLatin1(text));
    };
    FundsHand::click(hand.bar().sbtResetToZero);
    type("2000");
    FundsHand::click(hand.bar().sbtAllocateAmount);
    QCOMPARE(amount.text(), u"2,000.00"_s);
    QCOMPARE(hand.column(4), texts({"1000.00", "1000.00"}));
    FundsHand::click(hand.bar().sbtResetToZero);
    type("3000");
    hand.key(Qt::Key_L, Qt::ControlModifier);
    QCOMPARE(hand.column(4), texts({"1500.00", "1500.00"}));
    QVERIFY(hand.inStep());

    type("4000");
    hand.key(Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
    QVERIFY(QGuiApplication::clipboard()->text().contains(u"2000.00"_s));

    type("5000");
    QVERIFY(hand.inSelector([](TfrmFundSelector &selector) { selector.reject(); }));
    QCOMPARE(hand.column(4), texts({"2500.00", "2500.00"}));
    type("6000");
    FundsHand::click(hand.bar().sbtRemove);
    QCOMPARE(hand.column(4), texts({"3000.00"}));
    type("7000");
    FundsHand::click(hand.bar().sbtClear);
    QCOMPARE(hand.grid().RowCount(), 0);
    QCOMPARE(editor.quote().amount, Currency(7000));
}

void tst_quotefunds::stepsAtRandomKeepGridAndListTogether()
{
    EditorDesk desk;
    QuoteEditor editor(desk.session, spreadQuote());
    QVERIFY(desk.open(editor));
    const FundsHand hand(editor);
    QRandomGenerator random(7);
    QHash<int, QStringList> shown;
    const auto look = [&hand, &editor] {
        return QStringList{hand.column(2).join(u'|'),
                           hand.column(3).join(u'|'),
                           hand.column(4).join(u'|'),
                           hand.page.edAmount->text(),
                           hand.page.fraFundAllocation->pnlRemainAmount->caption(),
                           QString::number(editor.quote().byAmount)};
    };
    shown.insert(0, look());
    for (int round = 0; round < 150; ++round) {
        const int index = editor.undoStack()->index();
        switch (random.bounded(9)) {
        case 0:
            FundsHand::click(hand.bar().sbtAllocateAmount);
            break;
        case 1:
            FundsHand::click(hand.bar().sbtResetToZero);
            break;
        case 2:
            FundsHand::click(hand.bar().sbtRemove);
            break;
        case 3:
            if (hand.grid().RowCount() > 0)
                hand.type(random.bounded(1, hand.grid().RowCount() + 1),
                          QString::number(random.bounded(1, 9999) / 100.0, 'f', 2));
            break;
        case 4:
            hand.typeAmount(QString::number(random.bounded(1, 900000) / 100.0, 'f', 2));
            break;
        case 5:
            QTest::mouseClick(random.bounded(2) == 0 ? hand.page.rbAmount : hand.page.rbPercent,
                              Qt::LeftButton);
            break;
        case 6:
            hand.paste(u"%1;%2"_s.arg(random.bounded(1, 30)).arg(random.bounded(1, 30)));
            break;
        case 7:
            hand.grid().setFocus();
            hand.undo();
            break;
        default:
            hand.grid().setFocus();
            hand.redo();
            break;
        }
        QVERIFY2(hand.inStep(), qPrintable(QString::number(round)));
        const int now = editor.undoStack()->index();
        if (now > index && !shown.contains(now))
            shown.insert(now, look());
        else if (now > index && editor.undoStack()->count() == now)
            shown.insert(now, look()); // a new step replaces the undone ones
        else
            QCOMPARE(look(), shown.value(now));
    }
    // Undoes all steps and redoes them.
    const int last = editor.undoStack()->index();
    hand.grid().setFocus();
    for (int index = last - 1; index >= 0; --index) {
        hand.undo();
        QCOMPARE(look(), shown.value(index));
    }
    for (int index = 1; index <= last; ++index) {
        hand.redo();
        QCOMPARE(look(), shown.value(index));
    }
}

void tst_quotefunds::exactSharesComeBackAsTheyWere()
{
    EditorDesk desk;
    Quote quote = EditorDesk::quote(1, 100000);
    quote.funds = {EditorDesk::fund(1, 0, 0), EditorDesk::fund(2, 0, 0), EditorDesk::fund(3, 0, 0)};
    QuoteEditor editor(desk.session, quote);
    QVERIFY(desk.open(editor));
    const FundsHand hand(editor);
    FundsHand::click(hand.bar().sbtAllocateAmount);
    QCOMPARE(hand.column(4), texts({"33333.33", "33333.33", "33333.34"}));
    const Quote allocated = editor.quote();
    QVERIFY(allocated.isAllocated());
    const QString remaining = hand.page.fraFundAllocation->pnlRemainAmount->caption();
    FundsHand::click(hand.bar().sbtClear);
    hand.grid().setFocus();
    hand.undo();
    QCOMPARE(editor.quote(), allocated);
    QCOMPARE(hand.page.fraFundAllocation->pnlRemainAmount->caption(), remaining);

    // The stored quote is the same.
    editor.save();
    QVERIFY(!editor.isModified());
    QuoteEditor later(desk.session, desk.store->quote(editor.quote().quoteID));
    QVERIFY(desk.open(later));
    QVERIFY(!later.isModified());
    QVERIFY(later.quote().isAllocated());
    QCOMPARE(FundsHand(later).column(4), texts({"33333.33", "33333.33", "33333.34"}));
    QCOMPARE(later.fundsPage()->fraFundAllocation->pnlRemainAmount->caption(), remaining);
}

void tst_quotefunds::aCorrectedRowLeavesNothing()
{
    EditorDesk desk;
    Quote quote = EditorDesk::quote();
    quote.funds = {EditorDesk::fund(1, 0, 0), EditorDesk::fund(2, 0, 0), EditorDesk::fund(3, 0, 0)};
    QuoteEditor editor(desk.session, quote);
    QVERIFY(desk.open(editor));
    const FundsHand hand(editor);
    const Currency investment = Currency::fromText(u"900000.01"_s);
    FundsHand::click(hand.bar().sbtAllocateAmount);
    QCOMPARE(hand.page.lblState->text(), u"Fully allocated"_s);
    hand.typeAmount(u"900000.01"_s);
    QTest::mouseClick(hand.page.rbAmount, Qt::LeftButton);
    QCOMPARE(SaidOfTheRest(editor).contradiction(investment), QString());
    // Adds the remainder to the last row.
    const Currency last = SaidOfTheRest::number(hand.cell(4, 3)) +
                          SaidOfTheRest::number(SaidOfTheRest::numbersIn(SaidOfTheRest(editor).status).at(0));
    hand.type(3, SaidOfTheRest::text(last));
    QCOMPARE(hand.page.fraFundAllocation->pnlRemainAmount->caption(), u"Remaining: 0.00 (0.00%)"_s);
    QCOMPARE(hand.page.lblState->text(), u"Fully allocated"_s);
    QCOMPARE(SaidOfTheRest(editor).contradiction(investment), QString());
    // The quote is stored and opened again in this state.
    editor.save();
    QVERIFY(desk.store->quotes().constFirst().allocated);
    const Quote stored = desk.store->quote(editor.quote().quoteID);
    Currency sum;
    for (const QuotedFund &fund : stored.funds) {
        QCOMPARE(fund.amount, RoundToShownCents(fund.amount));
        QCOMPARE(fund.percent, RoundToShownCents(fund.percent));
        sum += fund.amount;
    }
    QCOMPARE(sum, investment);
}

void tst_quotefunds::oneCentLeftIsSeenEverywhere()
{
    EditorDesk desk;
    Quote quote = EditorDesk::quote(1, 1000000);
    quote.byAmount = true;
    quote.funds = {EditorDesk::fund(1, 0, 0), EditorDesk::fund(2, 0, 0)};
    QuoteEditor editor(desk.session, quote);
    QVERIFY(desk.open(editor));
    const FundsHand hand(editor);
    hand.type(1, u"400000"_s);
    for (const auto &[typed, left, state, picture] :
         {std::tuple{"599999.99", "Remaining: 0.01 (0.00%)", "Draft: 0.01 (0.00%) is not allocated",
                     "Baobab Equity Fund: 40.00%; Baobab Balanced Fund: 60.00%; Not allocated: R 0.01"},
          std::tuple{"600000.01", "Remaining: -0.01 (0.00%)",
                     "Draft: 0.01 (0.00%) more is allocated than the investment",
                     "Baobab Equity Fund: 40.00%; Baobab Balanced Fund: 60.00%; R 0.01 over-allocated"}}) {
        hand.type(2, QLatin1String(typed));
        QCOMPARE(hand.page.fraFundAllocation->pnlRemainAmount->caption(), QLatin1String(left));
        QCOMPARE(hand.page.lblState->text(), QLatin1String(state));
        QCOMPARE(hand.page.chart->accessibleDescription(), QLatin1String(picture));
        QCOMPARE(SaidOfTheRest(editor).contradiction(quote.amount), QString());
    }
}

void tst_quotefunds::whatRemainsOfPercentagesIsNoFullAllocation()
{
    EditorDesk desk;
    Quote quote = EditorDesk::quote(1, 100000);
    quote.byAmount = true;
    quote.funds = {EditorDesk::fund(1, 0, 0), EditorDesk::fund(2, 0, 0), EditorDesk::fund(3, 0, 0)};
    QuoteEditor editor(desk.session, quote);
    QVERIFY(desk.open(editor));
    const FundsHand hand(editor);
    // Thirds allocated by amount, displayed by percent.
    FundsHand::click(hand.bar().sbtAllocateAmount);
    QTest::mouseClick(hand.page.rbPercent, Qt::LeftButton);
    QCOMPARE(SaidOfTheRest(editor).contradiction(quote.amount), QString());
    QCOMPARE(hand.column(3), texts({"33.33", "33.33", "33.34"}));
    QCOMPARE(hand.column(4), texts({"33333.33", "33333.33", "33333.34"}));
    QCOMPARE(hand.page.lblState->text(), u"Fully allocated"_s);
    // Percentages of an amount so small that several of them give the same cents.
    hand.typeAmount(u"0.03"_s);
    for (int row = 1; row <= 3; ++row)
        hand.type(row, u"33.33"_s);
    QCOMPARE(hand.page.fraFundAllocation->pnlRemainAmount->caption(), u"Remaining: 0.01%"_s);
    QCOMPARE(hand.page.lblState->text(), u"Draft: 0.00 (0.01%) is not allocated"_s);
    QCOMPARE(hand.column(3), texts({"33.33", "33.33", "33.33"}));
    QCOMPARE(SaidOfTheRest(editor).contradiction(Currency::fromText(u"0.03"_s)), QString());
}

void tst_quotefunds::fundsThatAreAllGoneAreStillCounted()
{
    EditorDesk desk;
    for (const bool byAmount : {false, true}) {
        Quote quote = EditorDesk::quote();
        quote.byAmount = byAmount;
        quote.funds = {EditorDesk::fund(9001, 40, 400, u"Ironwood"_s),
                       EditorDesk::fund(9002, 60, 600, u"Yellowwood"_s)};
        QuoteEditor editor(desk.session, quote);
        QVERIFY(desk.open(editor));
        const FundsHand hand(editor);
        TfraFundAllocation &frame = *hand.page.fraFundAllocation;
        const QString nothing = byAmount ? u"Remaining: 0.00 (0.00%)"_s : u"Remaining: 0.00%"_s;
        QCOMPARE(frame.pnlRemainAmount->caption(), nothing);
        QCOMPARE(hand.page.lblState->text(), u"Fully allocated"_s);
        QCOMPARE(SaidOfTheRest(editor).contradiction(quote.amount), QString());
        // The frame calculates its remainder without the funds that are no longer offered; the page corrects
        // the caption.
        frame.UpdateRemainingCaption();
        QCOMPARE(frame.pnlRemainAmount->caption(), nothing);
        hand.paste(u"1;10%"_s);
        QCOMPARE(frame.pnlRemainAmount->caption(),
                 byAmount ? u"Remaining: -100.00 (-10.00%)"_s : u"Remaining: -10.00%"_s);
        QCOMPARE(SaidOfTheRest(editor).contradiction(quote.amount), QString());
    }
}

void tst_quotefunds::amountsAtTheEndOfTheRangeAreShown()
{
    EditorDesk desk;
    const ReportCatcher report;
    for (const bool byAmount : {false, true}) {
        for (const Currency each : {Currency::max(), Currency::min()}) {
            Quote quote = EditorDesk::quote(1, Currency::max());
            quote.byAmount = byAmount;
            quote.funds = {EditorDesk::fund(1, each, each), EditorDesk::fund(2, each, each),
                           EditorDesk::fund(9001, each, each, u"Ironwood"_s)};
            desk.store->save(quote);
            QVERIFY(!desk.store->quotes().constFirst().allocated);
            QuoteEditor editor(desk.session, desk.store->quote(quote.quoteID));
            QVERIFY(desk.open(editor));
            const FundsHand hand(editor);
            const QString state = hand.page.lblState->text();
            QVERIFY2(state.startsWith(u"Draft: "_s), qPrintable(state));
            QCOMPARE(state.contains(u"more is allocated"_s), each > Currency());
            QCOMPARE(hand.page.fraFundAllocation->pnlRemainAmount->caption().startsWith(u"Remaining: -"_s),
                     each > Currency());
            editor.form()->goTo(QuoteForm::Page::Summary);
            QCOMPARE(editor.form()->summaryPage->lblStateValue->text(), state);
            QVERIFY(!editor.isModified());
        }
        // A quote that is allocated to the last cent.
        Quote quote = EditorDesk::quote(1, Currency::max());
        quote.byAmount = byAmount;
        quote.funds = {EditorDesk::fund(1, 100, Currency::max())};
        QuoteEditor editor(desk.session, quote);
        QVERIFY(desk.open(editor));
        const FundsHand hand(editor);
        QCOMPARE(hand.page.lblState->text(), u"Fully allocated"_s);
        QVERIFY(hand.page.fraFundAllocation->pnlRemainAmount->caption().contains(u" 0.00"_s));
        QVERIFY(editor.quote().isAllocated());
    }
    QCOMPARE(report.messages, QStringList());
}

void tst_quotefunds::anOldSplitIsSettledWhenItIsOpened()
{
    EditorDesk desk;
    const auto currency = [](const char *text) { return Currency::fromText(QLatin1String(text)); };
    // Percentages and amounts as earlier versions of Allocate stored them.
    Quote quote = EditorDesk::quote(1, 100000);
    quote.funds = {EditorDesk::fund(1, currency("33.3333"), currency("33333.33")),
                   EditorDesk::fund(2, currency("33.3333"), currency("33333.33")),
                   EditorDesk::fund(3, currency("33.3333"), currency("33333.34"))};
    desk.store->save(quote);
    QVERIFY(desk.store->quotes().constFirst().allocated);
    QuoteEditor editor(desk.session, desk.store->quote(quote.quoteID));
    QVERIFY(!editor.isModified());
    QVERIFY(desk.open(editor));
    QVERIFY(!editor.isModified());
    const FundsHand hand(editor);
    QCOMPARE(hand.column(3), texts({"33.33", "33.33", "33.34"}));
    QCOMPARE(hand.column(4), texts({"33333.33", "33333.33", "33333.34"}));
    QCOMPARE(SaidOfTheRest(editor).contradiction(quote.amount), QString());
    QVERIFY(SaidOfTheRest(editor).listed);
    // By amount, with fractions of a cent.
    quote.byAmount = true;
    quote.amount = currency("900000.01");
    for (QuotedFund &fund : quote.funds)
        fund.amount = currency("300000.0033");
    editor.replace(quote);
    QVERIFY(!editor.isModified());
    QCOMPARE(hand.column(4), texts({"300000.00", "300000.00", "300000.00"}));
    QCOMPARE(hand.page.lblState->text(), u"Draft: 0.01 (0.00%) is not allocated"_s);
    QCOMPARE(SaidOfTheRest(editor).contradiction(quote.amount), QString());
}

void tst_quotefunds::nothingIsWorkedOutAnewWithoutNeed()
{
    EditorDesk desk;
    Quote quote = EditorDesk::quote(1, 100000);
    quote.funds = {EditorDesk::fund(1, 0, 0), EditorDesk::fund(2, 0, 0), EditorDesk::fund(3, 0, 0)};
    QuoteEditor editor(desk.session, quote);
    QVERIFY(desk.open(editor));
    const FundsHand hand(editor);
    FundsHand::click(hand.bar().sbtAllocateAmount);
    const QStringList thirds = texts({"33333.33", "33333.33", "33333.34"});
    QCOMPARE(hand.column(4), thirds);
    // Switching the mode there and back, changing the row and removing a fund keep the amounts of the others.
    QTest::mouseClick(hand.page.rbAmount, Qt::LeftButton);
    QTest::mouseClick(hand.page.rbPercent, Qt::LeftButton);
    QCOMPARE(hand.column(4), thirds);
    hand.grid().SetCurrentCell(3, 3);
    FundsHand::click(hand.bar().sbtRemove);
    QCOMPARE(hand.column(3), texts({"33.33", "33.33"}));
    QCOMPARE(hand.column(4), thirds.mid(0, 2));
    QCOMPARE(hand.page.lblState->text(), u"Draft: 33,333.34 (33.34%) is not allocated"_s);
    QCOMPARE(SaidOfTheRest(editor).contradiction(quote.amount), QString());
    // Typed percentages are kept; when they add up to 100 %, so do the cents.
    hand.type(1, u"66.67"_s);
    QCOMPARE(hand.column(3), texts({"66.67", "33.33"}));
    QCOMPARE(hand.column(4), texts({"66670.00", "33330.00"}));
    QCOMPARE(hand.page.lblState->text(), u"Fully allocated"_s);
    // With a very small amount typed percentages survive a switch of the mode.
    hand.typeAmount(u"1"_s);
    QCOMPARE(hand.column(4), texts({"0.67", "0.33"}));
    QTest::mouseClick(hand.page.rbAmount, Qt::LeftButton);
    QTest::mouseClick(hand.page.rbPercent, Qt::LeftButton);
    QCOMPARE(hand.column(3), texts({"66.67", "33.33"}));
}

void tst_quotefunds::allPlacesSayTheSameOfTheRest()
{
    EditorDesk desk;
    for (const int seed : {1, 2, 3}) {
        QRandomGenerator random(static_cast<quint32>(seed));
        Quote quote = EditorDesk::quote();
        quote.byAmount = seed % 2 == 0;
        for (int id = 1; id <= 3; ++id)
            quote.funds.append(EditorDesk::fund(id, 0, 0));
        if (seed == 3)
            quote.funds.append(EditorDesk::fund(9001, 12, 120, u"Ironwood"_s));
        QuoteEditor editor(desk.session, quote);
        QVERIFY(desk.open(editor));
        const FundsHand hand(editor);
        const QStringList odd{u"900000.01"_s, u"0.03"_s, u"0.01"_s, u"1"_s, u"0"_s, u"9999999999.99"_s};
        QStringList done;
        for (int round = 0; round < 120; ++round) {
            const int step = random.bounded(12);
            const int rows = hand.grid().RowCount();
            switch (step) {
            case 0:
            case 1:
                FundsHand::click(hand.bar().sbtAllocateAmount);
                break;
            case 2:
                FundsHand::click(hand.bar().sbtResetToZero);
                break;
            case 3:
                if (rows > 2)
                    FundsHand::click(hand.bar().sbtRemove);
                break;
            case 4:
            case 5:
                if (rows > 0)
                    hand.type(random.bounded(1, rows + 1),
                              random.bounded(3) == 0
                                  ? u"33.33"_s
                                  : QString::number(random.bounded(0, 9999) / 100.0, 'f', 2));
                break;
            case 6: {
                // Adds the remainder to one row, as a user does at the end.
                const QStringList left = SaidOfTheRest::numbersIn(SaidOfTheRest(editor).status);
                const int row = rows > 0 ? random.bounded(1, rows + 1) : 0;
                if (row == 0)
                    break;
                const int column = hand.page.fraFundAllocation->Get_AllocByAmount() ? 4 : 3;
                const Currency all =
                    SaidOfTheRest::number(hand.cell(column, row)) + SaidOfTheRest::number(left.constFirst());
                if (all >= Currency() && all < Currency(column == 3 ? 101 : 100000000))
                    hand.type(row, SaidOfTheRest::text(all));
                break;
            }
            case 7:
                hand.typeAmount(random.bounded(2) == 0
                                    ? odd.at(random.bounded(odd.size()))
                                    : QString::number(random.bounded(1, 900000) / 100.0, 'f', 2));
                break;
            case 8:
                QTest::mouseClick(random.bounded(2) == 0 ? hand.page.rbAmount : hand.page.rbPercent,
                                  Qt::LeftButton);
                break;
            case 9:
                hand.paste(u"%1;%2%"_s.arg(random.bounded(1, 20)).arg(random.bounded(0, 30)));
                break;
            case 10:
                hand.grid().setFocus();
                hand.undo();
                break;
            default:
                hand.grid().setFocus();
                hand.redo();
                break;
            }
            done.append(QString::number(step));
            const QString at = u"seed %1: %2\n"_s.arg(seed).arg(done.join(u' '));
            const SaidOfTheRest said(editor);
            const QString wrong = said.contradiction(editor.quote().amount);
            QVERIFY2(wrong.isEmpty(), qPrintable(at + wrong));
            QVERIFY2(hand.inStep(), qPrintable(at));
            // Also during an edit, where all parts except the grid's row must agree.
            if (hand.grid().RowCount() > 0 && round % 5 == 0) {
                hand.grid().setFocus();
                hand.grid().SetCurrentCell(said.byAmount ? 4 : 3, 1);
                hand.key(Qt::Key_7);
                SaidOfTheRest typing(editor);
                typing.cells.clear();
                const QString amiss = typing.contradiction(editor.quote().amount);
                QVERIFY2(amiss.isEmpty(), qPrintable(at + amiss));
                hand.key(Qt::Key_Return);
            }
            if (round % 20 == 0) {
                // The stored quote equals the displayed one.
                editor.save();
                const Quote stored = desk.store->quote(editor.quote().quoteID);
                QCOMPARE(desk.store->quotes().constFirst().allocated, SaidOfTheRest(editor).listed);
                QCOMPARE(stored.funds, editor.quote().funds);
            }
        }
    }
}

void tst_quotefunds::theAmountIsTakenAsPeopleWriteIt()
{
    EditorDesk desk;
    QuoteEditor editor(desk.session, EditorDesk::quote());
    QVERIFY(desk.open(editor));
    const FundsHand hand(editor);
    const QPair<const char *, const char *> typed[] = {
        {"1234.5", "1,234.50"},           {"1 000,50", "1,000.50"},        {"R 2 000,00", "2,000.00"},
        {"1,234,567.89", "1,234,567.89"}, {"1.250.000,5", "1,250,000.50"}, {"50", "50.00"}};
    for (const auto &[text, shown] : typed) {
        hand.typeAmount(QLatin1String(text));
        QCOMPARE(hand.page.edAmount->text(), QLatin1String(shown));
    }
    QCOMPARE(editor.quote().amount, Currency(50));
    // A spreadsheet's cell: no-break blanks and a line end.
    for (const QString &copied :
         {u"R\u00a01\u00a0250\u00a0000,50"_s, u"1\u202f250\u202f000.50\n"_s, u"1250000.50\r\n"_s}) {
        hand.typeAmount(u"1"_s);
        QGuiApplication::clipboard()->setText(copied);
        hand.page.edAmount->setFocus();
        hand.page.edAmount->selectAll();
        QTest::keySequence(hand.page.edAmount, QKeySequence::Paste);
        QTest::keyClick(hand.page.edAmount, Qt::Key_Return);
        QCOMPARE(hand.page.edAmount->text(), u"1,250,000.50"_s);
    }
    // Two cells are not one number.
    QGuiApplication::clipboard()->setText(u"100\n200\n"_s);
    hand.page.edAmount->selectAll();
    QTest::keySequence(hand.page.edAmount, QKeySequence::Paste);
    QTest::keyClick(hand.page.edAmount, Qt::Key_Return);
    QCOMPARE(editor.quote().amount, Currency::fromText(u"1250000.50"_s));
    QVERIFY(hand.page.amountProblem->isVisible());
    hand.key(Qt::Key_Escape);

    // Each text of the table: the field takes the amount that the text means, or keeps the text with a reason
    // and the former amount.
    for (const NumberCase &each : numberCases) {
        hand.typeAmount(u"40"_s);
        QGuiApplication::clipboard()->setText(each.said());
        hand.page.edAmount->selectAll();
        QTest::keyClick(hand.page.edAmount, Qt::Key_Delete);
        QTest::keySequence(hand.page.edAmount, QKeySequence::Paste);
        QTest::keyClick(hand.page.edAmount, Qt::Key_Return);
        if (each.isAmountUpTo(maximumInvestment())) {
            QVERIFY2(editor.quote().amount == each.number(), each.text);
            QCOMPARE(hand.page.edAmount->text(), FormatFloat(FormatMask::Thousands, each.number()));
            QVERIFY2(hand.page.edAmount->accessibleDescription().isEmpty(), each.text);
        } else {
            QVERIFY2(editor.quote().amount == Currency(40), each.text);
            QCOMPARE(hand.page.edAmount->text(), each.said());
            QCOMPARE(hand.page.edAmount->accessibleDescription(),
                     NumberEntry(each.said(), investmentRules()).reason() + u". Escape brings back 40.00."_s);
        }
    }
}

void tst_quotefunds::aClickIntoTheAmountChoosesAllOfIt()
{
    EditorDesk desk;
    QuoteEditor editor(desk.session, EditorDesk::quote(1, 0));
    QVERIFY(EditorDesk::openForm(editor));
    // The field selects its whole text when it gets the focus, even while the page is being built.
    QTest::mouseClick(editor.form()->fraNavBar->btnNext, Qt::LeftButton);
    const FundsHand hand(editor);
    QLineEdit &amount = *hand.page.edAmount;
    amount.setFocus(Qt::TabFocusReason);
    QTRY_VERIFY(hand.page.isReady());
    QCOMPARE(amount.selectedText(), u"0.00"_s);
    QTest::keyClicks(&amount, u"500"_s);
    QTest::keyClick(&amount, Qt::Key_Return);
    QCOMPARE(amount.text(), u"500.00"_s);
    QTest::keyClicks(&amount, u"0"_s);
    QTest::keyClick(&amount, Qt::Key_Return);
    QCOMPARE(amount.text(), u"0.00"_s);
    hand.grid().setFocus();

    // Clicks left of the zeros, where an inserted digit would multiply the amount by ten.
    QTest::mouseClick(&amount, Qt::LeftButton, {}, {4, amount.height() / 2});
    QTRY_COMPARE(amount.selectedText(), u"0.00"_s);
    QTest::keyClicks(&amount, u"75000"_s);
    QTest::keyClick(&amount, Qt::Key_Return);
    QCOMPARE(editor.quote().amount, Currency(75000));
    // A further click sets the cursor and a drag selects a part.
    QTest::mouseClick(&amount, Qt::LeftButton, {}, {4, amount.height() / 2}, 1000);
    QCoreApplication::processEvents();
    QCOMPARE(amount.selectedText(), QString());
    QCOMPARE(amount.cursorPosition(), 0);
    hand.grid().setFocus();
    QTest::mousePress(&amount, Qt::LeftButton, {}, {amount.width() - 5, amount.height() / 2}, 1000);
    QMouseEvent move(QEvent::MouseMove, QPointF(amount.width() - 24, amount.height() / 2.0),
                     amount.mapToGlobal(QPointF(amount.width() - 24, amount.height() / 2.0)), Qt::NoButton,
                     Qt::LeftButton, {});
    QCoreApplication::sendEvent(&amount, &move);
    QTest::mouseRelease(&amount, Qt::LeftButton, {}, {amount.width() - 24, amount.height() / 2});
    QCoreApplication::processEvents();
    QVERIFY(!amount.selectedText().isEmpty());
    QVERIFY(amount.selectedText() != amount.text());
}

void tst_quotefunds::anAmountThatIsNoneIsExplained()
{
    EditorDesk desk;
    QuoteEditor editor(desk.session, EditorDesk::quote());
    QVERIFY(desk.open(editor));
    const FundsHand hand(editor);
    QLineEdit &amount = *hand.page.edAmount;
    const QString tip = amount.toolTip();
    const QPair<const char *, const char *> refused[] = {
        {"1.250", "\"1.250\" can mean 1,250.00 or 1.250; type the cents, or leave the separator out."},
        {"1,234", "\"1,234\" can mean 1,234.00 or 1.234; type the cents, or leave the separator out."},
        {"999999999999999", "\"999999999999999\" is more than 9,999,999,999.99."},
        {"-100", "\"-100\" is below zero; an amount cannot be negative."},
        {"1e5", "\"1e5\" is not a number."},
        {"1000.005", "\"1000.005\" has more than 2 decimal"},
        {"5%", "\"5%\" is a percentage, not an amount."},
        {"1.2.3", "\"1.2.3\" is not a number: thousands go in groups of three digits."}};
    for (const auto &[text, reason] : refused) {
        hand.typeAmount(QLatin1String(text));
        QCOMPARE(amount.text(), QLatin1String(text));
        QCOMPARE(editor.quote().amount, Currency(1000));
        QVERIFY(hand.page.amountProblem->isVisible());
        QVERIFY2(hand.page.amountProblem->text().startsWith(QLatin1String(reason)),
                 qPrintable(hand.page.amountProblem->text()));
        QVERIFY(hand.page.amountProblem->text().endsWith(u"Escape brings back 1,000.00."_s));
        QVERIFY(amount.toolTip().startsWith(QLatin1String(reason)));
        QCOMPARE(amount.accessibleDescription(), hand.page.amountProblem->text());
        QVERIFY(amount.actions().constFirst()->isVisible());
    }
    // A refused entry stays, whatever else the user does, until it is corrected or undone.
    hand.grid().setFocus();
    QCOMPARE(amount.text(), u"1.2.3"_s);
    QTest::mouseClick(hand.page.rbAmount, Qt::LeftButton);
    QCOMPARE(amount.text(), u"1.2.3"_s);
    QCOMPARE(editor.quote().amount, Currency(1000));
    const int steps = editor.undoStack()->index();
    hand.page.undo();
    QCOMPARE(amount.text(), u"1,000.00"_s);
    QCOMPARE(editor.undoStack()->index(), steps);
    QVERIFY(!hand.page.amountProblem->isVisible());
    hand.typeAmount(u"-100"_s);
    hand.key(Qt::Key_Escape);
    QCOMPARE(amount.text(), u"1,000.00"_s);
    QCOMPARE(amount.toolTip(), tip);
    QVERIFY(amount.accessibleDescription().isEmpty());
    QVERIFY(!amount.actions().constFirst()->isVisible());
    QVERIFY(!hand.page.amountProblem->isVisible());
    hand.typeAmount(u"-100"_s);
    hand.typeAmount(u"60"_s);
    QVERIFY(!hand.page.amountProblem->isVisible());
    QCOMPARE(amount.toolTip(), tip);
    QCOMPARE(editor.quote().amount, Currency(60));
}

void tst_quotefunds::anAmountThatIsNoneIsKeptAsTyped()
{
    EditorDesk desk;
    QuoteEditor editor(desk.session, spreadQuote());
    QVERIFY(desk.open(editor));
    const FundsHand hand(editor);
    const Currency before = editor.quote().amount;
    const QString typed = u"-100"_s;
    const QString problem =
        u"The investment was not changed: \"-100\" is below zero; an amount cannot be negative."_s;
    QVERIFY(!hand.form.problems().contains(problem));
    hand.typeAmount(typed);
    QVERIFY(editor.isModified());
    QVERIFY(hand.form.problems().contains(problem));
    QVERIFY(editor.report().isDraft());
    QCOMPARE(editor.quote().amount, before);
    editor.save();
    QVERIFY(!editor.isModified());

    // The stored quote shows the refused entry again; the report of a closed quote names it, too.
    QuoteEditor later(desk.session, desk.store->quote(editor.quote().quoteID));
    QVERIFY(later.report().problems.contains(problem));
    QVERIFY(desk.open(later));
    const FundsHand again(later);
    QVERIFY(!later.isModified());
    QCOMPARE(again.page.edAmount->text(), typed);
    QVERIFY(again.page.edAmount->actions().constFirst()->isVisible());
    QVERIFY(again.form.problems().contains(problem));
    QCOMPARE(later.quote().amount, before);
    again.typeAmount(u"500"_s);
    QVERIFY(!again.form.problems().contains(problem));
    QCOMPARE(later.quote().amount, Currency(500));
    QVERIFY(!later.report().problems.contains(problem));
}

void tst_quotefunds::theGridSaysWhatItCorrected()
{
    EditorDesk desk;
    QuoteEditor editor(desk.session, spreadQuote());
    QVERIFY(desk.open(editor));
    const FundsHand hand(editor);
    QTest::mouseClick(hand.page.rbAmount, Qt::LeftButton);
    const auto said = [&hand] { return hand.said(); };
    for (const char *right : {"1,250,000", "1,234.56", "1.234,56", "12 500.75", "R 99,5", "40"}) {
        hand.type(1, QLatin1String(right));
        QCOMPARE(hand.page.fraFundAllocation->Funds()[0].Amount,
                 NumberEntry(QString::fromLatin1(right)).value());
        QCOMPARE(said(), QString());
    }
    const QPair<const char *, const char *> corrected[] = {
        {"-5", "Baobab Equity Fund: \"-5\" is below zero; an amount cannot be negative. Corrected to 5.00."},
        {"1e5", "Baobab Equity Fund: \"1e5\" is not a number. Corrected to 15.00."},
        {"1000000000", "Baobab Equity Fund: \"1000000000\" is more than 999,999,999.99. Corrected to 0.00."}};
    for (const auto &[typed, sentence] : corrected) {
        hand.type(1, QLatin1String(typed));
        QCOMPARE(said(), QLatin1String(sentence));
    }
    hand.type(1, u"40"_s);
    QCOMPARE(said(), QString());
    // An ambiguous number keeps the edit open and asks for a decision.
    hand.type(1, u"1,250"_s);
    QVERIFY(hand.grid().IsEditing());
    QCOMPARE(said(), u"Baobab Equity Fund: \"1,250\" can mean 1,250.00 or 1.250; type the "
                     "cents, or leave the separator out. Escape brings back 40.00."_s);
    QCOMPARE(editor.quote().funds.at(0).amount, Currency(40));
    QTest::keyClicks(QApplication::focusWidget(), u".00"_s);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QVERIFY(!hand.grid().IsEditing());
    QCOMPARE(editor.quote().funds.at(0).amount, Currency(1250));
    QCOMPARE(said(), QString());
    // A command ends the edit without a decision; the fund keeps its value.
    hand.type(1, u"1.750"_s);
    QVERIFY(hand.grid().IsEditing());
    hand.page.commit();
    QVERIFY(!hand.grid().IsEditing());
    QCOMPARE(editor.quote().funds.at(0).amount, Currency(1250));
    QVERIFY2(said().endsWith(u"It stays at 1250.00."_s), qPrintable(said()));
    hand.grid().SetCurrentCell(4, 1);
    hand.paste(u"-5"_s);
    QCOMPARE(said(), u"Baobab Equity Fund: \"-5\" is below zero; an amount cannot be negative. It "
                     "stays at 1250.00."_s);
    QTest::mouseClick(hand.page.rbPercent, Qt::LeftButton);
    hand.type(2, u"150"_s);
    QCOMPARE(said(), u"Baobab Balanced Fund: \"150\" is more than 100.00%. Corrected to 100.00."_s);
    hand.type(2, u"33.333"_s);
    QVERIFY(said().endsWith(u"Corrected to 33.33."_s));
    hand.type(2, u"12,5%"_s);
    QCOMPARE(said(), QString());
    // An empty cell is corrected to 0.
    hand.grid().SetCurrentCell(3, 2);
    QTest::keyClick(&hand.grid(), Qt::Key_F2);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Delete);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QCOMPARE(said(), u"Baobab Balanced Fund: Nothing is entered. Corrected to 0.00."_s);
}

void tst_quotefunds::linesArePastedAsOneStep()
{
    EditorDesk desk;
    QuoteEditor editor(desk.session, spreadQuote());
    QVERIFY(desk.open(editor));
    const FundsHand hand(editor);
    hand.paste(u"Fund\tShare\nKaroo Equity Fund\t12,5%\n1\tR 100,00\nbaobab  income fund\t7.25\n"_s);
    QCOMPARE(hand.column(2), texts({"Baobab Equity Fund", "Baobab Balanced Fund", "Baobab Income Fund",
                                    "Karoo Equity Fund"}));
    QCOMPARE(hand.column(3), texts({"10.00", "60.00", "7.25", "12.50"}));
    QCOMPARE(hand.column(4), texts({"100.00", "600.00", "72.50", "125.00"}));
    QCOMPARE(hand.page.fraFundAllocation->pnlRemainAmount->caption(), u"Remaining: 10.25%"_s);
    QCOMPARE(editor.undoStack()->count(), 1);
    QCOMPARE(hand.said(), u"3 fund(s) pasted"_s);
    QVERIFY(!hand.followBanner());
    QVERIFY(desk.told.isEmpty());
    QVERIFY(hand.inStep());
    hand.undo();
    QCOMPARE(hand.column(3), texts({"40.00", "60.00"}));
    QVERIFY(!editor.isModified());
    // The button and the shortcut do the same.
    FundsHand::click(hand.page.btnPaste);
    QCOMPARE(hand.grid().RowCount(), 4);
    hand.form.actUndo->trigger();
    hand.key(Qt::Key_V, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(hand.grid().RowCount(), 4);
}

void tst_quotefunds::oneNumberGoesIntoTheCell()
{
    EditorDesk desk;
    QuoteEditor editor(desk.session, spreadQuote());
    QVERIFY(desk.open(editor));
    const FundsHand hand(editor);
    hand.grid().SetCurrentCell(3, 2);
    hand.paste(u"12,5 %\n"_s);
    hand.grid().EndEdit(true);
    QCOMPARE(hand.column(3), texts({"40.00", "12.50"}));
    QCOMPARE(editor.undoStack()->count(), 1);
}

void tst_quotefunds::uselessLinesAreReported()
{
    EditorDesk desk;
    QuoteEditor editor(desk.session, spreadQuote());
    QVERIFY(desk.open(editor));
    const FundsHand hand(editor);
    hand.paste(u"Nothing Fund;10%\n3;5%\n3;6%\nTotal;100%"_s);
    QCOMPARE(hand.column(3), texts({"40.00", "60.00", "5.00"}));
    // A banner says how many; the lines are shown on request.
    QCOMPARE(hand.said(), u"1 fund(s) pasted; 3 line(s) could not be used"_s);
    QVERIFY(desk.told.isEmpty());
    QVERIFY(hand.followBanner());
    QCOMPARE(desk.told, QStringList(u"3 line(s) could not be used"_s));
    const QStringList lines = desk.toldDetails.first().split(u'\n');
    QCOMPARE(lines.size(), 3);
    QVERIFY(lines.at(0).startsWith(u"Line 1: "_s) && lines.at(0).contains(u"Nothing Fund"_s));
    QVERIFY(lines.at(1).startsWith(u"Line 3: "_s));
    // Lines without any usable content change nothing.
    hand.paste(u"a;b\nc;d"_s);
    QCOMPARE(editor.undoStack()->count(), 1);
    QVERIFY(hand.followBanner());
    QCOMPARE(desk.told.size(), 2);
    // A fund of another product is reported as such.
    hand.paste(u"Stinkwood Equity Fund;5%"_s);
    QVERIFY(hand.followBanner());
    QVERIFY(desk.toldDetails.last().contains(u"the product offers no fund"_s));
}

void tst_quotefunds::pastingByAmount()
{
    EditorDesk desk;
    Quote quote = EditorDesk::quote(1, 999);
    quote.byAmount = true;
    QuoteEditor editor(desk.session, quote);
    QVERIFY(desk.open(editor));
    const FundsHand hand(editor);
    hand.paste(u"Fund ID;Fund;Percent;Amount\n1;x;50;333,33\n2;;33,3333%;\n"_s);
    QCOMPARE(hand.column(4), texts({"333.33", "333.00"}));
    QCOMPARE(hand.column(3), texts({"33.37", "33.33"}));
    QCOMPARE(hand.page.fraFundAllocation->pnlRemainAmount->caption(), u"Remaining: 332.67 (33.30%)"_s);
    QVERIFY(hand.inStep());
}

void tst_quotefunds::copiedFundsArePastedBack()
{
    EditorDesk desk;
    QuoteEditor editor(desk.session, spreadQuote());
    QVERIFY(desk.open(editor));
    const FundsHand hand(editor);
    FundsHand::click(hand.page.btnCopy);
    QCOMPARE(QGuiApplication::clipboard()->text(),
             u"Fund ID\tFund\tPercent\tAmount\n1\tBaobab Equity Fund\t40\t400.00\n"
             "2\tBaobab Balanced Fund\t60\t600.00\n"_s);
    const QString copied = QGuiApplication::clipboard()->text();
    FundsHand::click(hand.bar().sbtClear);
    QVERIFY(!hand.page.btnCopy->isEnabled());
    hand.paste(copied);
    QCOMPARE(hand.column(4), texts({"400.00", "600.00"}));
    QCOMPARE(hand.said(), u"2 fund(s) pasted"_s);
    // Rows copied from the grid can be pasted.
    hand.grid().setFocus();
    hand.key(Qt::Key_A, Qt::ControlModifier);
    hand.key(Qt::Key_C, Qt::ControlModifier);
    const QString grid = QGuiApplication::clipboard()->text();
    FundsHand::click(hand.bar().sbtClear);
    hand.paste(grid);
    QCOMPARE(hand.column(3), texts({"40.00", "60.00"}));
    QCOMPARE(hand.said(), u"2 fund(s) pasted"_s);
}

void tst_quotefunds::aFundNoLongerOfferedStaysUntilRemoved()
{
    EditorDesk desk;
    Quote quote = EditorDesk::quote();
    quote.funds = {EditorDesk::fund(9001, 25, 250, u"Ironwood Fund"_s), EditorDesk::fund(1, 75, 750, baobab)};
    desk.store->save(quote);
    QuoteEditor editor(desk.session, desk.store->quote(quote.quoteID));
    QVERIFY(desk.open(editor));
    const FundsHand hand(editor);
    QVERIFY(!editor.isModified());
    QCOMPARE(hand.column(2), QStringList(baobab));
    QVERIFY(hand.page.pnlKept->isVisible());
    QCOMPARE(hand.page.lstKept->count(), 1);
    const QString text = hand.page.lstKept->item(0)->text();
    QCOMPARE(text, u"Ironwood Fund: 25.00%, 250.00 (no longer offered)"_s);
    QVERIFY(!hand.page.lstKept->item(0)->icon().isNull());
    QCOMPARE(hand.page.lblState->text(), u"Fully allocated"_s);

    // The fund that is no longer offered is recalculated with the investment and saved with the quote.
    hand.typeAmount(u"2000"_s);
    QVERIFY(hand.page.lstKept->item(0)->text().contains(u"500.00"_s));
    FundsHand::click(hand.bar().sbtClear);
    QCOMPARE(hand.page.lstKept->count(), 1);
    editor.save();
    const Quote stored = desk.store->quote(quote.quoteID);
    QCOMPARE(stored.funds.size(), 1);
    QCOMPARE(stored.funds.first().fundID, 9001);
    QCOMPARE(stored.funds.first().name, u"Ironwood Fund"_s);
    QCOMPARE(stored.funds.first().amount, Currency(500));

    // The adviser removes the fund; the step can be undone.
    hand.page.lstKept->setFocus();
    QTest::keyClick(hand.page.lstKept, Qt::Key_Down);
    if (!hand.page.btnRemoveKept->isEnabled())
        QTest::keyClick(hand.page.lstKept, Qt::Key_Space);
    QVERIFY(hand.page.btnRemoveKept->isEnabled());
    FundsHand::click(hand.page.btnRemoveKept);
    QVERIFY(!hand.page.pnlKept->isVisible());
    QVERIFY(editor.quote().funds.isEmpty());
    hand.grid().setFocus();
    hand.undo();
    QCOMPARE(hand.page.lstKept->count(), 1);
    QVERIFY(hand.page.pnlKept->isVisible());
}

void tst_quotefunds::whatIsNoLongerOfferedIsNotSharedOut()
{
    EditorDesk desk;
    for (const bool byAmount : {false, true}) {
        Quote quote = EditorDesk::quote();
        quote.byAmount = byAmount;
        quote.funds = {EditorDesk::fund(1, 0, 0), EditorDesk::fund(2, 10, 100), EditorDesk::fund(3, 0, 0),
                       EditorDesk::fund(4, 0, 0), EditorDesk::fund(9001, 25, 250, u"Ironwood"_s)};
        QuoteEditor editor(desk.session, quote);
        QVERIFY(desk.open(editor));
        const FundsHand hand(editor);
        FundsHand::click(hand.bar().sbtAllocateAmount);
        QCOMPARE(hand.column(4), texts({"216.67", "100.00", "216.67", "216.66"}));
        QCOMPARE(hand.page.lblState->text(), u"Fully allocated"_s);
        QVERIFY(editor.quote().isAllocated());
        QCOMPARE(editor.undoStack()->count(), 1);
        QVERIFY(hand.inStep());
        QCOMPARE(hand.page.fraFundAllocation->pnlRemainAmount->caption(),
                 byAmount ? u"Remaining: 0.00 (0.00%)"_s : u"Remaining: 0.00%"_s);
        hand.grid().setFocus();
        hand.undo();
        QCOMPARE(hand.column(4), texts({"0.00", "100.00", "0.00", "0.00"}));
        hand.redo();
        QVERIFY(editor.quote().isAllocated());

        // Without a remainder the rows stay unchanged.
        quote.funds[4] = EditorDesk::fund(9001, 95, 950, u"Ironwood"_s);
        editor.replace(quote);
        FundsHand::click(hand.bar().sbtAllocateAmount);
        QCOMPARE(hand.column(4), texts({"0.00", "100.00", "0.00", "0.00"}));
        QCOMPARE(editor.undoStack()->count(), 0);
    }
}

void tst_quotefunds::aCatalogueWithoutTheProductsFunds()
{
    EditorDesk desk;
    desk.store->database().run(u"DELETE FROM fund_group_products WHERE ProductID = 1"_s);
    Quote quote = EditorDesk::quote();
    quote.funds = {EditorDesk::fund(1, 40, 400, baobab),
                   EditorDesk::fund(2, 60, 600, u"Baobab Balanced Fund"_s)};
    desk.store->save(quote);
    QuoteEditor editor(desk.session, quote);
    QVERIFY(desk.open(editor));
    const FundsHand hand(editor);
    // The quote can be read and saved unchanged.
    QCOMPARE(hand.grid().RowCount(), 0);
    QCOMPARE(hand.page.lstKept->count(), 2);
    QVERIFY(hand.page.lstKept->item(0)->text().startsWith(baobab));
    QCOMPARE(hand.page.lblState->text(), u"Fully allocated"_s);
    QVERIFY(!editor.isModified());
    for (QAbstractButton *const button :
         {hand.bar().sbtAllocateAmount, hand.bar().sbtClear, hand.bar().sbtRemove, hand.bar().sbtResetToZero})
        QVERIFY(!button->isEnabled());
    hand.paste(u"1;10%\n2;10%"_s);
    QVERIFY(hand.followBanner());
    QCOMPARE(desk.told, QStringList(u"2 line(s) could not be used"_s));
    QCOMPARE(hand.grid().RowCount(), 0);
    // The selector opens empty.
    QVERIFY(hand.inSelector([](TfrmFundSelector &selector) {
        QVERIFY(!selector.fraFundSelector->fraFundsTreeView->tvFunds->Items().GetFirstNode());
        QTest::keyClick(&selector, Qt::Key_Escape);
    }));
    editor.save();
    QCOMPARE(desk.store->quote(quote.quoteID).funds, quote.funds);
    QCOMPARE(editor.report().notOffered.size(), 2);
}

void tst_quotefunds::anImportedCatalogueIsShownAtOnce()
{
    EditorDesk desk;
    QuoteEditor editor(desk.session, spreadQuote());
    QVERIFY(desk.open(editor));
    const FundsHand hand(editor);
    QFile file(desk.folder.filePath(u"new.csv"_s));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("GroupTypeID,GroupTypeDesc,FundGroupID,FundGroupName,FundID,FundName\n"
               "1,Unit trusts,1,Baobab Funds,2,Baobab Balanced Fund\n");
    file.close();
    desk.catalogue.importFile(file.fileName());
    Q_EMIT desk.session.catalogueChanged();
    QCOMPARE(hand.column(2), texts({"Baobab Balanced Fund"}));
    QCOMPARE(hand.page.lstKept->count(), 1);
    QVERIFY(hand.page.lstKept->item(0)->text().startsWith(baobab));
    QVERIFY(!editor.isModified());
    // The former catalogue is loaded again.
    Transaction write(desk.catalogue.database(), Transaction::Write);
    loadEmbeddedCatalogue(desk.catalogue.database());
    write.commit();
    Q_EMIT desk.session.catalogueChanged();
    QCOMPARE(hand.column(3), texts({"40.00", "60.00"}));
    QVERIFY(!hand.page.pnlKept->isVisible());
}

void tst_quotefunds::theFactSheetIsOpened()
{
    EditorDesk desk;
    QuoteEditor editor(desk.session, spreadQuote());
    QVERIFY(desk.open(editor));
    const FundsHand hand(editor);
    hand.grid().SetCurrentRow(2);
    FundsHand::click(hand.page.btnFactSheet);
    QCOMPARE(desk.opened, QList<QUrl>{QUrl(u"https://factsheets.quotedesk.example/2.pdf"_s)});
    hand.grid().setFocus();
    hand.grid().SetCurrentRow(1);
    hand.key(Qt::Key_H, Qt::ControlModifier);
    QCOMPARE(desk.opened.last().path(), u"/1.pdf"_s);
    // The fact sheet from the fund selector.
    Q_EMIT TfrmFundSelector::Requests()->FundSheetRequested(3,
                                                            u"https://factsheets.quotedesk.example/3.pdf"_s);
    QCOMPARE(desk.opened.last().path(), u"/3.pdf"_s);
    FundsHand::click(hand.bar().sbtClear);
    QVERIFY(!hand.page.btnFactSheet->isEnabled());
    QVERIFY(desk.told.isEmpty());
}

void tst_quotefunds::aFactSheetThatCannotBeOpened()
{
    EditorDesk desk;
    Quote quote = EditorDesk::quote();
    quote.funds = {EditorDesk::fund(11, 40, 400)};
    QuoteEditor editor(desk.session, quote);
    QVERIFY(desk.open(editor));
    const FundsHand hand(editor);
    FundsHand::click(hand.page.btnFactSheet);
    QCOMPARE(desk.told, QStringList(u"There is no fact sheet for the Baobab Value Fund"_s));
    desk.session.openFactSheet(&hand.page, baobab, u"file:///usr/bin/true"_s);
    desk.session.openFactSheet(&hand.page, baobab, u"not an address"_s);
    QVERIFY(desk.opened.isEmpty());
    QCOMPARE(desk.told.size(), 3);
    desk.opens = false;
    desk.session.openFactSheet(&hand.page, baobab, u"https://factsheets.quotedesk.example/1.pdf"_s);
    QCOMPARE(desk.opened.size(), 1);
    QCOMPARE(desk.told.size(), 4);
    QVERIFY(desk.toldDetails.last().contains(u"factsheets"_s));
}

void tst_quotefunds::questionsAreAskedOnce()
{
    EditorDesk desk;
    QuoteEditor editor(desk.session, EditorDesk::quote());
    QVERIFY(desk.open(editor));
    const FundsHand hand(editor);
    hand.paste(u"1;10%"_s);
    QVERIFY(desk.asked.isEmpty());
    desk.answer = true;
    hand.paste(u"105;10%\n106;5%\n113;5%"_s);
    QCOMPARE(desk.asked, QStringList({LoadResString(TMessageText::resFund_OGSPrevInv_Msg),
                                      LoadResString(TMessageText::resFund_WorldOGSPrevInv_Msg)}));
    hand.paste(u"107;10%"_s);
    QCOMPARE(desk.asked.size(), 2);
    desk.answer = false;
    hand.paste(u"279;5%\n285;5%"_s);
    QCOMPARE(desk.asked.mid(2), QStringList({LoadResString(TMessageText::resFund_OGS_INTPrevInv_Msg),
                                             LoadResString(TMessageText::resFund_BulwarkWorldPrevInv_Msg)}));
    // Removing the funds and undoing this asks no question again.
    FundsHand::click(hand.bar().sbtClear);
    hand.grid().setFocus();
    hand.undo();
    QCOMPARE(desk.asked.size(), 4);

    editor.save();
    const Quote stored = desk.store->quote(editor.quote().quoteID);
    QVERIFY(stored.asked.ogs && stored.asked.worldOGS && stored.asked.bulwarkWorld &&
            stored.asked.worldOGSInternational);
    QCOMPARE(stored.details.value(u"PreviousInvestment.OGS"_s), u"yes"_s);
    QCOMPARE(stored.details.value(u"PreviousInvestment.BulwarkWorld"_s), u"no"_s);
    // The stored quote has the answers.
    QuoteEditor later(desk.session, stored);
    QVERIFY(desk.open(later));
    FundsHand(later).paste(u"108;1%\n114;1%"_s);
    QCOMPARE(desk.asked.size(), 4);
    QCOMPARE(later.fundsPage()->answers().size(), 4);
}

void tst_quotefunds::anAnswerCanBeCorrected()
{
    EditorDesk desk;
    Quote quote = EditorDesk::quote();
    quote.funds = {EditorDesk::fund(1, 10, 100), EditorDesk::fund(105, 40, 400)};
    QuoteEditor editor(desk.session, quote);
    QVERIFY(desk.open(editor));
    const FundsHand hand(editor);
    QVERIFY(desk.asked.isEmpty());
    hand.grid().SetCurrentRow(2);
    QVERIFY(hand.bar().sbtInvested->isVisible());
    for (const bool answer : {true, false}) {
        desk.answer = answer;
        FundsHand::click(hand.bar().sbtInvested);
        QCOMPARE(editor.quote().details.value(u"PreviousInvestment.OGS"_s), answer ? u"yes"_s : u"no"_s);
        QVERIFY(editor.quote().asked.ogs);
    }
    QCOMPARE(desk.asked.size(), 2);
}

void tst_quotefunds::thePictureFollowsEachEdit()
{
    EditorDesk desk;
    QuoteEditor editor(desk.session, spreadQuote());
    QVERIFY(desk.open(editor));
    const FundsHand hand(editor);
    const SplitChart &chart = *hand.page.chart;
    QCOMPARE(chart.accessibleDescription(), u"Baobab Equity Fund: 40.00%; Baobab Balanced Fund: 60.00%"_s);
    const QImage full = hand.page.chart->grab().toImage();
    hand.grid().setFocus();
    hand.grid().SetCurrentCell(3, 1);
    hand.key(Qt::Key_9);
    QVERIFY(hand.grid().IsEditing());
    QCOMPARE(chart.accessibleDescription(),
             u"Baobab Equity Fund: 9.00%; Baobab Balanced Fund: 60.00%; Not allocated: 31.00%"_s);
    QVERIFY(hand.page.chart->grab().toImage() != full);
    QCOMPARE(hand.page.lblState->text(), u"Draft: 310.00 (31.00%) is not allocated"_s);
    hand.type(1, u"90"_s);
    QVERIFY(chart.accessibleDescription().endsWith(u"50.00% over-allocated"_s));
    FundsHand::click(hand.bar().sbtClear);
    QCOMPARE(chart.accessibleDescription(), u"Not allocated: 100.00%"_s);
    // Many funds appear as few parts of the chart.
    QStringList lines;
    for (int id = 1; id <= 30; ++id)
        lines.append(u"%1;%2"_s.arg(id).arg(id == 1 ? 71 : 1));
    hand.paste(lines.join(u'\n'));
    QVERIFY(chart.accessibleDescription().startsWith(u"Baobab Equity Fund: 71.00%; "_s));
    QVERIFY(chart.accessibleDescription().endsWith(u"23 other fund(s): 23.00%"_s));
}

void tst_quotefunds::aFundUnderAnotherNameKeepsIts()
{
    EditorDesk desk;
    Quote quote = EditorDesk::quote();
    quote.funds = {EditorDesk::fund(1, 40, 400, u"Ironwood Fund"_s),
                   EditorDesk::fund(2, 60, 600, u"Baobab Balanced Fund"_s)};
    desk.store->save(quote);
    QuoteEditor editor(desk.session, desk.store->quote(quote.quoteID));
    QVERIFY(desk.open(editor));
    const FundsHand hand(editor);
    const QString marked = u"Ironwood Fund (in the catalogue: Baobab Equity Fund)"_s;
    QCOMPARE(hand.column(2), (QStringList{marked, u"Baobab Balanced Fund"_s}));
    QVERIFY(hand.page.lblNames->isVisible());
    QVERIFY2(hand.page.lblNames->text().startsWith(u"1 fund(s) have another name"_s),
             qPrintable(hand.page.lblNames->text()));
    QVERIFY(!editor.isModified());
    // Chart, summary and printout use the same text.
    QVERIFY(hand.page.chart->accessibleDescription().contains(marked));
    const QuoteReport report = editor.report();
    QCOMPARE(report.fundText(report.split.funds.constFirst()), marked);
    QVERIFY(report.notOffered.isEmpty());
    // Entries and commands keep the name.
    hand.type(1, u"30"_s);
    FundsHand::click(hand.bar().sbtResetToZero);
    FundsHand::click(hand.bar().sbtAllocateAmount);
    QCOMPARE(hand.cell(2, 1), marked);
    QVERIFY(hand.inSelector([](TfrmFundSelector &selector) {
        SelectorDriver(*selector.fraFundSelector).add("Baobab Income Fund");
        QTest::mouseClick(selector.fraFundSelector->btnSelect, Qt::LeftButton);
    }));
    QCOMPARE(hand.column(2), (QStringList{marked, u"Baobab Balanced Fund"_s, u"Baobab Income Fund"_s}));
    QVERIFY(showActive(hand.form));
    // A copy for a spreadsheet has the quote's name. A paste finds the fund by this name and by the grid's
    // text.
    FundsHand::click(hand.page.btnCopy);
    QVERIFY(QGuiApplication::clipboard()->text().contains(u"\n1\tIronwood Fund\t"_s));
    hand.paste(u"Ironwood Fund;11%\nBaobab Balanced Fund;22%"_s);
    QCOMPARE(hand.column(3).mid(0, 2), texts({"11.00", "22.00"}));
    hand.paste(marked + u";12%\n"_s);
    QCOMPARE(hand.cell(3, 1), u"12.00"_s);
    QCOMPARE(hand.said(), u"1 fund(s) pasted"_s);
    editor.save();
    QCOMPARE(desk.store->quote(quote.quoteID).funds.constFirst().name, u"Ironwood Fund"_s);
}

void tst_quotefunds::aRenamedFundTakesTheNewNameWhenChosenAnew()
{
    EditorDesk desk;
    Quote quote = EditorDesk::quote();
    quote.funds = {EditorDesk::fund(1, 0, 0, u"Ironwood Fund"_s),
                   EditorDesk::fund(2, 60, 600, u"Baobab Balanced Fund"_s)};
    QuoteEditor editor(desk.session, quote);
    QVERIFY(desk.open(editor));
    const FundsHand hand(editor);
    const QStringList before = hand.column(2);
    hand.grid().SetCurrentRow(1);
    FundsHand::click(hand.bar().sbtRemove);
    QVERIFY(!hand.page.lblNames->isVisible());
    QVERIFY(hand.inSelector([](TfrmFundSelector &selector) {
        SelectorDriver(*selector.fraFundSelector).add("Baobab Equity Fund");
        QTest::mouseClick(selector.fraFundSelector->btnSelect, Qt::LeftButton);
    }));
    QCOMPARE(hand.column(2), (QStringList{baobab, u"Baobab Balanced Fund"_s}));
    // Only the name has changed, which is a modification.
    QVERIFY(editor.isModified());
    QVERIFY(showActive(hand.form));
    hand.grid().setFocus();
    hand.undo();
    hand.undo();
    QCOMPARE(hand.column(2), before);
    QVERIFY(hand.page.lblNames->isVisible());
    QVERIFY(!editor.isModified());
    hand.redo();
    hand.redo();
    QCOMPARE(hand.cell(2, 1), baobab);
}

void tst_quotefunds::anImportRenamesNothingThatIsOpen()
{
    EditorDesk desk;
    QuoteEditor editor(desk.session, spreadQuote());
    QVERIFY(desk.open(editor));
    const FundsHand hand(editor);
    // The form of this quote has not shown its funds page yet.
    QuoteEditor unseen(desk.session, spreadQuote());
    QVERIFY(EditorDesk::openForm(unseen));
    const QByteArray lines = "1,Unit trusts,1,Baobab Funds,2,Baobab Balanced Fund\n"
                             "1,Unit trusts,1,Baobab Funds,1,Cape Fund\n";
    importFunds(desk, lines);
    const QStringList expected{u"Baobab Balanced Fund"_s,
                               u"Baobab Equity Fund (in the catalogue: Cape Fund)"_s};
    QCOMPARE(hand.column(2), expected);
    QVERIFY(hand.page.lblNames->isVisible());
    QCOMPARE(editor.quote().funds.at(1).name, baobab);
    unseen.form()->goTo(QuoteForm::Page::Funds);
    QTRY_VERIFY(unseen.fundsPage()->isReady());
    QCOMPARE(FundsHand(unseen).column(2), expected);
    editor.save();
    const Quote stored = desk.store->quote(editor.quote().quoteID);
    QCOMPARE(stored.funds.at(1).name, baobab);
    // The stored quote shows the same names.
    QuoteEditor later(desk.session, stored);
    QVERIFY(desk.open(later));
    QCOMPARE(FundsHand(later).column(2), expected);
    QVERIFY(!later.isModified());
}

void tst_quotefunds::aRecoveredDraftKeepsItsNames()
{
    EditorDesk desk;
    Quote draft = EditorDesk::quote();
    draft.funds = {EditorDesk::fund(1, 40, 400, u"Ironwood Fund"_s)};
    QuoteEditor editor(desk.session, EditorDesk::quote());
    QVERIFY(desk.open(editor));
    editor.recover(quoteFromJson(quoteToJson(draft)));
    const FundsHand hand(editor);
    QCOMPARE(hand.column(2), QStringList(u"Ironwood Fund (in the catalogue: Baobab Equity Fund)"_s));
    QCOMPARE(editor.quote().funds.constFirst().name, u"Ironwood Fund"_s);
    QVERIFY(editor.isModified());
}

void tst_quotefunds::theOtherLanguageIsNoOtherName()
{
    EditorDesk desk;
    Quote quote = EditorDesk::quote();
    quote.funds = {EditorDesk::fund(1, 40, 400, baobab),
                   EditorDesk::fund(2, 60, 600, u" Kremetart Gebalanseerde Fonds"_s)};
    for (const bool afrikaans : {true, false}) {
        desk.catalogue.setAfrikaans(afrikaans);
        QuoteEditor editor(desk.session, quote);
        QVERIFY(desk.open(editor));
        const FundsHand hand(editor);
        const QStringList names = afrikaans
                                      ? texts({"Kremetart Aandelefonds", "Kremetart Gebalanseerde Fonds"})
                                      : texts({"Baobab Equity Fund", "Baobab Balanced Fund"});
        QCOMPARE(hand.column(2), names);
        QVERIFY(!hand.page.lblNames->isVisible());
        QVERIFY(!editor.isModified());
        // A paste finds names of both languages.
        hand.paste(u"Baobab Equity Fund;1%\nKremetart Gebalanseerde Fonds;2%"_s);
        QCOMPARE(hand.column(3), texts({"1.00", "2.00"}));
        QCOMPARE(hand.said(), u"2 fund(s) pasted"_s);
    }
}

void tst_quotefunds::twinsSurviveTheSelector()
{
    EditorDesk desk;
    importFunds(desk, "1,T,10,Cape,100,Growth Fund\n1,T,10,Cape,110,Income\n1,T,11,Karoo,101,Growth Fund\n"
                      "1,T,11,Karoo,102,Twin\n1,T,11,Karoo,103,Twin\n");
    Quote quote = EditorDesk::quote();
    const QString growth = u"Growth Fund"_s;
    quote.funds = {EditorDesk::fund(100, 40, 400, growth), EditorDesk::fund(101, 60, 600, growth)};
    desk.store->save(quote);
    QuoteEditor editor(desk.session, desk.store->quote(quote.quoteID));
    QVERIFY(desk.open(editor));
    const FundsHand hand(editor);
    QCOMPARE(hand.column(2), texts({"Growth Fund (Cape)", "Growth Fund (Karoo)"}));
    QVERIFY(!hand.page.lblNames->isVisible());
    QVERIFY(!editor.isModified());
    QVERIFY(hand.inSelector([](TfrmFundSelector &selector) {
        const SelectorDriver driver(*selector.fraFundSelector);
        QCOMPARE(driver.captions(), texts({"Growth Fund (Cape)", "Growth Fund (Karoo)"}));
        QTest::mouseClick(selector.fraFundSelector->btnSelect, Qt::LeftButton);
    }));
    QCOMPARE(hand.column(2), texts({"Growth Fund (Cape)", "Growth Fund (Karoo)"}));
    QCOMPARE(hand.column(3), texts({"40.00", "60.00"}));
    QCOMPARE(editor.undoStack()->count(), 0);
    QVERIFY(!editor.isModified());
    QVERIFY(hand.inSelector([](TfrmFundSelector &selector) {
        const SelectorDriver driver(*selector.fraFundSelector);
        driver.add("Twin (103)");
        driver.add("Twin (102)");
        driver.add("Income");
        QTest::mouseClick(selector.fraFundSelector->btnSelect, Qt::LeftButton);
    }));
    QCOMPARE(hand.column(2),
             texts({"Growth Fund (Cape)", "Income", "Growth Fund (Karoo)", "Twin (102)", "Twin (103)"}));
    const QuoteReport report = editor.report();
    QCOMPARE(report.split.funds.at(2).name, u"Growth Fund (Karoo)"_s);
    // The remaining fund of two with the same name needs no distinction any more.
    hand.grid().SetCurrentRow(5);
    FundsHand::click(hand.bar().sbtRemove);
    QCOMPARE(hand.cell(2, 4), u"Twin"_s);
    QVERIFY(showActive(hand.form));
    // A shared name is ambiguous, the caption with the group is not.
    hand.paste(u"Growth Fund;1%\nGrowth Fund (Karoo);2%"_s);
    QCOMPARE(hand.cell(3, 3), u"2.00"_s);
    QCOMPARE(hand.said(), u"1 fund(s) pasted; 1 line(s) could not be used"_s);
    editor.save();
    QStringList stored;
    for (const QuotedFund &fund : desk.store->quote(quote.quoteID).funds)
        stored.append(fund.name);
    QCOMPARE(stored, texts({"Growth Fund", "Income", "Growth Fund", "Twin"}));
}

void tst_quotefunds::onlyTheFundsOfTheQuoteAreRead()
{
    EditorDesk desk;
    QuoteEditor editor(desk.session, spreadQuote());
    QVERIFY(desk.open(editor));
    const FundsHand hand(editor);
    const auto rowsRead = [&hand] {
        TClientDataSet rows;
        rows.SetData(hand.page.fraFundAllocation->Get_FundsPerProductDataSet());
        return rows.RecordCount();
    };
    QCOMPARE(rowsRead(), 2);
    hand.type(1, u"30"_s);
    FundsHand::click(hand.bar().sbtAllocateAmount);
    FundsHand::click(hand.bar().sbtRemove);
    hand.grid().setFocus();
    hand.undo();
    QCOMPARE(rowsRead(), 2);
    // A replaced quote reads its own funds.
    Quote other = spreadQuote();
    other.funds.append(EditorDesk::fund(12, 0, 0));
    editor.replace(other);
    QCOMPARE(rowsRead(), 3);
    QCOMPARE(hand.grid().RowCount(), 3);
    // Opening the fund selector reads all funds and keeps the quote's rows.
    const int steps = editor.undoStack()->count();
    QVERIFY(hand.inSelector([](TfrmFundSelector &selector) { selector.reject(); }));
    QVERIFY(rowsRead() > 200);
    QCOMPARE(hand.column(3), texts({"40.00", "60.00", "0.00"}));
    QCOMPARE(editor.undoStack()->count(), steps);
    QVERIFY(!editor.isModified());
    // A new quote has read no funds.
    QuoteEditor fresh(desk.session, EditorDesk::quote());
    QVERIFY(desk.open(fresh));
    TClientDataSet none;
    none.SetData(fresh.fundsPage()->fraFundAllocation->Get_FundsPerProductDataSet());
    QCOMPARE(none.RecordCount(), 0);
    QVERIFY(FundsHand(fresh).bar().sbtFunds->isEnabled());
    FundsHand(fresh).paste(u"Karoo Equity Fund;5%\n"_s);
    QCOMPARE(FundsHand(fresh).grid().RowCount(), 1);
}

void tst_quotefunds::tooMuchHasAColourOfItsOwn_data()
{
    QTest::addColumn<bool>("dark");
    QTest::newRow("light") << false;
    QTest::newRow("dark") << true;
}

void tst_quotefunds::tooMuchHasAColourOfItsOwn()
{
    QFETCH(bool, dark);
    const QPalette former = QApplication::palette();
    const auto restore = qScopeGuard([&former] { QApplication::setPalette(former); });
    if (dark)
        QApplication::setPalette(LookPalette(true));
    EditorDesk desk;
    QuoteEditor editor(desk.session, spreadQuote());
    QVERIFY(desk.open(editor));
    const FundsHand hand(editor);
    const TPanel &panel = *hand.page.fraFundAllocation->pnlRemainAmount;
    const auto ground = [&panel] { return ColorOf(ColorByName(panel.colorName()), panel.palette()); };
    const QColor whole = ground();
    hand.type(1, u"90"_s);
    const QColor much = ground();
    QVERIFY(much != whole);
    // Red, not green.
    QVERIFY(much.red() > much.green() + 80);
    QVERIFY(Contrast(ColorOf(ColorByName(panel.textColorName()), panel.palette()), much) >= 4.5);
    const auto checkLabel = [](const QLabel &label) {
        const QColor words = label.palette().color(QPalette::WindowText);
        QVERIFY(words.red() > words.green() + 80);
        QVERIFY(Contrast(words, label.palette().color(QPalette::Base)) >= 4.5);
        QVERIFY2(label.text().contains(u"500.00"_s), qPrintable(label.text()));
    };
    checkLabel(*hand.page.lblState);
    hand.form.goTo(QuoteForm::Page::Summary);
    checkLabel(*hand.form.summaryPage->lblStateValue);
    // Switching the theme while the window is open.
    QApplication::setPalette(dark ? former : LookPalette(true));
    QTRY_COMPARE(hand.page.lblState->palette().color(QPalette::Base),
                 QApplication::palette().color(QPalette::Base));
    checkLabel(*hand.form.summaryPage->lblStateValue);
    checkLabel(*hand.page.lblState);
    QApplication::setPalette(dark ? LookPalette(true) : former);
    hand.form.goTo(QuoteForm::Page::Funds);
    hand.type(1, u"40"_s);
    QTRY_COMPARE(ground(), whole);
    const QColor words = hand.page.lblState->palette().color(QPalette::WindowText);
    QVERIFY(words.green() > words.red());
}

void tst_quotefunds::aLoadingPageShowsNoSampleAmounts()
{
    EditorDesk desk;
    QuoteEditor editor(desk.session, spreadQuote());
    QVERIFY(desk.openForm(editor));
    const FundsPage &page = *editor.fundsPage();
    QVERIFY(!page.isReady());
    const auto check = [&page] {
        for (const TPanel *const panel : page.fraFundAllocation->findChildren<TPanel *>())
            QVERIFY2(!panel->caption().contains(u"9,999"_s), qPrintable(panel->caption()));
    };
    check();
    // A change of language sets the design's texts again.
    QEvent change(QEvent::LanguageChange);
    QApplication::sendEvent(page.fraFundAllocation, &change);
    check();
    QSignalSpy ready(&page, &FundsPage::ready);
    editor.form()->goTo(QuoteForm::Page::Funds);
    QVERIFY(page.isReady() || ready.wait());
    QCOMPARE(page.fraFundAllocation->pnlAmount->caption(), u"Investment: 100.00%"_s);
}

ZEL_TEST_MAIN(tst_quotefunds)
#include "tst_quotefunds.moc"
