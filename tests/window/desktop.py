"""A display of the tests' own with a window manager, and the program on it, used by pointer and keys."""

import os
import pathlib
import shutil
import signal
import subprocess
import tempfile
import time

CEILING = 60  # seconds; far more than anything takes, as machines may be busy


def eventually(condition, what, limit=CEILING):
    """Waits until the condition holds and gives its value."""
    deadline = time.monotonic() + limit
    while not (value := condition()):
        if time.monotonic() > deadline:
            raise AssertionError(f"never came true: {what}")
        time.sleep(0.03)
    return value


class MessageBus:
    """A session bus. Completes an environment for programs."""

    def __init__(self, environment):
        self.daemon = subprocess.Popen(
            ["dbus-daemon", "--session", "--nofork", "--nopidfile", "--print-address=1"],
            text=True,
            env=environment | {"GSETTINGS_BACKEND": "memory"},
            stdout=subprocess.PIPE,
            stderr=subprocess.DEVNULL,
        )
        environment["DBUS_SESSION_BUS_ADDRESS"] = self.daemon.stdout.readline().strip()

    def close(self):
        self.daemon.terminate()
        self.daemon.wait()
        self.daemon.stdout.close()


class Desktop:
    """An X server without a screen, and a window manager on it."""

    MANAGER = ["openbox", "--sm-disable"]
    SCREEN = "1400x900"

    def __init__(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="stackreel-desktop-"))
        self.home = self.folder / "home"
        self.home.mkdir()
        (self.folder / "runtime").mkdir(mode=0o700)
        read, write = os.pipe()
        self.server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(write), "-screen", "0", f"{self.SCREEN}x24", "-nolisten", "tcp"],
            pass_fds=[write],
            stdout=subprocess.DEVNULL,
            stderr=subprocess.DEVNULL,
        )
        os.close(write)
        with os.fdopen(read) as numbers:
            display = ":" + numbers.readline().strip()
        self.environment = {
            "PATH": os.environ["PATH"],
            "HOME": str(self.home),
            "LANG": "C.UTF-8",
            "DISPLAY": display,
            "XDG_RUNTIME_DIR": str(self.folder / "runtime"),
            "TMPDIR": str(self.folder),
            "QT_QPA_PLATFORM": "xcb",
        }
        self.prepare()
        self.manager = subprocess.Popen(
            self.MANAGER, env=self.environment, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL
        )
        eventually(lambda: "_NET_WM_NAME" in self.output("xprop", "-root", "_NET_SUPPORTED"), "a window manager")

    def prepare(self):
        """What the window manager needs to be there before it starts."""

    def close(self):
        for process in (self.manager, self.server):
            process.terminate()
            process.wait()
        shutil.rmtree(self.folder, ignore_errors=True)

    def output(self, *command):
        return subprocess.run(command, env=self.environment, capture_output=True, text=True).stdout

    def xdotool(self, *words):
        return self.output("xdotool", *map(str, words)).strip()

    def screenshot(self, file):
        """The whole screen."""
        subprocess.run(["import", "-silent", "-window", "root", str(file)], env=self.environment)

    def window(self, title, limit=CEILING):
        """The visible window with this title, once there is one."""
        return eventually(
            lambda: self.xdotool("search", "--onlyvisible", "--name", f"^{title}$").split("\n")[0],
            f"a window “{title}”",
            limit,
        )

    def type_path(self, panel_title, path):
        """Types a path into the panel with this title, in place of what stands there, and confirms."""
        panel = self.window(panel_title)
        self.xdotool("windowactivate", "--sync", panel)
        time.sleep(0.3)
        self.xdotool("key", "ctrl+a")
        self.xdotool("type", "--delay", 8, path)
        time.sleep(0.2)
        self.xdotool("key", "Return")


class Program:
    """The program, run on a desktop. Places are relative to its window's top left corner."""

    CORAL = (255, 90, 61)

    def __init__(self, desktop, executable, tools=None, environment=None, arguments=()):
        self.desktop = desktop
        environment = desktop.environment | (environment or {})
        if tools is not None:
            environment["PATH"] = f"{tools}:{environment['PATH']}"
        self.errors = open(desktop.folder / f"errors-{time.monotonic_ns()}", "w+")
        # Unlike a shell's background job, it is not told to ignore the interrupt signal.
        self.process = subprocess.Popen(
            [executable, *arguments],
            env=environment,
            stdout=self.errors,
            stderr=self.errors,
            preexec_fn=lambda: signal.signal(signal.SIGINT, signal.SIG_DFL),
        )
        self.window = desktop.window("Stackreel")
        eventually(lambda: len(self.colours(0, 0, 400, 100)) > 8, "a painted window")

    def close(self):
        if self.process.poll() is None:
            self.process.kill()
            self.process.wait()
        self.errors.close()

    def wait(self):
        """The exit status, once the program has ended by itself."""
        return self.process.wait(timeout=CEILING)

    def complaints(self):
        """What it has written to its standard outputs."""
        self.errors.flush()
        return pathlib.Path(self.errors.name).read_text()

    # Looking.

    def place(self):
        lines = self.desktop.xdotool("getwindowgeometry", "--shell", self.window).split("\n")
        values = dict(line.split("=") for line in lines)
        return tuple(int(values[name]) for name in ("X", "Y", "WIDTH", "HEIGHT"))

    def size(self):
        return self.place()[2:]

    def picture(self, x, y, width, height, form="rgb:-"):
        """The bytes of an area, row by row."""
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

    def failure_is_shown(self):
        return self.CORAL in self.colours(24, 90, 400, 30)

    # Acting.

    def point(self, x, y):
        left, top, _, _ = self.place()
        self.desktop.xdotool("mousemove", left + x, top + y)
        time.sleep(0.05)

    def click(self, x, y, times=1):
        self.point(x, y)
        self.desktop.xdotool("click", "--repeat", times, "--delay", 80, 1)

    def drag(self, x, y, by_x, by_y, steps=10):
        """Slowly enough for a window manager to follow."""
        self.point(x, y)
        self.desktop.xdotool("mousedown", 1)
        for step in range(steps):
            time.sleep(0.04)
            self.desktop.xdotool("mousemove_relative", "--", by_x // steps, by_y // steps)
        time.sleep(0.1)
        self.desktop.xdotool("mouseup", 1)
        time.sleep(0.2)

    def key(self, *keys):
        self.desktop.xdotool("windowactivate", "--sync", self.window)
        self.desktop.xdotool("key", *keys)

    def choose(self, path):
        self.key("ctrl+o")
        self.desktop.type_path("Choose a horizontal video", path)

    def export_to(self, path):
        self.click(*self.export_button())
        self.desktop.type_path("Export vertical video", path)
