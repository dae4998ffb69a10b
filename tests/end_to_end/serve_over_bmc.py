# SPDX-License-Identifier: GPL-3.0-or-later
"""oxa-sensors serve: a board's set behind a BMC simulator, read and pushed from outside."""
import json
import os
import re
import signal
import stat
import subprocess
import tempfile
import time

from bmc import BmcTest, POLLED, SENSORS, SOURCE, columns, main, run

BASE = "boards/base_48.toml"
FULLEST = "boards/fullest.toml"


def listed(board, profile="default"):
    return json.loads(run(SENSORS, "list", "--board", board, "--profile", profile, "--json").stdout)["sensors"]


def upper_critical(sensor):
    found = [t for k, t in (sensor.get("thresholds") or {}).items() if k == "uc" and t is not None]
    return found[0] if found else None


class Tests(BmcTest):
    SERVE = ("--board", BASE)

    def test_the_repository_is_the_exported_set_byte_for_byte(self):
        exported = run(SENSORS, "export", "--board", BASE, "--number").stdout
        self.assertEqual(b"".join(self.dump()), exported)

    def test_ipmitool_lists_the_set_in_its_order_and_every_sensor_is_well(self):
        rows = columns(self.ipmitool("sdr", "elist", "all"))
        self.assertEqual([row[0] for row in rows], [s["name"] for s in listed(BASE)])
        self.assertEqual([row[1] for row in rows], [f"{n:02X}h" for n in range(1, 49)])
        self.assertEqual({row[2] for row in rows}, {"ok"})

    def test_a_command_that_does_not_listen_holds_nobody_up(self):
        words = (SENSORS, "serve", "--board", BASE, "--port", "0", "--run",
                 "trap '' TERM; echo on; while :; do sleep 1; done")
        with subprocess.Popen(words, stdout=subprocess.PIPE, cwd=SOURCE) as process:
            self.assertEqual(process.stdout.readline(), b"on\n")
            process.send_signal(signal.SIGTERM)
            self.assertEqual(process.wait(timeout=10), 0)

    def test_every_analog_sensor_has_a_reading_in_its_unit(self):
        units = {"°C": "degrees C", "V": "Volts", "W": "Watts", "%": "percent"}
        rows = columns(self.ipmitool("sdr", "elist", "all"))
        analog = 0
        for sensor, row in zip(listed(BASE), rows):
            if sensor["kind"] == "full":
                value, _, unit = row[4].partition(" ")
                self.assertEqual(unit, units[sensor["reading"]["unit"]], row)
                float(value)
                analog += 1
        self.assertEqual(analog, 28)

    def test_parts_are_there_and_well_at_the_start(self):
        rows = self.elist()
        self.assertEqual(rows["CPU_STATUS_00"][3], "Presence detected")
        self.assertEqual(rows["PSU_STATUS_02"][3], "Presence detected")
        self.assertEqual(rows["PSU_REDUNDANT"][3], "Fully Redundant")
        self.assertEqual(rows["INPUT_TEMP"][3], "27 degrees C")  # six tenths of its first limit, 45
        self.assertEqual(rows["VCC12V"][3], "12 Volts")          # halfway between 10.8 and 13.2

    def test_nothing_is_in_the_event_log_at_the_start(self):
        time.sleep(3 * POLLED)
        self.assertEqual(columns(self.ipmitool("sel", "elist")), [])

    def test_freeipmi_lists_the_set_with_readings(self):
        rows = columns(self.freeipmi("ipmi-sensors"))[1:]
        self.assertEqual([row[1] for row in rows], [s["name"] for s in listed(BASE)])
        self.assertEqual([row[3:] for row in rows if row[1] == "INPUT_TEMP"], [["27.00", "C", "'OK'"]])
        self.assertNotIn("N/A", {row[5] for row in rows})

    def test_a_reading_above_the_upper_critical_limit_turns_up_as_ucr_and_in_the_log(self):
        self.bmc.push("INPUT_TEMP", 51)
        self.eventually(lambda: self.elist()["INPUT_TEMP"][1] == "ucr", "INPUT_TEMP is not ucr")
        self.assertEqual(self.elist()["INPUT_TEMP"][3], "51 degrees C")
        events = [row[3:6] for row in columns(self.ipmitool("sel", "elist"))]
        self.assertEqual(events,
                         [["Temperature INPUT_TEMP", "Upper Non-critical going high", "Asserted"],
                          ["Temperature INPUT_TEMP", "Upper Critical going high", "Asserted"]])

    def test_freeipmi_sees_the_same(self):
        self.bmc.push("INPUT_TEMP", 51)
        self.eventually(lambda: b"51.00" in self.freeipmi("ipmi-sensors", "-r", "40"), "no 51 degrees")
        rows = columns(self.freeipmi("ipmi-sensors", "-r", "40"))
        self.assertIn("At or Above (>=) Upper Critical Threshold", rows[1][5])
        rows = columns(self.freeipmi("ipmi-sel"))
        self.assertIn("Upper Critical - going high ; Sensor Reading = 51.00 C ; Threshold = 50.00 C", rows[-1][-1])

    def test_a_reading_that_comes_back_takes_its_events_back(self):
        self.bmc.push("INPUT_TEMP", 51)
        self.eventually(lambda: self.elist()["INPUT_TEMP"][1] == "ucr", "INPUT_TEMP is not ucr")
        self.bmc.push("INPUT_TEMP", 30)
        self.eventually(lambda: self.elist()["INPUT_TEMP"][1] == "ok", "INPUT_TEMP is not ok")
        events = [(row[4], row[5]) for row in columns(self.ipmitool("sel", "elist"))]
        self.assertIn(("Upper Critical going high", "Deasserted"), events)

    def test_a_reading_below_a_lower_limit_is_lcr(self):
        self.bmc.push("VCC12V", 90)  # 9 V, the lower critical limit is 9.6 V
        self.eventually(lambda: self.elist()["VCC12V"][1] == "lcr", "VCC12V is not lcr")

    def test_a_state_that_is_pushed_turns_up_with_its_event(self):
        self.bmc.push("PSU_STATUS_01", 3)  # present and failed
        self.eventually(lambda: "Failure detected" in self.elist()["PSU_STATUS_01"][3], "no failure")
        events = [row[3:6] for row in columns(self.ipmitool("sel", "elist"))]
        self.assertEqual(events, [["Power Supply PSU_STATUS_01", "Failure detected", "Asserted"]])

    def reads(self, name):
        return self.elist()[name][3]

    def test_a_reading_is_written_in_the_sensors_unit(self):
        for name, text, shown in (("INPUT_TEMP", "51 C", "51 degrees C"), ("INPUT_TEMP", "-5°C", "-5 degrees C"),
                                  ("INPUT_TEMP", "40.4 \u00b0c", "40 degrees C"), ("INPUT_TEMP", "0x33", "51 degrees C"),
                                  ("CPU_VOLTS_00", "2.36 V", "2.36 Volts"), ("INPUT_TEMP", "251", "-5 degrees C")):
            with self.subTest(text):
                self.bmc.push(name, text)
                self.eventually(lambda: self.reads(name) == shown, (name, shown, self.reads(name)))

    def test_a_reading_that_its_sensor_cannot_hold_is_refused_and_changes_nothing(self):
        wrong = (("INPUT_TEMP", "-5"), ("INPUT_TEMP", "256"), ("INPUT_TEMP", "128 C"), ("INPUT_TEMP", "-129 C"),
                 ("INPUT_TEMP", "5 V"), ("INPUT_TEMP", "warm"), ("CPU_VOLTS_00", "2.56 V"), ("PSU_STATUS_01", "1 V"))
        for name, text in wrong:
            self.bmc.push(name, text)
            time.sleep(2 * POLLED)
            self.assertEqual(self.reads("INPUT_TEMP"), "27 degrees C", text)
        self.bmc.process.send_signal(signal.SIGTERM)
        self.bmc.process.wait(timeout=10)
        # each once; a file that is written while serve starts may be looked at twice
        lines = list(dict.fromkeys(self.bmc.process.stderr.read().decode().splitlines()))
        temperature = "INPUT_TEMP holds -128 °C to 127 °C, or a raw byte, 0 to 255"
        ends = {"INPUT_TEMP": temperature, "CPU_VOLTS_00": "CPU_VOLTS_00 holds 0 V to 2.55 V, or a raw byte, 0 to 255",
                "PSU_STATUS_01": "PSU_STATUS_01 holds the bits of its states, 0 to 0x7FFF"}
        self.assertEqual(lines, [f"oxa-sensors: {name}: '{text}' is no reading of it: {ends[name]}" for name, text in wrong])

    def test_events_have_the_date(self):
        self.bmc.push("INPUT_TEMP", 51)
        self.eventually(lambda: self.elist()["INPUT_TEMP"][1] == "ucr", "INPUT_TEMP is not ucr")
        day = time.strftime("%m/%d/%y", time.gmtime())
        self.assertEqual(columns(self.ipmitool("sel", "elist"))[0][1], day)

    def test_device_0_is_the_machine(self):
        text = self.ipmitool("fru", "print", "0").decode()
        self.assertIn("base_48", text)
        self.assertIn("profile default", text)

    def test_a_sensor_that_is_added_gets_a_number_behind_the_set(self):
        done = run(SENSORS, "add", "--board", BASE, "--bmc", self.bmc.address, "--class", "temperature",
                   "--device-type", "gpu", "--slot", "1", "--uc", "90")
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertEqual((self.dump()[-1][0], self.dump()[-1][7]), (49, 49))


