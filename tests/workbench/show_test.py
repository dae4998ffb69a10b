# SPDX-License-Identifier: GPL-3.0-or-later
"""The byte-by-byte view."""
import re

from support import BASE, FULLEST, TWO_SOCKET, Workbench, documented_words, main, words_of


class Tests(Workbench):
    def fields(self, name, which, board=BASE):
        sensors = self.json("show", name, "--board", board)["sensors"]
        return {f["offset"]: f for f in sensors[0][which]}

    def test_every_byte_of_every_sensor_is_shown_exactly_once(self):
        for sensor in self.json("show", "*", "--board", FULLEST)["sensors"]:
            for which, size, raw in (("record_fields", 64, "record"), ("entry_fields", 32, "entry")):
                at, shown = 0, []
                for field in sensor[which]:
                    self.assertEqual(field["offset"], at, (sensor["name"], field))
                    at += field["size"]
                    shown += field["bytes"].split()
                    self.assertTrue(field["field"] and field["meaning"] and all(field["meaning"]), field)
                self.assertEqual(at, size)
                self.assertEqual(shown[:len(sensor[raw].split())], sensor[raw].split())

    # Profiles whose rows hold every rule for instances and indices, on boards with every part.
    SETS = (("fullest", "default"), ("fullest", "kestrin"), ("kestrin_8gpu", "kestrin"), ("simplified", "default"),
            ("two_socket_2u", "quorral"), ("gpu_8_5502", "astrel"), ("gpu_8_5517", "default"))

    def test_a_byte_that_differs_among_sensors_of_one_row_says_where_it_comes_from(self):
        for board, profile in self.SETS:
            rows = {}
            for sensor in self.json("show", "*", "--board", f"boards/{board}.toml", "--profile", profile)["sensors"]:
                entry = bytes.fromhex(sensor["entry"])
                row = (re.sub(r"[0-9A-F]*\d", "#", sensor["name"]), entry[0], entry[1], sensor["record"][36:44])
                rows.setdefault(row, []).append(sensor)
            several = 0
            for alike in rows.values():
                for which in ("record_fields", "entry_fields"):
                    for fields in zip(*(sensor[which] for sensor in alike)):
                        field = fields[0]
                        if field["field"] in ("record ID", "record length", "sensor number", "ID string type/length",
                                              "ID string", "unused"):
                            continue
                        if len({f["bytes"] for f in fields}) > 1:
                            several += 1
                            self.assertTrue(all(f["set_by"] for f in fields), (board, profile, alike[0]["name"], field))
            self.assertGreater(several, 10, (board, profile))

    def test_what_counts_from_a_number_begins_with_it(self):
        firsts = {}
        for board, profile in self.SETS:
            for sensor in self.json("show", "*", "--board", f"boards/{board}.toml", "--profile", profile)["sensors"]:
                index = next(field for field in sensor["entry_fields"] if field["offset"] == 3)
                if told := re.search(r"(.*) from (\d)$", index["set_by"] or ""):
                    first = firsts.setdefault((board, profile, *told.groups()), set())
                    first.add(int(index["bytes"], 16))
        for at, indexes in firsts.items():
            self.assertEqual(min(indexes), int(at[3]), at)
        self.assertGreater(len({words for _, _, words, _ in firsts}), 10, firsts)

    def test_where_a_byte_comes_from_is_told_in_words_of_the_documentation(self):
        known = documented_words()
        for board, profile in self.SETS:
            for sensor in self.json("show", "*", "--board", f"boards/{board}.toml", "--profile", profile)["sensors"]:
                for field in sensor["record_fields"] + sensor["entry_fields"]:
                    self.assertEqual(words_of(field["set_by"] or "") - known, set(), (board, profile, sensor["name"], field))

    def test_an_instance_of_base_and_number_is_their_sum(self):
        sums = 0
        for board, profile in self.SETS:
            for sensor in self.json("show", "*", "--board", f"boards/{board}.toml", "--profile", profile)["sensors"]:
                record, entry = ({f["offset"]: f for f in sensor[which]} for which in ("record_fields", "entry_fields"))
                told = re.fullmatch(r"0x(\w\w) \+ (.*?)(; .*)?", record[9]["set_by"] or "")
                if told and entry[3]["set_by"] == told[2]:
                    sums += 1
                    self.assertEqual(int(record[9]["bytes"], 16), int(told[1], 16) + int(entry[3]["bytes"], 16), sensor["name"])
        self.assertGreater(sums, 100)

    def test_entries_repeat_their_records(self):
        text = self.out("show", "*", "--board", FULLEST)
        self.assertNotIn("differs from", text)

    def test_core_voltage_bytes_in_words(self):
        fields = self.fields("CPU_VOLTS_01", "record_fields")
        self.assertEqual(fields[37]["bytes"], "EB")
        self.assertEqual(fields[37]["meaning"], ["2.35 V"])
        self.assertEqual(fields[24]["meaning"], ["M = 100; the reading is x * 0.01 V"])
        self.assertEqual(fields[29]["meaning"], ["R exponent -4, B exponent 0"])
        self.assertEqual(fields[18]["meaning"], ["LNR, LC, LNC, UNC, UC, UNR"])
        self.assertEqual(fields[4]["set_by"], "43 + name length")
        self.assertEqual(fields[48]["meaning"], ['"CPU_VOLTS_01"'])

    def test_threshold_masks_bit_by_bit(self):
        # 7A95h: LNC, LC, LNR going low, UNC, UC, UNR going high, three lower comparisons
        meaning = self.fields("CPU_VOLTS_01", "record_fields")[14]["meaning"]
        self.assertEqual([m.split(":")[0] for m in meaning],
                         ["bit 0", "bit 2", "bit 4", "bit 7", "bit 9", "bit 11", "bit 12", "bit 13", "bit 14"])
        self.assertEqual(meaning[0], "bit 0: Lower Non-critical - going low")

    def test_fan_instance_tells_the_fan_number(self):
        field = self.fields("FAN_STATUS_03", "record_fields", TWO_SOCKET)[9]
        self.assertEqual((field["bytes"], field["meaning"]), ("63", ["device-relative 3"]))
        self.assertEqual(field["set_by"], "0x60 + the fan's silk-screen number")

    def test_disk_entry_has_slot_and_mark(self):
        fields = self.fields("HDD_STATUS_03", "entry_fields", TWO_SOCKET)
        self.assertEqual((fields[3]["bytes"], fields[3]["set_by"]), ("03", "disk slot"))
        self.assertEqual((fields[20]["bytes"], fields[20]["meaning"]), ("25", ["disk"]))

    def test_all_sensors_of_one_name_are_shown(self):
        sensors = self.json("show", "CPU_PROCHOT", "--board", BASE)["sensors"]
        self.assertEqual([s["entity"]["instance"] for s in sensors], [0x60, 0x61])
        self.assertEqual(self.out("show", "CPU_PROCHOT", "--board", BASE).count("Device-table entry"), 2)

    def test_a_pattern_shows_all_that_match(self):
        names = [s["name"] for s in self.json("show", "PSU_P*_01", "--board", BASE)["sensors"]]
        self.assertEqual(names, ["PSU_PIN_01", "PSU_POUT_01"])

    def test_an_unknown_name_gets_the_nearest(self):
        line = self.refused(2, "show", "CPU_VOLT_01", "--board", BASE)
        self.assertIn("no sensor 'CPU_VOLT_01' among 48; did you mean CPU_VOLTS_01", line)

    def shown(self, *names):
        return [sensor["name"] for sensor in self.json("show", "--board", BASE, *names)["sensors"]]

    def test_a_name_is_taken_in_any_case(self):
        self.assertEqual(self.shown("acpi_status"), ["ACPI_STATUS"])
        self.assertEqual(self.shown("Cpu_Volts_0?"), ["CPU_VOLTS_00", "CPU_VOLTS_01"])

    def test_several_names_are_shown_once_each_in_the_sets_order(self):
        self.assertEqual(self.shown("ME", "cpu_volts_*", "CPU_VOLTS_00"), ["CPU_VOLTS_00", "CPU_VOLTS_01", "ME"])
        self.assertIn("did you mean INPUT_TEMP", self.refused(2, "show", "ME", "INPUT_TMP", "--board", BASE))

    def test_a_name_like_no_other_gets_no_guess(self):
        self.assertNotIn("did you mean", self.refused(2, "show", "zzz", "--board", BASE))

    def test_text_and_json_show_the_same_bytes(self):
        text = self.out("show", "POWER_WATTS", "--board", BASE)
        for field in self.fields("POWER_WATTS", "record_fields").values():
            self.assertIn(field["field"], text)
            self.assertIn(field["bytes"][:23], text)


if __name__ == "__main__":
    main()
