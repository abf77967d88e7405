#pragma once

#include "export/zel_commonframes_export.h"
#include "frames/fra_BaseFrame.h"
#include "funds/misc_Types.h"
#include "ui_fra_FundSelector.h"

#include <QSet>

class TClientDataSet;
class TImageList;
class TListItem;
class TLocalConnection;
class TTreeNode;

/// The frame for choosing funds of a product: the catalogue tree on the left, the chosen funds on the right,
/// the buttons between them, and below a warning line, an info line, Select and Cancel. The frame fills the
/// catalogue from four client datasets, hides groups that the product cannot use, shows the funds chosen
/// before, and returns the chosen identifiers after Select was pressed. The dialog or page that contains the
/// frame closes it.
///
/// Keys: in the tree Enter adds the selected fund, in the list Delete removes the selected one; every button
/// has an Alt letter.
class ZEL_COMMONFRAMES_EXPORT TfraFundSelector : public TBaseFrame, public Ui::TfraFundSelector
{
    Q_OBJECT
public:
    /// @p parent owns the frame.
    explicit TfraFundSelector(QWidget *parent = nullptr);
    /// Closes the four datasets, which frees the tree's bookmarks.
    ~TfraFundSelector() override;

    // The invisible components, owned by the frame; these are also their object names.
    TClientDataSet *cdsFundGroupType;  ///< provider "dspFundGroupType"
    TClientDataSet *cdsFundGroup;      ///< provider "dspFundGroup"
    TClientDataSet *cdsFund;           ///< the fund data packet
    TImageList *imgCommon;             ///< ten pictures; 6 fund group, 7 fund, 8 fund group type
    TClientDataSet *cdsFundPerProduct; ///< provider "dspFundPerProduct"

