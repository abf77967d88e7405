#pragma once

#include "export/zel_commonframes_export.h"
#include "toolkit/TFrame.h"
#include "ui_fra_ToolBar.h"

/// The vertical bar of command buttons on the left of an editor. The page that places it handles the buttons;
/// "Complete" is hidden and disabled until the page turns it on.
class ZEL_COMMONFRAMES_EXPORT TfraToolBar : public TFrame, public Ui::TfraToolBar
{
    Q_OBJECT
public:
    explicit TfraToolBar(QWidget *owner = nullptr);
    ~TfraToolBar() override;
};
