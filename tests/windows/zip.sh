#!/bin/sh
# Tests the zip file for users: zip.sh ZIP. Unpacks it to a temporary folder and runs it under Wine in a Wine
# folder of its own: first a job without a window, then the window. SCREENSHOT=file saves a picture of the screen.
set -eu
zip=$1

if [ "${2:-}" = inside ]; then
    folder=$3
    cd "$folder/quotedesk-windows"
    unset QT_QPA_PLATFORM WINEPATH WINEQT_QPA_FONTDIR
    timeout -k 5 120 wine ./quotedesk.exe --headless --amount 100000 --by percent --funds 12,15,40 --allocate --json \
        --screenshots "Z:$folder/pictures" >"$folder/result.json"
    timeout -k 5 90 wine ./quotedesk.exe &
    pid=$!
    "$(dirname "$0")/../support/window-of.sh" 'Quote Desk' >"$folder/window"
    sleep 3
    [ -z "${SCREENSHOT:-}" ] || import -window root "$SCREENSHOT"
    xdotool getwindowgeometry "$(cat "$folder/window")"
    kill "$pid" 2>/dev/null || true
    wait "$pid" 2>/dev/null || true
    exit 0
fi

here=$(cd "$(dirname "$0")" && pwd)
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
unzip -q "$zip" -d "$folder"
"$here/../../tools/windows/wine-session.sh" "$folder/wine" - "$here/zip.sh" "$zip" inside "$folder"

expected=$(tr -d '\n' <<'EOF'
{"funds":[{"amount":"33333.33","id":12,"name":"Karoo Equity Fund","percent":"33.33"},
{"amount":"33333.33","id":15,"name":"Karoo Property Fund","percent":"33.33"},
{"amount":"33333.34","id":40,"name":"Fynbos Flexible Fund","percent":"33.33"}],
"investment":"100000.00","mode":"percent","remaining":{"amount":"0.00","percent":"0.00"}}
EOF
)
result=$(tr -d '\r' <"$folder/result.json")
[ "$result" = "$expected" ] || {
    echo "The job's result is not the expected one: $result" >&2
    exit 1
}
[ "$(find "$folder/pictures" -name '*.png' -size +2k | wc -l)" = 4 ]
[ -s "$folder/window" ]
