// The allocation commands with real clicks and keys, and the operations on the fund list.
#include "AllocationWindow.h"

#include "Frames.h"
#include "SelectorCatalogue.h"
#include "SelectorDriver.h"
#include "data/Exceptions.h"

#include <QSignalSpy>

#include <limits>

using namespace Qt::StringLiterals;

class TestCommands : public ZelTest
{
    Q_OBJECT

    static QStringList amounts(const AllocationWindow &window)
    {
        QStringList texts;
        for (int row = 1; row <= window.grid().RowCount(); ++row)
            texts.append(window.cell(4, row));
        return texts;
    }
    static QList<int> oneTo(int count)
    {
        QList<int> ids;
        for (int id = 1; id <= count; ++id)
            ids.append(id);
        return ids;
    }

private Q_SLOTS:
    void allocate()
    {
        AllocationWindow window;
        window.frame->Set_InvestmentAmount(100);
        window.setupIds({1, 2, 3});
        window.open();
        AllocationWindow::click(window.bar().sbtAllocateAmount);
        QCOMPARE(amounts(window), (QStringList{u"33.33"_s, u"33.33"_s, u"33.34"_s}));
        QCOMPARE(window.remaining(), u"Remaining: 0.00 (0.00%)"_s);
        QCOMPARE(window.disagreement(), QString());
        AllocationWindow::click(window.bar().sbtAllocateAmount); // no row is 0: nothing happens
        QCOMPARE(window.cell(4, 3), u"33.34"_s);
        window.type(2, "0");
        window.type(1, "10");
        AllocationWindow::click(window.bar().sbtAllocateAmount); // the only row with 0 gets everything
        QCOMPARE(window.cell(4, 2), u"56.66"_s);
        // An open edit is applied, and its row keeps the entry.
        AllocationWindow::click(window.bar().sbtResetToZero);
        window.stand(4, 1);
        window.keys(u"40"_s);
        AllocationWindow::click(window.bar().sbtAllocateAmount);
        QVERIFY(!window.grid().IsEditing());
        QCOMPARE(amounts(window), (QStringList{u"40.00"_s, u"30.00"_s, u"30.00"_s}));
        QCOMPARE(window.disagreement(), QString());
    }

    void allocateByPercent()
    {
        AllocationWindow window;
        window.frame->Set_AllocByAmount(false);
        window.frame->Set_InvestmentAmount(100);
        window.setupIds({1, 2, 3});
        window.open();
        AllocationWindow::click(window.bar().sbtAllocateAmount);
        // Allocate calculates amounts; the percentages follow from them.
        QCOMPARE(amounts(window), (QStringList{u"33.33"_s, u"33.33"_s, u"33.34"_s}));
        QCOMPARE(window.cell(3, 3), u"33.34"_s);
        QCOMPARE(window.remaining(), u"Remaining: 0.00%"_s);
        QCOMPARE(window.disagreement(), QString());
    }

    // The remainder is calculated from the amounts, whatever was edited last. Only rows without a percentage
    // get a share.
    void allocateByPercentWhatIsLeft()
    {
        AllocationWindow window;
        window.frame->Set_AllocByAmount(false);
        window.frame->Set_InvestmentAmount(1000);
        window.setupIds({1, 2, 3});
        window.open();
        window.type(2, "40");
        AllocationWindow::click(window.bar().sbtAllocateAmount);
        QCOMPARE(amounts(window), (QStringList{u"300.00"_s, u"400.00"_s, u"300.00"_s}));
        QCOMPARE(window.remaining(), u"Remaining: 0.00%"_s);
        QCOMPARE(window.disagreement(), QString());
        // Reset sets the percentages to 0; the remaining amount keeps the value that Allocate calculated.
        AllocationWindow::click(window.bar().sbtResetToZero);
        QCOMPARE(window.remaining(), u"Remaining: 100.00%"_s);
        QCOMPARE(window.frame->Get_RemainingAmount(), Currency());
        // With an investment of 0 every amount is 0, and a row keeps its percentage.
        window.frame->Set_InvestmentAmount(0);
        window.type(1, "25");
        AllocationWindow::click(window.bar().sbtAllocateAmount);
        QCOMPARE(window.cell(3, 1), u"25.00"_s);
        QCOMPARE(window.cell(3, 2), u"0.00"_s);
    }

