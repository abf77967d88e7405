#!/bin/sh
# Prints the number of the visible window whose title matches: window-of.sh TITLE. Waits up to ten minutes for it.
# xdotool fails when another window disappears during its search, so the search is repeated.
set -eu
tries=0
until window=$(xdotool search --onlyvisible --name "$1" 2>/dev/null | tail -n 1) && [ -n "$window" ]; do
    tries=$((tries + 1))
    [ "$tries" -lt 3000 ] || {
        echo "There is no window \"$1\"" >&2
        exit 1
    }
    sleep 0.2
done
echo "$window"
