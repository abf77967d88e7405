#include "toolkit/TFrame.h"

#include "toolkit/LookFonts_p.h"
#include "toolkit/TFonts.h"

TFrame::TFrame(QWidget *parent) : QWidget(parent)
{
    setFont(DesignFont());
    Zel::FollowLook(this);
}

TFrame::~TFrame() = default;

void TFrame::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::StyleChange)
        Zel::FollowLook(this);
    QWidget::changeEvent(event);
}
