# SPDX-License-Identifier: GPL-3.0-or-later
"""A BMC simulator started by oxa-sensors serve, and the two tools that talk to it."""
import json
import os
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import time
import unittest

SENSORS = os.environ["OXA_SENSORS"]
SOURCE = os.environ["OXA_SOURCE"]
TOOLS = ("ipmi_sim", "ipmitool", "ipmi-sensors", "ipmi-sel")
PLUGIN = os.path.join(os.path.dirname(SENSORS), "oxa_ipmi_sim_plugin.so")
POLLED = 0.2  # the simulator looks at its readings this often


def run(*words, **more):
    return subprocess.run(words, cwd=SOURCE, capture_output=True, timeout=120, check=False, **more)


class Bmc:
    """One simulator; serve's own words about it are in told."""

    def __init__(self, *words):
        self.process = subprocess.Popen([SENSORS, "serve", "--port", "0", "--json", *words], cwd=SOURCE,
                                        stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        text = b""
        while not text.endswith(b"\n}\n"):
            line = self.process.stdout.readline()
            if not line:
                raise RuntimeError(self.process.stderr.read().decode())
            text += line
        self.told = json.loads(text)
        self.address = f"{self.told['host']}:{self.told['port']}"
        self.folder = os.path.dirname(self.told["readings"])
        self.cache = tempfile.TemporaryDirectory()

    def end(self, how=signal.SIGTERM):
        if self.process.poll() is None:
            self.process.send_signal(how)
        code = self.process.wait(timeout=10)
        self.process.stdout.close()
        self.process.stderr.close()
        self.cache.cleanup()
        return code

    def ipmitool(self, *words):
        return run("ipmitool", "-I", "lanplus", "-C", "3", "-H", "127.0.0.1", "-p", str(self.told["port"]), "-U",
                   "ipmiusr", "-P", "test", *words)

    def freeipmi(self, program, *words):
        return run(program, "-D", "LAN_2_0", "-W", "opensesspriv", "-l", "ADMIN", "-h", self.address, "-u", "ipmiusr",
                   "-p", "test", f"--sdr-cache-directory={self.cache.name}", "--quiet-cache", "--sdr-cache-recreate",
                   *words)

    def push(self, name, value):
        """Writes a reading as a user does."""
        found = [s for s in self.told["sensors"] if s["name"] == name]
        assert len(found) == 1, name
        with open(found[0]["reading_file"], "w", encoding="utf-8") as file:
            file.write(f"{value}\n")


def columns(text):
    """The fields of a table with | between them."""
    return [[field.strip() for field in line.split("|")] for line in text.decode().splitlines() if "|" in line]


def records_of(dump):
    """The records of what 'ipmitool sdr dump' wrote."""
    out = []
    while dump:
        size = 5 + dump[4]
        out.append(dump[:size])
        dump = dump[size:]
    return out


def is_sensor(record):
    return record[3] in (1, 2)


def without_numbers(record):
    """A record without what the repository gives it: its id, and the number of a sensor."""
    number = b"\0" if is_sensor(record) else record[7:8]
    return b"\0\0" + record[2:7] + number + record[8:]


class BmcTest(unittest.TestCase):
    SERVE = ("--empty",)

    def setUp(self):
        self.bmc = Bmc(*self.SERVE)
        self.addCleanup(self.bmc.end)
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)

    def path(self, name):
        return os.path.join(self.folder.name, name)

    def ipmitool(self, *words):
        done = self.bmc.ipmitool(*words)
        self.assertEqual(done.returncode, 0, (words, done.stderr))
        return done.stdout

    def freeipmi(self, program, *words):
        done = self.bmc.freeipmi(program, *words)
        self.assertEqual(done.returncode, 0, (words, done.stderr))
        return done.stdout

    def raw(self, *data):
        """Bytes of the answer of a storage command, or the completion code that refused it."""
        done = self.bmc.ipmitool("raw", "0x0a", *(f"0x{byte:02x}" for byte in data))
        refused = re.search(rb"rsp=0x([0-9a-f]+)", done.stderr)
        return int(refused[1], 16) if refused else bytes.fromhex(done.stdout.decode())

    def dump(self):
        self.ipmitool("sdr", "dump", self.path("dump"))
        with open(self.path("dump"), "rb") as file:
            return records_of(file.read())

    def elist(self):
        """What 'ipmitool sdr elist all' says, by name."""
        return {row[0]: row[1:] for row in columns(self.ipmitool("sdr", "elist", "all"))}

    def eventually(self, fact, what):
        """Readings are polled: waits for the fact, not for the time."""
        for _ in range(20):
            if fact():
                return
            time.sleep(POLLED / 2)
        self.fail(what)


def main():
    missing = [tool for tool in TOOLS if shutil.which(tool) is None]
    if missing:
        print("skipped: not installed: " + ", ".join(missing) + " (packages openipmi, ipmitool, freeipmi-tools)")
        sys.exit(77)
    if not os.path.exists(PLUGIN):
        print("skipped: built without the package libopenipmi-dev: no " + os.path.basename(PLUGIN))
        sys.exit(77)
    unittest.main()
