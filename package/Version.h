#pragma once

#include "export/zel_commonframes_export.h"

/// The version of these headers, with which a host was built. CMake reads the project's version from these
/// three lines.
#define ZELCOMMONFRAMES_VERSION_MAJOR 1
#define ZELCOMMONFRAMES_VERSION_MINOR 1
#define ZELCOMMONFRAMES_VERSION_PATCH 0
/// The three numbers as "major.minor.patch".
#define ZELCOMMONFRAMES_VERSION_STR                                                                          \
    ZELCOMMONFRAMES_VERSION_TEXT(ZELCOMMONFRAMES_VERSION_MAJOR, ZELCOMMONFRAMES_VERSION_MINOR,               \
                                 ZELCOMMONFRAMES_VERSION_PATCH)
/// @cond
#define ZELCOMMONFRAMES_VERSION_TEXT(major, minor, patch) ZELCOMMONFRAMES_VERSION_JOIN(major, minor, patch)
#define ZELCOMMONFRAMES_VERSION_JOIN(major, minor, patch) #major "." #minor "." #patch
/// @endcond

/// The version of the loaded library, as "major.minor.patch". Valid until the library is unloaded.
extern "C" ZEL_COMMONFRAMES_EXPORT const char *ZelCommonFramesVersion();
