#!/usr/bin/env bash
# Measures the window on its own display: its start compared with a minimal Qt Quick window, painting and drag handling
# while a preview loops, an idle window, and the memory and processor time of the window with its preview.
# Usage: benchmarks/window.sh CLIP [SECONDS]      needs Xvfb
#   after cmake --build build/release --target stackreel benchmarks
# CLIP should be 1080p60 and last ten seconds or so.
set -euo pipefail
clip=${1:?usage: window.sh CLIP [SECONDS]}
seconds=${2:-10}
bin=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)/build/release/bin
work=$(mktemp -d)
export XDG_RUNTIME_DIR=$work QT_LOGGING_RULES='*=false'

# Xvfb picks a free display number.
exec 3<>"$work/display"
Xvfb -displayfd 3 -screen 0 1440x900x24 >/dev/null 2>&1 &
server=$!
trap 'kill $server; rm -rf "$work"' EXIT
while [ ! -s "$work/display" ]; do sleep 0.05; done
DISPLAY=:$(cat "$work/display")
export DISPLAY

now() { echo "${EPOCHREALTIME/[.,]/}"; }
median() { sort -n | awk '{ v[NR] = $1 } END { print v[int((NR + 1) / 2)] }'; }

for round in 0 1 2 3 4 5 6 7; do
  ours=$("$bin/window_figures" start "$(now)")
  minimal=$("$bin/minimal_window" "$(now)")
  software=$(QT_QUICK_BACKEND=software "$bin/minimal_window" "$(now)")
  # The first round is a warm-up and does not count.
  [ "$round" = 0 ] || echo "$ours $minimal $software"
done >"$work/starts"
awk '{ print $1 }' "$work/starts" | median >"$work/ours"
awk '{ print $2 }' "$work/starts" | median >"$work/minimal"
awk '{ print $3 }' "$work/starts" | median >"$work/software"
paste "$work/ours" "$work/minimal" "$work/software" | awk '{
  printf "start to first painted frame: ours %.0f ms; minimal window %.0f ms, ratio %.2f (target 1.6); ", $1, $2, $1 / $2
  printf "minimal window on the software scene graph %.0f ms, ratio %.2f\n", $3, $1 / $3 }'
echo "preview looping, crop dragged, $seconds s:"
"$bin/window_figures" drag "$clip" "$seconds" | sed 's/^/  /'
echo "preview paused: $("$bin/window_figures" idle "$clip" "$seconds")"
echo "preview looping: $("$bin/window_figures" loop "$clip" "$seconds")"
