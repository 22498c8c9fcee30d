"""Runs the trials: several at a time through the command line, one after the other through the window."""

import concurrent.futures
import ctypes
import os
import pwd
import random
import sys
import threading
import time
import traceback

from cli_trials import CliTrials
from outcome import WRONG, Wrong
from world import World

CLONE_NEWNS, MS_REC_PRIVATE = 0x20000, 0x44000


class Tasks:
    """Trials to make: each a fault and the seed of its random choices. Any thread may take one."""

    def __init__(self, tasks, record, deadline):
        self.tasks, self.record, self.deadline = tasks, record, deadline
        self.lock = threading.Lock()

    def take(self):
        with self.lock:
            return self.tasks.pop(0) if self.tasks and time.monotonic() < self.deadline else None

    def run_with(self, trials):
        """Takes and makes trials until there are no more."""
        while task := self.take():
            fault, seed = task
            trials.random.seed(seed)
            try:
                self.record.add(seed, trials.run(fault))
            except Wrong as problem:
                self.record.add(seed, WRONG, str(problem))
                print(f"[{seed}] {problem}", file=sys.stderr, flush=True)


def hide_mounts():
    """Moves this process into its own mount namespace."""
    libc = ctypes.CDLL(None, use_errno=True)
    if libc.unshare(CLONE_NEWNS) != 0 or libc.mount(b"none", b"/", None, MS_REC_PRIVATE, None) != 0:
        raise OSError(ctypes.get_errno(), "cannot hide mounts")


def user_of(number):
    """The user of a world. As root, each world has a user of its own."""
    return 100000 + os.getpid() * 16 % 800000 + number if os.geteuid() == 0 else os.getuid()


def make_world(folder, program, clip, number, user):
    world_folder = folder / str(number)
    world_folder.mkdir()
    return World(world_folder, program, clip, user)


def through_command_line(tasks, folder, program, clip, jobs):
    if os.geteuid() == 0:
        hide_mounts()

    def begin(number):
        world = make_world(folder, program, clip, number, user_of(number))
        try:
            tasks.run_with(CliTrials(world, random.Random()))
        finally:
            world.close()

    with concurrent.futures.ThreadPoolExecutor(jobs) as pool:
        for each in [pool.submit(begin, number) for number in range(jobs)]:
            each.result()


def through_window(tasks, folder, program, clip, _):
    """The program, its servers and the trials run as the user of the world, because the message bus accepts
    only its own user."""
    from window_trials import WindowTrials

    if os.geteuid() == 0:
        hide_mounts()
    # A message bus starts only for a user that the system knows.
    user = pwd.getpwnam("nobody").pw_uid if os.geteuid() == 0 else os.getuid()
    world = make_world(folder, program, clip, 0, user)

    def begin():
        trials = WindowTrials(world, random.Random())
        try:
            tasks.run_with(trials)
        finally:
            trials.close()

    try:
        if world.has_disks:
            as_user(world.user, begin)
        else:
            begin()
    finally:
        world.close()


def as_user(user, function):
    """Calls a function in a process of another user, and waits for its end."""
    child = os.fork()
    if child == 0:
        status = 1
        try:
            os.setgroups([])
            os.setresgid(user, user, user)
            os.setresuid(user, user, user)
            function()
            status = 0
        except BaseException:
            traceback.print_exc()
        sys.stderr.flush()
        os._exit(status)
    if os.waitpid(child, 0)[1] != 0:
        raise RuntimeError("the trials were not made")
