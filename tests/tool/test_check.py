"""Each row of the audit's table: what the import makes of such a file, what `dipole check` says of it, and what
a repair makes of it. `dipole list` shows the first and the last."""

import json
import os
import unittest

from audits import (FIDUCIALS, FIT_HEADING, HEADING, MOVING_HEADING, MSI_HEADING, MSI_ROW, dipoles, fit_row,
                    section)
from support import SPHERE, Png, ToolTest, example, head_volume, run, single

CODES = ("unit latency-unit moving-columns row-order no-fit msi-columns msi-percent fiducials sphere encoding labels "
         "lost-rows sections outside-head several-patients other-head mri-points").split()
EAR = "1: 1.00 5.20 5.80 0 0 1 20 left"  # cm
IN_CM = [52.0, 58.0, 10.0]
IN_MM = [5.2, 5.8, 1.0]


class CheckTest(ToolTest):
    def check(self, code, *arguments):
        """The document of `dipole check --json`, which ends with that code."""
        return json.loads(self.end_with(code, "check", "--json", *arguments).out)

    def outline(self, code, *arguments):
        return [(finding["severity"], finding["code"]) for finding in self.check(code, *arguments)["findings"]]

    def only(self, code, *arguments):
        findings = self.check(code, *arguments)["findings"]
        self.assertEqual(len(findings), 1, findings)
        return findings[0]

    def listed(self, code, *arguments):
        return json.loads(self.end_with(code, "list", "--json", *arguments).out)["dipoles"]

    def places(self, code, *arguments):
        return [[round(dipole[key], 4) for key in ("x_left_mm", "y_up_mm", "z_front_mm")]
                for dipole in self.listed(code, *arguments)]


