"""`dipole register` against the arithmetic of docs/registration.md, done here anew."""

import json
import math
import os
import unittest

import dipset
from support import ToolTest, dipole_file, empty_head, example, single, with_output

DIMENSION, VOXEL = [200, 256, 220], [1.0, 0.9, 1.1]  # left, up, front
FIRST = [-98.5, -112.0, -101.0]  # scanner mm of the first voxel: right, front, up

# Scanner mm: right, front, up.
POINTS = {"nasion": [-3.3, 110.7, -4.1], "left": [-87.2, 3.4, -7.6], "right": [84.9, 5.8, -6.2]}
GIVEN = " ".join(",".join(str(value) for value in POINTS[name]) for name in ("nasion", "left", "right"))


def in_volume(points, dimension=None, voxel=None, first=None):
    """mm from the corner: to the left, up, to the front."""
    n, (left, up, front), first = dimension or DIMENSION, map(single, voxel or VOXEL), first or FIRST
    return {name: [((n[0] - 1) - (at[0] - first[0]) / left) * left, at[2] - first[2], at[1] - first[1]]
            for name, at in points.items()}


def registration(points, dimension, voxel):
    half = [single(single(n) * single(size) * 0.5) for n, size in zip(dimension, map(single, voxel))]
    origin = [math.trunc(((left + right) - (h + h)) * 0.5)
              for left, right, h in zip(points["left"], points["right"], half)]

    def relative(name):
        return [p - h - o for p, h, o in zip(points[name], half, origin)]

    def angle(numerator, denominator):
        return single(single(math.tan(numerator / denominator)) * 180 / 3.14159265358979)

    nasion, left, right = relative("nasion"), relative("left"), relative("right")
    angles = [angle(nasion[1], nasion[2]), angle(right[2], right[0]), angle(left[1], left[0])]
    return {"nasion": nasion, "left": left, "right": right, "angles": angles}


