#!/usr/bin/env python3
"""Archives between two programs: read_archives.py ARCHIVE_WRITER, or read_archives.py --dump NAME.

A reader of its own of the layouts of docs/file-formats.md, which shares no code with the module. It reads
what the module wrote (ARCHIVE_WRITER writes it, with a list of what its objects held) and compares every
member bit by bit. It also holds the files beside make_archives.py against that script, and the dumps in the
documentation against what it reads itself; --dump prints the dump of an archive of make_archives.py."""

import re
import struct
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

import make_archives

HERE = Path(__file__).resolve().parent
DOCUMENT = HERE.parent.parent / "docs" / "file-formats.md"


class Reading:
    """Takes an archive's bytes apart; `found` gets its members in the words of the writer's list."""

    def __init__(self, data):
        self.data = data
        self.at = 0
        self.found = {}
        self.prefix = ""
        self.notes = []  # where a field starts and ends, and what it is

    def note(self, start, words):
        self.notes.append((start, self.at, words))

    def constant(self, form, words, *wanted):
        start = self.at
        assert self.take(form) == wanted, words
        self.note(start, words)

    def take(self, form):
        size = struct.calcsize("<" + form)
        part = self.data[self.at : self.at + size]
        if len(part) != size:
            raise EOFError(f"{form} at {self.at}")
        self.at += size
        return struct.unpack("<" + form, part)

    def number(self, form):
        """An integer in decimal, anything else as the hexadecimal digits of its bits."""
        if form in "iIqB":
            return str(self.take(form)[0])
        return f"{self.take({'f': 'I', 'd': 'Q'}[form])[0]:0{ {'f': 8, 'd': 16}[form] }x}"

    def keep(self, name, form, count=1):
        start = self.at
        shown = " ".join(self.number(form) for _ in range(count))
        values = struct.unpack(f"<{count}{form}", self.data[start : self.at])
        self.note(start, f"{name} " + ", ".join(str(value) for value in values))
        self.found[self.prefix + name] = shown
        return shown

    def length(self):
        """Of a text whose first byte is at hand, and whether its units take two bytes."""
        (small,) = self.take("B")
        if small < 0xFF:
            return small, False
        (medium,) = self.take("H")
        if medium == 0xFFFE:
            return self.length()[0], True
        return (self.take("I")[0], False) if medium == 0xFFFF else (medium, False)

    def text(self, name):
        start = self.at
        length, wide = self.length()
        self.note(start, f"{name}: {length} {'units' if wide else 'bytes'}")
        start = self.at
        units = self.take(f"{length}{'H' if wide else 'B'}")
        shown = "".join(chr(u) if 32 <= u < 127 and u not in b'"\\' else f"\\u{u:04x}" for u in units)
        if units:
            self.note(start, f'"{shown}"')
        self.found[self.prefix + name] = f'"{shown}"'

    def magic(self, wanted):
        self.text("text in front")
        assert self.found.pop("text in front").upper() == f'"{wanted}"'

    def sphere(self, name):
        self.keep(name + ".m_center", "d", 3)
        self.keep(name + ".m_radius", "d")
        self.keep(name + ".m_auxInt", "i", 2)
        self.text(name + ".m_auxText")

    def fresh_sphere(self):
        self.constant("4d2i", "unused sphere: centre, radius, two integers", *(0.0,) * 4, 0, 0)
        self.constant("BHB", "and its text: 0 units", 0xFF, 0xFFFE, 0)

    def fiducials(self, name):
        for point in range(6):
            parts = [self.number("d") for _ in range(16)] + [self.number("q") for _ in range(2)]
            parts += [self.number("d") for _ in range(4)] + [self.number("i") for _ in range(3)]
            parts += [self.number("q"), self.number("i")]
            self.text("label")
            self.found[f"{name} point {point}"] = " ".join([*parts, self.found.pop("label")])
        self.keep(name + " ints", "i", 4)
        self.keep(name + " tail", "q", 3)

    def record_20010101(self, unused=77):
        for name in ("m_show", "m_showOrientation"):
            self.keep(name, "i")
        for name in ("m_scale", "m_orientationScale", "m_orientationLength", "m_size"):
            self.keep(name, "d")
        self.keep("m_color", "I")
        self.constant("i", f"unused, {unused}", unused)
        self.colors_of_2001()
        self.keep("m_orientation", "d", 3)
        self.keep("m_location", "d", 3)
        for name in ("m_dimZ", "m_dimY", "m_dimX"):
            self.keep(name, "i")
        for name in ("m_fitError", "m_latency", "m_moment"):
            self.keep(name, "d")
        for name in ("m_fitTag", "m_id", "m_display"):
            self.keep(name, "i")
        self.text("m_label")

    def colors_of_2001(self):
        start = self.at
        blue, green, red = (self.number("f") for _ in range(3))
        values = struct.unpack("<3f", self.data[start : self.at])
        self.note(start, "m_colorF: blue {}, green {}, red {}".format(*values))
        self.found[self.prefix + "m_colorF"] = f"{red} {green} {blue}"

    def record_20011118(self):
        self.constant("i", "dipole record of version 20011118", 20011118)
        self.record_20010101(unused=1)
        self.keep("m_number", "i")
        self.fresh_sphere()

    def record_20061206(self):
        self.magic("DIPOLEZQ")
        self.constant("i", "version 20061206", 20061206)
        for name in ("m_number", "m_listItemId", "m_show", "m_showOrientation"):
            self.keep(name, "i")
        self.keep("m_scale", "d")
        self.keep("m_color", "I")
        self.keep("m_id", "i")
        self.keep("m_fitTag", "i")
        for name in ("m_latency", "m_moment", "m_fitError"):
            self.keep(name, "d")
        self.text("m_label")
        self.keep("m_display", "i")
        self.keep("m_selected", "B")
        self.keep("m_location", "d", 3)
        self.keep("m_size", "d")
        self.keep("m_orientation", "d", 3)
        self.keep("m_orientationScale", "d")
        self.keep("m_orientationLength", "d")
        for name in ("m_dimY", "m_dimX", "m_dimZ"):
            self.keep(name, "i")
        self.keep("m_colorF", "f", 3)
        self.keep("m_extraValue", "d")
        self.keep("m_extraFlag", "i")

    def slots(self, count, record, flagged=False):
        for slot in range(count):
            if flagged:
                start = self.at
                (present,) = self.take("i")
                assert present in (0, 1), present
                self.note(start, f"slot {slot}: " + ("a dipole follows" if present else "empty"))
                if not present:
                    self.found[f"slot {slot}"] = "empty"
                    continue
            self.prefix = f"slot {slot} "
            record()
            self.prefix = ""

    def counts(self):
        self.keep("m_currentDipole", "i")
        return int(self.keep("m_totalDipoles", "i"))

    def set_20050629(self):
        self.magic("DIPOLESFACEZQ")
        self.constant("i", "version 20050629", 20050629)
        self.slots(self.counts(), self.record_20011118, flagged=True)
        self.keep("m_faceValue", "d")
        self.keep("m_showDipoleOrientationAll", "i")
        self.keep("m_allDipoleRange", "d", 3)
        self.keep("m_bCtfSphereSet", "i")
        for name in ("m_fileVersion", "m_patient", "m_mriFile"):
            self.text(name)
        for name in ("m_megOnly", "m_coordinateType", "m_momentInNAm"):
            self.keep(name, "i")
        self.keep("m_skipFiducialSetup", "B")
        self.keep("m_showCurrentDipoleOnly", "i")
        self.keep("m_mergeRadius", "f")
        for name in ("m_showFiducialPt", "m_showDipoleArray"):
            self.keep(name, "i")
        self.keep("m_dimension", "i", 3)
        self.keep("m_space", "d", 3)

    def set_20011118(self):
        self.constant("i", "version 20011118", 20011118)
        self.keep("m_showCurrentDipoleOnly", "i")
        self.keep("m_sphereRotation.m_center", "d", 3)
        for name in ("m_fileVersion", "m_mriFile", "m_patient"):
            self.text(name)
        for name in ("m_megOnly", "m_coordinateType", "m_showFiducialPt"):
            self.keep(name, "i")
        self.fiducials("m_fiducialMri")
        self.fiducials("m_fiducialCtf")
        self.view_of_2001()
        self.dimension_of_2001()
        self.slots(self.counts(), self.record_20011118)
        self.sphere("m_sphereLocational")
        self.sphere("m_sphereCtf")
        self.fresh_sphere()

    def set_20010101(self):
        self.keep("version", "i")
        self.view_of_2001()
        self.keep("m_sphereCtf.m_radius", "d")
        self.keep("m_sphereCtf.m_center", "d", 3)
        self.dimension_of_2001()
        self.slots(self.counts(), self.record_20010101)

    def view_of_2001(self):
        for name in ("m_bCtfSphereSet", "m_showDipoleOrientationAll", "m_showDipoleArray"):
            self.keep(name, "i")
        self.keep("m_faceValue", "d")
        self.keep("m_space", "d", 3)
        self.keep("m_allDipoleRange", "d", 3)

    def dimension_of_2001(self):
        start = self.at
        third, first, second = (self.number("i") for _ in range(3))
        self.note(start, f"m_dimension: element 2 is {third}, 0 is {first}, 1 is {second}")
        self.found["m_dimension"] = f"{first} {second} {third}"


