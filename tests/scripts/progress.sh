#!/usr/bin/env bash
# progress.sh SOURCE: tests what scripts/progress.py prints and logs for a build and for a test run.
set -uo pipefail
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
status=0

shown() { "$1/scripts/progress.py" title "$folder/log" | sed 's/, [0-9]*:[0-9]*$//' | paste -sd ' '; }
expect() { # WHAT EXPECTED SEEN
  [ "$2" = "$3" ] && return
  printf 'FAILED %s\n  expected: %s\n  seen:     %s\n' "$1" "$2" "$3"
  status=1
}

build=$(for i in $(seq 40); do echo "[$i/40] Building CXX object $i.o"; echo "a warning"; done)
expect "a build is shown at each tenth" \
  "title: 4 of 40 title: 8 of 40 title: 12 of 40 title: 16 of 40 title: 20 of 40 title: 24 of 40 title: 28 of 40 title: 32 of 40 title: 36 of 40 title: 40 of 40" \
  "$(shown "$1" <<<"$build")"
expect "all of it is kept" "$build" "$(cat "$folder/log")"

tests=$' 1/2 Test #7: Suite.First ........   Passed    0.01 sec\n    Start 8: Suite.Second\n2/2 Test #8: Suite.Second ..***Failed'
expect "tests are counted like steps" "title: 1 of 2 title: 2 of 2" "$(shown "$1" <<<"$tests")"
expect "what is neither is not counted" "" "$(shown "$1" <<<"nothing")"
printf 'bytes \xff\n' | "$1/scripts/progress.py" title "$folder/bytes" >/dev/null
expect "bytes that are no text are kept" "$(printf 'bytes \xff\n' | od -c)" "$(od -c <"$folder/bytes")"
exit $status
