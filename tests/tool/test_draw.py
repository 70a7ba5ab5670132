"""`dipole draw` puts every dipole where it belongs, on the proper side, or says that it does not show it."""

import os
import socket
import stat
import unittest

from support import (LEFT_FIRST, Png, ToolTest, dipole_file, example, head_volume, is_dipole_colour,
                     moving_file, run)

GREY_HEAD = None


def grey_head():
    """One head for all tests of this file: making it takes a moment."""
    global GREY_HEAD
    if GREY_HEAD is None:
        import tempfile

        folder = tempfile.TemporaryDirectory()
        GREY_HEAD = (folder, head_volume(os.path.join(folder.name, "head.nii.gz")))
    return GREY_HEAD[1]


def centre(pixels):
    xs, ys = [p[0] for p in pixels], [p[1] for p in pixels]
    return (min(xs) + max(xs)) / 2, (min(ys) + max(ys)) / 2


class DrawTest(ToolTest):
    def draw_files(self, paths, *options, code=0, mri=None, fiducials=LEFT_FIRST):
        return self.end_with(code, "draw", *paths, "--mri", mri or grey_head(), "--fiducials", fiducials,
                             "--no-arrows", "--force", "-o", self.path("out.png"), *options)

    def picture(self):
        with open(self.path("out.png"), "rb") as file:
            return Png(file.read())

    def draw(self, rows, *options, code=0, mri=None, fiducials=LEFT_FIRST):
        """Draws one file of these (x to the nose, y left, z up, cm) dipoles; returns (picture, result)."""
        path = self.write("d.dip", dipole_file([(x, y, z, 7, "a") for x, y, z in rows]))
        result = self.draw_files([path], *options, code=code, mri=mri, fiducials=fiducials)
        return self.picture(), result

    def dipole_pixels(self, rows, *options):
        picture, result = self.draw(rows, *options)
        return picture.pixels(is_dipole_colour), picture, result


class Places(DrawTest):
    def spot(self, rows, *options):
        pixels, _, _ = self.dipole_pixels(rows, "--glyph", "5", *options)
        self.assertEqual(len(pixels), 25)
        return centre(pixels)

    def offset(self, view, first, second):
        """How many pixels right and down the second dipole stands from the first."""
        slice_at = {"axial": 90, "coronal": 0, "sagittal": 0}[view]
        options = ("--slice", "%s:%g" % (view, slice_at), "--tolerance", "100")
        pixels, _, _ = self.dipole_pixels([first, second], "--glyph", "1", *options)
        alone = self.draw([first], "--glyph", "1", *options)[0].pixels(is_dipole_colour)
        self.assertEqual((len(pixels), len(alone)), (2, 1))
        other, = set(pixels) - set(alone)
        return other[0] - alone[0][0], other[1] - alone[0][1]

    def test_left_is_right_front_is_up_on_axial_slices(self):
        self.assertEqual(self.offset("axial", (0, 0, 3), (0, 5, 3)), (100, 0))
        self.assertEqual(self.offset("axial", (0, 0, 3), (5, 0, 3)), (0, -100))

    def test_left_is_right_up_is_up_on_coronal_slices(self):
        self.assertEqual(self.offset("coronal", (0, 0, 3), (0, 5, 3)), (100, 0))
        self.assertEqual(self.offset("coronal", (0, 0, 3), (0, 0, 6)), (0, -60))

    def test_front_is_right_up_is_up_on_sagittal_slices(self):
        self.assertEqual(self.offset("sagittal", (0, 0, 3), (5, 0, 3)), (100, 0))
        self.assertEqual(self.offset("sagittal", (0, 0, 3), (0, 0, 6)), (0, -60))

    def test_the_dipole_of_the_patients_left_is_in_the_right_half(self):
        for view in ("axial:31", "coronal:0"):
            for side, is_right in ((5, True), (-5, False)):
                pixels, picture, _ = self.dipole_pixels([(0, side, 3)], "--slice", view)
                self.assertEqual(centre(pixels)[0] > picture.width / 2, is_right, (view, side))

    def test_a_dipole_stands_on_the_bright_spot_at_its_place(self):
        # 45 mm left, 30 mm up, 20 mm in front: scanner coordinates point right, front, up.
        mri = head_volume(self.path("spot.nii.gz"), bright=(-45, 20, 30))
        for view in ("axial:30", "coronal:20", "sagittal:45"):
            picture, _ = self.draw([(2, 4.5, 3)], "--slice", view, "--glyph", "3", mri=mri)
            x, y = centre(picture.pixels(is_dipole_colour))
            bright = [p for p in picture.pixels(lambda r, g, b: r == g == b and r > 150)
                      if abs(p[0] - x) < 30 and abs(p[1] - y) < 30]
            self.assertGreater(len(bright), 300, view)
            spot = [sum(p[axis] for p in bright) / len(bright) for axis in (0, 1)]
            self.assertLess(abs(spot[0] - x) + abs(spot[1] - y), 2.0, view)

    def test_mm_per_pixel_sets_the_scale(self):
        pixels, _, _ = self.dipole_pixels([(0, 0, 3), (0, 5, 3)], "--slice", "coronal:0", "--glyph", "1",
                                          "--mm-per-pixel", "1")
        self.assertEqual(abs(pixels[0][0] - pixels[1][0]), 50)

    def test_glyph_is_the_side_of_the_square(self):
        pixels, _, _ = self.dipole_pixels([(0, 0, 3)], "--slice", "coronal:0", "--glyph", "9")
        self.assertEqual(len(pixels), 81)

    def test_without_slices_three_views_through_the_strongest(self):
        rows = [(-4, 3, 3, 7, "a"), (2, -4, 5, -90, "strong"), (0, 0, 1, 8, "c")]
        path = self.write("s.dip", dipole_file(rows))
        result = self.draw_files([path])
        self.assertIn("Axial slice at y = 50.0 mm (up): ", result.err)
        self.assertIn("Coronal slice at z = 20.0 mm (front): ", result.err)
        self.assertIn("Sagittal slice at x = -40.0 mm (right): ", result.err)

    def test_files_are_drawn_together(self):
        one = self.write("one.dip", dipole_file([(0, 5, 3, 7, "a")]))
        two = self.write("two.dip", dipole_file([(0, -5, 3, 7, "a")]))
        self.draw_files([one, two], "--slice", "coronal:0", "--glyph", "5")
        self.assertEqual(len(self.picture().pixels(is_dipole_colour)), 50)


