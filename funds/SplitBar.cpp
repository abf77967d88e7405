#include "funds/SplitBar_p.h"

#include "toolkit/Look.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace Zel
{

void SplitBar::Show(const QList<Part> &parts)
{
    m_parts = parts;
    m_sum = 0;
    for (const Part &part : parts)
        m_sum += part.share;
    update();
}

void SplitBar::paintParts(QPainter &painter, const QRectF &bar, double total) const
{
    constexpr double gap = 2;
    QPainterPath round;
    round.addRoundedRect(bar, 3, 3);
    painter.setClipPath(round);
    double left = bar.left();
    for (const Part &part : m_parts) {
        const double width = bar.width() * part.share / total;
        // A part is told from its neighbour by a gap, but a thin one is not lost in it.
        painter.fillRect(QRectF(left, bar.top(), std::max(width - gap, std::min(width, 1.0)), bar.height()),
                         part.color);
        left += width;
    }
    painter.setClipping(false);
}

void SplitBar::paintEvent(QPaintEvent *)
{
    constexpr double nothing = 0.00005; // less than the least percentage
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (layoutDirection() == Qt::RightToLeft) {
        painter.translate(width(), 0);
        painter.scale(-1, 1);
    }
    const QRectF bar(0, 1.5 * Post, width(), height() - 2 * Post);
    const double total = std::max(1.0, m_sum);
    paintParts(painter, bar, total);
    if (m_sum < 1 - nothing) {
        QRectF rest = bar;
        rest.setLeft(bar.left() + bar.width() * m_sum);
        painter.setBrush(ColorOf(LookColor::WarnGround, palette()));
        painter.setPen(QPen(ColorOf(LookColor::WarnMark, palette()), 1, Qt::DashLine));
        painter.drawRoundedRect(rest.adjusted(0.5, 0.5, -0.5, -0.5), 3, 3);
    } else if (m_sum > 1 + nothing) {
        const QColor mark = ColorOf(LookColor::ErrorMark, palette());
        const double whole = bar.left() + bar.width() / total;
        painter.fillRect(QRectF(whole - 4, bar.top() - Post, 6, bar.height() + 1.5 * Post),
                         ColorOf(LookColor::Raised, palette()));
        painter.fillRect(QRectF(whole - 2.5, bar.top() - Post, 3, bar.height() + 1.5 * Post), mark);
        painter.fillRect(QRectF(whole - 2.5, bar.top() - Post - 2, bar.right() - whole + 2.5, 3), mark);
    }
}

} // namespace Zel