class Units(CheckTest):
    NO_UNIT = "// xp yp zp xo yo zo Mom(nAm) Label\n"

    def test_without_a_unit_centimetres_arrive_as_millimetres(self):
        path = self.write("a.dip", dipoles([EAR], self.NO_UNIT))
        self.assertEqual(self.places(1, path), [IN_MM])
        finding = self.only(1, path)
        self.assertEqual((finding["severity"], finding["code"]), ("wrong", "unit"))
        self.assertEqual((finding["file"], finding["line"], finding["section"]), (path, 11, "Dipoles"))
        self.assertEqual(finding["dipoles"], [1])
        self.assertEqual(self.places(0, "--unit", "cm", path), [IN_CM])
        self.assertEqual(self.places(0, "--unit", "mm", path), [IN_MM])
        self.assertEqual(self.outline(0, "--unit", "cm", path), [])
        self.assertEqual(self.places(1, "--repair", "all", path), [IN_MM])  # nobody said which

    def test_large_places_are_doubtful(self):
        path = self.write("a.dip", dipoles(["1: 10 52 58 0 0 1 20 left"], self.NO_UNIT))
        self.assertEqual(self.places(0, path), [IN_CM])
        self.assertEqual(self.outline(0, path), [("doubtful", "unit")])
        self.assertEqual(self.outline(0, "--unit", "mm", path), [])

    def test_a_unit_before_the_name_of_the_section(self):
        path = self.write("a.dip", dipoles([EAR], "", head=SPHERE + HEADING))
        self.assertEqual(self.places(1, path), [IN_MM])
        self.assertEqual(self.outline(1, path), [("wrong", "unit")])
        self.assertEqual(self.places(0, "--unit", "cm", path), [IN_CM])

    def test_millimetres_in_the_heading_are_a_note(self):
        path = self.write("a.dip", dipoles(["1: 10 52 58 0 0 1 20 left"], HEADING.replace("cm", "mm")))
        self.assertEqual(self.places(0, path), [IN_CM])
        self.assertEqual(self.outline(0, path), [("note", "unit")])

    def test_a_table_in_millimetres(self):
        path = self.write("a.txt", MSI_HEADING.replace("  x ", "  x(mm) ")
                          + MSI_ROW.replace("1.5 5.0 6.0", "15 50 60"))
        self.assertEqual(self.places(1, path), [[500.0, 600.0, 150.0]])
        self.assertEqual(self.outline(1, path), [("wrong", "unit")])
        self.assertEqual(self.places(0, "--unit", "mm", path), [[50.0, 60.0, 15.0]])

    def test_metres_are_repaired_as_the_file_says(self):
        path = self.write("a.dip", dipoles(["1: 0.01 0.052 0.058 0 0 1 20 left"], HEADING.replace("cm", "m")))
        self.assertEqual(self.places(1, path), [[0.052, 0.058, 0.01]])
        told = self.end_with(1, "check", path).out
        self.assertIn("Remedy (--repair unit): The positions are taken in the unit that the file gives.", told)
        for repair in ("unit", "all"):
            self.assertEqual(self.places(0, "--repair", repair, path), [IN_CM])
        self.assertEqual(self.outline(0, "--repair", "unit", path), [])

    def test_the_unit_that_is_said_does_not_override_the_file(self):
        path = self.write("a.dip", dipoles(["1: 10 52 58 0 0 1 20 left"], HEADING.replace("cm", "mm")))
        self.assertEqual(self.places(0, "--unit", "cm", path), [IN_CM])
        finding = self.only(0, "--unit", "cm", path)
        self.assertEqual((finding["severity"], finding["code"], finding["remedy"]), ("note", "unit", None))
        self.assertIn("the other unit that you said was not used", finding["sentence"])
        self.assertEqual(self.outline(0, "--unit", "mm", path), [])

    def test_a_line_of_units_behind_the_heading_of_a_table(self):
        path = self.write("a.txt", MSI_HEADING + "(sec) (mm) (mm) (mm) (nAm) (nAm) (nAm) (nAm) (mm)\n"
                          + MSI_ROW.replace("20.0 1.5 5.0 6.0", "0.5 15 50 60"))
        self.assertEqual(self.places(1, path), [[500.0, 600.0, 150.0]])
        self.assertEqual(self.outline(1, path), [("wrong", "unit"), ("wrong", "latency-unit")])
        self.assertEqual(self.places(0, "--repair", "all", path), [[50.0, 60.0, 15.0]])
        self.assertEqual(self.listed(0, "--repair", "all", path)[0]["latency_ms"], 500.0)

    def test_latencies_in_seconds_of_a_table(self):
        path = self.write("a.txt", MSI_HEADING.replace("Latency", "Latency(s)") + MSI_ROW.replace("20.0", "0.5", 1))
        self.assertEqual(self.listed(1, path)[0]["latency_ms"], 0.5)
        self.assertEqual(self.outline(1, path), [("wrong", "latency-unit")])
        self.assertEqual(self.listed(0, "--repair", "latency-unit", path)[0]["latency_ms"], 500.0)
        self.assertEqual(self.outline(0, "--repair", "latency-unit", path), [])


