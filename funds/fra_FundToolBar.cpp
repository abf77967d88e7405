#include "funds/fra_FundToolBar.h"

TfraFundToolBar::TfraFundToolBar(QWidget *parent) : TBaseFrame(parent)
{
    setupUi(this);
}

TfraFundToolBar::~TfraFundToolBar() = default;

void TfraFundToolBar::ShowToolButtons(bool, bool, bool, bool, bool) {}

void TfraFundToolBar::changeEvent(QEvent *event)
{
    TBaseFrame::changeEvent(event);
    if (event->type() != QEvent::LanguageChange)
        return;
    retranslateUi(this);
    Q_EMIT Retranslated();
}
