#!/usr/bin/env python3
"""The MGH reader against nibabel (Debian's python3-nibabel), for files that nibabel wrote and such that it did not.

HEAD_DUMP names the program that prints what the reader found.
"""

import gzip
import itertools
import os
import struct
import subprocess
import tempfile
import unittest

import nibabel
import numpy

DUMP = os.environ["HEAD_DUMP"]
AXES = [(-1.0, 0, 0), (0, 0, -1.0), (0, 1.0, 0)]


def mgh(dims=(2, 3, 4), frames=1, kind=0, good=1, spacing=(1.0, 3.0, 2.0), axes=AXES, centre=(9.0, -1.0, 2.5),
        version=1, data=None):
    header = struct.pack(">7ih15f", version, *dims, frames, kind, 0, good, *spacing, *itertools.chain(*axes), *centre)
    size = {0: 1, 1: 4, 3: 4, 4: 2, 10: 2}.get(kind, 1)
    count = dims[0] * dims[1] * dims[2] * max(frames, 0)
    return header.ljust(284, b"\0") + (bytes(range(count * size % 251)) if data is None else data)


class MghOracle(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = folder.name

    def dump(self, path):
        return subprocess.run([DUMP, "--all", path], stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True,
                              check=False)

    def write(self, data, name="head.mgh"):
        path = os.path.join(self.folder, name)
        with open(path, "wb") as file:
            file.write(data)
        return path

    def read(self, path):
        done = self.dump(path)
        self.assertEqual(done.returncode, 0, done.stderr)
        found = {}
        for line in done.stdout.splitlines():
            name, _, text = line.partition(" ")
            found[name] = [float(word) for word in text.split()] \
                if name in ("dimensions", "sides", "map", "voxels") else text
        return found

    def refused(self, data, word, name="head.mgh"):
        done = self.dump(self.write(data, name))
        self.assertEqual(done.returncode, 1, done.stdout)
        self.assertIn(word, done.stderr)

    def compare(self, path):
        image = nibabel.load(path)
        found = self.read(path)
        data = numpy.asarray(image.dataobj)
        data = data.reshape(data.shape[:3] + (-1,))[..., 0]
        self.assertEqual(found["dimensions"], list(data.shape))
        self.assertTrue((numpy.array(found["voxels"], numpy.float32) == data.ravel(order="F").astype(numpy.float32)).all())
        numpy.testing.assert_allclose(found["map"], image.affine[:3].ravel(), rtol=1e-6, atol=1e-5)
        return found

    def test_every_type_packing_and_number_of_frames(self):
        random = numpy.random.default_rng(7)
        for kind, name, frames in itertools.product((numpy.uint8, numpy.int16, numpy.int32, numpy.float32),
                                                    ("head.mgh", "head.mgz"), (1, 3)):
            with self.subTest(kind=kind, name=name, frames=frames):
                shape = (3, 4, 5) if frames == 1 else (3, 4, 5, frames)
                data = random.uniform(-200 if kind != numpy.uint8 else 0, 200, shape).astype(kind)
                turn, _ = numpy.linalg.qr(random.normal(size=(3, 3)))
                affine = numpy.eye(4)
                affine[:3, :3] = turn * random.uniform(0.5, 3.0, 3)
                affine[:3, 3] = random.uniform(-200, 200, 3)
                path = os.path.join(self.folder, name)
                nibabel.MGHImage(data, affine).to_filename(path)
                found = self.compare(path)
                self.assertEqual(found["sides"], [1.0])
                self.assertEqual(found["format"], name[-3:].upper())
                self.assertEqual("remark0" in found, frames > 1)

    def test_content_tells_not_the_name(self):
        data = mgh()
        for name in ("head.mri", "head.nii.gz", "head"):
            self.assertEqual(self.read(self.write(gzip.compress(data), name))["format"], "MGZ")

    def test_centre_is_that_of_half_the_size(self):
        found = self.compare(self.write(mgh()))
        self.assertEqual(found["map"][3::4], [10.0, -5.0, 7.0])

    def test_numbers_without_sign_of_newer_files(self):
        data = struct.pack(">24H", *range(65512, 65536))
        self.assertEqual(self.read(self.write(mgh(kind=10, data=data)))["voxels"], list(range(65512, 65536)))

    def test_what_stands_behind_the_voxels_does_not_matter(self):
        self.compare(self.write(mgh() + struct.pack(">5f", 2300, 0.1, 3, 900, 256) + b"any"))

    def test_file_without_directions_is_shown_without_sides(self):
        for good in (0, 2, -1):
            found = self.read(self.write(mgh(good=good)))
            self.assertEqual(found["sides"], [0.0])
            self.assertIn("does not know", found["unplaceable"])
            self.assertEqual(found["voxels"], list(range(24)))

    def test_what_makes_no_sense_is_refused(self):
        skew = [(1.0, 0, 0), (0.1, 0.99498744, 0), (0, 0, 1.0)]
        for data, word in ((mgh(version=257), "version 257"), (mgh(dims=(0, 3, 4)), "extent of 0"),
                           (mgh(dims=(-1, 3, 4), data=b""), "extent of -1"), (mgh(frames=0, data=b""), "0 frames"),
                           (mgh(dims=(60000, 60000, 60000), data=b"x"), "too large"), (mgh(kind=2), "type 2"),
                           (mgh(spacing=(1, 0.0, 1)), "voxels of 0 mm"), (mgh(spacing=(1, 1, -1.0)), "-1 mm"),
                           (mgh(spacing=(float("nan"), 1, 1)), "nan"), (mgh(spacing=(1, 1, 11)), "11 mm"),
                           (mgh(axes=[(1.0, 0, 0), (0, 1.01, 0), (0, 0, 1.0)]), "axis 2 has the length"),
                           (mgh(axes=skew), "axes 1 and 2"), (mgh(centre=(0, float("inf"), 0)), "centre"),
                           (mgh(frames=2, data=bytes(47)), "2 volumes need 332 bytes, 331 are there"),
                           (mgh(frames=2 ** 31 - 1, data=bytes(24)), "cut off"),
                           (mgh()[:-1], "23 of 24 bytes"), (mgh()[:200], "within its header"),
                           (mgh(dims=(600, 600, 600), data=b"x" * 9), "9 of 216000000"),
                           (gzip.compress(mgh(dims=(600, 600, 600), data=b"x" * 9)), "9 of 216000000"),
                           (gzip.compress(mgh())[:-4], "cut off")):
            self.refused(data, word)


if __name__ == "__main__":
    unittest.main()
