#!/usr/bin/env python3
"""The head of a page against nibabel, voxel by voxel in the millimetres of the world, and dipoles against the same:
heads that are mirrored, oblique, of CTF and of FreeSurfer. Runs under Debian's Python."""

import base64
import gzip
import json
import os
import re
import sys
import unittest

import nibabel
import numpy
from nibabel.affines import apply_affine

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "support"))
import ctf_mri  # noqa: E402
from bright_heads import BRIGHT, CTF_MM, POINTS, centred, ctf_head, grey_head, rotation  # noqa: E402
from support import ToolTest, dipole_file, example, program_with_page  # noqa: E402

CH2 = "/usr/share/mricron/templates/ch2.nii.gz"


class HeadTest(ToolTest):
    def setUp(self):
        super().setUp()
        self.program = program_with_page(self.path("installed"))
        self.dipole = self.write("d.dip", dipole_file([(6, 4, 2, 7, "a")]))

    def page(self, *arguments, dipoles=None):
        out = self.path("out.html")
        self.end_with(0, "page", dipoles or self.dipole, *arguments, "--force", "-o", out, program=self.program)
        with open(out, encoding="ascii") as file:
            text = file.read()
        element = {name: re.search('id="page-%s">([^<]*)</script>' % name, text).group(1)
                   for name in ("data", "head", "atlas")}
        self.size = len(text)
        self.json = json.loads(element["data"])
        image = nibabel.Nifti1Image.from_bytes(gzip.decompress(base64.b64decode(element["head"])))
        return image

    def assert_same_head(self, shown, original, step=0.0):
        """Every voxel of the original is in the page where it was, or was background; `step` of grey."""
        values = numpy.asanyarray(shown.dataobj, dtype=float)
        index = numpy.stack(numpy.meshgrid(*map(numpy.arange, values.shape), indexing="ij"), -1).reshape(-1, 3)
        back = apply_affine(numpy.linalg.inv(original.affine) @ shown.affine, index)
        where = numpy.rint(back).astype(int)
        self.assertLess(abs(back - where).max(), 1e-3)
        whole = numpy.asanyarray(original.dataobj, dtype=float)
        low, high = self.json["head"]["range"]
        expected = numpy.clip(whole[tuple(where.T)], low, high)
        self.assertLess(abs(expected - values.reshape(-1)).max(), step / 2 + 1e-3 * max(1, abs(high)))
        left = numpy.ones(whole.shape, bool)
        left[tuple(where.T)] = False
        return whole[left]

    def assert_right_side(self, shown):
        """The bright spot is where the dipole is, and nowhere else."""
        place = numpy.array(self.json["dipoles"]["places"][0])
        self.assertLess(abs(place - BRIGHT).max(), 1e-3)
        values = numpy.asanyarray(shown.dataobj, dtype=float)
        spot = apply_affine(shown.affine, numpy.argwhere(values >= values.max() - 1e-6))
        self.assertLess(abs(spot.mean(0) - BRIGHT).max(), 2.5)
        self.assertLess(abs(spot - BRIGHT).max(), 9)


