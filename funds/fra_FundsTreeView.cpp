#include "funds/fra_FundsTreeView.h"

#include "dataviews/ill_Misc.h"

using namespace Qt::StringLiterals;

TfraFundsTreeView::TfraFundsTreeView(QWidget *parent) : TBaseFrame(parent)
{
    setupUi(this);
    setFocusProxy(tvFunds);
    tvFunds->OnCustomDrawItem = [this](TTreeView *sender, TTreeNode *node, QStyle::State state,
                                       bool &defaultDraw) {
        tvFundsCustomDrawItem(sender, node, state, defaultDraw);
    };
}

TfraFundsTreeView::~TfraFundsTreeView() = default;

void TfraFundsTreeView::BuildFundTreeView(TDataSet &GroupTypeDataSet, TDataSet &FundGroupDataSet,
                                          TDataSet &FundDataSet, TImageList *Images)
{
    tvFunds->SetImages(Images);
    misc_ClearTreeView(tvFunds);
    misc_BuildTreeView(*tvFunds, {&GroupTypeDataSet, &FundGroupDataSet, &FundDataSet},
                       {u"GroupTypeID; GroupTypeID"_s, u"FundGroupID; FundGroupID"_s},
                       {u"GroupTypeDesc"_s, u"FundGroupName"_s, u"FundName"_s},
                       {GroupTypeImage, FundGroupImage, FundImage});
}

void TfraFundsTreeView::changeEvent(QEvent *event)
{
    TBaseFrame::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        retranslateUi(this);
}

void TfraFundsTreeView::tvFundsCustomDrawItem(TTreeView *, TTreeNode *node, QStyle::State, bool &)
{
    // Group types and fund groups are bold in every state.
    if (node->Level() < FundLevel)
        tvFunds->Canvas().Font.setBold(true);
}
