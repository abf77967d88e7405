#!/bin/sh
# Compiles headers in the current folder, one behind the other: headers-alone.sh "<header>..." <compiler and flags>...
# The first one sees nothing that it does not include; header-chains.awk says what that means for those behind it.
# QWidget.lent.h and QObject.lent.h there are precompiled; the first header gets the one that it reaches by itself.
# (Compiled rather than looked at: a compiler cache keeps the one and not the other.)
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
