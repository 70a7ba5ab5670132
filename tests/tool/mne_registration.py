#!/usr/bin/env python3
"""Dipoles on an MRI that MNE-Python's users have registered: by *-fiducials.fif and *-trans.fif, which MNE writes, on
heads that nibabel writes; where a dipole has to land is worked out by NumPy. And the whole chain once: sources of
known places, their field, MNE's fit, our list. Runs under Debian's Python."""

import json
import os
import re
import sys
import unittest

import mne
import nibabel
import numpy
from mne.io.constants import FIFF

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
from mne_dipoles import CROOKED, MM, head_frame, points_text, random_dipoles, unit  # noqa: E402
from support import Png, ToolTest, example, is_dipole_colour  # noqa: E402

SURFACE, HEAD, SCANNER = FIFF.FIFFV_COORD_MRI, FIFF.FIFFV_COORD_HEAD, FIFF.FIFFV_MNE_COORD_RAS


def turn(axis, degrees):
    """A rotation about an axis."""
    axis, angle = unit(numpy.array(axis, float)), numpy.deg2rad(degrees)
    cross = numpy.cross(numpy.eye(3), axis)
    return numpy.eye(3) - numpy.sin(angle) * cross + (1 - numpy.cos(angle)) * cross @ cross


def rigid(rotation, shift):
    result = numpy.eye(4)
    result[:3, :3], result[:3, 3] = rotation, shift
    return result


def apply(map_, points):
    return numpy.asarray(points) @ map_[:3, :3].T + map_[:3, 3]


# Voxels to scanner mm of an oblique MRI of unequal voxels, stored left, down, front.
SIZE, SPACING = (62, 56, 60), (4.0, 4.5, 4.25)
AXES = turn((1, 2, 3), 12.0) @ numpy.array([[-1.0, 0, 0], [0, 0, 1], [0, -1, 0]])
OBLIQUE = rigid(AXES * SPACING, [7.0, -11.0, 5.0] - AXES @ (numpy.multiply(SIZE, SPACING) / 2))
# Nasion and ears in its scanner mm.
POINTS = [apply(rigid(turn((1, 2, 3), 12.0), [6, -8, -20]), point) for point in CROOKED]


class Subject(ToolTest):
    """A subject's files, with their usual names."""

    def mri(self, affine=OBLIQUE, size=SIZE, name="T1.mgz", data=None):
        data = numpy.full(size, 80, numpy.uint8) if data is None else data
        kind = nibabel.Nifti1Image if ".nii" in name else nibabel.MGHImage
        image = kind(data, affine)
        nibabel.save(image, self.path(name))
        header = nibabel.MGHImage(data, affine).header
        self.surface_to_scanner = affine @ numpy.linalg.inv(header.get_vox2ras_tkr())
        return self.path(name)

    def fiducials(self, points, frame, name="sub-fiducials.fif"):
        """The points in mm of the frame."""
        nasion, left, right = points
        given = [dict(kind=FIFF.FIFFV_POINT_CARDINAL, ident=ident, r=numpy.asarray(point) * MM, coord_frame=frame)
                 for ident, point in ((1, left), (2, nasion), (3, right))]
        mne.io.write_fiducials(self.path(name), given, coord_frame=frame, overwrite=True)
        return self.path(name)

    def surface(self, points):
        return apply(numpy.linalg.inv(self.surface_to_scanner), points)

    def trans(self, head_to_scanner, is_back=False, name="sub-trans.fif"):
        """The way to the surface frame of the MRI; head_to_scanner in mm."""
        way = numpy.linalg.inv(self.surface_to_scanner) @ head_to_scanner
        way[:3, 3] *= MM
        made = mne.transforms.Transform("head", "mri", way)
        mne.write_trans(self.path(name), mne.transforms.invert_transform(made) if is_back else made, overwrite=True)
        return self.path(name)

    def dipoles(self, seed=1, count=40):
        path = self.path("spikes.dip")
        random_dipoles(count, seed).save(path, overwrite=True)
        self.saved = mne.read_dipole(path)
        return path

    def listed(self, path, *options, frame="scanner"):
        result = self.succeed("list", "--json", "--frame", frame, path, *options)
        self.told = re.sub(r"\s+", " ", result.err)
        self.document = json.loads(result.out)
        return self.document["dipoles"]

    def worst(self, listed, head_to_scanner, frame="scanner"):
        """The largest distance of a listed place from that of NumPy's, mm; of directions times 100."""
        expected = apply(head_to_scanner, self.saved.pos / MM)
        names = ("x_right", "y_front", "z_up")
        found = numpy.array([[one["%s_%s_mm" % (frame, name)] for name in names] for one in listed])
        along = numpy.array([[one["%s_orientation_%s" % (frame, name)] for name in names] for one in listed])
        self.assertEqual(len(found), len(expected))
        return max(numpy.abs(found - expected).max(),
                   100 * numpy.abs(along - self.saved.ori @ head_to_scanner[:3, :3].T).max())

    @staticmethod
    def by_points(points):
        """From MNE's head frame to that of the points, mm."""
        way = numpy.linalg.inv(mne.transforms.get_ras_to_neuromag_trans(*[point * MM for point in points]))
        way[:3, 3] /= MM
        return way


