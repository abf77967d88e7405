#!/bin/sh
# Fails, and names the file, when a source file is not formatted according to .clang-format.
set -eu
cd "$(dirname "$0")/.."
files=$(git ls-files '*.h' '*.cpp') # a separate command, because a pipe would hide its failure
echo "$files" | xargs clang-format --dry-run --Werror
