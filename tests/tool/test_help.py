"""What the program says of itself: help within 80 columns, of which every example does something; a manual page and
completions with all that the help has."""

import glob
import os
import re
import shutil
import subprocess
import unittest

from support import EXAMPLES, TOOL, ToolTest, program_with_page, run

HEAD = "/usr/share/mricron/templates/ch2.nii.gz"
MANUAL = os.environ.get("DIPOLE_MANUAL", "")


def help_of(*command):
    return run(*command, "--help").stdout.decode("utf-8")


def commands():
    """The words in front of the lines below "Commands:"."""
    lines = help_of().split("\n")
    at = lines.index("Commands:") + 1
    return [line.split()[0] for line in lines[at:lines.index("", at)] if line[2] != " "]


def options_of(command):
    """Every name of an option in the help of a command."""
    lines = help_of(command).split("\n")
    at = lines.index("Options:") + 1
    headings = [re.split(r"\s{2,}", line[2:])[0] for line in lines[at:lines.index("", at)] if line.startswith("  -")]
    return [word.rstrip(",") for heading in headings for word in heading.split() if word.startswith("-")]


def examples_of(command):
    """The commands below "Examples:", with the lines that end in a backslash joined."""
    text = help_of(command).split("Examples:\n")[1].replace("\\\n", " ")
    return [line.strip() for line in text.split("\n") if line.strip()]


class Help(ToolTest):
    def test_there_are_commands(self):
        self.assertGreaterEqual(set(commands()), {"info", "list", "draw", "convert", "sort", "register"})

    def test_no_line_is_wider_than_a_terminal(self):
        for command in ([], *([name] for name in commands())):
            for line in help_of(*command).split("\n"):
                self.assertLess(len(line), 80, line)
                self.assertEqual(line, line.rstrip())

    def test_the_choices_of_an_option_are_what_it_takes(self):
        for command, option, word in (("convert", "--to", "tsv"), ("list", "--from", "4d"), ("sort", "--by", "label"),
                                      ("draw", "--color-by", "moment"), ("draw", "--view", "bottom")):
            self.assertRegex(help_of(command), option + r" [\w|]*\b" + word + r"\b")

    def test_every_example_runs_as_it_stands_and_does_something(self):
        if not os.path.exists(HEAD):
            self.fail("the package mricron-data is missing")
        program_with_page(self.folder)
        environment = dict(os.environ, PATH=self.path("bin") + ":" + os.environ["PATH"])
        for command in commands():
            examples = examples_of(command)
            self.assertTrue(examples, command)
            for number, example in enumerate(examples):
                folder = self.path("%s_%d" % (command, number))
                os.mkdir(folder)
                for path in glob.glob(os.path.join(EXAMPLES, "*.*")):
                    shutil.copy(path, folder)
                os.symlink(HEAD, os.path.join(folder, "ch2.nii.gz"))
                before = set(os.listdir(folder))
                result = subprocess.run(["bash", "-c", example], cwd=folder, env=environment, timeout=120,
                                        stdin=subprocess.DEVNULL, capture_output=True)
                # What is wrong in a file of the examples is the result of a check.
                self.assertIn(result.returncode, (0, 1) if command == "check" else (0,), (example, result.stderr.decode()))
                made = set(os.listdir(folder)) - before
                self.assertTrue(result.stdout or made, example)
                for name in made:
                    self.assertGreater(os.path.getsize(os.path.join(folder, name)), 100, example)


class Manual(ToolTest):
    def setUp(self):
        super().setUp()
        if not MANUAL:
            self.fail("DIPOLE_MANUAL does not name the folder of the manual page")
        self.page = os.path.join(MANUAL, "dipole.1")

    def test_the_page_is_shown_without_a_warning(self):
        environment = dict(os.environ, MANWIDTH="80", MAN_KEEP_FORMATTING="", LC_ALL="C.UTF-8")
        result = subprocess.run(["man", "--warnings=w", "-E", "UTF-8", "-P", "cat", "-l", self.page], env=environment,
                                capture_output=True, timeout=60)
        self.assertEqual(result.stderr, b"")
        self.assertEqual(result.returncode, 0)
        text = re.sub(r".\x08", "", result.stdout.decode("utf-8"))
        self.assertIn("dipole convert [OPTIONS] FILE...", text)
        for heading in ("NAME", "SYNOPSIS", "DESCRIPTION", "OPTIONS", "COMMANDS"):
            self.assertRegex(text, r"(?m)^%s$" % heading)
        for command in commands():
            self.assertIn("   dipole %s " % command, text)
            for option in options_of(command):
                self.assertRegex(text, r"\s%s\b" % re.escape(option))
            for example in help_of(command).split("Examples:\n")[1].rstrip().split("\n"):
                self.assertIn(example.strip(), text)

    def test_another_reader_of_pages_finds_nothing_wrong(self):
        result = subprocess.run(["mandoc", "-T", "lint", "-W", "warning", self.page], capture_output=True, text=True,
                                timeout=60)
        found = [line for line in result.stdout.split("\n") if line and "missing date" not in line]
        self.assertEqual(found, [])

    def test_the_completions_are_good_scripts(self):
        for shell, name in (("bash", "dipole.bash"), ("zsh", "_dipole")):
            result = subprocess.run([shell, "-n", os.path.join(MANUAL, name)], capture_output=True, timeout=60)
            self.assertEqual((result.returncode, result.stderr), (0, b""))


