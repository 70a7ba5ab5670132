"""`dipole register` against the arithmetic of docs/registration.md, done here anew."""

import json
import math
import os
import unittest

import dipset
from support import ToolTest, dipole_file, example, single, with_output

POINTS = {"nasion": [110.5, 120.25, 200.0], "left": [180.0, 110.0, 108.5], "right": [41.0, 112.0, 111.0]}
GIVEN = " ".join(",".join(str(value) for value in POINTS[name]) for name in ("nasion", "left", "right"))
ELSEWHERE = ("--accept", "other-head", "--fiducials", GIVEN)  # no head of the examples
DIMENSION, VOXEL = [200, 256, 220], [1.0, 0.9, 1.1]


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
    def register(self, *arguments, code=0):
        return self.end_with(code, "register", *with_output(arguments))

    def document(self, *arguments):
        self.register(*arguments, self.path("o.json"))
        with open(self.path("o.json"), encoding="utf-8") as file:
            return json.load(file)

    def volume(self, dimension=None, voxel=None):
        return ["--dimension", ",".join(map(str, dimension or DIMENSION)),
                "--voxel", ",".join(map(str, voxel or VOXEL))]

    def old_set(self, *arguments):
        self.register(*arguments, self.path("o.dipset"))
        with open(self.path("o.dipset"), "rb") as file:
            return dipset.unpack_old_set(file.read())

    def test_points_angles_and_sphere(self):
        wanted = registration(POINTS, DIMENSION, VOXEL)
        for rotate in ([], ["--rotate"]):
            found = self.document(example("auditory.dip"), *ELSEWHERE, *self.volume(),
                                  *rotate)["registration"]
            self.assertEqual(found["nasion_mm"], wanted["nasion"])
            self.assertEqual(found["left_ear_mm"], wanted["left"])
            self.assertEqual(found["right_ear_mm"], wanted["right"])
            self.assertEqual(found["translation_mm"], [0.0] * 3)
            self.assertEqual(found["rotation_degrees"], [0.0] * 3)
            self.assertEqual(found["sphere_radius_mm"], 86.0)
            for have, want in zip(found["angles_degrees"], wanted["angles"] if rotate else [0.0] * 3):
                self.assertEqual(single(have), have)
                self.assertAlmostEqual(have, want, delta=abs(want) * 2.0 ** -22)

    def test_points_from_a_file_are_the_same(self):
        lines = ["%s %s %s %s\n" % (name, *POINTS[name]) for name in POINTS]
        path = self.write("p.fiducials", "".join(lines))
        self.assertEqual(self.document(example("auditory.dip"), "--accept", "other-head", "--fiducials", path, *self.volume()),
                         self.document(example("auditory.dip"), *ELSEWHERE, *self.volume()))

    def test_without_points_those_of_the_file_are_taken_as_voxels(self):
        # As `dipole info` shows them.
        voxels = {"nasion": [128, 100, 230], "left": [228, 91, 106], "right": [28, 91, 106]}
        size = 0.859375
        wanted = registration({name: [v * size for v in at] for name, at in voxels.items()}, [256] * 3,
                              [size] * 3)
        found = self.document(example("auditory.dip"))["registration"]
        self.assertEqual([found["nasion_mm"], found["left_ear_mm"], found["right_ear_mm"]],
                         [wanted["nasion"], wanted["left"], wanted["right"]])

    def test_dipoles_stay_where_they_are(self):
        self.succeed("convert", example("spikes.dip"), "-o", self.path("plain.json"))
        with open(self.path("plain.json"), encoding="utf-8") as file:
            plain = json.load(file)
        for rotate in ([], ["--rotate"]):
            found = self.document(example("spikes.dip"), *ELSEWHERE, *rotate)
            self.assertEqual(found["dipoles"], plain["dipoles"])

    def test_a_set_file_holds_the_registration(self):
        wanted = registration(POINTS, DIMENSION, VOXEL)
        found = self.old_set(example("auditory.dip"), *ELSEWHERE, *self.volume())
        points = found["head_points"]
        self.assertEqual([point["at"] for point in points[:3]],
                         [wanted["nasion"], wanted["left"], wanted["right"]])
        self.assertEqual({(point["size"], point["shape"]) for point in points[:3]}, {(4.0, 2)})
        self.assertEqual(found["locational"]["radius"], 86.0)
        self.assertEqual(found["ctf_sphere"]["radius"], 86.0)
        self.assertEqual([d["label"] for d in found["dipoles"]], ["N100m_left", "N100m_right"])
        again = self.succeed("info", "--json", self.path("o.dipset"))
        ears = json.loads(again.out)[0]["fiducials_head_mm"]
        self.assertEqual([single(value) for value in ears["left_ear"]],
                         [single(value) for value in wanted["left"]])

    def test_by_the_sphere(self):
        found = self.document(example("auditory.dip"), "--by-sphere", *self.volume())["registration"]
        wanted = [(single(n * single(size)) - 2 * 86.0) * 0.5 for n, size in zip(DIMENSION, VOXEL)]
        self.assertEqual(found["translation_mm"], wanted)
        self.assertEqual(found["sphere_radius_mm"], 86.0)
        in_set = self.old_set(example("auditory.dip"), "--by-sphere", *self.volume())["locational"]
        self.assertEqual((in_set["centre"], in_set["radius"]), (wanted, 86.0))

    def test_what_is_missing_is_told_and_nothing_is_written(self):
        bare = self.write("bare.dipset", dipset.pack_set([{}], sphere_set=1))
        no_points = self.write("n.dip", dipole_file([(1, 2, 3, 7, "a")]))
        for arguments, cause in (([bare, "--by-sphere"], "give no head sphere"),
                                 ([bare], "give no fiducial points"),
                                 ([no_points], "give no fiducial points"),
                                 ([no_points, "--fiducials", self.path("missing")], "cannot be opened")):
            self.assertIn(cause, self.register(*arguments, self.path("o.json"), code=1).err)
            self.assertFalse(os.path.exists(self.path("o.json")))
        result = self.register(no_points, "--by-sphere", self.path("o.csv"), code=1)
        self.assertIn("a registration is written as .dipset or .json\n", result.err)

    def test_wrong_arguments_end_with_2(self):
        for arguments in (["--dimension", "256,256"], ["--dimension", "0,1,1"], ["--dimension", "1.5,1,1"],
                          ["--voxel", "1,1,1,"], ["--voxel", "a,1,1"], ["--voxel", "nan,1,1"],
                          ["--by-sphere", "--rotate"], ["--by-sphere", *ELSEWHERE]):
            self.register(example("auditory.dip"), *arguments, self.path("o.json"), code=2)


if __name__ == "__main__":
    unittest.main()
