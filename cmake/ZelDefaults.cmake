# Settings for every target of the project, and the functions that create targets.

# On Debian, libraries are installed in the folder of their architecture for every prefix, so that the layout is the
# same in /usr, /usr/local and any other folder.
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
# The build tree has the layout of the installed tree, so an installed file finds its libraries by the same relative
# path in both (zel_finds_libraries) and CMake does not change its RUNPATH during the installation. To be able to
# change it, CMake would pad the RUNPATH with empty entries, and an empty entry means the working directory.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/${CMAKE_INSTALL_BINDIR}")
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/${CMAKE_INSTALL_LIBDIR}")

option(ZEL_PCH "Use precompiled headers" ON)
set(ZEL_SANITIZE "" CACHE STRING "Sanitizers to build with, e.g. address,undefined")
option(ZEL_COVERAGE "Build with coverage counters" OFF)
include(ZelHardening)

add_library(zel_flags INTERFACE)
# Warnings are errors only in the project's presets (CMAKE_COMPILE_WARNING_AS_ERROR), because a packager's newer
# compiler may have other warnings.
target_compile_options(zel_flags INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wno-error=deprecated-declarations)
target_compile_definitions(zel_flags INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_URL_CAST_FROM_STRING QT_NO_KEYWORDS
    QT_NO_NARROWING_CONVERSIONS_IN_CONNECT QT_DISABLE_DEPRECATED_BEFORE=0x060400)
if(ZEL_SANITIZE)
    target_compile_options(zel_flags INTERFACE -fsanitize=${ZEL_SANITIZE} -fno-omit-frame-pointer
        -fno-sanitize-recover=all)
    # The vptr check needs the type information of every class in all libraries, but hidden visibility removes
    # it.
    target_compile_options(zel_flags INTERFACE -fno-sanitize=vptr)
    target_link_options(zel_flags INTERFACE -fsanitize=${ZEL_SANITIZE})
endif()
if(ZEL_COVERAGE)
    target_compile_options(zel_flags INTERFACE --coverage)
    target_link_options(zel_flags INTERFACE --coverage)
endif()

# zel_finds_libraries(<target> <path>): makes the target look for its libraries in <path> relative to its own folder,
# so that the installed tree can be moved.
function(zel_finds_libraries target path)
    set_target_properties(${target} PROPERTIES BUILD_WITH_INSTALL_RPATH ON INSTALL_RPATH "$ORIGIN${path}")
endfunction()

# zel_version_resource(<target> <description>): on Windows, adds the version information of a program or library.
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

# zel_precompile(<target>): precompiles Qt's headers once per target.
function(zel_precompile target)
    if(ZEL_PCH)
        target_precompile_headers(${target} PRIVATE "${PROJECT_SOURCE_DIR}/cmake/pch.h")
    endif()
endfunction()

# zel_refuse_unlisted(<folder> <patterns> <files>...): stops when a file in the folder matches a pattern and is not among
# the files. Such a file would not be built, and nothing else would say so.
function(zel_refuse_unlisted folder patterns)
    list(TRANSFORM patterns PREPEND "${folder}/")
    file(GLOB unlisted RELATIVE "${folder}" ${patterns})
    list(REMOVE_ITEM unlisted ${ARGN})
    if(unlisted)
        list(JOIN unlisted "\n  " unlisted)
        message(FATAL_ERROR "In no list of ${CMAKE_CURRENT_LIST_FILE}:\n  ${unlisted}\nAdd each to its list, or remove it.")
    endif()
endfunction()

# zel_library(<target> <alias> <export macro> LINK <public libraries>... [PRIVATE_LINK <libraries>...]
#             SOURCES <files>...)
# Creates one shared library from sources, headers and .ui files; their paths start at the top of the source tree.
function(zel_library target alias macro)
    cmake_parse_arguments(ARG "" "" "LINK;PRIVATE_LINK;SOURCES" ${ARGN})
    set(patterns)
    foreach(source IN LISTS ARG_SOURCES)
        cmake_path(GET source PARENT_PATH folder)
        list(APPEND patterns "${folder}/*.h" "${folder}/*.cpp" "${folder}/*.ui")
    endforeach()
    list(REMOVE_DUPLICATES patterns)
    zel_refuse_unlisted("${PROJECT_SOURCE_DIR}" "${patterns}" ${ARG_SOURCES})
    list(TRANSFORM ARG_SOURCES PREPEND "${PROJECT_SOURCE_DIR}/" OUTPUT_VARIABLE sources)
    set(designs ${sources})
    list(FILTER designs INCLUDE REGEX "[.]ui$")
    list(FILTER sources EXCLUDE REGEX "[.]ui$")
    # A unit whose name ends in _win is for Windows only, one ending in _x11 for other systems only.
    if(WIN32)
        list(FILTER sources EXCLUDE REGEX "_x11[.]cpp$")
    else()
        list(FILTER sources EXCLUDE REGEX "_win[.]cpp$")
    endif()
    if(designs)
        qt_wrap_ui(sources ${designs})
    endif()
    add_library(${target} SHARED ${sources})
    add_library(Zel::${alias} ALIAS ${target})
    set_target_properties(${target} PROPERTIES
        VERSION ${PROJECT_VERSION} SOVERSION "${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR}" EXPORT_NAME ${alias})
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
    # A DLL has no "lib" prefix.
    if(WIN32)
        set_target_properties(${target} PROPERTIES PREFIX "")
    endif()
    zel_version_resource(${target} "${PROJECT_NAME}: ${alias}")
    zel_precompile(${target})
endfunction()
