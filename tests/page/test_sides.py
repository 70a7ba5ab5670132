"""Left is left: places are found by their pixels, of the head and of the dipole that lies on the same spot."""

import itertools
import unittest

import page_data
from support import PageTest, green, middle_of, bright


class Sides(PageTest):
    def check(self, name, expected_right, expected_up):
        """The bright block and the dipole in it are drawn on the same spot, on the side that is expected."""
        head = self.pixels(name, marks=False)
        x, y = middle_of(bright(head))
        height, width = head.shape[:2]
        self.assertGreater((x - width / 2) * expected_right, width / 20, "the head's side")
        self.assertGreater((height / 2 - y) * expected_up, height / 20, "the head's height")
        at = middle_of(green(self.pixels(name)))
        self.assertAlmostEqual(at[0], x, delta=2.0, msg="the dipole lies in the block")
        self.assertAlmostEqual(at[1], y, delta=2.0)

    def test_a_place_on_the_left_is_on_the_right_side_in_both_conventions(self):
        for mirrored, degrees in itertools.product((False, True), (0.0, 25.0)):
            self.open_head([page_data.MARK], mirrored=mirrored, degrees=degrees)
            for convention, left in (("radiological", 1), ("neurological", -1)):
                with self.subTest(mirrored=mirrored, degrees=degrees, convention=convention):
                    self.choose("Sides", convention)
                    self.check("axial", left, 1)
                    self.check("coronal", left, 1)
                    self.check("sagittal", 1, 1)

    def test_the_convention_is_said_in_words(self):
        self.open_head([page_data.MARK])
        self.assertIn("the patient's left is on the right", self.text(".display .words"))
        self.choose("Sides", "neurological")
        self.assertIn("the patient's left is on the left", self.text(".display .words"))

    def test_in_space_the_side_that_is_seen_is_the_side_that_is_said(self):
        self.open_head([page_data.MARK])
        self.choose("3D", "coronal")  # from the front: the patient's left is on the right
        self.check("scene", 1, 1)
        self.choose("3D", "sagittal")  # from the left, for that is where the crosshair is: the front is on the left
        self.check("scene", -1, 1)

    def test_from_a_side_the_ear_of_that_side_is_seen(self):
        ears = [{"of": "head", "name": f"{side} ear", "letter": side[0].upper(), "place": [x, x / 10, -40]}
                for side, x in (("left", -40), ("right", 40))]
        for place, letter in ((page_data.MARK, "L"), ((-page_data.MARK[0], *page_data.MARK[1:]), "R")):
            with self.subTest(ear=letter):
                self.open_head([place], points=ears)
                self.choose("3D", "sagittal")
                pixels = self.pixels("scene")
                middle = pixels[:, : int(pixels.shape[1] * 0.75)]  # without the axes, which have these colours too
                blue = (middle[..., 2] - middle[..., 0] > 50).sum()
                red = (middle[..., 0] - middle[..., 2] > 50).sum()
                self.assertGreater(blue if letter == "L" else red, 5)
                self.assertEqual(red if letter == "L" else blue, 0)


if __name__ == "__main__":
    unittest.main()
