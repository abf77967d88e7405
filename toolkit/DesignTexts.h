#pragma once

#include "export/zel_toolkit_export.h"

#include <functional>

class QWidget;

namespace Zel
{
/// Keeps the texts of a design in the language of the application. Call it once, when the design of @p root
/// is set up; from then on @p retranslate, which sets the designed texts anew, runs whenever a translation is
/// installed or removed. A text that a page has put in the place of a designed one stays, on @p root and on
/// all it holds.
ZEL_TOOLKIT_EXPORT void KeepTranslated(QWidget *root, std::function<void()> retranslate);
} // namespace Zel
