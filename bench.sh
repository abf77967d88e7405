#!/bin/sh
# Installs what is missing, builds and runs the benchmarks; prints one table of jobs with their yardsticks of
# the same run. --check fails when a ratio is over its bound; a word selects jobs: ./bench.sh [--check] [tree]
set -eu
cd "$(dirname "$0")"
tools/install-packages.sh build bench
. tools/build.sh
build bench
exec python3 bench/report.py --programs build/bench/bin --bounds bench/bounds.txt "$@"
