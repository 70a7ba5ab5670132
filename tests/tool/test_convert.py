"""`dipole convert`: every value of every example arrives in every format."""

import json
import os
import unittest
from decimal import ROUND_HALF_EVEN, Decimal

import dipset
from conversions import COLUMNS, ConvertTest
from support import ROOT, example, expected_dipoles, host_axes, read_sections, single

ARCHIVES = os.path.join(ROOT, "tests", "file", "archives")
FLAG_COLOURS = [(1, 1, 0), (0, 1, 0), (1, 0, 0), (0, 1, 1), (1, 0, 1), (1, 1, 1), (0, 0, 0)]


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


def table_dipoles(path):
    """The rows behind the heading of a 4D/MSI table."""
    with open(path, encoding="ascii") as file:
        rows = [line.split() for line in file.read().split("Latency", 1)[1].splitlines()[1:]]
    result = []
    for number, row in enumerate(rows, 1):
        values = [single(float(field)) for field in row[:12]]
        result.append({
            "number": number, "id": 0, "fit_tag": 0, "label": row[17], "latency_ms": values[0],
            "position_mm": host_axes([single(value * 10) for value in values[1:4]]),
            "orientation": host_axes([single(value / 10) for value in values[4:7]]), "moment": values[7],
            "fit_error_percent": single(100 - single(values[10] * 100)), "colour": (1, 1, 0), "display": 1})
    return result


def row_of(dipole):
    """The values of a line, by the names of the columns."""
    values = [dipole["number"], dipole["id"], dipole["fit_tag"], dipole["label"], *dipole["position_mm"],
              *dipole["orientation"], dipole["moment"], dipole["latency_ms"], dipole["fit_error_percent"],
              "#ffff00",
              *dipole["colour"], True, True, dipole["display"], dipole["display"] == 1, False, 3.0]
    return dict(zip(COLUMNS, values))


EXPECTED = {"auditory.dip": static_dipoles, "spikes.dip": static_dipoles, "moving.dip": moving_dipoles,
            "median.txt": table_dipoles}


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


class Examples(ConvertTest):
    def expected(self, name):
        rows = [row_of(dipole) for dipole in EXPECTED[name](example(name))]
        return [{"moment_nAm" if key == "moment" else key: value for key,
                 value in row.items()} for row in rows]

    def output(self, name, ending):
        path = self.path("out" + ending)
        self.convert("--yes", "--accept=moving-columns", example(name), path)
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
            self.assertEqual((face["moment_in_nAm"], face["coordinate_type"]), (1, 3))
            self.assertEqual(face["sphere_set"], 1 if name.endswith(".dip") else 0)
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


if __name__ == "__main__":
    unittest.main()
