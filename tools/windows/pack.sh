#!/bin/bash
# Packs Quote Desk with everything it needs: pack.sh BUILD creates BUILD/quotedesk-windows.zip from the program in
# BUILD/bin and Qt for Windows in $ZEL_WINDOWS_ROOT.
set -euo pipefail
build=$(cd "$1" && pwd)
folder=$build/package/quotedesk-windows
rm -rf "$build/package" "$build/quotedesk-windows.zip"
mkdir -p "$folder"
cp "$build/bin/quotedesk.exe" "$build"/bin/Zel*.dll "$folder/"

# Adds the DLLs that these files need, found by the import tables, until nothing is missing.
imports() {
    x86_64-w64-mingw32-objdump -p "$@" | sed -n 's/^\tDLL Name: //p' | sort -u
}
plugins=$ZEL_WINDOWS_ROOT/plugins
for plugin in platforms/qwindows.dll platforms/qoffscreen.dll styles/qwindowsvistastyle.dll sqldrivers/qsqlite.dll \
    sqldrivers/qsqlodbc.dll imageformats/qjpeg.dll; do
    install -D "$plugins/$plugin" "$folder/$plugin"
done
changed=1
while [ "$changed" = 1 ]; do
    changed=0
    for name in $(find "$folder" -name '*.dll' -o -name '*.exe' | while read -r file; do imports "$file"; done | sort -u); do
        [ -f "$ZEL_WINDOWS_ROOT/bin/$name" ] && [ ! -f "$folder/$name" ] || continue
        cp "$ZEL_WINDOWS_ROOT/bin/$name" "$folder/"
        changed=1
    done
done
x86_64-w64-mingw32-strip --strip-unneeded "$folder"/*.exe "$folder"/Zel*.dll
(cd "$build/package" && zip -qr "$build/quotedesk-windows.zip" quotedesk-windows)
echo "$(du -h "$build/quotedesk-windows.zip" | cut -f1) in $build/quotedesk-windows.zip" >&2
