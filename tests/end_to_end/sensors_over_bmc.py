# SPDX-License-Identifier: GPL-3.0-or-later
"""Sensors that come and go over RMCP+ at a BMC simulator, read back with ipmitool and FreeIPMI."""
import json
import os

from bmc import BmcTest, SENSORS, columns, main, run, without_numbers

BOARD = "boards/two_socket_2u.toml"  # slots 0 to 19 are at the front
PROFILE = "ferrisk"
STORY = "scenarios/day.toml"

# Description and the record that it makes, worked out by hand from the record layouts: id and number are 0.
NVME_TEMPERATURE = (
    "--class temperature --device-type nvme-disk --sub-type 1 --slot 3 --unc 65 --uc 70",
    "00 00 51 01 35 20 00 00 0B 03 7F 68 01 01 80 02 80 32 18 18 80 01 00 00 01 00 00 00 00 00 00 00 00 00 7F 80 "
    "00 46 41 00 00 00 03 03 40 03 3B CA 4E 56 4D 45 33 5F 54 65 6D 70")
NVME_STATUS = (
    "--class disk-status --device-type nvme-disk --sub-type 1 --slot 3 --bitmap 1",
    "00 00 51 02 27 20 00 00 04 00 63 C0 0D 6F 01 00 01 00 47 00 C0 00 00 01 00 00 00 00 00 03 3B CC "
    "4E 56 4D 45 33 5F 53 74 61 74 75 73")
GPU_TEMPERATURE = (  # limits of the profile's own, whatever the description says
    "--class temperature --device-type gpu --slot 1 --uc 100",
    "00 00 51 01 34 20 00 00 0B 61 7F 68 01 01 80 0A 80 7A 38 38 80 01 00 00 01 00 00 00 00 00 00 00 00 00 7F 80 "
    "5A 58 55 00 00 00 03 03 00 01 02 C9 47 50 55 31 5F 54 65 6D 70")
CARD_FRU = (
    "--class hgx-ubb-fru --slot 1",
    "00 00 51 11 12 20 24 80 24 00 10 00 E0 01 03 C7 48 47 58 20 55 42 42")
PSU_FRU = (
    "--class psu-fru --slot 1",
    "00 00 51 11 13 20 11 80 11 00 10 00 0A 01 00 C8 50 53 55 31 5F 46 52 55")
PSU_2_FRU = (
    "--class psu-fru --slot 2",
    "00 00 51 11 13 20 12 80 12 00 10 00 0A 02 00 C8 50 53 55 32 5F 46 52 55")
ALL = (NVME_TEMPERATURE, NVME_STATUS, GPU_TEMPERATURE, CARD_FRU, PSU_FRU, PSU_2_FRU)


def record_of(description):
    return bytes.fromhex(description[1])


