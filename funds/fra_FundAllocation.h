#pragma once

#include "data/ClientDataSet.h"
#include "data/LocalConnection.h"
#include "frames/fra_BaseFrame.h"
#include "funds/AllocationMath.h"
#include "funds/fra_FundToolBar.h"
#include "funds/misc_Types.h"
#include "toolkit/TImageList.h"
#include "toolkit/TtsGrid.h"
#include "ui_fra_FundAllocation.h"

#include <QPointer>

#include <memory>

class TFundItem;

namespace Zel
{
class AllocationColumns;
class GroupTypes;
class ToolBarKeys;
} // namespace Zel

/// One row of an allocation as a plain value, for the host to store. It does not depend on the frame.
struct TAllocationRow {
    int FundID = 0;   ///< The fund's number in the catalogue.
    Currency Amount;  ///< rand
    Currency Percent; ///< percent of the investment; 100.00 is the whole
    friend bool operator==(const TAllocationRow &, const TAllocationRow &) = default;
};

/// The frame in which an adviser allocates one investment to several funds, by percent or by amount. It shows
/// a grid row for each fund, keeps the TFunds list consistent with the grid, and shows the remainder.
///
/// The host creates the frame, lets InitializeFrame run, sets AllocByAmount, InvestmentAmount, the show and
/// caption properties and FundsPerProductDataSet, and calls SetupFundAllocation. When the quote is saved, the
/// host reads Allocation(), not the variable that it passed to SetupFundAllocation. The frame changes records
/// in the storage of that variable, but when it rebuilds the list (Remove, Clear, Funds, dropping funds that
/// the product does not offer), the variable keeps the old list. SetAllocation() restores stored rows.
///
/// AllocationChanged is emitted after every change by the adviser or by code.
///
/// An invalid entry of the adviser is corrected in place and causes no error. The functions for the host
/// throw the exceptions of the data layer (EDatabaseError, EConvertError); list and grid stay consistent
/// then.
class ZEL_COMMONFRAMES_EXPORT TfraFundAllocation : public TBaseFrame, public Ui::TfraFundAllocation
{
    Q_OBJECT
    Q_PROPERTY(bool AllocByAmount READ Get_AllocByAmount WRITE Set_AllocByAmount NOTIFY AllocByAmountChanged)
    Q_PROPERTY(Currency InvestmentAmount READ Get_InvestmentAmount WRITE Set_InvestmentAmount NOTIFY
                   InvestmentAmountChanged)
    Q_PROPERTY(Currency InvestmentPercent READ Get_InvestmentPercent NOTIFY InvestmentAmountChanged)
    Q_PROPERTY(Currency RemainingAmount READ Get_RemainingAmount NOTIFY RemainingChanged)
    Q_PROPERTY(Currency RemainingPercent READ Get_RemainingPercent NOTIFY RemainingChanged)
    Q_PROPERTY(bool ShowColumn_Percent READ Get_ShowColumn_Percent WRITE Set_ShowColumn_Percent NOTIFY
                   ShowColumn_PercentChanged)
    Q_PROPERTY(bool ShowColumn_Amount READ Get_ShowColumn_Amount WRITE Set_ShowColumn_Amount NOTIFY
                   ShowColumn_AmountChanged)
    Q_PROPERTY(bool ShowToolBar READ Get_ShowToolBar WRITE Set_ShowToolBar NOTIFY ShowToolBarChanged)
    Q_PROPERTY(
        bool ShowStatusPanel READ Get_ShowStatusPanel WRITE Set_ShowStatusPanel NOTIFY ShowStatusPanelChanged)
    Q_PROPERTY(QString ColumnCaption_Fund READ Get_ColumnCaption_Fund WRITE Set_ColumnCaption_Fund NOTIFY
                   ColumnCaption_FundChanged)
    Q_PROPERTY(QString ColumnCaption_Amount READ Get_ColumnCaption_Amount WRITE Set_ColumnCaption_Amount
                   NOTIFY ColumnCaption_AmountChanged)
    Q_PROPERTY(QString ColumnCaption_Percent READ Get_ColumnCaption_Percent WRITE Set_ColumnCaption_Percent
                   NOTIFY ColumnCaption_PercentChanged)
    Q_PROPERTY(bool ShowButtonGuarantee READ Get_ShowButtonGuarantee WRITE Set_ShowButtonGuarantee NOTIFY
                   ShowButtonGuaranteeChanged)
    Q_PROPERTY(bool ShowButtonInvested READ Get_ShowButtonInvested WRITE Set_ShowButtonInvested NOTIFY
                   ShowButtonInvestedChanged)
    Q_PROPERTY(QVariant FundsPerProductDataSet READ Get_FundsPerProductDataSet WRITE
                   Set_FundsPerProductDataSet NOTIFY FundsPerProductDataSetChanged)
    Q_PROPERTY(int FundCount READ Get_FundCount NOTIFY FundCountChanged)
public:
    /// The grid's columns.
    enum Column { PictureColumn = 1, FundColumn, PercentColumn, AmountColumn };

