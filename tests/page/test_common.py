"""What several dipoles have in common, their clusters, plots and findings."""

import unittest

import numpy
from selenium.webdriver.common.action_chains import ActionChains
from selenium.webdriver.common.keys import Keys

import list_data
from list_support import ListTest


def numbers(text):
    """All numbers of a text."""
    found = []
    for word in text.replace(",", " ").replace("(", " ").replace(")", " ").replace(";", " ").split():
        try:
            found.append(float(word.rstrip("\u00b0")))
        except ValueError:
            pass
    return found


class Common(ListTest):
    def setUp(self):
        super().setUp()
        self.data = list_data.random_data(40)
        error = self.data["dipoles"]["columns"][3]["values"]
        error[2], error[3] = None, "nan"
        self.open(self.data)

    def select(self, rows):
        self.click_row(rows[0] + 1)
        for row in rows[1:]:
            self.click_row(row + 1, Keys.CONTROL)

    def array(self, title, rows):
        return numpy.array([list_data.values(self.data, title)[row] for row in rows])

    def test_mean_spread_and_cone_are_those_of_numpy(self):
        rows = [0, 1, 2, 3, 5]
        self.select(rows)
        self.tab("selection")
        lines = self.lines(".selection")
        places = numpy.array([self.data["dipoles"]["places"][row] for row in rows])
        mean = places.mean(axis=0)
        away = numpy.linalg.norm(places - mean, axis=1)
        numpy.testing.assert_allclose(numbers(lines["Mean place, Scanner (right, front, up)"]), mean, atol=0.0501)
        numpy.testing.assert_allclose(numbers(lines["Mean place, Head (left, up, front)"]),
                                      list_data.TO_HOST @ mean, atol=0.0501)
        numpy.testing.assert_allclose(numbers(lines["Distance from it, rms"]), numpy.sqrt((away ** 2).mean()), atol=0.0501)
        numpy.testing.assert_allclose(numbers(lines["Distance from it, largest"]), away.max(), atol=0.0501)
        directions = numpy.stack([self.array(title, rows) for title in list_data.DIRECTIONS], axis=1)
        orientation, cone = list_data.cone_of(directions)
        numpy.testing.assert_allclose(numbers(lines["Mean orientation, Head (left, up, front)"]), orientation, atol=0.000501)
        numpy.testing.assert_allclose(numbers(lines["Cone around it, 95 %"])[0], cone, atol=0.0501)
        latency = self.array("latency_ms", rows)
        numpy.testing.assert_allclose(numbers(lines["Latency"])[:2], [latency.mean(), latency.std(ddof=1)], atol=0.00501)
        error = numpy.array([self.array("fit_error_percent", [row])[0] for row in (0, 1, 5)], float)
        numpy.testing.assert_allclose(numbers(lines["Fit error"])[:2], [error.mean(), error.std(ddof=1)], atol=0.00501)
        self.assertIn("3 known", lines["Fit error"])

    def test_the_cone_of_many_holds_95_percent_of_them(self):
        self.one(".tabulator-tableholder").send_keys(Keys.CONTROL, "a")
        self.tab("selection")
        directions = numpy.stack([self.array(title, range(40)) for title in list_data.DIRECTIONS], axis=1)
        mean, cone = list_data.cone_of(directions)
        angles = numpy.degrees(numpy.arccos(directions @ mean / numpy.linalg.norm(directions, axis=1)))
        self.assertEqual((angles <= cone + 1e-9).sum(), 38)
        self.assertAlmostEqual(numbers(self.lines(".selection")["Cone around it, 95 %"])[0], cone, delta=0.0501)

    def test_selected_dipoles_that_are_not_listed_are_told(self):
        self.select([0, 1, 2])
        self.filter("Fit error", "?")
        self.tab("selection")
        self.assertIn("2 selected dipoles do not pass the limits", self.text(".selection .list-hidden"))

    def test_a_cluster_selects_its_dipoles_and_puts_the_crosshair_to_its_centroid(self):
        self.tab("clusters")
        self.assertIn("6 or more within 10 mm", self.text(".clusters .list-note"))
        self.assertIn("20 dipoles scattered", self.text(".clusters .list-note"))
        self.click_on(".clusters tbody button", "2")
        cluster = self.data["clusters"]["clusters"][1]
        numpy.testing.assert_allclose(self.place(), cluster["centroid"], atol=0.0501)
        self.assertIn(f"{cluster['count']} selected", self.counts())
        self.assertEqual(set(self.selected()) - {i + 1 for i, c in enumerate(self.data["dipoles"]["clusters"]) if c == 2}, set())

    def test_a_cluster_is_shown_alone_and_no_longer(self):
        self.tab("clusters")
        alone = self.all(".clusters [aria-pressed]")[0]
        alone.click()
        self.assertEqual(self.counts().split(" of")[0], str(self.data["clusters"]["clusters"][0]["count"]))
        self.assertEqual(alone.get_attribute("aria-pressed"), "true")
        alone.click()
        self.assertEqual(self.counts(), "40 of 40 dipoles")

    def drag(self, plot, start, end):
        """Along a plot, by shares of its width."""
        over = self.all(".plots .u-over")[plot]
        self.js("arguments[0].scrollIntoView({block: 'center'})", over)
        width = over.size["width"]
        actions = ActionChains(self.driver)
        actions.move_to_element_with_offset(over, int((start - 0.5) * width), 0).click_and_hold()
        actions.move_by_offset(int((end - start) * width / 2), 0).move_by_offset(int((end - start) * width / 2), 0)
        actions.release().perform()
        self.drawn()

    def limits(self, name):
        return [self.one(f"[aria-label='{name}, {end}']").get_attribute("value") for end in ("at least", "at most")]

    def test_a_drag_over_latencies_limits_them(self):
        self.tab("plots")
        self.drag(0, 0.25, 0.75)
        least, most = (float(value) for value in self.limits("Latency, ms"))
        latency = self.array("latency_ms", range(40))
        room = 0.04 * numpy.ptp(latency)
        span = numpy.ptp(latency) + 2 * room
        self.assertAlmostEqual(least, latency.min() - room + span / 4, delta=span / 50)
        self.assertAlmostEqual(most, latency.min() - room + 3 * span / 4, delta=span / 50)
        self.assertEqual(self.counts().split(" of")[0], str(((latency >= least) & (latency <= most)).sum()))
        self.click_on(".plots button", "All latencies")
        self.assertEqual(self.counts(), "40 of 40 dipoles")

    def test_a_click_on_a_mark_selects_its_dipole(self):
        self.tab("plots")
        latency = self.array("latency_ms", range(40))
        moment = self.array("moment_nam", range(40))
        row = int(latency.argmax())
        over = self.all(".plots .u-over")[0]
        self.js("arguments[0].scrollIntoView({block: 'center'})", over)
        room = 0.04 * numpy.ptp(latency)
        x = (latency[row] - latency.min() + room) / (numpy.ptp(latency) + 2 * room)
        low, high = moment.min() - 0.04 * numpy.ptp(moment), moment.max() + 0.04 * numpy.ptp(moment)
        low -= 1.08 * (high - low)  # the lower half is that of the errors
        y = (high - moment[row]) / (high - low)
        ActionChains(self.driver).move_to_element_with_offset(
            over, int((x - 0.5) * over.size["width"]), int((y - 0.5) * over.size["height"])).click().perform()
        self.drawn()
        self.assertEqual(self.selected(), [row + 1])

    def test_error_and_goodness_of_fit_are_never_mixed_up(self):
        self.tab("plots")
        self.drag(1, 0.02, 0.5)
        error = [value for value in list_data.values(self.data, "fit_error_percent") if isinstance(value, float)]
        least, most = (float(value) for value in self.limits("Fit error, %"))
        count = sum(least <= value <= most for value in error)
        self.assertEqual(self.counts().split(" of")[0], str(count))
        self.press("g")
        self.assertIn("goodness of fit", self.removed()[0])
        low, high = (float(value) for value in self.limits("Goodness of fit, %"))
        self.assertAlmostEqual(low, 100 - most)
        self.assertAlmostEqual(high, 100 - least)
        self.drag(1, 0.5, 0.98)
        low, high = (float(value) for value in self.limits("Goodness of fit, %"))
        self.assertGreater(low, 100 - max(error), "the axis says goodness, so the limits are of it")
        count = sum(low <= 100 - value <= high for value in error)
        self.assertEqual(self.counts().split(" of")[0], str(count))
        labels = [plot.get_attribute("aria-label") for plot in self.all(".list-plot")]
        self.assertTrue(all("oodness of fit" in label and "rror" not in label for label in labels), labels)


class Findings(ListTest):
    def test_what_is_wrong_stands_first_and_selects_the_dipoles_concerned(self):
        found = [{"severity": severity, "code": "row-order", "file": "a.dip", "line": 12, "sentence": f"It is {severity}.",
                  "remedy": "Look at it.", "rows": rows}
                 for severity, rows in (("note", []), ("doubtful", [1]), ("wrong", [3, 5]))]
        self.open(list_data.random_data(12, findings=found, repaired=["Line 7 was repaired."]))
        shown = [item.text for item in self.all(".findings > .finding-list > .finding")]
        self.assertEqual([one.get_attribute("open") for one in self.all(".findings details")], [None], "notes are folded")
        self.assertEqual(len(shown), 2)
        self.assertTrue(shown[0].startswith("Wrong: It is wrong. Look at it. (a.dip, line 12)"), shown[0])
        self.assertTrue(shown[1].startswith("Doubtful: It is doubtful."), shown[1])
        self.click_on(".findings button", "Select 2 dipoles")
        self.assertEqual(self.selected(), [4, 6])
        self.click_on(".findings summary", "2 notes")
        self.assertIn("Line 7 was repaired.", self.text(".findings details"))


if __name__ == "__main__":
    unittest.main()
