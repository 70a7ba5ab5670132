"""What the tests of the command line program share: running it, an own reader of dipole files as the second
opinion, dipole files to order, a head to draw on, a decoder of PNG pictures."""

import gzip
import json
import os
import re
import shutil
import struct
import subprocess
import sys
import tempfile
import unittest
import zlib

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
EXAMPLES = os.path.join(ROOT, "examples")
TOOL = os.environ.get("DIPOLE_TOOL", "")
# With what runs a program of another system in front.
EMULATOR = os.environ.get("DIPOLE_EMULATOR", "").split()
PROGRAM = [*EMULATOR, TOOL]

LEFT_FIRST = "0,100,0 -80,0,0 80,0,0"  # fiducial points that make the head frame the scanner's, x mirrored


def example(name):
    return os.path.join(EXAMPLES, name)


def run(*arguments, program=None, **options):
    """The program's result with standard input closed, as in a script."""
    options.setdefault("stdin", subprocess.DEVNULL)
    options.setdefault("timeout", 120)
    return subprocess.run([*EMULATOR, program or TOOL, *arguments], capture_output=True, **options)


def with_output(arguments):
    """The arguments with the last one that belongs to no option behind it as the file to write."""
    arguments = list(arguments)
    at = len(arguments) - 1
    while at > 0 and str(arguments[at - 1]).startswith("--") and str(arguments[at - 1]) not in (
            "--", "--yes", "--no", "--rotate", "--by-sphere"):
        at -= 2
    if at < 0:
        return arguments
    target = arguments.pop(at)
    return ["--force", "--output=" + target] + arguments


class ToolTest(unittest.TestCase):
    """Gives each test a folder of its own and says how the program ended when it is not as expected."""

    def setUp(self):
        if not TOOL:
            self.fail("DIPOLE_TOOL does not name the program")
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = folder.name

    def path(self, name):
        return os.path.join(self.folder, name)

    def write(self, name, data):
        with open(self.path(name), "wb") as file:
            file.write(data if isinstance(data, bytes) else data.encode("cp1252"))
        return self.path(name)

    def succeed(self, *arguments, **options):
        return self.end_with(0, *arguments, **options)

    def end_with(self, code, *arguments, **options):
        result = run(*arguments, **options)
        result.out = result.stdout.decode("utf-8")
        result.err = result.stderr.decode("utf-8")
        self.assertEqual(result.returncode, code, result.err)
        return result


PAGE = """<!DOCTYPE html>
<html lang="en"><head><meta charset="utf-8"><title>Dipoles</title></head>
<body>
<p>&lt;script&gt; $& \\1</p>
<script type="application/json" id="page-data"></script>
<script type="text/plain" id="page-head"></script>
<script type="text/plain" id="page-atlas"></script>
</body></html>
"""


def program_with_page(folder, template=PAGE):
    """The program as it is installed, with a template for pages; without one when that is None."""
    program = os.path.join(folder, "bin", os.path.basename(TOOL))
    os.makedirs(os.path.dirname(program))
    try:
        os.link(TOOL, program)  # a symbolic link would lead it home
    except OSError:
        shutil.copy(TOOL, program)
    if template is not None:
        os.makedirs(os.path.join(folder, "share", "dipole"))
        with open(os.path.join(folder, "share", "dipole", "page.html"), "w", encoding="utf-8") as file:
            file.write(template)
    return program


def single(value):
    """The nearest single-precision number."""
    return struct.unpack("f", struct.pack("f", value))[0]


def read_sections(path):
    """(name, rows) of every section: the fields of the lines with a number and a colon in front."""
    with open(path, "rb") as file:
        lines = re.split(rb"[\r\n]+", file.read())
    sections, inside = [], None
    for line in (line.decode("cp1252") for line in lines):
        if line.strip() == "}":
            inside = None
        elif re.match(r"\s*\d+\s*:", line) and inside is not None:
            inside.append(line.split(":", 1)[1].split())
        elif re.fullmatch(r"\w+", line):
            inside = []
            sections.append((line, inside))
    return sections


def host_axes(values):
    """x to the nose, y left, z up, as the file has them, turned to x left, y up, z to the nose."""
    nose, left, up = values
    return [left, up, nose]


