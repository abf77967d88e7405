#include "quote/SplitChart.h"

#include "quote/PlainText.h"
#include "quote/ShownNumbers.h"

#include "funds/AllocationMath.h"
#include "toolkit/Look.h"
#include "toolkit/TColors.h"

#include <QEvent>
#include <QPainter>
#include <QPainterPath>
#include <QStyle>

#include <algorithm>
#include <numeric>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

/// The number of funds with a part of their own.
constexpr int ownParts = 7;
constexpr int unallocated = -1;
constexpr int largestRing = 200;     // pixels
constexpr int bracketRoom = 6;       // around the ring, for the bracket of an excess
constexpr qreal gap = 2;             // between the parts
constexpr qreal ringThickness = 0.2; // of the diameter
constexpr int swatchSize = 10;
constexpr qreal swatchRadius = 2;

__extension__ using Wide = __int128;

QString percentText(Currency percent)
{
    return SplitChart::tr("%1%").arg(shownPercent(percent));
}

} // namespace

SplitChart::SplitChart(QWidget *parent) : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
    show(ShownSplit(Quote()), {}, {});
}

SplitChart::~SplitChart() = default;

void SplitChart::show(const SplitState &state, const QList<QuotedFund> &funds, const QStringList &names)
{
    struct Large {
        qsizetype place;
        Currency percent;
    };
    // A single further fund is named rather than shown as "others".
    constexpr qsizetype mostNamed = ownParts + 1;
    QList<Large> largest; // of equal parts the first ones
    int count = 0;
    Wide all = 0;
    for (qsizetype place = 0; place < funds.size(); ++place) {
        const Currency percent = Zel::Allocation::Shown(funds.at(place).percent);
        if (percent <= Currency())
            continue;
        ++count;
        all += percent.raw();
        if (largest.size() == mostNamed && percent <= largest.constLast().percent)
            continue;
        const auto after = std::find_if(largest.cbegin(), largest.cend(),
                                        [percent](const Large &other) { return other.percent < percent; });
        largest.insert(after - largest.cbegin(), {place, percent});
        if (largest.size() > mostNamed)
            largest.removeLast();
    }
    if (count > mostNamed)
        largest.removeLast();

    std::sort(largest.begin(), largest.end(),
              [](const Large &a, const Large &b) { return a.place < b.place; });
    m_state = state;
    m_funds.clear();
    for (const Large &each : std::as_const(largest)) {
        // From the first colour of "others" on, all places have the same colour.
        const int color = static_cast<int>(std::min<qsizetype>(each.place, FundColorCount));
        m_funds.append({shortText(names.value(each.place)), each.percent, percentText(each.percent), color});
        all -= each.percent.raw();
    }
    m_otherCount = count - static_cast<int>(largest.size());
    m_otherPercent = Currency::fromRaw(static_cast<qint64>(std::min(all, Wide{Currency::max().raw()})));
    retext();
}

void SplitChart::setLegend(bool shown)
{
    if (std::exchange(m_hasLegend, shown) == shown)
        return;
    updateGeometry();
    update();
}

QSize SplitChart::sizeHint() const
{
    const int ring = largestRing + 2 * bracketRoom;
    // Room for all parts and the remainder, so that the legend's length does not move what is below.
    return m_hasLegend ? QSize(ring, ring + LookSpace::Medium + lineHeight() * (ownParts + 2))
                       : QSize(ring, ring);
}

QSize SplitChart::minimumSizeHint() const
{
    const int ring = fontMetrics().height() * 5;
    return {fontMetrics().averageCharWidth() * 14, ring};
}

void SplitChart::retext()
{
    m_parts = m_funds;
    if (m_otherCount > 0)
        m_parts.append({tr("%n other fund(s)", nullptr, m_otherCount), m_otherPercent,
                        percentText(m_otherPercent), FundColorCount});
    if (hasRest() && !m_state.isOver())
        m_parts.append({tr("Not allocated"), m_state.restPercent, restText(), unallocated});

    QStringList texts;
    for (const Part &part : std::as_const(m_parts))
        texts.append(tr("%1: %2").arg(part.name, part.number));
    if (m_state.isOver())
        texts.append(tr("%1 over-allocated").arg(restText()));
    setAccessibleName(tr("Split"));
    setAccessibleDescription(texts.join(u"; "_s));
    setToolTip(tipText(texts.join(u'\n')));
    update();
}