    void vectors()
    {
        AllocationWindow window(fundPacket(150));
        window.open();
        window.frame->Set_InvestmentAmount(100);
        window.setupIds(oneTo(7));
        AllocationWindow::click(window.bar().sbtAllocateAmount);
        QCOMPARE(amounts(window).mid(0, 6), QStringList(6, u"14.29"_s));
        QCOMPARE(window.cell(4, 7), u"14.26"_s);
        QCOMPARE(window.frame->Funds()[0].Amount, money("14.29")); // the record has whole cents, too
        QCOMPARE(window.remaining(), u"Remaining: 0.00 (0.00%)"_s);

        window.frame->Set_InvestmentAmount(money("0.03"));
        window.setupIds(oneTo(5));
        AllocationWindow::click(window.bar().sbtAllocateAmount);
        // 0.03 / 5 is 0.006, so the rounded shares exceed the investment. The last row's -0.01 is rounded
        // towards zero, and the over-allocation stays visible.
        QCOMPARE(amounts(window).mid(0, 4), QStringList(4, u"0.01"_s));
        QCOMPARE(window.cell(4, 5), u"0.00"_s);
        QCOMPARE(window.remaining(), u"Remaining: -0.01 (-33.33%)"_s);

        window.frame->Set_InvestmentAmount(1);
        window.setupIds(oneTo(150));
        AllocationWindow::click(window.bar().sbtAllocateAmount);
        QCOMPARE(amounts(window).mid(0, 149), QStringList(149, u"0.01"_s));
        QCOMPARE(window.cell(4, 150), u"-0.48"_s);
        QCOMPARE(window.remaining(), u"Remaining: -0.01 (-1.00%)"_s);

        window.frame->Set_InvestmentAmount(1'000'000);
        window.setupIds(oneTo(3));
        window.type(2, "33333.33");
        AllocationWindow::click(window.bar().sbtAllocateAmount);
        QCOMPARE(amounts(window), (QStringList{u"483333.34"_s, u"33333.33"_s, u"483333.33"_s}));
        QCOMPARE(window.remaining(), u"Remaining: 0.00 (0.00%)"_s);
        QCOMPARE(window.disagreement(), QString());

        // An amount that no cell can hold becomes 0, even at the limit of Currency.
        const ReportCatcher reported;
        window.frame->Set_InvestmentAmount(Currency::max());
        window.setupIds({1});
        AllocationWindow::click(window.bar().sbtAllocateAmount);
        QCOMPARE(reported.messages, QStringList());
        QCOMPARE(amounts(window), QStringList{u"0.00"_s});
        QCOMPARE(window.disagreement(), QString());
    }

    void reset()
    {
        AllocationWindow window;
        window.frame->Set_InvestmentAmount(100);
        window.setup({fundRecord(1, 10), fundRecord(2, 20)});
        window.open();
        AllocationWindow::click(window.bar().sbtResetToZero);
        QCOMPARE(amounts(window), QStringList(2, u"0.00"_s));
        QCOMPARE(window.remaining(), u"Remaining: 100.00 (100.00%)"_s);
        QCOMPARE(window.disagreement(), QString());
        window.frame->Set_AllocByAmount(false);
        window.type(1, "70");
        AllocationWindow::click(window.bar().sbtResetToZero);
        QCOMPARE(window.remaining(), u"Remaining: 100.00%"_s);
        QCOMPARE(window.disagreement(), QString());
        // Reset also resets an edited cell; a later Enter does not restore the entry.
        window.stand(3, 2);
        window.keys(u"15"_s);
        AllocationWindow::click(window.bar().sbtResetToZero);
        window.key(Qt::Key_Return);
        QCOMPARE(window.cell(3, 2), u"0.00"_s);
        QCOMPARE(window.remaining(), u"Remaining: 100.00%"_s);
        QCOMPARE(window.disagreement(), QString());
    }

