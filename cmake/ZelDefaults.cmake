# Settings every target of the project shares, and the few functions that make targets.

# On Debian a library lives in the folder of its architecture whatever the prefix, so that one layout serves
# /usr, /usr/local and a folder of one's own.
if(NOT DEFINED CMAKE_INSTALL_LIBDIR AND CMAKE_LIBRARY_ARCHITECTURE AND EXISTS "/etc/debian_version")
    set(CMAKE_INSTALL_LIBDIR "lib/${CMAKE_LIBRARY_ARCHITECTURE}" CACHE PATH "Where libraries are installed")
endif()
include(GNUInstallDirs)
include(GenerateExportHeader)

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_AUTOMOC ON)
# The build tree is laid out as the installed one. What is installed finds its libraries by the same relative path in
# both (zel_finds_libraries), and its RUNPATH need not be changed on the way: CMake makes room for that with empty
# entries, and an empty entry is the folder that the program is started in.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/${CMAKE_INSTALL_BINDIR}")
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/${CMAKE_INSTALL_LIBDIR}")

option(ZEL_PCH "Use precompiled headers" ON)
set(ZEL_SANITIZE "" CACHE STRING "Sanitizers to build with, e.g. address,undefined")
option(ZEL_COVERAGE "Build with coverage counters" OFF)
include(ZelHardening)

add_library(zel_flags INTERFACE)
# Errors in our own presets only (CMAKE_COMPILE_WARNING_AS_ERROR): a packager's newer compiler has warnings of its own.
target_compile_options(zel_flags INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wno-error=deprecated-declarations)
target_compile_definitions(zel_flags INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_URL_CAST_FROM_STRING QT_NO_KEYWORDS
    QT_NO_NARROWING_CONVERSIONS_IN_CONNECT QT_DISABLE_DEPRECATED_BEFORE=0x060400)
if(ZEL_SANITIZE)
    target_compile_options(zel_flags INTERFACE -fsanitize=${ZEL_SANITIZE} -fno-omit-frame-pointer
        -fno-sanitize-recover=all)
    # vptr needs the type information of every class across the library borders, which hidden
    # visibility takes away.
    target_compile_options(zel_flags INTERFACE -fno-sanitize=vptr)
    target_link_options(zel_flags INTERFACE -fsanitize=${ZEL_SANITIZE})
endif()
if(ZEL_COVERAGE)
    target_compile_options(zel_flags INTERFACE --coverage)
    target_link_options(zel_flags INTERFACE --coverage)
endif()

# zel_finds_libraries(<target> <path>): looks for the libraries in this folder, seen from the one that it stands in
# itself, wherever the prefix ends up.
function(zel_finds_libraries target path)
    set_target_properties(${target} PROPERTIES BUILD_WITH_INSTALL_RPATH ON INSTALL_RPATH "$ORIGIN${path}")
endfunction()

# zel_version_resource(<target> <description>): on Windows, what the system shows of a program or library.
function(zel_version_resource target zel_description)
    if(NOT WIN32)
        return()
    endif()
    get_target_property(kind ${target} TYPE)
    if(kind STREQUAL "EXECUTABLE")
        set(zel_file_type VFT_APP)
        set(zel_suffix ".exe")
    else()
        set(zel_file_type VFT_DLL)
        set(zel_suffix ".dll")
    endif()
    configure_file("${PROJECT_SOURCE_DIR}/cmake/version.rc.in" "${CMAKE_CURRENT_BINARY_DIR}/${target}.rc" @ONLY)
    target_sources(${target} PRIVATE "${CMAKE_CURRENT_BINARY_DIR}/${target}.rc")
endfunction()

# zel_precompile(<target>): the toolkit's headers once per target.
function(zel_precompile target)
    if(ZEL_PCH)
        target_precompile_headers(${target} PRIVATE "${PROJECT_SOURCE_DIR}/cmake/pch.h")
    endif()
endfunction()

# zel_follow_units(<target> <sources>...): moc looks again when a unit joins or leaves. Its dependency file
# knows only the units of its last run, so its time stamp goes when the list has changed.
function(zel_follow_units target)
    set(list "${CMAKE_CURRENT_BINARY_DIR}/${target}_units.txt")
    list(JOIN ARGN "\n" units)
    set(former "")
    if(EXISTS "${list}")
        file(READ "${list}" former)
    endif()
    if(NOT former STREQUAL units)
        file(WRITE "${list}" "${units}")
        file(REMOVE "${CMAKE_CURRENT_BINARY_DIR}/${target}_autogen/timestamp")
    endif()
endfunction()

# zel_library(<target> <alias> <export macro> FOLDERS <folder>... LINK <public libraries>...
#             [PRIVATE_LINK <libraries>...])
# One shared library made of the units in the named folders of the source tree.
function(zel_library target alias macro)
    cmake_parse_arguments(ARG "" "" "FOLDERS;LINK;PRIVATE_LINK" ${ARGN})
    set(sources)
    set(designs)
    foreach(folder IN LISTS ARG_FOLDERS)
        file(GLOB found CONFIGURE_DEPENDS
            "${PROJECT_SOURCE_DIR}/${folder}/*.h"
            "${PROJECT_SOURCE_DIR}/${folder}/*.cpp")
        list(APPEND sources ${found})
        file(GLOB found CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/${folder}/*.ui")
        list(APPEND designs ${found})
    endforeach()
    # A unit whose name ends in _x11 or _win is the one system's own.
    if(WIN32)
        list(FILTER sources EXCLUDE REGEX "_x11[.]cpp$")
    else()
        list(FILTER sources EXCLUDE REGEX "_win[.]cpp$")
    endif()
    if(designs)
        qt_wrap_ui(sources ${designs})
    endif()
    add_library(${target} SHARED ${sources})
    zel_follow_units(${target} ${sources})
    add_library(Zel::${alias} ALIAS ${target})
    set_target_properties(${target} PROPERTIES
        VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR} EXPORT_NAME ${alias})
    zel_finds_libraries(${target} "")
    string(TOLOWER ${macro} lower)
    generate_export_header(${target}
        BASE_NAME ${macro} EXPORT_MACRO_NAME ${macro}_EXPORT
        EXPORT_FILE_NAME "${PROJECT_BINARY_DIR}/generated/export/${lower}_export.h")
    target_include_directories(${target} PUBLIC
        "$<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>"
        "$<BUILD_INTERFACE:${PROJECT_BINARY_DIR}/generated>"
        "$<BUILD_INTERFACE:${CMAKE_CURRENT_BINARY_DIR}>"
        "$<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/zelcommonframes>")
    target_link_libraries(${target} PUBLIC ${ARG_LINK} PRIVATE "$<BUILD_INTERFACE:zel_flags>" ${ARG_PRIVATE_LINK})
    target_compile_features(${target} PUBLIC cxx_std_20)
    if(CMAKE_SYSTEM_NAME STREQUAL "Linux")
        target_link_options(${target} PRIVATE "-Wl,--version-script=${PROJECT_SOURCE_DIR}/cmake/exports.map")
        set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS "${PROJECT_SOURCE_DIR}/cmake/exports.map")
    endif()
    # One name everywhere: the libraries ask for each other by it.
    if(WIN32)
        set_target_properties(${target} PROPERTIES PREFIX "")
    endif()
    zel_version_resource(${target} "${PROJECT_NAME}: ${alias}")
    zel_precompile(${target})
endfunction()
