"""What files say is data in a page and never markup; an anonymous page names nobody; what is there is not lost."""

import json
import os
import re
import struct
import subprocess
import time
import unittest

from pages import Page
from support import (LEFT_FIRST, PAGE, TOOL, ToolTest, dipole_file, example, head_volume, program_with_page, run,
                     terminal)

HOSTILE = ["<script>alert(1)</script>", "</script><!-- --><script>", "]]>\"'`&lt;&amp;", "line\u2028end\u2029",
           "\u202eabc\u2066\u200f", "=cmd|' /C calc'!A0", "\\u003c/script>", "x" * 70000, "\U0001f9e0\u0301 \u00e9"]


class SafetyTest(ToolTest):
    def setUp(self):
        super().setUp()
        self.program = program_with_page(self.path("installed"))
        self.out = self.path("out.html")

    def end_page(self, code, *arguments, program=None, **options):
        return self.end_with(code, "page", *arguments, program=program or self.program, **options)

    def read(self):
        with open(self.out, "rb") as file:
            return file.read()

    def dipole(self, name="d.dip"):
        return self.write(name, dipole_file([(3, 4, 2, 7, "a")]))


class Texts(SafetyTest):
    def table(self, labels):
        dipoles = [{"x_left_mm": 1 + n, "y_up_mm": 2, "z_front_mm": 3, "label": label}
                   for n, label in enumerate(labels)]
        return self.write("labels.json", json.dumps({"dipoles": dipoles, "patient": HOSTILE[0]}).encode())

    def test_labels_and_patients_are_data_to_a_reader_of_html(self):
        self.end_page(0, self.table(HOSTILE), "-o", self.out)
        page = Page(self.read())
        self.assertEqual(page.elements.scripts, 3)
        self.assertEqual(page.role("label")["values"], HOSTILE)
        self.assertEqual(page.json["patient"], HOSTILE[0])
        self.assertEqual(page.text.count("<"), PAGE.count("<"))
        element = page.elements.texts["page-data"]
        self.assertRegex(element, r"^[ -;=?-~]*$")  # ASCII without < and >
        self.assertNotIn("&", element)

    def test_names_of_files_are_data_too(self):
        for name in ("<img src=x onerror=alert(1)>.dip", "a\u202etxt.dip", "\"'&amp;.dip"):
            path = self.path(name)
            with open(path, "w") as file:
                file.write(dipole_file([(3, 4, 2, 7, "a")]))
            self.end_page(0, path, "--force", "-o", self.out)
            page = Page(self.read())
            self.assertEqual(page.elements.scripts, 3)
            self.assertEqual(page.json["files"][0]["name"], name)

    def test_a_name_that_is_no_utf_8_makes_a_page(self):
        path = os.path.join(os.fsencode(self.folder), b"a\xff<.dip")
        with open(path, "w") as file:
            file.write(dipole_file([(3, 4, 2, 7, "a")]))
        self.end_page(0, path, "-o", self.out)
        self.assertEqual(Page(self.read()).json["files"][0]["name"], "a\ufffd<.dip")