class Register(ToolTest):
    def mri(self, dimension=None, voxel=None, first=None, name="head.nii.gz"):
        left, up, front = dimension or DIMENSION
        sizes = voxel or VOXEL
        return empty_head(self.path(name), [left, front, up], [sizes[0], sizes[2], sizes[1]], first or FIRST)

    def register(self, *arguments, code=0):
        return self.end_with(code, "register", *with_output(arguments))

    def document(self, *arguments):
        self.register(*arguments, self.path("o.json"))
        with open(self.path("o.json"), encoding="utf-8") as file:
            return json.load(file)

    def old_set(self, *arguments):
        self.register(*arguments, self.path("o.dipset"))
        with open(self.path("o.dipset"), "rb") as file:
            return dipset.unpack_old_set(file.read())

    def assert_points(self, found, wanted, delta=1e-4):
        for have, want in zip(found, wanted, strict=True):
            for one, other in zip(have, want, strict=True):
                self.assertAlmostEqual(one, other, delta=delta)

    def test_points_angles_and_sphere(self):
        wanted = registration(in_volume(POINTS), DIMENSION, VOXEL)
        for rotate in ([], ["--rotate"]):
            found = self.document(example("auditory.dip"), "--mri", self.mri(), "--fiducials", GIVEN,
                                  *rotate)["registration"]
            self.assert_points([found["nasion_mm"], found["left_ear_mm"], found["right_ear_mm"]],
                               [wanted["nasion"], wanted["left"], wanted["right"]])
            self.assertEqual(found["translation_mm"], [0.0] * 3)
            self.assertEqual(found["rotation_degrees"], [0.0] * 3)
            self.assertEqual(found["sphere_radius_mm"], 86.0)
            for have, want in zip(found["angles_degrees"], wanted["angles"] if rotate else [0.0] * 3):
                self.assertAlmostEqual(have, want, delta=1e-3)

    def test_points_mean_the_same_as_for_draw(self):
        # One file beside the MRI, one that is named, and triples: for both commands scanner mm.
        lines = "".join("%s %s %s %s\n" % (name, *POINTS[name]) for name in POINTS)
        path = self.write("p.fiducials", lines)
        mri = self.mri()
        given = self.document(example("auditory.dip"), "--mri", mri, "--fiducials", GIVEN)
        self.assertEqual(self.document(example("auditory.dip"), "--mri", mri, "--fiducials", path), given)
        self.write("head.fiducials", lines)
        self.assertEqual(self.document(example("auditory.dip"), "--mri", mri), given)
        for points in (["--fiducials", GIVEN], ["--fiducials", path], []):
            self.succeed("draw", example("auditory.dip"), "--mri", mri, *points, "--force",
                         "-o", self.path("o.png"))

    def test_without_points_those_of_the_dipole_file_are_taken(self):
        # The MRI of the file: nasion, left and right ear on these slices from the left, from above, from the front.
        size, first = [256, 256, 256], [-128 * 0.859375] * 3
        mri = self.mri(size, [0.859375] * 3, first, "own.nii.gz")
        found = self.document(example("auditory.dip"), "--mri", mri)["registration"]
        info = json.loads(self.succeed("info", "--json", example("auditory.dip")).out)[0]
        stored = info["fiducials_mri_voxels"]
        self.assertIsNotNone(stored)
        # Their distances are those in the file.
        own = info["fiducials_head_mm"]
        for one, other in (("nasion", "left_ear"), ("left_ear", "right_ear")):
            self.assertAlmostEqual(math.dist(found[one + "_mm"], found[other + "_mm"]),
                                   math.dist(own[one], own[other]), delta=0.01)
        self.assertGreater(found["left_ear_mm"][0], 50)

    def test_dipoles_stay_where_they_are(self):
        self.succeed("convert", example("spikes.dip"), "-o", self.path("plain.json"))
        with open(self.path("plain.json"), encoding="utf-8") as file:
            plain = json.load(file)
        for rotate in ([], ["--rotate"]):
            found = self.document(example("spikes.dip"), "--mri", self.mri(), "--fiducials", GIVEN, *rotate)
            self.assertEqual(found["dipoles"], plain["dipoles"])

    def test_a_set_file_holds_the_registration(self):
        wanted = registration(in_volume(POINTS), DIMENSION, VOXEL)
        found = self.old_set(example("auditory.dip"), "--mri", self.mri(), "--fiducials", GIVEN)
        points = found["head_points"]
        self.assert_points([point["at"] for point in points[:3]],
                           [wanted["nasion"], wanted["left"], wanted["right"]])
        self.assertEqual({(point["size"], point["shape"]) for point in points[:3]}, {(4.0, 2)})
        self.assertEqual(found["locational"]["radius"], 86.0)
        self.assertEqual(found["ctf_sphere"]["radius"], 86.0)
        self.assertEqual([d["label"] for d in found["dipoles"]], ["N100m_left", "N100m_right"])
        again = self.succeed("info", "--json", self.path("o.dipset"))
        ears = json.loads(again.out)[0]["fiducials_head_mm"]
        self.assert_points([ears["left_ear"]], [wanted["left"]])

    def test_by_sphere_puts_it_into_the_middle(self):
        wanted = [(single(single(n) * single(size)) - 2 * 86.0) * 0.5 for n, size in zip(DIMENSION, VOXEL)]
        found = self.document(example("auditory.dip"), "--by-sphere", "--mri", self.mri())["registration"]
        self.assert_points([found["translation_mm"]], [wanted])
        self.assertEqual(found["sphere_radius_mm"], 86.0)
        in_set = self.old_set(example("auditory.dip"), "--by-sphere", "--mri", self.mri())["locational"]
        self.assert_points([in_set["centre"]], [wanted])
        self.assertEqual(in_set["radius"], 86.0)

    def test_points_that_are_no_head_or_lie_outside_are_refused(self):
        swapped = " ".join(GIVEN.split()[i] for i in (0, 2, 1))
        outside = "0,300,0 -80,200,0 80,200,0"
        for points, cause in ((swapped, "left ear"), ("0,0,0 0,0,0 0,0,0", ""),
                              (outside, "the nasion lies outside of this MRI")):
            result = self.register(example("auditory.dip"), "--mri", self.mri(), "--fiducials", points,
                                   self.path("o.json"), code=1)
            self.assertIn(cause, result.err)
            drawn = self.end_with(1, "draw", example("auditory.dip"), "--mri", self.mri(), "--fiducials", points,
                                  "-o", self.path("o.png"))
            self.assertEqual(drawn.err.splitlines()[-1], result.err.splitlines()[-1])
            self.assertFalse(os.path.exists(self.path("o.json")))

    def test_what_is_missing_is_told_and_nothing_is_written(self):
        bare = self.write("bare.dipset", dipset.pack_set([{}], sphere_set=1))
        no_points = self.write("n.dip", dipole_file([(1, 2, 3, 7, "a")]))
        mri = ["--mri", self.mri()]
        for arguments, cause in (([bare, *mri, "--by-sphere"], "give no head sphere"),
                                 ([bare, *mri], "gave no fiducial points"),
                                 ([no_points, *mri], "gave no fiducial points"),
                                 ([no_points, *mri, "--fiducials", self.path("missing")], "cannot be opened"),
                                 ([no_points, "--mri", self.path("missing.nii")], "No such file")):
            self.assertIn(cause, self.register(*arguments, self.path("o.json"), code=1).err)
            self.assertFalse(os.path.exists(self.path("o.json")))
        result = self.register(no_points, *mri, "--by-sphere", self.path("o.csv"), code=2)
        self.assertIn("a registration is written as .dipset or .json\n", result.err)

    def test_wrong_arguments_end_with_2(self):
        mri = ["--mri", self.mri()]
        for arguments in ([], ["--fiducials", GIVEN], [*mri, "--by-sphere", "--rotate"],
                          [*mri, "--by-sphere", "--fiducials", GIVEN]):
            self.register(example("auditory.dip"), *arguments, self.path("o.json"), code=2)


if __name__ == "__main__":
    unittest.main()
