# SPDX-License-Identifier: GPL-3.0-or-later
"""A BMC as the source of list, show, diff, check and export: its records, the thresholds in force, and what others read of it."""
import json
import os

from bmc import BmcTest, SENSORS, columns, main, run

BASE = "boards/base_48.toml"
FULLEST = "boards/fullest.toml"
LINE = "INPUT_TEMP: UC 50 °C, active 47 °C: set by a user\n"


class Source(BmcTest):
    def bmc_url(self):
        return "bmc://" + self.bmc.address

    def oxa(self, command, *words, code=0):
        done = run(SENSORS, command, *words)
        self.assertEqual((done.returncode, done.stderr), (code, b""), words)
        return done.stdout.decode()

    def json(self, command, *words, code=0):
        return json.loads(self.oxa(command, *words, "--json", code=code))

    def set_by_a_user(self):
        self.ipmitool("sensor", "thresh", "INPUT_TEMP", "ucr", "47")


class Tests(Source):
    SERVE = ("--board", BASE)

    def test_the_records_are_read_byte_for_byte(self):
        data = self.json("list", "--from", self.bmc_url())
        self.assertEqual([bytes.fromhex(s["record"]) for s in data["sensors"]], self.dump())
        self.assertEqual((data["board"], data["profile"], data["source"]), (None, None, self.bmc_url()))

    def test_a_machine_whose_thresholds_nobody_set_is_equal_to_its_set(self):
        data = self.json("diff", "default@" + BASE, self.bmc_url())
        self.assertEqual((data["equal"], data["same"], data["b"]["active"], data["a"]["active"]), (True, 48, [], None))

    def test_a_threshold_that_a_user_set_is_told_apart_from_the_record(self):
        self.set_by_a_user()
        active = self.json("list", "--from", self.bmc_url(), "--filter", "INPUT_TEMP")["sensors"][0]["thresholds"]
        self.assertEqual(active["uc"], {"raw": 50, "value": 50, "settable": True, "active": {"raw": 47, "value": 47}})
        self.assertEqual(active["unc"]["active"], {"raw": 45, "value": 45})
        self.assertIn(f"In force at {self.bmc_url()}, other than the records say:\n  {LINE}",
                      self.oxa("list", "--from", self.bmc_url()))
        self.assertIn("In force: UC 50 °C, active 47 °C: set by a user\n",
                      self.oxa("show", "--from", self.bmc_url(), "INPUT_TEMP"))
        self.assertIn("In force: the record's thresholds\n", self.oxa("show", "--from", self.bmc_url(), "VCC12V"))

    def test_what_a_user_set_is_no_difference_of_the_sets(self):
        self.set_by_a_user()
        data = self.json("diff", "default@" + BASE, self.bmc_url())
        self.assertEqual((data["equal"], data["b"]["active"]),
                         (True, [{"name": "INPUT_TEMP", "threshold": "uc", "record": 50, "active": 47}]))
        self.assertIn("  " + LINE, self.oxa("diff", "default@" + BASE, self.bmc_url()))

    def test_another_profile_at_the_machine_is_a_difference(self):
        data = self.json("diff", "kestrin@" + BASE, self.bmc_url(), code=1)
        self.assertFalse(data["equal"])

    def test_its_set_can_be_checked(self):
        self.oxa("check", "--from", self.bmc_url(), "--profile", "default")

    def test_locators_that_came_are_set_aside(self):
        run(SENSORS, "add", "--board", BASE, "--class", "psu-fru", "--slot", "2", "--bmc", self.bmc.address)
        data = self.json("list", "--from", self.bmc_url())
        self.assertEqual((data["count"], [(r["kind"], r["name"], r["record_id"]) for r in data["set_aside"]]),
                         (48, [("FRU locator", "PSU2_FRU", 49)]))
        self.oxa("diff", "default@" + BASE, self.bmc_url())

    def test_the_dump_of_ipmitool_is_the_same_source(self):
        self.ipmitool("sdr", "dump", self.path("dump"))
        self.oxa("diff", self.path("dump"), self.bmc_url())

    def test_freeipmi_takes_our_cache_for_its_own(self):
        self.oxa("export", "--from", self.bmc_url(), "--format", "freeipmi-cache", "-o", self.path("cache"))
        self.freeipmi("ipmi-sensors")
        own, = (os.path.join(folder, name) for folder, _, names in os.walk(self.bmc.cache.name) for name in names)
        with open(own, "rb") as theirs, open(self.path("cache"), "rb") as ours:
            self.assertEqual(ours.read(), theirs.read())

    def sensors_with(self, cache):
        done = run("ipmi-sensors", "-D", "LAN_2_0", "-W", "opensesspriv", "-l", "ADMIN", "-h", self.bmc.address, "-u",
                   "ipmiusr", "-p", "test", "--sdr-cache-file=" + cache)
        self.assertEqual((done.returncode, done.stderr), (0, b""))
        return columns(done.stdout)[1:]

    def test_freeipmi_reads_the_sensors_from_our_cache(self):
        self.oxa("export", "--from", self.bmc_url(), "--format", "freeipmi-cache", "--filter", "INPUT_TEMP", "--filter",
                 "VCC12V", "-o", self.path("cache"))
        self.assertEqual([row[:2] + row[3:5] for row in self.sensors_with(self.path("cache"))],
                         [["40", "INPUT_TEMP", "27.00", "C"], ["44", "VCC12V", "12.00", "V"]])

    def test_a_bmc_that_lets_nobody_in_is_told_with_the_reason(self):
        done = run(SENSORS, "list", "--from", self.bmc_url(), "--password", "wrong")
        self.assertEqual((done.returncode, done.stdout), (1, b""))
        self.assertIn(b"no session", done.stderr)
        done = run(SENSORS, "diff", self.bmc_url(), "default@" + BASE, "--cipher", "17")
        self.assertEqual((done.returncode, done.stdout), (2, b""))
        self.assertIn(b"cipher suite 17", done.stderr)

    def test_the_password_comes_from_file_or_environment(self):
        with open(self.path("right"), "w", encoding="ascii") as file:
            file.write("test\n")
        environment = dict(os.environ, IPMI_PASSWORD="wrong")
        for words, code in (([], 1), (["--password-file", self.path("right")], 0)):
            done = run(SENSORS, "list", "--from", self.bmc_url(), *words, env=environment)
            self.assertEqual(done.returncode, code, done.stderr)

    def test_nobody_is_waited_for_longer_than_the_timeout(self):
        self.bmc.end()
        done = run(SENSORS, "list", "--from", self.bmc_url(), "--timeout", "1")
        self.assertEqual(done.returncode, 1)
        self.assertIn(b"no session", done.stderr)


