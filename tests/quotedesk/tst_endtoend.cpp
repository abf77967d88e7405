// labels: x11
#include "ZelTest.h"

#include "Dialogs.h"
#include "Frames.h"
#include "SelectorDriver.h"
#include "catalogue/CatalogueDatabase.h"
#include "catalogue/CatalogueProviders.h"
#include "quote/QuoteAllocation.h"

#include "funds/frm_FundSelector.h"

#include <QSignalSpy>

using namespace Qt::StringLiterals;

using namespace QuoteDesk;

namespace
{

/// A product page of a host: catalogue, providers and an allocation frame on screen.
struct Page {
    CatalogueDatabase catalogue;
    CatalogueProviders providers{catalogue};
    QWidget window;
    QuoteAllocation *frame = new QuoteAllocation(&window);

    Page()
    {
        auto *const layout = new QVBoxLayout(&window);
        layout->addWidget(frame);
        window.resize(760, 460);
    }
    bool show()
    {
        QSignalSpy initialized(frame, &QuoteAllocation::initialized);
        return showActive(window) && (!initialized.isEmpty() || initialized.wait());
    }

    QString cell(int column, int row) const { return frame->FundGrid->CellText(column, row); }
    QStringList rows() const
    {
        QStringList result;
        for (int row = 1; row <= frame->FundGrid->RowCount(); ++row)
            result.append(QStringList{cell(2, row), cell(3, row), cell(4, row)}.join(u'|'));
        return result;
    }
    QString remaining() const { return frame->pnlRemainAmount->caption(); }
    void click(TSpeedButton *button) const { QTest::mouseClick(button, Qt::LeftButton); }
    /// Types into a cell and presses Enter.
    void type(int column, int row, const char *text) const
    {
        // Without a window manager the page is not activated when a dialog closes.
        frame->window()->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(frame->window()));
        frame->FundGrid->setFocus();
        frame->FundGrid->SetCurrentCell(column, row);
        // The first key opens the cell's editor, which gets the other keys.
        for (const char *key = text; *key; ++key)
            QTest::keyClick(QApplication::focusWidget(), *key);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    }
};

/// Clicks Funds and calls @p work with the fund selector; false when it did not open.
template <typename Work> bool withSelector(const Page &page, Work work)
{
    return inDialog<TfrmFundSelector>(
        [&] { page.click(page.frame->fraFundToolBar->sbtFunds); },
        [&](TfrmFundSelector &dialog) { work(SelectorDriver(*dialog.fraFundSelector)); });
}

} // namespace

class tst_endtoend : public ZelTest
{
    Q_OBJECT

private Q_SLOTS:
    void fromAnOldQuoteToAFullAllocation();
    void cancelledSelectionChangesNothing();
    void fromNothingByAmount();
};

