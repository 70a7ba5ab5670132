#!/usr/bin/env python3
"""Makes the seeds of the fuzzers: seeds.py OUTDIR writes OUTDIR/ctf, row, line, archive, nifti.

The CTF seeds are the example files, pieces and cuts of them, and small files for what the examples lack;
the archive seeds are the files of the tests; the NIfTI seeds are made here field by field. Standard library
only; the same seeds every time."""

import gzip
import struct
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
EXAMPLES = ROOT / "examples"
ARCHIVES = ROOT / "tests" / "file" / "archives"

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

ROWS = [
    (0, "\t1:\t-2.90\t3.00\t1.00\t1.0000\t0.0000\t0.0000\t3.000000\tspike_1"),
    (0, "1 : 1e5 -inf NaN .5 5. 0x1.8p3 1e40"),
    (1, "1:\t1\t60\t0.1\t1\t2\t3\t0\t1\t0\t20\t5.5\tmoving"),
    (2, "1: 3 0 1 1 1"),
    (3, "1: 1 1 0.10000 1 0 0 0 0 subject.ds"),
    (4, "\tORIGIN_X:\t0.450"),
    (5, "\t128\t26\t156"),
    (4, "x 0x1.000001p-150"),
    (4, "x 1e+"),
    (4, "x infinit"),
    (5, "2147483648 -9223372036854775809 99999999999999999999"),
]


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


def archives():
    """Each archive with the entry point that reads it, into an empty collection and into a filled one."""
    for path in sorted(ARCHIVES.glob("*.bin")):
        is_set, is_current = path.stem.startswith("set"), b"D\0I\0P\0" in path.read_bytes().upper()
        entry = (2 if is_set else 0) + (0 if is_current else 1)
        yield path.stem, bytes([entry]), path.read_bytes()
        yield path.stem + "_over", bytes([entry + 4]), path.read_bytes()


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
    for number, (kind, row) in enumerate(ROWS):
        write(out / "row", f"row{number}", bytes([kind]) + row.encode())
        write(out / "row", f"wide{number}", bytes([0x80 | kind]) + row.encode("utf-16-le"))
    for name, mode, data in archives():
        write(out / "archive", name, mode + data)
        write(out / "archive", name + "_cut", mode + data[: len(data) * 5 // 8])
    write(out / "line", "ends", b"\r\n\r\na\rb\nc\n\rd\0e\nlast")
    write(out / "line", "pieces", b"y" * 4096 + b"\n" + b"z" * 2047 + b"\n\xff\n")
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


if __name__ == "__main__":
    main()
