#!/bin/sh
# Runs one test program on a virtual X server of its own with a window manager, so that focus,
# activation and painting are what a person's desktop gives.
exec xvfb-run -a -s "-screen 0 1280x1024x24 -nolisten tcp" sh -c '
    openbox >/dev/null 2>&1 &
    wm=$!
    "$@"
    rc=$?
    kill $wm 2>/dev/null
    exit $rc' sh "$@"
