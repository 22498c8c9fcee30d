"""Tools in front of the real ones, that wait, and what a program must not leave behind."""

import os
import pathlib
import shutil

# Each writes down its number and waits for a file named "go"; what it is told by `only` is for others it lets pass.
WAITING = """#!/bin/sh
case "$*" in {only}) ;; *) exec {real} "$@" ;; esac
{first}
echo $$ >"{folder}/{name}.pid"
while [ ! -e "{folder}/go" ]; do sleep 0.05; done
exec {real} "$@"
"""
EXPORT, PROXY = "*filter_complex*", "*scale=960*"


class Tools:
    """A folder to stand first on a program's PATH."""

    def __init__(self, folder):
        self.folder = folder
        shutil.rmtree(folder, ignore_errors=True)
        folder.mkdir()

    def hold(self, name, only="*", first=""):
        """Has a tool wait; `first` is what the shell does before."""
        tool = self.folder / name
        tool.write_text(WAITING.format(folder=self.folder, name=name, real=shutil.which(name), only=only, first=first))
        tool.chmod(0o755)

    def pid(self, name):
        """The number of a tool that waits, as a text; empty before."""
        file = self.folder / f"{name}.pid"
        return file.read_text().strip() if file.exists() else ""

    def go(self):
        """Has all tools go on, those to come as well."""
        (self.folder / "go").touch()

    def stop(self):
        """Has those to come wait again."""
        (self.folder / "go").unlink()

    def let_all_pass(self):
        for tool in self.folder.iterdir():
            tool.unlink()


def is_running(pid):
    return os.path.exists(f"/proc/{pid}") and "zombie" not in pathlib.Path(f"/proc/{pid}/status").read_text()


def descendants_of(pid):
    """The processes below a process, as texts."""
    below = []
    for task in pathlib.Path(f"/proc/{pid}/task").glob("*/children"):
        for child in task.read_text().split():
            below += [child, *descendants_of(child)]
    return below
