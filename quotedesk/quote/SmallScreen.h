#pragma once

#include <QScreen>
#include <QWidget>

namespace QuoteDesk
{

/// Whether the widget's screen is too low for a complete page, e.g. 768 lines at a scale of 200 %. Controls
/// that are also in a menu are hidden then, so that the numbers stay visible.
inline bool isLowScreen(const QWidget &widget)
{
    constexpr int lowHeight = 480;
    return widget.screen()->availableGeometry().height() < lowHeight;
}

} // namespace QuoteDesk