    void removeAndClear()
    {
        AllocationWindow window;
        window.frame->Set_InvestmentAmount(100);
        window.setup({fundRecord(1, 10), fundRecord(2, 20), fundRecord(3, 30)});
        window.open();
        window.stand(4, 2);
        AllocationWindow::click(window.bar().sbtRemove);
        QCOMPARE(TfraFundAllocation::BuildFundSet(window.frame->Funds()), (TDynamicArrayOfInt{1, 3}));
        QCOMPARE(window.funds.Length(), 3); // the host's variable keeps the former list
        QVERIFY(!window.funds[1].Bookmark); // its record has no freed bookmark
        QCOMPARE(window.remaining(), u"Remaining: 60.00 (60.00%)"_s);
        QCOMPARE(window.disagreement(), QString());
        window.key(Qt::Key_Delete);
        QCOMPARE(TfraFundAllocation::BuildFundSet(window.frame->Funds()), TDynamicArrayOfInt{1});
        // In an edited cell the key goes to the editor.
        window.key(Qt::Key_F2);
        window.key(Qt::Key_Delete);
        QCOMPARE(window.grid().RowCount(), 1);
        window.keys(u"5"_s);
        window.key(Qt::Key_Return);
        QCOMPARE(window.cell(4, 1), u"5.00"_s);
        AllocationWindow::click(window.bar().sbtRemove);
        QCOMPARE(window.grid().RowCount(), 0);
        QCOMPARE(window.frame->Get_FundCount(), 0);
        for (const TSpeedButton *button : {window.bar().sbtClear, window.bar().sbtAllocateAmount,
                                           window.bar().sbtResetToZero, window.bar().sbtRemove})
            QVERIFY2(!button->isEnabled(), qPrintable(button->objectName()));
        QCOMPARE(window.remaining(), u"Remaining: 100.00 (100.00%)"_s);

        window.setupIds(oneTo(5));
        QVERIFY(window.bar().sbtClear->isEnabled());
        window.stand(4, 3);
        window.keys(u"7"_s);
        QSignalSpy counts(window.frame, &TfraFundAllocation::FundCountChanged);
        const TFunds before = window.frame->Funds();
        AllocationWindow::click(window.bar().sbtClear);
        QCOMPARE(window.grid().RowCount(), 0);
        QCOMPARE(window.frame->Get_FundCount(), 0);
        QCOMPARE(counts.count(), 1);
        QCOMPARE(before.Length(), 5);
        for (const TFundRec &record : before)
            QVERIFY(!record.Bookmark);
        // The columns fill the grid, whatever their former widths.
        window.setupIds({1});
        for (int column = 2; column <= 4; ++column)
            window.grid().Col(column).SetWidth(40);
        AllocationWindow::click(window.bar().sbtClear);
        QCOMPARE(window.grid().Col(2).Width() + window.grid().Col(3).Width() + window.grid().Col(4).Width(),
                 window.grid().ClientWidth() - window.grid().Col(1).Width() - window.grid().RowBarWidth());
        QCOMPARE(window.frame->cdsFunds->BookmarksHandedOut(), 0);
        QCOMPARE(window.remaining(), u"Remaining: 100.00 (100.00%)"_s);
    }

    // The edited cell is empty when its fund is removed: ending the edit must not set the next fund, which
    // moves to its row, to 0.
    void removeWhileEditing()
    {
        AllocationWindow window;
        window.frame->Set_InvestmentAmount(100);
        window.setup({fundRecord(1, 10), fundRecord(2, 20), fundRecord(3, 30)});
        window.open();
        window.stand(4, 1);
        window.key(Qt::Key_F2);
        window.key(Qt::Key_Backspace);
        AllocationWindow::click(window.bar().sbtRemove);
        QCOMPARE(amounts(window), (QStringList{u"20.00"_s, u"30.00"_s}));
        QCOMPARE(window.remaining(), u"Remaining: 50.00 (50.00%)"_s);
        QCOMPARE(window.disagreement(), QString());
    }

    void removeByIndex()
    {
        AllocationWindow window;
        window.setupIds({1, 2, 3});
        TfraFundAllocation &frame = *window.frame;
        frame.RemoveFundFromList(frame.Funds(), 2, true); // not the current row
        QCOMPARE(TfraFundAllocation::BuildFundSet(frame.Funds()), (TDynamicArrayOfInt{1, 2}));
        QCOMPARE(window.disagreement(), QString());
        TFunds before = frame.Funds();
        frame.RemoveFundFromList(frame.Funds(), 3, true); // beyond the end: nothing happens
        QVERIFY(before.SharesStorageWith(frame.Funds()));
        frame.RemoveFundFromList(frame.Funds(), 2, false); // the length: removes nothing, but copies
        QVERIFY(!before.SharesStorageWith(frame.Funds()));
        QCOMPARE(TfraFundAllocation::BuildFundSet(frame.Funds()), (TDynamicArrayOfInt{1, 2}));
        QCOMPARE(window.disagreement(), QString());
        frame.RemoveFundFromList(frame.Funds(), 0, false);
        QCOMPARE(window.grid().RowCount(), 2); // the caller removes the grid's row
        QCOMPARE(frame.cdsFunds->BookmarksHandedOut(), 1);
        TFunds own;
        frame.RemoveFundFromList(own, 0, false);
        QCOMPARE(own.Length(), 0);
    }

