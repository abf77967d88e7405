#pragma once

#include "export/zel_commonframes_export.h"
#include "frames/fra_BaseFrame.h"
#include "ui_fra_PageHeader.h"

/// A title band docked to the top of a page. The page sets the caption of pnlPageHeader.
class ZEL_COMMONFRAMES_EXPORT TfraPageHeader : public TBaseFrame, public Ui::TfraPageHeader
{
    Q_OBJECT
    Q_PROPERTY(QString Caption READ Get_Caption WRITE Set_Caption)
public:
    explicit TfraPageHeader(QWidget *owner = nullptr);
    ~TfraPageHeader() override;

    QString Get_Caption() const { return pnlPageHeader->caption(); } ///< The text of the band.
    void Set_Caption(const QString &caption) { pnlPageHeader->setCaption(caption); }
};
