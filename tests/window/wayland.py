"""The program on a headless Wayland compositor at several scale factors: it shows its window and a playing clip, and
ends by SIGTERM. The compositor has no pointer or keyboard, so the program is used through the accessibility bus."""

import os
import pathlib
import re
import shutil
import signal
import socket
import subprocess
import sys
import tempfile

from accessible import AccessibilityBus, AccessibleProgram
from clips import Crop, make_clip, make_mosaic
from desktop import eventually
from pictures import LIGHT_CORAL, Picture, shown_second
from services import CEILING, start_service
from tools import descendants_of, is_running
from window_test import WindowTest, executable, main

APPLICATION = "io.github.stackreel.Stackreel"
SKIPPED = 77  # SKIP_RETURN_CODE of the tests
PICTURE_WIDTH = 768  # points, of the preview in a new window


class Compositor:
    """Weston with a log of the Wayland protocol."""

    def __init__(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="stackreel-wayland-"))
        # The compositor has no seat. The default input method of Qt 6.4 crashes without one.
        self.environment = {
            "PATH": os.environ["PATH"],
            "HOME": str(self.folder),
            "LANG": "C.UTF-8",
            "XDG_RUNTIME_DIR": str(self.folder),
            "TMPDIR": str(self.folder),
            "WAYLAND_DISPLAY": "wayland-test",
            "QT_QPA_PLATFORM": "wayland",
            "QT_IM_MODULE": "compose",
        }
        self.journal = self.folder / "journal"
        # Large enough for the window at scale factor 2. --debug permits screenshots.
        self.server = start_service(
            [
                "weston",
                "--backend=headless-backend.so",
                "--use-pixman",
                "--width=2600",
                "--height=1800",
                "--debug",
                "--socket=wayland-test",
                "--no-config",
                "--idle-time=0",
                "--logger-scopes=log,proto",
                f"--log={self.journal}",
            ],
            lambda _: self.accepts_clients(),
            self.environment,
        )

    def accepts_clients(self):
        with socket.socket(socket.AF_UNIX) as client:
            return client.connect_ex(str(self.folder / "wayland-test")) == 0

    def close(self):
        self.server.close()
        shutil.rmtree(self.folder, ignore_errors=True)

    def start(self, scale):
        return subprocess.Popen(
            [executable],
            env=self.environment | {"QT_SCALE_FACTOR": str(scale)},
            stdout=subprocess.PIPE,
            stderr=subprocess.PIPE,
            text=True,
        )

    def shows(self, application):
        """Whether a surface of the client with this application id is visible on the output."""
        said = self.journal.read_text(errors="replace")
        process = r"(?: \(PID \d+\))?"  # Weston 14 adds it, 10 does not.
        named = rf'xdg_toplevel@\d+\.set_app_id\("{re.escape(application)}"\)'
        client = re.search(rf"client (\w+){process} rq {named}", said)
        return client and re.search(rf"client {client[1]}{process} ev wl_surface@\d+\.enter\(", said)

    def screenshot(self, file):
        """Writes a screenshot of the whole output to a file."""
        folder = pathlib.Path(tempfile.mkdtemp(dir=self.folder))
        subprocess.run(
            ["weston-screenshooter"],
            cwd=folder,
            env=self.environment,
            check=True,
            timeout=CEILING,
            stdout=subprocess.DEVNULL,
            stderr=subprocess.DEVNULL,
        )
        shutil.move(next(folder.iterdir()), file)

    def seen(self):
        self.screenshot(self.folder / "seen.png")
        return Picture.of_file(self.folder / "seen.png")


