#!/usr/bin/env python3
"""Breaks one line of the module at a time, and tells which breaks the tests do not notice.

    scripts/mutants.py --count 25 --folder record     until 25 lines of record/ have been broken
    scripts/mutants.py --report                       what is known, by folder, with every survivor
    scripts/mutants.py --again [--sanitize]           tries the survivors once more, say after a new test

Lines are chosen at random, but the same ones for the same --seed and sources. A break changes what a line
means (scripts/broken_lines.py): a comparison or its boundary, a constant, a sign, an operator, two arguments,
an index, a text, a condition; or it leaves out a statement or an "else". Each is compiled into the native
tests of its folder: tests/FOLDER, tests/FOLDER/native and, from the collection on, tests/sweep. It is killed
when one of them fails, crashes or no longer ends. Of ui/ only what the native tests reach takes part.

Everything happens in build/mutants: a copy of the sources, which alone is ever broken, objects with hardly
any optimisation, and results.tsv with one line per break. A run that was stopped goes on where it was; breaks
that do not compile are noted but not counted.
"""

import argparse
import collections
import json
import os
import pathlib
import random
import re
import resource
import signal
import subprocess
import sys

sys.dont_write_bytecode = True
from broken_lines import candidates, without_comment  # noqa: E402

ROOT = pathlib.Path(__file__).resolve().parent.parent
BUILD = ROOT / "build" / "mutants"
TREE = BUILD / "tree"
FOLDERS = ["headmodel", "record", "collection", "import", "file", "ui"]
COPIED = FOLDERS + ["platform", "tests"]
COMPILER = os.environ.get("CXX", "clang++")
PLACES = [f'-DDIPOLE_SOURCE_FOLDER="{TREE}"', '-DDIPOLE_ROOT_FOLDER=""']
FLAGS = ["-std=c++20", "-w", "-I.", "-Iplatform", *PLACES]
SANITIZERS = ["-O1", "-g", "-fsanitize=address,undefined", "-fno-sanitize-recover=undefined"]

Break = collections.namedtuple("Break", "file number old new")  # number: from 0


def folder_of(one):
    return one.file.split("/")[0]


