#pragma once

#include <QColor>

#include <algorithm>
#include <cmath>

/// The light of one part of an sRGB colour, 0 to 1.
inline double LinearPart(double part)
{
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

/// The relative luminance of @p color, 0 to 1, by the formula of WCAG 2.
inline double Luminance(const QColor &color)
{
    return 0.2126 * LinearPart(color.redF()) + 0.7152 * LinearPart(color.greenF()) +
           0.0722 * LinearPart(color.blueF());
}

/// The contrast of two colours, 1 to 21, by the formula of WCAG 2.
inline double Contrast(const QColor &a, const QColor &b)
{
    const auto [darker, lighter] = std::minmax({Luminance(a), Luminance(b)});
    return (lighter + 0.05) / (darker + 0.05);
}
