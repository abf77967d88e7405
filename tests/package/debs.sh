#!/bin/sh
# The Debian packages as an administrator uses them: debs.sh <source folder> <build folder> <library folder>
# Builds the packages, installs them into an empty root, builds and runs the guide's program and Quote Desk there, and
# removes the packages completely. Needs no network. dpkg sets file owners, so the script runs as root or restarts
# itself under fakeroot.
set -eu
# The machine's own settings must not influence the test. (fakeroot needs its LD_LIBRARY_PATH.)
[ -n "${FAKEROOTKEY:-}" ] || unset LD_LIBRARY_PATH || true
unset CMAKE_PREFIX_PATH PKG_CONFIG_PATH || true
[ "$(id -u)" = 0 ] || exec fakeroot -- "$0" "$@"
source=$1 build=$2 libdir=$3
work=$build/debs
root=$work/root
part() {
    sed -n "s/^#define ZELCOMMONFRAMES_VERSION_$1 \([0-9]*\)$/\1/p" "$source/package/Version.h"
}
major=$(part MAJOR)
minor=$major.$(part MINOR)
runtime=libzelcommonframes$minor
packages="$runtime libzelcommonframes$major-common libzelcommonframes-dev libzelcommonframes-designer quotedesk"

fail() {
    echo "debs.sh: $*" >&2
    exit 1
}

export QT_QPA_PLATFORM=offscreen
umask 022

rm -rf "$work"
mkdir -p "$work"
(cd "$build" && cpack -G DEB -B "$work/packages") >"$work/cpack.log" 2>&1 || {
    cat "$work/cpack.log"
    fail "the packages could not be made"
}
architecture=$(dpkg --print-architecture)
for package in $packages; do
    [ -f "$work/packages/$package"_*_"$architecture.deb" ] || fail "there is no package $package"
done

# --- the packages' control data
field() {
    dpkg-deb --field "$work/packages/$1"_*.deb "$2"
}
version=$(field $runtime Version)
for package in $packages; do
    for name in Maintainer Section Priority Installed-Size Description; do
        [ -n "$(field $package $name)" ] || fail "$package has no $name"
    done
    [ "$(field $package Version)" = "$version" ] || fail "$package has another version than the library"
    case " $(field $package Depends)" in
    *" $runtime (= $version)"*) [ $package != $runtime ] || fail "the library needs itself" ;;
    *) [ $package = $runtime ] || fail "$package does not need the library of its own version" ;;
    esac
done
case "$(field quotedesk Description)" in
"investment quotes: "*) ;;
*) fail "quotedesk is described as $(field quotedesk Description)" ;;
esac
case "$(field $runtime Depends)" in
*libqt6widgets6*libqt6xml6*) ;;
*) fail "the library's needs were not read from its files: $(field $runtime Depends)" ;;
esac
# Each library that a file needs comes from this build or from a package in Depends.
mkdir "$work/files"
for package in $packages; do
    dpkg-deb --extract "$work/packages/$package"_*.deb "$work/files/$package"
    find "$work/files/$package" -type f -exec objdump -p {} + 2>/dev/null |
        awk '$1 == "NEEDED" && $2 !~ /^libZel/ { print $2 }' | LC_ALL=C sort -u >"$work/needed"
    while read -r library; do
        found=no
        for owner in $(dpkg -S "*/$library" | sed 's/:.*//' | LC_ALL=C sort -u); do
            case ", $(field $package Depends)," in *", $owner ("* | *", $owner,"*) found=yes ;; esac
        done
        [ $found = yes ] || fail "$package needs $library and depends on no package that has it"
    done <"$work/needed"
done
"$source/tests/package/hardening.sh" files "$work/files" || fail "the packages bring these"
dpkg-deb --control "$work/packages/$runtime"_*.deb "$work/control"
grep -q '^activate-noawait ldconfig$' "$work/control/triggers" || fail "the loader's cache is not brought up to date"
for library in ZelData ZelToolkit ZelHost ZelCommonFrames; do
    grep -q "^lib$library $minor $runtime " "$work/control/shlibs" || fail "lib$library is not in shlibs"
done

