"""Takes the display away from the program, or kills the program, while it works. The program ends at once and leaves
no child process, no temporary file and no part of a file that it exported."""

import pathlib
import shutil
import tempfile
import time

from clips import make_clip
from desktop import Desktop, Program, eventually
from tools import descendants_of, is_running
from window_test import WindowTest, executable, main

LIMIT = 2  # seconds


def take_display(program):
    program.desktop.server.process.kill()


def take_display_and_terminate(program):
    take_display(program)
    program.process.terminate()


def kill(program):
    program.process.kill()


WAYS = (take_display, take_display_and_terminate, kill)


class Killed(WindowTest):
    @classmethod
    def setUpClass(cls):
        cls.folder = pathlib.Path(tempfile.mkdtemp(prefix="stackreel-killed-"))
        cls.addClassCleanup(shutil.rmtree, cls.folder, ignore_errors=True)
        cls.clip = cls.folder / "long.mp4"
        make_clip(cls.clip, "1920x1080", 20)
        cls.out = cls.folder / "out"
        cls.out.mkdir()

    def end_in_every_way(self, begin):
        """For each way of ending: starts the program on a desktop of its own, calls `begin` to start a task, and ends the
        program."""
        for way in WAYS:
            with self.subTest(way.__name__):
                for each in self.out.iterdir():
                    each.unlink()
                self.desktop = Desktop()
                try:
                    program = Program(self.desktop, executable)
                    try:
                        begin(program)
                        self.assert_leaves_nothing(program, way)
                    finally:
                        program.close()
                finally:
                    self.desktop.close()

    def assert_leaves_nothing(self, program, way):
        children = descendants_of(program.process.pid)
        before = time.monotonic()
        way(program)
        program.process.wait(LIMIT)
        eventually(lambda: not any(is_running(each) for each in children), "no child that is left", LIMIT)
        eventually(lambda: not list(self.desktop.folder.glob("Stackreel-Process-*")), "no scratch folder", LIMIT)
        eventually(lambda: not list(self.out.iterdir()), "no part of an export", LIMIT)
        self.assertLess(time.monotonic() - before, LIMIT)

    def load(self, program):
        program.choose(self.clip)
        eventually(program.export_is_offered, "a loaded clip")

    def test_while_a_clip_plays(self):
        self.end_in_every_way(self.load)

    def test_while_an_export_is_written(self):
        def begin(program):
            self.load(program)
            program.export_to(self.out / "never.mp4")
            eventually(lambda: any(each.stat().st_size > 0 for each in self.out.iterdir()), "a file that grows")

        self.end_in_every_way(begin)


if __name__ == "__main__":
    main()
