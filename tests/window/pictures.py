"""Reads screenshots, and finds out which second of a clip the preview shows."""

import collections
import functools
import re
import subprocess

from clips import frame_picture, mean_difference

CORAL, LIGHT_CORAL = (255, 90, 61), (255, 184, 166)
# Limit for the mean difference of two pictures of the same second. Two seconds of a mosaic differ by about 80. The same
# second, scaled by another algorithm and off by a pixel, differs by less than 30.
LARGEST_SCREEN_DIFFERENCE = 35
# An edge has at least this many pixels in a line. A block of a mosaic has at most 10, at scale factor 2.
LEAST_EDGE = 24


def edges(places):
    return [place for place, count in collections.Counter(places).items() if count >= LEAST_EDGE]


class Picture:
    """A picture: the colours of its pixels, row by row."""

    def __init__(self, rgb, width):
        self.rgb, self.width, self.height = rgb, width, len(rgb) // width // 3

    @classmethod
    def of_file(cls, file):
        width = int(subprocess.run(["identify", "-format", "%w", str(file)], capture_output=True, check=True).stdout)
        return cls(
            subprocess.run(["convert", str(file), "-depth", "8", "rgb:-"], capture_output=True, check=True).stdout,
            width,
        )

    def part(self, x, y, width, height):
        rows = (3 * ((y + row) * self.width + x) for row in range(height))
        return Picture(b"".join(self.rgb[at : at + 3 * width] for at in rows), width)

    def box(self, colour):
        """Left, top, width and height of the bounding box of this exact colour, or None. Rows and columns with few such
        pixels are ignored, because random blocks may contain any colour by chance."""
        places = [
            match.start() // 3
            for match in re.finditer(b"(?=" + re.escape(bytes(colour)) + b")", self.rgb)
            if match.start() % 3 == 0
        ]
        columns = edges(each % self.width for each in places)
        rows = edges(each // self.width for each in places)
        if not columns or not rows:
            return None
        return min(columns), min(rows), max(columns) - min(columns) + 1, max(rows) - min(rows) + 1

    def difference(self, other):
        """The mean difference to another picture, from 0 to 255."""
        return mean_difference(self.rgb, other.rgb)


@functools.cache
def top_strip(clip, second, width, height):
    """The top `height` rows of a preview of this width at a second of the clip."""
    filters = f"scale={width}:{width * 720 // 1280}:flags=bilinear,crop={width}:{height}:0:0"
    return frame_picture(clip, second + 0.5, filters, "rgb24")


def shown_second(strip, clip):
    """The second of a mosaic that the top strip of a preview shows, or None. The strip has the width of the preview."""
    return next(
        (
            second
            for second in range(6)
            if LARGEST_SCREEN_DIFFERENCE
            > mean_difference(strip.rgb, top_strip(clip, second, strip.width, strip.height))
        ),
        None,
    )
