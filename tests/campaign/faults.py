#!/usr/bin/env python3
"""Causes faults at random moments of an export. Checks its message and status, what it left, the file that was there
before, and the next export. Prints a table, and returns 1 if anything was wrong.

An export that a fault did not stop has to be whole; it counts as “saved”.

PROGRAM is stackreel-cli or, with --through window, stackreel, in a folder `bin` beside `lib/stackreel`. The faults of full
disks need root: the exports then run as other users, with small disks that only they see.
"""

import argparse
import os
import pathlib
import random
import re
import shutil
import sys
import tempfile
import time

HERE = pathlib.Path(__file__).resolve().parent
sys.path[0:1] = [str(HERE / "faults"), str(HERE.parent / "window")]

import fault_list  # noqa: E402
import work  # noqa: E402
from clips import make_clip  # noqa: E402
from outcome import Record  # noqa: E402


def parsed():
    parser = argparse.ArgumentParser(
        description=__doc__.split("\n\n", 1)[0],
        epilog=__doc__.split("\n\n", 1)[1],
        formatter_class=argparse.RawDescriptionHelpFormatter,
    )
    parser.add_argument("program", metavar="PROGRAM", type=pathlib.Path)
    parser.add_argument("--through", choices=("cli", "window"), default="cli")
    parser.add_argument("--count", type=int, default=10, metavar="N", help="trials of each fault (10)")
    parser.add_argument("--seed", type=int, default=random.randrange(1 << 32), metavar="S", help="repeats the choices")
    parser.add_argument(
        "--jobs", type=int, default=2, metavar="N", help="exports at a time through the command line (2)"
    )
    parser.add_argument("--only", default="", metavar="REGEX", help="the faults with such a name")
    parser.add_argument("--minutes", type=float, default=1e6, metavar="M", help="stops after this time")
    parser.add_argument(
        "--record", type=pathlib.Path, metavar="FILE", help="keeps the outcomes; continues what is there"
    )
    return parser.parse_args()


def chosen_faults(options):
    """The faults to try, and the names of those that need root and are skipped."""
    listed = fault_list.COMMAND_LINE if options.through == "cli" else fault_list.WINDOW
    chosen = [each for each in listed if re.search(options.only, each.name)]
    skipped = [each for each in chosen if each.needs_disks and os.geteuid() != 0]
    return [each for each in chosen if each not in skipped], [each.name for each in skipped]


def make_trials(options, faults, record, folder):
    clip = folder / "clip.mp4"
    make_clip(clip, "320x180", 1)
    deadline = time.monotonic() + options.minutes * 60
    seeds = [(each, f"{options.seed}/{each.name}/{number}") for number in range(options.count) for each in faults]
    tasks = work.Tasks([(fault, seed) for fault, seed in seeds if not record.has(seed)], record, deadline)
    run = work.through_command_line if options.through == "cli" else work.through_window
    run(tasks, folder, options.program.resolve(), clip, options.jobs)


def main():
    options = parsed()
    faults, skipped = chosen_faults(options)
    if not faults:
        sys.exit(f"no fault to try; skipped, because it needs root: {', '.join(skipped) or 'none'}")
    print(f"seed {options.seed}", flush=True)
    folder = pathlib.Path(tempfile.mkdtemp(prefix="stackreel-faults-"))
    folder.chmod(0o755)
    try:
        record = Record(options.record or folder / "record")
        make_trials(options, faults, record, folder)
        record.reread()
    finally:
        shutil.rmtree(folder, ignore_errors=True)
    print(record.table([each.name for each in faults]))
    for name in skipped:
        print(f"skipped, because it needs root: {name}")
    sys.exit(1 if record.wrong_count() else 0)


if __name__ == "__main__":
    main()
