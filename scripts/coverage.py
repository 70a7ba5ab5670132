#!/usr/bin/env python3
"""Sums up what an instrumented build has counted: coverage.py BUILD FOLDER...

Prints the lines and branches of each folder's sources that were reached, and every line that was not. A line
or branch of a template or an inline function counts as reached when any instance of it was. Branches that
only an exception takes are left out: the compiler makes one at nearly every call."""

import json
import subprocess
import sys
from collections import defaultdict
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent


def counted(build):
    for data in sorted(build.rglob("*.gcda")):
        output = subprocess.run(["gcov", "--branch-probabilities", "--json-format", "--stdout", str(data)],
                                cwd=build, capture_output=True, check=True).stdout
        for line in output.splitlines():
            yield from json.loads(line)["files"] if line.strip() else ()


def main():
    build, folders = Path(sys.argv[1]).resolve(), sys.argv[2:]
    lines, branches = defaultdict(int), defaultdict(int)
    for file in counted(build):
        path = (build / file["file"]).resolve()
        if not path.is_relative_to(ROOT) or path.relative_to(ROOT).parts[0] not in folders:
            continue
        name = str(path.relative_to(ROOT))
        for line in file["lines"]:
            lines[name, line["line_number"]] += line["count"]
            taken = [branch["count"] for branch in line["branches"] if not branch["throw"]]
            for index, count in enumerate(taken if len(taken) > 1 else []):
                branches[name, line["line_number"], index] += count
    for folder in folders:
        rows = []
        for counts in (lines, branches):
            own = [count for key, count in counts.items() if key[0].startswith(folder + "/")]
            reached = sum(1 for count in own if count)
            rows.append(f"{reached}/{len(own)} {100 * reached / max(1, len(own)):.1f} %")
        print(f"{folder + '/':14} lines {rows[0]:18} branches {rows[1]}")
    print("Lines that no test reaches:")
    for (name, number), count in sorted(lines.items()):
        if count == 0:
            print(f"  {name}:{number}: {(ROOT / name).read_text().splitlines()[number - 1].strip()}")


if __name__ == "__main__":
    main()
