#!/usr/bin/env python3
"""Makes the files of a made-up patient of the T1 head that the examples fit, for the viewer's tour.

    tour_heads.py HEAD.nii.gz EXAMPLES FOLDER

FOLDER gets patient.mri (CTF 2.2) with its points, patient.dip that names it, again.dip whose nasion was set 6 mm
farther up since, and head.mgz with head.fiducials.
"""

import array
import gzip
import re
import struct
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).parent))
import ctf_mri  # noqa: E402

SIZE = 256


class T1:
    """A NIfTI-1 of one byte a voxel whose axes run to the right, front and up in steps of 1 mm."""

    def __init__(self, path):
        raw = gzip.open(path).read()
        self.dim = struct.unpack_from("<3h", raw, 42)
        rows = struct.unpack_from("<12f", raw, 280)
        self.origin = rows[3::4]
        assert rows[0:3] + rows[4:7] + rows[8:11] == (1, 0, 0, 0, 1, 0, 0, 0, 1)
        assert struct.unpack_from("<h", raw, 70)[0] == 2
        start = int(struct.unpack_from("<f", raw, 108)[0])
        self.voxels = raw[start:start + self.dim[0] * self.dim[1] * self.dim[2]]

    def number(self, scanner):
        """Of a CTF MRI: sagittal from the left, coronal from the front, axial from the top; from 1."""
        index = [round(mm - first) for mm, first in zip(scanner, self.origin)]
        border = [(SIZE - n) // 2 for n in self.dim]
        return (index[0] + 1 + border[0], self.dim[1] - index[1] + border[1], self.dim[2] - index[2] + border[2])

    def ctf(self, points):
        width, height, depth = self.dim
        left, front, top = [(SIZE - n) // 2 for n in self.dim]
        empty, before, behind = bytes(SIZE), bytes(front), bytes(SIZE - height - front)
        image = bytearray()
        for i in range(-left, SIZE - left):
            for k in range(depth - 1 + top, depth - 1 + top - SIZE, -1):
                if 0 <= i < width and 0 <= k < depth:
                    first = i + width * height * k
                    column = self.voxels[first:first + width * height:width]
                    image += before + column[::-1] + behind
                else:
                    image += empty
        head = ctf_mri.Head(SIZE, (1.0, 1.0, 1.0), *points)
        head.bytes, head.image = 1, array.array("B", bytes(image))
        head.matrix = ctf_mri.head_matrix(head)
        return ctf_mri.version2(head)

    def mgh(self):
        centre = [first + n / 2 for first, n in zip(self.origin, self.dim)]
        header = struct.pack(">7ih15f", 1, *self.dim, 1, 0, 0, 1, 1, 1, 1, 1, 0, 0, 0, 1, 0, 0, 0, 1, *centre)
        return header.ljust(284, b"\0") + self.voxels


def dipoles(example, mri, points):
    text = re.sub(r"MRI_FILE:.*", lambda _: f"MRI_FILE:\tD:\\patients\\{mri}", example)
    for name, point in zip(("NASION", "LEFT_EAR", "RIGHT_EAR"), points):
        text = re.sub(rf"{name}:.*", f"{name}:\t{point[0]}\t{point[1]}\t{point[2]}", text)
    return text


def main(head, examples, folder):
    examples, folder = Path(examples), Path(folder)
    t1 = T1(head)
    fiducials = (examples / "ch2.fiducials").read_text()
    places = dict(re.findall(r"^(nasion|left|right) (.*)$", fiducials, re.M))
    points = [t1.number([float(mm) for mm in places[name].split()]) for name in ("nasion", "left", "right")]
    (folder / "patient.mri").write_bytes(t1.ctf(points))
    spikes = (examples / "spikes.dip").read_text()
    (folder / "patient.dip").write_text(dipoles(spikes, "patient.mri", points))
    nasion = (points[0][0], points[0][1], points[0][2] - 6)
    (folder / "again.dip").write_text(dipoles(spikes, "patient.mri", [nasion, *points[1:]]))
    (folder / "head.mgz").write_bytes(gzip.compress(t1.mgh(), 1))
    (folder / "head.fiducials").write_text(fiducials)


if __name__ == "__main__":
    main(*sys.argv[1:])
