// What a host sets and calls in the allocation frame: design, properties, buttons and operations.
// labels: x11
#include "AllocationWindow.h"
#include "Frames.h"
#include "SelectorDriver.h"

#include "data/Exceptions.h"
#include "host/Kivbase.h"

#include <QDoubleSpinBox>
#include <QHeaderView>
#include <QPointer>
#include <QSignalSpy>
#include <QSpinBox>

#include <type_traits>

using namespace Qt::StringLiterals;

class TestAllocationHost : public ZelTest
{
    Q_OBJECT

    static QList<int> widths(const AllocationWindow &window)
    {
        return {window.grid().Col(2).Width(), window.grid().Col(3).Width(), window.grid().Col(4).Width()};
    }
    static void spoilWidths(const AllocationWindow &window)
    {
        window.grid().Col(2).SetWidth(11);
        window.grid().Col(3).SetWidth(22);
        window.grid().Col(4).SetWidth(33);
    }

    bool checkRemainder = true;

private Q_SLOTS:
    void layoutAsDesigned()
    {
        TfraFundAllocation frame;
        QCOMPARE(frame.size(), QSize(622, 114));
        QVERIFY(showActive(frame));
        const auto at = [&frame](const QWidget *widget) {
            return QRect(widget->mapTo(&frame, QPoint(0, 0)), widget->size());
        };
        QCOMPARE(at(frame.Panel3), QRect(0, 0, 622, 20));
        QCOMPARE(at(frame.pnlHeaderCaption), QRect(0, 0, 622, 20));
        QCOMPARE(at(frame.pnlToolBar), QRect(0, 20, 622, 20));
        QCOMPARE(at(frame.fraFundToolBar), QRect(0, 20, 600, 20));
        QCOMPARE(at(frame.FundGrid), QRect(0, 40, 622, 54));
        QCOMPARE(at(frame.pnlAllocationStatus), QRect(0, 94, 622, 20));
        QCOMPARE(at(frame.pnlRemainAmount), QRect(0, 94, 311, 20));
        QCOMPARE(at(frame.pnlAmount), QRect(311, 94, 311, 20));
        QCOMPARE(frame.font().family(), u"Tahoma"_s);
        QCOMPARE(frame.font().pixelSize(), 11);
        struct {
            const TPanel *panel;
            const char *text;
            bool bold, italic;
        } const panels[] = {{frame.Panel3, "clWhite", true, false},
                            {frame.pnlHeaderCaption, "clWhite", true, false},
                            {frame.pnlRemainAmount, "clBlack", true, true},
                            {frame.pnlAmount, "clWhite", true, false}};
        for (const auto &[panel, text, bold, italic] : panels) {
            QCOMPARE(panel->textColorName(), QLatin1String(text));
            QCOMPARE(panel->isBold(), bold);
            QCOMPARE(panel->isItalic(), italic);
            QVERIFY(!panel->hasBevel());
        }
        QCOMPARE(frame.pnlHeaderCaption->colorName(), u"clGray"_s);
        QCOMPARE(frame.pnlHeaderCaption->captionAlignment(), Qt::AlignLeft);
        // Half of an odd width is rounded down.
        frame.resize(701, 200);
        QTRY_COMPARE(frame.pnlAmount->width(), 350);
        QTRY_COMPARE(frame.pnlRemainAmount->width(), 351);
    }

