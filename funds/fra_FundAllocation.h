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

class TFundItem;

/// One row of an allocation as a value: what a host keeps of it. It belongs to nobody and stays good when the
/// frame is gone.
struct TAllocationRow {
    int FundID = 0;   ///< The fund's number in the catalogue.
    Currency Amount;  ///< rand
    Currency Percent; ///< percent of the investment; 100.00 is the whole
    friend bool operator==(const TAllocationRow &, const TAllocationRow &) = default;
};

/// The frame in which an adviser splits one investment over several funds, by percent or by amount. It shows
/// a grid row per fund, keeps the TFunds list in step with the grid, and shows what is still unallocated.
///
/// The host creates it, lets InitializeFrame run, sets AllocByAmount, InvestmentAmount, the show and caption
/// properties and FundsPerProductDataSet, calls SetupFundAllocation, and reads Allocation() when the quote is
/// saved, never the variable that it handed to SetupFundAllocation: records are changed in that storage, but
/// whatever rebuilds the list (Remove, Clear, Funds, the dropping of funds that the product does not offer)
/// leaves the host's variable on the old one. SetAllocation() puts rows back that were kept.
///
/// AllocationChanged tells of every change, whoever made it, once it is done.
///
/// What the adviser types is corrected in place and never answered with an error; what the host asks raises
/// what the data layer raises (EDatabaseError, EConvertError), with list and grid still in step.
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
    /// Gives every bookmark back and closes the fund dataset.
    ~TfraFundAllocation() override;

    TtsMaskDefs *tsMaskDefs;        ///< The masks of the grid's cells.
    TImageList *imgFund;            ///< The pictures of the grid.
    TClientDataSet *cdsFunds;       ///< the funds of the product, filtered to the listed ones
    TClientDataSet *cdsFundMessage; ///< the funds of a group that carry a message

    /// Passed on to the fund selector as they are (see TfraFundSelector::BuildFundSelector); the host sets
    /// them.
    QString PerProductFilter;
    QString WarningText;
    QString InfoText;

    bool Get_AllocByAmount() const noexcept { return m_allocByAmount; }
    /// The mode: by amount (rand) or by percent. An edit in progress is ended first, as in every operation
    /// that changes more than the cell being typed in.
    void Set_AllocByAmount(bool byAmount);
    Currency Get_InvestmentAmount() const noexcept { return m_investmentAmount; }
    /// In rand. By amount, the percentages of all rows follow; by percent, what is shown stays as it is.
    void Set_InvestmentAmount(Currency amount);
    /// 100.00 once InvestmentAmount was set, 0 before.
    Currency Get_InvestmentPercent() const noexcept { return m_investmentPercent; }
    /// Rand not yet given to a fund, by the shown cells of the amount column, negative when too much is. By
    /// percent no edit changes it.
    Currency Get_RemainingAmount() const noexcept { return m_remainingAmount; }
    /// The same in percent, by the percent column or, when the mode is by amount, as the share that
    /// RemainingAmount is of InvestmentAmount (InvestmentPercent while that is 0).
    Currency Get_RemainingPercent() const noexcept { return m_remainingPercent; }
    bool Get_ShowColumn_Percent() const noexcept { return m_showColumnPercent; }
    /// Hiding a column switches to the mode of the other one.
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
    /// Hiding the button also keeps the row rules from showing it again.
    void Set_ShowButtonInvested(bool show);
    QVariant Get_FundsPerProductDataSet() const { return m_fundsPerProduct; }
    /// The packet of the funds that the product offers (see TDataPacket), a row for each. EDatabaseError for
    /// anything else, with nothing changed. The fields FundID, FundName, GroupTypeID, FundGroupID, FundTerm
    /// (months) and AllowAsGuarantee are read for the funds that are shown, those of GetFundInfo and
    /// LoadPerformanceInfo when these are called, and those of TfraFundSelector when funds are chosen.
    void Set_FundsPerProductDataSet(const QVariant &packet);
    int Get_FundCount() const noexcept { return m_funds.Length(); }
    /// The frame's list. Element i is grid row i + 1.
    TFunds &Funds() noexcept { return m_funds; }
    /// The rows in the order of the grid, as values. What is being typed is in them.
    QList<TAllocationRow> Allocation() const;
    /// Shows @p rows in place of those that are there, in the order of FundsPerProductDataSet. The column of
    /// the mode stays as it is given and the other one follows from it, as in SetupFundAllocation; product
    /// group and connection stay. Answers what had to be left out, in the order given: the rows of funds that
    /// the product does not offer. Raises as SetupFundAllocation does, but with no FundsPerProductDataSet
    /// nothing has changed.
    QList<TAllocationRow> SetAllocation(const QList<TAllocationRow> &rows);
    int ProductGroupID() const noexcept { return m_productGroupID; } ///< What SetupFundAllocation was given.
    /// What FundGridRowChanged read of the current row's fund; -1 with none (FundGroupID: the last one's).
    int CurrentFundTerm() const noexcept { return m_fundTerm; }
    int CurrentFundID() const noexcept { return m_fundID; }
    int CurrentGroupTypeID() const noexcept { return m_groupTypeID; }
    int CurrentFundGroupID() const noexcept { return m_fundGroupID; }

    // --- setting up and showing
    /// Takes over @p funds, sharing its storage, and shows it. @p connection is not owned and must outlive
    /// its use: it is asked for the messages about a fund (see BuildFundMessageSetFromDataSet) and by the
    /// fund selector. EDatabaseError when there are funds to show and FundsPerProductDataSet was not set or
    /// lacks a field; the frame then holds and shows no funds. Funds that the product does not offer are
    /// dropped with their amounts; SetAllocation() tells which.
    void SetupFundAllocation(TFunds &funds, int productGroupID, TLocalConnection *connection);
    /// Shows a row for each record that @p dataset holds, in the dataset's order, puts @p funds in that order
    /// and parts it from its other copies when it drops records that the dataset does not hold. Nothing for
    /// an empty list. EDatabaseError with no dataset, or with a closed one.
    void DisplaySelectedFunds(TDataSet *dataset, TFunds &funds);
    Q_INVOKABLE void UpdateRemainingCaption(); ///< Shows what is left on the status panel.
    /// What is left by the cells of the percent or the amount column; nothing for another column.
    Q_INVOKABLE void RecalcRemainingAmount(int column);
    Q_INVOKABLE void DoAllocByAmount(); ///< Lets the column of the mode be edited, and greys the other.
    /// To the cent: x 100, plus 0.5, truncated toward zero, / 100. A negative value moves toward zero.
    static Currency RoundToTwoDecimalsCurrency(Currency value);
    /// 0 with no current row.
    Q_INVOKABLE Currency GetCurrentGridRowValue(int column) const;
    /// Nothing with no current row.
    Q_INVOKABLE void SetCurrentGridRowValue(int column, Currency value);
    /// To be called after code wrote a percent or amount cell: the row follows as if it had been typed.
    void FormatCell(QObject *sender, int column, int row);
    Q_INVOKABLE void CheckButtonStatus();           ///< Enables the tool bar's buttons to match the rows.
    Q_INVOKABLE void SizeGridColumns();             ///< The columns share the grid's width.
    Q_INVOKABLE void RestoreOriginalColumnWidths(); ///< The columns get their designed widths.
    /// Gives the bookmarks of all records back to @p dataset, if there is one, where it still accepts them;
    /// the records keep none.
    static void DoFreeBookMarks(TFunds &funds, TDataSet *dataset);

    // --- the fund list
    /// Appends a fund to the list; the grid follows. A fund that the product does not offer is not taken:
    /// FundCount tells.
    Q_INVOKABLE void AddFundIDToList(int fundID, Currency amount, Currency percent);
    /// Removes record @p index from @p funds, which parts from its other copies. With @p updateGrid the
    /// record's row goes too; when @p funds is a copy that shares the frame's list, the frame's list follows.
    /// An index outside the list removes no record and no row.
    void RemoveFundFromList(TFunds &funds, int index, bool updateGrid);
    Q_INVOKABLE void ClearFunds(); ///< Empties list and grid.
    /// Sets every row to 0.
    Q_INVOKABLE void ResetValues();
    /// Swaps two records; nothing unless both are in the list.
    static void MoveFundInList(TFunds &funds, int a, int b);
    static bool FundInList(int fundID, const TDynamicArrayOfInt &ids); ///< Whether @p fundID is in @p ids.
    /// @p ids without every occurrence of @p fundID.
    static TDynamicArrayOfInt RemoveFromSet(const TDynamicArrayOfInt &ids, int fundID);
    /// Appends @p source to @p target, duplicates included.
    static void ConcatDynamicArraySet(TDynamicArrayOfInt &target, const TDynamicArrayOfInt &source);
    /// Row r gets percent @p values[r - 1], in cell and record; nothing else follows. Rows without a value
    /// stay.
    void AllocateIncomeSpecifiedForNIT(const QList<Currency> &values);

    // --- what is known of a fund
    /// The catalogue's data of a fund: -1, -1.00, false and empty texts when it is unknown or the fund
    /// dataset is closed; the two fund names are then left as they were. Amounts in rand, rates in percent,
    /// the term in months. Leaves cdsFunds on the row after the fund's, or at its end. Reads the fields
    /// GroupTypeID, FundGroupID, FundGroupName, FundGroupName_Afr, FundName, FundName_AFR, F.MainframeID,
    /// MinimumInitialAmount, MinimumSchedAmount, BuySellRate, ManRate, UnderlyingManRate, GuaranteeRate,
    /// TrustRate, FundTerm and InternationalFund; EDatabaseError for one that is missing.
    ///
    /// The group type is the row's, but for funds and groups that are treated specially (see FundRules.h).
    void GetFundInfo(int fundID, int &fundGroupID, int &groupTypeID, QString &fundName, QString &fundNameAfr,
                     bool &internationalFund, Currency &minimumInitialAmount, Currency &minimumSchedAmount,
                     Currency &buySellRate, Currency &manRate, Currency &underlyingManRate,
                     Currency &guaranteeRate, Currency &trustRate, int &fundTerm, QString &mainframeID,
                     QString &fundGroupName, QString &fundGroupNameAfr);
    /// Fills the performance texts of @p item when the fund is known; cdsFunds stays on the fund's row. Reads
    /// the fields Benchmark, BenchmarkPerf, MinPerfFee and MaxPerfFee; EDatabaseError for one that is
    /// missing.
    void LoadPerformanceInfo(int fundID, TFundItem &item);
    static TDynamicArrayOfInt BuildFundSet(const TFunds &funds); ///< The identifiers in list order.
    /// The funds of a group among all rows of @p dataset, filtered out or not, in its order; its position
    /// stays.
    static TDynamicArrayOfInt BuildFundSetFromDataSet(TDataSet *dataset, int fundGroupID);
    /// Asks the connection which funds of a group carry a message: the FundID of every row that the provider
    /// "dspFundMessage" has for the parameter pFundGroupID. What asking raises passes to the caller.
    TDynamicArrayOfInt BuildFundMessageSetFromDataSet(int fundGroupID);

    // --- the grid's events
    /// A cell was edited: the row follows.
    void FundGridCellEdit(QObject *sender, int column, int row, bool byUser);
    /// A cell is left: its row is worked out.
    void FundGridEndCellEdit(QObject *sender, int column, int row, bool &cancel);
    void FundGridRowChanged(QObject *sender, int oldRow, int newRow); ///< Another row is the current one.
    /// Refuses to take an edit back: the row has already followed it.
    void FundGridUndoCellEdit(QObject *sender, int column, int row, bool byUser, bool &cancel);
    void FrameResize(); ///< The columns take the frame's new width.

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
    /// The three commands whose meaning is the host's; the frame itself does nothing on them.
    void DuplicateClicked();
    void GuaranteeClicked();
    void InvestedClicked();
    /// The allocation has changed: a fund, its place, its amount or percentage, InvestmentAmount or the mode,
    /// by the adviser's hand or by a call. Sent once for a whole command or call and once for each keystroke
    /// of an edit, when list, grid, remainder, captions and buttons agree; not when a command changed
    /// nothing. Allocation() has the new rows. What is written into Funds() directly is not told.
    void AllocationChanged();
    /// The amount or the percentage of a row was edited, by a keystroke or by SetCurrentGridRowValue or
    /// FormatCell. Sent before the AllocationChanged of that edit. @p row counts from 1, as in the grid.
    void AllocationRowChanged(int row);

