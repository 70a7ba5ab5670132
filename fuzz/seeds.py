#!/usr/bin/env python3
"""Makes the seeds of the fuzzers: seeds.py OUTDIR writes OUTDIR/ctf, msi, row, line, archive, nifti, ctfmri,
mgh, fif, atlas, audit, table, neuromag.

The CTF seeds are the example files, pieces and cuts of them, and small files for what the examples lack;
the 4D/MSI seeds are small files made here;
the audit seeds are those of both formats and files that deviate from what the imports take for granted;
the archive seeds are the files of the tests; the seeds of heads are made field by field, here and
by the writer of the tests, the tables and Neuromag's files too. Standard library only; the same seeds every
time."""

import gzip
import json
import struct
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
EXAMPLES = ROOT / "examples"
ARCHIVES = ROOT / "tests" / "file" / "archives"
sys.path.insert(0, str(ROOT / "tests" / "support"))
import ctf_mri  # noqa: E402

SECTIONS = {
    "file_info": "File_Info\n{\n\tVERSION:\t5.0\n\tPATIENT:\tsomebody\n}\n",
    "model": "Model\n{\n\tMODEL_TYPE:\tMEG_ONLY\n\tMRI_FILE:\thead.mri\n}\n",
    "sphere": "MEG_Sphere\n{\n\tORIGIN_X:\t0.1\n\tORIGIN_Y:\t0.2\n\tORIGIN_Z:\t5.0\n\tRADIUS:\t8.0\n}\n",
    "far_sphere": "MEG_Sphere\n{\nORIGIN_X: 1.0\nORIGIN_Y: 0\nORIGIN_Z: 5\nRADIUS: 9\n}\n",
    "short_sphere": "MEG_Sphere\n{\nRADIUS: 8\n}\n",
    "fiducials": "Fid_Points\n{\nNASION: 128 26 156\nLEFT_EAR: 28 150 165\nRIGHT_EAR: 228 150 165\n}\n",
    "dipoles": "Dipoles\n{\n// xp (cm) Mom(nAm)\n1: -2.9 3 1 1 0 0 3 spike\n2: 1 2 3 0 1 0 4\n}\n",
    "far_dipole": "Dipoles\n{\n//(cm)\n1: 250 3 1 1 0 0 3 far\n}\n",
    "millimetres": "DIPOLES\n{\n1 : 10 20 30 1 0 0 3 a\n}\n",
    "flags": "Dipole_Flags\n{\n1: 3 0 1 1 1\n2: 6 4 1 1 1\n}\n",
    "many_flags": "Dipole_Flags\n{\n" + "1: 2 1 0 0 0\n" * 9 + "}\n",
    "fit_info": "Dipole_FitInfo\n{\n1: 1 1 0.1 1 7.5 0 0 0 x.ds\n2: 1 1 0.2 1 8 0 0 0\n}\n",
    "moving": "Fit_Results\n{\n// (s) (cm) (nAm)\n1: 1 60 0.1 1 2 3 0 1 0 20 5.5 m\n2: 1 61 0.2 1 2 3 0 1 0 21 6\n}\n",
    "moving_bare": "Fit_Results\n{\n}\n",
    "other_program": "# dipole fit\n# begin end X Y Z\n0.1 0.1 1 2 3\n",
}

ORDERS = {
    "all": ["file_info", "model", "sphere", "fiducials", "dipoles", "flags", "fit_info"],
    "replaced": ["sphere", "dipoles", "moving", "moving"],
    "emptied": ["dipoles", "moving_bare", "dipoles"],
    "flags_first": ["flags", "dipoles", "many_flags", "moving"],
    "spheres": ["sphere", "far_sphere", "short_sphere"],
    "full": ["dipoles", "dipoles", "dipoles", "dipoles", "flags", "moving"],
    "unclosed": ["dipoles"],
}

MSI_HEADER = "Code: 1\n1\tCircle\n2\tSquare\nTriangle 3\nDot\nShape 1\n \n\n"
MSI_INFO = "Disk Media: disk\nMRI/CT Patient: some body\nDipole File: fit.dip\nDate of File: 01/02/03\n"
MSI_HEADING = "Latency\tx\ty\tz\tQx\tQy\tQz\n(msec)\t(cm)\n"
MSI_ROW = "12.5 1.1 2.2 -3.3 0.5 0.25 -1 20.5 1.5 9 0.85 2.5 7 a b c 8"
MSI_FAR = "12.5\t301 2.2 -3.3\t0.5 0.25 -1\t20.5 1.5 9 0.85 2.5 7 a b c 8 far"

