#!/bin/sh
# Compares what a host's binary relies on with what the minor version promised:
#   abi.sh check|renew <source folder> <build folder> <library folder>
# That is the layout of every class in the public headers with its virtual functions (package/abi/classes-*.xml.gz, read
# and written by libabigail's tools), and the exported functions (package/abi/functions-*.txt.gz). The libraries need no
# debug information for it: one source file that mentions every class is compiled with debug information.
# "renew" describes the present state. It is for a new minor version, until its first release.
set -eu
job=$1 source=$2 build=$3 libdir=$4
here=$source/tests/package
installed=$build/consumer/installed
kept=$source/package/abi
work=$build/abi

fail() {
    echo "abi.sh: $*" >&2
    exit 1
}

part() {
    sed -n "s/^#define ZELCOMMONFRAMES_VERSION_$1 \([0-9]*\)$/\1/p" "$source/package/Version.h"
}
minor=$(part MAJOR).$(part MINOR)
patch=$(part PATCH)
renewing="cmake --build --preset release --target renew_abi"

rm -rf "$work"
mkdir -p "$work"
(
    cd "$installed/include/zelcommonframes"
    headers=$(find . -name '*.h' ! -name 'ui_*' ! -path './export/*' | sed 's|^[.]/||' | LC_ALL=C sort)
    awk -f "$here/abi-classes.awk" $headers >"$work/classes.cpp"
)
[ "$(grep -c '^DESCRIBED' "$work/classes.cpp")" -gt 100 ] || fail "fewer than 100 classes were found in the public headers"
# A class with virtual functions is otherwise described only where its first virtual function is compiled.
flags=$(PKG_CONFIG_PATH="$installed/$libdir/pkgconfig" pkg-config --cflags zelcommonframes)
CCACHE_BASEDIR="$build" CCACHE_NOHASHDIR=1 $(command -v ccache || true) "${CXX:-c++}" -std=c++20 -fPIC -g -O0 \
    -femit-class-debug-always $flags -c "$work/classes.cpp" -o "$work/classes.o"
"${CXX:-c++}" -shared "$work/classes.o" -o "$work/libclasses.so"
# Classes declared outside of the public headers, such as Qt's, are left out.
abidw --headers-dir "$installed/include/zelcommonframes" --drop-private-types --type-id-style hash --no-corpus-path \
    --no-comp-dir-path --no-show-locs --no-elf-needed --no-parameter-names --out-file "$work/classes.xml" \
    "$work/libclasses.so"
sed -n 's/^DESCRIBED .*(const \(.*\) \*) {}$/\1/p' "$work/classes.cpp" | sed 's/.*:://' | LC_ALL=C sort -u >"$work/names"
sed -n "/is-declaration-only/d; s/^ *<class-decl name='\([^']*\)'.*/\1/p" "$work/classes.xml" | LC_ALL=C sort -u |
    LC_ALL=C comm -23 "$work/names" - >"$work/missing"
[ ! -s "$work/missing" ] || fail "the description lacks these classes: $(tr '\n' ' ' <"$work/missing")"
for library in libZelData libZelToolkit libZelHost libZelCommonFrames; do
    nm -D --defined-only "$installed/$libdir/$library.so" | sed "s/^[0-9a-f]* . /$library /"
done | LC_ALL=C sort >"$work/functions.txt"

if [ "$job" = renew ]; then
    [ "$patch" = 0 ] || fail "version $minor.$patch is a patch. What $minor.0 promised stays; only a new minor version may change it."
    mkdir -p "$kept"
    rm -f "$kept"/*.gz
    gzip -9n <"$work/classes.xml" >"$kept/classes-$minor.xml.gz"
    gzip -9n <"$work/functions.txt" >"$kept/functions-$minor.txt.gz"
    ls -l "$kept"
    exit 0
fi

for name in "classes-$minor.xml" "functions-$minor.txt"; do
    [ -f "$kept/$name.gz" ] || fail "package/abi has no $name.gz. A new minor version describes itself: $renewing"
    gunzip <"$kept/$name.gz" >"$work/kept-$name"
done
status=0
abidiff --leaf-changes-only "$work/kept-classes-$minor.xml" "$work/classes.xml" || status=$?
LC_ALL=C comm -23 "$work/kept-functions-$minor.txt" "$work/functions.txt" >"$work/gone"
if [ -s "$work/gone" ]; then
    echo "The libraries export these functions no longer:"
    c++filt <"$work/gone"
    status=1
fi
[ "$status" != 0 ] || exit 0
if [ "$patch" = 0 ]; then
    fail "a program built with the description in package/abi would break. Until $minor.0 is released: $renewing"
fi
fail "a program built with $minor.0 would break. Version $minor.$patch is a patch, which must not change this."
