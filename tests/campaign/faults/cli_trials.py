"""Trials through the command line: an export with a fault, what it left, and the next export."""

import statistics
import time

import processes
from cli_export import CLEAN_UP, FRAMES, JUNK, SIZE, SMALL, SMALL_FRAMES, CliExport
from outcome import SAVED, STOPPED, Wrong, says_one_of

WHOLE = ("--size", "{}x{}".format(*SIZE))
NEXT = ("--size", "{}x{}".format(*SMALL), "--to", "0.25", "--no-audio")
LEFT_TO_NEXT = (".stackreel-", "Stackreel-Process-")
WITHIN = 0.05  # seconds from the start or before the end


class CliTrials:
    """Trials in one world, one after the other."""

    def __init__(self, world, random):
        self.world, self.random = world, random
        self.user = world.user if world.has_disks else None
        self.lengths, self.last_probes = [], []
        for _ in range(2):
            self.measure()

    def start(self, options=WHOLE):
        return CliExport(self.world, self.random, options, self.user)

    def measure(self):
        """Learns how long an export without a fault takes, and its last probe."""
        run = self.start()
        run.await_last_probe()
        probed = time.monotonic()
        run.finish()
        self.last_probes.append(run.began + run.seconds - probed)
        self.lengths.append(run.seconds)
        self.check_success(run, SIZE, FRAMES)
        self.world.repair()

    def run(self, fault):
        """Returns the outcome of one trial; raises `Wrong`."""
        has_earlier_file = self.random.random() < 0.5
        try:
            run = self.start_and_strike(fault, has_earlier_file)
            outcome = self.judge(fault, run, has_earlier_file)
            self.world.repair_for_leftovers() if fault.leaves_to_next else self.world.repair()
            self.check_next()
            return outcome
        finally:
            self.world.repair()

    def start_and_strike(self, fault, has_earlier_file):
        """Starts an export and causes the fault in it. When it ends before that, another one is started."""
        while True:
            if has_earlier_file:
                self.world.put_earlier_file()
            run = self.start()
            if self.await_moment(fault, run):
                break
            run.finish()
            self.check_success(run, SIZE, FRAMES)
            self.lengths.append(run.seconds)
            self.world.repair()
        try:
            fault.strike(run)
        except (ProcessLookupError, FileNotFoundError):
            pass  # It ended in the meantime.
        return run

    def await_moment(self, fault, run):
        """Returns whether the export was still running at the moment of the fault."""
        if fault.moment == "end":
            run.await_last_probe()
            moment = max(0, statistics.median(self.last_probes[-9:]) - self.random.uniform(0, WITHIN))
        else:
            longest = WITHIN if fault.moment == "start" else statistics.median(self.lengths[-9:])
            moment = self.random.uniform(0, longest)
        return not run.ends_within(moment)

    def judge(self, fault, run, has_earlier_file):
        if not run.finish():
            raise Wrong(f"did not end in time; {run.error.strip()}")
        self.await_tidiness(LEFT_TO_NEXT if fault.leaves_to_next else ())
        if run.process.returncode == 0:
            if self.world.out.exists():  # It may have been removed with the result after the end.
                # The program accepts a result that is half a second shorter than the source states, here 13 of 30 frames.
                self.check_success(run, SIZE, FRAMES, FRAMES // 2 - 2 if fault.spoils_source else FRAMES)
            return SAVED
        self.check_message(fault, run)
        self.check_earlier_file(has_earlier_file)
        return STOPPED

    def check_success(self, run, size, frames, fewest=None):
        if (run.process.returncode, run.error) != (0, ""):
            raise Wrong(f"status {run.process.returncode}: {run.error.strip()}")
        if run.output != f"Saved {self.world.result.name}\n":
            raise Wrong(f"status 0, but wrote “{run.output.strip()}”")
        moved = self.world.moved / self.world.result.name
        if not moved.exists() and not self.world.has_whole_result(size, frames, fewest):
            raise Wrong("said “Saved”, but the file is not whole")

    @staticmethod
    def check_message(fault, run):
        status = run.process.returncode
        if fault.kills or (fault.cancels and status == -run.sent and not run.awaited):
            expected, patterns = (-run.sent, ""), ()
        elif fault.cancels:
            expected, patterns = (128 + run.sent, "Cancelled.\n"), ()
        else:
            expected, patterns = (1, run.error), fault.messages
        if (status, run.error) != expected or run.output:
            raise Wrong(f"status {status}: {run.error.strip()}{run.output}")
        if patterns and not says_one_of(run.error, patterns):
            raise Wrong(f"says “{run.error.strip()}”")
        if JUNK.search(run.error):
            raise Wrong(f"shows internals: “{run.error.strip()}”")

    def check_earlier_file(self, has_earlier_file):
        removed = not self.world.out.exists() and not self.world.moved.exists()
        if has_earlier_file and not removed and not self.world.kept_earlier_file():
            raise Wrong("the earlier file is not as it was")
        if not has_earlier_file and self.world.result.exists():
            raise Wrong("failed, but a result is there")

    def await_tidiness(self, allowed=()):
        """Waits until nothing is left, because the second process needs a moment."""
        deadline = time.monotonic() + CLEAN_UP
        while left := processes.marked(self.world.folder) or self.world.left_over(allowed):
            if time.monotonic() > deadline:
                is_process = isinstance(left[0], int)
                raise Wrong(f"left {processes.described(left) if is_process else ', '.join(map(str, left))}")
            time.sleep(0.01)

    def check_next(self):
        run = self.start(NEXT)
        run.finish()
        try:
            self.await_tidiness()
            self.check_success(run, SMALL, SMALL_FRAMES)
        except Wrong as problem:
            raise Wrong(f"the next export: {problem}") from None
