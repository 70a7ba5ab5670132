"""The module's questions: asked at a terminal, answered by --yes and --no, and no when nobody can answer.
What was asked and answered is always said, and lost dipoles are reported."""

import json
import unittest

from support import ToolTest, dipole_file, example, moving_file, run, terminal

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
        result = self.succeed("list", "--yes", "--json", example("moving.dip"))
        self.assertEqual(result.err.count(MOVING + " Answered: yes (--yes)"), 2)
        self.assertIn("warning: %s: of its 2 moving-dipole sections only the last accepted one remains"
                      % example("moving.dip"), result.err)
        self.assertNotIn("dipole rows were in the files", result.err)
        dipoles = json.loads(result.out)["dipoles"]
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
        self.assertIn("3 dipole rows were in the files for this import, but 0 dipoles arrived\n", result.err)

    def test_a_row_that_cannot_be_read_is_a_reported_loss(self):
        path = self.write("r.dip", dipole_file([(1, "two", 3, 7, "a"), (1, 2, 3, 7, "b")]))
        result = self.end_with(1, "list", "--csv", path)
        self.assertIn("2 dipole rows were in the files for this import, but 1 dipoles arrived\n", result.err)
        self.assertEqual(result.out.count("\n"), 2)


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
