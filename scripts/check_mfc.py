#!/usr/bin/env python3
"""Fails when the module leans on what Microsoft's compiler and MFC do not promise.

Every module source is read by Clang with the declarations of tests/mfc, which hold what Microsoft documents, and
searched for what that compiler warns of at /W4 and Clang does not. Then it is shown that the check can fail: each
line of tests/mfc/refused must be found. A source whose text, and that of all it includes, passed before is not
read again (build/check_mfc). docs/microsoft.md says more.
"""
import os
import re
import subprocess
import sys
import time
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

from readings import ROOT, Includes, Passed

DECLARATIONS = ROOT / "tests/mfc"
HOST = DECLARATIONS / "host.cpp"
QUERY = DECLARATIONS / "warnings.query"
STAMPS = ROOT / "build/check_mfc"
FOLDERS = ["headmodel", "record", "collection", "import", "file", "ui", "module"]
COMPILER = "x86_64-w64-mingw32-g++-posix"

FLAGS = """--target=x86_64-w64-mingw32 -std=c++20 -fms-extensions -Wall -Wextra -Wpedantic -Wconversion
  -Wsign-conversion -Wshadow-all -Wunreachable-code-aggressive -Wconditional-uninitialized -Wmismatched-tags
  -ferror-limit=0 -DUNICODE -D_UNICODE -DWINVER=0x0601 -D_WIN32_WINNT=0x0601
  -DNOMINMAX -D_AFXDLL""".split()

# Found in the text: what this compiler or library takes and the other does not.
TEXT_RULES = [
    (re.compile(r"\b(?:min|max)\s*\("),
     "min or max without parentheses around it: the system's headers have macros of these names"),
    (re.compile(r"__builtin_|__attribute__|__int128|__PRETTY_FUNCTION__|\[\[gnu::|#\s*pragma\s+GCC|<bits/"),
     "an extension of another compiler"),
]
BRACED_RANGE = re.compile(r"\bfor \([^;{}()]*:\s*\{", re.S)
STANDARD_NAME = re.compile(r"\bstd::(\w+)")
MESSAGE_MAP = re.compile(r"\bBEGIN_MESSAGE_MAP\(.*?\bEND_MESSAGE_MAP\(\)", re.S)
ENTRY = re.compile(r"\b(ON_\w+)\(((?:[^(),]*,)*)[^(),]*\)")
AFTER_MAP = re.compile(r"\bDECLARE_MESSAGE_MAP\(\)\s*(?!public:|protected:|private:|\}|\s)")

DIAGNOSTIC = re.compile(r"^(.+?):(\d+):\d+: (?:fatal )?(?:error|warning): (.*)$")
MATCH = re.compile(r'^(.+?):(\d+):\d+: note: "(C\d{4})" binds here')
REFUSED = re.compile(r"// refused: (.*)$")


def compiler_flags():
    """The flags with the C++ library of the compiler that builds for Windows."""
    place = subprocess.run([COMPILER, "-print-file-name=include"], check=True, capture_output=True, text=True)
    library = Path(place.stdout.strip()) / "c++"
    return [*FLAGS, "-isystem", str(library), "-isystem", str(library / "x86_64-w64-mingw32"),
            "-I", str(ROOT), "-isystem", str(DECLARATIONS)]


def without_comments(text):
    return re.sub(r"//[^\n]*", "", text)


def standard_headers():
    """For each name of the standard library, the headers that bring it."""
    headers = {}
    for line in (DECLARATIONS / "library.txt").read_text(encoding="utf-8").splitlines():
        places, _, names = line.partition(":")
        for name in names.split() if not line.startswith("#") else []:
            headers.setdefault(name, set()).update(places.split())
    return headers


def library_findings(text, headers, reached):
    """Names of the standard library whose header no include brings for certain, and where they stand."""
    uses = [(match.start(), match[1]) for match in STANDARD_NAME.finditer(text)]
    uses += [(match.start(), "initializer_list") for match in BRACED_RANGE.finditer(text)]
    for start, name in uses:
        if name not in headers:
            yield start, f"std::{name} stands not in tests/mfc/library.txt"
        elif not headers[name] & reached:
            header = name if name in headers[name] else min(headers[name])
            yield start, f"std::{name} without <{header}>"


def map_findings(text):
    """Entries of a message map that another one of the same map leaves nothing to answer."""
    for one in MESSAGE_MAP.finditer(text):
        known = set()
        for entry in ENTRY.finditer(text, one.start(), one.end()):
            answered = (entry[1], "".join(entry[2].split()))
            if answered in known:
                yield entry.start(), "a second entry of the message map for the same"
            known.add(answered)


