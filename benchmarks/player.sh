#!/usr/bin/env bash
# Measures the player and other programs in the same run, and prints one Markdown table.
#   seams       the loop's seam                 /  mpv --ab-loop
#   seek        exact seeks                     /  ffmpeg decoding from the same key frame to the same frame
#   scrub       60 requests a second for 3 s
#   trim        the end handle released until the picture moves
#   thumbnails  twelve images                   /  ffmpegthumbnailer twelve times; one whole decode by ffmpeg
#   ready       from choosing a clip to ready   −  ffprobe alone; and the first frame with and without thumbnails
#   cpu         a second of 1080p60 preview     /  mpv --vo=x11 at the same size
#   memory      a 4K clip looping               /  mpv --vo=x11
# Usage: benchmarks/player.sh [--row ROW]… [--quick] [--wraps COUNT] [--lengths "SECONDS …"] [--clips DIRECTORY]
#          [--bin DIRECTORY]
#   after cmake --build build/release --target benchmarks. Clips are made once; they take about 0.7 GB. --quick runs fewer
#   rounds, to check that everything works. Programs that are not installed are skipped and named.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
bin=$here/../build/release/bin
clips=${TMPDIR:-/tmp}/stackreel-benchmark-clips
rows=()
quick=
wraps=100 # of each loop
lengths="0.1 0.25 1.5 10" # of the loops, seconds
while [ $# -gt 0 ]; do
  case $1 in
  --row) rows+=("$2"); shift ;;
  --clips) clips=$2; shift ;;
  --bin) bin=$2; shift ;;
  --quick) quick=1 wraps=4 lengths="0.1 0.25 1.5" ;;
  --wraps) wraps=$2; shift ;;
  --lengths) lengths=$2; shift ;;
  *) sed -n '2,/^set /{/^set /d;s/^# \{0,1\}//;p}' "$0"; exit 2 ;;
  esac
  shift
done
[ ${#rows[@]} -gt 0 ] || rows=(seams seek scrub trim thumbnails ready cpu memory)
width=1100 height=620 # the size of the preview in a window of the default size
work=$(mktemp -d)
server=
trap '[ -z "$server" ] || kill "$server"; rm -rf "$work"' EXIT
mkdir -p "$clips"

now() { echo "${EPOCHREALTIME/[.,]/}"; } # microseconds
median() { sort -n | awk '{ v[NR] = $1 } END { print v[int((NR + 1) / 2)] }'; }
worst() { sort -n | tail -n 1; }
value() { sed -n "s/.*\b$2=\([^ ]*\).*/\1/p" <<<"$1"; } # value LINE KEY
ratio() { awk -v a="$1" -v b="$2" 'BEGIN { printf "%.2f", a / b }'; }
row() { printf '| %s | %s | %s | %s | %s |\n' "$@"; }
have() { command -v "$1" >/dev/null; }
# timed COMMAND…: runs a command; sets `took` to its time in milliseconds and `peak` to its peak memory in MiB.
timed() {
  local start
  start=$(now)
  /usr/bin/time -o "$work/time" -f '%M' "$@" >/dev/null 2>&1 </dev/null || { echo "failed: $*" >&2; exit 1; }
  took=$(awk -v t=$(($(now) - start)) 'BEGIN { printf "%.1f", t / 1000 }')
  peak=$(awk '{ printf "%.0f", $1 / 1024 }' "$work/time")
}

# encode NAME SIZE RATE SECONDS KEYINTERVAL BITRATE [FILTER]
encode() {
  [ -s "$clips/$1.mp4" ] && return
  echo "making $1.mp4" >&2
  ffmpeg -v error -nostdin -y -f lavfi -i "testsrc2=size=$2:rate=$3:duration=$4,noise=alls=8:allf=t${7:-}" \
    -f lavfi -i "sine=frequency=440:sample_rate=48000:duration=$4" -fps_mode passthrough -enc_time_base 1:90000 \
    -video_track_timescale 90000 -c:v libx264 -preset veryfast -b:v "$6" -bf 2 -pix_fmt yuv420p \
    -x264-params "scenecut=0:keyint=$5:min-keyint=$5" -c:a aac "$work/$1.mp4"
  mv "$work/$1.mp4" "$clips/$1.mp4"
}
# lengthen NAME OF TIMES
lengthen() {
  [ -s "$clips/$1.mp4" ] && return
  echo "making $1.mp4" >&2
  ffmpeg -v error -nostdin -y -stream_loop $(($3 - 1)) -i "$clips/$2.mp4" -c copy "$clips/draft.mp4"
  mv "$clips/draft.mp4" "$clips/$1.mp4"
}
make_clips() {
  local name
  for name in "$@"; do
    case $name in
    gop30) encode gop30 1920x1080 30 20 30 16M ;;
    gop250) encode gop250 1920x1080 30 20 250 12M ;;
    fast) encode fast 1920x1080 60 20 250 12M ;;
    variable) encode variable 1920x1080 30 20 250 12M ",settb=1/90000,setpts='(N-2/3*eq(mod(N\\,3)\\,1))/(30*TB)'" ;;
    uhd) encode uhd 3840x2160 30 10 30 40M ;;
    short) encode short 1920x1080 30 20 30 400k ;;
    esac
  done
}
duration() { ffprobe -v error -show_entries stream=duration -select_streams v -of csv=p=0 "$clips/$1.mp4"; }

