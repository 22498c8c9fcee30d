"""The base of all tests of the window. It starts the program, and saves a screenshot if a test fails.

Usage of the tests: TEST.py EXECUTABLE PICTURE_FOLDER [TEST…]
"""

import functools
import pathlib
import sys
import unittest

from clips import half_difference, probe
from desktop import Desktop, Program

executable, pictures = sys.argv[1], pathlib.Path(sys.argv[2])

# The largest mean difference of a correct crop after two lossy encodings. A crop that is off by two pixels differs by
# twice as much.
ALIKE = 4


class WindowTest(unittest.TestCase):
    """Tests with a common `desktop` of the class `DESKTOP`. If a test fails, a screenshot of the desktop is saved."""

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
        """Starts the program, which is ended after the test."""
        program = Program(self.desktop, executable, tools, environment, arguments)
        self.addCleanup(program.close)
        return program

    def assert_ends_well(self, program):
        """Waits until the program has ended by itself. It must have written nothing."""
        self.assertEqual((program.wait(), program.complaints()), (0, ""))

    def assert_is_export(self, result, size, seconds, sound):
        streams = probe(result)["streams"]
        self.assertEqual([each["codec_type"] for each in streams], ["video", "audio"] if sound else ["video"])
        self.assertEqual((streams[0]["codec_name"], streams[0]["width"], streams[0]["height"]), ("h264", *size))
        self.assertAlmostEqual(float(streams[0]["duration"]), seconds, delta=0.05)

    def assert_shows(self, result, source, seconds, crops):
        """Checks that the exported halves show these crops (in pixels), in the first frame and in the last one. `seconds`
        is the exported range of the source."""
        first, end = seconds
        for where, second in ((0, first), (end - first - 0.05, end - 0.05)):
            for half, crop in enumerate(crops):
                difference = half_difference((result, where), half, (source, second), crop)
                with self.subTest(half=("top", "bottom")[half], second=second, crop=crop):
                    self.assertLess(difference, ALIKE, "the half does not show this crop")


def main():
    # Ignore warnings: the library marks the functions for actions and values as deprecated and has no others.
    unittest.main(argv=sys.argv[:1] + sys.argv[3:], warnings="ignore")
