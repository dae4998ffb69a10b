# SPDX-License-Identifier: GPL-3.0-or-later
"""The manual page: groff has nothing to say against it, and it tells what --help tells."""
import os
import re
import shutil
import subprocess
import unittest

from support import SENSORS, Workbench, main

COMMANDS = ["list", "show", "export", "diff", "check", "event", "decode-sel", "serve", "add", "remove", "scenario",
            "thresholds show", "thresholds set", "thresholds preflight", "schema", "why",
            "report", "explore", "doctor", "replay", "board-from"]


class Tests(Workbench):
    def rendered(self):
        path = self.path("oxa-sensors.1")
        with open(path, "w", encoding="utf-8") as file:
            file.write(self.out("generate", "man"))
        done = subprocess.run(["groff", "-man", "-ww", "-Tascii", "-P-cbou", "-rLL=2000n", "-rHY=0", path], capture_output=True,
                              timeout=60, check=True)
        self.assertEqual(done.stderr.decode(), "")
        return done.stdout.decode()

    @unittest.skipUnless(shutil.which("groff"), "no groff")
    def test_groff_has_no_warning_and_every_section_is_there(self):
        headings = re.findall(r"^[A-Z][A-Z ]+$", self.rendered(), re.M)
        self.assertEqual(headings, ["NAME", "SYNOPSIS", "OPTIONS", "COMMANDS", "EXIT STATUS", "ENVIRONMENT", "SEE ALSO"])

    @unittest.skipUnless(shutil.which("groff"), "no groff")
    def test_every_command_has_every_option_of_its_help(self):
        sections = re.split(r"^   (\S.*)$", self.rendered(), flags=re.M)
        by_name = dict(zip(sections[1::2], sections[2::2]))
        for command in COMMANDS:
            with self.subTest(command):
                told = {part.split("{")[0] for line in self.out(*command.split(), "--help").splitlines()
                        if line.startswith("  -") for part in line.split()[0].split(",")} - {"-h", "--help"}
                options = set(re.findall(r"(?<!\S)--?[a-z][a-z-]*", "\n".join(
                    line for line in by_name[command].splitlines() if re.match(r"^       -", line))))
                self.assertLessEqual(told, options)
                self.assertIn("oxa-sensors " + command, by_name[command])

    @unittest.skipUnless(shutil.which("mandoc"), "no mandoc")
    def test_mandoc_finds_no_error(self):
        page = self.out("generate", "man").encode()
        done = subprocess.run(["mandoc", "-T", "lint", "-W", "error"], input=page, capture_output=True, timeout=60, check=False)
        self.assertEqual(done.stdout, b"")

    def test_the_build_has_made_it_as_it_is_now(self):
        folder = os.path.dirname(SENSORS)
        for what, file in (("man", "oxa-sensors.1"), ("bash", "completions/oxa-sensors"),
                           ("zsh", "completions/_oxa-sensors"), ("fish", "completions/oxa-sensors.fish")):
            path = os.path.join(folder, file)
            if not os.path.exists(path):
                self.skipTest("only oxa-sensors was built")
            with open(path, encoding="utf-8") as made:
                self.assertEqual(made.read(), self.out("generate", what), file)


if __name__ == "__main__":
    main()
