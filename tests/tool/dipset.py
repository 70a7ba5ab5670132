"""Set files of the current version and of 20011118, written and read here by docs/file-formats.md alone."""

import struct


def text_bytes(text):
    """Text as an archive stores it; lone halves of surrogate pairs stay as they are."""
    units = text.encode("utf-16-le", "surrogatepass")
    length = len(units) // 2
    if length < 255:
        size = struct.pack("<B", length)
    elif length < 65534:
        size = b"\xff" + struct.pack("<H", length)
    else:
        size = b"\xff\xff\xff" + struct.pack("<I", length)
    return b"\xff\xfe\xff" + size + units


class Reader:
    def __init__(self, data):
        self.data, self.at = data, 0

    def take(self, form):
        values = struct.unpack_from("<" + form, self.data, self.at)
        self.at += struct.calcsize("<" + form)
        return values[0] if len(values) == 1 else list(values)

    def text(self):
        assert self.take("3s") == b"\xff\xfe\xff", "no text at %d" % self.at
        length = self.take("B")
        if length == 0xFF:
            length = self.take("H")
            if length == 0xFFFF:
                length = self.take("I")
        units = self.data[self.at:self.at + 2 * length]
        self.at += 2 * length
        return units.decode("utf-16-le", "surrogatepass")


# Name, struct form, the value of a new dipole; in the order of the record.
DIPOLE = [("show", "i", 1), ("show_orientation", "i", 1), ("scale", "d", 1.0), ("orientation_scale", "d", 1),
          ("orientation_length", "d", 30.0), ("size", "d", 3.0), ("color", "I", 0x00FFFF), ("unused", "i", 1),
          ("color_bgr", "3f", [0.0, 1.0, 1.0]), ("orientation", "3d", [1.0, 0.0, 1.0]),
          ("location", "3d", [100.0, 100.0, 100.0]), ("dims_zyx", "3i", [0, 0, 0]), ("fit_error", "d", 0.25),
          ("latency", "d", 0.0), ("moment", "d", 1.0), ("fit_tag", "i", 0), ("id", "i", 0),
          ("display", "i", 1), ("label", "text", "Non"), ("number", "i", 1)]
SPHERE = struct.pack("<4d2i", 0, 0, 0, 0, 0, 0) + text_bytes("")

FACE = [("face_value", "d", 0.0), ("show_orientation_all", "i", 0), ("range", "3d", [100.0, 100.0, 100.0]),
        ("sphere_set", "i", 0), ("version", "text", "non"), ("patient", "text", "non"),
        ("mri_file", "text", "non"), ("meg_only", "i", 0), ("coordinate_type", "i", 0),
        ("moment_in_nAm", "i", 0), ("skip_fiducials", "B", 0), ("show_current_only", "i", 0),
        ("merge_radius", "f", 0.0), ("show_fiducials", "i", 1), ("show_array", "i", 1),
        ("dimension", "3i", [0, 0, 0]), ("space", "3d", [0.0, 0.0, 0.0])]


def pack_fields(fields, values):
    data = b""
    for name, form, initial in fields:
        value = values.get(name, initial)
        if form == "text":
            data += text_bytes(value)
        else:
            data += struct.pack("<" + form, *(value if isinstance(value, list) else [value]))
    return data


def unpack_fields(fields, reader):
    return {name: reader.text() if form == "text" else reader.take(form) for name, form, _ in fields}


def pack_set(dipoles, current=0, **face):
    """A set file; each dipole is a dictionary of what differs from a new one, None an empty slot."""
    parts = [text_bytes("DIPOLESFACEZQ"), struct.pack("<3i", 20050629, current, len(dipoles))]
    for dipole in dipoles:
        parts.append(struct.pack("<i", 0 if dipole is None else 1))
        if dipole is not None:
            parts += [struct.pack("<i", 20011118), pack_fields(DIPOLE, dipole), SPHERE]
    return b"".join(parts) + pack_fields(FACE, face)


def unpack_dipole(reader):
    assert reader.take("i") == 20011118
    dipole = unpack_fields(DIPOLE, reader)
    reader.take("4d2i")
    assert reader.text() == ""
    return dipole


def unpack_set(data):
    """(current, dipoles, members of the set)"""
    reader = Reader(data)
    assert reader.text() == "DIPOLESFACEZQ"
    assert reader.take("i") == 20050629
    current, count = reader.take("2i")
    dipoles = [unpack_dipole(reader) if reader.take("i") else None for _ in range(count)]
    face = unpack_fields(FACE, reader)
    assert reader.at == len(data), "%d of %d bytes read" % (reader.at, len(data))
    return current, dipoles, face


def unpack_sphere(reader):
    return {"centre": reader.take("3d"), "radius": reader.take("d"), "ints": reader.take("2i"),
            "text": reader.text()}


def unpack_points(reader):
    """Positions of the points of a fiducial record that are set, else None."""
    positions = []
    for _ in range(6):
        values, _, sizes = reader.take("16d"), reader.take("2q"), reader.take("4d")
        is_set, shape, _ = reader.take("3i")
        reader.take("qi")
        reader.text()
        positions.append({"at": values[4:7], "size": sizes[0], "shape": shape} if is_set else None)
    reader.take("4i3q")
    return positions


def unpack_old_set(data):
    """A set of version 20011118, by the names of its members."""
    reader = Reader(data)
    assert reader.take("i") == 20011118
    found = {"show_current_only": reader.take("i"), "rotation": reader.take("3d"), "version": reader.text(),
             "mri_file": reader.text(), "patient": reader.text()}
    found["meg_only"], found["coordinate_type"], found["show_fiducials"] = reader.take("3i")
    found["mri_points"], found["head_points"] = unpack_points(reader), unpack_points(reader)
    found["sphere_set"], found["orientation_all"], found["array"] = reader.take("3i")
    reader.take("d3d3d3i")
    found["current"], count = reader.take("2i")
    found["dipoles"] = [unpack_dipole(reader) for _ in range(count)]
    found["locational"], found["ctf_sphere"], _ = [unpack_sphere(reader) for _ in range(3)]
    assert reader.at == len(data), "%d of %d bytes read" % (reader.at, len(data))
    return found
