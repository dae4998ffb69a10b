# SPDX-License-Identifier: GPL-3.0-or-later
"""Every event builder over RMCP+ into a BMC simulator, read back with ipmitool and FreeIPMI, decoded from what they
print, and compared with the calls."""
import json
import os
import shutil
import signal
import socket
import subprocess
import sys
import tempfile
import time
import unittest

SENSORS = os.environ["OXA_SENSORS"]
SOURCE = os.environ["OXA_SOURCE"]
TOOLS = ("ipmi_sim", "ipmitool", "ipmi-sel")
PLUGIN = os.path.join(os.path.dirname(SENSORS), "oxa_ipmi_sim_plugin.so")

# A machine whose sensor directory knows the sensors that the events are about.
BOARD = """
[board]
inlet_temperature = 31
[sensor_numbers]
power_fault = 0x77
cpu = { 1 = 0x12 }
dimm = { 7 = 0x27 }
power_module = { 2 = 0x32 }
[sensor_numbers.by_key]
"04 0D 6F 03 00" = 0x43
"1E 0A 03 00 00" = 0x5E
"""

# Profile, call, the 16 bytes without record id and time stamp: worked out by hand from the builders' rules.
# "?" stands for an argument that the record does not hold.
EVENTS = [
    ("default", "addMemPredictiveFault dimmNum=5 assertFlag=1", None, "02 20 00 04 0C 00 84 01 05 00"),
    ("default", "addPOSTErrorSel", None, "02 20 00 04 0F 00 6F 80 FA 00"),
    ("default", "addS0PowerButtonSel", None, "CD DD B3 00 BA CB 02 00 00 00"),
    ("default", "addGpuSlotErrorSel slotNum=9", None, "02 20 00 04 1B 00 6F 01 09 00"),
    ("default", "addMinorCDUFaultSel reason=5 assertFlag=1", None, "C0 E4 00 04 15 00 87 A1 05 FF"),
    ("default", "addMajorCDUFaultSel reason=6 slotNum=2 assertFlag=0", None, "C0 E4 00 04 15 00 07 A2 06 02"),
    ("default", "addNETPortSEL entityId=11 slotNum=2 netPortSilkId=3 deviceIndex=4 port=5 subInterfaceType=6 "
     "subIndex=7 eventNum=8 eventDir=1", {"eventNum": None}, "C0 0B 67 45 27 00 EF 00 02 03"),
    ("default", "addControllerSEL entityId=11 controller=1 eventNum=18 eventDir=1", None,
     "C0 0B 12 04 01 00 87 A2 01 00"),
    ("default", "addDiskSEL entityId=4 slotNum=3 eventNum=21 eventDir=1", {"entityId": None},
     "E0 00 00 00 03 04 00 04 0D 43 EF A2 00 15"),
    ("default", "addLDSEL entityId=26 eventNum=130 ctrlIndex=1 targetId=17 assertFlag=0", None,
     "C0 1A 82 04 0D 00 0B A2 01 11"),
    ("default", "addPEMSEL location=2 eventNum=20 eventDir=1", None, "C0 0A 00 04 08 32 EF A2 02 14"),
    ("default", "addUsageSEL entityId=32 usage=90 nonCritical=80 index=1 eventDir=0", None,
     "C0 20 5A 04 0C 00 05 A1 01 50"),
    ("default", "addSELAlarm entityId=55 reason=3 eventDir=0", None, "C0 37 03 04 28 00 6F E4 1F 00"),
    ("default", "addCPUError cpuNum=1 bankHighBit=1 bankNum=5 offset=11 assertFlag=0", None,
     "02 20 00 04 07 12 6F 0B 01 85"),
    ("kestrin", "addMemError dimmNum=7 offset=14 errorNum=2 assertFlag=1", None, "02 20 00 04 0C 27 EF 0E 07 02"),
    ("default", "addI2CStatusSel eventData3=17 assertFlag=1 sensorNumber=66 lun=2", None,
     "02 20 02 04 21 42 EF B8 7B 11"),
    ("default", "addTrapSELAlarm entityId=7 reason=4 eventNum=33 eventDir=0", None, "C0 07 21 04 24 00 6F 03 04 00"),
    ("vorana", "addPowerDropSEL dropType=1 cpuIndex=2 reasonMask=3 eventDir=0", None,
     "02 20 03 04 08 77 6F 01 21 03"),
    ("lumora", "addLeakageSel kind=2 deassertFlag=1 position=4", None, "02 20 00 04 0A 5E 83 81 42 00"),
]


def run(*words, **more):
    return subprocess.run(words, cwd=SOURCE, capture_output=True, timeout=60, check=False, **more)


def free_port():
    with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as probe:
        probe.bind(("127.0.0.1", 0))
        return probe.getsockname()[1]


def arguments_of(call, losses):
    out = {name: int(value) for name, value in (word.split("=") for word in call.split()[1:])}
    out.update(losses or {})
    return out


