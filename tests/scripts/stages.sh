#!/usr/bin/env bash
# stages.sh SOURCE: tests what ./test and ./run ask of CMake, and which durations ./test announces, with fakes of cmake and
# ctest.
set -uo pipefail
source=$1
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
status=0

expect() { # WHAT EXPECTED SEEN
  [ "$2" = "$3" ] && return
  printf 'FAILED %s\n  expected: %s\n  seen:     %s\n' "$1" "$2" "$3"
  status=1
}
tool() { printf '#!/bin/bash\n%s\n' "$2" >"$folder/bin/$1" && chmod +x "$folder/bin/$1"; }

mkdir "$folder/bin" "$folder/tree"
cp -r "$source/test" "$source/run" "$source/scripts" "$folder/tree"
printf '#!/bin/sh\necho "FAILED lint"\n' >"$folder/tree/scripts/lint"
cat >"$folder/tree/scripts/packages.sh" <<'END'
run_packages=() player_packages=() window_packages=() test_packages=() lint_packages=()
require_packages() { :; }
missing_packages() { :; }
END
# shellcheck disable=SC2016 # expanded by the tool
tool cmake 'echo "$*" >>"'"$folder"'/asked"; [ "$1" = --build ] || touch "build/$2/build.ninja"'
# FAILURES is the number of tests that fail.
# shellcheck disable=SC2016
tool ctest 'while [ "$1" != --output-junit ]; do shift; done
echo "<testsuite tests=\"2\" failures=\"$FAILURES\" disabled=\"0\" skipped=\"0\">" >"$2"'

run() { # FAILURES CI COMMAND…
  rm -f "$folder/asked"
  (cd "$folder/tree" && FAILURES=$1 CI=$2 PATH=$folder/bin:/usr/bin:/bin "${@:3}" 2>&1)
}
announced() { grep '^This takes' <<<"$1"; }
warnings() { grep -o 'WARNING_AS_ERROR=.*' "$folder/asked" | cut -d ' ' -f 1; }
times=$folder/tree/build/times

expect "a build from nothing is announced" "This takes about 15 min." "$(announced "$(run 1 "" ./test)")"
expect "a stage that failed is not recorded" "" "$(ls "$times" 2>/dev/null)"
expect "what is built is not announced again" "This takes about 7 min, and the time to build what has changed." \
  "$(announced "$(run 0 "" ./test)")"
expect "a stage that passed is recorded" "release" "$(ls "$times")"
echo 3 >"$times/release"
expect "what was recorded is announced" "This takes about 11 min, and the time to build what has changed." \
  "$(announced "$(run 1 "" ./test release lint)")"
expect "a later failure changes no record" "3" "$(cat "$times/release")"
expect "the build of several stages is announced once" "This takes about 20 min." \
  "$(rm "$folder/tree/build/release/build.ninja"; announced "$(run 0 "" ./test quick release lint)")"

run 0 true ./test >/dev/null
expect "warnings are errors in CI" "WARNING_AS_ERROR=ON" "$(warnings)"
run 0 "" ./test >/dev/null
expect "warnings are no errors elsewhere" "WARNING_AS_ERROR=OFF" "$(warnings)"
run 0 true ./run probe clip >/dev/null
expect "warnings are errors in CI for ./run" "WARNING_AS_ERROR=ON" "$(warnings)"
run 0 "" ./run probe clip >/dev/null
expect "warnings are no errors elsewhere for ./run" "WARNING_AS_ERROR=OFF" "$(warnings)"
exit $status
