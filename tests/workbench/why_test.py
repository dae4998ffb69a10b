# SPDX-License-Identifier: GPL-3.0-or-later
"""Why a sensor is in a set, and why not: one board for each reason, made so that the reason is known."""
import glob
import os
import re

from support import BASE, FULLEST, SOURCE, TWO_SOCKET, Workbench, documented_words, main, words_of

PARTS = """
[board]
id = 0x5481
[cpus]
count = 2
type = "intel"
[psus]
count = 2
group_count = 1
count_per_group = 2
"""


def line_of(path, text):
    """The one line of a file that begins with the text."""
    with open(os.path.join(SOURCE, path), encoding="utf-8") as file:
        found = [number for number, line in enumerate(file, 1) if line.startswith(text)]
    assert len(found) == 1, (path, text, found)
    return found[0]


def text_at(place):
    path, line = place.rsplit(":", 1)
    with open(os.path.join(SOURCE, path), encoding="utf-8") as file:
        return file.read().splitlines()[int(line) - 1]


class Asking(Workbench):
    def answer(self, status, board, *words, profile="default"):
        """The sensors of the answer for one profile; ends with this exit status."""
        import json
        done = self.run_raw("why", "--board", board, "--profile", profile, "--json", *words)
        self.assertEqual((done.returncode, done.stderr.decode()), (status, ""), words)
        told = json.loads(done.stdout)
        self.assertEqual((told["format"], told["board"], len(told["profiles"])), (1, board, 1))
        return told["profiles"][0]["sensors"]

    def absent(self, board, name, profile="default"):
        sensors = self.answer(1, board, name, profile=profile)
        self.assertEqual(len(sensors), 1)
        self.assertFalse(sensors[0]["in_set"])
        return sensors[0]

    def present(self, board, name, profile="default"):
        sensors = self.answer(0, board, name, profile=profile)
        self.assertEqual(len(sensors), 1)
        self.assertTrue(sensors[0]["in_set"])
        return sensors[0]

    def decided(self, sensor):
        return [(a["call"], a["args"], a["answer"]) for a in sensor["decided_by"]]

    def asked(self, sensor):
        return {a["call"]: a for a in sensor["asked"]}

    def fault_line(self, path):
        with open(path, encoding="utf-8") as file:
            return file.read().splitlines().index("[[fault]]") + 1


