"""Servers, buses and window managers that tests need. A service that ends before it is ready, or that is not ready in
time, is started again a few times. The error for the last failure quotes the last lines that the service wrote."""

import os
import subprocess
import sys
import tempfile
import time

CEILING = 60  # seconds; far more than anything takes, because the machine may be busy
ATTEMPTS = 3


class ServiceError(Exception):
    """A service did not start, or has ended."""


class Service:
    """A program that runs in the background until `close` is called."""

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
        """The first line on its standard output; empty until the line is complete."""
        # Read with `pread`: a seek would also change the position at which the program writes.
        line, end, _ = os.pread(self.output.fileno(), 4096, 0).decode(errors="replace").partition("\n")
        return line.strip() if end else ""

    def last_lines(self, count=10):
        size = os.fstat(self.errors.fileno()).st_size
        text = os.pread(self.errors.fileno(), 65536, max(0, size - 65536)).decode(errors="replace")
        return "\n".join(text.splitlines()[-count:]) or "(nothing on its standard error)"

    def has_ended(self):
        return self.process.poll() is not None

    def await_ready(self, is_ready, limit):
        """Waits until the service is ready. Raises `ServiceError` if it ends, or is not ready after `limit` seconds."""
        deadline = time.monotonic() + limit
        # Check `has_ended` last: a program that ends while it is asked is not ready.
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
    """Returns the result of `attempt`, which is called again if it raises one of these failures."""
    for left in reversed(range(attempts)):
        try:
            return attempt()
        except failures as failure:
            print(failure, file=sys.stderr)
            if left == 0:
                raise


def start_service(command, is_ready, environment=None, limit=CEILING):
    """Starts a program, waits until `is_ready(service)` is true, and returns the `Service`."""

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
    """Starts a program that writes a line when it is ready. Returns the `Service` and that line."""
    service = start_service(command, Service.first_line, environment, limit)
    return service, service.first_line()
