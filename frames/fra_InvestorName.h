#pragma once

#include "export/zel_commonframes_export.h"
#include "frames/fra_ElmtLabelComboBox.h"
#include "toolkit/TFrame.h"
#include "ui_fra_InvestorName.h"

/// The investor of a quote: a drop-down list, and a button for the investor's details. The page that places
/// it fills fraInvestorName->cbData and handles sbtClient.
///
/// The list grows with the frame up to the button, which keeps its position. A page that needs a longer list
/// moves the button to the right.
class ZEL_COMMONFRAMES_EXPORT TfraInvestorDetails : public TFrame, public Ui::TfraInvestorDetails
{
    Q_OBJECT
public:
    explicit TfraInvestorDetails(QWidget *owner = nullptr);
    ~TfraInvestorDetails() override;

protected:
    void resizeEvent(QResizeEvent *event) override;
    /// Adjusts the list when the button moves, resizes, or is shown or hidden.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void setTexts();
    void placeList();

    int m_designWidth = 0;
    int m_elementWidth = 0;
};
