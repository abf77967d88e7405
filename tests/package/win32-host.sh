#!/bin/sh
# The host without Qt, under Wine: win32-host.sh edit|nodisplay|noplugin|nolibrary|nodependency
# <host program> <library>
set -eu
job=$1 host=$2 library=Z:$3
. "$(dirname "$0")/native-host.sh"
export WINEQT_QPA_PLATFORM=windows

case $job in
nodisplay) refused 'no display' env -u DISPLAY wine "$host" "$library" 20 ;;
noplugin) refused 'plugin qnosuch.dll is in none' env WINEQT_QPA_PLATFORM=nosuch wine "$host" "$library" 20 ;;
nolibrary) refused 'nosuch.dll, or a library that it needs' wine "$host" 'Z:\nosuch.dll' 20 ;;
nodependency)
    # The copied library lacks the project's other libraries, which it needs.
    cp "$host" "$3" "$folder/"
    refused 'or a library that it needs, cannot be loaded' \
        wine "$folder/$(basename "$host")" "Z:$folder/$(basename "$3")" 20
    ;;
edit) edited 510 140 wine "$host" "$library" 900 ;;
*) fail "unknown job $job" ;;
esac
