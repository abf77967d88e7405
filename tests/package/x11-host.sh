#!/bin/sh
# The host without Qt: x11-host.sh edit|nodisplay|deadserver|noplugin|nolibrary <host program> <library>
set -eu
job=$1 host=$2 library=$3
. "$(dirname "$0")/native-host.sh"

case $job in
nodisplay) refused 'no display' env -u DISPLAY -u WAYLAND_DISPLAY "$host" "$library" 20 ;;
deadserver) refused 'no display' env DISPLAY=:987 "$host" "$library" 20 ;;
noplugin) refused 'plugin libqnosuch.so is in none' env QT_QPA_PLATFORM=nosuch "$host" "$library" 20 ;;
nolibrary) refused 'nosuch.so' "$host" "$folder/nosuch.so" 20 ;;
edit) edited 490 86 "$host" "$library" 900 ;;
*) fail "unknown job $job" ;;
esac
