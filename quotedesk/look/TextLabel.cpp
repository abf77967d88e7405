#include "look/TextLabel.h"

#include <QApplication>
#include <QEvent>
#include <QPainter>
#include <QScopedValueRollback>

namespace QuoteDesk
{

TextLabel::TextLabel(LookFont font, LookColor color, QWidget *parent)
    : QLabel(parent), m_font(font), m_color(color)
{
    setTextFormat(Qt::PlainText);
    watchParent();
    adopt();
}

TextLabel *TextLabel::wrapped(LookFont font, LookColor color, QWidget *parent)
{
    auto *const label = new TextLabel(font, color, parent);
    label->setWordWrap(true);
    return label;
}

void TextLabel::setLookFont(LookFont font)
{
    m_font = font;
    adopt();
}

void TextLabel::setLookColor(LookColor color)
{
    m_color = color;
    adopt();
}

bool TextLabel::event(QEvent *event)
{
    const bool handled = QLabel::event(event);
    switch (event->type()) {
    case QEvent::ParentChange:
        watchParent();
        adopt();
        break;
    case QEvent::FontChange:
    case QEvent::PaletteChange:
    case QEvent::StyleChange:
        adopt();
        break;
    default:
        break;
    }
    return handled;
}

bool TextLabel::eventFilter(QObject *watched, QEvent *event)
{
    // The label has a size of its own, so Qt does not tell it that the size of the text around it has
    // changed.
    if (event->type() == QEvent::FontChange || event->type() == QEvent::PaletteChange)
        adopt();
    return QLabel::eventFilter(watched, event);
}

void TextLabel::watchParent()
{
    if (m_watched)
        m_watched->removeEventFilter(this);
    m_watched = parentWidget();
    if (m_watched)
        m_watched->installEventFilter(this);
}

void TextLabel::adopt()
{
    if (m_adopting)
        return;
    const QScopedValueRollback<bool> guard(m_adopting, true);
    const QFont wanted = FontOf(m_font, parentWidget() ? parentWidget()->font() : QApplication::font());
    if (font() != wanted)
        setFont(wanted);
    const QPalette &surroundings = parentWidget() ? parentWidget()->palette() : QApplication::palette();
    const QColor color = ColorOf(m_color, surroundings);
    if (palette().color(QPalette::Active, QPalette::WindowText) == color)
        return;
    QPalette colors;
    colors.setColor(QPalette::Active, QPalette::WindowText, color);
    colors.setColor(QPalette::Inactive, QPalette::WindowText, color);
    setPalette(colors);
}

Panel::Panel(QWidget *parent) : QFrame(parent)
{
    setFrameShape(QFrame::NoFrame);
}

void Panel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    paintRounded(painter, rect(), LookSpace::PanelRadius, ColorOf(LookColor::Surface, palette()),
                 ColorOf(LookColor::Line, palette()));
}

void paintRounded(QPainter &painter, const QRectF &rect, qreal radius, const QColor &fill, const QColor &edge,
                  qreal edgeWidth)
{
    // A line of one device pixel stands in the middle of the pixels at the edge, so that it is sharp.
    const qreal ratio = painter.device()->devicePixelRatio();
    const qreal width = edge.isValid() ? (edgeWidth > 0 ? edgeWidth : 1 / ratio) : 0;
    const QRectF inner = rect.adjusted(width / 2, width / 2, -width / 2, -width / 2);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(edge.isValid() ? QPen(edge, width) : QPen(Qt::NoPen));
    painter.setBrush(fill.isValid() ? QBrush(fill) : QBrush(Qt::NoBrush));
    painter.drawRoundedRect(inner, radius - width / 2, radius - width / 2);
    painter.restore();
}

} // namespace QuoteDesk
