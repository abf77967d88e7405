#include "PictureDifference.h"

#include "Contrast.h"

#include <QImage>

#include <array>
#include <cmath>

namespace
{

using Lab = std::array<double, 3>;

/// CIE Lab of an sRGB colour, for the white of D65.
Lab labOf(QRgb color)
{
    const double red = LinearPart(qRed(color) / 255.0);
    const double green = LinearPart(qGreen(color) / 255.0);
    const double blue = LinearPart(qBlue(color) / 255.0);
    const auto root = [](double value) {
        return value > 216.0 / 24389.0 ? std::cbrt(value) : (24389.0 / 27.0 * value + 16.0) / 116.0;
    };
    const double x = root((0.4124564 * red + 0.3575761 * green + 0.1804375 * blue) / 0.95047);
    const double y = root(0.2126729 * red + 0.7151522 * green + 0.0721750 * blue);
    const double z = root((0.0193339 * red + 0.1191920 * green + 0.9503041 * blue) / 1.08883);
    return {116 * y - 16, 500 * (x - y), 200 * (y - z)};
}

double distance(const Lab &a, const Lab &b)
{
    return std::hypot(a[0] - b[0], a[1] - b[1], a[2] - b[2]);
}

} // namespace

double PictureDifference(const QImage &a, const QImage &b)
{
    constexpr double seen = 10;
    if (a.size() != b.size() || a.isNull())
        return 1;
    const QImage first = a.convertToFormat(QImage::Format_RGB32);
    const QImage second = b.convertToFormat(QImage::Format_RGB32);
    int different = 0;
    for (int y = 0; y < first.height(); ++y) {
        const auto *const ours = reinterpret_cast<const QRgb *>(first.constScanLine(y));
        const auto *const theirs = reinterpret_cast<const QRgb *>(second.constScanLine(y));
        for (int x = 0; x < first.width(); ++x) {
            if (ours[x] != theirs[x] && distance(labOf(ours[x]), labOf(theirs[x])) > seen)
                ++different;
        }
    }
    return double(different) / (double(first.width()) * first.height());
}
