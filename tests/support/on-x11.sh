#!/bin/sh
# Runs a test program on its own virtual X server with a window manager, so that focus, activation and painting work
# as on a real desktop.
exec xvfb-run -a -s "-screen 0 1280x1024x24 -nolisten tcp" sh -c '
    ready=$(mktemp -u)
    openbox --startup "touch $ready" >/dev/null 2>&1 &
    wm=$!
    tries=0
    while [ ! -e "$ready" ] && [ $tries -lt 3000 ]; do
        sleep 0.1
        tries=$((tries + 1))
    done
    rm -f "$ready"
    "$@"
    rc=$?
    kill $wm 2>/dev/null
    exit $rc' sh "$@"
