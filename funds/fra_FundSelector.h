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

/// Picks funds for a product: the catalogue tree on the left, the picked funds on the right, the buttons
/// between them, and below a warning line, an info line, Select and Cancel. The frame fills the catalogue
/// from four client datasets, hides what the product cannot use, starts from the funds chosen before and
/// hands back the chosen identifiers once Select was pressed. Closing is the business of whoever holds it.
///
/// Keys: in the tree Enter adds the selected fund, in the list Delete removes the selected one; every button
/// has an Alt letter.
class ZEL_COMMONFRAMES_EXPORT TfraFundSelector : public TBaseFrame, public Ui::TfraFundSelector
{
    Q_OBJECT
public:
    /// @p parent owns the frame as usual.
    explicit TfraFundSelector(QWidget *parent = nullptr);
    /// Closes the four datasets; the tree's bookmarks go back to them on the way.
    ~TfraFundSelector() override;

    // Components without a place on screen; owned by the frame and found by these names.
    TClientDataSet *cdsFundGroupType;  ///< provider "dspFundGroupType"
    TClientDataSet *cdsFundGroup;      ///< provider "dspFundGroup"
    TClientDataSet *cdsFund;           ///< the fund data packet
    TImageList *imgCommon;             ///< ten pictures; 6 fund group, 7 fund, 8 fund group type
    TClientDataSet *cdsFundPerProduct; ///< provider "dspFundPerProduct"

    /// Fills and shows the catalogue. The providers' rows have these fields: "dspFundGroupType" GroupTypeID
    /// and GroupTypeDesc; "dspFundGroup" GroupTypeID, FundGroupID and FundGroupName, all of one type
    /// together; "dspFundPerProduct" (it is told pProductID too) FundGroupID, a row at least for each group
    /// that the product offers.
    /// @param ProductGroupID     the value of every pProductGroupID parameter
    /// @param PreselectedFundIDs the funds to start with, in list order; one that is not in the visible
    ///                           catalogue is skipped silently
    /// @param Connection         serves the three providers; not owned, must outlive the frame's next build
    /// @param FundData           a data packet with the funds, all of one group together: FundID, FundName,
    ///                           FundGroupID, FundSheetURL; its first row's ProductID is the product
    /// @param PerProductFilter   a filter for the per-product dataset; blank for none
    /// @param WarningText        follows the fixed-bond note when that is shown
    /// @param InfoText           the info line
    /// Raises what the datasets and the connection raise (a missing provider, a packet without a needed
    /// field, a malformed filter); the frame can then only be built again or destroyed.
    void BuildFundSelector(int ProductGroupID, const TDynamicArrayOfInt &PreselectedFundIDs,
                           TLocalConnection *Connection, const QVariant &FundData,
                           const QString &PerProductFilter, const QString &WarningText,
                           const QString &InfoText);
    /// Whether Select was pressed since the last build. When it was and the list has items, @p FundIDs
    /// becomes their fund identifiers in list order; in every other case it is left as it is.
    bool IsNewFundSelection(TDynamicArrayOfInt &FundIDs);
    /// Adds the funds of those identifiers to the list in the order of the array. A name that is already
    /// there is not added again.
    void DisplaySelectedItems(const TDynamicArrayOfInt &FundIDs);
    /// Hides the fund groups without funds that the product does not offer, and the group types without
    /// visible fund groups.
    void FilterDataSetThatHasChildren();
    /// A filter text that hides the rows of @p ParentDataSet without a child row in @p ChildDataSet, e.g.
    /// "not(FundGroupID in (12,-1,40))"; empty when there are none. With @p RecordOfferedGroups the ones that
    /// the product offers are remembered for marking and stand as -1, which hides nothing. Both datasets are
    /// seen through their current filters.
    QString BuildExclusionFilter(TClientDataSet *ParentDataSet, const QString &ParentKey,
                                 TClientDataSet *ChildDataSet, const QString &ChildKey,
                                 bool RecordOfferedGroups);
    /// Whether @p Value equals an entry of @p List.
    bool ValueInList(int Value, const TDynamicArrayOfInt &List) const;

Q_SIGNALS:
    /// FundSheet was pressed for the tree's selected fund: its identifier and its fact sheet's address. The
    /// frame itself opens nothing. Not sent when the selected fund has no address of its own.
    void FundSheetRequested(int FundID, const QString &URL);

public Q_SLOTS:
    // The handlers of the components' events, named after component and event.
    void sbtAddClick();      ///< Adds what is selected in the catalogue.
    void sbtRemoveClick();   ///< Removes what is selected in the list.
    void sbtClearClick();    ///< Removes every chosen fund.
    void sbtExpandClick();   ///< Opens every group of the catalogue.
    void sbtCollapseClick(); ///< Closes every group of the catalogue.
    /// Records the confirmation, nothing else.
    void btnSelectClick();
    void btnCancelClick();                                 ///< For the dialog around the frame; nothing here.
    void splMainMoved();                                   ///< For descendants; nothing here.
    void FrameResize();                                    ///< Select and Cancel keep to the right.
    void fraFundsTreeViewtvFundsChange(TTreeNode *Node);   ///< Add and the fund sheet match the node.
    void fraFundsTreeViewtvFundsEnter();                   ///< Add matches the selected node.
    void fraFundsTreeViewtvFundsExit();                    ///< Nothing can be added any more.
    void fraFundsTreeViewtvFundsDblClick();                ///< Adds the fund.
    void fraFundsTreeViewtvFundsAddition(TTreeNode *Node); ///< A node has joined the tree while it is built.
    /// Select and Clear match the list.
    void fraFundsSelectedListViewlvSelectedFundsInsert(TListItem *Item);
    /// Remove matches the selected line, Select and Clear the list.
    void fraFundsSelectedListViewlvSelectedFundsChange(TListItem *Item);
    void fraFundsSelectedListViewlvSelectedFundsEnter(); ///< Remove matches the selected line.
    void fraFundsSelectedListViewlvSelectedFundsExit();  ///< Nothing can be removed any more.

public:
    /// Accepts when the tree's selected node is a fund, and then adds it at once, before any drop.
    void fraFundsSelectedListViewlvSelectedFundsDragOver(bool &Accept);
    /// Leaves the drag accepted.
    void fraFundsTreeViewtvFundsDragOver(bool &Accept);

    void cdsFundGroupTypeBeforeOpen();  ///< Prepares the group types' request.
    void cdsFundGroupBeforeOpen();      ///< Prepares the fund groups' request.
    void cdsFundPerProductBeforeOpen(); ///< Prepares the request for the product's funds.
    void cdsFundGroupTypeBeforeClose(); ///< Gives the bookmarks of the group types back.
    void cdsFundGroupBeforeClose();     ///< Gives the bookmarks of the fund groups back.
    void cdsFundBeforeClose();          ///< Gives the bookmarks of the funds back.

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
    void ShowWarningText();
    void Retranslate();
    template <typename Body> void Handle(Body &&body) noexcept;
    void RequestFundSheet();

    bool FSelectionConfirmed = false;
    int FProductGroupID = 0;
    TDynamicArrayOfInt FOfferedEmptyGroups;
    bool FShowWarning = false;

    bool m_labelsFilled = false;       // the designed placeholders are gone from the labels
    QString m_warningText;             // what follows the note
    QSet<int> m_offeredEmptyGroups;    // FOfferedEmptyGroups as a set, while the tree is built
    HandlerErrors *m_errors = nullptr; // receives the handlers' exceptions while a caller waits for them
    QSet<QString> *m_listed = nullptr; // the list's captions while many funds are added at once
};
