# Toolchain: Windows on x86-64, built on Debian with mingw-w64.
#
# ZEL_WINDOWS_ROOT names the folder with the libraries for Windows (tools/windows/build-qt.sh prints it). While
# Qt itself is built it is the folder with what Qt needs.

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_VERSION 10.0)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

# By their full names: what the short ones mean is the administrator's choice, and the other kind of threads has
# no std::thread.
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

# CMake's own trial projects read this file again and need the same folder.
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES ZEL_WINDOWS_ROOT)
set(CMAKE_FIND_ROOT_PATH "${ZEL_WINDOWS_ROOT}" /usr/x86_64-w64-mingw32)
list(PREPEND CMAKE_PREFIX_PATH "${ZEL_WINDOWS_ROOT}")

# Programs (moc, uic) are this machine's, libraries and headers only ever those for Windows.
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# Linked in rather than a further DLL.
set(ZLIB_LIBRARY /usr/x86_64-w64-mingw32/lib/libz.a CACHE FILEPATH "")

set(QT_HOST_PATH /usr)
file(GLOB zel_host_info LIST_DIRECTORIES true /usr/lib/*/cmake/Qt6HostInfo)
if(zel_host_info)
    list(GET zel_host_info 0 zel_host_info)
    cmake_path(GET zel_host_info PARENT_PATH QT_HOST_PATH_CMAKE_DIR)
endif()
