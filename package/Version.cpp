#include "package/Version.h"

const char *ZelCommonFramesVersion()
{
    return ZELCOMMONFRAMES_VERSION_STR;
}
