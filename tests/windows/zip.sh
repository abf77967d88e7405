#!/bin/sh
# The folder to copy, as somebody who got nothing but the zip file has it: zip.sh ZIP. It is unpacked somewhere and
# run in a Wine folder of its own: the job without a window, then the window.
set -eu
zip=$1
here=$(cd "$(dirname "$0")" && pwd)
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
unset QT_QPA_PLATFORM WINEPATH

if [ "${2:-}" = inside ]; then
    cd "$3/quotedesk-windows"
    export WINEQT_QPA_PLATFORM=windows
    timeout -k 5 120 wine ./quotedesk.exe --headless --amount 100000 --by percent --funds 12,15,40 --allocate --json \
        --screenshots "Z:$3/pictures" >"$3/result.json"
    grep -q '"12"\|12' "$3/result.json"
    timeout -k 5 60 wine ./quotedesk.exe &
    pid=$!
    xdotool search --sync --onlyvisible --name 'Quote Desk' >"$3/window"
    sleep 3
    [ -z "${SCREENSHOT:-}" ] || import -window root "$SCREENSHOT"
    kill "$pid" 2>/dev/null || true
    wait "$pid" 2>/dev/null || true
    [ -s "$3/window" ]
    exit 0
fi

unzip -q "$zip" -d "$folder"
"$here/../../tools/windows/wine-session.sh" "$folder/wine" - "$here/zip.sh" "$zip" inside "$folder"
cat "$folder/result.json"
ls "$folder/pictures"
