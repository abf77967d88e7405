#pragma once

#include "export/zel_toolkit_export.h"

#include <QFont>

/// A font of the designs, by family and pixel height. Calls SubstituteDesignFonts.
ZEL_TOOLKIT_EXPORT QFont DesignFont(const QString &family = QStringLiteral("Tahoma"), int pixelHeight = 11);

/// Registers, once per process, substitutes for the designed font families that are not installed. The
/// substitutes are no wider, so that captions are not cut off.
ZEL_TOOLKIT_EXPORT void SubstituteDesignFonts();
