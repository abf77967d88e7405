#pragma once

#include "export/zel_toolkit_export.h"

#include <QColor>
#include <QPalette>
#include <QString>

/// The named colours of the designs. Each has a light value, the designed one, and a dark value that keeps
/// its meaning on a dark palette.
enum class TColor {
    None, ///< the widget's own
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

/// Whether @p palette is a dark one: its window is darker than its text.
ZEL_TOOLKIT_EXPORT bool IsDark(const QPalette &palette);
/// The value of @p color on @p palette; invalid for TColor::None.
ZEL_TOOLKIT_EXPORT QColor ColorOf(TColor color, const QPalette &palette);
/// The colour of that name ("clGreen3"); TColor::None for any other text.
ZEL_TOOLKIT_EXPORT TColor ColorByName(const QString &name);
/// The name of @p color; "" for TColor::None.
ZEL_TOOLKIT_EXPORT QString NameOfColor(TColor color);
