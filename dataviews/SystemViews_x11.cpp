#include "dataviews/SystemViews_p.h"

#include <QLoggingCategory>

namespace
{
// The one trace that this system writes.
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
    // The X server has no list views of its own.
}
} // namespace Zel::SystemViews
