"""The program's window in a world, used through its accessibility interface and by the pointer."""

import signal
import time

import processes
from accessible import AccessibleProgram, descendants, is_showing, role_name, wait_until
from desktop import Program

MAIN = "Stackreel"
OPEN_PANEL = "Choose a horizontal video"
SAVE_PANEL = "Export vertical video"
RENDERING = "Rendering from the original video."


class Window:
    """A running program with the world's clip. Strikes take it as the running export."""

    def __init__(self, desktop, world, random):
        self.desktop, self.world, self.random = desktop, world, random
        self.program = Program(desktop, str(world.program), environment=world.environment())
        self.process, self.pid = self.program.process, self.program.process.pid
        self.accessible = AccessibleProgram(self.pid)
        self.limits, self.sent = {}, None
        self.choose_clip()

    def choose_clip(self):
        self.program.key("ctrl+o")
        self.accessible.choose_file(OPEN_PANEL, self.world.source, "Choose Video")
        self.await_status(lambda text: text == self.world.source.name, "the clip")

    def begin_export(self):
        """Presses the button, names the result, and returns as soon as a media tool runs."""
        replaces = self.world.result.exists()
        self.accessible.act(MAIN, "push button", "Export vertical video", "Press")
        self.program.point(*self.program.export_button())
        self.accessible.choose_file(SAVE_PANEL, self.world.result, "Export")
        if replaces:
            AccessibleProgram.perform(self.button("Replace"), "Press")
        deadline = time.monotonic() + 20
        while not processes.media_tools(self.pid):
            if time.monotonic() > deadline:
                raise AssertionError("the export has not begun")
            time.sleep(0.001)

    def offers_export(self):
        """Whether the last export was saved or cancelled. After a failure the clip has to be chosen again."""
        return self.status() in (self.world.source.name, f"Saved {self.world.result.name}")

    def button(self, name):
        """Waits for a button in a message, which has no title."""

        def look():
            shown = (each for each in descendants(self.accessible.application) if is_showing(each))
            return next((each for each in shown if (role_name(each), each.get_name()) == ("push button", name)), None)

        return wait_until(look, f"a button “{name}”")

    def status(self):
        return self.accessible.status(MAIN)

    def await_status(self, is_right, what):
        seen = [""]

        def look():
            if self.has_ended():
                return True
            seen[0] = self.status()
            return is_right(seen[0])

        try:
            wait_until(look, what)
        except AssertionError:
            raise AssertionError(f"{what} never came; the status is “{seen[0]}”; {self.last_words()}") from None
        if self.has_ended():
            raise AssertionError(f"the program ended with status {self.process.returncode}: {self.last_words()}")
        return seen[0]

    def last_words(self):
        return self.program.complaints().strip()[-300:]

    # What strikes use.

    def has_ended(self):
        return self.process.poll() is not None

    def await_tool(self):
        for _ in range(2000):
            if tools := processes.media_tools(self.pid):
                return self.random.choice(tools)
            time.sleep(0.001)
        return None

    def await_last_probe(self):
        deadline = time.monotonic() + 20
        while not processes.probes_result(self.pid, self.world.out) and time.monotonic() < deadline:
            time.sleep(0.001)

    def send(self, number):
        self.sent = number
        self.process.send_signal(number)

    def cancel(self):
        """The pointer is already on the button."""
        self.desktop.xdotool("click", 1)

    def quit(self):
        ways = (
            lambda: self.program.key("ctrl+q"),
            lambda: self.program.click(self.program.size()[0] - 21, 15),
            lambda: self.send(signal.SIGTERM),
        )
        self.random.choice(ways)()

    def limit(self, which, value):
        self.limits[which] = processes.limit(self.pid, self.world.user, which, value)

    def undo_limits(self):
        for which, value in self.limits.items():
            processes.limit(self.pid, self.world.user, which, value)
        self.limits = {}
