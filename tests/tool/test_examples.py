"""The committed examples are exactly what examples/make_examples.py writes, and hold together."""

import os
import subprocess
import sys
import tempfile
import unittest

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
EXAMPLES = os.path.join(ROOT, "examples")
COMMITTED = ("auditory.dip", "spikes.dip", "moving.dip", "median.txt", "ch2.fiducials")


def make(folder, *more):
    script = os.path.join(EXAMPLES, "make_examples.py")
    return subprocess.run([sys.executable, script, folder, *more], check=True, capture_output=True, text=True)


def contents(path):
    with open(path, "rb") as file:
        return file.read()


def section_rows(data, name):
    """The numbered rows of every section of this name."""
    found, inside = [], False
    for line in data.decode("ascii").split("\n"):
        if line == name:
            inside = True
            found.append([])
        elif line == "}":
            inside = False
        elif inside and line.split(":")[0].strip().isdigit():
            found[-1].append(line.split())
    return found


class Examples(unittest.TestCase):
    def test_the_script_writes_the_committed_bytes(self):
        with tempfile.TemporaryDirectory() as folder:
            printed = make(folder).stdout
            self.assertEqual(sorted(os.listdir(folder)), sorted(COMMITTED))
            for name in COMMITTED:
                committed = contents(os.path.join(EXAMPLES, name))
                self.assertEqual(contents(os.path.join(folder, name)), committed, name)
                self.assertIn(os.path.join(folder, name), printed)

    def test_the_large_file_is_the_same_on_every_run(self):
        with tempfile.TemporaryDirectory() as one, tempfile.TemporaryDirectory() as two:
            make(one, "--rows", "500")
            make(two, "--rows", "500")
            first = contents(os.path.join(one, "large.dip"))
            self.assertEqual(first, contents(os.path.join(two, "large.dip")))
            self.assertEqual(len(section_rows(first, "Dipoles")[0]), 500)

    def test_flags_and_fit_information_have_one_row_per_dipole(self):
        for name, count in (("auditory.dip", 2), ("spikes.dip", 120)):
            data = contents(os.path.join(EXAMPLES, name))
            for section in ("Dipoles", "Dipole_Flags", "Dipole_FitInfo"):
                counts = [len(rows) for rows in section_rows(data, section)]
                self.assertEqual(counts, [count], (name, section))

    def test_moving_rows_have_27_fields_after_the_index_and_come_in_two_sections(self):
        sections = section_rows(contents(os.path.join(EXAMPLES, "moving.dip")), "Fit_Results")
        self.assertEqual([len(rows) for rows in sections], [41, 41])
        self.assertEqual({len(row) for rows in sections for row in rows}, {28})

    def test_spikes_lie_within_two_centimetres(self):
        rows = section_rows(contents(os.path.join(EXAMPLES, "spikes.dip")), "Dipoles")[0]
        points = [[float(value) for value in row[1:4]] for row in rows]
        middle = [sum(column) / len(points) for column in zip(*points)]
        for point in points:
            distance = sum((a - b) ** 2 for a, b in zip(point, middle)) ** 0.5
            self.assertLess(distance, 2.0)

    def test_the_table_has_18_columns_and_its_best_fit_at_20_milliseconds(self):
        lines = contents(os.path.join(EXAMPLES, "median.txt")).decode("ascii").split("\n")
        start = next(i for i, line in enumerate(lines) if line.startswith("Latency"))
        rows = [line.split() for line in lines[start + 1 :] if line]
        self.assertEqual({len(row) for row in rows}, {18})
        self.assertEqual(max(rows, key=lambda row: float(row[10]))[0], "20.00")


if __name__ == "__main__":
    unittest.main()
