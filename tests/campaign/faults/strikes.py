"""What goes wrong during an export. Each function here returns one that takes the running export and causes the fault.

A running export is a `CliExport` or a `Window`.
"""

import contextlib
import errno
import os
import shutil
import signal

import processes


def kill_tool(*signals):
    """Sends one of the signals to a media tool of the program; waits for one if none runs."""

    def strike(run):
        if tool := run.await_tool():
            os.kill(tool, run.random.choice(signals))

    return strike


def signal_program(*signals):
    def strike(run):
        run.send(run.random.choice(signals))

    return strike


def kill_program_and_cleanup(run):
    """The second process is what cleans up after a program that was killed."""
    with contextlib.suppress(ProcessLookupError, FileNotFoundError):  # It may have ended in the meantime.
        for each in processes.cleanup_processes(run.pid):
            os.kill(each, signal.SIGKILL)
    run.send(signal.SIGKILL)


def press_cancel(run):
    run.cancel()


def quit_program(run):
    run.quit()


def fill(disk, most):
    """Fills one of the world's disks. In half of the cases up to `most` bytes stay free."""

    def strike(run):
        folder = run.world.folder / disk
        found = os.statvfs(folder)
        left = run.random.choice((0, run.random.randint(0, most)))
        with open(folder / "filler", "wb", buffering=0) as file:
            write_up_to(file, found.f_bavail * found.f_frsize - left)

    return strike


def write_up_to(file, count):
    block = bytes(1 << 18)
    try:
        while count > 0:
            count -= file.write(block[: min(count, len(block))])
    except OSError as error:
        if error.errno != errno.ENOSPC:
            raise


def remove_or_rename_result_folder(run):
    if run.random.random() < 0.5:
        run.world.out.rename(run.world.moved)
    else:
        remove_all(run.world.out)


def remove_temporary_folder(run):
    remove_all(run.world.temporary)


def remove_all(folder):
    """Removes a folder in which files may appear and disappear meanwhile."""
    while folder.exists():
        shutil.rmtree(folder, ignore_errors=True)


def make_result_folder_read_only(run):
    run.world.out.chmod(0o555)


def make_resource_folder_unreadable(run):
    run.world.resources.chmod(0)


def truncate_source(run):
    size = run.world.source.stat().st_size
    os.truncate(run.world.source, run.random.randrange(size))


def remove_source(run):
    run.world.source.unlink()


def deny_descriptors(run):
    # Not below what is open: `poll` fails when it is given more descriptors than the limit.
    used = len(os.listdir(f"/proc/{run.pid}/fd"))
    run.limit("nofile", used + run.random.randint(0, 4))


def deny_processes(run):
    run.limit("nproc", processes.task_count(run.world.user) + run.random.randint(0, 4))
