"""`dipole clusters` beside arithmetic of its own: who is in which cluster, the figures of each, and what is left out."""

import csv
import io
import json
import math
import random
import statistics
import unittest

from support import LEFT_FIRST, ToolTest, dipoles_of, example

SCANNER = ("--fiducials", LEFT_FIRST)  # scanner x, y, z: minus x_left, z_front, y_up
TITLES = ("x_left_mm,y_up_mm,z_front_mm,orientation_x_left,orientation_y_up,orientation_z_front,latency_ms,"
          "fit_error_percent,moment_nAm,label")


def distance(one, other):
    return math.dist(one["place"], other["place"])


def degrees(one, other):
    u, v = one["direction"], other["direction"]
    cross = (u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2], u[0] * v[1] - u[1] * v[0])
    return math.degrees(math.atan2(math.hypot(*cross), sum(a * b for a, b in zip(u, v))))


def components(dipoles, most, angle=None):
    """By a walk from each to all others."""
    left = set(range(len(dipoles)))
    groups = []
    while left:
        first = min(left)
        left.remove(first)
        group, reached = [first], [first]
        while reached:
            here = dipoles[reached.pop()]
            joined = {i for i in left if distance(here, dipoles[i]) <= most and
                      (angle is None or degrees(here, dipoles[i]) <= angle)}
            left -= joined
            group += joined
            reached += joined
        groups.append(sorted(group))
    return groups


def clusters_of(dipoles, members, most, angle=None):
    groups = [group for group in components(dipoles, most, angle) if len(group) >= members]
    return sorted(groups, key=lambda group: (-len(group), group[0]))


class ClusterTest(ToolTest):
    def table(self, rows, name="dipoles.csv", titles=TITLES):
        return self.write(name, "\n".join([titles] + rows) + "\n")

    def made(self, count, seed):
        """Some in clouds, some anywhere."""
        chance = random.Random(seed)
        middles = [[chance.uniform(-60, 60) for _ in range(3)] for _ in range(5)]
        rows = []
        for _ in range(count):
            middle = chance.choice(middles)
            place = [chance.gauss(m, 5.0) if chance.random() < 0.7 else chance.uniform(-70, 70) for m in middle]
            direction = [chance.gauss(0, 1) for _ in range(3)]
            rows.append(",".join([*map(repr, place + direction), repr(chance.uniform(-50, 50)),
                                  repr(chance.uniform(0, 30)), repr(chance.gauss(0, 40)), "d"]))
        return self.table(rows)

    def dipoles(self, path):
        listed = csv.DictReader(io.StringIO(self.succeed("list", "--csv", path).out))
        return [{"place": [float(row[k]) for k in ("x_left_mm", "y_up_mm", "z_front_mm")],
                 "direction": [float(row["orientation_" + k]) for k in ("x_left", "y_up", "z_front")],
                 "latency": float(row["latency_ms"]), "error": float(row["fit_error_percent"]),
                 "moment": float(row["moment_nAm"]), "row": place} for place, row in enumerate(listed, 1)]

    def found(self, *arguments):
        return json.loads(self.succeed("clusters", "--json", *arguments).out)


