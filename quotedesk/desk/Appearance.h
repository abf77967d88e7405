#pragma once

#include <QIcon>
#include <QPalette>

namespace QuoteDesk
{

/// The palette with the lightness of every colour turned round: light becomes dark and back, hues stay.
QPalette inverted(const QPalette &palette);

/// The program's own picture, as freedesktop/quotedesk.svg draws it.
QIcon programIcon();

} // namespace QuoteDesk
