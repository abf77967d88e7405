// The fund allocation grid: entries in its cells and the values displayed afterwards.
// labels: x11
#include "AllocationWindow.h"
#include "Errors.h"

#include "data/Exceptions.h"
#include "funds/AllocationMath.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>

#include <functional>

using namespace Qt::StringLiterals;

Q_DECLARE_METATYPE(std::function<void(AllocationWindow &)>)

using Zel::Allocation::AmountOf;
using Zel::Allocation::PercentOf;

class TestAllocation : public ZelTest
{
    Q_OBJECT

private Q_SLOTS:
    void arithmetic()
    {
        QCOMPARE(AmountOf(money("33.33"), money("1000")), money("333.3"));
        QCOMPARE(AmountOf(money("98"), money("182.25")), money("178.605"));
        // Ties are rounded to even at the fourth decimal.
        QCOMPARE(AmountOf(money("50"), money("0.0001")), money("0"));
        QCOMPARE(AmountOf(money("50"), money("0.0003")), money("0.0002"));
        QCOMPARE(PercentOf(money("1"), money("3")), money("33.3333"));
        QCOMPARE(PercentOf(money("5"), money("0")), money("0"));
        QCOMPARE(AmountOf(money("5"), money("0")), money("0"));
        // A result out of range becomes the limit of the range.
        QCOMPARE(PercentOf(money("9999999999.99"), money("0.0001")), Currency::max());
        QCOMPARE(PercentOf(money("9999999999.99"), money("-0.0001")), Currency::min());
        QCOMPARE(AmountOf(money("999"), Currency::max()), Currency::max());

        const auto round = &TfraFundAllocation::RoundToTwoDecimalsCurrency;
        QCOMPARE(round(money("33.3333")), money("33.33"));
        QCOMPARE(round(money("0.125")), money("0.13"));
        QCOMPARE(round(money("0.005")), money("0.01"));
        // As a double, 1.005 x 100 is 100.49999999999999, just below half a cent.
        QCOMPARE(round(money("1.005")), money("1.00"));
        // The function adds half a cent and truncates towards zero, so negative values are rounded up.
        QCOMPARE(round(money("-33.3333")), money("-33.32"));
        QCOMPARE(round(money("-33.3366")), money("-33.33"));
        QCOMPARE(round(money("-0.01")), money("0"));
        QCOMPARE(round(money("0")), money("0"));
        QCOMPARE(round(Currency::max()), Currency::max());
        QCOMPARE(round(Currency::min()), Currency::min());
    }

    void designedState()
    {
        AllocationWindow window{QVariant()};
        TfraFundAllocation &frame = *window.frame;
        QCOMPARE(frame.pnlHeaderCaption->caption(), u"  < header caption comes here >"_s);
        QCOMPARE(window.remaining(), u"Remaining: 9,999,000,000.00 (100.00%) "_s);
        QCOMPARE(window.investment(), u"Investment Amount: 9,999,000,000.00 "_s);
        QCOMPARE(window.grid().ColCount(), 4);
        QCOMPARE(window.grid().Col(1).Heading(), QString());
        QCOMPARE(window.grid().Col(2).Heading(), u"Fund"_s);
        QCOMPARE(window.grid().Col(3).Heading(), u"Initial (%)"_s);
        QCOMPARE(window.grid().Col(4).Heading(), u"Initial (R)"_s);
        QCOMPARE(window.grid().Col(1).Width(), 18);
        QCOMPARE(window.grid().Col(3).Mask().Text(), u"[#][#][#].[#][#]"_s);
        QCOMPARE(window.grid().Col(4).Mask().Text(), u"*10[#].[#][#]"_s);
        QVERIFY(frame.Get_AllocByAmount());
        QCOMPARE(frame.Get_InvestmentAmount(), Currency());
        QCOMPARE(frame.Get_InvestmentPercent(), Currency());
        QCOMPARE(frame.Get_RemainingPercent(), Currency());
        QCOMPARE(frame.CurrentFundTerm(), -1);
        QCOMPARE(frame.CurrentFundID(), -1);
        QCOMPARE(frame.CurrentGroupTypeID(), -1);
        QCOMPARE(frame.CurrentFundGroupID(), 0);
        QCOMPARE(frame.cdsFunds->Params().ParamByName(u"pProductGroupID"_s).DataType,
                 TParamDataType::FixedChar);
        QCOMPARE(frame.cdsFundMessage->ProviderName(), u"dspFundMessage"_s);
        QCOMPARE(frame.imgFund->Count(), 1);
        window.open();
        QTRY_VERIFY(frame.fraFundToolBar->sbtInvested->isHidden());
        for (const TSpeedButton *button :
             {window.bar().sbtClear, window.bar().sbtAllocateAmount, window.bar().sbtResetToZero,
              window.bar().sbtRemove, window.bar().sbtDuplicate, window.bar().sbtGuarantee,
              window.bar().sbtFunds})
            QVERIFY2(!button->isEnabled(), qPrintable(button->objectName()));
        QCOMPARE(frame.pnlAmount->width(), frame.width() / 2);
    }

    // After Tab into the grid, typing goes into the first fund's cell of the mode's column.
    void typingStartsAtOnce()
    {
        for (const bool byAmount : {true, false}) {
            AllocationWindow window;
            window.frame->Set_AllocByAmount(byAmount);
            window.frame->Set_InvestmentAmount(1000);
            window.setupIds({4, 5});
            window.open();
            window.keys(u"10"_s);
            window.key(Qt::Key_Return);
            window.keys(u"20"_s);
            window.key(Qt::Key_Return);
            QCOMPARE(window.cell(byAmount ? 4 : 3, 1), u"10.00"_s);
            QCOMPARE(window.cell(byAmount ? 4 : 3, 2), u"20.00"_s);
            QCOMPARE(window.grid().CurrentRow(), 2);
            QCOMPARE(window.disagreement(), QString());
            // The cell is kept unless it is in the column of the former mode; then it moves to the other one.
            window.stand(2, 1);
            window.frame->SetupFundAllocation(window.funds, 7, &window.connection);
            QCOMPARE(window.grid().CurrentCol(), 2);
            window.stand(byAmount ? 4 : 3, 1);
            window.frame->Set_AllocByAmount(!byAmount);
            QCOMPARE(window.grid().CurrentCol(), byAmount ? 3 : 4);
        }
    }

