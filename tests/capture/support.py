# SPDX-License-Identifier: GPL-3.0-or-later
"""A firmware with the recorder before it, and what the desk makes of the capture."""
import glob
import json
import os
import shlex
import subprocess
import sys
import tempfile
import unittest

SOURCE = os.environ["OXA_SOURCE"]
RECORDER = os.environ["OXA_CAPTURE_LIBRARY"]
FIRMWARE = os.environ["OXA_FIRMWARE"]
LIBRARY = os.environ["OXA_LIBRARY"]
SENSORS = os.environ["OXA_SENSORS"]
EMULATOR = shlex.split(os.environ["OXA_EMULATOR"])
BITS = 8 * int(os.environ["OXA_BITS"])
CC = os.environ["OXA_CC"]
PROFILES = ("default", "kestrin", "pellago", "vorana", "astrel", "quorral", "lumora", "durnow", "ferrisk")
TWO_SOCKET = os.path.join(SOURCE, "boards", "two_socket_2u.toml")
FULLEST = os.path.join(SOURCE, "boards", "fullest.toml")


def boards():
    return sorted(glob.glob(os.path.join(SOURCE, "boards", "*.toml")) +
                  glob.glob(os.path.join(SOURCE, "boards", "guards", "*.toml")))


def command(*words, preload=(), program=FIRMWARE, **environment):
    """The firmware's command line and environment, under the emulator where it is for another machine."""
    settings = {key: str(value) for key, value in environment.items()}
    if preload:
        settings["LD_PRELOAD"] = ":".join(preload)
    if not EMULATOR:
        return [program, *words], {**os.environ, **settings}
    given = [word for key, value in settings.items() for word in ("-E", f"{key}={value}")]
    return [*EMULATOR, *given, program, *words], dict(os.environ)


class Captures(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)
        self.file = self.path("machine.cap")

    def path(self, name):
        return os.path.join(self.folder.name, name)

    def board(self, text, name="x.toml"):
        with open(self.path(name), "w", encoding="utf-8") as file:
            file.write(text)
        return self.path(name)

    def start(self, *words, before=(), **environment):
        """What the firmware prints, and how it ends."""
        line, settings = command(*words, **environment)
        return subprocess.run([*before, *line], capture_output=True, text=True, env=settings, check=False, timeout=300)

    def record(self, *words, file=None, more=(), **environment):
        """Runs with the recorder; the firmware says and does what it does without."""
        plain = self.start(*words)
        done = self.start(*words, preload=(RECORDER, *more), OXA_CAPTURE=file or self.file, **environment)
        self.assertEqual((done.returncode, done.stdout, done.stderr), (plain.returncode, plain.stdout, plain.stderr))
        return file or self.file

    def sensors(self, *words, status=0):
        done = subprocess.run([SENSORS, *words], capture_output=True, text=True, cwd=SOURCE, check=False, timeout=300)
        self.assertEqual(done.returncode, status, (words, done.stdout[-3000:], done.stderr))
        return done

    def replay(self, file=None, status=0, *more):
        return json.loads(self.sensors("replay", file or self.file, "--json", *more, status=status).stdout)

    def same(self, file=None):
        """A capture that plays whole and the same."""
        told = self.replay(file)
        self.assertEqual(told["played"]["entries"], told["entries"], told["played"]["notes"])
        self.assertEqual(told["played"]["calls"], told["calls"])
        self.assertTrue(told["played"]["same"])
        self.assertEqual(told["pointer_size"] * 8, BITS)
        return told


def main():
    if not os.path.exists(SENSORS):
        print(f"skipped: {SENSORS} is not built; it reads the captures")
        sys.exit(77)
    unittest.main()
