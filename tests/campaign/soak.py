#!/usr/bin/env python3
"""Makes clips and uses them for a long time in one process (soak.cpp).

soak.py PROGRAM SECONDS [SEED]
"""

import os
import subprocess
import sys
import tempfile
from pathlib import Path

SOUND = ["-f", "lavfi", "-i", "sine=r=48000"]

# The first clip is the one that loops while the figures are taken.
CLIPS = {
    "first.mp4": (2, "320x180", SOUND, ["-c:v", "libx264", "-g", "30", "-c:a", "aac"]),
    "sparse.mp4": (8, "640x360", SOUND, ["-c:v", "libx264", "-g", "250", "-c:a", "aac"]),
    "hevc.mkv": (3, "320x180", SOUND, ["-c:v", "libx265", "-x265-params", "log-level=error", "-c:a", "flac"]),
    "vp9.webm": (
        3,
        "320x180",
        SOUND,
        ["-c:v", "libvpx-vp9", "-deadline", "realtime", "-cpu-used", "8", "-c:a", "libopus"],
    ),
    "mpeg4.avi": (4, "352x288", SOUND, ["-c:v", "mpeg4", "-c:a", "mp3"]),
    "mpeg2.ts": (4, "320x180", SOUND, ["-c:v", "mpeg2video", "-c:a", "mp2"]),
    "silent.mov": (0.4, "320x180", [], ["-c:v", "mjpeg"]),
    "large.mp4": (3, "1920x1080", [], ["-c:v", "libx264", "-preset", "ultrafast", "-g", "60"]),
    # The preview needs a copy of this. The folder of the copies then stays open.
    "copied.nut": (1, "320x180", [], ["-c:v", "rawvideo"]),
}


def make(folder, name):
    length, size, sound, output = CLIPS[name]
    source = ["-f", "lavfi", "-i", f"testsrc2=s={size}:r=30"]
    command = ["ffmpeg", "-v", "error", "-nostdin", "-y", *source, *sound, "-t", str(length), *output]
    subprocess.run([*command, folder / name], check=True)


def main():
    program, seconds, *rest = sys.argv[1:]
    seed = rest[0] if rest else "1"
    with tempfile.TemporaryDirectory(prefix="soak-") as name:
        folder = Path(name)
        for clip in CLIPS:
            make(folder, clip)
        Path(folder / "words.mp4").write_text("not a video")
        clips = [folder / clip for clip in [*CLIPS, "words.mp4"]]
        print(f"seed {seed}, {len(clips)} clips", flush=True)
        # The copies for the preview also go there.
        environment = {**os.environ, "TMPDIR": name}
        return subprocess.run([program, seconds, seed, folder, *clips], env=environment, check=False).returncode


if __name__ == "__main__":
    sys.exit(main())
