#pragma once

#include <QColor>

#include <algorithm>
#include <cmath>

/// The relative luminance of @p color, 0 to 1, by the formula of WCAG 2.
inline double Luminance(const QColor &color)
{
    const auto linear = [](double value) {
        return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

/// The contrast of two colours, 1 to 21, by the formula of WCAG 2.
inline double Contrast(const QColor &a, const QColor &b)
{
    const auto [darker, lighter] = std::minmax({Luminance(a), Luminance(b)});
    return (lighter + 0.05) / (darker + 0.05);
}
