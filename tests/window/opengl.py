"""Compares the program rendered by OpenGL, with Qt's basic and threaded render loops, with the software renderer, which
the program uses where there is no graphics processor.

Usage: opengl.py EXECUTABLE PICTURE_FOLDER TEST_OF_THE_PLAYER_SURFACE
"""

import pathlib
import subprocess
import sys

from clips import make_clip, make_mosaic
from desktop import Desktop, Program, eventually
from pictures import LIGHT_CORAL, Picture, shown_second
from services import CEILING
from window_test import WindowTest, executable, main

surface_test = sys.argv.pop(3)
SKIPPED = 77  # SKIP_RETURN_CODE of the tests
OPENGL = {"QT_QUICK_BACKEND": "rhi", "QSG_RHI_BACKEND": "opengl", "LIBGL_ALWAYS_SOFTWARE": "1"}
LOOPS = {"basic": OPENGL | {"QSG_RENDER_LOOP": "basic"}, "threaded": OPENGL | {"QSG_RENDER_LOOP": "threaded"}}
# Left edge and width of the preview in a new window, and the height of the strip to compare, in points.
LEFT, WIDTH, STRIP_HEIGHT = 42, 768, 40


def has_opengl(desktop):
    """Whether a Qt Quick window gets an OpenGL context on this system."""
    run = subprocess.run(
        [surface_test, "--gtest_filter=*IsBlackWithoutAPlayer"],
        capture_output=True,
        text=True,
        env=desktop.environment | OPENGL | {"QSG_INFO": "1"},
        timeout=CEILING,
    )
    return "RENDERER" in run.stderr


class OpenGL(WindowTest):
    @classmethod
    def setUpClass(cls):
        cls.desktop = screen
        cls.clip = cls.desktop.home / "Beach day.mp4"
        make_mosaic(cls.clip)
        make_clip(cls.desktop.home / "portrait.mp4", "360x640")
        cls.expected = cls.looks(Program(cls.desktop, executable))

    @classmethod
    def looks(cls, program):
        """Returns a picture of the window with a paused clip, and ends the program."""
        try:
            cls.rest(program)
            width, height = program.size()
            picture = Picture(program.picture(0, 0, width, height), width)
            program.key("ctrl+q")
            assert program.wait() == 0 and program.complaints() == "", program.complaints()
        finally:
            program.close()
        return picture

    @classmethod
    def rest(cls, program):
        program.choose(cls.clip)
        eventually(program.export_is_offered, "a loaded clip")
        program.key("space")
        _, height = program.size()
        program.click(LEFT + 18 + 300, height - 65)
        program.point(600, 20)
        eventually(lambda: cls.second(program) == 2, "the second of the clip that was clicked")
        eventually(program.thumbnails_are_shown, "thumbnails")

    @classmethod
    def second(cls, program):
        """The second of the clip that the preview shows, in a window of the initial width."""
        width, height = program.size()
        box = Picture(program.picture(0, 0, width, height), width).box(LIGHT_CORAL)
        if box is None or box[2] < WIDTH / 4:  # The program's icon also contains this colour.
            return None
        top = round(box[1] + 1 - 0.14 * WIDTH * 9 / 16)
        return shown_second(Picture(program.picture(LEFT, top, WIDTH, STRIP_HEIGHT), WIDTH), cls.clip)

    def test_looks_the_same_as_with_the_software_renderer(self):
        for loop, environment in LOOPS.items():
            with self.subTest(loop):
                seen = self.looks(Program(self.desktop, executable, environment=environment))
                # The renderers differ slightly in antialiasing of text and rounded corners.
                self.assertLess(seen.difference(self.expected), 2)

    def test_the_preview_follows_a_resize_and_a_new_clip(self):
        for loop, environment in LOOPS.items():
            with self.subTest(loop):
                program = Program(self.desktop, executable, environment=environment)
                try:
                    self.assert_drawn_by_opengl(program, threaded=loop == "threaded")
                    self.resize_and_replace(program)
                    program.key("ctrl+q")
                    self.assertEqual((program.wait(), program.complaints()), (0, ""))
                finally:
                    program.close()

    def resize_and_replace(self, program):
        self.rest(program)
        width, height = program.size()
        program.drag_frame(width - 3, height - 3, 0, 60, lambda: program.size()[1] > height + 40)
        eventually(lambda: self.second(program) == 2, "the preview in it")
        program.key("space")
        eventually(lambda: self.second(program) not in (None, 2), "a preview that plays")
        # A second clip replaces the first one; a clip that is rejected removes the preview.
        program.choose(self.clip)
        eventually(lambda: self.second(program) == 0, "the first picture")
        program.choose(self.desktop.home / "portrait.mp4")
        eventually(program.failure_is_shown, "a message")
        eventually(lambda: self.second(program) is None, "no preview")

    def assert_drawn_by_opengl(self, program, threaded):
        process = pathlib.Path(f"/proc/{program.process.pid}")
        # Mesa's driver is in libgallium since Mesa 24.3.
        loaded = (process / "maps").read_text()
        self.assertTrue("_dri.so" in loaded or "libgallium" in loaded, "OpenGL is not even loaded")
        names = {(task / "comm").read_text().strip() for task in (process / "task").iterdir()}
        self.assertEqual("QSGRenderThread" in names, threaded, names)

    def test_the_player_surface_tests_pass(self):
        for loop, environment in LOOPS.items():
            with self.subTest(loop):
                run = subprocess.run(
                    [surface_test],
                    env=self.desktop.environment | environment,
                    text=True,
                    capture_output=True,
                    timeout=CEILING * 5,
                )
                self.assertEqual((run.returncode, run.stderr), (0, ""), run.stdout[-3000:])


if __name__ == "__main__":
    screen = Desktop()
    try:
        if not has_opengl(screen):
            print("Skipped: no OpenGL here; Debian's package libgl1-mesa-dri has it.")
            sys.exit(SKIPPED)
        main()
    finally:
        screen.close()
