#!/usr/bin/env python3
"""Fails when an include points down the tree, or when a module source knows which build it is in."""
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
# Inside of host/ too: pictures, then the session on them, then the windows.
INSIDE_HOST = ["", "session", "viewer"]
ALLOWED["tool"] = ["host", "module/dipole.h", "platform"]

INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"]+)"')
BUILD_TEST = re.compile(r"^\s*#\s*(if|ifdef|ifndef|elif)\b")


def host_folder(path):
    """The place in INSIDE_HOST of a path such as host/session/Session.h; 0 for one right in host/."""
    parts = path.split("/")
    return INSIDE_HOST.index(parts[1]) if len(parts) > 2 and parts[0] == "host" else 0


def problems():
    for folder, allowed in ALLOWED.items():
        for source in sorted((ROOT / folder).rglob("*")):
            if source.suffix not in (".h", ".cpp"):
                continue
            place = source.relative_to(ROOT)
            for number, line in enumerate(source.read_text(encoding="utf-8").splitlines(), 1):
                if folder in LAYERS and BUILD_TEST.match(line):
                    yield f"{place}:{number}: a module source asks which build it is in"
                include = INCLUDE.match(line)
                if include and not any(include[1] == path or include[1].startswith(path + "/")
                                       for path in [folder, *allowed]):
                    yield f"{place}:{number}: {folder}/ must not include {include[1]}"
                elif include and folder == "host" and host_folder(include[1]) > host_folder(place.as_posix()):
                    yield f"{place}:{number}: {place.parent}/ must not include {include[1]}"


def main():
    found = list(problems())
    print("\n".join(found) if found else "Every include points upward in the tree.")
    return 1 if found else 0


sys.exit(main())