class WhatIsMissing(Asking):
    def test_a_board_that_has_not_the_sensor_refuses_at_the_gate(self):
        board = self.board(PARTS + "[support]\nsensors = { PCH_TEMP = false }\n")
        sensor = self.absent(board, "PCH_TEMP")
        self.assertEqual(sensor["cause"], "gate")
        self.assertIn("The board does not support adding sensor PCH_TEMP.", sensor["log"])
        self.assertEqual([(c, a) for c, _, a in self.decided(sensor)], [("HAL_GetSensorNotSupportFlagBySensor", "0")])
        self.assertEqual(sensor["decided_by"][0]["from"], f"{board}:12: [support.sensors] PCH_TEMP")
        self.assertIn("answering 1", sensor["tried"])

    def test_a_refusal_for_all_cpus_is_told_for_one_of_them(self):
        board = self.board(PARTS + "[support.sensors]\nSENSOR_CPU_VOLTS = 0\n")
        sensor = self.absent(board, "CPU_VOLTS_01")
        self.assertEqual(sensor["cause"], "gate")
        self.assertEqual(sensor["decided_by"][0]["from"], f"{board}:12: [support.sensors] SENSOR_CPU_VOLTS")
        # a third CPU is not there, whatever the board says of voltages
        self.assertEqual(self.absent(board, "CPU_VOLTS_02")["cause"], "no such index")

    def test_without_a_processor_of_intel_there_is_no_pch(self):
        sensor = self.absent(self.board("[cpus]\ncount = 1\n"), "PCH_TEMP")
        self.assertEqual((sensor["cause"], self.decided(sensor)), ("gate", [("HAL_GetCpuType", "", "0")]))
        self.assertEqual(sensor["decided_by"][0]["from"], "default of [cpus] type")
        self.assertIn("The board has no pch", sensor["log"])

    def test_leakage_needs_liquid_cooling_of_mode_1(self):
        sensor = self.absent(TWO_SOCKET, "LEAKAGE")
        self.assertEqual((sensor["cause"], self.decided(sensor)), ("gate", [("GetLiquidCoolingFlag", "", "0")]))
        self.assertEqual(sensor["decided_by"][0]["from"], "default of [board] liquid_cooling_mode")

    def test_a_bus_client_that_cannot_be_read_drops_its_sensor(self):
        board = self.board(PARTS + '[[fault]]\ncall = "HAL_InputTemp_GetI2cClient"\n')
        sensor = self.absent(board, "INPUT_TEMP")
        self.assertEqual((sensor["cause"], self.decided(sensor)),
                         ("call failed", [("HAL_InputTemp_GetI2cClient", "", "failed")]))
        self.assertEqual(sensor["decided_by"][0]["from"], f"{board}:{self.fault_line(board)}: [[fault]]")
        self.assertIn("InputTemp_GetI2cClient failed!", sensor["log"])

    def test_a_failing_accuracy_drops_the_power_of_the_memory(self):
        board = self.board(PARTS + '[[fault]]\ncall = "HAL_GetDimmPowerAccuracy"\n')
        sensor = self.absent(board, "MEM_POWER")
        self.assertEqual((sensor["cause"], self.decided(sensor)),
                         ("call failed", [("HAL_GetDimmPowerAccuracy", "", "failed")]))
        self.assertIn("get mem power accuracy failed", sensor["log"])

    def test_an_accuracy_of_0_refuses_the_power_of_the_fans(self):
        board = self.board(PARTS + "[fans]\npower_accuracy = 0\n")
        sensor = self.absent(board, "FAN_POWER")
        self.assertEqual((sensor["cause"], self.decided(sensor)), ("gate", [("HAL_GetFanPowerAccuracy", "", "0")]))
        self.assertEqual(sensor["decided_by"][0]["from"], f"{board}:12: [fans] power_accuracy")

    def test_a_record_of_the_same_name_in_the_extended_store_keeps_it_out(self):
        name = b"ACPI_STATUS"
        slot = bytearray(64)
        slot[2:5] = bytes([0x51, 0x02, 27 + len(name)])
        slot[31] = 0xC0 + len(name)
        slot[32:32 + len(name)] = name
        board = self.board(PARTS + f'[files]\n"/var/tmp/extSDR.dat" = {{ hex = "{slot.hex(" ")}" }}\n')
        sensor = self.absent(board, "ACPI_STATUS")
        self.assertEqual((sensor["cause"], self.decided(sensor)[0][0]), ("stored already", "sigwrap_read"))
        self.assertEqual(sensor["decided_by"][0]["from"], f"{board}:12: [files] /var/tmp/extSDR.dat")
        self.assertIn("This sensor is already exist!", sensor["log"])

    def test_a_name_that_cannot_be_printed_drops_its_sensor(self):
        board = self.board(PARTS + '[[fault]]\ncall = "snprintf_s"\nargs = "OS_STOP"\n')
        self.assertEqual(self.absent(board, "OS_STOP")["cause"], "name not printed")

    def test_of_several_printed_names_the_failing_one_is_told(self):
        # names of PSU temperatures are printed for 1, then 2; the second of that pattern fails
        board = self.board(PARTS + '[[fault]]\ncall = "snprintf_s"\nargs = "PSU_TEMP_"\noccurrence = 2\n')
        self.present(board, "PSU_TEMP_01")
        sensor = self.absent(board, "PSU_TEMP_02")
        self.assertEqual((sensor["cause"], sensor["built"]), ("name not printed", ["PSU_TEMP_01"]))

    def test_an_entity_instance_above_255_drops_its_sensor(self):
        # instances of OCP cards begin at 60h: 60h + 159 = 255
        board = self.board(PARTS + "[ocp]\ncount = 170\n")
        self.present(board, "OCP_TEMP_159")
        sensor = self.absent(board, "OCP_TEMP_160")
        self.assertEqual((sensor["cause"], self.decided(sensor)),
                         ("instance wraps", [("GetOcpNetCardMaxCount", "", "170")]))
        self.assertIn("may wrap", sensor["log"])
        self.assertEqual(self.absent(board, "OCP_TEMP_171")["cause"], "no such index")

    def test_only_numbers_that_a_part_has_can_pass_255(self):
        board = self.board(PARTS + "[fans]\ncount = 2\nsilk = [1, 200]\n")
        self.assertEqual(self.absent(board, "FAN_STATUS_200")["cause"], "instance wraps")
        self.assertEqual(self.absent(board, "FAN_STATUS_199")["cause"], "no such index")

    def test_a_guard_ends_the_pass_for_all(self):
        for name, call, answer, key in (("psu_count_255", "HAL_GetPsuMaxCount", "255", "count = 255"),
                                        ("dimm_count_255", "HAL_GetDimmMaxCount", "255", "count = 255"),
                                        ("fan_count_255", "HalFanService.GetFanMaxCount", "255", "count = 255"),
                                        ("ocp_count_255", "GetOcpNetCardMaxCount", "255", "count = 255"),
                                        ("cpu_silk_overflow", "HAL_GetCpuSilkScreenIndexFixValue", "254", "silk_start")):
            with self.subTest(name):
                board = f"boards/guards/{name}.toml"
                for sensor in (self.absent(board, "ACPI_STATUS"), self.absent(board, "CPU_TEMP_00")):
                    self.assertEqual(sensor["cause"], "pass ended")
                    self.assertIn((call, "", answer), self.decided(sensor))
                    place = [a["from"] for a in sensor["decided_by"] if a["call"] == call][0]
                    self.assertTrue(place.startswith(f"{board}:{line_of(board, key)}: "), place)

    def test_a_fact_that_cannot_be_read_ends_the_pass_for_all(self):
        for name, call in (("psu_count_fails", "HAL_GetPsuMaxCount"), ("board_id_fails", "get_default_board_id")):
            board = f"boards/guards/{name}.toml"
            sensor = self.absent(board, "ACPI_STATUS")
            self.assertEqual((sensor["cause"], self.decided(sensor)), ("pass ended", [(call, "", "failed")]))
            self.assertEqual(sensor["decided_by"][0]["from"], f"{board}:{line_of(board, '[[fault]]')}: [[fault]]")

    def test_the_rack_management_board_has_two_sensors_of_its_own(self):
        board = "boards/rack_5605.toml"
        self.present(board, "RackPower", profile="kestrin")
        sensor = self.absent(board, "ACPI_Status", profile="kestrin")
        self.assertEqual((sensor["cause"], self.decided(sensor)),
                         ("pass ended", [("get_default_board_id", "", "0x5605")]))
        self.assertEqual(sensor["decided_by"][0]["from"], f"{board}:{line_of(board, 'id = ')}: [board] id")

    def test_there_are_as_many_psus_as_the_board_says(self):
        sensor = self.absent(TWO_SOCKET, "PSU_TEMP_03")
        self.assertEqual((sensor["cause"], self.decided(sensor)),
                         ("no such index", [("HAL_GetPsuMaxCount", "", "2")]))
        line = line_of(TWO_SOCKET, "[psus]") + 1
        self.assertEqual(text_at(f"{TWO_SOCKET}:{line}"), "count = 2")
        self.assertEqual(sensor["decided_by"][0]["from"], f"{TWO_SOCKET}:{line}: [psus] count")
        self.assertEqual(sensor["built"], ["PSU_TEMP_01", "PSU_TEMP_02"])

    # A part of each kind that is counted, behind the last one of a board that has several: the groups are walked for any
    # number of parts, so nothing but the count keeps it out.
    BEHIND_THE_LAST = ((TWO_SOCKET, "default", "CPU_TEMP_09", "[cpus] count"), (TWO_SOCKET, "default", "PSU_TEMP_09", "[psus] count"),
                       (TWO_SOCKET, "default", "MEM_TEMP_999", "[dimms] count"), (TWO_SOCKET, "default", "PCIE_STATUS_99", "[pcie] slots"),
                       (TWO_SOCKET, "default", "FAN_STATUS_99", "[fans] count"), (TWO_SOCKET, "default", "HDD_STATUS_99", "[disks] backplane"),
                       (TWO_SOCKET, "default", "NVME_TEMP_99", "[disks] backplane"), (FULLEST, "default", "OCP_TEMP_99", "[ocp] count"),
                       (FULLEST, "default", "OCP_ERR_99", "[ocp] count"), ("boards/simplified.toml", "default", "DISKG9_TEMP", "[disks] backplane"),
                       ("boards/simplified.toml", "default", "DIMMG9_TEMP", "[cpus] count"),
                       (FULLEST, "kestrin", "SWP65G50A9_Temp", "[switch_board] chip_temp_count"))

    def test_with_several_parts_the_group_is_walked_and_one_more_has_no_index(self):
        for board, profile, name, key in self.BEHIND_THE_LAST:
            with self.subTest(name):
                sensor = self.absent(board, name, profile=profile)
                self.assertGreater(len(sensor["built"]), 1)
                self.assertEqual((sensor["cause"], sensor["text"]), ("no such index", "no such index on this board"))
                (decided,) = sensor["decided_by"]
                self.assertGreater(int(decided["answer"]), 1)
                self.assertTrue(decided["from"].endswith(key), decided)

    def test_without_parts_the_group_is_empty(self):
        sensor = self.absent("boards/empty.toml", "FAN_STATUS_01")
        self.assertEqual((sensor["cause"], self.decided(sensor)),
                         ("no such index", [("HalFanService.GetFanMaxCount", "", "0")]))
        self.assertEqual(sensor["decided_by"][0]["from"], "default of [fans] count")

    def test_one_group_of_psus_has_no_second_redundancy(self):
        sensor = self.absent(self.board(PARTS), "PSU_REDUNDANT_M")
        self.assertEqual((sensor["cause"], self.decided(sensor)), ("no such index", [("HAL_GetPsuGroupCount", "", "1")]))

    def test_the_small_board_has_no_psus_whatever_it_counts(self):
        sensor = self.absent("boards/small_5497.toml", "PSU_TEMP_01")
        self.assertEqual((sensor["cause"], self.decided(sensor)),
                         ("not walked", [("get_default_board_id", "", "0x5497")]))

    def test_an_offline_cpu_has_no_sensors(self):
        board = self.board('[cpus]\ncount = 2\nreduce_flag = true\nonline = [true, false]\n')
        self.present(board, "CPU_TEMP_00")
        sensor = self.absent(board, "CPU_TEMP_01")
        self.assertEqual((sensor["cause"], self.decided(sensor)),
                         ("not walked", [("HAL_GetCpuOnlineStatus", "index=1", "0")]))
        self.assertIn("CPU 1 is offline", sensor["log"])
        self.assertEqual(sensor["decided_by"][0]["from"], f"{board}:4: [cpus] online")

    def test_a_disk_that_is_no_nvme_disk_has_no_temperature(self):
        sensor = self.absent(TWO_SOCKET, "NVME_TEMP_09")  # slots 0 to 7 are NVMe
        self.assertEqual((sensor["cause"], self.decided(sensor)),
                         ("not walked", [("HalHddBackpanelService.CheckHddIsSupportNvme", "slot=9", "0")]))

    def test_simplification_takes_the_dimms_away(self):
        sensor = self.absent("boards/simplified.toml", "MEM_TEMP_A0")
        self.assertEqual((sensor["cause"], self.decided(sensor)),
                         ("not walked", [("HAL_IsNeedSensorSimplification", "", "1")]))

    def test_the_switch_board_needs_board_flag_and_card(self):
        sensor = self.absent(TWO_SOCKET, "SW_VOLT_01")
        self.assertEqual(sensor["cause"], "not walked")
        self.assertEqual([c for c, _, _ in self.decided(sensor)],
                         ["get_default_board_id", "GetSwitchBoardSupportFlag"])
        self.assertIn("0x550F or 0x55DE or 0x55D8", sensor["text"])
        self.assertIn("in the set", sensor["tried"])

    def test_a_printed_cpu_number_below_the_first_one_is_told(self):
        # the facts are asked first; the records of the CPUs are told that numbers begin at 5
        board = self.board(PARTS + '[[fault]]\ncall = "HAL_GetCpuSilkScreenIndexFixValue"\noccurrence = 2\n'
                                   "from_then_on = true\nsucceed = true\noutput = 5\n")
        sensor = self.absent(board, "CPU0_Power", profile="pellago")
        self.assertEqual((sensor["cause"], self.decided(sensor)),
                         ("below the first CPU", [("HAL_GetCpuSilkScreenIndexFixValue", "", "5")]))


