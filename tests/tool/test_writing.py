"""A file that is written takes its target's place whole or not at all, whatever happens meanwhile."""

import fcntl
import os
import random
import resource
import signal
import stat
import subprocess
import time
import unittest

import dipset
from support import TOOL, ToolTest, example, run, with_output

NOBODY = 65534


class WritingTest(ToolTest):
    def convert(self, *arguments, code=0, **options):
        return self.end_with(code, "convert", *with_output(arguments), **options)

    def read(self, path):
        with open(path, "rb") as file:
            return file.read()

    def listing(self, folder=None):
        return sorted(os.listdir(folder or self.folder))

    def large_set(self, name="large.dipset", label=""):
        """Four megabytes and more: takes a while to write."""
        return self.write(name, dipset.pack_set([{"label": label}] * 15000))


class Target(WritingTest):
    ENDINGS = (".dipset", ".txt", ".csv", ".tsv", ".json")

    def test_permissions_are_the_usual_ones_or_those_of_the_file_of_before(self):
        for ending in self.ENDINGS:
            target = self.path("o" + ending)
            before = os.umask(0o027)
            try:
                self.convert(example("auditory.dip"), target)
            finally:
                os.umask(before)
            self.assertEqual(stat.S_IMODE(os.stat(target).st_mode), 0o640, ending)
            os.chmod(target, 0o606)
            self.convert(example("auditory.dip"), target)
            self.assertEqual(stat.S_IMODE(os.stat(target).st_mode), 0o606, ending)

    def test_links_are_followed_and_stay(self):
        os.mkdir(self.path("real"))
        os.symlink("real/o.csv", self.path("first.csv"))
        os.symlink("first.csv", self.path("second.csv"))
        for _ in range(2):  # first to a file that is not there yet
            self.convert(example("auditory.dip"), self.path("second.csv"))
            for link in ("first.csv", "second.csv"):
                self.assertTrue(os.path.islink(self.path(link)))
            self.assertFalse(os.path.islink(self.path("real/o.csv")))
            self.assertEqual(self.read(self.path("real/o.csv")).count(b"\n"), 3)
            self.assertEqual(self.listing(self.path("real")), ["o.csv"])

    def test_links_in_a_circle_are_an_error(self):
        os.symlink("b.csv", self.path("a.csv"))
        os.symlink("a.csv", self.path("b.csv"))
        self.assertIn("cannot write %s: " % self.path("a.csv"),
                      self.convert(example("auditory.dip"), self.path("a.csv"), code=1).err)

    def test_an_input_may_be_the_target(self):
        for ending in (".dipset",):
            path = self.write("s" + ending, dipset.pack_set([{"label": "a"}]))
            other = self.write("t" + ending, dipset.pack_set([{"label": "b"}]))
            self.convert(path, other, path)
            self.assertEqual([d["label"] for d in dipset.unpack_set(self.read(path))[1]], ["a", "b"])
            self.convert(other, path, path)
            self.assertEqual([d["label"] for d in dipset.unpack_set(self.read(path))[1]], ["b", "a", "b"])
        with open(example("auditory.dip"), "rb") as file:
            dip = self.write("d.dip", file.read())
        self.convert(dip, dip, "--to", "csv")
        self.assertTrue(self.read(dip).startswith(b"number,id,"))

    def test_what_is_no_regular_file_is_left_alone(self):
        os.mkfifo(self.path("pipe.csv"))
        os.mkdir(self.path("folder.csv"))
        for target, cause in (("pipe.csv", "it is not a regular file"), ("folder.csv", "it is a folder")):
            result = self.convert(example("auditory.dip"), self.path(target), code=1)
            self.assertIn("dipole: cannot write %s: %s\n" % (self.path(target), cause), result.err)
        self.assertTrue(stat.S_ISFIFO(os.stat(self.path("pipe.csv")).st_mode))

    def test_a_folder_that_is_not_there(self):
        target = self.path("nowhere/o.csv")
        self.assertIn("cannot write %s: No such file or directory\n" % target,
                      self.convert(example("auditory.dip"), target, code=1).err)

    def test_long_names_and_long_paths(self):
        folder = self.folder
        while len(folder) < 700:
            folder = os.path.join(folder, "ordner_" + "ä" * 50)
            os.mkdir(folder)
        longest = os.path.join(folder, "n" * 240)
        for ending in self.ENDINGS:
            self.convert(example("auditory.dip"), longest + ending)
            self.assertGreater(len(self.read(longest + ending)), 100)
        self.convert(longest + ".dipset", longest + ".csv", code=0)
        with open(example("auditory.dip"), "rb") as source, open(longest + ".dip", "wb") as copy:
            copy.write(source.read())
        self.convert(longest + ".dip", self.path("o.csv"))
        self.assertEqual(self.read(self.path("o.csv")), self.read(longest + ".csv"))
        self.convert("--from", "dipset", longest + ".dipset", self.path("o.csv"))
        too_long = self.path("n" * 256 + ".csv")
        self.assertIn("File name too long", self.convert(example("auditory.dip"), too_long, code=1).err)

    def test_names_beyond_ascii(self):
        names = ["Müller", "脳", "\U0001F9E0", "two words", 'q"uote', "[x]", "-x", "a,b", "line\nfeed"]
        for ending in self.ENDINGS:
            for name in names:
                self.convert("--", example("auditory.dip"), name + ending, cwd=self.folder)
                self.assertTrue(os.path.isfile(self.path(name + ending)), name + ending)
        raw = os.fsencode(self.folder) + b"/M\xfcller"
        for ending in (b".dipset", b".txt", b".csv"):
            self.assertEqual(run("convert", example("auditory.dip"), b"-o", raw + ending).returncode, 0)
            self.assertTrue(os.path.isfile(raw + ending))
        self.assertEqual(run("convert", raw + b".dipset", "--force", "-o", self.path("o.csv")).returncode, 0)

    def test_a_lock_is_advice_and_its_holder_keeps_the_old_file(self):
        target = self.write("o.csv", "before")
        with open(target, "rb") as holder:
            fcntl.flock(holder, fcntl.LOCK_EX)
            self.convert(example("auditory.dip"), target)
            self.assertEqual(holder.read(), b"before")
        self.assertEqual(self.read(target).count(b"\n"), 3)


