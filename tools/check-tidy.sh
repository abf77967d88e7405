#!/bin/sh
# Runs clang-tidy over the library's and Quote Desk's sources: check-tidy.sh [build folder]
# Fails on any finding. clang cannot read GCC's precompiled headers, so they are removed from the compile commands.
# Windows sources are left out, because they have no compile command here.
set -eu
cd "$(dirname "$0")/.."
build=${1:-build/release}
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
sed -e 's/-Winvalid-pch//g' -e 's/-include [^ ]*cmake_pch[^ ]*//g' -e 's/ccache //g' \
    "$build/compile_commands.json" >"$folder/compile_commands.json"
files=$(git ls-files 'data/*.cpp' 'toolkit/*.cpp' 'host/*.cpp' 'frames/*.cpp' 'dataviews/*.cpp' 'funds/*.cpp' \
                     'editor/*.cpp' 'package/*.cpp' 'quotedesk/*.cpp' ':!*_win.cpp')
echo "$files" | xargs -P "$(nproc)" -n 1 clang-tidy --quiet -p "$folder" 2>/dev/null