class Members(ClusterTest):
    def test_they_are_the_components_of_the_graph(self):
        for seed in range(6):
            path = self.made(250, seed)
            dipoles = self.dipoles(path)
            for options, expected in (((), clusters_of(dipoles, 6, 10)),
                                      (("--distance", "7.5", "--members", "2"), clusters_of(dipoles, 2, 7.5)),
                                      (("--angle", "60", "--members", "3"), clusters_of(dipoles, 3, 10, 60)),
                                      (("--angle", "0", "--members", "2"), clusters_of(dipoles, 2, 10, 0))):
                found = self.found(path, *options)
                self.assertEqual([cluster["rows"] for cluster in found["clusters"]],
                                 [[i + 1 for i in group] for group in expected])
                self.assertEqual(found["in_clusters"], sum(map(len, expected)))
                self.assertEqual(found["scattered"], 250 - sum(map(len, expected)))

    def test_limits_come_first_and_count_what_they_remove_in_order(self):
        path = self.made(250, 9)
        dipoles = self.dipoles(path)
        found = self.found(path, "--max-error", "20", "--moment", "-40:40", "--latency", "-30:", "--members", "3")
        kept, removed = [], {"fit_error": 0, "moment": 0, "latency": 0}
        for dipole in dipoles:
            if dipole["error"] > 20:
                removed["fit_error"] += 1
            elif not -40 <= dipole["moment"] <= 40:
                removed["moment"] += 1
            elif dipole["latency"] < -30:
                removed["latency"] += 1
            else:
                kept.append(dipole)
        self.assertEqual(found["removed"], removed)
        self.assertTrue(all(removed.values()))
        self.assertEqual([cluster["rows"] for cluster in found["clusters"]],
                         [[kept[i]["row"] for i in group] for group in clusters_of(kept, 3, 10)])
        self.assertEqual(found["limits"], {"fit_error_percent": [None, 20.0], "moment": [-40.0, 40.0],
                                           "latency_ms": [-30.0, None]})

    def test_goodness_of_fit_is_the_other_side_of_the_fit_error(self):
        path = self.made(200, 3)
        self.assertEqual(self.found(path, "--min-goodness", "85"), self.found(path, "--max-error", "15"))
        error = self.end_with(2, "clusters", path, "--min-goodness", "85", "--max-error", "15").err
        self.assertIn("--max-error", error)

    def test_steps_of_the_distance_itself_are_within_it(self):
        path = self.table(["%d,0,0" % (10 * i) for i in range(6)], titles="x_left_mm,y_up_mm,z_front_mm")
        self.assertEqual(self.found(path)["clusters"][0]["rows"], [1, 2, 3, 4, 5, 6])
        found = self.found(path, "--distance", "9.999999")
        self.assertEqual((found["clusters"], found["scattered"]), ([], 6))
        self.assertEqual(self.found(path, "--members", "7")["clusters"], [])

    def test_what_is_unknown_belongs_to_none_and_is_counted(self):
        rows = ["0,0,0,0,0,1,5,5,5,a"] * 6 + ["nan,0,0,0,0,1,5,5,5,a", "0,0,0,,,,5,5,5,a", "0,0,0,0,0,0,5,5,5,a",
                                              "0,0,0,0,0,1,,5,5,a", "200000,0,0,0,0,1,5,5,5,a"]
        path = self.table(rows)
        found = self.found(path)
        self.assertEqual((found["dipoles"], found["in_clusters"], found["nowhere"], found["without_orientation"]),
                         (11, 9, 2, 0))
        self.assertEqual(found["clusters"][0]["orientation"]["orientations"], 7)
        self.assertEqual(found["clusters"][0]["latency_ms"]["values"], 8)
        found = self.found(path, "--angle", "180", "--latency", ":9")
        self.assertEqual((found["in_clusters"], found["nowhere"], found["without_orientation"], found["removed"]),
                         (6, 2, 2, {"fit_error": 0, "moment": 0, "latency": 1}))

    def test_several_files_are_one_set(self):
        one = self.table(["0,0,0"] * 3, "one.csv", "x_left_mm,y_up_mm,z_front_mm")
        two = self.table(["5,0,0"] * 3, "two.csv", "x_left_mm,y_up_mm,z_front_mm")
        self.assertEqual(self.found(one, two)["clusters"][0]["rows"], [1, 2, 3, 4, 5, 6])


