#!/bin/sh
# Runs clang-tidy over the library's and Quote Desk's sources: check-tidy.sh [build folder]
# Fails when there is anything to say. Precompiled headers are another compiler's, so the compile commands are
# rewritten without them; what is compiled for another system only has no command here.
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