MSI_FILES = {
    "table": MSI_HEADER + MSI_INFO + MSI_HEADING + f"{MSI_ROW} spike\n{MSI_ROW}\n \n\n  \n{MSI_ROW} end\n",
    "no_table": MSI_HEADER + MSI_INFO,
    "no_header": MSI_HEADING + f"{MSI_ROW} spike\n",
    "far": MSI_HEADING + f"{MSI_FAR}\n" * 5 + f"{MSI_ROW} near\n",
    "short": MSI_HEADING + MSI_ROW[:-2] + "\n" + MSI_ROW + "\nDot " + MSI_ROW + "\n",
    "full": MSI_HEADING + f"{MSI_ROW} a\n" * 8,
    "info_ends": "Disk Media:\nDipole File: x\nnothing\nDisk Media:\nMRI/CT Patient:\nLatency\n",
    "info_both": "Disk Media:\n MRI/CT Patient: Dipole File: x\nDate of File: Latency\n" + MSI_HEADING,
    "repeated": MSI_HEADING + MSI_ROW + " a\n" + MSI_HEADER + MSI_INFO + MSI_HEADING + MSI_ROW + " b\n",
    "odd_numbers": MSI_HEADING + "nan -inf 1e39 0x1.8p-150 -0 .5 5. 1e-50 0x 1e+ 2 3 4 a b c 5 odd\n"
                   + "-1-2-3-4-5-6-7-8-9-1-2-3-4a b c-5d\n" + "inf nan 301 0 0 0 0 0 0 0 0 0 0 a b c 0 far\n",
    "returns": (MSI_INFO + MSI_HEADING + f"{MSI_ROW} a\n").replace("\n", "\r"),
    "both_ends": (MSI_INFO + MSI_HEADING + f"{MSI_ROW} a\n").replace("\n", "\r\n"),
    "labels": MSI_HEADING + f"{MSI_ROW} \x80\xe4\xff\n{MSI_ROW}\xa0x\n",
    "long_line": MSI_HEADING + MSI_ROW + " " + "x" * 2100 + "\n",
    "zeros": MSI_HEADING + MSI_ROW + " a\0b\n" + MSI_ROW + "\0 b\n\0" + MSI_ROW + "\n",
}

# What an audit finds in files: the mode of the fuzzer, then the text.
USUAL_MSI = "Latency  x  y  z  Qx  Qy  Qz  Q  Rad  Corr  GOF  Vol  Grp  A  B  C  D  Label\n"
OTHER_MSI = "Latency  x  y  z  Qx  Qy  Qz  Rad  |Q|  RMS  Vol  Corr  Iter  GOF  A  B  C  Label\n"
AUDITED = {
    "no_unit": (0x0F, "Dipoles\n{\n1: 1 5 6 0 0 1 9 a\n2: 1 -5 6 0 0 1 9\n}\n"),
    "said_unit": (0xCF, "// xp (cm) yp (cm) zp (cm)\nDipoles\n{\n1: 1 5 6 0 0 1 9 a b\n}\n"),
    "columns": (0x0F, "Fit_Results\n{\n// Trial Sample Latency (s) Err(%) xp (cm) yp (cm) zp (cm) xo yo zo Mom(nAm) "
                      "Label\n1: 1 2 0.1 9 1 2 3 0 0 1 20 a\n}\n"),
    "ellipsoid": (0x0F, "Fit_Results\n{\n// (s) (cm)\n1: 1 2 .1" + " 1.5" * 24 + " a\n}\n"),
    "order": (0x0F, "Dipoles\n{\n// (cm)\n1: 1 5 6 0 0 1 9 a\n2: 1 5 6 0 0 1 9 b\n}\nDipole_FitInfo\n{\n"
                    "2: 2 1 .2 1 2.5 5.5 0 0 0 1 a\n1: 1 1 .1 1 1.5 5 0 0 0 1 a\n}\nDipole_Flags\n{\n"
                    "2: 1 1 1 1 1\n1: 2 3.0 1 1 1\n}\n"),
    "fiducials": (0x0F, SECTIONS["sphere"] + "MRI_Fid_Points\n{\nNASION: 1.5 2 3\nLEFT_EAR: 4 5 6\n"
                        "RIGHT_EAR: 7 8 9\n}\n"),
    "mark": (0x0F, "\ufeffDipoles\n{\n// (cm) (nAm)\n1: 1 5 6 0 0 1 9 \u00e4\n}\n" + SECTIONS["many_flags"]),
    "msi_columns": (0x1F, OTHER_MSI + "20.0 1.5 5 6 9 2 -1 4.5 22 .3 .5 .97 7 .75 b c 1 N20m\n" * 2),
    "msi_points": (0x5F, USUAL_MSI + "20 1.5 5 6 9 2 -1 22 4.5 .97 75 .4 1.0 a b c 1 x\n" * 2
                         + "20 1.5 5 6 9 2 -1 22 4.5 .97 75 .4 1 a b c 1 \u00e4\n"),
    "msi_hidden": (0x1F, OTHER_MSI.replace("  A ", "  Code ") + "(sec) (mm)\n20 1.5 5 6 9 2 -1 4 22 .3 .5 .9 7 .7 b c 1 N\n"),
}

