"""What the program does on Windows otherwise than elsewhere, or could: names, wildcards, streams, exit codes."""

import json
import os
import re
import subprocess
import unittest

import dipset
from pages import Page
from support import TOOL, Png, ToolTest, dipole_file, example, program_with_page, run

SPIKES = example("spikes.dip")
NAMES = ["Müller.dip", "脳.dip", "два слова.dip", "[a].dip", "a,b.dip"]


class Names(ToolTest):
    def test_names_of_all_scripts_come_in_and_go_out(self):
        text = dipole_file([(1, 2, 3, 7, "Höhe_µ")])
        for name in NAMES:
            path = self.write(name, text)
            target = self.path("out " + name.replace(".dip", ".json"))
            self.succeed("convert", path, "-o", target)
            with open(target, encoding="utf-8") as file:
                document = json.load(file)
            self.assertEqual(document["files"], [path])
            self.assertEqual(document["dipoles"][0]["label"], "Höhe_µ")
            self.assertIn("Höhe_µ", self.succeed("list", path).out)

    def test_a_pattern_stands_for_the_names_that_fit(self):
        for name in NAMES:
            self.write(name, dipole_file([(1, 2, 3, 7, "a")]))
        found = json.loads(self.succeed("info", "--json", "*.dip", cwd=self.folder).out)
        self.assertEqual(sorted(entry["file"] for entry in found), sorted(NAMES))

    def test_a_missing_file_is_told_in_words(self):
        missing = self.path("脳.dip")
        result = self.end_with(1, "list", missing)
        self.assertRegex(result.err, r"^dipole: warning: %s: [A-Z][a-z ]+\.?\n$" % re.escape(missing))

    def test_points_and_heads_have_such_names_too(self):
        result = self.end_with(1, "draw", SPIKES, "--mri", self.path("ö.nii"), "--fiducials", self.path("ä.txt"),
                               "-o", self.path("o.png"))
        self.assertIn(self.path("ä.txt") + ": cannot be opened", result.err)


class Pages(ToolTest):
    def test_the_template_is_found_beside_the_program_wherever_that_is(self):
        program = program_with_page(self.path("Programme 脳"))
        self.succeed("page", SPIKES, "-o", self.path("ö.html"), program=program)
        with open(self.path("ö.html"), "rb") as file:
            page = Page(file.read())
        self.assertEqual((page.json["dipoles"]["count"], page.json["files"][0]["name"]), (120, "spikes.dip"))
        bare = program_with_page(self.path("bare"), None)
        self.assertIn("this build has no page",
                      self.end_with(1, "page", SPIKES, "-o", self.path("a.html"), program=bare).err)


class Streams(ToolTest):
    def test_standard_input_and_output_are_bytes(self):
        labels = ["a\r\nb\x1ac"]
        packed = dipset.pack_set([{"label": label} for label in labels])
        path = self.write("s.dipset", packed)
        for to in ("dipset", "txt", "csv", "json"):
            self.succeed("convert", path, "--to", to, "-o", self.path("o." + to))
            with open(path, "rb") as file:
                result = run("convert", "--from", "dipset", "-", "--to", to, "-o", "-", stdin=file)
            self.assertEqual(result.returncode, 0, result.stderr)
            with open(self.path("o." + to), "rb") as file:
                written = file.read().replace(path.encode(), b"-")
            self.assertEqual(result.stdout, written, to)

    def test_lines_end_as_everywhere(self):
        result = run("list", SPIKES)
        self.assertEqual((result.stdout.count(b"\n"), result.stdout.count(b"\r")), (121, 0))
        self.assertNotIn(b"\r", result.stderr)

    def test_without_a_person_a_question_is_answered_no(self):
        result = self.end_with(1, "list", example("moving.dip"))
        self.assertIn("Answered: no (--yes accepts)", result.err)
        self.assertNotIn("[y/N]", result.err)

    def test_a_picture_on_standard_output_is_whole(self):
        result = run("draw", SPIKES, "--3d", "-o", "-")
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertGreater(Png(result.stdout).width, 100)


class Program(ToolTest):
    def test_it_needs_nothing_but_the_system(self):
        shown = subprocess.run(["x86_64-w64-mingw32-objdump", "-p", TOOL], capture_output=True, text=True, check=True)
        needed = {name.lower() for name in re.findall(r"DLL Name: (\S+)", shown.stdout)}
        self.assertLessEqual(needed, {"kernel32.dll", "user32.dll", "gdi32.dll", "comctl32.dll", "comdlg32.dll",
                                      "advapi32.dll", "ole32.dll", "shell32.dll", "msvcrt.dll", "uxtheme.dll"})

    def test_exit_codes(self):
        self.end_with(0, "--version")
        self.end_with(2, "nonsense")
        self.end_with(2, "convert", SPIKES)
        self.end_with(1, "list", self.path("missing.dip"))
        target = self.write("o.csv", "before")
        self.end_with(1, "convert", SPIKES, "-o", target)

    def test_a_set_is_the_same_here_and_there(self):
        self.succeed("convert", SPIKES, "-o", self.path("o.dipset"))
        with open(self.path("o.dipset"), "rb") as file:
            _, dipoles, _ = dipset.unpack_set(file.read())
        self.assertEqual(len(dipoles), 120)
        self.succeed("convert", self.path("o.dipset"), "--force", "-o", self.path("o.dipset"))


if __name__ == "__main__":
    unittest.main()
