"""Runs clang-tidy on the product's sources, several at a time. Skips sources that passed before and have not changed.

    tidy.py CLANG_TIDY COMPILE_COMMANDS FOLDER

For a source that passed, a file is created in FOLDER/passed. Its name is a hash of everything in this project that the
result depends on: the source, the project's headers that it includes, its compile command, .clang-tidy and the version
of clang-tidy.
"""

import hashlib
import json
import os
import re
import shlex
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

# The tests are not checked, because that would double the time. The sanitizer builds run them.
PRODUCT = (
    "app",
    "cli",
    "colour",
    "desktop",
    "ffmpeg-shim",
    "framing",
    "media",
    "model",
    "packaging",
    "player",
    "system",
    "ui",
    "updates",
)
INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"]+)"', re.MULTILINE)
ROOT = Path(__file__).resolve().parent.parent


def for_clang(command):
    """A command of GCC without the compiler cache, the options that clang does not know, and the precompiled header."""
    words = shlex.split(command)
    while Path(words[0]).name in ("ccache", "sccache"):
        words = words[1:]
    kept, dropped = [], ("-fcoroutines", "-Werror", "-Winvalid-pch", "-Wno-restrict", "-Wno-maybe-uninitialized")
    for index, word in enumerate(words):
        precompiled = word.endswith("cmake_pch.hxx") and words[index - 1] == "-include"
        before_it = word == "-include" and words[index + 1].endswith("cmake_pch.hxx")
        if word not in dropped and not precompiled and not before_it:
            kept.append(word)
    return kept


def product_commands(compile_commands):
    for entry in json.loads(compile_commands.read_text()):
        source = Path(entry["file"])
        if source.is_relative_to(ROOT) and source.relative_to(ROOT).parts[0] in PRODUCT:
            arguments = for_clang(entry["command"])
            yield {"file": entry["file"], "directory": entry["directory"], "arguments": arguments}


def with_headers(source):
    """The source and the headers of this project that it includes, directly or indirectly."""
    found, waiting = set(), [source]
    while waiting:
        path = waiting.pop()
        if path in found:
            continue
        found.add(path)
        for name in INCLUDE.findall(path.read_text()):
            waiting += [place for place in (path.parent / name, ROOT / name) if place.is_file()]
    return sorted(found)


def fingerprint(entry, version):
    digest = hashlib.sha256(version + (ROOT / ".clang-tidy").read_bytes())
    digest.update("\0".join(entry["arguments"]).encode())
    for path in with_headers(Path(entry["file"])):
        digest.update(path.read_bytes())
    return digest.hexdigest()


def passes(tool, folder, entry, version):
    stamp = folder / "passed" / fingerprint(entry, version)
    if stamp.exists():
        return True
    command = [tool, "-p", folder, "--quiet", entry["file"]]
    run = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
    if run.returncode == 0:
        stamp.touch()
        return True
    print(run.stdout or run.stderr, flush=True)
    return False


def main(tool, compile_commands, folder):
    folder = Path(folder).resolve()
    (folder / "passed").mkdir(parents=True, exist_ok=True)
    entries = list({entry["file"]: entry for entry in product_commands(Path(compile_commands))}.values())
    (folder / "compile_commands.json").write_text(json.dumps(entries))
    version = subprocess.run([tool, "--version"], stdout=subprocess.PIPE, check=True).stdout
    with ThreadPoolExecutor(os.cpu_count()) as pool:
        results = list(pool.map(lambda entry: passes(tool, folder, entry, version), entries))
    print(f"clang-tidy: {len(results)} sources, {results.count(False)} with findings")
    return 0 if results and all(results) else 1


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
