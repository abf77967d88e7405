#pragma once

#include "export/zel_toolkit_export.h"

#include <QColor>
#include <QFont>
#include <QFontMetrics>
#include <QPalette>

/// The two looks of the frames.
enum class Look {
    Designed,   ///< the fonts, colours and sizes of the designs; the default
    Application ///< fonts and colours of the application, sizes that follow its font
};

/// Sets the look of all frames. Frames that exist receive QEvent::StyleChange and change at once. May be
/// called before there is an application.
ZEL_TOOLKIT_EXPORT void SetLook(Look look);
/// The look of all frames.
ZEL_TOOLKIT_EXPORT Look CurrentLook();

/// The colours of the application look, by their use. Each has a value for light and one for dark palettes.
enum class LookColor {
    Ground,       ///< windows
    Surface,      ///< panels, tables and fields
    Raised,       ///< heads, feet, menu and status bar, the row under the pointer
    Line,         ///< separators
    LineStrong,   ///< edges of quiet buttons
    Field,        ///< edges of everything that can be typed into or ticked
    Text,         ///< text
    Text2,        ///< labels and second lines
    Text3,        ///< hints in fields
    Disabled,     ///< what cannot be used
    Accent,       ///< the filled button, ticks, the active half of a switch
    AccentHover,  ///< the same under the pointer
    AccentPress,  ///< the same while it is pressed
    OnAccent,     ///< text on Accent, AccentHover and AccentPress
    AccentText,   ///< links, the tinted button
    AccentSoft,   ///< the chosen row
    AccentMid,    ///< selected text
    Focus,        ///< the focus ring
    Mark,         ///< found words
    Side,         ///< the side bar
    SideChosen,   ///< its chosen place
    SideText,     ///< text on the side bar
    SideText2,    ///< second lines on the side bar
    SideButton,   ///< the filled button of the side bar
    OnSideButton, ///< text on that button
    SideStrip,    ///< the strip of the chosen place
    Unsaved,      ///< the dot of a quote with unsaved changes
    OkText,       ///< done
    OkGround,     ///< behind OkText
    InfoText,     ///< news
    InfoGround,   ///< behind InfoText
    WarnText,     ///< still to be done
    WarnGround,   ///< behind WarnText
    WarnMark,     ///< edges and dashes of the same
    ErrorText,    ///< wrong, too much
    ErrorGround,  ///< behind ErrorText
    ErrorMark,    ///< edges of the same
    NeutralText,  ///< a draft
    NeutralGround ///< behind NeutralText
};
/// The value of @p color on @p palette. The colours of windows, fields and text are those of the palette, the
/// others are chosen by whether it is dark.
ZEL_TOOLKIT_EXPORT QColor ColorOf(LookColor color, const QPalette &palette);
/// The palette of the application look.
ZEL_TOOLKIT_EXPORT QPalette LookPalette(bool dark);

/// The number of colours for funds; see FundColor.
inline constexpr int FundColorCount = 8;
/// The colour of the fund that joined a quote as number @p index, from 0. From FundColorCount on, the colour
/// of "other funds". @p index below 0 counts as 0.
ZEL_TOOLKIT_EXPORT QColor FundColor(int index, bool dark);

/// The sizes of type.
enum class LookFont {
    Caption, ///< second lines, units, table heads
    Body,    ///< all else
    Strong,  ///< amounts, names, the active tab, the filled button
    Heading, ///< titles of panels
    Title,   ///< the title of a page
    Figure,  ///< the one amount that matters
    Result   ///< an amount among others that matter
};
/// @p body in the size and weight of @p font. A body font with a pixel size gives fonts with pixel sizes.
ZEL_TOOLKIT_EXPORT QFont FontOf(LookFont font, const QFont &body);

/// Heights that follow the font.
enum class LookHeight {
    Row,        ///< a row of a table
    CompactRow, ///< the same on a low screen
    FieldRow,   ///< a row of a table with fields
    CompactFieldRow,
    TableHead,
    Field, ///< a field, button or switch
    SmallField,
    TabStrip,
    CommandBar,
    LowCommandBar, ///< the same on a low screen
    Band,          ///< the band with the investor
    LowBand,
    StatusBar,
    Chip,
    FilterChip
};
/// @p height in pixels, for a body font with @p metrics.
ZEL_TOOLKIT_EXPORT int HeightOf(LookHeight height, const QFontMetrics &metrics);

/// Lengths in pixels that do not follow the font.
namespace LookSpace
{
inline constexpr int Grid = 4;          ///< the step of all distances
inline constexpr int Small = 8;         ///< between label and field
inline constexpr int Medium = 12;       ///< margins of a page on a small screen
inline constexpr int Large = 16;        ///< margins of a page, padding of a panel, gap between panels
inline constexpr int ControlRadius = 4; ///< fields, buttons, tiles
inline constexpr int PanelRadius = 6;   ///< panels, banners
inline constexpr int Ring = 2;          ///< the width of the focus ring
} // namespace LookSpace
