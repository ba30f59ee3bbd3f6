#!/bin/sh
# usage: fuzz/run.sh BUILD SECONDS [DOOR]...
# Runs the fuzzers of the named doors (or all), two at a time, each that long. What they learn is kept in
# BUILD/corpus/DOOR, inputs that failed in BUILD/found/DOOR. Exit status 1 where there are any.
set -eu
cd "$(dirname "$0")/.."

dictionary_of() {
  case $1 in
    url | percent-encoding) echo url ;;
    query | kernels) echo query ;;
    incoming | inspect) echo launch ;;
    archive | base64 | document | json | picture) echo "$1" ;;
  esac
}

# Fuzzes one door and writes "DOOR EXECUTIONS A_SECOND FAILURES" to BUILD/results/DOOR.
fuzz() {
  build=$1 seconds=$2 door=$3
  mkdir -p "$build/corpus/$door" "$build/found/$door" "$build/results"
  log=$build/results/$door.log
  dictionary=$(dictionary_of "$door")
  seeds=$build/fuzz/seeds/$door
  [ -d "fuzz/regressions/$door" ] && seeds="$seeds fuzz/regressions/$door"
  # shellcheck disable=SC2086 # a list of folders
  "$build/fuzz/lumoapi_fuzz_$door" -max_total_time="$seconds" -max_len=4096 -rss_limit_mb=3000 \
    -timeout=120 -report_slow_units=120 \
    ${dictionary:+-dict=fuzz/dictionaries/$dictionary.dict} -artifact_prefix="$build/found/$door/" \
    -print_final_stats=1 "$build/corpus/$door" $seeds >"$log" 2>&1 || true
  failures=$(find "$build/found/$door" -type f | wc -l)
  awk -v door="$door" -v failures="$failures" '
    /^#[0-9]/ { executions = substr($1, 2) }
    /^stat::number_of_executed_units:/ { executions = $2 }
    /^stat::average_exec_per_sec:/ { rate = $2 }
    END { printf "%-18s %14d %10d %9d\n", door, executions, rate, failures }' "$log" >"$build/results/$door"
}

if [ "$1" = --one ]; then
  shift
  fuzz "$@"
  exit 0
fi

build=$1 seconds=$2
shift 2
"$build/fuzz/lumoapi_fuzz_seeds" "$build/fuzz/seeds" examples
if [ $# = 0 ]; then
  for seeds in "$build"/fuzz/seeds/*; do
    set -- "$@" "$(basename "$seeds")"
  done
fi
printf '%s\n' "$@" | xargs -P 2 -I '{}' "$0" --one "$build" "$seconds" '{}'

printf '%-18s %14s %10s %9s\n' door executions 'a second' failures
status=0
for door in "$@"; do
  cat "$build/results/$door"
  if [ -n "$(find "$build/found/$door" -type f)" ]; then
    status=1
    grep -hE 'does not hold|ERROR: |SUMMARY: |runtime error' "$build/results/$door.log" || true
  fi
done
[ $status = 0 ] || echo "The inputs that failed stand in $build/found."
exit $status
