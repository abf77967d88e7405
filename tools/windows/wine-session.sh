#!/bin/bash
# Runs a command in an environment for Windows programs: wine-session.sh PREFIX ROOT COMMAND [ARGUMENTS]
# PREFIX is the folder for Wine's registry and drives; it is created when it is missing. ROOT has Qt for Windows in
# bin/; a dash means that the program brings its own Qt. One X server serves the whole session, because Wine's
# background server stays on the display on which it was started.
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

# Disables Wine's offers to download components, and its debugger: with the debugger, a crash waits for somebody to
# close a dialog, or ends with status 0.
export WINEARCH=win64 WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml,winedbg.exe="
[ "$root" = - ] || export WINEPATH="Z:$root/bin"
# The offscreen platform reads its fonts from one folder, which gets links to the fonts of this machine.
mkdir -p "$WINEPREFIX/fonts"
for family in 'Liberation Sans' 'Liberation Mono' 'DejaVu Sans'; do
    fc-list -f '%{file}\n' "$family" | while read -r file; do ln -sf "$file" "$WINEPREFIX/fonts/"; done
done
export WINEQT_QPA_FONTDIR="Z:$WINEPREFIX/fonts"

# setting KEY NAME TEXT writes a registry entry.
setting() {
    timeout 120 wine reg add "$1" /v "$2" /d "$3" /f >/dev/null
}

trap 'wineserver -k || true' EXIT
# Without a window manager Wine waits about two seconds whenever a window closes, unless Managed is N.
setting 'HKCU\Software\Wine\X11 Driver' Managed N
# Replaces the dialog fonts, which are not free, by a free font.
for name in 'MS Shell Dlg' 'MS Shell Dlg 2' Tahoma; do
    setting 'HKLM\Software\Microsoft\Windows NT\CurrentVersion\FontSubstitutes' "$name" 'DejaVu Sans'
done
"$@"
