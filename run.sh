#!/bin/sh
# Installs missing packages, builds, and opens Quote Desk. Arguments go to Quote Desk: ./run.sh --help
# Without a display Quote Desk makes a sample quote off screen, prints the result and saves screenshots.
set -eu
cd "$(dirname "$0")"
tools/install-packages.sh build
. tools/build.sh
build release --target quotedesk
exec build/release/bin/quotedesk "$@"
