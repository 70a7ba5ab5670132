"""`dipole info` tells who and what a file is about, each file by itself, and says what was not measured."""

import json
import unittest

from support import SPHERE, ToolTest, dipole_file, example, expected_dipoles, single


class Info(ToolTest):
    def info(self, *paths):
        return json.loads(self.succeed("info", "--json", *paths).out)

    def test_json_of_an_example(self):
        entry, = self.info(example("spikes.dip"))
        self.assertEqual(entry["file"], example("spikes.dip"))
        self.assertEqual(entry["version"], "CTF_DIPOLE_FILE_VERSION_5.0")
        self.assertEqual(entry["patient"], "EXAMPLE_SPIKES")
        self.assertEqual(entry["mri_file"], "ch2.mri")
        self.assertIs(entry["meg_only"], True)
        self.assertEqual(entry["sphere"], {"centre_mm": [1.0, 53.5, 4.5], "radius_mm": 86.0})
        self.assertEqual(entry["fiducials_mri_voxels"],
                         {"nasion": [128, 100, 230], "left_ear": [228, 91, 106], "right_ear": [28, 91, 106]})
        self.assertEqual(entry["fiducials_head_mm"],
                         {"nasion": [0, 7.734375, 106.5625], "left_ear": [85.9375, 0, 0],
                          "right_ear": [-85.9375, 0, 0]})
        self.assertIs(entry["fiducials_head_from_sphere"], False)
        self.assertEqual(entry["moment_unit"], "nAm")
        self.assertEqual(entry["messages"], [{"text": "Total imported dipoles:120 (0-120)"}])

    def test_counts_and_ranges_agree_with_the_file(self):
        entry, = self.info(example("spikes.dip"))
        dipoles = expected_dipoles(example("spikes.dip"))
        self.assertEqual(entry["dipoles"], 120)
        self.assertEqual(entry["shown_on_slices"], sum(d["shown_on_slices"] for d in dipoles))
        self.assertLess(entry["shown_on_slices"], 120)
        for axis, key in enumerate(("x_mm", "y_mm", "z_mm")):
            values = [d["position_mm"][axis] for d in dipoles]
            self.assertEqual([single(v) for v in entry[key]], [min(values), max(values)])
        for key in ("latency_ms", "moment", "fit_error_percent"):
            values = [d[key] for d in dipoles]
            self.assertEqual([single(v) for v in entry[key]], [min(values), max(values)])

    def test_ranges_leave_out_what_is_not_a_number(self):
        path = self.write("n.dip", dipole_file([("nan", 2, 3, 7, "a"), (1, 2, 3, 7, "b")]))
        entry, = json.loads(self.end_with(1, "info", "--json", path).out)
        self.assertEqual(entry["z_mm"], [10, 10])

    def test_text_of_an_example(self):
        out = self.succeed("info", example("auditory.dip")).out
        self.assertEqual(out, "%s\n" % example("auditory.dip") + """\
  version             CTF_DIPOLE_FILE_VERSION_5.0
  patient             EXAMPLE_AUDITORY
  MRI file            ch2.mri
  head model          MEG only
  sphere              centre 1.00  53.50  4.50 mm, radius 86.00 mm
  fiducials, MRI      voxels from the right, from below, from behind
    nasion            128  100  230
    left ear          228  91  106
    right ear         28  91  106
  fiducials, head     mm, from the MRI points
    nasion            0.00  7.73  106.56
    left ear          85.94  0.00  0.00
    right ear         -85.94  0.00  0.00
  dipoles             2, shown on slices: 2
  x (left)            -51.00 .. 52.00 mm
  y (up)              56.00 .. 58.00 mm
  z (front)           10.00 .. 13.00 mm
  latency             92.40 .. 96.20 ms
  moment              27.30 .. 33.80 nAm
  fit error           3.90 .. 4.70 %
  message             Total imported dipoles:2 (0-2)
""")

    def test_each_file_is_a_set_of_its_own(self):
        entries = self.info(example("auditory.dip"), example("spikes.dip"))
        self.assertEqual([entry["dipoles"] for entry in entries], [2, 120])
        self.assertEqual([entry["patient"] for entry in entries], ["EXAMPLE_AUDITORY", "EXAMPLE_SPIKES"])
        self.assertEqual(entries[1]["messages"], [{"text": "Total imported dipoles:120 (0-120)"}])
        out = self.succeed("info", example("auditory.dip"), example("spikes.dip")).out
        self.assertEqual(out.count("\n\n"), 1)

    def test_head_points_that_come_from_the_sphere_alone_are_called_so(self):
        path = self.write("s.dip", dipole_file([(1, 2, 3, 7, "a")]))
        entry, = self.info(path)
        self.assertIsNone(entry["fiducials_mri_voxels"])
        self.assertEqual(entry["fiducials_head_mm"],
                         {"nasion": [0, 0, 85], "left_ear": [85, 0, 0], "right_ear": [-85, 0, 0]})
        self.assertIs(entry["fiducials_head_from_sphere"], True)
        self.assertIn("fiducials, head     mm, from the radius of the sphere alone\n",
                      self.succeed("info", path).out)

    def test_what_a_file_does_not_give_is_null_or_a_dash(self):
        path = self.write("s.dip", dipole_file([(1, 2, 3, 7, "a")], head=""))
        entry, = self.info(path)
        for key in ("version", "patient", "mri_file", "sphere", "fiducials_mri_voxels", "fiducials_head_mm"):
            self.assertIsNone(entry[key], key)
        self.assertIs(entry["meg_only"], False)
        self.assertEqual([m["text"] for m in entry["messages"]],
                         ["Can't set CTF dipole fiducial points without MEG sphere",
                          "Total imported dipoles:1 (0-1)"])
        out = self.succeed("info", path).out
        for name in ("version", "patient", "MRI file", "head model", "sphere", "fiducials, MRI",
                     "fiducials, head"):
            self.assertIn("\n  %-20s-\n" % name, out)

    def test_header_texts_are_shown_without_the_keywords_remains(self):
        for line in ("PATIENT: Anna B", "PATIENT:Anna B", "\tPATIENT:\tAnna B \t", "    PATIENT:  Anna B"):
            head = "File_Info\n{\n" + line + "\n}\n" + SPHERE
            entry, = self.info(self.write("p.dip", dipole_file([(1, 2, 3, 7, "a")], head)))
            self.assertEqual(entry["patient"], "Anna B", line)

    def test_control_characters_of_a_header_do_not_reach_the_terminal(self):
        head = "File_Info\n{\nPATIENT:A\x1b]0;title\x07B\n}\n" + SPHERE
        path = self.write("p.dip", dipole_file([(1, 2, 3, 7, "a")], head))
        out = self.succeed("info", path).out
        self.assertNotIn("\x1b", out)
        self.assertIn("  patient             A\\u001b]0;title\\u0007B\n", out)


if __name__ == "__main__":
    unittest.main()
