"""Pages to order: a head whose sides can be told by its pixels, dipoles wherever a test wants them, and what the
page reads of both, put into the built template."""

import base64
import gzip
import json

import nibabel
import numpy

SIDE = 64  # voxels of 3 mm along each axis
VOXEL = 3.0
MARK = (-45.0, 30.0, 21.0)  # mm right, front, up: a bright block in the head, on the left, in front, above
IDENTITY = [float(row == column) for row in range(4) for column in range(4)]


def turned(degrees):
    """A turn around the axis that points up, and a move."""
    c, s = numpy.cos(numpy.radians(degrees)), numpy.sin(numpy.radians(degrees))
    return numpy.array([[c, -s, 0, 4.0], [s, c, 0, -6.0], [0, 0, 1, 3.0], [0, 0, 0, 1]])


def head_file(mirrored=False, degrees=0.0):
    """A grey ball with the bright block, as .nii.gz, and the map from its mm before the turn to the world's."""
    to_world = turned(degrees) if degrees else numpy.eye(4)
    middle = (SIDE - 1) / 2
    affine = numpy.diag([VOXEL, VOXEL, VOXEL, 1.0])
    affine[:3, 3] = -middle * VOXEL
    if mirrored:
        affine = affine @ numpy.array([[-1, 0, 0, SIDE - 1], [0, 1, 0, 0], [0, 0, 1, 0], [0, 0, 0, 1]])
    indices = numpy.indices((SIDE, SIDE, SIDE)).reshape(3, -1)
    mm = affine[:3, :3] @ indices + affine[:3, 3:]
    voxels = numpy.where((mm ** 2).sum(axis=0) < 85.0 ** 2, 70, 0)
    voxels[(numpy.abs(mm - numpy.array(MARK)[:, None]) < 6.1).all(axis=0)] = 255
    image = nibabel.Nifti1Image(voxels.reshape(SIDE, SIDE, SIDE).astype(numpy.uint8), to_world @ affine)
    image.set_sform(to_world @ affine, 1)
    image.set_qform(to_world @ affine, 1)
    return gzip.compress(image.to_bytes(), 6, mtime=0), to_world


def atlas_file(labels):
    """An atlas of 2 mm voxels around the origin; `labels` holds (label, low, high) in mm."""
    count = 80
    affine = numpy.diag([2.0, 2.0, 2.0, 1.0])
    affine[:3, 3] = -(count - 1)
    voxels = numpy.zeros((count, count, count), numpy.uint16)
    axis = numpy.arange(count) * 2.0 - (count - 1)
    for label, low, high in labels:
        inside = [(axis >= low[i]) & (axis <= high[i]) for i in range(3)]
        voxels[numpy.ix_(*inside)] = label
    return gzip.compress(nibabel.Nifti1Image(voxels, affine).to_bytes(), 6, mtime=0)


def column(title, label, unit, kind, values):
    return {"title": title, "label": label, "unit": unit, "kind": kind, "values": values}


def columns(count):
    number = list(range(count))
    return [
        column("number", "No.", "", "number", [i + 1 for i in number]),
        column("label", "Label", "", "text", [f"dipole {i + 1}" for i in number]),
        column("latency_ms", "Latency", "ms", "number", [10.0 + i for i in number]),
        column("fit_error_percent", "Fit error", "%", "number", [2.0 + i % 20 for i in number]),
        column("moment_nam", "Moment", "nAm", "number", [50.0 + i % 100 for i in number]),
        column("colour", "Colour", "", "colour", ["#00ff00"] * count),
        column("shown", "Shown", "", "flag", [True] * count),
    ]


def value_range(low, high):
    return {"low": low, "high": high, "isCutLow": False, "isCutHigh": False}


def page_data(places, arrows=None, **changes):
    count = len(places)
    unset = {"least": None, "most": None}
    frame = {"name": "scanner", "title": "Scanner", "description": "mm of the scanner",
             "axes": ["right", "front", "up"], "fromWorld": IDENTITY}
    head_frame = {"name": "host", "title": "Head", "description": "head: x left, y up, z front",
                  "axes": ["left", "up", "front"],
                  "fromWorld": [-1, 0, 0, 0, 0, 0, 1, 0, 0, 1, 0, 0, 0, 0, 0, 1]}
    data = {
        "program": "dipole 0.0.0", "made": "2026-01-02T03:04:05Z", "isAnonymous": False, "title": "test.dip",
        "patient": "TEST", "files": [{"name": "test.dip", "format": "CTF", "dipoles": count}],
        "world": {"kind": "scanner", "title": "Scanner", "description": "mm of the scanner"},
        "frames": [head_frame, frame],
        "head": {"name": "test.nii.gz", "format": "NIfTI-1", "sides": "by its sform", "areSidesStated": True,
                 "window": [0, 200], "range": [0, 255], "isFull": True},
        "atlas": None, "sphere": None, "points": [], "registration": None,
        "dipoles": {"count": count, "columns": columns(count),
                    "roles": {"number": 0, "label": 1, "latency": 2, "fitError": 3, "moment": 4, "colour": 5,
                              "shown": 6, "atlasLabel": -1, "atlasDistance": -1},
                    "places": [list(place) for place in places], "arrows": arrows or [None] * count,
                    "clusters": [0] * count},
        "clusters": {"text": "6 or more dipoles within 10 mm", "scattered": count, "removed": [], "clusters": []},
        "settings": {
            "colourBy": "own", "toleranceMm": 5.0, "fitError": unset, "moment": unset, "latency": unset,
            "crosshair": list(places[0]), "areArrowsByMoment": False, "areArrowsShown": True,
            "areLabelsShown": False, "glyphPixels": 9, "ballRadius": 2.5, "scale": ["#0000ff", "#ff00ff", "#ff0000"],
            "noValue": "#808080", "clusterColours": ["#ff8000"], "scattered": "#a0a0a0",
            "ranges": {"latency": value_range(10, 10 + count), "fitError": value_range(2, 22),
                       "moment": value_range(50, 150)}},
        "findings": [], "repaired": [], "warnings": [], "conventions": [],
    }
    data.update(changes)
    return data


def in_mni(data):
    """The same page, whose world is that of the atlas."""
    data["frames"].append(dict(data["frames"][1], name="mni", title="MNI152", description="MNI152"))
    return data


def filled(template, data, head=None, atlas=None):
    """The page with everything in its elements, as `dipole page` fills it."""
    texts = {'application/json" id="page-data': json.dumps(data).replace("<", "\\u003c")}
    if head is not None:
        texts['text/plain" id="page-head'] = base64.b64encode(head).decode()
    if atlas is not None:
        texts['text/plain" id="page-atlas'] = base64.b64encode(atlas).decode()
    for name, text in texts.items():
        empty = f'<script type="{name}"></script>'
        assert template.count(empty) == 1
        template = template.replace(empty, empty.replace("></", f">{text}</"))
    return template