    // An index outside the list removes no row, so each row still belongs to its fund.
    void removeOutsideTheList()
    {
        for (const int index : {3, 4, -1, std::numeric_limits<int>::min()}) {
            AllocationWindow window;
            window.frame->Set_InvestmentAmount(100);
            window.setup({fundRecord(1, 10), fundRecord(2, 20), fundRecord(3, 30)});
            window.open();
            window.stand(4, 2);
            TfraFundAllocation &frame = *window.frame;
            frame.RemoveFundFromList(frame.Funds(), index, true);
            QCOMPARE(TfraFundAllocation::BuildFundSet(frame.Funds()), (TDynamicArrayOfInt{1, 2, 3}));
            QCOMPARE(frame.cdsFunds->BookmarksHandedOut(), 3);
            QCOMPARE(window.grid().RowCount(), 3);
            QCOMPARE(window.grid().CurrentRow(), 2);
            QCOMPARE(window.remaining(), u"Remaining: 40.00 (40.00%)"_s);
            window.type(3, "35");
            QCOMPARE(frame.Funds()[2].Amount, money("35"));
            QCOMPARE(frame.Funds()[1].Amount, money("20"));
            QCOMPARE(window.disagreement(), QString());
        }
        AllocationWindow empty;
        empty.setup({});
        empty.frame->RemoveFundFromList(empty.frame->Funds(), 0, true);
        QCOMPARE(empty.disagreement(), QString());
    }

    // The host removes from its own variable, which shares the frame's list; another list has no rows in the
    // grid.
    void removeFromTheHostsVariable()
    {
        AllocationWindow window;
        window.frame->Set_InvestmentAmount(100);
        window.setup({fundRecord(1, 10), fundRecord(2, 20), fundRecord(3, 30)});
        window.frame->RemoveFundFromList(window.funds, 0, true);
        QCOMPARE(TfraFundAllocation::BuildFundSet(window.funds), (TDynamicArrayOfInt{2, 3}));
        QCOMPARE(TfraFundAllocation::BuildFundSet(window.frame->Funds()), (TDynamicArrayOfInt{2, 3}));
        QCOMPARE(window.remaining(), u"Remaining: 50.00 (50.00%)"_s);
        QCOMPARE(window.disagreement(), QString());
        TFunds anothers{fundRecord(2), fundRecord(3)};
        window.frame->RemoveFundFromList(anothers, 0, true);
        QCOMPARE(anothers.Length(), 1);
        QCOMPARE(window.grid().RowCount(), 2);
        QCOMPARE(window.disagreement(), QString());
    }

    // FundCountChanged is emitted last: list, grid and remainder have changed already.
    void theCountIsToldLast()
    {
        AllocationWindow window;
        window.frame->Set_InvestmentAmount(100);
        QStringList wrong;
        QList<int> counts;
        connect(window.frame, &TfraFundAllocation::FundCountChanged, this, [&](int count) {
            counts.append(count);
            wrong.append(window.disagreement());
            if (window.frame->Get_RemainingAmount() != window.leftOf(100, 4))
                wrong.append(window.remaining());
        });
        window.setup({fundRecord(1, 10), fundRecord(2, 20), fundRecord(3, 30)});
        window.open();
        window.frame->AddFundIDToList(4, 5, {});
        AllocationWindow::click(window.bar().sbtRemove);
        AllocationWindow::click(window.bar().sbtClear);
        wrong.removeAll(QString());
        QCOMPARE(counts, (QList<int>{3, 4, 3, 0}));
        QCOMPARE(wrong, QStringList());
    }

