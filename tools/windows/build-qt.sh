#!/bin/bash
# Builds what Debian does not have for Windows, from Debian's own source packages: Qt (the modules this project
# uses) and SQLite. Prints the folder with the result, which stays in the user's cache under a name made of
# everything it depends on, so that it is built once. JOBS=N sets the number of parallel jobs.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
cache=${XDG_CACHE_HOME:-$HOME/.cache}/zelcommonframes/windows
compiler=x86_64-w64-mingw32
say() { echo "[$(date +%H:%M:%S)] $*" >&2; }

# The same sources as this machine's own Qt: its moc, uic and rcc work on both.
version_of() { dpkg-query -W -f '${source:Version}' "$1"; }
base=$(version_of qt6-base-dev)
svg=$(version_of qt6-svg-dev)
sqlite=$(version_of libsqlite3-dev)
gcc=$(dpkg-query -W -f '${Version}' g++-mingw-w64-x86-64-posix)
key=$({ echo "$base $svg $sqlite $gcc"; cat "$0" "$here/mingw-w64.cmake" "$here"/qtsvg/*; } | sha256sum | cut -c1-12)
result=$cache/qt-${base%%[+~-]*}-$key

mkdir -p "$cache"
exec 9>"$cache/lock"
flock 9
if [ -d "$result" ]; then
    echo "$result"
    exit 0
fi

work=$(mktemp -d "$cache/work.XXXXXX")
trap 'echo "It failed; what it did is in $work" >&2' ERR
cd "$work"

# Only the line that runs may fill the log: its end is shown when it fails.
run() {
    local log=$1
    shift
    "$@" >>"$log" 2>&1 || {
        tail -n 40 "$log" >&2
        return 1
    }
}

# Source packages need a source line. A machine without one is left as it is: a list of our own names the same
# Debian servers that the machine's binary packages come from.
apt=()
if ! apt-get indextargets 'Created-By: Sources' | grep -q .; then
    say "no deb-src line on this machine: using a list of sources of our own for this download"
    mkdir -p lists
    apt-get indextargets --format 'deb-src $(REPO_URI) $(CODENAME) $(COMPONENT)' \
        'Created-By: Packages' 'Origin: Debian' | sort -u >sources.list
    apt=(-o "Dir::Etc::sourcelist=$work/sources.list" -o Dir::Etc::sourceparts=/dev/null
        -o "Dir::State::lists=$work/lists" -o Dir::Cache::pkgcache= -o Dir::Cache::srcpkgcache=)
    run apt.log apt-get "${apt[@]}" update
fi
say "sources: qt6-base $base, sqlite3 $sqlite"
run apt.log apt-get "${apt[@]}" source --download-only "qt6-base=$base" "sqlite3=$sqlite"
# A mirror that does not have the SVG module of Qt 6 still has that of Qt 5, which qtsvg/ makes usable.
svg_sources=qt6-svg
if ! apt-get "${apt[@]}" source --download-only "qt6-svg=$svg" >>apt.log 2>&1; then
    say "qt6-svg $svg is not to be had here: taking the module of Qt 5"
    rm -f qt6-svg_*
    svg_sources=qtsvg-opensource-src
    run apt.log apt-get "${apt[@]}" source --download-only $svg_sources
fi
for name in qt6-base sqlite3 $svg_sources; do
    run unpack.log dpkg-source --no-check -x "$name"_*.dsc "$name"
done

# One SQLite for Qt's driver and for the data library, as a DLL of its own.
say "SQLite"
mkdir sqlite3/build
(
    cd sqlite3/build
    run ../../sqlite.log ../configure --disable-tcl --disable-readline
    run ../../sqlite.log make sqlite3.c
)
mkdir -p root/bin root/lib root/include
run sqlite.log $compiler-gcc-posix -O2 -DNDEBUG -shared -static-libgcc \
    -DSQLITE_ENABLE_COLUMN_METADATA -DSQLITE_ENABLE_FTS3 -DSQLITE_ENABLE_FTS3_PARENTHESIS -DSQLITE_ENABLE_FTS5 \
    -DSQLITE_ENABLE_RTREE -DSQLITE_OMIT_LOAD_EXTENSION \
    sqlite3/build/sqlite3.c -o root/bin/sqlite3.dll -Wl,--out-implib,root/lib/libsqlite3.dll.a
cp sqlite3/build/sqlite3.h root/include/

# Qt: nothing from this machine and nothing that would need a further DLL. The pen tablet's header is not in
# Debian's package; direct2d1_1 is only a second window system plugin, while plain direct2d has to stay, since
# the windows plugin does not link without it.
say "Qt: configuring"
options=()
for feature in network dbus concurrent androiddeployqt vulkan direct2d1_1 tabletevent sql_mysql sql_psql \
    pkg_config icu glib zstd libudev system_zlib system_png system_jpeg system_freetype system_harfbuzz \
    system_pcre2 system_doubleconversion system_libb2; do
    options+=("-DFEATURE_$feature=OFF")
done
for feature in accessibility printsupport sql_sqlite system_sqlite sql_odbc; do
    options+=("-DFEATURE_$feature=ON")
done
configure_qt() {
    cmake -S "$1" -B "$1/build" -G Ninja -DCMAKE_BUILD_TYPE=Release \
        -DCMAKE_TOOLCHAIN_FILE="$here/mingw-w64.cmake" -DZEL_WINDOWS_ROOT="$work/root" \
        -DCMAKE_INSTALL_PREFIX="$work/root" "${@:2}"
}
run configure.log configure_qt qt6-base -DBUILD_SHARED_LIBS=ON -DQT_BUILD_EXAMPLES=OFF -DQT_BUILD_TESTS=OFF \
    -DQT_BUILD_BENCHMARKS=OFF -DINPUT_opengl=no "${options[@]}"
say "Qt: building with ${JOBS:-$(nproc)} jobs (about a quarter of an hour on two free processors)"
run build.log ninja -C qt6-base/build -j "${JOBS:-$(nproc)}"
run install.log ninja -C qt6-base/build install

say "Qt: SVG"
if [ $svg_sources = qt6-svg ]; then
    run svg.log configure_qt qt6-svg -DQT_BUILD_EXAMPLES=OFF -DQT_BUILD_TESTS=OFF
else
    sed -i -f "$here/qtsvg/port.sed" $svg_sources/src/svg/*.cpp $svg_sources/src/svg/*.h
    cp "$here/qtsvg/CMakeLists.txt" $svg_sources/
    run svg.log configure_qt $svg_sources -DZEL_QTSVG_SOURCE="$work/$svg_sources/src/svg"
fi
run svg.log ninja -C $svg_sources/build -j "${JOBS:-$(nproc)}" install

# The compiler's own run-time libraries stand beside Qt's.
for name in libgcc_s_seh-1.dll libstdc++-6.dll libwinpthread-1.dll; do
    file=$($compiler-g++-posix -print-file-name=$name)
    [ -f "$file" ] || file=/usr/$compiler/lib/$name
    cp "$file" root/bin/
done
find root \( -name '*.dll' -o -name '*.exe' \) -exec $compiler-strip --strip-unneeded {} +

mv root "$result"
cd "$here"
rm -rf "$work"
say "done: $(du -sh "$result" | cut -f1)"
echo "$result"
