#include "frames/fra_InvestorName.h"

#include <QResizeEvent>

TfraInvestorDetails::TfraInvestorDetails(QWidget *owner) : TFrame(owner)
{
    setupUi(this);
    fraInvestorName->setMinimumWidth(0);
    fraInvestorName->lblCaption->setGeometry(2, 4, 41, 13);
    fraInvestorName->cbData->setGeometry(48, 0, 273, 21);
    fraInvestorName->Value->AdoptDesign(true);
    fraInvestorName->Value->Set_Caption(tr("Investor"));
    fraInvestorName->cbData->setAccessibleName(tr("Investor"));
    // A list that has grown past the button runs on behind it.
    sbtClient->raise();
    m_designWidth = width();
    m_elementWidth = fraInvestorName->width();
}

TfraInvestorDetails::~TfraInvestorDetails() = default;

void TfraInvestorDetails::resizeEvent(QResizeEvent *event)
{
    TFrame::resizeEvent(event);
    if (m_designWidth > 0)
        fraInvestorName->resize(m_elementWidth + width() - m_designWidth, fraInvestorName->height());
}
