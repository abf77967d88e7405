# What makes a memory fault end the program instead of handing it over, for every target of every preset. The
# settings are for the whole tree, not for the targets that use the project's warnings: the hosts of the examples
# are programs too. The test package.hardening reads them back from what was built.

include(CheckCXXCompilerFlag)
include(CheckCXXSourceCompiles)
include(CheckLinkerFlag)
include(CheckPIESupported)

# zel_harden(<option>): for C and C++, where the compiler has it.
function(zel_harden option)
    string(MAKE_C_IDENTIFIER "zel_has${option}" known)
    check_cxx_compiler_flag(${option} ${known})
    if(${known})
        add_compile_options(${option})
    endif()
endfunction()

# Checked copies and formats: zel_fortify(<level>). They look at sizes that only the optimiser knows, and the address
# sanitizer looks at the same calls itself.
function(zel_fortify level)
    if(NOT ZEL_SANITIZE)
        add_compile_options(
            "$<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:SHELL:-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=${level}>")
    endif()
endfunction()

if(WIN32)
    # What the guard of the stack calls is the compiler's own library: linked in, rather than one more DLL to ship.
    # (Random addresses and data that is not executed are the linker's defaults.)
    set(zel_guard "-Wl,-Bstatic -lssp -Wl,-Bdynamic")
    set(CMAKE_REQUIRED_FLAGS "-O2 -fstack-protector-strong")
    set(CMAKE_REQUIRED_LIBRARIES "${zel_guard}")
    check_cxx_source_compiles("int main(int count, char **words)
        { char text[8]; __builtin_strcpy(text, words[count - 1]); return text[0]; }" zel_has_guard)
    unset(CMAKE_REQUIRED_FLAGS)
    unset(CMAKE_REQUIRED_LIBRARIES)
    if(zel_has_guard)
        add_compile_options(-fstack-protector-strong)
        zel_fortify(2)
        string(APPEND CMAKE_C_STANDARD_LIBRARIES " ${zel_guard}")
        string(APPEND CMAKE_CXX_STANDARD_LIBRARIES " ${zel_guard}")
    endif()
else()
    zel_harden(-fstack-protector-strong)
    zel_harden(-fstack-clash-protection)
    # Control-flow enforcement: the processor's own guard of jumps and returns.
    zel_harden(-fcf-protection=full)
    zel_fortify(3)
    # Every address is found when the program starts and is read-only from then on.
    foreach(option IN ITEMS relro now noexecstack)
        check_linker_flag(CXX "LINKER:-z,${option}" zel_has_z_${option})
        if(zel_has_z_${option})
            add_link_options("LINKER:-z,${option}")
        endif()
    endforeach()
    # Programs are position-independent like the libraries.
    check_pie_supported(LANGUAGES C CXX)
endif()