class Fiducials(Subject):
    def test_points_of_each_frame_place_the_dipoles(self):
        mri, path, way = self.mri(), self.dipoles(), self.by_points(POINTS)
        for points, frame in ((self.surface(POINTS), SURFACE), (POINTS, SCANNER)):
            listed = self.listed(path, "--mri", mri, "--fiducials", self.fiducials(points, frame))
            self.assertLess(self.worst(listed, way), 1e-3)
            numpy.testing.assert_allclose(self.document["fiducials_scanner_mm"]["left_ear"], POINTS[1], atol=1e-4)

    def test_points_beside_the_mri_may_be_of_mne(self):
        mri, path = self.mri(), self.dipoles()
        os.rename(self.fiducials(self.surface(POINTS), SURFACE), self.path("T1.fiducials"))
        self.assertLess(self.worst(self.listed(path, "--mri", mri), self.by_points(POINTS)), 1e-3)

    def test_nifti_has_surface_ras_as_a_conformed_volume_alone(self):
        conformed = rigid(numpy.array([[-4.0, 0, 0], [0, 0, 4], [0, -4, 0]]), [131.0, -109, 135])
        path = self.dipoles()
        mri = self.mri(conformed, (64, 64, 64), "T1.nii")
        points = self.fiducials(self.surface(CROOKED), SURFACE)
        listed = self.listed(path, "--mri", mri, "--fiducials", points)
        # Nibabel's code says that it is aligned to another image.
        self.assertLess(self.worst(listed, self.by_points(CROOKED), "mri"), 1e-3)
        self.assertLess(numpy.abs(self.surface_to_scanner[:3, :3] - numpy.eye(3)).max(), 1e-9)
        turned = conformed.copy()
        turned[:, 0] *= -1
        turned[:3, 3] += conformed[:3, 0] * 63
        for affine, size in ((OBLIQUE, SIZE), (turned, (64, 64, 64)), (conformed, (64, 64, 62))):
            mri = self.mri(affine, size, "T1.nii")
            error = self.end_with(1, "list", path, "--mri", mri, "--fiducials", points, "--frame", "scanner").err
            self.assertIn("surface RAS is not known in this MRI", error)
            self.assertIn("T1.mgz", error)

    def test_without_the_mri_only_distances_are_known(self):
        self.mri()
        path, points = self.dipoles(), self.fiducials(self.surface(POINTS), SURFACE)
        listed = json.loads(self.succeed("list", "--json", "--quiet", path, "--fiducials", points).out)["dipoles"]
        rows, origin = head_frame(POINTS)
        expected = (apply(self.by_points(POINTS), self.saved.pos / MM) - origin) @ rows.T
        found = [[one["x_left_mm"], one["y_up_mm"], one["z_front_mm"]] for one in listed]
        numpy.testing.assert_allclose(found, expected, atol=1e-3)
        error = self.end_with(1, "list", path, "--fiducials", points, "--frame", "scanner").err
        self.assertIn("in its MRI: --mri gives it", error)
        told = self.succeed("convert", path, "-o", self.path("a.vtp"), "--fiducials", points).err
        self.assertIn("Where the head lies in the scanner is not known", re.sub(r"\s+", " ", told))
        with open(self.path("a.vtp"), "rb") as file:
            self.assertNotIn(b"FIDUCIALS_SCANNER", file.read())

    def test_other_frames_are_refused_by_name(self):
        mri, path = self.mri(), self.dipoles()
        for frame, name in ((FIFF.FIFFV_MNE_COORD_MRI_VOXEL, "voxels of the MRI"), (FIFF.FIFFV_COORD_DEVICE, "the MEG device"),
                            (HEAD, "the head frame, and a transform")):
            points = self.fiducials(CROOKED, frame)
            self.assertIn(name, self.end_with(1, "list", path, "--mri", mri, "--fiducials", points, "--frame", "scanner").err)


