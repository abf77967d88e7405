#include "look/GlyphLabel.h"

#include "toolkit/Glyphs.h"

#include <QEvent>
#include <QPainter>

namespace QuoteDesk
{

int besideFont(int pixels, const QFontMetrics &font)
{
    constexpr int designed = 18;
    return qMax(pixels, qRound(pixels * font.height() / qreal(designed)));
}

GlyphLabel::GlyphLabel(int size, QWidget *parent) : QWidget(parent), m_size(size)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void GlyphLabel::setGlyph(const QString &glyph, LookColor color)
{
    m_glyph = glyph;
    m_color = color;
    update();
}

QSize GlyphLabel::sizeHint() const
{
    const int edge = besideFont(m_size, fontMetrics());
    return {edge, edge};
}

void GlyphLabel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    PaintGlyph(painter, rect(), m_glyph, ColorOf(isEnabled() ? m_color : LookColor::Disabled, palette()));
}

void GlyphLabel::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::FontChange)
        updateGeometry();
    QWidget::changeEvent(event);
}

} // namespace QuoteDesk