class Ends(BmcTest):
    def assert_nothing_is_left(self, simulator):
        self.assertFalse(os.path.exists(self.bmc.folder))
        with self.assertRaises(ProcessLookupError):
            os.kill(simulator, 0)

    def simulator(self):
        children = run("ps", "-o", "pid=", "--ppid", str(self.bmc.process.pid)).stdout.split()
        self.assertEqual(len(children), 1)
        return int(children[0])

    def test_ctrl_c_ends_it_and_nothing_is_left(self):
        simulator = self.simulator()
        self.assertEqual(self.bmc.end(signal.SIGINT), 0)
        self.assert_nothing_is_left(simulator)

    def test_a_termination_ends_it_and_nothing_is_left(self):
        simulator = self.simulator()
        self.assertEqual(self.bmc.end(signal.SIGTERM), 0)
        self.assert_nothing_is_left(simulator)

    def test_a_closed_terminal_ends_it_and_nothing_is_left(self):
        simulator = self.simulator()
        self.assertEqual(self.bmc.end(signal.SIGHUP), 0)
        self.assert_nothing_is_left(simulator)

    def test_what_a_killed_serve_left_goes_with_the_next_one(self):
        folder = self.bmc.folder
        self.bmc.process.kill()
        self.bmc.process.wait(timeout=10)
        self.assertTrue(os.path.exists(folder))
        run(SENSORS, "serve", "--empty", "--port", "0", "--run", "true")
        self.assertFalse(os.path.exists(folder))

    def test_the_folder_of_a_bmc_that_runs_stays(self):
        run(SENSORS, "serve", "--empty", "--port", "0", "--run", "true")
        self.assertTrue(os.path.exists(self.bmc.folder))
        self.assertIsNone(self.bmc.process.poll())

    def test_when_the_simulator_ends_serve_says_so(self):
        os.kill(self.simulator(), signal.SIGKILL)
        self.assertEqual(self.bmc.process.wait(timeout=10), 1)
        self.assertEqual(self.bmc.process.stderr.read(), b"oxa-sensors: ipmi_sim has ended: it says nothing\n")
        self.assertFalse(os.path.exists(self.bmc.folder))

    def test_a_port_in_use_is_wrong_input(self):
        done = run(SENSORS, "serve", "--empty", "--port", str(self.bmc.told["port"]))
        self.assertEqual((done.returncode, done.stdout), (2, b""))
        self.assertEqual(done.stderr, f"oxa-sensors: --port {self.bmc.told['port']}: Address already in use\n".encode())

    def test_run_ends_with_the_commands_status(self):
        done = run(SENSORS, "serve", "--board", BASE, "--port", "0", "--run",
                   '$OXA_IPMITOOL sdr elist all | grep -c ok; ls "$OXA_READINGS" | wc -l; exit 7')
        self.assertEqual((done.returncode, done.stdout, done.stderr), (7, b"48\n48\n", b""))

    def test_the_example_of_its_help_works(self):
        self.bmc.end()
        example = re.search(r"^Example:\n  (.*)$", run(SENSORS, "serve", "--help").stdout.decode(), re.M)[1]
        environment = dict(os.environ, PATH=os.path.dirname(SENSORS) + os.pathsep + os.environ["PATH"])
        done = run("sh", "-c", example + " --port 0", env=environment)
        self.assertEqual((done.returncode, done.stderr), (0, b""))
        self.assertEqual(len(columns(done.stdout)), 48)

    def test_every_line_that_serve_tells_to_try_works(self):
        port = str(self.bmc.told["port"])
        self.bmc.end()
        with subprocess.Popen([SENSORS, "serve", "--board", BASE, "--port", port], cwd=SOURCE,
                              stdout=subprocess.PIPE, text=True) as serve:
            lines = [serve.stdout.readline() for _ in range(12)]
            commands = [line.strip() for line in lines if line.startswith("  ")]
            self.assertEqual(len(commands), 6, lines)
            environment = dict(os.environ, PATH=os.path.dirname(SENSORS) + os.pathsep + os.environ["PATH"])
            for command in commands:
                with self.subTest(command):
                    done = run("sh", "-c", command, env=environment)
                    self.assertEqual(done.returncode, 0, done.stderr)
            serve.send_signal(signal.SIGINT)
            self.assertEqual(serve.wait(timeout=10), 0)


