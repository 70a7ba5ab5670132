"""Tables and JSON that the program wrote come back, bit for bit, as this test's own reader finds them."""

import csv
import io
import json
import math
import random
import struct
import unittest

import dipset
from conversions import COLUMNS, ConvertTest, guarded
from support import dipoles_of, example, run, single

FORMATS = ((".csv", ","), (".tsv", "\t"), (".json", None))
REALS = [0.0, -0.0, 5e-324, 2.2250738585072014e-308, 1.7976931348623157e308, -1.7976931348623157e308, 0.1, 1 / 3,
         math.nan, math.inf, -math.inf, 96.19999694824219, 123456789.123456789, 1e22]
LABELS = ["", "=cmd|' /C calc'!A0", "+1", "-2", "@SUM(A1)", "'", "''x", "\t=1", "\r", "a,b", 'say "so"', '"',
          "two\nlines", "\r\n", "nan", "null", "\u00e4\u20ac\U0001F9E0", " blanks ", "a;b\tc", "\x01\x7f"]
MEMBERS = {"number": "number", "id": "id", "fit_tag": "fit_tag", "label": "label", "moment": "moment",
           "latency_ms": "latency", "fit_error_percent": "fit_error", "display": "display",
           "glyph_size_pixels": "size", "shown_in_3d": "show", "orientation_shown_in_3d": "show_orientation"}


def bits(value):
    """What tells any two values apart, but for the payload of what is no number."""
    if isinstance(value, float):
        return "nan" if math.isnan(value) else struct.pack("<d", value)
    return value


class Tables(ConvertTest):
    def hostile(self, seed):
        chance = random.Random(seed)

        def real():
            if chance.random() < 0.5:
                return chance.choice(REALS)
            value = struct.unpack("<d", chance.randbytes(8))[0]
            return 0.5 if math.isnan(value) else value

        def label():
            return "".join(chance.choice(LABELS) for _ in range(chance.choice((1, 1, 1, 3))))

        return [{"label": label(), "number": chance.choice((0, -5, 2 ** 31 - 1, -2 ** 31)), "id": chance.randrange(99),
                 "fit_tag": -7, "moment": real(), "latency": real(), "fit_error": real(), "size": real(),
                 "location": [real(), real(), real()], "orientation": [real(), real(), real()],
                 "color": chance.randrange(2 ** 24), "show": chance.choice((0, 1, 2)),
                 "show_orientation": chance.choice((0, 1)), "display": chance.choice((0, 1, 2, -9)),
                 "color_bgr": [single(chance.random()) for _ in range(3)]} for _ in range(40)]

    def rows(self, path, separator):
        """Each dipole by the names of the columns, by readers that share nothing with the program."""
        if separator is None:
            return json.loads(self.read(path).decode("utf-8"), parse_constant=self.fail)["dipoles"]
        return self.table(path, separator)

    def value(self, cell, like, separator):
        if separator is None:
            return float(cell) if isinstance(like, float) else cell
        if isinstance(like, str):
            return cell
        if cell in ("yes", "no"):
            return int(cell == "yes")
        return type(like)(cell)

    def test_other_readers_find_every_value(self):
        for seed in range(5):
            dipoles = self.hostile(seed)
            source = self.set_of(dipoles)
            for ending, separator in FORMATS:
                self.convert(source, self.path("o" + ending))
                rows = self.rows(self.path("o" + ending), separator)
                self.assertEqual(len(rows), len(dipoles))
                for row, dipole in zip(rows, dipoles):
                    self.assertEqual(list(row), COLUMNS)
                    for column, member in MEMBERS.items():
                        like = dipole[member]
                        if column == "label" and separator is not None:
                            like = guarded(like)
                        self.assertEqual(bits(self.value(row[column], like, separator)), bits(like), column)
                    for axis, column in enumerate(COLUMNS[4:7]):
                        like = dipole["location"][axis]
                        self.assertEqual(bits(self.value(row[column], like, separator)), bits(like))
                    for axis, column in enumerate(COLUMNS[7:10]):
                        like = dipole["orientation"][axis]
                        self.assertEqual(bits(self.value(row[column], like, separator)), bits(like))
                    for axis, column in enumerate(COLUMNS[14:17]):
                        self.assertEqual(single(float(row[column])), dipole["color_bgr"][2 - axis])

    def test_every_format_comes_back_from_every_other(self):
        source = self.set_of(self.hostile(7))
        wanted = {}
        for ending, _ in FORMATS:
            self.convert(source, self.path("first" + ending))
            wanted[ending] = self.read(self.path("first" + ending))
        for ending, _ in FORMATS:
            for other, _ in FORMATS:
                self.convert(self.path("first" + ending), self.path("again" + other))
                found = self.read(self.path("again" + other))
                if other == ".json":
                    found = found.replace(b"first" + ending.encode(), b"in.dipset")
                self.assertEqual(found, wanted[other], (ending, other))

    def test_tables_become_sets_with_the_same_members(self):
        source = self.set_of(self.hostile(8), moment_in_nAm=1)
        _, before, _ = dipset.unpack_set(self.read(source))
        for ending, _ in FORMATS:
            self.convert(source, self.path("o" + ending))
            self.convert(self.path("o" + ending), self.path("o.dipset"))
            _, after, face = dipset.unpack_set(self.read(self.path("o.dipset")))
            self.assertEqual(face["moment_in_nAm"], 1)
            for old, new in zip(before, after):
                for key in ("number", "id", "fit_tag", "label", "moment", "latency", "fit_error", "display", "size",
                            "show", "show_orientation", "color"):
                    self.assertEqual(bits(old[key]), bits(new[key]), key)
                for key in ("location", "orientation", "color_bgr"):
                    self.assertEqual([bits(float(v)) for v in old[key]], [bits(float(v)) for v in new[key]], key)

    def test_a_table_that_other_programs_wrote_is_read(self):
        rows = [["x_left_mm", "y_up_mm", "z_front_mm", "latency_ms", "label"], ["1.5", "-2", "3e1", "", "=a,\"b\""],
                ["0", "0", "0", "7", "plain"]]
        text = io.StringIO()
        csv.writer(text).writerows(rows)
        path = self.path("own.csv")
        with open(path, "w", encoding="utf-8-sig", newline="") as file:
            file.write(text.getvalue())
        listed = json.loads(self.succeed("list", "--json", path).out)["dipoles"]
        self.assertEqual([d["x_left_mm"] for d in listed], [1.5, 0])
        self.assertEqual([d["latency_ms"] for d in listed], [None, 7])
        self.assertEqual([d["moment"] for d in listed], [None, None])
        self.assertEqual([d["label"] for d in listed], ['=a,"b"', "plain"])
        lines = self.succeed("list", path).out.split("\n")
        self.assertEqual(lines[1].split(), ["1", "0", '=a,"b"', "1.5", "-2.0", "30.0", "-", "-", "-", "-", "-", "-", "yes"])


