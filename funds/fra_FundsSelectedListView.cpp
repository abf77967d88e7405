#include "funds/fra_FundsSelectedListView.h"

#include "dataviews/ill_Misc.h"
#include "toolkit/TApplication.h"

TfraFundsSelectedListView::TfraFundsSelectedListView(QWidget *parent) : TBaseFrame(parent)
{
    setupUi(this);
    setFocusProxy(lvSelectedFunds);
    lvSelectedFunds->AddColumn(tr("Fund"), 150);
    lvSelectedFunds->AddColumn(tr("Fund Group"), 0);
    lvSelectedFunds->Items().Clear();
    connect(lvSelectedFunds, &TListView::Resized, this,
            [this] { GuardedCall([this] { lvSelectedFundsResize(); }); });
}

TfraFundsSelectedListView::~TfraFundsSelectedListView() = default;

void TfraFundsSelectedListView::lvSelectedFundsResize()
{
    misc_SizeListViewColumns(*lvSelectedFunds);
}
