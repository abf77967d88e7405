#include "frames/fra_InvestorName.h"

#include "toolkit/DesignTexts.h"
#include "toolkit/Glyphs.h"
#include "toolkit/LookFonts_p.h"

#include <QEvent>

using namespace Qt::StringLiterals;

namespace
{

/// In the application look, list and button are as high as fields, in the middle of the frame.
void fitLook(TfraInvestorDetails &frame)
{
    if (CurrentLook() == Look::Designed)
        return;
    const int height = HeightOf(LookHeight::Field, frame.fontMetrics());
    const int band = height + 2 * LookSpace::Small;
    TfraElmtLabelComboBox &list = *frame.fraInvestorName;
    TcxButton &button = *frame.sbtClient;
    Zel::SetInLook(&frame, "minimumHeight", band);
    Zel::SetInLook(&list, "geometry", QRect(list.x(), LookSpace::Small, list.width(), height));
    Zel::SetInLook(&button, "geometry", QRect(button.x(), LookSpace::Small, height, height));
}

} // namespace

TfraInvestorDetails::TfraInvestorDetails(QWidget *owner) : TFrame(owner)
{
    setupUi(this);
    fraInvestorName->setMinimumWidth(0);
    fraInvestorName->lblCaption->setGeometry(2, 4, 41, 13);
    fraInvestorName->cbData->setGeometry(48, 0, 273, 21);
    fraInvestorName->Value->AdoptDesign(true);
    setTexts();
    sbtClient->setIcon(GlyphIcon(u"client"_s));
    Zel::KeepTranslated(this, [this] { setTexts(); });
    m_designWidth = width();
    m_elementWidth = fraInvestorName->width();
    sbtClient->installEventFilter(this);
    new Zel::LookFit(sbtClient, [this] { fitLook(*this); });
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
    placeList();
}

bool TfraInvestorDetails::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::ShowToParent:
    case QEvent::HideToParent:
        placeList();
        break;
    default:
        break;
    }
    return TFrame::eventFilter(watched, event);
}

void TfraInvestorDetails::placeList()
{
    if (m_designWidth == 0)
        return;
    constexpr int gap = 2;
    const QRect list = fraInvestorName->geometry();
    const QRect button = sbtClient->geometry();
    int wanted = m_elementWidth + width() - m_designWidth;
    const bool inTheWay = !sbtClient->isHidden() && button.left() > list.left() &&
                          button.top() <= list.bottom() && button.bottom() >= list.top();
    if (inTheWay)
        wanted = qMin(wanted, button.left() - gap - list.left());
    fraInvestorName->resize(wanted, list.height());
}