bool SplitChart::hasRest() const
{
    // With an investment of 0 a split by amount has nothing to draw.
    return !m_state.rest().isZero() || (!m_state.investment.isZero() && !m_state.restPercent.isZero());
}

/// The remainder or the excess without its sign: as a percentage, or as an amount when the percentage is too
/// small to be shown.
QString SplitChart::restText() const
{
    const Currency percent = m_state.restPercent < Currency() ? -m_state.restPercent : m_state.restPercent;
    const Currency amount = m_state.restAmount < Currency() ? -m_state.restAmount : m_state.restAmount;
    return percent.isZero() || m_state.investment.isZero() ? shownAmount(amount) : percentText(percent);
}

SplitChart::Middle SplitChart::middle() const
{
    if (m_state.isEmpty())
        return {{}, tr("No funds yet")};
    if (m_state.isOver())
        return {u'+' + restText(), tr("too much")};
    if (hasRest() && m_state.restPercent.isZero())
        return {restText(), tr("left")};
    return {percentText(Currency(100) - m_state.restPercent), tr("placed")};
}

int SplitChart::lineHeight() const
{
    return fontMetrics().height() + LookSpace::Small;
}

/// The edge of what is not allocated. It is drawn inside the shape.
void SplitChart::paintGap(QPainter &painter, const QPainterPath &shape) const
{
    constexpr qreal width = 1.5;
    QPen pen(ColorOf(LookColor::WarnMark, palette()), 2 * width, Qt::CustomDashLine, Qt::FlatCap);
    pen.setDashPattern({1.4, 1.0}); // in units of the pen's width
    painter.save();
    painter.setClipPath(shape, Qt::IntersectClip);
    painter.setPen(pen);
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(shape);
    painter.restore();
}

void SplitChart::paintRing(QPainter &painter, const QRectF &ring) const
{
    const qreal thickness = ring.width() * ringThickness;
    const QRectF hole = ring.adjusted(thickness, thickness, -thickness, -thickness);
    // An over-allocated split makes one full ring.
    const double sum =
        std::accumulate(m_parts.cbegin(), m_parts.cend(), 0.0,
                        [](double all, const Part &part) { return all + part.percent.toDouble(); });
    const bool isDark = IsDark(palette());
    const QPen separator(ColorOf(LookColor::Surface, palette()), gap);
    qreal angle = 90;
    for (const Part &part : m_parts) {
        const qreal span = -360.0 * part.percent.toDouble() / std::max(sum, 0.01);
        QPainterPath shape;
        if (m_parts.size() == 1) {
            // A whole ring has no seam.
            shape.addEllipse(ring);
            shape.addEllipse(hole);
        } else {
            shape.arcMoveTo(ring, angle);
            shape.arcTo(ring, angle, span);
            shape.arcTo(hole, angle + span, -span);
            shape.closeSubpath();
        }
        if (part.color == unallocated) {
            paintGap(painter, shape);
        } else {
            painter.setPen(m_parts.size() > 1 ? separator : QPen(Qt::NoPen));
            painter.setBrush(FundColor(part.color, isDark));
            painter.drawPath(shape);
        }
        angle += span;
    }
    if (m_state.isOver())
        paintBracket(painter, ring, hole, sum);
    paintMiddle(painter, hole);
}

/// A post where the whole is reached, and a bracket around what exceeds it.
void SplitChart::paintBracket(QPainter &painter, const QRectF &ring, const QRectF &hole, double sum) const
{
    constexpr double whole = 100;
    constexpr int sixteenth = 16; // the unit of QPainter::drawArc
    constexpr qreal outside = bracketRoom - 2;
    if (sum <= whole)
        return;
    const qreal span = 360.0 * (sum - whole) / sum;
    QPen pen(ColorOf(LookColor::ErrorMark, palette()), 3);
    pen.setCapStyle(Qt::FlatCap);
    painter.setPen(pen);
    painter.setBrush(Qt::NoBrush);
    const QRectF around = ring.adjusted(-outside, -outside, outside, outside);
    painter.drawArc(around, 90 * sixteenth, qRound(span * sixteenth));
    QPainterPath post;
    post.arcMoveTo(around.adjusted(-1, -1, 1, 1), 90 + span);
    QPainterPath inner;
    inner.arcMoveTo(hole, 90 + span);
    painter.drawLine(post.currentPosition(), inner.currentPosition());
}