    explicit TfraFundAllocation(QWidget *parent = nullptr);
    /// Frees every bookmark and closes the fund dataset.
    ~TfraFundAllocation() override;

    TtsMaskDefs *tsMaskDefs;        ///< The masks of the grid's cells.
    TImageList *imgFund;            ///< The pictures of the grid.
    TClientDataSet *cdsFunds;       ///< The funds of the product, filtered to those in the list.
    TClientDataSet *cdsFundMessage; ///< The funds of a group that have a message.

    /// Texts for the fund selector (see TfraFundSelector::BuildFundSelector), set by the host.
    QString PerProductFilter;
    QString WarningText;
    QString InfoText;

    bool Get_AllocByAmount() const noexcept { return m_allocByAmount; }
    /// The mode: by amount (rand) or by percent. Like every operation that changes more than the edited cell,
    /// this one first ends a running edit.
    void Set_AllocByAmount(bool byAmount);
    Currency Get_InvestmentAmount() const noexcept { return m_investmentAmount; }
    /// In rand. By amount, recalculates the percentages of all rows; by percent, leaves the rows unchanged.
    void Set_InvestmentAmount(Currency amount);
    /// 100.00 after InvestmentAmount was set, 0 before.
    Currency Get_InvestmentPercent() const noexcept { return m_investmentPercent; }
    /// The remainder in rand: InvestmentAmount minus the shown cells of the amount column. Negative when the
    /// allocation exceeds the investment. In the mode by percent, edits do not change it.
    Currency Get_RemainingAmount() const noexcept { return m_remainingAmount; }
    /// The remainder in percent. By percent: InvestmentPercent minus the shown cells of the percent column.
    /// By amount: the percentage of RemainingAmount in InvestmentAmount, or InvestmentPercent while
    /// InvestmentAmount is 0.
    Currency Get_RemainingPercent() const noexcept { return m_remainingPercent; }
    bool Get_ShowColumn_Percent() const noexcept { return m_showColumnPercent; }
    /// Shows or hides a column. Hiding a column switches to the mode of the other column.
    void Set_ShowColumn_Percent(bool show);
    bool Get_ShowColumn_Amount() const noexcept { return m_showColumnAmount; }
    void Set_ShowColumn_Amount(bool show);
    bool Get_ShowToolBar() const noexcept { return m_showToolBar; }
    void Set_ShowToolBar(bool show);
    bool Get_ShowStatusPanel() const noexcept { return m_showStatusPanel; }
    void Set_ShowStatusPanel(bool show);
    QString Get_ColumnCaption_Fund() const { return m_captionFund; }
    void Set_ColumnCaption_Fund(const QString &caption);
    QString Get_ColumnCaption_Amount() const { return m_captionAmount; }
    void Set_ColumnCaption_Amount(const QString &caption);
    QString Get_ColumnCaption_Percent() const { return m_captionPercent; }
    void Set_ColumnCaption_Percent(const QString &caption);
    bool Get_ShowButtonGuarantee() const;
    void Set_ShowButtonGuarantee(bool show);
    bool Get_ShowButtonInvested() const;
    /// Shows or hides the button. After hiding, a change of the row does not show it again.
    void Set_ShowButtonInvested(bool show);
    QVariant Get_FundsPerProductDataSet() const { return m_fundsPerProduct; }
    /// The packet (see TDataPacket) of the funds that the product offers, one row for each fund. Throws
    /// EDatabaseError, and changes nothing, for anything else. The frame reads the fields FundID, FundName,
    /// GroupTypeID, FundGroupID, FundTerm (months) and AllowAsGuarantee of the shown funds. GetFundInfo,
    /// LoadPerformanceInfo and TfraFundSelector read more fields.
    void Set_FundsPerProductDataSet(const QVariant &packet);
    int Get_FundCount() const noexcept { return m_funds.Length(); }
    /// The frame's list. Element i is grid row i + 1.
    TFunds &Funds() noexcept { return m_funds; }
    /// The rows as values, in the order of the grid. They include a running edit.
    QList<TAllocationRow> Allocation() const;
    /// Replaces the rows by @p rows, in the order of FundsPerProductDataSet. Keeps the values of the mode's
    /// column and recalculates the other column, as SetupFundAllocation does. Keeps product group and
    /// connection. Returns the rows left out, in the order given: those of funds that the product does not
    /// offer. Throws like SetupFundAllocation; without FundsPerProductDataSet nothing is changed.
    QList<TAllocationRow> SetAllocation(const QList<TAllocationRow> &rows);
    int ProductGroupID() const noexcept { return m_productGroupID; } ///< The argument of SetupFundAllocation.
    /// The values that FundGridRowChanged read for the current row's fund; -1 without a fund, except
    /// FundGroupID, which keeps its last value.
    int CurrentFundTerm() const noexcept { return m_fundTerm; }
    int CurrentFundID() const noexcept { return m_fundID; }
    int CurrentGroupTypeID() const noexcept { return m_groupTypeID; }
    int CurrentFundGroupID() const noexcept { return m_fundGroupID; }

