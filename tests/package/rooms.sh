#!/bin/sh
# Checks the modules' includes against docs/architecture.md: rooms.sh <source folder>
# Prints every include, in a source or a .ui file, of a module that the including module must not use, and every
# private header that a host includes.
set -eu
cd "$1"
status=0

# check <module> <modules that it may include>...
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