class Transforms(Subject):
    WAY = rigid(turn((0.3, -1, 0.2), 14.0), [9.0, -14.0, -12.0])

    def head_points(self):
        """Of the digitiser: on the axes of the head frame."""
        return numpy.array([[0.0, 97, 0], [-71, 0, 0], [76, 0, 0]])

    def test_both_directions_with_and_without_points(self):
        mri, path = self.mri(), self.dipoles()
        worst = 0.0
        for is_back in (False, True):
            trans = self.trans(self.WAY, is_back)
            for points in ([], ["--fiducials", self.fiducials(self.head_points(), HEAD)],
                           ["--fiducials", points_text(apply(self.WAY, self.head_points()))]):
                listed = self.listed(path, "--mri", mri, "--trans", trans, *points)
                worst = max(worst, self.worst(listed, self.WAY))
                if points:
                    self.assertIn("lie less than 0.1 mm from where the transform has them", self.told)
                    self.assertIn("fiducials_scanner_mm", self.document)
        sys.stderr.write("largest difference of a place from NumPy's, mm: %.2g\n" % worst)
        self.assertLess(worst, 1e-3)

    def test_without_points_none_are_made_up_for_others(self):
        mri, path, trans = self.mri(), self.dipoles(), self.trans(self.WAY)
        self.listed(path, "--mri", mri, "--trans", trans)
        self.assertIn("(symmetric-ears)", self.told)
        self.assertIn("where the transform places them", re.sub(r"\s+", " ", self.told))
        self.assertNotIn("Positions may be wrong", re.sub(r"\s+", " ", self.told))
        self.assertNotIn("fiducials_scanner_mm", self.document)
        for command in (["list", "--frame", "scanner"], ["draw", "-o", self.path("a.png")]):
            error = self.end_with(1, *command, example("auditory.dip"), "--mri", mri, "--trans", trans).err
            self.assertIn("no others, whose head frame it does not know", error)
        error = self.end_with(1, "register", path, "--mri", mri, "--trans", trans, "-o", self.path("a.json")).err
        self.assertIn("does not know where the ears are", error)
        self.end_with(2, "list", path, "--trans", trans)

    def test_back_in_the_neuromag_frame_it_is_the_same_file(self):
        mri, path, trans = self.mri(), self.dipoles(), self.trans(self.WAY)
        for points in ([], ["--fiducials", self.fiducials(self.head_points() + [[0, 0, 3], [0, 0, 0], [0, 0, 0]], HEAD)]):
            self.succeed("convert", path, "--to", "neuromag", "-o", self.path("b.dip"), "--force", "--mri", mri, "--trans",
                         trans, *points)
            back = mne.read_dipole(self.path("b.dip"))
            numpy.testing.assert_allclose(back.pos, self.saved.pos, atol=1.01e-5)

    def test_disagreement_is_a_note_doubtful_or_another_head(self):
        mri, path, trans = self.mri(), self.dipoles(), self.trans(self.WAY)
        own = self.head_points()
        for shift, severity, code in (((0, 0, 1.5), "note", 0), ((4, 0, 0), "doubtful", 0), ((0, 7, 0), "doubtful", 0),
                                      ((0, 0, 12), "wrong", 1), ((-11, 0, 0), "wrong", 1)):
            points = self.fiducials(self.surface(apply(self.WAY, own + shift)), SURFACE)
            options = [path, "--mri", mri, "--trans", trans, "--fiducials", points, "--frame", "scanner"]
            result = self.end_with(code, "list", "--json", *options)
            self.assertRegex(re.sub(r"\s+", " ", result.err), severity + r" \(other-head\): The fiducial points lie up to %.1f mm"
                             % numpy.linalg.norm(shift))
            self.assertLess(self.worst(json.loads(result.out)["dipoles"], self.WAY), 1e-3)
            self.end_with(code, "convert", *options, "-o", self.path("a.csv"), "--force")
            self.assertEqual(os.path.exists(self.path("a.csv")), code == 0)
            self.assertIn(severity, self.end_with(code, "check", *options[:-2]).out)
            if code == 0:
                os.remove(self.path("a.csv"))
        self.succeed("list", *options, "--accept", "other-head")

    def test_what_is_no_way_between_head_and_mri_is_refused(self):
        mri, path = self.mri(), self.dipoles()

        def refused(map_, frames, *words):
            mne.write_trans(self.path("a-trans.fif"), mne.transforms.Transform(*frames, map_), overwrite=True)
            error = self.end_with(1, "list", path, "--mri", mri, "--trans", self.path("a-trans.fif"), "--frame",
                                  "scanner").err
            for word in words:
                self.assertIn(word, error)

        refused(self.WAY, ("meg", "head"), "from the MEG device to the head")
        refused(self.WAY, ("mri", "mni_tal"), "from the MRI's surface RAS to MNI Talairach")
        refused(numpy.diag([-1.0, 1, 1, 1]), ("head", "mri"), "mirrors")
        refused(numpy.diag([1.002, 1, 1, 1]), ("head", "mri"), "stretches or shears")
        skew = numpy.eye(4)
        skew[0, 1] = 0.002
        refused(skew, ("head", "mri"), "stretches or shears")
        points = self.fiducials(CROOKED, SURFACE)
        self.assertIn("no transform", self.end_with(1, "list", path, "--mri", mri, "--trans", points).err)
        self.assertIn("not a .fif file", self.end_with(1, "list", path, "--mri", mri, "--trans", path).err)

    def test_drawn_dipole_lies_on_its_place_in_the_mri(self):
        # In the middle of a voxel to the left, above.
        voxel = apply(numpy.linalg.inv(OBLIQUE), apply(self.WAY, [-38, 20, 52])).round()
        target = apply(OBLIQUE, voxel)
        place = apply(numpy.linalg.inv(self.WAY), target)
        voxels = numpy.stack(numpy.meshgrid(*[numpy.arange(size) for size in SIZE], indexing="ij"), -1)
        near = numpy.linalg.norm(apply(OBLIQUE, voxels) - target, axis=-1) < 14
        near[:, -2:] = True  # far below, so that white is not rare
        mri = self.mri(data=numpy.where(near, 250, 60).astype(numpy.uint8))
        path = self.path("one.dip")
        mne.Dipole([0.1], [place * MM], [50e-9], [[0, 0, 1.0]], [90.0]).save(path)
        for points in ([], ["--fiducials", self.fiducials(self.head_points(), HEAD)]):
            self.succeed("draw", path, "--mri", mri, "--trans", self.trans(self.WAY), *points, "--force", "-o",
                         self.path("a.png"), "--mm-per-pixel", "1")
            with open(self.path("a.png"), "rb") as file:
                picture = Png(file.read())
            middle = {}
            for name, wanted in (("dipole", is_dipole_colour), ("white", lambda r, g, b: r == g == b and r > 235)):
                found = numpy.array(picture.pixels(wanted))
                # The axial picture is the first of three.
                found = found[found[:, 0] < picture.width // 3]
                if middle:  # not letters
                    found = found[numpy.linalg.norm(found - middle["dipole"], axis=1) < 40]
                self.assertGreater(len(found), 20, name)
                middle[name] = numpy.mean(found, axis=0)
            self.assertLess(numpy.abs(middle["dipole"] - middle["white"]).max(), 2.0)
            self.assertGreater(middle["dipole"][0], picture.width // 6)  # the patient's left is on the right


class Chain(Subject):
    """Sources of known places in the T1 head, their field outside of a sphere, MNE's fit, our list."""

    # Scanner mm in the T1 head, and in which direction the current runs.
    SOURCES = (((-52, -20, 8), (0, 0.5, 1)), ((54, -18, 10), (0, -0.5, 1)), ((-38, -26, 56), (0, 1, 0.3)),
               ((40, 28, 34), (1, 0.2, -1)), ((-48, 6, -18), (0, 1, 0)), ((12, -80, 20), (1, 0.1, 0)))
    T1 = "/usr/share/mricron/templates/ch2.nii.gz"

    @staticmethod
    def magnetometers(middle):
        """Radial, 120 of them over the upper three quarters of a sphere around the head."""
        count, golden = 120, numpy.pi * (3 - numpy.sqrt(5))
        height = 1 - (numpy.arange(count) + 0.5) / count * 1.5
        around = numpy.arange(count) * golden
        level = numpy.sqrt(1 - height ** 2)
        radial = numpy.c_[level * numpy.cos(around), level * numpy.sin(around), height]
        info = mne.create_info(["MEG%04d" % i for i in range(1, count + 1)], 1000.0, "mag")
        for channel, out in zip(info["chs"], radial):
            one = unit(numpy.cross(out, [0.3, 0.5, 0.7]))
            channel["coil_type"] = FIFF.FIFFV_COIL_POINT_MAGNETOMETER
            channel["loc"][:] = numpy.r_[middle + 0.115 * out, one, numpy.cross(out, one), out]
        info["dev_head_t"] = mne.transforms.Transform("meg", "head", numpy.eye(4))
        return info

    def fitted(self, points):
        """Saves what MNE fits to the fields of the sources, one at a time, 10 ms apart."""
        scanner_to_head = numpy.linalg.inv(self.by_points(points))
        place = apply(scanner_to_head, [place for place, _ in self.SOURCES])
        middle = apply(scanner_to_head, [[0, -18, 12]])[0]
        along = []
        for at, (_, direction) in zip(place, self.SOURCES):
            out = unit(at - middle)
            current = scanner_to_head[:3, :3] @ direction
            along.append(unit(current - out * (current @ out)))  # a radial current has no field outside
        info = self.magnetometers(middle * MM)
        sphere = mne.make_sphere_model(middle * MM, 0.095, info=info, verbose="ERROR")
        true = mne.Dipole(numpy.arange(len(place)) * 0.01, place * MM, numpy.full(len(place), 60e-9), numpy.array(along),
                          numpy.full(len(place), 100.0))
        forward, estimates = mne.make_forward_dipole(true, sphere, info, verbose="ERROR")
        estimates = estimates if isinstance(estimates, list) else [estimates]
        field = numpy.c_[tuple(forward["sol"]["data"] @ estimate.data for estimate in estimates)]
        evoked = mne.EvokedArray(field, info, tmin=0.0, verbose="ERROR")
        noise = mne.make_ad_hoc_cov(info, verbose="ERROR")
        fit = mne.fit_dipole(evoked, noise, sphere, min_dist=3.0, verbose="ERROR")[0]
        fit.save(self.path("fit.dip"), overwrite=True)
        return self.path("fit.dip")

    def test_dipoles_that_mne_fits_are_listed_where_the_sources_are(self):
        with open(example("ch2.fiducials"), encoding="utf-8") as file:
            rows = dict(re.findall(r"^(nasion|left|right)\s+(.*?)\s*(?:#.*)?$", file.read(), re.M))
        points = [numpy.array(rows[name].split(), float) for name in ("nasion", "left", "right")]
        path = self.fitted(points)
        known = numpy.array([place for place, _ in self.SOURCES], float)
        # As a user of NIfTI heads has it, and as one of FreeSurfer's heads and MNE's registration has it.
        image = nibabel.load(self.T1)
        image = image.as_reoriented(nibabel.orientations.ornt_transform(
            nibabel.io_orientation(image.affine), nibabel.orientations.axcodes2ornt("LIA")))
        mgh = self.mri(image.affine, image.shape, "T1.mgh", numpy.asarray(image.dataobj).astype(numpy.uint8))
        ways = {"ch2.nii.gz, text": ["--mri", self.T1, "--fiducials", example("ch2.fiducials")],
                "T1.mgh, trans": ["--mri", mgh, "--trans", self.trans(self.by_points(points))],
                "T1.mgh, both": ["--mri", mgh, "--trans", self.path("sub-trans.fif"), "--fiducials",
                                 self.fiducials(self.surface(points), SURFACE)]}
        for name, options in ways.items():
            listed = self.listed(path, *options)
            space = "mri" if "ch2" in name else "scanner"  # whose sform says that it is in MNI space
            found = numpy.array([[one["%s_%s_mm" % (space, axis)] for axis in ("x_right", "y_front", "z_up")] for one in listed])
            self.assertEqual(found.shape, known.shape)
            distance = numpy.linalg.norm(found - known, axis=1)
            sys.stderr.write("\n%s\n   known place, mm        listed               apart  fit error %%\n" % name)
            for one, at, there, apart in zip(listed, known, found, distance):
                sys.stderr.write("  %5.0f %5.0f %5.0f   %6.1f %6.1f %6.1f   %5.2f   %6.3f\n" %
                                 (*at, *there, apart, one["fit_error_percent"]))
            self.assertLess(distance.max(), 2.0, name)


if __name__ == "__main__":
    unittest.main()
