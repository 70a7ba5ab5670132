#!/usr/bin/env python3
"""Fails when an include points down the tree, when a source of host/ stands in no room, or when a module source
knows which build it is in."""
import re
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent

# What the sources of a folder may include besides their own folder, by the path after the root. The module's
# layers stand in order: each may include those before it.
LAYERS = ["headmodel", "record", "collection", "import", "file", "ui", "module"]
ALLOWED = {folder: LAYERS[:place] for place, folder in enumerate(LAYERS)}
ALLOWED["platform"] = []
ALLOWED["host"] = ["module/dipole.h"]
# The rooms of host/ stand in order too.
ROOMS = ["text", "head", "paint", "dipoles", "audit", "picture", "exchange", "undo", "panes", "page", "session",
         "viewer"]
ALLOWED["tool"] = ["host", "module/dipole.h", "platform"]

# In quotes, or with a folder of ours in angle brackets.
INCLUDE = re.compile(r'^\s*#\s*include\s+(?:"|<(?=(?:' + "|".join(ALLOWED) + r')/))([^">]+)[">]')
BUILD_TEST = re.compile(r"^\s*#\s*(if|ifdef|ifndef|elif)\b")


def room_of(path):
    """The place in ROOMS of a path such as host/session/Session.h; -1 for one that stands in no room."""
    parts = path.split("/")
    return ROOMS.index(parts[1]) if len(parts) == 3 and parts[1] in ROOMS else -1


def problems():
    for folder, allowed in ALLOWED.items():
        for source in sorted((ROOT / folder).rglob("*")):
            if source.suffix not in (".h", ".cpp"):
                continue
            place = source.relative_to(ROOT)
            if folder == "host" and room_of(place.as_posix()) < 0:
                yield f"{place}: stands in no room of host/"
            for number, line in enumerate(source.read_text(encoding="utf-8").splitlines(), 1):
                if folder in LAYERS and BUILD_TEST.match(line):
                    yield f"{place}:{number}: a module source asks which build it is in"
                include = INCLUDE.match(line)
                if include and not any(include[1] == path or include[1].startswith(path + "/")
                                       for path in [folder, *allowed]):
                    yield f"{place}:{number}: {folder}/ must not include {include[1]}"
                elif include and folder == "host" and include[1].startswith("host/"):
                    if not 0 <= room_of(include[1]) <= room_of(place.as_posix()):
                        yield f"{place}:{number}: {place.parent}/ must not include {include[1]}"


def main():
    found = list(problems())
    print("\n".join(found) if found else "Every include points upward in the tree.")
    return 1 if found else 0


sys.exit(main())
