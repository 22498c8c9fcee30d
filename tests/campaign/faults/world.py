"""What one export needs: an installation, a clip, a temporary folder and a folder for the result. Nobody else uses them,
so whatever is left there was left by the export."""

import os
import pathlib
import shutil
import subprocess
import time

from clips import probe
from processes import MARK

DISK_BYTES = {"outdisk": 8 << 20, "tmpdisk": 2 << 20}
TWO_DAYS = 2 * 24 * 3600  # in seconds
EARLIER = b"an earlier file, which is no video"


class World:
    """Two of its folders are small disks of their own when root creates it. `user` owns all of it."""

    def __init__(self, folder, program, clip, user):
        self.folder, self.clip, self.user = folder, clip, user
        self.program = folder / "tree" / "bin" / program.name
        self.resources = folder / "tree" / "lib" / "stackreel"
        self.source = folder / "clip.mp4"
        self.home = folder / "home"
        self.outdisk, self.tmpdisk = (folder / name for name in DISK_BYTES)
        self.out, self.temporary = self.outdisk / "out", self.tmpdisk / "tmp"
        self.moved = self.outdisk / "moved"
        self.result = self.out / "result.mp4"
        self.has_disks = os.geteuid() == 0

        shutil.copytree(program.parent.parent / "lib" / "stackreel", self.resources)
        self.program.parent.mkdir()
        shutil.copy(program, self.program)
        self.home.mkdir()
        for disk in (self.outdisk, self.tmpdisk):
            disk.mkdir()
            if self.has_disks:
                self.mount(disk)
        self.repair()
        if self.has_disks:
            self.hand_over()

    @staticmethod
    def mount(disk):
        options = f"size={DISK_BYTES[disk.name]},mode=755"
        subprocess.run(["mount", "-t", "tmpfs", "-o", options, "tmpfs", disk], check=True)

    def close(self):
        if self.has_disks:
            for disk in (self.outdisk, self.tmpdisk):
                subprocess.run(["umount", "-l", disk], check=True)

    def hand_over(self):
        for path in (self.folder, *self.folder.rglob("*")):
            os.chown(path, self.user, self.user)

    def environment(self):
        return {
            "PATH": os.environ["PATH"],
            "HOME": str(self.home),
            "LANG": "C.UTF-8",
            "TMPDIR": str(self.temporary),
            MARK: str(self.folder),
        }

    def repair(self):
        """Undoes every fault, and removes every result."""
        for folder in (self.out, self.temporary, self.resources):
            if folder.exists():
                folder.chmod(0o755)
        for folder in (self.out, self.temporary, self.moved):
            shutil.rmtree(folder, ignore_errors=True)
        for disk in (self.outdisk, self.tmpdisk):
            (disk / "filler").unlink(missing_ok=True)
        self.out.mkdir()
        self.temporary.mkdir()
        self.give([self.out, self.temporary])
        self.restore_source()

    def repair_for_leftovers(self):
        """Undoes the fault and keeps the leftovers, with times more than a day ago, because newer files are not removed."""
        self.out.chmod(0o755)
        for path in (*self.out.iterdir(), *self.temporary.rglob("*")):
            os.utime(path, (time.time() - TWO_DAYS,) * 2)

    def restore_source(self):
        if not self.source.exists() or self.source.stat().st_size != self.clip.stat().st_size:
            shutil.copy(self.clip, self.source)
            self.give([self.source])

    def give(self, paths):
        if os.geteuid() == 0:
            for path in paths:
                os.chown(path, self.user, self.user)

    def put_earlier_file(self):
        self.result.write_bytes(EARLIER)
        self.give([self.result])

    def left_over(self, allowed=()):
        """The files in the temporary folder and beside the result, except those whose names begin with a text in
        `allowed`."""
        found = [*self.files_in(self.temporary), *self.files_in(self.out), *self.files_in(self.moved)]
        return [each for each in found if each.name != self.result.name and not each.name.startswith(tuple(allowed))]

    @staticmethod
    def files_in(folder):
        return list(folder.iterdir()) if folder.exists() else []

    def kept_earlier_file(self):
        """Whether the earlier file is as it was, in its folder or where the folder was moved."""
        places = (self.result, self.moved / self.result.name)
        return any(each.exists() and each.read_bytes() == EARLIER for each in places)

    def has_whole_result(self, size, frames, fewest=None):
        """Whether the result has this size and number of frames; with `fewest`, a number from that to `frames`."""
        try:
            video = probe(self.result)["streams"][0]
        except subprocess.CalledProcessError:
            return False
        is_complete = (frames if fewest is None else fewest) <= int(video["nb_frames"]) <= frames
        return is_complete and (video["width"], video["height"]) == size