    /// Fills and shows the catalogue. The providers' rows have these fields: "dspFundGroupType" has
    /// GroupTypeID and GroupTypeDesc; "dspFundGroup" has GroupTypeID, FundGroupID and FundGroupName, with the
    /// groups of one type in consecutive rows; "dspFundPerProduct", which also gets the parameter pProductID,
    /// has FundGroupID, with at least one row for each group that the product offers.
    /// @param ProductGroupID     the value of every pProductGroupID parameter
    /// @param PreselectedFundIDs the initially chosen funds, in list order; a fund that is not in the visible
    ///                           catalogue is skipped silently
    /// @param Connection         serves the three providers; not owned, must outlive the frame's next build
    /// @param FundData           a data packet with the funds, those of one group in consecutive rows:
    /// FundID,
    ///                           FundName, FundGroupID, FundSheetURL; the ProductID of the first row is the
    ///                           product
    /// @param PerProductFilter   a filter for the per-product dataset; blank for none
    /// @param WarningText        the text after the fixed-bond note, when the note is shown
    /// @param InfoText           the info line
    /// Passes on the exceptions of the datasets and the connection (a missing provider, a packet without a
    /// needed field, a malformed filter); afterwards the frame can only be built again or destroyed.
    void BuildFundSelector(int ProductGroupID, const TDynamicArrayOfInt &PreselectedFundIDs,
                           TLocalConnection *Connection, const QVariant &FundData,
                           const QString &PerProductFilter, const QString &WarningText,
                           const QString &InfoText);
    /// Whether Select was pressed since the last build. If so, and the list has items, sets @p FundIDs to
    /// their fund identifiers in list order; otherwise leaves @p FundIDs unchanged.
    bool IsNewFundSelection(TDynamicArrayOfInt &FundIDs);
    /// Adds the funds with those identifiers to the list, in the order of the array. A name that is already
    /// in the list is not added again.
    void DisplaySelectedItems(const TDynamicArrayOfInt &FundIDs);
    /// Hides the fund groups without funds that the product does not offer, and the group types without
    /// visible fund groups.
    void FilterDataSetThatHasChildren();
    /// A filter text that hides the rows of @p ParentDataSet without a child row in @p ChildDataSet, for
    /// example "not(FundGroupID in (12,-1,40))"; empty when there are no such rows. With @p
    /// RecordOfferedGroups, groups that the product offers are recorded, to be marked in the tree, and are
    /// written as -1, which hides nothing. Only the visible rows of both datasets count.
    QString BuildExclusionFilter(TClientDataSet *ParentDataSet, const QString &ParentKey,
                                 TClientDataSet *ChildDataSet, const QString &ChildKey,
                                 bool RecordOfferedGroups);
    /// Whether @p Value equals an entry of @p List.
    bool ValueInList(int Value, const TDynamicArrayOfInt &List) const;

Q_SIGNALS:
    /// The FundSheet button was pressed. @p FundID is the tree's selected fund, @p URL the address of its
    /// fact sheet. The frame itself opens nothing. Not emitted when the fund has no address.
    void FundSheetRequested(int FundID, const QString &URL);

public Q_SLOTS:
    // The handlers of the components' events, named after component and event.
    void sbtAddClick();      ///< Adds the fund selected in the catalogue.
    void sbtRemoveClick();   ///< Removes the fund selected in the list.
    void sbtClearClick();    ///< Removes every chosen fund.
    void sbtExpandClick();   ///< Expands every node of the catalogue.
    void sbtCollapseClick(); ///< Collapses every node of the catalogue.
    /// Records that Select was pressed.
    void btnSelectClick();
    void btnCancelClick();                                 ///< For the dialog that contains the frame; empty.
    void splMainMoved();                                   ///< For descendants; empty.
    void FrameResize();                                    ///< Keeps Select and Cancel at the right.
    void fraFundsTreeViewtvFundsChange(TTreeNode *Node);   ///< Enables Add and FundSheet for a fund.
    void fraFundsTreeViewtvFundsEnter();                   ///< Enables Add when a fund is selected.
    void fraFundsTreeViewtvFundsExit();                    ///< Disables Add.
    void fraFundsTreeViewtvFundsDblClick();                ///< Adds the fund.
    void fraFundsTreeViewtvFundsAddition(TTreeNode *Node); ///< Handles a node added while the tree is built.
    /// Enables Select and Clear when the list has items, otherwise disables them.
    void fraFundsSelectedListViewlvSelectedFundsInsert(TListItem *Item);
    /// Enables Remove when an item is selected, Select and Clear when there are items.
    void fraFundsSelectedListViewlvSelectedFundsChange(TListItem *Item);
    void fraFundsSelectedListViewlvSelectedFundsEnter(); ///< Enables Remove when an item is selected.
    void fraFundsSelectedListViewlvSelectedFundsExit();  ///< Disables Remove.

public:
    /// Accepts a drag when the tree's selected node is a fund, and adds the fund at once, before any drop.
    void fraFundsSelectedListViewlvSelectedFundsDragOver(bool &Accept);
    /// Leaves @p Accept unchanged, which accepts the drag.
    void fraFundsTreeViewtvFundsDragOver(bool &Accept);

    void cdsFundGroupTypeBeforeOpen();  ///< Sets the parameters for the group types.
    void cdsFundGroupBeforeOpen();      ///< Sets the parameters for the fund groups.
    void cdsFundPerProductBeforeOpen(); ///< Sets the parameters for the product's groups.
    void cdsFundGroupTypeBeforeClose(); ///< Frees the bookmarks of the group types.
    void cdsFundGroupBeforeClose();     ///< Frees the bookmarks of the fund groups.
    void cdsFundBeforeClose();          ///< Frees the bookmarks of the funds.

protected:
    void changeEvent(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    class HandlerErrors;

    void CreateComponents();
    void BindEvents();
    void SetTextColors();
    void FitButtons();
    void FitLook();
    void ShowWarningText();
    void Retranslate();
    template <typename Body> void Handle(Body &&body) noexcept;
    void RequestFundSheet();

    bool FSelectionConfirmed = false;
    int FProductGroupID = 0;
    TDynamicArrayOfInt FOfferedEmptyGroups;
    bool FShowWarning = false;

    bool m_labelsFilled = false;       // whether the labels no longer have their designed placeholders
    QString m_warningText;             // the text after the fixed-bond note
    QSet<int> m_offeredEmptyGroups;    // FOfferedEmptyGroups as a set, while the tree is built
    HandlerErrors *m_errors = nullptr; // receives the handlers' exceptions during a call of the frame
    QSet<QString> *m_listed = nullptr; // the list's captions while many funds are added at once
};
