#pragma once

#include <QPalette>

namespace QuoteDesk
{

/// The palette with the lightness of every colour turned round: light becomes dark and back, hues stay.
QPalette inverted(const QPalette &palette);

} // namespace QuoteDesk
