"""Failures of the program's environment: killed tools, a full disk, removed files and folders, special file names and
wrong file types. The program shows a message in one line and stays usable: it exports the next clip."""

import os
import shutil
import signal
import subprocess

from accessible import AccessibleDesktop, AccessibleProgram, wait_until
from clips import is_whole, make_clip, make_mosaic, make_sound, probe
from desktop import Program, eventually
from tools import EXPORT, PREVIEW_COPY, Tools
from window_test import WindowTest, executable, main

MAIN = "Stackreel"
OPEN_PANEL = "Choose a horizontal video"
SAVE_PANEL = "Export vertical video"
NAMES = (
    "two words",
    "100% %s %20",
    "-y",
    "it's a 'quote'",
    "Ärger mit é",
    "日本語",
    "$(touch x); a & b",
    "a:b|c*?",
    "two\nlines",
)


class Breaking(WindowTest):
    DESKTOP = AccessibleDesktop

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.home = cls.desktop.home
        cls.clip = cls.home / "good.mp4"
        make_clip(cls.clip, "320x180", 1)
        cls.out = cls.home / "out"
        cls.out.mkdir()
        cls.tools = Tools(cls.desktop.folder / "tools")
        cls.program = Program(cls.desktop, executable, cls.tools.folder)
        cls.addClassCleanup(cls.program.close)
        cls.accessible = AccessibleProgram(cls.program.process.pid)

    def tearDown(self):
        """After each test, the program must still load and export a clip."""
        self.tools.let_all_pass()
        self.choose(self.clip)
        self.await_status(self.clip.name)
        self.export_to(self.out / "after.mp4")
        self.await_status("Saved after.mp4")
        self.assertEqual(len(probe(self.out / "after.mp4")["streams"]), 2)
        self.assertEqual(self.program.complaints(), "")
        for each in self.out.iterdir():
            each.unlink()

    def choose(self, clip):
        self.program.key("ctrl+o")
        self.accessible.choose_file(OPEN_PANEL, clip, "Choose Video")

    def export_to(self, file):
        self.accessible.act(MAIN, "push button", "Export vertical video", "Press")
        self.accessible.choose_file(SAVE_PANEL, file, "Export")

    def await_status(self, *parts):
        """Waits for a status that contains all these parts, and returns it."""
        seen = [""]

        def says():
            seen[0] = self.accessible.status(MAIN)
            return all(part in seen[0] for part in parts)

        try:
            wait_until(says, "a status")
        except AssertionError:
            self.fail(f"expected a status with {parts}, saw “{seen[0]}”")
        return seen[0]

    def test_reports_an_encoder_that_was_killed(self):
        self.tools.hold("ffmpeg", EXPORT)
        self.choose(self.clip)
        self.await_status(self.clip.name)
        self.export_to(self.out / "dead.mp4")
        os.kill(int(eventually(lambda: self.tools.pid("ffmpeg"), "an encoder")), signal.SIGKILL)
        self.await_status("FFmpeg could not process this video.")

    def test_reports_a_preview_copy_process_that_was_killed(self):
        unplayable = self.home / "unplayable.mkv"
        make_mosaic(unplayable, ["-c:v", "snow", "-strict", "-2", "-c:a", "aac"])
        self.tools.hold("ffmpeg", PREVIEW_COPY)
        self.choose(unplayable)
        os.kill(int(eventually(lambda: self.tools.pid("ffmpeg"), "a copy that is being made")), signal.SIGKILL)
        self.await_status("FFmpeg could not process this video.")
        self.tools.let_all_pass()
        self.choose(unplayable)
        self.await_status(unplayable.name)

    def test_reports_a_full_disk(self):
        disk = self.home / "disk"
        disk.mkdir()
        mount = subprocess.run(["mount", "-t", "tmpfs", "-o", "size=64k", "tmpfs", str(disk)], capture_output=True)
        if mount.returncode != 0:
            self.skipTest("a small disk needs leave to mount one")
        try:
            self.choose(self.clip)
            self.await_status(self.clip.name)
            self.export_to(disk / "full.mp4")
            self.await_status("No space left on device")
        finally:
            subprocess.run(["umount", "-l", str(disk)], check=True)

    def test_reports_a_destination_folder_that_was_removed_or_made_inaccessible(self):
        for how in ("gone", "closed"):
            if how == "closed" and os.geteuid() == 0:
                continue  # root may write to any folder
            with self.subTest(how):
                folder = self.home / how
                folder.mkdir()
                tools = Tools(self.tools.folder)
                tools.hold("ffmpeg", EXPORT)
                self.choose(self.clip)
                self.await_status(self.clip.name)
                self.export_to(folder / "lost.mp4")
                eventually(lambda: tools.pid("ffmpeg"), "an encoder")
                shutil.rmtree(folder) if how == "gone" else folder.chmod(0)
                tools.go()
                self.await_status("was moved or removed" if how == "gone" else "Permission denied")

    def test_reports_a_source_that_was_removed(self):
        source = self.home / "gone.mp4"
        shutil.copy(self.clip, source)
        self.choose(source)
        self.await_status(source.name)
        source.unlink()
        self.export_to(self.out / "nothing.mp4")
        self.await_status("No such file or directory")
        self.assertFalse((self.out / "nothing.mp4").exists())

    def test_reports_files_that_are_no_videos(self):
        text, sound = self.home / "notes.txt", self.home / "song.m4a"
        text.write_text("Milk, eggs, bread\n")
        make_sound(sound)
        self.choose(text)
        self.await_status("Invalid data found")
        self.choose(sound)
        self.await_status("This file does not contain a video stream.")

    def test_exports_files_with_special_characters_in_their_names(self):
        for name in NAMES:
            with self.subTest(name):
                source, result = self.home / f"{name}.mp4", self.out / f"{name}-vertical.mp4"
                shutil.copy(self.clip, source)
                self.choose(source)
                self.await_status(source.name)
                self.export_to(result)
                self.await_status(f"Saved {result.name}")
                self.assertTrue(is_whole(result))
        # Qt's dialog for opening a file reads double quotes as separators; the one for saving does not.
        self.export_to(self.out / 'say "hi".mp4')
        self.await_status('Saved say "hi".mp4')
        self.assertEqual(
            sorted(each.name for each in self.out.iterdir()),
            sorted(['say "hi".mp4', *(f"{name}-vertical.mp4" for name in NAMES)]),
        )


if __name__ == "__main__":
    main()