    // --- setting up and showing
    /// Takes over @p funds, shares its storage, and shows it. @p connection serves the messages about a fund
    /// (see BuildFundMessageSetFromDataSet) and the fund selector; it is not owned and must outlive its use.
    /// When there are funds to show and FundsPerProductDataSet was not set or lacks a field, throws
    /// EDatabaseError, and the frame then has no funds. Funds that the product does not offer are dropped
    /// with their amounts; SetAllocation() returns such rows.
    void SetupFundAllocation(TFunds &funds, int productGroupID, TLocalConnection *connection);
    /// Shows a row for each record whose fund is in @p dataset, in the dataset's order, and sorts @p funds in
    /// that order. Records of other funds are dropped, and @p funds then gets its own storage. Does nothing
    /// for an empty list. Throws EDatabaseError when there is no dataset or the dataset is closed.
    void DisplaySelectedFunds(TDataSet *dataset, TFunds &funds);
    Q_INVOKABLE void UpdateRemainingCaption(); ///< Shows the remainder on the status panel.
    /// Recalculates the remainder from the percent or the amount column; does nothing for another column.
    Q_INVOKABLE void RecalcRemainingAmount(int column);
    Q_INVOKABLE void DoAllocByAmount(); ///< Makes the column of the mode editable, the other read-only.
    /// Rounds to cents: x 100, plus 0.5, truncated toward zero, / 100. A negative value is rounded toward
    /// zero.
    static Currency RoundToTwoDecimalsCurrency(Currency value);
    /// The value of a cell in the current row; 0 without a current row.
    Q_INVOKABLE Currency GetCurrentGridRowValue(int column) const;
    /// Sets a cell in the current row and recalculates the row; does nothing without a current row.
    Q_INVOKABLE void SetCurrentGridRowValue(int column, Currency value);
    /// Call this after code wrote a percent or amount cell. Recalculates the row as after an edit.
    void FormatCell(QObject *sender, int column, int row);
    Q_INVOKABLE void CheckButtonStatus();           ///< Enables and disables the tool bar's buttons.
    Q_INVOKABLE void SizeGridColumns();             ///< Fits the columns to the grid's width.
    Q_INVOKABLE void RestoreOriginalColumnWidths(); ///< Restores the designed widths of the columns.
    /// Frees the valid bookmarks of all records with @p dataset, which may be nullptr, and clears the
    /// bookmarks in the records.
    static void DoFreeBookMarks(TFunds &funds, TDataSet *dataset);

