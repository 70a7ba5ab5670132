"""Labels, names and findings are data: whatever they say, they are shown as text."""

import unittest

import list_data
from list_support import ROW, ListTest, cells
from list_data import HOSTILE


class Hostile(ListTest):
    def setUp(self):
        super().setUp()
        self.data = list_data.hostile_data()
        self.open(self.data)

    def test_labels_are_the_texts_of_their_cells(self):
        shown = self.js("return [...document.querySelectorAll(arguments[0] + ' [tabulator-field=c1]')].map((cell) =>"
                        "  (cell.querySelector('bdi') ?? cell).textContent)", ROW)
        for text, label in zip(shown, [*HOSTILE, None]):
            if label is None:
                self.assertEqual(text, "?")
            elif len(label.encode("utf-16-le")) // 2 <= 60:
                self.assertEqual(text, label)
            else:
                self.assertTrue(text.endswith("\u2026") and label.startswith(text[:-1]), text)
                self.assertGreater(len(text), 25)
        self.assertEqual(len(shown), len(HOSTILE) + 1)

    def test_nothing_of_them_becomes_an_element_or_runs(self):
        self.assertNotEqual(self.driver.title, "taken")
        for selector in ("#app script", "#app img", "#app iframe", "#app a[href]"):
            self.assertEqual(self.all(selector), [], selector)

    def test_they_turn_nothing_around_outside_of_themselves(self):
        for where in (f"{ROW} [tabulator-field=c1]", ".findings .finding-place"):
            for element in self.all(where):
                texts = self.js(
                    "const walk = document.createTreeWalker(arguments[0], NodeFilter.SHOW_TEXT), found = [];"
                    "while (walk.nextNode()) if (walk.currentNode.data.includes('\\u202e'))"
                    "  found.push(getComputedStyle(walk.currentNode.parentElement).unicodeBidi);"
                    "return found", element)
                self.assertTrue(all(bidi == "isolate" for bidi in texts), texts)

    def test_a_long_label_is_cut_in_its_cell_and_whole_in_a_dialog(self):
        longest = HOSTILE.index("x" * 70000)
        row = self.row(longest + 1)
        self.assertLess(row.size["height"], 60)
        self.js("arguments[0].querySelector('.whole-text').click()", row)
        text = self.js("return document.querySelector('dialog[open] textarea').value")
        self.assertEqual(text, "x" * 70000)
        self.click_on("dialog[open] button", "Close")
        self.assertEqual(self.all("dialog[open] textarea"), [])

    def test_findings_say_their_sentence_as_text_with_file_and_line(self):
        wrong = self.text(".finding.wrong")
        self.assertIn("Wrong:", wrong)
        self.assertIn(HOSTILE[0], wrong)
        self.assertIn(HOSTILE[1], wrong)
        self.assertIn("line 3", wrong)

    def test_no_spreadsheet_takes_a_label_for_a_formula(self):
        titles, *rows = cells(self.exported())
        labels = [row[titles.index("label")] for row in rows]
        for saved, label in zip(labels, HOSTILE):
            expected = f"'{label}" if label[:1] in ("=", "+", "-", "@", "'", "\t", "\r") and label else label
            self.assertEqual(saved, expected)
        self.assertEqual(labels[-1], "")


if __name__ == "__main__":
    unittest.main()