    // The provider fails for the fund that becomes current: the removal is completed nevertheless.
    void removalWithoutAnAnswer()
    {
        AllocationWindow window{
            fundPacket({{.id = 1}, {.id = 2, .group = 11}, {.id = 3, .group = 12}, {.id = 4}})};
        window.frame->Set_InvestmentAmount(100);
        window.setup({fundRecord(1, 10), fundRecord(2, 20), fundRecord(3, 30), fundRecord(4, 40)});
        window.open();
        window.connection.RegisterProvider(u"dspFundMessage"_s, [](const TParams &) -> TDataPacket {
            throw EDatabaseError(u"The line is dead."_s);
        });
        QSignalSpy counts(window.frame, &TfraFundAllocation::FundCountChanged);
        QVERIFY_THROWS_EXCEPTION(EDatabaseError,
                                 window.frame->RemoveFundFromList(window.frame->Funds(), 0, true));
        QCOMPARE(window.grid().RowCount(), 3);
        QCOMPARE(window.remaining(), u"Remaining: 10.00 (10.00%)"_s);
        QCOMPARE(counts.count(), 1);
        QCOMPARE(window.disagreement(), QString());
        const ReportCatcher reported;
        AllocationWindow::click(window.bar().sbtRemove);
        QCOMPARE(reported.messages, QStringList{u"The line is dead."_s});
        QCOMPARE(window.remaining(), u"Remaining: 30.00 (30.00%)"_s);
        QCOMPARE(window.disagreement(), QString());
    }

    // The same when rows are displayed again: buttons and signals are up to date in spite of the error.
    void rowsWithoutAnAnswer()
    {
        AllocationWindow window{fundPacket({{.id = 1, .group = 11}, {.id = 2}})};
        TfraFundAllocation &frame = *window.frame;
        frame.Set_InvestmentAmount(100);
        window.setup({});
        window.open();
        window.connection.RegisterProvider(u"dspFundMessage"_s, [](const TParams &) -> TDataPacket {
            throw EDatabaseError(u"The line is dead."_s);
        });
        const auto buttonsAre = [&window](bool enabled) {
            for (const TSpeedButton *button : {window.bar().sbtClear, window.bar().sbtAllocateAmount,
                                               window.bar().sbtResetToZero, window.bar().sbtRemove}) {
                if (button->isEnabled() != enabled)
                    return false;
            }
            return true;
        };
        QSignalSpy counts(&frame, &TfraFundAllocation::FundCountChanged);
        QSignalSpy investments(&frame, &TfraFundAllocation::InvestmentAmountChanged);
        QVERIFY(buttonsAre(false));
        QVERIFY_THROWS_EXCEPTION(EDatabaseError, frame.AddFundIDToList(1, 10, {}));
        QCOMPARE(window.grid().RowCount(), 1);
        QVERIFY(buttonsAre(true));
        QCOMPARE(counts.count(), 1);
        QVERIFY_THROWS_EXCEPTION(EDatabaseError, frame.Set_InvestmentAmount(200));
        QCOMPARE(investments.count(), 1);
        QCOMPARE(window.cell(3, 1), u"5.00"_s);
        QCOMPARE(window.remaining(), u"Remaining: 190.00 (95.00%)"_s);
        QCOMPARE(window.disagreement(), QString());
        // A list that cannot be displayed is not kept.
        counts.clear();
        QVERIFY_THROWS_EXCEPTION(EDatabaseError, window.setupIds({1}));
        QCOMPARE(window.grid().RowCount(), 0);
        QVERIFY(buttonsAre(false));
        QVERIFY(!counts.isEmpty());
        QCOMPARE(counts.last(), QVariantList{0});
        QCOMPARE(window.disagreement(), QString());
    }

