#!/bin/sh
# The libraries have no work of their own to do when they are loaded: nothing-at-load.sh <library>...
# Each has one entry in the table of what the loader runs, the one that the compiler puts into every library.
set -eu
status=0
table=$(mktemp)
trap 'rm -f "$table"' EXIT
for library in "$@"; do
    if nm --demangle "$library" | grep -E '_GLOBAL__(sub_)?I_|__static_initialization'; then
        echo "$library builds objects when it is loaded" >&2
        status=1
    fi
    objcopy -O binary --only-section=.init_array "$library" "$table"
    runs=$(od -An -v -t x8 "$table" | tr -s ' ' '\n' | while read -r address; do
        [ -z "$address" ] || nm "$library" | awk -v address="$address" '$1 == address { print $3 }'
    done)
    if [ "$runs" != frame_dummy ]; then
        echo "$library runs these when it is loaded:" $runs >&2
        status=1
    fi
done
exit $status
