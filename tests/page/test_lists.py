"""The list: rows are found, sorted, filtered, selected and saved."""

import unittest

import numpy
from selenium.webdriver.common.by import By
from selenium.webdriver.common.keys import Keys

import list_data
import page_data
from list_support import ROW, ListTest, cells


class Lists(ListTest):
    def open_random(self, count=40, **changes):
        self.data = list_data.random_data(count, **changes)
        self.open(self.data, page_data.head_file()[0])
        return self.data

    def latencies(self):
        return list_data.values(self.data, "latency_ms")

    def test_a_click_on_a_row_selects_it_and_moves_the_crosshair(self):
        self.open_random()
        self.click_row(3)
        self.assertEqual(self.selected(), [3])
        numpy.testing.assert_allclose(self.place(), self.data["dipoles"]["places"][2], atol=0.051)

    def test_ctrl_adds_and_takes_away_and_shift_selects_a_range_as_the_list_stands(self):
        self.open_random()
        self.click_row(2)
        self.click_row(4, Keys.CONTROL)
        self.assertEqual(self.selected(), [2, 4])
        self.click_row(2, Keys.CONTROL)
        self.assertEqual(self.selected(), [4])
        self.click_row(6, Keys.SHIFT)
        self.assertEqual(self.selected(), [4, 5, 6])
        self.click_row(3, Keys.SHIFT)
        self.assertEqual(self.selected(), [3, 4], "a range begins where the last one did")
        self.sort("Latency")
        shown = [int(number) for number in self.rows()]
        self.click_row(shown[0])
        self.click_row(shown[3], Keys.SHIFT)
        self.assertEqual(set(self.selected()), set(shown[:4]))

    def test_a_column_sorts_up_and_down_and_back_with_what_is_no_number_last(self):
        data = list_data.random_data(12)
        latency = [30.0, None, -5.0, "nan", 30.0, 1e-9, -0.0, 0.0, "inf", "-inf", 7.5, 100.0]
        data["dipoles"]["columns"][2]["values"] = latency
        self.open(data)
        number = {"inf": numpy.inf, "-inf": -numpy.inf}
        known = [i for i, value in enumerate(latency) if value is not None and value != "nan"]
        rest = [i for i in range(12) if i not in known]
        key = {i: number.get(latency[i], latency[i]) for i in known}
        for way, order in ((1, sorted(known, key=lambda i: key[i])), (-1, sorted(known, key=lambda i: -key[i]))):
            self.sort("Latency")
            self.assertEqual([int(text) - 1 for text in self.rows()], order + rest, f"way {way}")
        self.sort("Latency")
        self.assertEqual([int(text) for text in self.rows()], list(range(1, 13)))

    def test_what_is_unknown_is_no_zero_and_no_number_is_told(self):
        data = list_data.random_data(12)
        data["dipoles"]["columns"][3]["values"][:4] = [None, 0.0, "nan", 1.234e-9]
        self.open(data)
        self.assertEqual(self.rows("Fit error")[:4], ["?", "0.0", "nan", "1.2e-9"])
        titles = self.js("return [...document.querySelectorAll(arguments[0])].slice(0, 4).map((row) =>"
                         "row.querySelector('[tabulator-field=c3] [title]').title)", ROW)
        self.assertEqual(titles, ["unknown", "0 %", "nan", "1.234e-9 %"])

    def test_what_is_typed_over_a_column_filters_and_every_removed_dipole_is_counted_once(self):
        data = list_data.random_data(40)
        error = data["dipoles"]["columns"][3]["values"]
        error[5], error[6] = None, "nan"
        self.open(data)
        latency = numpy.array(list_data.values(data, "latency_ms"))
        known = numpy.array([value if isinstance(value, float) else numpy.nan for value in error])
        late = (latency >= 100) & (latency <= 300)
        self.filter("Latency", "100..300")
        self.assertEqual(self.counts(), f"{late.sum()} of 40 dipoles")
        self.filter("Fit error", "<=8")
        both = late & (known <= 8)
        self.assertEqual(self.counts(), f"{both.sum()} of 40 dipoles")
        self.assertEqual([int(text) - 1 for text in self.rows()], numpy.flatnonzero(both).tolist())
        self.assertEqual(self.removed(), [f"Latency: 100..300: {40 - late.sum()} removed",
                                          f"Fit error: <=8: {late.sum() - both.sum()} removed"])
        self.filter("Latency", "")
        self.filter("Fit error", "?")
        self.assertEqual(self.rows(), ["6"])
        self.filter("Fit error", "nan")
        self.assertEqual(self.rows(), ["7"])
        self.click_on(".list-buttons button", "No column filters")
        self.assertEqual(self.counts(), "40 of 40 dipoles")

    def test_a_number_finds_what_rounds_to_it_and_a_text_a_part(self):
        data = list_data.random_data(12)
        data["dipoles"]["columns"][3]["values"] = [11.4, 11.5, 12.0, 12.49, 12.5, 12.04] + [1.0] * 6
        data["dipoles"]["columns"][1]["values"] = ["Spike A", "spike b", "other"] + ["none"] * 9
        self.open(data)
        for text, numbers in (("12", [2, 3, 4, 6]), ("12.0", [3, 6]), (">12.4", [4, 5]), ("11,4", [1])):
            self.filter("Fit error", text)
            self.assertEqual([int(number) for number in self.rows()], numbers, text)
        self.filter("Fit error", "")
        self.filter("Label", "SPIKE")
        self.assertEqual(self.rows(), ["1", "2"])

    def test_what_is_not_understood_is_marked_and_filters_nothing(self):
        self.open_random()
        self.filter("Latency", "about ten")
        self.assertEqual(self.one("[aria-label='Filter Latency']").get_attribute("aria-invalid"), "true")
        self.assertEqual(self.counts(), "40 of 40 dipoles")
        self.filter("Latency", ">-1000")
        self.assertEqual(self.one("[aria-label='Filter Latency']").get_attribute("aria-invalid"), "false")

    def test_a_column_is_hidden_and_shown(self):
        self.open_random()
        latency = ".list-table .tabulator-col[tabulator-field=c2]"
        self.assertTrue(self.one(latency).is_displayed())
        self.click_on(".list-columns summary")
        box = self.one(".list-columns label[title=latency_ms] input")
        box.click()
        self.assertFalse(self.one(latency).is_displayed())
        box.click()
        self.assertTrue(self.one(latency).is_displayed())

    def test_keys_move_through_the_list_and_select(self):
        self.open_random()
        self.click_row(1)
        holder = self.one(".tabulator-tableholder")
        holder.send_keys(Keys.ARROW_DOWN, Keys.ARROW_DOWN)
        self.assertEqual(self.selected(), [3])
        holder.send_keys(Keys.SHIFT, Keys.ARROW_DOWN)
        self.assertEqual(self.selected(), [3, 4])
        holder.send_keys(Keys.END)
        self.assertEqual(self.selected(), [40])
        holder.send_keys(Keys.CONTROL, "a")
        self.assertIn("40 selected", self.counts())
        holder.send_keys(Keys.ESCAPE)
        self.assertEqual(self.selected(), [])

    def test_a_dipole_that_is_chosen_elsewhere_is_scrolled_to(self):
        self.open_random(400)
        self.press("p")  # from none to the last one
        self.drawn()
        row = self.row(400)
        self.assertEqual(self.selected()[-1:], [400])
        box = self.js("const [row, list] = [arguments[0], document.querySelector('.tabulator-tableholder')]"
                      ".map((one) => one.getBoundingClientRect());"
                      "return row.top >= list.top - 1 && row.bottom <= list.bottom + 1", row)
        self.assertTrue(box, "the row is seen")

    def test_of_30000_rows_only_those_that_are_seen_have_elements(self):
        self.open_random(30000)
        self.assertEqual(self.counts(), "30000 of 30000 dipoles")
        self.sort("Latency")
        order = sorted(range(30000), key=lambda i: self.latencies()[i])
        self.assertEqual([int(text) - 1 for text in self.rows()[:10]], order[:10])
        self.one(".tabulator-tableholder").send_keys(Keys.END)
        self.drawn()
        self.assertEqual(int(self.rows()[-1]) - 1, order[-1])
        self.assertLess(len(self.all(ROW)), 200)
        self.filter("Latency", "100..300")
        passing = sum(100 <= value <= 300 for value in self.latencies())
        self.assertEqual(self.counts().split(",")[0], f"{passing} of 30000 dipoles")

    def test_a_narrow_page_makes_no_element_for_rows_that_are_not_seen_either(self):
        self.size(900, 800)
        self.open_random(1500)
        self.assertGreater(len(self.all(ROW)), 5)
        self.assertLess(len(self.all(ROW)), 200)

    def test_the_table_that_is_saved_is_what_is_listed_with_every_digit(self):
        data = self.open_random()
        changed = {7: None, 8: "nan", 9: "-inf", 10: -0.0, 11: 1.0000001e-12, 12: 123456.789}
        for row, value in changed.items():
            data["dipoles"]["columns"][4]["values"][row] = value
        self.open(data)
        self.filter("Latency", ">=0")
        self.sort("Latency")
        table = self.exported()
        self.assertTrue(table.endswith(b"\n") and b"\r" not in table)
        titles, *rows = cells(table)
        columns = data["dipoles"]["columns"]
        self.assertEqual(titles, [*(column["title"] for column in columns), "cluster"])
        late = [i for i in range(40) if self.latencies()[i] >= 0]
        self.assertEqual([int(row[0]) - 1 for row in rows], sorted(late, key=lambda i: self.latencies()[i]))
        for row in rows:
            slot = int(row[0]) - 1
            for text, column in zip(row, columns):
                value = column["values"][slot]
                if isinstance(value, bool):
                    self.assertEqual(text, "yes" if value else "no")
                elif isinstance(value, (int, float)):
                    self.assertEqual(float(text), value)
                    self.assertEqual(numpy.signbit(float(text)), numpy.signbit(value))
                else:
                    self.assertEqual(text, "" if value is None else value)

    def test_every_control_has_a_name(self):
        self.open_random()
        self.js("document.querySelectorAll('details').forEach((one) => one.open = true)")
        unnamed = [one.get_attribute("outerHTML")[:120]
                   for one in self.driver.find_elements(By.CSS_SELECTOR, "button, input, select, textarea, [role=tab]")
                   if one.is_displayed() and not one.accessible_name.strip()]
        self.assertEqual(unnamed, [])


if __name__ == "__main__":
    unittest.main()
