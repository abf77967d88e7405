#pragma once

#include "export/zel_toolkit_export.h"

#include <functional>

class QWidget;

namespace Zel
{
/// Keeps the texts of a design in the language of the application. Call it once, after the design of @p root
/// was set up. @p retranslate sets the designed texts again; it runs whenever a translation is installed or
/// removed. A text of @p root or its descendants that a page has changed stays.
ZEL_TOOLKIT_EXPORT void KeepTranslated(QWidget *root, std::function<void()> retranslate);
} // namespace Zel
