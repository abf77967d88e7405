#!/bin/bash
# Builds everything for Windows on this machine and runs the tests under Wine. Installs missing packages. Builds Qt
# for Windows once and keeps it in the user's cache folder. Arguments go to ctest: ./test-windows.sh -L data
# Creates build/windows/quotedesk-windows.zip for a Windows machine.
set -euo pipefail
cd "$(dirname "$0")"
started=$SECONDS
tools/install-packages.sh build windows
qt=$(nice tools/windows/build-qt.sh)
# The same path in every clone lets ccache reuse files compiled in another clone.
mkdir -p build/windows
ln -sfn "$qt" build/windows/qt
export ZEL_WINDOWS_ROOT=$PWD/build/windows/qt
. tools/build.sh
build windows
tools/windows/pack.sh build/windows
echo "Built in $((SECONDS - started)) s. Testing ..." >&2

status=0
tools/windows/wine-session.sh build/windows/wine "$ZEL_WINDOWS_ROOT" \
    ctest --test-dir build/windows --output-on-failure --no-tests=error --timeout 600 -j "$(nproc)" "$@" || status=$?
if [ -s build/windows/tests-left-out.txt ]; then
    echo "Left out here:"
    sed 's/^/  /' build/windows/tests-left-out.txt
fi
echo "$((SECONDS - started)) s in all." >&2
exit $status
