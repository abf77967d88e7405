#include "dataviews/SystemViews_p.h"

#include <QLoggingCategory>

namespace
{
// The only log category of the package.
const QLoggingCategory &trace()
{
    static const QLoggingCategory category("zel.dataviews");
    return category;
}
} // namespace

namespace Zel::SystemViews
{
void WriteDebugLine(const char *line)
{
    qCDebug(trace, "%s", line);
}

void DeleteColumn(int, int)
{
    // X11 has no native list views.
}
} // namespace Zel::SystemViews
