"""The outcomes of trials, counted, recorded and printed."""

import re
import threading

STOPPED, SAVED, WRONG = "stopped", "saved", "wrong"


class Wrong(Exception):
    """An export, or what it left, is not as it should be."""


def says_one_of(text, patterns):
    """Whether the message begins with a sentence, and one of the patterns is in it."""
    first = text.strip().split("\n")[0]
    is_sentence = re.search(r"^(?:[A-Z“]|ff).*[.!]$", first)
    return bool(is_sentence and any(re.search(each, text, re.MULTILINE) for each in patterns))


def says_in_window(text, patterns):
    """Whether one of the patterns is in the message, which may consist of a tool's last lines."""
    return any(re.search(each, text, re.MULTILINE) for each in patterns)


def in_one_line(text):
    return " ↵ ".join(text.split("\n")).replace("\t", " ")


class Record:
    """The outcomes by seed, which contains the fault's name. Appends to the file, which stays open for a process of another
    user. Any thread may add."""

    def __init__(self, file):
        self.file, self.lock = file, threading.Lock()
        self.stream = open(file, "a", buffering=1)
        self.reread()

    def reread(self):
        lines = (line.split("\t") for line in self.file.read_text().splitlines())
        self.outcomes = {seed: (outcome, reason) for seed, outcome, reason in lines}

    def add(self, seed, outcome, reason=""):
        with self.lock:
            self.stream.write("\t".join((seed, outcome, in_one_line(reason))) + "\n")

    def has(self, seed):
        return seed in self.outcomes

    def of(self, fault, outcome):
        """The reasons of the trials of a fault that had this outcome."""
        return [why for seed, (found, why) in self.outcomes.items() if seed.split("/")[1] == fault and found == outcome]

    def wrong_count(self):
        return sum(outcome == WRONG for outcome, _ in self.outcomes.values())

    def row(self, fault):
        stopped, saved, wrong = (self.of(fault, outcome) for outcome in (STOPPED, SAVED, WRONG))
        first = f": {wrong[0]}" if wrong else ""
        tried = len(stopped) + len(saved) + len(wrong)
        return f"| {fault} | {tried} | {len(stopped)} | {len(saved)} | {len(wrong)}{first} |"

    def table(self, faults):
        lines = ["| fault | tried | stopped | saved | wrong |", "|---|---|---|---|---|"]
        return "\n".join([*lines, *map(self.row, faults)])
