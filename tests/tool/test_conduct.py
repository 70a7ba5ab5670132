"""How the program behaves among others: what it overwrites, standard input and output, limits, exit codes."""

import os
import subprocess
import unittest

import dipset
from support import TOOL, ToolTest, dipole_file, example, run

SPIKES = example("spikes.dip")


class Output(ToolTest):
    def read(self, path):
        with open(path, "rb") as file:
            return file.read()

    def test_commands_that_write_end_with_2_without_a_name_to_write_to(self):
        kept = self.write("kept.dipset", dipset.pack_set([{"label": "a"}]))
        before = self.read(kept)
        for command in (["convert"], ["sort", "--by", "error"], ["register", "--by-sphere"]):
            result = self.end_with(2, *command, SPIKES, kept)
            self.assertEqual(result.err, "dipole: %s needs -o OUT, the file to write\n" % command[0])
            self.assertEqual(self.read(kept), before)

    def test_a_name_that_tells_no_format_is_wrong_usage(self):
        for name in ("o.xyz", ".csv"):
            self.assertIn("the name tells no format", self.end_with(2, "convert", SPIKES, "-o", self.path(name)).err)

    def test_a_file_that_is_there_is_replaced_only_when_told_so(self):
        for ending in (".dipset", ".txt", ".csv", ".tsv", ".json"):
            target = self.write("o" + ending, "before")
            result = self.end_with(1, "convert", SPIKES, "-o", target)
            self.assertEqual(result.err,
                             "dipole: cannot write %s: it is there already; --force replaces it\n" % target)
            self.assertEqual(self.read(target), b"before")
            self.succeed("convert", SPIKES, "--force", "-o", target)
            self.assertNotEqual(self.read(target), b"before")

    def test_standard_output_gets_the_bytes_that_a_file_would(self):
        for to in ("dipset", "txt", "csv", "tsv"):
            self.succeed("convert", SPIKES, "--to", to, "-o", self.path("o." + to))
            result = run("convert", SPIKES, "--to", to, "-o", "-")
            self.assertEqual(result.returncode, 0, result.stderr)
            self.assertEqual(result.stdout, self.read(self.path("o." + to)), to)
        self.assertEqual(os.listdir(self.folder).count("-"), 0)

    def test_pictures_are_png_alone(self):
        for name in ("o.jpg", "o.JPEG", "o"):
            result = self.end_with(2, "draw", SPIKES, "--3d", "-o", self.path(name))
            self.assertIn("%s: a picture is written as PNG; the name has to end in .png" % name, result.err)
        self.assertEqual(os.listdir(self.folder), [])

    def test_a_picture_that_is_there_is_replaced_only_when_told_so(self):
        target = self.write("o.png", "before")
        for command in (["--3d"], ["--mri", "missing.nii"]):
            result = self.end_with(1, "draw", SPIKES, *command, "-o", target)
            self.assertEqual(result.err,
                             "dipole: cannot write %s: it is there already; --force replaces it\n" % target)
            self.assertEqual(self.read(target), b"before")
        self.succeed("draw", SPIKES, "--3d", "--force", "-o", target)
        self.assertEqual(self.read(target)[:4], b"\x89PNG")

    def test_a_picture_goes_to_standard_output_with_the_bytes_of_a_file(self):
        self.succeed("draw", SPIKES, "--3d", "-o", self.path("o.png"))
        result = run("draw", SPIKES, "--3d", "-o", "-")
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertEqual(result.stdout, self.read(self.path("o.png")))
        self.assertEqual(os.listdir(self.folder), ["o.png"])

    def test_no_picture_goes_to_a_terminal(self):
        import pty
        main, side = pty.openpty()
        try:
            result = subprocess.run([TOOL, "draw", SPIKES, "--3d", "-o", "-"], stdout=side, stdin=subprocess.DEVNULL,
                                    stderr=subprocess.PIPE, timeout=60)
        finally:
            os.close(main)
            os.close(side)
        self.assertEqual(result.returncode, 2)
        self.assertIn(b"standard output, and that is a terminal\n", result.stderr)

    def test_standard_output_needs_a_format(self):
        result = self.end_with(2, "convert", SPIKES, "-o", "-")
        self.assertIn("-o - needs --to", result.err)
        self.assertEqual(result.out, "")


