"""What all tests of the window have in common: the program they are given, and a picture of what was seen last when
one fails.

Their usage: TEST.py EXECUTABLE PICTURE_FOLDER [TEST…]
"""

import functools
import pathlib
import sys
import unittest

from clips import half_difference, probe
from desktop import Desktop, Program

executable, pictures = sys.argv[1], pathlib.Path(sys.argv[2])

# Of a crop that is right, after two lossy encoders; one that is off by two pixels differs by twice as much.
ALIKE = 4


class WindowTest(unittest.TestCase):
    """A test on a `desktop` of its class's, of the kind `DESKTOP`. The whole screen is kept when the test fails."""

    DESKTOP = Desktop

    @classmethod
    def setUpClass(cls):
        cls.desktop = cls.DESKTOP()
        cls.addClassCleanup(cls.desktop.close)

    def __init__(self, name="runTest"):
        super().__init__(name)
        setattr(self, name, functools.partial(self.watch, getattr(self, name)))

    def watch(self, test):
        try:
            test()
        except unittest.SkipTest:
            raise
        except BaseException:
            self.keep_screen()
            raise

    def keep_screen(self):
        pictures.mkdir(parents=True, exist_ok=True)
        file = pictures / f"{self.id().removeprefix('__main__.')}.png"
        self.desktop.screenshot(file)
        print(f"The screen when it failed: {file}", file=sys.stderr)

    def start(self, tools=None, environment=None, arguments=()):
        """The program, until the end of the test."""
        program = Program(self.desktop, executable, tools, environment, arguments)
        self.addCleanup(program.close)
        return program

    def assert_ends_well(self, program):
        """Waits for the program to end by itself, which it does without a word."""
        self.assertEqual((program.wait(), program.complaints()), (0, ""))

    def assert_is_export(self, result, size, seconds, sound):
        streams = probe(result)["streams"]
        self.assertEqual([each["codec_type"] for each in streams], ["video", "audio"] if sound else ["video"])
        self.assertEqual((streams[0]["codec_name"], streams[0]["width"], streams[0]["height"]), ("h264", *size))
        self.assertAlmostEqual(float(streams[0]["duration"]), seconds, delta=0.05)

    def assert_shows(self, result, source, seconds, crops):
        """The exported halves are these crops (in pixels), in the first frame and in the last one. `seconds` are the
        range of the source that was exported."""
        first, end = seconds
        for where, second in ((0, first), (end - first - 0.05, end - 0.05)):
            for half, crop in enumerate(crops):
                difference = half_difference((result, where), half, (source, second), crop)
                with self.subTest(half=("top", "bottom")[half], second=second, crop=crop):
                    self.assertLess(difference, ALIKE, "the half does not show this crop")


def main():
    # The library calls the only names it has for actions and values deprecated.
    unittest.main(argv=sys.argv[:1] + sys.argv[3:], warnings="ignore")
