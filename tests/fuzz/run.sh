#!/bin/sh
# run.sh PROGRAM SECONDS: runs one fuzzer of the preset `fuzz` for the given time and prints the result. It starts with
# the corpus in the source tree and does not change it. New inputs, findings and the log are stored beside the program.
set -eu

if [ $# -ne 2 ]; then
    echo "usage: $0 PROGRAM SECONDS" >&2
    exit 2
fi
program=$1
seconds=$2
name=${program##*/fuzz_}
corpus=$(dirname "$0")/corpus/$name
kept=$(dirname "$program")/kept/$name
mkdir -p "$kept/corpus" "$kept/findings"

if UBSAN_OPTIONS=print_stacktrace=1 "$program" -max_total_time="$seconds" -timeout=20 -rss_limit_mb=2048 \
    -print_final_stats=1 -verbosity=0 -artifact_prefix="$kept/findings/" "$kept/corpus" "$corpus" \
    >"$kept/log" 2>&1; then
    inputs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$kept/log")
    [ "${inputs:-0}" -gt 0 ] || { echo "fuzzing $name: no input was tried" >&2; exit 1; }
    echo "fuzzing $name: $inputs inputs in $seconds s, no finding"
else
    tail -n 80 "$kept/log" >&2
    echo "fuzzing $name: a finding, kept in $kept/findings" >&2
    exit 1
fi