protected:
    void InitializeFrame() override;
    void changeEvent(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    class CaptionBatch;
    class Change;
    struct GroupIndex {
        std::weak_ptr<const TTable> table;
        QHash<int, quint32> groupsOf; ///< fund ID -> bits in the order of GroupsThatAreTypes
    };

    void bindGrid();
    void bindToolBar();
    void designHeadings();
    void addKeysToHints();
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
    bool ownScrollBarShowing() const;
    bool seekFund(int fundID);
    int effectiveGroupType(int fundID, int rowType);
    void hideInvested();

    QPointer<TLocalConnection> m_connection;
    QVariant m_fundsPerProduct;
    QVariant m_picture; ///< what column 1 shows, drawn once
    std::array<int, 3> m_originalWidths{250, 120, 120};
    int m_productGroupID = 0;
    Currency m_investmentAmount, m_remainingAmount, m_investmentPercent, m_remainingPercent;
    Zel::Allocation::ColumnSum m_percentSum, m_amountSum;
    int m_fundTerm = -1, m_fundID = -1, m_groupTypeID = -1, m_fundGroupID = 0;
    TDynamicArrayOfInt m_selectedFundIDs;
    TFunds m_funds;
    QString m_captionFund, m_captionAmount, m_captionPercent;
    QString m_designedHeader; ///< what pnlHeaderCaption shows until the host sets it
    std::array<QString, 3> m_designedHeadings;
    QList<std::pair<TSpeedButton *, QKeySequence>> m_keys;
    GroupIndex m_groups;
    qint16 m_captionBatches = 0;
    qint16 m_changes = 0; ///< commands and edits at work, one inside the other
    int m_shownCount = 0;
    bool m_captionDue = false;
    bool m_captionsFilled = false; ///< the designed placeholders are gone from the status panels
    bool m_allocByAmount = true;
    bool m_investedSuppressed = false;
    bool m_showColumnPercent = true, m_showColumnAmount = true, m_showToolBar = true,
         m_showStatusPanel = true;
};