class Columns(CheckTest):
    ELLIPSOID = "// Trial Sample Latency (s) xp (cm) yp (cm) zp (cm) xo yo zo Mom(nAm) " + " ".join(
        "E%d%s" % (number, axis) for number in (1, 2, 3) for axis in "xyz") \
        + " Ecx Ecy Ecz Conf(%) Err(%) MEG Err(%) EEG Err(%) Label\n"
    LONG_ROW = ("1:\t1\t400\t0.08\t1.2\t5.3\t5.6\t-0.3\t0.1\t-0.9\t21.7\t0.381\t0.000\t0.0\t0.0\t0.2\t0.0\t0.0\t0.0"
                "\t0.4\t1.2\t5.3\t5.6\t95.0\t10.5\t10.91\t0.00\tleft")

    def test_an_axis_of_an_ellipsoid_arrives_as_fit_error(self):
        heading = self.ELLIPSOID.replace(" ", "\t").replace("MEG\tErr", "MEG Err").replace(
            "EEG\tErr", "EEG Err").replace("\t(", " (")
        path = self.write("a.dip", SPHERE + section("Fit_Results", heading, [self.LONG_ROW]))
        before, = self.listed(1, "--yes", path)
        self.assertEqual((before["fit_error_percent"], before["label"]), (single(0.381), "0.000"))
        finding = self.only(1, "--yes", path)
        self.assertEqual((finding["severity"], finding["code"], finding["line"], finding["dipoles"]),
                         ("wrong", "moving-columns", 11, [1]))
        after, = self.listed(0, "--yes", "--repair", "moving-columns", path)
        self.assertEqual((after["fit_error_percent"], after["label"]), (10.5, "left"))
        self.assertEqual(self.outline(0, "--yes", "--repair", "moving-columns", path), [])

    def test_columns_that_no_heading_names_become_unknown(self):
        heading = MOVING_HEADING.replace(" Err(%) Label", "")
        path = self.write("a.dip", SPHERE + section("Fit_Results", heading, [self.LONG_ROW]))
        self.assertEqual(self.listed(1, "--yes", path)[0]["fit_error_percent"], single(0.381))
        after, = self.listed(0, "--yes", "--repair", "all", path)
        self.assertEqual((after["fit_error_percent"], after["label"]), (None, None))
        csv = self.succeed("list", "--yes", "--repair", "all", "--csv", path).out.splitlines()
        row = dict(zip(csv[0].split(","), csv[1].split(",")))
        self.assertEqual((row["fit_error_percent"], row["label"]), ("", ""))

    def test_a_table_with_its_columns_in_another_order(self):
        path = self.write("a.txt", "Latency  x  y  z  Qx  Qy  Qz  Rad  |Q|  RMS  Vol  Corr  Iter  GOF  A  B  C  Label\n"
                          "20.0 1.5 5.0 6.0 9.0 2.0 -1.0 4.5 22.0 0.3 0.5 0.97 7 0.75 b c 1 N20m\n")
        before, = self.listed(1, path)
        self.assertEqual((before["moment_nAm"], before["fit_error_percent"]), (4.5, 50.0))  # a radius, of a volume
        self.assertEqual(self.outline(1, path), [("wrong", "msi-columns")])
        after, = self.listed(0, "--repair", "msi-columns", path)
        self.assertEqual((after["moment_nAm"], after["fit_error_percent"]), (22.0, 25.0))

    def test_points_in_integer_columns_lose_rows(self):
        path = self.write("a.txt", MSI_HEADING + MSI_ROW + MSI_ROW.replace(" 1 a", " 1.0 a").replace("N20m", "second")
                          + MSI_ROW)
        self.assertEqual([dipole["label"] for dipole in self.listed(1, path)], ["N20m", "N20m"])
        finding = self.only(1, path)
        self.assertEqual((finding["severity"], finding["code"], finding["line"]), ("wrong", "msi-columns", 3))
        self.assertEqual([dipole["label"] for dipole in self.listed(0, "--repair", "all", path)],
                         ["N20m", "second", "N20m"])

    def test_goodness_in_percent(self):
        path = self.write("a.txt", MSI_HEADING + MSI_ROW.replace("0.75", "75.5"))
        self.assertEqual(self.listed(1, path)[0]["fit_error_percent"], -7450.0)
        self.assertEqual(self.outline(1, path), [("wrong", "msi-percent")])
        self.assertEqual(self.listed(0, "--repair", "msi-percent", path)[0]["fit_error_percent"], 24.5)


