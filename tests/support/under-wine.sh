#!/bin/sh
# Runs a test program built for Windows under Wine: under-wine.sh PROGRAM [ARGUMENTS]
# Without a console such a program writes its report to the debugger, so it writes to a file, which is printed here.
set -eu
program=$1
shift
report=$(mktemp)
trap 'rm -f "$report"' EXIT
# Wine does not pass variables that begin with QT_ to Windows programs; WINEQT_X arrives there as QT_X.
export WINEQT_QPA_PLATFORM="$QT_QPA_PLATFORM"
# Programs of the cross compiler free a thread's variables before they destroy them. Qt keeps such a variable for
# compiled regular expressions, so a thread that used one would crash at its end. Interpreted expressions have no such
# variable.
export WINEQT_ENABLE_REGEXP_JIT=0
status=0
timeout -k 10 "${WINE_TIMEOUT:-540}" wine "$program" -o "Z:$report,txt" "$@" || status=$?
cat "$report"
# A program that ends before its report is complete has failed, whatever its exit status is.
grep -q '^Totals: ' "$report" || {
    echo "The report is not complete (status $status)" >&2
    exit 1
}
exit "$status"
