"""What the tests of the lists share: the rows as they are read, and what is typed and clicked there."""

import csv
import io
import os

from selenium.webdriver.common.action_chains import ActionChains
from selenium.webdriver.common.keys import Keys

from support import PageTest

ROW = ".list-table .tabulator-row"


class ListTest(PageTest):
    def rows(self, label="No."):
        """Texts of the column in the rows that are there, from top to bottom."""
        return self.js(
            "const [row, label] = arguments;"
            "const heads = [...document.querySelectorAll('.list-table .tabulator-col')];"
            "const head = heads.find((one) => one.querySelector('.list-name').textContent === label);"
            "const field = head.getAttribute('tabulator-field');"
            "return [...document.querySelectorAll(row)].map((one) =>"
            "  one.querySelector(`[tabulator-field='${field}']`).textContent)", ROW, label)

    def selected(self):
        return [int(text) for text in self.js(
            "return [...document.querySelectorAll(arguments[0] + '.selected')].map((row) =>"
            "  row.querySelector('.tabulator-cell').textContent)", ROW)]

    def counts(self):
        return self.text(".list-counts b")

    def removed(self):
        return [line.text for line in self.all(".list-counts li")]

    def row(self, number):
        """The element of the dipole with that number, 1 the first."""
        found = self.js("return [...document.querySelectorAll(arguments[0])].find((row) =>"
                        "  row.querySelector('.tabulator-cell').textContent === arguments[1])", ROW, str(number))
        self.assertIsNotNone(found, f"row {number}")
        return found

    def click_row(self, number, *held):
        actions = ActionChains(self.driver)
        for key in held:
            actions.key_down(key)
        actions.click(self.row(number))
        for key in held:
            actions.key_up(key)
        actions.perform()

    def click_on(self, selector, text=None):
        found = [one for one in self.all(selector) if text is None or one.text == text]
        self.assertEqual(len(found), 1, f"{selector} {text}")
        self.js("arguments[0].scrollIntoView({block: 'nearest'})", found[0])
        found[0].click()

    def sort(self, label):
        self.click_on(f".list-sort[aria-label^='Sort by {label}']")

    def filter(self, label, text):
        field = self.one(f"[aria-label='Filter {label}']")
        self.js("arguments[0].scrollIntoView({inline: 'center', block: 'nearest'})", field)
        field.send_keys(Keys.CONTROL, "a")
        field.send_keys(text or Keys.DELETE, Keys.ENTER)
        self.wait(lambda: self.js("return arguments[0].value", field) == text)
        self.drawn()

    def tab(self, name):
        self.click_on(f"#tab-{name}")
        self.drawn()

    def lines(self, selector):
        """Of a table of two columns: its names and values."""
        return dict(self.js("return [...document.querySelectorAll(arguments[0] + ' .list-lines tr')].map((row) =>"
                            "  [row.querySelector('th').textContent, row.querySelector('td').textContent])", selector))

    def place(self, frame="scanner"):
        numbers = self.all(f".place [data-frame={frame}] .number")
        return [float(number.text.replace("\u2212", "-")) for number in numbers]

    def exported(self):
        """Bytes of the table that the page saves."""
        path = os.path.join(self.folder, "dipoles.csv")
        if os.path.exists(path):
            os.remove(path)
        self.click_on(".list-csv")
        self.wait(lambda: os.path.exists(path) and os.path.getsize(path) > 0)
        with open(path, "rb") as file:
            return file.read()


def cells(table):
    """Of a table as RFC 4180 says, read by code that is not ours."""
    return list(csv.reader(io.StringIO(table.decode("utf-8"), newline="")))
