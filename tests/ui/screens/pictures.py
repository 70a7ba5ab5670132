#!/usr/bin/env python3
"""pictures.py FOLDER NAME...: turns the BMP files of a folder into PNG files, and checks them.

Fails when a named picture is missing, when there is one more than was named, or when one shows a single colour.
A name may be given as NAME=OTHER: then the two must not differ in a single pixel.
"""
import pathlib
import struct
import sys
import zlib


def read_bmp(path):
    """Width, height and the rows, from the top, of red, green, blue bytes."""
    data = path.read_bytes()
    offset = struct.unpack_from("<I", data, 10)[0]
    width, height, _, bits = struct.unpack_from("<iiHH", data, 18)
    if bits != 24 or height <= 0:
        raise ValueError(f"{path}: not a picture of 24 bits from the bottom to the top")
    stride = (width * 3 + 3) // 4 * 4
    rows = []
    for y in range(height - 1, -1, -1):
        stored = data[offset + y * stride:][:width * 3]
        row = bytearray(width * 3)
        row[0::3], row[1::3], row[2::3] = stored[2::3], stored[1::3], stored[0::3]
        rows.append(bytes(row))
    return width, height, rows


def png(width, height, rows):
    def chunk(kind, content):
        return struct.pack(">I", len(content)) + kind + content + struct.pack(">I", zlib.crc32(kind + content))

    header = struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0)
    pixels = zlib.compress(b"".join(b"\0" + row for row in rows))
    return b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", pixels) + chunk(b"IEND", b"")


def is_blank(rows):
    first = rows[0][:3]
    return all(row == first * (len(row) // 3) for row in rows)


def main():
    folder = pathlib.Path(sys.argv[1])
    pairs = [name.partition("=") for name in sys.argv[2:]]
    names = [name for name, _, _ in pairs]
    shown = {}
    faults = []
    for path in sorted(folder.glob("*.bmp")):
        width, height, rows = shown[path.stem] = read_bmp(path)
        if is_blank(rows):
            faults.append(f"{path.stem} shows a single colour")
        path.with_suffix(".png").write_bytes(png(width, height, rows))
        path.unlink()
    found = {path.stem for path in folder.glob("*.png")}
    faults += [f"{name} is missing" for name in names if name not in found]
    faults += [f"{name} differs from {other}" for name, _, other in pairs
               if other and shown.get(name) != shown.get(other)]
    faults += [f"{name} was not expected" for name in sorted(found.difference(names))]
    for fault in faults:
        print(f"{folder}: {fault}", file=sys.stderr)
    print(f"{folder}: {len(found)} pictures")
    return 1 if faults or not names else 0


if __name__ == "__main__":
    sys.exit(main())
