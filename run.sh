#!/bin/sh
# Installs what is missing, builds, and opens Quote Desk. Arguments are Quote Desk's own: ./run.sh --help
# With no display it does the same job off screen, prints the result and saves screenshots.
set -eu
cd "$(dirname "$0")"
tools/install-packages.sh build
. tools/build.sh
build release --target quotedesk
exec build/release/bin/quotedesk "$@"
