#include "data/Exceptions.h"
#include "frames/Started_p.h"

using namespace Qt::StringLiterals;

namespace Zel::Started
{
namespace
{
constinit bool started = false;
constinit thread_local int tools = 0;
} // namespace

void Set(bool value) noexcept
{
    started = value;
}

void Want()
{
    if (!started && tools == 0)
        throw Exception(u"A frame of the package was made while the package is not initialised. "
                        "Call Initialize before the first frame, and Finalize after the last."_s);
}

ForTools::ForTools() noexcept
{
    ++tools;
}

ForTools::~ForTools()
{
    --tools;
}
} // namespace Zel::Started
