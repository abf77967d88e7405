#pragma once

#include "export/zel_commonframes_export.h"
#include "frames/fra_BaseFrame.h"
#include "ui_fra_Header.h"

/// A title band that fills its frame. The page sets the caption of pnlPageHeader.
class ZEL_COMMONFRAMES_EXPORT TfraHeader : public TBaseFrame, public Ui::TfraHeader
{
    Q_OBJECT
    Q_PROPERTY(QString Caption READ Get_Caption WRITE Set_Caption)
public:
    explicit TfraHeader(QWidget *owner = nullptr);
    ~TfraHeader() override;

    QString Get_Caption() const { return pnlPageHeader->caption(); } ///< The text of the band.
    void Set_Caption(const QString &caption) { pnlPageHeader->setCaption(caption); }
};