    // Typing always goes into an editable column, whatever was changed while there was no row.
    void typingGoesOnInTheColumnOfTheMode()
    {
        AllocationWindow window;
        window.frame->Set_InvestmentAmount(1000);
        window.setupIds({1});
        window.open();
        window.stand(4, 1);
        window.frame->ClearFunds();
        window.frame->Set_AllocByAmount(false);
        window.frame->AddFundIDToList(2, {}, {});
        window.keys(u"10"_s);
        window.key(Qt::Key_Return);
        QCOMPARE(window.cell(3, 1), u"10.00"_s);
        // Hiding the current column, whose mode is no longer set.
        window.frame->Set_AllocByAmount(true);
        window.stand(3, 1);
        window.frame->Set_ShowColumn_Percent(false);
        window.keys(u"250"_s);
        window.key(Qt::Key_Return);
        QCOMPARE(window.cell(4, 1), u"250.00"_s);
        QCOMPARE(window.disagreement(), QString());
    }

    void percentTyped()
    {
        AllocationWindow window;
        window.frame->Set_AllocByAmount(false);
        window.frame->Set_InvestmentAmount(1000);
        window.setupIds({1, 2});
        window.open();
        QCOMPARE(window.investment(), u"Investment: 100.00%"_s);
        QCOMPARE(window.remaining(), u"Remaining: 100.00%"_s);
        window.stand(3, 1);
        window.keys(u"33"_s);
        QCOMPARE(window.cell(4, 1), u"330.00"_s); // each keystroke recalculates the row
        QCOMPARE(window.remaining(), u"Remaining: 67.00%"_s);
        window.keys(u",33"_s);
        window.key(Qt::Key_Return);
        QCOMPARE(window.cell(3, 1), u"33.33"_s);
        QCOMPARE(window.cell(4, 1), u"333.30"_s);
        QCOMPARE(window.remaining(), u"Remaining: 66.67%"_s);
        QCOMPARE(window.grid().CurrentRow(), 2);
        QCOMPARE(window.frame->Get_RemainingAmount(),
                 Currency(1000)); // by percent the remaining amount is not recalculated
        QCOMPARE(window.disagreement(), QString());

        // The record keeps four decimals; rounding the calculated side does not change the typed one.
        window.frame->Set_InvestmentAmount(money("182.25"));
        window.type(1, "98");
        QCOMPARE(window.frame->Funds()[0].Amount, money("178.605"));
        QCOMPARE(window.cell(4, 1), u"178.61"_s);
        window.type(2, "2");
        QCOMPARE(window.frame->Funds()[1].Amount, money("3.645"));
        QCOMPARE(window.cell(4, 2), u"3.65"_s);
        QCOMPARE(window.frame->Funds()[0].Percent, Currency(98));
        QCOMPARE(window.remaining(), u"Remaining: 0.00%"_s);
        QVERIFY(window.funds.SharesStorageWith(window.frame->Funds()));
        QCOMPARE(window.funds[0].Percent, Currency(98)); // the host's variable shares the list
    }

    void amountTyped()
    {
        AllocationWindow window;
        window.frame->Set_InvestmentAmount(money("1000000"));
        window.setupIds({1, 2, 3});
        window.open();
        QCOMPARE(window.investment(), u"Investment Amount: 1,000,000.00"_s);
        QCOMPARE(window.remaining(), u"Remaining: 1000000.00 (100.00%)"_s);
        window.type(1, "333333.33");
        QCOMPARE(window.cell(3, 1), u"33.33"_s);
        QCOMPARE(window.frame->Funds()[0].Percent, money("33.3333"));
        QCOMPARE(window.remaining(), u"Remaining: 666666.67 (66.67%)"_s);
        window.type(2, "700000");
        QCOMPARE(window.remaining(), u"Remaining: -33333.33 (-3.33%)"_s);
        QCOMPARE(window.disagreement(), QString());
        // A different investment recalculates the percentages; the amounts stay.
        window.frame->Set_InvestmentAmount(money("2000000"));
        QCOMPARE(window.cell(4, 1), u"333333.33"_s);
        QCOMPARE(window.cell(3, 1), u"16.67"_s);
        QCOMPARE(window.remaining(), u"Remaining: 966666.67 (48.33%)"_s);
        QCOMPARE(window.disagreement(), QString());
    }

    void nothingInvested()
    {
        AllocationWindow window;
        window.frame->Set_InvestmentAmount(0);
        window.setupIds({1});
        window.open();
        window.type(1, "50");
        QCOMPARE(window.cell(3, 1), u"0.00"_s);
        QCOMPARE(window.remaining(), u"Remaining: -50.00 (100.00%)"_s);
        window.frame->Set_AllocByAmount(false);
        window.type(1, "50");
        QCOMPARE(window.cell(4, 1), u"0.00"_s);
        QCOMPARE(window.remaining(), u"Remaining: 50.00%"_s);
    }

    void limits()
    {
        AllocationWindow window;
        window.frame->Set_AllocByAmount(false);
        window.frame->Set_InvestmentAmount(1000);
        window.setupIds({1, 2});
        window.open();
        window.stand(3, 1);
        window.keys(u"150"_s);
        QCOMPARE(window.remaining(), u"Remaining: -50.00%"_s);
        window.key(Qt::Key_Return);
        // A corrected entry corrects the whole row.
        QCOMPARE(window.cell(3, 1), u"100.00"_s);
        QCOMPARE(window.cell(4, 1), u"1000.00"_s);
        QCOMPARE(window.frame->Funds()[0].Percent, Currency(100));
        QCOMPARE(window.frame->Funds()[0].Amount, Currency(1000));
        QCOMPARE(window.remaining(), u"Remaining: 0.00%"_s);
        window.type(1, "100.00");
        QCOMPARE(window.cell(3, 1), u"100.00"_s);
        window.type(1, "100.01");
        QCOMPARE(window.cell(3, 1), u"100.00"_s);

        window.frame->Set_AllocByAmount(true);
        window.type(2, "1000000000.00");
        QCOMPARE(window.cell(4, 2), u"0.00"_s);
        QCOMPARE(window.cell(3, 2), u"0.00"_s);
        QCOMPARE(window.frame->Funds()[1].Amount, Currency());
        QCOMPARE(window.remaining(), u"Remaining: 0.00 (0.00%)"_s);
        window.type(2, "999999999.99");
        QCOMPARE(window.cell(4, 2), u"999999999.99"_s);
        QCOMPARE(window.disagreement(), QString());
    }