# --- installation into an empty root, which holds only this machine's package database, so that dependencies are
# checked as on a real machine
mkdir -p "$root/var/lib/dpkg/info" "$root/var/lib/dpkg/updates" "$root/var/lib/dpkg/triggers"
awk -v RS= -v ORS='\n\n' -v own=" $packages " '{
    split($0, line, "\n")
    sub(/^Package: /, "", line[1])
    if (!index(own, " " line[1] " ")) print
}' /var/lib/dpkg/status >"$root/var/lib/dpkg/status"
[ ! -f /var/lib/dpkg/arch ] || cp /var/lib/dpkg/arch "$root/var/lib/dpkg/arch"
dpkg-query --admindir="$root/var/lib/dpkg" -W -f '${db:Status-Status} ${binary:Package}\n' 2>/dev/null |
    awk '$1 != "not-installed" { print $2 }' | while read -r name; do
    : >"$root/var/lib/dpkg/info/$name.list"
done
contents() {
    (cd "$root" && find . -path ./var/lib/dpkg -prune -o -print | LC_ALL=C sort)
}
contents >"$work/before"

install_all() {
    dpkg --root="$root" --force-script-chrootless --no-triggers -i "$work/packages"/*.deb >"$work/install.log" 2>&1 || {
        cat "$work/install.log"
        fail "the packages could not be installed"
    }
}
remove_all() {
    dpkg --root="$root" --force-script-chrootless --no-triggers --purge $packages >"$work/remove.log" 2>&1 || {
        cat "$work/remove.log"
        fail "the packages could not be removed"
    }
    contents >"$work/after"
    diff -u "$work/before" "$work/after" || fail "removing left something behind"
}
install_all
for package in $packages; do
    state=$(dpkg-query --admindir="$root/var/lib/dpkg" -W -f '${db:Status-Status}' "$package")
    case $state in installed | triggers-awaited) ;; *) fail "$package is $state" ;; esac
done

# --- use by a host without C++, which loads the library by the name that stays the same within a major version
[ "$(readlink "$root/usr/$libdir/libZelCommonFrames.so.$major")" = "libZelCommonFrames.so.$minor" ] ||
    fail "libZelCommonFrames.so.$major is not the library"
cc -x c - -o "$work/chost" <<'end' || fail "the C host could not be built"
#include <dlfcn.h>
#include <stdio.h>
int main(int count, char **names)
{
    void *library = dlopen(names[1], RTLD_NOW | RTLD_LOCAL);
    const char *(*version)(void) = library ? (const char *(*)(void))dlsym(library, "ZelCommonFramesVersion") : 0;
    puts(version ? version() : dlerror());
    return !version || count != 2;
}
end
[ "$("$work/chost" "$root/usr/$libdir/libZelCommonFrames.so.$major")" = "${version%-*}" ] ||
    fail "a C host cannot load libZelCommonFrames.so.$major"

# --- use by a host developer
. "$source/tests/package/guide.sh"
extract_guide "$source" "$work/guide"
cmake -S "$work/guide" -B "$work/guide-build" -G Ninja -DCMAKE_BUILD_TYPE=Debug "-DCMAKE_PREFIX_PATH=$root/usr" \
    -DCMAKE_CXX_COMPILER_LAUNCHER="$(command -v ccache || true)" >"$work/guide.log" 2>&1 &&
    cmake --build "$work/guide-build" >>"$work/guide.log" 2>&1 || {
    cat "$work/guide.log"
    fail "the guide's program could not be built against the packages"
}
check_main "$("$work/guide-build/myquotes" --check)" "${version%-*}"
check_allocation "$("$work/guide-build/allocation" --check)"
ldd "$work/guide-build/myquotes" | awk -v root="$root/usr/$libdir/" '
    /libZel/ && index($3, root) != 1 { print "not from the packages:" $0; wrong = 1 }
    END { exit wrong }' || fail "the program runs on other libraries"

# --- use by an adviser and by a designer
"$root/usr/bin/quotedesk" --headless --amount 100000 --by percent --allocate --screenshots "$work" >"$work/quotedesk.log" || {
    cat "$work/quotedesk.log"
    fail "Quote Desk ended with an error"
}
plugin=$root/usr/$libdir/qt6/plugins/designer/libzelcommonframes_designer.so
if ldd "$plugin" | grep 'not found'; then fail "the designer plugin misses these"; fi

remove_all
# Installing and removing a second time must work as well.
install_all
remove_all