class Logins(BmcTest):
    def test_the_password_comes_from_a_file_or_the_environment_too(self):
        with tempfile.NamedTemporaryFile("w") as right, tempfile.NamedTemporaryFile("w") as wrong:
            right.write("test\nmore\n")
            right.flush()
            wrong.write("wrong\n")
            wrong.flush()
            for words, variable, code in ((["--password-file", right.name], "wrong", 0),
                                          (["--password-file", wrong.name], "test", 1), ([], "test", 0),
                                          ([], "wrong", 1), (["--password", "test"], "wrong", 0)):
                with self.subTest(words=words, variable=variable):
                    done = run(SENSORS, "event", "addPOSTErrorSel", "--bmc", self.bmc.address, *words,
                               env=dict(os.environ, IPMI_PASSWORD=variable))
                    self.assertEqual(done.returncode, code, done.stderr)

    def test_a_cipher_suite_that_the_simulator_does_not_know_is_told(self):
        done = run(SENSORS, "event", "addPOSTErrorSel", "--bmc", self.bmc.address, "--cipher", "17")
        self.assertEqual((done.returncode, done.stdout), (1, b""))
        self.assertIn(b"; cipher suite 17 is not known to every BMC (ipmi_sim knows 3 only)\n", done.stderr)
        self.assertEqual(run(SENSORS, "event", "addPOSTErrorSel", "--bmc", self.bmc.address, "--cipher", "3").returncode, 0)


