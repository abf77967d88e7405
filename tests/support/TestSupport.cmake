# What every test program links: its main, the warning guard, the database servers.
# Included rather than a folder of its own, so that the tests can share its precompiled header: the toolkit
# defines each target's folder in its flags.
file(GLOB sources CONFIGURE_DEPENDS "${CMAKE_CURRENT_LIST_DIR}/*.cpp" "${CMAKE_CURRENT_LIST_DIR}/*.h")
add_library(zeltestsupport STATIC ${sources})
zel_follow_units(zeltestsupport ${sources})
target_include_directories(zeltestsupport PUBLIC "${CMAKE_CURRENT_LIST_DIR}")
target_link_libraries(zeltestsupport PUBLIC Zel::CommonFrames Qt6::Test zel_flags)
target_compile_definitions(zeltestsupport PUBLIC ZEL_SOURCE_DIR="${PROJECT_SOURCE_DIR}")
zel_precompile(zeltestsupport)

function(zel_test name room file)
    add_executable(${name} "${file}")
    target_link_libraries(${name} PRIVATE zeltestsupport)
    if(ZEL_PCH)
        target_precompile_headers(${name} REUSE_FROM zeltestsupport)
    endif()
    set(labels ${room})
    file(STRINGS "${file}" extra REGEX "^// labels:" LIMIT_COUNT 1)
    if(extra)
        string(REGEX REPLACE "^// labels:[ ]*" "" extra "${extra}")
        separate_arguments(extra)
    endif()
    set(own ${extra})
    list(REMOVE_ITEM own x11)
    add_test(NAME ${room}.${name} COMMAND ${name})
    set_tests_properties(${room}.${name} PROPERTIES
        LABELS "${labels};${own}" TIMEOUT 600 ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8")
    if("x11" IN_LIST extra)
        add_test(NAME ${room}.${name}.x11
            COMMAND "${PROJECT_SOURCE_DIR}/tests/support/on-x11.sh" $<TARGET_FILE:${name}>)
        set_tests_properties(${room}.${name}.x11 PROPERTIES
            LABELS "${labels};${own};x11" TIMEOUT 600 ENVIRONMENT "QT_QPA_PLATFORM=xcb;LC_ALL=C.UTF-8")
    endif()
endfunction()
