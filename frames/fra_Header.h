#pragma once

#include "export/zel_commonframes_export.h"
#include "frames/fra_BaseFrame.h"
#include "ui_fra_Header.h"

/// A title band that fills its frame. The page sets the caption of pnlPageHeader.
class ZEL_COMMONFRAMES_EXPORT TfraHeader : public TBaseFrame, public Ui::TfraHeader
{
    Q_OBJECT
public:
    explicit TfraHeader(QWidget *owner = nullptr);
    ~TfraHeader() override;
};
