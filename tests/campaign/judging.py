"""Decides what is a violation, and counts."""

import collections
import json
import re
import shutil

SECONDS = 10
MEMORY = 1024

# What the program refuses although FFmpeg can decode it.
REFUSALS = (
    "Choose a horizontal video.",
    "This file does not contain a video stream.",
    "is unknown. Give it one",  # its length
)


class Report:
    def __init__(self, keep):
        self.keep = keep
        self.violations = []
        self.counts = {False: collections.Counter(), True: collections.Counter()}

    def add(self, case, is_mutant):
        result = outcome(case)
        counts = self.counts[is_mutant]
        counts["clips"] += 1
        counts[result] += 1
        if not is_mutant:
            print(row(case, result), flush=True)
        for note in notes(case):
            counts["slow or large in FFmpeg alone"] += 1
            print(f"note {case.file.name!r}: {note}; {case.how}")
        found = list(violations(case, is_mutant))
        for violation in found:
            self.add_violation(case.file.name, f"{violation}; {case.how}")
        if found and self.keep:
            self.keep.mkdir(parents=True, exist_ok=True)
            shutil.copy(case.file, self.keep)

    def add_violation(self, name, violation):
        print(f"VIOLATION {name!r}: {violation}", flush=True)
        self.violations.append(violation)

    def print_counts(self):
        for is_mutant, name in ((False, "clips"), (True, "mutants")):
            counts = dict(self.counts[is_mutant])
            print(f"{counts.pop('clips', 0)} {name}: " + ", ".join(f"{counts[key]} {key}" for key in sorted(counts)))
        print(f"{len(self.violations)} violations")


def outcome(case):
    if case.export.status == 0:
        return "exported"
    if refused(case.export.error):
        return "refused"
    return "damaged for FFmpeg" if not decodes(case) else "not exported"


def row(case, result):
    reason = case.export.error.strip().splitlines()[:1] if case.export.status else []
    opened = case.opened.line.replace("end\t", "").replace("\t", ", ") if case.opened else "not opened"
    return f"{result:12} {case.file.name!r}: {' '.join(reason)} export {case.export.seconds:.2f}, {opened}"


def refused(message):
    return any(refusal in message for refusal in REFUSALS)


def frames(ended):
    found = re.findall(r"^frame=(\d+)", ended.output, re.M)
    return int(found[-1]) if found else 0


def decodes(case):
    """Whether FFmpeg alone decodes pictures and says nothing."""
    reference = case.reference
    return reference.status == 0 and not reference.late and frames(reference) > 0 and not reference.error


def is_sentence(message):
    first = (message.splitlines() or [""])[0]
    return re.match(r"^\w.*\w[”)]?[.](\s|$)", first) is not None


def notes(case):
    if case.reference.late or case.reference.seconds > SECONDS:
        yield f"FFmpeg alone takes {case.reference.seconds:.0f} s"
    if case.reference.memory > MEMORY:
        yield f"FFmpeg alone takes {case.reference.memory:.0f} MiB"


def violations(case, is_mutant):
    for name, ended in (("probe", case.probe), ("export", case.export)):
        yield from violations_of(
            name,
            ended,
            slow_anyway=case.reference.seconds > SECONDS / 2,
            large_anyway=case.reference.memory > MEMORY / 2,
        )
    for name in case.left:
        yield f"left behind: {name}"
    if decodes(case) and case.export.status != 0 and not refused(case.export.error):
        yield f"FFmpeg decodes it, the export fails: {case.export.error.strip()[:300]!r}"
    yield from opening_violations(case, is_mutant)


def violations_of(name, ended, slow_anyway, large_anyway):
    if ended.late and not slow_anyway:
        yield f"{name}: more than {SECONDS} s"
    if ended.memory > MEMORY and not large_anyway:
        yield f"{name}: {ended.memory:.0f} MiB"
    if not ended.late and ended.status not in (0, 1):
        yield f"{name}: ended with status {ended.status}"
    if ended.status == 1 and not is_sentence(ended.error):
        yield f"{name}: fails without a sentence: {ended.error[:200]!r}"


def opening_violations(case, is_mutant):
    opened = case.opened
    if not opened:
        return
    if opened.fault:
        yield f"in the window: {opened.fault}"
        return
    if is_mutant or case.export.status != 0:
        return
    if not opened.number("frames"):
        yield "the preview shows nothing"
    if not opened.number("images") and json.loads(case.probe.output).get("duration"):
        yield "there are no thumbnails"
