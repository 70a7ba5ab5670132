"""`dipole list` gives every number of a file, in the head frame's axes and units, in every output form."""

import csv
import io
import json
import os
import subprocess
import sys
import unittest

from support import (EXAMPLES, TOOL, ToolTest, dipole_file, dipoles_of, example, expected_dipoles, moving_file,
                     single)


class Values(ToolTest):
    def assert_same(self, listed, expected):
        self.assertEqual(len(listed), len(expected))
        for have, want in zip(listed, expected):
            self.assertEqual(set(have), set(want))
            for key, value in want.items():
                if isinstance(value, list):
                    self.assertEqual([single(v) for v in have[key]], value, (key, want["number"]))
                elif isinstance(value, float) and key != "fit_error_percent":
                    self.assertEqual(single(have[key]), value, (key, want["number"]))
                elif isinstance(value, float):
                    self.assertEqual(single(have[key]), single(value), (key, want["number"]))
                else:
                    self.assertEqual(have[key], value, (key, want["number"]))

    def test_json_holds_what_the_file_says(self):
        for name in ("auditory.dip", "spikes.dip"):
            result = self.succeed("list", "--json", example(name))
            listed = json.loads(result.out)
            self.assertEqual(listed["files"], [example(name)])
            self.assertEqual(listed["moment_unit"], "nAm")
            self.assert_same(dipoles_of(result.out), expected_dipoles(example(name)))

    def test_the_left_auditory_dipole_is_left(self):
        dipoles = dipoles_of(self.succeed("list", "--json", example("auditory.dip")).out)
        self.assertEqual(dipoles[0]["position_mm"], [52.0, 58.0, 10.0])
        self.assertEqual(dipoles[1]["position_mm"], [-51.0, 56.0, 13.0])
        self.assertEqual(dipoles[0]["latency_ms"], single(96.2))

    def test_csv_holds_the_same_values_as_json(self):
        dipoles = dipoles_of(self.succeed("list", "--json", example("spikes.dip")).out)
        rows = list(csv.DictReader(io.StringIO(self.succeed("list", "--csv", example("spikes.dip")).out)))
        self.assertEqual(len(rows), 120)
        for row, dipole in zip(rows, dipoles):
            self.assertEqual([float(row[k]) for k in ("x_left_mm", "y_up_mm", "z_front_mm")],
                             dipole["position_mm"])
            self.assertEqual([float(row["orientation_" + k]) for k in ("x_left", "y_up", "z_front")],
                             dipole["orientation"])
            self.assertEqual(float(row["latency_ms"]), dipole["latency_ms"])
            self.assertEqual(float(row["moment_nAm"]), dipole["moment"])
            self.assertEqual(float(row["fit_error_percent"]), dipole["fit_error_percent"])
            self.assertEqual((int(row["number"]), int(row["id"]), row["label"]),
                             (dipole["number"], dipole["id"], dipole["label"]))
            self.assertEqual(row["shown_on_slices"], "yes" if dipole["shown_on_slices"] else "no")

    def test_list_and_convert_write_the_same(self):
        for name in ("spikes.dip", "auditory.dip"):
            for form in ("csv", "json"):
                self.succeed("convert", "--force", example(name), "-o", self.path("o." + form))
                with open(self.path("o." + form), "rb") as file:
                    self.assertEqual(self.succeed("list", "--" + form, example(name)).stdout, file.read())

    def test_the_table_is_aligned_and_rounded(self):
        lines = self.succeed("list", example("auditory.dip")).out.split("\n")
        self.assertEqual(lines, [
            "No Id Label        x mm y mm z mm    ox    oy    oz  nAm   ms Err % Slices",
            " 1  1 N100m_left   52.0 58.0 10.0  0.12 -0.93 -0.34 27.3 96.2   4.7    yes",
            " 2  1 N100m_right -51.0 56.0 13.0 -0.09 -0.95 -0.29 33.8 92.4   3.9    yes",
            ""])

    def test_the_table_fits_a_terminal_and_has_the_columns_of_a_file_in_their_order(self):
        lines = self.succeed("list", example("spikes.dip")).out.split("\n")
        self.assertLess(max(map(len, lines)), 80)
        rows = list(csv.DictReader(io.StringIO(self.succeed("list", "--csv", example("spikes.dip")).out)))
        shown = ("number", "id", "label", "x_left_mm", "y_up_mm", "z_front_mm", "orientation_x_left",
                 "orientation_y_up", "orientation_z_front", "moment_nAm", "latency_ms", "fit_error_percent",
                 "shown_on_slices")
        self.assertEqual([name for name in rows[0] if name in shown], list(shown))
        for line, row in zip(lines[1:], rows):
            for cell, name in zip(line.split(), shown, strict=True):
                if "." in cell:
                    self.assertAlmostEqual(float(cell), float(row[name]), delta=0.051)
                else:
                    self.assertEqual(cell, row[name])

    def test_the_table_has_no_minus_zero(self):
        path = self.write("z.dip", dipole_file([("-0.0001", "-0.002", 3, 7, "a")]))
        self.assertIn(" 0.0 30.0  0.0 ", self.succeed("list", path).out)

    def test_without_nam_in_the_header_the_moment_has_no_unit(self):
        path = self.write("a.dip", dipole_file([(1, 2, 3, 7, "a")]).replace("Mom(nAm)", "Mom"))
        self.assertIn("\nNo", "\n" + self.succeed("list", path).out)
        self.assertNotIn("nAm", self.succeed("list", path).out)
        self.assertIn(",moment,", self.succeed("list", "--csv", path).out)
        self.assertIsNone(json.loads(self.succeed("list", "--json", path).out)["moment_unit"])

    def test_shape_codes_tell_what_slices_show(self):
        rows = [(1, 2, 3, 7, "a")] * 5
        flags = "".join("%d: 0 %d 1 1 1\n" % (code + 1, code) for code in range(5))
        path = self.write("f.dip", dipole_file(rows) + "Dipole_Flags\n{\n" + flags + "}\n")
        dipoles = dipoles_of(self.succeed("list", "--json", path).out)
        self.assertEqual([d["shown_on_slices"] for d in dipoles], [True, False, False, True, False])

    def test_several_files_come_in_one_list_in_their_order(self):
        files = [example("spikes.dip"), example("auditory.dip")]
        listed = json.loads(self.succeed("list", "--json", *files).out)
        self.assertEqual([d["number"] for d in listed["dipoles"]], list(range(1, 123)))
        self.assertEqual([d["label"] for d in listed["dipoles"][119:]],
                         ["spike_120", "N100m_left", "N100m_right"])

    def test_moving_dipoles_with_seconds_and_centimetres(self):
        path = self.write("m.dip", moving_file([(0.1, 1.0, 2.0, 3.0), (0.1015, -1.0, -2.0, 4.5)]))
        dipoles = dipoles_of(self.succeed("list", "--yes", "--json", path).out)
        self.assertEqual([d["position_mm"] for d in dipoles], [[20, 30, 10], [-20, 45, -10]])
        self.assertEqual([d["latency_ms"] for d in dipoles], [100, 101.5])
        self.assertEqual([d["label"] for d in dipoles], ["m1", "m2"])
        self.assertEqual([d["fit_error_percent"] for d in dipoles], [5.5, 5.5])

    def test_what_is_no_number_is_told(self):
        path = self.write("n.dip", dipole_file([("nan", 2, 3, "inf", "a")]))
        dipole = dipoles_of(self.end_with(1, "list", "--json", path).out)[0]
        self.assertEqual(dipole["position_mm"], [20, 30, "nan"])
        self.assertEqual(dipole["moment"], "inf")
        self.assertIn(",nan,", self.end_with(1, "list", "--csv", path).out)
        self.assertIn("inf", self.end_with(1, "list", path).out)


