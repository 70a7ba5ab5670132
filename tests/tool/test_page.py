"""`dipole page` puts every dipole, the head and what is known of both into one file, on the proper side, as data."""

import csv
import gzip
import io
import os
import struct
import subprocess
import unittest

from pages import Page, carried
from support import (LEFT_FIRST, PAGE, TOOL, ToolTest, dipole_file, example, head_volume, moving_file,
                     program_with_page, run)


POINTS = example("ch2.fiducials")  # of the spikes


class PageTest(ToolTest):
    def setUp(self):
        super().setUp()
        self.program = program_with_page(self.path("installed"))
        self.mri = head_volume(self.path("head.nii.gz"), bright=(-40, 30, 20))

    def page_of(self, *arguments, code=0):
        self.result = self.end_with(code, "page", *arguments, "--force", "-o", self.path("out.html"),
                                    program=self.program)
        with open(self.path("out.html"), "rb") as file:
            return Page(file.read())

    def with_head(self, *arguments, code=0, mri=None, fiducials=LEFT_FIRST):
        return self.page_of(*arguments, "--mri", mri or self.mri, "--fiducials", fiducials, code=code)

    def spikes(self, *arguments):
        return self.with_head(example("spikes.dip"), *arguments, fiducials=POINTS)

    def one_dipole(self, label="a", name="d.dip"):
        return self.write(name, dipole_file([(3, 4, 2, 7, label)]))