class Input(ToolTest):
    def test_standard_input_is_read_like_a_file(self):
        for name, form in (("spikes.dip", "ctf"), ("median.txt", "4d")):
            expected = self.succeed("list", "--csv", example(name)).out
            with open(example(name), "rb") as file:
                result = run("list", "--csv", "--from", form, "-", stdin=file)
            self.assertEqual(result.returncode, 0, result.stderr)
            self.assertEqual(result.stdout.decode(), expected)

    def test_a_pipe_is_read_like_a_file(self):
        expected = self.succeed("list", "--csv", SPIKES).out
        result = subprocess.run(["bash", "-c", '"$0" list --csv --from ctf <(cat "$1")', TOOL, SPIKES],
                                capture_output=True, timeout=60)
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertEqual(result.stdout.decode(), expected)

    def test_standard_input_needs_a_format_and_comes_once(self):
        self.assertIn("tells its format: --from does", self.end_with(2, "list", "-").err)
        self.assertIn("only once", self.end_with(2, "list", "--from", "ctf", "-", "-").err)

    def test_what_never_ends_is_refused(self):
        result = self.end_with(1, "list", "--from", "ctf", "/dev/zero")
        self.assertEqual(result.err, "dipole: /dev/zero: there are more than 256 MiB of it\n")

    def test_a_file_beyond_any_size_of_dipoles_is_refused(self):
        for name in ("a.dip", "a.txt", "a.dipset"):
            path = self.write(name, "")
            os.truncate(path, (1 << 28) + 1)
            result = self.end_with(1, "list", "--csv", path)
            self.assertEqual(result.err, "dipole: warning: %s: it is larger than 256 MiB\n" % path)

    def test_a_head_that_never_ends_is_refused(self):
        result = self.end_with(1, "draw", SPIKES, "--mri", "/dev/zero", "-o", self.path("o.png"),
                               "--fiducials", "0,87,-40 -86,-20,-48 86,-20,-48")
        self.assertIn("/dev/zero: this is not a regular file\n", result.err)

    def test_fiducial_points_that_never_end_are_refused(self):
        result = self.end_with(1, "draw", SPIKES, "--mri", "head.nii", "--fiducials", "/dev/zero",
                               "-o", self.path("o.png"))
        self.assertIn("fiducial points /dev/zero: there are more than 64 KiB of it\n", result.err)

    def test_a_missing_head_is_told_once_with_the_systems_reason(self):
        missing = self.path("head.nii")
        result = self.end_with(1, "draw", "-q", SPIKES, "--mri", missing, "-o", self.path("o.png"),
                               "--fiducials", "0,87,-40 -86,-20,-48 86,-20,-48")
        told = [line for line in result.err.split("\n") if missing in line]
        self.assertEqual(len(told), 1, result.err)
        self.assertIn("No such file or directory", told[0])

    def test_a_set_with_bytes_behind_its_end_is_refused_by_every_command(self):
        path = self.write("a.dipset", dipset.pack_set([{"label": "a"}]) + b"\0")
        for command in (["info"], ["list"], ["convert", "-o", self.path("o.csv")]):
            result = self.end_with(1, *command, path)
            self.assertIn("%s: it goes on behind the end of the dipole set\n" % path, result.err)

    def test_quiet_leaves_warnings_and_failures(self):
        self.assertEqual(self.succeed("list", "--quiet", SPIKES).err, "")
        self.assertEqual(self.succeed("draw", "--quiet", SPIKES, "--3d", "-o", self.path("o.png")).err, "")
        self.assertNotEqual(self.succeed("list", SPIKES).err, "")
        self.assertIn("No such file", self.end_with(1, "list", "-q", self.path("gone.dip")).err)


class Words(ToolTest):
    def test_help_is_a_command_too(self):
        self.assertEqual(self.succeed("help").out, self.succeed("--help").out)
        self.assertEqual(self.succeed("help", "sort").out, self.succeed("sort", "--help").out)

    def test_a_near_miss_of_a_command_is_named(self):
        for word, command in (("covnert", "convert"), ("lst", "list"), ("darw", "draw"), ("sorts", "sort")):
            self.assertEqual(self.end_with(2, word, SPIKES).err,
                             'dipole: there is no command "%s"; did you mean "%s"?\n' % (word, command))
        self.assertIn('"dipole help" lists all', self.end_with(2, "nonsense").err)


if __name__ == "__main__":
    unittest.main()
