#include "frames/WindowMessages_p.h"

namespace Zel::WindowMessages
{
int NumberOf(const QByteArray &, const void *)
{
    return 0;
}
} // namespace Zel::WindowMessages
