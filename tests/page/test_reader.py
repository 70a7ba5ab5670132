"""What a screen reader is told, and what the page says of values and dipoles that it does not show."""

import unittest

from selenium.webdriver.common.keys import Keys

import list_data
import page_data
from list_support import ListTest, cells


class Reader(ListTest):
    def open_random(self, count=40, **changes):
        self.data = list_data.random_data(count, **changes)
        self.open(self.data)

    def said(self):
        self.drawn()
        return self.one(".live").get_attribute("textContent")

    def test_the_list_is_a_grid_with_a_name_that_says_where_its_focus_is(self):
        self.open_random()
        self.filter("Latency", ">0")
        late = sum(value > 0 for value in list_data.values(self.data, "latency_ms"))
        self.press(Keys.ESCAPE, "f", Keys.ARROW_DOWN, Keys.ARROW_DOWN, Keys.ARROW_DOWN)
        grid = self.driver.switch_to.active_element
        self.assertEqual(grid.get_attribute("role"), "grid")
        self.assertEqual(grid.accessible_name, "Dipoles")
        self.assertEqual(grid.get_attribute("aria-rowcount"), str(late + 1))
        self.assertEqual(grid.get_attribute("aria-multiselectable"), "true")
        row = self.one("#" + grid.get_attribute("aria-activedescendant"))
        self.assertEqual(row.get_attribute("role"), "row")
        self.assertEqual(row.get_attribute("aria-selected"), "true")
        self.assertEqual(row.get_attribute("aria-rowindex"), "4")
        self.assertEqual(self.js("return document.querySelector(arguments[0] + '.current').id", ".tabulator-row"),
                         grid.get_attribute("aria-activedescendant"))

    def test_the_dipole_that_is_chosen_is_said_in_one_polite_line(self):
        self.open(page_data.page_data([(-49.0, 12.0, -3.0), (10.0, 0.0, 0.0)]))
        self.assertEqual(self.one(".live").get_attribute("aria-live"), "polite")
        self.press("f", Keys.ARROW_DOWN)
        self.assertEqual(self.said(), "Dipole 1, L 49.0, A 12.0, I 3.0 mm, Label dipole 1, Latency 10.0 ms,"
                                      " Moment 50.0 nAm, Fit error 2.0 %")
        self.press("g", Keys.ARROW_DOWN)
        self.assertIn("Goodness of fit 97.0 %", self.said())
        self.assertTrue(self.said().startswith("Dipole 2, R 10.0"))

    def test_the_crosshair_that_keys_move_is_said_with_its_label(self):
        atlas = {"name": "test", "space": None, "placesSpace": None, "doubt": None, "reach": 10.0, "names": {"7": "Seven"}}
        data = page_data.in_mni(page_data.page_data([(0.0, 0.0, 0.0)], atlas=atlas))
        self.open(data, None, page_data.atlas_file([(7, (-20, -20, -20), (20, 20, 20))]))
        self.press(Keys.ARROW_UP)
        self.assertEqual(self.said(), "Crosshair R 0.0, A 1.0, S 0.0 mm, Seven")

    def test_without_a_way_to_the_atlas_no_label_is_told(self):
        atlas = {"name": "test", "space": None, "placesSpace": None, "doubt": None, "reach": 10.0, "names": {"7": "Seven"}}
        data = page_data.page_data([(0.0, 0.0, 0.0)], atlas=atlas)
        self.open(data, None, page_data.atlas_file([(7, (-20, -20, -20), (20, 20, 20))]))
        self.assertNotIn("Seven", self.text(".place"))

    def test_limits_are_named_by_what_they_limit(self):
        self.open_random()
        self.press("g")
        named = [group.get_attribute("aria-label") for group in self.all(".filters [role=group]")]
        self.assertIn("Goodness of fit, %", named)

    def test_what_plays_is_not_said_step_by_step(self):
        self.open_random()
        said = [self.one(".filters .count").get_attribute("aria-live")]
        for _ in range(2):
            self.press(" ")
            said.append(self.one(".filters .count").get_attribute("aria-live"))
        self.assertEqual(said, ["polite", "off", "polite"])