class WhoseItIs(Asking):
    def test_a_name_of_another_profile_says_whose(self):
        done = self.run_raw("why", "--board", BASE, "SWP65G50A1_Temp")
        text = done.stdout.decode()
        self.assertEqual(done.returncode, 1)
        place = re.search(r"kestrin \(([^)]*)\)", text).group(1)
        self.assertIn("SWP65G50A%d_Temp", text_at(place))
        self.assertIn("no row of profile default makes it", text)

    def test_a_name_of_no_profile_gets_the_nearest(self):
        self.assertIn("no profile has a sensor 'OUTPUT_TMP'; did you mean OUTPUT_TEMP",
                      self.refused(2, "why", "--board", BASE, "OUTPUT_TMP"))

    def test_a_pattern_that_nothing_fits_is_wrong_input(self):
        self.assertIn("no sensor or row of profile default fits 'SWP65*'", self.refused(2, "why", "--board", BASE, "SWP65*"))
        self.assertIn("of any profile fits 'X*'", self.refused(2, "why", "--board", BASE, "--profile", "all", "OS_*", "X*"))

    def test_names_or_dropped(self):
        self.assertIn("give one or more names, or --dropped", self.refused(2, "why", "--board", BASE))
        self.refused(2, "why", "--board", BASE, "--dropped", "ACPI_STATUS")

    def test_all_profiles(self):
        done = self.run_raw("why", "--board", BASE, "--profile", "all", "ACPI_STATUS", "LEAKAGE", "OS_BOOT")
        self.assertEqual(done.returncode, 1)
        told = done.stdout.decode()
        for profile in ("default", "kestrin", "pellago", "vorana", "astrel", "quorral", "lumora", "durnow", "ferrisk"):
            built = {s["name"] for s in self.json("list", "--board", BASE, "--profile", profile)["sensors"]}
            for name in ("ACPI_STATUS", "OS_BOOT"):
                self.assertEqual(f"{name}: in the set of {profile}, " in told, name in built, (profile, name))


