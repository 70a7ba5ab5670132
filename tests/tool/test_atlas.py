"""`--atlas` tells where dipoles lie: the right label and the right distance, in every output, and nothing where it is
not known. The atlases are made here; those of Debian's package are tried by atlas_oracle.py."""

import base64
import csv
import io
import json
import math
import os
import struct
import unittest
import xml.etree.ElementTree

from support import LEFT_FIRST, Png, ToolTest, head_volume

HEAD = ("--fiducials", LEFT_FIRST, "--mni", "identity")  # MNI x, y, z: minus x_left, z_front, y_up
PLACES = [(40.0, 0.0, 0.0), (-40.0, 0.0, 0.0), (75.5, 0.0, 0.0), (-95.0, 0.0, 0.0), (0.0, 90.0, 0.0)]
LABEL, DISTANCE = "atlas_mine_label", "atlas_mine_distance_mm"


def atlas(size=28, spacing=5.0, volumes=1, sform=4, cells=None):
    """Left of the middle 1, right of it 2, from -70 to 65 mm: a NIfTI file."""
    header = bytearray(352)
    struct.pack_into("<i", header, 0, 348)
    struct.pack_into("<8h", header, 40, 4 if volumes > 1 else 3, size, size, size, volumes, 1, 1, 1)
    struct.pack_into("<2h", header, 70, 2, 8)
    struct.pack_into("<8f", header, 76, 1, spacing, spacing, spacing, 1, 0, 0, 0)
    struct.pack_into("<f", header, 108, 352)
    header[123] = 2
    struct.pack_into("<2h", header, 252, 1, sform)
    start = -size * spacing / 2
    for row in range(3):
        values = [0.0] * 4
        values[row], values[3] = spacing, start
        struct.pack_into("<4f", header, 280 + 16 * row, *values)
    header[344:348] = b"n+1\0"
    row = cells or bytes(1 if i < size // 2 else 2 for i in range(size))
    return bytes(header) + row * (size * size * volumes)


class AtlasTest(ToolTest):
    def setUp(self):
        super().setUp()
        self.atlas = self.write("mine.nii", atlas())
        self.write("mine.nii.txt", "1 Side_L 10\r\n2 Side_R 20\r\n\r\n")
        self.dipoles = self.table(PLACES)

    def table(self, places):
        rows = ["x_left_mm,y_up_mm,z_front_mm"] + [",".join(map(repr, place)) for place in places]
        return self.write("places.csv", "\n".join(rows) + "\n")

    def rows(self, *options):
        text = self.succeed("list", "--csv", self.dipoles, "--atlas", self.atlas, *HEAD, *options).out
        return list(csv.DictReader(io.StringIO(text)))

    def refusal(self, *arguments):
        return self.end_with(1, *arguments).err


class Lookup(AtlasTest):
    def test_an_empty_name_is_no_atlas(self):
        self.assertIn("names no atlas", self.end_with(2, "list", self.dipoles, "--atlas", "", *HEAD).err)

    def test_each_dipole_has_its_label_or_the_nearest_with_its_distance(self):
        found = [(row[LABEL], row[DISTANCE]) for row in self.rows()]
        # The voxels' middles: x from -70 on, the last at 65; so the left one of -75.5 is 5.5 mm on.
        self.assertEqual(found, [("Side_L", "0"), ("Side_R", "0"), ("Side_L", "5.5"), ("", ""),
                                 ("", "")])

    def test_beyond_20_mm_there_is_none(self):
        self.dipoles = self.table([(0.0, 84.99, 0.0), (0.0, 85.01, 0.0), (1e9, 0.0, 0.0), (float("nan"), 0.0, 0.0)])
        self.assertEqual([row[DISTANCE] for row in self.rows()], ["19.99", "", "", ""])

    def test_a_frame_changes_no_label(self):
        plain = [(row[LABEL], row[DISTANCE]) for row in self.rows()]
        for frame in ("ctf", "scanner", "neuromag", "mni"):
            self.assertEqual([(row[LABEL], row[DISTANCE]) for row in self.rows("--frame", frame)], plain)

    def test_the_way_to_mni_is_gone(self):
        path = self.write("shift.txt", "1 0 0 80\n0 1 0 0\n0 0 1 0\n0 0 0 1\n")
        rows = csv.DictReader(io.StringIO(self.succeed(
            "list", "--csv", self.dipoles, "--atlas", self.atlas, "--fiducials", LEFT_FIRST, "--mni", path).out))
        self.assertEqual(next(rows)[LABEL], "Side_R")

    def test_names_may_be_given(self):
        names = self.write("other.txt", "1\tthe other one\n")
        rows = csv.DictReader(io.StringIO(self.succeed(
            "list", "--csv", self.dipoles, "--atlas", self.atlas + "," + names, *HEAD).out))
        self.assertEqual([row[LABEL] for row in rows][:2], ["the other one", "label 2"])

    def test_sorting_takes_the_labels_along(self):
        out = self.succeed("sort", "--by", "x", self.dipoles, "--atlas", self.atlas, *HEAD, "--to", "csv", "-o", "-").out
        found = [(float(row["x_left_mm"]), row[LABEL]) for row in csv.DictReader(io.StringIO(out))]
        self.assertEqual(found, [(-95.0, ""), (-40.0, "Side_R"), (0.0, ""), (40.0, "Side_L"), (75.5, "Side_L")])


class Outputs(AtlasTest):
    def test_json_has_them_and_says_of_which_atlas(self):
        document = json.loads(self.succeed("list", "--json", self.dipoles, "--atlas", self.atlas, *HEAD,
                                           "--mni-space", "mni152").out)
        self.assertEqual(document["atlas"], {"name": "mine", "about": "mine, nobody said in which MNI space",
                                             "space": None, "space_of_places": "MNI152", "reach_mm": 20.0})
        self.assertEqual([(one[LABEL], one[DISTANCE]) for one in document["dipoles"]],
                         [("Side_L", 0.0), ("Side_R", 0.0), ("Side_L", 5.5), (None, None), (None, None)])

    def test_a_known_atlas_has_its_space_in_the_titles(self):
        path = self.write("aal.nii", atlas())
        text = self.succeed("list", "--csv", self.dipoles, "--atlas", path, *HEAD).out
        self.assertIn(",atlas_aal_colin27_label,atlas_aal_colin27_distance_mm\n", text)

    def test_the_list_says_whose_labels_they_are(self):
        lines = self.succeed("list", self.dipoles, "--atlas", self.atlas, *HEAD).out.split("\n")
        self.assertIn("Atlas: mine, nobody said in which MNI space", lines[0])
        self.assertRegex(lines[1], r" Slices Place +off mm$")
        self.assertRegex(lines[2], r" Side_L +0\.0$")
        self.assertRegex(lines[4], r" Side_L +5\.5$")
        self.assertRegex(lines[5], r" - +-$")

    def test_info_counts_them(self):
        info = self.succeed("info", self.dipoles, "--atlas", self.atlas, *HEAD).out
        self.assertRegex(info, r"Side_L +2 dipoles, 1 of them only near it\n")
        self.assertRegex(info, r"Side_R +1 dipole\n")
        self.assertRegex(info, r"no label +2 dipoles farther than 20 mm from each\n")
        report = json.loads(self.succeed("info", "--json", self.dipoles, "--atlas", self.atlas, *HEAD).out)[0]
        self.assertEqual(report["places"], [{"label": "Side_L", "dipoles": 2, "near_it": 1},
                                            {"label": "Side_R", "dipoles": 1, "near_it": 0}])
        self.assertEqual(report["without_label"], 2)
        self.assertEqual(report["atlas"]["name"], "mine")

    def test_points_of_slicer_say_it_in_their_description(self):
        for kind in ("slicer", "arrows"):
            table = self.write("oriented.csv", "x_left_mm,y_up_mm,z_front_mm,orientation_x_left,orientation_y_up,"
                               "orientation_z_front\n75.5,0,0,1,0,0\n")
            out = self.succeed("convert", table, "--atlas", self.atlas, *HEAD, "--to", kind, "-o", "-").out
            point = json.loads(out)["markups"][0]["controlPoints"][0]
            self.assertIn("near Side_L, 5.5 mm (mine)", point["description"])

    def test_vtp_has_two_arrays_more(self):
        out = self.succeed("convert", self.dipoles, "--atlas", self.atlas, *HEAD, "--to", "vtp", "-o", "-").out
        root = xml.etree.ElementTree.fromstring(out)
        texts = next(one for one in root.iter("Array") if one.get("Name") == LABEL)
        names = bytes(map(int, texts.text.split())).decode("utf-8").split("\0")
        self.assertEqual(names, ["Side_L", "Side_R", "Side_L", "", "", ""])
        array = next(one for one in root.iter("DataArray") if one.get("Name") == DISTANCE)
        values = struct.unpack("<5f", base64.b64decode(array.text)[4:])
        self.assertEqual(values[:3], (0.0, 0.0, 5.5))
        self.assertTrue(all(math.isnan(value) for value in values[3:]))
        said = next(one for one in root.iter("Array") if one.get("Name") == "ATLAS")
        self.assertIn(b"mine", bytes(map(int, said.text.split())))

    def test_formats_without_room_refuse_and_write_nothing(self):
        for name, options in (("a.dipset", ()), ("a.txt", ()), ("a.bdip", ()), ("a.dip", ("--to", "ctf")),
                              ("a.dip", ("--to", "neuromag"))):
            err = self.refusal("convert", self.dipoles, "--atlas", self.atlas, *HEAD, *options, "-o", self.path(name))
            self.assertIn("no room for the places of an atlas", err)
            self.assertFalse(os.path.exists(self.path(name)))

    def test_tables_with_labels_are_not_read_back(self):
        for ending in ("csv", "tsv", "json"):
            path = self.path("out." + ending)
            self.succeed("convert", self.dipoles, "--atlas", self.atlas, *HEAD, "-o", path)
            self.assertIn("\"atlas_mine_label\" is of an atlas: tables with such columns are not read back",
                          self.refusal("list", path))

    def test_without_an_atlas_nothing_is_different(self):
        for option in ("--csv", "--json"):
            self.assertNotIn("atlas", self.succeed("list", option, self.dipoles, *HEAD).out)

    def test_hostile_names_do_no_harm(self):
        self.write("mine.nii.txt", "1\t=cmd|'x'!A0\n2\t]0;x,\"q\"\n")
        self.assertEqual([row[LABEL] for row in self.rows()][:2], ["'=cmd|'x'!A0", "]0;x,\"q\""])
        for control in ("\x1b", "\x07", "\0", "\x7f"):
            self.write("mine.nii.txt", "1\ta\n2\tb%sc\n" % control)
            for command in ("list", "info"):
                result = self.end_with(1, command, self.dipoles, "--atlas", self.atlas, *HEAD)
                self.assertIn("line 2: there is a control character in it", result.err)


class Refusals(AtlasTest):
    def test_what_is_missing_is_said(self):
        for options, words in (
                ((), "the fiducial points of the head (--mri, --fiducials) and the way from the scanner to MNI (--mni)"),
                (HEAD[:2], "an atlas needs the way from the scanner to MNI (--mni)"),
                (HEAD[2:], "an atlas needs the fiducial points of the head (--mri, --fiducials)")):
            for command in ("list", "info"):
                result = self.end_with(1, command, self.dipoles, "--atlas", self.atlas, *options)
                self.assertIn(words, result.err)
                self.assertEqual(result.out, "")

    def test_another_mni_space_is_warned_of(self):
        path = self.write("aal.nii", atlas())
        for space, is_same in (("colin27", True), ("mni152", False), ("mni305", False), (None, False)):
            options = () if space is None else ("--mni-space", space)
            err = self.succeed("list", self.dipoles, "--atlas", path, *HEAD, *options).err
            self.assertEqual("warning: places are in" not in err, is_same, space)
            self.assertEqual("the atlas aal is in Colin27: its labels may be some mm off" in err, not is_same)

    def test_images_that_would_mislead_are_refused(self):
        for name, data, words in (
                ("JHU-WhiteMatter-labels-1mm.nii", atlas(), "is mirrored"), ("inia19-x.nii", atlas(), "monkey"),
                ("q.nii", atlas(sform=0), "no sform"), ("t.nii", atlas(volumes=2), "several volumes"),
                ("e.nii", atlas(cells=bytes(28)), "no voxel of it has a label"), ("s.nii", atlas()[:999], "cut off"),
                ("p.nii", atlas(cells=bytes(range(1, 29))), "looks like a picture"), ("x.nii", b"x" * 400, "not a NIfTI")):
            err = self.refusal("list", self.dipoles, "--atlas", self.write(name, data), *HEAD)
            self.assertIn(words, err)
            self.assertIn(name, err)

    def test_an_atlas_that_is_not_there_is_told(self):
        self.assertIn("none.nii", self.refusal("list", self.dipoles, "--atlas", self.path("none.nii"), *HEAD))
        self.assertIn("none.txt", self.refusal("list", self.dipoles, "--atlas",
                                               self.atlas + "," + self.path("none.txt"), *HEAD))


class Pictures(AtlasTest):
    def draw(self, *options, code=0):
        return self.end_with(code, "draw", self.dipoles, "--mri", head_volume(self.path("head.nii")),
                             "--fiducials", LEFT_FIRST, "--mm-per-pixel", "1", "--force", "-o", self.path("out.png"),
                             *options)

    def size(self):
        with open(self.path("out.png"), "rb") as file:
            picture = Png(file.read())
        return picture.width, picture.height

    def test_captions_take_room_of_their_own(self):
        for options in ((), ("--slice", "axial:58"), ("--3d",), ("--slices-through", "all")):
            self.draw(*options)
            plain = self.size()
            self.draw("--atlas", self.atlas, "--mni", "identity", *options)
            self.assertEqual(self.size()[0], plain[0])
            self.assertGreater(self.size()[1], plain[1], options)

    def test_captions_hold_the_labels(self):
        def picture(label, *options):
            self.write("mine.nii.txt", "1 %s\n2 Side_R\n" % label)
            self.draw("--atlas", self.atlas, "--mni", "identity", *options)
            with open(self.path("out.png"), "rb") as file:
                return file.read()

        for options in ((), ("--slice", "axial:58"), ("--3d",), ("--slices-through", "all")):
            self.assertTrue(picture("Side_L", *options) != picture("Left_X", *options), options)
        self.dipoles = self.table([(0.0, 90.0, 0.0)])  # farther than any label
        self.assertTrue(picture("Side_L", "--3d") == picture("Left_X", "--3d"))

    def test_a_picture_without_the_way_to_mni_has_no_places(self):
        self.assertIn("--mni", self.draw("--atlas", self.atlas, code=1).err)
        self.draw("--mni", "identity", code=2)
        self.assertFalse(os.path.exists(self.path("out.png")))

    def test_another_space_is_warned_of(self):
        path = self.write("aal.nii", atlas())
        self.assertIn("some mm off", self.draw("--atlas", path, "--mni", "identity", "--mni-space", "mni152").err)
        self.assertNotIn("some mm off", self.draw("--atlas", path, "--mni", "identity", "--mni-space", "colin27").err)


if __name__ == "__main__":
    unittest.main()