class Patients(DrawTest):
    def picture_of(self, *patients):
        paths = []
        for number, patient in enumerate(patients):
            head = "File_Info\n{\nPATIENT: %s\n}\n" % patient if patient else ""
            paths.append(self.write("%d.dip" % number, dipole_file([(0, 5, 3, 7, "a")], head)))
        self.draw_files(paths, "--slice", "coronal:0")
        with open(self.path("out.png"), "rb") as file:
            return file.read()

    def test_the_patient_stands_in_the_picture_only_when_all_files_agree(self):
        nobody = self.picture_of("", "")
        self.assertEqual(self.picture_of("A", "B"), nobody)
        self.assertEqual(self.picture_of("A", ""), nobody)
        self.assertNotEqual(self.picture_of("A", "A"), nobody)
        self.assertNotEqual(self.picture_of("A", "A"), self.picture_of("B", "B"))


class Warnings(DrawTest):
    def test_the_tolerance_decides_what_a_slice_shows(self):
        rows = [(0.4, 0, 3), (1.0, 3, 3)]
        pixels, _, result = self.dipole_pixels(rows, "--slice", "coronal:0", "--glyph", "1")
        self.assertEqual(len(pixels), 1)
        self.assertIn("1 of 2", result.err)
        for tolerance, count in (("3.5", 0), ("4", 1), ("10", 2), ("0", 0), ("all", 2)):
            options = ("--slice", "coronal:0", "--glyph", "1", "--tolerance", tolerance)
            self.assertEqual(len(self.dipole_pixels(rows, *options)[0]), count, tolerance)

    def test_an_axial_slice_shows_what_lies_near_it_below_the_ears_too(self):
        options = ("--slice", "axial:-3", "--glyph", "3")
        self.assertEqual(len(self.dipole_pixels([(0, 0, -0.3)], *options)[0]), 9)
        pixels, _, result = self.dipole_pixels([(0, 0, -0.3)], *options, "--module-slab")
        self.assertEqual(pixels, [])
        self.assertIn("dipole: warning: Axial slice at y = -3.0 mm (down): 1 dipole close to this slice not drawn",
                      result.err)

    def test_the_modules_slab_shows_all_from_the_ears_up_to_the_slice(self):
        rows = [(0, 3, 1), (0, 0, 3), (0, -3, -1)]
        self.assertEqual(len(self.dipole_pixels(rows, "--slice", "axial:60", "--glyph", "1")[0]), 0)
        options = ("--slice", "axial:60", "--glyph", "1", "--module-slab")
        self.assertEqual(len(self.dipole_pixels(rows, *options)[0]), 2)

    def test_dipoles_switched_off_by_flags_are_told_and_not_drawn(self):
        flags = "Dipole_Flags\n{\n1: 0 0 1 1 1\n2: 0 1 1 1 1\n}\n"
        path = self.write("f.dip", dipole_file([(0, 0, 3, 7, "a"), (0, 5, 3, 7, "b")]) + flags)
        result = self.draw_files([path], "--slice", "coronal:0", "--glyph", "5")
        self.assertIn("dipole: Coronal slice at z = 0.0 mm (origin): 1 switched off\n", result.err)
        self.assertEqual(len(self.picture().pixels(is_dipole_colour)), 25)
        scene = self.draw_files([path], "--3d", "--view", "front", "--mm-per-pixel", "2")
        self.assertIn("dipole: 3D picture: dipoles: 1 of 2\n", scene.err)
        self.assertIn("dipole: 3D picture: 1 switched off\n", scene.err)

    def test_another_head_is_told(self):
        warning = "wrong (other-head): For this MRI the distances between the fiducial points differ by 12 mm"
        files, own = [example("auditory.dip")], example("ch2.fiducials")
        self.assertIn(warning, self.draw_files(files, code=1).err)
        self.assertIn(warning, self.draw_files(files, "--accept", "other-head").err)
        self.assertNotIn("same head", self.draw_files(files, fiducials=own).err)

    def test_a_volume_that_does_not_state_its_sides_is_told(self):
        mri = head_volume(self.path("plain.nii.gz"), size=20, spacing=12.0, sform=False)
        _, result = self.draw([(0, 0, 3)], mri=mri, fiducials="120,220,120 40,120,120 200,120,120")
        self.assertIn("warning: %s does not say which side of it is left" % mri, result.err)


