"""Uses the program by pointer and keys on an X server: a clip is chosen, cropped, trimmed and exported.

Usage: end_to_end.py EXECUTABLE SCREENSHOT_FOLDER
"""

import pathlib
import shutil
import signal
import subprocess
import sys
import time
import unittest

from clips import is_whole, make_clip, probe
from desktop import Desktop, Program, eventually

executable, screenshots = sys.argv[1], pathlib.Path(sys.argv[2])

# Wrappers for the real tools. Each waits for a file named "go" before it runs the real tool.
HELD_FFPROBE = """#!/bin/sh
while [ ! -e "{folder}/go" ]; do sleep 0.05; done
exec {real} "$@"
"""
HELD_FFMPEG = """#!/bin/sh
case "$*" in *filter_complex*) ;; *) exec {real} "$@" ;; esac
while [ ! -e "{folder}/go" ]; do sleep 0.05; done
exec {real} "$@"
"""


class EndToEnd(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        screenshots.mkdir(parents=True, exist_ok=True)
        cls.desktop = Desktop()
        cls.addClassCleanup(cls.desktop.close)
        cls.clip = cls.desktop.home / "Beach day.mp4"
        make_clip(cls.clip, "1280x720")

    def setUp(self):
        self.tools = self.desktop.folder / "tools"
        shutil.rmtree(self.tools, ignore_errors=True)
        self.tools.mkdir()
        self.out = self.desktop.home / "out"
        shutil.rmtree(self.out, ignore_errors=True)
        self.out.mkdir()

    def hold(self, name, script, **values):
        tool = self.tools / name
        tool.write_text(script.format(folder=self.tools, real=shutil.which(name), **values))
        tool.chmod(0o755)

    def go(self):
        (self.tools / "go").touch()

    def start(self):
        program = Program(self.desktop, executable, self.tools)
        self.addCleanup(program.close)
        return program

    def start_ready(self):
        program = self.start()
        program.choose(self.clip)
        eventually(program.export_is_offered, "a loaded clip")
        return program

    def shoot(self, program, name):
        program.screenshot(screenshots / f"{name}.png")

    def quit(self, program):
        program.key("ctrl+q")
        self.assertEqual(program.wait(), 0)
        self.assertEqual(program.complaints(), "")

    def test_exports_a_trimmed_clip(self):
        self.hold("ffprobe", HELD_FFPROBE)
        self.hold("ffmpeg", HELD_FFMPEG)
        program = self.start()
        self.shoot(program, "empty")
        program.choose(self.clip)
        time.sleep(0.5)
        self.assertFalse(program.export_is_offered())
        self.shoot(program, "preparing")
        self.go()
        eventually(program.export_is_offered, "a loaded clip")
        time.sleep(1.5)  # until all thumbnails are painted, for the screenshot
        self.shoot(program, "ready")

        # Drag the end of the range to the middle of the timeline.
        width, height = program.size()
        program.drag(width - 388, height - 65, -(width - 388 - 60) // 2, 0)
        (self.tools / "go").unlink()
        result = self.out / "Beach day-vertical.mp4"
        program.export_to(result)
        eventually(program.progress_is_shown, "an export under way")
        self.shoot(program, "exporting")
        self.assertFalse(result.exists())
        self.go()
        # The moving progress bar leaves the visible area for moments, so its absence alone does not mean the end.
        eventually(lambda: is_whole(result) and not program.progress_is_shown(), "an exported file")
        self.shoot(program, "complete")

        report = probe(result)
        video, audio = report["streams"]
        self.assertEqual((video["codec_name"], video["width"], video["height"]), ("h264", 1080, 1920))
        self.assertEqual(audio["codec_name"], "aac")
        self.assertAlmostEqual(float(report["format"]["duration"]), 3, delta=0.4)
        self.assertEqual([file.name for file in self.out.iterdir()], [result.name])
        self.quit(program)

    def test_rejects_a_portrait_clip_with_a_message(self):
        portrait = self.desktop.home / "portrait.mp4"
        make_clip(portrait, "360x640")
        program = self.start()
        program.choose(portrait)
        eventually(program.failure_is_shown, "a message")
        self.assertFalse(program.export_is_offered())
        self.shoot(program, "failed")
        self.quit(program)

    def test_exports_a_custom_size(self):
        program = self.start_ready()
        width, _ = program.size()
        program.click(width - 103, 209)
        time.sleep(0.3)
        program.key("Down", "Down", "Down", "Return")
        time.sleep(0.5)
        self.shoot(program, "custom-size")
        result = self.out / "custom.mp4"
        program.export_to(self.out / "custom")
        eventually(result.exists, "an exported file with the suffix that was not typed")
        self.quit(program)

    def test_moves_resizes_and_maximizes_the_window_by_its_frame(self):
        program = self.start_ready()
        for round in range(3):
            left, top, width, height = program.place()
            program.drag(500, 15, 40, 20)
            moved_left, moved_top, _, _ = program.place()
            # The window manager may start the move a few points late, but never early and never with a jump.
            self.assertTrue(
                25 <= moved_left - left <= 40 and 10 <= moved_top - top <= 20,
                f"round {round}: {(left, top)} to {(moved_left, moved_top)}",
            )
        left, top, _, _ = program.place()
        program.drag(500, 60, -60, -40)
        self.assertLess(program.place()[0], left)

        program.drag(width - 3, height - 3, -600, -600, steps=20)
        eventually(lambda: program.size() == (980, 710), "the smallest window")
        time.sleep(0.3)
        self.shoot(program, "smallest")
        program.click(500, 15, times=2)
        eventually(lambda: program.size() == (1400, 900), "a window that fills the screen")
        time.sleep(1)  # otherwise these would count as the third and fourth click of a series
        program.click(500, 15, times=2)
        eventually(lambda: program.size() == (980, 710), "the size from before")
        self.quit(program)

    def test_an_interrupt_during_a_load_ends_the_program(self):
        self.hold("ffprobe", HELD_FFPROBE)
        program = self.start()
        program.choose(self.clip)
        time.sleep(0.5)
        program.process.send_signal(signal.SIGINT)
        self.assertEqual(program.wait(), 0)
        self.assertEqual(program.complaints(), "")
        children = subprocess.run(["pgrep", "-f", str(self.tools / "ffprobe")], capture_output=True).stdout
        self.assertEqual(children, b"")
        self.assertEqual(list(self.desktop.folder.glob("Stackreel-Process-*")), [])


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1] + sys.argv[3:])
