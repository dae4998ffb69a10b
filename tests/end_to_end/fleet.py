# SPDX-License-Identifier: GPL-3.0-or-later
"""oxa-sensors verify against fifty BMC simulators at once, of which some differ, hang, refuse the password, answer garbage, or
die midway.  With numbers behind it (fleet.py 10 20 40) it prints how long so many machines take."""
import collections
import json
import os
import random
import re
import shutil
import signal
import socket
import subprocess
import sys
import tempfile
import threading
import time
import unittest
import xml.etree.ElementTree

from bmc import Bmc, PLUGIN, SENSORS, SOURCE, main, run

LOCK = os.path.join(SOURCE, "boards", "sensors.lock")
BASE, FULLEST = "base_48", "fullest"
PING = bytes.fromhex("0600ff06000011be80000000")
UC, NAME = 37, 48  # bytes of a full record


def free_port():
    with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as found:
        found.bind(("127.0.0.1", 0))
        return found.getsockname()[1]


class Template:
    """The files of one serve, for many simulators to start from; their readings stand still."""

    def __init__(self, board, profile="default"):
        serve = Bmc("--board", f"boards/{board}.toml", "--profile", profile)
        self.board, self.profile = board, profile
        self.files = {}
        for name in ("lan.conf", "sim.emu", "set.sdr"):
            with open(os.path.join(serve.folder, name), "rb") as file:
                self.files[name] = file.read()
        self.port = serve.told["port"]
        serve.end()
        self.files["sim.emu"] = re.sub(rb' poll 200 file "[^"]*"', b"", self.files["sim.emu"])


class Simulator:
    def __init__(self, template, records=None, password="test", commands=None):
        self.template, self.port = template, free_port()
        self.folder = tempfile.TemporaryDirectory()
        place = self.folder.name
        lan = template.files["lan.conf"].decode()
        lan = re.sub(r'(loadlib "[^"]*") "[^"]*"', rf'\1 "{place}/set.sdr"', lan)
        lan = lan.replace(f"addr 127.0.0.1 {template.port}\n", f"addr 127.0.0.1 {self.port}\n")
        lan = lan.replace('"test" admin', f'"{password}" admin')
        contents = dict(template.files, **{"lan.conf": lan.encode()})
        if records is not None:
            contents["set.sdr"] = records
        if commands is not None:
            contents["sim.emu"] = commands
        for name, content in contents.items():
            with open(os.path.join(place, name), "wb") as file:
                file.write(content)
        os.mkdir(os.path.join(place, "state"))
        self.process = subprocess.Popen(
            ["ipmi_sim", "-p", "-c", f"{place}/lan.conf", "-f", f"{place}/sim.emu", "-s", f"{place}/state"],
            stdin=subprocess.PIPE, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, preexec_fn=os.setpgrp)

    def wait(self):
        with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as asker:
            asker.settimeout(0.1)
            for _ in range(200):
                asker.sendto(PING, ("127.0.0.1", self.port))
                try:
                    asker.recv(100)
                    return
                except OSError:
                    pass
        raise RuntimeError("ipmi_sim does not start")

    def end(self):
        if self.process.poll() is None:
            self.process.kill()
        self.process.wait()
        self.process.stdin.close()
        self.folder.cleanup()

    def address(self):
        return f"127.0.0.1:{self.port}"


class Wire:
    """Passes on so many packets of a machine; then happens what is told."""

    def __init__(self, simulator, packets, then):
        self.simulator, self.left, self.then = simulator, packets, then
        self.outside = socket.socket(socket.AF_INET, socket.SOCK_DGRAM)
        self.outside.bind(("127.0.0.1", 0))
        self.port = self.outside.getsockname()[1]
        threading.Thread(target=self.run, daemon=True).start()

    def run(self):
        inside = {}
        while True:
            data, sender = self.outside.recvfrom(4096)
            if sender not in inside:
                inside[sender] = socket.socket(socket.AF_INET, socket.SOCK_DGRAM)
                inside[sender].settimeout(0.5)
            self.left -= 1
            inside[sender].sendto(data, ("127.0.0.1", self.simulator.port))
            try:
                answer = inside[sender].recv(4096)
            except OSError:
                continue
            if self.left < 0:
                answer = self.then(self, answer)
            if answer:
                self.outside.sendto(answer, sender)

    def dies(self, _):
        self.simulator.process.kill()

    def babbles(self, answer):
        return bytes(random.Random(self.left).randbytes(len(answer)))

    def end(self):
        self.simulator.end()

    def wait(self):
        self.simulator.wait()

    def address(self):
        return f"127.0.0.1:{self.port}"


