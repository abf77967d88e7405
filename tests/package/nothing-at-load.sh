#!/bin/sh
# Loading the libraries must not run code of theirs: nothing-at-load.sh <library>...
# Each library's .init_array has one entry, frame_dummy, which the compiler adds to every library.
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
