# SPDX-License-Identifier: GPL-3.0-or-later
"""Input that wants to do harm: every command comes to an end, says what is wrong in a line, and hands nothing on to the
terminal.  A BMC that lies within a session is in hostile_bmc_test.cpp."""
import json
import os
import random
import socket
import threading
import time
import unittest

from support import BASE, Workbench

PONG = bytes.fromhex("0600ff06000011be4000001000 0011be000000008100000000000000".replace(" ", ""))
RMCP = bytes.fromhex("0600ff07")
SECONDS = 30  # a session that cannot be had is given up well within


class FakeBmc:
    """Answers every datagram with what answer() makes of it, once or without end."""

    def __init__(self, answer, flood=1):
        self.socket = socket.socket(socket.AF_INET, socket.SOCK_DGRAM)
        self.socket.bind(("127.0.0.1", 0))
        self.port = self.socket.getsockname()[1]
        self.answer, self.flood, self.asked = answer, flood, 0
        self.thread = threading.Thread(target=self.run, daemon=True)
        self.thread.start()

    def run(self):
        while True:
            try:
                data, sender = self.socket.recvfrom(4096)
                if not data:
                    return
                self.asked += 1
                for _ in range(self.flood):
                    answer = self.answer(data)
                    if answer is not None:
                        self.socket.sendto(answer, sender)
            except OSError:
                return

    def end(self):
        with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as other:
            other.sendto(b"", ("127.0.0.1", self.port))
        self.thread.join(timeout=5)
        self.socket.close()


def record(name, kind=2):
    """A compact record with these bytes as its name."""
    body = bytearray(32)
    body[2:5] = 0x51, kind, 27 + len(name)
    body[5], body[8], body[12], body[13] = 0x20, 3, 7, 0x6F
    body[31] = 0xC0 | len(name)
    return bytes(body) + name


class Tests(Workbench):
    def against(self, answer, flood=1):
        bmc = FakeBmc(answer, flood)
        self.addCleanup(bmc.end)
        began = time.monotonic()
        done = self.run_raw("event", "--bmc", f"127.0.0.1:{bmc.port}", "addPOSTErrorSel")
        self.assertLess(time.monotonic() - began, SECONDS)
        self.assertEqual(done.returncode, 1, done.stderr)
        self.assertGreater(bmc.asked, 0)
        self.assertNotIn(b"\x1b", done.stdout + done.stderr)

    def test_a_bmc_that_keeps_silent_is_given_up(self):
        self.against(lambda data: None)

    def test_a_bmc_that_echoes_is_given_up(self):
        self.against(lambda data: data)

    def test_a_bmc_that_sends_rubbish_is_given_up(self):
        choice = random.Random(20261122)
        self.against(lambda data: choice.randbytes(choice.randrange(1, 1400)), flood=50)

    def test_a_bmc_whose_lengths_lie_is_given_up(self):
        headers = [RMCP + bytes((0x06, 0x11)) + bytes(8) + length.to_bytes(2, "little") + bytes(36)
                   for length in (0, 1, 7, 35, 37, 255, 0xFFFF)]
        headers += [RMCP + bytes(9) + bytes((length,)) + b"\x81\x1c\x63\x20\x00\x38\x00" for length in (0, 1, 255)]
        choice = random.Random(20261122)
        self.against(lambda data: choice.choice(headers), flood=20)

    # ---- files ------------------------------------------------------------------------------------

    def root(self, content):
        os.makedirs(self.path("root"), exist_ok=True)
        with open(os.path.join(self.path("root"), "repository.sdr"), "wb") as file:
            file.write(content)
        return self.path("root")

    def add(self, root):
        return self.run_raw("add", "--board", BASE, "--root", root, "--class", "psu-fru", "--slot", "1")

    def assert_refused(self, done, words=b""):
        self.assertEqual((done.returncode, done.stdout), (2, b""), done.stderr)
        self.assertEqual(done.stderr.count(b"\n"), 1)
        self.assertIn(words, done.stderr)

    def test_a_repository_whose_lengths_lie_is_refused(self):
        good = record(b"A")
        for bad in (good[:4], good[:-1], good[:4] + b"\xff" + good[5:] + bytes(300), good + b"\0", bytes(5),
                    good[:2] + b"\x01" + good[3:]):
            self.assert_refused(self.add(self.root(bad)), b"repository.sdr")

    def test_a_repository_that_is_no_file_is_refused_at_once(self):
        os.makedirs(self.path("root"))
        path = os.path.join(self.path("root"), "repository.sdr")
        os.mkfifo(path)
        self.assert_refused(self.add(self.path("root")), b"cannot be read")
        os.remove(path)
        os.symlink("/dev/zero", path)
        self.assert_refused(self.add(self.path("root")), b"cannot be read")
        os.remove(path)
        os.mkdir(path)
        self.assert_refused(self.add(self.path("root")), b"cannot be read")

    def test_input_without_end_is_refused(self):
        for words in (("decode-sel", "/dev/zero"), ("diff", "/dev/zero", "default"),
                      ("scenario", "/dev/zero"), ("thresholds", "show", "/dev/zero")):
            with self.subTest(words=words):
                done = self.run_raw(*words)
                self.assertNotEqual(done.returncode, 0)
                self.assertLess(len(done.stderr), 300)

    def test_names_of_others_do_not_reach_the_terminal_as_they_are(self):
        with open(self.path("set.sdr"), "wb") as file:
            file.write(record(b"\x1b]0;owned\x07") + record(b"\xff\xfe\x80\n\t"))
        for words in ((), ("--json",)):
            done = self.run_raw("diff", self.path("set.sdr"), "default", "--board", BASE, *words)
            self.assertIn(b"?]0;owned?", done.stdout)
            self.assertNotIn(b"\x1b", done.stdout + done.stderr)
            if words:
                json.loads(done.stdout)

    def test_an_event_log_of_every_damage_is_read_or_refused(self):
        choice = random.Random(20261122)
        good = "SEL Record ID          : 0001\n Record Type           : 02\n Timestamp : 01/01/26\n" \
               " Generator ID : 0020\n EvM Revision : 04\n Sensor Type : Processor\n Event Data (RAW) : 01ffff\n"
        for _ in range(60):
            text = bytearray(good * choice.randrange(1, 4), "ascii")
            for _ in range(choice.randrange(1, 12)):
                text[choice.randrange(len(text))] = choice.randrange(256)
            done = self.run_raw("decode-sel", "-", input=bytes(text[:choice.randrange(1, len(text))]))
            self.assertIn(done.returncode, (0, 1, 2))
            self.assertNotIn(b"\x1b", done.stdout + done.stderr)

    def test_a_threshold_file_of_every_damage_is_shown_or_refused(self):
        choice = random.Random(20261122)
        image = bytearray(14344)
        image[4] = 1
        image[6:17] = b"CPU_TEMP_00"
        for _ in range(40):
            bad = bytearray(image)
            for _ in range(choice.randrange(1, 6)):
                bad[choice.randrange(64)] = choice.randrange(256)
            with open(self.path("bad.dat"), "wb") as file:
                file.write(bad[:choice.choice((0, 3, 6, 34, 14343, 14344))] + bytes(choice.choice((0, 0, 1))))
            done = self.run_raw("thresholds", "show", self.path("bad.dat"))
            self.assertIn(done.returncode, (0, 1, 2))
            self.assertNotIn(b"\x1b", done.stdout + done.stderr)


if __name__ == "__main__":
    unittest.main()