class Rows(CheckTest):
    THREE = ["%d: %d 5 6 0 0 1 20 %s" % (number, number, "abc"[number - 1]) for number in (1, 2, 3)]

    def errors(self, code, *arguments):
        return [dipole["fit_error_percent"] for dipole in self.listed(code, *arguments)]

    def test_fit_information_in_another_order_goes_to_other_dipoles(self):
        fits = [fit_row(number, "0.%d" % number, number + 0.5) for number in (2, 1, 3)]
        path = self.write("a.dip", dipoles(self.THREE, fits=fits))
        self.assertEqual(self.errors(1, path), [2.5, 1.5, 3.5])
        finding = self.only(1, path)
        self.assertEqual((finding["severity"], finding["code"], finding["section"], finding["dipoles"]),
                         ("wrong", "row-order", "Dipole_FitInfo", [1, 2]))
        self.assertEqual(self.errors(0, "--repair", "row-order", path), [1.5, 2.5, 3.5])

    def test_a_point_where_an_integer_is_wanted_shifts_the_rows_behind_it(self):
        fits = [fit_row(1, "0.1", 1.5), fit_row(2, "0.2", 2.5).replace(" 5 0", " 5.5 0"), fit_row(3, "0.3", 3.5)]
        path = self.write("a.dip", dipoles(self.THREE, fits=fits))
        self.assertEqual(self.errors(1, path), [1.5, 3.5, 0.2])
        self.assertEqual(self.outline(1, path), [("wrong", "row-order")])
        self.assertEqual(self.errors(0, "--repair", "row-order", path), [1.5, 2.5, 3.5])

    def test_without_fit_information_latency_and_error_are_unknown(self):
        path = self.write("a.dip", dipoles(self.THREE, fits=[fit_row(1, "0.1", 5)]))
        self.assertEqual(self.errors(0, path), [5.0, None, None])
        self.assertEqual([dipole["latency_ms"] for dipole in self.listed(0, path)], [100.0, None, None])
        finding = self.only(0, path)
        self.assertEqual((finding["severity"], finding["code"], finding["dipoles"]), ("note", "no-fit", [2, 3]))
        table = self.succeed("list", path).out.splitlines()
        self.assertEqual([line.split()[10] for line in table[1:]], ["100.0", "-", "-"])
        self.assertRegex(self.succeed("info", path).out, r"latency +100\.00 \.\. 100\.00 ms\n")
        told = self.succeed("convert", path, "-o", self.path("o.dipset")).err
        self.assertIn("latency of 2 dipoles, fit error of 2 dipoles", told)

    def test_rows_that_cannot_be_read_are_lost(self):
        path = self.write("a.dip", dipoles([EAR, "2: 1,5 5,0 6,0 0 0 1 20 b"], fits=[fit_row(1, "0.1", 5)]))
        self.assertEqual(len(self.listed(1, path)), 1)
        finding = self.only(1, path)
        self.assertEqual((finding["severity"], finding["code"], finding["line"], finding["remedy"]),
                         ("wrong", "lost-rows", 12, None))
        self.assertEqual(len(self.listed(1, "--repair", "all", path)), 1)

    def test_places_that_are_no_numbers(self):
        path = self.write("a.dip", dipoles([EAR, "2: nan 5 6 0 0 1 20 b"]))
        self.assertEqual(self.listed(1, path)[1]["z_front_mm"], "nan")
        self.assertEqual((self.only(1, path)["code"], self.only(1, path)["dipoles"]), ("lost-rows", [2]))

    def test_an_unclosed_section(self):
        path = self.write("a.dip", dipoles([EAR]).replace("left\n}\n", "left\n"))
        self.assertEqual(len(self.listed(1, path)), 2)  # the second is fit information
        self.assertEqual(self.outline(1, path), [("note", "no-fit"), ("wrong", "sections"), ("wrong", "sections")])

    def test_a_label_of_the_dipole_before(self):
        path = self.write("a.dip", dipoles([EAR, "2: 1 -5 6 0 0 1 20"]))
        self.assertEqual([dipole["label"] for dipole in self.listed(1, path)], ["left", "left"])  # on the right
        self.assertEqual((self.only(1, path)["code"], self.only(1, path)["dipoles"]), ("labels", [2]))
        self.assertEqual([dipole["label"] for dipole in self.listed(0, "--repair", "labels", path)], ["left", "Non"])


