#!/bin/sh
# Fails when a source file is not laid out as .clang-format says, and names it.
set -eu
cd "$(dirname "$0")/.."
git ls-files '*.h' '*.cpp' | xargs clang-format --dry-run --Werror
