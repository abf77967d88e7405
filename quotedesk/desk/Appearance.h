#pragma once

#include <QIcon>
#include <QPalette>

namespace QuoteDesk
{

/// The palette with inverted lightness: light colours become dark and dark ones light; hues stay.
QPalette inverted(const QPalette &palette);

/// The program's icon, drawn from freedesktop/quotedesk.svg.
QIcon programIcon();

} // namespace QuoteDesk
