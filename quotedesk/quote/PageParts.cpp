#include "quote/PageParts.h"

#include "look/Banner.h"

#include <QPainter>
#include <QPushButton>
#include <QToolButton>

namespace QuoteDesk
{

void putBefore(QWidget &next, const QList<QWidget *> &widgets)
{
    // Qt orders only widgets that take the focus.
    QWidget *former = next.previousInFocusChain();
    while (former != &next && (former->focusPolicy() == Qt::NoFocus || widgets.contains(former)))
        former = former->previousInFocusChain();
    for (QWidget *const widget : widgets) {
        QWidget::setTabOrder(former, widget);
        former = widget;
    }
}

void putBefore(QWidget &next, const Banner &banner)
{
    if (banner.actionButton())
        putBefore(next, {banner.actionButton(), banner.closeButton()});
    else
        putBefore(next, {banner.closeButton()});
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
