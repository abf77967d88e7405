#pragma once

#include "export/zel_commonframes_export.h"
#include "frames/fra_BaseFrame.h"
#include "ui_fra_FundsTreeView.h"

class TDataSet;
class TImageList;

/// The fund catalogue as a read-only tree of three levels: fund group type, fund group, fund. Each node's
/// Data is the bookmark of its dataset row. The nodes own the bookmarks until misc_FreeTreeBookMarks() frees
/// them.
class ZEL_COMMONFRAMES_EXPORT TfraFundsTreeView : public TBaseFrame, public Ui::TfraFundsTreeView
{
    Q_OBJECT
public:
    /// The levels of the tree's nodes.
    enum Level { GroupTypeLevel = 0, FundGroupLevel = 1, FundLevel = 2 };
    /// The indexes of the levels' pictures in the image list.
    enum Image { FundGroupImage = 6, FundImage = 7, GroupTypeImage = 8 };

    explicit TfraFundsTreeView(QWidget *parent = nullptr);
    ~TfraFundsTreeView() override;

    /// Rebuilds the tree from the visible rows of three open datasets, in their order. The parent of a group
    /// is the type with the same "GroupTypeID", the parent of a fund is the group with the same
    /// "FundGroupID". The children of one parent must be consecutive rows. @p Images is not owned and must
    /// outlive its use by the tree. Exceptions of the datasets pass to the caller.
    void BuildFundTreeView(TDataSet &GroupTypeDataSet, TDataSet &FundGroupDataSet, TDataSet &FundDataSet,
                           TImageList *Images);

    /// Sets a bold font for group types and fund groups; the tree draws them.
    void tvFundsCustomDrawItem(TTreeView *sender, TTreeNode *node, QStyle::State state, bool &defaultDraw);

protected:
    void changeEvent(QEvent *event) override;
};
