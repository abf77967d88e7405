#pragma once

#include "export/zel_commonframes_export.h"

/// The version of these headers: what a host was built with. The build reads its version from these three
/// lines.
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

/// The version of the library that is loaded, as "major.minor.patch". The text lives as long as the library.
extern "C" ZEL_COMMONFRAMES_EXPORT const char *ZelCommonFramesVersion();