    void listOperations()
    {
        TFunds list{fundRecord(1), fundRecord(2), fundRecord(3)};
        TfraFundAllocation::MoveFundInList(list, 0, 2);
        QCOMPARE(TfraFundAllocation::BuildFundSet(list), (TDynamicArrayOfInt{3, 2, 1}));
        for (const auto &[a, b] : {std::pair{0, 3}, std::pair{-1, 0}, std::pair{1, 1}, std::pair{3, 3}})
            TfraFundAllocation::MoveFundInList(list, a, b);
        QCOMPARE(TfraFundAllocation::BuildFundSet(list), (TDynamicArrayOfInt{3, 2, 1}));
        QVERIFY(TfraFundAllocation::FundInList(2, {1, 2}));
        QVERIFY(!TfraFundAllocation::FundInList(3, {1, 2}));
        QVERIFY(!TfraFundAllocation::FundInList(0, {}));
        TFunds none; // all operations accept an empty list
        TfraFundAllocation::MoveFundInList(none, 0, 0);
        TfraFundAllocation::MoveFundInList(none, 0, 1);
        TClientDataSet dataset;
        TfraFundAllocation::DoFreeBookMarks(none, &dataset);
        QCOMPARE(none.Length(), 0);
        QCOMPARE(TfraFundAllocation::RemoveFromSet({}, 1), TDynamicArrayOfInt());
        QCOMPARE(TfraFundAllocation::RemoveFromSet({1, 2, 1, 3}, 1), (TDynamicArrayOfInt{2, 3}));
        TDynamicArrayOfInt target{1, 2};
        TfraFundAllocation::ConcatDynamicArraySet(target, {2, 3});
        QCOMPARE(target, (TDynamicArrayOfInt{1, 2, 2, 3}));
    }

    void addFund()
    {
        AllocationWindow window;
        window.frame->Set_InvestmentAmount(100);
        window.setupIds({5});
        window.frame->AddFundIDToList(2, 25, 99);
        QCOMPARE(TfraFundAllocation::BuildFundSet(window.frame->Funds()), (TDynamicArrayOfInt{2, 5}));
        QCOMPARE(window.cell(4, 1), u"25.00"_s);
        QCOMPARE(window.cell(3, 1), u"25.00"_s); // by amount the percentage is calculated
        QCOMPARE(window.disagreement(), QString());
        window.frame->AddFundIDToList(999, 25, 99); // the product does not offer it
        QCOMPARE(window.frame->Get_FundCount(), 2);
        QCOMPARE(window.disagreement(), QString());
        QVERIFY(!window.frame->cdsFunds->ControlsDisabled()); // the dataset's listeners are not muted
    }

    // The first fund of an empty list: the columns get their designed widths, and the commands are enabled.
    void addTheFirstFund()
    {
        AllocationWindow window;
        window.setup({});
        window.open();
        QVERIFY(!window.bar().sbtClear->isEnabled());
        window.frame->RestoreOriginalColumnWidths();
        window.frame->SizeGridColumns();
        const auto widths = [&window] {
            return QList<int>{window.grid().Col(2).Width(), window.grid().Col(3).Width(),
                              window.grid().Col(4).Width()};
        };
        const QList<int> sized = widths();
        const TFunds ofTheHost = window.funds;
        window.grid().Col(3).SetWidth(20);
        window.grid().Col(4).SetWidth(30);
        window.frame->AddFundIDToList(2, 25, {});
        QCOMPARE(widths(), sized);
        QCOMPARE(ofTheHost.Length(), 0); // the frame makes a new list
        for (const TSpeedButton *button : {window.bar().sbtClear, window.bar().sbtAllocateAmount,
                                           window.bar().sbtResetToZero, window.bar().sbtRemove})
            QVERIFY2(button->isEnabled(), qPrintable(button->objectName()));
    }

    void incomeSpecified()
    {
        AllocationWindow window;
        window.frame->Set_InvestmentAmount(100);
        window.setup({fundRecord(1, 10), fundRecord(2, 20)});
        window.open();
        window.stand(4, 1);
        window.keys(u"30"_s);
        const QString remaining = u"Remaining: 50.00 (50.00%)"_s;
        QCOMPARE(window.remaining(), remaining);
        window.frame->AllocateIncomeSpecifiedForNIT({money("12.3456"), 7, 8});
        QVERIFY(!window.grid().IsEditing());
        QCOMPARE(window.cell(3, 1), u"12.35"_s);
        QCOMPARE(window.frame->Funds()[0].Percent, money("12.3456"));
        QCOMPARE(window.cell(4, 1), u"30.00"_s); // amount and remainder are not recalculated
        QCOMPARE(window.remaining(), remaining);
        window.frame->AllocateIncomeSpecifiedForNIT({1});
        QCOMPARE(window.cell(3, 2), u"7.00"_s);
        // By percent the remaining percentage is not recalculated either.
        window.frame->Set_AllocByAmount(false);
        const Currency percent = window.frame->Get_RemainingPercent();
        window.frame->AllocateIncomeSpecifiedForNIT({50, 60});
        QCOMPARE(window.frame->Get_RemainingPercent(), percent);
    }

