#pragma once

#include "export/zel_commonframes_export.h"
#include "frames/fra_BaseFrame.h"
#include "ui_fra_PageHeader.h"

/// A title band docked to the top of a page. The page sets the caption of pnlPageHeader.
class ZEL_COMMONFRAMES_EXPORT TfraPageHeader : public TBaseFrame, public Ui::TfraPageHeader
{
    Q_OBJECT
public:
    explicit TfraPageHeader(QWidget *owner = nullptr);
    ~TfraPageHeader() override;
};
