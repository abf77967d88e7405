# Functions that x11-host.sh and win32-host.sh share.
unset QT_QPA_PLATFORM
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT

fail() {
    echo "$1" >&2
    cat "$folder/out" "$folder/err" >&2 || true
    exit 1
}

# refused TEXT COMMAND...: the host has to end with status 1 and TEXT on its standard error.
refused() {
    text=$1
    shift
    status=0
    timeout -k 5 900 "$@" >"$folder/out" 2>"$folder/err" || status=$?
    [ "$status" = 1 ] || fail "ended with status $status"
    grep -q "$text" "$folder/err" || fail "does not say: $text"
}

# Waits for a line of the host's output.
expect() {
    tries=0
    while ! tr -d '\r' <"$folder/out" | grep -qx "$1"; do
        tries=$((tries + 1))
        [ "$tries" -lt 6000 ] || fail "the host never said: $1"
        sleep 0.1
    done
}

# edited X Y COMMAND...: runs the host and types into the grid in its window. X, Y is a point in the percentage cell
# of the first row. SCREENSHOT=file saves a picture of the screen (with ImageMagick).
edited() {
    x=$1
    y=$2
    shift 2
    : >"$folder/out"
    timeout -k 5 900 "$@" >"$folder/out" 2>"$folder/err" &
    pid=$!
    expect 'remaining 100'
    window=$("$(dirname "$0")/../support/window-of.sh" '^A host with windows of its own$')
    sleep 1
    xdotool mousemove --window "$window" "$x" "$y" click 1
    sleep 0.5
    xdotool type --delay 60 '33.33'
    xdotool key Return
    expect 'remaining 66.67'
    [ -z "${SCREENSHOT:-}" ] || { sleep 1; import -window root "$SCREENSHOT"; }
    xdotool type --delay 60 '66.67'
    xdotool key Return
    expect 'remaining 0'
    wait "$pid" || fail "the host ended with status $?"
    expect 'fund 1 amount 33330.00 percent 33.33'
    expect 'fund 2 amount 66670.00 percent 66.67'
    expect 'fund 5 amount 0.00 percent 0.00'
    expect unloaded
}
