"""`dipole convert`: every value of every example arrives in every format; other inputs and labels survive."""

import csv
import io
import json
import math
import os
import re
import struct
import unittest
from decimal import ROUND_HALF_EVEN, Decimal

import dipset
from support import (ROOT, ToolTest, dipole_file, example, expected_dipoles, host_axes, moving_file,
                     read_sections,
                     run, single)

ARCHIVES = os.path.join(ROOT, "tests", "file", "archives")
COLUMNS = ("number id fit_tag label x_left_mm y_up_mm z_front_mm orientation_x_left orientation_y_up "
           "orientation_z_front moment latency_ms fit_error_percent color color_3d_red color_3d_green "
           "color_3d_blue shown_in_3d orientation_shown_in_3d display shown_on_slices selected "
           "glyph_size_pixels").split()
FLAG_COLOURS = [(1, 1, 0), (0, 1, 0), (1, 0, 0), (0, 1, 1), (1, 0, 1), (1, 1, 1), (0, 0, 0)]

# Labels that some writer of some format gets wrong.
LABELS = ["plain", "", 'say "this"', "a,b", "tab\there", "line\nfeed", "\r", "\r\n", '"', "'", " blanks ",
          "Müller", "脳", "\U0001F9E0", "=1+1", "\\n", "\x7f\u202e", "#", "x" * 253, "x" * 254, "x" * 255, "y" * 70000]


def static_dipoles(path):
    """A file with one Dipoles section, its flags and its fit information, by the names of the columns."""
    sections = dict(read_sections(path))
    result = []
    for listed, flags, fit in zip(expected_dipoles(path), sections["Dipole_Flags"],
                                  sections["Dipole_FitInfo"]):
        result.append(dict(listed, id=int(fit[0]), fit_tag=int(fit[1]), colour=FLAG_COLOURS[int(flags[0])],
                           display={0: 1, 3: 1, 1: 2, 4: 2}.get(int(flags[1]), 0)))
    return result


def moving_dipoles(path):
    """The last of the moving sections, which replaces those before."""
    result = []
    for number, row in enumerate(read_sections(path)[-1][1], 1):
        values = [single(float(field)) for field in row[2:11]]
        result.append({
            "number": number, "id": int(row[0]), "fit_tag": int(row[1]), "label": row[11],
            "latency_ms": single(values[0] * 1000),
            "position_mm": host_axes([single(value * 10) for value in values[1:4]]),
            "orientation": host_axes(values[4:7]), "moment": values[7], "fit_error_percent": values[8],
            "colour": (1, 1, 0), "display": 1})
    return result


def row_of(dipole):
    """The values of a line, by the names of the columns."""
    values = [dipole["number"], dipole["id"], dipole["fit_tag"], dipole["label"], *dipole["position_mm"],
              *dipole["orientation"], dipole["moment"], dipole["latency_ms"], dipole["fit_error_percent"],
              "#ffff00",
              *dipole["colour"], True, True, dipole["display"], dipole["display"] == 1, False, 3.0]
    return dict(zip(COLUMNS, values))


EXPECTED = {"auditory.dip": static_dipoles, "spikes.dip": static_dipoles, "moving.dip": moving_dipoles}


def typed(text, wanted):
    """The text of a cell as the type that is wanted there."""
    if isinstance(wanted, bool):
        return {"yes": True, "no": False}[text]
    return text if isinstance(wanted, str) else type(wanted)(text)


def two_decimals(value):
    """As printf does: halves of the exact binary value to even."""
    return str(Decimal(value).quantize(Decimal("0.01"), ROUND_HALF_EVEN))


