#include "look/Chip.h"

#include "look/GlyphLabel.h"
#include "look/TextLabel.h"

#include "toolkit/Glyphs.h"

#include <QEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionButton>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

constexpr int glyphEdge = 14;
constexpr int gap = 5;
constexpr int before = 8;
constexpr int behind = 9;
constexpr int filterPadding = 11;
constexpr int countGap = 6;

struct ChipColors {
    LookColor text;
    LookColor ground;
};

ChipColors colorsOf(ChipKind kind)
{
    switch (kind) {
    case ChipKind::Neutral:
        return {LookColor::NeutralText, LookColor::NeutralGround};
    case ChipKind::Ok:
        return {LookColor::OkText, LookColor::OkGround};
    case ChipKind::Info:
        return {LookColor::InfoText, LookColor::InfoGround};
    case ChipKind::Warn:
        return {LookColor::WarnText, LookColor::WarnGround};
    case ChipKind::Error:
        return {LookColor::ErrorText, LookColor::ErrorGround};
    case ChipKind::Plain:
        return {LookColor::Text2, LookColor::Surface};
    }
    Q_UNREACHABLE();
}

/// @p rect of a part @p width wide at @p x from the start, in @p whole.
QRect partOf(const QRect &whole, int x, int width, Qt::LayoutDirection direction)
{
    return QStyle::visualRect(direction, whole, QRect(whole.left() + x, whole.top(), width, whole.height()));
}

void paintGlyph(QPainter &painter, const QRect &part, const QString &glyph, const QColor &color)
{
    const int edge = part.width();
    PaintGlyph(painter, QRect(part.left(), part.top() + (part.height() - edge) / 2, edge, edge), glyph,
               color);
}

} // namespace

ChipText chipOf(ChipState state, const QString &word)
{
    switch (state) {
    case ChipState::Draft:
        return {ChipKind::Neutral, u"edit"_s, word};
    case ChipState::Allocated:
        return {ChipKind::Ok, u"check"_s, word};
    case ChipState::TooMuch:
        return {ChipKind::Error, u"error"_s, word};
    }
    Q_UNREACHABLE();
}

Chip::Chip(QWidget *parent) : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void Chip::setChip(const ChipText &chip)
{
    m_chip = chip;
    setText(chip.text); // for screen readers
    updateGeometry();
    update();
}

QSize Chip::sizeHint() const
{
    return sizeOf(m_chip, font());
}

QSize Chip::sizeOf(const ChipText &chip, const QFont &body)
{
    const QFontMetrics bodyMetrics(body);
    const QFontMetrics metrics(FontOf(LookFont::Caption, body));
    const int glyph = chip.glyph.isEmpty() ? 0 : besideFont(glyphEdge, bodyMetrics) + gap;
    const int height = HeightOf(LookHeight::Chip, bodyMetrics);
    return {qMax(height, before + glyph + metrics.size(Qt::TextSingleLine, chip.text).width() + behind),
            height};
}

void Chip::paint(QPainter &painter, const QRect &rect, const ChipText &chip, const QPalette &palette,
                 const QFont &body, Qt::LayoutDirection direction)
{
    const QSize size = sizeOf(chip, body).boundedTo(rect.size());
    const QRect place = QStyle::alignedRect(direction, Qt::AlignLeft | Qt::AlignVCenter, size, rect);
    const auto [textColor, ground] = colorsOf(chip.kind);
    const bool hasEdge = chip.kind == ChipKind::Neutral || chip.kind == ChipKind::Plain;
    paintRounded(painter, place, place.height() / 2.0, ColorOf(ground, palette),
                 hasEdge ? ColorOf(LookColor::LineStrong, palette) : QColor());
    const QColor color = ColorOf(textColor, palette);
    int x = before;
    if (!chip.glyph.isEmpty()) {
        const int edge = besideFont(glyphEdge, QFontMetrics(body));
        paintGlyph(painter, partOf(place, x, edge, direction), chip.glyph, color);
        x += edge + gap;
    }
    painter.save();
    const QFont font = FontOf(LookFont::Caption, body);
    const QFontMetrics metrics(font);
    painter.setFont(font);
    painter.setPen(color);
    const int room = qMax(0, place.width() - x - behind);
    // Eliding rounds each letter; a chip of its own size has room.
    const bool hasRoom = place.width() >= sizeOf(chip, body).width();
    const Qt::Alignment sides = chip.glyph.isEmpty() ? Qt::AlignHCenter : Qt::AlignLeft;
    painter.drawText(partOf(place, x, room, direction),
                     static_cast<int>(QStyle::visualAlignment(direction, sides) | Qt::AlignVCenter) |
                         Qt::TextSingleLine | Qt::TextDontClip,
                     hasRoom ? chip.text : metrics.elidedText(chip.text, Qt::ElideRight, room));
    painter.restore();
}

