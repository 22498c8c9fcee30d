"""Finds the processes of an export, and limits what they may use."""

import os
import pathlib
import re
import subprocess

from tools import descendants_of

TOOLS = ("ffmpeg", "ffprobe")
MARK = "STACKREEL_CAMPAIGN"  # an environment variable, whose value names the world that a process belongs to


def content(file):
    """The bytes of a file below /proc; empty if the process has ended."""
    try:
        return pathlib.Path(file).read_bytes()
    except OSError:
        return b""


def name_of(pid):
    return content(f"/proc/{pid}/comm").decode(errors="replace").strip()


def arguments_of(pid):
    return content(f"/proc/{pid}/cmdline").decode(errors="replace").split("\0")


def media_tools(pid):
    """The process ids of the media tools that run below a process."""
    try:
        return [int(each) for each in descendants_of(pid) if name_of(each) in TOOLS]
    except OSError:  # One of them ended in the meantime.
        return []


def cleanup_processes(pid):
    """The second process of a program, which cleans up after it."""
    return [int(each) for each in descendants_of(pid) if name_of(each) == "stackreel-clean"]


def blocks(pid, number):
    """Whether a process blocks a signal, as the program does to wait for it."""
    found = re.search(rb"^SigBlk:\s*(\w+)", content(f"/proc/{pid}/status"), re.MULTILINE)
    return bool(found and int(found[1], 16) >> (number - 1) & 1)


def probes_result(pid, folder):
    """Whether a program runs the last probe of an export, which reads the result in this folder."""
    return any(
        name_of(each) == "ffprobe" and any(word.startswith(f"{folder}/") for word in arguments_of(each))
        for each in media_tools(pid)
    )


def marked(world):
    """The processes that were started in a world and still run, whoever their parent is by now. A process that has ended
    has no environment."""
    mark = f"{MARK}={world}".encode()
    running = (each for each in os.listdir("/proc") if each.isdigit())
    return [int(each) for each in running if mark in content(f"/proc/{each}/environ").split(b"\0")]


def described(pids):
    return ", ".join(f"{pid} ({' '.join(arguments_of(pid))[:60].strip() or name_of(pid)})" for pid in pids)


def task_count(user):
    """The number of processes and threads of a user, which RLIMIT_NPROC counts."""
    count = 0
    for each in pathlib.Path("/proc").iterdir():
        try:
            if each.name.isdigit() and each.stat().st_uid == user:
                count += len(os.listdir(each / "task"))
        except OSError:
            pass
    return count


def limit(pid, user, which, value):
    """Sets the soft limit `which` (an option of the program prlimit) of a running process, and returns the one from before.
    Only the process's own user may do that everywhere."""
    options = [f"--pid={pid}", "--raw", "--noheadings", f"--{which}", "--output=SOFT"]
    as_user = {"user": user, "group": user, "extra_groups": []} if os.geteuid() == 0 else {}
    before = subprocess.run(["prlimit", *options], capture_output=True, text=True, **as_user).stdout.strip()
    subprocess.run(["prlimit", f"--pid={pid}", f"--{which}={value}:"], capture_output=True, **as_user)
    return before
