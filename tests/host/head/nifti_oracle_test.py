#!/usr/bin/env python3
"""The reader's voxels and maps against those of nifti_tool, for files written here byte by byte.

HEAD_DUMP names the program that prints what the reader found; nifti_tool is in Debian's package nifti-bin.
"""

import gzip
import itertools
import math
import os
import random
import re
import shutil
import struct
import subprocess
import sys
import tempfile
import unittest

DUMP = os.environ.get("HEAD_DUMP", "")
TOOL = shutil.which("nifti_tool")

# code: struct letter, smallest and largest value to try
TYPES = {
    2: ("B", 0, 255),
    256: ("b", -128, 127),
    4: ("h", -32768, 32767),
    512: ("H", 0, 65535),
    8: ("i", -(2**31), 2**31 - 1),
    768: ("I", 0, 2**32 - 1),
    1024: ("q", -(2**53), 2**53),
    1280: ("Q", 0, 2**53),
    16: ("f", -1e6, 1e6),
    64: ("d", -1e6, 1e6),
}
DIMENSIONS = (3, 4, 2)
# nifti_tool reads this type but does not print it: the values are held against those written.
UNPRINTED = 1280
MM_PER_UNIT = {0: 1.0, 1: 1000.0, 2: 1.0, 3: 0.001}


def write(path, version, order, code, values, **fields):
    """Writes a file; fields: qform_code sform_code pixdim quatern qoffset srow scl units volumes."""
    pixdim = fields.get("pixdim", (1.0, 1.0, 1.0, 1.0))
    pixdim = tuple(pixdim) + (0.0,) * (8 - len(pixdim))
    volumes = fields.get("volumes", 1)
    dim = (4 if volumes > 1 else 3, *DIMENSIONS, volumes, 1, 1, 1)
    bits = 8 * struct.calcsize("<" + TYPES[code][0])
    quatern = fields.get("quatern", (0.0, 0.0, 0.0))
    qoffset = fields.get("qoffset", (0.0, 0.0, 0.0))
    srow = fields.get("srow", (1.0, 0, 0, 0, 0, 1.0, 0, 0, 0, 0, 1.0, 0))
    qform, sform = fields.get("qform_code", 0), fields.get("sform_code", 0)
    units, scl = fields.get("units", 2), fields.get("scl", (0.0, 0.0))
    if version == 1:
        header = bytearray(352)

        def put(place, form, *numbers):
            struct.pack_into(order + form, header, place, *numbers)

        put(0, "i", 348)
        put(40, "8h", *dim)
        put(70, "2h", code, bits)
        put(76, "8f", *pixdim)
        put(108, "3f", 352.0, *scl)
        put(123, "B", units)
        put(252, "2h", qform, sform)
        put(256, "6f", *quatern, *qoffset)
        put(280, "12f", *srow)
        header[344:348] = b"n+1\0"
    else:
        header = bytearray(544)

        def put(place, form, *numbers):
            struct.pack_into(order + form, header, place, *numbers)

        put(0, "i", 540)
        header[4:12] = b"n+2\0\r\n\x1a\n"
        put(12, "2h", code, bits)
        put(16, "8q", *dim)
        put(104, "8d", *pixdim)
        put(168, "q", 544)
        put(176, "2d", *scl)
        put(344, "2i", qform, sform)
        put(352, "6d", *quatern, *qoffset)
        put(400, "12d", *srow)
        put(500, "i", units)
    data = bytes(header) + struct.pack(order + str(len(values)) + TYPES[code][0], *values)
    with open(path, "wb") as file:
        file.write(gzip.compress(data) if path.endswith(".gz") else data)


def run(*command):
    return subprocess.run(command, check=True, stdout=subprocess.PIPE, text=True).stdout


def ours(path):
    lines = dict(line.split(" ", 1) for line in run(DUMP, path).splitlines())
    return {name: [float(word) for word in text.split()] for name, text in lines.items()}


def printed_voxels(path):
    text = run(TOOL, "-disp_ci", "-1", "-1", "-1", "0", "0", "0", "0", "-infiles", path)
    return [float(word) for word in re.findall(r"[-+.\w]+", text.split(")", 1)[1])]


def theirs(path, written=None):
    """What nifti_tool finds, scaled and in mm, which it does not do; `written`: voxels it cannot print."""
    names = ("nx", "ny", "nz", "qform_code", "sform_code", "scl_slope", "scl_inter", "xyz_units", "qto_xyz",
             "sto_xyz")
    options = itertools.chain.from_iterable(("-field", name) for name in names)
    found = {}
    for line in run(TOOL, "-disp_nim", *options, "-infiles", path).splitlines():
        words = line.split()
        if words and words[0] in names:
            found[words[0]] = [float(word) for word in words[3:]]
    raw = [float(value) for value in written] if written else printed_voxels(path)
    slope, intercept = found["scl_slope"][0], found["scl_inter"][0]
    if slope != 0.0:
        raw = [value * slope + intercept for value in raw]
    scale = MM_PER_UNIT[int(found["xyz_units"][0])]
    matrix = found["sto_xyz"] if found["sform_code"][0] > 0 else found["qto_xyz"]
    stated = found["sform_code"][0] > 0 or found["qform_code"][0] > 0
    return {
        "dimensions": [found[name][0] for name in ("nx", "ny", "nz")],
        "sides": [1.0 if stated else 0.0],
        "map": [value * scale for value in matrix[:12]],
        "voxels": raw,
    }