class Biggest(Source):
    SERVE = ("--board", FULLEST, "--profile", "kestrin")

    def test_sensors_on_every_lun_are_asked_for_their_thresholds(self):
        # LUN 1 begins with sensor 255, LUN 3 with sensor 509
        data = self.json("list", "--from", self.bmc_url())
        asked = {s["owner_lun"] for s in data["sensors"] for t in (s["thresholds"] or {}).values() if t and "active" in t}
        told = {s["owner_lun"] for s in data["sensors"] for t in (s["thresholds"] or {}).values() if t}
        self.assertEqual(asked, told)
        self.assertGreater(len(told), 1)
        self.assertEqual([bytes.fromhex(s["record"]) for s in data["sensors"]], self.dump())

    def test_all_703_are_equal_to_their_set(self):
        self.oxa("diff", "kestrin@" + FULLEST, self.bmc_url())


class Empty(Source):
    def test_an_empty_repository_is_an_empty_set(self):
        self.assertEqual(self.json("list", "--from", self.bmc_url())["count"], 0)

    def test_doctor_holds_the_files_of_a_machine_against_its_bmc(self):
        root = self.path("root")
        added = ("add", "--board", BASE, "--root", root, "--bmc", self.bmc.address, "--class")
        for slot in "12":
            self.oxa(*added, "temperature", "--device-type", "gpu", "--uc", "90", "--slot", slot)
        self.oxa(*added, "psu-fru", "--slot", "1")
        doctor = ("doctor", "--root", root, "--repository", self.bmc_url())
        self.assertEqual(self.json(*doctor)["findings"], [])
        os.truncate(os.path.join(root, "var/tmp/extSDR.dat"), 64)  # one of two slots
        told = [(f["rule"], f["file"]) for f in self.json(*doctor, code=1)["findings"]]
        self.assertEqual(told, [("no-entry", "var/tmp/extSDR.dat"), ("orphaned", "var/tmp/extDevTab.dat")])


if __name__ == "__main__":
    main()
