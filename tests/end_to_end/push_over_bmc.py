# SPDX-License-Identifier: GPL-3.0-or-later
"""Into a serve that runs: readings that are pushed, thresholds that somebody sets, and several machines at once."""
import json
import os
import signal
import subprocess
import tempfile
import time

from bmc import BmcTest, SENSORS, SOURCE, main, run

BASE = "boards/base_48.toml"
TWO_SOCKET = "boards/two_socket_2u.toml"


class Push(BmcTest):
    SERVE = ("--board", BASE)

    def push(self, *words, code=0):
        done = run(SENSORS, "push", *words, "--port", str(self.bmc.told["port"]))
        self.assertEqual(done.returncode, code, (words, done.stderr))
        return (done.stdout if code == 0 else done.stderr).decode()

    def reads(self, name):
        return self.elist()[name][3]

    def test_a_reading_that_is_pushed_passes_its_limit_and_says_what_it_is(self):
        self.assertEqual(self.push("INPUT_TEMP", "51C"), "INPUT_TEMP: 51 °C (raw 51)\n")
        self.eventually(lambda: self.elist()["INPUT_TEMP"][1] == "ucr", "not ucr")

    def test_a_name_in_another_case_and_a_pattern_are_names(self):
        self.assertEqual(self.push("input_temp", "-5 °C"), "INPUT_TEMP: -5 °C (raw 251)\n")
        self.assertEqual(self.push("CPU_VOLTS_*", "2.36 V"),
                         "CPU_VOLTS_00: 2.36 V (raw 236)\nCPU_VOLTS_01: 2.36 V (raw 236)\n")
        self.eventually(lambda: self.reads("CPU_VOLTS_01") == "2.36 Volts", "not 2.36 V")

    def test_sensors_that_share_a_name_are_all_meant(self):
        self.assertEqual(self.push("CPU_PROCHOT", "1").splitlines(), ["CPU_PROCHOT: states 0x0001"] * 2)

    def test_what_one_of_them_cannot_hold_is_written_to_none(self):
        self.assertIn("INPUT_TEMP holds -128 °C to 127 °C", self.push("INPUT_TEMP", "128C", code=2))
        self.assertIn("no sensor 'INPUT_TMP' at port", self.push("INPUT_TMP", "1", code=2))
        self.push("*_TEMP_0*", "2.36 V", code=2)
        self.push("INPUT_TEMP", "51" + 70 * " " + "junk", code=2)
        self.assertEqual((self.reads("INPUT_TEMP"), self.reads("CPU_TEMP_00")), ("27 degrees C", "30 degrees C"))

    def test_json_tells_the_same(self):
        self.assertEqual(json.loads(self.push("VCC12V", "9 V", "--json")),
                         {"format": 1, "port": self.bmc.told["port"],
                          "sensors": [{"name": "VCC12V", "raw": 90, "reading": "9 V (raw 90)"}]})

    def test_a_sensor_that_was_added_can_be_pushed(self):
        run(SENSORS, "add", "--board", BASE, "--bmc", self.bmc.address, "--class", "temperature", "--device-type", "gpu",
            "--slot", "1", "--uc", "90")
        self.eventually(lambda: run(SENSORS, "push", "GPU_TEMP_01", "91C", "--port",
                                    str(self.bmc.told["port"])).returncode == 0, "cannot be pushed")
        self.eventually(lambda: self.elist()["GPU_TEMP_01"][1] == "ucr", "not ucr")

    def test_a_port_where_no_serve_of_ours_runs_is_told(self):
        done = run(SENSORS, "push", "VCC12V", "1", "--port", "1")
        self.assertEqual((done.returncode, done.stdout), (1, b""))
        self.assertIn(b"no serve of yours runs at port 1; there are ", done.stderr)

    def test_where_none_runs_that_is_told(self):
        with tempfile.TemporaryDirectory() as nowhere:
            done = run(SENSORS, "push", "VCC12V", "1", env=dict(os.environ, TMPDIR=nowhere))
        self.assertEqual((done.returncode, done.stderr),
                         (1, b"oxa-sensors: no serve of yours runs; 'oxa-sensors serve --board FILE' starts one\n"))

    def test_where_one_runs_it_needs_no_port_and_its_help_is_right(self):
        with tempfile.TemporaryDirectory() as alone:
            done = run(SENSORS, "serve", "--board", BASE, "--port", "0", "--run",
                       SENSORS + " push INPUT_TEMP 51C; sleep 1; $OXA_IPMITOOL sdr elist all | grep INPUT_TEMP",
                       env=dict(os.environ, TMPDIR=alone))
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertRegex(done.stdout.decode(), r"^INPUT_TEMP: 51 °C \(raw 51\)\nINPUT_TEMP +\| 28h \| ucr ")


