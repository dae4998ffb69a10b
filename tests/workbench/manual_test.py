# SPDX-License-Identifier: GPL-3.0-or-later
"""The manual's examples are what the program prints: every "$ ..." line of a console block is run."""
import os
import re
import subprocess

from support import SENSORS, SOURCE, Workbench, main

PAGES = ("workbench.md", "capture.md")


def examples():
    blocks = []
    for page in PAGES:
        with open(os.path.join(SOURCE, "docs", page), encoding="utf-8") as file:
            blocks += re.findall(r"^```console\n(.*?)^```", file.read(), re.M | re.S)
    for block in blocks:
        for part in re.split(r"^\$ ", block, flags=re.M)[1:]:
            command, _, printed = part.partition("\n")
            yield command, printed


class Tests(Workbench):
    def test_every_example_prints_what_the_manual_says(self):
        os.symlink(SENSORS, self.path("oxa-sensors"))
        environment = dict(os.environ, PATH=self.folder.name + os.pathsep + os.environ["PATH"], OUT=self.folder.name)
        count = 0
        for command, printed in examples():
            with self.subTest(command):
                done = subprocess.run(["bash", "-c", command], cwd=SOURCE, env=environment, stdout=subprocess.PIPE,
                                      stderr=subprocess.STDOUT, timeout=60, check=False)
                self.assertEqual(done.stdout.decode(), printed)
                count += 1
        self.assertGreater(count, 10)


if __name__ == "__main__":
    main()