class Anonymous(SafetyTest):
    NAMES = ["Meyer", "Zacharias", "KH-4711", "Hospital", "Klinikum"]

    def named_head(self):
        """A head whose header, name and points are full of names."""
        path = head_volume(self.path("Meyer_T1.nii"), bright=(-40, 30, 20))
        import gzip
        with gzip.open(path) as file:
            data = bytearray(file.read())
        data[14:32] = b"Zacharias Meyer\0\0\0"  # db_name
        data[148:168] = b"KH-4711 Hospital 80a"  # descrip
        data[228:240] = b"Klinikum.mat"  # aux_file
        data[328:340] = b"Meyer intent"
        with open(path, "wb") as file:
            file.write(data)
        return path

    def named_dipoles(self):
        text = ("File_Info\n{\nVERSION: 5.0\nPATIENT: Zacharias Meyer KH-4711\nDATASET: /data/Klinikum/Meyer.ds\n}\n"
                "Model\n{\nMODEL_TYPE: MEG_ONLY\nMRI_FILE: Meyer_Hospital.mri\n}\n" +
                dipole_file([(3, 4, 2, 7, "Meyer_spike"), (2, 5, 2, 7, "KH-4711")]))
        os.makedirs(self.path("Klinikum"))
        other = ("File_Info\n{\nVERSION: 5.0\nPATIENT: Hospital Other\n}\n" +
                 dipole_file([(3, 4, 2, 7, "a"), (3, 4, 30, 7, "b")]))
        return (self.write("Klinikum/Meyer.dip", text), self.write("Klinikum/Zacharias2.dip", other))

    def page(self, *more):
        points = self.write("Meyer.fiducials", "nasion 0 100 0\nleft -80 0 0\nright 80 0 0\n")
        atlas = self.write("Klinikum_atlas.nii", self.atlas())
        self.write("Klinikum_atlas.nii.txt", "1 Side_L 10\n2 Side_R 20\n")
        self.result = self.end_page(1, *self.dipoles, example("moving.dip"), "--yes", "--mri", self.head, "--fiducials", points, "--mni", "identity",
                                    "--atlas", atlas, "--force", "-o", self.out, *more)
        return Page(self.read())

    @staticmethod
    def atlas():
        from test_atlas import atlas
        return atlas()

    def setUp(self):
        super().setUp()
        self.head, self.dipoles = self.named_head(), self.named_dipoles()

    def test_no_name_is_left_anywhere(self):
        named = self.page().everything()
        for name in ("Meyer", "Zacharias", "KH-4711", "Klinikum", "Hospital"):
            self.assertIn(name.encode(), named, name)  # else the search below would find nothing in any page
        for more in ((), ("--full",)):
            page = self.page("--anonymous", *more)
            everything = page.everything()
            for name in self.NAMES:
                self.assertNotIn(name.lower().encode(), everything.lower(), name)
            self.assertEqual(set(page.head().texts), {0})
            self.assertEqual((page.json["made"], page.json["patient"]), ("", None))
            self.assertEqual(page.role("label")["values"], [None] * 45)
            self.assertTrue(page.json["isAnonymous"])

    def test_findings_stay_as_what_they_are(self):
        codes = [(one["severity"], one["code"], one["rows"]) for one in self.page().json["findings"]]
        page = self.page("--anonymous")
        self.assertIn("several-patients", [code for _, code, _ in codes])
        self.assertEqual([(one["severity"], one["code"], one["rows"]) for one in page.json["findings"]], codes)
        for one in page.json["findings"]:
            self.assertGreater(len(one["sentence"]), 10)
        self.assertIn("wrong", [one["severity"] for one in page.json["findings"]])
        self.assertTrue(page.json["warnings"])

    def test_a_face_is_told_to_identify_too(self):
        self.page("--anonymous")
        self.assertIn("a face in the MRI identifies its patient too", self.result.err)
        self.assertIn("the labels of dipoles", self.result.err)
        self.page()
        self.assertNotIn("identifies", self.result.err)


class Targets(SafetyTest):
    def test_a_page_needs_a_name_or_to_be_looked_at(self):
        self.assertIn("a page needs -o OUT, the file to write, or --open", self.end_page(2, self.dipole()).err)
        for name in ("a.png", "a", ".html"):
            self.assertIn("a page is written as HTML; the name has to end in .html",
                          self.end_page(2, self.dipole(), "-o", self.path(name)).err)
        self.assertIn("--open needs a file", self.end_page(2, self.dipole(), "--open", "-o", "-").err)
        self.assertIn("waits for Return at a terminal", self.end_page(2, self.dipole(), "--open").err)

    def test_what_is_there_is_replaced_only_when_told_so(self):
        self.write("out.html", "before")
        result = self.end_page(1, self.dipole(), "-o", self.out)
        self.assertEqual(result.err, "dipole: cannot write %s: it is there already; --force replaces it\n" % self.out)
        self.assertEqual(self.read(), b"before")
        self.end_page(0, self.dipole(), "--force", "-o", self.out)
        self.assertEqual(Page(self.read()).json["dipoles"]["count"], 1)

    def test_an_input_is_never_replaced(self):
        path = self.dipole("d.html")
        self.assertIn("the page %s would overwrite the input %s" % (path, path),
                      self.end_page(2, path, "--from", "ctf", "--force", "-o", path).err)
        with open(path, "rb") as file:
            self.assertTrue(file.read().startswith(b"MEG_Sphere"))

    def test_standard_output_gets_the_same(self):
        self.end_page(0, self.dipole(), "--anonymous", "-o", self.out)
        result = run("page", self.dipole(), "--anonymous", "-o", "-", program=self.program)
        self.assertEqual((result.returncode, result.stdout), (0, self.read()))
        with open("/dev/full", "wb") as full:
            result = subprocess.run([self.program, "page", self.dipole(), "-o", "-"], stdout=full,
                                    stderr=subprocess.PIPE, stdin=subprocess.DEVNULL, timeout=60)
        self.assertEqual(result.returncode, 1)
        self.assertIn(b"cannot write the result: No space left on device", result.stderr)

    def test_where_there_is_no_room_what_was_there_stays(self):
        self.write("out.html", "before")
        import resource

        def limit():  # of a file's size: smaller than a page with its head
            resource.setrlimit(resource.RLIMIT_FSIZE, (4096, 4096))

        head = head_volume(self.path("head.nii.gz"), size=50)
        result = self.end_page(1, self.dipole(), "--mri", head, "--fiducials", LEFT_FIRST, "--force", "-o", self.out,
                               preexec_fn=limit)
        self.assertIn("cannot write %s: " % self.out, result.err)
        self.assertEqual(self.read(), b"before")
        self.assertEqual([name for name in os.listdir(self.folder) if name.endswith(".tmp")], [])


