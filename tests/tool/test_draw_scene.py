"""`dipole draw --3d` shows every dipole on its side, with and without an MRI, or says what it does not show."""

import os
import tempfile
import unittest

from support import LEFT_FIRST, Png, ToolTest, dipole_file, example, head_volume

GREY_HEAD = None


def grey_head():
    """One head for all tests of this file: making it takes a moment."""
    global GREY_HEAD
    if GREY_HEAD is None:
        folder = tempfile.TemporaryDirectory()
        GREY_HEAD = (folder, head_volume(os.path.join(folder.name, "head.nii.gz"), size=70, spacing=3.0))
    return GREY_HEAD[1]


def is_yellow(r, g, b):
    """The dipoles' colour, lit and faded."""
    return r > 60 and abs(r - g) < 12 and 4 * b < r


class SceneTest(ToolTest):
    def draw(self, rows, *options, head=False, code=0):
        """Draws these (x to the nose, y left, z up, cm) dipoles; returns (picture, result)."""
        path = self.write("d.dip", dipole_file([(x, y, z, 7, "a") for x, y, z in rows]))
        mri = ("--mri", grey_head(), "--fiducials", LEFT_FIRST) if head else ()
        result = self.end_with(code, "draw", path, "--3d", "--force", "-o", self.path("out.png"), *mri, *options)
        return self.picture(), result

    def picture(self):
        with open(self.path("out.png"), "rb") as file:
            return Png(file.read())


class Places(SceneTest):
    def test_every_view_has_the_patients_sides_where_they_belong(self):
        # 60 mm to the nose, left, up: which of them goes right (+1) or left, down (+1) or up in each view.
        nose, left, up = (6, 0, 0), (0, 6, 0), (0, 0, 6)
        expected = {
            "front": {left: (1, 0), up: (0, -1)},
            "back": {left: (-1, 0), up: (0, -1)},
            "left": {nose: (-1, 0), up: (0, -1)},
            "right": {nose: (1, 0), up: (0, -1)},
            "top": {left: (-1, 0), nose: (0, -1)},
            "bottom": {left: (1, 0), nose: (0, -1)},
        }
        for view, moves in expected.items():
            for second, (right, down) in moves.items():
                # A third dipole beside the second pulls the middle to that side.
                beside = tuple(value * 0.9 for value in second)
                picture, _ = self.draw([(0, 0, 0), second, beside], "--no-arrows", "--view", view,
                                       "--mm-per-pixel", "1", head=True)
                along = [p[0 if right else 1] for p in picture.pixels(is_yellow)]
                self.assertAlmostEqual(max(along) - min(along), 60 + 5, delta=3, msg=view)
                side = 1 if sum(along) / len(along) > (max(along) + min(along)) / 2 else -1
                self.assertEqual(side, right or down, (view, second))

    def test_angles_are_the_views(self):
        rows = [(1, 3, 2), (-2, -4, 5)]
        for view, angles in (("left", "90,0"), ("right", "-90,0"), ("back", "180,0"), ("top", "180,90"),
                             ("bottom", "0,-90"), ("front", "0,0"), ("right", "270,0")):
            one = self.draw(rows, "--view", view, "--mm-per-pixel", "2")[0].rows
            self.assertEqual(self.draw(rows, "--angles", angles, "--mm-per-pixel", "2")[0].rows, one, view)

    def test_without_a_view_it_is_seen_from_the_side_where_the_dipoles_lie(self):
        for side, view in ((5, "left"), (-5, "right")):
            rows = [(0, side, 3), (1, 0.8 * side, 3)]
            self.assertEqual(self.draw(rows, "--mm-per-pixel", "2")[0].rows,
                             self.draw(rows, "--view", view, "--mm-per-pixel", "2")[0].rows)

    def test_ball_and_scale_set_the_size(self):
        def across(*options):
            xs = [p[0] for p in self.draw([(0, 0, 0)], "--no-arrows", *options)[0].pixels(is_yellow)]
            return max(xs) - min(xs) + 1
        self.assertAlmostEqual(across(), 10, delta=2)
        self.assertAlmostEqual(across("--ball", "10"), 40, delta=4)
        self.assertAlmostEqual(across("--ball", "10", "--mm-per-pixel", "1"), 20, delta=3)

    def test_arrows_add_to_the_balls(self):
        rows = [(0, 0, 3)]
        plain = len(self.draw(rows, "--no-arrows")[0].pixels(is_yellow))
        self.assertGreater(len(self.draw(rows)[0].pixels(is_yellow)), plain + 40)


