#!/usr/bin/env python3
"""Writes one archive of every version that can be read: make_archives.py [OUTDIR].

An implementation of its own of the layouts of docs/file-formats.md: it knows nothing but the order and the
width of the fields. Beside each NAME.bin it writes NAME.txt, which lists what a reader must find, a member a
line: "m_fitError 4029000000000000". Numbers with a fraction stand there as the hexadecimal digits of their
bits; in texts, what is not plain ASCII stands as \\uXXXX, one UTF-16 unit each. A member that is not listed
must keep its value.

tests/file/archives holds the output; the tests read it. Without OUTDIR it is written there."""

import struct
import sys
from pathlib import Path

HERE = Path(__file__).resolve().parent


def units(text):
    data = text.encode("utf-16-le", "surrogatepass")
    return struct.unpack(f"<{len(data) // 2}H", data)


def shown_text(text):
    shown = (chr(u) if 32 <= u < 127 and u not in (34, 92) else f"\\u{u:04x}" for u in units(text))
    return '"' + "".join(shown) + '"'


class Archive:
    """Bytes of an archive, and what a reader must find in them. In an odd one, every number with a fraction
    is one that a careless reader would change."""

    def __init__(self, odd=False):
        self.odd = odd
        self.data = bytearray()
        self.found = {}
        self.prefix = ""
        self.counter = 1000

    def next(self):
        """A value that no other field has."""
        self.counter += 1
        return self.counter

    def single(self, value):
        """A float's bytes; in an odd archive those of a NaN, an infinity, a denormal or a negative zero."""
        if not self.odd:
            return struct.pack("<f", value)
        number = self.counter
        bits = (0x7FA00000 + number, 0xFF800000, number, 0x80000000, 0xFFC00000 + number)[number % 5]
        return struct.pack("<I", bits)

    def double(self, value):
        """A double's bytes, likewise."""
        if not self.odd:
            return struct.pack("<d", value)
        number = self.counter
        signalling, quiet = 0x7FF4000000000000 + number, 0xFFF8000000000000 + number
        bits = (signalling, 0xFFF0000000000000, number, 0x8000000000000000, quiet)[number % 5]
        return struct.pack("<Q", bits)

    def keep(self, name, shown):
        if name is not None:
            key = self.prefix + name
            self.found[key] = self.found[key] + " " + shown if key in self.found else shown

    def i32(self, name, value=None):
        value = self.next() if value is None else value
        self.data += struct.pack("<i", value)
        self.keep(name, str(value))

    def u32(self, name, value):
        self.data += struct.pack("<I", value)
        self.keep(name, str(value))

    def i64(self, name, value=None):
        value = self.next() if value is None else value
        self.data += struct.pack("<q", value)
        self.keep(name, str(value))

    def flag(self, name, byte):
        self.data += struct.pack("B", byte)
        self.keep(name, "1" if byte else "0")

    def f32(self, name):
        data = self.single(self.next() + 0.5)
        self.data += data
        self.keep(name, data[::-1].hex())

    def f64(self, name):
        data = self.double(self.next() + 0.125)
        self.data += data
        self.keep(name, data[::-1].hex())

    def text(self, name, value, narrow=False):
        length = len(value) if narrow else len(units(value))
        if not narrow:
            self.data += b"\xff\xfe\xff"
        if length < 0xFF:
            self.data += struct.pack("<B", length)
        elif length < 0xFFFE:
            self.data += struct.pack("<BH", 0xFF, length)
        else:
            self.data += struct.pack("<BHI", 0xFF, 0xFFFF, length)
        self.data += value.encode("cp1252") if narrow else value.encode("utf-16-le", "surrogatepass")
        self.keep(name, shown_text(value))

    # Records inside others. A point's members stand in one line, in the order of the record.

    def sphere(self, name):
        """A sphere that belongs to no member has no name."""
        centre, radius, ints, text = (name and f"{name}.{part}" for part in
                                      ("m_center", "m_radius", "m_auxInt", "m_auxText"))
        for _ in range(3):
            self.f64(centre)
        self.f64(radius)
        self.i32(ints)
        self.i32(ints)
        self.text(text, f"text of {name}")

    def fresh_sphere(self):
        self.data += bytes(40) + b"\xff\xfe\xff\0"

    def fiducials(self, name):
        for point in range(6):
            self.point(f"{name} point {point}")
        for _ in range(4):
            self.i32(name + " ints")
        for _ in range(3):
            self.i64(name + " tail")

    def point(self, name):
        for _ in range(16):
            self.f64(name)
        self.i64(name)
        self.i64(name)
        for _ in range(4):
            self.f64(name)
        for _ in range(3):
            self.i32(name)
        self.i64(name)
        self.i32(name)
        self.text(name, name[2:])

    # Dipole records.

    def fields_of_2001(self, label, narrow, ignored=1, show=None):
        self.i32("m_show", show)
        self.i32("m_showOrientation")
        self.f64("m_scale")
        self.f64("m_orientationScale")
        self.f64("m_orientationLength")
        self.f64("m_size")
        self.u32("m_color", 0xFE000000 + self.next())
        self.data += struct.pack("<i", ignored)
        blue, green, red = (self.single(self.next() / 4) for _ in range(3))
        self.data += blue + green + red
        self.keep("m_colorF", " ".join(part[::-1].hex() for part in (red, green, blue)))
        for _ in range(3):
            self.f64("m_orientation")
        for _ in range(3):
            self.f64("m_location")
        self.i32("m_dimZ")
        self.i32("m_dimY")
        self.i32("m_dimX")
        self.f64("m_fitError")
        self.f64("m_latency")
        self.f64("m_moment")
        self.i32("m_fitTag")
        self.i32("m_id")
        self.i32("m_display")
        self.text("m_label", label, narrow)

    def record_20010101(self, label="spike", narrow=False, show=None):
        self.fields_of_2001(label, narrow, 77, show)

    def record_20011118(self, label="spike", narrow=False, foreign=False):
        self.data += struct.pack("<i", 20011118)
        self.fields_of_2001(label, narrow, 77 if foreign else 1)
        self.i32("m_number")
        if foreign:
            self.sphere(None)
        else:
            self.fresh_sphere()

    def record_20050629(self, label="spike", narrow=False, selected=1):
        self.i32("m_number")
        self.i32("m_listItemId")
        self.i32("m_show")
        self.i32("m_showOrientation")
        self.f64("m_scale")
        self.u32("m_color", 0xFE000000 + self.next())
        self.i32("m_id")
        self.i32("m_fitTag")
        self.f64("m_latency")
        self.f64("m_moment")
        self.f64("m_fitError")
        self.text("m_label", label, narrow)
        self.i32("m_display")
        self.flag("m_selected", selected)
        for _ in range(3):
            self.f64("m_location")
        self.f64("m_size")
        for _ in range(3):
            self.f64("m_orientation")
        self.f64("m_orientationScale")
        self.f64("m_orientationLength")
        self.i32("m_dimY")
        self.i32("m_dimX")
        self.i32("m_dimZ")
        self.f32("m_colorF")
        self.f32("m_colorF")
        self.f32("m_colorF")

    def record_20061206(self, **how):
        self.record_20050629(**how)
        self.f64("m_extraValue")
        self.i32("m_extraFlag")

    # Sets.

    def slot(self, number, record, **how):
        self.prefix = f"slot {number} "
        record(**how)
        self.prefix = ""

    def triple(self, name):
        for _ in range(3):
            self.f64(name)

    def dimension_of_2001(self):
        z, x, y = self.next(), self.next(), self.next()  # elements 2, 0, 1
        self.data += struct.pack("<3i", z, x, y)
        self.keep("m_dimension", f"{x} {y} {z}")

    def view_of_2001(self):
        self.i32("m_bCtfSphereSet")
        self.i32("m_showDipoleOrientationAll")
        self.i32("m_showDipoleArray")
        self.f64("m_faceValue")
        self.triple("m_space")
        self.triple("m_allDipoleRange")

    def counts(self, current, total):
        self.i32("m_currentDipole", current)
        self.i32("m_totalDipoles", total)

    def set_20050629(self, current, slots, magic="DIPOLESFACEZQ", skip=1):
        """slots: a label for each slot, None for an empty one."""
        self.text(None, magic)
        self.data += struct.pack("<i", 20050629)
        self.counts(current, len(slots))
        for number, label in enumerate(slots):
            self.data += struct.pack("<i", 0 if label is None else 1)
            if label is None:
                self.found[f"slot {number}"] = "empty"
            else:
                self.slot(number, self.record_20011118, label=label)
        self.f64("m_faceValue")
        self.i32("m_showDipoleOrientationAll")
        self.triple("m_allDipoleRange")
        self.i32("m_bCtfSphereSet")
        self.text("m_fileVersion", "5.0")
        self.text("m_patient", "somebody")
        self.text("m_mriFile", "head.mri")
        self.i32("m_megOnly")
        self.i32("m_coordinateType")
        self.i32("m_momentInNAm")
        self.flag("m_skipFiducialSetup", skip)
        self.i32("m_showCurrentDipoleOnly")
        self.f32("m_mergeRadius")
        self.i32("m_showFiducialPt")
        self.i32("m_showDipoleArray")
        for _ in range(3):
            self.i32("m_dimension")
        self.triple("m_space")

    def set_20011118(self, current, total, foreign=False):
        self.data += struct.pack("<i", 20011118)
        self.i32("m_showCurrentDipoleOnly")
        self.triple("m_sphereRotation.m_center")
        self.text("m_fileVersion", "4.0", foreign)
        self.text("m_mriFile", "older.mri", foreign)
        self.text("m_patient", "somebody else", foreign)
        self.i32("m_megOnly")
        self.i32("m_coordinateType")
        self.i32("m_showFiducialPt")
        self.fiducials("m_fiducialMri")
        self.fiducials("m_fiducialCtf")
        self.view_of_2001()
        self.dimension_of_2001()
        self.counts(current, total)
        for number in range(total):
            if foreign and number == 0:
                self.slot(0, self.record_20010101, label="dipole A", narrow=True)
            else:
                self.slot(number, self.record_20011118, label=f"old {number}", foreign=foreign)
        self.sphere("m_sphereLocational")
        self.sphere("m_sphereCtf")
        if foreign:
            self.sphere(None)
        else:
            self.fresh_sphere()

    def set_20010901(self, current, total):
        self.data += struct.pack("<i", 20010901)
        self.view_of_2001()
        self.dimension_of_2001()
        self.counts(current, total)
        for number in range(total):
            self.slot(number, self.record_20010101 if number == 0 else self.record_20011118)
        self.sphere("m_sphereLocational")
        self.sphere("m_sphereCtf")
        self.sphere(None)

    def set_20010101(self, version, current, total):
        self.data += struct.pack("<i", version)
        self.view_of_2001()
        self.f64("m_sphereCtf.m_radius")
        self.triple("m_sphereCtf.m_center")
        self.dimension_of_2001()
        self.counts(current, total)
        for number in range(total):
            self.slot(number, self.record_20010101, show=number)

    def write(self, folder, name):
        (folder / f"{name}.bin").write_bytes(self.data)
        lines = [f"{key} {value}\n" for key, value in self.found.items()]
        (folder / f"{name}.txt").write_text("".join(lines), encoding="ascii", newline="\n")