class WhatIsThere(Asking):
    def test_a_count_is_what_the_last_of_several_hangs_on(self):
        one, two = (self.asked(self.present(TWO_SOCKET, name))["HAL_GetPsuMaxCount"]
                    for name in ("PSU_TEMP_01", "PSU_TEMP_02"))
        self.assertEqual((one["answer"], one["gone_when"]), ("2", ["0", "fails"]))
        self.assertEqual(two["gone_when"], ["1", "0", "fails"])

    def test_a_fans_number_sets_instance_index_and_name(self):
        asked = self.asked(self.present(TWO_SOCKET, "FAN_STATUS_03"))["HalFanService.GetFanSilkByIndex"]
        self.assertEqual((asked["args"], asked["answer"]), ("index=2", "3"))
        self.assertEqual([b["offset"] for b in asked["entry_bytes"]], [3, 22])
        self.assertEqual([(b["offset"], b["field"]) for b in asked["record_bytes"]],
                         [(9, "entity instance"), (32, "ID string")])
        self.assertTrue(asked["from"].endswith("[fans] silk"), asked)

    def test_the_inlets_client_sets_bus_and_address(self):
        asked = self.asked(self.present(BASE, "INPUT_TEMP"))
        self.assertEqual([b["field"] for b in asked["HAL_InputTemp_GetI2cClient"]["entry_bytes"]], ["bus", "address"])
        self.assertEqual(asked["HAL_InputTemp_GetI2cClient"]["gone_when"], ["fails"])
        flag = asked["HAL_GetSensorNotSupportFlagBySensor"]
        self.assertIn("0", flag["gone_when"])
        self.assertEqual((flag["record_bytes"], flag["entry_bytes"]), ([], []))

    def test_an_accuracy_is_the_m_of_its_power(self):
        asked = self.asked(self.present(TWO_SOCKET, "FAN_POWER"))["HAL_GetFanPowerAccuracy"]
        self.assertEqual([(b["offset"], b["field"]) for b in asked["record_bytes"]], [(24, "M")])
        self.assertEqual([b["offset"] for b in asked["entry_bytes"]], [26])
        self.assertEqual(asked["from"], f"{TWO_SOCKET}:{line_of(TWO_SOCKET, 'power_accuracy = 3')}: [fans] power_accuracy")

    def test_what_asks_nothing_is_on_every_board(self):
        self.assertEqual(self.present(BASE, "ACPI_STATUS")["asked"], [])
        self.assertIn("every board has it", self.out("why", "--board", BASE, "ACPI_STATUS"))

    def test_row_and_kind_stand_where_it_says(self):
        for name in ("PSU_TEMP_01", "FAN_STATUS_03", "MEM_TEMP_000", "SYS_RESTART"):
            row = self.present(TWO_SOCKET, name)["row"]
            line = text_at(f"{row['file']}:{row['line']}")
            self.assertIn(f'"{row["pattern"]}"', line)
            self.assertIn(row["kind"]["name"], line)
            self.assertIn(f"KIND({row['kind']['name']},", text_at(row["kind"]["place"]))

    def test_sensors_of_one_name_are_all_told(self):
        self.assertEqual(len(self.answer(0, BASE, "CPU_PROCHOT")), 2)

    def test_a_pattern_tells_what_is_there_and_what_is_not(self):
        sensors = self.answer(1, BASE, "*LEAK*", "PDB_TEMP")
        self.assertEqual([(s["name"], s["in_set"]) for s in sensors], [("PDB_TEMP", True), ("LEAKAGE", False)])


