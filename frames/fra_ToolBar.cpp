#include "frames/fra_ToolBar.h"

TfraToolBar::TfraToolBar(QWidget *owner) : TFrame(owner)
{
    setupUi(this);
}

TfraToolBar::~TfraToolBar() = default;
