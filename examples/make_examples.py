#!/usr/bin/env python3
"""Writes the example dipole files: the same bytes on every run.

Positions and directions are in the MEG head frame of CTF programs: x to the nose, y to the left ear,
z up, origin midway between the ears, centimetres. The head behind the numbers is the T1 head of
Debian's package mricron-data (ch2.nii.gz) with its standard fiducial points, so that every example can
be drawn on it.
"""

import argparse
import math
import os
import random

# Fiducial points of the T1 head, scanner millimetres: right, anterior, superior positive.
NASION = (0.0083, 86.8110, -39.9830)
LEFT_EAR = (-86.0761, -19.9897, -47.9860)
RIGHT_EAR = (85.7939, -20.0093, -48.0310)

# The isotropic volume that the file's own MRI coordinates refer to: 256 voxels of this size (mm) a side.
# Sagittal numbers grow to the right, coronal ones to the back, axial ones downward.
VOXEL = 0.859375
EAR_MIDPOINT_VOXEL = (128, 150, 165)

# The sphere fitted to the inside of the skull (cm).
SPHERE_ORIGIN = (0.45, 0.10, 5.35)
SPHERE_RADIUS = 8.60

MAX_DIPOLES = 30000
LEFT_AUDITORY = (1.00, 5.20, 5.80)
RIGHT_AUDITORY = (1.30, -5.10, 5.60)
LEFT_TEMPORAL = (2.65, 4.75, 2.45)
LEFT_HAND_AREA = (-0.10, 3.70, 9.60)

# Values of the third column of a flags row: how a dipole is drawn.
SHAPE_SHOWN = 0
SHAPE_HIDDEN = 1


def unit(v):
    length = math.sqrt(sum(c * c for c in v))
    return tuple(c / length for c in v)


def tangential(position, direction):
    """The part of `direction` along the sphere's surface: a radial current is silent in MEG."""
    radial = unit([p - o for p, o in zip(position, SPHERE_ORIGIN)])
    along = sum(d * r for d, r in zip(direction, radial))
    return unit([d - along * r for d, r in zip(direction, radial)])


def section(name, lines):
    return [name, "{"] + ["\t" + line for line in lines] + ["}", ""]


def mri_voxel(point):
    """A scanner point (mm) as (sagittal, coronal, axial) voxel numbers."""
    middle = [(l + r) / 2 for l, r in zip(LEFT_EAR, RIGHT_EAR)]
    right, front, up = [(p - m) / VOXEL for p, m in zip(point, middle)]
    sagittal, coronal, axial = EAR_MIDPOINT_VOXEL
    return round(sagittal + right), round(coronal - front), round(axial - up)


def head_sections(patient, date):
    """The sections before the dipoles: who, which head model, where the fiducial points are."""
    fiducials = ["// Fid. Points\tSag\tCor\tAxi"]
    for name, point in (("NASION:", NASION), ("LEFT_EAR:", LEFT_EAR), ("RIGHT_EAR:", RIGHT_EAR)):
        fiducials.append(name + "\t" + "\t".join(str(v) for v in mri_voxel(point)))
    sphere = ["ORIGIN_%s:\t%.3f" % (axis, value) for axis, value in zip("XYZ", SPHERE_ORIGIN)]
    rule = "// " + 37 * "*"
    who = ["VERSION:\tCTF_DIPOLE_FILE_VERSION_5.0", "PATIENT:\t" + patient, "DATE:\t" + date]
    return (
        [rule, "//\tDipole file", rule, ""]
        + section("File_Info", who)
        + section("Model", ["MODEL_TYPE:\tMEG_ONLY", "MRI_FILE:\tch2.mri"])
        + section("MEG_Sphere", ["// Single sphere (cm)"] + sphere + ["RADIUS:\t%.3f" % SPHERE_RADIUS])
        + section("Fid_Points", fiducials)
    )


class Dipole:
    """One fitted dipole: cm, unit direction, nAm, seconds, percent."""

    def __init__(self, position, direction, moment, latency, error, label):
        self.position = tuple(round(p, 2) for p in position)
        self.direction = tangential(self.position, direction)
        self.moment = moment
        self.latency = latency
        self.error = error
        self.label = label
        self.trial = 1
        self.colour = 0
        self.shape = SHAPE_SHOWN


def dipole_rows(dipoles):
    lines = ["// Dipole parameters ...", "// xp (cm)\typ (cm)\tzp (cm)\txo\tyo\tzo\tMom(nAm)\tLabel"]
    for number, d in enumerate(dipoles, 1):
        lines.append("%d:\t" % number + "\t".join("%.2f" % p for p in d.position) + "\t"
                     + "\t".join("%.4f" % o for o in d.direction) + "\t%.6f\t%s" % (d.moment, d.label))
    return section("Dipoles", lines)


