# Compiler and linker options that make a memory error end the program instead of being exploitable. They apply to the
# whole source tree and every preset, also to the example hosts, which do not use zel_flags. The test
# package.hardening checks the built files for them.

include(CheckCXXCompilerFlag)
include(CheckCXXSourceCompiles)
include(CheckLinkerFlag)
include(CheckPIESupported)

# zel_harden(<option>): adds the option for C and C++ if the compiler supports it.
function(zel_harden option)
    string(MAKE_C_IDENTIFIER "zel_has${option}" known)
    check_cxx_compiler_flag(${option} ${known})
    if(${known})
        add_compile_options(${option})
    endif()
endfunction()

# zel_fortify(<level>): checked copies and formats. Only for optimised builds, because the checks need sizes that the
# optimiser calculates, and not with sanitizers, because AddressSanitizer checks the same calls.
function(zel_fortify level)
    if(NOT ZEL_SANITIZE)
        add_compile_options(
            "$<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:SHELL:-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=${level}>")
    endif()
endfunction()

if(WIN32)
    # The stack protector's functions are in a library of the compiler. It is linked statically, so that no further DLL
    # must be shipped. (Random addresses and non-executable data are the linker's defaults.)
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
    # Control-flow enforcement: the processor checks the targets of jumps and returns.
    zel_harden(-fcf-protection=full)
    zel_fortify(3)
    # The loader resolves every symbol at program start and then makes the addresses read-only.
    foreach(option IN ITEMS relro now noexecstack)
        check_linker_flag(CXX "LINKER:-z,${option}" zel_has_z_${option})
        if(zel_has_z_${option})
            add_link_options("LINKER:-z,${option}")
        endif()
    endforeach()
    # Programs are position-independent like the libraries.
    check_pie_supported(LANGUAGES C CXX)
endif()
