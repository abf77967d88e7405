#!/bin/sh
# Does what a host developer does: consumer.sh <job> <source folder> <build folder> <library folder>
#   install    installs the libraries and headers into a prefix of the test's own
#   cmake      builds the guide's project against the installed package with CMake and runs it
#   pkgconfig  builds the guide's programs against the installed package with pkg-config and runs them
#   headers    compiles each installed header alone
#   refusals   checks that the compiler refuses each line that would lose money on its way into an amount
set -eu
job=$1 source=$2 build=$3 libdir=$4
here=$source/tests/package
work=$build/consumer
prefix=$work/prefix
moved=$work/installed

fail() {
    echo "consumer.sh: $*" >&2
    exit 1
}

# The machine's own settings must not influence the test.
unset CMAKE_PREFIX_PATH LD_LIBRARY_PATH PKG_CONFIG_PATH || true
export QT_QPA_PLATFORM=offscreen

configure() {
    cmake -S "$1" -B "$2" -G Ninja -DCMAKE_BUILD_TYPE=Debug "-DCMAKE_PREFIX_PATH=$moved" \
        -DCMAKE_CXX_COMPILER_LAUNCHER="$(command -v ccache || true)"
}

. "$here/guide.sh"

installed_version() {
    PKG_CONFIG_PATH=$moved/$libdir/pkgconfig pkg-config --modversion zelcommonframes
}