display() {
  [ -n "$server" ] && return
  exec 3<>"$work/display"
  Xvfb -displayfd 3 -screen 0 1440x900x24 >/dev/null 2>&1 &
  server=$!
  while [ ! -s "$work/display" ]; do sleep 0.05; done
  DISPLAY=:$(cat "$work/display")
  export DISPLAY
}
can_play_mpv() { have mpv && have Xvfb && display; }
play_mpv() { # play_mpv FILE OPTIONS…
  local file=$1
  shift
  mpv --no-config --vo=x11 --no-audio --no-osc --osd-level=0 --no-input-default-bindings \
    --geometry=${width}x$height --no-keepaspect-window "$@" "$file"
}

# frames_in NAME START END: prints the number of frames in [START, END) of a clip.
frames_in() {
  ffprobe -v error -select_streams v -show_entries packet=pts_time -of csv=p=0 "$clips/$1.mp4" |
    awk -F, -v a="$2" -v b="$3" '$1 > a - 0.0008 && $1 < b - 0.0008' | wc -l
}
# mpv_seams NAME START END WRAPS: prints the same values as loop_seams for mpv, from its own reports, which do not show
# lost frames.
mpv_seams() { # NAME START END WRAPS
  local seconds
  seconds=$(awk -v a="$2" -v b="$3" -v n="$4" 'BEGIN { printf "%.0f", (b - a + 0.6) * n + 5 }')
  timeout "$seconds" /usr/bin/time -o "$work/time" -f '%M' bash -c "$(declare -f play_mpv); width=$width height=$height; \
    play_mpv '$clips/$1.mp4' --script='$here/player/mpv_seams.lua' --start=$2 --ab-loop-a=$2 --ab-loop-b=$3 --hr-seek=yes" \
    >"$work/mpv" 2>&1 || true
  grep -o 'frame [0-9.]* [0-9.]*' "$work/mpv" | awk -v n="$4" -v end="$3" '
    NR > 1 && $2 < position - 0.001 { if (++wraps > 1 && wraps <= n + 1) print ($3 - moment - (end - position)) * 1000 }
    $2 != position { position = $2; moment = $3 }' | sort -n | awk '
    { v[NR] = $1; good += $1 <= 3 && $1 >= -3 }
    END { if (NR) printf "%+.1f ms (%+.1f to %+.1f), %.0f %% within", v[int((NR + 1) / 2)], v[1], v[NR], 100 * good / NR
          else printf "did not loop" }'
}
seam() { # TITLE NAME START END
  local line theirs='mpv or Xvfb is not installed'
  line=$("$bin/loop_seams" "$clips/$2.mp4" "$3" "$4" $wraps $width $height "$(frames_in "$2" "$3" "$4")")
  ! can_play_mpv || theirs=$(mpv_seams "$2" "$3" "$4" $((wraps < 20 ? wraps : 20)))
  row "seam minus ideal, $1, $(awk -v a="$3" -v b="$4" 'BEGIN { print b - a }') s" \
    "$(value "$line" median) ms ($(value "$line" least) to $(value "$line" most)), $(value "$line" within) % within, lost $(value "$line" lost), doubled $(value "$line" doubled); $(value "$line" peak) MiB" \
    "$theirs" "–" "± 3 ms each, none lost or doubled"
}
row_seams() {
  local length end
  make_clips gop30 gop250 fast variable
  for length in $lengths; do
    end=$(awk -v l=$length 'BEGIN { print 8 + l }')
    seam "GOP 30" gop30 8 "$end"
    seam "GOP 250" gop250 8 "$end"
    seam "60 fps, GOP 250" fast 8 "$end"
    seam "variable rate, GOP 250" variable 8 "$end"
  done
}

