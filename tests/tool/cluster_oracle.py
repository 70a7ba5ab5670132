#!/usr/bin/python3
"""Clusters of `dipole clusters` beside those of scipy.cluster.hierarchy: the tree of single linkage, cut at the
distance."""

import csv
import io
import json
import random
import unittest

import numpy
import scipy.cluster.hierarchy

from support import ToolTest, example


def scipy_clusters(places, distance, members):
    tree = scipy.cluster.hierarchy.linkage(places, method="single")
    numbers = scipy.cluster.hierarchy.fcluster(tree, t=distance, criterion="distance")
    groups = {}
    for row, number in enumerate(numbers, 1):
        groups.setdefault(number, []).append(row)
    return sorted((group for group in groups.values() if len(group) >= members), key=lambda g: (-len(g), g[0]))


class Scipy(ToolTest):
    def assert_same(self, path, distances, members):
        listed = csv.DictReader(io.StringIO(self.succeed("list", "--csv", path).out))
        places = numpy.array([[float(row[k]) for k in ("x_left_mm", "y_up_mm", "z_front_mm")] for row in listed])
        several = 0
        for distance in distances:
            out = self.succeed("clusters", "--json", path, "--distance", repr(distance), "--members", str(members)).out
            rows = [cluster["rows"] for cluster in json.loads(out)["clusters"]]
            self.assertEqual(rows, scipy_clusters(places, distance, members), distance)
            several += len(rows) > 1
        return several

    def table(self, places):
        return self.write("places.csv", "x_left_mm,y_up_mm,z_front_mm\n" +
                          "".join(",".join(map(repr, place)) + "\n" for place in places))

    def test_of_places_all_over_a_head(self):
        chance = random.Random(1)
        for count in (2, 50, 500, 3000):
            places = [[chance.uniform(-75, 75) for _ in range(3)] for _ in range(count)]
            several = self.assert_same(self.table(places), (3.0, 6.0, 8.0, 10.0, 20.0), 3)
        self.assertGreater(several, 2)

    def test_of_places_in_clouds(self):
        chance = random.Random(2)
        places = []
        for _ in range(60):
            middle = [chance.uniform(-70, 70) for _ in range(3)]
            places += [[chance.gauss(m, 4.0) for m in middle] for _ in range(50)]
        chance.shuffle(places)
        self.assertGreater(self.assert_same(self.table(places), (1.0, 2.0, 3.0, 4.0, 10.0), 6), 2)

    def test_of_places_on_a_grid_whose_steps_are_the_distance(self):
        chance = random.Random(3)
        places = [[10.0 * chance.randint(-7, 7) for _ in range(3)] for _ in range(1000)]
        self.assertGreater(self.assert_same(self.table(places), (9.99, 10.0, 14.2), 2), 1)

    def test_of_the_example(self):
        self.assertGreater(self.assert_same(example("spikes.dip"), (2.0, 3.0, 4.0, 10.0), 6), 0)


if __name__ == "__main__":
    unittest.main()