class UserThresholds(BmcTest):
    def setUp(self):
        self.place = tempfile.TemporaryDirectory()
        self.addCleanup(self.place.cleanup)
        self.file = os.path.join(self.place.name, "t.dat")
        self.SERVE = ("--board", BASE, "--user-thresholds", self.file)
        super().setUp()

    def stored(self):
        done = run(SENSORS, "thresholds", "show", self.file, "--json")
        return {e["name"]: {k: t["raw"] for k, t in e["thresholds"].items() if t}
                for e in json.loads(done.stdout)["entries"]} if done.returncode == 0 else {}

    def test_nothing_is_written_while_nobody_sets_any(self):
        self.assertEqual(self.bmc.end(), 0)
        self.assertFalse(os.path.exists(self.file))

    def test_what_ipmitool_sets_is_saved_as_a_bmc_keeps_it(self):
        # INPUT_TEMP has UNC 45, UC 50, UNR 52; VCC12V has LC 9.6 V = 96 and LNC, UNC, UC 108, 132, 144
        self.ipmitool("sensor", "thresh", "INPUT_TEMP", "ucr", "47")
        self.ipmitool("sensor", "thresh", "VCC12V", "lcr", "9.5")
        wanted = {"INPUT_TEMP": {"unc": 45, "uc": 47, "unr": 52}, "VCC12V": {"lc": 95, "lnc": 108, "unc": 132, "uc": 144}}
        for _ in range(20):
            if self.stored() == wanted:
                break
            time.sleep(0.2)
        self.assertEqual(self.stored(), wanted)
        done = run(SENSORS, "thresholds", "preflight", self.file, "--board", BASE)
        self.assertEqual((done.returncode, done.stdout.decode().count("applies")), (0, 2))

    def test_what_was_set_last_is_saved_before_it_ends(self):
        self.ipmitool("sensor", "thresh", "INPUT_TEMP", "ucr", "46")
        self.bmc.process.send_signal(signal.SIGTERM)
        self.bmc.process.wait(timeout=10)
        self.assertEqual(self.stored(), {"INPUT_TEMP": {"unc": 45, "uc": 46, "unr": 52}})

    def test_a_file_of_another_profile_is_refused_and_stays(self):
        self.bmc.end()
        run(SENSORS, "thresholds", "set", self.file, "--sensor", "X", "--uc", "1", "--profile", "kestrin")
        with open(self.file, "rb") as file:
            before = file.read()
        done = run(SENSORS, "serve", "--board", BASE, "--port", "0", "--user-thresholds", self.file, "--run", "true")
        self.assertEqual(done.returncode, 2)
        self.assertIn(b"saved under profile 1 (kestrin); the machine is profile 0 (default)", done.stderr)
        with open(self.file, "rb") as file:
            self.assertEqual(file.read(), before)

    def test_entries_that_were_there_stay(self):
        self.bmc.end()
        run(SENSORS, "thresholds", "set", self.file, "--sensor", "GPU_TEMP_01", "--uc", "90")
        done = run(SENSORS, "serve", "--board", BASE, "--port", "0", "--user-thresholds", self.file, "--run",
                   "$OXA_IPMITOOL sensor thresh INPUT_TEMP ucr 47")
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertEqual(self.stored(), {"GPU_TEMP_01": {"uc": 90}, "INPUT_TEMP": {"unc": 45, "uc": 47, "unr": 52}})


class Several(BmcTest):
    SERVE = ()

    def setUp(self):
        pass

    def serve(self, *words):
        return run(SENSORS, "serve", "--board", BASE, "--board", TWO_SOCKET, "--port", "0", *words)

    def test_every_board_has_a_bmc_of_its_own(self):
        done = self.serve("--run", """for bmc in $OXA_BMCS; do
            ipmitool -I lanplus -C 3 -H 127.0.0.1 -p ${bmc#*:} -U ipmiusr -P test sdr elist all | wc -l; done; exit 3""")
        self.assertEqual((done.returncode, done.stdout, done.stderr), (3, b"48\n164\n", b""))

    def test_ports_follow_each_other_and_all_of_it_ends_with_serve(self):
        with subprocess.Popen([SENSORS, "serve", "--board", BASE, "--board", TWO_SOCKET, "--port", "9311"], cwd=SOURCE,
                              stdout=subprocess.PIPE, text=True) as serve:
            lines = [serve.stdout.readline() for _ in range(5)]
            self.assertEqual([line.split()[:4] for line in lines[1:3]],
                             [["127.0.0.1:9311", BASE, "default", "48"], ["127.0.0.1:9312", TWO_SOCKET, "default", "164"]])
            self.assertEqual(lines[4], "2 machines; Ctrl-C ends them.\n")
            folders = [os.path.dirname(line.split()[4]) for line in lines[1:3]]
            serve.send_signal(signal.SIGINT)
            self.assertEqual(serve.wait(timeout=10), 0)
        self.assertEqual([os.path.exists(folder) for folder in folders], [False, False])

    def test_json_has_an_object_for_each(self):
        done = self.serve("--json", "--run", "true")
        told = json.loads(done.stdout)
        self.assertEqual([(m["board"], len(m["sensors"])) for m in told["machines"]], [(BASE, 48), (TWO_SOCKET, 164)])

    def test_push_asks_which_one_is_meant(self):
        with tempfile.TemporaryDirectory() as alone:
            done = run(SENSORS, "serve", "--board", BASE, "--board", TWO_SOCKET, "--port", "9321", "--run",
                       SENSORS + " push INPUT_TEMP 51C; " + SENSORS + " push INPUT_TEMP 51C --port 9322",
                       env=dict(os.environ, TMPDIR=alone))
        self.assertEqual((done.returncode, done.stdout.decode(), done.stderr),
                         (0, "INPUT_TEMP: 51 °C (raw 51)\n", b"oxa-sensors: which serve? --port N, of 9321, 9322\n"))


if __name__ == "__main__":
    main()
