#pragma once

#include "export/zel_toolkit_export.h"

#include <QColor>
#include <QPalette>
#include <QString>

/// The named colours of the designs. Each has the designed value for light palettes and a corresponding value
/// for dark palettes.
enum class TColor {
    None, ///< no named colour; the widget's own is used
    clBlack,
    clWhite,
    clGray,
    clSilver,
    clOlive,
    clRed,
    clGreen2,
    clGreen3,
    clGreen5,
    clBtnFace,
    clWindow,
    clWindowText,
    clGrayText,
    clHighlight,
    clHighlightText
};

/// Whether @p palette is dark: its window colour is darker than its text colour.
ZEL_TOOLKIT_EXPORT bool IsDark(const QPalette &palette);
/// The value of @p color on @p palette; invalid for TColor::None. In the application look, what that look has
/// in the place of a ground of that colour.
ZEL_TOOLKIT_EXPORT QColor ColorOf(TColor color, const QPalette &palette);
/// The colour of that name ("clGreen3"); TColor::None for an unknown name.
ZEL_TOOLKIT_EXPORT TColor ColorByName(const QString &name);
/// The name of @p color; "" for TColor::None.
ZEL_TOOLKIT_EXPORT QString NameOfColor(TColor color);
