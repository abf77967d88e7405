#include "frames/fra_InvestorName.h"

#include "toolkit/DesignTexts.h"
#include "toolkit/Glyphs.h"

#include <QResizeEvent>

TfraInvestorDetails::TfraInvestorDetails(QWidget *owner) : TFrame(owner)
{
    setupUi(this);
    fraInvestorName->setMinimumWidth(0);
    fraInvestorName->lblCaption->setGeometry(2, 4, 41, 13);
    fraInvestorName->cbData->setGeometry(48, 0, 273, 21);
    fraInvestorName->Value->AdoptDesign(true);
    setTexts();
    sbtClient->setIcon(GlyphIcon(QStringLiteral("client")));
    Zel::KeepTranslated(this, [this] { setTexts(); });
    m_designWidth = width();
    m_elementWidth = fraInvestorName->width();
}

TfraInvestorDetails::~TfraInvestorDetails() = default;

void TfraInvestorDetails::setTexts()
{
    retranslateUi(this);
    fraInvestorName->Value->Set_Caption(tr("Investor"));
    fraInvestorName->cbData->setAccessibleName(tr("Investor"));
}

void TfraInvestorDetails::resizeEvent(QResizeEvent *event)
{
    TFrame::resizeEvent(event);
    if (m_designWidth == 0)
        return;
    fraInvestorName->resize(m_elementWidth + width() - m_designWidth, fraInvestorName->height());
    // A list that has grown past the button runs on behind it, where a flat button would be its picture
    // alone.
    sbtClient->setAutoFillBackground(fraInvestorName->geometry().intersects(sbtClient->geometry()));
}