class Heads(CheckTest):
    ROW = "1: 1 5 6 0 0 1 20 a"

    def info(self, code, *arguments):
        entry, = json.loads(self.end_with(code, "info", "--json", *arguments).out)
        return entry

    def test_fiducial_points_that_are_not_read(self):
        for name, nasion, there in (("MRI_Fid_Points", "128\t26\t156", [128, 100, 230]),
                                    ("Fid_Points", "128.5\t26.25\t156", [127.5, 100, 229.75])):
            head = SPHERE + section(name, "", [(FIDUCIALS % nasion).rstrip("\n")])
            path = self.write("a.dip", dipoles([self.ROW], head=head))
            self.assertIsNone(self.info(0, path)["fiducials_mri_voxels"], name)
            self.assertEqual(self.info(0, path)["fiducials_head_mm"]["nasion"], [0, 0, 85])  # of the sphere
            self.assertEqual(self.outline(0, path), [("doubtful", "fiducials")])
            after = self.info(0, "--repair", "fiducials", path)
            self.assertEqual(after["fiducials_mri_voxels"]["nasion"], there)
            self.assertEqual(after["fiducials_head_mm"]["left_ear"], [85.9375, 0, 0])
            self.assertEqual(after["findings"], [])

    def test_a_value_that_touches_its_key(self):
        path = self.write("a.dip", dipoles([self.ROW], head=SPHERE.replace("Z: 5.0", "Z:5.0")))
        self.assertEqual(self.info(1, path)["sphere"]["centre_mm"], [0, 0, 0])
        self.assertEqual(self.outline(1, path), [("wrong", "sphere")])
        self.assertEqual(self.info(0, "--repair", "sphere", path)["sphere"]["centre_mm"], [0, 50, 0])

    def test_utf8_and_a_byte_order_mark(self):
        path = self.write("a.dip", dipoles(["1: 1 5 6 0 0 1 20 mü"]).encode("utf-8"))
        self.assertEqual(self.listed(0, path)[0]["label"], "mÃ¼")
        self.assertEqual(self.outline(0, path), [("note", "encoding")])
        self.assertEqual(self.listed(0, "--repair", "encoding", path)[0]["label"], "mü")
        marked = self.write("b.dip", b"\xef\xbb\xbf" + dipoles([self.ROW], head="").encode())
        self.assertEqual(self.listed(1, marked), [])
        self.assertEqual(self.outline(1, marked), [("wrong", "encoding")])
        self.assertEqual(self.places(0, "--repair", "all", marked), [[50.0, 60.0, 10.0]])

    def test_dipoles_outside_of_the_sphere(self):
        path = self.write("a.dip", dipoles([self.ROW, "2: 1 12 6 0 0 1 20 b"]))
        finding = self.only(0, path)
        self.assertEqual((finding["severity"], finding["code"], finding["dipoles"]), ("doubtful", "outside-head", [2]))
        self.assertIsNone(finding["remedy"])
        for repair in ([], ["--repair", "all"]):
            self.assertEqual(self.places(0, *repair, path), [[50.0, 60.0, 10.0], [120.0, 60.0, 10.0]])
            self.assertEqual(self.outline(0, *repair, path), [("doubtful", "outside-head")])

    def test_several_patients(self):
        paths = [self.write(name + ".dip", dipoles([self.ROW], head="File_Info\n{\nPATIENT: %s\n}\n" % name + SPHERE))
                 for name in ("Anna", "Berta")]
        finding = self.only(0, *paths)
        self.assertEqual((finding["severity"], finding["code"], finding["file"]),
                         ("doubtful", "several-patients", None))
        self.assertIn("Anna (%s), Berta (%s)" % tuple(paths), finding["sentence"])
        self.assertIsNone(finding["remedy"])
        for repair in ([], ["--repair", "all"]):
            self.succeed("convert", "--force", *repair, *paths, "-o", self.path("o.dipset"))
            self.assertEqual(self.info(0, self.path("o.dipset"))["patient"], "Anna")  # one name stays
            self.assertEqual(self.outline(0, *repair, *paths), [("doubtful", "several-patients")])

    def head_of(self, name, ears):
        points = section("Fid_Points", "", [(FIDUCIALS % "128\t26\t156").rstrip("\n").replace("\t28", "\t%d" % (128 - ears))
                                            .replace("\t228", "\t%d" % (128 + ears))])
        return self.write(name, dipoles([self.ROW], head=SPHERE + points))

    def test_fiducial_points_of_another_head(self):
        wide, narrow, same = self.head_of("a.dip", 100), self.head_of("b.dip", 80), self.head_of("c.dip", 103)
        self.assertEqual(self.outline(0, wide, same), [])
        finding = self.only(1, wide, narrow)
        self.assertEqual((finding["severity"], finding["code"], finding["file"]), ("wrong", "other-head", narrow))
        self.assertIsNone(finding["remedy"])
        self.assertEqual(self.outline(1, "--repair", "all", wide, narrow), [("wrong", "other-head")])
        self.assertEqual(self.outline(0, "--accept", "other-head", wide, narrow), [("wrong", "other-head")])
        self.assertIn("other-head", self.end_with(1, "list", wide, narrow).err)
        mri = head_volume(self.path("h.nii.gz"))
        self.assertIn("other-head", self.end_with(1, "register", wide, "-o", self.path("o.json"), "--mri", mri,
                                                  "--fiducials", "0,100,0 -60,0,0 60,0,0").err)
        self.assertFalse(os.path.exists(self.path("o.json")))