class Heads(HeadTest):
    def check(self, matrix, kind, scale=1.0, shape=(100, 90, 80)):
        affine = centred(matrix, shape)
        image = nibabel.Nifti1Image(grey_head(affine, shape, kind, scale), affine)
        image.set_sform(affine, 1)
        image.set_qform(affine, 1)
        path = self.path("head.nii.gz")
        nibabel.save(image, path)
        original = nibabel.load(path)
        shown = self.page("--mri", path, "--fiducials", POINTS)
        step = float(shown.dataobj.slope)
        cropped = self.assert_same_head(shown, original, step)
        self.assertGreater(len(cropped), 0)
        self.assertTrue((cropped < 0.1 * 300 * scale).all())
        self.assertEqual(shown.get_data_dtype(), numpy.uint8)
        self.assert_right_side(shown)
        whole = self.page("--mri", path, "--fiducials", POINTS, "--full")
        self.assertEqual(whole.shape, original.shape)
        self.assertEqual(len(self.assert_same_head(whole, original)), 0)
        self.assertTrue(self.json["head"]["isFull"])
        self.assert_right_side(whole)
        return shown, step

    def test_first_axis_to_the_right(self):
        self.check(numpy.diag([3.0, 3.0, 3.0]), numpy.int16)

    def test_mirrored_first_axis_to_the_left(self):
        shown, _ = self.check(numpy.diag([-3.0, 3.0, 3.0]), numpy.int16)
        self.assertLess(shown.affine[0, 0], 0)

    def test_axes_in_another_order(self):
        self.check(numpy.array([[0, 0, 3.0], [-3.0, 0, 0], [0, -3.0, 0]]), numpy.uint16, shape=(90, 100, 80))

    def test_oblique(self):
        self.check(rotation((0.3, -0.2, 0.4)) * 3.0, numpy.int16, shape=(120, 110, 115))

    def test_whole_numbers_that_fit_keep_their_values(self):
        _, step = self.check(numpy.diag([3.0, 3.0, 3.0]), numpy.uint8, scale=0.3)
        self.assertEqual(step, 1.0)

    def test_small_and_large_numbers_of_floats(self):
        for scale in (1e-4, 1e4):
            _, step = self.check(numpy.diag([3.0, 3.0, 3.0]), numpy.float32, scale=scale)
            self.assertLess(step, 2 * 700 * scale / 255)

    def test_mgz(self):
        shape = (96, 96, 96)
        affine = centred(numpy.array([[-2.5, 0, 0], [0, 0, 2.5], [0, -2.5, 0]]), shape)
        path = self.path("head.mgz")
        nibabel.save(nibabel.MGHImage(grey_head(affine, shape, numpy.int16), affine), path)
        shown = self.page("--mri", path, "--fiducials", POINTS)
        self.assert_same_head(shown, nibabel.load(path), float(shown.dataobj.slope))
        self.assert_right_side(shown)
        self.assertEqual(self.json["world"]["kind"], "scanner")
        self.assertEqual(self.json["head"]["format"], "MGZ")

    def test_sides_that_are_not_stated_are_told(self):
        shape = (80, 90, 70)
        affine = centred(numpy.diag([3.0, 3.0, 3.0]), shape)
        image = nibabel.Nifti1Image(grey_head(affine, shape, numpy.int16), affine)
        image.set_sform(None, 0)
        image.set_qform(None, 0)
        path = self.path("head.nii")
        nibabel.save(image, path)
        # Such a file's first voxel is at 0, 0, 0.
        shown = self.page("--mri", path, "--fiducials", "120,235,105 40,135,105 200,135,105")
        self.assertFalse(self.json["head"]["areSidesStated"])
        self.assertIn("The MRI file does not say which side is left", self.json["warnings"])
        self.assertGreater(int(shown.header["sform_code"]), 0)  # or the page could show nothing


class CtfHead(HeadTest):
    def test_the_white_left_front_of_both_ways_to_store_it_is_left_in_front(self):
        pages = []
        for is_left_on_right in (False, True):
            self.write("patient.mri", ctf_mri.version2(ctf_head(is_left_on_right)))
            shown = self.page("--mri", self.path("patient.mri"))
            values = numpy.asanyarray(shown.dataobj, dtype=float)
            white = apply_affine(shown.affine, numpy.argwhere(values == 250))
            # by the fiducial points of the page itself: left ear, right ear, nasion
            place = {(point["of"], point["letter"]): numpy.array(point["place"]) for point in self.json["points"]}
            to_left = place["head", "L"] - place["head", "R"]
            to_front = place["head", "N"] - (place["head", "L"] + place["head", "R"]) / 2
            self.assertLess(to_left[0], -100)
            self.assertGreater(to_front[1], 50)
            middle = (place["head", "L"] + place["head", "R"]) / 2
            self.assertGreater(((white - middle) @ to_left > 0).mean(), 0.999)
            # The dipole: left and in front, in the white.
            dipole = numpy.array(self.json["dipoles"]["places"][0])
            self.assertGreater((dipole - middle) @ to_left, 0)
            self.assertGreater((dipole - middle) @ to_front, 0)
            self.assertLess(numpy.sqrt(((white - dipole) ** 2).sum(1)).min(), CTF_MM)
            self.assertEqual(self.json["world"]["kind"], "mri")
            self.assertEqual([frame["name"] for frame in self.json["frames"]], ["host", "ctf", "neuromag", "mri"])
            pages.append(dipole)
        self.assertLess(abs(pages[0] - pages[1]).max(), 1e-3)


class Example(HeadTest):
    def test_the_example_has_every_voxel_and_stays_small(self):
        original = nibabel.load(CH2)
        shown = self.page("--mri", CH2, "--fiducials", example("ch2.fiducials"), "--atlas", "aal", "--mni",
                          "identity", "--mni-space", "colin27", dipoles=example("spikes.dip"))
        cropped = self.assert_same_head(shown, original)
        self.assertEqual(float(shown.dataobj.slope), 1.0)
        self.assertTrue((cropped == 0).all())
        self.assertLess(self.size, 5.2e6)  # beside a template of less than 2.3 MB


if __name__ == "__main__":
    unittest.main()