case $job in
install)
    rm -rf "$prefix" "$moved"
    for component in runtime common development; do
        cmake --install "$build" --prefix "$prefix" --component $component >"$work.$component.log"
    done
    mv "$prefix" "$moved" # an installed tree may be moved
    # The layout of C++ classes holds within a minor version, so the SONAMEs carry the minor version. The C interface
    # holds within a major version, and so does the file name for it.
    version=$(installed_version)
    [ "$(readlink "$moved/$libdir/libZelCommonFrames.so.${version%%.*}")" = "libZelCommonFrames.so.${version%.*}" ] ||
        fail "libZelCommonFrames.so.${version%%.*} is not the installed library"
    for library in ZelData ZelToolkit ZelHost ZelCommonFrames; do
        soname=$(objdump -p "$moved/$libdir/lib$library.so" | awk '$1 == "SONAME" { print $2 }')
        [ "$soname" = "lib$library.so.${version%.*}" ] || fail "lib$library.so has the SONAME '$soname'"
        [ -f "$moved/$libdir/$soname" ] || fail "$soname is not installed"
    done
    # The installed headers are those that docs/compatibility.md lists.
    sed -n 's/^    //p' "$source/docs/compatibility.md" | tr ' ' '\n' | grep '[.]h$' | LC_ALL=C sort >"$work.promised"
    (cd "$moved/include/zelcommonframes" && find . -name '*.h' ! -name 'ui_*' ! -path './export/*') |
        sed 's|^[.]/||' | LC_ALL=C sort >"$work.installed"
    diff -u --label "docs/compatibility.md" --label "installed headers" "$work.promised" "$work.installed" ||
        fail "the list of public headers and what is installed differ"
    if find "$moved" -name '*_p.h' | grep .; then fail "these private headers are installed"; fi
    # No installed file may contain a path of the build.
    if grep -rlF -e "$source" -e "$work" "$moved" --include='*.cmake' --include='*.pc' --include='*.h'; then
        fail "these files name a folder of the build"
    fi
    for library in "$moved/$libdir"/*.so; do
        runpath=$(objdump -p "$library" | awk '$1 == "RUNPATH" || $1 == "RPATH" { print $2 }')
        [ "$runpath" = '$ORIGIN' ] || fail "$library looks for libraries in '$runpath'"
    done
    ;;
cmake)
    extract_guide "$source" "$work/guide"
    rm -rf "$work/guide-cmake"
    configure "$work/guide" "$work/guide-cmake"
    cmake --build "$work/guide-cmake"
    check_main "$("$work/guide-cmake/myquotes" --check)" "$(installed_version)"
    check_allocation "$("$work/guide-cmake/allocation" --check)"
    # A missing version or component is refused with its name.
    sed -i 's/ZelCommonFrames 1\.0/ZelCommonFrames 2.0/' "$work/guide/CMakeLists.txt"
    if configure "$work/guide" "$work/guide-refused" >"$work/refused.log" 2>&1; then
        fail "version 2.0 was found"
    fi
    grep -q 'ZelCommonFramesConfig.cmake, version: 1\.' "$work/refused.log" || fail "version 2.0 failed for another reason"
    sed -i 's/ZelCommonFrames 2\.0 REQUIRED COMPONENTS/ZelCommonFrames 1.0 REQUIRED COMPONENTS Fax/' "$work/guide/CMakeLists.txt"
    if configure "$work/guide" "$work/guide-refused" >"$work/refused.log" 2>&1; then
        fail "a component Fax was found"
    fi
    grep -q 'Fax' "$work/refused.log" || fail "the component Fax failed for another reason"
    ;;
pkgconfig)
    extract_guide "$source" "$work/guide"
    export PKG_CONFIG_PATH="$moved/$libdir/pkgconfig"
    pkg-config --validate zelcommonframes
    for program in main allocation; do
        "${CXX:-c++}" -std=c++20 "$work/guide/$program.cpp" -o "$work/guide-$program" \
            $(pkg-config --cflags --libs zelcommonframes)
    done
    export LD_LIBRARY_PATH="$moved/$libdir"
    check_main "$("$work/guide-main" --check)" "$(installed_version)"
    check_allocation "$("$work/guide-allocation" --check)"
    ;;
refusals)
    export PKG_CONFIG_PATH="$moved/$libdir/pkgconfig"
    # The headers are precompiled once for all cases.
    rm -rf "$work/refusals"
    mkdir -p "$work/refusals"
    grep '^#include' "$here/refusals.cpp" >"$work/refusals/lent.h"
    flags="-std=c++20 -fPIC -I$work/refusals $(pkg-config --cflags zelcommonframes)"
    "${CXX:-c++}" $flags -x c++-header "$work/refusals/lent.h" -o "$work/refusals/lent.h.gch"
    flags="$flags -include lent.h -fsyntax-only"
    # Without a case the program compiles. So a refusal below is due to the line of its case.
    "${CXX:-c++}" $flags "$here/refusals.cpp" || fail "the lines that are right do not compile"
    cases=$(sed -n 's/^#ifdef \(REFUSE_[A-Z_]*\)$/\1/p' "$here/refusals.cpp")
    [ "$(echo "$cases" | wc -l)" -ge 10 ] || fail "only these cases were found: $cases"
    for case in $cases; do
        if "${CXX:-c++}" $flags "-D$case" "$here/refusals.cpp" 2>"$work.refused.log"; then
            fail "$case compiles"
        fi
        # The compiler's message must be about the amount, not about a mistake in the test.
        grep -qE 'Currency|arguments are not compatible' "$work.refused.log" ||
            fail "$case was refused for another reason: $(cat "$work.refused.log")"
    done
    echo "$(echo "$cases" | wc -l) lines were refused"
    ;;
headers)
    rm -rf "$work/headers"
    mkdir -p "$work/headers"
    cd "$work/headers"
    export PKG_CONFIG_PATH="$moved/$libdir/pkgconfig"
    own="-I$moved/include/zelcommonframes"
    # The flags of a strict host: a header must compile without warnings and must not rely on optional features. Qt's
    # headers are exempt.
    flags="-std=c++20 -fPIC -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror
        -DQT_NO_CAST_FROM_ASCII -DQT_NO_CAST_TO_ASCII -DQT_NO_KEYWORDS
        $(pkg-config --cflags zelcommonframes | tr ' ' '\n' | grep -v "zelcommonframes" | sed 's/^-I/-isystem/')"
    (cd "$moved/include/zelcommonframes" && find . -name '*.h') | sed 's|^[.]/||' | sort >list
    [ "$(wc -l <list)" -gt 80 ] || fail "only $(wc -l <list) headers are installed"
    # Reading Qt's headers takes nearly all of the time, so they are precompiled. A header gets the precompiled one
    # only when it includes that one itself, so it sees nothing that it does not include. Headers that include one
    # another are compiled together (header-chains.awk), and the compiler cache skips unchanged ones.
    CACHE=$(command -v ccache || true)
    export CACHE CCACHE_BASEDIR="$build" CCACHE_NOHASHDIR=1
    export CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
    for class in QWidget QObject; do
        echo "#include <$class>" >$class.lent.h
        $CACHE "${CXX:-c++}" $flags $own -x c++-header -c $class.lent.h -o $class.lent.h.gch
    done
    (cd "$moved/include/zelcommonframes" && awk -f "$here/header-chains.awk" $(cat "$work/headers/list")) >chains
    [ "$(wc -w <chains)" = "$(wc -l <list)" ] || fail "$(wc -l <list) headers became $(wc -w <chains)"
    while read -r chain; do
        "$here/headers-alone.sh" "$chain" "${CXX:-c++}" $flags $own || fail "one of these headers cannot stand alone: $chain"
    done <chains
    echo "$(wc -l <list) headers stand alone, in $(wc -l <chains) readings"
    ;;
*)
    fail "unknown job $job"
    ;;
esac
