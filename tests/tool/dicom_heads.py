#!/usr/bin/env python3
"""Folders of DICOM files as heads: a series that pydicom writes, oblique, of unequal voxels, with a marker on the
patient's left, against its geometry as the standard tells it; what is refused; and that nothing is left behind. Runs
under Debian's Python."""

import json
import os
import re
import signal
import subprocess
import sys
import tempfile
import time
import unittest

import nibabel
import numpy
from pydicom.dataset import FileDataset, FileMetaDataset
from pydicom.uid import ExplicitVRLittleEndian

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
from support import PROGRAM, ToolTest  # noqa: E402

ROWS, COLUMNS, SLICES = 48, 40, 30
BETWEEN_ROWS, BETWEEN_COLUMNS, BETWEEN_SLICES = 4.5, 5.0, 6.0
FIRST = numpy.array([-95.0, -110, -70])
ALONG_ROW = numpy.array([numpy.cos(0.2), numpy.sin(0.2), 0])
ALONG_COLUMN = numpy.array([-numpy.sin(0.2) * numpy.cos(0.3), numpy.cos(0.2) * numpy.cos(0.3), numpy.sin(0.3)])
NORMAL = numpy.cross(ALONG_ROW, ALONG_COLUMN)
MARKER = (33, 12, 20)  # column, row, slice: to the patient's left


def place(column, row, number):
    """Of a pixel, mm to the right, front and up; DICOM counts to the left and back."""
    at = FIRST + ALONG_ROW * BETWEEN_COLUMNS * column + ALONG_COLUMN * BETWEEN_ROWS * row + \
        NORMAL * BETWEEN_SLICES * number
    return at * [-1, -1, 1]


def series(folder, number=1, name="T1", missing=()):
    os.makedirs(folder, exist_ok=True)
    for k in range(SLICES):
        if k in missing:
            continue
        meta = FileMetaDataset()
        meta.MediaStorageSOPClassUID = "1.2.840.10008.5.1.4.1.1.4"
        meta.MediaStorageSOPInstanceUID = "1.2.3.%d.%d" % (number, k + 1)
        meta.TransferSyntaxUID = ExplicitVRLittleEndian
        path = os.path.join(folder, "image%d_%02d.dcm" % (number, (k * 7) % SLICES))
        image = FileDataset(path, {}, file_meta=meta, preamble=bytes(128))
        image.is_little_endian, image.is_implicit_VR = True, False
        pixels = numpy.full((ROWS, COLUMNS), 100, numpy.uint16)
        if k == MARKER[2]:
            pixels[MARKER[1], MARKER[0]] = 900
        for key, value in {
                "SOPClassUID": meta.MediaStorageSOPClassUID, "SOPInstanceUID": meta.MediaStorageSOPInstanceUID,
                "StudyInstanceUID": "1.2.3", "SeriesInstanceUID": "1.2.3.%d" % number, "FrameOfReferenceUID": "1.2.9",
                "Modality": "MR", "Manufacturer": "SIEMENS", "PatientName": "Made^Up", "PatientID": "X1",
                "StudyDate": "20200101", "StudyTime": "120000", "SeriesNumber": number, "InstanceNumber": k + 1,
                "AcquisitionNumber": 1, "SeriesDescription": name, "ImageType": ["ORIGINAL", "PRIMARY", "M"],
                "Rows": ROWS, "Columns": COLUMNS, "PixelSpacing": [BETWEEN_ROWS, BETWEEN_COLUMNS],
                "SliceThickness": BETWEEN_SLICES, "SpacingBetweenSlices": BETWEEN_SLICES,
                "ImageOrientationPatient": ["%.10f" % value for value in (*ALONG_ROW, *ALONG_COLUMN)],
                "ImagePositionPatient": ["%.8f" % value for value in FIRST + NORMAL * BETWEEN_SLICES * k],
                "SamplesPerPixel": 1, "PhotometricInterpretation": "MONOCHROME2", "BitsAllocated": 16, "BitsStored": 16,
                "HighBit": 15, "PixelRepresentation": 0, "PixelData": pixels.tobytes()}.items():
            setattr(image, key, value)
        image.save_as(path, write_like_original=False)
    return folder


