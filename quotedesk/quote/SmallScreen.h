#pragma once

#include <QScreen>
#include <QWidget>

namespace QuoteDesk
{

/// Whether the screen of a widget is too low for all that a page shows, such as one of 768 lines at a scale
/// of 200 %. What is in a menu as well is left out then, so that the numbers keep their place.
inline bool isLowScreen(const QWidget &widget)
{
    constexpr int lowHeight = 480;
    return widget.screen()->availableGeometry().height() < lowHeight;
}

} // namespace QuoteDesk
