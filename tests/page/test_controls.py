"""What is shown follows the controls, and says so."""

import unittest

from selenium.webdriver.common.keys import Keys

import page_data
from support import PageTest, green

MARK = page_data.MARK


class Controls(PageTest):
    def spread(self, count=6):
        """Dipoles on one axial slice; latencies 10 ms and on, errors 2 percent and on."""
        self.open_head([(-50.0 + 20.0 * i, 30.0, 21.0) for i in range(count)])

    def count(self):
        return self.text(".filters .count")

    def type(self, name, text):
        field = self.one(f"input[aria-label='{name}']")
        field.clear()
        field.send_keys(text + "\n")

    def green_pixels(self):
        return green(self.pixels("axial")).sum()

    def test_limits_take_dipoles_out_of_the_pictures_and_are_counted(self):
        self.spread()
        all_of_them = self.green_pixels()
        self.type("Fit error, %, at most", "4")
        self.assertEqual(self.count(), "3 of 6 dipoles")
        self.assertAlmostEqual(self.green_pixels() / all_of_them, 0.5, delta=0.1)
        self.press(Keys.ESCAPE, "g")
        field = self.one("input[aria-label='Goodness of fit, %, at least']")
        self.assertEqual(field.get_attribute("value"), "96")
        self.one(".filters button").click()
        self.assertEqual(self.count(), "6 of 6 dipoles")
        self.assertAlmostEqual(self.green_pixels() / all_of_them, 1.0, delta=0.02)

    def test_what_is_no_number_is_marked_and_limits_nothing(self):
        self.spread()
        self.type("Moment, nAm, at least", "many")
        field = self.one("input[aria-label='Moment, nAm, at least']")
        self.assertEqual(field.get_attribute("aria-invalid"), "true")
        self.assertEqual(self.count(), "6 of 6 dipoles")

    def test_the_latency_cursor_shows_what_is_within_its_window_and_plays(self):
        self.spread()
        self.press("k")
        self.assertEqual(self.count(), "1 of 6 dipoles")
        self.press(" ")
        at = self.one(".time input[type=range]")
        first = float(at.get_attribute("value"))
        self.wait(lambda: float(at.get_attribute("value")) > first + 1)
        self.press(" ")
        stopped = at.get_attribute("value")
        self.drawn()
        self.assertEqual(at.get_attribute("value"), stopped)
        self.press("k")
        self.assertEqual(self.count(), "6 of 6 dipoles")

    def test_colours_follow_a_value_and_the_legend_tells_them(self):
        self.spread()
        self.choose("Colour by", "fitError")
        self.assertFalse(green(self.pixels("axial")).any())
        legend = self.text(".legend")
        self.assertIn("Fit error, %", legend)
        self.assertIn("22", legend)

    def test_the_atlas_names_the_place_or_the_nearest_label_with_its_distance(self):
        atlas = {"name": "test", "space": None, "placesSpace": None, "doubt": None, "reach": 10.0,
                 "names": {"7": "Seven <b>", "300": "Many"}}
        labels = [(7, (-50, 25, 15), (-40, 35, 25)), (300, (20, 0, 0), (30, 10, 10))]
        head, _ = page_data.head_file()
        for place, said in ((MARK, "Seven <b>"), ((25.0, 5.0, 5.0), "Many"), ((0.0, -60.0, -60.0), "no label within 10 mm"),
                            # The last voxel of the label stands at x = 29.
                            ((35.0, 5.0, 5.0), "near Many, 6.0 mm")):
            with self.subTest(place):
                self.open(page_data.in_mni(page_data.page_data([place], atlas=atlas)), head, page_data.atlas_file(labels))
                self.assertEqual(self.text(".place .atlas"), f"test: {said}")

    def test_every_control_has_a_name_for_a_screen_reader(self):
        self.spread()
        nameless = self.js("""
            return [...document.querySelectorAll('.display *, .filters *, .time *, .header *, .pane *')]
                .filter((e) => e.matches('button, select, input, .marks'))
                .filter((e) => !(e.getAttribute('aria-label') || '').trim() &&
                               !(e.labels && [...e.labels].some((label) => label.textContent.trim())))
                .map((e) => e.outerHTML)""")
        self.assertEqual(nameless, [])

    def test_the_licences_of_what_is_bundled_are_told(self):
        self.spread()
        self.one("button[aria-label^='About']").click()
        told = self.text("dialog[open] .licenses")
        for name in ("@niivue/niivue", "tabulator-tables", "uplot", "gl-matrix", "nifti-reader-js", "fflate"):
            self.assertIn(name, told)
        self.assertIn("Redistribution and use in source and binary forms", told)


if __name__ == "__main__":
    unittest.main()