class Dicom(ToolTest):
    def setUp(self):
        super().setUp()
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.temporary = folder.name
        self.environment = {**os.environ, "TMPDIR": self.temporary}

    def tool(self, code, *arguments):
        result = self.end_with(code, *arguments, env=self.environment, cwd=self.folder)
        self.assertEqual(os.listdir(self.temporary), [])
        return result

    def stand_in(self, script):
        """Instead of dcm2niix; the last but one of its words is the folder for what it makes."""
        folder = self.path("bin")
        os.makedirs(folder, exist_ok=True)
        path = os.path.join(folder, "dcm2niix")
        with open(path, "w", encoding="utf-8") as file:
            file.write("#!/bin/bash\nmade=${@: -2:1}\n" + script)
        os.chmod(path, 0o755)
        self.environment["PATH"] = folder + ":/usr/bin:/bin"


class Series(Dicom):
    def test_places_sides_and_spacing_are_those_of_the_files(self):
        folder = series(self.path("scan"))
        found = json.loads(self.tool(0, "head", "--json", folder).out)[0]
        self.assertEqual(found["format"], "DICOM, by dcm2niix")
        self.assertTrue(found["sides_known"])
        numpy.testing.assert_allclose(sorted(found["spacing_mm"]), [4.5, 5, 6], atol=1e-4)
        self.tool(0, "head", folder, "-o", self.path("head.nii"))
        image = nibabel.load(self.path("head.nii"))
        voxels = numpy.asarray(image.dataobj)
        marker, = numpy.argwhere(voxels == 900)
        at = nibabel.affines.apply_affine(image.affine, marker)
        numpy.testing.assert_allclose(at, place(*MARKER), atol=1e-3)
        numpy.testing.assert_allclose(nibabel.affines.apply_affine(numpy.array(found["voxel_to_mm"] + [[0, 0, 0, 1]]),
                                                                   marker), place(*MARKER), atol=1e-3)
        self.assertLess(at[0], -30)  # the patient's left
        corners = {tuple(numpy.round(nibabel.affines.apply_affine(image.affine, index), 2))
                   for index in numpy.ndindex(2, 2, 2) for index in [numpy.multiply(index, numpy.subtract(voxels.shape, 1))]}
        expected = {tuple(numpy.round(place(c * (COLUMNS - 1), r * (ROWS - 1), s * (SLICES - 1)), 2))
                    for c, r, s in numpy.ndindex(2, 2, 2)}
        for one in expected:
            self.assertLess(min(numpy.linalg.norm(numpy.subtract(one, other)) for other in corners), 0.02)

    def test_points_beside_the_folder_register_it(self):
        series(self.path("scan"))
        self.write("scan.fiducials", "nasion 0 90 0\nleft -75 0 0\nright 75 0 0\n")
        for name in ("scan", "scan/", os.path.join("scan", ".")):
            found = json.loads(self.tool(0, "head", "--json", name).out)[0]
            self.assertEqual(found["fiducials_mm"]["left_ear"], [-75, 0, 0], name)
        dipoles = self.write("a.dip", "# CoordinateSystem \"Head\"\n  100.0   100.0    10.10   -52.30    58.50   25.000   "
                                      "15.000   20.000    0.000  93.46\n")
        self.tool(0, "draw", dipoles, "--mri", "scan", "-o", self.path("a.png"))
        self.stand_in("echo >> %s\nexec /usr/bin/dcm2niix \"$@\"\n" % self.path("calls"))
        self.tool(0, "draw", dipoles, "--mri", "scan", "--force", "-o", self.path("a.png"))
        with open(self.path("calls"), encoding="utf-8") as file:
            self.assertEqual(file.read(), "\n")  # read once, though points were needed for the import

    def test_missing_folder_for_temporary_files_is_told(self):
        self.environment["TMPDIR"] = self.path("gone")
        error = self.end_with(1, "head", series(self.path("scan")), env=self.environment).err
        self.assertIn("there is no folder for temporary files", error)

    def test_several_series_are_listed_and_none_is_chosen(self):
        series(self.path("scan"), 1, "T1 sag")
        series(self.path("scan/more"), 12, "T2")
        error = self.tool(1, "head", self.path("scan")).err
        self.assertRegex(error, r"2 series or pictures \(12_T2, 1_T1_sag\); give a folder with one of them")

    def test_missing_slices_are_refused_with_what_dcm2niix_says(self):
        error = self.tool(1, "head", series(self.path("scan"), missing=(9, 10))).err
        self.assertRegex(error, "not sure where the pictures lie: Warning: Interslice distance varies")

    def test_folder_without_images_is_refused(self):
        os.mkdir(self.path("scan"))
        self.write("scan/notes.txt", "nothing")
        self.assertIn("the folder holds no DICOM images", self.tool(1, "head", self.path("scan")).err)
        one = os.path.join(series(self.path("series")), "image1_00.dcm")
        self.assertIn("open the folder of its series instead", self.tool(1, "head", one).err)

    def test_no_name_of_a_folder_is_a_command_or_an_option(self):
        for name in ("-f", "--version", "$(touch made) `touch made`; touch made", "a b'\"\\%s%d", "ä*?"):
            series(self.path(name))
            found = json.loads(self.tool(0, "head", "--json", "--", name).out)[0]
            self.assertEqual(sorted(found["size_voxels"]), sorted([ROWS, COLUMNS, SLICES]), name)
        self.assertFalse(os.path.exists(self.path("made")))


