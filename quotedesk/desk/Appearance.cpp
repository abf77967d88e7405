#include "desk/Appearance.h"

#include "ProgramPicture.h"

#include <QColor>
#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>

namespace QuoteDesk
{

QPalette inverted(const QPalette &palette)
{
    // Black behind white text tires the eyes, so the darkest colour is a dark grey.
    constexpr float darkest = 0.13F;

    QPalette result = palette;
    for (int group = 0; group < QPalette::NColorGroups; ++group) {
        for (int role = 0; role < QPalette::NColorRoles; ++role) {
            const auto colorGroup = static_cast<QPalette::ColorGroup>(group);
            const auto colorRole = static_cast<QPalette::ColorRole>(role);
            // The highlight has its own text colour and is readable in both palettes.
            if (colorRole == QPalette::Highlight || colorRole == QPalette::HighlightedText)
                continue;
            float hue = 0;
            float saturation = 0;
            float lightness = 0;
            float alpha = 1;
            palette.color(colorGroup, colorRole).getHslF(&hue, &saturation, &lightness, &alpha);
            const float turned = darkest + (1 - lightness) * (1 - darkest);
            result.setColor(colorGroup, colorRole,
                            QColor::fromHslF(hue < 0 ? 0 : hue, saturation, turned, alpha));
        }
    }
    return result;
}

QIcon programIcon()
{
    QSvgRenderer picture(QByteArray::fromRawData(ProgramPicture, sizeof ProgramPicture - 1));
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 64, 128}) {
        QPixmap pixmap(size, size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        picture.render(&painter);
        painter.end();
        icon.addPixmap(pixmap);
    }
    return icon;
}

} // namespace QuoteDesk
