#pragma once

#include "export/zel_commonframes_export.h"

/// The version of these headers: what a host was built with.
#define ZELCOMMONFRAMES_VERSION_MAJOR 1
#define ZELCOMMONFRAMES_VERSION_MINOR 0
#define ZELCOMMONFRAMES_VERSION_PATCH 0
#define ZELCOMMONFRAMES_VERSION_STR "1.0.0"

/// The version of the library that is loaded, as "major.minor.patch". The text lives as long as the library.
extern "C" ZEL_COMMONFRAMES_EXPORT const char *ZelCommonFramesVersion();
