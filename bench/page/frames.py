#!/usr/bin/python3
"""How long the page takes to open and to draw, beside a page that holds NiiVue and the same head and nothing else.

    DIPOLE_TOOL=build/native/bin/dipole bench/page/frames.py [ROUNDS]

Without a GPU: the browser draws in software (SwiftShader), and each frame is waited for. Ratios count, of one run; what
else the machine does changes all figures. Goals: opening at most 1.3 times the bare page, a new slice at most 1.5 times
its slices, a turn in 3D of 120 dipoles at most 500 ms.
"""

import json
import os
import random
import re
import statistics
import subprocess
import sys
import tempfile
import time

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, os.path.join(HERE, "..", "..", "tests", "page"))

from support import browser  # noqa: E402

ROOT = os.path.join(HERE, "..", "..")
HEAD = "/usr/share/mricron/templates/ch2.nii.gz"
NIIVUE = os.path.join(ROOT, "page", "node_modules", "@niivue", "niivue", "dist", "niivue.umd.js")

BARE = """<!doctype html><meta charset="utf-8"><body id="app" style="margin:0">
<div style="width:704px;height:662px"><canvas id="gl"></canvas></div><script>%s</script>
<script id="head" type="text/plain">%s</script><script>
(async () => {
  const nv = new niivue.Niivue({logLevel: "error"});
  window.nv = nv;
  await nv.attachToCanvas(document.getElementById("gl"));
  const base64 = document.getElementById("head").textContent;
  nv.addVolume(await niivue.NVImage.loadFromBase64({base64, name: "head.nii.gz"}));
  nv.setSliceType(3);
  nv.opts.multiplanarShowRender = 0;
  nv.drawScene();
  window.waited = () => nv.gl.readPixels(0, 0, 1, 1, nv.gl.RGBA, nv.gl.UNSIGNED_BYTE, new Uint8Array(4));
  waited();
  document.getElementById("app").dataset.ready = "yes";
})();
</script>"""

FRAMES = """
const done = arguments[arguments.length - 1];
const step = new Function(arguments[0]);
(async () => {
  const times = [];
  for (let i = 0; i < 12; ++i) {
    await new Promise((go) => setTimeout(go, 30));
    const start = performance.now();
    step();
    if (window.waited) waited();
    else await new Promise((go) => requestAnimationFrame(() => setTimeout(go, 0)));
    times.push(performance.now() - start);
  }
  done(times);
})();
"""

KEY = "document.dispatchEvent(new KeyboardEvent('keydown', {key: '%s', bubbles: true}))"
OVER = "document.querySelector('[data-pane=%s] .marks').dispatchEvent(new Event('pointerenter'));"
STEPS = [
    ("new axial slice", OVER % "axial", KEY % "PageUp"),
    ("crosshair, all panes", "", KEY % "ArrowLeft"),
    ("colours", "", KEY % "c"),
    ("grey values", "", KEY % "]"),
    ("turn in 3D", OVER % "scene", KEY % "ArrowLeft"),
]


def many_dipoles(path, count):
    """As a table, all over a head."""
    chance = random.Random(1)
    with open(path, "w", encoding="ascii") as file:
        file.write("x_left_mm,y_up_mm,z_front_mm,orientation_x_left,orientation_y_up,orientation_z_front,"
                   "latency_ms,fit_error_percent\n")
        for i in range(count):
            place = [chance.uniform(-60, 60), chance.uniform(0, 90), chance.uniform(-60, 60)]
            way = [chance.gauss(0, 1) for _ in range(3)]
            file.write(",".join("%.3f" % value for value in [*place, *way, i / 10, chance.uniform(1, 30)]) + "\n")


def opened(driver, path):
    start = time.monotonic()
    driver.get("file://" + path)
    while not driver.execute_script("return document.getElementById('app')?.dataset.ready === 'yes'"):
        if time.monotonic() - start > 300:
            raise RuntimeError(path + " does not open")
        time.sleep(0.02)
    return time.monotonic() - start


def frames(driver, script):
    return statistics.median(driver.execute_async_script(FRAMES, script))


def with_browser(folder, work):
    driver = browser(folder)
    try:
        driver.set_script_timeout(300)
        driver.execute_cdp_cmd("Emulation.setDeviceMetricsOverride", {
            "width": 1280, "height": 800, "deviceScaleFactor": 1, "mobile": False})
        return work(driver)
    finally:
        driver.quit()


def measured(driver, path):
    opened(driver, path)
    time.sleep(4)
    result = {}
    for name, before, step in STEPS:
        driver.execute_script(before)
        result[name] = frames(driver, step)
    return result


def measured_bare(driver, path):
    opened(driver, path)
    time.sleep(4)
    slices = frames(driver, "nv.moveCrosshairInVox(0, 0, 1)")
    driver.execute_script("nv.opts.multiplanarShowRender = 1; nv.drawScene()")
    return {"new axial slice": slices, "crosshair, all panes": frames(driver, "nv.moveCrosshairInVox(0, 0, 1)")}


def main():
    rounds = int(sys.argv[1]) if len(sys.argv) > 1 else 3
    with tempfile.TemporaryDirectory() as folder:
        path = {name: os.path.join(folder, name + ".html") for name in ("bare", "120", "30000")}
        table = os.path.join(folder, "many.csv")
        many_dipoles(table, 30000)
        for name, file in (("120", os.path.join(ROOT, "examples", "spikes.dip")), ("30000", table)):
            subprocess.run([os.environ["DIPOLE_TOOL"], "page", file, "--mri", HEAD, "--fiducials",
                            os.path.join(ROOT, "examples", "ch2.fiducials"), "--yes", "-q", "-o", path[name]], check=True)
        with open(path["120"], encoding="utf-8") as file:
            head = re.search('id="page-head">([^<]*)<', file.read()).group(1)
        with open(NIIVUE, encoding="utf-8") as library, open(path["bare"], "w", encoding="utf-8") as file:
            file.write(BARE % (library.read(), head))
        load = os.getloadavg()[0] / os.cpu_count()
        print(f"load {load:.1f} a processor; sizes in MB: "
              + json.dumps({name: round(os.path.getsize(file) / 1e6, 2) for name, file in path.items()}))
        times = {name: [] for name in path}
        for _ in range(rounds):
            for name, file in path.items():  # in turn, so that all have the same neighbours
                times[name].append(with_browser(folder, lambda driver: opened(driver, file)))
        least = {name: min(found) for name, found in times.items()}
        results = {name: with_browser(folder, lambda driver: (measured_bare if name == "bare" else measured)(driver, file))
                   for name, file in path.items()}
        print(f"{'ms':24}" + "".join(f"{name:>10}" for name in path))
        print(f"{'opening, the quickest':24}" + "".join(f"{1000 * least[name]:10.0f}" for name in path))
        for step, *_ in STEPS:
            print(f"{step:24}" + "".join(f"{results[name].get(step, float('nan')):10.0f}" for name in path))


if __name__ == "__main__":
    main()
