# SPDX-License-Identifier: GPL-3.0-or-later
"""The list: what is in it, and decoded values worked out by hand from the conversion factors."""
import glob
import os
import re

from support import BASE, FULLEST, SOURCE, TWO_SOCKET, Workbench, main


class Tests(Workbench):
    def value(self, sensor, key):
        return sensor["thresholds"][key]["value"]

    def test_the_base_board_has_48_sensors_in_json_and_text(self):
        self.assertEqual(self.json("list", "--board", BASE)["count"], 48)
        lines = self.out("list", "--board", BASE).splitlines()
        self.assertEqual(len(lines), 1 + 48 + 1 + 1)  # header, sensors, blank line, summary
        self.assertRegex(lines[-1], r"^48 sensors \(\d+ full, \d+ compact\), profile default, board " + BASE)

    def test_full_and_compact_add_up(self):
        data = self.json("list", "--board", TWO_SOCKET)
        kinds = [s["kind"] for s in data["sensors"]]
        self.assertEqual((data["full"], data["compact"]), (kinds.count("full"), kinds.count("compact")))
        self.assertEqual(data["count"], len(kinds))

    def test_ordinals_run_from_1(self):
        data = self.json("list", "--board", BASE)
        self.assertEqual([s["ordinal"] for s in data["sensors"]], list(range(1, 49)))

    def test_every_board_gives_valid_json(self):
        boards = glob.glob(os.path.join(SOURCE, "boards", "*.toml"))
        self.assertGreaterEqual(len(boards), 5)
        for board in boards:
            with self.subTest(os.path.basename(board)):
                data = self.json("list", "--profile", "default", "--board", board)
                self.assertEqual(data["profile"], {"name": "default", "id": 0})
                self.assertGreater(data["count"], 0)

    def test_core_voltage_uc_is_235_hundredths_of_a_volt(self):
        # raw 0xEB = 235, M 100, R -4: 235 * 100 / 10000
        sensor = self.sensor("CPU_VOLTS_00")
        self.assertEqual(sensor["thresholds"]["uc"], {"raw": 0xEB, "value": 2.35, "settable": True})

    def test_core_voltage_thresholds_in_volts(self):
        # raw F0 EB E6 78 7D 82, 0.01 V each
        sensor = self.sensor("CPU_VOLTS_00")
        values = {key: t["value"] for key, t in sensor["thresholds"].items()}
        self.assertEqual(values, {"unr": 2.4, "uc": 2.35, "unc": 2.3, "lnr": 1.2, "lc": 1.25, "lnc": 1.3})
        self.assertEqual(sensor["reading"]["formula"], "x * 0.01 V")
        self.assertEqual((sensor["reading"]["minimum"], sensor["reading"]["maximum"]), (0, 2.55))
        self.assertEqual(sensor["hysteresis"]["positive"], {"raw": 3, "value": 0.03})

    def test_rail_thresholds_in_volts(self):
        # raw UC 144, UNC 132, LC 96, LNC 108; M 100, R -3: 0.1 V each; UNR and LNR are absent
        thresholds = self.sensor("VCC12V")["thresholds"]
        self.assertEqual([thresholds[k]["value"] for k in ("uc", "unc", "lc", "lnc")], [14.4, 13.2, 9.6, 10.8])
        self.assertIsNone(thresholds["unr"])
        self.assertIsNone(thresholds["lnr"])

    def test_inlet_temperature_is_signed_degrees(self):
        sensor = self.sensor("INPUT_TEMP")
        self.assertEqual([self.value(sensor, k) for k in ("unr", "uc", "unc")], [52, 50, 45])
        self.assertEqual(sensor["reading"]["formula"], "signed, 1 °C")
        self.assertEqual((sensor["reading"]["minimum"], sensor["reading"]["maximum"]), (-128, 127))
        self.assertEqual(sensor["entity"], {"id": 0x37, "text": "Air Inlet", "instance": 0x60})

    def test_psu_scales(self):
        for name, formula in (("INPUT_VOLTS_01", "x * 2 V"), ("OUTPUT_VOLTS_01", "x * 1 V"),
                              ("PSU_PIN_01", "x * 14 W"), ("PSU_POUT_01", "x * 13 W")):
            self.assertEqual(self.sensor(name)["reading"]["formula"], formula, name)

    def test_accuracy_of_the_board_is_the_scale_of_memory_power(self):
        # power_accuracy = 2 for DIMMs, 3 for fans, 4 for disks in this board file
        for name, formula in (("MEM_POWER", "x * 2 W"), ("FAN_POWER", "x * 3 W"), ("HDD_POWER", "x * 4 W")):
            self.assertEqual(self.sensor(name, TWO_SOCKET)["reading"]["formula"], formula, name)

    def test_voltage_domain_takes_the_boards_description(self):
        # m 5, exponents D0h (R -3): 5 mV each; uc 240, lnr 130
        sensor = self.sensor("CPU0_D0_N2", FULLEST)
        self.assertEqual(sensor["reading"]["formula"], "x * 0.005 V")
        self.assertEqual((self.value(sensor, "uc"), self.value(sensor, "lnr")), (1.2, 0.65))

    def test_humidity_is_a_percentage(self):
        self.assertEqual(self.sensor("ENV_HUMI")["reading"]["formula"], "x * 1 %")

    def test_states_are_told_in_words(self):
        # assertion and reading mask 0x004F of a power supply: presence, failure, predictive failure, AC lost, config
        sensor = self.sensor("PSU_STATUS_01")
        self.assertIsNone(sensor["reading"])
        self.assertIsNone(sensor["thresholds"])
        self.assertEqual([s["bit"] for s in sensor["events"]["assertion"]], [0, 1, 2, 3, 6])
        self.assertIn("Presence", sensor["events"]["assertion"][0]["text"])

    def test_device_code_and_item_of_the_core_voltage(self):
        device = self.sensor("CPU_VOLTS_01")["device"]
        self.assertEqual((device["code"], device["item"], device["index"]), (0x4B, 0, 1))

    def test_filter_keeps_matching_names(self):
        data = self.json("list", "--board", BASE, "--filter", "psu_*")
        # status, temperature, input and output power of two PSUs, one redundancy sensor
        self.assertEqual(len(data["sensors"]), 9)
        self.assertEqual(data["count"], 48)
        self.assertTrue(self.out("list", "--board", BASE, "--filter", "PSU_*").splitlines()[-1].startswith(
            "9 of 48 sensors ("))

    def names(self, *words):
        return [sensor["name"] for sensor in self.json("list", "--board", BASE, *words)["sensors"]]

    def test_several_filters_list_what_any_of_them_means_once_and_in_the_sets_order(self):
        self.assertEqual(self.names("-f", "VCC12V", "-f", "me", "-f", "CPU_VOLTS_0?", "--filter", "cpu_volts_00"),
                         ["CPU_VOLTS_00", "CPU_VOLTS_01", "ME", "VCC12V"])

    def test_a_name_without_pattern_means_the_whole_name(self):
        self.assertEqual(self.names("-f", "input_temp"), ["INPUT_TEMP"])

    def test_a_filter_that_means_no_sensor_gets_the_nearest(self):
        self.assertIn("no sensor 'INPUT_TMP' among 48; did you mean INPUT_TEMP",
                      self.refused(2, "list", "--board", BASE, "-f", "ME", "-f", "INPUT_TMP"))
        self.assertIn("no sensor 'NONE*' among 48", self.refused(2, "list", "--board", BASE, "-f", "NONE*"))

    def test_columns_are_aligned(self):
        lines = self.out("list", "--board", BASE).splitlines()
        header, rows = lines[0], lines[1:49]
        for title in ("NAME", "KIND", "TYPE", "ENTITY", "INST", "READING", "DEVICE"):
            at = header.index(title)
            for row in rows:
                self.assertEqual(row[at - 1], " ", (title, row))
                self.assertNotEqual(row[at], " ", (title, row))

    def test_an_absent_threshold_is_a_dash(self):
        row = next(l for l in self.out("list", "--board", BASE).splitlines() if " NTP_SYNC_FAIL " in l)
        self.assertRegex(row, r"1 state( +-){6}  0x55/13$")

    def test_lines_end_without_blanks(self):
        self.assertIsNone(re.search(r" $", self.out("list", "--board", BASE), re.M))

    def test_chosen_columns_in_the_chosen_order(self):
        lines = self.out("list", "--board", BASE, "--filter", "INPUT_TEMP", "--columns", "uc,name,number").splitlines()
        self.assertEqual([line.split() for line in lines[:2]], [["UC", "NAME", "#"], ["50", "INPUT_TEMP", "40"]])

    def test_all_columns_by_name_are_the_whole_table(self):
        names = "number,name,kind,type,entity,instance,reading,lnr,lc,lnc,unc,uc,unr,device"
        self.assertEqual(self.out("list", "--board", BASE, "--columns", names), self.out("list", "--board", BASE))

    def test_a_column_that_does_not_exist_gets_the_nearest(self):
        line = self.refused(2, "list", "--board", BASE, "--columns", "name,entitty")
        self.assertIn("no column 'entitty'; did you mean entity?", line)
        self.assertIn("no column ''", self.refused(2, "list", "--board", BASE, "--columns", "name,"))
        self.assertIn("--sort", self.refused(2, "list", "--board", BASE, "--sort", "nam"))

    def sorted_by(self, *words):
        out = self.out("list", "--board", BASE, "--no-header", "--columns", "name,uc,device", *words)
        return [line.split() for line in out.splitlines()]

    def test_no_header_leaves_the_lines_of_sensors(self):
        self.assertEqual(len(self.sorted_by()), 48)

    def test_numbers_are_sorted_as_numbers_and_sensors_without_one_come_last(self):
        # UC of this board: 2.35 V twice, 14.4 V, 50 degrees
        values = [row[1] for row in self.sorted_by("--sort", "uc")]
        self.assertEqual(values[:4], ["2.35", "2.35", "14.4", "50"])
        self.assertEqual(set(values[4:]), {"-"})
        self.assertEqual([row[1] for row in self.sorted_by("--sort", "uc", "--reverse")], values[::-1])

    def test_names_are_sorted_and_json_keeps_the_order(self):
        names = [row[0] for row in self.sorted_by("--sort", "name")]
        self.assertEqual(names, sorted(names))
        data = self.json("list", "--board", BASE, "--sort", "name")
        self.assertEqual([s["name"] for s in data["sensors"]], names)

    def test_what_a_count_has_not_is_refused(self):
        self.assertIn("--profile all", self.refused(2, "list", "--board", BASE, "-p", "all", "--sort", "uc"))
        self.assertIn("--json has none", self.refused_in_json(2, "list", "--board", BASE, "--no-header"))

    def test_the_table_fits_into_the_terminal(self):
        plain = self.out("list", "--board", BASE).splitlines()
        for columns in (300, 120, 100, 80, 70):
            with self.subTest(columns):
                lines = self.on_terminal("list", "--board", BASE, "--color=never", columns=columns).decode().splitlines()
                table = lines[:49]
                self.assertLessEqual(max(map(len, table)), columns)
                for wanted in ("NAME", "READING", "UC"):
                    self.assertIn(wanted, table[0].split())
                if columns == 300:
                    self.assertEqual(lines, plain)
                else:
                    self.assertRegex(lines[-1], rf"^left out in {columns} columns: .*device \(--columns chooses\)$")

    def test_chosen_columns_are_never_left_out(self):
        out = self.on_terminal("list", "--board", BASE, "--columns", "name,entity,type,kind", columns=20)
        self.assertIn(b"KIND", out.splitlines()[0])


if __name__ == "__main__":
    main()
