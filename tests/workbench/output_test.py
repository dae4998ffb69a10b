# SPDX-License-Identifier: GPL-3.0-or-later
"""Where -o puts a result: "-" is standard output in every command that has it, and no file."""
import os
import re
import subprocess

from support import BASE, SENSORS, SOURCE, Workbench, main

BOARD = os.path.join(SOURCE, BASE)
HEAD = "Name,Unit,LNR,LC,LNC,UNC,UC,UNR\n"


class Output(Workbench):
    def setUp(self):
        super().setUp()
        os.mkdir(self.path("boards"))
        os.symlink(BOARD, self.path("boards/b.toml"))
        self.write(HEAD + "INPUT_TEMP,°C,,,,40,43,47\n")

    def write(self, text):
        with open(self.path("limits.csv"), "w", encoding="utf-8") as file:
            file.write(text)

    COMMANDS = {
        "export": (), "report": (), "lock": ("--boards", "boards"), "sheet export": (), "sheet image": ("limits.csv",),
        "board-from": (os.path.join(SOURCE, "tests", "capture", "machine.cap"),)}

    def run_here(self, *words):
        """In a folder of its own, where a file named "-" would be seen."""
        done = subprocess.run([SENSORS, *words], capture_output=True, cwd=self.folder.name, timeout=60, check=False)
        self.assertFalse(os.path.exists(self.path("-")), words)
        return done

    def words(self, command):
        machine = () if command in ("lock", "board-from") else ("--board", BOARD)
        return (*command.split(), *self.COMMANDS[command], *machine)

    def test_standard_output_gets_what_a_file_gets_and_nothing_else(self):
        for command in self.COMMANDS:
            with self.subTest(command):
                words = self.words(command)
                self.assertEqual(self.run_here(*words, "-o", "result").returncode, 0)
                done = self.run_here(*words, "-o", "-")
                self.assertEqual((done.returncode, done.stderr), (0, b""))
                with open(self.path("result"), "rb") as file:
                    self.assertEqual(done.stdout, file.read())

    def test_every_command_with_an_output_is_tested_here_and_says_so_in_its_help(self):
        sections = re.split(r"^\.SS (.*)$", self.out("generate", "man"), flags=re.M)
        told = {name.replace("\\", ""): text for name, text in zip(sections[1::2], sections[2::2])
                if r"\-\-output" in re.sub(r"^Example:\n.*", "", text, flags=re.M)}
        self.assertEqual(set(told), set(self.COMMANDS))
        for command in told:
            self.assertIn("; -: standard output", self.out(*command.split(), "--help"), command)

    def test_json_that_would_tell_of_a_file_contradicts_it(self):
        for command in ("report", "lock", "sheet image"):
            done = self.run_here(*self.words(command), "-o", "-", "--json")
            self.assertEqual((done.returncode, done.stderr),
                             (2, b"oxa-sensors: --json contradicts -o -: both go to standard output\n"), command)

    def test_json_takes_the_place_of_a_result_that_would_be_printed(self):
        for command in ("export", "sheet export", "board-from"):
            words = self.words(command)
            self.assertEqual(self.run_here(*words, "-o", "-", "--json").stdout, self.run_here(*words, "--json").stdout)

    def test_bytes_do_not_go_to_a_terminal(self):
        ours, theirs = os.openpty()
        for words in (("export", "--board", BOARD), ("sheet", "image", "limits.csv", "--board", BOARD, "-o", "-")):
            done = subprocess.run([SENSORS, *words], stdout=theirs, stderr=subprocess.PIPE, cwd=self.folder.name,
                                  timeout=60, check=False)
            self.assertEqual(done.returncode, 2, words)
            self.assertIn(b"no text for a terminal; give -o FILE or a pipe", done.stderr)
        os.close(theirs)
        os.close(ours)

    def test_what_an_image_keeps_is_told_beside_it(self):
        self.write(HEAD + "INPUT_TEMP,°C,,,,40,43,\n")
        done = self.run_here(*self.words("sheet image"), "-o", "-")
        self.assertEqual((done.returncode, len(done.stdout)), (0, 14344))
        self.assertEqual(done.stderr, b"oxa-sensors: note: empty in the sheet, kept from the record: INPUT_TEMP\n")


if __name__ == "__main__":
    main()
