#!/usr/bin/env bash
# Writes screenshots of the window in each of its states, at scale 1 and 2, to build/screenshots.
#   scripts/screenshots.sh [CLIP]   with a frame of the clip in the preview, or a single colour without one
# Needs the release build of the tests (./test release).
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
program=${STACKREEL_SCREENSHOT_PROGRAM:-build/release/tests/window-screenshots}
folder=build/screenshots
mkdir -p "$folder"
frame=
if [ $# -gt 0 ]; then
  frame=$folder/.frame.png
  ffmpeg -v error -y -ss 1 -i "$1" -frames:v 1 "$frame"
fi
for scale in 1 2; do
  environment=("QT_SCALE_FACTOR=$scale" "STACKREEL_SCREENSHOTS=$folder/scale-$scale")
  [ -z "$frame" ] || environment+=("STACKREEL_SCREENSHOT_FRAME=$frame")
  env "${environment[@]}" "$program" --gtest_brief=1
done
[ -z "$frame" ] || rm -f "$frame"
echo "The screenshots are in $folder."
