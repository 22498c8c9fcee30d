"""info.py INFO.JSON INFO.PLIST VERSION [FEED KEY]: checks that both forms of the information dictionary are readable
and equal, and contain the configured values."""

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
if len(sys.argv) > 4:
    assert [info["SUFeedURL"], info["SUPublicEDKey"]] == sys.argv[4:], info
