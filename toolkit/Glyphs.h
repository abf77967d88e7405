#pragma once

#include "export/zel_toolkit_export.h"

#include <QIcon>
#include <QStringList>

class QPainter;

/// A picture of the designs by name: an SVG drawn in the palette's text colour, sharp at every size and
/// scale. Its disabled state has the palette's disabled colour; in the designed look it is the
/// picture "<name>-disabled" if there is one. A null icon for an unknown name.
ZEL_TOOLKIT_EXPORT QIcon GlyphIcon(const QString &name);
/// Draws the picture @p name in @p color, filling @p rect; nothing for an unknown name.
ZEL_TOOLKIT_EXPORT void PaintGlyph(QPainter &painter, const QRect &rect, const QString &name,
                                   const QColor &color);
/// The names of all pictures, sorted.
ZEL_TOOLKIT_EXPORT QStringList GlyphNames();
