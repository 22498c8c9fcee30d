"""Runs programs with a limit of time, and measures them."""

import os
import signal
import subprocess
import tempfile
import time


class Ended:
    """How a program ended. `status` is negative for a signal. `memory` in MiB is the most that a single process used: the
    program or one of its children."""

    def __init__(self, status, seconds, memory, output, error, late):
        self.status, self.seconds, self.memory = status, seconds, memory
        self.output, self.error, self.late = output, error, late


def run(command, limit, stdin=None, **options):
    """Runs a command. After `limit` seconds, it is asked to end, and two seconds later it is killed with its children."""
    with tempfile.TemporaryFile() as output, tempfile.TemporaryFile() as error:
        began = time.monotonic()
        child = subprocess.Popen(
            command, stdin=stdin or subprocess.DEVNULL, stdout=output, stderr=error, start_new_session=True, **options
        )
        late = False
        while True:
            pid, status, usage = os.wait4(child.pid, os.WNOHANG)
            seconds = time.monotonic() - began
            if pid:
                break
            if seconds > limit and not late:
                late = True
                child.send_signal(signal.SIGTERM)
            if seconds > limit + 2:
                os.killpg(child.pid, signal.SIGKILL)
            time.sleep(0.003)
        child.returncode = os.waitstatus_to_exitcode(status)
        return Ended(child.returncode, seconds, usage.ru_maxrss / 1024, text(output), text(error), late)


def text(file):
    file.seek(0)
    return file.read().decode(errors="replace")