row_seek() {
  local count=50 times line time their_times=()
  [ -z "$quick" ] || count=5
  make_clips gop250
  times=$(awk -v n=$count 'BEGIN { srand(7); while (n--) printf "%.3f ", rand() * 19.9 }')
  # shellcheck disable=SC2086 # a list of times
  line=$("$bin/exact_seeks" "$clips/gop250.mp4" 20 $width $height $times)
  timed ffmpeg -v error -nostdin -i "$clips/gop250.mp4" -map 0:v:0 -frames:v 1 -f null -
  local start=$took
  for time in $times; do
    timed ffmpeg -v error -nostdin -ss "$time" -i "$clips/gop250.mp4" -map 0:v:0 -frames:v 1 -f null -
    their_times+=("$took")
  done
  local middle most
  middle=$(printf '%s\n' "${their_times[@]}" | median)
  most=$(printf '%s\n' "${their_times[@]}" | worst)
  row "exact seek, median of $count, GOP 250" "$(value "$line" median) ms; $(value "$line" peak) MiB" \
    "ffmpeg $middle ms, of which $start ms are its start; $peak MiB" "$(ratio "$(value "$line" median)" "$middle")" "1.2"
  row "exact seek, worst of $count, GOP 250" "$(value "$line" worst) ms" "ffmpeg $most ms" \
    "$(ratio "$(value "$line" worst)" "$most")" "1.2"
}

row_scrub() {
  local name line
  make_clips gop30 gop250
  for name in gop30 gop250; do
    line=$("$bin/scrubbing" "$clips/$name.mp4" 20 $width $height)
    row "scrubbing, $name: last request shown after" "$(value "$line" release) ms; $(value "$line" shown) frames shown; $(value "$line" peak) MiB" \
      "one exact seek there: $(value "$line" alone) ms" "$(ratio "$(value "$line" release)" "$(value "$line" alone)")" "1 exact seek"
    row "scrubbing, $name: longest call on the main thread" "$(value "$line" call) ms (event loop late by $(value "$line" gap) ms at most)" \
      "–" "–" "8 ms"
  done
}

row_trim() {
  local name line rounds=5
  [ -z "$quick" ] || rounds=1
  make_clips gop30 gop250
  for name in gop30 gop250; do
    line=$("$bin/trimming" "$clips/$name.mp4" 6 12 14 "$rounds" $width $height)
    row "end handle released, $name: until the picture moves" "$(value "$line" median) ms, at most $(value "$line" worst) ms; then $(value "$line" stall) ms between frames at most; $(value "$line" peak) MiB" \
      "–" "–" "100 ms"
  done
}

row_thumbnails() {
  local name line theirs=0 i theirs_peak
  make_clips gop30 gop250
  for name in gop30 gop250; do
    line=$("$bin/thumbnails" "$clips/$name.mp4" 20)
    timed ffmpeg -v error -nostdin -i "$clips/$name.mp4" -map 0:v:0 -f null -
    row "12 thumbnails, $name" "$(value "$line" took) ms, $(value "$line" images) images, at most $(value "$line" furthest) s off; $(value "$line" peak) MiB" \
      "one whole decode $took ms; $peak MiB" "$(ratio "$(value "$line" took)" "$took")" "$([ $name = gop250 ] && echo 1.1 || echo –)"
    if ! have ffmpegthumbnailer; then
      row "12 thumbnails, $name" "the same" "ffmpegthumbnailer is not installed" "–" "0.15"
      continue
    fi
    theirs=0
    theirs_peak=0
    for i in 0 1 2 3 4 5 6 7 8 9 10 11; do
      timed ffmpegthumbnailer -i "$clips/$name.mp4" -o "$work/$i.png" -s 320 -t "$(awk -v i=$i 'BEGIN { printf "00:00:%02d", (i + 0.5) / 12 * 20 }')"
      theirs=$(awk -v a="$theirs" -v b="$took" 'BEGIN { print a + b }')
      theirs_peak=$((peak > theirs_peak ? peak : theirs_peak))
    done
    row "12 thumbnails, $name" "the same" "ffmpegthumbnailer $theirs ms; $theirs_peak MiB" "$(ratio "$(value "$line" took)" "$theirs")" "0.15"
  done
}