    void emptyAndOddInput()
    {
        AllocationWindow window;
        window.frame->Set_AllocByAmount(false);
        window.frame->Set_InvestmentAmount(1000);
        window.setupIds({1});
        window.open();
        window.type(1, "40");
        window.stand(3, 1);
        window.key(Qt::Key_F2);
        window.key(Qt::Key_Backspace); // the whole text is selected
        QCOMPARE(window.editor()->text(), QString());
        // An empty text is not a number yet: the fund keeps its value until the edit ends.
        QCOMPARE(window.frame->Funds()[0].Percent, Currency(40));
        QCOMPARE(window.remaining(), u"Remaining: 60.00%"_s);
        window.key(Qt::Key_Return);
        QCOMPARE(window.cell(3, 1), u"0.00"_s);
        QCOMPARE(window.cell(4, 1), u"0.00"_s);
        QCOMPARE(window.remaining(), u"Remaining: 100.00%"_s);
        QCOMPARE(window.frame->Funds()[0].Percent, Currency());
        window.type(1, "-5");
        QCOMPARE(window.cell(3, 1), u"5.00"_s);
        window.type(1, "1.2.3abc");
        QCOMPARE(window.cell(3, 1), u"1.23"_s);
        window.type(1, ".");
        QCOMPARE(window.cell(3, 1), u"0.00"_s);
        window.type(1, ".5");
        QCOMPARE(window.cell(3, 1), u"0.50"_s);
        QCOMPARE(window.cell(4, 1), u"5.00"_s);
        // A number with a trailing or leading separator already counts.
        window.stand(3, 1);
        window.keys(u"12."_s);
        QCOMPARE(window.frame->Funds()[0].Percent, Currency(12));
        window.keys(u"5"_s);
        QCOMPARE(window.frame->Funds()[0].Percent, money("12.5"));
        window.key(Qt::Key_Return);
        window.stand(3, 1);
        window.keys(u".7"_s);
        QCOMPARE(window.frame->Funds()[0].Percent, money("0.7"));
        window.key(Qt::Key_Return);
        QCOMPARE(window.cell(3, 1), u"0.70"_s);
        // Escape ends the edit; the entry stays.
        window.stand(3, 1);
        window.keys(u"77"_s);
        window.key(Qt::Key_Escape);
        QVERIFY(!window.grid().IsEditing());
        QCOMPARE(window.cell(3, 1), u"77.00"_s);
        QCOMPARE(window.frame->Funds()[0].Percent, Currency(77));
        QCOMPARE(window.disagreement(), QString());
        // Blanks set by code are not a number either.
        window.grid().SetCell(3, 1, u"  "_s);
        window.frame->FundGridCellEdit(nullptr, 3, 1, false);
        QCOMPARE(window.frame->Funds()[0].Percent, Currency(77));
        window.frame->FormatCell(nullptr, 3, 1);
        QCOMPARE(window.cell(3, 1), u"0.00"_s);
        QCOMPARE(window.frame->Funds()[0].Percent, Currency());
        QCOMPARE(window.disagreement(), QString());
    }

