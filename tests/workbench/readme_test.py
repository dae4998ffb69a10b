# SPDX-License-Identifier: GPL-3.0-or-later
"""What the README tells a reader to type runs, and what it shows is what the program prints."""
import os
import re
import shlex
import signal
import subprocess

from support import SENSORS, SOURCE, Workbench, main

with open(os.path.join(SOURCE, "README.md"), encoding="utf-8") as file:
    README = file.read()
COMMANDS = [shlex.split(line, comments=True) for line in re.findall(r"^    build/release/oxa-sensors (.*)$", README, re.M)]
DIFFERENCES = 1


class Tests(Workbench):
    def test_every_command_runs(self):
        self.assertGreater(len(COMMANDS), 10)
        for words in COMMANDS:
            if words[0] == "serve":
                continue
            with self.subTest(words):
                done = self.run_raw(*words)
                self.assertEqual((done.returncode, done.stderr), (DIFFERENCES if words[0] == "diff" else 0, b""))
                self.assertNotEqual(done.stdout, b"")

    def test_serve_serves_until_it_is_interrupted(self):
        (words,) = [words for words in COMMANDS if words[0] == "serve"]
        with subprocess.Popen([SENSORS, *words, "--port", "0"], cwd=SOURCE, stdout=subprocess.PIPE,
                              stderr=subprocess.PIPE) as process:
            first = process.stdout.readline()
            process.send_signal(signal.SIGINT)
            _, errors = process.communicate(timeout=30)
        self.assertIn(b"164 sensors of boards/two_socket_2u.toml", first)
        self.assertEqual((process.returncode, errors), (0, b""))

    def test_the_sample_is_what_the_program_prints(self):
        words, shown = re.search(r"^\$ oxa-sensors ([^\n]*)\n(.*?)^```", README, re.M | re.S).groups()
        head, tail = shown.split("...\n")
        printed = self.out(*shlex.split(words))
        self.assertTrue(printed.startswith(head), printed[:2000])
        self.assertTrue(printed.endswith(tail), printed[-200:])


if __name__ == "__main__":
    main()