class Templates(SafetyTest):
    def test_a_build_without_a_page_says_what_it_needs(self):
        program = program_with_page(self.path("bare"), None)
        result = self.end_page(1, self.dipole(), "-o", self.out, program=program)
        self.assertIn("this build has no page: it needs nodejs and npm when it is built", result.err)
        self.assertIn(os.path.join(self.path("bare"), "share", "dipole", "page.html"), result.err)
        self.assertFalse(os.path.exists(self.out))

    def test_what_is_no_template_is_refused(self):
        element = '<script type="text/plain" id="page-head"></script>'
        for number, broken in enumerate((PAGE.replace(element, ""), PAGE + element,
                                         PAGE.replace("page-data", "data"), "")):
            program = program_with_page(self.path("broken%d" % number), broken)
            result = self.end_page(1, self.dipole(), "-o", self.out, program=program)
            self.assertIn("the template of the page is not one", result.err)
            self.assertFalse(os.path.exists(self.out))


class Opened(SafetyTest):
    """With an xdg-open of the test's own, which notes what it is asked to show and copies it."""

    def setUp(self):
        super().setUp()
        self.shown = self.path("shown")
        self.opener('cp "$1" "%s" && stat -c %%a "$(dirname "$1")" > "%s.mode" && echo "$1" > "%s.path"' %
                    ((self.shown,) * 3))

    def opener(self, script):
        os.makedirs(self.path("desktop"), exist_ok=True)
        with open(self.path("desktop/xdg-open"), "w") as file:
            file.write("#!/bin/sh\n" + script + "\n")
        os.chmod(self.path("desktop/xdg-open"), 0o755)

    def path_of_tools(self, folders="/usr/bin:/bin"):
        return self.path("desktop") + ":" + folders

    def in_terminal(self, keys, interrupt=False):
        """Runs `page --open` on a terminal; returns (exit code or -signal, what it showed)."""
        import pty
        import select
        import signal

        main, side = pty.openpty()
        process = subprocess.Popen([self.program, "page", self.dipole(), "--open"], stdin=side, stderr=side,
                                   stdout=subprocess.DEVNULL, env=dict(os.environ, PATH=self.path_of_tools()))
        os.close(side)
        shown = b""
        try:
            until = time.monotonic() + 30
            while time.monotonic() < until and select.select([main], [], [], 1)[0] is not None:
                if select.select([main], [], [], 0.2)[0]:
                    try:
                        shown += os.read(main, 4096)
                    except OSError:
                        break
                if b"press Return" in shown and keys is not None:
                    with open(self.shown + ".path") as file:
                        self.page_path = file.read().strip()
                    self.assertTrue(os.path.exists(self.page_path))
                    if interrupt:
                        process.send_signal(signal.SIGTERM)
                    else:
                        os.write(main, keys)
                    keys = None
            return process.wait(timeout=30), shown.decode()
        finally:
            process.kill()
            os.close(main)

    def test_a_page_without_a_name_is_there_until_return_for_its_owner_alone(self):
        code, shown = self.in_terminal(b"\n")
        self.assertEqual(code, 0, shown)
        with open(self.shown, "rb") as file:
            self.assertEqual(Page(file.read()).json["dipoles"]["count"], 1)
        with open(self.shown + ".mode") as file:
            self.assertEqual(file.read(), "700\n")
        self.assertFalse(os.path.exists(os.path.dirname(self.page_path)))

    def test_who_ends_the_program_leaves_nothing_behind(self):
        code, shown = self.in_terminal(b"", interrupt=True)
        self.assertEqual(code, -15, shown)
        self.assertFalse(os.path.exists(os.path.dirname(self.page_path)))

    def test_a_page_with_a_name_is_opened_and_stays(self):
        self.end_page(0, self.dipole(), "--open", "-o", self.out, env=dict(os.environ, PATH=self.path_of_tools()))
        with open(self.shown + ".path") as file:
            self.assertEqual(file.read().strip(), self.out)
        self.assertTrue(os.path.exists(self.out))

    def test_without_a_desktop_it_says_so_and_the_page_stays(self):
        os.makedirs(self.path("empty"))
        result = self.end_page(1, self.dipole(), "--open", "-o", self.out,
                               env=dict(os.environ, PATH=self.path("empty")))
        self.assertIn("there is no xdg-open", result.err)
        self.opener("exit 3")
        result = self.end_page(1, self.dipole(), "--open", "--force", "-o", self.out,
                               env=dict(os.environ, PATH=self.path_of_tools()))
        self.assertIn("xdg-open found no program that shows the page", result.err)
        self.assertEqual(Page(self.read()).json["dipoles"]["count"], 1)


if __name__ == "__main__":
    unittest.main()