def flag_rows(dipoles):
    lines = ["//Colour\tShape\tshow dir.\tshowlabel\tshow err"]
    lines += ["%d:\t%d\t%d\t1\t1\t1" % (number, d.colour, d.shape) for number, d in enumerate(dipoles, 1)]
    return section("Dipole_Flags", lines)


def fit_info_rows(dipoles, dataset):
    """MEG and EEG errors are whole numbers here: readers of this layout expect integers in those columns."""
    lines = ["//\tTrial\tStart\tLatency (s)\tN_Pts\tError\tMEG_Error\tEEG_Error"
             "\tErrType\tFitType\tGood\tDataset"]
    for number, d in enumerate(dipoles, 1):
        lines.append("%d:\t%d\t1\t%.5f\t1\t%.2f\t%d\t0\t0\t0\t1\t%s"
                     % (number, d.trial, d.latency, d.error, round(d.error), dataset))
    return section("Dipole_FitInfo", lines)


def static_file(patient, date, dataset, dipoles):
    return (head_sections(patient, date) + dipole_rows(dipoles) + flag_rows(dipoles)
            + fit_info_rows(dipoles, dataset))


def auditory():
    """The N100m of a tone: one dipole in each superior temporal plane, pointing down and back."""
    left = Dipole(LEFT_AUDITORY, (-0.35, 0.0, -0.94), 27.3, 0.0962, 4.7, "N100m_left")
    right = Dipole(RIGHT_AUDITORY, (-0.30, 0.0, -0.95), 33.8, 0.0924, 3.9, "N100m_right")
    left.colour, right.colour = 2, 3
    return static_file("EXAMPLE_AUDITORY", "14-Mar-2005 10:42", "auditory.ds", [left, right])


def spikes():
    """Single-spike dipoles in the left temporal lobe; the worst fits are switched off for drawing."""
    rng = random.Random(20050314)
    dipoles = []
    for number in range(1, 121):
        position = [c + max(-9.0, min(9.0, rng.gauss(0, 3.6))) / 10 for c in LEFT_TEMPORAL]
        direction = [c + rng.gauss(0, 0.15) for c in (0.55, 0.25, -0.80)]
        moment = min(400.0, max(50.0, rng.lognormvariate(5.1, 0.4)))
        error = min(30.0, max(5.0, rng.gauss(14, 5)))
        d = Dipole(position, direction, moment, rng.gauss(-0.004, 0.006), error, "spike_%d" % number)
        d.trial = number
        d.colour = 2 if d.latency < -0.004 else 0
        d.shape = SHAPE_HIDDEN if d.error > 22 else SHAPE_SHOWN
        dipoles.append(d)
    return static_file("EXAMPLE_SPIKES", "22-Mar-2005 09:15", "spikes.ds", dipoles)


def moving_section(rng, centre, direction, side):
    """One dipole fitted anew at every millisecond from 80 to 120 ms."""
    comments = [
        "// Moving dipole fit",
        "// Dataset:\tauditory.ds",
        "// Coordinates:\tHEAD",
        "// Fit type:\tmoving dipole, MEG only",
        "// Conductor model:\tsingle sphere",
        "// Start latency (s):\t0.0800",
        "// End latency (s):\t0.1200",
        "// Step (s):\t0.0010",
        "// Trial:\t1",
        "// Initial position:\t%.2f\t%.2f\t%.2f" % centre,
        "// Confidence volume:\tellipsoid, axes and centre as below",
        "// \tTrial\tSample\tLatency (s)\txp (cm)\typ (cm)\tzp (cm)\txo\tyo\tzo\tMom(nAm)"
        "\tE1x\tE1y\tE1z\tE2x\tE2y\tE2z\tE3x\tE3y\tE3z\tEcx\tEcy\tEcz"
        "\tConf(%)\tErr(%)\tMEG Err(%)\tEEG Err(%)\tLabel",
    ]
    rows = []
    for step in range(41):
        latency = 0.080 + 0.001 * step
        peak = math.exp(-(((latency - 0.096) / 0.014) ** 2))
        spread = 0.03 + 0.25 * (1 - peak)
        position = [c + rng.gauss(0, spread) for c in centre]
        d = Dipole(position, [c + rng.gauss(0, 0.05) for c in direction], 15 + 25 * peak, latency,
                   2 + 12 * (1 - peak) + abs(rng.gauss(0, 0.4)), "N100m_%s_%d" % (side, step + 1))
        axes = [0.0] * 9
        for axis in range(3):
            axes[4 * axis] = spread * rng.uniform(0.6, 2.4)
        values = list(d.direction) + [d.moment]
        rows.append("%d:\t1\t%d\t%.4f\t" % (step + 1, 400 + step, latency)
                    + "\t".join("%.2f" % p for p in d.position) + "\t"
                    + "\t".join("%.4f" % v for v in values) + "\t"
                    + "\t".join("%.3f" % v for v in axes) + "\t"
                    + "\t".join("%.2f" % p for p in d.position)
                    + "\t95.0\t%.2f\t%.2f\t0.00\t%s" % (d.error, d.error, d.label))
    return section("Fit_Results", comments + rows)


