#include "funds/fra_FundToolBar.h"

#include "toolkit/FlowRow.h"
#include "toolkit/LookFonts_p.h"

namespace
{

constexpr auto designedPlace = "zelDesignedPlace";

/// In the application look the buttons are as wide as their captions, one after the other.
void fitLook(const TfraFundToolBar &bar)
{
    const std::initializer_list<TSpeedButton *> buttons{
        bar.sbtFunds,          bar.sbtDuplicate,   bar.sbtRemove,    bar.sbtClear,
        bar.sbtAllocateAmount, bar.sbtResetToZero, bar.sbtGuarantee, bar.sbtInvested};
    if (CurrentLook() == Look::Designed) {
        if (!bar.pnlMenu->layout())
            return;
        delete bar.pnlMenu->layout();
        for (TSpeedButton *const button : buttons) {
            Zel::BackToDesign(button); // its limits
            button->setGeometry(button->property(designedPlace).toRect());
        }
        return;
    }
    if (bar.pnlMenu->layout())
        return;
    auto *const row = new Zel::FlowRow(bar.pnlMenu);
    row->setContentsMargins(LookSpace::Small, 0, LookSpace::Small, 0);
    row->setSpacing(LookSpace::Grid);
    for (TSpeedButton *const button : buttons)
        row->addWidget(button);
}

} // namespace

TfraFundToolBar::TfraFundToolBar(QWidget *parent) : TBaseFrame(parent)
{
    setupUi(this);
    for (TSpeedButton *const button : pnlMenu->findChildren<TSpeedButton *>())
        button->setProperty(designedPlace, button->geometry());
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
