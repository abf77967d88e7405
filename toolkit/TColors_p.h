#pragma once

#include "toolkit/Look.h"
#include "toolkit/TColors.h"

namespace Zel
{

/// What a colour of the designs is in the application look.
struct ColorUse {
    LookColor ground;   ///< a panel of the colour
    LookColor onGround; ///< the caption of such a panel
    LookColor text;     ///< a text in the colour on the surroundings
    /// The caption of such a panel. With Heading the panel is not filled: it has a line below its caption.
    LookFont caption;
};

/// The use of @p color; nullptr for the colours of the system, which are those of the palette in both looks.
const ColorUse *UseOf(TColor color);
/// The colour of a text in @p color in the current look; invalid for TColor::None.
QColor TextColorOf(TColor color, const QPalette &palette);

} // namespace Zel
