#!/usr/bin/env python3
"""Frames of places, and files for 3D Slicer and VTK, against MNE-Python, NumPy and readers written here. Runs under
Debian's Python. FRAME_TRIPLES is the number of random heads, 1000 when the frames themselves are at stake."""

import base64
import json
import os
import struct
import sys
import unittest
import xml.etree.ElementTree

import jsonschema
import numpy
import mne

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
from mne_dipoles import CROOKED, MM, head_frame, points_text, unit  # noqa: E402
from support import ToolTest, example  # noqa: E402

# What readers of markups demand, as far as a set of dipoles uses it.
TRIPLE = {"type": "array", "items": {"type": "number"}, "minItems": 3, "maxItems": 3}
COLOR = {"type": "array", "items": {"type": "number", "minimum": 0, "maximum": 1}, "minItems": 3, "maxItems": 3}
MARKUPS = {
    "type": "object", "required": ["@schema", "markups"],
    "properties": {
        "@schema": {"type": "string", "pattern": r"^https://.*/markups-schema-v1\.[0-9]+\.[0-9]+\.json#?$"},
        "markups": {"type": "array", "items": {
            "type": "object", "required": ["type"],
            "properties": {
                "type": {"enum": ["Fiducial", "Line", "Angle", "Curve", "ClosedCurve", "Plane", "ROI"]},
                "coordinateSystem": {"enum": ["LPS", "RAS"]}, "coordinateUnits": {"enum": ["mm", "um"]},
                "locked": {"type": "boolean"}, "labelFormat": {"type": "string"},
                "controlPoints": {"type": "array", "items": {
                    "type": "object",
                    "properties": {
                        "id": {"type": "string", "minLength": 1}, "label": {"type": "string"},
                        "description": {"type": "string"}, "position": TRIPLE,
                        "orientation": {"type": "array", "items": {"type": "number"}, "minItems": 9, "maxItems": 9},
                        "selected": {"type": "boolean"}, "locked": {"type": "boolean"},
                        "visibility": {"type": "boolean"},
                        "positionStatus": {"enum": ["undefined", "preview", "defined"]}}}},
                "measurements": {"type": "array", "items": {
                    "type": "object", "required": ["name"],
                    "properties": {"name": {"type": "string"}, "enabled": {"type": "boolean"},
                                   "units": {"type": "string"}, "printFormat": {"type": "string"},
                                   "controlPointValues": {"type": "array", "items": {"type": "number"}}}}},
                "display": {"type": "object", "properties": {
                    "visibility": {"type": "boolean"}, "opacity": {"type": "number"}, "color": COLOR,
                    "selectedColor": COLOR, "glyphType": {"type": "string"}}}}}}}}


def places(dipoles, prefix=""):
    names = sorted(name for name in dipoles[0] if name.startswith(prefix) and name.endswith("_mm"))
    return numpy.array([[one[name] for name in names] for one in dipoles])


def directions(dipoles, prefix=""):
    names = sorted(name for name in dipoles[0] if name.startswith(prefix + "orientation_") and "shown" not in name)
    return numpy.array([[one[name] for name in names] for one in dipoles])


class Vtp:
    """A reader of its own: VTK's XML, arrays inline in base64 behind their length, texts in codes."""

    def __init__(self, path):
        root = xml.etree.ElementTree.parse(path).getroot()
        assert (root.tag, root.get("type"), root.get("byte_order")) == ("VTKFile", "PolyData", "LittleEndian")
        self.piece = root.find("PolyData/Piece")
        self.count = int(self.piece.get("NumberOfPoints"))
        self.fields = {array.get("Name"): self.texts(array)[0] for array in root.iterfind("PolyData/FieldData/Array")}
        self.points = self.values(self.piece.find("Points/DataArray"))
        self.data = {array.get("Name"): self.values(array) for array in self.piece.iterfind("PointData/DataArray")}
        self.labels = self.texts(self.piece.find("PointData/Array"))
        self.verts = {array.get("Name"): self.values(array) for array in self.piece.iterfind("Verts/DataArray")}

    def values(self, array):
        data = base64.b64decode(array.text, validate=True)
        size, = struct.unpack_from("<I", data)
        assert size == len(data) - 4
        form = {"Float32": "<f4", "Int32": "<i4"}[array.get("type")]
        components = int(array.get("NumberOfComponents"))
        values = numpy.frombuffer(data[4:], form).reshape(-1, components)
        assert len(values) == self.count
        return values

    @staticmethod
    def texts(array):
        codes = bytes(int(code) for code in (array.text or "").split())
        return [text.decode("utf-8") for text in codes.split(b"\0")[:-1]]