class Reports(SceneTest):
    def test_every_dipole_is_counted(self):
        _, result = self.draw([(0, 3, 3), (0, -3, 3), (3, 0, 3)], head=True)
        self.assertIn("dipole: 3D picture: dipoles: 3 of 3\n", result.err)
        self.assertNotIn("warning", result.err)

    def test_what_is_behind_a_slice_is_told_and_shines_through(self):
        rows = [(0, -4, 3)]
        options = ("--no-arrows", "--view", "left", "--slice", "sagittal:0")
        picture, result = self.draw(rows, *options, head=True)
        self.assertIn("dipole: 3D picture: 1 dipole behind a slice, seen through it\n", result.err)
        self.assertGreater(len(picture.pixels(lambda r, g, b: r > b + 25 and g > b + 25)), 50)
        picture, result = self.draw(rows, "--view", "left", head=True)
        self.assertNotIn("behind", result.err)
        self.assertGreater(len(picture.pixels(is_yellow)), 50)

    def test_a_dipole_without_a_place_is_told(self):
        _, result = self.draw([(0, 3, 3), (0, "nan", 3)], "--accept", "lost-rows")
        self.assertIn("dipole: warning: 3D picture: 1 dipole without a valid location\n", result.err)
        self.assertIn("dipoles: 1 of 2\n", result.err)

    def test_the_examples_are_drawn_from_every_side(self):
        for name, shown, count in (("auditory.dip", 2, 2), ("spikes.dip", 111, 120), ("median.txt", 9, 9)):
            for view in ("left", "right", "front", "back", "top", "bottom"):
                result = self.succeed("draw", example(name), "--yes", "--3d", "--view", view, "--force",
                                      "-o", self.path("out.png"))
                self.assertIn("dipoles: %d of %d\n" % (shown, count), result.err)

    def test_another_head_is_told(self):
        result = self.end_with(1, "draw", example("auditory.dip"), "--3d", "--mri", grey_head(), "--fiducials",
                              LEFT_FIRST, "-o", self.path("out.png"))
        self.assertIn("is this the same head?", result.err)

    def test_a_volume_that_does_not_state_its_sides_is_told(self):
        mri = head_volume(self.path("plain.nii.gz"), size=20, spacing=12.0, sform=False)
        path = self.write("d.dip", dipole_file([(0, 0, 3, 7, "a")]))
        result = self.succeed("draw", path, "--3d", "--mri", mri, "--fiducials",
                              "120,220,120 40,120,120 200,120,120", "-o", self.path("out.png"))
        self.assertIn("warning: %s does not say which side of it is left" % mri, result.err)


class Arguments(SceneTest):
    def attempt(self, *options):
        path = self.write("d.dip", dipole_file([(0, 0, 3, 7, "a")]))
        result = self.end_with(2, "draw", path, "-o", self.path("out.png"), *options)
        self.assertFalse(os.path.exists(self.path("out.png")), options)
        return result.out + result.err

    def test_views_angles_and_balls_that_are_none(self):
        for options in (("--view", "inside"), ("--angles", "1"), ("--angles", "1,2,3"), ("--angles", "a,b"),
                        ("--angles", "nan,0"), ("--angles", "0,91"), ("--angles", "361,0"), ("--angles", ""),
                        ("--ball", "0"), ("--ball", "51"), ("--ball", "nan"), ("--ball", "0x2"), ("--view", "left", "--angles", "1,2")):
            self.attempt("--3d", *options)

    def test_slices_need_a_head(self):
        self.assertIn("slices need --mri HEAD", self.attempt())
        self.assertIn("slices need --mri HEAD", self.attempt("--3d", "--slice", "axial:3"))
        self.assertIn("--fiducials needs --mri HEAD", self.attempt("--3d", "--fiducials", LEFT_FIRST))

    def test_what_belongs_to_3d_needs_it(self):
        head = ("--mri", grey_head(), "--fiducials", LEFT_FIRST)
        for options in (("--view", "left"), ("--angles", "1,2"), ("--ball", "3")):
            self.assertIn("requires --3d", self.attempt(*head, *options))

    def test_what_belongs_to_slices_alone_is_refused(self):
        for options in (("--tolerance", "4"), ("--glyph", "9"), ("--module-slab",)):
            self.assertIn("excludes", self.attempt("--3d", *options))

    def test_the_help_tells_of_it(self):
        self.assertIn("--3d", self.succeed("draw", "--help").out)


if __name__ == "__main__":
    unittest.main()