def family(pid):
    """A process and its children."""
    with open(f"/proc/{pid}/task/{pid}/children", encoding="ascii") as file:
        return [pid] + [p for child in file.read().split() for p in family(int(child))]


def sockets(pid):
    """Protocol and local address of every internet socket of a process and its children."""
    inodes = set()
    for process in family(pid):
        for name in os.listdir(f"/proc/{process}/fd"):
            try:
                target = os.readlink(f"/proc/{process}/fd/{name}")
            except OSError:
                continue  # closed meanwhile
            if target.startswith("socket:["):
                inodes.add(target[len("socket:["):-1])
    found = []
    for protocol in ("tcp", "tcp6", "udp", "udp6", "raw", "raw6"):
        if os.path.exists(f"/proc/net/{protocol}"):
            with open(f"/proc/net/{protocol}", encoding="ascii") as file:
                rows = [line.split() for line in file.readlines()[1:]]
            found += [(protocol, row[1].split(":")[0]) for row in rows if row[9] in inodes]
    return found


class Closed(BmcTest):
    LOOPBACK = "0100007F"  # 127.0.0.1, as /proc/net writes it

    def test_the_only_socket_is_one_on_loopback(self):
        self.ipmitool("mc", "info")
        self.assertEqual(sockets(self.bmc.process.pid), [("udp", self.LOOPBACK)])

    def test_nobody_else_gets_into_its_folder(self):
        facts = os.stat(self.bmc.folder)
        self.assertEqual((stat.S_IMODE(facts.st_mode), facts.st_uid), (0o700, os.getuid()))
        for name in ("readings", "state", "cache"):
            self.assertEqual(stat.S_IMODE(os.stat(os.path.join(self.bmc.folder, name)).st_mode), 0o700)


class Biggest(BmcTest):
    SERVE = ("--board", FULLEST, "--profile", "kestrin")

    def test_703_sensors_are_listed_with_luns_and_every_one_is_well(self):
        rows = columns(self.ipmitool("sdr", "elist", "all"))
        self.assertEqual(len(rows), 703)
        self.assertEqual({row[2] for row in rows}, {"ok"})
        self.assertEqual([(r[6], r[7]) for r in self.dump()],
                         [(lun, n) for lun in (0, 1, 3) for n in range(1, 255)][:703])

    def test_freeipmi_reads_every_lun_when_it_may_bridge(self):
        rows = columns(self.freeipmi("ipmi-sensors", "--bridge-sensors"))[1:]
        self.assertEqual(len(rows), 703)
        self.assertEqual([row[1] for row in rows if row[5] == "N/A"], [])

    def test_every_sensor_with_an_upper_critical_limit_shows_when_it_is_passed(self):
        pushed = set()
        for told, sensor in zip(self.bmc.told["sensors"], listed(FULLEST, "kestrin")):
            limit = upper_critical(sensor)
            if limit is not None and limit["raw"] < 127:
                with open(told["reading_file"], "w", encoding="utf-8") as file:
                    file.write(f"{limit['raw'] + 1}\n")
                pushed.add(told["record_id"])
        self.assertGreater(len(pushed), 10)

        def above():
            rows = columns(self.ipmitool("sdr", "elist", "all"))
            return {n for n, row in enumerate(rows, 1) if row[2] in ("ucr", "unr")}

        self.eventually(lambda: above() == pushed, f"pushed: {sorted(pushed)}, above: {sorted(above())}")
        events = [row for row in columns(self.ipmitool("sel", "elist")) if "Upper Critical going high" in row[4]]
        self.assertEqual(len(events), len(pushed))


if __name__ == "__main__":
    main()
