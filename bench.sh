#!/bin/sh
# Installs missing packages, builds and runs the benchmarks, and prints one table of jobs with their baselines from
# the same run. --check fails when a ratio is over its bound; a word selects jobs: ./bench.sh [--check] [tree]
set -eu
cd "$(dirname "$0")"
tools/install-packages.sh build bench
. tools/build.sh
build bench
exec python3 bench/report.py --programs build/bench/bin --bounds bench/bounds.txt "$@"
