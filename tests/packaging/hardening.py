#!/usr/bin/env python3
"""hardening.py BUILD-FOLDER | FOLDER: checks that every program in FOLDER, or in what BUILD-FOLDER installs, is hardened.

A program must be position-independent, have a stack that is not executable and addresses that are read-only once
resolved, and check the stack and the sizes of buffers. It must not name the folder of its sources.
"""

import json
import pathlib
import re
import subprocess
import sys
import tempfile

# With _FORTIFY_SOURCE, a call of one of these becomes a call of __…_chk, whatever its arguments are.
FORTIFIED = {"printf", "fprintf", "snprintf", "sprintf"}
LEVEL = 3  # of _FORTIFY_SOURCE
# Objects that are not installed, or that Qt generates to register the module.
EXEMPT = re.compile(r"^(tests|benchmarks)/|_test\.dir/|/stackreel_uiplugin")


def readelf(option, program):
    command = ["readelf", "--wide", option, program]
    return subprocess.run(command, check=True, capture_output=True, text=True, env={"LC_ALL": "C"}).stdout


def imports(program):
    return set(re.findall(r" UND (\w+)", readelf("--dyn-syms", program)))


def faults(program, sources):
    header, segments, dynamic = (readelf(o, program) for o in ("--file-header", "--program-headers", "--dynamic"))
    names = imports(program)
    stack = re.search(r"GNU_STACK(?: +0x\w+){5} (...)", segments)
    if not re.search(r"Type: +DYN", header) or not re.search(r"FLAGS_1\).*\bPIE\b", dynamic):
        yield "is not position-independent"
    if "GNU_RELRO" not in segments or not re.search(r"FLAGS(_1)?\).*\b(BIND_)?NOW\b", dynamic):
        yield "keeps the addresses that it resolved writable"
    if stack is None or "E" in stack[1]:
        yield "has an executable stack"
    if re.search(r"\(R(UN)?PATH\)", dynamic):
        yield "has a search path for libraries"
    if "__stack_chk_fail" not in names:
        yield "does not check its stack"
    for name in sorted(names & FORTIFIED):
        yield f"calls {name} without a check of sizes"
    if sources and str(sources).encode() in program.read_bytes():
        yield f"contains the path {sources}"


def is_program(file):
    return file.is_file() and not file.is_symlink() and file.open("rb").read(4) == b"\x7fELF"


def faults_below(folder, sources=None):
    programs = [file for file in sorted(folder.rglob("*")) if is_program(file)]
    if not programs:
        yield f"there is no program in {folder}"
    for program in programs:
        for fault in faults(program, sources):
            yield f"{program.relative_to(folder)} {fault}"


def fortification(command):
    """The level of _FORTIFY_SOURCE, which the last option decides; 0 for none."""
    levels = re.findall(r" -(?:D_FORTIFY_SOURCE=(\d)|U_FORTIFY_SOURCE)", command)
    return int(levels[-1] or 0) if levels else 0


def unfortified_sources(build):
    """Looks at the compiler's arguments, because the symbols of a program that calls none of FORTIFIED tell nothing."""
    for entry in json.loads((build / "compile_commands.json").read_text()):
        output = re.search(r" -o (\S+)", entry["command"])[1]
        if not EXEMPT.search(output) and fortification(entry["command"]) < LEVEL:
            yield f"{output} is compiled without checks of sizes"


def source_folder(build):
    cache = (build / "CMakeCache.txt").read_text()
    return pathlib.Path(re.search(r"^CMAKE_HOME_DIRECTORY:INTERNAL=(.*)$", cache, re.MULTILINE)[1])


def installed_faults(build):
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run(["cmake", "--install", build, "--prefix", folder], check=True, stdout=subprocess.DEVNULL)
        yield from faults_below(pathlib.Path(folder), source_folder(build))
    yield from unfortified_sources(build)


def main(folder):
    is_build = (folder / "cmake_install.cmake").exists()
    found = list(installed_faults(folder) if is_build else faults_below(folder))
    for fault in found:
        print(fault)
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(sys.argv[1]).resolve()))
