# SPDX-License-Identifier: GPL-3.0-or-later
"""Where the simulated platform keeps the library's files: no place, no room, and several calls at once."""
import hashlib
import os
import resource
import subprocess
import threading

from support import BASE, SENSORS, SOURCE, TWO_SOCKET, Workbench, main

PSU = ("--class", "psu-fru", "--slot")
DAY = "scenarios/day.toml"


def small_files(limit):
    """No file of the run grows beyond this many bytes: what a full disk is to a writer."""
    return lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (limit, limit))


def content(folder):
    """path -> hash of every file below."""
    found = {}
    for where, _, names in os.walk(folder):
        for name in names:
            path = os.path.join(where, name)
            with open(path, "rb") as file:
                found[os.path.relpath(path, folder)] = hashlib.sha256(file.read()).hexdigest()
    return found


class Tests(Workbench):
    def told(self, done):
        """The one line of a run that could not keep its files."""
        self.assertEqual((done.returncode, done.stdout), (2, b""), done.stderr)
        lines = done.stderr.decode().splitlines()
        self.assertEqual(len(lines), 1, lines)
        return lines[0]

    # ---- no place -----------------------------------------------------------------------------------

    def test_a_tmpdir_that_is_not_there_is_told_by_every_command(self):
        for words in (("list", "-b", BASE), ("list", "-b", BASE, "-p", "all"), ("show", "ME", "-b", BASE),
                      ("export", "-b", BASE), ("check", "-b", BASE), ("check",), ("diff", "default@" + BASE, BASE),
                      ("add", "-b", BASE, *PSU, "1"), ("event", "addDiskSEL", "1", "2", "3", "4"),
                      ("scenario", DAY)):
            with self.subTest(words):
                line = self.told(self.run_raw(*words, env={"TMPDIR": "/nonexistent"}))
                self.assertTrue(line.endswith("TMPDIR: no folder can be made in /nonexistent (No such file or directory)"),
                                line)

    # ---- no room ------------------------------------------------------------------------------------

    def test_add_without_room_says_so_and_leaves_the_folder_as_it_was(self):
        """The record file of one power supply has 30 bytes, of two 60."""
        root = self.path("root")
        self.out("add", "-b", BASE, *PSU, "1", "--root", root)
        before = content(root)
        self.assertIn("repository.sdr", before)
        line = self.told(self.run_raw("add", "-b", BASE, *PSU, "2", "--root", root, preexec_fn=small_files(40)))
        self.assertIn("cannot write " + root + "/var/SpecificSDRRec", line)
        self.assertTrue(line.endswith(": File too large"), line)
        self.assertEqual(content(root), before)
        self.out("add", "-b", BASE, *PSU, "2", "--root", root)

    def test_the_first_add_without_room_leaves_no_file(self):
        root = self.path("root")
        self.told(self.run_raw("add", "-b", BASE, *PSU, "1", "--root", root, preexec_fn=small_files(8)))
        self.assertEqual(content(root), {})

    def test_the_repository_without_room_takes_the_call_back(self):
        """A record of a power supply has 24 bytes; the board's file is laid down again where it was taken away."""
        root = self.path("root")
        board = self.board("[psus]\ncount = 2\n[files]\n'/var/x' = 'here'\n")
        line = self.told(self.run_raw("add", "-b", board, *PSU, "1", "--no-record", "--root", root,
                                      preexec_fn=small_files(23)))
        self.assertIn("repository.sdr: cannot write: File too large", line)
        self.assertEqual(content(root), {})
        self.out("add", "-b", board, *PSU, "1", "--no-record", "--root", root)
        self.assertEqual(sorted(content(root)), ["repository.sdr", "var/x"])

    def test_a_story_without_room_is_ended_with_the_cause(self):
        line = self.told(self.run_raw("scenario", DAY, preexec_fn=small_files(64)))
        self.assertTrue(line.startswith(f"oxa-sensors: {DAY}: cannot write "), line)
        self.assertTrue(line.endswith(": File too large"), line)

    def test_a_board_file_without_room_is_told(self):
        path = self.board("[files]\n'/var/x' = { size = 100 }\n")
        for words in (("list",), ("list", "-p", "all"), ("export",)):
            with self.subTest(words):
                line = self.told(self.run_raw(*words, "-b", path, preexec_fn=small_files(64)))
                self.assertTrue(line.endswith("/var/x: File too large"), line)

    def test_a_result_that_cannot_be_printed_is_told(self):
        with open("/dev/full", "wb") as full:
            done = subprocess.run([SENSORS, "list", "-b", BASE], stdout=full, stderr=subprocess.PIPE, cwd=SOURCE,
                                  timeout=60, check=False)
        self.assertEqual(done.returncode, 2)
        self.assertEqual(done.stderr, b"oxa-sensors: standard output: cannot write: No space left on device\n")

    # ---- several at once ----------------------------------------------------------------------------

    def test_eight_adds_at_once_are_all_kept(self):
        root = self.path("root")
        done = []
        runs = [threading.Thread(target=lambda n=n: done.append(
            self.run_raw("add", "-b", TWO_SOCKET, *PSU, str(n), "--root", root))) for n in range(1, 9)]
        for run in runs:
            run.start()
        for run in runs:
            run.join()
        self.assertEqual([(d.returncode, d.stderr) for d in done], [(0, b"")] * 8)
        told = self.json("add", "-b", TWO_SOCKET, "--root", root, "--list")
        self.assertEqual(len(told["repository"]), 8)
        self.assertEqual(len({record["record_id"] for record in told["repository"]}), 8)


if __name__ == "__main__":
    main()