class Choices(DrawTest):
    def drawn(self, *options):
        """How many of four dipoles, of moments 10 to 40 and latencies 100 to 400 ms, are on the slice."""
        path = self.write("m.dip", moving_file([(0.1 * i, 2, 2 * i - 5, 3) for i in (1, 2, 3, 4)]))
        result = self.draw_files([path], "--slice", "coronal:20", "--mm-per-pixel", "2", "--yes", *options)
        return result.err

    def test_limits_leave_out_what_is_beyond_them(self):
        self.assertIn("dipoles: 4 of 4 on this slice", self.drawn())
        err = self.drawn("--latency", "200:300")
        self.assertIn("dipoles: 2 of 4 on this slice", err)
        self.assertIn("2 filtered out", err)
        self.assertIn("dipoles: 3 of 4 on this slice", self.drawn("--latency", ":300"))
        self.assertIn("dipoles: 0 of 4 on this slice", self.drawn("--max-error", "5"))
        self.assertIn("dipoles: 4 of 4 on this slice", self.drawn("--max-error", "5.5"))
        self.assertIn("dipoles: 4 of 4 on this slice", self.drawn("--moment", "20:"))
        self.assertIn("dipoles: 0 of 4 on this slice", self.drawn("--moment", "20.5:"))

    def test_colours_by_value_come_with_a_legend(self):
        rows = [(0, 5, 3), (0, -5, 3)]
        plain = self.draw(rows, "--slice", "coronal:0")[0]
        coloured = self.draw(rows, "--slice", "coronal:0", "--color-by", "moment")[0]
        self.assertGreater(len(plain.pixels(is_dipole_colour)), 20)
        self.assertEqual(coloured.pixels(is_dipole_colour), [])
        self.assertGreater(coloured.width, plain.width)

    def test_several_slice_options_make_rows(self):
        one = self.draw([(0, 0, 3)], "--slice", "axial:30", "--mm-per-pixel", "2")
        many = self.draw([(0, 0, 3)], "--slice", "axial:30,coronal:0", "--slice", "sagittal:0", "--slice",
                         "axial:40", "--mm-per-pixel", "2")
        self.assertGreater(many[0].height, one[0].height + 100)
        self.assertEqual(many[1].err.count(" slice at "), 4)

    def test_slices_run_through_each_chosen_dipole(self):
        rows = [(0, 5, 3), (1, -5, 3), (2, 0, 4)]
        _, result = self.draw(rows, "--slices-through", "1,3", "--mm-per-pixel", "2")
        for place in ("Sagittal slice at x = 50.0 mm", "Sagittal slice at x = 0.0 mm", "Axial slice at y = 40.0"):
            self.assertIn(place, result.err)
        self.assertNotIn("x = -50.0", result.err)
        _, result = self.draw(rows, "--slices-through", "all", "--mm-per-pixel", "2")
        self.assertEqual(result.err.count("Coronal slice at"), 3)
        path = self.path("d.dip")
        missing = self.draw_files([path], "--slices-through", "7", code=1)
        self.assertIn("no dipole with the number 7 is shown", missing.err)

    def test_a_dipole_without_a_place_does_not_block_the_slices_of_default(self):
        rows = [(0, "nan", 3, 900, "lost"), (0, 5, 3, 7, "a")]
        path = self.write("n.dip", dipole_file(rows))
        result = self.draw_files([path], "--mm-per-pixel", "2", "--accept", "lost-rows")
        self.assertIn("Sagittal slice at x = 50.0 mm (left): dipoles: 1 of 2 on this slice", result.err)
        self.assertIn("warning: Sagittal slice at x = 50.0 mm (left): 1 dipole without a valid location",
                      result.err)

    def test_the_points_beside_the_mri_serve_when_none_are_given(self):
        mri = head_volume(self.path("own.nii.gz"), size=50, spacing=5.0)
        dip = self.write("d.dip", dipole_file([(0, 0, 3, 7, "a")]))
        attempt = ("draw", dip, "--mri", mri, "--slice", "coronal:0", "-o", self.path("out.png"))
        self.assertIn("no fiducial points", self.end_with(1, *attempt).err)
        self.assertFalse(os.path.exists(self.path("out.png")))
        points = self.path("own.fiducials")
        with socket.socket(socket.AF_UNIX) as no_file:  # which nobody can open, whoever it is
            no_file.bind(points)
            self.assertIn("fiducial points %s: cannot be opened (No such device or address)" % points,
                          self.end_with(1, *attempt).err)
        os.remove(points)
        self.write("own.fiducials", "nasion 0 100 0\nleft -80 0 0\nright 80 0 0\n")
        self.assertIn("dipoles: 1 of 1", self.end_with(0, *attempt).err)