class Failure(WritingTest):
    def test_a_file_that_may_not_grow_further(self):
        """What a full disk does to a program, for a user who cannot make one full."""
        source = self.large_set()

        def limit():
            resource.setrlimit(resource.RLIMIT_FSIZE, (100000, 100000))

        for ending in Target.ENDINGS:
            target = self.write("o" + ending, "before")
            result = self.convert(source, target, code=1, preexec_fn=limit)
            self.assertIn("dipole: cannot write %s: " % target, result.err)
            self.assertEqual(self.read(target), b"before")
            self.assertEqual(self.listing(), ["large.dipset", "o" + ending])
            os.remove(target)

    def test_a_full_disk(self):
        if os.geteuid() != 0:
            self.skipTest("only root can mount a small disk; the limit on a file's size stands for it")
        disk = self.path("disk")
        os.mkdir(disk)
        mounted = subprocess.run(["mount", "-t", "tmpfs", "-o", "size=256k", "tmpfs", disk],
                                 capture_output=True)
        if mounted.returncode != 0:
            self.skipTest("no small disk can be mounted here")
        try:
            source = self.large_set()
            for ending in Target.ENDINGS:
                target = os.path.join(disk, "o" + ending)
                with open(target, "wb") as file:
                    file.write(b"before")
                self.assertIn("cannot write " + target, self.convert(source, target, code=1).err)
                self.assertEqual(self.read(target), b"before")
                self.assertEqual(self.listing(disk), ["o" + ending])
                os.remove(target)
        finally:
            subprocess.run(["umount", disk], check=True)

    def test_a_folder_and_a_file_without_permission(self):
        def become_nobody():
            if os.geteuid() == 0:
                os.setgid(NOBODY)
                os.setuid(NOBODY)

        os.chmod(self.folder, 0o755)
        with open(example("auditory.dip"), "rb") as file:
            source = self.write("d.dip", file.read())
        for path in (os.path.dirname(TOOL), self.folder):
            if subprocess.run(["test", "-x", path], preexec_fn=become_nobody).returncode != 0:
                self.skipTest("another user cannot reach " + path)
        os.mkdir(self.path("closed"))
        os.mkdir(self.path("open"))
        for name in ("closed", "open"):
            os.chmod(self.path(name), 0o777)
            self.write(name + "/o.csv", "before")
        os.chmod(self.path("open/o.csv"), 0o444)
        os.chmod(self.path("closed"), 0o555)
        for name in ("closed", "open"):
            target = self.path(name + "/o.csv")
            result = self.convert(source, target, code=1, preexec_fn=become_nobody)
            self.assertIn("cannot write %s: Permission denied\n" % target, result.err)
            self.assertEqual(self.read(target), b"before")
            self.assertEqual(self.listing(self.path(name)), ["o.csv"])
        os.chmod(self.path("closed"), 0o755)


