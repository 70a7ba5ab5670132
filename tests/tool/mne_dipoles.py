#!/usr/bin/env python3
"""Files of dipoles that MNE-Python writes, as the program reads them, and the other way: to the last digit that the
format prints. Runs under the Python that Debian's python3-mne is for."""

import json
import os
import re
import sys
import unittest
import warnings

import numpy
import mne

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
from support import ToolTest, example  # noqa: E402

mne.set_log_level("ERROR")
warnings.simplefilter("ignore")

MM, NAM, MS = 1e-3, 1e-9, 1e-3
# Nasion, left and right ear, mm to the right, in front and above of some place.
CROOKED = (numpy.array([5.0, 100.0, -3.0]), numpy.array([-75.0, -6.0, 2.0]), numpy.array([78.0, 7.0, -4.0]))


def points_text(points):
    return " ".join(",".join("%.17g" % value for value in point) for point in points)


def unit(vector):
    return vector / numpy.linalg.norm(vector)


def head_frame(points):
    """Rows x left, y up, z front and the origin, from the definition alone."""
    nasion, left, right = points
    origin = (left + right) / 2
    front = unit(nasion - origin)
    up = unit(numpy.cross(front, left - right))
    return numpy.array([numpy.cross(up, front), up, front]), origin


def random_dipoles(count, seed, name=None):
    random = numpy.random.RandomState(seed)
    ori = random.randn(count, 3)
    ori /= numpy.linalg.norm(ori, axis=1, keepdims=True)
    return mne.Dipole(random.uniform(-0.2, 1.5, count), random.uniform(-0.09, 0.09, (count, 3)),
                      random.uniform(1e-9, 400e-9, count), ori, random.uniform(0, 100, count), name)