class Tests:
    """The native tests of a folder, and how they are built with one file broken."""

    def __init__(self, name, sanitized):
        self.name = name
        self.sanitized = sanitized
        self.objects = BUILD / ("sanitized" if sanitized else "plain")
        sweep = ["tests/sweep"] if name in ("collection", "import", "file") else []
        own = [*self.sources("tests/support", f"tests/{name}", f"tests/{name}/native", *sweep)]
        self.units = self.with_layers(own)
        self.slow = []

    def sources(self, *places):
        for place in places:
            for path in sorted((TREE / place).glob("*.cpp")):
                yield str(path.relative_to(TREE))

    def with_layers(self, own):
        """The tests' sources, those of every layer that they include, and of ui/ and tests/ the sources of
        the headers that they include."""
        units = [*self.sources("platform/portable", "platform/native"), *own]
        for unit in units:  # grows
            self.compile(unit)
            for header in self.dependencies(unit):
                layer = header.split("/")[0]
                of_header = [re.sub(r"\.h$", ".cpp", header)]
                more = self.sources(layer) if layer in FOLDERS and layer != "ui" else of_header
                units += [source for source in more
                          if source.endswith(".cpp") and source not in units and (TREE / source).is_file()]
        return units

    def object_of(self, unit):
        return self.objects / unit.replace("/", "_").replace(".cpp", ".o")

    def dependencies(self, unit):
        text = self.object_of(unit).with_suffix(".d").read_text().replace("\\\n", " ").split(":", 1)[1]
        return [os.path.normpath(path) for path in text.split() if not path.startswith("/")]

    def command(self, unit, output):
        # Tests of the collection compare whole tables, those of the import many rows: optimising pays.
        is_long = "collection/" in unit or "import/" in unit
        mode = SANITIZERS if self.sanitized else ["-O1" if is_long else "-O0"]
        depends = ["-MMD", "-MF", str(output.with_suffix(".d"))]
        return [COMPILER, *FLAGS, *mode, *depends, "-c", unit, "-o", str(output)]

    def compile(self, unit):
        """Compiles what is older than one of its files; what does not compile ends the run."""
        output = self.object_of(unit)
        if output.exists():
            made = output.stat().st_mtime
            files = [TREE / path for path in self.dependencies(unit)]
            if all(file.exists() and file.stat().st_mtime < made for file in files):
                return
        output.parent.mkdir(parents=True, exist_ok=True)
        subprocess.run(self.command(unit, output), cwd=TREE, check=True)

    def link(self, replaced, program):
        """Whether it links."""
        objects = [str(replaced.get(unit, self.object_of(unit))) for unit in self.units]
        mode = SANITIZERS if self.sanitized else []
        command = [COMPILER, *mode, "-fuse-ld=lld", *objects, "-lgtest", "-o", str(program)]
        done = subprocess.run(command, cwd=TREE, capture_output=True, text=True)
        (BUILD / "link.txt").write_text(done.stderr)
        return done.returncode == 0

    def make_whole(self):
        """Builds and runs the tests without a break, unless nothing changed. They must be green."""
        for unit in self.units:
            self.compile(unit)
        known = self.objects / f"tests_{self.name}.json"
        newest = max(self.object_of(unit).stat().st_mtime for unit in self.units)
        if known.exists() and known.stat().st_mtime > newest:
            self.seconds, self.slow = json.loads(known.read_text())
            return
        program = self.objects / f"tests_{self.name}"
        if not self.link({}, program):
            sys.exit(f"{program} does not link, see {BUILD / 'link.txt'}")
        verdict, detail, self.seconds, log = self.run(program, 900, "*")
        if verdict != "survived":
            sys.exit(f"the tests of {self.name} fail without a break: {detail}")
        times = re.findall(r"\[       OK \] ([\w./]+) \((\d+) ms\)", log)
        total = sum(int(time) for _, time in times)
        self.slow = [name for name, time in times if int(time) > 0.1 * total]
        known.write_text(json.dumps([self.seconds, self.slow]))

    def make_broken(self, file):
        """The program from the tree with that file changed; None when it does not compile."""
        replaced = {}
        for unit in self.units:
            if file in self.dependencies(unit):
                output = BUILD / "broken" / self.object_of(unit).name
                output.parent.mkdir(exist_ok=True)
                if subprocess.run(self.command(unit, output), cwd=TREE, capture_output=True).returncode:
                    return None
                replaced[unit] = output
        program = BUILD / "broken" / "tests"
        return program if self.link(replaced, program) else None

    def judge(self, program):
        """The verdict on a program with a break, and the test that gave it. Long tests come last."""
        limit = 10 + 4 * self.seconds
        slow = ":".join(self.slow)
        verdict, detail, *_ = self.run(program, limit, f"-{slow}")
        if verdict == "survived" and slow:
            verdict, detail, *_ = self.run(program, limit, slow)
        return verdict, detail

    def run(self, program, seconds, selected):
        """The verdict, which test gave it, the processor time and the output. What never ends is stopped
        after about `seconds` of processor time, or much later on the clock."""
        def limit():
            resource.setrlimit(resource.RLIMIT_CPU, (int(seconds) + 1, int(seconds) + 2))
            resource.setrlimit(resource.RLIMIT_FSIZE, (1 << 28, 1 << 28))
            if not self.sanitized:
                resource.setrlimit(resource.RLIMIT_AS, (4 << 30, 4 << 30))

        output = BUILD / "output.txt"
        before = resource.getrusage(resource.RUSAGE_CHILDREN)
        command = [str(program), "--gtest_fail_fast", f"--gtest_filter={selected}"]
        with open(output, "wb") as stream:
            process = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=stream, preexec_fn=limit,
                                       stderr=subprocess.STDOUT, cwd=BUILD, start_new_session=True)
            try:
                code = process.wait(timeout=60 + 20 * seconds)
            except subprocess.TimeoutExpired:
                os.killpg(process.pid, signal.SIGKILL)
                process.wait()
                code = -signal.SIGXCPU
        after = resource.getrusage(resource.RUSAGE_CHILDREN)
        spent = after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime
        log = output.read_text(errors="replace")
        if code == 0:
            return "survived", "", spent, log
        failed = re.findall(r"\[  FAILED  \] (\w[\w/]*\.[\w/]+)", log)
        started = re.findall(r"\[ RUN      \] (\S+)", log) or ["no test"]
        how = "no end" if code in (-signal.SIGXCPU, -signal.SIGKILL) else "crash"
        return "killed", failed[0] if failed else f"{how} in {started[-1]}", spent, log

    def try_break(self, one):
        target = TREE / one.file
        original, times = target.read_text(), target.stat()
        lines = original.splitlines()
        indent = len(lines[one.number]) - len(lines[one.number].lstrip())
        lines[one.number] = " " * indent + one.new.strip()
        try:
            target.write_text("\n".join(lines) + "\n")
            program = self.make_broken(one.file)
            return self.judge(program) if program else ("invalid", "does not compile")
        finally:
            target.write_text(original)
            os.utime(target, ns=(times.st_atime_ns, times.st_mtime_ns))


