#!/usr/bin/env python3
"""Shows the progress of a build or a test run: progress.py TITLE LOG < output

Writes the whole input to LOG. On a terminal it updates a single line; elsewhere it prints a line after every tenth of
the steps. The steps are those that Ninja ("[12/34] …") and CTest ("12/34 Test …") number.
"""
import re
import sys
import time

STEP = re.compile(r"^\[(\d+)/(\d+)\]|^ *(\d+)/(\d+) Test ")


def show(title, done, total, began, last):
    seconds = int(time.monotonic() - began)
    line = f"{title}: {done} of {total}, {seconds // 60}:{seconds % 60:02}"
    if sys.stdout.isatty():
        print(f"\r{line}", end="", flush=True)
    elif done * 10 // total != last * 10 // total or done == total:
        print(line, flush=True)


def main():
    title, log = sys.argv[1:]
    began, done, total = time.monotonic(), 0, 0
    with open(log, "a", encoding="utf-8", errors="surrogateescape") as file:
        for text in sys.stdin:
            file.write(text)
            file.flush()
            step = STEP.match(text)
            if step:
                last, (done, total) = done, map(int, filter(None, step.groups()))
                show(title, done, total, began, last)
    if sys.stdout.isatty() and total:
        print()


if __name__ == "__main__":
    sys.stdin.reconfigure(errors="surrogateescape")
    main()