def expected_dipoles(path):
    """What the program has to list for a file with one Dipoles section and its flags and fit information."""
    sections = dict(read_sections(path))
    result = []
    for number, row in enumerate(sections["Dipoles"], 1):
        values = [single(float(field)) for field in row[:7]]
        result.append({
            "number": number,
            "id": 0,
            "latency_ms": 0.0,
            "position_mm": host_axes([single(value * 10) for value in values[:3]]),
            "orientation": host_axes(values[3:6]),
            "moment": values[6],
            "fit_error_percent": 0.2,
            "label": row[7],
            "shown_on_slices": True,
        })
    for dipole, row in zip(result, sections.get("Dipole_Flags", [])):
        dipole["shown_on_slices"] = row[1] in ("0", "3")
    for dipole, row in zip(result, sections.get("Dipole_FitInfo", [])):
        dipole["id"] = int(row[0])
        dipole["latency_ms"] = single(single(float(row[2])) * 1000)
        dipole["fit_error_percent"] = single(float(row[4]))
    return result


def dipoles_of(text):
    """The dipoles of a JSON document as expected_dipoles has them."""
    result = []
    for dipole in json.loads(text)["dipoles"]:
        found = {key: dipole[key] for key in ("number", "id", "latency_ms", "fit_error_percent", "label",
                                              "shown_on_slices")}
        found["position_mm"] = [dipole[key] for key in ("x_left_mm", "y_up_mm", "z_front_mm")]
        found["orientation"] = [dipole["orientation_" + key] for key in ("x_left", "y_up", "z_front")]
        found["moment"] = dipole["moment_nAm"] if "moment_nAm" in dipole else dipole["moment"]
        result.append(found)
    return result


SPHERE = "MEG_Sphere\n{\nORIGIN_X: 0.0\nORIGIN_Y: 0.0\nORIGIN_Z: 5.0\nRADIUS: 8.5\n}\n"


def dipole_file(rows, head=SPHERE):
    """A dipole file with one section; each row is (x, y, z in cm, moment, label)."""
    lines = ["%d: %s %s %s 0 0 1 %s %s" % ((number,) + tuple(row)) for number, row in enumerate(rows, 1)]
    return head + "Dipoles\n{\n// xp (cm) yp (cm) zp (cm) xo yo zo Mom(nAm) Label\n" + "\n".join(lines) + "\n}\n"


def moving_file(*sections):
    """Moving-dipole sections; each is a list of (latency in s, x, y, z in cm)."""
    text = SPHERE
    for rows in sections:
        text += "Fit_Results\n{\n// Trial Sample Latency (s) xp (cm) yp (cm) zp (cm) xo yo zo Mom(nAm) Err(%) Label\n"
        for number, row in enumerate(rows, 1):
            place = "\t".join(str(value) for value in row)
            text += "%d:\t1\t%d\t%s\t0\t0\t1\t20\t5.5\tm%d\n" % (number, number, place, number)
        text += "}\n"
    return text


def empty_head(path, size, spacing, offset):
    """A head of three numbers of voxels, sizes (mm) and places of the first voxel (scanner mm) that holds nothing:
    the first index runs to the right, the second forward, the third up."""
    header = bytearray(352)
    struct.pack_into("<i", header, 0, 348)
    struct.pack_into("<8h", header, 40, 3, *size, 1, 1, 1, 1)
    struct.pack_into("<2h", header, 70, 2, 8)
    struct.pack_into("<8f", header, 76, 1, *spacing, 0, 0, 0, 0)
    struct.pack_into("<f", header, 108, 352)
    struct.pack_into("<B", header, 123, 2)
    struct.pack_into("<h", header, 254, 1)
    for axis in range(3):
        row = [0.0, 0.0, 0.0, offset[axis]]
        row[axis] = spacing[axis]
        struct.pack_into("<4f", header, 280 + 16 * axis, *row)
    header[344:348] = b"n+1\0"
    with gzip.open(path, "wb", compresslevel=1) as file:
        file.write(bytes(header) + bytes(size[0] * size[1] * size[2]))
    return path


