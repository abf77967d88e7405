# The Debian packages: (cd <build folder> && cpack -G DEB) creates one for each installed component.

install(TARGETS quotedesk RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT quotedesk)
file(RELATIVE_PATH zel_libraries "/${CMAKE_INSTALL_BINDIR}" "/${CMAKE_INSTALL_LIBDIR}")
zel_finds_libraries(quotedesk "/${zel_libraries}")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME zelcommonframes)
set(CPACK_PACKAGE_VENDOR "ZelCommonFrames developers")
set(CPACK_PACKAGE_CONTACT "ZelCommonFrames developers <developers@zelcommonframes.example>")
# This is CPack's default. CPack would put any other text above each package's summary.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${CMAKE_PROJECT_NAME} built using CMake")
set(CPACK_PACKAGE_DIRECTORY "${PROJECT_BINARY_DIR}/packages")
set(CPACK_PACKAGING_INSTALL_PREFIX "/usr")
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL runtime common development designer quotedesk)
set(CPACK_COMPONENTS_GROUPING IGNORE)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
# CPack reads the dependencies of each file from the file. The libraries of this build are not installed as packages;
# DEPENDS below declares the dependencies between the components.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${CMAKE_LIBRARY_OUTPUT_DIRECTORY}")
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")

# zel_package(<component> <package> SECTION <section> SUMMARY <line> TEXT <paragraph> [DEPENDS <component>...]
#             [NEEDS <packages>] [RECOMMENDS <packages>])
macro(zel_package component package)
    cmake_parse_arguments(ARG "" "SECTION;SUMMARY;TEXT;NEEDS;RECOMMENDS" "DEPENDS" ${ARGN})
    string(TOUPPER ${component} upper)
    set(CPACK_COMPONENT_${upper}_DESCRIPTION "${ARG_SUMMARY}\n${ARG_TEXT}")
    set(CPACK_COMPONENT_${upper}_DEPENDS ${ARG_DEPENDS})
    set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${package})
    set(CPACK_DEBIAN_${upper}_PACKAGE_SECTION ${ARG_SECTION})
    set(CPACK_DEBIAN_${upper}_PACKAGE_DEPENDS "${ARG_NEEDS}")
    set(CPACK_DEBIAN_${upper}_PACKAGE_RECOMMENDS "${ARG_RECOMMENDS}")
endmacro()

# The name carries what the SONAME carries, so that two minor versions can be installed beside each other.
set(zel_runtime_package "libzelcommonframes${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR}")
set(zel_common_package "libzelcommonframes${PROJECT_VERSION_MAJOR}-common")
zel_package(runtime ${zel_runtime_package} SECTION libs
    SUMMARY "user-interface frames for quote editors: run-time libraries"
    TEXT "A fund selector, an allocation grid, a product editor and the frames around them, for applications in which \
financial advisers prepare investment and annuity quotes."
    RECOMMENDS "libqt6sql6-sqlite, ${zel_common_package}")
zel_package(common ${zel_common_package} SECTION libs DEPENDS runtime
    SUMMARY "user-interface frames for quote editors: common files"
    TEXT "The translations, and the file name under which programs that are not written in C++ load the libraries. Both stay \
the same within a major version.")
zel_package(development libzelcommonframes-dev SECTION libdevel DEPENDS runtime common
    SUMMARY "user-interface frames for quote editors: development files"
    TEXT "Headers, and what CMake and pkg-config need to find the libraries."
    NEEDS "qt6-base-dev" RECOMMENDS "cmake, pkg-config")
zel_package(designer libzelcommonframes-designer SECTION libdevel DEPENDS runtime
    SUMMARY "user-interface frames for quote editors: Qt Designer plugin"
    TEXT "Every frame and input element in Qt Designer's widget box."
    RECOMMENDS "qt6-tools-dev-tools")
zel_package(quotedesk quotedesk SECTION x11 DEPENDS runtime
    SUMMARY "investment quotes: choose funds, spread an amount, read the result"
    TEXT "A complete application made of the frames of ZelCommonFrames, for financial advisers."
    NEEDS "libqt6sql6-sqlite")

# Version 1.0 had these files in the package of its libraries.
set(CPACK_DEBIAN_COMMON_PACKAGE_BREAKS "libzelcommonframes (<< 1.1)")
set(CPACK_DEBIAN_COMMON_PACKAGE_REPLACES "libzelcommonframes (<< 1.1)")
foreach(component IN ITEMS RUNTIME COMMON)
    set(CPACK_DEBIAN_${component}_PACKAGE_CONTROL_EXTRA
        "${CMAKE_CURRENT_LIST_DIR}/deb/triggers" "${CMAKE_CURRENT_LIST_DIR}/deb/postinst"
        "${CMAKE_CURRENT_LIST_DIR}/deb/postrm")
endforeach()
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

include(CPack)
