#!/usr/bin/env python3
"""`--atlas` on the atlases of Debian's package mricron-data, against nibabel and SciPy. Runs under Debian's Python.
ATLAS_POINTS is the number of random places."""

import csv
import io
import os
import shutil
import sys
import time
import unittest

import nibabel
import numpy
import scipy.spatial

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
from support import LEFT_FIRST, ToolTest  # noqa: E402

FOLDER = "/usr/share/mricron/templates"
POINTS = int(os.environ.get("ATLAS_POINTS", "5000"))
MNI = ("--fiducials", LEFT_FIRST, "--mni", "identity", "--mni-space", "colin27")
REACH = 20.0


def names_of(name):
    """Of values: the middle word of each line; of Brodmann's there are none."""
    path = os.path.join(FOLDER, name + ".nii.txt")
    if not os.path.exists(path):
        return {value: "area %d" % value for value in range(1, 49)}
    with open(path, newline="") as file:
        return {int(line.split()[0]): line.split()[1] for line in file.read().split("\r\n") if line}


class Oracle:
    def __init__(self, name):
        image = nibabel.load(os.path.join(FOLDER, name + ".nii.gz"))
        self.labels = numpy.asanyarray(image.dataobj)
        self.map = image.header.get_sform()
        self.names = names_of(name)
        where = numpy.argwhere(self.labels > 0)
        self.values = self.labels[tuple(where.T)]
        self.tree = scipy.spatial.cKDTree(nibabel.affines.apply_affine(self.map, where))

    def own(self, places):
        index = numpy.rint(nibabel.affines.apply_affine(numpy.linalg.inv(self.map), places)).astype(int)
        inside = ((index >= 0) & (index < self.labels.shape)).all(axis=1)
        values = numpy.zeros(len(places), int)
        values[inside] = self.labels[tuple(index[inside].T)]
        return values

    def nearest(self, place):
        """All labels that are as near as the nearest, and its distance."""
        distance, _ = self.tree.query(place)
        return distance, set(self.values[self.tree.query_ball_point(place, distance + 1e-9)])


class Atlases(ToolTest):
    def listed(self, places, atlas):
        path = self.path("places.csv")
        with open(path, "w") as file:
            file.write("x_left_mm,y_up_mm,z_front_mm\n")
            file.writelines("%r,%r,%r\n" % (float(-x), float(z), float(y)) for x, y, z in places)
        result = self.succeed("list", "--csv", path, "--atlas", atlas, *MNI)
        self.assertEqual(result.err, "")
        return [(row["atlas_%s_colin27_label" % atlas], row["atlas_%s_colin27_distance_mm" % atlas])
                for row in csv.DictReader(io.StringIO(result.out))]

    def test_labels_and_distances_are_those_of_nibabel_and_scipy(self):
        chance = numpy.random.default_rng(13)
        for name in ("aal", "brodmann"):
            oracle = Oracle(name)
            places = chance.uniform((-110, -145, -95), (110, 110, 125), (POINTS, 3))
            own = oracle.own(places)
            met = {"inside": 0, "near": 0, "none": 0}
            for place, value, (label, distance) in zip(places, own, self.listed(places, name)):
                far, nearest = oracle.nearest(place)
                if value > 0:
                    met["inside"] += 1
                    self.assertEqual((label, distance), (oracle.names[value], "0"))
                elif far <= REACH:
                    met["near"] += 1
                    self.assertEqual(label, oracle.names[min(nearest)], place)
                    self.assertLess(abs(float(distance) - far), 0.005 + 1e-9)
                else:
                    met["none"] += 1
                    self.assertEqual((label, distance), ("", ""))
            self.assertGreater(min(met.values()), POINTS // 20, met)

    def test_known_places_have_their_names(self):
        # x to the right: the left is negative.
        known = {"aal": {(-40, -8, 50): "Precentral_L", (42, -8, 50): "Precentral_R", (-42, -19, 10): "Heschl_L",
                         (46, -17, 10): "Heschl_R", (-7, -79, 7): "Calcarine_L", (16, -73, 9): "Calcarine_R",
                         (-35, 7, 3): "Insula_L", (39, 6, 2): "Insula_R", (-11, -18, 8): "Thalamus_L"},
                 "brodmann": {(-10, -95, 2): "area 17", (-37, -25, 62): "area 4"}}
        for name, places in known.items():
            found = self.listed(list(places), name)
            self.assertEqual([label for label, _ in found], list(places.values()))

    def test_what_is_named_left_is_left(self):
        chance = numpy.random.default_rng(14)
        places = chance.uniform((-75, -105, -60), (75, 75, 80), (POINTS, 3))
        sides = {"_L": 0, "_R": 0}
        for (x, _, _), (label, distance) in zip(places, self.listed(places, "aal")):
            if distance == "0" and label[-2:] in sides:
                sides[label[-2:]] += 1
                # Some parts reach across the middle by a few mm.
                self.assertTrue(x < 6 if label.endswith("_L") else x > -6, (x, label))
        self.assertGreater(min(sides.values()), POINTS // 20)

    def test_what_is_mirrored_is_refused_under_any_name(self):
        places = self.write("places.csv", "x_left_mm,y_up_mm,z_front_mm\n0,0,0\n")
        for name, cause in (("JHU-WhiteMatter-labels-1mm", "mirrored"), ("JHU-WhiteMatter-labels-2mm", "mirrored"),
                            ("jhu189", "has no names"), ("inia19-NeuroMaps", "monkey|one patient"),
                            ("ch2", "looks like a picture"),
                            ("ch2bet", "looks like a picture"), ("ch2better", "looks like a picture|one patient")):
            path = os.path.join(FOLDER, name + ".nii.gz")
            renamed = shutil.copy(path, self.path("mine.nii.gz"))
            for file in (path, renamed):
                self.assertRegex(self.end_with(1, "list", places, "--atlas", file, *MNI).err, cause)

    def test_the_other_ones_can_be_read(self):
        places = self.write("places.csv", "x_left_mm,y_up_mm,z_front_mm\n40,50,-8\n")
        for name, text in (("HarvardOxford-cort-maxprob-thr0-1mm", "label 7 "), ("AICHAmc", " S_Precentral-4 ")):
            out = self.succeed("list", places, "--atlas", os.path.join(FOLDER, name + ".nii.gz"), *MNI).out
            self.assertIn(text, out)

    def test_thirty_thousand_places_take_little_time(self):
        chance = numpy.random.default_rng(15)
        # All in the head, and all far from it: what takes the longest looks at every direction.
        for places in (chance.uniform((-70, -100, -60), (70, 70, 80), (30000, 3)),
                       chance.uniform((-110, -145, -95), (110, 110, 125), (30000, 3))):
            start = time.monotonic()
            self.listed(places, "aal")
            self.assertLess(time.monotonic() - start, 60)


if __name__ == "__main__":
    unittest.main()