class FramesTest(ToolTest):
    def listed(self, *options):
        return json.loads(self.succeed("list", "--json", "--quiet", example("auditory.dip"), *options).out)

    def test_random_heads_against_mne_and_numpy(self):
        random = numpy.random.RandomState(11)
        own = self.listed()["dipoles"]
        place, direction = places(own), directions(own)
        worst = {"neuromag": 0.0, "scanner": 0.0}
        for _ in range(int(os.environ.get("FRAME_TRIPLES", "40"))):
            points = [numpy.array(middle) + random.uniform(-15, 15, 3)
                      for middle in ([0, 95, -20], [-75, -10, -40], [75, -10, -40])]
            rows, origin = head_frame(points)
            scanner = place @ rows + origin
            trans = mne.transforms.get_ras_to_neuromag_trans(*[point * MM for point in points])
            neuromag = (numpy.c_[scanner * MM, numpy.ones(len(scanner))] @ trans.T)[:, :3] / MM
            for frame, expected, turn in (("scanner", scanner, rows), ("neuromag", neuromag, rows @ trans[:3, :3].T)):
                found = self.listed("--frame", frame, "--fiducials", points_text(points))
                error = numpy.abs(places(found["dipoles"], frame + "_") - expected).max()
                worst[frame] = max(worst[frame], error)
                numpy.testing.assert_allclose(directions(found["dipoles"], frame + "_"), direction @ turn, atol=1e-12)
        sys.stderr.write("largest difference, mm: %r\n" % worst)
        self.assertLess(max(worst.values()), 1e-9)

    def test_ctf_and_its_titles(self):
        own, ctf = self.listed()["dipoles"], self.listed("--frame", "ctf")
        self.assertEqual(ctf["frame"], "CTF head: x front, y left, z up")
        numpy.testing.assert_array_equal(places(ctf["dipoles"], "ctf_"), places(own)[:, [2, 0, 1]])
        table = self.succeed("list", "--csv", "--frame", "ctf", example("auditory.dip")).out
        self.assertIn("ctf_x_front_mm,ctf_y_left_mm,ctf_z_up_mm,ctf_orientation_x_front", table)
        lines = self.succeed("list", "--frame", "ctf", example("auditory.dip")).out
        self.assertTrue(lines.startswith("Frame: CTF head: x front, y left, z up; mm\n"))

    def test_a_table_in_another_frame_is_not_taken_for_the_heads(self):
        path = self.path("a.csv")
        self.succeed("convert", example("auditory.dip"), "--frame", "ctf", "-o", path)
        self.assertIn("ctf_x_front_mm", self.end_with(1, "list", path).err)
        path = self.path("a.json")
        self.succeed("convert", example("auditory.dip"), "--frame", "ctf", "-o", path)
        self.assertIn("frame", self.end_with(1, "list", path).err)

    def test_mni_by_file_and_by_word(self):
        fiducials = ("--fiducials", points_text(CROOKED))
        scanner = places(self.listed("--frame", "scanner", *fiducials)["dipoles"], "scanner_")
        mni = self.listed("--frame", "mni", "--mni", "identity", "--mni-space", "colin27", *fiducials)
        self.assertEqual(mni["frame"], "Colin27: x right, y front, z up")
        numpy.testing.assert_array_equal(places(mni["dipoles"], "colin27_"), scanner)
        self.assertEqual(mni["fiducials_scanner_mm"]["nasion"], list(CROOKED[0]))
        unnamed = self.listed("--frame", "mni", "--mni", "identity", *fiducials)
        self.assertIn("nobody said which", unnamed["frame"])
        trans = mne.transforms.Transform("ras", "mni_tal", [[1.1, 0.1, 0, 0.005], [0, 0.9, 0, -0.006],
                                                            [0, 0, 1.2, 0.007], [0, 0, 0, 1]])
        rows = "\n".join(" ".join("%.8f" % value for value in row)
                         for row in numpy.r_[trans["trans"][:3, :3].T, [trans["trans"][:3, 3] / MM]].T)
        xfm = self.write("talairach.xfm", "MNI Transform File\n% made by mne\n\nTtransform_Type = Linear;\n"
                                          "Linear_Transform =\n" + rows + ";\n")
        found = self.listed("--frame", "mni", "--mni", xfm, *fiducials)
        expected = mne.transforms.apply_trans(trans, scanner * MM) / MM
        numpy.testing.assert_allclose(places(found["dipoles"], "mni305_"), expected, atol=1e-9)

    def test_info_names_the_frame_of_its_ranges(self):
        text = self.succeed("info", "--frame", "ctf", example("auditory.dip")).out
        self.assertIn("CTF head: x front, y left, z up", text)
        self.assertIn("x (front)", text)

    def test_files_with_a_frame_of_their_own_refuse_others(self):
        for target, frame in (("a.dipset", "ctf"), ("a.txt", "scanner"), ("a.bdip", "ctf"), ("a.mrk.json", "ctf")):
            error = self.end_with(1, "convert", example("auditory.dip"), "-o", self.path(target), "--frame", frame,
                                  "--fiducials", points_text(CROOKED)).err
            self.assertIn("frame", error)
            self.assertFalse(os.path.exists(self.path(target)))
        error = self.end_with(1, "list", "--frame", "scanner", example("auditory.dip")).err
        self.assertIn("needs the fiducial points of the head", error)


