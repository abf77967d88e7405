#!/bin/sh
# What a host developer does, done by a test: consumer.sh <job> <source folder> <build folder> <library folder>
#   install    installs the libraries and headers into a prefix of the test's own
#   cmake      builds the guide's project against it with CMake and runs it
#   pkgconfig  builds the guide's program against it with pkg-config and runs it
#   headers    includes each installed header alone
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

# Nothing of the machine's own set-up may help or hinder.
unset CMAKE_PREFIX_PATH LD_LIBRARY_PATH PKG_CONFIG_PATH || true
export QT_QPA_PLATFORM=offscreen

configure() {
    cmake -S "$1" -B "$2" -G Ninja -DCMAKE_BUILD_TYPE=Debug "-DCMAKE_PREFIX_PATH=$moved" \
        -DCMAKE_CXX_COMPILER_LAUNCHER="$(command -v ccache || true)"
}

# The named blocks of the guide become the files of that name.
extract_guide() {
    rm -rf "$work/guide"
    mkdir -p "$work/guide"
    awk -v out="$work/guide" '
        /^```/ { file = (file == "" && NF == 2) ? out "/" $2 : ""; next }
        file != "" { print > file }' "$source/docs/host-guide.md"
    [ -s "$work/guide/main.cpp" ] || fail "the guide has no main.cpp"
}

check_run() {
    version=$(PKG_CONFIG_PATH=$moved/$libdir/pkgconfig pkg-config --modversion zelcommonframes)
    case $1 in
    *"ZelCommonFrames $version"*) echo "$1" ;;
    *) fail "the guide's program said \"$1\" instead of naming version $version" ;;
    esac
}

case $job in
install)
    rm -rf "$prefix" "$moved"
    for component in runtime development; do
        cmake --install "$build" --prefix "$prefix" --component $component >"$work.$component.log"
    done
    mv "$prefix" "$moved" # an installed tree may be moved
    for library in ZelData ZelToolkit ZelHost ZelCommonFrames; do
        soname=$(objdump -p "$moved/$libdir/lib$library.so" | awk '$1 == "SONAME" { print $2 }')
        [ "$soname" = "lib$library.so.1" ] || fail "lib$library.so has the SONAME '$soname'"
        [ -f "$moved/$libdir/$soname" ] || fail "$soname is not installed"
    done
    if find "$moved" -name '*_p.h' | grep .; then fail "these private headers are installed"; fi
    # No path of the build may be in what is installed.
    if grep -rlF -e "$source" -e "$work" "$moved" --include='*.cmake' --include='*.pc' --include='*.h'; then
        fail "these files name a folder of the build"
    fi
    for library in "$moved/$libdir"/*.so; do
        runpath=$(objdump -p "$library" | awk '$1 == "RUNPATH" || $1 == "RPATH" { print $2 }')
        [ "$runpath" = '$ORIGIN' ] || fail "$library looks for libraries in '$runpath'"
    done
    ;;
cmake)
    extract_guide
    rm -rf "$work/guide-cmake"
    configure "$work/guide" "$work/guide-cmake"
    cmake --build "$work/guide-cmake"
    check_run "$("$work/guide-cmake/myquotes" --check)"
    # What is not there is refused, and by name.
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
    extract_guide
    export PKG_CONFIG_PATH="$moved/$libdir/pkgconfig"
    pkg-config --validate zelcommonframes
    "${CXX:-c++}" -std=c++20 -fPIC "$work/guide/main.cpp" -o "$work/guide-pkgconfig" \
        $(pkg-config --cflags --libs zelcommonframes)
    check_run "$(LD_LIBRARY_PATH=$moved/$libdir "$work/guide-pkgconfig" --check)"
    ;;
headers)
    rm -rf "$work/headers"
    configure "$here/consumer" "$work/headers"
    cmake --build "$work/headers" -- -k 0
    ;;
*)
    fail "unknown job $job"
    ;;
esac