ROWS = [
    (0, "\t1:\t-2.90\t3.00\t1.00\t1.0000\t0.0000\t0.0000\t3.000000\tspike_1"),
    (0, "1 : 1e5 -inf NaN .5 5. 0x1.8p3 1e40"),
    (1, "1:\t1\t60\t0.1\t1\t2\t3\t0\t1\t0\t20\t5.5\tmoving"),
    (2, "1: 3 0 1 1 1"),
    (3, "1: 1 1 0.10000 1 0 0 0 0 subject.ds"),
    (4, "\tORIGIN_X:\t0.450"),
    (5, "\t128\t26\t156"),
    (4, "x 0x1.000001p-150"),
    (4, "x 0x11.00001p-150"),
    (4, "x 1e+"),
    (4, "x infinit"),
    (5, "2147483648 -9223372036854775809 99999999999999999999"),
]


LABEL_NAMES = [b"1 Precentral_L 2001\r\n2 Precentral_R 2002\r\n\r\n", b"0\tUnclassified\r\n3\tGenu of corpus callosum\r\n",
               b"# No. Label R G B A\n\n 12   Left-Putamen   236 13 176 0\n", b"4 Area 4\n6 Area 6",
               b"\xef\xbb\xbf65535 \xc3\xa4\n65536 a\n", b"1 a\n1 b\n-1 c\n7\n"]