class Completion(ToolTest):
    """Both shells are asked as a user asks them: by the tabulator, on a terminal."""

    def setUp(self):
        super().setUp()
        for name in ("spikes.dip", "own words.dip"):
            self.write(name, "")
        os.mkdir(self.path("fpath"))
        if MANUAL:
            shutil.copy(os.path.join(MANUAL, "_dipole"), self.path("fpath"))

    def typed(self, shell, keys):
        """What the command line holds after the keys."""
        import pty
        import select

        start = {"bash": ["bash", "--norc", "--noprofile", "-i"], "zsh": ["zsh", "-f", "-i"]}[shell]
        prepare = {"bash": "bind 'set enable-bracketed-paste off'; bind 'set show-all-if-ambiguous on'; "
                           "source '%s/dipole.bash'" % MANUAL,
                   "zsh": "fpath=(%s $fpath); autoload -U compinit; compinit -D -u; setopt no_beep; unsetopt prompt_cr; "
                          "unset zle_bracketed_paste" % self.path("fpath")}[shell]
        environment = dict(os.environ, TERM="dumb", PS1="", LC_ALL="C.UTF-8", HISTFILE="/dev/null", COLUMNS="200")
        main, side = pty.openpty()
        process = subprocess.Popen(start, stdin=side, stdout=side, stderr=side, cwd=self.folder, env=environment,
                                   start_new_session=True, close_fds=True)
        os.close(side)

        def read_until(word, wait):
            shown = b""
            while word not in shown and select.select([main], [], [], wait)[0]:
                try:
                    piece = os.read(main, 4096)
                except OSError:
                    break
                if not piece:
                    break
                shown += piece
            return shown

        try:
            os.write(main, (prepare + "; PS1=; echo re''ady\n").encode())
            self.assertIn(b"ready\r", read_until(b"ready\r", 20))
            # Ctrl-A and an echo in front show the line as the shell has it.
            os.write(main, keys.encode())
            read_until(b"\0", 1.5)
            os.write(main, b"\x01printf '<%s>' \x05; echo d''one\n")
            shown = read_until(b"done\r", 20).decode("utf-8")
        finally:
            process.kill()
            process.wait()
            os.close(main)
        return re.findall(r"<([^<>%]*)>", shown.split("d''one")[-1])

    def test_commands_options_words_and_files(self):
        for shell in ("bash", "zsh"):
            for keys, words in (("dipole conv\t", ["convert"]), ("dipole help reg\t", ["help", "register"]),
                                ("dipole sort --desc\t", ["sort", "--descending"]),
                                ("dipole sort --by lab\t", ["sort", "--by", "label"]),
                                ("dipole draw --color-by mom\t", ["draw", "--color-by", "moment"]),
                                ("dipole convert --to js\t", ["convert", "--to", "json"]),
                                ("dipole check --repair msi-p\t", ["check", "--repair", "msi-percent"]),
                                ("dipole info --accept outs\t", ["info", "--accept", "outside-head"]),
                                ("dipole list spi\t", ["list", "spikes.dip"]),
                                ("dipole info own\t", ["info", "own words.dip"]),
                                ("dipole draw --mri spi\t", ["draw", "--mri", "spikes.dip"])):
                self.assertEqual(self.typed(shell, keys), ["dipole", *words], (shell, keys))

    def test_every_command_and_every_option_is_offered(self):
        with open(os.path.join(MANUAL, "dipole.bash"), encoding="utf-8") as file:
            script = file.read()
        for command in commands():
            ask = ("COMP_WORDS=(dipole %s --); COMP_CWORD=2; _dipole; printf '%%s\\n' \"${COMPREPLY[@]}\"" % command)
            result = subprocess.run(["bash", "--norc", "-c", script + "\n" + ask], capture_output=True, text=True,
                                    timeout=60)
            offered = set(result.stdout.split())
            self.assertEqual(offered, {name for name in options_of(command) if name.startswith("--")}, command)


if __name__ == "__main__":
    unittest.main()
