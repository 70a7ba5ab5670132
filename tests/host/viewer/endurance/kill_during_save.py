#!/usr/bin/env python3
"""Kills the viewer while it saves: kill_during_save.py SAVER KILLS [SEED].

SAVER is dipole_viewer_saver.exe, run under Wine on the screen that DISPLAY names. Each time it is killed at a
random moment of a save over the same file, and each time the file must be a whole set: either what the last
finished save wrote, or what the one that was killed was to write. The reader of tests/file takes it apart, so
the module is not its own judge. New files that killed saves leave behind stay in the folder, in the way of
the next save."""

import random
import subprocess
import sys
import tempfile
import threading
import time
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[3] / "file"))
import read_archives  # noqa: E402

DIPOLES = 10000
PATIENCE = 120  # seconds for one run of the program


class Failure(Exception):
    pass


class Run:
    """The program from its start to its kill, and what it said of its saves."""

    def __init__(self, saver, target, generation):
        self.finished = generation - 1
        self.began = generation - 1
        self.durations = []
        self.process = subprocess.Popen(
            ["wine", saver, "Z:" + str(target).replace("/", "\\"), str(DIPOLES), str(generation)],
            stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
        self.timer = threading.Timer(PATIENCE, self.process.kill)
        self.timer.start()

    def listen(self):
        line = self.process.stdout.readline()
        words = line.split()
        if len(words) != 2:
            raise Failure(f"the program said: {line!r}")
        number = int(words[1])
        if words[0] == "saving":
            self.began = number
            self.start = time.monotonic()
        elif words[0] == "saved":
            self.finished = number
            self.durations.append(time.monotonic() - self.start)
        else:
            raise Failure(f"the program said: {line!r}")

    def wait_for_saves(self, saves):
        """Until so many saves are finished and another one has begun."""
        while len(self.durations) < saves or self.began == self.finished:
            self.listen()

    def kill(self):
        self.process.kill()
        for line in self.process.stdout:  # what it said before it was gone
            words = line.split()
            if len(words) == 2 and line.endswith("\n") and words[0] == "saved":
                self.finished = int(words[1])
            if len(words) == 2 and line.endswith("\n") and words[0] == "saving":
                self.began = int(words[1])
        self.process.wait()
        self.timer.cancel()


def generation_of(path):
    """The number that all dipoles of the set have as their moment; fails when it is not a whole set."""
    reading = read_archives.Reading(path.read_bytes())
    reading.set_20050629()
    if reading.at != len(reading.data):
        raise Failure("bytes are left behind the set")
    if reading.found["m_totalDipoles"] != str(DIPOLES):
        raise Failure(f"{reading.found['m_totalDipoles']} dipoles")
    moments = {reading.found[f"slot {slot} m_moment"] for slot in range(DIPOLES)}
    if len(moments) != 1:
        raise Failure("dipoles of several saves")
    return int(read_archives.struct.unpack(">d", bytes.fromhex(moments.pop()))[0])


def main():
    saver, kills = sys.argv[1], int(sys.argv[2])
    seed = int(sys.argv[3]) if len(sys.argv) > 3 else 1
    chance = random.Random(seed)
    in_the_middle = 0
    newer = 0
    with tempfile.TemporaryDirectory(prefix="dipole-kills-") as folder:
        target = Path(folder) / "set.dipset"
        generation = 1
        for number in range(1, kills + 1):
            left_before = set(Path(folder).iterdir()) - {target}
            run = Run(saver, target, generation)
            try:
                run.wait_for_saves(chance.randint(2, 4))
                time.sleep(chance.uniform(0.0, 1.05) * run.durations[-1])
            finally:
                run.kill()
            left = set(Path(folder).iterdir()) - {target} - left_before
            in_the_middle += len(left)
            try:
                found = generation_of(target)
            except (Failure, AssertionError, EOFError, OSError) as problem:
                sys.exit(f"kill {number}, seed {seed}: the file is no whole set: {problem!r}")
            if not run.finished <= found <= run.began:
                sys.exit(f"kill {number}, seed {seed}: save {run.finished} was finished, {run.began} begun, "
                         f"the file holds {found}")
            newer += found > run.finished
            generation = found + 1
            if number % 20 == 0 or number == kills:
                print(f"{number} kills: {in_the_middle} left an unfinished file, {newer} came between the new "
                      f"file and the word of it; the set was whole each time", flush=True)
    if in_the_middle == 0 and kills >= 50:
        sys.exit("no kill came while a file was written")


if __name__ == "__main__":
    main()