class Content(PageTest):
    def test_the_template_is_filled_and_else_as_it_was(self):
        page = self.with_head(self.one_dipole())
        bare = page.text
        for text in page.elements.texts.values():
            bare = bare.replace(">" + text + "</script>", "></script>") if text else bare
        self.assertEqual(bare, PAGE)
        self.assertEqual(page.elements.scripts, 3)

    def test_every_dipole_is_there_whatever_the_limits(self):
        page = self.spikes("--max-error", "10", "--moment", "100:", "--latency", ":3",
                              "--color-by", "latency", "--tolerance", "all", "--label")
        dipoles, settings = page.json["dipoles"], page.json["settings"]
        self.assertEqual(dipoles["count"], 120)
        for column in dipoles["columns"]:
            self.assertEqual(len(column["values"]), 120)
        for name in ("places", "arrows", "clusters"):
            self.assertEqual(len(dipoles[name]), 120)
        self.assertEqual(settings["fitError"], {"least": None, "most": 10})
        self.assertEqual(settings["moment"], {"least": 100, "most": None})
        self.assertEqual(settings["latency"], {"least": None, "most": 3})
        self.assertEqual((settings["colourBy"], settings["toleranceMm"]), ("latency", None))
        self.assertTrue(settings["areLabelsShown"] and settings["areArrowsShown"])
        self.assertFalse(self.spikes("--no-arrows").json["settings"]["areArrowsShown"])
        self.assertEqual(len([arrow for arrow in dipoles["arrows"] if arrow]), 120)

    def test_columns_are_those_of_a_table_in_every_frame(self):
        options = ("--mri", self.mri, "--fiducials", POINTS)
        page = self.spikes("--mni", "identity", "--mni-space", "mni152")
        for frame, mni in (("host", ()), ("ctf", ()), ("neuromag", ()), ("scanner", ()),
                           ("mni", ("--mni", "identity", "--mni-space", "mni152"))):
            text = self.succeed("convert", example("spikes.dip"), "--frame", frame, *options, *mni, "--to", "csv",
                                "-o", "-").out
            rows = list(csv.DictReader(io.StringIO(text)))
            for title in rows[0]:
                for value, row in zip(page.column(title), rows):
                    if isinstance(value, bool):
                        self.assertEqual(row[title], "yes" if value else "no")
                    elif isinstance(value, (int, float)):
                        self.assertAlmostEqual(value, float(row[title]), delta=1e-6 * max(1, abs(value)))
                    else:
                        self.assertEqual(value, row[title])

    def test_places_in_the_world_are_those_of_the_scanner_and_lead_to_every_frame(self):
        page = self.spikes("--mni", "identity")
        self.assertEqual(page.json["world"]["kind"], "scanner")
        self.assertEqual([frame["name"] for frame in page.json["frames"]],
                         ["host", "ctf", "neuromag", "scanner", "mni"])
        for row, place in enumerate(page.json["dipoles"]["places"]):
            for found, axis in zip(place, ("x_right", "y_front", "z_up")):
                self.assertAlmostEqual(found, page.column("scanner_%s_mm" % axis)[row], delta=1e-4)
        for frame in page.json["frames"]:
            prefix = {"host": "", "ctf": "ctf_", "neuromag": "neuromag_", "scanner": "scanner_", "mni": "mni_"}
            titles = [prefix[frame["name"]] + axis + "_" + side + "_mm" for axis, side in zip("xyz", frame["axes"])]
            for row, place in enumerate(page.json["dipoles"]["places"]):
                for title, found in zip(titles, carried(frame["fromWorld"], place)):
                    self.assertAlmostEqual(found, page.column(title)[row], delta=1e-4)

    def test_an_arrow_points_where_the_orientation_does(self):
        page = self.spikes()
        for row, arrow in enumerate(page.json["dipoles"]["arrows"]):
            own = [page.column("scanner_orientation_" + name)[row] for name in ("x_right", "y_front", "z_up")]
            size = sum(a * a for a in arrow) ** 0.5
            length = sum(a * a for a in own) ** 0.5
            for a, b in zip(arrow, own):
                self.assertAlmostEqual(a / size, b / length, delta=1e-4)

    def test_what_is_unknown_is_null_and_what_is_no_number_says_so(self):
        path = self.write("a.csv", "x_left_mm,y_up_mm,z_front_mm,latency_ms,fit_error_percent\n"
                                   "10,20,30,,5\nnan,20,30,4,inf\n1e9,0,0,5,6\n")
        page = self.with_head(path)
        self.assertEqual(page.column("latency_ms"), [None, 4, 5])
        self.assertEqual(page.column("fit_error_percent"), [5, "inf", 6])
        self.assertEqual(page.column("x_left_mm"), [10, "nan", 1e9])
        self.assertEqual(page.column("moment"), [None] * 3)
        self.assertEqual([place is None for place in page.json["dipoles"]["places"]], [False, True, True])
        self.assertEqual(page.json["dipoles"]["arrows"], [None] * 3)
        self.assertIn("2 dipoles have no place and no picture, only a row", page.json["warnings"])

    def test_files_patient_and_findings_are_told(self):
        paths = [example("spikes.dip"), example("moving.dip")]
        page = self.with_head("--yes", *paths, code=1, fiducials=POINTS)
        self.assertEqual([(file["name"], file["format"], file["dipoles"]) for file in page.json["files"]],
                         [("spikes.dip", "CTF", 120), ("moving.dip", "CTF", 41)])
        finding, = [finding for finding in page.json["findings"] if finding["code"] == "moving-columns"]
        self.assertEqual((finding["severity"], finding["file"], finding["rows"]),
                         ("wrong", "moving.dip", list(range(120, 161))))
        self.assertIn(finding["sentence"], " ".join(page.json["warnings"]))
        self.assertEqual(page.json["title"], "spikes.dip and 1 more")
        self.assertEqual(self.spikes().json["patient"], "EXAMPLE_SPIKES")
        self.assertRegex(page.json["made"], r"^20\d\d-\d\d-\d\dT\d\d:\d\d:\d\dZ$")

    def test_what_is_taken_for_granted_is_told(self):
        way = self.write("mni.txt", "1 0 0 0\n0 1 0 0\n0 0 1 0\n0 0 0 1\n")
        page = self.spikes("--mni", way, "--arrows-by-moment")
        told = " ".join(page.json["conventions"])
        self.assertIn("The way to MNI: it was taken from the scanner's mm to MNI's mm, which it does not say", told)
        strongest = max(abs(moment) for moment in page.column("moment_nAm"))
        self.assertIn("Arrows are as long as their moments are large; the longest is one of %s nAm."
                      % ("%.5f" % strongest).rstrip("0").rstrip("."), told)
        lengths = [sum(a * a for a in arrow) ** 0.5 for arrow in page.json["dipoles"]["arrows"]]
        ratios = [length / abs(moment) for length, moment in zip(lengths, page.column("moment_nAm"))]
        self.assertLess(max(ratios) / min(ratios), 1.0001)

    def test_without_a_head_the_sphere_stands_in(self):
        page = self.page_of(self.one_dipole())
        self.assertIsNone(page.json["head"])
        self.assertEqual((page.head_bytes, page.json["world"]["kind"]), (b"", "head"))
        self.assertEqual([frame["name"] for frame in page.json["frames"]], ["host", "ctf"])
        # x to the nose 3, y left 4, z up 2 cm
        for found, expected in zip(page.json["dipoles"]["places"][0], (-40, 30, 20)):
            self.assertAlmostEqual(found, expected, delta=1e-4)
        self.assertEqual(page.json["sphere"], {"centre": [0, 0, 50], "radius": 85})
        self.assertEqual(carried(page.frame("host")["fromWorld"], (-40, 30, 20)), [40, 20, 30])


class Heads(PageTest):
    def test_the_head_is_cropped_to_what_is_not_background_and_each_voxel_is_where_it_was(self):
        page = self.with_head(self.one_dipole())
        head = page.head()
        self.assertEqual((head.code, page.json["head"]["isFull"]), (2, False))
        self.assertLess(head.shape[0], 50)
        seen = {tuple(round(c, 3) for c in place): value for place, value in head.values()}
        with gzip.open(self.mri) as file:
            data = file.read()[352:]
        outside = 0
        for at, value in enumerate(data):
            place = tuple(-122.5 + 5.0 * index for index in (at % 50, at // 50 % 50, at // 2500))
            if place in seen:
                self.assertEqual(seen.pop(place), value)
            else:
                outside += 1
                self.assertEqual(value, 0)
        self.assertEqual(seen, {})
        self.assertGreater(outside, 50 * 50 * 5)
        self.assertEqual(head.value_at((-40, 30, 20)), 250)
        self.assertEqual(page.json["dipoles"]["places"][0], [-40, 30, 20])  # the bright place


if __name__ == "__main__":
    unittest.main()
