#include "look/DrawControls.h"

#include "look/TextLabel.h"

#include <QPainter>
#include <QStyle>
#include <QWidget>

namespace QuoteDesk::Draw
{
namespace
{

/// Draws with round ends, one and three quarters of a pixel wide, as the pictures of toolkit/Glyphs at 16
/// pixels.
class RoundPen
{
public:
    RoundPen(QPainter &painter, const QColor &color, qreal width) : m_painter(painter)
    {
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(color, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.setBrush(Qt::NoBrush);
    }
    ~RoundPen() { m_painter.restore(); }
    RoundPen(const RoundPen &) = delete;
    RoundPen &operator=(const RoundPen &) = delete;

private:
    QPainter &m_painter;
};

void tick(QPainter &painter, const QRectF &box, const QColor &color)
{
    const RoundPen pen(painter, color, qMax(1.5, box.width() / 9));
    const auto at = [&box](qreal x, qreal y) {
        return QPointF(box.left() + x * box.width(), box.top() + y * box.height());
    };
    painter.drawPolyline(QPolygonF{at(0.24, 0.53), at(0.43, 0.71), at(0.77, 0.31)});
}

bool isEnabled(const QStyleOption &option)
{
    return option.state.testFlag(QStyle::State_Enabled);
}

bool isUnderPointer(const QStyleOption &option)
{
    return isEnabled(option) && option.state.testFlag(QStyle::State_MouseOver);
}

bool isOn(const QStyleOption &option)
{
    return option.state.testFlag(QStyle::State_On);
}

bool isPressed(const QStyleOption &option)
{
    return option.state.testFlag(QStyle::State_Sunken);
}

LookColor accentOf(const QStyleOption &option)
{
    return isPressed(option)        ? LookColor::AccentPress
           : isUnderPointer(option) ? LookColor::AccentHover
                                    : LookColor::Accent;
}

/// The fill and the edge of a box or circle that can be ticked.
std::pair<QColor, QColor> tickColors(const QStyleOption &option, bool filled)
{
    if (!isEnabled(option))
        return {colorOf(LookColor::Raised, option), colorOf(LookColor::Line, option)};
    if (filled)
        return {colorOf(accentOf(option), option), colorOf(accentOf(option), option)};
    return {colorOf(isUnderPointer(option) ? LookColor::AccentSoft : LookColor::Surface, option),
            colorOf(LookColor::Field, option)};
}

} // namespace

QColor colorOf(LookColor color, const QStyleOption &option)
{
    if (!isEnabled(option)) {
        switch (color) {
        case LookColor::Text:
        case LookColor::Text2:
        case LookColor::Text3:
        case LookColor::AccentText:
            return ColorOf(LookColor::Disabled, option.palette);
        default:
            break;
        }
    }
    return ColorOf(color, option.palette);
}

bool hasKeyboardFocus(const QStyleOption &option)
{
    return option.state.testFlag(QStyle::State_HasFocus) &&
           option.state.testFlag(QStyle::State_KeyboardFocusChange);
}

void chevron(QPainter &painter, const QRect &rect, Qt::ArrowType arrow, const QColor &color)
{
    const QPointF middle = QRectF(rect).center();
    const qreal half = qMin(4.0, qMin(rect.width(), rect.height()) / 2.0 - 1);
    const RoundPen pen(painter, color, 1.5);
    painter.translate(middle);
    painter.rotate(arrow == Qt::UpArrow      ? 180
                   : arrow == Qt::LeftArrow  ? 90
                   : arrow == Qt::RightArrow ? -90
                                             : 0);
    painter.drawPolyline(
        QPolygonF{QPointF(-half, -half / 2), QPointF(0, half / 2), QPointF(half, -half / 2)});
}

void tintedIcon(QPainter &painter, const QRect &rect, const QIcon &icon, const QSize &size,
                const QColor &color)
{
    const qreal ratio = painter.device()->devicePixelRatio();
    QPixmap picture = icon.pixmap(size, ratio, QIcon::Normal, QIcon::Off);
    if (picture.isNull())
        return;
    QPainter tint(&picture);
    tint.setCompositionMode(QPainter::CompositionMode_SourceIn);
    tint.fillRect(QRect(QPoint(0, 0), picture.size()), color);
    tint.end();
    const QSize shown = (QSizeF(picture.size()) / picture.devicePixelRatio()).toSize();
    painter.drawPixmap(QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter, shown, rect), picture);
}

void focusRing(QPainter &painter, const QRect &rect, const QStyleOption &option)
{
    paintRounded(painter, rect, LookSpace::ControlRadius, {}, colorOf(LookColor::Focus, option),
                 LookSpace::Ring);
}

void edgeLine(QPainter &painter, const QRect &rect, Qt::Edge edge, const QColor &color)
{
    const qreal width = 1 / painter.device()->devicePixelRatio();
    QRectF line(rect);
    switch (edge) {
    case Qt::TopEdge:
        line.setHeight(width);
        break;
    case Qt::BottomEdge:
        line.setTop(line.bottom() - width);
        break;
    case Qt::LeftEdge:
        line.setWidth(width);
        break;
    case Qt::RightEdge:
        line.setLeft(line.right() - width);
        break;
    }
    painter.fillRect(line, color);
}

ButtonKind kindOf(const QStyleOptionButton &option, const QWidget *widget)
{
    if (const std::optional<ButtonKind> kind = buttonKindOf(widget))
        return *kind;
    if (option.features.testFlag(QStyleOptionButton::Flat))
        return ButtonKind::Flat;
    return option.features.testFlag(QStyleOptionButton::DefaultButton) ? ButtonKind::Filled
                                                                       : ButtonKind::Quiet;
}

QFont buttonFont(ButtonKind kind, const QFont &body)
{
    const bool isStrong = kind == ButtonKind::Filled || kind == ButtonKind::Suggested;
    return isStrong ? FontOf(LookFont::Strong, body) : body;
}

QColor buttonInk(ButtonKind kind, const QStyleOption &option)
{
    if (!isEnabled(option))
        return colorOf(LookColor::Disabled, option);
    switch (kind) {
    case ButtonKind::Filled:
        return colorOf(LookColor::OnAccent, option);
    case ButtonKind::Suggested:
        return colorOf(LookColor::AccentText, option);
    case ButtonKind::Quiet:
    case ButtonKind::Flat:
        return option.palette.color(QPalette::ButtonText);
    }
    Q_UNREACHABLE();
}

void buttonGround(QPainter &painter, const QStyleOption &option, ButtonKind kind)
{
    QColor ground;
    QColor edge;
    const bool isTinted = isUnderPointer(option) || isPressed(option) || isOn(option);
    const LookColor tint = isPressed(option) ? LookColor::AccentMid : LookColor::AccentSoft;
    if (kind == ButtonKind::Filled && isEnabled(option)) {
        ground = colorOf(accentOf(option), option);
    } else if (kind == ButtonKind::Suggested && isEnabled(option)) {
        ground = colorOf(isUnderPointer(option) || isPressed(option) ? LookColor::AccentMid
                                                                     : LookColor::AccentSoft,
                         option);
        edge = colorOf(LookColor::Accent, option);
    } else if (kind == ButtonKind::Flat) {
        if (isTinted && isEnabled(option))
            ground = colorOf(tint, option);
        if (isOn(option))
            edge = colorOf(LookColor::Accent, option);
    } else {
        ground = colorOf(isTinted && isEnabled(option) ? tint : LookColor::Surface, option);
        edge = colorOf(!isEnabled(option) ? LookColor::Line
                       : isOn(option)     ? LookColor::Accent
                                          : LookColor::LineStrong,
                       option);
    }
    paintRounded(painter, option.rect, LookSpace::ControlRadius, ground, edge);
    if (!hasKeyboardFocus(option))
        return;
    if (kind == ButtonKind::Filled) {
        // The ring needs a line of the surface between itself and the accent.
        paintRounded(painter, option.rect.adjusted(2, 2, -2, -2), LookSpace::ControlRadius - 2, {},
                     colorOf(LookColor::OnAccent, option), 1);
    }
    focusRing(painter, option.rect, option);
}

void buttonLabel(QPainter &painter, const QStyleOptionButton &option, ButtonKind kind, int iconGap)
{
    const QColor ink = buttonInk(kind, option);
    painter.save();
    const QFont font = buttonFont(kind, painter.font());
    painter.setFont(font);
    painter.setPen(ink);
    const QFontMetrics metrics(font);
    const QSize text = metrics.size(Qt::TextShowMnemonic, option.text);
    const QSize icon = option.icon.isNull() ? QSize(0, 0) : option.iconSize;
    const int gap = option.icon.isNull() || option.text.isEmpty() ? 0 : iconGap;
    const int width = qMin(option.rect.width(), icon.width() + gap + text.width());
    const QRect whole = QStyle::alignedRect(option.direction, Qt::AlignCenter,
                                            QSize(width, option.rect.height()), option.rect);
    const auto part = [&](int x, int partWidth) {
        return QStyle::visualRect(option.direction, whole,
                                  QRect(whole.left() + x, whole.top(), partWidth, whole.height()));
    };
    if (!option.icon.isNull())
        tintedIcon(painter, part(0, icon.width()), option.icon, icon, ink);
    const int x = icon.width() + gap;
    painter.drawText(part(x, whole.width() - x), Qt::AlignCenter | Qt::TextShowMnemonic, option.text);
    painter.restore();
}

void field(QPainter &painter, const QStyleOption &option, const QWidget *widget, bool isEditable)
{
    const FieldMark mark = fieldMarkOf(widget);
    const bool hasFocus = isEnabled(option) && option.state.testFlag(QStyle::State_HasFocus) &&
                          (isEditable || option.state.testFlag(QStyle::State_KeyboardFocusChange));
    const bool isFixed = !isEnabled(option) || option.state.testFlag(QStyle::State_ReadOnly);
    LookColor edge = isFixed ? LookColor::Line : LookColor::Field;
    if (mark == FieldMark::Problem)
        edge = LookColor::ErrorMark;
    else if (mark == FieldMark::Advice)
        edge = LookColor::WarnMark;
    else if (hasFocus)
        edge = LookColor::Focus;
    const bool isUnder = !isEditable && isUnderPointer(option);
    const LookColor ground = isFixed   ? LookColor::Raised
                             : isUnder ? LookColor::AccentSoft
                                       : LookColor::Surface;
    paintRounded(painter, option.rect, LookSpace::ControlRadius, colorOf(ground, option),
                 colorOf(edge, option), hasFocus || mark != FieldMark::None ? LookSpace::Ring : 0);
}

void checkBox(QPainter &painter, const QStyleOption &option)
{
    const bool isPartial = option.state.testFlag(QStyle::State_NoChange);
    const bool isFilled = isOn(option) || isPartial;
    const auto [ground, edge] = tickColors(option, isFilled);
    paintRounded(painter, option.rect, 3, ground, edge);
    const QColor ink =
        isEnabled(option) ? colorOf(LookColor::OnAccent, option) : colorOf(LookColor::Disabled, option);
    if (isPartial) {
        const QRectF box(option.rect);
        const RoundPen pen(painter, ink, qMax(1.5, box.width() / 9));
        painter.drawLine(QPointF(box.left() + box.width() * 0.28, box.center().y()),
                         QPointF(box.left() + box.width() * 0.72, box.center().y()));
    } else if (isOn(option)) {
        tick(painter, option.rect, ink);
    }
}

void radioButton(QPainter &painter, const QStyleOption &option)
{
    const auto [ground, edge] = tickColors(option, false);
    const bool isChosen = isOn(option);
    const qreal radius = option.rect.width() / 2.0;
    paintRounded(painter, option.rect, radius, ground,
                 isChosen && isEnabled(option) ? colorOf(LookColor::Accent, option) : edge);
    if (!isChosen)
        return;
    const qreal quarter = option.rect.width() / 4.0;
    paintRounded(painter, QRectF(option.rect).adjusted(quarter, quarter, -quarter, -quarter), quarter,
                 isEnabled(option) ? colorOf(accentOf(option), option) : colorOf(LookColor::Disabled, option),
                 {});
}

void progressBar(QPainter &painter, const QStyleOptionProgressBar &option)
{
    const QRect &rect = option.rect;
    paintRounded(painter, rect, LookSpace::ControlRadius, colorOf(LookColor::NeutralGround, option),
                 colorOf(LookColor::LineStrong, option));
    const qint64 span = qint64(option.maximum) - option.minimum;
    // Without an end, a still piece shows that work goes on: nothing moves in this style.
    const qreal share =
        span > 0 ? qreal(qMax(0LL, qint64(option.progress) - option.minimum)) / qreal(span) : 0.3;
    QRect filled = rect;
    filled.setWidth(qRound(rect.width() * share));
    if (span <= 0)
        filled.moveLeft(rect.left() + (rect.width() - filled.width()) / 2);
    if (filled.width() <= 0)
        return;
    painter.save();
    painter.setClipRect(QStyle::visualRect(option.direction, rect, filled));
    paintRounded(painter, rect, LookSpace::ControlRadius, colorOf(LookColor::Accent, option), {});
    painter.restore();
}

} // namespace QuoteDesk::Draw
