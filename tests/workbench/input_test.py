# SPDX-License-Identifier: GPL-3.0-or-later
"""Files that are read: once, to their end and no further, and with every mistake in one run."""
import json
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

    def test_every_mistake_is_in_the_error_object(self):
        path = self.board("[cpus]\ncount = 256\n[psus]\ncount = 256\n")
        done = self.run_raw("list", "--board", path, "--json")
        told = [f"{path}:2:9: 'count' in [cpus] is 256; it must be a number 0 to 255",
                f"{path}:4:9: 'count' in [psus] is 256; it must be a number 0 to 255"]
        self.assertEqual(json.loads(done.stdout)["error"]["message"].splitlines(), told)
        self.assertEqual(done.stderr.decode().splitlines(), ["oxa-sensors: " + line for line in told])

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

    # ---- notes --------------------------------------------------------------------------------------

    FACTS = ('[[disks.backplane]]\nlocation = "front"\ndisk_count = 4\n[disks]\nnvme_slots = [3, 4, 5]\n'
             '[[pcie.slot]]\nslot = 1\nlocation = "front"\n'
             '[[pcie.slot]]\nslot = 2\nlocation = "front"\nsilk = "F-Slot2"\n')

    def notes_of(self, path):
        return [f"oxa-sensors: note: {path}:{line}" for line in (
            '2:1: \'location\' in [[disks.backplane]] is "front", which is not "Front"; its disks are not in front',
            "5:1: 'nvme_slots' in [disks] holds slot 4 and 1 more, which no [[disks.backplane]] has; nothing asks for "
            "the disk there",
            '8:1: slot 1 is in front, but its \'silk\' is not "F-Slot" and digits; its sensors keep the names and the '
            'number of a rear slot')]

    def test_facts_of_a_board_that_can_have_no_effect_are_noted_once(self):
        path = self.board(self.FACTS)
        for words in (("list",), ("list", "--profile", "all"), ("show", "ME"), ("check",),
                      ("add", "--class", "fan", "--device-type", "fan-plain", "--slot", "1")):
            with self.subTest(words):
                done = self.run_raw(*words, "--board", path)
                self.assertEqual(sorted(done.stderr.decode().splitlines()), self.notes_of(path))
                self.assertNotEqual(done.returncode, 2)

    def test_no_note_stands_beside_what_a_program_reads(self):
        path = self.board(self.FACTS)
        for words in (("list", "--json"), ("export",), ("export", "--format", "csv"), ("check", "--json")):
            with self.subTest(words):
                self.assertEqual(self.run_raw(*words, "--board", path).stderr, b"")

    def test_the_board_of_a_story_is_noted_too(self):
        path = self.board(self.FACTS)
        story = self.board('board = "x.toml"\n[[step]]\nrestart = true\n', "story.toml")
        self.assertEqual(sorted(self.run_raw("scenario", story).stderr.decode().splitlines()), self.notes_of(path))

    def test_limits_that_do_not_rise_are_noted(self):
        add = ("add", "--board", TWO_SOCKET, "--class", "temperature", "--device-type", "gpu", "--slot", "1")
        for limits, note in ((("--uc", "90", "--unr", "80"), "UC 90 is above UNR 80"),
                             (("--lc", "5", "--unr", "80", "--lnr", "7"), "LNR 7 is above LC 5"),
                             (("--uc", "80", "--unr", "90"), ""),
                             (("--uc", "80", "--unr", "80"), ""),
                             (("--lc", "0xF6", "--uc", "80"), ""),  # -10 and 80
                             (("--uc", "100", "--unr", "200"), "")):  # without a sign
            with self.subTest(limits):
                done = self.run_raw(*add, *limits)
                self.assertEqual(done.returncode, 0)
                told = f"oxa-sensors: note: the limits do not rise: {note}\n" if note else ""
                self.assertEqual(done.stderr.decode(), told)
                self.assertEqual(self.run_raw(*add, *limits, "--json").stderr, b"")

    # ---- names --------------------------------------------------------------------------------------

    def test_the_name_of_a_board_is_shown_beside_its_file(self):
        path = self.board('[board]\nname = "rack 7"\n')
        self.assertTrue(self.out("list", "--board", path).endswith(f'board {path} ("rack 7")\n'))
        self.assertIn(f'{path} ("rack 7")\n', self.out("list", "--board", path, "--profile", "all"))
        self.assertTrue(self.out("show", "ME", "--board", path).splitlines()[0].endswith(', board ("rack 7")'))
        story = self.board('board = "x.toml"\n[[step]]\nrestart = true\n', "story.toml")
        self.assertIn(f'board {path} ("rack 7"), profile default', self.out("scenario", story))

    def test_a_text_with_a_semicolon_is_told_whole(self):
        self.assertEqual(self.mistakes("add", "--board", TWO_SOCKET, "--class", "fan", "--bitmap", "a; b"),
                         ['--bitmap a; b: it must be a number 0 to 65535 or thresholds such as "uc,unr"'])


if __name__ == "__main__":
    main()
