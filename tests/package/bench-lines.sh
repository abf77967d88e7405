#!/bin/sh
# The benchmarks' report passes on a program's own messages and drops those of its platform:
# bench-lines.sh <source folder>
set -eu
source=$1
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT

fail() {
    echo "bench-lines.sh: $*" >&2
    cat "$folder/out" "$folder/err" >&2
    exit 1
}

cat >"$folder/bench_grid" <<'PROGRAM'
#!/bin/sh
for time in 1 2 3; do echo "This plugin does not support propagateSizeHints()" >&2; done
echo "QStandardPaths: XDG_RUNTIME_DIR not set, defaulting to '/tmp/runtime-me'" >&2
echo "The grid has no columns" >&2
case $1 in
--benchmark_list_tests=true) echo grid/100 ;;
*) echo '{"benchmarks": [{"run_type": "iteration", "run_name": "grid/100", "cpu_time": 5, "time_unit": "ms"},
    {"run_type": "iteration", "run_name": "grid.baseline.table/100", "cpu_time": 10, "time_unit": "ms"}]}' ;;
esac
PROGRAM
chmod +x "$folder/bench_grid"
echo 'grid/100 table 0.6' >"$folder/bounds"
report() {
    python3 "$source/bench/report.py" --check --programs "$folder" --bounds "$folder/bounds" \
        >"$folder/out" 2>"$folder/err"
}
report || fail "the job is within its bound"
[ "$(wc -l <"$folder/out")" = 2 ] || fail "more than the table"
grep -q '^grid  *100 .* 0[.]500  *0[.]6  *ok$' "$folder/out" || fail "the ratio is not in the table"
printf 'The grid has no columns\nrunning grid ...\nThe grid has no columns\n' | diff - "$folder/err" ||
    fail "these are not the programs' own lines"
# A failed program is named.
echo 'exit 3' >>"$folder/bench_grid"
if report; then fail "a program that failed was taken for one that ran"; fi
grep -qx 'bench_grid failed with status 3' "$folder/err" || fail "the program that failed is not named"
