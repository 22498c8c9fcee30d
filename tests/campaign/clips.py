"""The clips of the campaign: many containers and codecs that FFmpeg writes here, and the peculiarities of real files."""

import struct
import subprocess

FFMPEG = ["ffmpeg", "-hide_banner", "-loglevel", "error", "-nostdin", "-y"]
X264 = "-c:v libx264 -preset ultrafast -pix_fmt yuv420p -g 5"
QUICK_VP9 = "-c:v libvpx-vp9 -deadline realtime -cpu-used 8"


def picture(size="160x90", rate=25, seconds=0.4):
    return f"-f lavfi -i testsrc2=s={size}:r={rate}:d={seconds}"


def sound(seconds=0.4, layout="stereo"):
    return f"-f lavfi -i aevalsrc=sin(2500*t):d={seconds}:s=48000:c={layout}"


BOTH = f"{picture()} {sound()}"
PAL = picture("720x576")

# Name of the file: inputs, output options.
COMBINATIONS = {
    # H.264 and its formats
    "plain.mp4": (BOTH, X264),
    "faststart.mp4": (BOTH, f"{X264} -movflags +faststart"),
    "odd-size.mp4": (picture("161x91"), "-c:v libx264 -pix_fmt yuv444p"),
    "odd-height.mkv": (picture("160x91"), "-c:v libx264 -pix_fmt yuv422p"),
    "422.mp4": (BOTH, "-c:v libx264 -pix_fmt yuv422p"),
    "444-10bit.mkv": (BOTH, "-c:v libx264 -pix_fmt yuv444p10"),
    "10bit.mp4": (BOTH, "-c:v libx264 -pix_fmt yuv420p10"),
    "gray.mp4": (picture(), "-c:v libx264 -pix_fmt gray"),
    "rgb.mp4": (picture(), "-c:v libx264rgb -pix_fmt rgb24"),
    "full-range.mp4": (picture(), "-c:v libx264 -pix_fmt yuvj420p"),
    "lossless.mp4": (picture(), "-c:v libx264 -qp 0"),
    "interlaced.mp4": (picture("160x92"), "-vf interlace -c:v libx264 -flags +ilme+ildct"),
    "open-gop.mp4": (picture(), "-c:v libx264 -bf 3 -x264-params open-gop=1:keyint=5:min-keyint=5"),
    "one-frame.mp4": (picture(), f"{X264} -frames:v 1"),
    "two-frames.mp4": (picture(), f"{X264} -frames:v 2"),
    "wide.mp4": (picture("320x16"), X264),
    "nearly-square.mp4": (picture("92x90"), X264),
    "tiny.mp4": (picture("18x16"), X264),
    "dense.mp4": (picture(rate=1000, seconds=0.1), X264),
    "slow.mp4": (picture(rate=4), X264),
    # Times
    "variable-rate.mp4": (BOTH, f"-vf select='not(mod(n\\,3))+eq(n\\,4)' -vsync vfr {X264}"),
    "gap.mkv": (picture(), f"-vf setpts='PTS+gt(N\\,4)*3/TB' -vsync vfr {X264}"),
    "late-picture.mkv": (f"{sound(0.5)} -itsoffset 0.2 {picture()}", f"-map 1 -map 0 {X264} -c:a pcm_s16le"),
    "late-start.mkv": (BOTH, f"{X264} -output_ts_offset 5"),
    "late-start.ts": (BOTH, f"{X264} -output_ts_offset 20"),
    "wrapping.ts": (BOTH, f"{X264} -muxdelay 0 -output_ts_offset 95443.5"),
    "negative.mkv": (BOTH, f"{X264} -output_ts_offset -0.2 -avoid_negative_ts disabled"),
    "edit-list.mp4": ("-ss 0.12 -i plain.mp4", "-c copy"),
    "delayed.mp4": (f"{sound(0.5)} -itsoffset 0.2 {picture()}", f"-map 1 -map 0 {X264}"),
    "no-edit-list.mp4": (BOTH, f"{X264} -bf 2 -use_editlist 0"),
    "still.mkv": (picture(rate=5), f"-vf loop=1:1:0 {X264}"),
    # Turned, mirrored and stretched
    "turned-180.mp4": ("-i plain.mp4", "-c copy -metadata:s:v:0 rotate=180"),
    "turned-90.mp4": ("-i tall.mp4", "-c copy -metadata:s:v:0 rotate=90"),
    "turned-270.mov": ("-i tall.mp4", "-c copy -metadata:s:v:0 rotate=270"),
    "turned-upright.mp4": ("-i plain.mp4", "-c copy -metadata:s:v:0 rotate=90"),
    "turned-45.mp4": ("-i plain.mp4", "-c copy -metadata:s:v:0 rotate=45"),
    "tall.mp4": (picture("90x160"), X264),
    "square.mp4": (picture("90x90"), X264),
    "pixels-4-3.mp4": (picture("120x90"), f"-vf setsar=4/3 {X264}"),
    "pixels-1-9.mkv": (picture(), f"-vf setsar=1/9 {X264}"),
    "pixels-16-11.ts": (picture("176x144"), "-vf setsar=16/11 -c:v mpeg2video"),
    # Streams
    "sound-longer.mkv": (f"{picture()} {sound(1.5)}", X264),
    "sound-shorter.mp4": (f"{picture(seconds=0.5)} {sound(0.1)}", X264),
    "three-sounds.mkv": (
        f"{picture()} {sound()} {sound(layout='mono')} {sound(layout='5.1')}",
        f"-map 0 -map 1 -map 2 -map 3 {X264} -c:a:0 ac3 -c:a:1 libmp3lame -c:a:2 flac",
    ),
    "six-channels.mov": (f"{picture()} {sound(layout='5.1')}", f"{X264} -c:a pcm_s24le"),
    "eight-channels.mkv": (f"{picture()} {sound(layout='7.1')}", f"{X264} -c:a flac"),
    "low-rate-sound.avi": (BOTH, f"{X264} -ar 8000 -c:a pcm_u8"),
    "two-pictures.mkv": (f"{picture()} {picture('64x36')}", f"-map 0 -map 1 {X264}"),
    "small-picture-first.mp4": (f"{picture('64x36')} {picture()}", f"-map 0 -map 1 {X264}"),
    "cover.mp4": (f"{BOTH} -i cover.png", f"-map 0 -map 1 -map 2 {X264} -c:v:1 png -disposition:v:1 attached_pic"),
    "cover-first.mp4": (
        f"-i cover.png {BOTH}",
        f"-map 0 -map 1 -map 2 {X264} -c:v:0 png -disposition:v:0 attached_pic",
    ),
    "only-cover.m4a": (
        f"-i cover.png {sound()}",
        "-map 0 -map 1 -c:v png -c:a aac -f mp4 -disposition:v:0 attached_pic",
    ),
    "subtitles.mp4": (f"{BOTH} -i words.srt", f"-map 0 -map 1 -map 2 {X264} -c:s mov_text"),
    "subtitles.mkv": (f"{BOTH} -i words.srt", f"-map 2 -map 0 -map 1 {X264} -c:s ass"),
    "attachment.mkv": (BOTH, f"{X264} -attach words.srt -metadata:s:t mimetype=text/plain"),
    "time-code.mov": (BOTH, f"{X264} -timecode 01:02:03:04"),
    "chapters.mkv": (f"{BOTH} -i chapters.txt", f"-map_metadata 2 {X264}"),
    "tags.mp4": (BOTH, f"{X264} -metadata title=ünïcödé -metadata comment=%s%n"),
    "sound-only.m4a": (sound(), "-c:a aac"),
    # Fragments
    "fragments.mp4": (BOTH, f"{X264} -movflags empty_moov+frag_keyframe"),
    "fragment-each-frame.mp4": (BOTH, f"{X264} -movflags empty_moov+frag_every_frame+default_base_moof"),
    "fragments-cmaf.mp4": (BOTH, f"{X264} -movflags cmaf+frag_keyframe"),
    "fragments-separate.mp4": (BOTH, f"{X264} -movflags frag_keyframe+separate_moof"),
    "smooth.ismv": (BOTH, f"{X264} -f ismv"),
    # Codecs
    "hevc.mp4": (BOTH, "-c:v libx265 -x265-params log-level=none -tag:v hvc1"),
    "hevc-10bit.mkv": (
        picture(),
        "-c:v libx265 -x265-params log-level=none:colorprim=bt2020:transfer=smpte2084:colormatrix=bt2020nc"
        " -pix_fmt yuv420p10",
    ),
    "hevc-444.mp4": (picture(), "-c:v libx265 -x265-params log-level=none -pix_fmt yuv444p"),
    "av1.mp4": (BOTH, "-c:v libaom-av1 -cpu-used 8 -usage realtime"),
    "av1-10bit.webm": (picture(), "-c:v libaom-av1 -cpu-used 8 -pix_fmt yuv420p10"),
    "vp8.webm": (BOTH, "-c:v libvpx -deadline realtime -c:a libvorbis"),
    "vp8-alpha.webm": (picture(), "-c:v libvpx -deadline realtime -pix_fmt yuva420p -auto-alt-ref 0"),
    "vp9.webm": (BOTH, f"{QUICK_VP9} -c:a libopus"),
    "vp9-444-12bit.webm": (picture(), f"{QUICK_VP9} -pix_fmt yuv444p12"),
    "vp9.mp4": (BOTH, f"{QUICK_VP9} -c:a libopus"),
    "theora.ogv": (BOTH, "-c:v libtheora -c:a libvorbis"),
    "theora.mkv": (BOTH, "-c:v libtheora -c:a flac"),
    "ffv1.mkv": (BOTH, "-c:v ffv1 -level 3 -c:a flac"),
    "ffv1-16bit.mkv": (picture(), "-c:v ffv1 -level 3 -pix_fmt yuv444p16"),
    "ffv1-bayer.avi": (picture(), "-c:v ffv1 -pix_fmt bgr0"),
    "huffyuv.avi": (BOTH, "-c:v huffyuv -c:a pcm_s16le"),
    "huffyuv.mkv": (BOTH, "-c:v huffyuv -pix_fmt rgb24"),
    "ffvhuff.avi": (picture(), "-c:v ffvhuff"),
    "utvideo.avi": (picture(), "-c:v utvideo"),
    "magicyuv.avi": (picture(), "-c:v magicyuv"),
    "mjpeg.avi": (BOTH, "-c:v mjpeg -c:a pcm_s16le"),
    "mjpeg-444.mov": (BOTH, "-c:v mjpeg -pix_fmt yuvj444p"),
    "mjpeg.mkv": (picture(), "-c:v mjpeg"),
    "png.mov": (picture(), "-c:v png"),
    "png.avi": (picture(), "-c:v png -pix_fmt rgba"),
    "png.mkv": (picture(), "-c:v png -pix_fmt gray16be"),
    "jpeg2000.mov": (picture(), "-c:v jpeg2000"),
    "prores.mov": (BOTH, "-c:v prores_ks -profile:v 2 -c:a pcm_s24le"),
    "prores-4444.mov": (picture(), "-c:v prores_ks -profile:v 4 -pix_fmt yuva444p10"),
    "dnxhr.mov": (picture("256x144"), "-c:v dnxhd -profile:v dnxhr_sq -pix_fmt yuv422p"),
    "dnxhr.mxf": (picture("256x144"), "-c:v dnxhd -profile:v dnxhr_hq -pix_fmt yuv422p"),
    "cineform.mov": (picture(), "-c:v cfhd"),
    "animation.mov": (picture(), "-c:v qtrle"),
    "animation-argb.mov": (picture(), "-c:v qtrle -pix_fmt argb"),
    "raw.mov": (picture(), "-c:v rawvideo -pix_fmt uyvy422"),
    "v210.mov": (picture(), "-c:v v210"),
    "raw.avi": (BOTH, "-c:v rawvideo -pix_fmt bgr24"),
    "raw.nut": (BOTH, "-c:v rawvideo -pix_fmt yuv420p -c:a pcm_s16le"),
    "palette.avi": (picture(), "-c:v rawvideo -pix_fmt pal8 -vf format=pal8"),
    "mpeg4.mp4": (BOTH, "-c:v mpeg4 -bf 2"),
    "mpeg4.avi": (BOTH, "-c:v mpeg4 -vtag xvid -c:a libmp3lame"),
    "mpeg4.m4v": (picture(), "-c:v mpeg4"),
    "msmpeg4.avi": (BOTH, "-c:v msmpeg4v2 -c:a libmp3lame"),
    "h264.avi": (BOTH, f"{X264} -c:a libmp3lame"),
    "h263.3gp": (f"{picture('176x144')} {sound(layout='mono')}", "-c:v h263 -c:a aac"),
    "flv1.flv": (BOTH, "-c:v flv -c:a libmp3lame -ar 44100"),
    "h264.flv": (BOTH, X264),
    "flash.swf": (picture(), "-c:v flv"),
    "wmv2.wmv": (BOTH, "-c:v wmv2 -c:a wmav2"),
    "wmv1.asf": (picture(), "-c:v wmv1"),
    "real.rm": (picture("176x144"), "-c:v rv10"),
    "snow.nut": (picture(), "-c:v snow -strict -2"),
    "cinepak.avi": (picture("160x92"), "-c:v cinepak -frames:v 3"),
    "gif.gif": (picture(), ""),
    "animated.apng": (picture(), "-c:v apng -f apng"),
    # Broadcast
    "mpeg1.mpg": (BOTH, "-c:v mpeg1video -c:a mp2"),
    "mpeg2.vob": (BOTH, "-c:v mpeg2video -c:a ac3 -f vob"),
    "mpeg2.ts": (BOTH, "-c:v mpeg2video -c:a mp2"),
    "mpeg2-422.mxf": (f"{picture()} {sound()}", "-c:v mpeg2video -pix_fmt yuv422p -c:a pcm_s16le"),
    "mpeg2.mxf": (BOTH, "-c:v mpeg2video -c:a pcm_s16le"),
    "h264.ts": (BOTH, X264),
    "h264.m2ts": (BOTH, f"{X264} -c:a ac3"),
    "hevc.ts": (BOTH, "-c:v libx265 -x265-params log-level=none"),
    "two-programs.ts": (
        f"{picture()} {picture('64x36')}",
        f"-map 0 -map 1 {X264} -program title=a:st=0 -program title=b:st=1",
    ),
    "dv.avi": (PAL, "-c:v dvvideo -frames:v 2"),
    "dv.dv": (f"{PAL} {sound(0.1)}", "-c:v dvvideo -pix_fmt yuv420p -frames:v 2"),
    "broadcast.gxf": (PAL, "-c:v mpeg2video -frames:v 3"),
    "recorded.wtv": (BOTH, "-c:v mpeg2video -c:a mp2"),
    # Bare streams, and images
    "raw.y4m": (picture(), "-pix_fmt yuv420p"),
    "raw-444.y4m": (picture(), "-pix_fmt yuv444p -strict -1"),
    "bare.h264": (picture(), X264),
    "bare.hevc": (picture(), "-c:v libx265 -x265-params log-level=none"),
    "bare.m2v": (picture(), "-c:v mpeg2video"),
    "bare.ivf": (picture(), QUICK_VP9),
    "bare.obu": (picture(), "-c:v libaom-av1 -cpu-used 8 -usage realtime"),
    "bare.mjpeg": (picture(), "-c:v mjpeg"),
    "image.png": (picture(), "-frames:v 1 -update 1"),
    "image.jpg": (picture(), "-frames:v 1 -update 1"),
    "image%03d.webp": (picture(), "-frames:v 1 -update 1"),
    # Names
    "-i.mp4": ("-i plain.mp4", "-c copy"),
    " blanks and 'quotes' \".mp4": ("-i plain.mp4", "-c copy"),
    "50%d%s%n.mp4": ("-i plain.mp4", "-c copy"),
    "東京 é️ 🎬.mp4": ("-i plain.mp4", "-c copy"),
    "line\nbreak.mp4": ("-i plain.mp4", "-c copy"),
    "http:example.mp4": ("-i plain.mp4", "-c copy"),
    "a|b;c&d$(e)#f?g=h.mp4": ("-i plain.mp4", "-c copy"),
    "back\\slash.mp4": ("-i plain.mp4", "-c copy"),
    "bytes-\udcff\udcfe.mp4": ("-i plain.mp4", "-c copy"),
    "no-suffix": ("-i plain.mp4", "-c copy -f mp4"),
    "wrong-suffix.avi": ("-i plain.mp4", "-c copy -f matroska"),
    "UPPER.MP4": ("-i plain.mp4", "-c copy"),
    "x" * 245 + ".mp4": ("-i plain.mp4", "-c copy"),
}

