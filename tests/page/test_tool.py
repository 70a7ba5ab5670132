"""A page that `dipole page` makes says what the other commands say of the same file."""

import os
import re
import subprocess
import unittest

import numpy

from list_support import ListTest, cells

TOOL = os.environ.get("DIPOLE_TOOL", "")
EXAMPLE = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "examples", "spikes.dip")


def tool(*arguments):
    return subprocess.run([TOOL, *arguments], check=True, stdout=subprocess.PIPE, stderr=subprocess.PIPE).stdout


class Tool(ListTest):
    def setUp(self):
        super().setUp()
        path = os.path.join(self.folder, "made.html")
        if not os.path.exists(path):
            tool("page", EXAMPLE, "-o", path)
        self.driver.get("file://" + path)
        self.wait(lambda: self.js("return document.getElementById('app').dataset.ready === 'yes'"), 120)

    def test_counts_are_those_of_info(self):
        told = tool("info", EXAMPLE).decode()
        count = int(self.counts().split(" of ")[1].split()[0])
        self.assertEqual(str(count), re.search(r"(?m)^  dipoles +([0-9]+),", told).group(1))
        self.assertGreater(count, 20)
        self.assertIn(f"{count} dipoles", self.text(".header"))

    def test_the_saved_table_has_the_numbers_of_convert(self):
        path = os.path.join(self.folder, "converted.csv")
        if not os.path.exists(path):
            tool("convert", EXAMPLE, "-o", path)
        with open(path, "rb") as file:
            titles, *expected = cells(file.read())
        self.press("h")  # hidden dipoles too
        self.drawn()
        own_titles, *own = cells(self.exported())
        self.assertEqual(own_titles[:len(titles)], titles)
        self.assertEqual(len(own), len(expected))
        compared = 0
        for row, other in zip(own, expected):
            for text, told in zip(row, other):
                try:
                    # A page has the shortest digits of what a file holds as a single.
                    self.assertIn(float(told), (float(text), float(numpy.float32(text))))
                    compared += 1
                except ValueError:
                    self.assertEqual(text, told)
        self.assertGreater(compared, 100)


if __name__ == "__main__":
    unittest.main()
