"""The small changes to C++ sources that mutation.py tries.

Works on the text of clang-formatted sources: binary operators have spaces around them, template brackets have none. Comments,
preprocessor lines and the content of strings stay. A change that does not compile is counted apart.
"""

import dataclasses
import re

SWAPS = {
    " < ": [" <= ", " >= "],
    " <= ": [" < "],
    " > ": [" >= ", " <= "],
    " >= ": [" > "],
    " == ": [" != "],
    " != ": [" == "],
    " && ": [" || "],
    " || ": [" && "],
    " + ": [" - "],
    " - ": [" + "],
    " * ": [" / "],
    " / ": [" * "],
    " += ": [" -= "],
    " -= ": [" += "],
    "true": ["false"],
    "false": ["true"],
    "std::min": ["std::max"],
    "std::max": ["std::min"],
}
WORDS = {"true", "false", "std::min", "std::max"}
NUMBER = re.compile(r"(?<![\w.\"'])(\d+)(?![\w.'])")
DECIMAL = re.compile(r"(?<![\w.])(\d*\.\d+)(?![\w.])")
NEGATION = re.compile(r"!(?=[\w(])(?!=)")
CONDITION = re.compile(r"^\s*(?:\} else )?(?:if|while) \((?P<condition>[^;=]*(?:[=!<>]=[^;=]*)*)\)(?: \{)?$")
STATEMENT = re.compile(
    r"^(?P<indent>\s+)(?!return|co_return|throw|using|case|default|const |auto |static )[\w:.>(\[*-]+[(=+\-][^;]*;$"
)
JUMP = re.compile(r"^\s+(?:break|continue);$")


@dataclasses.dataclass(frozen=True)
class Change:
    """In line `line`, counted from 1, the text from `start` to `end` becomes `new`."""

    folder: str
    file: str
    line: int
    start: int
    end: int
    new: str
    old: str

    @property
    def key(self):
        return f"{self.file}:{self.line}:{self.start}-{self.end}:{self.new!r}"

    def __str__(self):
        return f"{self.file}:{self.line}: {self.old.strip()!r} became {self.new.strip()!r} at column {self.start + 1}"

    def apply(self, text):
        lines = text.split("\n")
        old = lines[self.line - 1]
        lines[self.line - 1] = old[: self.start] + self.new + old[self.end :]
        return "\n".join(lines)


def without_texts(line):
    """The line with comments and the content of strings replaced by blanks of the same length."""

    def blank(match):
        return re.sub(r"[^\"']", " ", match[0]) if match[0][0] in "\"'" else " " * len(match[0])

    return re.sub(r"\"(?:\\.|[^\"\\])*\"|'(?:\\.|[^'\\])'|//.*$", blank, line)


def edits(line):
    """The changes of a line: start, end and the new text."""
    for old, others in SWAPS.items():
        for match in re.finditer(rf"\b{old}\b" if old in WORDS else re.escape(old), line):
            for new in others:
                yield *match.span(), new
    for match in NUMBER.finditer(line):
        yield *match.span(), str(int(match[1]) + 1)
    for match in DECIMAL.finditer(line):
        yield *match.span(), f"(2 * {match[1]})"
    for match in NEGATION.finditer(line):
        yield *match.span(), ""
    if match := CONDITION.match(line):
        yield *match.span("condition"), f"!({match['condition']})"
    if STATEMENT.match(line) or JUMP.match(line):
        yield len(line) - len(line.lstrip()), len(line), ";"


def is_code(line):
    return not line.lstrip().startswith(("#", "//", "///", "template", "using", "namespace", "enum", "static_assert"))


def of_folder(root, folder):
    changes = []
    for path in sorted((root / folder).glob("*.cpp")) + sorted((root / folder).glob("*.h")):
        file = str(path.relative_to(root))
        for number, original in enumerate(path.read_text().split("\n"), 1):
            line = without_texts(original)
            if is_code(original):
                changes += [
                    Change(folder, file, number, start, end, new, original[start:end])
                    for start, end, new in edits(line)
                ]
    return changes
