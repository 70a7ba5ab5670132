#!/usr/bin/env python3
"""Archives between two programs: read_archives.py ARCHIVE_WRITER.

A reader of its own of the layouts of docs/file-formats.md, which shares no code with the module. It reads what
the module wrote (ARCHIVE_WRITER writes it, with a list of what its objects held) and compares every member bit
by bit. It also holds the files beside make_archives.py against that script, and the dump of bytes in the
documentation against its file."""

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
WRITER = sys.argv.pop(1) if len(sys.argv) > 1 else None


class Reading:
    """Takes an archive's bytes apart; `found` gets its members in the words of the writer's list."""

    def __init__(self, data):
        self.data = data
        self.at = 0
        self.found = {}
        self.prefix = ""

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
        shown = " ".join(self.number(form) for _ in range(count))
        if name:
            self.found[self.prefix + name] = shown
        return shown

    def text(self, name=None):
        mark = self.take("BH")
        assert mark == (0xFF, 0xFFFE), mark
        (length,) = self.take("B")
        if length == 0xFF:
            (length,) = self.take("H")
        if length == 0xFFFF:
            (length,) = self.take("I")
        units = self.take(f"{length}H")
        shown = '"' + "".join(chr(u) if 32 <= u < 127 and u not in b'"\\' else f"\\u{u:04x}" for u in units) + '"'
        if name:
            self.found[self.prefix + name] = shown
        return shown

    def sphere(self, name):
        self.keep(name + ".m_center", "d", 3)
        self.keep(name + ".m_radius", "d")
        self.keep(name + ".m_auxInt", "i", 2)
        self.text(name + ".m_auxText")

    def fresh_sphere(self):
        assert self.take("4d2i") == (0.0,) * 4 + (0, 0)
        assert self.text() == '""'

    def fiducials(self, name):
        for point in range(6):
            parts = [self.number("d") for _ in range(16)] + [self.number("q") for _ in range(2)]
            parts += [self.number("d") for _ in range(4)] + [self.number("i") for _ in range(3)]
            parts += [self.number("q"), self.number("i"), self.text()]
            self.found[f"{name} point {point}"] = " ".join(parts)
        self.keep(name + " ints", "i", 4)
        self.keep(name + " tail", "q", 3)

    def record_20011118(self):
        assert self.take("i") == (20011118,)
        for name in ("m_show", "m_showOrientation"):
            self.keep(name, "i")
        for name in ("m_scale", "m_orientationScale", "m_orientationLength", "m_size"):
            self.keep(name, "d")
        self.keep("m_color", "I")
        assert self.take("i") == (1,)
        blue, green, red = (self.number("f") for _ in range(3))
        self.found[self.prefix + "m_colorF"] = f"{red} {green} {blue}"
        self.keep("m_orientation", "d", 3)
        self.keep("m_location", "d", 3)
        for name in ("m_dimZ", "m_dimY", "m_dimX"):
            self.keep(name, "i")
        for name in ("m_fitError", "m_latency", "m_moment"):
            self.keep(name, "d")
        for name in ("m_fitTag", "m_id", "m_display"):
            self.keep(name, "i")
        self.text("m_label")
        self.keep("m_number", "i")
        self.fresh_sphere()

    def record_20061206(self):
        assert self.text() == '"DIPOLEZQ"'
        assert self.take("i") == (20061206,)
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

    def slots(self, count, flagged):
        for slot in range(count):
            if flagged:
                (present,) = self.take("i")
                assert present in (0, 1), present
                if not present:
                    self.found[f"slot {slot}"] = "empty"
                    continue
            self.prefix = f"slot {slot} "
            self.record_20011118()
            self.prefix = ""

    def set_20050629(self):
        assert self.text() == '"DIPOLESFACEZQ"'
        assert self.take("i") == (20050629,)
        self.keep("m_currentDipole", "i")
        self.slots(int(self.keep("m_totalDipoles", "i")), flagged=True)
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
        assert self.take("i") == (20011118,)
        self.keep("m_showCurrentDipoleOnly", "i")
        self.keep("m_sphereRotation.m_center", "d", 3)
        for name in ("m_fileVersion", "m_mriFile", "m_patient"):
            self.text(name)
        for name in ("m_megOnly", "m_coordinateType", "m_showFiducialPt"):
            self.keep(name, "i")
        self.fiducials("m_fiducialMri")
        self.fiducials("m_fiducialCtf")
        for name in ("m_bCtfSphereSet", "m_showDipoleOrientationAll", "m_showDipoleArray"):
            self.keep(name, "i")
        self.keep("m_faceValue", "d")
        self.keep("m_space", "d", 3)
        self.keep("m_allDipoleRange", "d", 3)
        third, first, second = (self.number("i") for _ in range(3))
        self.found["m_dimension"] = f"{first} {second} {third}"
        self.keep("m_currentDipole", "i")
        self.slots(int(self.keep("m_totalDipoles", "i")), flagged=False)
        self.sphere("m_sphereLocational")
        self.sphere("m_sphereCtf")
        self.fresh_sphere()


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
        getattr(reading, name)()
        self.assertEqual(reading.at, len(reading.data), "bytes are left")
        held = listed(path.with_suffix(".txt").read_text(encoding="ascii"))
        self.assertGreaterEqual(len(reading.found), least)
        for member, value in reading.found.items():
            self.assertEqual(value, held.get(member), member)

    def test_a_set_of_the_current_form_holds_every_member(self):
        self.compare("set_20050629", 5 * 21 + 1 + 19)

    def test_a_set_of_the_older_form_holds_every_member(self):
        self.compare("set_20011118", 6 * 21 + 39)

    def test_a_dipole_alone_holds_every_member(self):
        self.compare("record_20061206", 25)

    def test_an_embedded_dipole_holds_every_member(self):
        self.compare("record_20011118", 21)


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

    def test_the_documented_dump_is_the_file(self):
        text = DOCUMENT.read_text(encoding="utf-8")
        name = re.search(r"`tests/file/archives/(\w+\.bin)`", text).group(1)
        data = (HERE / "archives" / name).read_bytes()
        rows = re.findall(r"^([0-9a-f]{4})  ((?:[0-9a-f]{2} )*[0-9a-f]{2})(?:  |$)", text, re.M)
        at = 0
        for offset, digits in rows:
            part = bytes.fromhex(digits)
            self.assertEqual(int(offset, 16), at)
            self.assertEqual(part, data[at : at + len(part)], offset)
            at += len(part)
        self.assertEqual(at, len(data))


if __name__ == "__main__":
    unittest.main(verbosity=2)