# A board that has every group that hangs on something but those that need another board, and what each hangs on.
MACHINE = """
[board]
id = 0x550F
cdu_enable = true
sensor_simplification = false
[cpus]
count = 2
type = "domain_volt"
reduce_flag = true
online = [true, true]
[psus]
count = 2
group_count = 1
count_per_group = 2
[dimms]
count = 2
[pcie]
slots = ["1-2"]
[fans]
count = 2
[ocp]
count = 2
present = ["0-1"]
[switch_board]
supported = true
chip_temp_count = 1
[switch_board.card.2]
online = true
id = 0x5510
[disks]
enabled = true
nvme_slots = ["0-1"]
[[disks.backplane]]
start_slot = 0
disk_count = 4
"""
RACK = MACHINE.replace("0x550F", "0x5605")
SIMPLE = MACHINE.replace("simplification = false", "simplification = true")
SWITCH_TEMP = MACHINE.replace("0x5510", "0x5517")
SWITCH_AIR = MACHINE.replace("0x550F", "0x5502").replace("0x5510", "0x5504")

BOARD = "get_default_board_id"
DISKS = ("[disks]\n", "[disks]\nservice = false\n", "HalHddBackpanelInst", "must be a service")
PATH = ("enabled = true", "enabled = false", "FruSdrInitPathChoice", "must be 1")
BACKPLANE = ("[[disks.backplane]]\nstart_slot = 0\ndisk_count = 4\n", "", "HalHddBackpanelService.GetBackPanelList",
             "must be at least 1")