class Wayland(WindowTest):
    @classmethod
    def setUpClass(cls):
        cls.desktop = compositor
        cls.clip = compositor.folder / "Beach day.mp4"
        make_mosaic(cls.clip)

    def test_shows_a_clip_at_scale_1(self):
        self.show_clip_at(1)

    def test_shows_a_clip_at_scale_1_25(self):
        self.show_clip_at(1.25)

    def test_shows_a_clip_at_scale_1_5(self):
        self.show_clip_at(1.5)

    def test_shows_a_clip_at_scale_2(self):
        self.show_clip_at(2)

    def show_clip_at(self, scale):
        program = compositor.start(scale)
        self.addCleanup(program.kill)
        eventually(lambda: compositor.shows(APPLICATION) or program.poll() is not None, "a window")
        self.assertIsNone(program.poll())
        accessible = AccessibleProgram(program.pid)
        accessible.act("Stackreel", "push button", "Choose a video", "Press")
        accessible.choose_file("Choose a horizontal video", self.clip, "Choose Video")
        accessible.find("Stackreel", "status bar", self.clip.name)
        first = eventually(lambda: self.second_at(scale), "a picture in the preview")
        eventually(lambda: self.second_at(scale) not in (None, first), "a preview that goes on")
        program.send_signal(signal.SIGTERM)
        output, errors = program.communicate(timeout=CEILING)
        self.assertEqual((program.returncode, output, errors), (0, "", ""))

    def test_leaves_nothing_when_the_compositor_goes_away_during_an_export(self):
        other = Compositor()
        self.addCleanup(other.close)
        other.environment = compositor.environment | {
            name: other.environment[name] for name in ("HOME", "XDG_RUNTIME_DIR", "TMPDIR")
        }
        long, out = other.folder / "long.mp4", other.folder / "out"
        make_clip(long, "1920x1080", 20)
        out.mkdir()
        program = other.start(1)
        self.addCleanup(program.communicate)
        self.addCleanup(program.kill)
        eventually(lambda: other.shows(APPLICATION) or program.poll() is not None, "a window")
        accessible = AccessibleProgram(program.pid)
        accessible.act("Stackreel", "push button", "Choose a video", "Press")
        accessible.choose_file("Choose a horizontal video", long, "Choose Video")
        accessible.find("Stackreel", "status bar", long.name)
        accessible.act("Stackreel", "push button", "Export vertical video", "Press")
        accessible.choose_file("Export vertical video", out / "never.mp4", "Export")
        eventually(lambda: any(each.stat().st_size > 0 for each in out.iterdir()), "a file that grows")
        children = descendants_of(program.pid)
        other.server.process.kill()
        program.wait(2)
        eventually(lambda: not any(is_running(each) for each in children), "no child that is left", 2)
        eventually(lambda: not list(other.folder.glob("Stackreel-Process-*")), "no scratch folder", 2)
        eventually(lambda: not list(out.iterdir()), "no part of an export", 2)

    def second_at(self, scale):
        """The second of the clip that the preview shows, as a string. The outline of the bottom crop locates the
        preview."""
        seen = compositor.seen()
        crop, box = Crop.first_pair()[1], seen.box(LIGHT_CORAL)
        if box is None:
            return None
        picture_width, picture_height = round(PICTURE_WIDTH * scale), round(PICTURE_WIDTH * scale * 9 / 16)
        left, top, width, height = box[0] + scale, box[1] + scale, box[2] - 2 * scale, box[3] - 2 * scale
        self.assertAlmostEqual(width, crop.width * picture_width, delta=3, msg="the lower crop's width on screen")
        self.assertAlmostEqual(height, crop.height * picture_height, delta=3, msg="its height")
        strip = seen.part(
            round(left - crop.x * picture_width),
            round(top - crop.y * picture_height),
            picture_width,
            round(0.1 * picture_height),
        )
        second = shown_second(strip, self.clip)
        return None if second is None else str(second)


if __name__ == "__main__":
    if shutil.which("weston") is None:
        print("Skipped: there is no Wayland compositor; Debian's package weston has one.")
        sys.exit(SKIPPED)
    compositor = Compositor()
    try:
        bus = AccessibilityBus(compositor.environment)
        try:
            main()
        finally:
            bus.close()
    finally:
        compositor.close()
