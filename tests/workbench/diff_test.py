# SPDX-License-Identifier: GPL-3.0-or-later
"""Differences of two sets: kinds of change, real units, what breaks, files, exit codes."""
import json

from support import BASE, FULLEST, TWO_SOCKET, Workbench, main

UC = 37  # SDR byte of the upper critical threshold
READABLE = 18


class Tests(Workbench):
    def diff(self, code, *words):
        done = self.run_raw("diff", *words, "--json")
        self.assertEqual((done.returncode, done.stderr), (code, b""), words)
        return json.loads(done.stdout)

    def text(self, code, *words):
        done = self.run_raw("diff", *words)
        self.assertEqual((done.returncode, done.stderr), (code, b""), words)
        return done.stdout.decode()

    def exported(self, name, change=None, board=BASE, profile="default"):
        """A JSON export, its list of sensors (name, record and entry as lists of bytes) changed on the way."""
        data = json.loads(self.out("export", "--board", board, "--profile", profile, "--json"))
        sensors = data["sensors"]
        for s in sensors:
            s["record"], s["entry"] = (list(bytes.fromhex(s[k])) for k in ("record", "entry"))
        if change:
            change(sensors)
        for s in sensors:
            s["record"], s["entry"] = (bytes(s[k]).hex(" ").upper() for k in ("record", "entry"))
        with open(self.path(name), "w", encoding="utf-8") as file:
            json.dump(data, file)
        return self.path(name)

    def raw(self, name, board=BASE):
        self.out("export", "--board", board, "-o", self.path(name))
        return self.path(name)

    @staticmethod
    def named(sensors, name):
        return next(s for s in sensors if s["name"] == name)

    @staticmethod
    def rename(sensor, name):
        full = sensor["record"][3] == 1
        start = 48 if full else 32
        sensor["record"] = sensor["record"][:start] + list(name.encode())
        sensor["record"][start - 1] = 0xC0 | len(name)
        sensor["record"][4] = (43 if full else 27) + len(name)

    def test_equal_sets_end_with_0(self):
        data = self.diff(0, "default", "default", "--board", BASE)
        self.assertTrue(data["equal"])
        self.assertEqual(data["same"], 48)
        self.assertEqual(data["breaks"]["saved_thresholds"] + data["breaks"]["names_gone"], [])

    def test_record_ids_and_numbers_of_an_export_are_no_difference(self):
        self.out("export", "--board", BASE, "--json", "--number", "-o", self.path("numbered.json"))
        self.diff(0, "default@" + BASE, self.path("numbered.json"))

    def test_a_changed_threshold_is_told_in_volts(self):
        # 0.01 V a count: 0xEB is 2.35 V, 0xE8 = 232 is 2.32 V
        def lower(sensors):
            record = self.named(sensors, "CPU_VOLTS_00")["record"]
            self.assertEqual(record[UC], 0xEB)
            record[UC] = 0xE8
        data = self.diff(1, "default@" + BASE, self.exported("a.json", lower))
        self.assertEqual([c["name"] for c in data["changed"]], ["CPU_VOLTS_00"])
        change, = data["changed"][0]["changes"]
        self.assertEqual((change["field"], change["offset"], change["a"], change["b"]),
                         ("UC threshold", UC, ["2.35 V"], ["2.32 V"]))
        self.assertEqual(data["breaks"], {"saved_thresholds": [], "all_saved_thresholds": False, "names_gone": [],
                                          "names_read_otherwise": []})

    def test_a_changed_factor_changes_the_thresholds_in_units(self):
        # R -4 becomes -3: 0.1 V a count, the untouched raw 0xEB is 23.5 V
        def scale(sensors):
            self.named(sensors, "CPU_VOLTS_00")["record"][29] = 0xD0
        data = self.diff(1, "default@" + BASE, self.exported("a.json", scale))
        changes = {c["field"]: (c["a"], c["b"]) for c in data["changed"][0]["changes"]}
        self.assertEqual(changes["UC threshold"], (["2.35 V"], ["23.5 V"]))
        self.assertEqual(changes["sensor maximum"], (["2.55 V"], ["25.5 V"]))
        self.assertEqual(data["breaks"]["names_read_otherwise"], ["CPU_VOLTS_00"])

    def test_a_changed_mask_loses_saved_thresholds(self):
        def mask(sensors):
            self.named(sensors, "CPU_VOLTS_01")["record"][READABLE] &= ~0x20
        data = self.diff(1, "default@" + BASE, self.exported("a.json", mask))
        changes = {c["field"]: (c["a"], c["b"]) for c in data["changed"][0]["changes"]}
        self.assertEqual(changes["readable thresholds"],
                         (["LNR, LC, LNC, UNC, UC, UNR"], ["LNR, LC, LNC, UNC, UC"]))
        self.assertEqual(changes["UNR threshold"], (["2.4 V"], ["absent (the readable mask leaves it out)"]))
        self.assertEqual(data["breaks"]["saved_thresholds"], ["CPU_VOLTS_01"])

    def test_states_of_a_mask_are_told_one_by_one(self):
        def state(sensors):
            self.named(sensors, "PSU_STATUS_01")["record"][14] &= ~0x08  # AC lost no longer asserts
        data = self.diff(1, "default@" + BASE, self.exported("a.json", state))
        change, = data["changed"][0]["changes"]
        self.assertEqual((change["field"], change["b"]), ("assertion mask", []))
        self.assertEqual([line.split(":")[0] for line in change["a"]], ["bit 3"])

    def test_the_same_place_under_another_name_is_renamed(self):
        def rename(sensors):
            self.rename(self.named(sensors, "INPUT_TEMP"), "Inlet")
        data = self.diff(1, "default@" + BASE, self.exported("a.json", rename))
        self.assertEqual([(r["name"], r["new_name"], r["changes"]) for r in data["renamed"]],
                         [("INPUT_TEMP", "Inlet", [])])
        self.assertEqual((data["removed"], data["added"], data["changed"]), ([], [], []))
        self.assertEqual(data["breaks"]["saved_thresholds"], ["INPUT_TEMP"])  # it has UNC, UC and UNR
        self.assertEqual(data["breaks"]["names_gone"], ["INPUT_TEMP"])

    def test_raw_records_find_a_renamed_sensor_by_entity_and_kind(self):
        path = self.raw("a.raw")
        with open(path, "rb") as file:
            content = file.read()
        self.assertEqual(content.count(b"INPUT_TEMP"), 1)
        with open(path, "wb") as file:
            file.write(content.replace(b"INPUT_TEMP", b"INLET_TEMP"))
        data = self.diff(1, "default@" + BASE, path)
        self.assertFalse(data["b"]["device_table"])
        self.assertEqual([(r["name"], r["new_name"]) for r in data["renamed"]], [("INPUT_TEMP", "INLET_TEMP")])
        self.assertEqual(data["same"], 47)

    def test_raw_records_equal_what_they_were_written_from(self):
        self.diff(0, "default@" + FULLEST, self.raw("a.raw", FULLEST))

    def test_added_and_removed(self):
        def drop(sensors):
            sensors.remove(self.named(sensors, "CPU_VOLTS_01"))
        path = self.exported("a.json", drop)
        data = self.diff(1, "default@" + BASE, path)
        self.assertEqual([r["name"] for r in data["removed"]], ["CPU_VOLTS_01"])
        self.assertEqual(data["breaks"]["saved_thresholds"], ["CPU_VOLTS_01"])
        data = self.diff(1, path, "default@" + BASE)
        self.assertEqual([r["name"] for r in data["added"]], ["CPU_VOLTS_01"])
        self.assertEqual(data["breaks"]["saved_thresholds"] + data["breaks"]["names_gone"], [])

    def test_a_device_field_is_told_as_the_entrys(self):
        def move(sensors):
            self.named(sensors, "INPUT_TEMP")["entry"][7] = 0x4A
        data = self.diff(1, "default@" + BASE, self.exported("a.json", move))
        change, = data["changed"][0]["changes"]
        self.assertEqual((change["where"], change["field"], change["a"], change["b"]),
                         ("entry", "address", ["0x48"], ["0x4A"]))

    def test_two_boards_differ_by_the_accuracy(self):
        # power_accuracy of the DIMMs: 1 against 2
        data = self.diff(1, "default@" + BASE, "default@" + TWO_SOCKET)
        memory = next(c for c in data["changed"] if c["name"] == "MEM_POWER")
        factor = next(c for c in memory["changes"] if c["field"] == "M")
        self.assertEqual((factor["a"], factor["b"]),
                         (["M = 1; the reading is x * 1 W"], ["M = 2; the reading is x * 2 W"]))

    def test_default_against_kestrin_on_the_fullest_board(self):
        # of Default's 637 only the boot of the OS, the ME, the CDU's 18 and nothing else has no place at Kestrin
        data = self.diff(1, "default", "kestrin", "--board", FULLEST)
        self.assertEqual((data["a"]["count"], data["b"]["count"]), (637, 703))
        removed = [r["name"] for r in data["removed"]]
        self.assertEqual(len(removed), 2 + 18)
        self.assertEqual(removed[:2], ["OS_BOOT", "ME"])
        self.assertTrue(all(name.startswith("CDU_") for name in removed[2:]))
        self.assertEqual(len(data["added"]), 703 - (637 - 20))
        renamed = {r["name"]: r["new_name"] for r in data["renamed"]}
        self.assertEqual([renamed[n] for n in ("INPUT_TEMP", "PSU_PIN_12", "MEM_TEMP_7H1", "VCC12V", "HDD_STATUS_09")],
                         ["Inlet_Temp", "PS12_Pin", "DIMM7H1_Temp", "SYS_12V", "HDD9_Status"])
        self.assertTrue(data["breaks"]["all_saved_thresholds"])

    def test_text_tells_what_breaks(self):
        text = self.text(1, "default", "kestrin", "--board", BASE)
        self.assertRegex(text, r"(?m)^renamed  INPUT_TEMP +Inlet_Temp$")
        self.assertRegex(text, r"(?m)^Saved user thresholds \(found by name and readable mask\): all are dropped, the "
                               r"profile differs")
        self.assertRegex(text, r"(?m)^Monitoring that keys on names: \d+ names are gone \(")
        text = self.text(0, "default", "default", "--board", BASE)
        self.assertIn("none is lost", text)
        self.assertIn("nothing breaks", text)

    def refused_diff(self, *words):
        return self.refused(2, "diff", *words)

    def test_wrong_sides_end_with_2(self):
        self.assertIn("needs a board", self.refused_diff("default", "kestrin"))
        self.assertIn("neither a profile", self.refused_diff("nothing", "default@" + BASE))
        self.assertIn("has no static driver", self.refused_diff("default@" + BASE, "sablin@" + BASE))
        self.assertIn("boards/nowhere.toml", self.refused_diff("default@" + BASE, "default@boards/nowhere.toml"))

    def test_a_board_file_alone_is_told_how_it_becomes_a_set(self):
        for words in ((BASE, TWO_SOCKET), (BASE, "default", "--board", BASE)):
            self.assertEqual(self.refused_diff(*words),
                             f"oxa-sensors: {BASE} is a board description; with a profile before it, it is a set: "
                             f"default@{BASE}")
        self.assertIn("default@nowhere.toml", self.refused_diff("default@" + BASE, "nowhere.toml"))

    def test_a_side_without_set_ends_with_2(self):
        line = self.refused_diff("default@" + BASE, "default@boards/guards/psu_count_255.toml")
        self.assertIn("ended without a count", line)

    def test_broken_files_end_with_2_and_their_name(self):
        with open(self.raw("good.raw"), "rb") as file:
            content = file.read()
        for name, broken in (("cut.raw", content[:-3]), ("head.raw", content[:3]), ("other.raw", b"\0" * 64),
                             ("empty.raw", b""), ("other.json", b"{\"a\": 1}"), ("cut.json", b"{\"profile\":"),
                             ("hex.json", b'{"profile":{"name":"default"},"sensors":[{"record":"ZZ","entry":""}]}')):
            with self.subTest(name):
                with open(self.path(name), "wb") as file:
                    file.write(broken)
                self.assertIn(self.path(name), self.refused_diff(self.path(name), "default@" + BASE))

    def refused_file(self, name, content):
        """What is said of a file with this content, behind its name."""
        with open(self.path(name), "wb") as file:
            file.write(content)
        line = self.refused_diff(self.path(name), "default@" + BASE)
        start = "oxa-sensors: " + self.path(name) + ":"
        self.assertTrue(line.startswith(start), line)
        return line[len(start):]

    def test_broken_json_is_told_with_line_and_column(self):
        self.assertEqual(self.refused_file("a.json", b'{\n  "profile": {,}\n}\n'), "2:15: this is no JSON")
        self.assertEqual(self.refused_file("a.json", b'{"profile": x}'), "1:13: this is no JSON")
        self.assertEqual(self.refused_file("a.json", b'{\n"profile":'), "2:11: the JSON ends here, but is not complete")
        self.assertEqual(self.refused_file("a.json", b"{" + b"[" * 100000), "1:2: this is no JSON")

    def test_json_that_is_no_set_is_told_what_it_lacks(self):
        none = " no set of 'oxa-sensors export --json': "
        for text, lack in (("{}", none + "'profile' is missing"), ('{"profile":3}', none + "'profile' is no object"),
                           ('{"profile":{"name":[]}}', none + "'name' is no text"),
                           ('{"profile":{"name":"x"},"sensors":{}}', none + "'sensors' is no list"),
                           ('{"profile":{"name":"x"},"sensors":[3]}', " record 1:" + none + "'record' is missing")):
            self.assertEqual(self.refused_file("a.json", text.encode()), lack)

    def test_a_word_of_a_set_does_not_reach_the_terminal_as_it_is(self):
        text = '{"profile":{"name":"x"},"sensors":[{"record":"\\u001b[31m","entry":""}]}'
        self.assertEqual(self.refused_file("a.json", text.encode()), " record 1: '?[31m' is no byte of it")

    def test_a_byte_of_a_set_has_no_sign(self):
        for word in ("-1", "+1"):
            text = f'{{"profile":{{"name":"x"}},"sensors":[{{"record":"{word}","entry":""}}]}}'
            self.assertEqual(self.refused_file("a.json", text.encode()), f" record 1: '{word}' is no byte of it")


if __name__ == "__main__":
    main()