def text_findings(path, includes, headers):
    """Findings in the text of one source or header of the module."""
    text = without_comments(includes.text(path))
    place = path.relative_to(ROOT).as_posix()
    hits = [(match.start(), message) for pattern, message in TEXT_RULES for match in pattern.finditer(text)]
    hits += [(match.start(), "a member behind DECLARE_MESSAGE_MAP() needs an access specifier")
             for match in AFTER_MAP.finditer(text)]
    hits += map_findings(text)
    hits += library_findings(text, headers, includes.reach(path)[1])
    return [(place, text.count("\n", 0, start) + 1, message) for start, message in hits]


def compile_findings(path, flags):
    """What Clang reports of one source, warnings and matches of the query."""
    extension = [] if path == HOST else ["-D_AFXEXT"]
    run = subprocess.run(["clang-query", "-f", str(QUERY), str(path), "--", *flags, *extension], cwd=ROOT,
                         capture_output=True, text=True)
    output = run.stdout + run.stderr
    found = set()
    for line in output.splitlines():
        diagnostic = DIAGNOSTIC.match(line)
        match = MATCH.match(line)
        if diagnostic or match:
            where = diagnostic or match
            place = os.path.relpath(os.path.join(ROOT, where[1]), ROOT)
            message = diagnostic[3] if diagnostic else f"as the other compiler's {match[3]}"
            found.add((place, int(where[2]), message))
    # No word of matches: the query itself was not understood, or nothing was read.
    if not found and (run.returncode != 0 or not re.search(r"^\d+ match(es)?\.$", output, re.M)):
        found.add((path.relative_to(ROOT).as_posix(), 0, "could not be searched: " + output.strip()[:2000]))
    return found


def precompiled(flags):
    """The flags that bring the system's headers, read once."""
    STAMPS.mkdir(parents=True, exist_ok=True)
    header = STAMPS / "Win32.pch"
    subprocess.run(["clang++", *flags, "-x", "c++-header", str(DECLARATIONS / "documented/System.h"),
                    "-o", str(header)], check=True, cwd=ROOT)
    return [*flags, "-include-pch", str(header)]


def tools():
    """What the result depends on besides the texts."""
    versions = [subprocess.run([tool, "--version"], check=True, capture_output=True, text=True).stdout
                for tool in ("clang-query", COMPILER)]
    return "".join(versions) + QUERY.read_text(encoding="utf-8") + Path(__file__).read_text(encoding="utf-8")


def is_cpp(path):
    return path.suffix in (".h", ".cpp")


def check_module(pool, includes, headers, flags):
    """All findings of the module, and how many of its sources were read."""
    texts = [path for folder in FOLDERS for path in sorted((ROOT / folder).rglob("*.[ch]*")) if is_cpp(path)]
    found = [hit for path in texts for hit in text_findings(path, includes, headers)]
    found += [(folder, 0, "has no sources") for folder in FOLDERS if not any((ROOT / folder).rglob("*.cpp"))]
    sources = [path for path in texts if path.suffix == ".cpp"] + [HOST]
    passed = Passed(STAMPS, includes, tools())
    fresh = [path for path in sources if path not in passed]
    for path, hits in zip(fresh, pool.map(lambda source: compile_findings(source, flags), fresh)):
        found += hits
        if not hits:
            passed.add(path)
    return found, len(sources), len(fresh)


def check_refusals(pool, includes, headers, flags):
    """Each line of tests/mfc/refused that says what must be found there, and is not; and what else is found."""
    wrong = []
    refusals = 0
    paths = sorted((DECLARATIONS / "refused").glob("*.cpp"))
    for path, hits in zip(paths, pool.map(lambda source: compile_findings(source, flags), paths)):
        place = path.relative_to(ROOT).as_posix()
        hits = hits | set(text_findings(path, includes, headers))
        for number, line in enumerate(includes.text(path).splitlines(), 1):
            messages = [message for where, at, message in hits if where == place and at == number]
            expected = REFUSED.search(line)
            refusals += expected is not None
            if expected and not any(expected[1] in message for message in messages):
                wrong.append((place, number, f"not refused as '{expected[1]}', but: {messages or 'nothing'}"))
            if not expected and messages:
                wrong.append((place, number, f"refused without being expected: {messages}"))
    if not refusals:
        wrong.append(("tests/mfc/refused", 0, "nothing is refused there"))
    return wrong, refusals


def report(title, found):
    for place, line, message in sorted(set(found)):
        print(f"{place}:{line}: {title}: {message}")


def main():
    start = time.monotonic()
    includes = Includes([ROOT, DECLARATIONS])
    headers = standard_headers()
    flags = precompiled(compiler_flags())
    with ThreadPoolExecutor(os.cpu_count() or 1) as pool:
        found, sources, fresh = check_module(pool, includes, headers, flags)
        wrong, refusals = check_refusals(pool, includes, headers, flags)
    report("finding", found)
    report("this check", wrong)
    print(f"{sources} module sources against the documented MFC, {fresh} of them read anew, "
          f"{len(set(found))} findings; {refusals} deliberate mistakes, {len(wrong)} of them not answered as they "
          f"should; {time.monotonic() - start:.0f} s.")
    return 1 if found or wrong else 0


sys.exit(main())
