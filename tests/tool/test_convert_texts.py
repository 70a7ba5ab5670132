"""`dipole convert`: labels and numbers of every kind survive."""

import json
import math
import os
import unittest

from conversions import COLUMNS, ConvertTest, guarded
from support import example, run, single

# Labels that some writer of some format gets wrong.
LABELS = ["plain", "", 'say "this"', "a,b", "tab\there", "line\nfeed", "\r", "\r\n", '"', "'", " blanks ",
          "Müller", "脳", "\U0001F9E0", "=1+1", "\\n", "\x7f\u202e", "#", "x" * 253, "x" * 254, "x" * 255, "y" * 70000]


class Texts(ConvertTest):
    def test_labels_of_every_kind_survive_in_every_format(self):
        source = self.set_of([{"label": label, "number": i} for i, label in enumerate(LABELS)])
        for ending, separator in ((".csv", ","), (".tsv", "\t")):
            self.convert(source, self.path("o" + ending))
            self.assertEqual([row["label"] for row in self.table(self.path("o" + ending), separator)],
                             [guarded(label) for label in LABELS])
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
        self.assertEqual([dipole["latency_ms"] for dipole in found], ["nan", "nan", "inf", "-inf"])
        self.convert(source, self.path("o.dipset"))
        self.assertEqual(self.read(self.path("o.dipset")), self.read(source))

    def test_the_locale_changes_nothing(self):
        wanted = None
        for locale in ("C", "C.UTF-8", "de_DE.UTF-8", "tr_TR.UTF-8"):
            environment = dict(os.environ, LC_ALL=locale)
            for ending in (".csv", ".txt", ".json"):
                result = run("convert", example("spikes.dip"), "--force", "-o", self.path("o" + ending), env=environment)
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
