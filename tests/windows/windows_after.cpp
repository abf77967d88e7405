// A host that includes Windows' own headers after the package's.
#include "windows_after.h"
#include "public_headers.h"

// Included after the package's headers on purpose.
#include <windows.h>

#include <oaidl.h>

using namespace Qt::StringLiterals;

IDispatchPtr madeWithWindowsAfter(QAction *action)
{
    return std::make_shared<TRibbonItem>(action, u"rbSave"_s);
}

bool knownWithWindowsAfter(const IDispatchPtr &object)
{
    return std::dynamic_pointer_cast<IRibbonItem>(object) != nullptr;
}
