#include "frames/fra_ToolBar.h"

#include "toolkit/DesignTexts.h"

TfraToolBar::TfraToolBar(QWidget *owner) : TFrame(owner)
{
    setupUi(this);
    Zel::KeepTranslated(this, [this] { retranslateUi(this); });
}

TfraToolBar::~TfraToolBar() = default;