CARD = [("id = 0x550F", "id = 0x5481", BOARD, "must be 0x550F or 0x55DE or 0x55D8"),
        ("supported = true", "supported = false", "GetSwitchBoardSupportFlag", "must be 1"),
        ("online = true", "online = false", "GetCardOnlineStatus", "must be 1")]
CPUS = [("count = 2\ntype", "count = 1\ntype", "HAL_GetCpuMaxCount", "no such index on this board"),
        ("[true, true]", "[true, false]", "HAL_GetCpuOnlineStatus", "must be 1")]
SMALL = ("id = 0x550F", "id = 0x5497", BOARD, "must not be 0x5497")
PSUS = ("count = 2\ngroup", "count = 0\ngroup", "HAL_GetPsuMaxCount", "must be at least 1")
DIMMS = ("[dimms]\ncount = 2", "[dimms]\ncount = 0", "HAL_GetDimmMaxCount", "must be at least 1")
OCP = [("id = 0x550F", f"id = {word}", BOARD, "must not be 0x5497 or 0x5580 or 0x558B")
       for word in ("0x5497", "0x5580", "0x558B")]
OCP += [("[ocp]\ncount = 2", "[ocp]\ncount = 0", "GetOcpNetCardMaxCount", "must be at least 1")]
OCP_THERE = [('["0-1"]\n[switch', '[]\n[switch', "GetOcpPresentStatus", "must be at least 1")]
COOLED = [("cdu_enable = true", "cdu_enable = false", "IPMI_GetCduManageConfig", "must be 1")]

