#!/usr/bin/env python3
"""Changes the sources one small step at a time, and checks that the tests of their folder notice.

mutation.py [--count N] [--seed S] [--jobs N] [--work FOLDER] [--record FILE] FOLDER...

FOLDER is framing, media or model. `--count` is the number of changes in each folder, chosen at random; 0 makes all. The last
commit is built in copies below `--work`. `--record` keeps the results, and the same command then continues.

Prints each change that no test notices, and a table of the counts.
"""

import argparse
import collections
import concurrent.futures
import os
import pathlib
import queue
import random
import signal
import subprocess
import sys
import threading

import source_changes

ROOT = pathlib.Path(__file__).resolve().parents[2]
PROGRAMS = {
    "framing": ["framing-tests"],
    "media": ["media-facts-tests", "media-process-tests"],
    "model": ["source-facts-tests", "model-tests", "model-tool-tests"],
}
SECONDS = 180  # for the tests of one folder, which take 20 at most
KILLED, SURVIVED, REFUSED = "killed", "survived", "not compiled"


def run(command, folder, seconds=None):
    """Returns whether a command succeeds in time. Its children end with it."""
    environment = {**os.environ, "QT_QPA_PLATFORM": "offscreen"}
    process = subprocess.Popen(
        command,
        cwd=folder,
        env=environment,
        stdin=subprocess.DEVNULL,
        stdout=subprocess.DEVNULL,
        stderr=subprocess.DEVNULL,
        start_new_session=True,
    )
    try:
        return process.wait(seconds) == 0
    except subprocess.TimeoutExpired:
        return False
    finally:
        try:
            os.killpg(process.pid, signal.SIGKILL)
        except ProcessLookupError:
            pass
        process.wait()


class Copy:
    """A copy of the last commit that is built by itself."""

    def __init__(self, folder, folders):
        self.folder = folder
        folder.mkdir(parents=True, exist_ok=True)
        archive = subprocess.run(["git", "-C", ROOT, "archive", "HEAD"], check=True, capture_output=True).stdout
        subprocess.run(["tar", "-x"], cwd=folder, input=archive, check=True)
        options = ["-DCMAKE_BUILD_TYPE=Debug", "-DCMAKE_CXX_FLAGS_DEBUG=-O0", "-DSTACKREEL_TESTS=ON"]
        configured = run(["cmake", "-S", ".", "-B", "build", "-G", "Ninja", *options], folder)
        if not configured or not self.builds(folders) or not all(self.passes(name) for name in folders):
            raise SystemExit(f"the tests do not pass in {folder} before any change")

    def builds(self, folders):
        return run(
            ["ninja", "-C", "build", "-j", "1", *[name for each in folders for name in PROGRAMS[each]]], self.folder
        )

    def passes(self, name):
        # Each test program stops at its first failure.
        return all(run([f"build/tests/{each}", "--gtest_fail_fast"], self.folder, SECONDS) for each in PROGRAMS[name])

    def outcome(self, change):
        file = self.folder / change.file
        original = file.read_text()
        file.write_text(change.apply(original))
        try:
            if not self.builds([change.folder]):
                return REFUSED
            return SURVIVED if self.passes(change.folder) else KILLED
        finally:
            file.write_text(original)


class Record:
    """The outcomes by change, one in a line. Appends to its file, if there is one."""

    def __init__(self, file):
        self.file, self.lock, self.outcomes = file, threading.Lock(), {}
        if file and file.exists():
            self.outcomes = dict(line.split("\t") for line in file.read_text().splitlines())

    def add(self, change, outcome):
        with self.lock:
            self.outcomes[change.key] = outcome
            if outcome == SURVIVED:
                print(f"survived {change}", flush=True)
            if self.file:
                with self.file.open("a") as stream:
                    stream.write(f"{change.key}\t{outcome}\n")


def chosen_changes(arguments):
    chosen = []
    for folder in arguments.folders:
        changes = source_changes.of_folder(ROOT, folder)
        if arguments.count:
            changes = random.Random(arguments.seed).sample(changes, min(arguments.count, len(changes)))
        chosen += changes
    return chosen


def try_all(changes, arguments, record):
    copies = queue.Queue()
    for number in range(arguments.jobs):
        copies.put(Copy(arguments.work / f"copy-{number}", arguments.folders))

    def try_one(change):
        copy = copies.get()
        try:
            record.add(change, copy.outcome(change))
        finally:
            copies.put(copy)

    with concurrent.futures.ThreadPoolExecutor(arguments.jobs) as pool:
        list(pool.map(try_one, [change for change in changes if change.key not in record.outcomes]))


def print_table(changes, record):
    print("| folder | changes | noticed | not noticed | not compiled |\n|---|---|---|---|---|")
    for folder in sorted({change.folder for change in changes}):
        counts = collections.Counter(record.outcomes[change.key] for change in changes if change.folder == folder)
        print(f"| `{folder}/` | {counts.total()} | {counts[KILLED]} | {counts[SURVIVED]} | {counts[REFUSED]} |")


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--count", type=int, default=100)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--jobs", type=int, default=2)
    parser.add_argument("--work", type=pathlib.Path, default=ROOT / "build" / "mutation")
    parser.add_argument("--record", type=pathlib.Path)
    parser.add_argument("folders", nargs="+", choices=sorted(PROGRAMS))
    arguments = parser.parse_args()
    changes, record = chosen_changes(arguments), Record(arguments.record)
    try_all(changes, arguments, record)
    print_table(changes, record)


if __name__ == "__main__":
    sys.exit(main())
