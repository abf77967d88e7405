#include "quote/SwitchHalf.h"

#include "look/GlyphLabel.h"

#include "toolkit/Glyphs.h"
#include "toolkit/Look.h"

#include <QEvent>
#include <QPainter>
#include <QStyle>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

constexpr int padding = 14;
constexpr int tick = 14;
constexpr int tickGap = 6;

} // namespace

SwitchHalf::SwitchHalf(QWidget *parent) : QRadioButton(parent)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setAttribute(Qt::WA_Hover);
}

SwitchHalf::~SwitchHalf() = default;

void SwitchHalf::setSecond(bool isSecond)
{
    m_isSecond = isSecond;
    update();
}

int SwitchHalf::tickSize() const
{
    return besideFont(tick, fontMetrics());
}

/// The room for the tick is there in both states, so that a choice moves nothing.
QSize SwitchHalf::sizeHint() const
{
    const QFontMetrics strong(FontOf(LookFont::Strong, font()), this);
    const int words = strong.size(Qt::TextShowMnemonic, text()).width();
    return {words + 2 * padding + tickSize() + tickGap, HeightOf(LookHeight::Field, fontMetrics())};
}

bool SwitchHalf::hitButton(const QPoint &point) const
{
    return rect().contains(point);
}

/// A rectangle with round corners on the outer side only.
QPainterPath SwitchHalf::shape(const QRectF &rect) const
{
    constexpr qreal radius = LookSpace::ControlRadius;
    const bool isRight = m_isSecond != (layoutDirection() == Qt::RightToLeft);
    QPainterPath round;
    round.addRoundedRect(rect, radius, radius);
    QPainterPath square;
    square.addRect(isRight ? rect.adjusted(0, 0, -radius, 0) : rect.adjusted(radius, 0, 0, 0));
    return round.united(square).simplified();
}

void SwitchHalf::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const bool isOn = isChecked();
    const auto ground = [&] {
        if (!isOn)
            return underMouse() && isEnabled() ? LookColor::AccentSoft : LookColor::Surface;
        return isDown() ? LookColor::AccentPress : underMouse() ? LookColor::AccentHover : LookColor::Accent;
    };
    const auto words = !isEnabled() && !isOn ? LookColor::Disabled
                       : isOn                ? LookColor::OnAccent
                                             : LookColor::Text;
    const qreal line = 1 / devicePixelRatioF();
    const QRectF edge = QRectF(rect()).adjusted(line / 2, line / 2, -line / 2, -line / 2);
    painter.setPen(QPen(ColorOf(isOn ? LookColor::Accent : LookColor::Field, palette()), line));
    painter.setBrush(ColorOf(ground(), palette()));
    painter.drawPath(shape(edge));

    painter.setFont(isOn ? FontOf(LookFont::Strong, font()) : font());
    QRect texts = rect().adjusted(padding, 0, -padding, 0);
    if (isOn) {
        const int size = tickSize();
        const QRect place =
            QStyle::alignedRect(layoutDirection(), Qt::AlignLeft | Qt::AlignVCenter, {size, size}, texts);
        PaintGlyph(painter, place, u"check"_s, ColorOf(words, palette()));
        const int room = size + tickGap;
        texts = layoutDirection() == Qt::RightToLeft ? texts.adjusted(0, 0, -room, 0)
                                                     : texts.adjusted(room, 0, 0, 0);
    }
    painter.setPen(ColorOf(words, palette()));
    painter.drawText(texts, Qt::AlignCenter | Qt::TextShowMnemonic, text());

    if (hasFocus()) {
        // A thin line of the surface parts the ring from the filled half.
        constexpr qreal ring = LookSpace::Ring;
        painter.setBrush(Qt::NoBrush);
        const QRectF outer = QRectF(rect()).adjusted(ring / 2, ring / 2, -ring / 2, -ring / 2);
        painter.setPen(QPen(ColorOf(LookColor::Focus, palette()), ring));
        painter.drawPath(shape(outer));
        if (isOn) {
            painter.setPen(QPen(ColorOf(LookColor::OnAccent, palette()), 1));
            const qreal inset = ring / 2 + 0.5;
            painter.drawPath(shape(outer.adjusted(inset, inset, -inset, -inset)));
        }
    }
}

void SwitchHalf::changeEvent(QEvent *event)
{
    QRadioButton::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        updateGeometry();
}

} // namespace QuoteDesk