# Group, a sensor of it, profile, machine, and for each fact: what the file says, what it says instead, the call, the words.
GROUPS = [
    ("kSwitchPower", "SW_VOLT_01", "default", MACHINE,
     CARD + [("id = 0x5510", "id = 0x5517", "GetCardBoardId", "must be 0x5510")]),
    ("kSwitchTemp", "SW_TEMP_01", "default", SWITCH_TEMP,
     CARD + [("id = 0x5517", "id = 0x5510", "GetCardBoardId", "must be 0x5517")]),
    ("kSwitchAir", "SW_INPUT_TEMP_01", "default", SWITCH_AIR,
     [("id = 0x5502", "id = 0x5481", BOARD, "must be 0x5502"), *CARD[1:],
      ("id = 0x5504", "id = 0x5510", "GetCardBoardId", "must be 0x5504")]),
    ("kCpu", "CPU_TEMP_01", "default", MACHINE, CPUS),
    ("kCpuMore", "CPU1_Power", "pellago", MACHINE, CPUS),
    ("kCpuDomain", "CPU1_D0_N2", "default", MACHINE,
     [('"domain_volt"', '"intel"', "HAL_GetCpuType", "must be 3"), CPUS[1]]),
    ("kPsu", "PSU_TEMP_01", "default", MACHINE, [SMALL, PSUS]),
    ("kPsuRedundancy", "PSU_REDUNDANT", "default", MACHINE,
     [SMALL, PSUS, ("group_count = 1", "group_count = 3", "HAL_GetPsuGroupCount", "must be 1 or 2"),
      ("per_group = 2", "per_group = 0", "HAL_GetPsuCountPerGroup", "must be at least 1")]),
    ("kDimm", "MEM_TEMP_A0", "default", MACHINE,
     [("simplification = false", "simplification = true", "HAL_IsNeedSensorSimplification", "must not be 1"), DIMMS]),
    ("kDimmGroup", "DIMMG0_TEMP", "default", SIMPLE,
     [("simplification = true", "simplification = false", "HAL_IsNeedSensorSimplification", "must be 1"), DIMMS,
      ("count = 2\ntype", "count = 0\ntype", "HAL_GetCpuMaxCount", "must be at least 1")]),
    ("kPcie", "PCIE_STATUS_01", "default", MACHINE,
     [SMALL, ('slots = ["1-2"]', "slots = []", "Hal_GetStandPcieSlotCounts", "must be at least 1")]),
    ("kFan", "FAN_STATUS_01", "default", MACHINE,
     [SMALL, ("[fans]\n", "[fans]\nservice = false\n", "HalFanInst", "must be a service"),
      ("[fans]\ncount = 2", "[fans]\ncount = 0", "HalFanService.GetFanMaxCount", "must be at least 1"),
      ("[fans]\ncount = 2", "[fans]\ncount = 2\nsilk = [255, 2]", "HalFanService.GetFanSilkByIndex", "must not be 255")]),
    ("kDisk", "HDD_STATUS_00", "default", MACHINE, [PATH, DISKS, BACKPLANE]),
    ("kNvme", "NVME_TEMP_00", "default", MACHINE,
     [PATH, DISKS, BACKPLANE,
      ('["0-1"]\n[[', '["1"]\n[[', "HalHddBackpanelService.CheckHddIsSupportNvme", "must be 1")]),
    ("kDiskGroup", "DISKG0_TEMP", "default", SIMPLE,
     [PATH, DISKS, BACKPLANE,
      ("simplification = true", "simplification = false", "HAL_IsNeedSensorSimplification", "must be 1")]),
    ("kOcp", "OCP_TEMP_01", "default", MACHINE, OCP),
    ("kOcpError", "OCP_ERR_01", "default", MACHINE, OCP),
    ("kOcp", "NIC1_Temp", "ferrisk", MACHINE, OCP_THERE),
    ("kOcpError", "NIC1_Err", "ferrisk", MACHINE, OCP_THERE),
    ("kCduTable", "CDU_INLET_TEMP", "default", MACHINE, COOLED),
    ("kCduFan", "CDU_FAN_SPD_01", "default", MACHINE, COOLED),
    ("kCduSupply", "CDU_PS1_Vin", "kestrin", MACHINE, COOLED),
    ("kRackTable", "EnTemp", "kestrin", RACK, [("id = 0x5605", "id = 0x5481", BOARD, "must be 0x5605")]),
    ("kSwitchChip", "SWP65G50A1_Temp", "kestrin", MACHINE,
     [("chip_temp_count = 1", "chip_temp_count = 0", "Hal_GetSwiTempSensorCnt", "must be at least 1")]),
]


