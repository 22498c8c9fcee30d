#!/usr/bin/env python3
"""Gives clips of every kind, and damaged copies of them, to the program, and checks what it does with them.

hostile.py BIN [--mutants N] [--seed S] [--first N] [--clips N] [--jobs N] [--keep FOLDER]

BIN is the folder of a build, such as build/release. Each clip goes through `stackreel-cli probe` and `export`, and as
in the window through the decision whether it can be played, the copy for the preview, the thumbnails and the preview
(open_clips.cpp). A violation is: a clip that FFmpeg refuses to make, a crash, a command or a step of more than 10 s, more
than 1 GiB of memory, a failure that is not explained in a sentence, a file that is left behind, a failure with a clip that
FFmpeg decodes without a complaint, and a clip that is exported but has no preview or, with a known length, no thumbnails;
the last is not checked with damaged copies. The limits of the commands do not apply where FFmpeg alone needs more than half
of them; it is listed above the full limits.

Prints a table of the clips, one line for each violation, and the counts. Exits with status 1 when there is a violation.
`--clips N` takes N clips at random instead of all. `--first` is the number of the first mutant; with `--mutants 1`, it
repeats one of them. `--keep` keeps the clips of violations.
"""

import argparse
import concurrent.futures
import random
import shutil
import subprocess
import sys
import tempfile
import time
from pathlib import Path

import clips
import judging
import mutants
import opening
import processes

SECONDS = 10
BATCH = 40


class Case:
    """A clip and what was seen."""

    def __init__(self, file, how):
        self.file, self.how = file, how
        self.probe = self.reference = self.export = self.opened = None
        self.left = []


class Campaign:
    def __init__(self, build, folder):
        self.cli = build / "bin/stackreel-cli"
        self.opener = build / "tests/open_clips"
        self.folder = folder

    def watch(self, case):
        """Runs the tools on one clip."""
        output = Path(tempfile.mkdtemp(dir=self.folder / "outputs"))
        temporary = Path(tempfile.mkdtemp(dir=self.folder / "outputs"))
        environment = {"TMPDIR": str(temporary), "PATH": "/usr/bin:/bin", "LC_ALL": "C.UTF-8"}
        case.probe = processes.run([self.cli, "probe", "--json", "--", case.file], SECONDS, env=environment)
        case.reference = self.reference(case.file)
        command = [self.cli, "export", "--aspect", "Custom", "--size", "64x64", "--quiet", "--"]
        case.export = processes.run([*command, case.file, output / "out.mp4"], SECONDS, env=environment)
        wanted = {output / "out.mp4"} if case.export.status == 0 else set()
        case.left = [path.name for path in [*output.iterdir(), *temporary.iterdir()] if path not in wanted]
        if wanted and not (output / "out.mp4").is_file():
            case.left.append("nothing, not even the export")
        shutil.rmtree(output)
        shutil.rmtree(temporary)

    def reference(self, file):
        """What FFmpeg alone does with what an export reads."""
        streams = ["-map", "0:v:0", "-map", "0:a:0?"]
        command = ["ffmpeg", "-nostdin", "-v", "error", "-progress", "-", "-i", f"file:{file}", *streams]
        return processes.run([*command, "-f", "null", "-"], 2 * SECONDS)

    def watch_all(self, cases, jobs):
        """Runs the tools on the clips and opens them. Returns what was wrong after the last clip of a process."""
        with concurrent.futures.ThreadPoolExecutor(jobs) as pool:
            list(pool.map(self.watch, cases))
        probed = [case for case in cases if case.probe.status == 0 and "\n" not in case.file.name]
        parts = [probed[part::jobs] for part in range(jobs)]
        with concurrent.futures.ThreadPoolExecutor(jobs) as pool:
            ends = pool.map(lambda part: opening.open_all(self.opener, self.folder, part), parts)
            return [end for end in ends if end]


def make_clips(folder, names, report):
    folder.mkdir()
    clips.make_inputs(folder)
    files = []
    for name in names:
        try:
            files.append(clips.make(folder, name))
        except subprocess.CalledProcessError as error:
            report.add_violation(name, f"not made: {error.stderr.decode(errors='replace').strip()[-300:]}")
    return files


def make_mutants(folder, files, arguments):
    folder.mkdir()
    files = [file for file in files if file.stat().st_size > 0]
    for number in range(arguments.first, arguments.first + arguments.mutants):
        content, name, how = mutants.mutant(arguments.seed, number, files)
        if len(name) > 250:
            name = name[:5] + ".mp4"
        (folder / name).write_bytes(content)
        yield Case(folder / name, f"{how}, --seed {arguments.seed} --first {number} --mutants 1")


def parse():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("build", type=Path)
    parser.add_argument("--mutants", type=int, default=2000)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--first", type=int, default=0)
    parser.add_argument("--clips", type=int)
    parser.add_argument("--jobs", type=int, default=2)
    parser.add_argument("--keep", type=Path)
    return parser.parse_args()


def run(arguments, folder):
    names = clips.all_names()
    if arguments.clips:
        names = sorted(random.Random(arguments.seed).sample(names, arguments.clips))
    (folder / "outputs").mkdir()
    report = judging.Report(arguments.keep)
    files = make_clips(folder / "clips", names, report)
    print(f"seed {arguments.seed}, {len(files)} clips, {arguments.mutants} mutants", flush=True)
    campaign = Campaign(arguments.build.resolve(), folder)
    whole = [] if arguments.first else [Case(file, "") for file in files]
    for cases, is_mutant in ((whole, False), (list(make_mutants(folder / "mutants", files, arguments)), True)):
        for start in range(0, len(cases), BATCH):
            batch = cases[start : start + BATCH]
            for end in campaign.watch_all(batch, arguments.jobs):
                report.add_violation("open_clips", end)
            for case in batch:
                report.add(case, is_mutant)
            for case in batch:
                if is_mutant:
                    case.file.unlink()
    return report


def main():
    arguments = parse()
    began = time.monotonic()
    with tempfile.TemporaryDirectory(prefix="hostile-") as name:
        report = run(arguments, Path(name))
    report.print_counts()
    print(f"{time.monotonic() - began:.0f} s")
    return 1 if report.violations else 0


if __name__ == "__main__":
    sys.exit(main())