def stand_alone(version, record, magic="DIPOLEZQ", odd=False, **how):
    archive = Archive(odd)
    archive.text(None, magic)
    archive.data += struct.pack("<i", version)
    getattr(archive, record)(**how)
    return archive


def made(build, *arguments, odd=False, **how):
    archive = Archive(odd)
    getattr(archive, build)(*arguments, **how)
    return archive


def main():
    folder = Path(sys.argv[1]) if len(sys.argv) > 1 else HERE / "archives"
    folder.mkdir(parents=True, exist_ok=True)
    archives = {
        "record_20010101": made("record_20010101", label="dipole A", narrow=True, show=0),
        "record_20010101_code_page": made("record_20010101", label="Sch\u00e4del \u20ac", narrow=True),
        "record_20011118": made("record_20011118", label="Spike 1"),
        "record_20011118_foreign": made("record_20011118", foreign=True, label="\u00e4\u20ac\U0001f9e0"),
        "record_20050629": stand_alone(20050629, "record_20050629", selected=0x80),
        "record_20061206": stand_alone(20061206, "record_20061206", label="\u00e4\u20ac\U0001f9e0"),
        "record_20061206_narrow": stand_alone(20061206, "record_20061206", magic="dipolezq", selected=0,
                                              label="dipole A", narrow=True),
        "set_20050629": made("set_20050629", 2, ["left", None, "x" * 254, "y" * 255 + "\U0001f9e0", ""]),
        "set_20050629_small": made("set_20050629", 0, ["Spike"]),
        "set_20050629_empty": made("set_20050629", -1, [], magic="dipolesfacezq"),
        "set_20011118": made("set_20011118", 1, 3),
        "set_20011118_foreign": made("set_20011118", 2, 3, foreign=True),
        "set_20010901": made("set_20010901", 0, 2),
        "set_20010101_version_0": made("set_20010101", 0, 1, 2),
        "set_20010101_version_1": made("set_20010101", 1, -1, 1),
    }
    archives |= {
        "record_20010101_odd": made("record_20010101", odd=True),
        "record_20011118_odd": made("record_20011118", odd=True),
        "record_20050629_odd": stand_alone(20050629, "record_20050629", odd=True),
        "record_20061206_odd": stand_alone(20061206, "record_20061206", odd=True),
        "set_20050629_odd": made("set_20050629", 1, ["a", None, "b"], skip=0, odd=True),
        "set_20011118_odd": made("set_20011118", 0, 2, odd=True),
        "set_20010901_odd": made("set_20010901", 1, 2, odd=True),
        "set_20010101_odd": made("set_20010101", 1, 0, 2, odd=True),
    }
    for name, archive in archives.items():
        archive.write(folder, name)


if __name__ == "__main__":
    main()
