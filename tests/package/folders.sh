#!/bin/sh
# Checks the modules' includes against docs/architecture.md: folders.sh <source folder>
# Prints every include, in a source or a .ui file, of a module that the including module must not use, and every
# private header that a host includes. A folder with sources that has no line here is an error, too.
set -eu
cd "$1"
status=0
checked=

# check <module> <modules that it may include>...
check() {
    folder=$1
    shift
    checked="$checked $folder"
    allowed=$(echo "$(basename "$folder") export $*" | tr -s ' ' '|')
    if [ ! -d "$folder" ]; then
        echo "there is no folder $folder/" >&2
        status=1
    elif grep -rnE --include='*.h' --include='*.cpp' --include='*.ui' --include='*.rc' --include='*.in' \
        '(#include "|<header[^>]*>)[a-z./]+/' "$folder" |
        grep -vE "(#include \"|<header[^>]*>)($allowed)/"; then
        echo "$folder/ may include only: $*" >&2
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

# Quote Desk is a host. Each of its modules may include the library, and the modules of Quote Desk above its own line.
library='data toolkit host frames dataviews funds editor package'
check quotedesk/look $library
check quotedesk/database $library look
check quotedesk/catalogue $library look database
check quotedesk/store $library look database catalogue
check quotedesk/quote $library look database catalogue store
check quotedesk/desk $library look database catalogue store quote
check quotedesk $library look database catalogue store quote desk

if grep -rnE --include='*.h' --include='*.cpp' '#include ".*_p[.]h"' designer quotedesk examples; then
    echo "designer/, quotedesk/ and examples/ may include public headers only" >&2
    status=1
fi

# Programs that build, test, measure or show the library may include all of it.
for folder in $(find */ -name 'build*' -prune -o '(' -name '*.h' -o -name '*.cpp' ')' -printf '%h\n' | sort -u); do
    case "$folder" in cmake | tests/* | bench | examples | examples/*) continue ;; esac
    case "$checked " in *" $folder "*) continue ;; esac
    echo "$folder/ stands in no line of $0: say there what it may include" >&2
    status=1
done
exit $status