class MneTest(ToolTest):
    def listed(self, path, *options):
        return json.loads(self.succeed("list", "--json", "--quiet", *options, path).out)["dipoles"]

    def expect_listed(self, dipoles, path, points, tolerances):
        """MNE's own reading of a file, carried to the scanner by MNE and to the head frame by the definition."""
        trans = mne.transforms.get_ras_to_neuromag_trans(*[point * MM for point in points])
        to_scanner = numpy.linalg.inv(trans)
        rows, origin = head_frame(points)
        listed = self.listed(path, "--fiducials", points_text(points))
        self.assertEqual(len(listed), len(dipoles.times))
        place, direction, value = tolerances
        for i, one in enumerate(listed):
            scanner = (to_scanner @ [*dipoles.pos[i], 1])[:3] / MM
            expected = rows @ (scanner - origin)
            found = [one["x_left_mm"], one["y_up_mm"], one["z_front_mm"]]
            numpy.testing.assert_allclose(found, expected, rtol=0, atol=place)
            expected = rows @ (to_scanner[:3, :3] @ dipoles.ori[i])
            found = [one["orientation_" + axis] for axis in ("x_left", "y_up", "z_front")]
            numpy.testing.assert_allclose(found, expected, rtol=0, atol=direction)
            self.assertAlmostEqual(one["moment_nAm"], dipoles.amplitude[i] / NAM, delta=value * 100)
            self.assertAlmostEqual(one["latency_ms"], dipoles.times[i] / MS, delta=value * 100)
            self.assertAlmostEqual(one["fit_error_percent"], 100 - dipoles.gof[i], delta=value)
        return listed

    def test_text_of_mne_is_read_as_mne_reads_it(self):
        path = self.path("a.dip")
        for seed, name in ((1, None), (2, "spike A")):
            random_dipoles(200, seed, name).save(path, overwrite=True)
            listed = self.expect_listed(mne.read_dipole(path), path, CROOKED, (1e-4, 1e-5, 1e-6))
            self.assertEqual({one["label"] for one in listed}, {name})

    def test_optional_columns_are_told_by_name_and_count(self):
        dipoles = random_dipoles(3, 4)
        dipoles.khi2 = numpy.array([1.0, 2.0, 3.0])
        dipoles.nfree = numpy.array([61, 61, 61])
        path = self.path("a.dip")
        dipoles.save(path)
        told = self.succeed("list", path, "--fiducials", points_text(CROOKED)).err
        self.assertIn("khi^2 of 3 dipoles, free of 3 dipoles", told)

    def test_binary_of_mne_is_read_as_mne_reads_it(self):
        dipoles = random_dipoles(200, 3)
        zeros = numpy.zeros(200)
        dipoles.conf = {key: zeros for key in ("depth", "long", "trans", "qlong", "qtrans", "vol")}
        path = self.path("a.bdip")
        dipoles.save(path)
        self.expect_listed(mne.read_dipole(path), path, CROOKED, (1e-4, 1e-6, 1e-5))

    def test_without_points_the_ears_are_symmetric_and_that_is_told(self):
        path = self.path("a.dip")
        random_dipoles(1, 5).save(path)
        result = self.succeed("list", "--json", path)
        one = json.loads(result.out)["dipoles"][0]
        place = mne.read_dipole(path).pos[0] / MM
        numpy.testing.assert_allclose([-one["x_left_mm"], one["z_front_mm"], one["y_up_mm"]], place, atol=1e-4)
        self.assertRegex(re.sub(r"\s+", " ", result.err), r"doubtful \(symmetric-ears\): .*some mm.*some degrees")

    def test_text_of_mne_comes_back_byte_for_byte_and_mne_reads_it_so(self):
        for seed, name, points in ((6, None, True), (7, "spike B", True), (8, "one", False)):
            path, back = self.path("a.dip"), self.path("b.dip")
            random_dipoles(300, seed, name).save(path, overwrite=True)
            options = ["--fiducials", points_text(CROOKED)] if points else []
            told = self.succeed("convert", path, "--to", "neuromag", "-o", back, "--force", *options).err
            with open(path, "rb") as first, open(back, "rb") as second:
                expected = re.sub(rb"-(0\.0+)(?![0-9])", rb" \1", first.read())  # the program writes no minus zero
                self.assertEqual(second.read(), expected)
            one, other = mne.read_dipole(path), mne.read_dipole(back)
            for member in ("times", "pos", "amplitude", "ori", "gof"):
                numpy.testing.assert_array_equal(getattr(one, member), getattr(other, member))
            self.assertEqual(one.name, other.name)
            self.assertNotIn("cannot hold", told)

    def test_binary_of_mne_comes_back_and_mne_reads_it_so(self):
        dipoles = random_dipoles(300, 9)
        dipoles.conf = {key: numpy.zeros(300) for key in ("depth", "long", "trans", "qlong", "qtrans", "vol")}
        path, back = self.path("a.bdip"), self.path("b.bdip")
        dipoles.save(path)
        self.succeed("convert", path, "-o", back, "--fiducials", points_text(CROOKED))
        one, other = mne.read_dipole(path), mne.read_dipole(back)
        for member in ("times", "pos", "amplitude", "ori", "gof"):
            numpy.testing.assert_array_equal(getattr(one, member), getattr(other, member))

    def test_a_set_of_ctf_is_what_mne_reads_in_its_own_frame(self):
        for ending in ("dip", "bdip"):
            path = self.path("a." + ending)
            self.succeed("convert", example("spikes.dip"), "--to", "bdip" if ending == "bdip" else "neuromag",
                         "-o", path, "--fiducials", points_text(CROOKED))
            dipoles = mne.read_dipole(path)
            listed = self.listed(example("spikes.dip"))
            self.assertEqual(len(listed), len(dipoles.times))
            rows, origin = head_frame(CROOKED)
            trans = mne.transforms.get_ras_to_neuromag_trans(*[point * MM for point in CROOKED])
            for i, one in enumerate(listed):
                place = numpy.array([one["x_left_mm"], one["y_up_mm"], one["z_front_mm"]])
                scanner = rows.T @ place + origin
                numpy.testing.assert_allclose(dipoles.pos[i] / MM, (trans @ [*scanner * MM, 1])[:3] / MM, atol=0.00501)
                direction = numpy.array([one["orientation_" + axis] for axis in ("x_left", "y_up", "z_front")])
                expected = trans[:3, :3] @ (rows.T @ unit(direction))
                numpy.testing.assert_allclose(dipoles.ori[i], expected, atol=1e-3)
                self.assertAlmostEqual(dipoles.amplitude[i] / NAM, one["moment_nAm"], delta=0.000501)
                self.assertAlmostEqual(dipoles.times[i] / MS, one["latency_ms"], delta=0.0501)
                self.assertAlmostEqual(dipoles.gof[i], 100 - one["fit_error_percent"], delta=0.00501)


if __name__ == "__main__":
    unittest.main()
