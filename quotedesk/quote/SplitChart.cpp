#include "quote/SplitChart.h"

#include "quote/PlainText.h"

#include "data/Format.h"
#include "funds/AllocationMath.h"
#include "toolkit/TColors.h"

#include <QEvent>
#include <QPainter>
#include <QScreen>
#include <QPainterPath>

#include <algorithm>
#include <array>
#include <numeric>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

/// The number of funds with a part of their own.
constexpr int ownParts = 7;
constexpr int margin = 8;
constexpr int unallocated = -1;

__extension__ using Wide = __int128;

struct Style {
    QRgb light;
    QRgb dark;
    Qt::BrushStyle hatching;
};

// Colours that are distinguishable with colour blindness; every second one is hatched.
constexpr std::array<Style, ownParts + 1> styles{{
    {0xff0072b2, 0xff56b4e9, Qt::NoBrush},
    {0xffe69f00, 0xffe69f00, Qt::BDiagPattern},
    {0xff007a5a, 0xff2fc79a, Qt::NoBrush},
    {0xffcc79a7, 0xffd98bb5, Qt::FDiagPattern},
    {0xff56b4e9, 0xff2b87c8, Qt::Dense6Pattern},
    {0xffd55e00, 0xfff08040, Qt::NoBrush},
    {0xffb8a800, 0xfff0e442, Qt::HorPattern},
    {0xff808080, 0xffa0a0a0, Qt::DiagCrossPattern},
}};

QString percentText(Currency percent)
{
    return SplitChart::tr("%1%").arg(FormatFloat(FormatMask::TwoDecimals, percent));
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

    m_state = state;
    m_funds.clear();
    for (const Large &each : std::as_const(largest)) {
        m_funds.append({shortText(names.value(each.place)), each.percent, percentText(each.percent),
                        static_cast<int>(m_funds.size())});
        all -= each.percent.raw();
    }
    m_otherCount = count - static_cast<int>(largest.size());
    m_otherPercent = Currency::fromRaw(static_cast<qint64>(std::min(all, Wide{Currency::max().raw()})));
    retext();
}

QSize SplitChart::sizeHint() const
{
    return {fontMetrics().averageCharWidth() * 34, fontMetrics().height() * 22};
}

QSize SplitChart::minimumSizeHint() const
{
    constexpr int low = 600;
    const int lines = screen()->availableGeometry().height() < low ? 7 : 10;
    return {fontMetrics().averageCharWidth() * 22, fontMetrics().height() * lines};
}

void SplitChart::retext()
{
    m_parts = m_funds;
    if (m_otherCount > 0)
        m_parts.append({tr("%n other fund(s)", nullptr, m_otherCount), m_otherPercent,
                        percentText(m_otherPercent), ownParts});
    if (hasRest() && !m_state.isOver())
        m_parts.append({tr("Not allocated"), m_state.restPercent, restText(), unallocated});

    QStringList texts;
    for (const Part &part : std::as_const(m_parts))
        texts.append(tr("%1: %2").arg(part.name, part.number));
    if (m_state.isOver())
        texts.append(middleText());
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
    return percent.isZero() || m_state.investment.isZero()
               ? tr("R %1").arg(FormatFloat(FormatMask::Thousands, amount))
               : percentText(percent);
}

QString SplitChart::middleText() const
{
    if (m_state.isOver())
        return tr("%1 over-allocated").arg(restText());
    if (hasRest() && m_state.restPercent.isZero())
        return tr("%1 left").arg(restText());
    return percentText(Currency(100) - m_state.restPercent);
}

int SplitChart::lineHeight() const
{
    return fontMetrics().height() + 4;
}

void SplitChart::paintPart(QPainter &painter, const QPainterPath &shape, int style) const
{
    if (style == unallocated) {
        painter.setPen(QPen(palette().color(QPalette::WindowText), 1, Qt::DashLine));
        painter.setBrush(Qt::NoBrush);
        painter.drawPath(shape);
        return;
    }
    const QColor window = palette().color(QPalette::Window);
    const Style &look = styles.at(static_cast<std::size_t>(style));
    painter.setPen(QPen(window, 1));
    painter.setBrush(QColor(IsDark(palette()) ? look.dark : look.light));
    painter.drawPath(shape);
    if (look.hatching != Qt::NoBrush) {
        QColor hatch = window;
        hatch.setAlphaF(0.55F);
        painter.setBrush(QBrush(hatch, look.hatching));
        painter.drawPath(shape);
    }
}

void SplitChart::paintRing(QPainter &painter, const QRectF &ring) const
{
    const qreal thickness = ring.width() * 0.22;
    const QRectF hole = ring.adjusted(thickness, thickness, -thickness, -thickness);
    // An over-allocated split makes one full ring.
    const double sum =
        std::accumulate(m_parts.cbegin(), m_parts.cend(), 0.0,
                        [](double all, const Part &part) { return all + part.percent.toDouble(); });
    qreal angle = 90;
    for (const Part &part : m_parts) {
        const qreal span = -360.0 * part.percent.toDouble() / std::max(sum, 0.01);
        QPainterPath shape;
        shape.arcMoveTo(ring, angle);
        shape.arcTo(ring, angle, span);
        shape.arcTo(hole, angle + span, -span);
        shape.closeSubpath();
        paintPart(painter, shape, part.style);
        angle += span;
    }
    paintMiddle(painter, hole);
}

void SplitChart::paintMiddle(QPainter &painter, const QRectF &hole) const
{
    painter.setPen(palette().color(QPalette::WindowText));
    QFont bold = font();
    bold.setBold(true);
    painter.setFont(bold);
    const QString middle = m_state.isEmpty() ? tr("No funds yet") : middleText();
    constexpr int flags = Qt::AlignCenter | Qt::TextWordWrap;
    if (m_state.isOver()) {
        const QRectF words = painter.boundingRect(hole, flags, middle).adjusted(-4, -2, 4, 2);
        painter.fillRect(words, ColorOf(TColor::clRed, palette()));
        painter.setPen(ColorOf(TColor::clBlack, palette()));
    }
    painter.drawText(hole, flags, middle);
    painter.setFont(font());
}

void SplitChart::paintLegend(QPainter &painter, int top) const
{
    const QFontMetrics metrics = fontMetrics();
    const int line = lineHeight();
    const int box = metrics.ascent();
    const int inset = (line - box) / 2; // whole pixels keep the outline sharp
    for (const Part &part : m_parts) {
        QPainterPath sample;
        sample.addRect(QRectF(margin + 0.5, top + inset + 0.5, box, box));
        paintPart(painter, sample, part.style);
        painter.setPen(palette().color(QPalette::WindowText));
        const int numberWidth = metrics.horizontalAdvance(part.number);
        const QRect row(margin + box + 6, top, width() - 2 * margin - box - 6, line);
        painter.drawText(row, Qt::AlignRight | Qt::AlignVCenter, part.number);
        painter.drawText(row, Qt::AlignLeft | Qt::AlignVCenter,
                         metrics.elidedText(part.name, Qt::ElideRight, row.width() - numberWidth - 8));
        top += line;
    }
}

void SplitChart::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const int legendHeight = lineHeight() * static_cast<int>(m_parts.size());
    const int side = std::max(0, std::min(width() - 2 * margin, height() - 3 * margin - legendHeight));
    const QRectF ring(qreal(width() - side) / 2, margin, side, side);
    if (side > 2 * lineHeight())
        paintRing(painter, ring);
    paintLegend(painter, static_cast<int>(ring.bottom()) + margin);
}

void SplitChart::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        retext();
}

} // namespace QuoteDesk
