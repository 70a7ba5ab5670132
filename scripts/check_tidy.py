#!/usr/bin/env python3
"""Runs clang-tidy, set by .clang-tidy, over every source, or over those that are named.

Sources of one system are read together, as one source, because the headers cost more than the sources do. Names
that clash then (what unnamed namespaces hold) part them again. Windows' sources are read for the mingw target. A
source whose text, and that of all it includes, passed before is not read again (build/check_tidy).
"""
import os
import re
import resource
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

from readings import ROOT, Includes, Passed

STAMPS = ROOT / "build/check_tidy"
PLATFORM = ROOT / "platform"
FOLDERS = ["headmodel", "record", "collection", "import", "file", "ui", "module", "platform", "host", "tool",
           "tests", "bench", "fuzz", "examples"]
OTHERWISE_CHECKED = "tests/mfc/"  # by check_mfc.py, against other declarations
WINDOWS = re.compile(r"^(ui|module|host/viewer|tests/(ui|host/viewer|module)|bench/ui|examples/embed/host)[/.]|/windows/")
# Tests, benchmarks and fuzzers may be slow themselves, print without asking whether it worked, and use the C library's
# conversions as oracles.
TRIALS = re.compile(r"^(tests|bench|fuzz)/")
TRIALS_CHECKS = ["-performance-*", "-cert-err33-c", "-cert-err34-c"]
TOGETHER = 30  # sources; more would not be shared well between the processors
COMPILER = "x86_64-w64-mingw32-g++-posix"

FLAGS = ["-std=c++20", "-Wall", "-Wextra", "-ferror-limit=0", '-DDIPOLE_VERSION="0"', '-DDIPOLE_SOURCE_FOLDER=""',
         '-DDIPOLE_ROOT_FOLDER=""', "-I", str(ROOT),
         "-I", str(PLATFORM)]
WINDOWS_FLAGS = """--target=x86_64-w64-mingw32 -isystem /usr/src/googletest/googletest/include -DUNICODE -D_UNICODE
  -DWINVER=0x0601 -D_WIN32_WINNT=0x0601 -DNOMINMAX -fsized-deallocation""".split()
MODULE = re.compile(r"^(headmodel|record|collection|import|file|ui|module)/")

FINDING = re.compile(r"^(/.+?):(\d+):\d+: (?:fatal )?(?:error|warning): (.*)$", re.M)


def output_of(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def place_of(path):
    return path.relative_to(ROOT).as_posix()


def kind_of(path):
    """What must be alike in sources that are read together: the system, being inside of the module, the checks."""
    place = place_of(path)
    windows = WINDOWS.search(place) is not None
    return windows, windows and MODULE.search(place) is not None, TRIALS.search(place) is not None


def flags_of(kind):
    windows, module, _ = kind
    if not windows:
        return FLAGS
    library = Path(output_of(COMPILER, "-print-file-name=include").strip()) / "c++"
    extension = ["-D_AFXEXT"] if module else []
    return [*FLAGS, *WINDOWS_FLAGS, *extension, "-isystem", str(library), "-isystem",
            str(library / "x86_64-w64-mingw32")]


def one_source(paths):
    """A source that includes these."""
    unit = STAMPS / (place_of(paths[0]).replace("/", "+"))
    unit.write_text("".join(f'#include "{path}"\n' for path in paths), encoding="utf-8")
    return str(unit)


def read_together(paths, flags):
    """Those of the sources that compile as one, and the others."""
    others = []
    while len(paths) > 1:
        run = subprocess.run(["clang++", "-fsyntax-only", "-w", *flags, one_source(paths)], capture_output=True,
                             text=True)
        if run.returncode == 0:
            break
        clash = {Path(match[1]) for match in FINDING.finditer(run.stderr)} & set(paths[1:])
        clash = clash or set(paths[len(paths) // 2:])
        others += [path for path in paths if path in clash]
        paths = [path for path in paths if path not in clash]
    return paths, others


def checks_of(kind):
    return ",".join(["-bugprone-suspicious-include", *(TRIALS_CHECKS if kind[2] else [])])


def findings(paths, checks, flags):
    """What clang-tidy reports of sources that compile as one: (file, line, message)."""
    run = subprocess.run(["clang-tidy", "--quiet", f"--checks={checks}", one_source(paths), "--",
                          *flags], capture_output=True, text=True, cwd=ROOT)
    found = {(os.path.relpath(os.path.normpath(match[1]), ROOT), int(match[2]), match[3])
             for match in FINDING.finditer(run.stdout)}
    if run.returncode != 0 and not found:
        found.add((place_of(paths[0]), 0, "could not be read: " + (run.stdout + run.stderr).strip()[-2000:]))
    return found


def check(paths, checks, flags, passed):
    """All findings of these sources; those of a reading without findings pass."""
    found = set()
    while paths:
        now, paths = read_together(paths, flags)
        hits = findings(now, checks, flags)
        found |= hits
        for path in now if not hits else []:
            passed.add(path)
    return found


def groups(paths):
    for kind in sorted({kind_of(path) for path in paths}):
        alike = [path for path in paths if kind_of(path) == kind]
        for start in range(0, len(alike), TOGETHER):
            yield alike[start:start + TOGETHER], checks_of(kind), flags_of(kind)


def main():
    named = [Path(name).resolve() for name in sys.argv[1:]]
    sources = named or [path for folder in FOLDERS for path in sorted((ROOT / folder).rglob("*.cpp"))
                        if not place_of(path).startswith(OTHERWISE_CHECKED)]
    common = "".join([output_of("clang-tidy", "--version"), output_of(COMPILER, "--version"),
                      (ROOT / ".clang-tidy").read_text(encoding="utf-8"), Path(__file__).read_text(encoding="utf-8")])
    passed = Passed(STAMPS, Includes([ROOT, PLATFORM]), common)
    fresh = [path for path in sources if path not in passed]
    with ThreadPoolExecutor(os.cpu_count() or 1) as pool:
        found = set().union(*pool.map(lambda group: check(*group, passed), groups(fresh)))
    for place, line, message in sorted(found):
        print(f"{place}:{line}: {message.replace(',-warnings-as-errors', '')}")
    spent = resource.getrusage(resource.RUSAGE_CHILDREN)
    print(f"{len(sources)} sources, {len(fresh)} of them read anew by clang-tidy, {len(found)} findings; "
          f"{spent.ru_utime + spent.ru_stime:.0f} s of processor time.")
    return 1 if found else 0


sys.exit(main())
