# SPDX-License-Identifier: GPL-3.0-or-later
"""oxa-sensors serve where it cannot serve: one line, the exit status, and nothing left behind.  What it serves is
tested end to end."""
import fcntl
import os
import shutil
import socket
import stat
import subprocess
import unittest

from support import BASE, FULLEST, SENSORS, SOURCE, Workbench, main

ANY_FILE = os.path.abspath(__file__)


class Tests(Workbench):
    def refused_with(self, code, *words, **environment):
        os.makedirs(self.path("tmp"), exist_ok=True)
        done = self.run_raw("serve", *words, env={"TMPDIR": self.path("tmp"), **environment})
        self.assertEqual((done.returncode, done.stdout), (code, b""), (words, done.stderr))
        self.assertEqual(os.listdir(self.path("tmp")), [])
        lines = done.stderr.decode().splitlines()
        self.assertEqual(len(lines), 1, lines)
        return lines[0]

    def simulator(self, script):
        """A folder for PATH in which ipmi_sim is this script."""
        os.mkdir(self.path("bin"))
        path = os.path.join(self.path("bin"), "ipmi_sim")
        with open(path, "w", encoding="ascii") as file:
            file.write("#!/bin/sh\n" + script + "\n")
        os.chmod(path, stat.S_IRWXU)
        return self.path("bin") + os.pathsep + os.environ["PATH"]

    def test_a_board_is_needed(self):
        self.assertEqual(self.refused_with(2), "oxa-sensors: serve: which board? --board FILE, or --empty")

    def test_an_empty_repository_has_no_board(self):
        self.assertEqual(self.refused_with(2, "--empty", "--board", BASE),
                         "oxa-sensors: --empty contradicts --board")

    def test_user_thresholds_go_with_one_board(self):
        for words in (("--empty",), ("--board", BASE, "--board", FULLEST)):
            self.assertEqual(self.refused_with(2, *words, "--user-thresholds", "x.dat"),
                             "oxa-sensors: --user-thresholds goes with one board")

    def test_user_thresholds_need_a_place_before_somebody_sets_them(self):
        self.assertEqual(self.refused_with(2, "--board", BASE, "--user-thresholds", "/nowhere/x.dat"),
                         "oxa-sensors: /nowhere/x.dat: cannot write: No such file or directory")

    def test_several_machines_need_several_ports(self):
        self.assertIn("no port is left for " + FULLEST,
                      self.refused_with(2, "--board", BASE, "--board", FULLEST, "--port", "65535"))

    def test_a_board_that_does_not_exist_is_wrong_input(self):
        self.assertIn("/nowhere.toml", self.refused_with(2, "--board", "/nowhere.toml"))

    def test_a_profile_without_static_set_is_wrong_input(self):
        self.assertIn("'sablin' has no static driver",
                      self.refused_with(2, "--board", BASE, "--profile", "sablin"))

    def test_an_unknown_profile_is_wrong_input_with_a_board_and_without(self):
        for words in (("--board", BASE), ("--empty",)):
            wanted = "oxa-sensors: unknown profile 'kestrel'; available: default, "
            self.assertTrue(self.refused_with(2, *words, "--profile", "kestrel").startswith(wanted), words)
            self.assertTrue(self.refused_with(2, *words, OXA_PROFILE="kestrel").startswith(wanted), words)

    def test_a_board_without_set_is_told_with_the_reason(self):
        self.assertIn("the pass ended without a count",
                      self.refused_with(1, "--board", "boards/guards/psu_count_255.toml"))

    def test_more_sensors_than_a_bmc_has_numbers_for_are_refused(self):
        disks = "".join(f"[[disks.backplane]]\nstart_slot = {64 * i}\ndisk_count = 63\n" for i in range(4))
        nvme = "[disks]\nnvme_slots = [\"0-62\", \"64-126\", \"128-190\", \"192-254\"]\n"
        board = self.board("[board]\nid = 1\n" + nvme + disks + "[dimms]\ncount = 254\n")
        line = self.refused_with(1, "--board", board)
        self.assertRegex(line, r"\d{3,} sensors; a BMC has numbers for 762$")

    def test_a_port_must_be_one(self):
        for port in ("70000", "-1", "x"):
            self.assertIn("--port", self.refused_with(2, "--empty", "--port", port))

    def test_a_port_in_use_is_wrong_input(self):
        with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as other:
            other.bind(("127.0.0.1", 0))
            port = other.getsockname()[1]
            self.assertEqual(self.refused_with(2, "--empty", "--port", str(port)),
                             f"oxa-sensors: --port {port}: Address already in use")

    def test_without_the_simulator_its_package_is_named(self):
        self.assertEqual(self.refused_with(1, "--empty", "--port", "0", PATH="/nowhere"),
                         "oxa-sensors: ipmi_sim is not installed (package openipmi)")

    def test_without_the_plug_in_its_package_is_named(self):
        line = self.refused_with(1, "--empty", "--port", "0", PATH=self.simulator("exit 0"),
                                 OXA_IPMI_SIM_PLUGIN="/nowhere.so")
        self.assertIn("/nowhere.so is missing", line)
        self.assertIn("libopenipmi-dev", line)

    def test_a_simulator_that_does_not_start_has_the_last_word(self):
        line = self.refused_with(1, "--empty", "--port", "0", PATH=self.simulator("echo out of luck >&2; exit 1"),
                                 OXA_IPMI_SIM_PLUGIN=ANY_FILE)
        self.assertEqual(line, "oxa-sensors: ipmi_sim does not start: out of luck")

    @unittest.skipUnless(shutil.which("strace"), "strace is not installed")
    def test_its_files_are_not_synced_to_the_disk(self):
        environment = dict(os.environ, PATH=self.simulator("exit 1"), OXA_IPMI_SIM_PLUGIN=ANY_FILE,
                           ASAN_OPTIONS="detect_leaks=0")  # which cannot be done under strace
        done = subprocess.run(["strace", "-f", "-o", self.path("calls"), "-e", "trace=openat,fsync,fdatasync,sync",
                               SENSORS, "serve", "--board", FULLEST, "--port", "0"], cwd=SOURCE, env=environment,
                              capture_output=True, timeout=60, check=False)
        self.assertEqual(done.returncode, 1, done.stderr)
        with open(self.path("calls"), encoding="utf-8") as file:
            calls = file.read()
        self.assertGreater(calls.count("/readings/"), 600)
        self.assertNotIn("sync(", calls)

    def test_what_a_killed_process_left_goes_with_the_next_start_and_nothing_else(self):
        os.mkdir(self.path("tmp"))
        stay = {"oxa-bmc.locked", "oxa-bmc.public", "oxa-bmc.longer1", "oxa-bmcAabcdef", "oxa-bmc.a_file", "oxa-bmc.a_link"}
        for name in {"oxa-bmc.abcdef", *stay} - {"oxa-bmc.a_file", "oxa-bmc.a_link"}:
            os.makedirs(self.path("tmp/" + name + "/readings"), mode=0o700)
            os.chmod(self.path("tmp/" + name), 0o755 if "public" in name else 0o700)
        with open(self.path("tmp/oxa-bmc.a_file"), "wb"):
            pass
        os.symlink(self.folder.name, self.path("tmp/oxa-bmc.abcdef/link"))
        os.symlink(self.path("tmp/oxa-bmc.locked"), self.path("tmp/oxa-bmc.a_link"))
        lock = os.open(self.path("tmp/oxa-bmc.locked"), os.O_RDONLY)
        self.addCleanup(os.close, lock)
        fcntl.flock(lock, fcntl.LOCK_EX)
        done = self.run_raw("serve", "--empty", "--port", "0",
                            env={"TMPDIR": self.path("tmp"), "PATH": self.simulator("exit 1"),
                                 "OXA_IPMI_SIM_PLUGIN": ANY_FILE})
        self.assertEqual(done.returncode, 1)
        self.assertEqual(set(os.listdir(self.path("tmp"))), stay)
        self.assertTrue(os.path.exists(self.path("tmp/oxa-bmc.locked/readings")))

    def test_a_place_for_files_is_needed(self):
        done = self.run_raw("serve", "--empty", "--port", "0",
                            env={"TMPDIR": "/nowhere", "PATH": self.simulator("exit 0"),
                                 "OXA_IPMI_SIM_PLUGIN": ANY_FILE})
        self.assertEqual((done.returncode, done.stderr.decode().count("\n")), (2, 1))
        self.assertIn("/nowhere: cannot make a folder: No such file or directory", done.stderr.decode())


if __name__ == "__main__":
    main()
