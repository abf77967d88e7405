#!/bin/sh
# Compiles headers of the current folder one after the other in one unit: headers-alone.sh "<header>..." <compiler and
# flags>...
# The first header sees only what it includes itself; header-chains.awk says why this holds for the others.
# QWidget.lent.h and QObject.lent.h are precompiled; the unit uses the one that the first header includes itself.
# (-c instead of -fsyntax-only, because the compiler cache keeps objects only.)
set -eu
headers=$1
shift
source=$(echo "${headers%% *}" | tr '/.' '__').cpp
for header in $headers; do echo "#include \"$header\""; done >"$source"
echo "#include \"${headers%% *}\"" >"$source.first.cpp"
"$@" -M "$source.first.cpp" >"$source.reached"
if grep -q '/qwidget[.]h' "$source.reached"; then
    set -- "$@" -include QWidget.lent.h
elif grep -q '/qobject[.]h' "$source.reached"; then
    set -- "$@" -include QObject.lent.h
fi
exec $CACHE "$@" -c "$source" -o "$source.o"
