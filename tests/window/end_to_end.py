"""Uses the program by pointer and keys on an X server: a clip is chosen, cropped, trimmed and exported.

Usage: end_to_end.py EXECUTABLE SCREENSHOT_FOLDER
"""

import shutil
import signal

from clips import is_whole, make_clip, probe
from desktop import eventually
from tools import EXPORT, Tools, is_running
from window_test import WindowTest, main, pictures as screenshots


class EndToEnd(WindowTest):
    @classmethod
    def setUpClass(cls):
        screenshots.mkdir(parents=True, exist_ok=True)
        super().setUpClass()
        cls.clip = cls.desktop.home / "Beach day.mp4"
        make_clip(cls.clip, "1280x720")

    def setUp(self):
        self.tools = Tools(self.desktop.folder / "tools")
        self.out = self.desktop.home / "out"
        shutil.rmtree(self.out, ignore_errors=True)
        self.out.mkdir()

    def start(self):
        return super().start(self.tools.folder)

    def start_ready(self):
        program = self.start()
        program.choose(self.clip)
        eventually(program.export_is_offered, "a loaded clip")
        return program

    def await_tool(self, name):
        """Waits until a tool has been started and waits; returns its process id."""
        return eventually(lambda: self.tools.pid(name), f"a running {name}")

    def shoot(self, program, name):
        program.screenshot(screenshots / f"{name}.png")

    def quit(self, program):
        program.key("ctrl+q")
        self.assert_ends_well(program)

    def test_exports_a_trimmed_clip(self):
        self.tools.hold("ffprobe")
        self.tools.hold("ffmpeg", EXPORT)
        program = self.start()
        self.shoot(program, "empty")
        program.choose(self.clip)
        self.await_tool("ffprobe")
        self.assertFalse(program.export_is_offered())
        self.shoot(program, "preparing")
        self.tools.go()
        eventually(program.export_is_offered, "a loaded clip")
        eventually(program.thumbnails_are_shown, "a full timeline")
        self.shoot(program, "ready")

        # Drag the end of the range to the middle of the timeline.
        width, height = program.size()
        program.drag(width - 388, height - 65, -(width - 388 - 60) // 2, 0)
        self.tools.stop()
        result = self.out / "Beach day-vertical.mp4"
        program.export_to(result)
        eventually(program.progress_is_shown, "an export under way")
        self.shoot(program, "exporting")
        self.assertFalse(is_whole(result))
        self.tools.go()
        # The moving part of the progress bar is invisible at times, so its absence alone does not mean that the export
        # has ended.
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

    def test_opens_the_panel_in_the_folder_of_the_last_run(self):
        folder = self.desktop.home / "last folder"
        folder.mkdir()
        shutil.copy(self.clip, folder / "clip.mp4")
        program = self.start()
        program.choose(folder / "clip.mp4")
        eventually(program.export_is_offered, "a loaded clip")
        self.quit(program)
        program = self.start()
        program.choose("clip.mp4")
        eventually(program.export_is_offered, "a clip of the folder in which the panel opened")
        self.quit(program)

    def test_exports_a_custom_size(self):
        program = self.start_ready()
        width, _ = program.size()
        program.click(width - 103, 209)
        program.key("Down", "Down", "Down", "Return")
        # The fields for the size appear, which moves the switch for the sound down to this position.
        eventually(lambda: program.CORAL in program.colours(width - 80, 393, 10, 4), "the fields for a size")
        self.shoot(program, "custom-size")
        result = self.out / "custom.mp4"
        program.export_to(self.out / "custom")
        eventually(lambda: is_whole(result), "an exported file with the suffix that was not typed")
        self.quit(program)

    def test_moves_resizes_and_maximizes_the_window_by_its_frame(self):
        program = self.start_ready()
        for _ in range(3):
            left, top, width, height = program.place()
            # The window manager may start the move a few points late, so the window may move less than the pointer, but
            # not more.
            program.drag_frame(500, 15, 40, 20, lambda: self.has_moved(program, (left, top), (25, 40), (10, 20)))
        left, top, _, _ = program.place()
        program.drag_frame(500, 60, -60, -40, lambda: program.place()[0] < left)

        program.drag_frame(width - 3, height - 3, -600, -600, lambda: program.size() == (980, 710))
        eventually(program.export_is_offered, "the smallest window, painted")
        self.shoot(program, "smallest")
        program.click(500, 15, times=2)
        eventually(lambda: program.size() == (1400, 900), "a window that fills the screen")
        # Click at another position. Otherwise these would count as the third and fourth click of a series.
        program.click(700, 15, times=2)
        eventually(lambda: program.size() == (980, 710), "the size from before")
        self.quit(program)

    @staticmethod
    def has_moved(program, before, across, down):
        """Whether the distances of the window from a position are in these ranges (from, to)."""
        by_x, by_y = (now - then for now, then in zip(program.place(), before))
        return across[0] <= by_x <= across[1] and down[0] <= by_y <= down[1]

    def test_an_interrupt_during_a_load_ends_the_program(self):
        self.tools.hold("ffprobe")
        program = self.start()
        program.choose(self.clip)
        tool = self.await_tool("ffprobe")
        program.process.send_signal(signal.SIGINT)
        self.assert_ends_well(program)
        self.assertFalse(is_running(tool))
        self.assertEqual(list(self.desktop.folder.glob("Stackreel-Process-*")), [])


if __name__ == "__main__":
    main()
