#!/usr/bin/env python3
"""Draws the two icons of the dipole list, dipole_shown.ico and dipole_hidden.ico, beside this script.

A dipole is a disc with an arrow, drawn in units of the icon's side and y downwards. Every shape has a dark or
grey rim and a light inside, so that it stands out on white as well as on the blue of a selected row. A hidden
dipole is white and struck through: form, not colour alone, tells it from a shown one. Yellow is what a dipole
has at first, and it does not turn grey where a list blends the icon of a selected row with the row's blue.
"""
import math
import struct
from pathlib import Path

SIZES = (16, 24, 32, 48)
SAMPLES = 8  # per pixel and axis

CENTRE, RADIUS = (0.34, 0.66), 0.27
TIP, HEAD_BASE, HEAD_HALF_WIDTH = (0.95, 0.05), (0.66, 0.34), 0.24
SHAFT_HALF_WIDTH = 0.08
STROKE, STROKE_HALF_WIDTH = ((0.12, 0.12), (0.88, 0.88)), 0.05

YELLOW, BROWN = (255, 205, 0), (110, 55, 0)
WHITE, GREY, DARK_RED = (255, 255, 255), (110, 110, 110), (170, 0, 0)


def distance_to_segment(point, start, end):
    """How far the point is from the segment."""
    along = (end[0] - start[0], end[1] - start[1])
    to_point = (point[0] - start[0], point[1] - start[1])
    share = (to_point[0] * along[0] + to_point[1] * along[1]) / (along[0] ** 2 + along[1] ** 2)
    share = min(max(share, 0.0), 1.0)
    return math.hypot(to_point[0] - share * along[0], to_point[1] - share * along[1])


def distance_to_head(point):
    """How far the point is from the arrow's head, a triangle; negative inside."""
    length = math.dist(TIP, HEAD_BASE)
    along = ((TIP[0] - HEAD_BASE[0]) / length, (TIP[1] - HEAD_BASE[1]) / length)
    across = (-along[1], along[0])
    left = tuple(HEAD_BASE[i] + HEAD_HALF_WIDTH * across[i] for i in (0, 1))
    right = tuple(HEAD_BASE[i] - HEAD_HALF_WIDTH * across[i] for i in (0, 1))
    to_point = (point[0] - HEAD_BASE[0], point[1] - HEAD_BASE[1])
    depth = to_point[0] * along[0] + to_point[1] * along[1]
    side = abs(to_point[0] * across[0] + to_point[1] * across[1])
    inside = depth >= 0 and side <= HEAD_HALF_WIDTH * (1 - depth / length)
    border = min(distance_to_segment(point, *edge) for edge in ((left, right), (left, TIP), (right, TIP)))
    return -border if inside else border


def distance_to_dipole(point):
    """How far the point is from disc and arrow; negative inside."""
    return min(math.dist(point, CENTRE) - RADIUS,
               distance_to_segment(point, CENTRE, HEAD_BASE) - SHAFT_HALF_WIDTH,
               distance_to_head(point))


def shown(point, rim):
    """The colour of a shown dipole at a point, None beside it."""
    distance = distance_to_dipole(point)
    if distance > 0:
        return None
    return BROWN if distance > -rim else YELLOW


def hidden(point, rim):
    """The colour of a hidden dipole at a point, None beside it."""
    stroke = distance_to_segment(point, *STROKE) - STROKE_HALF_WIDTH
    if stroke <= 0:
        return DARK_RED
    if stroke <= rim:
        return WHITE
    distance = distance_to_dipole(point)
    if distance > 0:
        return None
    return GREY if distance > -rim else WHITE


def pixel(colour_at, column, row, size):
    """Blue, green, red and opacity of a pixel: the mean of its covered samples and their share."""
    rim = max(1.0 / size, 0.05)
    hits = []
    for sample in range(SAMPLES * SAMPLES):
        x = (column + (sample % SAMPLES + 0.5) / SAMPLES) / size
        y = (row + (sample // SAMPLES + 0.5) / SAMPLES) / size
        colour = colour_at((x, y), rim)
        if colour:
            hits.append(colour)
    if not hits:
        return 0, 0, 0, 0
    red, green, blue = (round(sum(hit[i] for hit in hits) / len(hits)) for i in range(3))
    return blue, green, red, round(255 * len(hits) / SAMPLES ** 2)


def image(colour_at, size):
    """One picture of an icon: a bitmap header, 32-bit pixels and the mask, both from the bottom row up."""
    rows = [[pixel(colour_at, column, row, size) for column in range(size)] for row in range(size)]
    header = struct.pack("<IiiHHIIiiII", 40, size, 2 * size, 1, 32, 0, 0, 0, 0, 0, 0)
    pixels = b"".join(bytes(value) for row in reversed(rows) for value in row)
    stride = (size + 31) // 32 * 4  # rows of the mask are padded to 32 bits
    mask = b""
    for row in reversed(rows):
        bits = sum(1 << (8 * stride - 1 - column) for column, value in enumerate(row) if value[3] < 128)
        mask += bits.to_bytes(stride, "big")
    return header + pixels + mask


def icon(colour_at):
    """The bytes of an icon file: its directory, then one picture for each size."""
    images = [image(colour_at, size) for size in SIZES]
    directory = struct.pack("<HHH", 0, 1, len(SIZES))
    offset = 6 + 16 * len(SIZES)
    for size, data in zip(SIZES, images):
        directory += struct.pack("<BBBBHHII", size, size, 0, 0, 1, 32, len(data), offset)
        offset += len(data)
    return directory + b"".join(images)


def main():
    folder = Path(__file__).resolve().parent
    for name, colour_at in (("dipole_shown.ico", shown), ("dipole_hidden.ico", hidden)):
        (folder / name).write_bytes(icon(colour_at))


if __name__ == "__main__":
    main()
