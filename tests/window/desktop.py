"""A private X display with a window manager, and the program on it, which tests use by pointer and keys."""

import os
import pathlib
import shutil
import signal
import subprocess
import tempfile
import time

from services import CEILING, start_announced, start_service


def eventually(condition, what, limit=CEILING):
    """Waits until the condition returns a true value, and returns that value."""
    deadline = time.monotonic() + limit
    while not (value := condition()):
        if time.monotonic() > deadline:
            raise AssertionError(f"never came true: {what}")
        time.sleep(0.03)
    return value


class MessageBus:
    """A private session bus. Adds its address to the environment for programs."""

    def __init__(self, environment):
        self.daemon, environment["DBUS_SESSION_BUS_ADDRESS"] = start_announced(
            ["dbus-daemon", "--session", "--nofork", "--nopidfile", "--print-address=1"],
            environment | {"GSETTINGS_BACKEND": "memory"},
        )

    def close(self):
        self.daemon.close()


class Desktop:
    """An X server without a physical screen, and a window manager on it."""

    MANAGER = ["openbox", "--sm-disable"]
    SCREEN = "1400x900"

    def __init__(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="stackreel-desktop-"))
        self.home = self.folder / "home"
        self.home.mkdir()
        (self.folder / "runtime").mkdir(mode=0o700)
        # Without -noreset the server resets itself when its last client (xprop) disconnects, and closes the connection
        # of a client that is just connecting (the window manager).
        self.server, display = start_announced(
            ["Xvfb", "-displayfd", "1", "-screen", "0", f"{self.SCREEN}x24", "-nolisten", "tcp", "-noreset"]
        )
        self.environment = {
            "PATH": os.environ["PATH"],
            "HOME": str(self.home),
            "LANG": "C.UTF-8",
            "DISPLAY": f":{display}",
            "XDG_RUNTIME_DIR": str(self.folder / "runtime"),
            "TMPDIR": str(self.folder),
            "QT_QPA_PLATFORM": "xcb",
        }
        try:
            self.prepare()
            self.manager = start_service(self.MANAGER, lambda _: self.is_managed(), self.environment)
        except BaseException:
            self.server.close()
            raise

    def prepare(self):
        """Creates what the window manager needs; called before it starts."""

    def is_managed(self):
        return "_NET_WM_NAME" in self.output("xprop", "-root", "_NET_SUPPORTED")

    def close(self):
        self.manager.close()
        self.server.close()
        shutil.rmtree(self.folder, ignore_errors=True)

    def output(self, *command):
        return subprocess.run(command, env=self.environment, capture_output=True, text=True).stdout

    def xdotool(self, *words):
        return self.output("xdotool", *map(str, words)).strip()

    def screenshot(self, file):
        """Writes a screenshot of the whole screen."""
        subprocess.run(["import", "-silent", "-window", "root", str(file)], env=self.environment)

    def window(self, title, limit=CEILING):
        """Waits for a visible window with this title and returns it."""
        return eventually(lambda: self.visible_window(title), f"a window “{title}”", limit)

    def visible_window(self, title):
        """The first visible window with this title; empty if there is none."""
        return self.xdotool("search", "--onlyvisible", "--name", f"^{title}$").split("\n")[0]

    def type_path(self, panel_title, path):
        """Replaces the text in the panel with this title by a path, and confirms."""
        panel = self.window(panel_title)
        self.xdotool("windowactivate", "--sync", panel)
        eventually(lambda: self.xdotool("getactivewindow") == panel, f"the focus on “{panel_title}”")
        self.xdotool("key", "ctrl+a")
        self.xdotool("type", "--delay", 8, path)
        self.xdotool("key", "Return")


