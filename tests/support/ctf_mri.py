"""Writes CTF MRI files, byte by byte: a header of 1028 bytes (2.x) or tags (4.x), then sagittal slices.

Points and voxels are numbers along the axes sagittal, coronal, axial, from 1, in the order in which they are stored.
"""

import array
import struct
import sys

HEADER = ">32s4h3f9h2x4fh64s64s32s32s32s32s32s2x6f2h256s64s6f2hf16f202s2x"
NO_MATRIX = [0.0] * 16


class Head:
    """A picture of n x n x n voxels with its points; `voxels` maps (s, c, a) to values, all others are 0."""

    def __init__(self, size, spacing=(1.0, 1.0, 1.0), nasion=(0, 0, 0), left=(0, 0, 0), right=(0, 0, 0)):
        self.size, self.bytes, self.clipping, self.orientation = size, 2, 4095, 0
        self.spacing, self.nasion, self.left, self.right = spacing, nasion, left, right
        self.matrix = NO_MATRIX
        self.version = "2.2"
        self.voxels = {}
        self.image = None  # array of all values, instead of voxels

    def values(self):
        """All voxels in stored order: coronal fastest, then axial, then sagittal."""
        n = self.size
        if self.image is not None:
            return self.image
        values = array.array("H" if self.bytes == 2 else "B", bytes(n ** 3 * self.bytes))
        for (s, c, a), value in self.voxels.items():
            values[((s - 1) * n + (a - 1)) * n + (c - 1)] = value
        return values

    def data(self):
        values = array.array("H" if self.bytes == 2 else "B", self.values())
        if self.bytes == 2 and sys.byteorder == "little":
            values.byteswap()
        return values.tobytes()

    def mirrored(self):
        """The same head stored from the patient's right to the left."""
        n = self.size
        other = Head(n, self.spacing, *(((n + 1 - p[0]), *p[1:]) for p in (self.nasion, self.left, self.right)))
        other.bytes, other.orientation = self.bytes, 1
        values = self.values()
        other.image = array.array(values.typecode)
        for s in reversed(range(n)):
            other.image.extend(values[s * n * n:(s + 1) * n * n])
        return other


def head_matrix(head):
    """From head coordinates in voxels to voxel numbers; for voxels of one size."""
    def minus(a, b):
        return [x - y for x, y in zip(a, b)]

    def unit(a):
        size = sum(x * x for x in a) ** 0.5
        return [x / size for x in a]

    def cross(a, b):
        return [a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]]

    origin = [(x + y) / 2 for x, y in zip(head.left, head.right)]
    front = unit(minus(head.nasion, origin))
    up = unit(cross(front, minus(head.left, origin)))
    left = cross(up, front)
    return [number for row in zip(front, left, up, origin) for number in row] + [0.0, 0.0, 0.0, 1.0]


def version2(head):
    texts = [b""] * 7
    return struct.pack(
        HEADER, f"CTF_MRI_FORMAT VER {head.version}".encode(), head.size, head.bytes, head.clipping,
        head.orientation, *head.spacing, *head.nasion, *head.left, *head.right, 0.0, 0.0, 50.0, 80.0, 0, *texts,
        *[0.0] * 6, 0, 0, b"", b"", *[0.0] * 6, 1, 1, 1.0, *head.matrix, bytes(202)) + head.data()


def tag(name, kind, value=b""):
    """One tag: kind 10 a text, 3 bytes, 6 and 5 whole numbers of two and four bytes, 4 a number of eight."""
    start = struct.pack(">i", len(name)) + name.encode() + struct.pack(">i", kind)
    if kind in (3, 10):
        data = value.encode() if isinstance(value, str) else value
        return start + struct.pack(">i", len(data)) + data
    return start + struct.pack({6: ">h", 5: ">i", 4: ">d", 7: ">H"}[kind], value)


END = struct.pack(">i", 15) + b"EndOfParameters"


def numbers(values):
    return "\\".join(f"{value:.10f}" for value in values)


def tags4(head):
    """The tags of a file in their usual order, name by name, each as bytes; slices come last."""
    data, size = head.data(), head.size ** 2 * head.bytes
    origin = [(x + y) / 2 for x, y in zip(head.left, head.right)]
    tags = [
        ("_CTFMRI_VERSION", 10, f"CTF_MRI_FORMAT VER {head.version}"), ("_CTFMRI_UID", 10, "1.2.3"),
        ("_HDM_NASION", 10, numbers(head.nasion)), ("_HDM_LEFTEAR", 10, numbers(head.left)),
        ("_HDM_RIGHTEAR", 10, numbers(head.right)), ("_HDM_DEFAULTSPHERE", 10, numbers((0, 0, 50, 80))),
        ("_CTFMRI_ROTATE", 10, numbers((0, 0, 0))), ("_CTFMRI_SIZE", 6, head.size),
        ("_CTFMRI_DATASIZE", 6, head.bytes), ("_CTFMRI_MMPERPIXEL", 10, numbers(head.spacing)),
        ("_HDM_HEADORIGIN", 10, numbers(origin)), ("_CTFMRI_ORTHOGONALFLAG", 6, 1),
        ("_CTFMRI_INTERPOLATEDFLAG", 6, 1), ("_CTFMRI_TRANSFORMMATRIX", 10, numbers(head.matrix)),
        ("_CTFMRI_COMMENT", 10, "made up "), ("_VOILUT_WINDOWWIDTH", 4, 4095.0),
        ("_IMAGEPLANE_ORIENTATION", 5, 1), ("_DICOMSOURCE_SLICE_LOCATION", 10, "1"),
        ("_DICOMSOURCE_SLICE_LOCATION", 10, "2")]
    tags += [(f"_CTFMRI_SLICE_DATA#{i + 1:05}", 3, data[i * size:(i + 1) * size]) for i in range(head.size)]
    return [(name, tag(name, kind, value)) for name, kind, value in tags]


def join4(tags):
    return b"WS1_" + b"".join(data for _, data in tags) + END


def version4(head):
    return join4(tags4(head))
