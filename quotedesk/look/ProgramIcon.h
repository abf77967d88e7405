#pragma once

#include <QIcon>

namespace QuoteDesk
{

/// The program's icon, drawn from freedesktop/quotedesk.svg.
QIcon programIcon();

} // namespace QuoteDesk
