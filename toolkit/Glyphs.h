#pragma once

#include "export/zel_toolkit_export.h"

#include <QIcon>
#include <QStringList>

/// A picture of the designs by name: an SVG drawn in the palette's text colour, sharp at every size and
/// scale. Its disabled state is the picture "<name>-disabled" if there is one, otherwise the same picture in
/// the disabled colour. A null icon for an unknown name.
ZEL_TOOLKIT_EXPORT QIcon GlyphIcon(const QString &name);
/// The names of all pictures, sorted.
ZEL_TOOLKIT_EXPORT QStringList GlyphNames();
