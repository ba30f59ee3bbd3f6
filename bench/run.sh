#!/bin/sh
# Runs the benchmarks, prints one table and leaves results.json, chart.svg and table.md behind:
#   bench/run.sh BUILD_DIR [OUT_DIR]
# The chart and the table of one such run stand in docs/img as bench.svg and bench.md, for the documentation.
# BUILD_DIR was configured with LUMOAPI_BUILD_BENCH and built. OUT_DIR is BUILD_DIR/bench/results unless given.
# Takes under three minutes; what else the machine does at the time shows in the figures.
set -eu

[ $# -ge 1 ] || { echo "usage: bench/run.sh BUILD_DIR [OUT_DIR]" >&2; exit 2; }
build=$1
out=${2:-$build/bench/results}
mkdir -p "$out"

say() { echo "$@" >&2; }

# The instructions of one conversion, of the hundred that are counted.
instructions() {
  valgrind --tool=callgrind --callgrind-out-file=/dev/null --toggle-collect="$2" \
    "$build/bench/lumoapi_bench_instructions" "$1" 2>&1 |
    awk '$2 == "Collected" { print int($4 / 100) }'
}

say 'Timing, about a minute …'
"$build/bench/lumoapi_bench_timings" --benchmark_repetitions=9 --benchmark_min_time=0.03 \
  --benchmark_enable_random_interleaving=true --benchmark_report_aggregates_only=true \
  --benchmark_out="$out/timings.json" --benchmark_out_format=json >"$out/timings.txt" 2>"$out/timings.log" ||
  { cat "$out/timings.log" >&2; exit 1; }

say 'Counting allocations …'
"$build/bench/lumoapi_bench_memory" >"$out/figures.txt"

if command -v valgrind >/dev/null; then
  say 'Counting instructions …'
  echo "text share/5 letters/instructions $(instructions share measuredShare)" >>"$out/figures.txt"
  echo "incoming/300 bytes/instructions $(instructions message measuredMessage)" >>"$out/figures.txt"
else
  say 'Instructions are not counted: valgrind is not installed.'
fi

say 'Running the tool …'
"$build/bench/lumoapi_bench_lines" "$build/lumoapi" "$out" >>"$out/figures.txt"

"$build/bench/lumoapi_bench_report" "$out"
say "Written: $out/results.json, $out/chart.svg, $out/table.md"
