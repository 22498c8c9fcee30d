"""Ends the program in different ways while a task is running. It must exit soon with status 0, and leave no child
process and no temporary file."""

import os
import shutil
import signal

from clips import make_clip, make_mosaic
from desktop import Program, eventually
from tools import EXPORT, PREVIEW_COPY, Tools, descendants_of, is_running
from window_test import WindowTest, executable, main

WAYS = {
    "the close button": lambda program: program.click(program.size()[0] - 21, 15),
    "the key": lambda program: program.key("ctrl+q"),
    "SIGTERM": lambda program: program.process.send_signal(signal.SIGTERM),
}


class Quitting(WindowTest):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.clip = cls.desktop.home / "Beach day.mp4"
        make_mosaic(cls.clip)
        # The player cannot play this codec, so the program makes a preview copy.
        cls.unplayable = cls.desktop.home / "unplayable.mkv"
        make_mosaic(cls.unplayable, ["-c:v", "snow", "-strict", "-2", "-c:a", "aac"])
        cls.long = cls.desktop.home / "long.mp4"
        make_clip(cls.long, "1920x1080", 40)
        cls.out = cls.desktop.home / "out"
        cls.out.mkdir()

    def quit_in_every_way(self, begin, ways=tuple(WAYS)):
        """For each way of ending: starts the program, calls `begin` to start a task, and ends the program."""
        for way in ways:
            with self.subTest(way):
                self.tools = Tools(self.desktop.folder / "tools")
                temporary = self.desktop.folder / "temporary"
                shutil.rmtree(temporary, ignore_errors=True)
                temporary.mkdir()
                program = Program(self.desktop, executable, self.tools.folder, {"TMPDIR": str(temporary)})
                try:
                    begin(program)
                    children = descendants_of(program.process.pid)
                    WAYS[way](program)
                    self.assert_ends_well(program)
                finally:
                    program.close()
                # A tool that waits has a child process `sleep`, which ends a moment after it.
                eventually(lambda: not any(is_running(each) for each in children), "no child that is left")
                self.assertEqual(list(self.out.iterdir()), [])
                # The folder of the preview copies is kept on purpose.
                left = [each for each in temporary.rglob("*") if each != temporary / f"Stackreel-{os.getuid()}"]
                self.assertEqual(left, [])

    def load(self, program, clip):
        program.choose(clip)
        eventually(program.export_is_offered, "a loaded clip")

    def test_while_a_clip_is_probed(self):
        def begin(program):
            self.tools.hold("ffprobe")
            program.choose(self.clip)
            eventually(lambda: self.tools.pid("ffprobe"), "a probe")

        self.quit_in_every_way(begin)

    def test_while_a_preview_copy_is_made(self):
        def begin(program):
            self.tools.hold("ffmpeg", PREVIEW_COPY)
            program.choose(self.unplayable)
            eventually(lambda: self.tools.pid("ffmpeg"), "a copy that is being made")

        self.quit_in_every_way(begin)

    def test_while_an_export_is_written(self):
        def begin(program):
            self.load(program, self.long)
            program.export_to(self.out / "never.mp4")
            eventually(lambda: any(each.stat().st_size > 0 for each in self.out.iterdir()), "a file that grows")

        self.quit_in_every_way(begin)

    def test_while_an_export_ignores_signals(self):
        def begin(program):
            self.tools.hold("ffmpeg", EXPORT, "trap '' TERM INT")
            self.load(program, self.clip)
            program.export_to(self.out / "never.mp4")
            eventually(lambda: self.tools.pid("ffmpeg"), "an encoder")

        self.quit_in_every_way(begin, ["SIGTERM"])

    def test_while_thumbnails_are_made(self):
        self.quit_in_every_way(lambda program: self.load(program, self.long), ["the key"])

    def test_while_a_panel_is_open(self):
        def begin(program):
            self.load(program, self.clip)
            program.click(*program.export_button())
            self.desktop.window("Export vertical video")

        self.quit_in_every_way(begin)


if __name__ == "__main__":
    main()