def copy_sources():
    """Makes the tree in build/mutants the checkout's; files that are the same keep their time."""
    wanted = {}
    for folder in COPIED:
        for path in (ROOT / folder).rglob("*"):
            if path.is_file() and "__pycache__" not in path.parts:
                wanted[path.relative_to(ROOT)] = path
    for path in [path for path in TREE.rglob("*") if path.is_file()]:
        if path.relative_to(TREE) not in wanted:
            path.unlink()
    for name, path in wanted.items():
        target, content = TREE / name, path.read_bytes()
        if not target.exists() or target.read_bytes() != content:
            target.parent.mkdir(parents=True, exist_ok=True)
            target.write_bytes(content)


class Results:
    """One line per break; the last one about a break counts."""

    def __init__(self):
        self.path = BUILD / "results.tsv"
        self.known = {}
        if self.path.exists():
            for line in self.path.read_text().splitlines():
                verdict, detail, file, number, old, new = line.split("\t")
                self.remember(Break(file, int(number) - 1, old, new), verdict, detail)

    def remember(self, one, verdict, detail):
        self.known[one.file, one.old.strip(), one.new.strip()] = (verdict, detail, one)

    def has(self, one):
        return (one.file, one.old.strip(), one.new.strip()) in self.known

    def note(self, one, verdict, detail):
        self.remember(one, verdict, detail)
        fields = [verdict, detail, one.file, str(one.number + 1), one.old.strip(), one.new.strip()]
        with open(self.path, "a") as stream:
            stream.write("\t".join(fields) + "\n")
        print(f"{verdict:9} {one.file}:{one.number + 1}: {one.new.strip()}   {detail}", flush=True)

    def of(self, folder, *verdicts):
        return [one for verdict, _, one in self.known.values()
                if folder_of(one) == folder and verdict in verdicts]

    def report(self):
        print(f"{'folder':12} breaks  killed  survived")
        totals = [0, 0]
        for folder in FOLDERS:
            killed, survived = len(self.of(folder, "killed")), len(self.of(folder, "survived"))
            totals = [totals[0] + killed, totals[1] + survived]
            print(f"{folder:12} {killed + survived:6}  {killed:6}  {survived:8}")
        print(f"{'all':12} {sum(totals):6}  {totals[0]:6}  {totals[1]:8}")
        for folder in FOLDERS:
            for one in self.of(folder, "survived"):
                print(f"\n{one.file}:{one.number + 1}\n  {one.old.strip()}\n  {one.new.strip()}")


def try_until(count, results, name, options):
    tests = Tests(name, options.sanitize)
    tests.make_whole()
    reached = {path for unit in tests.units for path in tests.dependencies(unit)
               if path.startswith(f"{name}/")}
    chance = random.Random(f"{options.seed} {name}")
    breaks = [Break(file, *found) for file in sorted(reached)
              for found in candidates(file, (TREE / file).read_text(), chance)]
    chance.shuffle(breaks)
    for one in breaks:
        if len(results.of(name, "killed", "survived")) >= count:
            break
        if not results.has(one):
            results.note(one, *tests.try_break(one))


def try_again(results, name, options):
    survivors = results.of(name, "survived")
    if not survivors:
        return
    tests = Tests(name, options.sanitize)
    tests.make_whole()
    for one in survivors:
        code = without_comment(one.old).strip()
        lines = (TREE / one.file).read_text().splitlines()
        places = [number for number, line in enumerate(lines) if without_comment(line).strip() == code]
        if places:
            here = one._replace(number=min(places, key=lambda number: abs(number - one.number)))
            results.note(here, *tests.try_break(here))
        else:
            results.note(one, "gone", "the line is no longer there")


def main():
    parser = argparse.ArgumentParser(description="Breaks lines of the module; see the head of this file.")
    parser.add_argument("--folder", choices=FOLDERS, action="append", help="only this; may be repeated")
    parser.add_argument("--count", type=int, default=25, help="how many breaks of each folder there shall be")
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--report", action="store_true")
    parser.add_argument("--again", action="store_true", help="try the survivors once more")
    parser.add_argument("--sanitize", action="store_true", help="under the sanitizers, slower")
    options = parser.parse_args()
    BUILD.mkdir(parents=True, exist_ok=True)
    results = Results()
    if options.report:
        results.report()
        return
    copy_sources()
    for name in options.folder or FOLDERS:
        if options.again:
            try_again(results, name, options)
        else:
            try_until(options.count, results, name, options)


if __name__ == "__main__":
    main()