    // --- the fund list
    /// Appends a fund to the list and the grid. Ignores a fund that the product does not offer; compare
    /// FundCount before and after.
    Q_INVOKABLE void AddFundIDToList(int fundID, Currency amount, Currency percent);
    /// Removes record @p index from @p funds, which then has its own storage. With @p updateGrid, and when @p
    /// funds shares the frame's list, also removes the row, and the frame's list becomes @p funds. An index
    /// outside the list removes nothing.
    void RemoveFundFromList(TFunds &funds, int index, bool updateGrid);
    Q_INVOKABLE void ClearFunds(); ///< Empties list and grid.
    /// Sets every row to 0.
    Q_INVOKABLE void ResetValues();
    /// Swaps two records; does nothing when an index is outside the list.
    static void MoveFundInList(TFunds &funds, int a, int b);
    static bool FundInList(int fundID, const TDynamicArrayOfInt &ids); ///< Whether @p fundID is in @p ids.
    /// @p ids without every occurrence of @p fundID.
    static TDynamicArrayOfInt RemoveFromSet(const TDynamicArrayOfInt &ids, int fundID);
    /// Appends @p source to @p target, duplicates included.
    static void ConcatDynamicArraySet(TDynamicArrayOfInt &target, const TDynamicArrayOfInt &source);
    /// Sets the percentage of row r to @p values[r - 1], in cell and record, without recalculating the amount
    /// or the remainder. Rows without a value do not change.
    void AllocateIncomeSpecifiedForNIT(const QList<Currency> &values);

    // --- data of a fund
    /// The catalogue's data of a fund. For an unknown fund, or when cdsFunds is closed: -1, -1.00, false and
    /// empty texts, and the two fund names are unchanged. Amounts are in rand, rates in percent, the term in
    /// months. Moves cdsFunds to the row after the fund's, or to its end. Reads the fields GroupTypeID,
    /// FundGroupID, FundGroupName, FundGroupName_Afr, FundName, FundName_AFR, F.MainframeID,
    /// MinimumInitialAmount, MinimumSchedAmount, BuySellRate, ManRate, UnderlyingManRate, GuaranteeRate,
    /// TrustRate, FundTerm and InternationalFund; throws EDatabaseError for a missing field.
    ///
    /// The group type is that of the row, except for funds and groups with special rules (see FundRules.h).
    void GetFundInfo(int fundID, int &fundGroupID, int &groupTypeID, QString &fundName, QString &fundNameAfr,
                     bool &internationalFund, Currency &minimumInitialAmount, Currency &minimumSchedAmount,
                     Currency &buySellRate, Currency &manRate, Currency &underlyingManRate,
                     Currency &guaranteeRate, Currency &trustRate, int &fundTerm, QString &mainframeID,
                     QString &fundGroupName, QString &fundGroupNameAfr);
    /// Fills the performance texts of @p item when the fund is known, and moves cdsFunds to the fund's row.
    /// Reads the fields Benchmark, BenchmarkPerf, MinPerfFee and MaxPerfFee; throws EDatabaseError for a
    /// missing field.
    void LoadPerformanceInfo(int fundID, TFundItem &item);
    static TDynamicArrayOfInt BuildFundSet(const TFunds &funds); ///< The identifiers in list order.
    /// The funds of a group among all rows of @p dataset, including filtered-out rows, in the dataset's
    /// order. The current row does not change.
    static TDynamicArrayOfInt BuildFundSetFromDataSet(TDataSet *dataset, int fundGroupID);
    /// The funds of a group that have a message: the FundID of every row that the connection's provider
    /// "dspFundMessage" returns for the parameter pFundGroupID. Exceptions of the request pass to the caller.
    TDynamicArrayOfInt BuildFundMessageSetFromDataSet(int fundGroupID);

