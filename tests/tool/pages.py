"""What is in a page, taken out of it here: its JSON, its head, its atlas."""

import base64
import gzip
import html.parser
import json
import struct


class Elements(html.parser.HTMLParser):
    """The texts of a page's elements, as a browser would have them, by their ids."""

    def __init__(self, text):
        super().__init__()
        self.texts, self.scripts, self._id = {}, 0, None
        self.feed(text)
        self.close()

    def handle_starttag(self, tag, attributes):
        if tag == "script":
            self.scripts += 1
            self._id = dict(attributes).get("id")
            self.texts[self._id] = ""

    def handle_endtag(self, tag):
        if tag == "script":
            self._id = None

    def handle_data(self, data):
        if self._id is not None:
            self.texts[self._id] += data


class Nifti:
    """A little-endian NIfTI-1 file, by the layout of that standard."""

    def __init__(self, data):
        size, = struct.unpack_from("<i", data, 0)
        if size != 348 or data[344:348] != b"n+1\0":
            raise ValueError("not a NIfTI-1 file")
        self.shape = struct.unpack_from("<3h", data, 42)
        self.code, bits = struct.unpack_from("<2h", data, 70)
        offset, self.slope, self.intercept = struct.unpack_from("<3f", data, 108)
        self.most, self.least = struct.unpack_from("<2f", data, 124)
        self.qform, self.sform = struct.unpack_from("<2h", data, 252)
        self.rows = [struct.unpack_from("<4f", data, 280 + 16 * row) for row in range(3)]
        self.texts = data[4:40] + data[148:252] + data[328:344]  # db_name ..., descrip, aux_file, intent_name
        letter = {2: "B", 4: "h", 16: "f", 512: "H"}[self.code]
        count = self.shape[0] * self.shape[1] * self.shape[2]
        self.stored = struct.unpack_from("<%d%s" % (count, letter), data, int(offset))
        if len(data) != int(offset) + count * bits // 8:
            raise ValueError("more than the voxels")

    def place(self, i, j, k):
        return tuple(row[0] * i + row[1] * j + row[2] * k + row[3] for row in self.rows)

    def values(self):
        """(place in mm, value) of every voxel."""
        at = 0
        for k in range(self.shape[2]):
            for j in range(self.shape[1]):
                for i in range(self.shape[0]):
                    yield self.place(i, j, k), self.slope * self.stored[at] + self.intercept
                    at += 1

    def value_at(self, mm):
        """Of the voxel around a place, for maps along the axes; None outside."""
        index = [round((mm[axis] - self.rows[axis][3]) / self.rows[axis][axis]) for axis in range(3)]
        if any(not 0 <= index[axis] < self.shape[axis] for axis in range(3)):
            return None
        at = (index[2] * self.shape[1] + index[1]) * self.shape[0] + index[0]
        return self.slope * self.stored[at] + self.intercept


def unpacked(text):
    return gzip.decompress(base64.b64decode(text, validate=True)) if text else b""


class Page:
    def __init__(self, data):
        self.text = data.decode("utf-8")
        self.elements = Elements(self.text)
        self.json = json.loads(self.elements.texts["page-data"])
        self.head_bytes = unpacked(self.elements.texts["page-head"])
        self.atlas_bytes = unpacked(self.elements.texts["page-atlas"])

    def head(self):
        return Nifti(self.head_bytes)

    def column(self, title):
        found = [column["values"] for column in self.json["dipoles"]["columns"] if column["title"] == title]
        if len(found) != 1:
            raise KeyError(title)
        return found[0]

    def role(self, name):
        return self.json["dipoles"]["columns"][self.json["dipoles"]["roles"][name]]

    def frame(self, name):
        found, = [frame for frame in self.json["frames"] if frame["name"] == name]
        return found

    def everything(self):
        """Every byte that a reader could find a name in."""
        return self.text.encode("utf-8") + json.dumps(self.json, ensure_ascii=False).encode("utf-8") + \
            self.head_bytes + self.atlas_bytes


def carried(matrix, place):
    return [sum(matrix[4 * row + column] * place[column] for column in range(3)) + matrix[4 * row + 3]
            for row in range(3)]
