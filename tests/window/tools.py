"""Scripts that wait in place of the media tools, and the processes that a program must not leave behind."""

import os
import pathlib
import shutil

# Each script writes its process id to a file and waits until the file "go" exists. It runs the real tool at once if its
# arguments do not match `only`.
WAITING = """#!/bin/sh
case "$*" in {only}) ;; *) exec {real} "$@" ;; esac
{first}
echo $$ >"{folder}/{name}.pid"
while [ ! -e "{folder}/go" ]; do sleep 0.05; done
exec {real} "$@"
"""
EXPORT, PREVIEW_COPY = "*filter_complex*", "*scale=960*"


class Tools:
    """A folder of such scripts, for the start of a program's PATH."""

    def __init__(self, folder):
        self.folder = folder
        shutil.rmtree(folder, ignore_errors=True)
        folder.mkdir()

    def hold(self, name, only="*", first=""):
        """Makes a tool wait. The script runs the commands `first` before that."""
        tool = self.folder / name
        tool.write_text(WAITING.format(folder=self.folder, name=name, real=shutil.which(name), only=only, first=first))
        tool.chmod(0o755)

    def pid(self, name):
        """The process id of a tool that waits, as a text; empty before it waits."""
        file = self.folder / f"{name}.pid"
        return file.read_text().strip() if file.exists() else ""

    def go(self):
        """Lets all tools continue, also those that are started later."""
        (self.folder / "go").touch()

    def stop(self):
        """Makes tools that are started later wait again."""
        (self.folder / "go").unlink()

    def let_all_pass(self):
        for tool in self.folder.iterdir():
            tool.unlink()


def is_running(pid):
    return os.path.exists(f"/proc/{pid}") and "zombie" not in pathlib.Path(f"/proc/{pid}/status").read_text()


def descendants_of(pid):
    """The process ids of all descendants of a process, as texts."""
    below = []
    for task in pathlib.Path(f"/proc/{pid}/task").glob("*/children"):
        for child in task.read_text().split():
            below += [child, *descendants_of(child)]
    return below
