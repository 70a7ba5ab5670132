"""Arguments, exit codes and files that are not what they should be."""

import os
import re
import subprocess
import unittest

from support import ROOT, TOOL, ToolTest, dipole_file, example, run


class Arguments(ToolTest):
    def test_help_gives_examples_and_ends_with_0(self):
        for command in ([], ["info"], ["list"], ["draw"], ["page"], ["convert"], ["sort"], ["register"], ["head"]):
            result = self.succeed(*command, "--help")
            self.assertEqual(result.err, "")
            self.assertIn("dipole", result.out)
            if command:
                self.assertIn("Examples:\n  dipole " + command[0], result.out)

    def test_version_is_the_projects(self):
        with open(os.path.join(ROOT, "CMakeLists.txt"), encoding="utf-8") as file:
            version = re.search(r"project\(dipole VERSION ([\d.]+)", file.read()).group(1)
        self.assertEqual(self.succeed("--version").out, "dipole %s\n" % version)

    def test_wrong_arguments_end_with_2_and_say_why_on_standard_error(self):
        path = example("auditory.dip")
        for arguments in ([], ["nonsense"], ["list"], ["list", "--nonsense", path],
                          ["list", "--csv", "--json", path], ["info"], ["draw", path],
                          ["draw", path, "--mri", "a", "--fiducials", "b"]):
            result = self.end_with(2, *arguments)
            self.assertEqual(result.out, "", arguments)
            self.assertRegex(result.err, r"^dipole: [^\n]+\n$", arguments)

    def test_a_full_disk_is_a_failure(self):
        for name in ("auditory.dip", "spikes.dip"):  # one result that a buffer holds, one that it does not
            with open("/dev/full", "wb") as full:
                result = subprocess.run([TOOL, "list", example(name)], stdout=full, stderr=subprocess.PIPE,
                                        stdin=subprocess.DEVNULL, timeout=60)
            self.assertEqual(result.returncode, 1)
            self.assertIn(b"dipole: cannot write the result: No space left on device\n", result.stderr)

    def test_help_on_a_full_disk_is_a_failure_too(self):
        for arguments in (["help"], ["list", "--help"], ["--version"]):
            with open("/dev/full", "wb") as full:
                result = subprocess.run([TOOL, *arguments], stdout=full, stderr=subprocess.PIPE,
                                        stdin=subprocess.DEVNULL, timeout=60)
            self.assertEqual((result.returncode, result.stderr),
                             (1, b"dipole: cannot write the result: No space left on device\n"))