class Program:
    """The program, running on a desktop. Positions are relative to the top left corner of its window."""

    CORAL = (255, 90, 61)

    def __init__(self, desktop, executable, tools=None, environment=None, arguments=()):
        self.desktop = desktop
        environment = desktop.environment | (environment or {})
        if tools is not None:
            environment["PATH"] = f"{tools}:{environment['PATH']}"
        self.errors = open(desktop.folder / f"errors-{time.monotonic_ns()}", "w+")
        # The default action of SIGINT is restored, which a shell sets to be ignored in background jobs.
        self.process = subprocess.Popen(
            [executable, *arguments],
            env=environment,
            stdout=self.errors,
            stderr=self.errors,
            preexec_fn=lambda: signal.signal(signal.SIGINT, signal.SIG_DFL),
        )
        try:
            self.window = eventually(self.window_if_alive, "the program's window")
            eventually(lambda: len(self.colours(0, 0, 400, 100)) > 8, "a painted window")
        except BaseException:
            self.close()
            raise

    def window_if_alive(self):
        if self.process.poll() is not None:
            raise AssertionError(f"the program ended with status {self.process.returncode}: {self.complaints()}")
        return self.desktop.visible_window("Stackreel")

    def close(self):
        if self.process.poll() is None:
            self.process.kill()
            self.process.wait()
        self.errors.close()

    def wait(self):
        """Waits until the program has ended by itself, and returns its exit status."""
        return self.process.wait(timeout=CEILING)

    def complaints(self):
        """What the program has written to standard output and standard error."""
        self.errors.flush()
        return pathlib.Path(self.errors.name).read_text()

    # Functions that examine the program.

    def place(self):
        lines = self.desktop.xdotool("getwindowgeometry", "--shell", self.window).split("\n")
        values = dict(line.split("=") for line in lines)
        return tuple(int(values[name]) for name in ("X", "Y", "WIDTH", "HEIGHT"))

    def size(self):
        return self.place()[2:]

    def picture(self, x, y, width, height, form="rgb:-"):
        """The pixels of an area, row by row, as bytes."""
        return subprocess.run(
            ["import", "-silent", "-window", self.window, "-crop", f"{width}x{height}+{x}+{y}", "-depth", "8", form],
            env=self.desktop.environment,
            capture_output=True,
        ).stdout

    def colours(self, x, y, width=1, height=1):
        """The colours in an area, as a set."""
        picture = self.picture(x, y, width, height)
        return {tuple(picture[at : at + 3]) for at in range(0, len(picture) - 2, 3)}

    def screenshot(self, file):
        self.point(self.size()[0] // 2, 20)
        subprocess.run(
            ["import", "-silent", "-window", self.window, str(file)], env=self.desktop.environment, check=True
        )

    def export_button(self):
        width, height = self.size()
        return width - 106, height - 64

    def export_is_offered(self):
        return self.CORAL in self.colours(*self.export_button())

    def progress_is_shown(self):
        return self.CORAL in self.colours(24, 118, 220, 14)

    def thumbnails_are_shown(self):
        """Whether the timeline shows thumbnails up to its end."""
        width, height = self.size()
        return len(set(self.picture(width - 460, height - 80, 60, 1))) > 16

    def failure_is_shown(self):
        return self.CORAL in self.colours(24, 90, 400, 30)

    # Functions that use the program.

    def point(self, x, y):
        left, top, _, _ = self.place()
        self.desktop.xdotool("mousemove", left + x, top + y)

    def click(self, x, y, times=1):
        self.point(x, y)
        self.desktop.xdotool("click", "--repeat", times, "--delay", 80, 1)

    def drag(self, x, y, by_x, by_y, steps=10):
        """Drags something in the window. No waits are needed, because the program receives the events in order."""
        self.point(x, y)
        self.desktop.xdotool("mousedown", 1)
        for _ in range(steps):
            self.desktop.xdotool("mousemove_relative", "--", by_x // steps, by_y // steps)
        self.desktop.xdotool("mouseup", 1)

    def drag_frame(self, x, y, by_x, by_y, is_done, steps=20):
        """Drags the window by its frame, and waits until `is_done` is true. Moves as slowly as a hand: the window manager
        takes over a moment after the first movement, and until a moment after the release Qt believes that the button
        is still pressed. A test cannot see either moment."""
        self.point(x, y)
        self.desktop.xdotool("mousedown", 1)
        for _ in range(steps):
            time.sleep(0.04)
            self.desktop.xdotool("mousemove_relative", "--", by_x // steps, by_y // steps)
        time.sleep(0.1)
        self.desktop.xdotool("mouseup", 1)
        time.sleep(0.3)
        eventually(is_done, f"the window dragged by {(by_x, by_y)}")

    def key(self, *keys):
        self.desktop.xdotool("windowactivate", "--sync", self.window)
        self.desktop.xdotool("key", *keys)

    def choose(self, path):
        self.key("ctrl+o")
        self.desktop.type_path("Choose a horizontal video", path)

    def export_to(self, path):
        self.click(*self.export_button())
        self.desktop.type_path("Export vertical video", path)
