"""Servers, buses and window managers that tests need. One that ends before it is ready is noticed at once and started
again, and so is one that is not ready in time; the last failure is reported with the last lines that it wrote."""

import os
import subprocess
import sys
import tempfile
import time

CEILING = 60  # seconds; far more than anything takes, as machines may be busy
ATTEMPTS = 3


class ServiceError(Exception):
    """A service that did not come up, or went down."""


class Service:
    """A program in the background, until it is closed."""

    def __init__(self, command, environment=None):
        self.name = command[0]
        self.output, self.errors = tempfile.TemporaryFile(), tempfile.TemporaryFile()
        try:
            self.process = subprocess.Popen(
                command, env=environment, stdin=subprocess.DEVNULL, stdout=self.output, stderr=self.errors
            )
        except OSError:
            self.output.close()
            self.errors.close()
            raise

    def first_line(self):
        """What it wrote first to its standard output; empty before the line is whole."""
        # Without a seek, which would also move the place where the program writes.
        line, end, _ = os.pread(self.output.fileno(), 4096, 0).decode(errors="replace").partition("\n")
        return line.strip() if end else ""

    def last_lines(self, count=10):
        size = os.fstat(self.errors.fileno()).st_size
        text = os.pread(self.errors.fileno(), 65536, max(0, size - 65536)).decode(errors="replace")
        return "\n".join(text.splitlines()[-count:]) or "(nothing on its standard error)"

    def has_ended(self):
        return self.process.poll() is not None

    def await_ready(self, is_ready, limit):
        """Raises `ServiceError` as soon as it has ended, and when it is not ready within this many seconds."""
        deadline = time.monotonic() + limit
        # Asked last, an end that came between is not taken for readiness.
        while not is_ready(self) or self.has_ended():
            if self.has_ended():
                raise ServiceError(f"{self.name} ended with status {self.process.returncode}: {self.last_lines()}")
            if time.monotonic() > deadline:
                raise ServiceError(f"{self.name} is not ready after {limit} s: {self.last_lines()}")
            time.sleep(0.02)

    def close(self):
        if not self.has_ended():
            self.process.terminate()
            try:
                self.process.wait(CEILING)
            except subprocess.TimeoutExpired:
                self.process.kill()
                self.process.wait()
        self.output.close()
        self.errors.close()


def retried(attempt, failures=ServiceError, attempts=ATTEMPTS):
    """What `attempt` gives, tried again when it raises one of these failures."""
    for left in reversed(range(attempts)):
        try:
            return attempt()
        except failures as failure:
            print(failure, file=sys.stderr)
            if left == 0:
                raise


def start_service(command, is_ready, environment=None, limit=CEILING):
    """Starts a program and gives its `Service` once `is_ready`, which is called with that, is true."""

    def attempt():
        service = Service(command, environment)
        try:
            service.await_ready(is_ready, limit)
        except BaseException:
            service.close()
            raise
        return service

    return retried(attempt)


def start_announced(command, environment=None, limit=CEILING):
    """The same for a program that writes a line to its standard output once it is ready; gives that, too."""
    service = start_service(command, Service.first_line, environment, limit)
    return service, service.first_line()