    void gridAsDesigned()
    {
        TfraFundAllocation frame;
        const TtsGrid &grid = *frame.FundGrid;
        QCOMPARE(grid.ColCount(), 4);
        QCOMPARE(grid.RowCount(), 0);
        QCOMPARE(grid.horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
        QCOMPARE(grid.verticalScrollBarPolicy(), Qt::ScrollBarAsNeeded);
        QVERIFY(grid.horizontalHeader()->font().bold());
        QVERIFY(!grid.horizontalHeader()->sectionsMovable());
        QCOMPARE(grid.RowHeight(), qMax(18, grid.fontMetrics().height() + 3));
        QVERIFY(grid.HeadingHeight() >= 16);
        QVERIFY(grid.selectionMode() == QAbstractItemView::NoSelection);
        struct {
            int width;
            Qt::Alignment cells, heading;
            bool editable;
        } const columns[] = {{18, Qt::AlignHCenter, Qt::AlignLeft, false},
                             {250, Qt::AlignLeft, Qt::AlignLeft, false},
                             {120, Qt::AlignRight, Qt::AlignRight, false},
                             {120, Qt::AlignRight, Qt::AlignRight, true}};
        for (int column = 1; column <= 4; ++column) {
            const auto &[width, cells, heading, editable] = columns[column - 1];
            const TtsCol &col = grid.Col(column);
            QCOMPARE(col.Width(), width);
            QCOMPARE(col.Alignment(), cells);
            QCOMPARE(col.HeadingAlignment(), heading);
            QCOMPARE(col.ReadOnly(), !editable); // the mode is by amount
            QVERIFY(col.Visible());
            QCOMPARE(grid.horizontalHeader()->sectionResizeMode(column - 1), QHeaderView::Fixed);
        }
    }

    // Most setters act only when the value changes, so they keep what other code has changed.
    void settersThatActOnAChange()
    {
        AllocationWindow window;
        window.setupIds({1});
        window.open();
        TfraFundAllocation &frame = *window.frame;
        frame.pnlToolBar->hide();
        frame.Set_ShowToolBar(true);
        QVERIFY(frame.pnlToolBar->isHidden());
        frame.pnlAllocationStatus->hide();
        frame.Set_ShowStatusPanel(true);
        QVERIFY(frame.pnlAllocationStatus->isHidden());
        frame.Set_ShowStatusPanel(false);
        frame.Set_ShowStatusPanel(true);
        QVERIFY(frame.pnlAllocationStatus->isVisible());
        window.grid().Col(4).SetReadOnly(true);
        frame.Set_AllocByAmount(true);
        QVERIFY(window.grid().Col(4).ReadOnly());
        QSignalSpy guarantee(&frame, &TfraFundAllocation::ShowButtonGuaranteeChanged);
        frame.Set_ShowButtonGuarantee(true);
        QCOMPARE(guarantee.count(), 0);
        frame.Set_ShowButtonGuarantee(false);
        QCOMPARE(guarantee.count(), 1);
        QVERIFY(!frame.Get_ShowButtonGuarantee());
    }

    // Each property emits its change signal.
    void propertiesTellOfTheirChange()
    {
        AllocationWindow window;
        window.open();
        QTRY_VERIFY(!window.frame->Get_ShowButtonInvested());
        TfraFundAllocation &frame = *window.frame;
        struct {
            const char *name;
            QVariant value;
        } const changes[] = {{"InvestmentAmount", money("5").toVariant()},
                             {"AllocByAmount", false},
                             {"ShowColumn_Percent", false},
                             {"ShowColumn_Percent", true},
                             {"ShowColumn_Amount", false},
                             {"ShowColumn_Amount", true},
                             {"ShowToolBar", false},
                             {"ShowStatusPanel", false},
                             {"ShowButtonGuarantee", false},
                             {"ShowButtonInvested", true}};
        for (const auto &[name, value] : changes)
            QCOMPARE(toldOnce(frame, name, value), QString());
        QSignalSpy fund(&frame, &TfraFundAllocation::ColumnCaption_FundChanged);
        QSignalSpy amount(&frame, &TfraFundAllocation::ColumnCaption_AmountChanged);
        QSignalSpy percent(&frame, &TfraFundAllocation::ColumnCaption_PercentChanged);
        frame.Set_ColumnCaption_Fund(u"Fonds"_s);
        frame.Set_ColumnCaption_Amount(u"Bedrag"_s);
        frame.Set_ColumnCaption_Percent(u"Deel"_s);
        QCOMPARE(fund, QList<QVariantList>{QVariantList{u"Fonds"_s}});
        QCOMPARE(amount, QList<QVariantList>{QVariantList{u"Bedrag"_s}});
        QCOMPARE(percent, QList<QVariantList>{QVariantList{u"Deel"_s}});
    }

    // Hiding a hidden button is no change; the rule of the current row still shows it.
    void theInvestedButtonHiddenTwice()
    {
        AllocationWindow window(fundPacket({{.id = 1, .group = 11}, {.id = 2, .group = 1}}));
        window.messageFunds = {{11, {1}}};
        window.open();
        QTRY_VERIFY(window.bar().sbtInvested->isHidden());
        window.setupIds({1, 2});
        QVERIFY(window.bar().sbtInvested->isVisible());
        window.key(Qt::Key_Down);
        QVERIFY(window.bar().sbtInvested->isHidden());
        window.frame->Set_ShowButtonInvested(false);
        window.key(Qt::Key_Up);
        QVERIFY(window.bar().sbtInvested->isVisible());
        // When the host hides the visible button, it stays hidden until the host shows it again.
        window.frame->Set_ShowButtonInvested(false);
        window.key(Qt::Key_Down);
        window.key(Qt::Key_Up);
        QVERIFY(window.bar().sbtInvested->isHidden());
        window.frame->Set_ShowButtonInvested(true);
        window.key(Qt::Key_Down);
        QVERIFY(window.bar().sbtInvested->isHidden());
        window.key(Qt::Key_Up);
        QVERIFY(window.bar().sbtInvested->isVisible());
    }

    // The Invested button is visible for funds with a message; each change of its visibility is reported
    // once.
    void theInvestedButtonGoesWithTheFund()
    {
        AllocationWindow window(fundPacket(
            {{.id = 1, .group = 11}, {.id = 2, .group = 12}, {.id = 3, .group = 1}, {.id = 4, .group = 1}}));
        window.messageFunds = {{11, {1}}, {12, {2}}};
        window.open();
        QTRY_VERIFY(window.bar().sbtInvested->isHidden());
        window.setupIds({1, 2, 3, 4});
        QVERIFY(window.bar().sbtInvested->isVisible());
        QSignalSpy shown(window.frame, &TfraFundAllocation::ShowButtonInvestedChanged);
        const QList<QVariantList> hidden{QVariantList{false}};
        window.key(Qt::Key_Down); // the next fund has a message, too
        QCOMPARE(shown.count(), 0);
        window.key(Qt::Key_Down);
        QCOMPARE(shown, hidden);
        window.key(Qt::Key_Down);
        QCOMPARE(shown, hidden);
        // A record without a bookmark has no fund in the dataset.
        window.stand(4, 1);
        QVERIFY(window.bar().sbtInvested->isVisible());
        shown.clear();
        TfraFundAllocation::DoFreeBookMarks(window.frame->Funds(), window.frame->cdsFunds);
        window.frame->CheckButtonStatus();
        QVERIFY(window.bar().sbtInvested->isHidden());
        QCOMPARE(shown, hidden);
        // The last fund is removed.
        window.setupIds({1});
        QVERIFY(window.bar().sbtInvested->isVisible());
        shown.clear();
        AllocationWindow::click(window.bar().sbtClear);
        QVERIFY(window.bar().sbtInvested->isHidden());
        QCOMPARE(shown, hidden);
    }

    // The two column setters act on every assignment.
    void columnSettersActEachTime()
    {
        AllocationWindow window(fundPacket({{.id = 1, .term = 60, .guarantee = true}}));
        window.open();
        window.setupIds({1});
        TfraFundAllocation &frame = *window.frame;
        QVERIFY(window.bar().sbtGuarantee->isEnabled());
        frame.RestoreOriginalColumnWidths();
        frame.SizeGridColumns();
        const QList<int> sized = widths(window);
        for (const auto set :
             {&TfraFundAllocation::Set_ShowColumn_Percent, &TfraFundAllocation::Set_ShowColumn_Amount}) {
            spoilWidths(window);
            window.bar().sbtGuarantee->setEnabled(false);
            QSignalSpy percent(&frame, &TfraFundAllocation::ShowColumn_PercentChanged);
            QSignalSpy amount(&frame, &TfraFundAllocation::ShowColumn_AmountChanged);
            (frame.*set)(true);
            QCOMPARE(percent.count() + amount.count(), 0); // the value has not changed
            QCOMPARE(widths(window), sized);
            QVERIFY(window.bar().sbtGuarantee->isEnabled()); // the rule of the current row has run
        }
        frame.Set_ShowColumn_Percent(false);
        frame.Set_AllocByAmount(false); // by percent while that column is hidden
        frame.Set_ShowColumn_Percent(false);
        QVERIFY(frame.Get_AllocByAmount());
        frame.Set_ShowColumn_Percent(true);
        frame.Set_ShowColumn_Amount(false);
        frame.Set_AllocByAmount(true);
        frame.Set_ShowColumn_Amount(false);
        QVERIFY(!frame.Get_AllocByAmount());
        QVERIFY(!frame.Get_ShowColumn_Amount());
        QVERIFY(!window.bar().sbtGuarantee->isEnabled()); // because the amounts are hidden
    }

    // Setting the investment acts on every assignment: the remainder is calculated again.
    void theInvestmentSetTwice()
    {
        AllocationWindow window;
        window.open();
        QCOMPARE(window.frame->Get_InvestmentPercent(), Currency());
        QSignalSpy changed(window.frame, &TfraFundAllocation::InvestmentAmountChanged);
        QSignalSpy remaining(window.frame, &TfraFundAllocation::RemainingChanged);
        window.frame->Set_InvestmentAmount(0);
        QCOMPARE(changed.count(), 0);
        QCOMPARE(remaining.count(), 1); // the remaining 100 percent
        window.frame->Set_InvestmentAmount(0);
        QCOMPARE(remaining.count(), 1);
        QCOMPARE(window.frame->Get_InvestmentPercent(), Currency(100));
        QCOMPARE(window.frame->Get_RemainingPercent(), Currency(100));
        QCOMPARE(window.remaining(), u"Remaining: 0.00 (100.00%)"_s);
        // By percent the displayed amounts stay; the remainder comes from the percentages.
        window.frame->Set_AllocByAmount(false);
        window.frame->Set_InvestmentAmount(1000);
        window.setup({fundRecord(1, {}, 40)});
        QCOMPARE(window.cell(4, 1), u"400.00"_s);
        window.frame->Set_InvestmentAmount(2000);
        QCOMPARE(window.cell(4, 1), u"400.00"_s);
        QCOMPARE(window.frame->Get_RemainingAmount(), Currency(2000));
        QCOMPARE(window.remaining(), u"Remaining: 60.00%"_s);
    }

    void captionsKeepTheirBlanksAndHeadingsDoNot()
    {
        AllocationWindow window;
        window.open();
        TfraFundAllocation &frame = *window.frame;
        struct {
            int column;
            void (TfraFundAllocation::*set)(const QString &);
            QString (TfraFundAllocation::*get)() const;
        } const captions[] = {
            {2, &TfraFundAllocation::Set_ColumnCaption_Fund, &TfraFundAllocation::Get_ColumnCaption_Fund},
            {3, &TfraFundAllocation::Set_ColumnCaption_Percent,
             &TfraFundAllocation::Get_ColumnCaption_Percent},
            {4, &TfraFundAllocation::Set_ColumnCaption_Amount,
             &TfraFundAllocation::Get_ColumnCaption_Amount}};
        for (const auto &[column, set, get] : captions) {
            for (const char *text : {"  Fonds\t", "", "   ", "a & b <i>"}) {
                (frame.*set)(QLatin1String(text));
                QCOMPARE((frame.*get)(), QLatin1String(text));
                QCOMPARE(window.grid().Col(column).Heading(), QString::fromLatin1(text).trimmed());
            }
            // A heading changed by other code is restored by setting the same caption.
            window.grid().Col(column).SetHeading(u"x"_s);
            (frame.*set)((frame.*get)());
            QCOMPARE(window.grid().Col(column).Heading(), u"a & b <i>"_s);
        }
    }

    void thePacketIsKept()
    {
        AllocationWindow window;
        const QVariant packet = fundPacket(3);
        QSignalSpy changed(window.frame, &TfraFundAllocation::FundsPerProductDataSetChanged);
        window.frame->Set_FundsPerProductDataSet(packet);
        QCOMPARE(changed.count(), 1);
        const auto kept = [&window] {
            return TDataPacket::FromVariant(window.frame->property("FundsPerProductDataSet")).Table();
        };
        QCOMPARE(kept(), TDataPacket::FromVariant(packet).Table());
        QVERIFY(window.frame->cdsFunds->Active());
        QVERIFY(window.bar().sbtFunds->isEnabled());
        // A refused packet leaves the former one in place.
        QVERIFY_THROWS_EXCEPTION(EDatabaseError, window.frame->Set_FundsPerProductDataSet(7));
        QCOMPARE(kept(), TDataPacket::FromVariant(packet).Table());
        QCOMPARE(window.frame->cdsFunds->RecordCount(), 3);
    }

    // When the product offers fewer funds, the others are removed, and the new count is reported.
    void anotherProduct()
    {
        AllocationWindow window;
        window.setupIds({2, 3, 7, 8, 9});
        window.open();
        QSignalSpy counts(window.frame, &TfraFundAllocation::FundCountChanged);
        window.frame->Set_FundsPerProductDataSet(fundPacket(8));
        QCOMPARE(counts, QList<QVariantList>{QVariantList{4}});
        // The same when new rows of the dataset are first read because the investment is set.
        window.frame->cdsFunds->SetData(fundPacket(3));
        window.frame->Set_InvestmentAmount(100);
        QCOMPARE(counts.last(), QVariantList{2});
        window.frame->Set_InvestmentAmount(200); // the count is the same, so no signal
        QCOMPARE(counts.count(), 2);
        QCOMPARE(TfraFundAllocation::BuildFundSet(window.frame->Funds()), (TDynamicArrayOfInt{2, 3}));
        QCOMPARE(window.disagreement(), QString());
    }

    // Setting up a list sets the columns' editability according to the mode.
    void settingUpAppliesTheMode()
    {
        AllocationWindow window;
        window.open();
        window.grid().Col(3).SetReadOnly(false);
        window.grid().Col(4).SetReadOnly(true);
        window.setupIds({1});
        QVERIFY(window.grid().Col(3).ReadOnly());
        QVERIFY(!window.grid().Col(4).ReadOnly());
    }

    // Displaying the rows again keeps the current row.
    void theCurrentRowStays()
    {
        AllocationWindow window;
        window.setupIds({1, 2, 3});
        window.open();
        window.stand(4, 2);
        window.frame->Set_InvestmentAmount(500);
        QCOMPARE(window.grid().CurrentRow(), 2);
        window.setupIds({1});
        QCOMPARE(window.grid().CurrentRow(), 1);
    }

    // Replacing the list ends the edit without changing the new list.
    void anotherListWhileEditing()
    {
        AllocationWindow window;
        window.frame->Set_InvestmentAmount(100);
        window.setup({fundRecord(1, 10), fundRecord(2, 20)});
        window.open();
        window.stand(4, 1);
        window.key(Qt::Key_F2);
        window.key(Qt::Key_Backspace);
        window.setup({fundRecord(3, 70)});
        QCOMPARE(window.frame->Funds()[0].Amount, Currency(70));
        QCOMPARE(window.cell(4, 1), u"70.00"_s);
        QCOMPARE(window.disagreement(), QString());
    }

    // By percent, too, a new investment ends the edit; the entry is calculated with the former investment.
    void anotherInvestmentWhileEditingByPercent()
    {
        AllocationWindow window;
        window.frame->Set_AllocByAmount(false);
        window.frame->Set_InvestmentAmount(1000);
        window.setupIds({1});
        window.open();
        window.stand(3, 1);
        window.keys(u"40"_s);
        window.frame->Set_InvestmentAmount(2000);
        QVERIFY(!window.grid().IsEditing());
        QCOMPARE(window.cell(3, 1), u"40.00"_s);
        QCOMPARE(window.cell(4, 1), u"400.00"_s);
        QCOMPARE(window.remaining(), u"Remaining: 60.00%"_s);
    }

    // A frame that temporarily has no room for its columns shows them again afterwards.
    void noRoomForTheColumns()
    {
        QWidget page;
        page.resize(700, 200);
        auto *frame = new TfraFundAllocation(&page);
        frame->layout()->setSizeConstraint(QLayout::SetNoConstraint);
        QVERIFY(showActive(page));
        for (const int width : {0, 1, 17, 18, 19, 20}) {
            frame->FundGrid->resize(width, 60);
            frame->SizeGridColumns();
        }
        frame->resize(622, 114);
        frame->FundGrid->resize(622, 54);
        frame->RestoreOriginalColumnWidths();
        frame->SizeGridColumns();
        for (int column = 2; column <= 4; ++column)
            QVERIFY(frame->FundGrid->Col(column).Width() > 50);
    }

    void buttonsFollowTheRows()
    {
        AllocationWindow window{QVariant()};
        window.open();
        const QList<TSpeedButton *> needRows{window.bar().sbtClear, window.bar().sbtAllocateAmount,
                                             window.bar().sbtResetToZero, window.bar().sbtRemove};
        const auto allAre = [&needRows](bool enabled) {
            for (const TSpeedButton *button : needRows) {
                if (button->isEnabled() != enabled)
                    return false;
            }
            return true;
        };
        QVERIFY(!window.bar().sbtFunds->isEnabled()); // there are no funds to choose from
        QVERIFY(allAre(false));
        window.frame->Set_FundsPerProductDataSet(
            fundPacket({{.id = 1, .term = 60, .guarantee = true}, {.id = 2}}));
        QVERIFY(window.bar().sbtFunds->isEnabled());
        QVERIFY(allAre(false));
        window.setupIds({1});
        QVERIFY(allAre(true));
        QVERIFY(window.bar().sbtDuplicate->isEnabled());
        QVERIFY(window.bar().sbtGuarantee->isEnabled());
        window.frame->ClearFunds();
        QVERIFY(allAre(false));
        QVERIFY(!window.bar().sbtDuplicate->isEnabled());
        QVERIFY(!window.bar().sbtGuarantee->isEnabled());
        QVERIFY(window.bar().sbtInvested->isHidden());
    }

    // Leaving the row resets the current fund's values, except for its fund group.
    void theCurrentFundsValues()
    {
        AllocationWindow window(fundPacket({{.id = 4, .group = 33, .groupType = 9, .term = 60}}));
        window.open();
        window.setupIds({4});
        QCOMPARE(window.frame->CurrentFundID(), 4);
        QCOMPARE(window.frame->CurrentFundTerm(), 60);
        QCOMPARE(window.frame->CurrentGroupTypeID(), 9);
        QCOMPARE(window.frame->CurrentFundGroupID(), 33);
        window.frame->FundGridRowChanged(nullptr, 1, 0);
        QCOMPARE(window.frame->CurrentFundID(), -1);
        QCOMPARE(window.frame->CurrentFundTerm(), -1);
        QCOMPARE(window.frame->CurrentGroupTypeID(), -1);
        QCOMPARE(window.frame->CurrentFundGroupID(), 33);
        // A record without a bookmark has no row in the dataset.
        window.frame->CheckButtonStatus();
        QCOMPARE(window.frame->CurrentFundID(), 4);
        window.bar().sbtGuarantee->setEnabled(true);
        TfraFundAllocation::DoFreeBookMarks(window.frame->Funds(), window.frame->cdsFunds);
        window.frame->FundGridRowChanged(nullptr, 1, 1);
        QCOMPARE(window.frame->CurrentFundID(), -1);
        QVERIFY(!window.bar().sbtGuarantee->isEnabled());
    }

    // Operations on other columns than percent and amount change nothing.
    void otherColumnsAreLeftAlone()
    {
        AllocationWindow window;
        window.frame->Set_InvestmentAmount(1000);
        window.setup({fundRecord(1, 250)});
        const QString remaining = window.remaining();
        for (const int column : {0, 1, 2, 5, -1}) {
            window.frame->RecalcRemainingAmount(column);
            window.frame->FundGridCellEdit(nullptr, column, 1, true);
            bool cancel = false;
            window.frame->FundGridEndCellEdit(nullptr, column, 1, cancel);
            QVERIFY(!cancel);
        }
        QCOMPARE(window.remaining(), remaining);
        QCOMPARE(window.frame->Get_RemainingAmount(), Currency(750));
        QCOMPARE(window.frame->Get_RemainingPercent(), Currency(75));
        QCOMPARE(window.disagreement(), QString());
        bool cancel = false;
        window.frame->FundGridUndoCellEdit(nullptr, 4, 1, true, cancel);
        QVERIFY(cancel);
    }

    // By percent only the remaining percentage is recalculated; by amount both remainders are.
    void whatIsWorkedOutByColumn()
    {
        AllocationWindow window;
        window.frame->Set_InvestmentAmount(3);
        window.setup({fundRecord(1, 1)});
        window.frame->RecalcRemainingAmount(3);
        QCOMPARE(window.frame->Get_RemainingPercent(), money("66.67"));
        QCOMPARE(window.frame->Get_RemainingAmount(), Currency(2));
        window.frame->RecalcRemainingAmount(4);
        QCOMPARE(window.frame->Get_RemainingPercent(), money("66.6667")); // with four decimals
        QCOMPARE(window.frame->Get_RemainingAmount(), Currency(2));
    }

    // Every change is reported once, after it is complete; a command counts as one change.
    void changesAreTold()
    {
        AllocationWindow window(fundPacket({{.id = 1}, {.id = 2}, {.id = 3}, {.id = 4}}));
        TfraFundAllocation &frame = *window.frame;
        window.offerOneGroup();
        QSignalSpy changes(&frame, &TfraFundAllocation::AllocationChanged);
        QSignalSpy rows(&frame, &TfraFundAllocation::AllocationRowChanged);
        QStringList wrong;
        connect(&frame, &TfraFundAllocation::AllocationChanged, this, [&] {
            if (!window.grid().IsEditing()) // the edited cell is not yet formatted with two decimals
                wrong.append(window.disagreement());
            const Currency whole =
                frame.Get_AllocByAmount() ? frame.Get_InvestmentAmount() : frame.Get_InvestmentPercent();
            const Currency left =
                frame.Get_AllocByAmount() ? frame.Get_RemainingAmount() : frame.Get_RemainingPercent();
            if (checkRemainder && left != window.leftOf(whole, frame.Get_AllocByAmount() ? 4 : 3))
                wrong.append(window.remaining());
            if (window.bar().sbtClear->isEnabled() != (frame.Get_FundCount() > 0))
                wrong.append(u"buttons"_s);
        });
        const auto told = [&](int count, const QList<int> &which = {}) {
            wrong.removeAll(QString());
            QList<int> numbers;
            for (const QVariantList &row : std::as_const(rows))
                numbers.append(row.constFirst().toInt());
            const bool good = changes.count() == count && numbers == which && wrong.isEmpty();
            if (!good)
                qWarning() << changes.count() << numbers << wrong;
            changes.clear();
            rows.clear();
            return good;
        };
        checkRemainder = true;
        frame.Set_InvestmentAmount(100);
        QVERIFY(told(1));
        window.setup({fundRecord(1, 10), fundRecord(3, 30)});
        QVERIFY(told(1));
        window.open();
        QVERIFY(told(0));
        // Each keystroke reports its row; ending the edit reports it only when it corrects the value.
        window.stand(4, 2);
        window.keys(u"45"_s);
        QVERIFY(told(2, {2, 2}));
        window.key(Qt::Key_Return);
        QVERIFY(told(0));
        window.stand(4, 2);
        window.key(Qt::Key_F2);
        window.key(Qt::Key_Backspace);
        for (int i = 0; i < 20 && !window.editor()->text().isEmpty(); ++i)
            window.key(Qt::Key_Backspace);
        changes.clear();
        rows.clear();
        window.key(Qt::Key_Return); // empty becomes 0.00
        QVERIFY(told(1, {2}));
        frame.SetCurrentGridRowValue(4, 2'000'000'000); // too large: corrected to the former 0,
        QVERIFY(told(0));                               // so nothing is reported
        frame.SetCurrentGridRowValue(4, 20);
        QVERIFY(told(1, {2}));
        // Commands.
        window.stand(4, 1);
        window.key(Qt::Key_Delete);
        QVERIFY(told(1));
        frame.AddFundIDToList(2, 5, {});
        QVERIFY(told(1));
        frame.AddFundIDToList(77, 5, {}); // the product does not offer it
        QVERIFY(told(0));
        AllocationWindow::click(window.bar().sbtResetToZero);
        QVERIFY(told(1));
        AllocationWindow::click(window.bar().sbtResetToZero);
        QVERIFY(told(0));
        AllocationWindow::click(window.bar().sbtAllocateAmount);
        QVERIFY(told(1));
        AllocationWindow::click(window.bar().sbtAllocateAmount);
        QVERIFY(told(0)); // no row is 0
        QVERIFY(window.inSelector([&](TfrmFundSelector &dialog) {
            SelectorDriver driver(*dialog.fraFundSelector);
            driver.remove(0);
            driver.doubleClick(driver.node("Fund 4"));
            driver.doubleClick(driver.node("Fund 1"));
            // A change by the host while the dialog is open is reported by itself.
            frame.Set_InvestmentAmount(200);
            QVERIFY(told(1));
            QTest::mouseClick(dialog.fraFundSelector->btnSelect, Qt::LeftButton);
        }));
        QCOMPARE(TfraFundAllocation::BuildFundSet(frame.Funds()), (TDynamicArrayOfInt{1, 3, 4}));
        QVERIFY(told(1));
        QVERIFY(window.inSelector([](TfrmFundSelector &dialog) { dialog.close(); }));
        QVERIFY(told(0));
        frame.Set_AllocByAmount(false);
        QVERIFY(told(1));
        frame.Set_AllocByAmount(false);
        QVERIFY(told(0));
        frame.Set_ShowColumn_Percent(false); // hiding the column changes the mode
        QVERIFY(told(1));
        frame.Set_ShowColumn_Percent(true);
        QVERIFY(told(0));
        checkRemainder = false; // only the percentages change
        frame.AllocateIncomeSpecifiedForNIT({1, 2, 3});
        QVERIFY(told(1));
        frame.AllocateIncomeSpecifiedForNIT({1, 2, 3});
        QVERIFY(told(0));
        checkRemainder = true;
        // The product no longer offers fund 3.
        frame.Set_FundsPerProductDataSet(fundPacket({{.id = 1}, {.id = 4}}));
        QVERIFY(told(1));
        frame.RemoveFundFromList(frame.Funds(), 2, true); // outside the list
        QVERIFY(told(0));
        frame.RemoveFundFromList(frame.Funds(), 0, true);
        QVERIFY(told(1));
        // Clearing the list is reported once.
        AllocationWindow::click(window.bar().sbtClear);
        QVERIFY(told(1));
        AllocationWindow::click(window.bar().sbtClear);
        QVERIFY(told(0));
    }

    // A listener destroys the frame; no signal follows.
    void aListenerMayCloseThePage()
    {
        auto *const frame = new TfraFundAllocation;
        frame->Set_FundsPerProductDataSet(fundPacket(2));
        TFunds funds{fundRecord(1)};
        frame->SetupFundAllocation(funds, 1, nullptr);
        int later = 0;
        const QPointer<TfraFundAllocation> alive(frame);
        connect(frame, &TfraFundAllocation::AllocationRowChanged, this, [frame] { delete frame; });
        connect(frame, &TfraFundAllocation::AllocationChanged, this, [&later] { ++later; });
        frame->FundGrid->SetCell(4, 1, Currency(5).toVariant());
        frame->FundGridCellEdit(frame, 4, 1, true);
        QVERIFY(!alive);
        QCOMPARE(later, 0);
    }

    // Storing an allocation in the host and restoring it.
    void rowsAsValues()
    {
        QList<TAllocationRow> kept;
        {
            AllocationWindow window;
            window.frame->Set_InvestmentAmount(300);
            window.setup({fundRecord(1, 10), fundRecord(2, 20), fundRecord(3, 30)});
            window.open();
            window.stand(4, 1);
            window.key(Qt::Key_Delete);
            window.stand(4, 2);
            window.keys(u"90.5"_s);
            kept = window.frame->Allocation(); // during an edit
            QCOMPARE(kept,
                     (QList<TAllocationRow>{{2, 20, money("6.6667")}, {3, money("90.5"), money("30.1667")}}));
            QCOMPARE(window.funds.Length(), 3); // the host's variable keeps the former list
        }
        // The stored rows outlive the frame. Fund 3 is no longer offered, fund 11 never was.
        kept.append({11, 7, 8});
        kept.prepend({1, 5, money("1.6667")});
        AllocationWindow window(fundPacket({{.id = 2}, {.id = 1}}));
        window.frame->Set_InvestmentAmount(300);
        window.setupIds({2});
        window.open();
        QSignalSpy changes(window.frame, &TfraFundAllocation::AllocationChanged);
        QSignalSpy counts(window.frame, &TfraFundAllocation::FundCountChanged);
        QCOMPARE(window.frame->SetAllocation(kept),
                 (QList<TAllocationRow>{{3, money("90.5"), money("30.1667")}, {11, 7, 8}}));
        QCOMPARE(window.frame->Allocation(),
                 (QList<TAllocationRow>{{2, 20, money("6.6667")}, {1, 5, money("1.6667")}}));
        QCOMPARE(window.remaining(), u"Remaining: 275.00 (91.67%)"_s);
        QCOMPARE(changes.count(), 1);
        QCOMPARE(counts.count(), 1);
        QCOMPARE(window.disagreement(), QString());
        QCOMPARE(window.frame->ProductGroupID(), 7); // the group of SetupFundAllocation
        // Restoring the current rows changes nothing.
        const QList<TAllocationRow> rows = window.frame->Allocation();
        QCOMPARE(window.frame->SetAllocation(rows), QList<TAllocationRow>());
        QCOMPARE(window.frame->Allocation(), rows);
        QCOMPARE(changes.count(), 1);
        window.frame->Set_AllocByAmount(false);
        QCOMPARE(window.frame->SetAllocation({{1, 0, 50}, {1, 0, 25}, {9, 1, 1}}),
                 (QList<TAllocationRow>{{9, 1, 1}}));
        QCOMPARE(window.frame->Allocation(), (QList<TAllocationRow>{{1, 150, 50}, {1, 75, 25}}));
        QCOMPARE(window.disagreement(), QString());
        QVERIFY(window.bar().sbtClear->isEnabled());
        QCOMPARE(window.frame->SetAllocation({}), QList<TAllocationRow>());
        QCOMPARE(window.grid().RowCount(), 0);
        QVERIFY(!window.bar().sbtClear->isEnabled());
        QCOMPARE(window.disagreement(), QString());
        // When no fund is offered, the list is empty and all rows are returned.
        QCOMPARE(window.frame->SetAllocation(kept.mid(2)), kept.mid(2));
        QCOMPARE(window.disagreement(), QString());
        // Without the product's funds the call throws and changes nothing.
        window.frame->SetAllocation(rows);
        window.frame->cdsFunds->Close();
        QVERIFY_THROWS_EXCEPTION(EDatabaseError, window.frame->SetAllocation(kept));
        QCOMPARE(window.frame->Allocation().size(), rows.size());
    }

    // A spin box with whole numbers can be connected directly; a double is converted explicitly, to the cent.
    void amountsOfSpinBoxes()
    {
        TfraFundAllocation frame;
        QSpinBox units;
        units.setMaximum(1'000'000);
        connect(&units, &QSpinBox::valueChanged, &frame, &TfraFundAllocation::Set_InvestmentAmount);
        units.setValue(100'000);
        QCOMPARE(frame.Get_InvestmentAmount(), Currency(100'000));
        QDoubleSpinBox rand;
        rand.setMaximum(1e12);
        connect(&rand, &QDoubleSpinBox::valueChanged, &frame,
                [&frame](double value) { frame.Set_InvestmentAmount(Currency::fromDouble(value)); });
        rand.setValue(100'000.57);
        QCOMPARE(frame.Get_InvestmentAmount(), money("100000.57"));
        rand.setValue(5e9);
        QCOMPARE(frame.Get_InvestmentAmount(), Currency(5'000'000'000));
        static_assert(std::is_invocable_v<decltype(&TfraFundAllocation::Set_InvestmentAmount),
                                          TfraFundAllocation &, int>);
        static_assert(!std::is_invocable_v<decltype(&TfraFundAllocation::Set_InvestmentAmount),
                                           TfraFundAllocation &, double>);
        static_assert(!std::is_invocable_v<decltype(&TfraFundAllocation::Set_InvestmentAmount),
                                           TfraFundAllocation &, qint64>);
    }

    void theDecimalKeyOfTheKeypad()
    {
        AllocationWindow window;
        window.frame->Set_InvestmentAmount(1000);
        window.setupIds({1});
        window.open();
        window.stand(4, 1);
        window.keys(u"12"_s);
        QTest::keyClick(window.target(), Qt::Key_Comma, Qt::KeypadModifier);
        window.keys(u"5"_s);
        QCOMPARE(window.editor()->text(), u"12.5"_s);
        window.key(Qt::Key_Enter, Qt::KeypadModifier);
        QCOMPARE(window.cell(4, 1), u"12.50"_s);
        QCOMPARE(window.disagreement(), QString());
    }

    // The texts that the host sets reach the selector unchanged.
    void textsForTheSelector()
    {
        AllocationWindow window;
        QStringList asked;
        const auto provide = [&](const char *name, const QList<TFieldDef> &fields, const QVariantList &row) {
            window.connection.RegisterProvider(QLatin1String(name), [=, &asked](const TParams &params) {
                asked.append(params.ParamByName(u"pProductGroupID"_s).AsString());
                TTableBuilder rows(fields);
                rows.AddRow(row);
                return TDataPacket(rows.Finish());
            });
        };
        const TFieldDef type{u"GroupTypeID"_s, TFieldType::Integer};
        const TFieldDef group{u"FundGroupID"_s, TFieldType::Integer};
        provide("dspFundGroupType", {type, {u"GroupTypeDesc"_s, TFieldType::String}}, {1, u"Type"_s});
        provide("dspFundGroup", {group, type, {u"FundGroupName"_s, TFieldType::String}},
                {77, 1, u"Bonds"_s}); // offered, but without funds
        provide("dspFundPerProduct", {group}, {77});
        window.frame->PerProductFilter = u"FundGroupID > 5"_s;
        window.frame->WarningText = u"Ask first."_s;
        window.frame->InfoText = u"Up to 20 funds"_s;
        window.setupIds({1});
        QCOMPARE(window.frame->ProductGroupID(), 7);
        window.open();
        QVERIFY(window.inSelector([&](TfrmFundSelector &dialog) {
            const TfraFundSelector &selector = *dialog.fraFundSelector;
            QCOMPARE(selector.cdsFundPerProduct->Filter(), window.frame->PerProductFilter);
            QVERIFY(selector.lblWarningMessage->isVisible());
            QVERIFY(selector.lblWarningMessage->text().endsWith(u" Ask first."_s));
            QCOMPARE(selector.lblInfoMessage->text(), window.frame->InfoText);
            QTest::keyClick(&dialog, Qt::Key_Escape);
        }));
        QCOMPARE(asked, QStringList(3, u"7"_s));
        QCOMPARE(window.disagreement(), QString());
    }

    // A missing field of the packet is named in the error, and the displayed rows do not change.
    void missingFieldsAreNamed_data()
    {
        QTest::addColumn<QString>("field");
        for (const char *field : {"FundID",
                                  "GroupTypeID",
                                  "FundGroupID",
                                  "FundGroupName",
                                  "FundGroupName_Afr",
                                  "FundName",
                                  "FundName_AFR",
                                  "F.MainframeID",
                                  "MinimumInitialAmount",
                                  "MinimumSchedAmount",
                                  "BuySellRate",
                                  "ManRate",
                                  "UnderlyingManRate",
                                  "GuaranteeRate",
                                  "TrustRate",
                                  "FundTerm",
                                  "InternationalFund",
                                  "AllowAsGuarantee",
                                  "Benchmark",
                                  "BenchmarkPerf",
                                  "MinPerfFee",
                                  "MaxPerfFee"})
            QTest::newRow(field) << QString::fromLatin1(field);
    }
    void missingFieldsAreNamed()
    {
        QFETCH(const QString, field);
        AllocationWindow window{QVariant()};
        const auto errorOf = [](const std::function<void()> &work) {
            try {
                work();
            } catch (const EDatabaseError &error) {
                return error.message();
            }
            return QString();
        };
        QStringList errors;
        errors << errorOf(
            [&] { window.frame->Set_FundsPerProductDataSet(fundPacket({{.id = 4, .term = 60}}, field)); });
        errors << errorOf([&] { window.setupIds({4}); });
        const QString disagreement = window.disagreement();
        errors << errorOf([&] {
            int group = 0;
            int type = 0;
            int term = 0;
            bool international = false;
            QString name, nameAfr, mainframe, groupName, groupNameAfr;
            Currency rates[7];
            window.frame->GetFundInfo(4, group, type, name, nameAfr, international, rates[0], rates[1],
                                      rates[2], rates[3], rates[4], rates[5], rates[6], term, mainframe,
                                      groupName, groupNameAfr);
        });
        errors << errorOf([&] {
            TFundItem item(4);
            window.frame->LoadPerformanceInfo(4, item);
        });
        errors.removeAll(QString());
        QVERIFY(!errors.isEmpty());
        for (const QString &error : std::as_const(errors))
            QVERIFY2(error.contains(field), qPrintable(error));
        QCOMPARE(disagreement, QString());
        QCOMPARE(window.disagreement(), QString());
    }
};

ZEL_TEST_MAIN(TestAllocationHost)
#include "tst_allocation_host.moc"
