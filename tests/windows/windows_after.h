#pragma once

#include "host/Zelquote_tlb.h"

/// Makes a ribbon item for @p action in a file that includes Windows' headers after the package's.
IDispatchPtr madeWithWindowsAfter(QAction *action);
/// Whether a file with this order of includes recognises @p object as a ribbon item.
bool knownWithWindowsAfter(const IDispatchPtr &object);
