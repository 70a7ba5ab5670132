"""Heads with a bright spot where a known dipole lies, and a CTF MRI whose left front is white."""

import array

import ctf_mri
import numpy
from nibabel.affines import apply_affine

NASION, LEFT, RIGHT = numpy.array([[6.0, 95, 12], [-78, 4, -6], [76, -8, 3]])  # of a head that lies crooked
POINTS = " ".join("%g,%g,%g" % tuple(point) for point in (NASION, LEFT, RIGHT))


def in_scanner(left, up, front):
    """Of a place in the head frame of the points: the origin between the ears, the front to the nasion."""
    origin = (LEFT + RIGHT) / 2
    z = (NASION - origin) / numpy.linalg.norm(NASION - origin)
    x = LEFT - origin
    x -= (x @ z) * z
    x /= numpy.linalg.norm(x)
    return origin + left * x + up * numpy.cross(z, x) + front * z


# One dipole on the left in front above: x to the nose 6, y left 4, z up 2 cm.
BRIGHT = in_scanner(40, 20, 60)


def grey_head(affine, shape, kind, scale=1.0):
    """A ball of 85 mm with something in it, and a bright spot where the dipole is."""
    index = numpy.stack(numpy.meshgrid(*map(numpy.arange, shape), indexing="ij"), -1)
    mm = apply_affine(affine, index)
    random = numpy.random.default_rng(1)
    values = numpy.where((mm ** 2).sum(-1) < 85 ** 2, 300 + random.uniform(-60, 60, shape), 0.0)
    values[((mm - BRIGHT) ** 2).sum(-1) < 8 ** 2] = 700
    return (values * scale).astype(kind)


def rotation(angles):
    a, b, c = angles
    x = numpy.array([[1, 0, 0], [0, numpy.cos(a), -numpy.sin(a)], [0, numpy.sin(a), numpy.cos(a)]])
    y = numpy.array([[numpy.cos(b), 0, numpy.sin(b)], [0, 1, 0], [-numpy.sin(b), 0, numpy.cos(b)]])
    z = numpy.array([[numpy.cos(c), -numpy.sin(c), 0], [numpy.sin(c), numpy.cos(c), 0], [0, 0, 1]])
    return z @ y @ x


def centred(matrix, shape):
    affine = numpy.eye(4)
    affine[:3, :3] = matrix
    affine[:3, 3] = -matrix @ ((numpy.array(shape) - 1) / 2)
    return affine


CTF_MM = 4.0


def ctf_head(is_left_on_right):
    """A ball with a white left front, as a CTF MRI; whether the patient's left is stored on the right."""
    size = 64
    left, right, nasion = (13, 33, 40), (52, 33, 40), (33, 8, 35)  # sagittal, coronal, axial; from 1
    made = ctf_mri.Head(size, (CTF_MM,) * 3, nasion, left, right)
    made.bytes = 1
    middle = (size + 1) / 2
    s, a, c = numpy.meshgrid(*[numpy.arange(1, size + 1)] * 3, indexing="ij")
    x, y, z = (s - middle) * CTF_MM, -(c - middle) * CTF_MM, -(a - middle) * CTF_MM
    values = numpy.where(x * x + y * y + z * z < 9025, numpy.where((x < -20) & (y > 10), 250, 60 + a), 0)
    made.image = array.array("B", values.astype(numpy.uint8).tobytes())
    return made.mirrored() if is_left_on_right else made