class FilesTest(ToolTest):
    def scanner(self, name):
        listed = json.loads(self.succeed("list", "--json", "--quiet", example(name), "--frame", "scanner",
                                         "--fiducials", points_text(CROOKED)).out)["dipoles"]
        return listed, places(listed, "scanner_"), directions(listed, "scanner_")

    def written(self, name, target, *options):
        result = self.succeed("convert", example(name), "-o", self.path(target), *options)
        return self.path(target), result.err

    def test_points_of_slicer(self):
        path, told = self.written("spikes.dip", "a.mrk.json", "--fiducials", points_text(CROOKED))
        with open(path, encoding="utf-8") as file:
            document = json.load(file)
        jsonschema.validate(document, MARKUPS)
        listed, place, direction = self.scanner("spikes.dip")
        self.assertIn("head sphere", told)
        points = {point["id"]: point for markup in document["markups"] for point in markup["controlPoints"]}
        self.assertEqual(len(points), len(listed))
        self.assertIn("scanner", document["markups"][0]["name"])
        for one, at, along in zip(listed, place, direction):
            point = points[str(one["number"])]
            numpy.testing.assert_allclose(point["position"], at * [-1, -1, 1], atol=1e-12)
            axes = numpy.array(point["orientation"]).reshape(3, 3)
            numpy.testing.assert_allclose(axes[:, 2], unit(along) * [-1, -1, 1], atol=1e-9)
            numpy.testing.assert_allclose(axes @ axes.T, numpy.eye(3), atol=1e-9)
            self.assertAlmostEqual(numpy.linalg.det(axes), 1.0)
            self.assertEqual(point["label"], one["label"])
        for markup in document["markups"]:
            moments = [one["moment_nAm"] for one in listed
                       if str(one["number"]) in {point["id"] for point in markup["controlPoints"]}]
            values = {measured["name"]: measured["controlPointValues"] for measured in markup["measurements"]}
            self.assertEqual(values["moment"], moments)

    def test_arrows_of_slicer(self):
        path, _ = self.written("auditory.dip", "a.mrk.json", "--to", "arrows", "--fiducials",
                               points_text(CROOKED))
        with open(path, encoding="utf-8") as file:
            document = json.load(file)
        jsonschema.validate(document, MARKUPS)
        listed, place, direction = self.scanner("auditory.dip")
        self.assertEqual([markup["type"] for markup in document["markups"]], ["Line"] * len(listed))
        ends = [[point["position"] for point in markup["controlPoints"]] for markup in document["markups"]]
        for (start, end), at, along in zip(ends, place, direction):
            numpy.testing.assert_allclose(start, at * [-1, -1, 1], atol=1e-9)
            numpy.testing.assert_allclose(numpy.subtract(end, start), unit(along) * [-10, -10, 10], atol=1e-9)

    def test_without_a_head_the_frame_is_the_heads_and_that_is_told(self):
        for target in ("a.mrk.json", "a.vtp"):
            path, told = self.written("auditory.dip", target)
            self.assertIn("head lies in the scanner is not known", " ".join(told.split()))
        self.assertIn("head, not the scanner's", Vtp(path).fields["FRAME"])
        own = json.loads(self.succeed("list", "--json", "--quiet", example("auditory.dip")).out)["dipoles"]
        numpy.testing.assert_allclose(Vtp(path).points, places(own)[:, [0, 2, 1]] * [-1, 1, 1], rtol=1e-6)

    def test_vtp(self):
        path, told = self.written("spikes.dip", "a.vtp", "--fiducials", points_text(CROOKED))
        vtp = Vtp(path)
        listed, place, direction = self.scanner("spikes.dip")
        self.assertEqual(vtp.count, len(listed))
        self.assertEqual(vtp.fields["SPACE"], "RAS")
        self.assertIn("scanner", vtp.fields["FRAME"])
        self.assertIn("nasion 5 100 -3", vtp.fields["FIDUCIALS_SCANNER_MM"])
        numpy.testing.assert_allclose(vtp.points, place, rtol=1e-6, atol=1e-6)
        moments = numpy.array([one["moment_nAm"] for one in listed])
        numpy.testing.assert_allclose(vtp.data["moment"], direction * moments[:, None], rtol=1e-5, atol=1e-5)
        numpy.testing.assert_allclose(vtp.data["fit_error_percent"][:, 0],
                                      [one["fit_error_percent"] for one in listed], rtol=1e-6)
        self.assertEqual(vtp.labels, [one["label"] for one in listed])
        numpy.testing.assert_array_equal(vtp.verts["offsets"][:, 0], numpy.arange(1, vtp.count + 1))
        numpy.testing.assert_array_equal(vtp.verts["connectivity"][:, 0], numpy.arange(vtp.count))
        self.assertIn("head sphere", told)
        ctf, _ = self.written("auditory.dip", "b.vtp", "--frame", "ctf")
        self.assertNotIn("SPACE", Vtp(ctf).fields)


if __name__ == "__main__":
    unittest.main()
