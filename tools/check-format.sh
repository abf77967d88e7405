#!/bin/sh
# Fails when a source file is not laid out as .clang-format says, and names it.
set -eu
cd "$(dirname "$0")/.."
files=$(git ls-files '*.h' '*.cpp') # apart, as a pipe would hide that there is no list
echo "$files" | xargs clang-format --dry-run --Werror
