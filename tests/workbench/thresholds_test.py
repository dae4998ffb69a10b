# SPDX-License-Identifier: GPL-3.0-or-later
"""User thresholds: the image shown, written and tried; damaged images; wrong input."""
import json
import os
import struct

from support import BASE, Workbench, main

SIZE = 14344
LNC, LC, LNR, UNC, UC, UNR = (1 << bit for bit in range(6))

# INPUT_TEMP of the board below: UNC 45, UC 50, UNR 52 (1 °C a count); VCC12V: LC, LNC, UNC and UC
TEMP = "INPUT_TEMP"
VOLTS = "CPU_VOLTS_00"  # all six: 1.2 1.25 1.3 2.3 2.35 2.4 V, 0.01 V a count


def entry(name, six=(0, 0, 0, 0, 0, 0), mask=0, further=(0, 0)):
    """28 bytes; six in the order of the file: UNR UC UNC LNR LC LNC."""
    return struct.pack("<17s6B2BxH", name.encode(), *six, *further, mask)


def image(custom_id, *entries, count=None):
    head = struct.pack("<IH", custom_id, len(entries) if count is None else count)
    return (head + b"".join(entries)).ljust(SIZE, b"\0")


class Tests(Workbench):
    def setUp(self):
        super().setUp()
        self.file = self.path("t.dat")

    def write(self, content, name="t.dat"):
        with open(self.path(name), "wb") as file:
            file.write(content)
        return self.path(name)

    def read(self):
        with open(self.file, "rb") as file:
            return file.read()

    def set(self, *words):
        return self.out("thresholds", "set", self.file, *words)

    def refused_set(self, *words):
        """The line of a set that is refused; the file stays as it is."""
        before = self.read() if os.path.exists(self.file) else None
        line = self.refused(2, "thresholds", "set", self.file, *words)
        self.assertEqual(self.read() if os.path.exists(self.file) else None, before)
        return line

    def preflight(self, code, *words, board=BASE):
        done = self.run_raw("thresholds", "preflight", self.file, "--board", board, *words, "--json")
        self.assertEqual((done.returncode, done.stderr), (code, b""), words)
        return json.loads(done.stdout)

    def test_a_sensor_is_named_in_any_case_and_stored_under_its_own_name(self):
        self.assertTrue(self.set("--board", BASE, "--sensor", "input_temp", "--uc", "51").startswith("INPUT_TEMP: "))
        self.assertTrue(self.set("--sensor", "Input_Temp", "--uc", "50").startswith("INPUT_TEMP: "))  # the entry's
        self.assertEqual([e["name"] for e in self.json("thresholds", "show", self.file)["entries"]], ["INPUT_TEMP"])

    # ---- show -----------------------------------------------------------------------------------

    def test_show_tells_every_field(self):
        self.write(image(7, entry("INPUT_TEMP", (60, 55, 50, 1, 2, 3), UNR | UC | UNC, (0xAB, 0xCD)),
                         entry("EXACTLY_16_CHARS", (1, 2, 3, 4, 5, 6), 0x1200 | LNR | LC | LNC)))
        data = self.json("thresholds", "show", self.file)
        self.assertEqual((data["saved_under"], data["count"]), ({"name": "lumora", "id": 7}, 2))
        first, second = data["entries"]
        self.assertEqual(first, {"name": "INPUT_TEMP", "mask": 0x38, "mask_text": "UNC, UC, UNR",
                                 "thresholds": {"lnr": None, "lc": None, "lnc": None, "unc": {"raw": 50}, "uc": {"raw": 55},
                                                "unr": {"raw": 60}},
                                 "further": [0xAB, 0xCD], "note": None})
        self.assertEqual((second["name"], second["mask"], second["mask_text"]),
                         ("EXACTLY_16_CHARS", 0x1207, "LNR, LC, LNC, 0x1200"))
        self.assertEqual(second["thresholds"],
                         {"lnr": {"raw": 4}, "lc": {"raw": 5}, "lnc": {"raw": 6}, "unc": None, "uc": None, "unr": None})

    def test_show_as_a_table(self):
        self.write(image(0, entry("INPUT_TEMP", (60, 55, 50, 1, 2, 3), UNR | UC | UNC, (0xAB, 0xCD)),
                         entry("A", mask=0)))
        lines = self.out("thresholds", "show", self.file).splitlines()
        self.assertEqual(lines[0], self.file + ": saved under profile 0 (default), 2 of 512 entries, raw values")
        self.assertEqual(lines[2].split(), "# NAME MASK LNR LC LNC UNC UC UNR FURTHER NOTE".split())
        self.assertEqual(lines[3].split(), "1 INPUT_TEMP UNC, UC, UNR - - - 50 55 60 AB CD".split())
        self.assertEqual(lines[4].split(), "2 A none - - - - - - 00 00".split())
        self.assertEqual(len(lines), 5)

    def test_show_an_empty_table_and_an_unknown_profile(self):
        self.write(image(0))
        self.assertEqual(self.out("thresholds", "show", self.file),
                         self.file + ": saved under profile 0 (default), 0 of 512 entries, raw values\n")
        self.write(image(0xFFFFFFFF))
        self.assertIn("saved under profile 4294967295, 0 of", self.out("thresholds", "show", self.file))

    def test_show_512_entries(self):
        self.write(image(0, *(entry("S%03d" % i, mask=UC) for i in range(512))))
        data = self.json("thresholds", "show", self.file)
        self.assertEqual([e["name"] for e in data["entries"]], ["S%03d" % i for i in range(512)])

    def test_show_says_what_the_overlay_will_never_use(self):
        self.write(image(0, entry("LOW", (0, 0, 0, 10, 20, 15), LNR | LC | LNC),
                         entry("EQUAL", (50, 50, 0, 0, 0, 0), UNR | UC),
                         entry("OUTSIDE", (1, 2, 3, 30, 20, 10), LNR | UC),
                         entry("LOW", mask=UC)))
        notes = [e["note"] for e in self.json("thresholds", "show", self.file)["entries"]]
        self.assertEqual(notes, ["never applied: LC 20 is not below LNC 15", "never applied: UC 50 is not below UNR 50",
                                 None, "never found: entry 1 has the same name"])

    # ---- damaged images -------------------------------------------------------------------------

    def damaged(self, content):
        path = self.write(content)
        line = self.refused(2, "thresholds", "show", path)
        for words in (("preflight", path, "--board", BASE), ("set", path, "--sensor", "A", "--uc", "1")):
            self.assertEqual(self.refused(2, "thresholds", *words), line)
        self.assertEqual(self.read(), content)
        self.assertTrue(line.startswith("oxa-sensors: " + path + ": "), line)
        return line[len("oxa-sensors: " + path + ": "):]

    def test_a_wrong_size_says_which(self):
        self.assertEqual(self.damaged(b""), "0 bytes, a threshold image has 14344; 14344 are missing")
        self.assertEqual(self.damaged(image(0)[:-1]), "14343 bytes, a threshold image has 14344; 1 is missing")
        self.assertEqual(self.damaged(image(0) + b"\0" * 56),
                         "14400 bytes, a threshold image has 14344; 56 are too many")
        self.assertEqual(self.damaged(bytes(1 << 21)), "more than a million bytes, a threshold image has 14344")

    def test_a_count_above_512(self):
        self.assertEqual(self.damaged(image(0, count=513)),
                         "damaged: the entry count (bytes 4 and 5) is 513; a table has at most 512")

    def test_entries_behind_the_count(self):
        self.assertEqual(self.damaged(image(0, entry("A", mask=UC), entry("B", mask=UC), count=1)),
                         "damaged: entry 2 (byte 34): it is not empty, but the entry count is 1")

    def test_entries_that_no_save_leaves(self):
        good = entry("GOOD", mask=UC)
        self.assertEqual(self.damaged(image(0, good, entry("", mask=UC))), "damaged: entry 2 (byte 34): it has no name")
        self.assertEqual(self.damaged(image(0, good, entry("A\x07B", mask=UC))),
                         "damaged: entry 2 (byte 34): character 2 of its name is 0x07, not printable ASCII")
        self.assertEqual(self.damaged(image(0, entry("A\0B", mask=UC))),
                         "damaged: entry 1 (byte 6): byte 2 of it is 0x42; behind the end of a name all are zero")
        self.assertEqual(self.damaged(image(0, entry("EXACTLY_16_CHARSX", mask=UC))),
                         "damaged: entry 1 (byte 6): byte 16 of it is 0x58; behind the end of a name all are zero")
        bad = bytearray(good)
        bad[25] = 9
        self.assertEqual(self.damaged(image(0, bytes(bad))),
                         "damaged: entry 1 (byte 6): byte 25 of it is 0x09; it is always zero")

    def test_the_last_two_bytes(self):
        self.assertEqual(self.damaged(image(0)[:-2] + b"\1\0"),
                         "damaged: the last two bytes (14342 and 14343) are not zero")

    def test_every_byte_of_a_small_image_flipped_ends_well_or_in_one_line(self):
        good = image(0, entry(TEMP, (60, 55, 50, 0, 0, 0), UNR | UC | UNC, (7, 8)))
        for at in list(range(0, 40)) + [14341, 14342, 14343]:
            bad = bytearray(good)
            bad[at] ^= 0xFF
            with self.subTest(at):
                self.write(bytes(bad))
                done = self.run_raw("thresholds", "show", self.file)
                self.assertIn(done.returncode, (0, 2))
                self.assertEqual(len(done.stderr.splitlines()), 0 if done.returncode == 0 else 1)
                # profile, values, further bytes and mask may be anything
                self.assertEqual(done.returncode == 0, at in (0, 1, 2, 3, *range(23, 31), 32, 33), done.stderr)

    def test_files_that_are_none(self):
        self.assertIn(": no such file; 'oxa-sensors thresholds set' makes one",
                      self.refused(2, "thresholds", "show", self.path("nowhere")))
        self.assertIn("no such file", self.refused(2, "thresholds", "preflight", self.path("nowhere"), "-b", BASE))
        self.assertIn("cannot read", self.refused(2, "thresholds", "show", self.folder.name))

    # ---- set ------------------------------------------------------------------------------------

    def test_set_makes_the_file_that_the_bmc_would_have_written(self):
        text = self.set("--sensor", "PSU_TEMP_01", "--unr", "90", "--uc", "0x50", "--unc", "70")
        self.assertEqual(text, "PSU_TEMP_01: UNC 70, UC 80, UNR 90; mask UNC, UC, UNR, profile 0 (default), "
                               "entry 1 of 1 in " + self.file + "\n")
        self.assertEqual(self.read(), image(0, entry("PSU_TEMP_01", (90, 80, 70, 0, 0, 0), 0x38)))

    def test_set_adds_and_replaces(self):
        self.set("--sensor", "A", "--profile", "lumora", "--lc", "5", "--further", "1", "0xFF")
        self.set("--sensor", "EXACTLY_16_CHARS", "--lnr", "1", "--lc", "2", "--lnc", "3")
        self.set("--sensor", "A", "--lc", "6")
        self.assertEqual(self.read(), image(7, entry("A", (0, 0, 0, 0, 6, 0), LC, (1, 255)),
                                            entry("EXACTLY_16_CHARS", (0, 0, 0, 1, 2, 3), 7)))

    def test_set_keeps_what_the_entry_had(self):
        self.set("--sensor", "A", "--uc", "50", "--unr", "60", "--further", "7", "8")
        self.set("--sensor", "A", "--unc", "40")
        self.assertEqual(self.read(), image(0, entry("A", (60, 50, 40, 0, 0, 0), 0x38, (7, 8))))
        self.set("--sensor", "A", "--mask", "0x1210")  # UC alone is left, the high byte is stored too
        self.assertEqual(self.read(), image(0, entry("A", (0, 50, 0, 0, 0, 0), 0x1210, (7, 8))))

    def test_set_json(self):
        data = self.json("thresholds", "set", self.file, "--sensor", "A", "--uc", "50")
        self.assertEqual((data["index"], data["count"], data["created"], data["saved_under"]),
                         (1, 1, True, {"name": "default", "id": 0}))
        self.assertEqual(data["entry"]["thresholds"]["uc"], {"raw": 50})
        self.assertFalse(self.json("thresholds", "set", self.file, "--sensor", "A", "--uc", "51")["created"])

    def test_set_in_the_sensors_units(self):
        # record: UNC 45, UC 50, UNR 52 °C
        text = self.set("--board", BASE, "--sensor", TEMP, "--uc", "51")
        self.assertIn("UNC 45 °C (raw 45), UC 51 °C (raw 51), UNR 52 °C (raw 52); mask UNC, UC, UNR", text)
        # 0.01 V a count
        self.set("--board", BASE, "--sensor", VOLTS, "--lc", "1.24", "--unr", "2.55")
        self.assertEqual(self.read(), image(0, entry(TEMP, (52, 51, 45, 0, 0, 0), 0x38),
                                            entry(VOLTS, (255, 235, 230, 120, 124, 130), 0x3F)))
        self.set("--board", BASE, "--sensor", TEMP, "--unc", "40")  # 51 stays: same mask
        self.assertEqual(self.json("thresholds", "show", self.file)["entries"][0]["thresholds"],
                         {"lnr": None, "lc": None, "lnc": None, "unc": {"raw": 40}, "uc": {"raw": 51}, "unr": {"raw": 52}})

    def test_set_of_negative_degrees_is_twos_complement(self):
        self.set("--board", BASE, "--sensor", TEMP, "--unc", "-3", "--uc", "-2", "--unr", "-1")
        self.assertEqual(self.read(), image(0, entry(TEMP, (255, 254, 253, 0, 0, 0), 0x38)))

    def test_set_raw_on_a_board(self):
        self.set("--board", BASE, "--sensor", VOLTS, "--raw", "--lc", "124")
        self.assertEqual(self.json("thresholds", "show", self.file)["entries"][0]["thresholds"]["lc"], {"raw": 124})

    def test_set_replaces_an_entry_of_another_mask_by_the_records(self):
        self.set("--sensor", TEMP, "--lc", "3", "--uc", "49")
        self.set("--board", BASE, "--sensor", TEMP, "--unc", "46")
        self.assertEqual(self.read(), image(0, entry(TEMP, (52, 50, 46, 0, 0, 0), 0x38)))

    def test_set_refuses_values(self):
        for words, part in ((("--uc", "256"), "--uc 256: a whole number 0 to 255 is wanted"),
                            (("--uc", "-1"), "--uc -1: a whole number 0 to 255"),
                            (("--uc", "5.5"), "--uc 5.5: a whole number 0 to 255 is wanted (with --board in the"),
                            (("--uc", "5V"), "--uc 5V: a whole number"), (("--uc", ""), "nothing to set"),
                            (("--uc", "nan"), "--uc nan: a whole number"),
                            (("--mask", "0x10000"), "--mask 0x10000: a whole number 0 to 65535"),
                            (("--uc", "5", "--further", "1", "256"), "--further 256: a whole number 0 to 255"),
                            ((), "nothing to set: give at least one of"),
                            (("--mask", "0x10"), "--mask 0x10 has UC; give --uc too"),
                            (("--mask", "0x10", "--uc", "4", "--lc", "3"), "--lc: --mask 0x10 leaves LC out"),
                            (("--uc", "5", "--description", "x"), "--description needs --board")):
            with self.subTest(words):
                self.assertIn(part, self.refused_set("--sensor", "A", *words))

    def test_set_refuses_names(self):
        for name in ("", "SEVENTEEN_LETTERS", "Ä", "A\tB"):
            with self.subTest(name):
                self.assertIn("a name has 1 to 16 printable ASCII characters",
                              self.refused_set("--sensor", name, "--uc", "1"))

    def test_set_refuses_options(self):
        self.assertIn("unknown option '--unx'; did you mean --unc?", self.refused_set("--sensor", "A", "--unx", "1"))
        self.assertIn("--sensor is required", self.refused_set("--uc", "1"))
        self.assertIn("unknown profile 'nobody'; available: default,",
                      self.refused_set("--sensor", "A", "--uc", "1", "--profile", "nobody"))

    def test_set_refuses_a_wrong_order(self):
        for words, part in ((("--lnr", "10", "--lc", "20", "--lnc", "15"), "LC 20 is not below LNC 15"),
                            (("--unc", "60", "--uc", "60"), "UNC 60 is not below UC 60"),
                            (("--unc", "70", "--unr", "60"), "UNC 70 is not below UNR 60")):
            self.assertIn("A: " + part + " (raw bytes, compared without sign): the overlay would refuse the entry",
                          self.refused_set("--sensor", "A", *words))
        self.set("--sensor", "A", "--lnc", "200", "--uc", "10")  # lower and upper are not compared
        self.assertIn("UC 10 is not below UNR 9", self.refused_set("--sensor", "A", "--unr", "9"))
        # -1 °C is the raw byte 255
        self.assertIn("UC 255 is not below UNR 52",
                      self.refused_set("--board", BASE, "--sensor", TEMP, "--uc", "-1"))

    def test_set_refuses_what_the_record_cannot_have(self):
        at = ("--board", BASE, "--sensor")
        for words, part in (((TEMP, "--lnr", "1"), "--lnr: INPUT_TEMP has no LNR; its readable mask is UNC, UC, UNR"),
                            ((TEMP, "--uc", "50.5"), "INPUT_TEMP has nothing between 50 °C and 51 °C"),
                            ((TEMP, "--unr", "128"), "INPUT_TEMP ends at 127 °C"),
                            ((TEMP, "--unr", "-129"), "INPUT_TEMP begins at -128 °C"),
                            ((VOLTS, "--uc", "2.355"), "CPU_VOLTS_00 has nothing between 2.35 V and 2.36 V"),
                            ((VOLTS, "--uc", "2.56"), "CPU_VOLTS_00 ends at 2.55 V"),
                            ((TEMP, "--uc", "hot"), "--uc hot: a number is wanted"),
                            ((TEMP, "--uc", "51", "--mask", "0x10"), "--mask and --board (or OXA_BOARD) contradict each other"),
                            (("CPU_STATUS_00", "--uc", "5"), "is a compact record: it has no thresholds"),
                            (("INPUT_TMP", "--uc", "5"), "no full record 'INPUT_TMP' on boards/base_48.toml with "
                                                         "profile default; did you mean INPUT_TEMP")):
            with self.subTest(words):
                self.assertIn(part, self.refused_set(*at, *words))
        self.assertIn("boards/nowhere.toml",
                      self.refused_set("--board", "boards/nowhere.toml", "--sensor", "A", "--uc", "1"))

    def test_set_refuses_another_customers_file(self):
        self.write(image(7, entry("A", mask=0)))
        self.assertIn("saved under profile 7 (lumora); a machine of profile 16 (ferrisk) deletes it when it starts",
                      self.refused_set("--profile", "ferrisk", "--sensor", "A", "--uc", "1"))

    def test_set_refuses_the_513th_sensor_and_replaces_one_of_512(self):
        entries = [entry("S%03d" % i, (0, 9, 0, 0, 0, 0), UC) for i in range(512)]
        self.write(image(0, *entries))
        self.assertIn("the library refuses to save NEW: sensorCount:512 >= SENSOR_MAX_COUNT!!!",
                      self.refused_set("--sensor", "NEW", "--uc", "1"))
        self.set("--sensor", "S511", "--uc", "8")
        entries[511] = entry("S511", (0, 8, 0, 0, 0, 0), UC)
        self.assertEqual(self.read(), image(0, *entries))

    def test_set_refuses_a_place_that_cannot_be_written(self):
        line = self.refused(2, "thresholds", "set", self.path("no/where.dat"), "--sensor", "A", "--uc", "1")
        self.assertIn("cannot write", line)

    # ---- preflight ------------------------------------------------------------------------------

    def test_preflight_of_what_applies(self):
        self.set("--board", BASE, "--sensor", TEMP, "--uc", "51")
        data = self.preflight(0)
        self.assertEqual([data[k] for k in ("applies", "refused", "orphaned", "dropped")], [1, 0, 0, 0])
        record, = data["entries"][0]["records"]
        self.assertEqual((record["status"], record["what"]), ("applies", "UC 50 °C -> 51 °C"))
        self.assertEqual(record["line"], "update sensor INPUT_TEMP mask 0x38, threshold 52, 51, 45, 0, 0, 0 "
                                         "successfully")
        self.assertEqual(record["thresholds"]["uc"], {"before": {"raw": 50, "value": 50},
                                                      "after": {"raw": 51, "value": 51}})
        self.assertIsNone(record["thresholds"]["lc"])

    def test_preflight_tells_why_an_entry_is_refused(self):
        self.write(image(0, entry(TEMP, (60, 55, 50, 0, 0, 3), UNR | UC | UNC | LNC),
                         entry(VOLTS, (240, 235, 230, 120, 140, 130), 0x3F),
                         entry("VCC12V", mask=0),
                         entry(TEMP, (60, 55, 50, 0, 0, 0), UNR | UC | UNC)))
        data = self.preflight(1)
        self.assertEqual([data[k] for k in ("applies", "refused", "orphaned", "dropped")], [0, 4, 0, 0])
        told = [[r["what"] for r in e["records"]] or e["why"] for e in data["entries"]]
        self.assertEqual(told, [["mask: saved under LNC, UNC, UC, UNR; the record has UNC, UC, UNR"],
                                ["order: LC 140 is not below LNC 130"],
                                ["mask: saved under none; the record has LC, LNC, UNC, UC"],
                                "entry 1 has the same name"])
        self.assertEqual(data["entries"][0]["records"][0]["line"],
                         "sensor INPUT_TEMP last mask 39, now mask 38, cannot modify threshold")

    def test_preflight_tells_orphans(self):
        self.write(image(0, entry("GPU_TEMP_01", (0, 90, 0, 0, 0, 0), UC), entry("INPUT_TMP", mask=UC),
                         entry("CPU_STATUS_00", mask=UC)))
        data = self.preflight(1)
        self.assertEqual([data[k] for k in ("applies", "refused", "orphaned", "dropped")], [0, 0, 3, 0])
        whys = [e["why"] for e in data["entries"]]
        self.assertTrue(whys[0].startswith("no full record of that name"), whys[0])
        self.assertEqual(whys[1], "no full record of that name; the nearest is INPUT_TEMP")
        self.assertEqual(whys[2], "the record of that name is compact: it has no thresholds")

    def test_preflight_of_another_customers_machine_drops_all(self):
        self.set("--board", BASE, "--sensor", TEMP, "--uc", "51")
        data = self.preflight(1, "--profile", "kestrin")
        self.assertEqual([data[k] for k in ("applies", "refused", "orphaned", "dropped")], [0, 0, 0, 1])
        self.assertEqual(data["entries"][0]["why"], "a machine of profile 1 (kestrin) deletes the file at its start")
        self.assertEqual(self.read()[:6], struct.pack("<IH", 0, 1))  # the file here stays

    def test_preflight_takes_the_files_profile(self):
        self.set("--profile", "kestrin", "--board", BASE, "--sensor", "Inlet_Temp", "--unc", "40")
        self.assertEqual(self.preflight(0)["profile"], {"name": "kestrin", "id": 1})

    def test_preflight_of_an_unknown_profile_asks(self):
        self.write(image(5, entry("A", mask=0)))
        self.assertIn("saved under profile 5, which the library does not know; --profile tells which machine",
                      self.refused(2, "thresholds", "preflight", self.file, "--board", BASE))
        self.assertEqual(self.preflight(1, "--profile", "default")["dropped"], 1)

    def test_preflight_of_an_empty_table(self):
        self.write(image(0))
        self.assertEqual(self.preflight(0)["entries"], [])

    def test_preflight_of_512_entries_names_every_one(self):
        self.write(image(0, *(entry("S%03d" % i, mask=UC) for i in range(512))))
        self.assertEqual(self.preflight(1)["orphaned"], 512)

    def test_preflight_with_a_sensor_that_is_added_at_run_time(self):
        gpu = self.board('class = "temperature"\ndevice_type = 2\nslot = 1\nuc = 95\nbitmap = 0x10\n', "gpu.toml")
        self.set("--sensor", "GPU_TEMP_01", "--uc", "90")
        self.assertEqual(self.preflight(1)["orphaned"], 1)
        data = self.preflight(0, "--description", gpu)
        record, = data["entries"][0]["records"]
        self.assertEqual((record["origin"], record["what"]), ("run time, " + gpu, "UC 95 °C -> 90 °C"))
        self.set("--board", BASE, "--description", gpu, "--sensor", "GPU_TEMP_01", "--uc", "-5")
        self.assertEqual(self.read(), image(0, entry("GPU_TEMP_01", (0, 251, 0, 0, 0, 0), UC)))

    def test_preflight_of_a_profile_whose_sensors_all_come_at_run_time(self):
        gpu = self.board('class = "temperature"\ndevice_type = 5\nslot = 1\nuc = 95\nbitmap = 0x10\n', "nic.toml")
        self.write(image(20, entry("NOTHING", mask=UC)))
        self.assertIn("has no static driver", self.refused(2, "thresholds", "preflight", self.file, "-b", BASE))
        data = self.preflight(1, "--description", gpu)
        self.assertEqual((data["profile"]["name"], data["orphaned"]), ("sablin", 1))

    def test_preflight_refuses_a_description_that_gives_no_sensor(self):
        self.set("--sensor", "A", "--uc", "90")
        nothing = self.board('class = 0x0100\ndevice_type = 200\nslot = 1\n', "n.toml")
        line = self.refused(2, "thresholds", "preflight", self.file, "-b", BASE, "--description", nothing)
        self.assertIn(nothing + ": the library adds no sensor of this description", line)

    def test_preflight_on_a_board_without_a_set(self):
        self.set("--sensor", "A", "--uc", "90")
        self.assertIn("ended without a count", self.refused(2, "thresholds", "preflight", self.file, "--board",
                                                            "boards/guards/psu_count_255.toml"))

    def test_preflight_text(self):
        self.set("--board", BASE, "--sensor", TEMP, "--uc", "51")
        self.set("--sensor", "GPU_TEMP_01", "--uc", "90")
        done = self.run_raw("thresholds", "preflight", self.file, "--board", BASE)
        self.assertEqual((done.returncode, done.stderr), (1, b""))
        lines = done.stdout.decode().splitlines()
        self.assertEqual(lines[0], self.file + ": saved under profile 0 (default), 2 entries")
        self.assertEqual(lines[1], BASE + ", profile default: 28 full records")
        self.assertRegex(lines[4], r"^1  applies   INPUT_TEMP   static set, 40  UC 50 °C -> 51 °C$")
        self.assertRegex(lines[5], r"^2  orphaned  GPU_TEMP_01  - +no full record of that name")
        self.assertEqual(lines[7], "1 applies, 0 refused, 1 orphaned")
        self.assertIn("static pass does not call the overlay", " ".join(lines[8:]))

    def test_the_library_speaks_on_request(self):
        self.set("--board", BASE, "--sensor", TEMP, "--uc", "51")
        done = self.run_raw("thresholds", "preflight", self.file, "--board", BASE, "--log")
        self.assertIn("updateSdrThreshold: update sensor INPUT_TEMP mask 0x38", done.stderr.decode())
        done = self.run_raw("thresholds", "set", self.file, "--sensor", "A", "--uc", "1", "--trace")
        self.assertIn("call MW_SetSensorThreshInfo(customid=0 count=2) = 0", done.stderr.decode())

    def test_commands_are_named(self):
        self.assertIn("a command is required: show, set or preflight (see oxa-sensors thresholds --help)",
                      self.refused(2, "thresholds"))
        self.assertIn("unknown command 'sho'; did you mean show?", self.refused(2, "thresholds", "sho"))


if __name__ == "__main__":
    main()
