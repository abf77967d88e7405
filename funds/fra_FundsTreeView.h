#pragma once

#include "export/zel_commonframes_export.h"
#include "frames/fra_BaseFrame.h"
#include "ui_fra_FundsTreeView.h"

class TDataSet;
class TImageList;

/// The fund catalogue as a read-only tree of three levels: fund group type, fund group, fund. Each node's
/// data is the bookmark of the dataset row that it was built from; the nodes own the bookmarks until
/// misc_FreeTreeBookMarks() gives them back.
class ZEL_COMMONFRAMES_EXPORT TfraFundsTreeView : public TBaseFrame, public Ui::TfraFundsTreeView
{
    Q_OBJECT
public:
    /// The levels of the tree's nodes.
    enum Level { GroupTypeLevel = 0, FundGroupLevel = 1, FundLevel = 2 };
    /// The pictures of the levels in the image list.
    enum Image { FundGroupImage = 6, FundImage = 7, GroupTypeImage = 8 };

    explicit TfraFundsTreeView(QWidget *parent = nullptr);
    ~TfraFundsTreeView() override;

    /// Rebuilds the tree from three open datasets: the rows they show at this moment, in their order. A
    /// group hangs under the type of the same "GroupTypeID", a fund under the group of the same
    /// "FundGroupID"; children of one parent must lie together in their dataset. @p Images is not owned and
    /// must outlive its use by the tree. Errors of the datasets pass to the caller.
    void BuildFundTreeView(TDataSet &GroupTypeDataSet, TDataSet &FundGroupDataSet, TDataSet &FundDataSet,
                           TImageList *Images);

    /// Draws group types and fund groups in bold and leaves the drawing itself to the tree.
    void tvFundsCustomDrawItem(TTreeView *sender, TTreeNode *node, QStyle::State state, bool &defaultDraw);

protected:
    void changeEvent(QEvent *event) override;
};
