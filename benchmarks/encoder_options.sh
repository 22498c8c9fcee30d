#!/usr/bin/env bash
# encoder_options.sh CLIP [SECONDS]: time and quality of the options that replace VideoToolbox, compared with libx264's
# preset medium at the same bit rate.
#
# Encodes the first SECONDS (10) of a landscape clip, at least 1920 × 1080, through the filter graph of an export and
# prints for each set of options: wall time and its ratio to medium, processor time and its ratio, the SSIM of all
# planes against the graph's lossless output, the difference to medium, and the actual bit rate. The last line is the
# lower bound: decoding and the filter graph alone. Runs three rounds and keeps the shortest time of each.
set -euo pipefail
export LC_ALL=C

clip=${1:?usage: encoder_options.sh CLIP [SECONDS]}
seconds=${2:-10}
rounds=${ROUNDS:-3}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

graph='[0:v:0]split=2[topSource][bottomSource];'
graph+='[topSource]crop=w=874:h=776:x=76:y=150,scale=1080:960:flags=bicubic,setsar=1,setpts=PTS-STARTPTS[top];'
graph+='[bottomSource]crop=w=874:h=776:x=968:y=150,scale=1080:960:flags=bicubic,setsar=1,setpts=PTS-STARTPTS[bottom];'
graph+='[top][bottom]vstack=inputs=2,format=yuv420p[video]'

# The options under test are those that the shipped program passes to FFmpeg. A script in place of FFmpeg prints them.
shim=${SHIM:-$(dirname "$0")/../build/release/lib/stackreel/ffmpeg}
mkdir "$work/stand-in"
cat > "$work/stand-in/ffmpeg" <<'SCRIPT'
#!/bin/sh
[ "$2" = -encoders ] && echo ' V....D libx264 x' && exit
echo "$@"
SCRIPT
chmod +x "$work/stand-in/ffmpeg"
chosen=$(PATH="$work/stand-in" "$shim" -c:v h264_videotoolbox -allow_sw 1)

names=(medium veryfast superfast chosen floor)
declare -A options=(
  [medium]='-c:v libx264 -preset medium -b:v 12M -movflags +faststart'
  [veryfast]='-c:v libx264 -preset veryfast -b:v 12M -movflags +faststart'
  [superfast]='-c:v libx264 -preset superfast -b:v 12M -movflags +faststart'
  [chosen]="$chosen -b:v 12M -movflags +faststart"
  [floor]='-f null')

# run NAME: encodes once with these options; sets `wall` and `cpu` to its wall time and processor time in seconds.
run() {
  local times user system TIMEFORMAT='%R %U %S'
  # shellcheck disable=SC2086 # the options are words
  times=$({ time ffmpeg -hide_banner -v error -nostdin -y -ss 0.000 -i "$clip" -t "$seconds" \
    -filter_complex "$graph" -map '[video]' ${options[$1]} -an "$work/$1.mp4" 2>&3; } 3>&2 2>&1)
  read -r wall user system <<< "$times"
  cpu=$(awk -v u="$user" -v s="$system" 'BEGIN { print u + s }')
}

# least A B: prints the smaller of two numbers, or B if A is empty.
least() { awk -v a="${1:-$2}" -v b="$2" 'BEGIN { print a + 0 < b + 0 ? a : b }'; }

# ssim NAME: prints the SSIM of all planes, comparing frame by frame without regard to time stamps.
ssim() {
  local count='setpts=N/(60*TB)'
  ffmpeg -hide_banner -nostdin -i "$work/$1.mp4" -i "$work/reference.mkv" \
    -lavfi "[0:v]settb=1/60,${count}[a];[1:v]settb=1/60,${count}[b];[a][b]ssim" -f null - 2>&1 |
    sed -n 's/.*All:\([0-9.]*\).*/\1/p'
}

ffmpeg -v error -nostdin -y -ss 0.000 -i "$clip" -t "$seconds" -filter_complex "$graph" -map '[video]' -an \
  -c:v libx264 -preset ultrafast -qp 0 "$work/reference.mkv"

# Each round runs all sets of options in turn, so that a change in the machine's load affects all of them.
declare -A walls cpus
for ((round = 0; round < rounds; ++round)); do
  for name in "${names[@]}"; do
    run "$name"
    walls[$name]=$(least "${walls[$name]:-}" "$wall")
    cpus[$name]=$(least "${cpus[$name]:-}" "$cpu")
  done
done

echo "chosen: $chosen"
echo '| options | wall s | of medium | processor s | of medium | SSIM | to medium | kbit/s |'
echo '|---|---|---|---|---|---|---|---|'
base=$(ssim medium)
for name in "${names[@]}"; do
  quality=- difference=- rate=-
  if [ "$name" != floor ]; then
    quality=$(ssim "$name")
    difference=$(awk -v a="$quality" -v b="$base" 'BEGIN { printf "%+.5f", a - b }')
    rate=$(ffprobe -v error -select_streams v:0 -show_entries stream=bit_rate -of csv=p=0 "$work/$name.mp4")
    rate=$((rate / 1000))
  fi
  awk -v n="$name" -v w="${walls[$name]}" -v W="${walls[medium]}" -v c="${cpus[$name]}" -v C="${cpus[medium]}" \
    -v q="$quality" -v d="$difference" -v r="$rate" \
    'BEGIN { printf "| %s | %.2f | %.3f | %.2f | %.3f | %s | %s | %s |\n", n, w, w / W, c, c / C, q, d, r }'
done
