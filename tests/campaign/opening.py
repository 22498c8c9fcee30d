"""Opens clips as the window does, many in one process (open_clips.cpp)."""

import json
import os

import processes


class Opened:
    """What was seen with one clip. `fault` says how the process ended, if it did not survive the clip."""

    def __init__(self, line, fault):
        self.line, self.fault = line, fault

    def number(self, word):
        """The number beside a word of the line, such as "12 images" or "peak 130"."""
        for field in self.line.split("\t"):
            parts = field.split(" ")
            if word in parts and len(parts) == 2:
                return float(parts[1 - parts.index(word)])
        return None


def duration(case):
    return json.loads(case.probe.output).get("duration") or 0


def open_all(program, folder, cases):
    """Opens the clips. After one that ends the process, goes on in a new one. Returns how a process failed after its last
    clip, or none."""
    while cases:
        listed = folder / f"list-{id(cases)}"
        with open(listed, "wb") as file:
            for case in cases:
                file.write(f"{duration(case)} ".encode() + os.fsencode(case.file) + b"\n")
        with open(listed, "rb") as file:
            environment = {**os.environ, "TMPDIR": str(folder)}
            ended = processes.run([program], 60 * len(cases), stdin=file, env=environment)
        listed.unlink()
        lines = ended.output.splitlines()
        finished = [line for line in lines if line.startswith("end\t")]
        for case, line in zip(cases, finished):
            case.opened = Opened(line, None)
        cases = cases[len(finished) :]
        if not cases:
            return (
                f"ended with status {ended.status} after the last clip: {ended.error[-500:]}" if ended.status else None
            )
        over = [line for line in lines if line.startswith("over\t")]
        fault = over[-1].replace("\t", " ") if over else f"ended with status {ended.status}"
        cases[0].opened = Opened("", f"{fault}; {ended.error[-300:]}")
        cases = cases[1:]
    return None
