"""Heads that bring their fiducial points: what is told of them, and dipoles on the MRI that their file names."""

import array
import gzip
import json
import os
import struct
import sys

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "support"))
import ctf_mri  # noqa: E402
from support import Png, ToolTest, head_volume  # noqa: E402

SIZE = 64
MM = 4.0
LEFT_EAR, RIGHT_EAR, NASION = (13, 33, 40), (52, 33, 40), (33, 8, 35)

DIPOLES = """File_Info
{
VERSION: 5.0
PATIENT: Made Up
}
Model
{
MODEL_TYPE: MEG_ONLY
MRI_FILE: %s
}
MEG_Sphere
{
ORIGIN_X: 0
ORIGIN_Y: 0
ORIGIN_Z: 5
RADIUS: 8
}
Fid_Points
{
NASION: %d %d %d
LEFT_EAR: %d %d %d
RIGHT_EAR: %d %d %d
}
Dipoles
{
// xp (cm) yp (cm) zp (cm) xo yo zo Mom(nAm) Label
1: 5.0 4.5 4.0 0 1 0 40 left_front
}
Dipole_FitInfo
{
1: 1 1 0.1 1 2.5 5 0 0 0 1 a
}
"""


def head(left=LEFT_EAR, right=RIGHT_EAR, nasion=NASION):
    """A grey ball, brighter below; the patient's left front is white."""
    made = ctf_mri.Head(SIZE, (MM, MM, MM), nasion, left, right)
    made.bytes = 1
    middle = (SIZE + 1) / 2
    made.image = array.array("B", bytes(SIZE ** 3))
    for s in range(1, SIZE + 1):
        for a in range(1, SIZE + 1):
            for c in range(1, SIZE + 1):
                x, y, z = ((s - middle) * MM, -(c - middle) * MM, -(a - middle) * MM)
                if x * x + y * y + z * z < 9025:
                    white = x < -20 and y > 10
                    made.image[((s - 1) * SIZE + a - 1) * SIZE + c - 1] = 250 if white else 20 + 2 * a
    return made


HEAD = head()


class Heads(ToolTest):
    def dipoles(self, mri, nasion=NASION, left=LEFT_EAR, right=RIGHT_EAR, name="patient.dip"):
        return self.write(name, DIPOLES % (mri, *nasion, *left, *right))

    def patient(self, made=HEAD, mri="patient.mri"):
        self.write("patient.mri", ctf_mri.version2(made))
        return self.dipoles(mri)

    def draw(self, *arguments, code=0):
        return self.end_with(code, "draw", *arguments, "--force", "-o", self.path("patient.png"), "--mm-per-pixel", "1")

    def told(self, *arguments, code=0):
        return json.loads(self.end_with(code, "head", "--json", *arguments).out)[0]


