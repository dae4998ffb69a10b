# SPDX-License-Identifier: GPL-3.0-or-later
"""Event builders by name: arguments, records, log lines, exit codes."""
from support import Workbench, main

BUILDERS = ["addMemPredictiveFault", "addPOSTErrorSel", "addS0PowerButtonSel", "addGpuSlotErrorSel",
            "addMinorCDUFaultSel", "addMajorCDUFaultSel", "addNETPortSEL", "addControllerSEL", "addDiskSEL", "addLDSEL",
            "addPEMSEL", "addUsageSEL", "addSELAlarm", "addCPUError", "addMemError", "addI2CStatusSel",
            "addTrapSELAlarm", "addPowerDropSEL", "addLeakageSel"]

DIRECTORY = """
[board]
inlet_temperature = 31
[sensor_numbers]
power_fault = 0x77
cpu = { 1 = 0x12 }
[sensor_numbers.by_key]
"04 0D 6F 03 00" = 0x43
"1E 0A 03 00 00" = 0x5E
"""


class Tests(Workbench):
    def record(self, *words):
        return self.json("event", *words)["record"]["bytes"]

    def test_help_names_every_builder_with_its_arguments(self):
        text = self.out("event", "--help")
        for builder in BUILDERS:
            self.assertIn(f"  {builder}", text)
        self.assertIn("addDiskSEL entityId slotNum eventNum eventDir\n", text)
        for option in ("--list", "--board", "--profile", "--count", "--bmc", "--user", "--password", "--log",
                       "--trace", "--json"):
            self.assertIn(option, text)

    def test_the_list_says_what_every_builder_and_argument_is_for(self):
        listed = self.json("event", "--list")["builders"]
        self.assertEqual(sorted(b["name"] for b in listed), sorted(BUILDERS))
        for builder in listed:
            self.assertTrue(builder["summary"], builder)
            for argument in builder["arguments"]:
                self.assertTrue(argument["meaning"], (builder["name"], argument))

    def test_the_list_of_one_builder(self):
        self.assertEqual(self.out("event", "--list", "addGpuSlotErrorSel").splitlines()[0],
                         "addGpuSlotErrorSel slotNum")

    def test_arguments_by_position_and_by_name_are_the_same_call(self):
        # C0, entity 0Bh, event 12h, 04, temperature, no sensor, 80h | 07h, A2h, controller 1
        wanted = "00 00 C0 00 00 00 00 0B 12 04 01 00 87 A2 01 00"
        self.assertEqual(self.record("addControllerSEL", "11", "1", "18", "1"), wanted)
        self.assertEqual(self.record("addControllerSEL", "0x0B", "0x1", "0x12", "0x1"), wanted)
        self.assertEqual(self.record("addControllerSEL", "eventDir=1", "eventNum=18", "controller=1", "entityId=0xb"),
                         wanted)
        self.assertEqual(self.record("addControllerSEL", "eventNum=18", "11", "controller=1", "eventDir=1"), wanted)

    def test_the_board_answers_the_lookups(self):
        board = self.board(DIRECTORY)
        # slot 3 most significant byte first; entity becomes 04; sensor 43h; disk life A2h, event 15h
        self.assertEqual(self.record("addDiskSEL", "9", "3", "21", "0", "--board", board),
                         "00 00 E0 00 00 00 03 04 00 04 0D 43 6F A2 00 15")
        self.assertEqual(self.record("addSELAlarm", "55", "3", "0", "--board", board),
                         "00 00 C0 00 00 00 00 37 03 04 28 00 6F E4 1F 00")

    def test_the_profile_decides(self):
        self.assertEqual(self.record("addPowerDropSEL", "1", "2", "3", "0", "-p", "vorana"),
                         "00 00 02 00 00 00 00 20 00 04 08 00 6F 01 21 03")
        kept = self.json("event", "addMemPredictiveFault", "5", "1", "-p", "kestrin")
        self.assertEqual((kept["record"], kept["record_ids"], kept["result"]), (None, [], 0))
        self.assertIn("MW_SetMemPredictiveFailureState(dimm=5 state=0) = 0", kept["asked"])
        self.assertIn("nothing is written", self.out("event", "addMemPredictiveFault", "5", "1", "-p", "kestrin"))

    def test_the_boards_own_profile_is_the_default(self):
        board = self.board('[board]\ncustom_id = "vorana"\n')
        self.assertEqual(self.json("event", "addPowerDropSEL", "1", "2", "3", "0", "-b", board)["profile"],
                         {"name": "vorana", "id": 3})

    def test_a_builder_that_fails_ends_with_1_and_its_last_line(self):
        self.assertIn("result 0xFFFF; its last line: customId:0, only vorana support addPowerDropSEL",
                      self.refused(1, "event", "addPowerDropSEL", "1", "2", "3", "0"))
        self.assertIn("assertFlag 2 is illegal", self.refused(1, "event", "addI2CStatusSel", "1", "2", "3", "0"))

    def test_a_full_log_ends_with_1_and_the_records_that_went_in(self):
        board = self.board("[board]\nsel_limit = 3\n")
        self.assertIn("after 3 records; its last line: ipmi_add_sel_entry fail",
                      self.refused(1, "event", "addPOSTErrorSel", "--count", "5", "-b", board))

    def test_faults_of_the_board_are_in_force(self):
        board = self.board('[[fault]]\ncall = "IPMICMD_AddSELEntry"\noccurrence = 1\n')
        done = self.run_raw("event", "addPOSTErrorSel", "-b", board, "--log")
        self.assertEqual(done.returncode, 0)
        # info line, dump of the first attempt; the repeat goes through
        self.assertEqual(len(done.stderr.splitlines()), 1 + 17)

    def test_count_repeats(self):
        self.assertEqual(self.json("event", "addPOSTErrorSel", "--count", "3")["record_ids"], [1, 2, 3])
        self.assertIn("sent 3 times, records 1 to 3", self.out("event", "addPOSTErrorSel", "--count", "3"))

    def test_log_lines_go_to_standard_error(self):
        done = self.run_raw("event", "addGpuSlotErrorSel", "4", "--log")
        self.assertEqual(done.stderr.decode(),
                         "info 52 oxa_specific_sel.c:# addGpuSlotErrorSel: addGpuSlotErrorSel slotNum:4\n")

    def test_every_byte_says_what_set_it(self):
        fields = {f["offset"]: f for f in
                  self.json("event", "addNETPortSEL", *"11 2 3 4 5 6 7 8 1".split())["record"]["fields"]}
        self.assertEqual(fields[8]["set_by"], "subInterfaceType in bits 4-7, subIndex in bits 0-3")
        self.assertEqual(fields[9]["set_by"], "deviceIndex in bits 4-7, port in bits 0-3")
        self.assertEqual(fields[12]["set_by"], "eventDir in bit 7, 0x6F")
        self.assertEqual(sum(f["size"] for f in fields.values()), 16)

    def test_the_standard_decoder_reads_system_events(self):
        record = self.json("event", "addMemPredictiveFault", "5", "1")["record"]
        self.assertEqual(record["standard"], "Memory | Sensor #0 | Predictive Failure asserted | Deassertion Event")
        self.assertIn("memory module 5", record["meaning"])
        self.assertIn("deasserted", record["meaning"])

    def test_the_standard_decoder_shows_oem_records_as_bytes(self):
        record = self.json("event", "addMinorCDUFaultSel", "5", "1")["record"]
        self.assertEqual(record["standard"], "Manufacturer ID = 400E4h | OEM defined = 15h 00h 87h A1h 05h FFh")
        self.assertIn("minor fault, reason 5", record["meaning"])

    def test_wrong_words_are_refused(self):
        for words, part in ((["addDiscSEL"], "did you mean addDiskSEL"),
                            (["addDiskSEL", "1", "2", "3"], "eventDir is missing"),
                            (["addDiskSEL", "1", "2", "3", "4", "5"], "'5' is one too many"),
                            (["addDiskSEL", "1", "2", "3", "slot=4"], "no argument 'slot'; did you mean slotNum?"),
                            (["addDiskSEL", "1", "2", "3", "slotNum=3"], "slotNum is given twice"),
                            (["addDiskSEL", "1", "x", "3", "1"], "'x' for slotNum is not a number"),
                            (["addDiskSEL", "1", "4294967296", "3", "1"], "is above 4294967295"),
                            (["addNETPortSEL", "1", "2", "3", "4", "256", "6", "7", "8", "1"], "port 256 is above 255"),
                            ([], "which builder"),
                            (["addPOSTErrorSel", "-p", "nobody"], "unknown profile 'nobody'"),
                            (["addPOSTErrorSel", "-b", "nowhere.toml"], "nowhere.toml"),
                            (["addPOSTErrorSel", "--bmc", "host:0"], "'0' is no port"),
                            (["addPOSTErrorSel", "--bmc", ":623"], "no host")):
            with self.subTest(words):
                self.assertIn(part, self.refused(2, "event", *words))

    def test_a_word_that_is_no_byte_is_the_librarys_to_cut(self):
        # slot 012Ch does not fit the data byte: 2Ch
        self.assertEqual(self.record("addGpuSlotErrorSel", "300"), "00 00 02 00 00 00 00 20 00 04 1B 00 6F 01 2C 00")

    def test_text_and_json_show_the_same_record(self):
        shown = self.out("event", "addUsageSEL", "32", "90", "80", "1", "0")
        self.assertIn("Record " + self.record("addUsageSEL", "32", "90", "80", "1", "0") + "\n", shown)

    # ---- who we are at a BMC ---------------------------------------------------------------------

    def refused_at_bmc(self, *words, **environment):
        done = self.run_raw("event", "addPOSTErrorSel", "--bmc", "127.0.0.1:9", *words, env=environment)
        self.assertEqual((done.returncode, done.stdout, done.stderr.count(b"\n")), (2, b"", 1), done.stderr)
        return done.stderr.decode()

    def test_a_password_file_that_has_no_password_is_refused(self):
        path = self.path("secret")
        self.assertIn(f"--password-file {path}: No such file", self.refused_at_bmc("--password-file", path))
        self.assertIn("is a folder", self.refused_at_bmc("--password-file", self.folder.name))
        for content in (b"", b"\n", b"\r\n"):
            with open(path, "wb") as file:
                file.write(content)
            self.assertIn("its first line, the password, is empty", self.refused_at_bmc("--password-file", path))
        self.assertIn("contradicts", self.refused_at_bmc("--password-file", path, "--password", "x"))

    def test_a_password_longer_than_any_is_refused_and_not_told(self):
        path = self.path("secret")
        with open(path, "wb") as file:
            file.write(b"x" * 21)
        for done in (self.refused_at_bmc("--password-file", path), self.refused_at_bmc("--password", "x" * 21),
                     self.refused_at_bmc("--password-file", "/dev/zero"), self.refused_at_bmc(IPMI_PASSWORD="x" * 21)):
            self.assertIn("more than 20 bytes", done)
            self.assertNotIn("xxx", done)

    def test_a_cipher_suite_is_3_or_17(self):
        self.assertIn("--cipher 8: 3 or 17 is wanted", self.refused_at_bmc("--cipher", "8"))


if __name__ == "__main__":
    main()
