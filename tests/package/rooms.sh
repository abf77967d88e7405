#!/bin/sh
# The rooms and what each may know, as docs/architecture.md has them: rooms.sh <source folder>
# Names every include, in a source or in a design, of a room that the including one does not know, and of a private
# header where a host has none.
set -eu
cd "$1"
status=0

# check <room> <rooms it knows>...
check() {
    room=$1
    shift
    allowed=$(echo "$room export $*" | tr ' ' '|')
    if grep -rnE --include='*.h' --include='*.cpp' --include='*.ui' --include='*.rc' \
        '(#include "|<header[^>]*>)[a-z]+/' "$room" |
        grep -vE "(#include \"|<header[^>]*>)($allowed)/"; then
        echo "$room/ may know only: $*" >&2
        status=1
    fi
}

check data
check toolkit data
check host data toolkit
check frames data toolkit
check dataviews data toolkit frames
check funds data toolkit host frames dataviews
check editor toolkit host frames
check package data toolkit frames dataviews funds editor
check designer package toolkit
if grep -rnE --include='*.h' --include='*.cpp' '#include ".*_p[.]h"' designer quotedesk examples; then
    echo "designer/, quotedesk/ and examples/ may know public headers only" >&2
    status=1
fi
exit $status
