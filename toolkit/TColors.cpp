#include "toolkit/TColors.h"

#include <array>

namespace
{
struct Entry {
    TColor color;
    const char *name;
    QRgb light;
    QRgb dark;
};

// The only table of literal colours. In the dark values, text has a contrast of at least 4.5:1: white on
// gray, green 3 and olive; black (whose dark value is light) on green 5; silver and black on the grid's dark
// background.
constexpr std::array table{
    Entry{TColor::clBlack, "clBlack", 0xff000000, 0xfff2f2f2},
    Entry{TColor::clWhite, "clWhite", 0xffffffff, 0xffffffff},
    Entry{TColor::clGray, "clGray", 0xff808080, 0xff5f5f5f},
    Entry{TColor::clSilver, "clSilver", 0xffc0c0c0, 0xff9d9d9d},
    Entry{TColor::clOlive, "clOlive", 0xff808000, 0xff5c5c00},
    Entry{TColor::clRed, "clRed", 0xffff0000, 0xffb3261e},
    Entry{TColor::clGreen2, "clGreen2", 0xff2e7d5b, 0xff4fa882},
    Entry{TColor::clGreen3, "clGreen3", 0xff3f7f68, 0xff2f6350},
    Entry{TColor::clGreen5, "clGreen5", 0xffb9d8c4, 0xff2c4a3a},
};
} // namespace

bool IsDark(const QPalette &palette)
{
    return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
}

QColor ColorOf(TColor color, const QPalette &palette)
{
    switch (color) {
    case TColor::None:
        return {};
    case TColor::clBtnFace:
        return palette.color(QPalette::Button);
    case TColor::clWindow:
        return palette.color(QPalette::Base);
    case TColor::clWindowText:
        return palette.color(QPalette::WindowText);
    case TColor::clGrayText:
        return palette.color(QPalette::Disabled, QPalette::Text);
    case TColor::clHighlight:
        return palette.color(QPalette::Highlight);
    case TColor::clHighlightText:
        return palette.color(QPalette::HighlightedText);
    default:
        for (const Entry &entry : table) {
            if (entry.color == color)
                return QColor::fromRgb(IsDark(palette) ? entry.dark : entry.light);
        }
        return {};
    }
}

namespace
{
struct Named {
    TColor color;
    const char *name;
};
constexpr std::array systemNames{
    Named{TColor::clBtnFace, "clBtnFace"},       Named{TColor::clWindow, "clWindow"},
    Named{TColor::clWindowText, "clWindowText"}, Named{TColor::clGrayText, "clGrayText"},
    Named{TColor::clHighlight, "clHighlight"},   Named{TColor::clHighlightText, "clHighlightText"},
};
} // namespace

TColor ColorByName(const QString &name)
{
    for (const Entry &entry : table) {
        if (name == QLatin1String(entry.name))
            return entry.color;
    }
    for (const Named &entry : systemNames) {
        if (name == QLatin1String(entry.name))
            return entry.color;
    }
    return TColor::None;
}

QString NameOfColor(TColor color)
{
    for (const Entry &entry : table) {
        if (entry.color == color)
            return QLatin1String(entry.name);
    }
    for (const Named &entry : systemNames) {
        if (entry.color == color)
            return QLatin1String(entry.name);
    }
    return {};
}