void Chip::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    paint(painter, contentsRect(), m_chip, palette(), font(), layoutDirection());
}

FilterChip::FilterChip(const QString &text, QWidget *parent) : QPushButton(text, parent)
{
    setCheckable(true);
    setAutoDefault(false);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void FilterChip::setCount(int count)
{
    if (m_count == count)
        return;
    m_count = count;
    setAccessibleDescription(countText());
    updateGeometry();
    update();
}

void FilterChip::setGlyph(const QString &glyph)
{
    m_glyph = glyph;
    updateGeometry();
    update();
}

QString FilterChip::countText() const
{
    return m_count < 0 ? QString() : locale().toString(m_count);
}

QFont FilterChip::countFont() const
{
    return FontOf(LookFont::Caption, font());
}

QSize FilterChip::sizeHint() const
{
    // The strong font of the chosen chip: a chip keeps its width when it is switched on.
    const QFontMetrics strong(FontOf(LookFont::Strong, font()));
    int width = 2 * filterPadding + strong.horizontalAdvance(text());
    if (!m_glyph.isEmpty())
        width += besideFont(glyphEdge, fontMetrics()) + countGap;
    if (m_count >= 0)
        width += countGap + QFontMetrics(countFont()).horizontalAdvance(countText());
    return {width, HeightOf(LookHeight::FilterChip, fontMetrics())};
}

void FilterChip::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    const auto color = [this](LookColor wanted) { return ColorOf(wanted, palette()); };
    const bool isOn = isChecked();
    const bool isUnder = underMouse() && isEnabled();
    const bool hasRing = hasFocus() && option.state.testFlag(QStyle::State_KeyboardFocusChange);
    const QColor ground = color(isOn || isUnder ? LookColor::AccentSoft : LookColor::Surface);
    const QColor edge =
        hasRing ? color(LookColor::Focus) : color(isOn ? LookColor::Accent : LookColor::LineStrong);
    paintRounded(painter, rect(), height() / 2.0, ground, edge, hasRing ? LookSpace::Ring : 0);
    const auto front = [&](LookColor normal) {
        return color(!isEnabled() ? LookColor::Disabled : isOn ? LookColor::AccentText : normal);
    };
    int x = filterPadding;
    if (!m_glyph.isEmpty()) {
        const int edgeLength = besideFont(glyphEdge, fontMetrics());
        paintGlyph(painter, partOf(rect(), x, edgeLength, layoutDirection()), m_glyph,
                   front(LookColor::Text));
        x += edgeLength + countGap;
    }
    const auto write = [&](const QFont &font, const QString &words, const QColor &ink) {
        const int width = QFontMetrics(font).horizontalAdvance(words);
        painter.setFont(font);
        painter.setPen(ink);
        painter.drawText(partOf(rect(), x, width, layoutDirection()),
                         Qt::AlignHCenter | Qt::AlignVCenter | Qt::TextSingleLine | Qt::TextDontClip, words);
        x += width + countGap;
    };
    write(FontOf(isOn ? LookFont::Strong : LookFont::Body, font()), text(), front(LookColor::Text));
    if (m_count >= 0)
        write(countFont(), countText(), front(LookColor::Text2));
}

void FilterChip::changeEvent(QEvent *event)
{
    QPushButton::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        updateGeometry();
    else if (event->type() == QEvent::LocaleChange)
        setAccessibleDescription(countText());
}

bool FilterChip::event(QEvent *event)
{
    if (event->type() == QEvent::HoverEnter || event->type() == QEvent::HoverLeave)
        update();
    return QPushButton::event(event);
}

} // namespace QuoteDesk