def spreadsheet_text(rows):
    text = ("The following data were exported from Veyrant for Microsoft Excel\n"
            "ID\t Latency\t Xp  Yp  Zp\t\tXo  Yo  Zo\t\tFitError  Moment  Lable \n")
    for row in rows:
        number = {name: two_decimals(value) for name, value in row.items() if isinstance(value, float)}
        text += "%d  %s   %s   %s   %s  %s  %s \n" % (
            row["id"], number["latency_ms"], " ".join(number[name] for name in COLUMNS[4:7]),
            " ".join(number[name] for name in COLUMNS[7:10]), number["fit_error_percent"], number["moment"],
            row["label"])
    return text.encode("utf-16-le", "surrogatepass")


class ConvertTest(ToolTest):
    def convert(self, *arguments, code=0):
        return self.end_with(code, "convert", *arguments)

    def read(self, path):
        with open(path, "rb") as file:
            return file.read()

    def table(self, path, separator=","):
        csv.field_size_limit(1000000)
        text = self.read(path).decode("utf-8")
        return list(csv.DictReader(io.StringIO(text, newline=""), delimiter=separator, strict=True))

    def set_of(self, dipoles, name="in.dipset", **face):
        return self.write(name, dipset.pack_set(dipoles, **face))


class Examples(ConvertTest):
    def expected(self, name):
        rows = [row_of(dipole) for dipole in EXPECTED[name](example(name))]
        return [{"moment_nAm" if key == "moment" else key: value for key,
                 value in row.items()} for row in rows]

    def output(self, name, ending):
        path = self.path("out" + ending)
        self.convert("--yes", example(name), path)
        return path

    def test_tables_hold_every_value(self):
        for ending, separator in ((".csv", ","), (".tsv", "\t")):
            for name in EXPECTED:
                wanted = self.expected(name)
                found = self.table(self.output(name, ending), separator)
                self.assertEqual(list(found[0]), list(wanted[0]))
                self.assertEqual(len(found), len(wanted))
                for have, want in zip(found, wanted):
                    self.assertEqual({key: typed(have[key], want[key]) for key in want}, want, name)

    def test_json_holds_every_value_and_what_belongs_to_all(self):
        for name in EXPECTED:
            document = json.loads(self.read(self.output(name, ".json")).decode("utf-8"))
            self.assertEqual(document["dipoles"], self.expected(name))
            self.assertEqual(list(document["dipoles"][0]), list(self.expected(name)[0]))
            self.assertEqual(document["files"], [example(name)])
            self.assertEqual(document["moment_unit"], "nAm")
            self.assertEqual(document["frame"], "head: x left, y up, z front")
            self.assertTrue(document["patient"].startswith("EXAMPLE"), document["patient"])

    def test_the_spreadsheet_text_has_exactly_these_bytes(self):
        for name in EXPECTED:
            rows = [row_of(dipole) for dipole in EXPECTED[name](example(name))]
            self.assertEqual(self.read(self.output(name, ".txt")), spreadsheet_text(rows), name)

    def test_set_files_hold_every_value(self):
        for name in EXPECTED:
            current, dipoles, face = dipset.unpack_set(self.read(self.output(name, ".dipset")))
            rows = [row_of(dipole) for dipole in EXPECTED[name](example(name))]
            self.assertEqual(len(dipoles), len(rows))
            self.assertEqual(current, len(rows) - 1)
            self.assertEqual((face["moment_in_nAm"], face["sphere_set"], face["coordinate_type"]), (1, 1, 3))
            for have, want in zip(dipoles, rows):
                self.assertEqual([have["number"], have["id"], have["fit_tag"], have["label"],
                                  *have["location"],
                                  *have["orientation"], have["moment"], have["latency"], have["fit_error"]],
                                 [want[key] for key in COLUMNS[:13]])
                self.assertEqual(have["color_bgr"], [want[key] for key in reversed(COLUMNS[14:17])])
                self.assertEqual((have["display"], have["color"]), (want["display"], 0x00FFFF))

    def test_a_set_converts_to_the_same_texts_as_the_file_it_came_from(self):
        for name in EXPECTED:
            source = self.output(name, ".dipset")
            for ending in (".csv", ".tsv", ".txt"):
                direct = self.read(self.output(name, ending))
                self.convert(source, self.path("via" + ending))
                self.assertEqual(self.read(self.path("via" + ending)), direct, (name, ending))

    def test_a_set_converts_to_a_set_bit_by_bit(self):
        names = [os.path.join(ARCHIVES, name) for name in ("set_20050629.bin", "set_20050629_small.bin")]
        for path in names + [self.output(name, ".dipset") for name in EXPECTED]:
            self.convert("--from", "dipset", path, self.path("again.dipset"))
            self.assertEqual(self.read(self.path("again.dipset")), self.read(path), path)


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
                self.assertIn("warning: %s: 2 dipole rows were in the file, but 1 dipoles arrived\n" % path,
                              result.err)
            self.assertFalse(os.path.exists(self.path("o.csv")))

    def test_a_text_without_a_table_is_called_so(self):
        path = self.write("notes.txt", "nothing here\n")
        result = self.convert(path, self.path("o.csv"), code=1)
        self.assertIn("this does not look like a 4D/MSI dipole table", result.err)

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
                  "old.dipset": b"\x4e\x58\x31\x01" + bytes(50), "empty.dip": b"", "empty.txt": b""}
        for name, data in broken.items():
            path = self.write(name, data)
            target = self.write("o.csv", "before")
            result = self.convert(example("auditory.dip"), path, target, code=1)
            self.assertIn("o.csv was not written", result.err, name)
            self.assertEqual(self.read(target), b"before", name)
            self.convert(path, self.path("new.csv"), code=1)
            self.assertFalse(os.path.exists(self.path("new.csv")), name)

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
            result = self.convert(dip, self.path(name), code=1)
            self.assertIn("%s: the name tells no format; it ends in .dipset, .txt, .csv, .tsv or .json, or "
                          "--to says what to write\n" % self.path(name), result.err)
        result = self.convert(self.write("in.data", b""), self.path("o.csv"), code=1)
        self.assertIn("in.data: the name tells no format; it ends in .dip (CTF), .txt (4D/MSI) or .dipset, or "
                      "--from ctf, 4d or dipset says what it is\n", result.err)
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
            result = run("convert", *inputs, "sub/out.csv", cwd=self.folder)
            self.assertEqual(result.returncode, 0, result.stderr)
            self.assertEqual(len(self.table(self.path("sub/out.csv"))), 3)


