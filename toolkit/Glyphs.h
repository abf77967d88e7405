#pragma once

#include "export/zel_toolkit_export.h"

#include <QIcon>
#include <QStringList>

/// A picture of the designs by name: an SVG drawn in the palette's text colour, crisp at every size and
/// scale, with a disabled state (a drawing of its own where the design has two, "<name>-disabled", else the
/// same one in the disabled colour). A null icon when there is no picture of that name.
ZEL_TOOLKIT_EXPORT QIcon GlyphIcon(const QString &name);
/// The names of all pictures, sorted.
ZEL_TOOLKIT_EXPORT QStringList GlyphNames();
