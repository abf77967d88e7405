#!/bin/sh
# Checks that the build is hardened and that its files have a safe search path for libraries:
#   hardening.sh files <folder>...                             every program and library in the folders
#   hardening.sh commands <build folder> <type> <sanitizers>   every compile command of a build and its object
# CXX names the compiler. WINDOWS=1 says that the files are Windows programs.
set -eu
job=$1
shift
compiler=${CXX:-c++}
status=0
files=$(mktemp)
trap 'rm -f "$files" "$files".*' EXIT

wrong() {
    echo "hardening.sh: $*" >&2
    status=1
}

has() {
    [ -z "${WINDOWS:-}" ] && echo 'int nothing;' | "$compiler" -Werror "$1" -x c++ -fsyntax-only - 2>/dev/null
}
# Control-flow enforcement is noted in the objects; in linked files it shows as the instruction endbr64.
endbr=
if [ "$(uname -m)" = x86_64 ] && has -fcf-protection=full; then endbr=yes; fi

read_windows() {
    x86_64-w64-mingw32-objdump -p "$1" >"$files.said"
    for word in HIGH_ENTROPY_VA DYNAMIC_BASE NX_COMPAT; do
        grep -qw "$word" "$files.said" || wrong "$1 lacks $word"
    done
    ! grep -qi 'DLL Name: libssp' "$files.said" || wrong "$1 needs a DLL for the guard of the stack"
}

read_elf() {
    readelf -Wh -l -d --dyn-syms "$1" >"$files.said" 2>&1 || wrong "readelf cannot read $1"
    # Linker settings.
    grep -q '^ *Type: *DYN ' "$files.said" || wrong "$1 is not position-independent"
    grep -q '^ *GNU_RELRO ' "$files.said" || wrong "$1 has no RELRO"
    grep -qE '\(FLAGS(_1)?\).*NOW' "$files.said" || wrong "$1 does not find every address at its start"
    grep -qE '^ *GNU_STACK .* RW ' "$files.said" || wrong "$1 has an executable stack"
    ! grep -qE '^ *LOAD .* RWE ' "$files.said" || wrong "$1 has memory that is written and executed"
    ! grep -q '(TEXTREL)' "$files.said" || wrong "$1 changes its instructions when it is loaded"
    # Compiler settings.
    grep -qw '__stack_chk_fail' "$files.said" || wrong "$1 has no guard of the stack"
    # The compiler's start-up objects contain two; the smallest example has 18.
    [ -z "$endbr" ] || [ "$(LC_ALL=C grep -aoP '\xf3\x0f\x1e\xfa' "$1" | head -n 10 | wc -l)" = 10 ] ||
        wrong "$1 has no control-flow enforcement"
    # The search path for libraries: relative to the file or absolute. An empty entry means the current folder.
    ! grep -q '(RPATH)' "$files.said" || wrong "$1 has an RPATH, which no user can override"
    sed -n 's/.*(RUNPATH).*\[\(.*\)\]$/:\1:/p' "$files.said" >"$files.path"
    case $(cat "$files.path") in
    *::*) wrong "$1 looks for libraries in the folder that it is started in: $(cat "$files.path")" ;;
    esac
    tr ':' '\n' <"$files.path" | grep -vE '^(|/.*|\$ORIGIN|\$ORIGIN/.*)$' >"$files.odd" || true
    [ ! -s "$files.odd" ] || wrong "$1 looks for libraries in $(cat "$files.odd")"
}

read_files() {
    if [ -n "${WINDOWS:-}" ]; then
        find "$@" -type f \( -name '*.exe' -o -name '*.dll' \) >"$files"
    else
        find "$@" -type f ! -name '*.o' ! -name '*.a' | while read -r file; do
            [ "$(head -c 4 "$file" | od -An -c | tr -d ' \n')" != '177ELF' ] || echo "$file"
        done >"$files"
    fi
    [ "$(wc -l <"$files")" -ge 4 ] || wrong "only $(wc -l <"$files") programs and libraries in" "$@"
    while read -r file; do
        if [ -n "${WINDOWS:-}" ]; then read_windows "$file"; else read_elf "$file"; fi
    done <"$files"
    echo "$(wc -l <"$files") programs and libraries"
}

# every <option, a pattern>: all compile commands have this option
every() {
    missing=$(grep -vc -e " $1 " "$files" || true)
    [ "$missing" = 0 ] || wrong "$missing of $(wc -l <"$files") compile commands lack $1"
}

read_commands() {
    build=$1 type=$2 sanitizers=$3
    sed -n 's/^ *"command": "\(.*\)",$/\1/p' "$build/compile_commands.json" | grep -v windres >"$files" || true
    [ "$(wc -l <"$files")" -gt 100 ] || wrong "only $(wc -l <"$files") compile commands in $build"
    every -fstack-protector-strong
    ! has -fstack-clash-protection || every -fstack-clash-protection
    ! has -fcf-protection=full || every -fcf-protection=full
    # _FORTIFY_SOURCE needs the optimiser, and the sanitizer has checks of its own.
    if [ "$type" != Debug ] && [ -z "$sanitizers" ]; then
        every '-D_FORTIFY_SOURCE=[23]'
    elif grep -q _FORTIFY_SOURCE "$files"; then
        wrong "checked copies where they cannot be: $type $sanitizers"
    fi
    # Each object is marked for control-flow enforcement. (Linked files are marked only where the system's start-up
    # objects are.)
    if [ -n "$endbr" ]; then
        sed -n 's/.* -o \([^ ]*[.]o\) .*/\1/p' "$files" | while read -r object; do
            [ ! -f "$build/$object" ] || readelf -Wn "$build/$object" 2>/dev/null |
                grep -q 'x86 feature: IBT, SHSTK' || echo "$object"
        done >"$files.objects"
        [ ! -s "$files.objects" ] || wrong "no control-flow enforcement in these:" $(cat "$files.objects")
    fi
    echo "$(wc -l <"$files") compile commands"
}

case $job in
files) read_files "$@" ;;
commands) read_commands "$@" ;;
*) wrong "unknown job $job" ;;
esac
exit $status
