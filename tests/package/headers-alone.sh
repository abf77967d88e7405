#!/bin/sh
# Includes one header alone, in the current folder: header-alone.sh <header> <compiler and flags>...
# QWidget.lent.h and QObject.lent.h there are precompiled; the header gets the one that it reaches by itself.
set -eu
header=$1
shift
source=$(echo "$header" | tr '/.' '__').cpp
echo "#include \"$header\"" >"$source"
"$@" -M "$source" >"$source.reached"
if grep -q '/qwidget[.]h' "$source.reached"; then
    set -- "$@" -include QWidget.lent.h
elif grep -q '/qobject[.]h' "$source.reached"; then
    set -- "$@" -include QObject.lent.h
fi
exec "$@" -fsyntax-only "$source"