class Figures(ClusterTest):
    def test_they_are_those_of_the_members(self):
        path = self.made(300, 21)
        dipoles = self.dipoles(path)
        found = self.found(path)
        self.assertGreater(len(found["clusters"]), 1)
        for cluster in found["clusters"]:
            members = [dipoles[number - 1] for number in cluster["rows"]]
            centroid = [statistics.fmean(m["place"][axis] for m in members) for axis in range(3)]
            for have, want in zip(cluster["centroid_mm"]["head"], centroid):
                self.assertAlmostEqual(have, want, places=9)
            away = [math.dist(m["place"], centroid) for m in members]
            self.assertAlmostEqual(cluster["rms_distance_mm"], math.sqrt(statistics.fmean(a * a for a in away)))
            self.assertAlmostEqual(cluster["largest_distance_mm"], max(away))
            for title, key in (("latency_ms", "latency"), ("fit_error_percent", "error"), ("moment", "moment")):
                values = [m[key] for m in members]
                self.assertEqual(cluster[title], {"values": len(values), "least": min(values),
                                                  "median": statistics.median(values), "most": max(values)})
            units = [[c / math.hypot(*m["direction"]) for c in m["direction"]] for m in members]
            total = [math.fsum(unit[axis] for unit in units) for axis in range(3)]
            orientation = cluster["orientation"]
            self.assertAlmostEqual(orientation["resultant_length"], math.hypot(*total) / len(units))
            mean = {"direction": [c / math.hypot(*total) for c in total]}
            for have, want in zip(orientation["mean"]["head"], mean["direction"]):
                self.assertAlmostEqual(have, want, places=9)
            angles = sorted(degrees({"direction": unit}, mean) for unit in units)
            self.assertAlmostEqual(orientation["cone_degrees"], angles[math.ceil(0.95 * len(angles)) - 1], places=7)

    def test_centroids_stand_in_every_frame_that_is_known(self):
        path = self.table(["40,10,20,0,0.6,0.8,1,1,1,a"] * 6)
        self.assertEqual(set(self.found(path)["frames"]), {"head", "ctf"})
        found = self.found(path, *SCANNER, "--mni", "identity", "--mni-space", "colin27")
        self.assertEqual(list(found["frames"]), ["head", "ctf", "neuromag", "scanner", "colin27"])
        cluster = found["clusters"][0]
        expected = {"head": [40, 10, 20], "ctf": [20, 40, 10], "neuromag": [-40, 20, 10], "scanner": [-40, 20, 10],
                    "colin27": [-40, 20, 10]}
        for frame, place in expected.items():
            for have, want in zip(cluster["centroid_mm"][frame], place):
                self.assertAlmostEqual(have, want, places=9)
        for frame, mean in {"head": [0, 0.6, 0.8], "ctf": [0.8, 0, 0.6], "scanner": [0, 0.8, 0.6]}.items():
            for have, want in zip(cluster["orientation"]["mean"][frame], mean):
                self.assertAlmostEqual(have, want, places=9)
        self.assertEqual(list(self.found(path, *SCANNER, "--frame", "scanner")["frames"]), ["scanner"])
        self.end_with(1, "clusters", path, "--frame", "scanner")

    def test_the_left_cluster_is_left(self):
        cluster = self.found(example("spikes.dip"))["clusters"][0]
        by_number = {d["number"]: d for d in dipoles_of(self.succeed("list", "--json", example("spikes.dip")).out)}
        members = [by_number[number]["position_mm"][0] for number in cluster["rows"]]
        self.assertTrue(all(x > 0 for x in members) or all(x < 0 for x in members))
        self.assertAlmostEqual(cluster["centroid_mm"]["head"][0], statistics.fmean(members), places=6)
        self.assertEqual(cluster["centroid_mm"]["ctf"][1], cluster["centroid_mm"]["head"][0])


