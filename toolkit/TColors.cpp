#include "toolkit/TColors.h"

#include "toolkit/TColors_p.h"

#include <algorithm>
#include <array>

namespace
{
struct Entry {
    TColor color;
    const char *name;
    QRgb light;
    QRgb dark;
    Zel::ColorUse look;
};

using enum LookColor;

// The only table of the designs' colours: their values in the designed look, for light and dark palettes, and
// what they are in the application look: as the ground of a panel, as the caption on it, as a text elsewhere.
// In the dark values, text has a contrast of at least 4.5:1: white on gray, green 3 and olive; black (whose
// dark value is light) on green 5; silver and black on the grid's dark background.
constexpr std::array table{
    Entry{TColor::clBlack, "clBlack", 0xff000000, 0xfff2f2f2, {Text, Surface, Text, LookFont::Body}},
    Entry{TColor::clWhite, "clWhite", 0xffffffff, 0xffffffff, {Surface, Text, Text, LookFont::Body}},
    Entry{TColor::clGray, "clGray", 0xff808080, 0xff5f5f5f, {Raised, Text, Text2, LookFont::Heading}},
    Entry{TColor::clSilver, "clSilver", 0xffc0c0c0, 0xff9d9d9d, {Raised, Text, Text, LookFont::Strong}},
    Entry{TColor::clOlive,
          "clOlive",
          0xff808000,
          0xff5c5c00,
          {AccentSoft, AccentText, AccentText, LookFont::Strong}},
    Entry{TColor::clRed,
          "clRed",
          0xffff0000,
          0xffb3261e,
          {ErrorGround, ErrorText, ErrorText, LookFont::Strong}},
    Entry{TColor::clGreen2, "clGreen2", 0xff2e7d5b, 0xff4fa882, {Line, Text, AccentText, LookFont::Body}},
    Entry{
        TColor::clGreen3, "clGreen3", 0xff3f7f68, 0xff2f6350, {Raised, Text, AccentText, LookFont::Heading}},
    Entry{TColor::clGreen5,
          "clGreen5",
          0xffb9d8c4,
          0xff2c4a3a,
          {AccentSoft, AccentText, AccentText, LookFont::Strong}},
};

const Entry *entryOf(TColor color)
{
    const auto *const found = std::find_if(table.begin(), table.end(),
                                           [color](const Entry &entry) { return entry.color == color; });
    return found == table.end() ? nullptr : found;
}
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
        break;
    }
    const Entry *const entry = entryOf(color);
    if (!entry)
        return {};
    if (CurrentLook() == Look::Application)
        return ColorOf(entry->look.ground, palette);
    return QColor::fromRgb(IsDark(palette) ? entry->dark : entry->light);
}

const Zel::ColorUse *Zel::UseOf(TColor color)
{
    const Entry *const entry = entryOf(color);
    return entry ? &entry->look : nullptr;
}

QColor Zel::TextColorOf(TColor color, const QPalette &palette)
{
    const ColorUse *const use = CurrentLook() == Look::Application ? UseOf(color) : nullptr;
    return use ? ColorOf(use->text, palette) : ColorOf(color, palette);
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
    if (const Entry *const entry = entryOf(color))
        return QLatin1String(entry->name);
    for (const Named &entry : systemNames) {
        if (entry.color == color)
            return QLatin1String(entry.name);
    }
    return {};
}