row_ready() {
  local name rounds=7 i line first='' title
  [ -z "$quick" ] || rounds=2
  make_clips short
  lengthen ten_minutes short 30
  lengthen three_hours short 540
  for name in short ten_minutes three_hours; do
    : >"$work/ours"; : >"$work/theirs"; : >"$work/first"; : >"$work/alone"
    for ((i = 0; i <= rounds; ++i)); do
      line=$("$bin/choose_to_ready" "$clips/$name.mp4")
      timed ffprobe -v error -print_format json -show_format -show_streams "$clips/$name.mp4"
      [ $i -gt 0 ] || continue # the first round only warms up
      value "$line" ready >>"$work/ours"
      echo "$took" >>"$work/theirs"
      value "$line" first >>"$work/first"
      value "$("$bin/choose_to_ready" "$clips/$name.mp4" without-thumbnails)" first >>"$work/alone"
    done
    local ours theirs
    ours=$(median <"$work/ours")
    theirs=$(median <"$work/theirs")
    case $name in short) title='20 s' ;; ten_minutes) title='10 min' ;; *) title='3 h' ;; esac
    first=${first:-$ours}
    row "choose to ready, $title" "$ours ms; $(value "$line" peak) MiB" "ffprobe $theirs ms; $peak MiB" \
      "$(awk -v a="$ours" -v b="$theirs" 'BEGIN { printf "%+.0f ms", a - b }'); $(ratio "$ours" "$first") of 20 s" "+350 ms; 1.3"
    row "first frame, $title" "$(median <"$work/first") ms" "without thumbnails $(median <"$work/alone") ms" \
      "$(ratio "$(median <"$work/first")" "$(median <"$work/alone")")" "not slower"
  done
}

# cost_of_mpv NAME SECONDS: plays a clip with mpv; sets `cpu` to the processor time per second, including the start, and
# `peak` to the peak memory in MiB.
cost_of_mpv() {
  /usr/bin/time -o "$work/time" -f '%U %S %M' bash -c "$(declare -f play_mpv); width=$width height=$height; \
    play_mpv '$clips/$1.mp4' --no-terminal --start=0 --ab-loop-a=0 --ab-loop-b=2 --ab-loop-count=$(($2 / 2 - 1)) --end=2" >/dev/null 2>&1
  cpu=$(awk -v n="$2" '{ printf "%.3f", ($1 + $2) / n }' "$work/time")
  peak=$(awk '{ printf "%.0f", $3 / 1024 }' "$work/time")
}
row_cpu() {
  local seconds=20 line theirs='mpv or Xvfb is not installed' compared=–
  [ -z "$quick" ] || seconds=4
  make_clips fast
  line=$("$bin/preview_cost" "$clips/fast.mp4" 0 2 $seconds $width $height)
  if can_play_mpv; then
    cost_of_mpv fast $seconds
    theirs="mpv $cpu s, with its start; $peak MiB"
    compared=$(ratio "$(value "$line" cpu)" "$cpu")
  fi
  row "processor time of a second, 1080p60" "$(value "$line" cpu) s at $(value "$line" fps) fps, without a window; $(value "$line" peak) MiB" \
    "$theirs" "$compared" 1.0
}

# memory_of_mpv NAME END SECONDS: loops a clip with mpv for some seconds; sets `peak` to the peak memory and `looping`
# to the final memory, in MiB.
memory_of_mpv() {
  play_mpv "$clips/$1.mp4" --no-terminal --start=0 --ab-loop-a=0 --ab-loop-b="$2" >/dev/null 2>&1 &
  local shell=$! player
  sleep "$3"
  player=$(pgrep -P $shell mpv || echo $shell)
  peak=$(awk '/VmHWM/ { printf "%.0f", $2 / 1024 }' "/proc/$player/status")
  looping=$(awk '/VmRSS/ { printf "%.0f", $2 / 1024 }' "/proc/$player/status")
  kill "$player"
  wait $shell 2>/dev/null || true
}
row_memory() {
  local seconds=15 end line theirs compared
  [ -z "$quick" ] || seconds=6
  make_clips uhd
  for end in 2 9.5; do
    theirs='mpv or Xvfb is not installed' compared=–
    line=$("$bin/preview_cost" "$clips/uhd.mp4" 0 $end $seconds $width $height)
    if can_play_mpv; then
      memory_of_mpv uhd $end $seconds
      theirs="mpv $looping MiB, at most $peak MiB"
      compared="$(ratio "$(value "$line" memory)" "$looping"), at most $(ratio "$(value "$line" peak)" "$peak")"
    fi
    row "memory, $end s of 4K looping" "$(value "$line" memory) MiB, at most $(value "$line" peak) MiB, without a window" \
      "$theirs" "$compared" 1.0
  done
}

echo "| what | ours | other tool | ratio | target |"
echo "|---|---|---|---|---|"
for name in "${rows[@]}"; do
  "row_$name"
done
