#include "frames/fra_ToolBar.h"

#include "frames/Started_p.h"
#include "toolkit/DesignTexts.h"

TfraToolBar::TfraToolBar(QWidget *owner) : TFrame(owner)
{
    Zel::Started::Want();
    setupUi(this);
    Zel::KeepTranslated(this, [this] { retranslateUi(this); });
}

TfraToolBar::~TfraToolBar() = default;