    void hostCommands()
    {
        AllocationWindow window(fundPacket({{.id = 1, .group = 11, .term = 60, .guarantee = true}}));
        window.messageFunds = {{11, {1}}};
        window.open();
        QTRY_VERIFY(window.bar().sbtInvested->isHidden());
        window.setupIds({1});
        QSignalSpy duplicate(window.frame, &TfraFundAllocation::DuplicateClicked);
        QSignalSpy guarantee(window.frame, &TfraFundAllocation::GuaranteeClicked);
        QSignalSpy invested(window.frame, &TfraFundAllocation::InvestedClicked);
        AllocationWindow::click(window.bar().sbtDuplicate);
        AllocationWindow::click(window.bar().sbtGuarantee);
        AllocationWindow::click(window.bar().sbtInvested);
        window.key(Qt::Key_D, Qt::ControlModifier);
        window.key(Qt::Key_G, Qt::ControlModifier);
        window.key(Qt::Key_I, Qt::ControlModifier);
        QCOMPARE(duplicate.count(), 2);
        QCOMPARE(guarantee.count(), 2);
        QCOMPARE(invested.count(), 2);
        QCOMPARE(window.grid().RowCount(), 1);
        window.frame->Set_ShowButtonInvested(false);
        window.key(Qt::Key_I, Qt::ControlModifier);
        QCOMPARE(invested.count(), 2);
    }