void SplitChart::paintMiddle(QPainter &painter, const QRectF &hole) const
{
    const auto [figure, caption] = middle();
    const qreal room = hole.width() - 2 * LookSpace::Small;
    QFont large = FontOf(LookFont::Result, font());
    // A long amount gets a smaller font.
    if (const int width = QFontMetrics(large, this).horizontalAdvance(figure); width > room) {
        const qreal factor = std::max(room, 1.0) / width;
        if (large.pixelSize() > 0)
            large.setPixelSize(std::max(1, static_cast<int>(large.pixelSize() * factor)));
        else
            large.setPointSizeF(std::max(1.0, large.pointSizeF() * factor));
    }
    const QFont small = FontOf(LookFont::Caption, font());
    const int figureHeight = figure.isEmpty() ? 0 : QFontMetrics(large, this).height();
    const int captionHeight = QFontMetrics(small, this).height();
    const qreal top = hole.center().y() - (figureHeight + captionHeight) / 2.0;
    const bool isOver = m_state.isOver();
    painter.setFont(large);
    painter.setPen(ColorOf(isOver ? LookColor::ErrorText : LookColor::Text, palette()));
    painter.drawText(QRectF(hole.left(), top, hole.width(), figureHeight), Qt::AlignCenter, figure);
    painter.setFont(small);
    painter.setPen(ColorOf(LookColor::Text2, palette()));
    painter.drawText(QRectF(hole.left(), top + figureHeight, hole.width(), captionHeight), Qt::AlignCenter,
                     caption);
    painter.setFont(font());
}

void SplitChart::paintLegend(QPainter &painter, int top) const
{
    const QFontMetrics metrics = fontMetrics();
    const QFont strong = FontOf(LookFont::Strong, font());
    const QFontMetrics strongMetrics(strong, this);
    const int line = lineHeight();
    const bool isDark = IsDark(palette());
    const bool isMirrored = layoutDirection() == Qt::RightToLeft;
    const int start = static_cast<int>(isMirrored ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter;
    const int end = static_cast<int>(isMirrored ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter;
    for (const Part &part : m_parts) {
        const bool isGap = part.color == unallocated;
        const QRect row(0, top, width(), line);
        const QRect swatch = QStyle::alignedRect(layoutDirection(), Qt::AlignLeft | Qt::AlignVCenter,
                                                 {swatchSize, swatchSize}, row);
        QPainterPath shape;
        shape.addRoundedRect(swatch, swatchRadius, swatchRadius);
        if (isGap)
            paintGap(painter, shape);
        else
            painter.fillPath(shape, FundColor(part.color, isDark));
        painter.setPen(ColorOf(isGap ? LookColor::WarnText : LookColor::Text, palette()));
        const int inset = swatchSize + LookSpace::Small;
        const QRect texts = isMirrored ? row.adjusted(0, 0, -inset, 0) : row.adjusted(inset, 0, 0, 0);
        painter.setFont(strong);
        painter.drawText(texts, end, part.number);
        painter.setFont(font());
        const int room = texts.width() - strongMetrics.horizontalAdvance(part.number) - LookSpace::Small;
        painter.drawText(texts, start, metrics.elidedText(part.name, Qt::ElideRight, room));
        top += line;
    }
}

void SplitChart::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const int legend = m_hasLegend ? LookSpace::Medium + lineHeight() * static_cast<int>(m_parts.size()) : 0;
    const int room = std::min(width(), height() - legend) - 2 * bracketRoom;
    const int side = std::clamp(room, 0, largestRing);
    const QRectF ring((width() - side) / 2.0, bracketRoom, side, side);
    // A smaller ring would say nothing; its legend stays.
    if (side > 3 * lineHeight())
        paintRing(painter, ring);
    if (m_hasLegend)
        paintLegend(painter, side > 3 * lineHeight()
                                 ? static_cast<int>(ring.bottom()) + bracketRoom + LookSpace::Medium
                                 : 0);
}

void SplitChart::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        retext();
    if (event->type() == QEvent::FontChange)
        updateGeometry();
}

} // namespace QuoteDesk
