#pragma once

#include "export/zel_toolkit_export.h"

#include <QFont>

/// A font of the designs: family and pixel height as designed ("Tahoma", 11).
ZEL_TOOLKIT_EXPORT QFont DesignFont(const QString &family = QStringLiteral("Tahoma"), int pixelHeight = 11);

/// Names, once per process, what stands in for the designs' families where they are not installed: fonts no
/// wider than the designed ones, so that captions are not cut off. DesignFont() sees to it by itself.
ZEL_TOOLKIT_EXPORT void SubstituteDesignFonts();