def nifti1(order, code, dims, voxels, slope=1.0):
    header = bytearray(352)
    struct.pack_into(order + "i", header, 0, 348)
    struct.pack_into(order + "8h", header, 40, len(dims), *(dims + [1] * (7 - len(dims))))
    struct.pack_into(order + "hh", header, 70, code, 8 * len(voxels) // 24)
    struct.pack_into(order + "8f", header, 76, 1, 1, 1.5, 2, 1, 1, 1, 1)
    struct.pack_into(order + "3f", header, 108, 352, slope, 0)
    header[123] = 2
    struct.pack_into(order + "hh", header, 252, 0, 1)
    struct.pack_into(order + "12f", header, 280, 1, 0, 0, -1, 0, 1.5, 0, -2, 0, 0, 2, -3)
    header[344:348] = b"n+1\0"
    return bytes(header) + voxels


def nifti2(order, voxels):
    header = bytearray(544)
    struct.pack_into(order + "i", header, 0, 540)
    header[4:12] = b"n+2\0\r\n\x1a\n"
    struct.pack_into(order + "hh", header, 12, 16, 32)
    struct.pack_into(order + "8q", header, 16, 3, 2, 3, 4, 1, 1, 1, 1)
    struct.pack_into(order + "8d", header, 104, -1, 1, 1, 1, 1, 1, 1, 1)
    struct.pack_into(order + "qdd", header, 168, 544, 2.0, -1.0)
    struct.pack_into(order + "ii", header, 344, 1, 0)
    struct.pack_into(order + "6d", header, 352, 0.1, 0.2, 0.3, -10, -20, -30)
    struct.pack_into(order + "i", header, 500, 2)
    return bytes(header) + voxels


def mgh(kind, size, good=1, axes=(-1, 0, 0, 0, 0, -1, 0, 1, 0)):
    header = struct.pack(">7ih15f", 1, 2, 3, 4, 1, kind, 0, good, 1, 1.5, 2, *axes, 9, -1, 2.5)
    return header.ljust(284, b"\0") + bytes(range(24)) * size


def ctf_mris():
    """(mode, bytes) of CTF MRI files: with points and without, both storages, both versions."""
    head = ctf_mri.Head(16, (10.0, 10.0, 10.0), (9, 2, 8), (2, 9, 9), (15, 9, 9))
    head.bytes = 1
    head.matrix = ctf_mri.head_matrix(head)
    bare = ctf_mri.Head(3, (0.9, 1.0, 1.1))
    mirrored = bare.mirrored()
    old = ctf_mri.Head(2)
    old.version = "2.1"
    for mode, made in ((0, head), (0, bare), (0, head.mirrored()), (0, mirrored), (4, old)):
        yield mode, ctf_mri.version2(made)
    for made in (head, bare):
        made.version = "4.1"
        yield 2, ctf_mri.version4(made)
        yield 2, ctf_mri.join4(ctf_mri.tags4(made)[::-1])


def fif_tag(kind, form, value, following=0):
    return struct.pack(">4i", kind, form, len(value), following) + value


def fif_number(kind, value):
    return fif_tag(kind, 3, struct.pack(">i", value))


def fif_files():
    """(mode, bytes) of MNE's files: points in each frame, transforms in both directions and of other frames."""
    start, end = fif_tag(100, 31, bytes(20)), fif_tag(108, 0, b"", -1)
    points = b"".join(fif_tag(213, 33, struct.pack(">2i3f", kind, identity, *place)) for kind, identity, place in
                      ((1, 1, (-0.07, 0, 0)), (1, 2, (0, 0.1, 0)), (1, 3, (0.07, 0, 0)), (4, 1, (0.01, 0.02, 0.1))))
    for frame in (4, 5, 2002, 2001):
        yield 0, start + fif_number(104, 107) + fif_number(3506, frame) + points + fif_number(105, 107) + end
    turn = (0.0, -1, 0, 1, 0, 0, 0, 0, 1)
    for source, target in ((4, 5), (5, 4), (1, 4)):
        value = struct.pack(">2i24f", source, target, *turn, 0.01, 0.02, 0.03, *turn, 0, 0, 0)
        yield 1, start + fif_tag(222, 35, value) + end
    yield 1, start + fif_tag(222, 35, struct.pack(">2i24f", 4, 5, -1, *turn[1:], *[0] * 15), 144) + end


def cuts(data):
    """The whole and some of its beginnings."""
    yield "whole", data
    for eighths in (1, 3, 5, 7):
        yield f"cut{eighths}", data[: len(data) * eighths // 8]
    yield "open", data[:-1]


def ctf_files():
    for path in sorted(EXAMPLES.glob("*.dip")):
        lines = path.read_bytes().splitlines(keepends=True)
        # The first rows of each section say as much as hundreds of them.
        short, rows = [], 0
        for line in lines:
            rows = rows + 1 if line.strip()[:1].isdigit() else 0
            if rows <= 4:
                short.append(line)
        yield path.stem, b"".join(short)
    for name, text in SECTIONS.items():
        yield name, text.encode()
    for name, order in ORDERS.items():
        yield name, "".join(SECTIONS[part] for part in order).encode()
    everything = "".join(SECTIONS[part] for part in ORDERS["all"])
    yield "carriage_returns", everything.replace("\n", "\r").encode()
    yield "both_ends", everything.replace("\n", "\r\n").encode()
    yield "labels", "Dipoles\n{\n(cm)\n1: 1 2 3 1 0 0 3 \x80\xe4\xff\n}\n".encode("latin-1")
    yield "long_line", b"Dipoles\n{\n(cm)\n1: 1 2 3 1 0 0 3 " + b"x" * 2100 + b"\n}\n"


def text(units, value, wide=True):
    """A text as an archive holds it, with its length in as few bytes as it takes."""
    length = bytes([units]) if units < 0xFF else b"\xff" + struct.pack("<H", units) if units < 0xFFFE else \
        b"\xff\xff\xff" + struct.pack("<I", units)
    return (b"\xff\xfe\xff" if wide else b"") + length + value


def records():
    """The records inside others, by the number of their entry point."""
    label = text(4, "spot".encode("utf-16-le"))
    sphere = struct.pack("<4d2i", 1.5, -2, float("nan"), 80, 7, -8) + label
    point = struct.pack("<16d2q4d3iqi", *range(16), 1 << 40, -5, 4, 3, 2, 1, 1, 2, 3, -1 << 50, 9) + label
    yield "sphere", 4, sphere
    yield "fiducials", 5, point * 6 + struct.pack("<4i3q", 1, 2, 3, 4, 5, 6, -7)
    yield "fiducial", 6, point
    yield "text_wide", 7, label
    yield "text_empty", 7, text(0, b"")
    yield "text_narrow", 7, text(5, b"caf\xe9!", wide=False)
    yield "text_zero", 7, text(3, b"a\0b", wide=False)
    yield "text_longer", 7, text(300, b"ab" * 300)
    yield "text_longer_narrow", 7, text(300, b"x" * 300, wide=False)
    yield "text_longest_form", 7, b"\xff\xfe\xff\xff\xff\xff\2\0\0\0a\0b\0"
    yield "text_lying", 7, b"\xff\xfe\xff\xff\xff\xff\xff\xff\xff\x7fa\0b\0"
    yield "text_two_marks", 7, b"\xff\xfe\xff\xff\xfe\xff\1a\0"
    yield "text_half_pair", 7, text(1, b"\0\xd8")


def archives():
    """Each archive with the number of the entry point that reads it."""
    for path in sorted(ARCHIVES.glob("*.bin")):
        data = path.read_bytes()
        has_magic = b"DIPOLE" in data.replace(b"\0", b"").upper()[:20]
        entry = (2 if path.stem.startswith("set") else 0) + (0 if has_magic else 1)
        yield path.stem, entry, data
    yield from records()


def msi_files():
    for number, (name, text) in enumerate(MSI_FILES.items()):
        for cut, part in cuts(text.encode("latin-1")):
            yield f"{name}_{cut}", (0x0F, 0x00, 0x15, 0x2A, 0x1F)[number % 5], part


TITLES = ("number id fit_tag label x_left_mm y_up_mm z_front_mm orientation_x_left orientation_y_up "
          "orientation_z_front moment_nAm latency_ms fit_error_percent color color_3d_red color_3d_green "
          "color_3d_blue shown_in_3d orientation_shown_in_3d display shown_on_slices selected "
          "glyph_size_pixels").split()
TABLE_ROWS = [
    [7, -3, 2, "spike", 1.5, -0.0, 1e300, 0.1, 5e-324, 1, 20.5, 96.2, 4.7, "#ff0010", 0.5, 0, 1, True, False, 1, True,
     False, 3],
    [1, 0, 0, '=say "a,b"\n\t', "nan", "inf", "-inf", None, None, None, None, None, None, "#80ffff00", 1, 1, 0.0625,
     2, True, 2, False, True, 4.5]]


def neuromag_files():
    """(kind, bytes) of what Neuromag's reader takes: text, records, transforms to MNI."""
    system = '# CoordinateSystem "Head"\n'
    heading = "#   begin     end   X (mm)   Y (mm)   Z (mm)   Q(nAm)  Qx(nAm)  Qy(nAm)  Qz(nAm)    g/%\n"
    row = "    100.0   100.0    10.10   -52.30    58.50   25.000   15.000   20.000    0.000  93.46\n"
    name = '## Name "spike A dipoles" Style "Dipoles"'
    more = heading[:-1] + "    khi^2  free  vol/mm^3\n" + row[:-1] + "     12.5    61     3.200\n"
    for text in (system + heading + row + row + name, row + row, heading.replace(" (mm)", "/mm") + row, system + more,
                 "\ufeff" + system + "\n" + heading + "  # comment\n" + row + "\n% x\n" + row.replace("93.46", "nan"),
                 (system + heading + row + name).replace("\n", "\r\n"), "% BEGIN Qx/nAm\n",
                 "# g/% Qz(nAm) Qy(nAm) Qx(nAm) Z/mm Y/mm X/mm begin\n1 2 3 4 5 6 7 8\n",
                 '# CoordinateSystem "Device"\n' + row, system + heading + row.replace("25.000", "-9e99"),
                 "Dipoles\n{\n1: 1 2 3 1 0 0 5 a\n}\n"):
        yield 0, text.encode()
    record = struct.pack(">i2f3f3f3ff", 0, 0.1, 0.0, 0, 0, 0.04, 0.01, -0.05, 0.06, 15e-9, 20e-9, 0, 0.93) + bytes(144)
    errors = struct.pack(">i2f3f3f3ff", 1, 0.1, 0.2, 0, 0, 0.04, 0, 0, 0, 0, 0, 0, 1.0) + struct.pack(">i", 1) + bytes(140)
    for records in (record, record + errors + record, errors[:-1], bytes(196)):
        yield 1, records
    for text in ("MNI Transform File\n% c\n\nTransform_Type = Linear;\nLinear_Transform =\n"
                 "1.1 0 0 5\n0 1.2 0.1 -6\n0 0 1.3 7;\n", "1 0 0 5\n0 1 0 6\n0 0 1 7\n0 0 0 1\n",
                 "#Insight Transform File V1.0\n#Transform 0\nTransform: AffineTransform_double_3_3\n"
                 "Parameters: 1 0 0 0 1 0 0 0 1 1 2 3\nFixedParameters: 0 0 0\n"):
        yield 2, text.encode()


def table_files():
    """(format, text) of tables, whole ones and such that lack something."""
    def cell(value, separator):
        if isinstance(value, bool):
            return "yes" if value else "no"
        text = "" if value is None else str(value)
        text = "'" + text if isinstance(value, str) and text[:1] in "=+-@'" and text not in ("-inf",) else text
        return '"%s"' % text.replace('"', '""') if set(text) & set('"\n\r' + separator) else text

    for kind, separator in ((0, ","), (1, "\t")):
        for columns in (range(23), range(4, 7), (13, 6, 5, 4, 11)):
            lines = [separator.join(TITLES[i] for i in columns)]
            lines += [separator.join(cell(row[i], separator) for i in columns) for row in TABLE_ROWS]
            yield kind, "\n".join(lines) + "\n"
            yield kind, "\ufeff" + "\r\n".join(lines)
    for columns in (range(23), range(4, 7)):
        dipoles = [{TITLES[i]: row[i] for i in columns} for row in TABLE_ROWS]
        yield 2, json.dumps({"files": ["a"], "patient": "p", "moment_unit": "nAm" if len(columns) > 9 else None,
                             "frame": "head: x left, y up, z front", "dipoles": dipoles}, indent=1)
        yield 2, json.dumps({"other": [{"a": [1]}], "dipoles": dipoles})


def write(folder, name, data):
    folder.mkdir(parents=True, exist_ok=True)
    (folder / name).write_bytes(data)


def main():
    out = Path(sys.argv[1])
    for number, (name, data) in enumerate(ctf_files()):
        for cut, part in cuts(data):
            mode = (0x0F, 0x00, 0x1F, 0x45, 0x8A)[number % 5]
            write(out / "ctf", f"{name}_{cut}", bytes([mode]) + part)
        write(out / "line", name, data)
    write(out / "ctf", "by_dialog", b"\xef" + SECTIONS["dipoles"].encode())
    for name, mode, data in msi_files():
        write(out / "msi", name, bytes([mode]) + data)
    for folder, bit in (("ctf", 0), ("msi", 0x10)):
        for path in sorted((out / folder).iterdir()):
            data = path.read_bytes()
            write(out / "audit", f"{folder}_{path.name}", bytes([data[0] & 0x0F | bit]) + data[1:])
    for name, (mode, words) in AUDITED.items():
        write(out / "audit", name, bytes([mode]) + words.encode())
        write(out / "audit", name + "_wide", bytes([mode]) + b"\xff\xfe" + words.encode("utf-16-le"))
    for number, (kind, row) in enumerate(ROWS):
        write(out / "row", f"row{number}", bytes([kind]) + row.encode())
        write(out / "row", f"wide{number}", bytes([0x80 | kind]) + row.encode("utf-16-le"))
    for number, (name, entry, data) in enumerate(archives()):
        buffer = number % 4 << 4
        write(out / "archive", name, bytes([entry | buffer]) + data)
        write(out / "archive", name + "_over", bytes([entry | 0x08 | buffer ^ 0x10]) + data)
        write(out / "archive", name + "_broken_off", bytes([entry | 0x40 | buffer]) + data)
        write(out / "archive", name + "_cut", bytes([entry | 0x08 | buffer]) + data[: len(data) * 5 // 8])
    write(out / "line", "ends", b"\r\n\r\na\rb\nc\n\rd\0e\nlast")
    write(out / "line", "pieces", b"y" * 4096 + b"\n" + b"z" * 2047 + b"\n\xff\n")
    for number, (kind, text) in enumerate(table_files()):
        for cut, part in cuts(text.encode()):
            write(out / "table", f"table{number}_{cut}", bytes([kind]) + part)
    for number, (kind, data) in enumerate(neuromag_files()):
        for cut, part in cuts(data):
            write(out / "neuromag", f"neuromag{number}_{cut}", bytes([kind]) + part)
    plain = {f"type{code}": nifti1("<", code, [2, 3, 4], bytes(range(24)) * size) for code, size in
             ((2, 1), (4, 2), (8, 4), (16, 4), (64, 8), (256, 1), (512, 2), (768, 4), (1024, 8), (1280, 8))}
    plain["big_endian"] = nifti1(">", 4, [2, 3, 4], bytes(48), 0.5)
    plain["series"] = nifti1("<", 2, [2, 3, 4, 2], bytes(48))
    plain["version2"] = nifti2("<", bytes(96))
    plain["version2_big_endian"] = nifti2(">", bytes(96))
    for name, data in plain.items():
        for cut, part in cuts(data):
            write(out / "nifti", f"{name}_{cut}", b"\0" + part)
        write(out / "nifti", f"{name}_to_pack", b"\1" + data)
        packed = gzip.compress(data, mtime=0)
        write(out / "nifti", f"{name}_packed", b"\0" + packed)
        write(out / "nifti", f"{name}_packed_cut", b"\0" + packed[: len(packed) // 2])
        for kind in (0, 2):
            write(out / "atlas", f"{name}_{kind}", bytes([kind, 128, 130, 125, 140]) + data)
            write(out / "atlas", f"{name}_packed_{kind}", bytes([kind, 120, 128, 128, 255]) + packed)
    for number, text in enumerate(LABEL_NAMES):
        for cut, part in cuts(text):
            write(out / "atlas", f"names{number}_{cut}", b"\1\0\0\0\0" + part)
    for name, data in ((f"type{kind}", mgh(kind, size)) for kind, size in ((0, 1), (1, 4), (3, 4), (4, 2), (10, 2))):
        for cut, part in cuts(data):
            write(out / "mgh", f"{name}_{cut}", b"\0" + part)
        write(out / "mgh", f"{name}_to_pack", b"\1" + data)
        write(out / "mgh", f"{name}_packed", b"\0" + gzip.compress(data, mtime=0))
    write(out / "mgh", "no_directions", b"\0" + mgh(0, 1, good=0))
    write(out / "mgh", "skew", b"\0" + mgh(0, 1, axes=(1, 0, 0, 0.5, 0.5, 0, 0, 0, 1)))
    for number, (mode, data) in enumerate(fif_files()):
        for cut, part in cuts(data):
            write(out / "fif", f"fif{number}_{cut}", bytes([mode]) + part)
            write(out / "fif", f"begun{number}_{cut}", bytes([mode | 2]) + part)
    for number, (mode, data) in enumerate(ctf_mris()):
        for cut, part in cuts(data):
            write(out / "ctfmri", f"head{number}_{cut}", bytes([mode]) + part)
        write(out / "ctfmri", f"head{number}_to_pack", bytes([mode | 1]) + data)
        write(out / "ctfmri", f"head{number}_packed", bytes([mode]) + gzip.compress(data, mtime=0))


if __name__ == "__main__":
    main()
