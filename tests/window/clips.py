"""Clips to choose, and what is known of those exported."""

import json
import subprocess


def make_clip(file, size):
    subprocess.run(["ffmpeg", "-hide_banner", "-loglevel", "error", "-nostdin", "-y",
                    "-f", "lavfi", "-i", f"testsrc2=size={size}:rate=30:duration=6",
                    "-f", "lavfi", "-i", "sine=frequency=440:sample_rate=48000:duration=6",
                    "-c:v", "libx264", "-preset", "ultrafast", "-pix_fmt", "yuv420p", "-c:a", "aac", str(file)],
                   check=True)


def probe(file):
    report = subprocess.run(["ffprobe", "-v", "error", "-show_streams", "-show_format", "-of", "json", str(file)],
                            capture_output=True, check=True).stdout
    return json.loads(report)


def is_whole(file):
    """Whether the file is there and nothing of it is still to be written, as far as its index tells."""
    return subprocess.run(["ffprobe", "-v", "error", str(file)], capture_output=True).returncode == 0
