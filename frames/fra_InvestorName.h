#pragma once

#include "export/zel_commonframes_export.h"
#include "frames/fra_ElmtLabelComboBox.h"
#include "toolkit/TFrame.h"
#include "ui_fra_InvestorName.h"

/// The investor of a quote: a drop-down list, and a button for the investor's details. The page that places
/// it fills fraInvestorName->cbData and handles sbtClient.
class ZEL_COMMONFRAMES_EXPORT TfraInvestorDetails : public TFrame, public Ui::TfraInvestorDetails
{
    Q_OBJECT
public:
    explicit TfraInvestorDetails(QWidget *owner = nullptr);
    ~TfraInvestorDetails() override;

protected:
    /// The list takes what the frame has gained in width.
    void resizeEvent(QResizeEvent *event) override;

private:
    void setTexts();

    int m_designWidth = 0;
    int m_elementWidth = 0;
};