class Tests(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.board = os.path.join(cls.folder.name, "board.toml")
        with open(cls.board, "w", encoding="utf-8") as file:
            file.write(BOARD)
        cls.port = free_port()
        cls.bmc = subprocess.Popen([os.path.join(SOURCE, "scripts", "try-bmc"), "--port", str(cls.port)],
                                   stdout=subprocess.PIPE, text=True)
        for _ in range(4):
            cls.bmc.stdout.readline()  # printed once the simulator listens
        cls.sent = [cls.send(*event) for event in EVENTS]

    @classmethod
    def tearDownClass(cls):
        cls.bmc.send_signal(signal.SIGTERM)
        cls.bmc.wait(timeout=10)
        cls.bmc.stdout.close()
        cls.folder.cleanup()

    @classmethod
    def send(cls, profile, call, _losses, _record):
        return run(SENSORS, "event", *call.split(), "--board", cls.board, "--profile", profile, "--bmc",
                   f"127.0.0.1:{cls.port}", "--json")

    def ipmitool(self, *words):
        done = run("ipmitool", "-I", "lanplus", "-C", "3", "-H", "127.0.0.1", "-p", str(self.port), "-U", "ipmiusr",
                   "-P", "test", "sel", *words)
        self.assertEqual(done.returncode, 0, done.stderr)
        return done.stdout

    def freeipmi(self, *words):
        done = run("ipmi-sel", "-D", "LAN_2_0", "-W", "opensesspriv", "-l", "ADMIN", "-h", f"127.0.0.1:{self.port}",
                   "-u", "ipmiusr", "-p", "test", "--ignore-sdr-cache", *words)
        self.assertEqual(done.returncode, 0, done.stderr)
        return done.stdout

    def decoded(self, text):
        """What decode-sel makes of another program's output: one list of candidates per record."""
        done = run(SENSORS, "decode-sel", "--json", input=text)
        self.assertEqual((done.returncode, done.stderr), (0, b""))
        return [record["candidates"] for record in json.loads(done.stdout)["records"]]

    def assert_calls(self, records):
        self.assertEqual(len(records), len(EVENTS))
        for candidates, (profile, call, losses, _) in zip(records, EVENTS):
            wanted = (call.split()[0], arguments_of(call, losses))
            found = [c for c in candidates if (c["builder"], c["arguments"]) == wanted]
            with self.subTest(call):
                self.assertEqual(len(found), 1, candidates)
                self.assertIn(profile, found[0]["profiles"])

    def test_every_event_is_taken_in_the_order_it_was_sent(self):
        for at, (done, (_, call, _, _)) in enumerate(zip(self.sent, EVENTS)):
            with self.subTest(call):
                self.assertEqual((done.returncode, done.stderr), (0, b""))
                self.assertEqual(json.loads(done.stdout)["record_ids"], [at + 1])

    def test_there_is_an_event_for_each_of_the_19_builders(self):
        listed = json.loads(run(SENSORS, "event", "--list", "--json").stdout)["builders"]
        self.assertEqual(sorted(b["name"] for b in listed), sorted(call.split()[0] for _, call, _, _ in EVENTS))
        self.assertEqual(len(listed), 19)

    def test_freeipmi_reads_the_bytes_that_the_rules_say(self):
        lines = [l for l in self.freeipmi("--hex-dump").decode().splitlines() if l.startswith("RID:")]
        self.assertEqual(len(lines), len(EVENTS))
        for line, (_, call, _, record) in zip(lines, EVENTS):
            found = [part.split("]")[0].upper() for part in line.split("[")[1:]]
            wanted = record.split()
            with self.subTest(call):
                # without stamp the record is told whole, otherwise the log fills bytes 3 to 6
                self.assertEqual(found[2:] if wanted[0] == "E0" else [found[2]] + found[7:], wanted)

    def test_the_calls_come_back_from_ipmitool_sel_elist(self):
        self.assert_calls(self.decoded(self.ipmitool("elist", "-v")))

    def test_the_calls_come_back_from_ipmitool_sel_list(self):
        self.assert_calls(self.decoded(self.ipmitool("list", "-v")))

    def test_the_calls_come_back_from_ipmitool_sel_writeraw(self):
        path = os.path.join(self.folder.name, "sel.raw")
        self.ipmitool("writeraw", path)
        with open(path, "rb") as file:
            self.assert_calls(self.decoded(file.read()))

    def test_the_calls_come_back_from_freeipmis_hex_dump(self):
        self.assert_calls(self.decoded(self.freeipmi("--hex-dump")))

    def test_a_wrong_password_is_an_error_with_the_reason(self):
        done = run(SENSORS, "event", "addPOSTErrorSel", "--bmc", f"127.0.0.1:{self.port}", "--password", "wrong")
        self.assertEqual((done.returncode, done.stdout), (1, b""))
        self.assertIn(b"password", done.stderr)
        self.assertEqual(done.stderr.count(b"\n"), 1)

    def test_records_of_one_run_get_consecutive_ids(self):
        # into a log of its own: the other tests count what is in the first one
        port = free_port()
        with subprocess.Popen([os.path.join(SOURCE, "scripts", "try-bmc"), "--port", str(port)],
                              stdout=subprocess.PIPE) as bmc:
            for _ in range(4):
                bmc.stdout.readline()
            done = run(SENSORS, "event", "addPOSTErrorSel", "--count", "5", "--bmc", f"127.0.0.1:{port}", "--json")
            bmc.send_signal(signal.SIGTERM)
            self.assertEqual(bmc.wait(timeout=10), 0)
        self.assertEqual(json.loads(done.stdout)["record_ids"], [1, 2, 3, 4, 5])

    def test_a_bmc_that_is_gone_is_an_error_with_the_reason(self):
        began = time.monotonic()
        done = run(SENSORS, "event", "addPOSTErrorSel", "--bmc", f"127.0.0.1:{free_port()}")
        self.assertEqual((done.returncode, done.stdout), (1, b""))
        self.assertIn(b"BMC: no session", done.stderr)
        self.assertLess(time.monotonic() - began, 30)


if __name__ == "__main__":
    missing = [tool for tool in TOOLS if shutil.which(tool) is None]
    if missing:
        print("skipped: not installed: " + ", ".join(missing) + " (packages openipmi, ipmitool, freeipmi-tools)")
        sys.exit(77)
    if not os.path.exists(PLUGIN):
        print("skipped: built without the package libopenipmi-dev: no " + os.path.basename(PLUGIN))
        sys.exit(77)
    unittest.main()