    // --- the grid's events
    /// Handles an edit of a cell: recalculates the row and the remainder.
    void FundGridCellEdit(QObject *sender, int column, int row, bool byUser);
    /// Handles the end of an edit: rounds the cell to cents and corrects a value above the maximum.
    void FundGridEndCellEdit(QObject *sender, int column, int row, bool &cancel);
    void FundGridRowChanged(QObject *sender, int oldRow, int newRow); ///< Handles another current row.
    /// Cancels the undo, because the other values of the row have already been recalculated.
    void FundGridUndoCellEdit(QObject *sender, int column, int row, bool byUser, bool &cancel);
    void FrameResize(); ///< Fits the columns to the frame's new width.

Q_SIGNALS:
    void AllocByAmountChanged(bool byAmount);
    void InvestmentAmountChanged(Currency amount);
    void RemainingChanged();
    void ShowColumn_PercentChanged(bool show);
    void ShowColumn_AmountChanged(bool show);
    void ShowToolBarChanged(bool show);
    void ShowStatusPanelChanged(bool show);
    void ColumnCaption_FundChanged(const QString &caption);
    void ColumnCaption_AmountChanged(const QString &caption);
    void ColumnCaption_PercentChanged(const QString &caption);
    void ShowButtonGuaranteeChanged(bool show);
    void ShowButtonInvestedChanged(bool show);
    void FundsPerProductDataSetChanged();
    void FundCountChanged(int count);
    /// A button was clicked whose command the host implements; the frame itself does nothing.
    void DuplicateClicked();
    void GuaranteeClicked();
    void InvestedClicked();
    /// A fund, its position, its amount or percentage, InvestmentAmount or the mode has changed, by the
    /// adviser or by code. Emitted once for a whole command or call, and once for each keystroke of an edit,
    /// after list, grid, remainder, captions and buttons were updated. Not emitted when a command changed
    /// nothing, or after a direct change of Funds(). Allocation() returns the new rows.
    void AllocationChanged();
    /// The amount or the percentage of a row was edited, by a keystroke, SetCurrentGridRowValue or
    /// FormatCell. Emitted before the AllocationChanged of that edit. @p row counts from 1, as in the grid.
    void AllocationRowChanged(int row);

protected:
    void InitializeFrame() override;
    void changeEvent(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    class CaptionBatch;
    class Change;

    void bindGrid();
    void bindToolBar();
    void designHeadings();
    void retranslate();
    void fraFundToolBarsbtFundsClick();
    void fraFundToolBarsbtRemoveClick();
    void fraFundToolBarsbtClearClick();
    void fraFundToolBarsbtAllocateAmountClick();
    void fraFundToolBarsbtResetToZeroClick();
    void fraFundToolBarsbtDuplicateClick();
    void fraFundToolBarsbtGuaranteeClick();
    void fraFundToolBarsbtInvestedClick();
    void cdsFundsBeforeClose();

    Column editableColumn() const noexcept { return m_allocByAmount ? AmountColumn : PercentColumn; }
    TFundRec *recordOf(int row) noexcept;
    void setCaption(int column, const QString &caption, QString &kept);
    void setRemaining(Currency amount, Currency percent);
    void showNoRows();
    void showList();
    void standWhereOneTypes(bool fromAnyColumn);
    void wantDataset(const TDataSet *dataset) const;
    void noticeCount();
    bool seekFund(int fundID);
    void hideInvested();

    QPointer<TLocalConnection> m_connection;
    QVariant m_fundsPerProduct;
    QVariant m_picture; ///< the picture in column 1, drawn once
    int m_productGroupID = 0;
    Currency m_investmentAmount, m_remainingAmount, m_investmentPercent, m_remainingPercent;
    Zel::Allocation::ColumnSum m_percentSum, m_amountSum;
    int m_fundTerm = -1, m_fundID = -1, m_groupTypeID = -1, m_fundGroupID = 0;
    TDynamicArrayOfInt m_selectedFundIDs;
    TFunds m_funds;
    QString m_captionFund, m_captionAmount, m_captionPercent;
    QString m_designedHeader; ///< the designed caption of pnlHeaderCaption in the current language
    std::array<QString, 3> m_designedHeadings;
    std::unique_ptr<Zel::AllocationColumns> m_columns;
    std::unique_ptr<Zel::GroupTypes> m_groups;
    std::unique_ptr<Zel::ToolBarKeys> m_keys;
    qint16 m_captionBatches = 0;
    qint16 m_changes = 0; ///< the number of nested Change objects
    int m_shownCount = 0;
    bool m_captionDue = false;
    bool m_captionsFilled = false; ///< whether the status panels no longer have their designed placeholders
    bool m_allocByAmount = true;
    bool m_investedSuppressed = false;
    bool m_showColumnPercent = true, m_showColumnAmount = true, m_showToolBar = true,
         m_showStatusPanel = true;
};
