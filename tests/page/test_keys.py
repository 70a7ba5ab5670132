"""Everything that a pointer reaches on the page is reached by keys, and the list of keys tells them."""

import os
import unittest

from selenium.webdriver.common.action_chains import ActionChains
from selenium.webdriver.common.keys import Keys

import list_data
from list_support import ListTest


class PageKeys(ListTest):
    def open_random(self, count=40, **changes):
        self.data = list_data.random_data(count, **changes)
        self.open(self.data)

    def focused(self, attribute):
        return self.js("return document.activeElement.getAttribute(arguments[0]) ||"
                       " document.activeElement.textContent", attribute)

    def send(self, key, **fields):
        """A key as the keyboards of other countries send it."""
        self.js("(document.activeElement || document.body).dispatchEvent(new KeyboardEvent('keydown',"
                "{key: arguments[0], bubbles: true, cancelable: true, ...arguments[1]}))", key, fields)

    def test_a_key_goes_to_the_list_where_arrows_choose_rows(self):
        self.open_random()
        self.press("f", Keys.ARROW_DOWN, Keys.ARROW_DOWN)
        self.assertEqual(self.selected(), [2])

    def test_the_first_stop_of_the_page_leads_to_the_list(self):
        self.open_random()
        self.press(Keys.TAB)
        self.assertEqual(self.focused("aria-label"), "To the list of dipoles")
        self.assertTrue(self.one(".skip").is_displayed())
        self.press(Keys.ENTER)
        self.assertEqual(self.focused("role"), "grid")

    def test_keys_save_the_table_show_tabs_and_choose_columns(self):
        self.open_random()
        path = os.path.join(self.folder, "dipoles.csv")
        if os.path.exists(path):
            os.remove(path)
        self.press("s")
        self.wait(lambda: os.path.exists(path))
        for key, name in (("5", "selection"), ("6", "plots"), ("7", "clusters")):
            self.press(key)
            self.assertTrue(self.one(f"#section-{name}").is_displayed(), name)
            self.assertEqual(self.focused("id"), f"tab-{name}")
        self.press("o", " ")
        self.assertFalse(self.one(".list-columns input").is_selected())
        self.press(Keys.ESCAPE)
        self.assertEqual(self.focused("class"), "Columns")
        self.assertFalse(self.one(".list-columns").get_property("open"))

    def test_a_key_shows_each_cluster_alone_and_all_again(self):
        self.open_random()
        counted = []
        for _ in range(3):
            self.press("i")
            counted.append(self.counts())
        self.assertEqual(counted, ["10 of 40 dipoles", "10 of 40 dipoles", "40 of 40 dipoles"])

    def test_a_key_tells_about_the_page(self):
        self.open_random()
        self.press("b")
        self.assertIn("Licences", self.text("dialog[open]"))

    def test_signs_that_a_keyboard_types_with_alt_are_taken_and_letters_are_left(self):
        self.open_random()
        window = "return document.querySelector('[aria-label^=\"Grey value\"]')?.value"
        self.open_head([(0.0, 0.0, 0.0)])
        for modifier in ({"altKey": True}, {"modifierAltGraph": True, "ctrlKey": True, "altKey": True}):
            before = self.js(window)
            self.send("[", **modifier)
            self.assertNotEqual(self.js(window), before, modifier)
        self.send("b", altKey=True)
        self.send("[", ctrlKey=True)
        self.assertEqual(self.all("dialog[open]"), [])

    def test_the_headings_are_one_stop_and_arrows_lead_through_them(self):
        self.open_random()
        stops = self.js("return document.querySelectorAll('.list-head [tabindex=\"0\"]').length")
        self.assertEqual(stops, 1)
        reached = self.js("return [...document.querySelectorAll('.list-head button, .list-head input')]"
                          ".filter((one) => one.tabIndex === 0).length")
        self.assertEqual(reached, 1)
        self.press("u")
        self.assertEqual(self.focused("aria-label"), "Filter No.")
        self.press(Keys.ARROW_RIGHT, Keys.ARROW_RIGHT)
        self.assertEqual(self.focused("aria-label"), "Filter Latency")
        self.press(">", "0", Keys.ARROW_LEFT, Keys.ARROW_LEFT)
        self.assertEqual(self.focused("aria-label"), "Filter Latency")
        self.press(Keys.ARROW_LEFT)
        self.assertEqual(self.focused("aria-label"), "Filter Label")
        self.press(Keys.ARROW_RIGHT, Keys.ARROW_UP, Keys.ENTER)
        self.assertEqual(self.one(".list-sort[data-way=ascending] .list-name").text, "Latency")
        self.press(Keys.ARROW_DOWN, Keys.ARROW_DOWN)
        self.assertEqual(self.focused("role"), "grid")
        late = sum(value > 0 for value in list_data.values(self.data, "latency_ms"))
        self.assertEqual(self.counts(), f"{late} of 40 dipoles")

    def test_a_heading_that_is_reached_by_keys_is_in_sight(self):
        self.open_random()
        self.press("u", *[Keys.ARROW_RIGHT] * 12)
        inside = self.js("const a = document.activeElement.getBoundingClientRect();"
                         "const b = document.querySelector('.list-table').getBoundingClientRect();"
                         "return a.left >= b.left - 1 && a.right <= b.right + 1")
        self.assertTrue(inside, self.focused("aria-label"))

    def test_the_list_of_keys_tells_those_of_the_list(self):
        self.size(1280, 500)
        self.open_random()
        self.press("?")
        told = self.text("dialog[open]")
        for words in ("In the list", "selects all rows that are listed", "to the list", "save the list as a table"):
            self.assertIn(words, told)
        dialog = self.one("dialog[open]")
        self.assertEqual(dialog.get_property("scrollTop"), 0)
        self.assertEqual(self.driver.switch_to.active_element.text, "Keys")
        self.press(Keys.ESCAPE)
        self.assertEqual(self.all("dialog[open]"), [])

    def test_arrows_scroll_the_side_while_it_has_the_focus_and_move_the_crosshair_else(self):
        self.size(1280, 500)
        self.open_random()
        before = self.place()
        self.click_on("#tab-plots")
        self.press(Keys.PAGE_DOWN)
        self.assertEqual(self.place(), before)
        self.pane("axial").click()
        before = self.place()
        self.press(Keys.ARROW_RIGHT)
        self.assertNotEqual(self.place(), before)

    def test_keys_stay_with_the_pane_that_has_the_focus(self):
        self.open_random()
        self.pane("axial").click()
        ActionChains(self.driver).move_to_element(self.pane("coronal")).perform()
        before = self.place()
        self.press(Keys.ARROW_UP)
        moved = [abs(a - b) > 0.5 for a, b in zip(self.place(), before)]
        self.assertEqual(moved, [False, True, False])


if __name__ == "__main__":
    unittest.main()
