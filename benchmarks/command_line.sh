#!/usr/bin/env bash
# What the command line adds to the tools it runs, measured in pairs within one run:
#   export   stackreel-cli export  /  the system's ffmpeg with the same final arguments
#   probe    stackreel-cli probe   −  the system's ffprobe with the same arguments
#   check    the comparison of the first and last pictures that follows an export
#   memory   the peak memory of our own process during an export
# Usage: benchmarks/command_line.sh [CLIP] [PAIRS]      after ./run or ./test has built build/release
# Without CLIP, it makes ten seconds of a 1080p60 test pattern.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cli=$here/build/release/bin/stackreel-cli
clip=${1:-}
pairs=${2:-5}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

now() { echo "${EPOCHREALTIME/[.,]/}"; } # microseconds

# timed COMMAND…: prints how many microseconds a command takes.
timed() {
  local start
  start=$(now)
  "$@" >/dev/null 2>&1 </dev/null || { echo "failed: $*" >&2; exit 1; }
  echo $(($(now) - start))
}

median() { sort -n | awk '{ v[NR] = $1 } END { print (NR % 2) ? v[(NR + 1) / 2] : (v[NR / 2] + v[NR / 2 + 1]) / 2 }'; }

if [ -z "$clip" ]; then
  clip=$work/clip.mp4
  ffmpeg -hide_banner -loglevel error -nostdin -f lavfi -i testsrc2=size=1920x1080:rate=60:duration=10 \
    -f lavfi -i sine=duration=10 -c:v libx264 -preset ultrafast -crf 16 -pix_fmt yuv420p -c:a aac "$clip"
fi

# A script in place of the system's ffmpeg records its arguments.
mkdir "$work/recorder"
cat >"$work/recorder/ffmpeg" <<'RECORDER'
#!/bin/bash
case " $* " in
*" -encoders "*) exec "$REAL_FFMPEG" "$@" ;;
*) printf '%s\0' "$@" >"$RECORD" ;;
esac
RECORDER
chmod +x "$work/recorder/ffmpeg"
mapfile -t wanted < <("$cli" export --dry-run "$clip" "$work/bare.mp4")
REAL_FFMPEG=$(command -v ffmpeg) RECORD=$work/arguments PATH=$work/recorder:$PATH \
  "$here/build/release/lib/stackreel/ffmpeg" "${wanted[@]}"
mapfile -d '' -t bare <"$work/arguments"

echo "clip: $(basename "$clip"), $pairs pairs after one warm-up"
timed "$cli" export --overwrite --quiet "$clip" "$work/ours.mp4" >/dev/null
for ((pair = 1; pair <= pairs; pair++)); do
  ours=$(timed "$cli" export --overwrite --quiet "$clip" "$work/ours.mp4")
  theirs=$(timed ffmpeg "${bare[@]}")
  echo "$ours $theirs"
done >"$work/exports"
awk '{ printf "  export %d: ours %.2f s, bare ffmpeg %.2f s, ratio %.4f\n", NR, $1 / 1e6, $2 / 1e6, $1 / $2 }' "$work/exports"
echo "export ratio, median: $(awk '{ print $1 / $2 }' "$work/exports" | median)"

for ((pair = 0; pair <= 4 * pairs; pair++)); do
  ours=$(timed "$cli" probe "$clip")
  theirs=$(timed ffprobe -v error -show_streams -show_format -of json "$clip")
  [ "$pair" -eq 0 ] || echo "$ours $theirs"
done >"$work/probes"
echo "probe, median: ours $(awk '{ print $1 / 1000 }' "$work/probes" | median) ms," \
  "bare ffprobe $(awk '{ print $2 / 1000 }' "$work/probes" | median) ms," \
  "difference $(awk '{ print ($1 - $2) / 1000 }' "$work/probes" | median) ms"

# A script in place of the system's ffmpeg measures the runs that compare pictures. A second run means that the first
# one found a difference.
mkdir "$work/stopwatch"
cat >"$work/stopwatch/ffmpeg" <<'STOPWATCH'
#!/bin/bash
case " $* " in *" rawvideo "*) ;; *) exec "$REAL_FFMPEG" "$@" ;; esac
start=${EPOCHREALTIME/[.,]/}
"$REAL_FFMPEG" "$@"
status=$?
echo $((${EPOCHREALTIME/[.,]/} - start)) >>"$TIMES"
exit $status
STOPWATCH
chmod +x "$work/stopwatch/ffmpeg"
for ((pair = 1; pair <= pairs; pair++)); do
  REAL_FFMPEG=$(command -v ffmpeg) TIMES=$work/checks PATH=$work/stopwatch:$PATH \
    timed "$cli" export --overwrite --quiet "$clip" "$work/ours.mp4" >/dev/null
done
echo "check of the pictures, median of $(wc -l <"$work/checks") in $pairs exports:" \
  "$(awk '{ print $1 / 1000 }' "$work/checks" | median) ms"

"$cli" export --overwrite --quiet "$clip" "$work/ours.mp4" >/dev/null &
process=$!
peak=0
while [ -r "/proc/$process/status" ]; do
  seen=$(sed -n 's/^VmHWM:[^0-9]*\([0-9]*\).*/\1/p' "/proc/$process/status" 2>/dev/null || true)
  [ -n "$seen" ] && peak=$seen
  sleep 0.1
done
wait "$process"
echo "peak memory of our process during an export: $(awk -v k="$peak" 'BEGIN { printf "%.1f", k / 1024 }') MiB"
