"""`dipole convert`: inputs of every format, several of them, and those that must not become a file."""

import json
import os
import re
import struct
import unittest

import dipset
from conversions import COLUMNS, ConvertTest
from support import ROOT, dipole_file, example, moving_file, run, single

ARCHIVES = os.path.join(ROOT, "tests", "file", "archives")


class Inputs(ConvertTest):
    ROW = "%s %s 0.5 0.25 -1 20.5 1.5 9 0.75 2.5 7 a b c 8 %s\n"

    def msi(self, name="t.txt", rows=(("12.5", "1 2 3", "spike"), ("-3.25", "-1 -2 -3", "")),
            patient="Miss X"):
        text = ("Report\nDisk Media: x\nMRI/CT Patient: %s\nDipole File: run 7\nDate of File:\n\n"
                "Latency x y z\n(msec) (cm)\n" % patient)
        return self.write(name, text + "".join(self.ROW % row for row in rows))

    def test_a_4d_table_by_its_ending_and_by_option(self):
        for arguments in ([self.msi()], [self.msi("t.TXT")], ["--from", "4d", self.msi("t.out")]):
            self.convert(*arguments, self.path("o.json"))
            document = json.loads(self.read(self.path("o.json")))
            self.assertEqual((document["patient"], document["version"], document["moment_unit"]),
                             ("Miss X", "run 7", "nAm"))
            first, second = document["dipoles"]
            self.assertEqual([first[key] for key in COLUMNS[:10]],
                             [1, 0, 0, "spike", 20.0, 30.0, 10.0, single(0.25 / 10), single(-0.1),
                              single(0.05)])
            numbers = (first["moment_nAm"], first["latency_ms"], first["fit_error_percent"])
            self.assertEqual(numbers, (20.5, 12.5, 25.0))
            self.assertEqual((second["label"], second["x_left_mm"], second["number"]), ("Non", -20.0, 2))

    def test_4d_tables_and_sets_are_listed_drawn_up_and_told_about_too(self):
        self.assertIn("spike", self.succeed("list", self.msi()).out)
        self.assertIn("patient             Miss X\n", self.succeed("info", self.msi()).out)
        path = self.set_of([{"label": "in a set"}], patient=" Mr Y ")
        self.assertIn("in a set", self.succeed("list", path).out)
        self.assertIn("patient             Mr Y\n", self.succeed("info", path).out)

    def test_a_4d_row_that_is_lost_is_reported_and_nothing_is_written(self):
        good, short = ("2", "1 2 3", "y"), ("1", "1 2", "x")
        for rows, end in (((short, good), ""), ((good,), "3 1 2 3 cut")):
            path = self.msi(rows=rows)
            with open(path, "a", encoding="ascii") as file:
                file.write(end)
            result = self.convert(path, self.path("o.csv"), code=1)
            if "cut" in end:
                self.assertIn(":10: wrong (lost-rows): 1 row of dipoles did not come: their fields are not the "
                              "numbers", result.err)
            self.assertFalse(os.path.exists(self.path("o.csv")))

    def test_a_text_without_a_table_is_called_so(self):
        path = self.write("notes.txt", "nothing here\n")
        result = self.convert(path, self.path("o.csv"), code=1)
        self.assertIn("it does not look like a 4D/MSI dipole table", result.err)

    def test_a_name_with_a_pattern_is_refused_as_a_4d_table(self):
        result = self.convert(self.msi("t*.txt"), self.path("o.csv"), code=1)
        self.assertIn("cannot be told from a pattern", result.err)

    def test_every_version_of_a_set_is_read(self):
        for name in ("set_20010101_version_0", "set_20010101_version_1", "set_20010901", "set_20011118",
                     "set_20011118_foreign", "set_20050629"):
            path = os.path.join(ARCHIVES, name + ".bin")
            with open(path[:-3] + "txt", encoding="ascii") as file:
                listed = re.findall(r'^slot \d+ (m_label|m_id|m_latency) "?(.*?)"?$', file.read(),
                                    re.MULTILINE)
            self.convert("--from", "dipset", path, self.path("o.json"))
            dipoles = json.loads(self.read(self.path("o.json")))["dipoles"]
            wanted = {key: [value for name, value in listed if name == key] for key, _ in listed}
            labels = [re.sub(r"\\u(....)", lambda unit: chr(int(unit[1], 16)),
                             label) for label in wanted["m_label"]]
            self.assertEqual([dipole["label"] for dipole in dipoles],
                             [label.encode("utf-16-le",
                                           "surrogatepass").decode("utf-16-le") for label in labels], name)
            self.assertEqual([str(dipole["id"]) for dipole in dipoles], wanted["m_id"], name)
            self.assertEqual([struct.pack(">d", dipole["latency_ms"]).hex() for dipole in dipoles],
                             wanted["m_latency"], name)

    def test_several_files_follow_each_other_with_every_member(self):
        ctf = self.write("c.dip", dipole_file([(1, 2, 3, 7, "c1"), (4, 5, 6, 8, "c2")]))
        one = {"label": "s1", "number": 9, "id": 4, "fit_tag": 5, "show": 0, "size": 8.5, "scale": 2.5,
               "display": 2,
               "color": 0x123456, "orientation_length": 7.0, "dims_zyx": [1, 2, 3], "show_orientation": 0}
        source = self.set_of([one, None, {"label": "s2", "number": 3}], current=2, patient="P", version="V",
                             meg_only=1, merge_radius=1.5, space=[1.0, 2.0, 3.0])
        self.convert(source, ctf, self.msi(patient=""), self.path("o.dipset"))
        current, dipoles, face = dipset.unpack_set(self.read(self.path("o.dipset")))
        alone = dipset.unpack_set(self.read(source))
        self.assertEqual(dipoles[:3], alone[1])
        self.assertEqual((current, face), (2, alone[2]))
        self.assertEqual([(d["label"], d["number"]) for d in dipoles[3:]],
                         [("c1", 4), ("c2", 5), ("spike", 6), ("Non", 7)])
        self.convert(ctf, source, self.path("o.dipset"))
        self.assertEqual(dipset.unpack_set(self.read(self.path("o.dipset")))[1][2:], alone[1])

    def test_a_unit_is_named_only_when_every_file_names_it(self):
        plain, nam = self.set_of([{}], "plain.dipset"), self.set_of([{}], "nam.dipset", moment_in_nAm=1)
        result = self.convert(nam, plain, self.path("o.csv"))
        self.assertIn("warning: not all files say that their moments are nAm", result.err)
        self.assertIn("moment", self.table(self.path("o.csv"))[0])
        self.assertNotIn("warning", self.convert(nam, nam, self.path("o.csv")).err)
        self.assertIn("moment_nAm", self.table(self.path("o.csv"))[0])

    def test_more_than_a_set_holds_is_a_failure(self):
        full = self.set_of([{}] * 30000, "full.dipset")
        result = self.convert(full, full, self.path("o.csv"), code=1)
        self.assertIn("a set holds 30000 dipoles, 30000 of this file were left out", result.err)
        self.assertFalse(os.path.exists(self.path("o.csv")))
        self.convert(full, self.path("o.csv"))
        self.assertEqual(len(self.table(self.path("o.csv"))), 30000)

    def test_empty_slots_are_left_out_of_texts_and_kept_in_sets(self):
        path = self.set_of([None, {"label": "a"}, None, {"label": "b"}, None])
        self.convert(path, self.path("o.dipset"))
        self.assertEqual(self.read(self.path("o.dipset")), self.read(path))
        self.convert(path, self.path("o.tsv"))
        self.assertEqual([row["label"] for row in self.table(self.path("o.tsv"), "\t")], ["a", "b"])
        self.convert(path, self.path("o.txt"))
        self.assertEqual(self.read(self.path("o.txt")).decode("utf-16-le").count("\n"), 4)

    def test_what_yields_nothing_or_fails_writes_nothing(self):
        whole = dipset.pack_set([{"label": "a"}, {"label": "b"}])
        broken = {"empty.dipset": dipset.pack_set([]), "holes.dipset": dipset.pack_set([None, None]),
                  "cut.dipset": whole[:-1], "cut2.dipset": whole[:200], "nothing.dipset": b"",
                  "one.dipset": b"\1",
                  "text.dipset": b"Dipoles\n{\n}\n",
                  "version.dipset": whole[:30] + b"\xff\xff\xff\x7f" + whole[34:],
                  "many.dipset": whole[:38] + b"\xff\xff\xff\x7f" + whole[42:],
                  "lie.dipset": whole[:38] + struct.pack("<i", 30000) + whole[42:],
                  "old.dipset": b"\x4e\x58\x31\x01" + bytes(50), "empty.dip": b"", "empty.txt": b""}
        for name, data in broken.items():
            path = self.write(name, data)
            target = self.write("o.csv", "before")
            result = self.convert(example("auditory.dip"), path, target, code=1)
            self.assertIn("o.csv was not written", result.err, name)
            self.assertEqual(self.read(target), b"before", name)
            self.convert(path, self.path("new.csv"), code=1)
            self.assertFalse(os.path.exists(self.path("new.csv")), name)

    def test_a_set_that_breaks_off_gives_no_dipole_and_leaves_those_of_others_alone(self):
        alone = self.succeed("list", "--csv", example("auditory.dip")).out
        whole = dipset.pack_set([{"label": "a"}, {"label": "b"}], patient="another")
        for data in (whole[:-1], whole[:300], whole[:38] + struct.pack("<i", 30000) + whole[42:]):
            cut = self.write("cut.dipset", data)
            for files in ([example("auditory.dip"), cut], [cut, example("auditory.dip")]):
                result = self.end_with(1, "list", "--csv", *files)
                self.assertEqual(result.out, alone)
                self.assertIn("warning: %s: it could not be read to its end: " % cut, result.err)
            self.assertEqual(self.end_with(1, "list", "--csv", cut).out.count("\n"), 1)  # the heading

    def test_declined_moving_dipoles_alone_write_nothing(self):
        path = self.write("m.dip", moving_file([(0.1, 1, 2, 3)]))
        self.convert(path, self.path("o.csv"), code=1)
        self.convert("--yes", path, self.path("o.csv"))
        self.assertEqual(len(self.table(self.path("o.csv"))), 1)

    def test_folders_and_missing_files_are_named(self):
        os.mkdir(self.path("folder.dipset"))
        for name, cause in (("missing.dip", "No such file"), ("missing.txt", "No such file"),
                            ("missing.dipset", "No such file"),
                            ("folder.dipset", "it is a folder, not a file")):
            result = self.convert(self.path(name), self.path("o.csv"), code=1)
            self.assertIn("warning: %s: %s" % (self.path(name), cause), result.err)

    def test_names_without_a_known_ending_are_explained(self):
        dip = example("auditory.dip")
        for name in ("out", "out.", "out.xls", ".csv", "folder.csv/out"):
            result = self.convert(dip, self.path(name), code=2)
            self.assertIn("%s: the name tells no format; it ends in .dipset, .txt, .csv, .tsv, .json, .bdip, "
                          ".mrk.json or .vtp, or --to says what to write\n" % self.path(name), result.err)
        result = self.convert(self.write("in.data", b""), self.path("o.csv"), code=1)
        self.assertIn("in.data: the name tells no format; it ends in .dip (CTF, Neuromag), .bdip, .txt "
                      "(4D/MSI), .dipset, .csv, .tsv or .json, or --from says what it is\n", result.err)
        self.assertEqual(os.listdir(self.folder), ["in.data"])

    def test_options_say_what_names_do_not(self):
        os.link(self.write("x.dip", dipole_file([(1, 2, 3, 7, "a")])), self.path("x.txt"))
        self.convert("--from", "ctf", self.path("x.txt"), "--to", "csv", self.path("o"))
        self.convert(self.path("x.dip"), self.path("o.CSV"))
        self.assertEqual(self.read(self.path("o")), self.read(self.path("o.CSV")))
        self.convert(self.path("x.dip"), "--to", "TXT", self.path("plain"))
        self.assertTrue(self.read(self.path("plain")).decode("utf-16-le").startswith("The following data"))

    def test_wrong_arguments_end_with_2(self):
        for arguments in ([], ["a.dip"], ["--from", "x", "a.dip", "b.csv"], ["--to", "x", "a.dip", "b.csv"]):
            self.convert(*arguments, code=2)

    def test_relative_names_work_for_every_format(self):
        os.mkdir(self.path("sub"))
        self.msi("sub/a.txt")
        self.set_of([{}], "sub/b.dipset")
        for inputs in (["sub/a.txt", "sub/b.dipset"], ["sub/b.dipset", "sub/a.txt"]):
            result = run("convert", *inputs, "--force", "-o", "sub/out.csv", cwd=self.folder)
            self.assertEqual(result.returncode, 0, result.stderr)
            self.assertEqual(len(self.table(self.path("sub/out.csv"))), 3)


if __name__ == "__main__":
    unittest.main()
