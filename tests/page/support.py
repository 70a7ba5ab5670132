"""What the tests of the page share: a real browser that opens a page from a file, and what it complained about."""

import io
import json
import os
import tempfile
import time
import unittest

import numpy
from PIL import Image
from selenium import webdriver
from selenium.webdriver.chrome.options import Options
from selenium.webdriver.chrome.service import Service
from selenium.webdriver.common.action_chains import ActionChains
from selenium.webdriver.common.by import By
from selenium.webdriver.common.utils import is_connectable

import page_data

TEMPLATE = os.environ.get("DIPOLE_PAGE", "")
STALL = "GPU stall due to ReadPixels"  # a hint of the driver: pictures of the head are copied out of WebGL
OPENING = 120  # seconds that a busy machine without a GPU may take to open a page


class Driver(Service):
    """By its number: a bare machine has no file that says what localhost is."""

    @property
    def service_url(self):
        return f"http://127.0.0.1:{self.port}"

    def is_connectable(self):
        return is_connectable(self.port, "127.0.0.1")


def browser(downloads):
    options = Options()
    # Without a GPU a browser puts pages together without one too; only WebGL needs the stand-in. The driver speaks to
    # it by a pipe, for the same reason as above.
    for flag in ("--headless=new", "--remote-debugging-pipe", "--disable-gpu-compositing", "--no-sandbox",
                 "--use-angle=swiftshader", "--enable-unsafe-swiftshader", "--hide-scrollbars",
                 "--force-color-profile=srgb"):
        options.add_argument(flag)
    options.binary_location = "/usr/bin/chromium"
    options.add_experimental_option("prefs", {"download.default_directory": downloads})
    options.set_capability("goog:loggingPrefs", {"browser": "ALL", "performance": "ALL"})
    return webdriver.Chrome(options=options, service=Driver("/usr/bin/chromedriver"))


class PageTest(unittest.TestCase):
    """One browser for all tests of a class. Each test fails when the page complained, or asked for anything."""

    @classmethod
    def setUpClass(cls):
        if not TEMPLATE:
            raise AssertionError("DIPOLE_PAGE does not name the built page")
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        cls.folder = folder.name
        cls.driver = browser(cls.folder)
        cls.addClassCleanup(cls.driver.quit)
        with open(TEMPLATE, encoding="utf-8") as file:
            cls.template = file.read()

    def setUp(self):
        self.size(1280, 800)

    def tearDown(self):
        said = [entry["message"] for entry in self.driver.get_log("browser") if STALL not in entry["message"]]
        self.assertEqual(said, [], "the console is empty")
        self.assertEqual(self.requests(), [], "the page asks for nothing")

    def requests(self):
        """Addresses that were asked for, but for the page itself and what it holds itself."""
        found = []
        for entry in self.driver.get_log("performance"):
            message = json.loads(entry["message"])["message"]
            if message["method"] == "Network.requestWillBeSent":
                url = message["params"]["request"]["url"]
                if not url.startswith(("data:", "blob:", "file://" + self.folder, "chrome")):
                    found.append(url)
        return found

    def size(self, width, height):
        self.driver.execute_cdp_cmd("Emulation.setDeviceMetricsOverride", {
            "width": width, "height": height, "deviceScaleFactor": 1, "mobile": False})

    def open(self, data, head=None, atlas=None):
        path = os.path.join(self.folder, "page.html")
        with open(path, "w", encoding="utf-8") as file:
            file.write(page_data.filled(self.template, data, head, atlas))
        self.driver.get("file://" + path)
        self.wait(lambda: self.js("return document.getElementById('app').dataset.ready === 'yes' ||"
                                  " document.querySelector('.failure') !== null"), OPENING)
        self.assertEqual(self.all(".failure"), [])

    def open_head(self, places, mirrored=False, degrees=0.0, **changes):
        """A page with a head, its dipoles at places in the head's own mm."""
        head, to_world = page_data.head_file(mirrored, degrees)
        world = [(to_world @ [*place, 1.0])[:3].tolist() for place in places]
        self.open(page_data.page_data(world, **changes), head)

    def wait(self, condition, seconds=20):
        end = time.monotonic() + seconds
        while not condition():
            self.assertLess(time.monotonic(), end, "waited in vain")
            time.sleep(0.05)

    def js(self, script, *arguments):
        return self.driver.execute_script(script, *arguments)

    def one(self, selector):
        return self.driver.find_element(By.CSS_SELECTOR, selector)

    def all(self, selector):
        return self.driver.find_elements(By.CSS_SELECTOR, selector)

    def text(self, selector):
        return self.one(selector).text

    def drawn(self):
        """Waits until the frames that are asked for are drawn, those that come late too."""
        self.driver.execute_async_script(
            "const done = arguments[0];"
            "setTimeout(() => requestAnimationFrame(() => requestAnimationFrame(() => done())), 400)")

    def press(self, *keys):
        for key in keys:
            ActionChains(self.driver).send_keys(key).perform()

    def choose(self, name, value):
        """In the list with that name."""
        self.js("const list = document.querySelector(`select[aria-label='${arguments[0]}']`);"
                "list.value = arguments[1]; list.dispatchEvent(new Event('change'))", name, value)

    def pane(self, name):
        return self.one(f"[data-pane={name}] .marks")

    def pixels(self, name, marks=True):
        """Red, green, blue of a pane as it is on the screen; without its marks the head alone."""
        self.drawn()
        if not marks:
            self.js("document.querySelectorAll('.marks, .lines').forEach((m) => m.style.visibility = 'hidden')")
        picture = Image.open(io.BytesIO(self.one(f"[data-pane={name}] .head").screenshot_as_png)).convert("RGB")
        if not marks:
            self.js("document.querySelectorAll('.marks, .lines').forEach((m) => m.style.visibility = '')")
        return numpy.asarray(picture).astype(int)


def middle_of(pixels):
    """Column and row in the middle of what is true; fails when nothing is."""
    rows, found = numpy.nonzero(pixels)
    if len(rows) == 0:
        raise AssertionError("no such pixel")
    return found.mean(), rows.mean()


def green(pixels):
    return (pixels[..., 1] > 150) & (pixels[..., 1] - pixels[..., 0] > 90) & (pixels[..., 1] - pixels[..., 2] > 90)


def bright(pixels):
    """Brighter than the grey of the ball."""
    return pixels.min(axis=2) > 115