# Files that are no clips, or that FFmpeg cannot write.
CONTENTS = {
    "empty.mp4": lambda plain: b"",
    "words.mp4": lambda plain: b"no video at all, only words\n",
    "zeros.mp4": lambda plain: bytes(5000),
    "half.mp4": lambda plain: plain[: len(plain) // 2],
    "twice.mp4": lambda plain: plain + plain,
    "playlist.m3u8": lambda plain: b"#EXTM3U\n#EXTINF:1,\nplain.mp4\n#EXT-X-ENDLIST\n",
    "list.mp4": lambda plain: b"ffconcat version 1.0\nfile plain.mp4\n",
    "huge-box.mp4": lambda plain: plain + struct.pack(">I4sQ", 1, b"free", 1 << 62),
    "sizes.ts": None,  # the picture grows in the middle
}


def make_inputs(folder):
    """Files that other clips are made of."""
    (folder / "words.srt").write_text("1\n00:00:00,000 --> 00:00:00,300\nWords\n")
    (folder / "chapters.txt").write_text(
        ";FFMETADATA1\n[CHAPTER]\nTIMEBASE=1/1000\nSTART=0\nEND=200\ntitle=One\n[CHAPTER]\nTIMEBASE=1/1000\nSTART=200\n"
        "END=400\ntitle=Two\n"
    )
    run(folder, f"{picture()} -frames:v 1 -update 1", "cover.png")
    for name in ("plain.mp4", "tall.mp4"):
        run(folder, " ".join(COMBINATIONS[name]), name)


def run(folder, words, name):
    # A name may begin with "-" or look like a protocol or a pattern.
    subprocess.run([*FFMPEG, *words.split(), "file:" + name], cwd=folder, check=True, capture_output=True)


def make(folder, name):
    """Makes a clip in the folder, after `make_inputs`; returns its path."""
    if name == "sizes.ts":
        for part, size in (("small.ts", "160x90"), ("large.ts", "320x180")):
            run(folder, f"{picture(size)} {X264}", part)
        (folder / name).write_bytes((folder / "small.ts").read_bytes() + (folder / "large.ts").read_bytes())
    elif name in CONTENTS:
        (folder / name).write_bytes(CONTENTS[name]((folder / "plain.mp4").read_bytes()))
    elif not (folder / name).exists():
        run(folder, " ".join(COMBINATIONS[name]), name)
    return folder / name


def all_names():
    return [*COMBINATIONS, *CONTENTS]
