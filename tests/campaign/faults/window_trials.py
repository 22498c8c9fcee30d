"""Trials through the window: an export with a fault, what the window says then, what is left, and the next export."""

import signal
import statistics
import subprocess
import time

import processes
from accessible import AccessibleDesktop
from cli_trials import WITHIN
from outcome import SAVED, STOPPED, Wrong, says_in_window
from window_export import RENDERING, Window

SIZE, FRAMES = (1080, 1920), 30
CLEAN_UP = 5  # seconds
UNFINISHED = "result (unfinished).mp4"


class WindowTrials:
    """Trials in one world and on one desktop, one after the other. The program is started again when it has ended."""

    def __init__(self, world, random):
        self.world, self.random = world, random
        self.desktop = AccessibleDesktop()
        self.lengths, self.last_probes = [], []
        self.window = None
        try:
            self.start()
            self.measure()
        except BaseException:
            self.close()
            raise

    def close(self):
        if self.window:
            self.window.program.close()
        self.desktop.close()

    def start(self):
        if self.window:
            self.window.program.close()
        self.window = Window(self.desktop, self.world, self.random)

    def measure(self):
        """Makes an export without a fault, and learns how long it takes, and its last probe."""
        self.window.begin_export()
        began = time.monotonic()
        self.window.await_last_probe()
        probed = time.monotonic()
        self.await_success()
        ended = time.monotonic()
        self.lengths.append(ended - began)
        self.last_probes.append(ended - probed)
        self.world.repair()

    def run(self, fault):
        """Returns the outcome of one trial; raises `Wrong`."""
        try:
            if self.window.has_ended():
                self.start()
            return self.make_trial(fault)
        except (Wrong, AssertionError, subprocess.TimeoutExpired) as problem:
            self.window.program.close()
            raise Wrong(str(problem)) from None
        finally:
            self.world.repair()

    def make_trial(self, fault):
        has_earlier_file = self.random.random() < 0.5
        if has_earlier_file:
            self.world.put_earlier_file()
        self.window.begin_export()
        self.strike(fault)
        outcome = self.judge(fault, has_earlier_file)
        self.window.undo_limits()
        self.world.repair()
        self.check_next(fault)
        return outcome

    def strike(self, fault):
        if fault.moment == "end":
            self.window.await_last_probe()
            time.sleep(max(0, statistics.median(self.last_probes[-9:]) - self.random.uniform(0, WITHIN)))
        else:
            longest = WITHIN if fault.moment == "start" else statistics.median(self.lengths[-9:])
            time.sleep(self.random.uniform(0, longest))
        try:
            fault.strike(self.window)
        except (ProcessLookupError, FileNotFoundError):
            pass  # The tool ended in the meantime.

    def judge(self, fault, has_earlier_file):
        if fault.kills:
            return self.judge_end(has_earlier_file)
        status = self.window.await_status(lambda text: text not in ("", RENDERING), "the end of the export")
        if status == f"Saved {self.world.result.name}":
            self.await_tidiness()
            # The program accepts a result that is half a second shorter than the source states, here 13 of 30 frames.
            self.check_whole_result(FRAMES // 2 - 2 if fault.spoils_source else FRAMES)
            return SAVED
        cancelled = fault.cancels and status == self.world.source.name
        if not cancelled and not says_in_window(status, fault.messages):
            raise Wrong(f"says “{status}”")
        self.await_tidiness(() if cancelled else (UNFINISHED,))
        self.check_earlier_file(has_earlier_file, cancelled)
        return STOPPED

    def judge_end(self, has_earlier_file):
        """The program has to end, and leaves a whole result or none."""
        status = self.window.process.wait(CLEAN_UP)
        if status != (-signal.SIGKILL if self.window.sent == signal.SIGKILL else 0):
            raise Wrong(f"ended with status {status}: {self.window.program.complaints()}")
        self.await_tidiness()
        if self.world.result.exists() and not self.world.kept_earlier_file():
            self.check_whole_result()
            return SAVED
        self.check_earlier_file(has_earlier_file, True)
        return STOPPED

    def check_whole_result(self, fewest=FRAMES):
        there = self.world.out.exists()
        if there and not self.world.has_whole_result(SIZE, FRAMES, fewest):
            raise Wrong("the result is not whole")

    def check_earlier_file(self, has_earlier_file, cancelled):
        removed = not self.world.out.exists() and not self.world.moved.exists()
        if has_earlier_file and not removed and not self.world.kept_earlier_file():
            raise Wrong("the earlier file is not as it was")
        if not has_earlier_file and cancelled and self.world.result.exists():
            raise Wrong("cancelled, but a result is there")

    def await_tidiness(self, allowed=()):
        """Waits until nothing is left but the program and its second process."""
        copies = f"Stackreel-{self.world.user}"  # the folder of preview copies, which is kept
        deadline = time.monotonic() + CLEAN_UP
        while left := self.processes_left() or self.world.left_over((*allowed, copies)):
            if time.monotonic() > deadline:
                is_process = isinstance(left[0], int)
                raise Wrong(f"left {processes.described(left) if is_process else ', '.join(map(str, left))}")
            time.sleep(0.02)

    def processes_left(self):
        ended = self.window.has_ended()
        own = (self.window.pid,)
        return [
            each
            for each in processes.marked(self.world.folder)
            if ended or (each not in own and processes.name_of(each) != "stackreel-clean")
        ]

    def await_success(self):
        status = self.window.await_status(lambda text: text not in ("", RENDERING), "the end of the export")
        if status != f"Saved {self.world.result.name}":
            raise Wrong(f"says “{status}”")
        self.await_tidiness()
        self.check_whole_result()

    def check_next(self, fault):
        try:
            if self.window.has_ended():
                self.start()
            elif fault.spoils_source or not self.window.offers_export():
                self.window.choose_clip()
            self.measure()
        except (Wrong, AssertionError) as problem:
            raise Wrong(f"the next export: {problem}") from None
