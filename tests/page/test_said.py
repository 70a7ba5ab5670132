"""What the pictures say of themselves: places, counts, colours, warnings."""

import unittest

from selenium.webdriver.common.keys import Keys

import list_data
import page_data
from list_support import ListTest
from support import green

RECORD = """
window.said = new Map();
const write = CanvasRenderingContext2D.prototype.fillText;
CanvasRenderingContext2D.prototype.fillText = function (text, x, y, most) {
  if (!window.said.has(this.canvas)) window.said.set(this.canvas, []);
  const width = this.measureText(text).width;
  const left = x - {start: 0, left: 0, center: width / 2, right: width}[this.textAlign];
  window.said.get(this.canvas).push({text, left, right: left + width, isSqueezed: most !== undefined});
  write.call(this, ...[text, x, y, most].filter((one) => one !== undefined));
};
window.graphics = [];
const context = HTMLCanvasElement.prototype.getContext;
HTMLCanvasElement.prototype.getContext = function (...how) {
  const made = window.isWithoutGraphics && how[0] === "webgl2" ? null : context.apply(this, how);
  if (how[0] === "webgl2" && made !== null && !window.graphics.includes(made)) window.graphics.push(made);
  return made;
};
const clear = CanvasRenderingContext2D.prototype.clearRect;
CanvasRenderingContext2D.prototype.clearRect = function (...box) {
  window.said.delete(this.canvas);
  clear.call(this, ...box);
};
"""
FAR = (30.0, -40.0, -18.0)


