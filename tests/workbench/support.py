# SPDX-License-Identifier: GPL-3.0-or-later
"""Runs oxa-sensors as a user does."""
import fcntl
import glob
import json
import os
import pty
import re
import struct
import subprocess
import sys
import tempfile
import termios
import unittest

SENSORS = os.environ["OXA_SENSORS"]
SOURCE = os.environ["OXA_SOURCE"]
BASE = "boards/base_48.toml"
FULLEST = "boards/fullest.toml"
TWO_SOCKET = "boards/two_socket_2u.toml"
for variable in ("OXA_BOARD", "OXA_PROFILE"):  # of whoever runs the tests
    os.environ.pop(variable, None)


def words_of(text):
    return set(re.findall(r"[A-Za-z]+", text))


def documented_words():
    """All that the documentation and the public headers say: what the program says of itself is said in these."""
    known = set()
    for pattern in ("docs/*.md", "boards/README.md", "include/oxa/*.h"):
        for path in glob.glob(os.path.join(SOURCE, pattern)):
            with open(path, encoding="utf-8") as file:
                known |= words_of(file.read())
    return known


class Workbench(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)

    def path(self, name):
        return os.path.join(self.folder.name, name)

    def board(self, text, name="x.toml"):
        with open(self.path(name), "w", encoding="utf-8") as file:
            file.write(text)
        return self.path(name)

    def run_raw(self, *words, **more):
        environment = {k: v for k, v in os.environ.items() if k != "NO_COLOR"}
        environment.update(more.pop("env", {}))
        return subprocess.run([SENSORS, *words], capture_output=True, cwd=SOURCE, env=environment, timeout=60,
                              check=False, **more)

    def out(self, *words):
        """Standard output of a run that must succeed and have nothing to say on standard error."""
        done = self.run_raw(*words)
        self.assertEqual((done.returncode, done.stderr.decode()), (0, ""), words)
        return done.stdout.decode()

    def json(self, *words):
        return json.loads(self.out(*words, "--json"))

    def sensor(self, name, board=BASE):
        found = [s for s in self.json("list", "--board", board)["sensors"] if s["name"] == name]
        self.assertEqual(len(found), 1, name)
        return found[0]

    def refused(self, code, *words):
        """The one line on standard error of a run that must fail with this exit code and print nothing."""
        done = self.run_raw(*words)
        self.assertEqual((done.returncode, done.stdout), (code, b""), (words, done.stderr))
        lines = done.stderr.decode().splitlines()
        self.assertEqual(len(lines), 1, lines)
        self.assertTrue(lines[0].startswith("oxa-sensors: "), lines[0])
        return lines[0]

    def on_terminal(self, *words, columns=200, stream="stdout", **environment):
        """What a run that succeeds writes to a terminal of that width (standard output, or standard error alone)."""
        ours, theirs = pty.openpty()
        fcntl.ioctl(theirs, termios.TIOCSWINSZ, struct.pack("HHHH", 40, columns, 0, 0))
        env = {k: v for k, v in os.environ.items() if k != "NO_COLOR"}
        env.update({"TERM": "xterm"}, **environment)
        with tempfile.TemporaryFile() as other:
            streams = {"stdout": other, "stderr": other, stream: theirs}
            with subprocess.Popen([SENSORS, *words], cwd=SOURCE, env=env, **streams) as child:
                os.close(theirs)
                out = b""
                try:
                    while chunk := os.read(ours, 4096):
                        out += chunk
                except OSError:  # the other end is closed
                    pass
                os.close(ours)
                self.assertEqual(child.wait(timeout=60), 0)
        return out

    def refused_in_json(self, code, *words):
        """The message of a run with --json that must fail: an object on standard output, a line on standard error."""
        done = self.run_raw(*words, "--json")
        data = json.loads(done.stdout)
        self.assertEqual((done.returncode, list(data)), (code, ["format", "error"]), words)
        self.assertEqual((data["format"], data["error"]["status"]), (1, code))
        self.assertEqual(done.stderr.decode(), f"oxa-sensors: {data['error']['message']}\n")
        return data["error"]["message"]


def main():
    """Runs the tests; the last line says how many passed, for scripts/test to add up."""
    result = unittest.main(exit=False).result
    # a case may fail in several of its subtests
    failed = len({getattr(test, "test_case", test).id() for test, _ in result.failures + result.errors})
    skipped = len(result.skipped)
    print(f"cases: {result.testsRun - failed - skipped} passed, {failed} failed, {skipped} skipped")
    sys.exit(0 if result.wasSuccessful() and result.testsRun else 1)
