"""info.py INFO.JSON INFO.PLIST VERSION: the information dictionary of both systems can be read and says the same."""

import json
import plistlib
import sys

with open(sys.argv[1], encoding="utf-8") as file:
    info = json.load(file)
with open(sys.argv[2], "rb") as file:
    plist = plistlib.load(file)
assert info["CFBundleShortVersionString"] == sys.argv[3], info
assert set(info) == {"CFBundleIdentifier", "CFBundleShortVersionString", "SUFeedURL", "SUPublicEDKey"}, info
for key, value in info.items():
    assert plist[key] == value, key