class Program(Dicom):
    def test_program_that_is_not_there_is_named(self):
        folder = series(self.path("scan"))
        self.stand_in("exit 0\n")
        for path in (self.path("empty"), "", "bin", ".:bin"):
            self.environment["PATH"] = path
            self.assertIn("needs the program dcm2niix", self.tool(1, "head", folder).err, path)

    def test_nothing_is_left_behind_a_program_that_fails_or_is_killed(self):
        folder = series(self.path("scan"))
        for script, word in (("touch $made/a.nii; kill -9 $$\n", "ended by signal 9"),
                             ("touch $made/rest.txt; echo 'Error: out of paper'; exit 3\n", "returned 3): Error: out of paper"),
                             ("touch $made/a.nii; exit 0\n", "dipole: "),
                             ("mkdir $made/deep; touch $made/deep/x; exit 0\n", "made no picture")):
            self.stand_in(script)
            self.assertIn(word, self.tool(1, "head", folder).err)
        with open(os.path.join(self.path("bin"), "dcm2niix"), "w", encoding="utf-8") as file:
            file.write("no program")
        self.tool(1, "head", folder)

    def test_a_signal_ends_the_program_and_leaves_nothing_behind(self):
        self.stand_in("touch $made/a.nii; echo $$ > %s; exec sleep 60\n" % self.path("id"))
        folder = series(self.path("scan"))
        for asked in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
            if os.path.exists(self.path("id")):
                os.remove(self.path("id"))
            with subprocess.Popen([*PROGRAM, "head", folder], env=self.environment, stderr=subprocess.PIPE) as process:
                for _ in range(200):
                    if os.path.exists(self.path("id")) and os.path.getsize(self.path("id")):
                        break
                    time.sleep(0.05)
                with open(self.path("id"), encoding="utf-8") as file:
                    child = int(file.read())
                self.assertEqual(len(os.listdir(self.temporary)), 1)
                process.send_signal(asked)
                process.communicate(timeout=20)
            self.assertEqual(process.returncode, -asked)
            self.assertEqual(os.listdir(self.temporary), [])
            with self.assertRaises(ProcessLookupError):
                os.kill(child, 0)

    def test_doubts_about_the_place_are_no_picture_and_others_are_a_note(self):
        folder = series(self.path("scan"))
        real = "/usr/bin/dcm2niix \"$@\"; echo 'Warning: %s'\n"
        for text in ("Unable to determine slice direction", "gantry tilt", "Missing images"):
            self.stand_in(real % text)
            self.assertIn("not sure where the pictures lie: Warning: " + text, self.tool(1, "head", folder).err)
        self.stand_in(real % "bytes \xff are odd.")
        note = re.sub(r"\s+", " ", self.tool(0, "head", folder).out)
        self.assertIn("note (mri-points): dcm2niix: Warning: bytes", note)


if __name__ == "__main__":
    unittest.main()