class Tests(BmcTest):
    def call(self, command, *words, code=0):
        done = run(SENSORS, command, "--board", BOARD, "--profile", PROFILE, "--root", self.path("root"), "--bmc",
                   self.bmc.address, "--json", *words)
        self.assertEqual(done.returncode, code, (words, done.stderr))
        return json.loads(done.stdout)

    def add(self, *descriptions):
        return [self.call("add", *description[0].split()) for description in descriptions]

    def test_what_is_added_lies_in_the_repository_byte_for_byte_but_for_id_and_number(self):
        self.add(*ALL)
        dump = self.dump()
        self.assertEqual([r[:2] for r in dump], [bytes([n, 0]) for n in range(1, 7)])
        for record, description in zip(dump, ALL):
            with self.subTest(description[0]):
                self.assertEqual(without_numbers(record).hex(" "), record_of(description).hex(" "))

    def test_sensors_are_numbered_from_1_and_locators_are_left_alone(self):
        self.add(PSU_FRU, NVME_TEMPERATURE, CARD_FRU, NVME_STATUS)
        dump = self.dump()
        self.assertEqual([dump[1][7], dump[3][7]], [1, 2])
        self.assertEqual([dump[0][7], dump[2][7]], [0x80, 0x80])

    def has_readings(self):
        """The simulator gives readings to sensors that were added, a moment later."""
        self.eventually(lambda: all(row[1] != "ns" for name, row in self.elist().items() if "Temp" in name),
                        "no readings")

    def test_ipmitool_lists_what_was_added(self):
        self.add(*ALL)
        self.has_readings()
        self.assertEqual(columns(self.ipmitool("sdr", "elist", "all")),
                         [["NVME3_Temp", "01h", "ok", "11.3", "30 degrees C"],
                          ["NVME3_Status", "02h", "ok", "4.0", "Drive Present"],
                          ["GPU1_Temp", "03h", "ok", "11.97", "30 degrees C"],
                          ["HGX UBB", "00h", "ns", "224.1", "Logical FRU @24h"],
                          ["PSU1_FRU", "00h", "ns", "10.1", "Logical FRU @11h"],
                          ["PSU2_FRU", "00h", "ns", "10.2", "Logical FRU @12h"]])

    def test_a_sensor_that_was_added_shows_when_its_limit_is_passed(self):
        self.add(NVME_TEMPERATURE)
        self.has_readings()
        with open(os.path.join(self.bmc.told["readings"], "NVME3_Temp"), "w", encoding="ascii") as file:
            file.write("71\n")  # its upper critical limit is 70
        self.eventually(lambda: self.elist()["NVME3_Temp"][1:] == ["ucr", "11.3", "71 degrees C"], "not ucr")
        self.assertEqual([row[3:6] for row in columns(self.ipmitool("sel", "elist"))],
                         [["Temperature NVME3_Temp", "Upper Non-critical going high", "Asserted"],
                          ["Temperature NVME3_Temp", "Upper Critical going high", "Asserted"]])

    def test_a_users_limit_is_the_one_that_counts(self):
        run(SENSORS, "scenario", STORY, "--bmc", self.bmc.address)
        self.has_readings()
        with open(os.path.join(self.bmc.told["readings"], "NVME23_R_Temp"), "w", encoding="ascii") as file:
            file.write("61\n")  # the user's limit is 60, the disk's own 70
        self.eventually(lambda: self.elist()["NVME23_R_Temp"][1] == "ucr", "not ucr")

    def test_freeipmi_lists_what_was_added(self):
        self.add(*ALL)
        rows = columns(self.freeipmi("ipmi-sensors"))[1:]
        self.assertEqual([row[:3] for row in rows], [["1", "NVME3_Temp", "Temperature"],
                                                     ["2", "NVME3_Status", "Drive Slot"],
                                                     ["3", "GPU1_Temp", "Temperature"]])

    def test_freeipmi_reads_the_limits_of_an_added_sensor(self):
        self.add(GPU_TEMPERATURE)
        self.has_readings()
        text = self.freeipmi("ipmi-sensors", "-vv", "-r", "1").decode()
        limits = {row.split(":")[0].strip(): row.split(":")[1].strip() for row in text.splitlines() if ":" in row}
        self.assertEqual([limits["Upper Non-Critical Threshold"], limits["Upper Critical Threshold"],
                          limits["Upper Non-Recoverable Threshold"]],
                         ["85.000000 C", "88.000000 C", "90.000000 C"])

    def test_a_locator_leads_to_an_inventory(self):
        self.add(PSU_FRU)
        text = self.ipmitool("fru").decode()
        self.assertIn("FRU Device Description : PSU1_FRU (ID 17)\n", text)
        self.assertIn("simulated device 17", text)

    def test_a_power_supply_that_goes_takes_its_locator_and_no_other_record_with_it(self):
        self.add(NVME_TEMPERATURE, PSU_FRU, PSU_2_FRU, CARD_FRU)
        outcome = self.call("remove", "--slot", "1")
        self.assertEqual((outcome["outcome"], outcome["code"]), ("removed", 0))
        self.assertEqual([without_numbers(r) for r in self.dump()],
                         [record_of(NVME_TEMPERATURE), record_of(PSU_2_FRU), record_of(CARD_FRU)])
        self.assertNotIn("PSU1_FRU", self.elist())

    def test_told_twice_there_is_nothing_to_remove(self):
        self.add(PSU_FRU)
        self.call("remove", "--slot", "1")
        again = self.call("remove", "--slot", "1", code=1)
        self.assertEqual((again["outcome"], again["code"]), ("nothing-to-remove", 0))

    def test_a_record_that_somebody_else_deleted_is_not_there_for_the_library(self):
        self.add(PSU_FRU)
        self.assertEqual(self.raw(0x26, 0, 0, 1, 0), b"\1\0")
        gone = self.call("remove", "--slot", "1", code=1)
        self.assertEqual(gone["code"], 0xCB)

    def test_a_power_supply_that_comes_back_gets_a_new_id(self):
        self.add(PSU_FRU)
        self.call("remove", "--slot", "1")
        self.add(PSU_FRU)
        self.assertEqual([(r[0], without_numbers(r)) for r in self.dump()], [(2, record_of(PSU_FRU))])

    def test_after_a_restart_files_tell_what_the_repository_has(self):
        # every call is a process of its own: what it knows of the ones before stands in the files
        self.add(PSU_FRU, GPU_TEMPERATURE)
        known = self.call("add", *PSU_FRU[0].split(), code=1)
        self.assertEqual((known["outcome"], known["code"]), ("already-recorded", 0xFFFF))
        present = self.call("add", *GPU_TEMPERATURE[0].split(), code=1)
        self.assertEqual((present["outcome"], present["code"]), ("already-present", 0xFFFE))
        self.assertEqual(len(self.dump()), 2)

    def test_an_event_lies_in_the_log_beside_the_sensors(self):
        self.add(NVME_STATUS)
        done = run(SENSORS, "event", "addDiskSEL", "4", "3", "21", "0", "--bmc", self.bmc.address)
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertEqual(columns(self.ipmitool("sel", "elist")),
                         [["1", "OEM record e0", "000000030400040d006fa20015"]])

    def test_a_bmc_that_is_gone_is_an_error_with_the_reason(self):
        self.bmc.end()
        done = run(SENSORS, "add", "--board", BOARD, "--profile", PROFILE, "--bmc", self.bmc.address,
                   *GPU_TEMPERATURE[0].split(), "--trace")
        self.assertEqual(done.returncode, 1)
        self.assertIn(b"BMC: no session", done.stderr)

    def test_the_story_of_a_day_ends_in_the_same_repository_in_memory_and_at_a_bmc(self):
        in_memory = run(SENSORS, "scenario", STORY, "--json")
        at_bmc = run(SENSORS, "scenario", STORY, "--json", "--bmc", self.bmc.address)
        self.assertEqual((in_memory.returncode, at_bmc.returncode), (0, 0), (in_memory.stderr, at_bmc.stderr))
        wanted = [bytes.fromhex(r["record"]) for r in json.loads(in_memory.stdout)["repository"]]
        self.assertGreater(len(wanted), 50)
        found = self.dump()
        self.assertEqual([without_numbers(r).hex(" ") for r in found], [without_numbers(r).hex(" ") for r in wanted])
        self.assertEqual([r[:2] for r in found], [r[:2] for r in wanted])
        steps = [[{k: o[k] for k in ("action", "outcome", "code")} for o in step["outcomes"]]
                 for step in json.loads(in_memory.stdout)["steps"]]
        self.assertEqual(steps, [[{k: o[k] for k in ("action", "outcome", "code")} for o in step["outcomes"]]
                                 for step in json.loads(at_bmc.stdout)["steps"]])

    def test_the_story_leaves_its_events_in_the_log(self):
        done = run(SENSORS, "scenario", STORY, "--bmc", self.bmc.address)
        self.assertEqual(done.returncode, 0, done.stderr)
        rows = columns(self.ipmitool("sel", "elist"))
        self.assertEqual([row[-1] for row in rows], ["000000030400040d006fa10013", "08006fa10211"])

    def test_every_sensor_of_the_story_has_a_number_of_its_own(self):
        run(SENSORS, "scenario", STORY, "--bmc", self.bmc.address)
        numbers = [r[7] for r in self.dump() if r[3] in (1, 2)]
        self.assertEqual(numbers, list(range(1, len(numbers) + 1)))


if __name__ == "__main__":
    main()
