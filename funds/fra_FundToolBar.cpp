#include "funds/fra_FundToolBar.h"

#include "toolkit/FlowRow_p.h"
#include "toolkit/Look.h"
#include "toolkit/LookChanges_p.h"

namespace
{

/// In the application look the buttons are as wide as their captions, one after the other.
void fitLook(const TfraFundToolBar &bar)
{
    if (CurrentLook() == Look::Designed) {
        delete bar.pnlMenu->layout();
        return;
    }
    if (bar.pnlMenu->layout())
        return;
    auto *const row = new Zel::FlowRow(bar.pnlMenu);
    row->setContentsMargins(LookSpace::Small, 0, LookSpace::Small, 0);
    row->setSpacing(LookSpace::Grid);
    for (TSpeedButton *const button :
         {bar.sbtFunds, bar.sbtDuplicate, bar.sbtRemove, bar.sbtClear, bar.sbtAllocateAmount,
          bar.sbtResetToZero, bar.sbtGuarantee, bar.sbtInvested}) {
        Zel::LookChanges::Of(button).Set("geometry", button->geometry());
        row->addWidget(button);
    }
}

} // namespace

TfraFundToolBar::TfraFundToolBar(QWidget *parent) : TBaseFrame(parent)
{
    setupUi(this);
    fitLook(*this);
}

TfraFundToolBar::~TfraFundToolBar() = default;

void TfraFundToolBar::ShowToolButtons(bool, bool, bool, bool, bool) {}

void TfraFundToolBar::changeEvent(QEvent *event)
{
    TBaseFrame::changeEvent(event);
    if (event->type() == QEvent::StyleChange)
        fitLook(*this);
    if (event->type() != QEvent::LanguageChange)
        return;
    retranslateUi(this);
    Q_EMIT Retranslated();
}
