"""The program on a Wayland compositor without a screen: it shows its window and ends when it is told to.

Usage: wayland.py EXECUTABLE
"""

import os
import pathlib
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import unittest

from desktop import CEILING, eventually

APPLICATION = "io.github.stackreel.Stackreel"
SKIPPED = 77  # known to the test driver


class Compositor:
    """Weston, which writes down what it and its clients say to each other. `runs` is false where it cannot."""

    def __init__(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="stackreel-wayland-"))
        self.environment = {"PATH": os.environ["PATH"], "HOME": str(self.folder), "LANG": "C.UTF-8",
                            "XDG_RUNTIME_DIR": str(self.folder), "TMPDIR": str(self.folder)}
        self.journal = self.folder / "journal"
        self.process = subprocess.Popen(
            ["weston", "--backend=headless-backend.so", "--socket=wayland-test", "--no-config", "--idle-time=0",
             "--logger-scopes=log,proto", f"--log={self.journal}"],
            env=self.environment, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        socket = self.folder / "wayland-test"
        eventually(lambda: socket.exists() or self.process.poll() is not None, "a compositor")
        self.runs = self.process.poll() is None

    def close(self):
        self.process.terminate()
        self.process.wait()
        shutil.rmtree(self.folder, ignore_errors=True)

    def start(self, executable):
        # This compositor has no seat, without which the usual input method of Qt 6.4 crashes.
        environment = self.environment | {"WAYLAND_DISPLAY": "wayland-test", "QT_QPA_PLATFORM": "wayland",
                                          "QT_IM_MODULE": "compose"}
        return subprocess.Popen([executable], env=environment, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                                text=True)

    def shows(self, application):
        """Whether a surface with content of the client with this name is on the output."""
        said = self.journal.read_text(errors="replace")
        client = re.search(rf'client (\w+) rq xdg_toplevel@\d+\.set_app_id\("{re.escape(application)}"\)', said)
        return client and re.search(rf"client {client[1]} ev wl_surface@\d+\.enter\(", said)


class Wayland(unittest.TestCase):
    def test_the_window_is_shown_until_the_program_is_told_to_end(self):
        program = compositor.start(sys.argv[1])
        self.addCleanup(program.kill)
        eventually(lambda: compositor.shows(APPLICATION) or program.poll() is not None, "a window")
        self.assertIsNone(program.poll())
        program.send_signal(signal.SIGTERM)
        output, errors = program.communicate(timeout=CEILING)
        self.assertEqual((program.returncode, output, errors), (0, "", ""))


if __name__ == "__main__":
    compositor = Compositor()
    try:
        if not compositor.runs:
            print("Skipped: no Wayland compositor starts here.")
            sys.exit(SKIPPED)
        unittest.main(argv=sys.argv[:1] + sys.argv[2:])
    finally:
        compositor.close()
