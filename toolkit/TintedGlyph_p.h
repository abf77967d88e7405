#pragma once

#include "toolkit/Glyphs.h"

#include <QIcon>
#include <QPaintDevice>
#include <QPainter>
#include <QPixmap>

namespace Zel
{

/// The picture of that name in one colour, @p size pixels wide, for a screen with that ratio of pixels.
inline QPixmap TintedGlyph(const QString &name, int size, const QColor &color, qreal ratio)
{
    QPixmap picture = GlyphIcon(name).pixmap(QSize(size, size), ratio);
    if (picture.isNull())
        return picture;
    QPainter painter(&picture);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(QRect(0, 0, size, size), color);
    return picture;
}

/// Draws the picture of that name in one colour at the middle of @p place.
inline void PaintGlyph(QPainter &painter, const QRect &place, const QString &name, const QColor &color)
{
    const int size = qMin(place.width(), place.height());
    const QPixmap picture = TintedGlyph(name, size, color, painter.device()->devicePixelRatio());
    painter.drawPixmap(place.left() + (place.width() - size) / 2, place.top() + (place.height() - size) / 2,
                       picture);
}

} // namespace Zel