class Unseen(ListTest):
    def type(self, name, text):
        field = self.one(f"input[aria-label='{name}']")
        field.send_keys(Keys.CONTROL, "a")
        field.send_keys(Keys.DELETE)
        field.send_keys(text)
        return field

    def hidden(self):
        """Dipole 3 is hidden by its own switch, and a finding concerns it."""
        data = list_data.random_data(12)
        data["dipoles"]["columns"][6]["values"][2] = False
        data["findings"] = [{"severity": "doubtful", "code": "far", "file": None, "line": 0, "sentence": "It is far.",
                             "remedy": "", "rows": [2]}]
        self.open(data)

    def test_show_all_shows_all(self):
        self.hidden()
        self.assertEqual(self.counts(), "11 of 12 dipoles")
        self.one(".filters .heading button").click()
        self.assertEqual(self.counts(), "12 of 12 dipoles")

    def test_one_dipole_that_is_selected_but_not_listed_is_told_and_can_be_shown(self):
        self.hidden()
        self.tab("plots")
        self.click_on(".finding button", "Select 1 dipole")
        self.assertEqual(self.counts(), "11 of 12 dipoles, 1 selected (not listed)")
        self.assertIn("1 selected dipole does not pass the limits", self.text(".selection"))
        self.drawn()
        self.assertIn("does not pass the limits", self.one(".live").get_attribute("textContent"))
        self.click_on(".list-hidden button")
        self.assertEqual(self.counts(), "12 of 12 dipoles, 1 selected")
        self.assertEqual(self.selected(), [3])
        self.assertEqual(self.all(".list-hidden"), [])

    def test_the_cluster_filters_the_list_and_stands_in_the_saved_table(self):
        data = list_data.random_data(40)
        self.open(data)
        self.filter("Cluster", "2")
        titles, *rows = cells(self.exported())
        self.assertEqual({row[titles.index("cluster")] for row in rows}, {"2"})
        self.assertEqual(len(rows), 10)
        self.filter("Cluster", "none")
        titles, *rows = cells(self.exported())
        self.assertEqual([int(row[0]) - 1 for row in rows],
                         [row for row, cluster in enumerate(data["dipoles"]["clusters"]) if cluster == 0])

    def test_values_that_lie_too_far_apart_for_a_histogram_stop_nothing(self):
        data = list_data.random_data(12)
        for column in (2, 3, 4):
            data["dipoles"]["columns"][column]["values"][:2] = [1.7e308, -1.7e308]
        self.open(data)
        self.tab("plots")
        self.assertIn("lie too far apart", self.text(".plots"))
        self.press("g")
        self.drawn()

    def test_a_number_that_could_be_two_is_refused_and_the_limit_before_it_stays(self):
        self.open(page_data.page_data([(float(x), 0.0, 0.0) for x in range(6)]))
        self.type("Moment, nAm, at least", "52" + Keys.ENTER)
        self.assertEqual(self.text(".filters .count"), "4 of 6 dipoles")
        field = self.type("Moment, nAm, at least", "1,234" + Keys.ENTER)
        self.assertEqual(self.text(".filters .count"), "4 of 6 dipoles")
        self.assertEqual(field.get_attribute("aria-invalid"), "true")
        self.assertIn('"1,234" is not taken', self.text(".filters"))
        for text, count in (("50,5", 5), ("53 nAm", 3), ("", 6)):
            self.type("Moment, nAm, at least", text + Keys.ENTER)
            self.assertEqual(self.text(".filters .count"), f"{count} of 6 dipoles", text)
        self.assertNotIn("is not taken", self.text(".filters"))
        self.filter("Moment", "1,234")
        self.assertEqual(self.one("[aria-label='Filter Moment']").get_attribute("aria-invalid"), "true")

    def test_limits_the_wrong_way_round_are_told(self):
        self.open(page_data.page_data([(float(x), 0.0, 0.0) for x in range(6)]))
        self.type("Latency, ms, at least", "14" + Keys.ENTER)
        self.type("Latency, ms, at most", "12" + Keys.ENTER)
        self.assertIn("14 is more than 12: no dipole passes", self.text(".filters"))
        self.one(".filters .heading button").click()
        self.assertNotIn("no dipole passes", self.text(".filters"))

    def test_what_is_typed_holds_when_the_field_is_left_or_the_page_is_printed(self):
        self.open(page_data.page_data([(float(x), 0.0, 0.0) for x in range(6)]))
        self.type("Moment, nAm, at least", "52" + Keys.TAB)
        self.assertEqual(self.text(".filters .count"), "4 of 6 dipoles")
        self.type("Latency, ms, at most", "13")
        self.js("dispatchEvent(new Event('beforeprint'))")
        self.assertIn("2 of 6 dipoles", self.js("return document.querySelector('section.report').textContent"))
        self.js("dispatchEvent(new Event('afterprint'))")

    def test_the_report_tells_how_severe_the_findings_are_that_it_leaves_out(self):
        finding = {"code": "far", "file": None, "line": 0, "sentence": "So.", "remedy": "", "rows": []}
        found = [dict(finding, severity=severity) for severity in ["note"] * 3 + ["wrong"] * 11 + ["doubtful"] * 4]
        self.open(page_data.page_data([(0.0, 0.0, 0.0)], findings=found))
        self.js("dispatchEvent(new Event('beforeprint'))")
        self.assertIn("3 more doubtful, 3 more notes", self.js("return document.querySelector('section.report').textContent"))
        self.js("dispatchEvent(new Event('afterprint'))")


if __name__ == "__main__":
    unittest.main()
