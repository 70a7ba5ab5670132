"""The module's questions: asked at a terminal, answered by --yes and --no, and no when nobody can answer.
What was asked and answered is always said, and lost dipoles are reported."""

import json
import unittest

from support import SPHERE, ToolTest, dipole_file, dipoles_of, example, moving_file, run, terminal

MOVING = "This is moving dipoles, would you like to import?"


class WithoutTerminal(ToolTest):
    def test_no_is_the_answer_by_default(self):
        result = self.end_with(1, "list", example("moving.dip"))
        self.assertEqual(result.err.count(MOVING + " Answered: no (--yes accepts)"), 2)
        self.assertIn("Total imported dipoles:0 (0-0)", result.err)
        self.assertEqual(result.out.count("\n"), 1)

    def test_no_on_request(self):
        result = self.end_with(1, "list", "--no", example("moving.dip"))
        self.assertEqual(result.err.count(MOVING + " Answered: no (--no)"), 2)

    def test_yes_on_request_and_the_replaced_section_is_reported(self):
        result = self.end_with(1, "list", "--yes", "--json", example("moving.dip"))
        self.assertEqual(result.err.count(MOVING + " Answered: yes (--yes)"), 2)
        self.assertIn("warning: %s:35: wrong (sections): The last section of moving dipoles that was accepted "
                      "replaced 41 dipoles of sections before it.\n" % example("moving.dip"), result.err)
        self.assertEqual(result.err.count("warning"), 2)
        self.assertEqual(self.succeed("list", "--yes", "--repair=all", "--json", example("moving.dip")).err.count(
            "warning"), 1)  # the answer counts as accepted
        dipoles = dipoles_of(result.out)
        self.assertEqual(len(dipoles), 41)
        self.assertTrue(all(d["position_mm"][0] < 0 for d in dipoles))  # the right-hand section

    def test_one_moving_section_needs_no_warning(self):
        path = self.write("m.dip", moving_file([(0.1, 1, 2, 3)]))
        self.assertNotIn("warning", self.succeed("list", "--yes", path).err)

    def test_moving_dipoles_replace_static_ones_when_accepted(self):
        path = self.write("b.dip", dipole_file([(1, 2, 3, 7, "a"), (1, 2, 3, 7, "b")])
                          + moving_file([(0.1, 1, 2, 3)]).split("}\n", 1)[1])
        self.assertEqual(self.succeed("list", "--yes", "--csv", path).out.count("\n"), 2)
        declined = self.succeed("list", "--no", "--csv", path)
        self.assertEqual(declined.out.count("\n"), 3)
        self.assertNotIn("warning", declined.err)

    def test_far_locations_are_asked_about_and_declined_rows_are_no_loss(self):
        path = self.write("f.dip", dipole_file([(250, 2, 3, 7, "far"), (1, 2, 3, 7, "near")]))
        question = ("It seems the dipole location is wrong (2500.000 x 20.000 x 30.000), "
                    "do you like to import?")
        declined = self.succeed("list", "--csv", path)
        self.assertIn(question + " Answered: no", declined.err)
        self.assertNotIn("far", declined.out)
        self.assertNotIn("warning", declined.err)
        accepted = self.succeed("list", "--yes", "--csv", path)
        self.assertIn(question + " Answered: yes (--yes)", accepted.err)
        self.assertIn("far", accepted.out)

    def test_info_keeps_the_answers(self):
        entry, = json.loads(self.end_with(1, "info", "--json", example("moving.dip")).out)
        self.assertEqual(entry["messages"][0], {"text": MOVING, "answer": "no"})

    def test_yes_and_no_together_are_refused(self):
        self.end_with(2, "list", "--yes", "--no", example("moving.dip"))

    def test_a_label_that_closes_its_section_early_is_a_reported_loss(self):
        path = self.write("l.dip", dipole_file([(1, 2, 3, 7, "a}"), (1, 2, 3, 7, "b"), (1, 2, 3, 7, "c")]))
        result = self.end_with(1, "list", "--csv", path)
        self.assertIn("wrong (lost-rows): 1 row of dipoles did not come: they hold a brace", result.err)
        self.assertIn("wrong (lost-rows): 2 rows of dipoles did not come: they stand behind the end", result.err)

    def test_a_row_that_cannot_be_read_is_a_reported_loss(self):
        path = self.write("r.dip", dipole_file([(1, "two", 3, 7, "a"), (1, 2, 3, 7, "b")]))
        result = self.end_with(1, "list", "--csv", path)
        self.assertIn("wrong (lost-rows): 1 row of dipoles did not come", result.err)
        self.assertEqual(result.out.count("\n"), 2)


