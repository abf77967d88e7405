#pragma once

#include "host/Zelquote_tlb.h"

/// A ribbon item over @p action, made in a file that includes Windows' headers after the package's.
IDispatchPtr madeWithWindowsAfter(QAction *action);
/// Whether such a file knows @p object for a ribbon item.
bool knownWithWindowsAfter(const IDispatchPtr &object);
