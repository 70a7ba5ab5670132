"""The pictures answer to the hand, and to each other."""

import io
import os
import unittest

import numpy
from PIL import Image
from selenium.webdriver.common.action_chains import ActionChains
from selenium.webdriver.common.actions.wheel_input import ScrollOrigin
from selenium.webdriver.common.keys import Keys

import page_data
from support import PageTest, green, middle_of

MARK = page_data.MARK
FAR = (30.0, -40.0, -18.0)  # no slice through the mark comes near it


class Panes(PageTest):
    def frame(self, name):
        """Three numbers: the crosshair in that frame, mm."""
        numbers = self.all(f".place [data-frame={name}] .number")
        return [float(number.text.replace("−", "-")) for number in numbers]

    def click(self, name, x, y, *held):
        """At a pixel of the pane from its upper left corner."""
        pane = self.pane(name)
        actions = ActionChains(self.driver)
        for key in held:
            actions.key_down(key)
        actions.move_to_element_with_offset(pane, round(x - pane.size["width"] / 2), round(y - pane.size["height"] / 2))
        actions.click()
        for key in held:
            actions.key_up(key)
        actions.perform()

    def dipole_at(self, name):
        return middle_of(green(self.pixels(name)))

    def test_a_click_moves_the_crosshair_in_every_pane_and_frame(self):
        self.open_head([MARK, FAR])
        self.assertEqual(self.frame("scanner"), list(MARK))
        self.assertEqual(self.frame("host"), [45.0, 21.0, 30.0])  # left, up, front
        height, width = self.pixels("axial").shape[:2]
        self.click("axial", width / 2 + 3, height / 2 + 2)
        x, y, z = self.frame("scanner")
        self.assertEqual(z, MARK[2], "the axial slice stays")
        self.assertLess(abs(x), 4)
        self.assertLess(abs(y), 4)
        self.assertEqual(self.frame("host"), [-x, z, y])
        self.assertFalse(green(self.pixels("sagittal")).any(), "the sagittal slice left the dipole")

    def test_a_click_on_a_dipole_selects_it_and_puts_the_crosshair_there(self):
        near = (MARK[0] + 20, MARK[1], MARK[2])
        self.open_head([near, MARK], settings=page_data.page_data([near, MARK])["settings"] | {"crosshair": list(FAR)})
        self.press(Keys.ESCAPE)
        self.choose("Sides", "neurological")
        self.press("n")
        self.assertEqual(self.frame("scanner"), list(near))
        dipoles = green(self.pixels("axial"))
        rows, found = numpy.nonzero(dipoles)
        left = found < found.mean()
        self.click("axial", found[left].mean(), rows[left].mean())
        self.assertEqual(self.frame("scanner"), list(MARK), "exactly its place")
        self.assertIn("(1)", self.text("[role=tab]:first-child"))

    def test_a_click_on_a_dipole_in_space_selects_it_too(self):
        self.open_head([FAR, MARK])
        self.choose("3D", "none")
        x, y = self.dipole_at("scene")
        self.press("n", "n")
        self.press(Keys.ESCAPE)
        self.click("scene", x, y)
        self.assertIn(self.frame("scanner"), [list(MARK), list(FAR)])

    def test_the_wheel_goes_through_the_slices_and_only_dipoles_near_enough_are_shown(self):
        self.open_head([MARK])
        pane = self.pane("axial")
        for turns, is_shown in ((5, True), (1, False)):
            for _ in range(turns):
                ActionChains(self.driver).scroll_from_origin(ScrollOrigin.from_element(pane), 0, -100).perform()
            with self.subTest(z=self.frame("scanner")[2]):
                self.assertEqual(green(self.pixels("axial")).any(), is_shown)
        self.assertEqual(self.frame("scanner")[2], MARK[2] + 6)

    def test_the_right_button_changes_grey_values_and_a_key_resets_them(self):
        self.open_head([FAR])
        before = self.pixels("axial", marks=False)
        pane = self.pane("axial")
        ActionChains(self.driver).move_to_element(pane).perform()
        self.js("""
            const at = (type, x, y) => arguments[0].dispatchEvent(new PointerEvent(type,
                {clientX: x, clientY: y, button: 2, buttons: 2, pointerId: 1, bubbles: true}));
            arguments[0].setPointerCapture = () => {};
            at('pointerdown', 100, 100); at('pointermove', 100, 160); at('pointerup', 100, 160);""", pane)
        darker = self.pixels("axial", marks=False)
        self.assertLess(darker.mean(), before.mean() - 5)
        self.press("w")
        numpy.testing.assert_array_equal(self.pixels("axial", marks=False), before)

    def test_keys_move_zoom_enlarge_and_turn(self):
        self.open_head([MARK])
        self.click("axial", 176, 176)
        x, y, z = self.frame("scanner")
        self.press(Keys.ARROW_RIGHT)
        self.assertEqual(self.frame("scanner"), [x - 1, y, z], "radiological: to the patient's left")
        self.press("r", Keys.ARROW_RIGHT, Keys.ARROW_RIGHT)
        self.assertEqual(self.frame("scanner"), [x + 1, y, z], "neurological: to the patient's right")
        self.press(Keys.PAGE_UP)
        self.assertEqual(self.frame("scanner")[2], z + 1)
        before = self.pixels("axial", marks=False)
        self.press("+", "+")
        self.assertGreater((self.pixels("axial", marks=False) > 20).sum(), (before > 20).sum() * 1.2)
        self.press("0")
        numpy.testing.assert_array_equal(self.pixels("axial", marks=False), before)
        self.press("2")
        shown = [pane.get_attribute("data-pane") for pane in self.all(".pane") if pane.is_displayed()]
        self.assertEqual(shown, ["coronal"])
        self.press(Keys.ESCAPE)
        self.assertEqual(sum(pane.is_displayed() for pane in self.all(".pane")), 4)

    def test_the_question_mark_tells_every_key(self):
        self.open_head([MARK, FAR])
        self.press("?")
        dialog = self.one("dialog[open]")
        self.assertEqual(dialog.get_attribute("aria-label"), "Keys")
        told = {key.text for key in self.all("dialog[open] kbd")}
        self.assertLessEqual({"←", "+", "n", "r", "Space", "?", "e", "Esc"}, told)
        self.press(Keys.ESCAPE)
        self.assertEqual(self.all("dialog[open]"), [])

    def test_the_picture_that_is_saved_is_what_is_seen(self):
        self.open_head([MARK], warnings=["Beware of this."])
        seen = self.pixels("axial")
        self.press("e")
        path = os.path.join(self.folder, "dipoles.png")
        self.wait(lambda: os.path.exists(path) and os.path.getsize(path) > 0)
        with open(path, "rb") as file:
            saved = numpy.asarray(Image.open(io.BytesIO(file.read())).convert("RGB")).astype(int)
        os.remove(path)
        height, width = seen.shape[:2]
        found = [top for top in range(saved.shape[0] - height)
                 if (saved[top:top + height, :width] == seen).all()]
        self.assertEqual(len(found), 1, "the axial pane is in the picture, pixel by pixel")
        heading = saved[:found[0]]
        amber = (heading[..., 0] > 220) & (heading[..., 2] < 120)
        self.assertTrue(amber.any(), "the warning stands above it")

    def test_without_a_head_the_sphere_and_its_axes_stand_in(self):
        data = page_data.page_data([(-40.0, 20.0, 10.0)], head=None, sphere={"centre": [0, 0, 0], "radius": 90.0})
        self.open(data)
        self.choose("Sides", "radiological")
        pixels = self.pixels("axial")
        x, _ = middle_of(green(pixels))
        self.assertGreater(x, pixels.shape[1] / 2 + 20)
        line = (numpy.abs(pixels - [127, 147, 178]).max(axis=2) < 40).sum()
        self.assertGreater(line, 300, "the circle in which the slice cuts the sphere")
        self.assertIn("no head", self.text(".header"))


class Warnings(PageTest):
    def amber(self, name):
        pixels = self.pixels(name)
        return ((pixels[..., 0] > 220) & (pixels[..., 1] > 150) & (pixels[..., 2] < 120)).sum()

    def test_warnings_stand_in_a_bar_and_in_every_pane(self):
        self.open_head([MARK], warnings=["A part of the head is missing."])
        self.assertIn("A part of the head is missing.", self.text(".warnings"))
        for name in ("axial", "coronal", "sagittal", "scene"):
            with self.subTest(name):
                self.assertGreater(self.amber(name), 50)

    def test_sides_that_nobody_stated_are_said_in_every_pane(self):
        head = page_data.page_data([MARK])["head"] | {"areSidesStated": False}
        self.open_head([MARK], head=head)
        self.assertIn("Left and right are assumed", self.text(".warnings"))
        for name in ("axial", "coronal", "sagittal", "scene"):
            with self.subTest(name):
                self.assertGreater(self.amber(name), 50)

    def test_without_a_warning_there_is_none(self):
        self.open_head([MARK])
        self.assertEqual(self.amber("axial"), 0)
        self.assertFalse(self.one(".warnings").is_displayed())


if __name__ == "__main__":
    unittest.main()
