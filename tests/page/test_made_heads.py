"""A dipole and the bright spot of the head where it lies are on the same pixels, and on the right side, in pages that
`dipole page` makes: of a mirrored and a tilted head and of both ways to store a CTF MRI."""

import os
import subprocess
import sys
import unittest

import nibabel
import numpy
from scipy.ndimage import uniform_filter

from support import PageTest, middle_of

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "support"))
import ctf_mri  # noqa: E402
from bright_heads import POINTS, centred, ctf_head, grey_head, rotation  # noqa: E402

TOOL = os.environ.get("DIPOLE_TOOL", "")
# x to the nose 6, y left 4, z up 2 cm
DIPOLE = """CTF_DIPOLE_FILE_VERSION_5.0
Dipoles
{
// xp (cm) yp (cm) zp (cm) xo yo zo Mom(nAm) Label
1: 6 4 2 0 0 1 7 a
}
"""


class MadeHeads(PageTest):
    def made(self, mri, *arguments):
        dipole, page = os.path.join(self.folder, "d.dip"), os.path.join(self.folder, "made.html")
        with open(dipole, "w", encoding="ascii") as file:
            file.write(DIPOLE)
        subprocess.run([TOOL, "page", dipole, "--mri", mri, *arguments, "--no-arrows", "--force", "-o", page],
                       check=True, stderr=subprocess.PIPE)
        self.driver.get("file://" + page)
        self.wait(lambda: self.js("return document.getElementById('app').dataset.ready === 'yes'"), 120)

    def check(self, least_grey, delta):
        """`delta`: pixels between the middle of the spot and the dipole; without it the dipole is in the spot."""
        for convention, side in (("radiological", 1), ("neurological", -1)):
            self.choose("Sides", convention)
            for name in ("axial", "coronal", "sagittal"):
                with self.subTest(convention=convention, pane=name):
                    grey = uniform_filter(self.pixels(name, marks=False).min(axis=2).astype(float), 7)
                    shown = self.pixels(name)
                    x, y = middle_of(shown[..., :2].min(axis=2) - shown[..., 2] > 90)  # yellow
                    spot = middle_of(grey > least_grey)
                    if delta is None:
                        self.assertGreater(grey[int(y), int(x)], least_grey)
                    else:
                        self.assertLess(numpy.hypot(spot[0] - x, spot[1] - y), delta)
                    if name != "sagittal":
                        self.assertGreater((x - shown.shape[1] / 2) * side, 20)
                        self.assertGreater((spot[0] - shown.shape[1] / 2) * side, 20)

    def nifti(self, matrix, shape):
        affine = centred(matrix, shape)
        image = nibabel.Nifti1Image(grey_head(affine, shape, numpy.int16), affine)
        image.set_sform(affine, 1)
        path = os.path.join(self.folder, "head.nii.gz")
        nibabel.save(image, path)
        return path

    def test_a_mirrored_nifti(self):
        self.made(self.nifti(numpy.diag([-3.0, 3.0, 3.0]), (100, 90, 80)), "--fiducials", POINTS)
        self.check(250, 3.0)

    def test_a_tilted_nifti(self):
        self.made(self.nifti(rotation((0.2, -0.1, -0.2)) * 3.0, (120, 110, 115)), "--fiducials", POINTS)
        self.check(250, 3.0)

    def test_a_ctf_mri_in_both_ways_to_store_it(self):
        for is_left_on_right in (False, True):
            path = os.path.join(self.folder, "patient.mri")
            with open(path, "wb") as file:
                file.write(ctf_mri.version2(ctf_head(is_left_on_right)))
            self.made(path)
            self.check(200, None)


if __name__ == "__main__":
    unittest.main()