class Unknown(ConvertTest):
    def table_of(self, latencies, name="u.csv"):
        lines = ["id,x_left_mm,y_up_mm,z_front_mm,orientation_x_left,orientation_y_up,orientation_z_front,moment_nAm,"
                 "latency_ms,fit_error_percent,label"]
        lines += ["%d,1,2,3,0,0,1,20,%s,5,a" % (i, latency) for i, latency in enumerate(latencies)]
        return self.write(name, "\n".join(lines) + "\n")

    def test_unknown_values_are_last_in_sorts_and_stay_unknown(self):
        path = self.table_of(["3", "", "1", "", "2"])
        for ending, separator in FORMATS:
            self.convert(path, self.path("t" + ending))
            self.succeed("sort", "--by", "latency", "--force", self.path("t" + ending), "-o", self.path("s.json"))
            found = json.loads(self.read(self.path("s.json")))["dipoles"]
            self.assertEqual([d["latency_ms"] for d in found], [1, 2, 3, None, None])
            self.assertEqual([d["id"] for d in found][:3], [2, 4, 0])

    def test_they_follow_their_dipoles_behind_those_of_other_files(self):
        path = self.table_of(["", "4"])
        listed = dipoles_of(self.succeed("list", "--json", example("auditory.dip"), path, path).out)
        self.assertEqual([d["latency_ms"] is None for d in listed], [False, False, True, False, True, False])

    def test_a_set_file_cannot_hold_them_and_that_is_told(self):
        path = self.table_of(["", "", "1"])
        for ending in (".dipset", ".txt"):
            result = self.convert(path, self.path("o" + ending))
            self.assertIn("warning: %s: This file cannot hold that values are unknown, it gives them as if they were "
                          "known: latency of 2 dipoles." % self.path("o" + ending), result.err)
        self.assertNotIn("warning", self.convert(path, self.path("o.json")).err)
        self.assertNotIn("warning", self.convert(self.table_of(["1"]), self.path("o.dipset")).err)


class Bad(ConvertTest):
    def test_nothing_is_loaded_and_the_place_is_named(self):
        titles = "x_left_mm,y_up_mm,z_front_mm\n"
        for name, text, problem in (
                ("a.csv", titles + "1,2\n", "a.csv: line 2, column 3: this line has 2 cells, the titles are 3"),
                ("a.csv", "x,y,z\n1,2,3\n", 'a.csv: line 1, column 1: "x" is no column of a table of dipoles'),
                ("a.csv", titles + "1,2,3\n1,zwei,3\n", 'a.csv: line 3, column 2: y_up_mm: "zwei" is no number, or one '
                 "that does not fit"),
                ("a.tsv", titles, 'a.tsv: line 1, column 1: "x_left_mm,y_up_mm,z_front_mm" is no column'),
                ("a.csv", titles + '1,2,"3\n', "a.csv: line 2, column 3: the quote in front of this cell is not closed"),
                ("a.csv", titles + "1,2,3\n" * 30001, "a.csv: line 30002: a set holds 30000 dipoles, this would be one "
                 "more"),
                ("a.json", '{"dipoles": [\n{"x_left_mm": "one"}]}', "a.json: line 2, column 15: x_left_mm: this is not "
                 "what the column holds"),
                ("a.json", "[", "a.json: line 1, column 1: a document is an object")):
            path = self.write(name, text)
            result = self.end_with(1, "list", "--csv", path)
            self.assertIn(problem, result.err)
            self.assertEqual(result.out.count("\n"), 1)
            result = self.convert(path, self.path("o.dipset"), code=1)
            self.assertIn(problem, result.err)
            self.assertNotEqual(run("info", self.path("o.dipset")).returncode, 0)

    def test_a_file_that_is_not_there_is_told_with_the_reason(self):
        result = self.end_with(1, "list", self.path("none.csv"))
        self.assertIn("none.csv: No such file or directory", result.err)


if __name__ == "__main__":
    unittest.main()
