"""Makes clips for the tests, and examines exported files."""

import json
import operator
import random
import subprocess

FFMPEG = ["ffmpeg", "-hide_banner", "-loglevel", "error", "-nostdin", "-y"]
SOUND = ["-f", "lavfi", "-i", "sine=frequency=440:sample_rate=48000:duration=6"]
H264 = ["-c:v", "libx264", "-preset", "ultrafast", "-pix_fmt", "yuv420p", "-c:a", "aac"]


def make_clip(file, size, seconds=6):
    subprocess.run(
        [*FFMPEG, "-f", "lavfi", "-i", f"testsrc2=size={size}:rate=30:duration={seconds}", *SOUND, *H264, str(file)],
        check=True,
    )


def make_sound(file):
    subprocess.run([*FFMPEG, *SOUND, str(file)], check=True)


def make_mosaic(file, codec=H264):
    """A clip of 1280 × 720 and 6 s. Each second shows a different picture of random 8 × 8 blocks, so that a crop from a
    slightly different position or from another second differs clearly."""
    blocks = random.Random(720).randbytes(160 * 90 * 3 * 6)
    subprocess.run(
        [
            "ffmpeg",
            "-hide_banner",
            "-loglevel",
            "error",
            "-y",
            "-f",
            "rawvideo",
            "-pix_fmt",
            "rgb24",
            "-video_size",
            "160x90",
            "-framerate",
            "1",
            "-i",
            "-",
            *SOUND,
            "-vf",
            "fps=30,scale=1280:720:flags=neighbor",
            *codec,
            str(file),
        ],
        input=blocks,
        check=True,
    )


def probe(file):
    report = subprocess.run(
        ["ffprobe", "-v", "error", "-show_streams", "-show_format", "-of", "json", str(file)],
        capture_output=True,
        check=True,
    ).stdout
    return json.loads(report)


def is_whole(file):
    """Whether the file exists and can be read, so its index has been written."""
    return subprocess.run(["ffprobe", "-v", "error", str(file)], capture_output=True).returncode == 0


def frame_picture(file, second, filters, form="gray"):
    """The pixels of one frame, row by row, in the pixel format `form`; by default only their brightness."""
    return subprocess.run(
        [
            *FFMPEG,
            "-ss",
            str(second),
            "-i",
            str(file),
            "-frames:v",
            "1",
            "-vf",
            f"{filters},format={form}",
            "-f",
            "rawvideo",
            "-",
        ],
        capture_output=True,
        check=True,
    ).stdout


def mean_difference(one, other):
    assert len(one) == len(other) > 0, f"pictures of {len(one)} and {len(other)} pixels"
    return sum(map(abs, map(operator.sub, one, other))) / len(one)


def half_difference(result, half, source, crop):
    """The mean difference, from 0 to 255, between one half of an exported frame and a crop of a source frame. `half` is
    0 for the upper half; `crop` is (x, y, width, height) in pixels; a frame is a pair of file and time in seconds."""
    video = probe(result[0])["streams"][0]
    width, height = video["width"], video["height"] // 2
    x, y, crop_width, crop_height = crop
    return mean_difference(
        frame_picture(*result, f"crop={width}:{height}:0:{half * height}"),
        frame_picture(*source, f"crop={crop_width}:{crop_height}:{x}:{y},scale={width}:{height}:flags=bicubic"),
    )


class Crop:
    """A crop of a 1280 × 720 clip, in fractions of its frame. `panel` is width / height of half the output."""

    FRAME = (1280, 720)
    ASPECT = 1280 / 720

    def __init__(self, x, y, width, height):
        self.x, self.y, self.width, self.height = x, y, width, height

    @classmethod
    def first_pair(cls, panel=1080 / 960):
        """The two initial crops of a new clip."""
        width = 0.72 * panel / cls.ASPECT
        return cls(0.04, 0.14, width, 0.72), cls(0.96 - width, 0.14, width, 0.72)

    def reshaped(self, panel):
        """The crop for another `panel`, with the same width and centre."""
        height = self.width * self.ASPECT / panel
        return Crop(self.x, self.y + (self.height - height) / 2, self.width, height)

    def moved(self, x, y):
        """The crop moved by a distance in pixels."""
        return Crop(self.x + x / 1280, self.y + y / 720, self.width, self.height)

    def widened(self, pixels, panel):
        """The crop with a width larger by `pixels`, and the same upper left corner."""
        width = self.width + pixels / 1280
        return Crop(self.x, self.y, width, width * self.ASPECT / panel)

    def pixels(self):
        """The crop in pixels, rounded down to even numbers as in an export."""
        sides = (self.x * 1280, self.y * 720, self.width * 1280, self.height * 720)
        return tuple(int(side + 1e-6) // 2 * 2 for side in sides)