    void keysOfTheCommands()
    {
        AllocationWindow window;
        window.frame->Set_InvestmentAmount(100);
        window.setupIds({1, 2});
        window.open();
        QCOMPARE(window.bar().sbtFunds->toolTip(), u"fund selector (Ctrl+F)"_s);
        QCOMPARE(window.bar().sbtRemove->toolTip(), u"removes the selected fund from the list (Del)"_s);
        window.key(Qt::Key_L, Qt::ControlModifier);
        QCOMPARE(amounts(window), QStringList(2, u"50.00"_s));
        window.key(Qt::Key_R, Qt::ControlModifier);
        QCOMPARE(amounts(window), QStringList(2, u"0.00"_s));
        window.key(Qt::Key_Delete, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(window.grid().RowCount(), 0);
    }

    // From choosing funds to a complete allocation with the real dialog.
    void fundsCommand()
    {
        AllocationWindow window(fundPacket({{.id = 1}, {.id = 2}, {.id = 3}, {.id = 4}}));
        window.frame->Set_InvestmentAmount(100);
        window.offerOneGroup();
        window.setup({fundRecord(1, 10), fundRecord(3, 30)});
        window.open();
        // Cancelling changes nothing.
        QVERIFY(window.inSelector([](TfrmFundSelector &dialog) { dialog.close(); }));
        QCOMPARE(TfraFundAllocation::BuildFundSet(window.frame->Funds()), (TDynamicArrayOfInt{1, 3}));
        QCOMPARE(window.disagreement(), QString());
        // Adds fund 2 and removes fund 1.
        QVERIFY(window.inSelector([](TfrmFundSelector &dialog) {
            SelectorDriver driver(*dialog.fraFundSelector);
            QCOMPARE(driver.captions(), (QStringList{u"Fund 1"_s, u"Fund 3"_s}));
            driver.doubleClick(driver.node("Fund 2"));
            driver.remove(0);
            QTest::mouseClick(dialog.fraFundSelector->btnSelect, Qt::LeftButton);
        }));
        QCOMPARE(TfraFundAllocation::BuildFundSet(window.frame->Funds()), (TDynamicArrayOfInt{2, 3}));
        QCOMPARE(window.cell(4, 1), u"0.00"_s);
        QCOMPARE(window.cell(3, 1), u"0.00"_s);
        QCOMPARE(window.cell(4, 2), u"30.00"_s); // keeps its amount
        QCOMPARE(window.cell(3, 2), u"30.00"_s);
        QCOMPARE(window.disagreement(), QString());
        AllocationWindow::click(window.bar().sbtAllocateAmount);
        QCOMPARE(window.cell(4, 1), u"70.00"_s);
        QCOMPARE(window.remaining(), u"Remaining: 0.00 (0.00%)"_s);
        QCOMPARE(window.disagreement(), QString());
    }

    // Choosing the first funds reports the count and enables the commands.
    void fundsCommandOnAnEmptyList()
    {
        AllocationWindow window(fundPacket({{.id = 1}, {.id = 2}}));
        window.offerOneGroup();
        window.setup({});
        window.open();
        QVERIFY(!window.bar().sbtRemove->isEnabled());
        QSignalSpy counts(window.frame, &TfraFundAllocation::FundCountChanged);
        const auto choose = [](TfrmFundSelector &dialog) {
            SelectorDriver driver(*dialog.fraFundSelector);
            driver.doubleClick(driver.node("Fund 2"));
            driver.doubleClick(driver.node("Fund 1"));
            QTest::mouseClick(dialog.fraFundSelector->btnSelect, Qt::LeftButton);
        };
        QVERIFY(inDialog<TfrmFundSelector>([&] { window.key(Qt::Key_F, Qt::ControlModifier); }, choose));
        QCOMPARE(TfraFundAllocation::BuildFundSet(window.frame->Funds()), (TDynamicArrayOfInt{1, 2}));
        QCOMPARE(counts, QList<QVariantList>{QVariantList{2}});
        for (const TSpeedButton *button : {window.bar().sbtClear, window.bar().sbtAllocateAmount,
                                           window.bar().sbtResetToZero, window.bar().sbtRemove})
            QVERIFY2(button->isEnabled(), qPrintable(button->objectName()));
        QCOMPARE(window.disagreement(), QString());
    }

    // An edited cell is empty when other funds are chosen: only its own fund may become 0, not the fund that
    // takes its row.
    void fundsCommandWhileEditing()
    {
        AllocationWindow window(fundPacket({{.id = 1}, {.id = 2}, {.id = 3}}));
        window.frame->Set_InvestmentAmount(100);
        window.offerOneGroup();
        window.setup({fundRecord(1, 10), fundRecord(2, 20)});
        window.open();
        window.stand(4, 1);
        window.key(Qt::Key_F2);
        window.key(Qt::Key_Backspace);
        QVERIFY(window.inSelector([](TfrmFundSelector &dialog) {
            SelectorDriver driver(*dialog.fraFundSelector);
            driver.remove(0);
            QTest::mouseClick(dialog.fraFundSelector->btnSelect, Qt::LeftButton);
        }));
        QCOMPARE(TfraFundAllocation::BuildFundSet(window.frame->Funds()), TDynamicArrayOfInt{2});
        QCOMPARE(window.cell(4, 1), u"20.00"_s);
        QCOMPARE(window.disagreement(), QString());
    }

    // A fund listed twice keeps the values of its last record.
    void fundsCommandWithAFundHeldTwice()
    {
        for (const bool byAmount : {true, false}) {
            AllocationWindow window(fundPacket({{.id = 1}, {.id = 2}, {.id = 3}}));
            window.frame->Set_AllocByAmount(byAmount);
            window.frame->Set_InvestmentAmount(200);
            window.offerOneGroup();
            window.setup({fundRecord(1, 10, 5), fundRecord(2, 60, 30), fundRecord(1, 40, 20)});
            window.open();
            QCOMPARE(TfraFundAllocation::BuildFundSet(window.frame->Funds()), (TDynamicArrayOfInt{1, 1, 2}));
            QCOMPARE(window.frame->Funds()[1].Amount, Currency(40));
            QVERIFY(window.inSelector([](TfrmFundSelector &dialog) {
                SelectorDriver driver(*dialog.fraFundSelector);
                driver.doubleClick(driver.node("Fund 3"));
                QTest::mouseClick(dialog.fraFundSelector->btnSelect, Qt::LeftButton);
            }));
            TFunds &list = window.frame->Funds();
            const TDynamicArrayOfInt ids = TfraFundAllocation::BuildFundSet(list);
            QVERIFY(ids == (TDynamicArrayOfInt{1, 2, 3}) || ids == (TDynamicArrayOfInt{1, 1, 2, 3}));
            for (const TFundRec &record : list) {
                const int amount = record.FundID == 1 ? 40 : record.FundID == 2 ? 60 : 0;
                QCOMPARE(record.Amount, Currency(amount));
                QCOMPARE(record.Percent, Currency(amount / 2));
            }
            QCOMPARE(window.disagreement(), QString());
        }
    }
};

ZEL_TEST_MAIN(TestCommands)
#include "tst_commands.moc"