void tst_endtoend::fromAnOldQuoteToAFullAllocation()
{
    Page page;
    QVERIFY(page.show());
    QuoteAllocation &frame = *page.frame;
    const TfraFundToolBar &buttons = *frame.fraFundToolBar;

    // The host loads a stored quote with two funds and one that is no longer in the catalogue.
    frame.Set_AllocByAmount(false);
    frame.Set_InvestmentAmount(10000);
    frame.WarningText = u" Ask the desk. "_s;
    frame.InfoText = u"Retirement funds"_s;
    frame.Set_FundsPerProductDataSet(page.providers.fundPacket(1));
    TFunds quote{{40, nullptr, 0, 25}, {999999, nullptr, 0, 5}, {12, nullptr, 0, 10}};
    frame.SetupFundAllocation(quote, 1, page.providers.connection());

    QCOMPARE(page.rows(),
             (QStringList{u"Karoo Equity Fund|10.00|1000.00"_s, u"Fynbos Flexible Fund|25.00|2500.00"_s}));
    QCOMPARE(page.remaining(), u"Remaining: 65.00%"_s);
    QCOMPARE(frame.pnlAmount->caption(), u"Investment: 100.00%"_s);
    QCOMPARE(frame.Get_FundCount(), 2);
    QCOMPARE(quote.Length(), 3);

    // The fund selector opens with the quote's funds in its list.
    const bool opened = withSelector(page, [](const SelectorDriver &selector) {
        QCOMPARE(selector.captions(), (QStringList{u"Karoo Equity Fund"_s, u"Fynbos Flexible Fund"_s}));
        // Groups that are not offered and have no funds are hidden. Offered groups without funds are marked
        // and explained by the note.
        QVERIFY(!selector.node("Income Portfolios"));
        QVERIFY(!selector.node("Preservation Property"));
        QVERIFY(selector.node("Preservation Equity"));
        QVERIFY(selector.node("Fixed Bonds *"));
        QVERIFY(selector.node("Multi-Manager Funds *"));
        QVERIFY(selector.frame.lblWarningMessage->isVisible());
        QVERIFY(selector.frame.lblWarningMessage->text().endsWith(
            LoadResString(TMessageText::resFixedBondAvailabilityNote) + u" Ask the desk."_s));
        QCOMPARE(selector.frame.lblInfoMessage->text(), u"Retirement funds"_s);

        selector.add("Term Guarantee 1 Years");
        selector.add("Opal Growth Strategy Fund A");
        selector.remove(1);
        QCOMPARE(selector.captions(), (QStringList{u"Karoo Equity Fund"_s, u"Term Guarantee 1 Years"_s,
                                                   u"Opal Growth Strategy Fund A"_s}));
        QTest::mouseClick(selector.frame.btnSelect, Qt::LeftButton);
    });
    QVERIFY(opened);

    // The grid has the new selection in the catalogue's order; the fund that was kept retains its share.
    QCOMPARE(page.rows(),
             (QStringList{u"Karoo Equity Fund|10.00|1000.00"_s, u"Opal Growth Strategy Fund A|0.00|0.00"_s,
                          u"Term Guarantee 1 Years|0.00|0.00"_s}));
    QCOMPARE(page.remaining(), u"Remaining: 90.00%"_s);

    // Typing a percentage calculates the amount and the captions.
    page.type(TfraFundAllocation::PercentColumn, 2, "33.33");
    QCOMPARE(page.rows().at(1), u"Opal Growth Strategy Fund A|33.33|3333.00"_s);
    QCOMPARE(page.remaining(), u"Remaining: 56.67%"_s);

    // The two buttons depend on the current row's fund.
    frame.FundGrid->SetCurrentCell(TfraFundAllocation::PercentColumn, 1);
    QVERIFY(!buttons.sbtGuarantee->isEnabled());
    QVERIFY(!buttons.sbtInvested->isVisible());
    QTest::keyClick(frame.FundGrid, Qt::Key_Down);
    QVERIFY(!buttons.sbtGuarantee->isEnabled());
    QVERIFY(buttons.sbtInvested->isVisible());
    QTest::keyClick(frame.FundGrid, Qt::Key_Down);
    QVERIFY(buttons.sbtGuarantee->isEnabled());
    QVERIFY(!buttons.sbtInvested->isVisible());

    // Allocate gives the remainder to the row without a share.
    page.click(buttons.sbtAllocateAmount);
    QCOMPARE(page.rows(), (QStringList{u"Karoo Equity Fund|10.00|1000.00"_s,
                                       u"Opal Growth Strategy Fund A|33.33|3333.00"_s,
                                       u"Term Guarantee 1 Years|56.67|5667.00"_s}));
    QCOMPARE(page.remaining(), u"Remaining: 0.00%"_s);

    // By amount the same list is in rand; an over-allocation shows as a negative remainder.
    frame.Set_AllocByAmount(true);
    page.type(TfraFundAllocation::AmountColumn, 2, "4000");
    QCOMPARE(page.rows().at(1), u"Opal Growth Strategy Fund A|40.00|4000.00"_s);
    QCOMPARE(page.remaining(), u"Remaining: -667.00 (-6.67%)"_s);
    QCOMPARE(frame.pnlAmount->caption(), u"Investment Amount: 10,000.00"_s);
    page.type(TfraFundAllocation::AmountColumn, 3, "0");
    page.click(buttons.sbtAllocateAmount);
    QCOMPARE(page.remaining(), u"Remaining: 0.00 (0.00%)"_s);

    // The host reads the list.
    const TFunds &saved = frame.Funds();
    QCOMPARE(saved.Length(), 3);
    QCOMPARE(saved[0].FundID, 12);
    QCOMPARE(saved[0].Amount, Currency(1000));
    QCOMPARE(saved[0].Percent, Currency(10));
    QCOMPARE(saved[1].Amount, Currency(4000));
    QCOMPARE(saved[1].Percent, Currency(40));
    QCOMPARE(saved[2].Amount, Currency(5000));
    QCOMPARE(saved[2].Percent, Currency(50));
    QCOMPARE(frame.cdsFunds->BookmarksHandedOut(), 3);
}

void tst_endtoend::cancelledSelectionChangesNothing()
{
    Page page;
    QVERIFY(page.show());
    page.frame->Set_InvestmentAmount(500);
    page.frame->Set_FundsPerProductDataSet(page.providers.fundPacket(3));
    TFunds quote{{12, nullptr, 100, 20}};
    page.frame->SetupFundAllocation(quote, 2, page.providers.connection());
    QVERIFY(withSelector(page, [](const SelectorDriver &selector) {
        selector.add("Karoo Property Fund");
        QCOMPARE(selector.captions().size(), 2);
        QTest::mouseClick(selector.frame.btnCancel, Qt::LeftButton);
    }));
    QCOMPARE(page.rows(), QStringList{u"Karoo Equity Fund|20.00|100.00"_s});
    QVERIFY(page.frame->Funds().SharesStorageWith(quote));
}

void tst_endtoend::fromNothingByAmount()
{
    Page page;
    QVERIFY(page.show());
    page.frame->Set_InvestmentAmount(Currency::fromText(u"100.00"_s));
    page.frame->Set_FundsPerProductDataSet(page.providers.fundPacket(2));
    TFunds quote;
    page.frame->SetupFundAllocation(quote, 1, page.providers.connection());
    QVERIFY(!page.frame->fraFundToolBar->sbtAllocateAmount->isEnabled());
    QVERIFY(withSelector(page, [](const SelectorDriver &selector) {
        QVERIFY(!selector.frame.btnSelect->isEnabled());
        selector.add("Karoo Equity Fund");
        selector.add("Karoo Equity Fund");
        selector.add("Stinkwood Equity Fund");
        selector.add("Preservation Core Property Fund");
        QCOMPARE(selector.captions().size(), 3);
        QTest::mouseClick(selector.frame.btnSelect, Qt::LeftButton);
    }));
    QCOMPARE(page.frame->FundGrid->RowCount(), 3);
    page.click(page.frame->fraFundToolBar->sbtAllocateAmount);
    QCOMPARE(page.rows(),
             (QStringList{u"Karoo Equity Fund|33.33|33.33"_s, u"Stinkwood Equity Fund|33.33|33.33"_s,
                          u"Preservation Core Property Fund|33.34|33.34"_s}));
    QCOMPARE(page.remaining(), u"Remaining: 0.00 (0.00%)"_s);
}

ZEL_TEST_MAIN(tst_endtoend)
#include "tst_endtoend.moc"