class Said(ListTest):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.driver.execute_cdp_cmd("Page.addScriptToEvaluateOnNewDocument", {"source": RECORD})

    def said(self, name):
        """Texts of a pane as they were drawn last."""
        self.drawn()
        return self.js("return window.said.get(document.querySelector(`[data-pane=${arguments[0]}] .marks`))", name)

    def texts(self, name):
        return [one["text"] for one in self.said(name)]

    def settings(self, places, **changes):
        return page_data.page_data(places)["settings"] | changes

    def test_pictures_say_how_many_labels_they_leave_out(self):
        self.open(page_data.page_data([(float(i % 23) - 11, float(i // 23) - 10, 0.0) for i in range(450)]))
        words = "labels of the 400 nearest, 50 not written"
        for name in ("axial", "scene"):
            self.assertNotIn(words, self.texts(name))
        self.press("l")
        for name in ("axial", "scene"):
            self.assertIn(words, self.texts(name))
            self.assertEqual(sum(text.startswith("dipole ") for text in self.texts(name)), 400)
        self.press("/", *"dipole 4", Keys.ESCAPE)
        self.assertNotIn("not written", " ".join(self.texts("axial")))

    def test_a_tilted_slice_tells_the_place_of_the_crosshair_and_that_it_is_tilted(self):
        for degrees in (0.0, 40.0):
            self.open_head([page_data.MARK], degrees=degrees)
            x, y, z = self.place()
            for name, letters, value in (("axial", "IS", z), ("coronal", "PA", y), ("sagittal", "LR", x)):
                with self.subTest(degrees=degrees, name=name):
                    texts = self.texts(name)
                    told = f"{letters[value >= 0]} {abs(value):.1f} mm"
                    self.assertIn(told + (" at the crosshair" if degrees else ""), texts)
                    self.assertEqual(any("tilted 40.0°" in text for text in texts), degrees > 0)

    def test_warnings_leave_the_pictures_to_be_seen(self):
        many = [f"Finding {number}: left and right of this head are not what its file says they are." for number in range(6)]
        self.open_head([page_data.MARK], warnings=many)
        for name in ("axial", "scene"):
            amber = self.js("return window.said.get(document.querySelector(`[data-pane=${arguments[0]}] .marks`))", name)
            amber = amber[-3:]
            self.assertTrue(amber[0]["text"].startswith("⚠ Finding 0"), amber)
            self.assertEqual(amber[-1]["text"], "⚠ and 5 more, see above")
            width = self.pane(name).size["width"]
            self.assertTrue(all(one["right"] <= width for one in self.said(name)), "no line is cut at the edge")

    def test_clusters_without_a_colour_of_their_own_share_white(self):
        data = list_data.random_data(80)
        data["settings"]["clusterColours"] = ["#e69f00"]
        data["settings"]["colourBy"] = "cluster"
        self.open(data, page_data.head_file()[0])
        patches = self.js("return [...document.querySelectorAll('.list-clusters .list-patch')].map((one) =>"
                          "  getComputedStyle(one).backgroundColor)")
        self.assertEqual(patches, ["rgb(230, 159, 0)", "rgb(255, 255, 255)"])
        entries = self.js("return [...document.querySelectorAll('.legend-entry')].map((one) =>"
                          "  [getComputedStyle(one.querySelector('.patch')).backgroundColor, one.textContent])")
        self.assertEqual(entries, [["rgb(230, 159, 0)", "Cluster 1 (20)"], ["rgb(255, 255, 255)", "Cluster 2 (20)"],
                                   ["rgb(160, 160, 160)", "in none (40)"]])

    def test_clusters_say_that_the_limits_of_the_page_do_not_change_them(self):
        data = list_data.random_data(80)
        data["settings"]["colourBy"] = "cluster"
        self.open(data)
        self.filter("Latency", "100..300")
        latency = list_data.values(data, "latency_ms")
        shown = [sum(own == number and 100 <= at <= 300 for own, at in zip(data["dipoles"]["clusters"], latency))
                 for number in (0, 1, 2)]
        rule = self.text(".clusters .list-note")
        self.assertIn("limits set in the page do not change them", rule)
        self.assertIn(f"{shown[1] + shown[2]} of their 40 dipoles are shown now", rule)
        counts = self.js("return [...document.querySelectorAll('.list-clusters tbody td:nth-of-type(1)')].map((one) => one.textContent)")
        self.assertEqual(counts, [f"{shown[1]} of 20 shown", f"{shown[2]} of 20 shown"])
        self.assertEqual([one.text for one in self.all(".legend-entry")],
                         [f"Cluster 1 ({shown[1]} of 20 shown)", f"Cluster 2 ({shown[2]} of 20 shown)",
                          f"in none ({shown[0]} of 40 shown)"])

    def test_what_no_one_looked_at_is_not_told_to_be_scattered(self):
        data = list_data.random_data(80)
        error = list_data.values(data, "fit_error_percent")
        clusters = data["dipoles"]["clusters"]
        beyond = [row for row in range(80) if error[row] > 8]
        for row in beyond:
            clusters[row] = 0
        scattered = sum(cluster == 0 for cluster in clusters) - len(beyond)
        data["clusters"]["scattered"] = scattered
        data["settings"].update(colourBy="cluster", fitError={"least": None, "most": 8})
        self.open(data)
        self.assertEqual(self.all(".legend-entry")[-1].text, f"in none ({scattered})")
        self.click_on(".filters button", "Show all")
        self.assertEqual([one.text for one in self.all(".legend-entry")][-2:],
                         [f"in none ({scattered})", f"beyond the command's limits, not judged ({len(beyond)})"])
        colour = self.js("return getComputedStyle([...document.querySelectorAll('.legend-entry .patch')].at(-1)).backgroundColor")
        self.assertEqual(colour, "rgb(128, 128, 128)")

    def test_clusters_tell_their_mean_orientation_in_the_head_frame(self):
        data = list_data.random_data(80)
        self.open(data)
        heads = [one.text for one in self.all(".list-clusters thead th")]
        column = heads.index("Mean orientation, Head (left, up, front)")
        told = self.js("return document.querySelector('.list-clusters tbody tr').children[arguments[0]].textContent", column)
        expected = list_data.TO_HOST @ data["clusters"]["clusters"][0]["direction"]
        self.assertEqual(told, ", ".join(f"{value:.3f}" for value in expected))

    def test_a_zoomed_pane_counts_what_is_beyond_its_edges_and_goes_to_what_is_chosen(self):
        near = (FAR[0] - 60, FAR[1], FAR[2])
        self.open_head([near, FAR])
        self.press("n", *"+" * 12)
        self.assertIn("2 of 2 dipoles within 5 mm, 1 beyond the edges", " ".join(self.texts("axial")))
        self.press("n")
        self.assertEqual(self.place(), list(FAR))
        self.drawn()
        lines = self.js("""
            const lines = document.querySelector('[data-pane=axial] .lines');
            const {data} = lines.getContext('2d').getImageData(0, 0, lines.width, lines.height);
            return data.some((value) => value > 0);""")
        self.assertTrue(lines, "the crosshair is in sight")

    def test_a_saved_picture_tells_names_that_turn_nothing_around_and_nothing_squeezed(self):
        data = page_data.page_data([FAR])
        data["patient"] = "\u202eTEST"
        data["files"] = [{"name": f"\u202e\u05d0{number}" + "x" * 90, "format": "CTF", "dipoles": 1} for number in range(9)]
        self.open(data)
        self.press("e")
        self.wait(lambda: self.js("return [...window.said.keys()].some((one) => !one.isConnected && one.width > 500)"))
        picture = self.js("return window.said.get([...window.said.keys()].find((one) => !one.isConnected && one.width > 500))")
        texts = [one["text"] for one in picture]
        self.assertIn("\\u202eTEST", texts)
        line, = [text for text in texts if "1 of 1 dipoles" in text]
        self.assertTrue(line.endswith("…") and "\u202e" not in line, line)
        self.assertIn("\u2068\\u202e\u05d00", line)
        self.assertTrue(all(one["right"] <= 1280 and not one["isSqueezed"] for one in picture))

    def test_dipoles_in_the_far_half_are_paler_and_said_to_be(self):
        left, right = (-60.0, 0.0, 0.0), (60.0, 0.0, 0.0)
        self.open(page_data.page_data([left, right], head=None))
        self.choose("3D", "none")
        self.assertIn("1 paler: in the far half of the head", self.texts("scene"))

    def test_the_report_draws_clusters_in_their_colours_and_says_so(self):
        data = list_data.random_data(80)
        data["settings"]["clusterColours"] = ["#ff00ff", "#00ffff"]
        self.open(data, page_data.head_file()[0])
        self.js("window.dispatchEvent(new Event('beforeprint'))")
        legends = [one.get_attribute("textContent") for one in self.all(".report .legend")]
        first = self.js("""
            const canvas = document.querySelector('.report canvas');
            const {data} = canvas.getContext('2d').getImageData(0, 0, canvas.width, canvas.height);
            let [own, cluster] = [0, 0];
            for (let i = 0; i < data.length; i += 4) {
              cluster += data[i] > 200 && data[i + 1] < 60 && data[i + 2] > 200;
              own += data[i] < 60 && data[i + 1] > 200 && data[i + 2] < 60;
            }
            return [cluster > 20, own];""")
        self.js("window.dispatchEvent(new Event('afterprint'))")
        self.assertEqual(first, [True, 0])
        self.assertIn("Cluster 1 (20)", legends[0])
        self.assertIn("Each dipole's own colour", legends[1])

    def test_rings_leave_the_dipoles_of_a_selected_cluster_to_be_seen(self):
        places = [(FAR[0] + 0.5 * number, FAR[1], FAR[2]) for number in range(40)]
        self.open_head(places)
        self.press("n")
        before = green(self.pixels("axial")).sum()
        self.one(".list-table .tabulator-tableholder").send_keys(Keys.CONTROL, "a")
        self.wait(lambda: "(40)" in self.text("#tab-selection"))
        after = green(self.pixels("axial")).sum()
        self.assertGreater(after, 0.6 * before)

    def check_that_no_head_is_shown(self, why):
        self.assertIn(why, self.text(".warnings"))
        for name in ("axial", "coronal", "sagittal", "scene"):
            self.assertTrue(any(text.startswith("⚠ The head is not shown") for text in self.texts(name)), name)
            self.assertLess(self.pixels(name, marks=False).max(), 10, f"{name}: nothing is left of the head")
            self.assertTrue(green(self.pixels(name)).any(), "the dipole is there")
        self.js("window.dispatchEvent(new Event('beforeprint'))")
        report = self.js("return document.querySelector('.report').textContent")
        self.js("window.dispatchEvent(new Event('afterprint'))")
        self.assertIn("Doubtful: The head is not shown", report)
        self.assertIn("Patient", report)

    def test_a_head_that_is_lost_is_said_to_be(self):
        self.open_head([page_data.MARK])
        self.js("window.graphics.forEach((one) => one.getExtension('WEBGL_lose_context').loseContext())")
        self.wait(lambda: self.all(".warnings p"))
        self.check_that_no_head_is_shown("the browser lost its graphics")
        self.driver.get_log("browser")  # where it says so too

    def test_a_picture_of_the_head_that_fails_leaves_no_older_one(self):
        self.open_head([page_data.MARK])
        self.js("for (const one of window.graphics)"
                "  one.drawArrays = one.drawElements = () => { throw new Error('it is not drawn where it should be.'); }")
        self.press(Keys.PAGE_UP)
        self.wait(lambda: self.all(".warnings p"))
        self.check_that_no_head_is_shown("it is not drawn where it should be.")

    def test_a_browser_without_graphics_shows_all_but_the_head(self):
        script = self.driver.execute_cdp_cmd("Page.addScriptToEvaluateOnNewDocument",
                                             {"source": "window.isWithoutGraphics = true;"})
        try:
            self.open_head([page_data.MARK])
        finally:
            self.driver.execute_cdp_cmd("Page.removeScriptToEvaluateOnNewDocument", script)
        self.assertIn("TEST", self.text(".header"))
        self.assertEqual(self.place(), list(page_data.MARK))
        self.press("?")
        self.assertEqual(len(self.all("dialog[open]")), 1)
        self.press(Keys.ESCAPE)
        self.check_that_no_head_is_shown("no WebGL 2")


if __name__ == "__main__":
    unittest.main()