# The archives that the documentation shows, and what reads them.
SHOWN = {
    "set_20050629_small": Reading.set_20050629,
    "record_20061206_narrow": Reading.record_20061206,
    "set_20010101_version_1": Reading.set_20010101,
}


def dump(name):
    """Each field of an archive in lines of at most 16 bytes, with its offset and what it is."""
    reading = Reading((HERE / "archives" / f"{name}.bin").read_bytes())
    SHOWN[name](reading)
    assert reading.at == len(reading.data)
    lines = []
    for start, end, words in reading.notes:
        for at in range(start, end, 16):
            part = reading.data[at : min(at + 16, end)].hex(" ")
            lines.append(f"{at:04x}  {part:47}  {words if at == start else ''}".rstrip() + "\n")
    return "".join(lines)


def listed(text):
    """The members of a list: in each line a name, which may have blanks, and its value."""
    found = {}
    name = re.compile(r"(slot \d+(?= empty$)|(?:slot \d+ )?[\w.]+(?: point \d+| ints| tail)?) (.*)")
    for line in text.splitlines():
        key, value = name.fullmatch(line).groups()
        found[key] = value
    return found


class WhatTheModuleWrites(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        subprocess.run([WRITER, cls.folder.name], check=True)

    @classmethod
    def tearDownClass(cls):
        cls.folder.cleanup()

    def compare(self, name, least):
        path = Path(self.folder.name) / name
        reading = Reading(path.with_suffix(".bin").read_bytes())
        getattr(reading, name.removesuffix("_odd"))()
        self.assertEqual(reading.at, len(reading.data), "bytes are left")
        held = listed(path.with_suffix(".txt").read_text(encoding="ascii"))
        self.assertGreaterEqual(len(reading.found), least)
        for member, value in reading.found.items():
            self.assertEqual(value, held.get(member), member)
        return reading.found

    def test_a_set_of_the_current_form_holds_every_member(self):
        self.compare("set_20050629", 5 * 21 + 1 + 19)

    def test_a_set_of_the_older_form_holds_every_member(self):
        self.compare("set_20011118", 6 * 21 + 39)

    def test_a_dipole_alone_holds_every_member(self):
        self.compare("record_20061206", 25)

    def test_an_embedded_dipole_holds_every_member(self):
        self.compare("record_20011118", 21)


    def test_odd_numbers_of_a_set_of_the_current_form_survive(self):
        found = self.compare("set_20050629_odd", 3 * 21 + 19)
        self.assertRegex(found["m_mergeRadius"], "^7fa[0-9a-f]{5}$")  # a signalling NaN
        self.assertEqual(found["m_skipFiducialSetup"], "0")

    def test_odd_numbers_of_a_set_of_the_older_form_survive(self):
        self.compare("set_20011118_odd", 3 * 21 + 39)

    def test_odd_numbers_of_a_dipole_alone_survive(self):
        self.compare("record_20061206_odd", 25)


class WhatIsKept(unittest.TestCase):
    def test_the_files_are_what_the_script_writes(self):
        with tempfile.TemporaryDirectory() as folder:
            sys.argv[1:] = [folder]
            make_archives.main()
            made = {path.name: path.read_bytes() for path in Path(folder).iterdir()}
        kept = {path.name: path.read_bytes() for path in (HERE / "archives").iterdir()}
        self.assertEqual(sorted(made), sorted(kept))
        for name, data in made.items():
            self.assertEqual(data, kept[name], name)

    def test_the_documented_dumps_are_the_files(self):
        text = DOCUMENT.read_text(encoding="utf-8")
        shown = re.findall(r"`tests/file/archives/(\w+)\.bin`[^`]*```\n(.*?)```", text, re.S)
        self.assertEqual([name for name, _ in shown], list(SHOWN))
        for name, block in shown:
            self.assertEqual(block, dump(name))


if __name__ == "__main__":
    if sys.argv[1] == "--dump":
        sys.stdout.write(dump(sys.argv[2]))
    else:
        WRITER = sys.argv.pop(1)
        unittest.main(verbosity=2)
