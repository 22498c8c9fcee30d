"""Checks that the sources of each folder include only its own headers and those of the folders that it may use. Prints
each include that is not allowed.

    layers.py
"""

import re
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"]+)"', re.MULTILINE)

BASE = ("system", "player/base")
PICTURES = (*BASE, "player/source", "player/pictures")
LOOP = (*PICTURES, "player/loop")
ENGINE = (*LOOP, "player/sound", "player/playout", "player/engine")
INTERFACES = ("system", "player", "player/base", "desktop/panels")
USES = {
    "system": (),
    "colour": (),
    "player/base": ("system",),
    "player/source": BASE,
    "player/pictures": (*BASE, "player/source", "colour"),
    "player/loop": PICTURES,
    "player/sound": LOOP,
    "player/playout": LOOP,
    "player/stills": PICTURES,
    "player/engine": ENGINE,
    "player": (*ENGINE, "player/stills"),
    "desktop/accessibility": ("system",),
    "desktop/panels": ("system",),
    "desktop/power": ("system",),
    "updates": ("system",),
    "ffmpeg-shim": ("system", "colour"),
    "media": INTERFACES,
    "framing": ("media",),
    "model": (*INTERFACES, "media", "framing"),
    "ui/geometry": ("framing",),
    "ui": (*INTERFACES, "media", "framing", "model", "ui/geometry", "desktop/accessibility"),
    "cli": ("system", "media", "framing", "model"),
}


def folder_of(path):
    """The folder of USES that a path belongs to."""
    return next((str(folder) for folder in path.parents if str(folder) in USES), None)


def main():
    wrong = 0
    for folder in {name.split("/")[0] for name in USES}:
        for source in sorted(path for path in (ROOT / folder).rglob("*") if path.suffix in (".h", ".cpp")):
            own = folder_of(source.relative_to(ROOT))
            for name in INCLUDE.findall(source.read_text()):
                used = folder_of(Path(name))
                if used != own and used not in USES[own]:
                    print(f"{source.relative_to(ROOT)} includes {name}")
                    wrong += 1
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