def changed(records, name, place, byte):
    """The set with one byte of the sensor of this name replaced."""
    at = records.index(name.encode()) - NAME
    return records[:at + place] + bytes([byte]) + records[at + place + 1:]


def with_critical(template, number, limit):
    """The simulator's commands with another upper critical limit of this sensor: UNR stands before it."""
    line = re.search(rb"sensor_set_threshold 0x20 0 %d \d+ \d+ \d+ (\d+) " % number, template.files["sim.emu"])
    return template.files["sim.emu"][:line.start(1)] + b"%d" % limit + template.files["sim.emu"][line.end(1):]


def without(records, name):
    at = records.index(name.encode()) - NAME
    return records[:at] + records[at + 5 + records[at + 4]:]


class Fleet(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        base = Template(BASE)
        sdr = base.files["set.sdr"]
        lower = changed(sdr, "INPUT_TEMP", UC, 48)
        renamed = sdr.replace(b"INPUT_TEMP", b"INLET_TEMP")
        cls.machines = collections.OrderedDict(
            good=[Simulator(base) for _ in range(29)],
            lower=[Simulator(base, lower, commands=with_critical(base, 40, 48)) for _ in range(8)],
            renamed=[Simulator(base, renamed) for _ in range(2)],
            lacking=[Simulator(base, without(sdr, "VCC12V"))],
            user=[Simulator(base)],
            hanging=[Simulator(base) for _ in range(2)],
            refusing=[Simulator(base, password="other") for _ in range(2)],
            dying=[Wire(Simulator(base), 60, Wire.dies) for _ in range(2)],
            babbling=[Wire(Simulator(base), packets, Wire.babbles) for packets in (0, 3, 60)])
        for machine in cls.all():
            machine.wait()
            cls.addClassCleanup(machine.end)
        user = cls.machines["user"][0]
        done = run("ipmitool", "-I", "lanplus", "-C", "3", "-H", "127.0.0.1", "-p", str(user.port), "-U", "ipmiusr", "-P",
                   "test", "sensor", "thresh", "INPUT_TEMP", "ucr", "47")
        assert done.returncode == 0, done.stderr
        for machine in cls.machines["hanging"]:
            machine.process.send_signal(signal.SIGSTOP)
        cls.folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(cls.folder.cleanup)
        began = time.monotonic()
        cls.done = cls.verify(cls.hosts_of(cls.all()), "--json", "--active", "--at-once", "50")
        cls.seconds = time.monotonic() - began
        cls.data = json.loads(cls.done.stdout)

    @classmethod
    def all(cls):
        return [machine for group in cls.machines.values() for machine in group]

    @classmethod
    def hosts_of(cls, machines):
        path = os.path.join(cls.folder.name, "hosts.txt")
        with open(path, "w", encoding="ascii") as file:
            file.write("# all of them\n" + "".join(f"{machine.address()} {BASE} default\n" for machine in machines))
        return path

    @staticmethod
    def verify(hosts, *words):
        return run(SENSORS, "verify", LOCK, "--hosts", hosts, "--timeout", "2", "--limit", "30", *words)

    def addresses(self, kind):
        return [machine.address() for machine in self.machines[kind]]

    def status(self, kind):
        told = {one["host"]: one for one in self.data["machines"]}
        return {told[address]["status"] for address in self.addresses(kind)}

    def why(self, kind):
        told = {one["host"]: one for one in self.data["machines"]}
        return [told[address]["why"] for address in self.addresses(kind)]

    def test_fifty_machines_are_told_in_the_order_of_the_list(self):
        self.assertEqual((self.done.returncode, self.done.stderr), (1, b""))
        self.assertEqual([one["host"] for one in self.data["machines"]], [m.address() for m in self.all()])
        self.assertEqual((len(self.all()), self.data["as_locked"], self.data["different"], self.data["not_read"]),
                         (50, 30, 11, 9))

    def test_those_that_are_as_locked_are_said_to_be(self):
        self.assertEqual(self.status("good") | self.status("user"), {"as locked"})

    def test_differences_are_told_once_for_all_machines_that_have_them(self):
        groups = [(g["what"], g["names"], g["hosts"]) for g in self.data["differences"]]
        self.assertEqual(groups, [("changed", ["INPUT_TEMP"], self.addresses("lower")),
                                  ("renamed", ["INPUT_TEMP"], self.addresses("renamed")),
                                  ("missing", ["VCC12V"], self.addresses("lacking"))])
        self.assertEqual([g["text"] for g in self.data["differences"][:2]],
                         ["UC 48 °C instead of 50 °C", "is called INLET_TEMP"])

    def test_a_threshold_that_a_user_set_is_told_and_no_difference(self):
        self.assertEqual(self.data["active"], [{"what": "active", "names": ["INPUT_TEMP"], "hosts": self.addresses("user"),
                                                "text": "UC 50 °C, active 47 °C: set by a user"}])

    def test_those_that_hang_refuse_babble_or_die_are_not_read_and_say_why(self):
        for kind in ("hanging", "refusing", "dying", "babbling"):
            with self.subTest(kind):
                self.assertEqual(self.status(kind), {"not read"})
                self.assertTrue(all(self.why(kind)), self.why(kind))
                self.assertFalse([why for why in self.why(kind) if "127.0.0.1" in why])
        self.assertIn("password", self.why("refusing")[0])
        self.assertRegex(self.why("dying")[0], "no answer to command|no session")

    def test_who_is_refused_is_not_tried_again_and_others_are(self):
        told = {one["host"]: one["tries"] for one in self.data["machines"]}
        self.assertEqual({told[a] for a in self.addresses("refusing")}, {1})
        self.assertEqual({told[a] for a in self.addresses("hanging")}, {2})

    def test_nobody_waits_for_those_that_do_not_answer(self):
        self.assertLess(self.seconds, 45)

    def some(self):
        return [self.machines["good"][0], *self.machines["lower"][:4], self.machines["refusing"][0]]

    def test_text_has_a_line_for_each_machine_and_one_for_each_group(self):
        done = self.verify(self.hosts_of(self.some()))
        lines = done.stdout.decode().splitlines()
        rows = [line.split() for line in lines[1:7]]
        self.assertEqual([(row[0], " ".join(row[3:5])) for row in rows],
                         [(m.address(), status) for m, status in
                          zip(self.some(), ["as locked", *["different 1"] * 4, "not read"])])
        self.assertIn("4 machines: INPUT_TEMP UC 48 °C instead of 50 °C", lines)
        self.assertEqual(lines[-1], "6 machines: 1 as locked, 4 different, 1 not read")

    def test_junit_has_a_case_for_each_machine(self):
        done = self.verify(self.hosts_of(self.some()), "--format", "junit")
        suite = xml.etree.ElementTree.fromstring(done.stdout)
        self.assertEqual((suite.get("tests"), suite.get("failures"), suite.get("errors")), ("6", "4", "1"))
        self.assertEqual([case.get("name") for case in suite], [m.address() for m in self.some()])
        self.assertEqual([[child.tag for child in case] for case in suite], [[], *[["failure"]] * 4, ["error"]])
        self.assertEqual(suite[1][0].text, "INPUT_TEMP UC 48 °C instead of 50 °C\n")

    def test_annotations_and_markdown_tell_the_groups(self):
        done = self.verify(self.hosts_of(self.some()), "--format", "github")
        self.assertIn("::error title=Sensors of the fleet::4 machines: INPUT_TEMP UC 48 °C instead of 50 °C\n",
                      done.stdout.decode())
        done = self.verify(self.hosts_of(self.some()), "--format", "markdown")
        self.assertIn("\n- 4 machines: INPUT\\_TEMP UC 48 °C instead of 50 °C\n", done.stdout.decode())
        self.assertEqual(done.stdout.decode().count(f"| {BASE.replace('_', chr(92) + '_')} | default |"), 6)

    def test_the_example_of_its_help_works(self):
        example = re.search(r"^Example:\n  (.*)$", run(SENSORS, "verify", "--help").stdout.decode(), re.M)[1]
        with tempfile.TemporaryDirectory() as folder:
            os.symlink(os.path.join(SOURCE, "boards"), os.path.join(folder, "boards"))
            shutil.copy(self.hosts_of(self.machines["good"][:2]), os.path.join(folder, "hosts.txt"))
            with open(os.path.join(folder, "secret"), "w", encoding="ascii") as file:
                file.write("test\n")
            done = subprocess.run(["sh", "-c", example], cwd=folder, capture_output=True, check=False, env=dict(
                os.environ, PATH=os.path.dirname(SENSORS) + os.pathsep + os.environ["PATH"]))
        self.assertEqual((done.returncode, done.stderr), (0, b""))
        self.assertIn(b"\n2 machines: 2 as locked, 0 different, 0 not read\n", done.stdout)

    def test_no_more_are_read_at_a_time_than_allowed(self):
        hosts = self.hosts_of(self.machines["good"][:12])
        with subprocess.Popen([SENSORS, "verify", LOCK, "--hosts", hosts, "--at-once", "3"], cwd=SOURCE,
                              stdout=subprocess.DEVNULL) as child:
            most = 0
            while child.poll() is None:
                try:
                    with open(f"/proc/{child.pid}/task/{child.pid}/children", encoding="ascii") as file:
                        most = max(most, len(file.read().split()))
                except OSError:
                    pass
                time.sleep(0.001)
            self.assertEqual((child.returncode, most), (0, 3))

    def test_a_machine_that_takes_too_long_is_ended(self):
        hosts = self.hosts_of(self.machines["hanging"][:1])
        done = run(SENSORS, "verify", LOCK, "--hosts", hosts, "--timeout", "20", "--limit", "1", "--json")
        self.assertEqual(json.loads(done.stdout)["machines"][0]["why"], "not read within 1 s")


class RunTime(unittest.TestCase):
    """What came at run time is no difference."""

    def test_sensors_and_locators_that_came_are_counted_apart(self):
        serve = Bmc("--board", f"boards/{BASE}.toml")
        self.addCleanup(serve.end)
        # slot 7 is a front slot: its card's name is another than that of the profile's table
        for words in (("--class", "psu-fru", "--slot", "2"), ("--class", "temperature", "--device-type", "gpu", "--slot", "1"),
                      ("--class", "temperature", "--device-type", "nic", "--sub-type", "1", "--slot", "7")):
            run(SENSORS, "add", "--board", "boards/two_socket_2u.toml", *words, "--bmc", serve.address)
        with tempfile.NamedTemporaryFile("w", encoding="ascii") as hosts:
            hosts.write(f"{serve.address} {BASE} default\n")
            hosts.flush()
            done = run(SENSORS, "verify", LOCK, "--hosts", hosts.name, "--json")
        machine, = json.loads(done.stdout)["machines"]
        self.assertEqual((done.returncode, machine["sensors"], machine["run_time"], machine["set_aside"]), (0, 48, 2, 1))


def measure(counts):
    """Seconds, and processor seconds of verify itself, for so many machines: of 48 sensors and of 703."""
    for board, profile in ((BASE, "default"), (FULLEST, "kestrin")):
        template = Template(board, profile)
        machines = [Simulator(template) for _ in range(max(counts))]
        with tempfile.TemporaryDirectory() as folder:
            for machine in machines:
                machine.wait()
            for count in counts:
                hosts = os.path.join(folder, "hosts")
                with open(hosts, "w", encoding="ascii") as file:
                    file.writelines(f"{machine.address()} {board} {profile}\n" for machine in machines[:count])
                before, began = os.times(), time.monotonic()
                done = run(SENSORS, "verify", LOCK, "--hosts", hosts)
                after, took = os.times(), time.monotonic() - began
                used = after.children_user + after.children_system - before.children_user - before.children_system
                print(f"{board} {profile}: {count} machines: {took:.2f} s, {used:.2f} s of processor time; "
                      f"{done.stdout.decode().splitlines()[-1]}", flush=True)
        for machine in machines:
            machine.end()


if __name__ == "__main__":
    if len(sys.argv) > 1 and sys.argv[1].isdigit():
        assert shutil.which("ipmi_sim") and os.path.exists(PLUGIN)
        measure([int(word) for word in sys.argv[1:]])
    else:
        main()