class Pictures(CheckTest):
    """What is wrong stands in a red band above the picture, also when it was accepted."""

    BAND = (168, 24, 32)

    def band(self, code, *arguments):
        """How many rows of the picture begin and end in the colour of the band; those are the first ones."""
        self.end_with(code, "draw", *arguments, "--force", "-o", self.path("o.png"))
        with open(self.path("o.png"), "rb") as file:
            rows = Png(file.read()).rows
        marked = [y for y, row in enumerate(rows) if tuple(row[:3]) == tuple(row[-3:]) == self.BAND]
        self.assertEqual(marked, list(range(len(marked))))
        return len(marked)

    def test_a_wrong_finding_is_written_into_slices_and_3d(self):
        wrong = self.write("w.dip", dipoles([EAR], Units.NO_UNIT))
        sound = self.write("s.dip", dipoles([EAR]))
        mri = head_volume(self.path("h.nii.gz"))
        for view in (["--3d"], ["--mri", mri, "--fiducials", "0,100,0 -80,0,0 80,0,0", "--mm-per-pixel", "2"]):
            band = self.band(1, wrong, *view)
            self.assertGreater(band, 20)
            self.assertEqual(self.band(0, wrong, *view, "--accept", "unit"), band)
            self.assertEqual(self.band(0, wrong, *view, "--unit", "cm"), 0)
            self.assertEqual(self.band(0, sound, *view), 0)

    def test_of_several_files_the_picture_names_those_that_were_repaired(self):
        def picture(*names):
            self.end_with(0, "draw", "--3d", "--unit", "cm", *map(self.path, names), "--force", "-o", self.path("o.png"))
            with open(self.path("o.png"), "rb") as file:
                return Png(file.read()).rows

        wrong, sound = dipoles([EAR], Units.NO_UNIT), dipoles([EAR])
        # The title names the first file and counts the others; which of them was repaired stands below it.
        texts = {}
        for repaired in ("b.dip", "c.dip"):
            for name in ("a.dip", "b.dip", "c.dip"):
                self.write(name, wrong if name == repaired else sound)
            texts[repaired] = picture("a.dip", "b.dip", "c.dip")
        self.assertNotEqual(texts["b.dip"], texts["c.dip"])
        # Of one file the title says it: two of the same length differ there alone.
        self.write("x.dip", wrong)
        self.write("y.dip", wrong)
        differing = [y for y, (one, other) in enumerate(zip(picture("x.dip"), picture("y.dip"))) if one != other]
        self.assertLess(max(differing) - min(differing), 24)  # one line of text

    def test_what_the_head_says_is_told_and_written(self):
        far = self.write("far.dip", dipoles(["1: 1 14 6 0 0 1 20 a"]))
        mri = head_volume(self.path("h.nii.gz"))
        result = self.succeed("draw", far, "--mri", mri, "--fiducials", "0,100,0 -80,0,0 80,0,0", "--force",
                              "-o", self.path("o.png"))
        self.assertIn("%s: doubtful (outside-head): 1 dipole lies more than 20 mm outside of the head sphere" % far,
                      result.err)
        self.assertIn("%s: doubtful (outside-head): 1 dipole lies outside of the MRI" % far, result.err)
        other = ["--mri", mri, "--fiducials", "0,100,0 -60,0,0 60,0,0", "--mm-per-pixel", "2"]
        self.assertGreater(self.band(1, example("auditory.dip"), *other), 20)
        self.assertGreater(self.band(0, example("auditory.dip"), *other, "--accept", "other-head"), 20)

    def test_unknown_latencies_have_no_value_among_the_colours(self):
        path = self.write("n.dip", dipoles([EAR, "2: 1 -5 6 0 0 1 20 b", "3: 1 -3 6 0 0 1 20 c"],
                                           fits=[fit_row(1, "0.1", 5), fit_row(2, "0.2", 6)]))
        self.succeed("draw", path, "--3d", "--color-by", "latency", "--view", "top", "--force", "-o", self.path("o.png"))
        with open(self.path("o.png"), "rb") as file:
            with_unknown = Png(file.read())
        whole = self.write("w.dip", dipoles([EAR, "2: 1 -5 6 0 0 1 20 b", "3: 1 -3 6 0 0 1 20 c"],
                                            fits=[fit_row(1, "0.1", 5), fit_row(2, "0.2", 6), fit_row(3, "0", 6)]))
        self.succeed("draw", whole, "--3d", "--color-by", "latency", "--view", "top", "--force", "-o", self.path("o.png"))
        with open(self.path("o.png"), "rb") as file:
            without = Png(file.read())

        def is_turquoise(r, g, b):  # of "no value", lit or not
            return g > 1.3 * r and b > 1.3 * r and g > 60
        self.assertGreater(len(with_unknown.pixels(is_turquoise)), 60 + len(without.pixels(is_turquoise)))