class Files(ToolTest):
    def test_a_missing_file_is_named_and_ends_with_1(self):
        for command in ("list", "info"):
            path = self.path("missing.dip")
            result = self.end_with(1, command, path)
            self.assertEqual(result.err, "dipole: warning: %s: No such file or directory\n" % path)

    def test_the_other_files_still_come_when_one_is_missing(self):
        result = self.end_with(1, "list", "--csv", self.path("missing.dip"), example("auditory.dip"))
        self.assertEqual(result.out.count("\n"), 3)

    def test_a_folder_is_no_file(self):
        result = self.end_with(1, "list", self.folder)
        self.assertEqual(result.err, "dipole: warning: %s: it is a folder, not a file\n" % self.folder)

    def test_a_file_without_permission(self):
        path = self.write("secret.dip", dipole_file([(1, 2, 3, 7, "a")]))
        os.chmod(path, 0)
        if os.access(path, os.R_OK):
            self.skipTest("this user reads everything")
        self.assertEqual(self.end_with(1, "list", path).err, "dipole: warning: %s: Permission denied\n" % path)

    def test_a_file_that_fails_while_it_is_read(self):
        result = self.end_with(1, "list", "/proc/self/mem")
        self.assertIn("/proc/self/mem", result.err)
        self.assertNotIn("Total imported", result.err)

    def test_files_of_other_programs_give_nothing_and_are_called_so(self):
        contents = {"empty.dip": b"", "binary.dip": bytes(range(256)) * 4096, "zeros.dip": bytes(100000),
                    "no_end.dip": b"Dipoles", "head_only.dip": b"File_Info\n{\nPATIENT: x\n}\n"}
        for name, data in contents.items():
            path = self.write(name, data)
            result = self.end_with(1, "list", "--csv", path)
            self.assertIn("Total imported dipoles:0 (0-0)\n", result.err, name)
            self.assertIn("warning: %s: wrong (sections): The file has no section of dipoles" % path, result.err, name)
            self.assertEqual(result.out.count("\n"), 1, name)

    def test_a_heading_without_units_is_refused_with_its_line(self):
        path = self.write("neuromag.dip", "# begin end X (mm) Y (mm) Z (mm) Q(nAm) Qx Qy Qz g(%)\n"
                                          " 100.0 100.0 -50.1 10.2 61.0 25.3 1.0 20.0 15.2 93.1\n")
        self.assertEqual(self.end_with(1, "list", path).err,
                         "dipole: warning: %s: line 1: the heading has no column qx/nam\n" % path)

    def test_one_wrong_file_among_good_ones_is_a_failure_although_the_rest_comes(self):
        path = self.write("other.dip", b"# not ours\n")
        result = self.end_with(1, "list", "--csv", example("auditory.dip"), path)
        self.assertIn("warning: %s: wrong (sections): The file has no section of dipoles" % path, result.err)
        self.assertEqual(result.out.count("\n"), 3)

    def test_a_very_long_line_is_read_in_pieces(self):
        # A piece has 2048 bytes, so the section's name comes as a line of its own.
        path = self.write("long.dip", b"x" * 2048 * 1000 + dipole_file([(1, 2, 3, 7, "a")], head="").encode())
        result = self.succeed("list", "--csv", path)
        self.assertEqual(result.out.count("\n"), 2)
        self.assertNotIn("warning", result.err)

    def test_line_ends_of_every_kind(self):
        text = dipole_file([(1, 2, 3, 7, "a"), (4, 5, 6, 7, "b")])
        for end in ("\n", "\r", "\r\n"):
            path = self.write("e.dip", text.replace("\n", end))
            self.assertEqual(self.succeed("list", "--csv", path).out.count("\n"), 3, repr(end))

    def test_names_with_blanks_umlauts_quotes_and_other_scripts(self):
        for name in ("two words.dip", "Müller.dip", "it's \"quoted\".dip", "脳.dip", "[a].dip", "a,b.dip",
                     "-x.dip", "[a]"):
            path = self.write(name, dipole_file([(1, 2, 3, 7, "a")]))
            self.assertIn(path, self.succeed("info", path).out)
            self.assertIn(name, self.succeed("info", "--", name, cwd=self.folder).out)

    def test_names_that_are_not_utf8_are_found_too(self):
        path = os.fsencode(self.folder) + b"/M\xfcller.dip"
        with open(path, "wb") as file:
            file.write(dipole_file([(1, 2, 3, 7, "a")]).encode())
        result = run("info", path)
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertIn(b"/M\\xfcller.dip\n", result.stdout)
        self.assertEqual(run("info", "--json", path).returncode, 0)

    def test_names_cannot_play_tricks_on_the_terminal(self):
        path = self.path("a\x1b[2Jb\nc\u202e.dip")
        result = self.end_with(1, "list", path)
        self.assertNotIn("\x1b", result.err)
        self.assertIn("a\\u001b[2Jb\\u000ac\\u202e.dip", result.err)

    def test_several_hundred_files_at_once(self):
        text = dipole_file([(1, 2, 3, 7, "a")])
        paths = [self.write("%s_%03d.dip" % ("n" * 100, number), text) for number in range(500)]
        result = self.succeed("list", "--csv", *paths)
        self.assertEqual(result.out.count("\n"), 501)
        for path in paths:
            self.assertIn("dipole: %s: Total imported dipoles:1 (0-1)\n" % path, result.err)
        numbers = [line.split(",")[0] for line in result.out.splitlines()[1:]]
        self.assertEqual(numbers, [str(number) for number in range(1, 501)])

    def test_files_of_different_patients_are_told(self):
        result = self.succeed("list", example("auditory.dip"), example("spikes.dip"))
        self.assertIn("doubtful (several-patients): The files name different patients: EXAMPLE_AUDITORY", result.err)
        self.assertNotIn("warning", self.succeed("list", example("spikes.dip"), example("spikes.dip")).err)
        nobody = self.write("nobody.dip", dipole_file([(1, 2, 3, 7, "a")]))
        self.assertNotIn("patients", self.succeed("list", nobody, example("spikes.dip")).err)
        missing = self.path("missing.dip")
        self.assertNotIn("patients", self.end_with(1, "list", missing, example("spikes.dip")).err)


if __name__ == "__main__":
    unittest.main()
