# The library that every test program links: its main, the guard against warnings and the database server. This file
# is included and is no subdirectory, so that the tests can share the library's precompiled header: Qt puts each
# target's folder into its compile flags.
set(sources
    Contrast.h
    DebugLine.cpp
    DebugLine.h
    Dialogs.h
    Engines.cpp
    Engines.h
    Errors.h
    Frames.h
    Idle.h
    NumberCases.h
    OfEachType.h
    PictureDifference.cpp
    PictureDifference.h
    PostgresServer.cpp
    PostgresServer.h
    PostgresServer_win.cpp
    ScreenFaults.cpp
    ScreenFaults.h
    SelectorDriver.h
    SummerTime.h
    ZelTest.cpp
    ZelTest.h)
zel_refuse_unlisted("${CMAKE_CURRENT_LIST_DIR}" "*.h;*.cpp" ${sources})
list(TRANSFORM sources PREPEND "${CMAKE_CURRENT_LIST_DIR}/")
if(WIN32)
    list(FILTER sources EXCLUDE REGEX "/PostgresServer[.]cpp$")
else()
    list(FILTER sources EXCLUDE REGEX "_win[.]cpp$")
endif()
# The path of the source tree is compiled into one small unit. As a flag of every test it would keep ccache from
# reusing what another clone compiled. Qt adds two such paths for its search of test files, which no test here uses.
file(CONFIGURE OUTPUT "${PROJECT_BINARY_DIR}/generated/SourceFolder.cpp" @ONLY CONTENT
    "namespace ZelTesting {\nextern const char sourceFolder[];\nconst char sourceFolder[] = \"@PROJECT_SOURCE_DIR@\";\n}\n")
list(APPEND sources "${PROJECT_BINARY_DIR}/generated/SourceFolder.cpp")
get_target_property(definitions Qt6::Test INTERFACE_COMPILE_DEFINITIONS)
list(FILTER definitions EXCLUDE REGEX "QT_TESTCASE_(BUILD|SOURCE)DIR=")
set_target_properties(Qt6::Test PROPERTIES INTERFACE_COMPILE_DEFINITIONS "${definitions}")
add_library(zeltestsupport STATIC ${sources})
target_include_directories(zeltestsupport PUBLIC "${CMAKE_CURRENT_LIST_DIR}")
target_link_libraries(zeltestsupport PUBLIC Zel::CommonFrames Qt6::Test zel_flags)
zel_precompile(zeltestsupport)

# zel_run(<test> <program> <platform> <labels>): runs a test program on one of Qt's platforms.
function(zel_run test program platform labels)
    set(environment "QT_QPA_PLATFORM=${platform};LC_ALL=C.UTF-8")
    set(on)
    if(WIN32 AND CMAKE_CROSSCOMPILING)
        set(on "${PROJECT_SOURCE_DIR}/tests/support/under-wine.sh")
    elseif(platform STREQUAL "xcb")
        set(on "${PROJECT_SOURCE_DIR}/tests/support/on-x11.sh")
    endif()
    add_test(NAME ${test} COMMAND ${on} $<TARGET_FILE:${program}>)
    set_tests_properties(${test} PROPERTIES LABELS "${labels}" TIMEOUT 1800 ENVIRONMENT "${environment}")
    # ctest starts the tests of the highest cost first, so that none of the slow ones is left over at the end.
    if("slow" IN_LIST labels)
        set_tests_properties(${test} PROPERTIES COST 100)
    endif()
    # On Windows the tests share one desktop, on which only one window has the keyboard.
    if(platform STREQUAL "windows")
        set_tests_properties(${test} PROPERTIES RESOURCE_LOCK desktop)
    endif()
endfunction()

function(zel_test name folder file)
    file(STRINGS "${file}" extra REGEX "^// labels:" LIMIT_COUNT 1)
    if(extra)
        string(REGEX REPLACE "^// labels:[ ]*" "" extra "${extra}")
        separate_arguments(extra)
    endif()
    # Lists what Windows leaves out because a program or server is missing there: the whole test, or the part that its
    # line "// left out on Windows: ..." names.
    if(WIN32)
        file(STRINGS "${file}" part REGEX "^// left out on Windows: " LIMIT_COUNT 1)
        if(part)
            string(REGEX REPLACE "^[^:]*: " "" part "${part}")
            set_property(GLOBAL APPEND PROPERTY ZEL_LEFT_OUT "of ${folder}.${name}: ${part}")
        elseif("postgresql" IN_LIST extra)
            set_property(GLOBAL APPEND PROPERTY ZEL_LEFT_OUT "${folder}.${name}: needs a PostgreSQL server")
            return()
        elseif("linux" IN_LIST extra)
            set_property(GLOBAL APPEND PROPERTY ZEL_LEFT_OUT "${folder}.${name}: needs this machine's own programs")
            return()
        endif()
    endif()
    add_executable(${name} "${file}")
    target_link_libraries(${name} PRIVATE zeltestsupport)
    if(ZEL_PCH)
        target_precompile_headers(${name} REUSE_FROM zeltestsupport)
    endif()
    set(labels ${folder})
    set(own ${extra})
    list(REMOVE_ITEM own x11)
    zel_run(${folder}.${name} ${name} offscreen "${labels};${own}")
    if("x11" IN_LIST extra)
        if(WIN32)
            zel_run(${folder}.${name}.windows ${name} windows "${labels};${own};x11")
        else()
            zel_run(${folder}.${name}.x11 ${name} xcb "${labels};${own};x11")
        endif()
    endif()
endfunction()
