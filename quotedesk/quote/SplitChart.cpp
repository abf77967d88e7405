#include "quote/SplitChart.h"

#include "quote/PlainText.h"

#include "data/Format.h"
#include "toolkit/TColors.h"

#include <QEvent>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <array>
#include <numeric>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

/// How many funds have a part of their own.
constexpr int ownParts = 7;
constexpr int margin = 8;
constexpr int unallocated = -1;

struct Style {
    QRgb light;
    QRgb dark;
    Qt::BrushStyle hatching;
};

// Colours that stay apart for people who see few of them, and every second one hatched.
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

SplitChart::SplitChart(QWidget *parent) : QWidget(parent), m_split(Quote())
{
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
    setAccessibleName(tr("Split"));
    arrange();
}

SplitChart::~SplitChart() = default;

void SplitChart::show(const ShownSplit &split)
{
    m_split = split;
    arrange();
}

QSize SplitChart::sizeHint() const
{
    return {fontMetrics().averageCharWidth() * 34, fontMetrics().height() * 22};
}

QSize SplitChart::minimumSizeHint() const
{
    return {fontMetrics().averageCharWidth() * 22, fontMetrics().height() * 10};
}

void SplitChart::arrange()
{
    QList<Part> funds;
    for (const ShownSplit::Fund &fund : std::as_const(m_split.funds)) {
        if (fund.percent > Currency())
            funds.append({shortText(fund.name), fund.percent, percentText(fund.percent)});
    }
    std::stable_sort(funds.begin(), funds.end(),
                     [](const Part &a, const Part &b) { return a.percent > b.percent; });

    m_parts.clear();
    // A single fund behind the others is named rather than called "others".
    const qsizetype named = funds.size() > ownParts + 1 ? ownParts : funds.size();
    for (qsizetype i = 0; i < named; ++i) {
        Part part = funds.at(i);
        part.style = static_cast<int>(i);
        m_parts.append(part);
    }
    if (named < funds.size()) {
        qint64 others = 0;
        for (qsizetype i = named; i < funds.size(); ++i) {
            if (qAddOverflow(others, qint64{funds.at(i).percent.raw()}, &others))
                others = Currency::max().raw();
        }
        const Currency percent = Currency::fromRaw(others);
        m_parts.append({tr("%n other fund(s)", nullptr, static_cast<int>(funds.size() - named)), percent,
                        percentText(percent), ownParts});
    }
    if (hasRest() && !isOver())
        m_parts.append({tr("Not allocated"), m_split.restPercent, restText(), unallocated});

    QStringList texts;
    for (const Part &part : std::as_const(m_parts))
        texts.append(tr("%1: %2").arg(part.name, part.number));
    if (isOver())
        texts.append(middleText());
    setAccessibleDescription(texts.join(u"; "_s));
    setToolTip(tipText(texts.join(u'\n')));
    update();
}

bool SplitChart::hasRest() const
{
    // A split by amount of no investment at all has none that could be drawn.
    return !m_split.rest().isZero() || (!m_split.investment.isZero() && !m_split.restPercent.isZero());
}

bool SplitChart::isOver() const
{
    return m_split.rest() < Currency();
}

/// What is left or too much, without its sign: as a part of the whole, or of a part too small to be seen the
/// amount.
QString SplitChart::restText() const
{
    const Currency percent = m_split.restPercent < Currency() ? -m_split.restPercent : m_split.restPercent;
    const Currency amount = m_split.restAmount < Currency() ? -m_split.restAmount : m_split.restAmount;
    return percent.isZero() || m_split.investment.isZero()
               ? tr("R %1").arg(FormatFloat(FormatMask::Thousands, amount))
               : percentText(percent);
}

QString SplitChart::middleText() const
{
    if (isOver())
        return tr("%1 too much").arg(restText());
    if (hasRest() && m_split.restPercent.isZero())
        return tr("%1 left").arg(restText());
    return percentText(Currency(100) - m_split.restPercent);
}

void SplitChart::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const bool dark = IsDark(palette());
    const QColor text = palette().color(QPalette::WindowText);
    const QColor window = palette().color(QPalette::Window);
    const QFontMetrics metrics = fontMetrics();
    const int line = metrics.height() + 4;

    const int legendHeight = line * static_cast<int>(m_parts.size());
    const int side = std::max(0, std::min(width() - 2 * margin, height() - 3 * margin - legendHeight));
    const QRectF ring(qreal(width() - side) / 2, margin, side, side);
    const qreal thickness = side * 0.22;
    const QRectF hole = ring.adjusted(thickness, thickness, -thickness, -thickness);

    const auto paint = [&](const QPainterPath &shape, int style) {
        if (style == unallocated) {
            painter.setPen(QPen(text, 1, Qt::DashLine));
            painter.setBrush(Qt::NoBrush);
            painter.drawPath(shape);
            return;
        }
        const Style &look = styles.at(static_cast<std::size_t>(style));
        painter.setPen(QPen(window, 1));
        painter.setBrush(QColor(dark ? look.dark : look.light));
        painter.drawPath(shape);
        if (look.hatching != Qt::NoBrush) {
            QColor hatch = window;
            hatch.setAlphaF(0.55F);
            painter.setBrush(QBrush(hatch, look.hatching));
            painter.drawPath(shape);
        }
    };

    // More than the whole still makes one full ring.
    const double sum =
        std::accumulate(m_parts.cbegin(), m_parts.cend(), 0.0,
                        [](double all, const Part &part) { return all + part.percent.toDouble(); });
    if (side > 2 * line) {
        qreal angle = 90;
        for (const Part &part : std::as_const(m_parts)) {
            const qreal span = -360.0 * part.percent.toDouble() / std::max(sum, 0.01);
            QPainterPath shape;
            shape.arcMoveTo(ring, angle);
            shape.arcTo(ring, angle, span);
            shape.arcTo(hole, angle + span, -span);
            shape.closeSubpath();
            paint(shape, part.style);
            angle += span;
        }
        painter.setPen(text);
        QFont bold = font();
        bold.setBold(true);
        painter.setFont(bold);
        const QString middle = m_split.isEmpty() ? tr("No funds yet") : middleText();
        constexpr int flags = Qt::AlignCenter | Qt::TextWordWrap;
        if (isOver()) {
            const QRectF words = painter.boundingRect(hole, flags, middle).adjusted(-4, -2, 4, 2);
            painter.fillRect(words, ColorOf(TColor::clRed, palette()));
            painter.setPen(ColorOf(TColor::clBlack, palette()));
        }
        painter.drawText(hole, flags, middle);
        painter.setFont(font());
    }

    int top = static_cast<int>(ring.bottom()) + margin;
    const int box = metrics.ascent();
    const int inset = (line - box) / 2; // whole pixels keep the outline sharp
    for (const Part &part : std::as_const(m_parts)) {
        QPainterPath sample;
        sample.addRect(QRectF(margin + 0.5, top + inset + 0.5, box, box));
        paint(sample, part.style);
        painter.setPen(text);
        const int numberWidth = metrics.horizontalAdvance(part.number);
        const QRect row(margin + box + 6, top, width() - 2 * margin - box - 6, line);
        painter.drawText(row, Qt::AlignRight | Qt::AlignVCenter, part.number);
        painter.drawText(row, Qt::AlignLeft | Qt::AlignVCenter,
                         metrics.elidedText(part.name, Qt::ElideRight, row.width() - numberWidth - 8));
        top += line;
    }
}

void SplitChart::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange) {
        setAccessibleName(tr("Split"));
        arrange();
    }
}

} // namespace QuoteDesk