    // All thousands separators are read. An ambiguous number leaves the fund unchanged in all four decimals.
    void thousandsTyped()
    {
        AllocationWindow window;
        window.frame->Set_InvestmentAmount(money("10000000"));
        window.setup({fundRecord(1, money("333.3333")), fundRecord(2)});
        window.open();
        for (const auto &[typed, shown] :
             {std::pair("1,250,000", "1250000.00"), std::pair("1,234.56", "1234.56"),
              std::pair("1.234,56", "1234.56"), std::pair("1 250 000,50", "1250000.50"),
              std::pair("12,5", "12.50")}) {
            window.type(2, typed);
            QCOMPARE(window.cell(4, 2), QLatin1String(shown));
            QCOMPARE(window.frame->Funds()[1].Amount, money(shown));
            QCOMPARE(window.disagreement(), QString());
        }
        const QString remaining = window.remaining();
        const TFundRec before = window.frame->Funds()[0];
        QCOMPARE(before.Amount, money("333.3333"));
        window.stand(4, 1);
        window.keys(u"1,250"_s);
        QCOMPARE(window.frame->Funds()[0].Amount, before.Amount);
        QCOMPARE(window.remaining(), remaining);
        window.key(Qt::Key_Return);
        QVERIFY(!window.grid().IsEditing());
        QCOMPARE(window.cell(4, 1), u"333.33"_s);
        QCOMPARE(window.frame->Funds()[0].Amount, before.Amount);
        QCOMPARE(window.frame->Funds()[0].Percent, before.Percent);
        QCOMPARE(window.remaining(), remaining);
        QCOMPARE(window.disagreement(), QString());
        // A percentage is not an amount, and an amount is not a percentage.
        QGuiApplication::clipboard()->setText(u"5%"_s);
        window.stand(4, 1);
        window.key(Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(window.cell(4, 1), u"333.33"_s);
        window.frame->Set_AllocByAmount(false);
        QGuiApplication::clipboard()->setText(u"R 5"_s);
        window.stand(3, 2);
        const QString percent = window.cell(3, 2);
        window.key(Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(window.cell(3, 2), percent);
    }

    void pasting()
    {
        AllocationWindow window;
        window.frame->Set_InvestmentAmount(10'000);
        window.setupIds({1, 2});
        window.open();
        const auto paste = [&](const QString &text) {
            QGuiApplication::clipboard()->setText(text);
            window.key(Qt::Key_V, Qt::ControlModifier);
        };
        window.stand(4, 1);
        paste(u"R 1 234,56"_s);
        QCOMPARE(window.cell(4, 1), u"1234.56"_s);
        QCOMPARE(window.frame->Funds()[0].Amount, money("1234.56"));
        QCOMPARE(window.cell(3, 1), u"12.35"_s);
        QCOMPARE(window.remaining(), u"Remaining: 8765.44 (87.65%)"_s);
        // Texts that are not amounts change nothing: a column of several rows, letters, a negative amount.
        for (const char *refused : {"100.00\n200.00\n300.00\n", "1\t2", "abc", "-5", "1.2.3", ""}) {
            paste(QString::fromLatin1(refused));
            QCOMPARE(window.cell(4, 1), u"1234.56"_s);
        }
        paste(u"1 000 000 000,00"_s); // corrected like a typed entry
        QCOMPARE(window.cell(4, 1), u"0.00"_s);
        QCOMPARE(window.cell(3, 1), u"0.00"_s);
        QCOMPARE(window.remaining(), u"Remaining: 10000.00 (100.00%)"_s);
        window.frame->Set_AllocByAmount(false);
        window.stand(3, 2);
        paste(u"150 %"_s);
        QCOMPARE(window.cell(3, 2), u"100.00"_s);
        QCOMPARE(window.cell(4, 2), u"10000.00"_s);
        QCOMPARE(window.disagreement(), QString());
        window.stand(4, 2); // this column is read-only in this mode
        paste(u"5"_s);
        QCOMPARE(window.cell(4, 2), u"10000.00"_s);
        // Pasting into an open editor replaces the selection.
        window.stand(3, 2);
        window.key(Qt::Key_F2);
        paste(u"2,5"_s);
        QCOMPARE(window.editor()->text(), u"2.5"_s);
        QCOMPARE(window.cell(4, 2), u"250.00"_s);
        window.key(Qt::Key_Return);
        QCOMPARE(window.cell(3, 2), u"2.50"_s);
        QCOMPARE(window.disagreement(), QString());
    }

    // The host makes a change while a cell is edited: the entry is applied first.
    void editInProgress_data()
    {
        using Change = std::function<void(AllocationWindow &)>;
        QTest::addColumn<Change>("change");
        QTest::addColumn<QString>("percent");
        const auto row = [](const char *what, const char *percent, Change change) {
            QTest::newRow(what) << std::move(change) << QString::fromLatin1(percent);
        };
        row("mode", "25.00", [](AllocationWindow &w) { w.frame->Set_AllocByAmount(false); });
        row("amount", "50.00", [](AllocationWindow &w) { w.frame->Set_InvestmentAmount(500); });
        row("amount of nothing", "0.00", [](AllocationWindow &w) { w.frame->Set_InvestmentAmount(0); });
        row("percent column", "25.00", [](AllocationWindow &w) { w.frame->Set_ShowColumn_Percent(false); });
        row("amount column", "25.00", [](AllocationWindow &w) { w.frame->Set_ShowColumn_Amount(false); });
        row("the product's funds", "25.00",
            [](AllocationWindow &w) { w.frame->Set_FundsPerProductDataSet(fundPacket(4)); });
        row("another fund", "25.00", [](AllocationWindow &w) { w.frame->AddFundIDToList(9, 10, 1); });
        row("a fund less", "25.00",
            [](AllocationWindow &w) { w.frame->RemoveFundFromList(w.frame->Funds(), 1, true); });
        row("the list once more", "25.00",
            [](AllocationWindow &w) { w.frame->SetupFundAllocation(w.funds, 7, &w.connection); });
        row("dataset closed", "25.00", [](AllocationWindow &w) {
            w.frame->cdsFunds->Close();
            w.key(Qt::Key_Return);
        });
    }

    void editInProgress()
    {
        QFETCH(const std::function<void(AllocationWindow &)>, change);
        QFETCH(const QString, percent);
        AllocationWindow window;
        window.frame->Set_InvestmentAmount(1000);
        window.setup({fundRecord(1, 100), fundRecord(2, 40)});
        window.open();
        window.stand(4, 1);
        window.keys(u"250"_s);
        QVERIFY(window.grid().IsEditing());
        change(window);
        if (window.grid().IsEditing()) // the change did not end the edit
            window.key(Qt::Key_Return);
        QVERIFY(!window.grid().IsEditing());
        QCOMPARE(window.cell(4, 1), u"250.00"_s);
        QCOMPARE(window.cell(3, 1), percent);
        QCOMPARE(window.frame->Funds()[0].Amount, Currency(250));
        QCOMPARE(window.disagreement(), QString());
    }

    // The column widths at the frame's initialisation are those that are restored.
    void widthsOfTheDesign()
    {
        AllocationWindow window;
        window.grid().Col(2).SetWidth(300);
        window.grid().Col(3).SetWidth(70);
        window.frame->Set_ColumnCaption_Fund(u" Fonds "_s);
        window.open();
        QTRY_COMPARE(window.frame->Get_ColumnCaption_Fund(), u"Fonds"_s);
        const QList<int> atStart{window.grid().Col(2).Width(), window.grid().Col(3).Width(),
                                 window.grid().Col(4).Width()};
        window.grid().Col(2).SetWidth(11);
        window.grid().Col(3).SetWidth(12);
        window.grid().Col(4).SetWidth(13);
        window.frame->RestoreOriginalColumnWidths();
        QCOMPARE((QList<int>{window.grid().Col(2).Width(), window.grid().Col(3).Width(),
                             window.grid().Col(4).Width()}),
                 atStart);
    }

    void bookmarksOfOthers()
    {
        AllocationWindow window;
        window.setupIds({1, 2});
        // Displaying an empty list changes nothing: rows, filter and bookmarks stay.
        TFunds none;
        window.frame->DisplaySelectedFunds(window.frame->cdsFunds, none);
        QCOMPARE(window.disagreement(), QString());
        QCOMPARE(window.frame->cdsFunds->Filter(), u"FundID in (1,2)"_s);
        // Without a dataset an empty list does nothing, and another list throws.
        window.frame->DisplaySelectedFunds(nullptr, none);
        TFunds some{fundRecord(1), fundRecord(2)};
        QVERIFY_THROWS_EXCEPTION(EDatabaseError, window.frame->DisplaySelectedFunds(nullptr, some));
        QCOMPARE(some.Length(), 2);
        QCOMPARE(window.disagreement(), QString());
        // A bookmark of another dataset is removed from the record but not freed in either dataset.
        TClientDataSet other;
        other.SetData(fundPacket(3));
        TFundRec record = fundRecord(1);
        record.Bookmark = other.GetBookmark();
        TFunds list{record};
        TfraFundAllocation::DoFreeBookMarks(list, window.frame->cdsFunds);
        QVERIFY(!list[0].Bookmark);
        QCOMPARE(other.BookmarksHandedOut(), 1);
        QCOMPARE(window.frame->cdsFunds->BookmarksHandedOut(), 2);
        other.FreeBookmark(record.Bookmark);
    }

    void modes()
    {
        AllocationWindow window;
        QSignalSpy changes(window.frame, &TfraFundAllocation::AllocByAmountChanged);
        window.frame->Set_InvestmentAmount(1000);
        window.setupIds({1});
        window.open();
        QVERIFY(window.grid().Col(3).ReadOnly());
        QVERIFY(!window.grid().Col(4).ReadOnly());
        QCOMPARE(window.grid().Col(3).FontColor(), TColor::clSilver);
        QCOMPARE(window.grid().Col(4).FontColor(), TColor::clBlack);
        window.stand(4, 1);
        window.keys(u"250"_s); // the host changes the mode during this edit
        window.frame->Set_AllocByAmount(false);
        QVERIFY(!window.grid().IsEditing());
        QCOMPARE(window.cell(4, 1), u"250.00"_s);
        QCOMPARE(window.cell(3, 1), u"25.00"_s);
        QCOMPARE(window.remaining(), u"Remaining: 75.00%"_s);
        QCOMPARE(window.grid().Col(4).FontColor(), TColor::clSilver);
        window.stand(4, 1);
        window.keys(u"9"_s);
        QVERIFY(!window.grid().IsEditing());
        window.type(1, "40");
        window.frame->Set_AllocByAmount(true);
        QCOMPARE(window.remaining(), u"Remaining: 600.00 (60.00%)"_s);
        window.frame->Set_AllocByAmount(true);
        QCOMPARE(changes.count(), 2);
        QVERIFY(window.frame->setProperty("InvestmentAmount", Currency(5).toVariant()));
        QCOMPARE(window.frame->property("InvestmentAmount").value<Currency>(), Currency(5));
    }

    void extremeInvestments()
    {
        AllocationWindow window;
        window.frame->Set_InvestmentAmount(Currency::max());
        window.setupIds({1, 2});
        window.open();
        window.type(1, "999999999.99");
        QCOMPARE(window.remaining(), u"Remaining: 922336203685477.59 (100.00%)"_s);
        window.frame->Set_InvestmentAmount(Currency(-100));
        QCOMPARE(window.cell(3, 1), FormatFloat(FormatMask::TwoDecimals, money("-999999999.99")));
        window.type(1, "50");
        QCOMPARE(window.remaining(), u"Remaining: -150.00 (150.00%)"_s);
        window.frame->Set_InvestmentAmount(Currency::min());
        window.type(1, "999999999.99");
        QCOMPARE(window.frame->Get_RemainingAmount(), Currency::min());
        window.frame->Set_InvestmentAmount(Currency::fromRaw(1));
        window.type(1, "9999999.99");
        QCOMPARE(window.disagreement(), QString());
    }

    void displayOrder()
    {
        AllocationWindow window{fundPacket({{.id = 5}, {.id = 3}, {.id = 9}, {.id = 1}})};
        window.setup(
            {fundRecord(1, 10), fundRecord(77, 5), fundRecord(3, 20), fundRecord(1, 30), fundRecord(5, 40)});
        // Rows are in the dataset's order, repeated funds next to each other; funds that the product lacks
        // are dropped.
        TFunds &list = window.frame->Funds();
        QCOMPARE(TfraFundAllocation::BuildFundSet(list), (TDynamicArrayOfInt{5, 3, 1, 1}));
        QCOMPARE(list[2].Amount, Currency(30)); // the order that results from swapping records
        QCOMPARE(list[3].Amount, Currency(10));
        QCOMPARE(window.disagreement(), QString());
        QCOMPARE(window.grid().RowCount(), 4);
        QVERIFY(!window.funds.SharesStorageWith(list)); // the host's variable keeps the old list
        QCOMPARE(window.funds.Length(), 5);
        QCOMPARE(window.frame->Get_FundCount(), 4);
        QCOMPARE(window.frame->cdsFunds->Filter(), u"FundID in (1,77,3,1,5)"_s);
        QVERIFY(window.frame->cdsFunds->Filtered());
        QVERIFY(window.grid().Cell(1, 1).canConvert<QIcon>());
    }

    // Compares the order with a plain double loop over list and dataset, for random lists with duplicates.
    void displayOrderAgainstTheLoop()
    {
        QRandomGenerator random(4711);
        for (int trial = 0; trial < 60; ++trial) {
            QList<FundRow> rows;
            const int kinds = random.bounded(1, 9);
            for (int i = random.bounded(1, 12); i > 0; --i)
                rows.append(FundRow{.id = random.bounded(kinds) + 1});
            std::vector<TFundRec> records;
            for (int i = random.bounded(1, 12); i > 0; --i)
                records.push_back(fundRecord(random.bounded(kinds + 2) + 1, Currency(i)));
            std::vector<TFundRec> expected = records;
            std::size_t pos = 0;
            for (const FundRow &row : rows) {
                for (std::size_t i = pos; i < expected.size(); ++i) {
                    if (expected[i].FundID == row.id)
                        std::swap(expected[i], expected[pos++]);
                }
            }
            expected.resize(pos);
            AllocationWindow window{fundPacket(rows)};
            window.setup(QList<TFundRec>(records.begin(), records.end()));
            QCOMPARE(window.grid().RowCount(), static_cast<int>(pos));
            for (std::size_t i = 0; i < pos; ++i) {
                QCOMPARE(window.frame->Funds()[static_cast<int>(i)].FundID, expected[i].FundID);
                QCOMPARE(window.frame->Funds()[static_cast<int>(i)].Amount, expected[i].Amount);
            }
            QCOMPARE(window.disagreement(), QString());
        }
    }

    // The time for a list is proportional to its length, whatever its order and however often it repeats a
    // fund: ten times the funds take about ten times as long, not a hundred times.
    void longLists_data()
    {
        QTest::addColumn<int>("kinds"); // number of different funds
        QTest::addColumn<bool>("reversed");
        QTest::newRow("in order") << 0 << false;
        QTest::newRow("in reverse") << 0 << true;
        QTest::newRow("two funds in turn") << 2 << true;
        QTest::newRow("one fund") << 1 << false;
        QTest::newRow("each fund a hundred times") << 100 << true;
    }

    void longLists()
    {
        QFETCH(const int, kinds);
        QFETCH(const bool, reversed);
        constexpr int count = 10'000;
        std::vector<TFundRec> records;
        for (int i = 0; i < count; ++i) {
            const int place = reversed ? count - i : i + 1;
            records.push_back(fundRecord(kinds == 0 ? place : 1 + place % kinds, Currency(i)));
        }
        AllocationWindow large(fundPacket(kinds == 0 ? count : kinds));
        large.funds = TFunds(std::move(records));
        large.frame->SetupFundAllocation(large.funds, 7, &large.connection);
        QCOMPARE(large.grid().RowCount(), count);
        QCOMPARE(large.frame->Get_FundCount(), count);
        QCOMPARE(large.disagreement(), QString());
        Currency sum;
        for (int row = 1; row <= count; ++row) {
            sum += large.frame->Funds()[row - 1].Amount;
            QVERIFY(row == 1 || large.frame->Funds()[row - 2].FundID <= large.frame->Funds()[row - 1].FundID);
        }
        QCOMPARE(sum, Currency(count * (count - 1) / 2)); // every record appears once
    }

    void listsComeAndGo()
    {
        AllocationWindow window;
        window.frame->Set_InvestmentAmount(1000);
        window.setup({fundRecord(1, 100), fundRecord(2, 200)});
        window.open();
        QCOMPARE(window.remaining(), u"Remaining: 700.00 (70.00%)"_s);
        QCOMPARE(window.frame->cdsFunds->BookmarksHandedOut(), 2);
        // A new list frees the bookmarks of the old one.
        const TFunds old = window.funds;
        window.setup({fundRecord(3, 50)});
        QCOMPARE(window.frame->cdsFunds->BookmarksHandedOut(), 1);
        QVERIFY(!old[0].Bookmark);
        QCOMPARE(window.remaining(), u"Remaining: 950.00 (95.00%)"_s);
        // The same list again: no bookmark is handed out twice.
        window.frame->SetupFundAllocation(window.funds, 7, &window.connection);
        QCOMPARE(window.frame->cdsFunds->BookmarksHandedOut(), 1);
        // An open edit is applied to the list that it belongs to.
        window.stand(4, 1);
        window.keys(u"75"_s);
        const TFunds edited = window.funds;
        window.setup({});
        QCOMPARE(edited[0].Amount, Currency(75));
        QCOMPARE(window.grid().RowCount(), 0);
        QCOMPARE(window.remaining(), u"Remaining: 1000.00 (100.00%)"_s);
        QCOMPARE(window.frame->cdsFunds->BookmarksHandedOut(), 0);
        QVERIFY(!window.bar().sbtRemove->isEnabled());
        QVERIFY(!window.bar().sbtDuplicate->isEnabled());
        // The product offers none of the listed funds.
        window.setupIds({1});
        window.setupIds({88, 99});
        QCOMPARE(window.grid().RowCount(), 0);
        QCOMPARE(window.frame->Get_FundCount(), 0);
        QCOMPARE(window.remaining(), u"Remaining: 1000.00 (100.00%)"_s);
    }

    void datasetClosedUnderTheRows()
    {
        AllocationWindow window;
        window.frame->Set_InvestmentAmount(1000);
        window.setupIds({1, 2});
        window.open();
        window.frame->cdsFunds->Close();
        QCOMPARE(window.frame->cdsFunds->BookmarksLost(), 0);
        QVERIFY(!window.frame->Funds()[0].Bookmark);
        QVERIFY(!window.bar().sbtFunds->isEnabled());
        window.type(1, "100"); // the rows can still be edited
        QCOMPARE(window.remaining(), u"Remaining: 900.00 (90.00%)"_s);
        QCOMPARE(window.disagreement(), QString());
        window.frame->Set_InvestmentAmount(200);
        QCOMPARE(window.cell(3, 1), u"50.00"_s);
        QCOMPARE(window.disagreement(), QString());
        QVERIFY_THROWS_EXCEPTION(EDatabaseError, window.frame->AddFundIDToList(3, 0, 0));
        QCOMPARE(window.frame->Get_FundCount(), 2);
        QCOMPARE(window.disagreement(), QString());
        TFunds other{fundRecord(3)};
        QVERIFY_THROWS_EXCEPTION(EDatabaseError,
                                 window.frame->SetupFundAllocation(other, 7, &window.connection));
        QCOMPARE(window.grid().RowCount(), 0); // no outdated rows
        QCOMPARE(window.frame->Get_FundCount(), 0);
        QCOMPARE(other.Length(), 1);
        QCOMPARE(window.disagreement(), QString());
        window.frame->Set_FundsPerProductDataSet(fundPacket(5));
        QCOMPARE(window.grid().RowCount(), 0);
        window.frame->SetupFundAllocation(other, 7, &window.connection);
        QCOMPARE(window.grid().RowCount(), 1);
        QCOMPARE(window.disagreement(), QString());
    }

    // The error names the property that the host has to set.
    void fundsBeforeTheirPacket()
    {
        TfraFundAllocation frame;
        TFunds funds{fundRecord(1)};
        const auto names = [](const QString &message) {
            return message.contains(u"\"cdsFunds\" is not open"_s) &&
                   message.contains(u"FundsPerProductDataSet"_s);
        };
        QVERIFY(names(messageOf<EDatabaseError>([&] { frame.SetupFundAllocation(funds, 1, nullptr); })));
        QVERIFY(names(messageOf<EDatabaseError>([&] { frame.AddFundIDToList(1, 1, 1); })));
        QVERIFY(names(messageOf<EDatabaseError>([&] { frame.DisplaySelectedFunds(frame.cdsFunds, funds); })));
        QCOMPARE(frame.Get_FundCount(), 0);
        // Another dataset is named itself.
        TClientDataSet other;
        other.setObjectName(u"cdsOther"_s);
        QCOMPARE(messageOf<EDatabaseError>([&] { frame.DisplaySelectedFunds(&other, funds); }),
                 u"Dataset \"cdsOther\" is not open."_s);
    }

    void noDatasetAtAll()
    {
        TfraFundAllocation frame;
        TFunds funds{fundRecord(1)};
        const QString expected = u"There is no dataset to read the funds from."_s;
        QCOMPARE(messageOf<EDatabaseError>([&] { frame.DisplaySelectedFunds(nullptr, funds); }), expected);
        QCOMPARE(messageOf<EDatabaseError>([] { TfraFundAllocation::BuildFundSetFromDataSet(nullptr, 1); }),
                 expected);
        TFunds none;
        frame.DisplaySelectedFunds(nullptr, none); // needs no dataset
        TfraFundAllocation::DoFreeBookMarks(funds, nullptr);
    }

    void badPackets()
    {
        AllocationWindow window;
        window.setupIds({1, 2});
        window.open();
        QVERIFY_THROWS_EXCEPTION(EDatabaseError, window.frame->Set_FundsPerProductDataSet(u"rubbish"_s));
        QCOMPARE(window.disagreement(), QString());
        for (const char *field : {"FundID", "FundName", "FundTerm", "AllowAsGuarantee"}) {
            const QVariant packet =
                fundPacket({{.id = 1, .term = 60}, {.id = 2, .term = 60}}, QLatin1String(field));
            QVERIFY_THROWS_EXCEPTION(EDatabaseError, window.frame->Set_FundsPerProductDataSet(packet));
            QCOMPARE(window.disagreement(), QString());
        }
        window.frame->Set_FundsPerProductDataSet(fundPacket(4));
        QCOMPARE(window.grid().RowCount(), 2);
        QCOMPARE(window.disagreement(), QString());
    }

    void columnsShownAndSized()
    {
        AllocationWindow window;
        window.setupIds({1, 2});
        window.open(622);
        TtsGrid &grid = window.grid();
        const int available = grid.ClientWidth() - 18;
        const auto sum = [&] {
            int widths = 0;
            for (int column = 2; column <= 4; ++column)
                widths += grid.Col(column).Visible() ? grid.Col(column).Width() : 0;
            return widths;
        };
        QCOMPARE(sum(), available);
        window.frame->Set_ShowColumn_Percent(false);
        QVERIFY(window.frame->Get_AllocByAmount());
        QVERIFY(grid.isColumnHidden(2));
        QCOMPARE(sum(), available);
        window.frame->Set_ShowColumn_Percent(true);
        window.frame->Set_ShowColumn_Amount(false);
        QVERIFY(!window.frame->Get_AllocByAmount());
        QCOMPARE(sum(), available);
        window.frame->Set_ShowColumn_Amount(true);
        QVERIFY(!window.frame->Get_AllocByAmount());
        // Each width is a whole percentage of the available width, halves rounded to even; the fund column
        // gets the rest.
        window.frame->RestoreOriginalColumnWidths();
        window.frame->SizeGridColumns();
        const auto snapped = [&](double width) {
            return static_cast<int>(
                std::nearbyint(std::nearbyint(width / available * 100) / 100 * available));
        };
        const int narrow = grid.Col(3).Width();
        QCOMPARE(snapped(narrow), narrow);
        QCOMPARE(grid.Col(4).Width(), narrow);
        QCOMPARE(grid.Col(2).Width(), available - 2 * narrow);
        // The columns become narrower when the grid's scroll bar appears.
        QList<int> many;
        for (int id = 1; id <= 10; ++id)
            many.append(id);
        window.resize(622, 120);
        window.setupIds(many);
        QTRY_VERIFY(grid.verticalScrollBar()->isVisible());
        QTRY_COMPARE(sum(), grid.ClientWidth() - 18);
        window.frame->FrameResize();
        QCOMPARE(window.frame->pnlAmount->width(), window.frame->width() / 2);
        // Halves are rounded to even, both percentages and pixels.
        struct {
            int available, before, after;
        } const widths[] = {{400, 122, 120}, // 30.5 %
                            {400, 126, 128}, // 31.5 %
                            {350, 17, 18},   // 4.9 %, 17.5 pixels
                            {350, 24, 24},   // 6.9 %, 24.5 pixels
                            {500, 121, 120}, {600, 120, 120}};
        for (const auto &[room, before, after] : widths) {
            window.resize(window.width() + room + 18 - grid.ClientWidth(), window.height());
            QTRY_COMPARE(grid.ClientWidth(), room + 18);
            grid.Col(2).SetWidth(5);
            grid.Col(3).SetWidth(before);
            grid.Col(4).SetWidth(before);
            window.frame->SizeGridColumns();
            QCOMPARE(grid.Col(3).Width(), after);
            QCOMPARE(grid.Col(4).Width(), after);
            QCOMPARE(grid.Col(2).Width(), room - 2 * after); // the rest of the width
        }
        grid.Col(2).SetWidth(0); // a hidden column stays hidden
        window.frame->SizeGridColumns();
        QCOMPARE(grid.Col(2).Width(), 0);
    }

    // The current cell is always in a visible column, so the arrow keys work with any columns shown.
    void keysWithoutTheColumnOfTheMode()
    {
        struct {
            bool byAmount, percent, amount;
            int column; ///< the column that is used instead
        } const cases[] = {{false, false, true, 4}, {true, true, false, 3}, {false, false, false, 2}};
        for (const auto &[byAmount, percent, amount, column] : cases) {
            AllocationWindow window;
            window.frame->Set_ShowColumn_Percent(percent);
            window.frame->Set_ShowColumn_Amount(amount);
            window.frame->Set_AllocByAmount(byAmount);
            window.setupIds({1, 2, 3});
            window.open();
            QCOMPARE(window.grid().CurrentCol(), column);
            window.key(Qt::Key_Down);
            QCOMPARE(window.grid().CurrentRow(), 2);
            window.key(Qt::Key_Down);
            QCOMPARE(window.grid().CurrentRow(), 3);
            QCOMPARE(window.frame->CurrentFundID(), 3);
            window.key(Qt::Key_Up);
            QCOMPARE(window.grid().CurrentRow(), 2);
            // Changing the mode there and back with rows in the grid.
            window.frame->Set_AllocByAmount(!byAmount);
            window.frame->Set_AllocByAmount(byAmount);
            window.key(Qt::Key_Up);
            QCOMPARE(window.grid().CurrentRow(), 1);
            QVERIFY(window.grid().Col(window.grid().CurrentCol()).Visible());
            // When the column is shown again, typing goes into it.
            if (byAmount)
                window.frame->Set_ShowColumn_Amount(true);
            else
                window.frame->Set_ShowColumn_Percent(true);
            window.keys(u"7"_s);
            window.key(Qt::Key_Return);
            QCOMPARE(window.cell(byAmount ? 4 : 3, 1), u"7.00"_s);
        }
    }

    // The scroll bar of the area around the frame takes width from the columns, not only the grid's own.
    void scrollBarOfTheFrame()
    {
        QScrollArea area;
        auto *frame = new TfraFundAllocation;
        frame->setFixedSize(600, 400);
        area.setWidget(frame);
        area.resize(700, 500);
        area.show();
        QVERIFY(QTest::qWaitForWindowExposed(&area));
        const auto sum = [&] {
            return frame->FundGrid->Col(2).Width() + frame->FundGrid->Col(3).Width() +
                   frame->FundGrid->Col(4).Width();
        };
        frame->SizeGridColumns();
        QCOMPARE(sum(), frame->FundGrid->ClientWidth() - 18);
        area.resize(700, 200);
        QTRY_VERIFY(area.verticalScrollBar()->isVisible());
        frame->SizeGridColumns();
        QCOMPARE(sum(), frame->FundGrid->ClientWidth() - 18 - frame->FundGrid->ScrollBarWidth());
    }

    void captionsAndPanels()
    {
        AllocationWindow window;
        window.open();
        TfraFundAllocation &frame = *window.frame;
        QCOMPARE(frame.Get_ColumnCaption_Percent(), u"Initial (%)"_s);
        frame.Set_ColumnCaption_Fund(u"  Fonds "_s);
        frame.Set_ColumnCaption_Percent(u" P "_s);
        frame.Set_ColumnCaption_Amount(u"A"_s);
        QCOMPARE(window.grid().Col(2).Heading(), u"Fonds"_s);
        QCOMPARE(window.grid().Col(3).Heading(), u"P"_s);
        QCOMPARE(window.grid().Col(4).Heading(), u"A"_s);
        QCOMPARE(frame.property("ColumnCaption_Fund").toString(), u"  Fonds "_s);
        frame.Set_ShowToolBar(false);
        frame.Set_ShowStatusPanel(false);
        QVERIFY(!frame.pnlToolBar->isVisible());
        QVERIFY(!frame.pnlAllocationStatus->isVisible());
        frame.Set_ShowToolBar(true);
        frame.Set_ShowStatusPanel(true);
        QVERIFY(frame.pnlToolBar->isVisible());
        QVERIFY(frame.pnlAllocationStatus->isVisible());
        frame.Set_ShowButtonGuarantee(false);
        QVERIFY(!frame.Get_ShowButtonGuarantee());
        QVERIFY(window.bar().sbtGuarantee->isHidden());
    }

    void currentRowValues()
    {
        AllocationWindow window;
        QCOMPARE(window.frame->GetCurrentGridRowValue(4), Currency());
        window.frame->SetCurrentGridRowValue(4, 5); // does nothing without a row
        window.frame->Set_InvestmentAmount(200);
        window.setupIds({1, 2});
        window.stand(4, 2);
        window.frame->SetCurrentGridRowValue(4, money("50.005"));
        QCOMPARE(window.cell(4, 2), u"50.01"_s);
        QCOMPARE(window.frame->Funds()[1].Amount, money("50.005"));
        QCOMPARE(window.frame->GetCurrentGridRowValue(3), Currency(25));
        window.frame->SetCurrentGridRowValue(3, 500);
        QCOMPARE(window.cell(3, 2), u"100.00"_s);
        QCOMPARE(window.cell(4, 2), u"200.00"_s);
        QCOMPARE(window.disagreement(), QString());
        // A value set in the edited cell ends the edit; Enter does not restore the entry.
        window.open();
        window.stand(4, 1);
        window.keys(u"30"_s);
        window.frame->SetCurrentGridRowValue(4, 70);
        QVERIFY(!window.grid().IsEditing());
        QCOMPARE(window.cell(4, 1), u"70.00"_s);
        QCOMPARE(window.disagreement(), QString());
    }

    // Rows that the host adds to the grid have no record and must do no harm.
    void rowWithoutARecord()
    {
        AllocationWindow window;
        window.frame->Set_InvestmentAmount(100);
        window.setupIds({1});
        window.open();
        window.grid().AppendRow();
        window.type(2, "25");
        QCOMPARE(window.cell(3, 2), u"25.00"_s);
        QCOMPARE(window.remaining(), u"Remaining: 75.00 (75.00%)"_s);
        QVERIFY(!window.bar().sbtGuarantee->isEnabled());
        window.stand(4, 2);
        window.frame->CheckButtonStatus();
        window.frame->ResetValues();
        QCOMPARE(window.frame->Funds()[0].Amount, Currency());
    }

    void destructionGivesBookmarksBack()
    {
        auto window = std::make_unique<AllocationWindow>();
        window->setupIds({1, 2});
        window->open();
        window->stand(4, 1);
        window->keys(u"12"_s); // leaves an edit open
        const TFunds kept = window->funds;
        window.reset();
        QVERIFY(!kept[0].Bookmark);
        QCOMPARE(kept[0].Amount, Currency(12));
    }

    void darkPalette()
    {
        AllocationWindow window;
        window.setupIds({1, 2, 3});
        QPalette dark(QColor(0x30, 0x30, 0x30), QColor(0x26, 0x26, 0x26));
        window.setPalette(dark);
        window.open();
        const QModelIndex cell = window.grid().model()->index(0, 3);
        const QColor text = cell.data(Qt::ForegroundRole).value<QColor>();
        QVERIFY(text.lightness() > window.grid().palette().color(QPalette::Base).lightness() + 100);
    }
};

ZEL_TEST_MAIN(TestAllocation)
#include "tst_allocation.moc"