class SectionEnds(ToolTest):
    """The importer passes over a line with "{" or "//" in a section; else any line with "}" ends it."""

    def dipoles(self, end, rows=2, behind=""):
        row = "%d: 1 2 3 0 0 1 7 a\n"
        text = SPHERE + "Dipoles\n{\n// xp (cm)\n" + "".join(row % number for number in range(1, rows + 1))
        return self.write("e.dip", text + end + behind)

    FLAGS = "Dipole_Flags\n{\n1: 0 0 1 1 1\n2: 1 1 1 1 1\n}\n"

    def test_rows_of_other_sections_are_no_dipoles(self):
        result = self.succeed("list", "--csv", self.dipoles("}\n", behind=self.FLAGS))
        self.assertNotIn("warning", result.err)
        self.assertEqual(result.out.count("\n"), 3)

    def test_any_line_with_a_brace_ends_a_section(self):
        for end in ("\t}\n", "} \n", "end }\n", "}}\n", "} Dipoles\n", "} / end\n"):
            result = self.succeed("list", "--csv", self.dipoles(end, behind=self.FLAGS))
            self.assertNotIn("warning", result.err, end)

    def test_an_end_behind_a_comment_or_a_brace_is_none_and_what_it_swallows_is_reported(self):
        for end in ("} // end\n", "// }\n", "{ }\n"):
            path = self.dipoles(end, behind=self.FLAGS)
            result = self.end_with(1, "list", "--csv", path)
            self.assertIn("warning: %s:14: wrong (sections): The section before Dipole_Flags has no end, so "
                          "Dipole_Flags was not read.\n" % path, result.err)
            self.assertNotIn("lost-rows", result.err)
            self.assertEqual(result.out.count("\n"), 3)

    def test_moving_dipoles_that_arrive_as_static_ones_are_reported(self):
        path = self.dipoles("} // end\n", behind=moving_file([(0.1, 1, 2, 3)])[len(SPHERE):])
        result = self.end_with(1, "list", "--yes", "--csv", path)
        self.assertIn("The section before Fit_Results has no end", result.err)
        self.assertIn("wrong (sections): 1 dipole came of rows that stand behind the beginning of another",
                      result.err)

    def test_a_missing_end_is_reported(self):
        path = self.dipoles("")
        result = self.end_with(1, "list", "--csv", path)
        self.assertIn("warning: %s: wrong (sections): The file ends inside of a section" % path, result.err)
        self.assertEqual(result.out.count("\n"), 3)

    def test_an_end_without_a_line_end_is_an_end_but_a_row_without_one_is_lost(self):
        self.assertNotIn("warning", self.succeed("list", "--csv", self.dipoles("}")).err)
        result = self.end_with(1, "list", "--csv", self.dipoles("3: 1 2 3 0 0 1 7 a"))
        self.assertIn(":13: wrong (lost-rows): 1 row of dipoles did not come: the last line of the file",
                      result.err)

    def test_labels_with_marks_that_hide_their_row_are_reported(self):
        for label in ("a//b", "{a"):
            path = self.write("l.dip", dipole_file([(1, 2, 3, 7, label), (1, 2, 3, 7, "b")]))
            result = self.end_with(1, "list", "--csv", path)
            self.assertIn("wrong (lost-rows): 1 row of dipoles did not come: they hold a brace", result.err)