class Output(ClusterTest):
    ROWS = ["40,10,20,0,0,1,100,5,30,a", "42,10,20,0,0,1,110,6,30,a", "40,13,20,0,0,2,120,7,30,a",
            "0,0,-50,0,0,1,130,8,30,a", "0,0,0,0,0,1,130,80,30,a"]

    def test_the_text_is_aligned_and_says_what_was_done(self):
        result = self.succeed("clusters", self.table(self.ROWS), "--members", "3", "--max-error", "20", *SCANNER)
        self.assertEqual(result.out.split("\n"), [
            "Clusters: 3 or more within 10 mm; fit error at most 20 %",
            "  dipoles       5",
            "  in clusters   3 in 1 cluster",
            "  scattered     1",
            "  removed       1 by the fit error",
            "",
            "No Dipoles rms mm far mm cone             Latency ms            Err %",
            " 1       3    1.7    2.1  0.0 110.0 (100.0 to 120.0) 6.0 (5.0 to 7.0)",
            "",
            "Centroids and mean orientations:",
            "  head: x left, y up, z front",
            "  CTF head: x front, y left, z up",
            "  Neuromag head: x right, y front, z up",
            "  scanner: x right, y front, z up",
            "No Frame     x mm y mm z mm   ox   oy   oz",
            " 1 head      40.7 11.0 20.0 0.00 0.00 1.00",
            "   ctf       20.0 40.7 11.0 1.00 0.00 0.00",
            "   neuromag -40.7 20.0 11.0 0.00 1.00 0.00",
            "   scanner  -40.7 20.0 11.0 0.00 1.00 0.00",
            ""])

    def test_nothing_found_is_said_too(self):
        out = self.succeed("clusters", self.table(self.ROWS), "--angle", "30").out
        self.assertEqual(out, "Clusters: 6 or more within 10 mm and 30 degrees\n  dipoles       5\n"
                              "  in clusters   0 in 0 clusters\n  scattered     5\n"
                              "  removed       none, no limit is set\n")

    def test_csv_holds_the_same_values_as_json(self):
        path = self.made(300, 33)
        options = (path, *SCANNER)
        found = self.found(*options)
        rows = list(csv.DictReader(io.StringIO(self.succeed("clusters", "--csv", *options).out)))
        self.assertEqual(len(rows), len(found["clusters"]))
        for row, cluster in zip(rows, found["clusters"]):
            self.assertEqual((int(row["cluster"]), int(row["dipoles"])), (cluster["cluster"], cluster["dipoles"]))
            for frame, titles in (("head", ("x_left_mm", "y_up_mm", "z_front_mm")),
                                  ("scanner", ("scanner_x_right_mm", "scanner_y_front_mm", "scanner_z_up_mm"))):
                self.assertEqual([float(row["centroid_" + t]) for t in titles], cluster["centroid_mm"][frame])
            self.assertEqual([float(row["mean_orientation_" + t]) for t in ("x_left", "y_up", "z_front")],
                             cluster["orientation"]["mean"]["head"])
            self.assertEqual(float(row["cone_degrees"]), cluster["orientation"]["cone_degrees"])
            self.assertEqual(float(row["latency_median_ms"]), cluster["latency_ms"]["median"])
            self.assertEqual(float(row["fit_error_most_percent"]), cluster["fit_error_percent"]["most"])
            self.assertEqual(float(row["moment_least_nAm"]), cluster["moment"]["least"])
            self.assertEqual(float(row["rms_distance_mm"]), cluster["rms_distance_mm"])

    def test_json_has_an_item_a_line(self):
        lines = self.succeed("clusters", "--json", self.made(300, 33)).out.split("\n")
        self.assertGreater(len([line for line in lines if line.startswith('    {"cluster":')]), 1)

    def test_wrong_arguments_are_refused(self):
        path = self.table(self.ROWS)
        for arguments in (("--members", "1"), ("--members", "2.5"), ("--distance", "-1"), ("--distance", "1001"),
                          ("--angle", "181"), ("--angle", "nan"), ("--csv", "--json")):
            self.assertNotEqual(self.end_with(2, "clusters", path, *arguments).err, "")
        for options in (("--distance", "5"), ("--members", "3", "--color-by", "latency")):
            error = self.end_with(2, "draw", path, "--3d", "-o", self.path("o.png"), *options).err
            self.assertIn("--color-by cluster", error)

    def test_what_is_wrong_in_a_file_is_the_exit_status(self):
        path = self.write("a.dip", "no dipoles")
        self.end_with(1, "clusters", "--json", path)

    def test_no_text_says_what_a_cluster_means(self):
        text = self.succeed("help", "clusters").out + self.succeed("clusters", self.made(300, 1)).out
        self.assertNotRegex(text.lower(), "epilep|zone|focus|foci|onset|irritative")


if __name__ == "__main__":
    unittest.main()
