#!/bin/sh
# Runs one test program that was built for Windows under Wine: under-wine.sh PROGRAM [ARGUMENTS]
# Without a console such a program reports to a debugger, so it writes its report to a file that is printed here.
set -eu
program=$1
shift
report=$(mktemp)
trap 'rm -f "$report"' EXIT
# Wine keeps variables that begin with QT_ from Windows programs; one named WINEQT_X arrives there as QT_X.
export WINEQT_QPA_PLATFORM="$QT_QPA_PLATFORM"
# The cross compiler frees a thread's variables before it destroys them; Qt keeps one for compiled regular expressions,
# and a thread that used one would end in a crash. Interpreted ones need none.
export WINEQT_ENABLE_REGEXP_JIT=0
status=0
timeout -k 10 "${WINE_TIMEOUT:-540}" wine "$program" -o "Z:$report,txt" "$@" || status=$?
cat "$report"
# A program that ends before its report is complete has not passed, whatever its status says.
grep -q '^Totals: ' "$report" || {
    echo "The report is not complete (status $status)" >&2
    exit 1
}
exit "$status"
