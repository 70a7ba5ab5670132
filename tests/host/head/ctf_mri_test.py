#!/usr/bin/env python3
"""The CTF MRI reader against files written byte by byte, and against frames made apart from it.

HEAD_DUMP names the program that prints what the reader found.
"""

import gzip
import os
import struct
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "support"))
import ctf_mri  # noqa: E402

DUMP = os.environ["HEAD_DUMP"]
SIZE = 24
MM = 10.0


def head(spacing=(MM, MM, MM)):
    """A head of 240 mm: ears 150 mm apart, the nasion 96 mm before them."""
    made = ctf_mri.Head(SIZE, spacing, nasion=(13, 4, 12), left=(5, 13, 15), right=(20, 13, 14))
    made.version = "2.2"
    made.voxels = {made.nasion: 1001, made.left: 1002, made.right: 1003, (8, 6, 5): 1004}  # the last: left, front, up
    return made


def changed(**members):
    made = head()
    for name, value in members.items():
        setattr(made, name, value)
    return made


def ras(made, point):
    """mm right, front and up of the middle of the volume."""
    middle = (made.size + 1) / 2
    return [(point[0] - middle) * made.spacing[0], -(point[1] - middle) * made.spacing[1],
            -(point[2] - middle) * made.spacing[2]]


class CtfMri(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.path = os.path.join(folder.name, "patient.mri")

    def dump(self, data, *options):
        with open(self.path, "wb") as file:
            file.write(data)
        return subprocess.run([DUMP, "--all", *options, self.path], stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                              text=True, check=False)

    def read(self, data, *options):
        done = self.dump(data, *options)
        self.assertEqual(done.returncode, 0, done.stderr)
        found = {}
        for line in done.stdout.splitlines():
            name, _, text = line.partition(" ")
            found[name] = [float(word) for word in text.split()] \
                if name in ("dimensions", "sides", "map", "voxels", "nasion", "left", "right") else text
        return found

    def refused(self, data, *words):
        done = self.dump(data)
        self.assertEqual(done.returncode, 1, done.stdout[:200])
        for word in words:
            self.assertIn(word, done.stderr)

    def value_at(self, found, mm):
        """The voxel at a place in mm of the map that was read."""
        m = found["map"]
        columns = [[m[row * 4 + i] for row in range(3)] for i in range(3)]
        index = []
        for column in columns:  # the columns stand at right angles
            size = sum(x * x for x in column)
            index.append(sum(x * (p - s) for x, p, s in zip(column, mm, m[3::4])) / size)
        i, j, k = (round(value) for value in index)
        width, height, _ = (int(extent) for extent in found["dimensions"])
        self.assertLess(max(abs(value - round(value)) for value in index), 1e-4)
        return found["voxels"][(k * height + j) * width + i]

    def expect_head(self, found, made):
        self.assertEqual(found["sides"], [1.0])
        for point, value in ((made.nasion, 1001), (made.left, 1002), (made.right, 1003), ((8, 6, 5), 1004)):
            self.assertEqual(self.value_at(found, ras(made, point)), value)
        for name in ("nasion", "left", "right"):
            for a, b in zip(found[name], ras(made, getattr(made, name))):
                self.assertAlmostEqual(a, b, places=3)
        self.assertLess(found["left"][0], found["right"][0])
        self.assertEqual(found["frame"], "middle")

    def test_both_versions_put_voxels_and_points_where_they_are(self):
        for spacing in ((MM, MM, MM), (9.0, 9.5, 10.0)):
            made = head(spacing)
            self.expect_head(self.read(ctf_mri.version2(made)), made)
            made.version = "4.1"
            self.expect_head(self.read(ctf_mri.version4(made)), made)
            self.expect_head(self.read(gzip.compress(ctf_mri.version4(made))), made)

    def test_no_axis_is_swapped_or_mirrored(self):
        made = head()
        made.bytes = 1
        n = made.size
        made.image = ctf_mri.array.array("B", ((3 * s + 5 * a + 7 * c) % 251 for s in range(1, n + 1)
                                               for a in range(1, n + 1) for c in range(1, n + 1)))
        for found in (self.read(ctf_mri.version2(made)), self.read(ctf_mri.version2(made.mirrored()))):
            for point in ((1, 2, 3), (n, 2, 3), (1, n, 3), (1, 2, n), (5, 17, 9)):
                s, c, a = point
                self.assertEqual(self.value_at(found, ras(made, point)), (3 * s + 5 * a + 7 * c) % 251)

    def test_mirrored_storage_gives_the_same_patient(self):
        for number_of_bytes in (1, 2):
            made = changed(bytes=number_of_bytes, voxels={(8, 6, 5): 200})
            straight, mirrored = self.read(ctf_mri.version2(made)), self.read(ctf_mri.version2(made.mirrored()))
            for name in ("dimensions", "sides", "map", "voxels", "nasion", "left", "right"):
                self.assertEqual(straight[name], mirrored[name])

    def test_two_bytes_have_no_sign(self):
        made = changed(voxels={(8, 6, 5): 65535})
        self.assertEqual(max(self.read(ctf_mri.version2(made))["voxels"]), 65535)

    def test_order_of_tags_does_not_matter(self):
        made = changed(version="4.0")
        tags = ctf_mri.tags4(made)
        self.expect_head(self.read(ctf_mri.join4(tags[::-1])), made)

    def test_bytes_behind_the_last_voxel_do_not_matter(self):
        self.expect_head(self.read(ctf_mri.version2(head()) + b"more"), head())

    def test_ears_that_contradict_the_storage_are_refused_with_both_numbers(self):
        exchanged = changed(left=(20, 13, 14), right=(5, 13, 15))
        self.refused(ctf_mri.version2(exchanged), "left on left", "20", "5", "exchanged")
        exchanged.version = "4.1"
        self.refused(ctf_mri.version4(exchanged), "left ear in sagittal slice 20, right ear in 5")
        self.refused(ctf_mri.version2(changed(orientation=1)), "left on right", "left ear in sagittal slice 5", "20")

    def test_without_usable_points_no_dipole_may_be_placed(self):
        for made, word in ((changed(nasion=(0, 0, 0), left=(0, 0, 0), right=(0, 0, 0)), "no fiducial points are set"),
                           (changed(right=(5, 13, 14)), "ears do not tell the sides"),
                           (changed(nasion=(13, 26, 12)), "13 26 12"), (changed(nasion=(-1, 4, 12)), "-1 4 12")):
            for version, write in (("2.2", ctf_mri.version2), ("4.1", ctf_mri.version4)):
                made.version = version
                found = self.read(write(made))
                self.assertIn(word, found["unplaceable"])
                self.assertEqual(found["sides"], [0.0])
                self.assertNotIn("nasion", found)
        made = changed(version="4.1")
        found = self.read(ctf_mri.join4([tag for tag in ctf_mri.tags4(made) if tag[0] != "_HDM_LEFTEAR"]))
        self.assertIn("lacks a fiducial point", found["unplaceable"])

    def test_points_that_do_not_lie_in_front_and_up_are_refused(self):
        self.refused(ctf_mri.version2(changed(nasion=(13, 22, 12))), "nasion")
        turned = changed(nasion=(21, 5, 12), left=(12, 16, 12), right=(14, 4, 12))
        self.refused(ctf_mri.version2(turned), "contradict the storage", "21 5 12")

    def test_points_of_no_usual_head_are_asked_about(self):
        for made, word in ((changed(left=(2, 13, 15), right=(23, 13, 14)), "210."),
                           (changed(left=(10, 13, 14), right=(15, 13, 14)), "50.0 mm"),
                           (changed(nasion=(13, 9, 14)), "40.6 mm, where heads have 60 to 140"),
                           (changed(nasion=(13, 10, 21)), "before the ears' middle by 30.0 mm")):
            found = self.read(ctf_mri.version2(made))
            self.assertIn(word, found["remark2"])

    def test_usual_head_has_nothing_but_a_note(self):
        found = self.read(ctf_mri.version2(changed(matrix=ctf_mri.head_matrix(head()))))
        self.assertNotIn("remark1", found)
        self.assertNotIn("remark2", found)
        self.assertIn("left ear in sagittal slice 5, right ear in 20", found["remark0"])
        self.assertIn("agrees with the points within 0.00 voxels", found["matrix"])

    def test_matrix_of_unequal_voxels_agrees_by_either_reading(self):
        made = head((9.0, 9.5, 10.0))
        mm = ctf_mri.Head(1, nasion=[a * b for a, b in zip(made.nasion, made.spacing)],
                          left=[a * b for a, b in zip(made.left, made.spacing)],
                          right=[a * b for a, b in zip(made.right, made.spacing)])
        made.matrix = ctf_mri.head_matrix(mm)
        for row in range(3):
            made.matrix[row * 4 + 3] /= made.spacing[row]
        self.assertIn("agrees", self.read(ctf_mri.version2(made))["matrix"])

    def test_matrix_that_misses_the_points_is_doubtful_and_not_used(self):
        t = ctf_mri.head_matrix(head())
        transposed = [t[4 * column + row] for row in range(4) for column in range(4)]
        negated = [-x if 4 <= i < 12 and i % 4 < 3 else x for i, x in enumerate(t)]
        shifted = [x + 2 if i == 3 else x for i, x in enumerate(t)]
        in_mm = [x / MM if i < 12 and i % 4 < 3 else x for i, x in enumerate(t)]
        in_mm_by_columns = [in_mm[4 * column + row] for row in range(4) for column in range(4)]
        for matrix, word in ((transposed, "rows are read as columns"), (negated, "change their sign"),
                             (in_mm, "it fits them as a matrix in mm"),
                             (in_mm_by_columns, "it fits them as a matrix in mm"),
                             (shifted, "misses the points by 2.0 voxels")):
            for version, write in (("2.2", ctf_mri.version2), ("4.1", ctf_mri.version4)):
                made = changed(matrix=matrix, version=version)
                found = self.read(write(made))
                self.assertIn(word, found["remark1"])
                self.expect_head(found, made)

    def test_matrix_of_the_other_sides_is_refused(self):
        exchanged = changed(left=(20, 13, 14), right=(5, 13, 15))
        made = changed(matrix=ctf_mri.head_matrix(exchanged))
        self.refused(ctf_mri.version2(made), "head matrix has left and right the other way round", "5", "20")

    def test_pictures_that_make_no_sense_are_refused(self):
        nan = float("nan")
        for members, word in (({"orientation": 2}, "orientation: 2"), ({"spacing": (0.0, 1, 1)}, "voxels of 0 mm"),
                              ({"spacing": (1, -1.0, 1)}, "voxels of -1 mm"), ({"spacing": (1, 1, nan)}, "nan"),
                              ({"spacing": (1, 1, 11.0)}, "voxels of 11 mm")):
            self.refused(ctf_mri.version2(changed(**members)), word)
        whole = ctf_mri.version2(head())
        for number, place, word in ((3, 34, "3 bytes a voxel"), (1, 32, "image size 1"), (513, 32, "513"),
                                    (-24, 32, "-24"), (SIZE << 8, 32, "image size"), (0, 34, "0 bytes a voxel")):
            self.refused(whole[:place] + struct.pack(">h", number) + whole[place + 2:], word)
        swapped = whole[:32] + struct.pack("<h", 256) + whole[34:]
        self.refused(swapped, "the other byte order", "1")

    def test_versions_of_unknown_layout_are_refused(self):
        for version in ("1.0", "2.0", "2.3", "3.0", ""):
            self.refused(ctf_mri.version2(changed(version=version)), "layout is not known")
        self.refused(ctf_mri.version2(changed(version="2.1")), "2.1", "asked for")
        self.refused(ctf_mri.version4(changed(version="5.0")), "names no version 4.x")

    def test_version_2_1_is_read_when_asked_for_without_its_matrix(self):
        made = changed(version="2.1", matrix=[7.0] * 16)
        found = self.read(ctf_mri.version2(made), "--ctf-2.1")
        self.expect_head(found, made)
        self.assertEqual(found["matrix"], "none in this version")

    def test_every_truncation_is_refused(self):
        made = changed(size=4, spacing=(10.0, 10.0, 10.0), voxels={}, nasion=(0, 0, 0), left=(0, 0, 0),
                       right=(0, 0, 0))
        whole = ctf_mri.version2(made)
        self.read(whole)
        for size in [*range(19, 60), 1027, 1028, 1029, len(whole) - 1]:
            self.refused(whole[:size], "")
        self.refused(whole[:-1], str(len(whole) - 1), str(len(whole)))
        self.refused(whole[:900], "900 of 1028 bytes")
        self.refused(gzip.compress(whole[:-1]), "cut off")
        packed = gzip.compress(whole)
        self.refused(packed[:-8] + bytes(4) + packed[-4:], "damaged")  # the check sum behind the voxels
        made.version = "4.1"
        whole = ctf_mri.version4(made)
        self.read(whole)
        for size in range(5, len(whole), 3):
            self.refused(whole[:size], "")
        self.refused(gzip.compress(whole[:-10]), "cut off")

    def test_tags_that_make_no_sense_are_refused(self):
        made = changed(version="4.1")
        tags = ctf_mri.tags4(made)
        for extra, words in (
                (struct.pack(">i", 4) + b"WHAT" + struct.pack(">i", 14), ("WHAT", "14")),
                (struct.pack(">i", 4) + b"WHAT" + struct.pack(">ii", 10, -1), ("WHAT", "-1")),
                (struct.pack(">i", 4) + b"WHAT" + struct.pack(">ii", 3, 2 ** 31 - 1), ("WHAT", "2147483647")),
                (struct.pack(">i", 5) + b"\x1b[31m" + struct.pack(">i", 14), ("the tag ?[31m",)),
                (ctf_mri.tag("_CTFMRI_SLICE_DATA#00025", 3, bytes(2 * 512 * 512 + 1)), ("524289 bytes long",)),
                (struct.pack(">i", 0), ("0 bytes",)), (struct.pack(">i", 257) + b"x" * 257, ("257",)),
                (ctf_mri.tag("_CTFMRI_SIZE", 6, SIZE), ("_CTFMRI_SIZE", "twice")),
                (ctf_mri.tag("_CTFMRI_SLICE_DATA#00003", 3, b""), ("#00003", "twice")),
                (ctf_mri.tag("_CTFMRI_SLICE_DATA#00513", 3, b""), ("#00513",)),
                (ctf_mri.tag("_CTFMRI_SLICE_DATA#00000", 3, b""), ("#00000", "no picture")),
                (ctf_mri.tag("_CTFMRI_SLICE_DATA#00025", 3, b""), ("slice 25",))):
            self.refused(ctf_mri.join4(tags + [("", extra)]), *words)
            self.refused(gzip.compress(ctf_mri.join4(tags + [("", extra)])), *words[:1])
        for name in ("_CTFMRI_VERSION", "_CTFMRI_SIZE", "_CTFMRI_DATASIZE", "_CTFMRI_MMPERPIXEL"):
            self.refused(ctf_mri.join4([tag for tag in tags if tag[0] != name]), name, "missing")
        self.refused(ctf_mri.join4([tag for tag in tags if tag[0] != "_CTFMRI_SLICE_DATA#00007"]),
                     "slice 7 of 24 is missing")
        for name, kind, value, word in (("_HDM_NASION", 10, "1\\2", "three numbers"), ("_HDM_NASION", 6, 1, "type is 6"),
                                        ("_CTFMRI_TRANSFORMMATRIX", 10, "1\\2", "16 numbers"),
                                        ("_CTFMRI_SLICE_DATA#00002", 3, b"abc", "3 bytes instead of"),
                                        ("_CTFMRI_MMPERPIXEL", 10, "nan\\1\\1", "three numbers"),
                                        ("_CTFMRI_VERSION", 10, "x" * 70000, "70000")):
            other = [(n, ctf_mri.tag(name, kind, value) if n == name else data) for n, data in tags]
            self.refused(ctf_mri.join4(other), name.replace("_CTFMRI_SLICE_DATA#00002", "slice 2"), word)


if __name__ == "__main__":
    unittest.main()