class NamedMri(Heads):
    def test_dipoles_are_drawn_on_the_mri_beside_them_without_another_option(self):
        result = self.draw(self.patient())
        self.assertIn("which %s names" % self.path("patient.dip"), result.err)
        self.assertIn("note (other-head): The fiducial points in the dipole file lie less than 0.1 mm from", result.err)
        whites = self.whites()
        # The white part is the patient's left front: right and above in the axial picture.
        self.assertGreater(whites["right"], 20 * max(1, whites["left"]))
        same = self.picture()
        self.write("patient.mri", ctf_mri.version2(HEAD.mirrored()))
        n = SIZE + 1
        mirrored = [(n - p[0], *p[1:]) for p in (NASION, LEFT_EAR, RIGHT_EAR)]
        self.draw(self.dipoles("patient.mri", *mirrored))
        self.assertEqual(self.picture().rows, same.rows)

    def test_an_mri_without_scanner_coordinates_is_not_in_mni_space_as_it_is(self):
        from test_atlas import atlas
        places = ("--atlas", self.write("mine.nii", atlas()), "--mni", "identity")
        result = self.end_with(1, "draw", self.patient(), *places, "-o", self.path("patient.png"))
        self.assertIn("millimetres around its middle: it is not in MNI space as it is", result.err)
        self.assertFalse(os.path.exists(self.path("patient.png")))

    def picture(self):
        with open(self.path("patient.png"), "rb") as file:
            return Png(file.read())

    def whites(self):
        """How many white pixels of grey stand in the left and in the right half of the first picture."""
        picture = self.picture()
        third, quarter = picture.width // 3, picture.height // 4
        found = [x for x, y in picture.pixels(lambda r, g, b: min(r, g, b) > 240)
                 if x < third and quarter < y < 3 * quarter]
        return {"left": sum(x < third // 2 for x in found), "right": sum(x >= third // 2 for x in found)}

    def test_exchanged_ears_are_refused_with_both_numbers(self):
        result = self.draw(self.patient(head(RIGHT_EAR, LEFT_EAR)), code=1)
        self.assertIn("left ear in sagittal slice 52, right ear in 13", result.err)
        self.assertFalse(os.path.exists(self.path("patient.png")))

    def test_only_the_last_part_of_the_name_counts_and_only_beside_the_dipoles(self):
        for name in ("patient.mri", "/scans/old/patient.mri", "D:\\scans\\patient.mri  ", "PATIENT.MRI",
                     "../patient.mri"):
            self.assertIn("which", self.draw(self.patient(mri=name)).err)
        os.mkdir(self.path("other"))
        os.rename(self.path("patient.mri"), self.path("other/patient.mri"))
        result = self.draw(self.dipoles("other/patient.mri"), code=2)
        self.assertIn("names the MRI patient.mri, which is not beside it", result.err)

    def test_exact_name_comes_before_one_of_other_letters(self):
        self.patient()
        self.write("PATIENT.mri", ctf_mri.version2(head(RIGHT_EAR, LEFT_EAR)))
        self.assertIn("patient.mri, which", self.draw(self.dipoles("patient.mri")).err)
        self.assertIn("exchanged", self.draw(self.dipoles("PATIENT.mri"), code=1).err)
        self.assertIn("not beside it", self.draw(self.dipoles("Patient.mri"), code=2).err)

    def test_none_leaves_it_out_and_another_one_is_taken_instead(self):
        dipoles = self.patient(head(RIGHT_EAR, LEFT_EAR))
        self.assertNotIn("patient.mri", self.draw(dipoles, "--mri", "none", "--3d").err)
        self.draw(dipoles, "--mri", "none", code=2)
        self.write("good.mri", ctf_mri.version2(HEAD))
        self.assertNotIn("MRI: ", self.draw(dipoles, "--mri", self.path("good.mri")).err)

    def test_files_that_name_different_mris_are_refused(self):
        first = self.patient()
        self.write("other.mri", ctf_mri.version2(HEAD))
        second = self.dipoles("other.mri", name="second.dip")
        self.assertIn("name different MRIs", self.draw(first, second, code=1).err)
        self.draw(first, self.dipoles("gone.mri", name="third.dip"))

    def test_distance_of_the_points_is_a_note_doubtful_or_another_head(self):
        self.patient()
        # Voxels have 4 mm.
        for moved, severity, distance in ((0, "note", "less than 0.1"), (1, "doubtful", "up to 4.0"),
                                          (2, "doubtful", "up to 8.0"), (3, "wrong", "up to 12.0")):
            dipoles = self.dipoles("patient.mri", left=(LEFT_EAR[0] + moved, *LEFT_EAR[1:]))
            result = self.draw(dipoles, code=1 if severity == "wrong" else 0)
            self.assertIn("%s (other-head): The fiducial points in the dipole file lie %s mm" %
                          (severity, distance), result.err)
        self.draw(dipoles, "--accept", "other-head")

    def test_an_mri_that_is_given_is_compared_where_nothing_is_drawn_too(self):
        mri = os.path.join(os.path.dirname(self.patient()), "patient.mri")
        other = self.dipoles("other.mri", *((p[0], p[1], p[2] + 13) for p in (NASION, LEFT_EAR, RIGHT_EAR)))
        out = self.path("a.csv")
        for command in (("list",), ("info",), ("check",), ("convert", "-o", out), ("sort", "--by", "moment", "-o", out)):
            result = self.end_with(1, *command, other, "--mri", mri)
            self.assertIn("other-head", result.err + result.out)
        self.assertFalse(os.path.exists(out))
        self.succeed("convert", other, "--mri", mri, "-o", out, "--accept", "other-head")


class Frames(Heads):
    """What the points of a head are taken for where nothing is drawn."""

    NEUROMAG = ("# CoordinateSystem \"Head\"\n# begin end X/mm Y/mm Z/mm Q/nAm Qx/nAm Qy/nAm Qz/nAm g/%\n"
                "1 1 0 60 50 10 10 0 0 90\n")

    def test_millimetres_of_a_ctf_mri_are_never_called_the_scanners(self):
        dipoles = self.patient()
        mri, converted = self.path("patient.mri"), self.path("converted.nii")
        self.succeed("head", mri, "-o", converted)
        for head in (mri, converted):
            for frame in (("scanner",), ("mni", "--mni", "identity")):
                error = self.end_with(1, "list", dipoles, "--mri", head, "--frame", *frame).err
                self.assertIn("around its middle", error)
            self.assertIn("not in MNI space as it is",
                          self.draw(dipoles, "--mri", head, "--atlas", "aal", "--mni", "identity", code=1).err)
            result = self.succeed("convert", dipoles, "--mri", head, "--force", "-o", self.path("a.vtp"))
            self.assertIn("no scanner coordinates", result.err)
            with open(self.path("a.vtp"), encoding="utf-8") as file:
                self.assertIn("FIDUCIALS_MRI_MM", file.read())
            found = json.loads(self.succeed("list", "--json", dipoles, "--mri", head, "--frame", "neuromag").out)
            self.assertIn("fiducials_mri_mm", found)
        points = "0,90,0 -70,0,0 70,0,0"
        self.succeed("list", dipoles, "--fiducials", points, "--frame", "scanner")
        self.assertIn("around its middle", self.end_with(1, "list", dipoles, "--fiducials", points, "--mri", mri,
                                                         "--frame", "scanner").err)

    def test_an_mri_that_is_to_give_points_says_why_it_does_not(self):
        self.patient()
        self.write("patient.fiducials", "nasion 0 1 2\n")
        dipoles = self.write("neuromag.dip", self.NEUROMAG)
        for arguments in (("list",), ("list", "--frame", "scanner"), ("check",), ("info",)):
            error = self.end_with(1, *arguments, dipoles, "--mri", self.path("patient.mri")).err
            self.assertIn("no line gives the point left", error)
        self.assertIn("symmetric-ears", self.succeed("list", dipoles, "--mri", "none").err)
        self.assertIn("symmetric-ears", self.draw(dipoles, "--mri", "none", "--3d").err)

    def test_unusual_points_carry_neuromags_dipoles_only_for_those_who_know(self):
        self.patient(head(left=(28, 33, 40), right=(36, 33, 40)))
        dipoles = self.write("neuromag.dip", self.NEUROMAG)
        for command in (("list", dipoles), ("draw", dipoles, "--force", "-o", self.path("a.png"))):
            arguments = (*command, "--mri", self.path("patient.mri"))
            self.assertIn("--accept mri-points", self.end_with(1, *arguments).err)
            self.assertNotIn("symmetric-ears", self.succeed(*arguments, "--accept", "mri-points").err)

    def test_points_beside_the_mri_that_cannot_be_read_are_told_though_the_dipoles_bring_some(self):
        self.write("patient.fiducials", "nasion 0 1 2\n")
        self.assertIn("no line gives the point left", self.draw(self.patient(), code=1).err)


class Told(Heads):
    def test_all_is_told_of_a_ctf_mri(self):
        made = head()
        made.matrix = ctf_mri.head_matrix(made)
        path = self.write("a.mri", ctf_mri.version2(made))
        found = self.told(path)
        self.assertEqual((found["format"], found["size_voxels"]), ("CTF MRI 2.2", [SIZE] * 3))
        self.assertEqual(found["spacing_mm"], [MM] * 3)
        self.assertTrue(found["sides_known"])
        self.assertFalse(found["scanner_frame"])
        self.assertEqual(found["fiducials_mm"]["left_ear"], [-78.0, -2.0, -30.0])
        self.assertIn("agrees with the points", found["matrix"])
        self.assertEqual([(f["severity"], f["code"]) for f in found["findings"]], [("note", "mri-points")])
        text = self.succeed("head", path).out
        for word in ("64 x 64 x 64", "left on left", "-78.00  -2.00  -30.00", "left ear in sagittal slice 13"):
            self.assertIn(word, text)

    def test_all_is_told_of_other_formats(self):
        path = head_volume(self.path("h.nii.gz"), size=20, spacing=12.0)
        found = self.told(path)
        self.assertEqual((found["format"], found["sides_by"]), ("NIfTI-1", "the file's sform"))
        self.assertIsNone(found["fiducials_mm"])
        self.assertFalse(self.told(head_volume(path, size=20, spacing=12.0, sform=False))["sides_known"])
        mgh = struct.pack(">7ih15f", 1, 2, 2, 2, 1, 0, 0, 0, 1, 1, 1, *[0.0] * 12).ljust(284, b"\0") + bytes(8)
        found = self.told(self.write("a.mgz", gzip.compress(mgh)))
        self.assertEqual(found["format"], "MGZ")
        self.assertIn("does not know", found["unplaceable"])
        self.assertEqual(len(json.loads(self.succeed("head", "--json", path, self.path("a.mgz")).out)), 2)

    def test_converted_head_is_the_same_head(self):
        path = self.write("a.mri", ctf_mri.version2(HEAD.mirrored()))
        for name in ("b.nii", "c.nii.gz"):
            self.succeed("head", path, "-o", self.path(name))
            found, made = self.told(path), self.told(self.path(name))
            for key in ("size_voxels", "spacing_mm", "voxel_to_mm", "fiducials_mm"):
                self.assertEqual(found[key], made[key])
        with open(self.path("b.nii"), "rb") as file:
            data = file.read()
        self.assertEqual(struct.unpack_from("<2h", data, 252), (2, 2))  # not the scanner's millimetres
        with open(self.path("b.fiducials"), encoding="utf-8") as file:
            self.assertIn("# millimetres: around the middle of the volume\n", file.read())
        self.assertIn("there already", self.end_with(1, "head", path, "-o", self.path("b.nii")).err)
        self.succeed("head", path, "-o", self.path("b.nii"), "--force")

    def test_millimetres_are_what_the_code_of_the_file_says_and_stay_so(self):
        path = head_volume(self.path("h.nii.gz"), size=SIZE, spacing=MM)
        with gzip.open(path, "rb") as file:
            data = bytearray(file.read())
        points = "2,98,-10 -78,-2,-30 78,-2,-30"
        for code, said in ((1, "the scanner's"), (2, "another image"), (3, "Talairach"), (4, "MNI")):
            struct.pack_into("<h", data, 254, code)
            path = self.write("code.nii", bytes(data))
            self.assertRegex(self.succeed("head", path).out, r"millimetres +[^\n]*%s[^\n]* \(sform code %d\)\n" % (said, code))
            self.assertEqual(self.told(path)["scanner_frame"], code == 1)
            self.succeed("head", path, "-o", self.path("b.nii"), "--force")
            with open(self.path("b.nii"), "rb") as file:
                self.assertEqual(struct.unpack_from("<2h", file.read(), 252), (code, code))
            listed = json.loads(self.succeed("list", "--json", self.dipoles("none"), "--mri", path, "--fiducials", points,
                                             "--frame", "scanner").out)
            self.assertEqual("scanner: x right" in listed["frame"], code == 1, listed["frame"])
            self.assertIn(said.split("'")[0].split(" ")[-1], listed["frame"])
            self.draw(self.dipoles("none"), "--mri", path, "--fiducials", points)

    def test_points_around_the_middle_of_a_volume_fit_no_scanner(self):
        self.succeed("head", self.write("a.mri", ctf_mri.version2(HEAD)), "-o", self.path("b.nii"))
        other = head_volume(self.path("h.nii.gz"), size=SIZE, spacing=MM)
        dipoles = self.dipoles("none")
        for mri, code in ((other, 1), (self.path("b.nii"), 0)):
            result = self.draw(dipoles, "--mri", mri, "--fiducials", self.path("b.fiducials"), code=code)
            self.assertEqual("their millimetres are around the middle of the volume" in result.err, code == 1)
        self.assertIn("around its middle", self.end_with(1, "list", dipoles, "--fiducials", self.path("b.fiducials"),
                                                         "--frame", "scanner").err)

    def test_nothing_is_written_where_it_would_lie(self):
        path = self.write("a.mri", ctf_mri.version2(HEAD))
        self.end_with(2, "head", path, "-o", self.path("b.mri"))
        self.end_with(2, "head", path, path, "-o", self.path("b.nii"))
        self.write("b.fiducials", "nasion 0 90 0\nleft -70 0 0\nright 70 0 0\n")
        self.assertIn("b.fiducials", self.end_with(1, "head", path, "-o", self.path("b.nii")).err)
        bare = ctf_mri.Head(4)
        self.assertIn("lies beside it", self.end_with(1, "head", self.write("bare.mri", ctf_mri.version2(bare)), "-o",
                                                      self.path("b.nii"), "--force").err)

    def test_unusual_points_are_taken_only_when_accepted(self):
        path = self.write("patient.mri", ctf_mri.version2(head((26, 33, 40), (39, 33, 40))))
        found = self.told(path, code=1)
        self.assertIsNone(found["fiducials_mm"])
        self.assertEqual(found["findings"][0]["severity"], "wrong")
        self.assertIn("52.0 mm", found["findings"][0]["sentence"])
        self.assertIsNotNone(self.told(path, "--accept", "mri-points")["fiducials_mm"])
        dipoles = self.dipoles("patient.mri", left=(26, 33, 40), right=(39, 33, 40))
        self.assertIn("--accept mri-points takes them", self.draw(dipoles, code=1).err)
        self.draw(dipoles, "--accept", "mri-points")

    def test_head_without_points_shows_no_dipoles(self):
        self.write("patient.mri", ctf_mri.version2(ctf_mri.Head(SIZE, (MM, MM, MM))))
        dipoles = self.dipoles("patient.mri")
        self.assertIn("no fiducial points are set in the file", self.draw(dipoles, code=1).err)
        self.assertIn("no dipoles can be placed", self.draw(
            dipoles, "--fiducials", "0,90,0 -70,0,0 70,0,0", code=1).err)

    def test_old_version_is_read_when_asked_for(self):
        made = head()
        made.version = "2.1"
        path = self.write("patient.mri", ctf_mri.version2(made))
        self.assertIn("--ctf-2.1", self.end_with(1, "head", path).err)
        self.assertEqual(self.told(path, "--ctf-2.1")["matrix"], "none in this version")
        self.draw(self.dipoles("patient.mri"), "--ctf-2.1")
        neuromag = self.write("neuromag.dip", Frames.NEUROMAG)
        for command in (("list",), ("draw", "--force", "-o", self.path("a.png"))):
            arguments = (*command, neuromag, "--mri", path)
            self.assertIn("--ctf-2.1", self.end_with(1, *arguments).err)
            self.assertNotIn("symmetric-ears", self.succeed(*arguments, "--ctf-2.1").err)