def head_volume(path, size=50, spacing=5.0, bright=None, sform=True):
    """A round grey head of 90 mm radius, centred on the scanner's origin, as a packed NIfTI-1 file.
    `bright` is a scanner point (mm) with a small white ball around it."""
    offset = -spacing * (size - 1) / 2
    voxels = bytearray()
    for k in range(size):
        for j in range(size):
            for i in range(size):
                point = [offset + spacing * index for index in (i, j, k)]
                inside = sum(c * c for c in point) < 90 * 90
                near = bright is not None and sum((c - b) ** 2 for c, b in zip(point, bright)) < 12 * 12
                voxels.append(250 if near else 100 if inside else 0)
    header = bytearray(352)
    struct.pack_into("<i", header, 0, 348)
    struct.pack_into("<8h", header, 40, 3, size, size, size, 1, 1, 1, 1)
    struct.pack_into("<2h", header, 70, 2, 8)
    struct.pack_into("<8f", header, 76, 1, spacing, spacing, spacing, 0, 0, 0, 0)
    struct.pack_into("<f", header, 108, 352)
    struct.pack_into("<B", header, 123, 2)
    if sform:
        struct.pack_into("<h", header, 254, 1)
        for axis in range(3):
            row = [0.0, 0.0, 0.0, offset]
            row[axis] = spacing
            struct.pack_into("<4f", header, 280 + 16 * axis, *row)
    header[344:348] = b"n+1\0"
    with gzip.open(path, "wb", compresslevel=1) as file:
        file.write(bytes(header) + bytes(voxels))
    return path


class Png:
    """An RGB picture of 8 bits, unpacked here by the rules of the format."""

    def __init__(self, data):
        if data[:8] != b"\x89PNG\r\n\x1a\n":
            raise ValueError("not a PNG")
        packed, at, kinds = b"", 8, []
        while at < len(data):
            length, kind = struct.unpack(">I4s", data[at:at + 8])
            body = data[at + 8:at + 8 + length]
            if zlib.crc32(kind + body) != struct.unpack(">I", data[at + 8 + length:at + 12 + length])[0]:
                raise ValueError("checksum of " + str(kind))
            kinds.append(kind)
            if kind == b"IHDR":
                self.width, self.height, depth, colour = struct.unpack(">IIBB", body[:10])
                if (depth, colour) != (8, 2):
                    raise ValueError("not RGB of 8 bits")
            elif kind == b"IDAT":
                packed += body
            at += 12 + length
        if kinds[-1] != b"IEND":
            raise ValueError("cut off")
        self.rows = self._unfilter(zlib.decompress(packed))

    def _unfilter(self, raw):
        stride, rows, previous = self.width * 3, [], bytes(self.width * 3)
        if len(raw) != self.height * (stride + 1):
            raise ValueError("size")
        for y in range(self.height):
            kind = raw[y * (stride + 1)]
            row = bytearray(raw[y * (stride + 1) + 1:(y + 1) * (stride + 1)])
            for x in range(stride):
                left = row[x - 3] if x >= 3 else 0
                up = previous[x]
                corner = previous[x - 3] if x >= 3 else 0
                row[x] = (row[x] + (0, left, up, (left + up) // 2, paeth(left, up, corner))[kind]) & 255
            rows.append(bytes(row))
            previous = row
        return rows

    def pixels(self, wanted):
        """(x, y) of every pixel that `wanted(r, g, b)` accepts."""
        found = []
        for y, row in enumerate(self.rows):
            for x in range(self.width):
                if wanted(row[3 * x], row[3 * x + 1], row[3 * x + 2]):
                    found.append((x, y))
        return found


def paeth(left, up, corner):
    guess = left + up - corner
    return min((abs(guess - left), 0, left), (abs(guess - up), 1, up), (abs(guess - corner), 2, corner))[2]


def is_dipole_colour(r, g, b):
    return (r, g, b) == (255, 255, 0)


def terminal(arguments, answers):
    """Runs the program on a terminal of its own and types the answers, each once the program has asked.
    Returns (exit code, what the terminal showed, standard output, which goes to a file)."""
    import pty
    import select

    with tempfile.TemporaryFile() as output:
        main, side = pty.openpty()
        process = subprocess.Popen([TOOL, *arguments], stdin=side, stderr=side, stdout=output)
        os.close(side)
        shown, waiting = b"", list(answers)
        asked = 0
        try:
            while select.select([main], [], [], 30)[0]:
                try:
                    piece = os.read(main, 4096)
                except OSError:  # the program has let go of the terminal
                    break
                if not piece:
                    break
                shown += piece
                if shown.count(b"[y/N] ") > asked and waiting:
                    asked += 1
                    os.write(main, waiting.pop(0))
            code = process.wait(timeout=30)
        finally:
            process.kill()
            os.close(main)
        output.seek(0)
        return code, shown.decode("utf-8"), output.read().decode("utf-8")


if __name__ == "__main__":
    sys.exit("this file holds no tests")
