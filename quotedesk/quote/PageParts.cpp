#include "quote/PageParts.h"

#include "look/Banner.h"

#include <QPainter>
#include <QPushButton>
#include <QToolButton>

namespace QuoteDesk
{

void putBefore(QWidget &next, const Banner &banner)
{
    // Qt orders only widgets that take the focus.
    QWidget *former = next.previousInFocusChain();
    while (former != &next && (former->focusPolicy() == Qt::NoFocus || banner.isAncestorOf(former)))
        former = former->previousInFocusChain();
    QWidget::setTabOrder(former, banner.closeButton());
    if (banner.actionButton())
        QWidget::setTabOrder(former, banner.actionButton());
}

FieldLabel::FieldLabel(QWidget *parent) : TextLabel(LookFont::Body, LookColor::Text2, parent) {}

FieldLabel::~FieldLabel() = default;

NoteLabel::NoteLabel(QWidget *parent) : TextLabel(LookFont::Caption, LookColor::Text2, parent) {}

NoteLabel::~NoteLabel() = default;

Separator::Separator(QWidget *parent) : QWidget(parent)
{
    setFixedHeight(1);
}

Separator::~Separator() = default;

void Separator::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setPen(QPen(ColorOf(LookColor::Line, palette()), 0)); // cosmetic
    const qreal middle = 0.5 / devicePixelRatioF();
    painter.drawLine(QPointF(0, middle), QPointF(width(), middle));
}

} // namespace QuoteDesk
