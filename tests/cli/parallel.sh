#!/usr/bin/env bash
# parallel.sh README FOLDER-OF-STACKREEL-CLI: runs the line for GNU parallel in the README on three small clips, of which one is
# damaged at first, and then again. Exits with 77 where GNU parallel is missing.
set -uo pipefail
line=$(grep -E '^ {4}parallel ' "$1") || { echo "the README has no line for GNU parallel"; exit 1; }
export PATH="$2:$PATH"
parallel --version 2>/dev/null | grep -q 'GNU parallel' || { echo "GNU parallel is missing"; exit 77; }
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
export PARALLEL_HOME=$scratch/home
cd "$scratch" || exit 1

fail() { echo "$1"; exit 1; }
clip() { ffmpeg -v error -y -f lavfi -i testsrc2=r=10:s=320x180:d=0.5 -c:v libx264 -preset ultrafast "$1"; }

mkdir clips
clip "clips/a b.mov" && clip clips/c.mov || fail "ffmpeg made no clip"
echo "no video" >clips/damaged.mov
bash -c "$line" && fail "the damaged clip was no failure"
[ -s "clips/a b-vertical.mp4" ] && [ -s clips/c-vertical.mp4 ] || fail "the other clips were not exported"
[ ! -e clips/damaged-vertical.mp4 ] || fail "the damaged clip was exported"
[ "$(find clips | wc -l)" -eq 6 ] || fail "something else was left: $(ls -A clips)"

clip clips/damaged.mov || fail "ffmpeg made no clip"
first=$(stat -c %Y.%i clips/c-vertical.mp4)
bash -c "$line" || fail "the repeated run failed"
[ -s clips/damaged-vertical.mp4 ] || fail "the repaired clip was not exported"
[ "$(stat -c %Y.%i clips/c-vertical.mp4)" = "$first" ] || fail "a clip was exported again"