class DeclinedRows(ToolTest):
    FAR, NEAR, BROKEN = (250, 2, 3, 7, "far"), (1, 2, 3, 7, "near"), (1, "two", 3, 7, "broken")

    def file_with(self, rows, moving, name="d.dip"):
        return self.write(name, dipole_file(rows) + moving_file(moving)[len(SPHERE):])

    def test_declined_rows_that_moving_dipoles_replaced_hide_no_loss(self):
        path = self.file_with([self.FAR, self.NEAR], [(0.1, 1, 2, 3), (0.2, 1, "two", 3)])
        code, shown, output = terminal(["list", "--json", path], [b"n\n", b"y\n"])
        self.assertEqual((code, len(json.loads(output)["dipoles"])), (1, 1), shown)
        self.assertIn("wrong (lost-rows): 1 row of dipoles did not come", shown)

    def test_declined_rows_that_moving_dipoles_replaced_are_no_loss(self):
        path = self.file_with([self.FAR, self.NEAR], [(0.1, 1, 2, 3), (0.2, 1, 2, 3)])
        code, shown, output = terminal(["list", "--json", path], [b"n\n", b"y\n"])
        self.assertEqual((code, len(json.loads(output)["dipoles"])), (0, 2), shown)
        self.assertNotIn("lost-rows", shown)

    def test_declined_rows_count_when_the_moving_dipoles_are_declined_too(self):
        path = self.file_with([self.FAR, self.NEAR], [(0.1, 1, 2, 3)])
        self.assertNotIn("warning", self.succeed("list", "--no", "--csv", path).err)
        broken = self.file_with([self.FAR, self.NEAR, self.BROKEN], [(0.1, 1, 2, 3)])
        result = self.end_with(1, "list", "--no", "--csv", broken)
        self.assertIn("wrong (lost-rows): 1 row of dipoles did not come", result.err)

    def test_moving_dipoles_that_were_never_asked_about_are_reported(self):
        silent = self.file_with([self.FAR], [(0.1, 1, 2, 3)], "silent.dip")  # empty behind the first section
        near = self.write("near.dip", dipole_file([self.NEAR]))
        result = self.end_with(1, "list", "--no", "--csv", silent, near)
        self.assertIn("wrong (sections): The section Fit_Results was not read, because a section of dipoles "
                      "before it has none.\n", result.err)


class AtTerminal(ToolTest):
    def moving(self):
        return self.write("m.dip", moving_file([(0.1, 1, 2, 3)], [(0.2, 1, 2, 3), (0.3, 1, 2, 3)]))

    def rows(self, output):
        return len(json.loads(output)["dipoles"])

    def test_the_question_is_asked_and_yes_counts(self):
        code, shown, output = terminal(["list", "--json", self.moving()], [b"y\n", b"yes\n"])
        self.assertEqual((code, self.rows(output)), (0, 2), shown)
        self.assertEqual(shown.count(MOVING + " [y/N] "), 2)

    def test_yes_then_no_keeps_the_first_section(self):
        code, shown, output = terminal(["list", "--json", self.moving()], [b"y\n", b"n\n"])
        self.assertEqual((code, self.rows(output)), (0, 1), shown)

    def test_return_and_the_end_of_input_mean_no(self):
        code, shown, output = terminal(["list", "--json", self.moving()], [b"\n", b"\x04"])
        self.assertEqual((code, self.rows(output)), (1, 0), shown)
        self.assertEqual(shown.count("[y/N] "), 2)

    def test_another_answer_is_asked_again(self):
        code, shown, output = terminal(["list", "--json", self.moving()], [b"maybe\n", b"y\n", b"n\n"])
        self.assertEqual((code, self.rows(output)), (0, 1), shown)
        self.assertEqual(shown.count(MOVING + " [y/N] "), 3)

    def test_an_answer_on_the_command_line_is_not_asked_for(self):
        code, shown, output = terminal(["list", "--yes", "--json", self.moving()], [])
        self.assertEqual((code, self.rows(output)), (0, 2), shown)
        self.assertNotIn("[y/N]", shown)

    def test_standard_output_on_a_pipe_does_not_stop_the_question(self):
        code, shown, output = terminal(["info", self.moving()], [b"y\n", b"n\n"])
        self.assertEqual(code, 0, shown)
        self.assertIn("dipoles             1,", output)
        self.assertNotIn("dipoles             1,", shown)

    def test_a_piped_standard_input_is_not_read_for_answers(self):
        result = run("list", "--csv", self.moving(), stdin=None, input=b"y\ny\n")
        self.assertEqual(result.returncode, 1)
        self.assertIn(b"Answered: no", result.stderr)


if __name__ == "__main__":
    unittest.main()
