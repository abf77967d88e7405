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
status=0
timeout -k 10 "${WINE_TIMEOUT:-540}" wine "$program" -o "Z:$report,txt" "$@" || status=$?
cat "$report"
# A program that ends before its report is complete has not passed, whatever its status says.
grep -q '^Totals: ' "$report" || {
    echo "The report is not complete (status $status)" >&2
    exit 1
}
exit "$status"