class Texts(ToolTest):
    def test_labels_are_utf8(self):
        path = self.write("u.dip", dipole_file([(1, 2, 3, 7, "Höhe_µ"), (1, 2, 3, 7, "b")]))
        listed = json.loads(self.succeed("list", "--json", path).out)
        self.assertEqual(listed["dipoles"][0]["label"], "Höhe_µ")
        lines = self.succeed("list", path).out.split("\n")
        self.assertEqual([line[:line.index("20.0")] for line in lines[1:3]], [" 1  0 Höhe_µ ", " 2  0 b      "])

    def test_commas_and_quotes_are_quoted_in_csv(self):
        path = self.write("q.dip", dipole_file([(1, 2, 3, 7, 'say"a,b"')]))
        out = self.succeed("list", "--csv", path).out
        self.assertIn(',"say""a,b""",', out)
        self.assertEqual(list(csv.DictReader(io.StringIO(out)))[0]["label"], 'say"a,b"')

    def test_control_characters_do_not_reach_the_terminal(self):
        path = self.write("c.dip", dipole_file([(1, 2, 3, 7, "a\x1b[31mb\x07\x7f")]))
        for form in ([], ["--json"]):
            out = self.succeed("list", *form, path).stdout
            self.assertEqual([byte for byte in out if (byte < 32 and byte != 10) or byte == 127], [], form)
            self.assertIn(b"a\\u001b[31mb\\u0007\\u007f", out)
        listed = json.loads(self.succeed("list", "--json", path).out)
        self.assertEqual(listed["dipoles"][0]["label"], "a\x1b[31mb\x07\x7f")

    def test_upper_control_characters_do_not_either(self):
        text = dipole_file([(1, 2, 3, 7, "x")]).encode("ascii")
        path = self.write("c1.dip", text.replace(b" x\n", b" a\x9d31m\n"))
        for form in ([], ["--json"]):
            out = self.succeed("list", *form, path).out
            self.assertNotIn("\u009d", out)
            self.assertIn("a\\u009d31m", out)

    def test_csv_on_a_terminal_has_no_control_characters_and_elsewhere_all(self):
        path = self.write("c.dip", dipole_file([(1, 2, 3, 7, "a\x1b[31mb")]))
        self.assertIn(b",a\x1b[31mb,", self.succeed("list", "--csv", path).stdout)
        main, side = os.openpty()
        try:
            subprocess.run([TOOL, "list", "--csv", path], stdout=side, stderr=subprocess.DEVNULL,
                           stdin=subprocess.DEVNULL, check=True)
            shown = os.read(main, 65536)
        finally:
            os.close(main)
            os.close(side)
        self.assertIn(b",a\\u001b[31mb,", shown)
        self.assertNotIn(b"\x1b", shown)


