#!/bin/sh
# Installs what is missing, builds and runs every test. Arguments go to ctest: ./test.sh -L data
# PRESET=asan ./test.sh runs them under AddressSanitizer and UndefinedBehaviorSanitizer.
set -eu
cd "$(dirname "$0")"
tools/install-packages.sh build test
. tools/build.sh
preset=${PRESET:-release}
build "$preset"
exec ctest --preset "$preset" -j "$(nproc)" "$@"
