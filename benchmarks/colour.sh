#!/usr/bin/env bash
# colour.sh [SECONDS]: what the conversion of colours costs in an export.
#
# Makes clips of SECONDS (4) of 1920 × 1080 at 30 pictures a second, one for each kind of source. Exports each through the
# front with conversion and, for comparison, without: then the front finds no ffprobe and changes no filter. For high dynamic
# range also without the colour tables, where zscale and tonemap take their place. Prints the wall time and the processor time
# of each, the shortest of ROUNDS (3) rounds, and the ratio of the processor times. The last line is the time in which
# ffprobe reports the colours of a source.
set -euo pipefail
export LC_ALL=C

seconds=${1:-4}
rounds=${ROUNDS:-3}
front=${SHIM:-$(dirname "$0")/../build/release/lib/stackreel/ffmpeg}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir "$work/only-ffmpeg" "$work/no-tables"
ln -s "$(command -v ffmpeg)" "$work/only-ffmpeg/ffmpeg"
cp "$front" "$work/no-tables/ffmpeg"

half() { echo "[$1Source]crop=w=874:h=776:x=$2:y=150,scale=1080:960:flags=bicubic,setsar=1,setpts=PTS-STARTPTS[$1]"; }
graph="[0:v:0]split=2[topSource][bottomSource];$(half top 76);$(half bottom 968)"
graph+=';[top][bottom]vstack=inputs=2,format=yuv420p[video]'

kinds=(bt709 bt601 full-range rgb gamma28 pq hlg interlaced)
declare -A formats=([pq]=yuv420p10le [hlg]=yuv420p10le [full-range]=yuvj420p [rgb]=gbrp) tags=(
  [bt709]=range=tv:color_primaries=bt709:color_trc=bt709:colorspace=bt709
  [bt601]=range=tv:color_primaries=bt470bg:color_trc=smpte170m:colorspace=bt470bg
  [full-range]=range=pc:color_primaries=bt709:color_trc=bt709:colorspace=bt709
  [rgb]=range=pc:colorspace=gbr
  [gamma28]=range=tv:color_primaries=bt470bg:color_trc=bt470bg:colorspace=bt470bg
  [pq]=range=tv:color_primaries=bt2020:color_trc=smpte2084:colorspace=bt2020nc
  [hlg]=range=tv:color_primaries=bt2020:color_trc=arib-std-b67:colorspace=bt2020nc
  [interlaced]=range=tv:color_primaries=bt709:color_trc=bt709:colorspace=bt709)

make_clip() {
  local codec=libx264 fields=()
  [ "$1" = rgb ] && codec=libx264rgb && formats[rgb]=rgb24
  [ "$1" = interlaced ] && fields=(-flags +ildct+ilme -x264-params tff=1)
  ffmpeg -v error -y -f lavfi -i "testsrc2=size=1920x1080:rate=30:duration=$seconds" \
    -vf "noise=alls=12:allf=t,format=${formats[$1]:-yuv420p},setparams=${tags[$1]}" \
    -c:v "$codec" -preset ultrafast -crf 20 "${fields[@]}" "$work/$1.mkv"
}

# export_once FRONT PATH CLIP: prints wall time and processor time.
export_once() {
  local TIMEFORMAT='%R %U %S'
  { time PATH=$2 "$1" -hide_banner -v error -nostdin -y -ss 0.000 -i "$3" -t "$seconds.000" -filter_complex "$graph" \
    -map '[video]' -c:v h264_videotoolbox -allow_sw 1 -b:v 12M -movflags +faststart -an "$work/out.mp4" 2>&3; } 3>&2 2>&1 |
    awk '{ print $1, $2 + $3 }'
}

# least FRONT PATH CLIP: the round with the least processor time.
least() {
  for ((round = 0; round < rounds; ++round)); do export_once "$@"; done | sort -n -k2 | head -1
}

row() {
  awk -v name="$1" -v wall="$2" -v cpu="$3" -v plain="$4" \
    'BEGIN { printf "%-24s %6.2f s %6.2f s processor %5.2f\n", name, wall, cpu, cpu / plain }'
}

for kind in "${kinds[@]}"; do
  make_clip "$kind"
  read -r wall plain < <(least "$front" "$work/only-ffmpeg" "$work/$kind.mkv")
  row "$kind, not converted" "$wall" "$plain" "$plain"
  read -r wall cpu < <(least "$front" "$PATH" "$work/$kind.mkv")
  row "$kind" "$wall" "$cpu" "$plain"
  if [ "$kind" = pq ] || [ "$kind" = hlg ]; then
    read -r wall cpu < <(least "$work/no-tables/ffmpeg" "$PATH" "$work/$kind.mkv")
    row "$kind, zscale" "$wall" "$cpu" "$plain"
  fi
done

entries=width,height,pix_fmt,color_range,color_space,color_transfer,color_primaries,field_order
TIMEFORMAT='ffprobe                  %R s'
time ffprobe -v error -select_streams v:0 -show_entries "stream=$entries" -of default "$work/bt709.mkv" > /dev/null