class Texts(ConvertTest):
    def test_labels_of_every_kind_survive_in_every_format(self):
        source = self.set_of([{"label": label, "number": i} for i, label in enumerate(LABELS)])
        for ending, separator in ((".csv", ","), (".tsv", "\t")):
            self.convert(source, self.path("o" + ending))
            self.assertEqual([row["label"] for row in self.table(self.path("o" + ending), separator)], LABELS)
        self.convert(source, self.path("o.json"))
        found = json.loads(self.read(self.path("o.json")).decode("utf-8"))["dipoles"]
        self.assertEqual([dipole["label"] for dipole in found], LABELS)
        self.convert(source, self.path("o.dipset"))
        self.assertEqual(self.read(self.path("o.dipset")), self.read(source))
        self.convert(source, self.path("o.txt"))
        text = self.read(self.path("o.txt")).decode("utf-16-le")
        for label in LABELS:
            self.assertIn("  1.00  %s \n" % label, text)

    def test_lone_halves_of_pairs_become_the_replacement_character(self):
        labels = ["\ud83e", "\udde0", "a\udce4b", "\ud83e\ud83e\udde0", "\udde0\ud83e", "x\ud800"]
        source = self.set_of([{"label": label} for label in labels])
        units = [label.encode("utf-16-le", "surrogatepass") for label in labels]
        wanted = [text.decode("utf-16-le", "replace") for text in units]
        self.assertIn("\N{REPLACEMENT CHARACTER}\U0001F9E0", wanted)
        for ending, read in ((".csv", lambda path: [row["label"] for row in self.table(path)]),
                             (".tsv", lambda path: [row["label"] for row in self.table(path, "\t")]),
                             (".json",
                              lambda path: [d["label"] for d in json.loads(self.read(path))["dipoles"]])):
            self.convert(source, self.path("o" + ending))
            self.assertEqual(read(self.path("o" + ending)), wanted)
        self.convert(source, self.path("o.dipset"))
        self.assertEqual(self.read(self.path("o.dipset")), self.read(source))

    def test_quotes_stand_only_where_they_must(self):
        source = self.set_of([{"label": label} for label in ("a,b", "a\tb", 'a"b')])
        self.convert(source, self.path("o.csv"))
        self.convert(source, self.path("o.tsv"))
        commas, tabs = (self.read(self.path("o" + ending)).decode() for ending in (".csv", ".tsv"))
        self.assertIn(',"a,b",', commas)
        self.assertIn(",a\tb,", commas)
        self.assertIn(',"a""b",', commas)
        self.assertIn("\ta,b\t", tabs)
        self.assertIn('\t"a\tb"\t', tabs)
        self.assertNotIn("\r", commas + tabs)

    def test_numbers_come_back_as_they_were(self):
        numbers = [0.1, 1 / 3, 5e-324, 1.7976931348623157e308, -2.5, 123456789.123456789, 96.19999694824219,
                   1e22, -0.0]
        source = self.set_of([{"latency": number, "moment": -number} for number in numbers])
        self.convert(source, self.path("o.csv"))
        self.convert(source, self.path("o.json"))
        table = [row["latency_ms"] for row in self.table(self.path("o.csv"))]
        listed = [dipole["latency_ms"] for dipole in json.loads(self.read(self.path("o.json")))["dipoles"]]
        for number, cell, value in zip(numbers, table, listed):
            self.assertEqual(float(cell).hex(), number.hex())
            self.assertEqual(value.hex(), number.hex())
            self.assertLessEqual(len(cell), len(repr(number)))

    def test_what_is_no_number_is_told(self):
        source = self.set_of([{"latency": value} for value in (math.nan, -math.nan, math.inf, -math.inf)])
        self.convert(source, self.path("o.csv"))
        cells = [row["latency_ms"] for row in self.table(self.path("o.csv"))]
        self.assertEqual(cells, ["nan", "nan", "inf", "-inf"])
        self.convert(source, self.path("o.json"))
        found = json.loads(self.read(self.path("o.json")), parse_constant=self.fail)["dipoles"]
        self.assertEqual([dipole["latency_ms"] for dipole in found], [None] * 4)
        self.convert(source, self.path("o.dipset"))
        self.assertEqual(self.read(self.path("o.dipset")), self.read(source))

    def test_the_locale_changes_nothing(self):
        wanted = None
        for locale in ("C", "C.UTF-8", "de_DE.UTF-8", "tr_TR.UTF-8"):
            environment = dict(os.environ, LC_ALL=locale)
            for ending in (".csv", ".txt", ".json"):
                result = run("convert", example("spikes.dip"), self.path("o" + ending), env=environment)
                self.assertEqual(result.returncode, 0, result.stderr)
            found = [self.read(self.path("o" + ending)) for ending in (".csv", ".txt", ".json")]
            wanted = wanted or found
            self.assertEqual(found, wanted, locale)

    def test_colours_and_switches(self):
        source = self.set_of([{"color": 0x010203, "color_bgr": [0.25, 0.5, single(0.2)], "show": 0,
                               "display": 2,
                               "show_orientation": 0, "size": 4.5}])
        self.convert(source, self.path("o.csv"))
        row = self.table(self.path("o.csv"))[0]
        self.assertEqual([row[key] for key in COLUMNS[13:]],
                         ["#030201", "0.2", "0.5", "0.25", "no", "no", "2", "no", "no", "4.5"])


if __name__ == "__main__":
    unittest.main()
