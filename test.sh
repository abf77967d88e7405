#!/bin/sh
# Installs missing packages, builds and runs every test. Arguments go to ctest: ./test.sh -L data
# PRESET=asan ./test.sh runs them under AddressSanitizer and UndefinedBehaviorSanitizer.
set -eu
cd "$(dirname "$0")"
tools/install-packages.sh build test
. tools/build.sh
preset=${PRESET:-release}
build "$preset"
# Half of the tests wait more than they compute: for servers that do not answer, for windows that should stay idle.
exec ctest --preset "$preset" -j "$((2 * $(nproc)))" "$@"
