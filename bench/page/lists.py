#!/usr/bin/python3
"""How long the page's main thread is busy with 30000 rows: the longest task of each step, in ms.

    DIPOLE_PAGE=build/native/share/dipole/page.html bench/page/lists.py [ROWS]

A task of more than 50 ms is what browsers call long; at 200 ms a hand feels it. First all but the
pictures answers, then the whole page. 0: no task was long.
Others' work makes tasks long on the clock; the last column is what all tasks of a step took of a processor.
"""

import os
import sys
import tempfile
import time

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "tests", "page"))

import list_data  # noqa: E402
import page_data  # noqa: E402
from support import browser  # noqa: E402

ROUNDS = 3

OBSERVE = """
window.longTasks = [];
new PerformanceObserver((list) => {
  for (const entry of list.getEntries()) window.longTasks.push(entry.duration);
}).observe({entryTypes: ['longtask']});
window.sort = (title) => document.querySelector(`.list-sort[title*="(${title})"]`).click();
window.filter = (label, text) => {
  const field = document.querySelector(`[aria-label="Filter ${label}"]`);
  field.value = text;
  field.dispatchEvent(new Event('change'));
};
window.holder = () => document.querySelector('.list-table .tabulator-tableholder');
"""

STEPS = [
    ("sort by latency", "sort('latency_ms')"),
    ("sort by label", "sort('label')"),
    ("filter by error", "filter('Fit error', round % 2 ? '5..10' : '<=8')"),
    ("filter by label", "filter('Label', 'dipole ' + (round + 1))"),
    ("no filters", "document.querySelector('.list-buttons button').click()"),
    ("select all rows", "holder().dispatchEvent(new KeyboardEvent('keydown', {key: 'a', ctrlKey: true, bubbles: true}))"),
    ("select one row", "holder().dispatchEvent(new KeyboardEvent('keydown', {key: 'End', bubbles: true}))"),
    ("scroll far", "holder().scrollTop = holder().scrollHeight * (round + 1) / 7"),
    ("scroll on", "let n = 0; const step = () => { holder().scrollTop += 60; if (++n < 30) requestAnimationFrame(step); };"
                  "step()"),
]


def main():
    count = int(sys.argv[1]) if len(sys.argv) > 1 else 30000
    with open(os.environ["DIPOLE_PAGE"], encoding="utf-8") as file:
        template = file.read()
    with tempfile.TemporaryDirectory() as folder:
        path = os.path.join(folder, "page.html")
        with open(path, "w", encoding="utf-8") as file:
            file.write(page_data.filled(template, list_data.random_data(count), page_data.head_file()[0]))
        driver = browser(folder)
        try:
            measure(driver, "file://" + path, count)
        finally:
            driver.quit()


def measure(driver, address, count):
    driver.execute_cdp_cmd("Performance.enable", {"timeDomain": "threadTicks"})
    start = time.monotonic()
    driver.get(address)
    while not driver.execute_script("return document.getElementById('app').dataset.ready === 'yes'"):
        time.sleep(0.05)
    print(f"{count} rows, open after {time.monotonic() - start:.1f} s")
    time.sleep(5)
    driver.execute_script(OBSERVE)
    for shown in ("none", ""):
        driver.execute_script("document.querySelector('.pictures').style.display = arguments[0]", shown)
        time.sleep(2)
        load = os.getloadavg()[0] / os.cpu_count()
        print(f"\n{'without its pictures' if shown else 'the whole page'}, load {load:.1f} a processor")
        measure_steps(driver)


def measure_steps(driver):
    print(f"{'step':20} {'longest, ms':>12} {'median, ms':>12} {'processor, ms':>14}")
    for name, script in STEPS:
        longest = []
        before = processor_time(driver)
        for turn in range(ROUNDS):
            driver.execute_script("window.longTasks.length = 0; const round = arguments[0];" + script, turn)
            time.sleep(1.5)
            tasks = driver.execute_script("return window.longTasks")
            longest.append(max(tasks, default=0))
        longest.sort()
        processor = (processor_time(driver) - before) / ROUNDS
        print(f"{name:20} {longest[-1]:12.0f} {longest[len(longest) // 2]:12.0f} {processor:14.0f}", flush=True)


def processor_time(driver):
    """ms that the page's main thread had a processor for, since it was opened."""
    metrics = driver.execute_cdp_cmd("Performance.getMetrics", {})["metrics"]
    return 1000 * next(metric["value"] for metric in metrics if metric["name"] == "TaskDuration")


if __name__ == "__main__":
    main()