class WhatAGroupHangsOn(Asking):
    def test_each_fact_is_told_with_what_it_must_be(self):
        for group, name, profile, machine, facts in GROUPS:
            self.assertEqual(self.present(self.board(machine), name, profile)["row"]["group"], group)
            for said, instead, call, must in facts:
                at = (group, name, instead)
                self.assertEqual(machine.count(said), 1, at)
                sensor = self.absent(self.board(machine.replace(said, instead)), name, profile)
                self.assertEqual([c for c, _, _ in self.decided(sensor)], [call], at)
                self.assertEqual(sensor["text"].split(" and ")[-1], must, at)

    def test_it_is_told_of_the_row_of_that_cpu(self):
        rows = {name: self.present(self.board(MACHINE), name)["row"]["function"] for name in ("CPU0_D0_N2", "CPU1_D0_N2")}
        self.assertEqual(rows, {"CPU0_D0_N2": "Default_GenCPU0D0N2SDR", "CPU1_D0_N2": "Default_GenCPU1D0N2SDR"})
        sensor = self.absent(self.board(MACHINE.replace("[true, true]", "[true, false]")), "CPU1_D0_N2")
        self.assertEqual(sensor["row"]["function"], rows["CPU1_D0_N2"])


class EveryRow(Asking):
    def test_every_row_of_every_profile_has_its_answer_on_every_board(self):
        boards = sorted(os.path.relpath(path, SOURCE) for path in
                        glob.glob(os.path.join(SOURCE, "boards", "*.toml")) +
                        glob.glob(os.path.join(SOURCE, "boards", "guards", "*.toml")))
        self.assertGreater(len(boards), 15)
        for board in boards:
            for profile in self.json("why", "--board", board, "--profile", "all", "--dropped")["profiles"]:
                for sensor in profile["sensors"]:
                    at = (board, profile["name"], sensor["name"])
                    self.assertTrue(sensor["cause"] and sensor["text"], at)
                    self.assertNotIn("unknown", str(sensor), at)
                    self.assertTrue(sensor["decided_by"] or sensor["log"], at)
                    self.assertTrue(all(a["from"] for a in sensor["decided_by"]), (at, sensor["decided_by"]))

    def test_every_row_that_gave_a_sensor_says_what_it_hangs_on(self):
        groups, known = set(), documented_words()
        for board, profiles in (("boards/fullest.toml", ("default", "vorana", "ferrisk")),
                                ("boards/kestrin_8gpu.toml", ("kestrin",)), ("boards/gpu_8_5502.toml", ("astrel",)),
                                ("boards/gpu_8_5517.toml", ("quorral",)), ("boards/rack_5605.toml", ("kestrin",)),
                                ("boards/simplified.toml", ("lumora", "durnow", "pellago"))):
            for profile in profiles:
                names = {}
                for sensor in self.json("list", "--board", board, "--profile", profile)["sensors"]:
                    kind = re.sub(r"(?<=DIMM)[A-Z]+\d|(?<=TEMP_|ATUS_)[A-Z]+\d|\d+", "#", sensor["name"])
                    names.setdefault(kind, sensor["name"])
                for sensor in self.answer(0, board, *names.values(), profile=profile):
                    groups.add(sensor["row"]["group"])
                    self.assertEqual(words_of(sensor["row"]["group_words"]) - known, set(), sensor["row"])
                    self.assertNotIn("unknown", str(sensor))
                    for asked in sensor["asked"]:
                        at = (board, profile, sensor["name"], asked)
                        self.assertTrue(asked["from"], at)
                        if asked["of_group"]:  # what is asked before a group is walked can do without the group
                            self.assertTrue(asked["gone_when"], at)
        self.assertEqual(len(groups), 27, sorted(groups))  # all of library/static_sensors/row.h

    # What a count alone cannot bring: a DIMM that the board does not describe, a backplane without disks.
    NO_ANSWER_BRINGS = ("kDimm", "kDisk", "kNvme", "kDiskGroup")

    def test_what_a_group_lacks_is_all_that_it_lacks(self):
        for board in ("boards/empty.toml", TWO_SOCKET, "boards/small_5497.toml"):
            for profile in self.json("why", "--board", board, "--profile", "all", "--dropped")["profiles"]:
                for sensor in profile["sensors"]:
                    if sensor["cause"] in ("not walked", "no such index") and \
                            sensor["row"]["group"] not in self.NO_ANSWER_BRINGS:
                        self.assertIn("it is in the set", sensor["tried"], (board, profile["name"], sensor))


if __name__ == "__main__":
    main()
