# SPDX-License-Identifier: GPL-3.0-or-later
"""Files that are read: once, to their end and no further, and with every mistake in one run."""
import os
import subprocess

from support import SENSORS, SOURCE, TWO_SOCKET, Workbench, main

GUARD = "boards/guards/psu_count_fails.toml"  # one fault: the number of power supplies cannot be read


class Tests(Workbench):
    def mistakes(self, *words):
        """The lines of a run that must be refused, without what stands before each."""
        done = self.run_raw(*words)
        self.assertEqual((done.returncode, done.stdout), (2, b""), done.stderr)
        lines = done.stderr.decode().splitlines()
        for line in lines:
            self.assertTrue(line.startswith("oxa-sensors: "), line)
        return [line[len("oxa-sensors: "):] for line in lines]

    def from_pipe(self, board, *words):
        """A run whose board comes on standard input, which can be read once."""
        with open(os.path.join(SOURCE, board), "rb") as file:
            text = file.read()
        return subprocess.run([SENSORS, *words, "--board", "/dev/stdin"], input=text, capture_output=True, cwd=SOURCE,
                              timeout=60, check=False)

    def test_a_device_without_end_is_refused_by_every_reader(self):
        base = "boards/base_48.toml"
        for words in (("list", "--board", "/dev/zero"), ("scenario", "/dev/zero"), ("diff", "/dev/zero", base),
                      ("add", "--board", base, "--description", "/dev/zero"), ("decode-sel", "/dev/zero"),
                      ("event", "addDiskSEL", "1", "2", "3", "4", "--board", "/dev/zero")):
            with self.subTest(words):
                told = self.mistakes(*words)
                self.assertEqual(len(told), 1, told)
                self.assertIn("/dev/zero: ", told[0])
                self.assertIn("more than 16 MB", told[0])

    def test_a_file_of_exactly_16_megabytes_is_read(self):
        head = "[cpus]\ncount = 2\n#"
        path = self.board(head + "x" * ((16 << 20) - len(head)))
        self.assertTrue(self.out("list", "--board", path))
        path = self.board(head + "x" * ((16 << 20) - len(head) + 1))
        self.assertIn("has more than 16 MB", self.refused(2, "list", "--board", path))

    def test_a_board_from_a_pipe_keeps_its_faults(self):
        done = self.from_pipe(GUARD, "list")
        self.assertEqual(done.returncode, 1)
        self.assertIn(b"get pem max count failed", done.stderr)

    def test_a_board_from_a_pipe_is_the_same_for_every_set_of_a_command(self):
        told = self.from_pipe(TWO_SOCKET, "list", "--profile", "all", "--json")
        self.assertEqual(told.returncode, 0, told.stderr)
        named = self.out("list", "--profile", "all", "--json", "--board", TWO_SOCKET)
        self.assertEqual(told.stdout.decode().replace("/dev/stdin", TWO_SOCKET), named)

    def test_every_mistake_of_a_board_is_told_in_one_run(self):
        path = self.board("[cpus]\ncount = 256\ncuont = 1\n[psus]\ncount = \"two\"\n[[gpu]]\nslot = -1\n")
        self.assertEqual(self.mistakes("list", "--board", path), [
            f"{path}:2:9: 'count' in [cpus] is 256; it must be a number 0 to 255",
            f"{path}:3:1: unknown key 'cuont' in [cpus]; did you mean 'count'?",
            f"{path}:5:9: 'count' in [psus] is the text \"two\"; it must be a number 0 to 255",
            f"{path}:7:8: 'slot' in [[gpu]] is -1; it must be a number 0 to 255"])

    def test_every_mistake_of_a_description_is_told_in_one_run(self):
        path = self.board('class = "fam"\nslot = 256\nuc = true\n')
        told = self.mistakes("add", "--board", TWO_SOCKET, "--description", path)
        self.assertEqual([line.split(": ")[0] for line in told], [f"{path}:1:9", f"{path}:2:8", f"{path}:3:6"])

    def test_every_mistake_of_a_story_and_of_its_board_is_told_in_one_run(self):
        board = self.board("[cpus]\ncuont = 1\n", "board.toml")
        story = self.board('board = "board.toml"\nprofil = 3\n[[step]]\nad = 1\n[[step]]\nrestart = false\n'
                           '[[step]]\nrestart = true\nrepeat = 0\n', "story.toml")
        places = [line.split(": ")[0] for line in self.mistakes("scenario", story)]
        self.assertEqual(places, [f"{board}:2:1", f"{story}:2:1", f"{story}:4:1", f"{story}:6:11", f"{story}:9:10"])

    def test_what_follows_from_a_mistake_is_not_told(self):
        """The second step is right; only the board that it comes to is not known."""
        self.board("[fans]\ncount = 3\nsilk = [1, 2, 3]\n", "board.toml")
        story = self.board('board = "board.toml"\n[[step]]\nchange = { fans = { silk = [1], cuont = 1 } }\n'
                           '[[step]]\nchange = { fans = { count = 1 } }\n', "story.toml")
        told = self.mistakes("scenario", story)
        self.assertEqual(len(told), 1, told)
        self.assertTrue(told[0].startswith(f"{story}:3:"), told)

    def test_a_text_with_a_semicolon_is_told_whole(self):
        self.assertEqual(self.mistakes("add", "--board", TWO_SOCKET, "--class", "fan", "--bitmap", "a; b"),
                         ['--bitmap a; b: it must be a number 0 to 65535 or thresholds such as "uc,unr"'])


if __name__ == "__main__":
    main()