class NiftiOracle(unittest.TestCase):
    def setUp(self):
        self.random = random.Random(20061206)
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)

    def path(self, name="head.nii"):
        return os.path.join(self.folder.name, name)

    def values(self, code, count):
        letter, low, high = TYPES[code]
        if letter in "fd":
            return [low, high] + [self.random.uniform(low, high) for _ in range(count - 2)]
        return [low, high] + [self.random.randint(low, high) for _ in range(count - 2)]

    def compare(self, path, written=None):
        mine, other = ours(path), theirs(path, written)
        self.assertEqual(mine["dimensions"], other["dimensions"])
        self.assertEqual(mine["sides"], other["sides"])
        self.assertEqual(len(mine["map"]), 12)
        for a, b in zip(mine["map"], other["map"]):
            # nifti_tool prints six decimals.
            self.assertTrue(math.isclose(a, b, rel_tol=2e-6, abs_tol=2e-6 * self.print_scale), (a, b))
        self.assertEqual(len(mine["voxels"]), len(other["voxels"]))
        for a, b in zip(mine["voxels"], other["voxels"]):
            self.assertTrue(math.isclose(a, b, rel_tol=1e-6, abs_tol=1e-6), (a, b))

    print_scale = 1.0

    def test_every_type_order_version_and_packing(self):
        count = math.prod(DIMENSIONS)
        for version, order, code, name in itertools.product(
                (1, 2), "<>", TYPES, ("head.nii", "packed.nii.gz")):
            with self.subTest(version=version, order=order, code=code, name=name):
                values = self.values(code, count)
                write(self.path(name), version, order, code, values, sform_code=1)
                self.compare(self.path(name), values if code == UNPRINTED else None)

    def test_scaling(self):
        for version, order, scl in itertools.product((1, 2), "<>", ((2.5, -7.0), (0.0, 9.0), (-0.5, 100.0))):
            with self.subTest(version=version, order=order, scl=scl):
                write(self.path(), version, order, 4, self.values(4, 24), sform_code=1, scl=scl)
                self.compare(self.path())

    def test_sforms(self):
        for version, order in itertools.product((1, 2), "<>"):
            for _ in range(10):
                srow = [self.random.uniform(-200, 200) for _ in range(12)]
                write(self.path(), version, order, 2, self.values(2, 24), sform_code=2, qform_code=1,
                      srow=srow)
                self.compare(self.path())

    def test_qforms(self):
        for version, order, qfac in itertools.product((1, 2), "<>", (-1.0, 0.0, 1.0)):
            for _ in range(10):
                axis = [self.random.gauss(0, 1) for _ in range(4)]
                size = math.sqrt(sum(part * part for part in axis)) * (1 if axis[0] > 0 else -1)
                spacing = [self.random.uniform(0.3, 6) for _ in range(3)]
                write(self.path(), version, order, 2, self.values(2, 24), qform_code=1,
                      quatern=[part / size for part in axis[1:]], pixdim=(qfac, *spacing),
                      qoffset=[self.random.uniform(-200, 200) for _ in range(3)])
                self.compare(self.path())

    def test_half_turns(self):
        for quatern in ((1.0, 0, 0), (0, 1.0, 0), (0, 0, 1.0), (0.6, 0.8, 0), (0.6001, 0.8001, 0)):
            for version in (1, 2):
                with self.subTest(quatern=quatern, version=version):
                    write(self.path(), version, "<", 2, self.values(2, 24), qform_code=1, quatern=quatern)
                    self.compare(self.path())

    def test_voxel_size_alone(self):
        for version, order in itertools.product((1, 2), "<>"):
            write(self.path(), version, order, 2, self.values(2, 24), pixdim=(1.0, 0.9, 1.1, 2.5))
            self.compare(self.path())

    def test_units(self):
        for version, units in itertools.product((1, 2), MM_PER_UNIT):
            with self.subTest(version=version, units=units):
                self.print_scale = max(1.0, MM_PER_UNIT[units])
                srow = [value / MM_PER_UNIT[units] for value in (1.5, 0, 0, -90, 0, 2, 0, -120, 0, 0, 3, -70)]
                write(self.path(), version, "<", 2, self.values(2, 24), sform_code=1, srow=srow, units=units)
                self.compare(self.path())

    def test_first_of_several_volumes(self):
        for version, name in itertools.product((1, 2), ("head.nii", "packed.nii.gz")):
            write(self.path(name), version, ">", 512, self.values(512, 72), sform_code=1, volumes=3)
            self.compare(self.path(name))


if __name__ == "__main__":
    if not TOOL:
        sys.exit("nifti_tool is not installed")
    unittest.main()
