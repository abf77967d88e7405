#!/bin/bash
# Runs a command in which programs for Windows can be run: wine-session.sh PREFIX ROOT COMMAND [ARGUMENTS]
# PREFIX is the folder for Wine's registry and drives, made when it is missing; ROOT has Qt for Windows in bin/
# (a dash: whatever runs brings its own). All of it has one X server around it: Wine's background server stays
# with the display that it was started on.
set -euo pipefail
prefix=$1 root=$2
mkdir -p "$prefix"
WINEPREFIX=$(cd "$prefix" && pwd)
export WINEPREFIX
if [ "${ZEL_WINE_DISPLAY:-}" != "$WINEPREFIX" ]; then
    wineserver -k 2>/dev/null || true
    ZEL_WINE_DISPLAY=$WINEPREFIX exec xvfb-run -a -s "-screen 0 1280x1024x24 -nolisten tcp" "$0" "$@"
fi
shift 2

# No offer to fetch what these programs do not need, and no debugger: with it a crash waits for somebody to close
# a dialog, or ends with status 0.
export WINEARCH=win64 WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml,winedbg.exe="
[ "$root" = - ] || export WINEPATH="Z:$root/bin"
# The offscreen platform has no fonts of its own and takes those of one folder: what a desktop here would find.
mkdir -p "$WINEPREFIX/fonts"
for family in 'Liberation Sans' 'Liberation Mono' 'DejaVu Sans'; do
    fc-list -f '%{file}\n' "$family" | while read -r file; do ln -sf "$file" "$WINEPREFIX/fonts/"; done
done
export WINEQT_QPA_FONTDIR="Z:$WINEPREFIX/fonts"

# setting KEY NAME TEXT writes an entry of the registry.
setting() {
    timeout 120 wine reg add "$1" /v "$2" /d "$3" /f >/dev/null
}

trap 'wineserver -k || true' EXIT
# Without a window manager Wine waits about two seconds for each window that goes away, unless it is told to expect
# none.
setting 'HKCU\Software\Wine\X11 Driver' Managed N
# The system's dialog font is not free: one that is.
for name in 'MS Shell Dlg' 'MS Shell Dlg 2' Tahoma; do
    setting 'HKLM\Software\Microsoft\Windows NT\CurrentVersion\FontSubstitutes' "$name" 'DejaVu Sans'
done
"$@"
