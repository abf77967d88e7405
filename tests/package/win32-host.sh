#!/bin/sh
# The host with windows of its own, under Wine: win32-host.sh edit|nodisplay|noplugin|nolibrary|nodependency
# <host program> <library>. "edit" types into the grid inside its window as a person does. SCREENSHOT=file keeps a
# picture of it.
set -eu
job=$1 host=$2 library=Z:$3
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
unset QT_QPA_PLATFORM
export WINEQT_QPA_PLATFORM=windows

fail() {
    echo "$1" >&2
    cat "$folder/out" "$folder/err" >&2 || true
    exit 1
}

# The host has to end by itself, with status 1 and the text.
refused() {
    status=0
    timeout -k 5 90 "$@" >"$folder/out" 2>"$folder/err" || status=$?
    [ "$status" = 1 ] || fail "ended with status $status"
    grep -q "$text" "$folder/err" || fail "does not say: $text"
    exit 0
}

# Waits for a line of the host's output.
expect() {
    tries=0
    while ! tr -d '\r' <"$folder/out" | grep -qx "$1"; do
        tries=$((tries + 1))
        [ "$tries" -lt 300 ] || fail "the host never said: $1"
        sleep 0.1
    done
}

case $job in
nodisplay) text='no display' refused env -u DISPLAY wine "$host" "$library" 20 ;;
noplugin) text='plugin qnosuch.dll is in none' refused env WINEQT_QPA_PLATFORM=nosuch wine "$host" "$library" 20 ;;
nolibrary) text='nosuch.dll, or a library that it needs' refused wine "$host" 'Z:\nosuch.dll' 20 ;;
nodependency)
    # Beside the host stands the library alone, without the project's others that it needs.
    cp "$host" "$3" "$folder/"
    library=Z:$folder/$(basename "$3")
    text='or a library that it needs, cannot be loaded' refused wine "$folder/$(basename "$host")" "$library" 20
    ;;
edit) ;;
*) fail "unknown job $job" ;;
esac

: >"$folder/out"
timeout -k 5 120 wine "$host" "$library" 90 >"$folder/out" 2>"$folder/err" &
pid=$!
expect 'remaining 100'
window=$("$(dirname "$0")/../support/window-of.sh" '^A host with windows of its own$')
sleep 1
# The first row's percentage: in the frame, right of the fund's name and under the heading.
xdotool mousemove --window "$window" 510 140 click 1
sleep 0.5
xdotool type --delay 60 '33.33'
xdotool key Return
[ -z "${SCREENSHOT:-}" ] || { sleep 1; import -window root "$SCREENSHOT"; }
expect 'remaining 66.67'
xdotool type --delay 60 '66.67'
xdotool key Return
expect 'remaining 0'
wait "$pid" || fail "the host ended with status $?"
expect 'fund 1 amount 33330.00 percent 33.33'
expect 'fund 2 amount 66670.00 percent 66.67'
expect 'fund 5 amount 0.00 percent 0.00'
expect unloaded
