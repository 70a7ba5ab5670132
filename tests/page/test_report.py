"""The page as a browser prints it."""

import base64
import io
import os
import subprocess
import unittest

import numpy
from PIL import Image

import list_data
import page_data
from list_support import ListTest
from support import green, middle_of

LEFT_FRONT = (-45.0, 30.0, 21.0)


class Report(ListTest):
    def printed(self):
        """Path of the PDF that the browser prints."""
        path = os.path.join(self.folder, "report.pdf")
        result = self.driver.execute_cdp_cmd("Page.printToPDF", {"preferCSSPageSize": True})
        with open(path, "wb") as file:
            file.write(base64.b64decode(result["data"]))
        return path

    def read(self, path):
        return " ".join(subprocess.run(["pdftotext", "-layout", path, "-"], check=True,
                                       stdout=subprocess.PIPE).stdout.decode().split())

    def pages(self, path):
        prefix = os.path.join(self.folder, "sheet")
        subprocess.run(["pdftoppm", "-r", "40", "-png", path, prefix], check=True)
        return [numpy.asarray(Image.open(os.path.join(self.folder, name)).convert("L"))
                for name in sorted(os.listdir(self.folder)) if name.startswith("sheet")]

    def open_clusters(self, **changes):
        self.data = list_data.random_data(80, **changes)
        self.open(self.data, page_data.head_file()[0])

    def test_it_says_whose_dipoles_by_which_limits_and_what_is_wrong(self):
        self.open_clusters(
            registration={"text": "by nasion and ears of a.fiducials", "residuals": [{"name": "nasion", "mm": 1.25}]},
            findings=[{"severity": "wrong", "code": "row-order", "file": "a.dip", "line": 12,
                       "sentence": "Rows are mixed up.", "remedy": "Sort them.", "rows": [1]}],
            conventions=["Head: x left, y up, z front."], warnings=["Left and right are only assumed"])
        self.filter("Latency", "100..300")
        latency = numpy.array(list_data.values(self.data, "latency_ms"))
        passing = int(((latency >= 100) & (latency <= 300)).sum())
        path = self.printed()
        text = self.read(path)
        for said in ("Patient TEST", "test.dip (CTF, 80 dipoles)", "test.nii.gz (NIfTI-1)", "by its sform",
                     "by nasion and ears of a.fiducials", "nasion 1.3 mm", f"{passing} of 80 dipoles shown",
                     f"Latency: 100..300: {80 - passing} removed", "6 or more within 10 mm", "40 dipoles scattered",
                     "Wrong: Rows are mixed up. Sort them. (a.dip, line 12)", "Left and right are only assumed",
                     "Head: x left, y up, z front.", "Axial and coronal slices show the patient's left on the right.",
                     "dipole 0.0.0"):
            self.assertIn(said, text)
        clusters = numpy.array(self.data["dipoles"]["clusters"])
        for number in (1, 2):
            shown = int(((latency >= 100) & (latency <= 300) & (clusters == number)).sum())
            self.assertIn(f"Cluster {number}: 20 dipoles ({shown} of them shown)", text)
        self.assertNotIn("epileptogenic", text)
        sheets = self.pages(path)
        self.assertIn(len(sheets), (2, 3))
        self.assertTrue(all(abs(sheet.shape[0] / sheet.shape[1] - 297 / 210) < 0.01 for sheet in sheets), "A4")

    def test_it_is_black_on_white_in_the_dark_too(self):
        self.open_clusters()
        self.press("d")
        if self.js("return getComputedStyle(document.body).backgroundColor") == "rgb(243, 245, 248)":
            self.press("d")
        first = self.pages(self.printed())[0]
        self.assertEqual(int(numpy.median(first)), 255)
        self.assertEqual(int(first[0, 0]), 255)
        self.assertLess(int(first.min()), 60, "letters are black")

    def pictures(self):
        """What the report shows, taken before it is gone again."""
        self.js("window.dispatchEvent(new Event('beforeprint'))")
        texts = self.js("return [...document.querySelectorAll('.report canvas')].map((one) => one.toDataURL())")
        self.js("window.dispatchEvent(new Event('afterprint'))")
        return [numpy.asarray(Image.open(io.BytesIO(base64.b64decode(text.split(",")[1]))).convert("RGB")).astype(int)
                for text in texts]

    def test_its_pictures_have_the_sides_that_they_say(self):
        self.open_head([LEFT_FRONT])
        axial, coronal, sagittal, left, right, above = self.pictures()
        for name, picture, across, up in (("axial", axial, 1, 1), ("coronal", coronal, 1, 1), ("sagittal", sagittal, 1, 1),
                                          ("left", left, -1, 1), ("right", right, 1, 1), ("above", above, -1, 1)):
            x, y = middle_of(green(picture))
            height, width = picture.shape[:2]
            self.assertGreater(across * (x - width / 2), 15, name)
            self.assertGreater(up * (height / 2 - y), 10, name)
        self.choose("Sides", "neurological")
        axial = self.pictures()[0]
        self.assertLess(middle_of(green(axial))[0], axial.shape[1] / 2 - 15)

    def test_it_is_gone_from_the_screen_afterwards(self):
        self.open_clusters()
        self.pictures()
        self.assertEqual(self.all(".report *"), [])
        self.assertFalse(self.one(".report").is_displayed())


if __name__ == "__main__":
    unittest.main()
