#!/bin/sh
# The host with windows of its own: x11-host.sh edit|nodisplay|deadserver|noplugin|nolibrary
# <host program> <library>. "edit" types into the grid inside its window as a person does.
set -eu
job=$1 host=$2 library=$3
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
unset QT_QPA_PLATFORM

fail() {
    echo "$1" >&2
    cat "$folder/out" "$folder/err" >&2 || true
    exit 1
}

# The host has to end by itself, with status 1 or 2 and the text.
refused() {
    status=0
    timeout 60 "$@" >"$folder/out" 2>"$folder/err" || status=$?
    [ "$status" = 1 ] || [ "$status" = 2 ] || fail "ended with status $status"
    grep -q "$text" "$folder/err" || fail "does not say: $text"
    exit 0
}

# Waits for a line of the host's output.
expect() {
    tries=0
    while ! grep -qx "$1" "$folder/out"; do
        tries=$((tries + 1))
        [ "$tries" -lt 300 ] || fail "the host never said: $1"
        sleep 0.1
    done
}

case $job in
nodisplay) text='no display' refused env -u DISPLAY -u WAYLAND_DISPLAY "$host" "$library" 20 ;;
deadserver) text='no display' refused env DISPLAY=:987 "$host" "$library" 20 ;;
noplugin) text='plugin libqnosuch.so is in none' refused env QT_QPA_PLATFORM=nosuch "$host" "$library" 20 ;;
nolibrary) text='nosuch.so' refused "$host" "$folder/nosuch.so" 20 ;;
edit) ;;
*) fail "unknown job $job" ;;
esac

: >"$folder/out"
"$host" "$library" 60 >"$folder/out" 2>"$folder/err" &
pid=$!
expect 'remaining 100'
window=$("$(dirname "$0")/../support/window-of.sh" '^A host with windows of its own$')
# The first row's percentage: in the frame, right of the fund's name and under the heading.
xdotool mousemove --window "$window" 490 86 click 1
sleep 0.5
xdotool type --delay 60 '33.33'
xdotool key Return
expect 'remaining 66.67'
[ -z "${SCREENSHOT:-}" ] || import -window root "$SCREENSHOT"
xdotool type --delay 60 '66.67'
xdotool key Return
expect 'remaining 0'
wait "$pid" || fail "the host ended with status $?"
expect 'fund 1 amount 33330.00 percent 33.33'
expect 'fund 2 amount 66670.00 percent 66.67'
expect 'fund 5 amount 0.00 percent 0.00'
expect unloaded