class Ended(WritingTest):
    """Programs that are ended while they write."""

    IGNORED = ()  # whatever the tests themselves were started to ignore

    def start(self, source, target):
        def set_signals():
            for number in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP):
                signal.signal(number, signal.SIG_IGN if number in self.IGNORED else signal.SIG_DFL)

        return subprocess.Popen([TOOL, "convert", source, "--force", "-o", target], stdin=subprocess.DEVNULL,
                                stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, preexec_fn=set_signals)

    def unfinished(self):
        return [name for name in os.listdir(self.folder) if name.startswith(".dipole-")]

    def stopped_while_writing(self, source, target):
        """A program that stands still between making its own file and renaming it, or none if it was too fast."""
        program = self.start(source, target)
        while program.poll() is None:
            if self.unfinished():
                program.send_signal(signal.SIGSTOP)
                os.waitid(os.P_PID, program.pid, os.WSTOPPED | os.WEXITED | os.WNOWAIT)
                if self.unfinished() and program.poll() is None:
                    return program
                program.send_signal(signal.SIGCONT)
                break
        program.wait(timeout=60)
        return None

    def test_signals_remove_the_unfinished_file(self):
        source = self.large_set()
        for number in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP):
            for ending in (".dipset", ".csv"):
                ended = any(self.ends_without_a_trace(number, source, "o" + ending) for _ in range(50))
                self.assertTrue(ended, "the program was never met while it wrote")

    def ends_without_a_trace(self, number, source, name):
        """Whether a program that was met while it wrote ended by the signal and left the file of before. One
        that was met at the renaming itself may finish that first."""
        target = self.write(name, "before")
        program = self.stopped_while_writing(source, target)
        if program is None:
            return False
        program.send_signal(number)
        program.send_signal(signal.SIGCONT)
        self.assertEqual(program.wait(timeout=60), -number)
        self.assertEqual(self.unfinished(), [])
        return self.read(target) == b"before"

    def test_a_signal_that_is_ignored_stays_ignored(self):
        source, target = self.large_set(), self.path("o.csv")
        self.IGNORED = (signal.SIGHUP,)
        programs = (self.stopped_while_writing(source, target) for _ in range(50))
        program = next((program for program in programs if program is not None), None)
        self.assertIsNotNone(program, "the program was never met while it wrote")
        program.send_signal(signal.SIGHUP)
        program.send_signal(signal.SIGCONT)
        self.assertEqual(program.wait(timeout=60), 0)
        self.assertEqual(self.read(target).count(b"\n"), 15001)

    def test_a_kill_at_any_time_leaves_the_old_or_the_new_file(self):
        source = self.large_set(label="new")
        old = dipset.pack_set([{"label": "old"}])
        new = self.read(source)
        target = self.path("o.dipset")
        chance = random.Random(1)
        started = time.monotonic()
        self.convert(source, target)
        whole = time.monotonic() - started
        found = {old: 0, new: 0}
        for turn in range(50):
            self.write("o.dipset", old)
            if turn % 2 == 0:
                program = self.stopped_while_writing(source, target)
            else:
                program = self.start(source, target)
                time.sleep(chance.uniform(0, whole))
            if program is not None:
                program.kill()
                program.wait(timeout=60)
            data = self.read(target)
            self.assertIn(data, found)
            found[data] += 1
            self.succeed("info", target)
            for name in self.unfinished():
                os.remove(self.path(name))
        self.assertGreater(found[old], 0)


if __name__ == "__main__":
    unittest.main()