class Answers(CheckTest):
    """Exit codes, accepting, and what is written."""

    def setUp(self):
        super().setUp()
        self.wrong = self.write("w.dip", dipoles([EAR], Units.NO_UNIT))
        self.sound = self.write("s.dip", dipoles([EAR]))

    def test_the_text_has_everything_and_a_sound_file_says_nothing(self):
        self.assertEqual(self.succeed("check", self.sound).out, "")
        result = self.end_with(1, "check", self.sound, self.wrong)
        self.assertEqual(result.err, "dipole: %s: Can't find dipole location unit is cm or mm!\n" % self.wrong)
        lines = result.out.splitlines()
        self.assertEqual(lines[0], self.wrong + ":11: wrong, unit")
        self.assertEqual(lines[1], "  section Dipoles, dipole 1")
        self.assertTrue(lines[2].startswith("  The file does not say whether its positions are cm or mm"))
        self.assertEqual(lines[3], "  Remedy (--unit cm or --unit mm): The positions are taken in the unit that you "
                                   "say, cm or mm.")
        self.assertEqual(len(lines), 4)

    def test_json_has_one_schema(self):
        found = self.check(1, self.sound, self.wrong)
        self.assertEqual(list(found), ["files", "findings", "repaired", "failed", "wrong_left"])
        self.assertEqual((found["files"], found["repaired"], found["failed"], found["wrong_left"]),
                         ([self.sound, self.wrong], [], [], 1))
        self.assertEqual(list(found["findings"][0]), ["severity", "code", "file", "line", "section", "dipoles",
                                                      "sentence", "remedy", "accepted"])
        gone = self.check(1, self.path("gone.dip"), self.sound)
        self.assertEqual(gone["failed"], [{"file": self.path("gone.dip"), "reason": "No such file or directory"}])
        self.assertEqual(gone["wrong_left"], 0)

    def test_repairs_are_told(self):
        result = self.succeed("check", "--unit", "cm", "--json", self.wrong)
        text = "1 dipole: the position was taken as cm."
        self.assertEqual(json.loads(result.out)["repaired"], [{"file": self.wrong, "text": text}])
        self.assertEqual(result.err.splitlines()[-1], "dipole: %s: repaired: %s" % (self.wrong, text))
        self.assertIn("%s: repaired: %s\n" % (self.wrong, text), self.succeed("list", "--unit", "cm", self.wrong).err)

    def test_every_command_that_imports_ends_with_1_unless_repaired_or_accepted(self):
        mri, picture = head_volume(self.path("h.nii.gz")), self.path("o.png")
        commands = (["info"], ["list"], ["check"], ["convert", "--force", "-o", self.path("o.csv")],
                    ["sort", "--by", "x", "--force", "-o", self.path("o.csv")],
                    ["register", "--by-sphere", "--mri", mri, "--force", "-o", self.path("o.json")],
                    ["draw", "--3d", "--force", "-o", picture],
                    ["draw", "--mri", mri, "--fiducials", "0,100,0 -80,0,0 80,0,0", "--force", "-o", picture])
        for command in commands:
            told = self.end_with(1, *command, self.wrong)
            self.assertIn("unit", told.err + told.out, command)
            for choice in (["--unit", "cm"], ["--accept", "unit,labels"]):
                self.succeed(*command, *choice, self.wrong)
            self.end_with(1, *command, "--accept", "labels", self.wrong)

    def test_nothing_is_written_while_something_wrong_stands(self):
        mri = head_volume(self.path("h.nii.gz"))
        for command, name in ((["convert"], "o.csv"), (["sort", "--by", "x"], "o.csv"),
                              (["register", "--by-sphere", "--mri", mri], "o.json")):
            target = self.path(name)
            result = self.end_with(1, *command, self.sound, self.wrong, "-o", target)
            self.assertIn("%s was not written: wrong, and neither repaired nor accepted: unit in %s" %
                          (target, self.wrong), result.err)
            self.assertFalse(os.path.exists(target))
        kept = self.write("kept.csv", "before")
        self.end_with(1, "convert", "--force", self.wrong, "-o", kept)
        with open(kept, encoding="ascii") as file:
            self.assertEqual(file.read(), "before")

    def test_repaired_values_are_written(self):
        self.succeed("convert", "--unit", "cm", self.wrong, "-o", self.path("o.dipset"))
        self.assertEqual(self.places(0, self.path("o.dipset")), [IN_CM])

    def test_doubtful_and_note_change_no_exit_code(self):
        doubtful = self.write("d.dip", dipoles(["1: 10 52 58 0 0 1 20 a"], Units.NO_UNIT, fits=[]))
        for command in (["info"], ["list"], ["check"], ["convert", "-o", self.path("o.csv")]):
            self.succeed(*command, doubtful)

    def test_unknown_codes_are_wrong_usage_and_the_known_ones_are_listed(self):
        for option in ("--repair", "--accept"):
            for value in ("nonsense", "unit,nonsense", "unit,", "Unit"):
                result = self.end_with(2, "check", option, value, self.sound)
                for code in CODES:
                    self.assertIn(code, result.err)
        self.assertIn("all", self.end_with(2, "check", "--accept", "all", self.sound).err)
        self.end_with(2, "list", "--unit", "inch", self.sound)
        self.assertIn("--unit cm or --unit mm", self.end_with(1, "list", "--repair", "unit", self.wrong).err)

    def test_help_explains_every_code(self):
        text = self.succeed("check", "--help").out
        for code in CODES:
            self.assertIn("\n  %s " % code, text)

    def test_messages_have_their_files_name(self):
        for path in (self.sound, self.wrong):
            lines = run("list", path).stderr.decode().splitlines()
            self.assertGreater(len(lines), 0)
            for line in lines:
                self.assertTrue(line.startswith(("dipole: " + path, "dipole: warning: " + path)), line)
        asked = self.succeed("list", "--no", self.write("f.dip", dipoles([EAR, "2: 250 2 3 0 0 1 20 far"]))).err
        self.assertIn(self.path("f.dip") + ": It seems the dipole location is wrong", asked)

    def test_moving_dipoles_are_looked_at_without_an_answer(self):
        asked = self.check(1, example("moving.dip"))
        self.assertEqual(asked, self.check(1, "--yes", example("moving.dip")))
        self.assertNotEqual(asked["findings"], [])
        refused = self.end_with(1, "check", "--no", example("moving.dip"))
        self.assertIn("it brought no dipole", refused.err)

    def test_the_examples_are_sound_but_for_the_columns_of_the_moving_ones(self):
        for name in ("auditory.dip", "spikes.dip", "median.txt"):
            self.assertEqual(self.check(0, example(name))["findings"], [], name)
        found = {(finding["code"], finding["accepted"]) for finding in
                 self.check(1, "--yes", example("moving.dip"))["findings"]}
        self.assertEqual(found, {("moving-columns", False), ("sections", True)})
        self.assertEqual(self.outline(0, "--yes", "--repair", "all", example("moving.dip")), [("wrong", "sections")])


if __name__ == "__main__":
    unittest.main()