class Locales(ToolTest):
    def test_a_locale_with_decimal_commas_changes_nothing(self):
        made = subprocess.run(["localedef", "-i", "de_DE", "-f", "UTF-8", self.path("de_DE.UTF-8")],
                              capture_output=True)
        if made.returncode != 0:
            self.skipTest("this machine cannot make a German locale")
        environment = dict(os.environ, LOCPATH=self.folder, LC_ALL="de_DE.UTF-8")
        german = subprocess.run(["python3", "-c", "import locale; locale.setlocale(locale.LC_ALL, '');"
                                 "print(locale.localeconv()['decimal_point'])"],
                                env=environment, capture_output=True, text=True)
        self.assertEqual(german.stdout, ",\n")
        for form in ([], ["--csv"], ["--json"]):
            plain = self.succeed("list", *form, example("spikes.dip"), env=dict(os.environ, LC_ALL="C.UTF-8"))
            local = self.succeed("list", *form, example("spikes.dip"), env=environment)
            self.assertEqual(local.out, plain.out)


class Large(ToolTest):
    def make(self, rows):
        subprocess.run([sys.executable, os.path.join(EXAMPLES, "make_examples.py"), self.folder,
                        "--rows", str(rows)], check=True, capture_output=True)
        return self.path("large.dip")

    def test_30000_dipoles_arrive(self):
        path = self.make(30000)
        result = self.succeed("list", "--json", path)
        self.assertEqual(result.err, "dipole: %s: Total imported dipoles:30000 (0-30000)\n" % path)
        dipoles = dipoles_of(result.out)
        expected = expected_dipoles(path)
        self.assertEqual(len(dipoles), 30000)
        for index in (0, 1, 14999, 29999):
            position = [single(value) for value in dipoles[index]["position_mm"]]
            self.assertEqual(position, expected[index]["position_mm"])
            self.assertEqual(dipoles[index]["label"], "s%d" % (index + 1))

    def test_the_30001st_is_reported_missing(self):
        path = self.make(30001)
        result = self.end_with(1, "list", "--csv", path)
        self.assertIn("dipole: %s: No dipole space\n" % path, result.err)
        self.assertIn("wrong (lost-rows): 1 row of dipoles did not come: a set has room for 30000 dipoles.\n",
                      result.err)
        self.assertEqual(result.out.count("\n"), 30001)


if __name__ == "__main__":
    unittest.main()
