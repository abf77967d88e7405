#include "funds/fra_FundsSelectedListView.h"

#include "dataviews/ill_Misc.h"
#include "toolkit/TApplication.h"

TfraFundsSelectedListView::TfraFundsSelectedListView(QWidget *parent) : TBaseFrame(parent)
{
    setupUi(this);
    setFocusProxy(lvSelectedFunds);
    lvSelectedFunds->AddColumn({}, 150);
    lvSelectedFunds->AddColumn({}, 0);
    SetColumnCaptions();
    lvSelectedFunds->Items().Clear();
    connectGuarded(lvSelectedFunds, &TListView::Resized, this,
                   &TfraFundsSelectedListView::lvSelectedFundsResize);
}

TfraFundsSelectedListView::~TfraFundsSelectedListView() = default;

void TfraFundsSelectedListView::SetColumnCaptions()
{
    lvSelectedFunds->SetColumnCaption(0, tr("Fund"));
    lvSelectedFunds->SetColumnCaption(1, tr("Fund Group"));
}

void TfraFundsSelectedListView::changeEvent(QEvent *event)
{
    TBaseFrame::changeEvent(event);
    if (event->type() != QEvent::LanguageChange)
        return;
    retranslateUi(this);
    SetColumnCaptions();
}

void TfraFundsSelectedListView::lvSelectedFundsResize()
{
    misc_SizeListViewColumns(*lvSelectedFunds);
}