def moving():
    rng = random.Random(20050401)
    return (head_sections("EXAMPLE_MOVING", "01-Apr-2005 11:30")
            + moving_section(rng, LEFT_AUDITORY, (-0.35, 0.0, -0.94), "left")
            + moving_section(rng, RIGHT_AUDITORY, (-0.30, 0.0, -0.95), "right"))


def large(rows):
    """A busy recording: dipoles all through the upper part of the sphere."""
    rng = random.Random(30000)
    dipoles = []
    for number in range(1, rows + 1):
        around = unit([rng.gauss(0, 1) for _ in range(3)])
        depth = SPHERE_RADIUS * rng.uniform(0.45, 0.88)
        position = [o + depth * a for o, a in zip(SPHERE_ORIGIN, (around[0], around[1], abs(around[2])))]
        d = Dipole(position, [rng.gauss(0, 1) for _ in range(3)], rng.uniform(10, 250),
                   0.001 * (number - 1), rng.uniform(2, 30), "s%d" % number)
        d.trial = 1 + (number - 1) // 1000
        d.colour = rng.randrange(7)
        dipoles.append(d)
    return static_file("EXAMPLE_LARGE", "12-Apr-2005 08:00", "large.ds", dipoles)


def table():
    """The N20m of the right median nerve, fitted at each sample: a table as 4D/MSI exports it."""
    rng = random.Random(20050408)
    lines = ["Code   Shape", " 1     Circle", " 2     Square", "",
             "Disk Media: example", "MRI/CT Patient: EXAMPLE_TABLE", "Dipole File: median_nerve_right",
             "Date of File: 08-Apr-2005", "",
             "Latency      x      y      z       Qx      Qy      Qz      Q    Rad  Corr    GOF  Vol  Grp  Label"]
    for sample in range(9):
        latency = 18.0 + 0.5 * sample
        peak = math.exp(-(((latency - 20.0) / 1.6) ** 2))
        place = [c + rng.gauss(0, 0.05 + 0.2 * (1 - peak)) for c in LEFT_HAND_AREA]
        # Ten times the direction: the importer divides these columns by 10.
        frontward = (0.95 + rng.gauss(0, 0.05), 0.25, rng.gauss(0, 0.05))
        direction = [10 * d for d in tangential(place, frontward)]
        lines.append("%7.2f %6.2f %6.2f %6.2f  %7.3f %7.3f %7.3f %6.1f %6.2f %5.3f %6.4f %4.2f %4d a b c %d N20m_%d"
                     % (latency, *place, *direction, 4 + 18 * peak, 4.5, 0.97, 0.8 + 0.18 * peak,
                        0.4 + 2 * (1 - peak), 1, 1, sample + 1))
    return lines


def fiducials():
    lines = ["# Fiducial points of the T1 head in ch2.nii.gz.",
             "# Scanner millimetres: right, anterior and superior positive."]
    for name, point in (("nasion", NASION), ("left", LEFT_EAR), ("right", RIGHT_EAR)):
        lines.append(name + " " + " ".join("%.4f" % v for v in point))
    return lines


def write(folder, name, lines):
    path = os.path.join(folder, name)
    data = ("\n".join(lines).rstrip("\n") + "\n").encode("ascii")
    with open(path, "wb") as out:
        out.write(data)
    print("%s: %d lines, %d bytes" % (path, data.count(b"\n"), len(data)))


def main():
    parser = argparse.ArgumentParser(description="Write the example dipole files into a folder.")
    parser.add_argument("folder", help="where to write; made when it does not exist")
    parser.add_argument("--rows", type=int, metavar="N",
                        help="write large.dip too, with N dipoles (a set holds up to %d)" % MAX_DIPOLES)
    arguments = parser.parse_args()
    if arguments.rows is not None and arguments.rows < 1:
        parser.error("--rows needs a number from 1")
    os.makedirs(arguments.folder, exist_ok=True)
    write(arguments.folder, "auditory.dip", auditory())
    write(arguments.folder, "spikes.dip", spikes())
    write(arguments.folder, "moving.dip", moving())
    write(arguments.folder, "median.txt", table())
    write(arguments.folder, "ch2.fiducials", fiducials())
    if arguments.rows is not None:
        write(arguments.folder, "large.dip", large(arguments.rows))


if __name__ == "__main__":
    main()