class Failures(DrawTest):
    def attempt(self, code, *, dip=None, mri=None, fiducials=LEFT_FIRST, output=None, more=()):
        dip = dip or self.write("d.dip", dipole_file([(0, 0, 3, 7, "a")]))
        return self.end_with(code, "draw", dip, "--mri", mri or grey_head(), "--fiducials", fiducials,
                             "--force", "-o", output or self.path("out.png"), *more)

    def test_bad_slices_sizes_and_overlaps_end_with_2(self):
        slices = ("oblique:3", "axial", "axial:x", "axial:", "axial:nan", "axial:301", "axial:3,", ",", "")
        others = (("--glyph", "0"), ("--glyph", "65"), ("--tolerance", "-1"), ("--tolerance", "some"), ("--moment", "5"), ("--latency", "9:1"),
                  ("--moment", ":"), ("--color-by", "size"), ("--slices-through", "x"), ("--mm-per-pixel", "0"),
                  ("--mm-per-pixel", "6"), ("--mm-per-pixel", "nan"), ("--glyph", "1e1"), ("--glyph", "0x10"),
                  ("--max-error", "nan"), ("--max-error", " 5"), ("--max-error", "0x10"), ("--max-error", "-1"),
                  ("--tolerance", "nan"), ("--slices-through", "3000000000"), ("--slices-through", "1e300"),
                  ("--slices-through", "1.5"))
        for more in [("--slice", text) for text in slices] + list(others):
            self.attempt(2, more=more)
            self.assertFalse(os.path.exists(self.path("out.png")), more)

    def test_fiducials_that_are_none(self):
        cases = {
            "nasion 0 100 0\nleft -80 0 0\n": "no line gives the point right",
            "nasion 0 100 0\nleft -80 0 0\nright 80 0\n": "line 3 needs three numbers after right",
            "nasion 0 100 0\nleft -80 0 x\n": "line 2 needs three numbers after left",
            "nasion 0 100 0\nnasion 0 100 0\n": "line 2 gives the point nasion a second time",
            "# head\n\nnose 0 100 0\n": "line 3 begins with neither nasion, left nor right",
        }
        for text, cause in cases.items():
            path = self.write("f.fiducials", text)
            result = self.attempt(1, fiducials=path)
            self.assertIn("dipole: fiducial points %s: %s\n" % (path, cause), result.err)
        self.assertIn("a folder, not a file", self.attempt(1, fiducials=self.folder).err)
        self.assertIn("cannot be opened", self.attempt(1, fiducials=self.path("missing")).err)
        self.assertIn("three triples", self.attempt(1, fiducials="1,2,3 4,5,6").err)
        self.assertFalse(os.path.exists(self.path("out.png")))

    def test_a_fiducial_file_may_hold_comments_and_any_order(self):
        text = "# a head\r\n right 80 0 0 # ear\r\n\r\nleft\t-80 0 0\r\nnasion 0 +1e2 0\r\n"
        self.attempt(0, fiducials=self.write("f.fiducials", text))

    def test_exchanged_ears_are_refused(self):
        result = self.attempt(1, fiducials="0,100,0 80,0,0 -80,0,0")
        self.assertIn("ear", result.err)
        self.assertFalse(os.path.exists(self.path("out.png")))

    def test_a_volume_that_is_none(self):
        self.assertIn("missing.nii.gz", self.attempt(1, mri=self.path("missing.nii.gz")).err)
        text = self.write("text.nii", "this is no volume\n")
        self.assertIn("text.nii", self.attempt(1, mri=text).err)
        with open(grey_head(), "rb") as file:
            cut = self.write("cut.nii.gz", file.read()[:3000])
        self.assertIn("cut.nii.gz", self.attempt(1, mri=cut).err)

    def test_nothing_imported_draws_nothing(self):
        result = self.attempt(1, dip=self.write("e.dip", ""))
        self.assertIn("dipole: nothing to draw: no dipole was imported\n", result.err)
        self.assertFalse(os.path.exists(self.path("out.png")))

    def test_a_picture_that_cannot_be_written_is_named_and_leaves_nothing_behind(self):
        missing = self.path("nowhere/out.png")
        self.assertIn("dipole: cannot write %s: No such file or directory\n" % missing,
                      self.attempt(1, output=missing).err)
        folder = self.path("folder.png")
        os.mkdir(folder)
        self.assertIn("dipole: cannot write %s: " % folder, self.attempt(1, output=folder).err)
        self.assertEqual(sorted(os.listdir(self.folder)), ["d.dip", "folder.png"])

    def test_a_failure_leaves_the_picture_of_before(self):
        output = self.write("out.png", "before")
        self.attempt(1, mri=self.path("missing.nii.gz"))
        with open(output, encoding="ascii") as file:
            self.assertEqual(file.read(), "before")

    def test_an_input_is_never_overwritten(self):
        dip = self.write("d.png", dipole_file([(0, 0, 3, 7, "a")]))
        os.symlink(dip, self.path("link.png"))
        for output in (dip, self.path("link.png")):
            result = self.attempt(2, dip=dip, output=output, more=("--from", "ctf"))
            self.assertIn("would overwrite the input", result.err)
        self.assertEqual(run("list", dip).returncode, 0)

    def test_the_picture_has_the_usual_permissions(self):
        output = self.path("out.png")
        before = os.umask(0o027)
        try:
            self.attempt(0)
        finally:
            os.umask(before)
        self.assertEqual(stat.S_IMODE(os.stat(output).st_mode), 0o640)
        self.assertEqual(sorted(os.listdir(self.folder)), ["d.dip", "out.png"])

    def test_the_picture_that_replaces_one_has_its_permissions(self):
        output = self.write("out.png", "before")
        os.chmod(output, 0o604)
        self.attempt(0)
        self.assertEqual(stat.S_IMODE(os.stat(output).st_mode), 0o604)
        with open(output, "rb") as file:
            self.assertEqual(file.read(4), b"\x89PNG")

    def test_a_file_that_cannot_be_read_among_others_still_gives_a_picture_but_ends_with_1(self):
        dip = self.write("d.dip", dipole_file([(0, 0, 3, 7, "a")]))
        self.draw_files([dip, self.path("missing.dip")], code=1)
        self.assertTrue(os.path.exists(self.path("out.png")))


if __name__ == "__main__":
    unittest.main()
