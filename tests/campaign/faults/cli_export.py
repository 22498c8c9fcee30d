"""One export through the command line, during which a fault comes."""

import re
import subprocess
import time

import processes
from desktop import eventually

CEILING = 20  # seconds for an export that takes one second
CLEAN_UP = 3  # seconds until what a killed program has left is removed
SIZE, FRAMES = (480, 854), 30
SMALL, SMALL_FRAMES = (64, 64), 8  # of the export after a fault, which has to work
JUNK = re.compile(r"frame=|terminate called|what\(\)|std::|basic_string|filesystem error|Assertion|\x1b")


class CliExport:
    """A running export into the world's result, which replaces an earlier file."""

    def __init__(self, world, random, options, user=None):
        self.world, self.random = world, random
        command = [world.program, "export", world.source, world.result, "--overwrite", "--quiet", *options]
        self.process = subprocess.Popen(
            command,
            cwd=world.home,
            env=world.environment(),
            stdin=subprocess.DEVNULL,
            stdout=subprocess.PIPE,
            stderr=subprocess.PIPE,
            text=True,
            errors="replace",
            user=user,
            group=user,
            extra_groups=None if user is None else [],
            restore_signals=True,
        )
        self.pid, self.began = self.process.pid, time.monotonic()
        self.sent, self.awaited = None, False

    def has_ended(self):
        return self.process.poll() is not None

    def ends_within(self, seconds):
        """Waits up to `seconds`; returns whether the process ended."""
        try:
            self.process.wait(seconds)
        except subprocess.TimeoutExpired:
            return False
        return True

    def await_tool(self):
        """Waits for a media tool of the program and returns its process id; none if the program ends before."""
        while not self.has_ended():
            if tools := processes.media_tools(self.pid):
                return self.random.choice(tools)
        return None

    def await_last_probe(self):
        while not self.has_ended() and not processes.probes_result(self.pid, self.world.out):
            time.sleep(0.001)

    def send(self, number):
        """Sends a signal. `awaited` is whether the program had already prepared for it."""
        self.sent, self.awaited = number, processes.blocks(self.pid, number)
        self.process.send_signal(number)

    def limit(self, which, value):
        processes.limit(self.pid, self.world.user, which, value)

    def finish(self):
        """Waits for the end; returns whether it came in time."""
        try:
            self.output, self.error = self.process.communicate(timeout=CEILING)
            in_time = True
        except subprocess.TimeoutExpired:
            self.process.kill()
            self.output, self.error = self.process.communicate()
            in_time = False
        self.seconds = time.monotonic() - self.began
        return in_time
