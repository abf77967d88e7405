# Installs the files for host developers: the four libraries, the public headers, and the files by which CMake and
# pkg-config find them. Each component becomes one Debian package (ZelPackages.cmake).

include(CMakePackageConfigHelpers)

set(zel_include "${CMAKE_INSTALL_INCLUDEDIR}/zelcommonframes")
set(zel_cmake "${CMAKE_INSTALL_LIBDIR}/cmake/ZelCommonFrames")

install(TARGETS ZelData ZelToolkit ZelHost ZelCommonFrames
    EXPORT ZelCommonFramesTargets
    LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT runtime NAMELINK_COMPONENT development
    ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT development
    RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT runtime)
# The file name for hosts that load the library at run time and use the C interface only. Unlike the SONAME it stays the
# same within a major version. The component "common" has the files whose names do not carry the minor version, so that
# the run-time libraries of two minor versions can be installed beside each other.
if(NOT WIN32)
    set(zel_c_name "libZelCommonFrames.so.${PROJECT_VERSION_MAJOR}")
    file(MAKE_DIRECTORY "${CMAKE_LIBRARY_OUTPUT_DIRECTORY}")
    file(CREATE_LINK "${zel_c_name}.${PROJECT_VERSION_MINOR}" "${CMAKE_LIBRARY_OUTPUT_DIRECTORY}/${zel_c_name}" SYMBOLIC)
    install(FILES "${CMAKE_LIBRARY_OUTPUT_DIRECTORY}/${zel_c_name}"
        DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT common)
endif()
install(EXPORT ZelCommonFramesTargets NAMESPACE Zel:: DESTINATION "${zel_cmake}" COMPONENT development)

# A header whose name ends in _p is private and is not installed. The headers generated from the designs declare the
# components of public classes.
set(zel_folders data toolkit host frames dataviews funds editor package)
set(zel_public_headers)
foreach(target IN ITEMS ZelData ZelToolkit ZelHost ZelCommonFrames)
    get_target_property(headers ${target} SOURCES)
    list(FILTER headers INCLUDE REGEX "[.]h$")
    list(FILTER headers EXCLUDE REGEX "_p[.]h$")
    foreach(header IN LISTS headers)
        if(header MATCHES "/ui_[^/]*$")
            install(FILES "${header}" DESTINATION "${zel_include}" COMPONENT development)
        else()
            cmake_path(RELATIVE_PATH header BASE_DIRECTORY "${PROJECT_SOURCE_DIR}")
            cmake_path(GET header PARENT_PATH folder)
            install(FILES "${PROJECT_SOURCE_DIR}/${header}" DESTINATION "${zel_include}/${folder}" COMPONENT development)
            list(APPEND zel_public_headers "${header}")
        endif()
    endforeach()
endforeach()
install(DIRECTORY "${PROJECT_BINARY_DIR}/generated/export" DESTINATION "${zel_include}" COMPONENT development)

configure_package_config_file("${CMAKE_CURRENT_LIST_DIR}/ZelCommonFramesConfig.cmake.in"
    "${PROJECT_BINARY_DIR}/ZelCommonFramesConfig.cmake" INSTALL_DESTINATION "${zel_cmake}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/ZelCommonFramesConfigVersion.cmake"
    COMPATIBILITY SameMajorVersion)
install(FILES "${PROJECT_BINARY_DIR}/ZelCommonFramesConfig.cmake"
              "${PROJECT_BINARY_DIR}/ZelCommonFramesConfigVersion.cmake"
    DESTINATION "${zel_cmake}" COMPONENT development)

# The relative path from the .pc file to the prefix, so that the installed tree can be moved.
file(RELATIVE_PATH zel_pc_prefix "/prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/prefix")
configure_file("${CMAKE_CURRENT_LIST_DIR}/zelcommonframes.pc.in" "${PROJECT_BINARY_DIR}/zelcommonframes.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/zelcommonframes.pc"
    DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig" COMPONENT development)
