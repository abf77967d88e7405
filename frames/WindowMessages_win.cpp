#include "frames/WindowMessages_p.h"

#include <QByteArray>

#include <windows.h>

namespace Zel::WindowMessages
{
int NumberOf(const QByteArray &eventType, const void *message)
{
    return eventType == "windows_generic_MSG" ? static_cast<int>(static_cast<const MSG *>(message)->message)
                                              : 0;
}
} // namespace Zel::WindowMessages
