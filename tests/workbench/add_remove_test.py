# SPDX-License-Identifier: GPL-3.0-or-later
"""oxa-sensors add and remove: what each call comes to, and what is refused.  Bytes are worked out by hand."""
import json
import os
import struct

from support import BASE, TWO_SOCKET, Workbench, main

NVME = ["--class", "temperature", "--device-type", "nvme-disk", "--sub-type", "1"]
GPU = ["--class", "temperature", "--device-type", "gpu", "--slot", "1"]

# NVMe disk in slot 3 of a front backplane, profile Ferrisk; UNC 65, UC 70, UNR 80.
NVME3 = """01 00 51 01 35 20 00 00 0B 03 7F 68 01 01 80 0A 80 7A 38 38 80 01 00 00 01 00 00 00 00 00 00 00
           00 00 7F 80 50 46 41 00 00 00 03 03 40 03 3B CA 4E 56 4D 45 33 5F 54 65 6D 70"""
# Power supply 2 of a machine without FRU id offset: FRU id 2 + 16.
PSU2 = "01 00 51 11 13 20 12 80 12 00 10 00 0A 02 00 C8 50 53 55 32 5F 46 52 55"


def plain(text):
    return " ".join(text.split())


class Tests(Workbench):
    def call(self, command, *words, board=TWO_SOCKET, code=0):
        done = self.run_raw(command, "--board", board, *words)
        self.assertEqual((done.returncode, done.stderr.decode()), (code, ""), (words, done.stdout))
        return done.stdout.decode()

    def told(self, command, *words, board=TWO_SOCKET, code=0):

        return json.loads(self.call(command, *words, "--json", board=board, code=code))

    def outcome(self, command, *words, board=TWO_SOCKET):
        """Word and result of a call that comes to nothing good."""
        told = self.told(command, *words, board=board, code=1)
        return told["outcome"], told["code"]

    def with_faults(self, *faults):
        lines = [f"[[fault]]\n{fault}\n" for fault in faults]
        return self.board("[board]\nid = 0x5481\n" + "".join(lines))

    def root(self):
        return ["--root", self.path("root")]

    def library_file(self, name, mode="rb"):
        path = os.path.join(self.path("root"), name)
        os.makedirs(os.path.dirname(path), exist_ok=True)
        return open(path, mode)

    # ---- what an add comes to -----------------------------------------------------------------------

    def test_a_temperature_sensor_is_added_with_the_bytes_that_the_rules_say(self):
        told = self.told("add", "-p", "ferrisk", *NVME, "--slot", "3", "--unr", "80", "--uc", "70", "--unc", "65")
        self.assertEqual((told["outcome"], told["code"]), ("added", 0))
        self.assertEqual(told["record"]["record"], plain(NVME3))
        self.assertEqual(told["record"]["record_id"], 1)
        self.assertEqual(told["record"]["name"], "NVME3_Temp")
        self.assertEqual({k: v["value"] for k, v in told["record"]["thresholds"].items() if v},
                         {"unc": 65, "uc": 70, "unr": 80})

    def test_the_text_tells_name_kind_and_thresholds_in_units(self):
        text = self.call("add", "-p", "ferrisk", *NVME, "--slot", "3", "--uc", "70")
        self.assertEqual(text.splitlines()[0],
                         "added: record 1, NVME3_Temp: Temperature of Add-in Card 0x03, signed, 1 °C, UC 70 °C")
        self.assertIn("extended store", text)

    def test_a_power_supply_needs_its_index_once(self):
        for words in (["--slot", "2"], ["--device-type", "2"], ["--slot", "2", "--device-type", "2"]):
            with self.subTest(words):
                told = self.told("add", "--class", "psu-fru", *words)
                self.assertEqual(told["record"]["record"], PSU2)
                self.assertEqual(told["record"]["fru_id"], 18)
                self.assertEqual((told["description"]["device_type"], told["description"]["slot"]), (2, 2))

    def test_the_bitmap_is_that_of_the_thresholds_given_unless_it_is_said(self):
        self.assertEqual(self.told("add", *GPU, "--uc", "9", "--lnc", "1")["description"]["bitmap"], 0x11)
        self.assertEqual(self.told("add", *GPU, "--uc", "9", "--bitmap", "0")["description"]["bitmap"], 0)
        self.assertEqual(self.told("add", *GPU, "--bitmap", "lnc,lcr,lnr,unc,ucr,unr")["description"]["bitmap"], 0x3F)
        self.assertEqual(self.told("add", *GPU, "--bitmap", "lc,uc")["description"]["bitmap"], 0x12)

    def test_every_byte_of_a_description_has_its_option(self):
        words = ["--class", "0x0100", "--device-type", "2", "--slot", "1", "--sub-type", "3", "--index", "4", "--seq",
                 "5", "--second-port", "6", "--bitmap", "0x1234", "--unr", "7", "--uc", "8", "--unc", "9", "--lnc",
                 "10",
                 "--lc", "11", "--lnr", "12", "--hysteresis", "0x0D"]
        description = self.told("add", *words, code=1)["description"]
        description.pop("class_text")
        self.assertEqual(description, {
            "class": 0x100, "device_type": 2, "slot": 1, "sub_type": 3, "index": 4, "seq": 5, "second_port": 6,
            "bitmap": 0x1234, "unr": 7, "uc": 8, "unc": 9, "lnc": 10, "lc": 11, "lnr": 12, "hysteresis": 13})

    def test_without_a_slot_there_is_none(self):
        self.assertEqual(self.told("add", "--class", "temperature", "--device-type", "raid-single")["description"]
                         ["slot"], 255)

    def test_a_class_without_generator_is_not_supported(self):
        self.assertEqual(self.outcome("add", "--class", "0x00010100", "--slot", "1"), ("not-supported", 0xFFFE))
        self.assertIn("no generator for class 0x9999", self.call("add", "--class", "0x9999", code=1))

    def test_a_sensor_that_the_profile_has_not_is_not_supported(self):
        self.assertEqual(self.outcome("add", "-p", "default", *NVME, "--slot", "3"), ("not-supported", 0xFFFE))

    def test_power_supply_0_is_not_built(self):
        self.assertEqual(self.outcome("add", "--class", "psu-fru", "--slot", "0"), ("not-built", 0xFFFF))
        self.assertIn("out of range(1~99)", self.call("add", "--class", "psu-fru", "--slot", "0", code=1))

    def test_a_sub_card_in_a_wrong_slot_is_not_built(self):
        self.assertEqual(self.outcome("add", "--class", "sub-card-fru", "--slot", "14"), ("not-built", 0xFFFF))
        told = self.told("add", "--class", "sub-card-fru", "--slot", "15")
        self.assertEqual((told["record"]["name"], told["record"]["fru_id"]), ("SUB CARD", 59))
        self.assertEqual(told["record"]["bytes_behind"], 3)  # 27 bytes are sent, the length byte says 24

    def test_what_is_sent_behind_a_record_is_not_kept(self):
        self.call("add", *self.root(), "--class", "sub-card-fru", "--slot", "15")
        self.call("add", *self.root(), "--class", "psu-fru", "--slot", "2")
        self.assertEqual(self.names(), [(1, "SUB CARD"), (2, "PSU2_FRU")])

    def test_a_repository_that_refuses_is_told_with_the_meaning_of_its_code(self):
        board = self.with_faults('call = "IPMICMD_AddSDR"\nresult = 0xC4')
        self.assertEqual(self.outcome("add", *GPU, board=board), ("refused", 0xC4))
        self.assertEqual(self.call("add", *GPU, board=board, code=1).splitlines()[0],
                         "refused, result 0x00C4: Out of space")

    def test_a_session_that_does_not_open_is_told(self):
        board = self.with_faults('call = "LIBIPMI_Create_IPMI_Local_Session"\nresult = 0xC0')
        self.assertEqual(self.call("add", *GPU, board=board, code=1).splitlines()[0],
                         "refused, result 0x00C0: no session: Node Busy")

    def test_codes_that_the_library_has_too_are_told_as_the_repositorys(self):
        board = self.with_faults('call = "IPMICMD_AddSDR"\nresult = 0xFFFE')
        self.assertEqual(self.outcome("add", *GPU, board=board), ("refused", 0xFFFE))

    def test_a_success_without_a_record_is_told(self):
        board = self.with_faults('call = "IPMICMD_AddSDR"\nresult = 0')
        self.assertEqual(self.outcome("add", *GPU, board=board), ("lost", 0))

    # ---- what a removal comes to --------------------------------------------------------------------

    def test_a_power_supply_is_removed(self):
        self.call("add", *self.root(), "--class", "psu-fru", "--slot", "2")
        told = self.told("remove", *self.root(), "--slot", "2")
        self.assertEqual((told["outcome"], told["code"]), ("removed", 0))
        self.assertEqual(told["record"]["name"], "PSU2_FRU")

    def test_a_power_supply_that_was_never_recorded_is_nothing_to_remove(self):
        self.assertEqual(self.outcome("remove", "--slot", "2"), ("nothing-to-remove", 0))

    def test_other_classes_cannot_be_removed(self):
        self.assertEqual(self.outcome("remove", "--class", "hgx-ubb-fru", "--slot", "1"), ("not-removable", 1))
        self.assertEqual(self.outcome("remove", *GPU), ("not-removable", 1))

    def test_a_record_that_is_gone_is_refused(self):
        board = self.board('[files]\n"/var/SpecificSDRRec" = "[PSU_2]\\nsdrRecId=9\\nPresence=1\\n"\n')
        self.assertEqual(self.outcome("remove", "--slot", "2", board=board), ("refused", 0xCB))

    def test_a_session_that_does_not_open_leaves_the_record(self):
        self.call("add", *self.root(), "--class", "psu-fru", "--slot", "2")
        board = self.with_faults('call = "LIBIPMI_Create_IPMI_Local_Session"')
        told = self.told("remove", *self.root(), "--slot", "2", board=board, code=1)
        self.assertEqual((told["outcome"], told["code"]), ("refused", 0xC3))
        self.assertTrue(told["why"].startswith("no session: "), told["why"])
        self.assertEqual(self.told("remove", *self.root(), "--slot", "2")["outcome"], "removed")

    # ---- what stays between calls -------------------------------------------------------------------

    def names(self):
        return [(r["record_id"], r["name"]) for r in self.told("add", *self.root(), "--list")["repository"]]

    def test_add_add_remove_list_works_over_processes(self):
        self.call("add", *self.root(), "--class", "psu-fru", "--slot", "1")
        self.call("add", *self.root(), "--class", "psu-fru", "--slot", "2")
        self.call("add", *self.root(), *GPU)
        self.call("remove", *self.root(), "--slot", "1")
        self.assertEqual(self.names(), [(2, "PSU2_FRU"), (3, "GPU_TEMP_01")])
        self.call("add", *self.root(), "--class", "psu-fru", "--slot", "1")
        self.assertEqual(self.names(), [(2, "PSU2_FRU"), (3, "GPU_TEMP_01"), (4, "PSU1_FRU")])

    def test_a_sensor_that_is_stored_is_already_present(self):
        self.call("add", *self.root(), *GPU)
        self.assertEqual(self.outcome("add", *self.root(), *GPU), ("already-present", 0xFFFE))

    def test_a_power_supply_that_is_recorded_is_already_recorded(self):
        self.call("add", *self.root(), "--class", "psu-fru", "--slot", "1")
        self.assertEqual(self.outcome("add", *self.root(), "--class", "psu-fru", "--slot", "1"),
                         ("already-recorded", 0xFFFF))

    def test_the_record_file_is_what_a_caller_of_the_library_leaves(self):
        for name, slot in (("psu-fru", "3"), ("hgx-ubb-fru", "1"), ("neo-card-fru", "2")):
            self.call("add", *self.root(), "--class", name, "--slot", slot)
        with self.library_file("var/SpecificSDRRec") as file:
            self.assertEqual(file.read(), b"[PSU_3]\nsdrRecId=1\nPresence=1\n[PurchaseUBB_1]\nsdrRecId=2\nPresence=1\n"
                                          b"[PurchaseCard_2]\nsdrRecId=3\nPresence=1\n")

    def test_the_extended_store_gets_record_and_entry(self):
        self.call("add", *self.root(), "-p", "ferrisk", *NVME, "--slot", "3", "--unr", "80", "--uc", "70", "--unc",
                  "65")
        record = bytes.fromhex(NVME3)
        with self.library_file("var/tmp/extSDR.dat") as file:
            self.assertEqual(file.read(), record + bytes(64 - len(record)))
        with self.library_file("var/tmp/extDevTab.dat") as file:  # device of a disk: code F2h, mark 25h
            self.assertEqual(file.read().hex(" ").upper(), "F2 04 00 03 00 00 00 00 00 00 00 00 00 00 00 00 "
                                                           "00 00 00 00 25 0B 03 7F 01 01 00 00 00 00 00 00")

    def test_a_record_without_entry_keeps_slots_and_entries_in_step(self):
        # memory status of device type 18: its record has no device-table entry
        self.call("add", *self.root(), "-p", "kestrin", "--class", "memory-status", "--device-type", "18", "--slot",
                  "1")
        self.call("add", *self.root(), *GPU)
        with self.library_file("var/tmp/extDevTab.dat") as file:
            entries = file.read()
        self.assertEqual((len(entries), entries[:32], entries[32]), (64, bytes(32), 0x64))

    def test_no_record_leaves_the_files_alone(self):
        self.call("add", *self.root(), "--no-record", "--class", "psu-fru", "--slot", "2")
        self.call("add", *self.root(), "--no-record", *GPU)
        self.assertEqual(sorted(os.listdir(self.path("root"))), ["repository.sdr", "var"])  # var: the store, empty
        self.assertFalse(os.path.exists(os.path.join(self.path("root"), "var", "SpecificSDRRec")))
        self.assertEqual(self.outcome("remove", *self.root(), "--slot", "2"), ("nothing-to-remove", 0))
        self.assertEqual(self.told("add", *self.root(), *GPU)["outcome"], "added")

    def test_the_boards_files_are_laid_down_once(self):
        board = self.board('[files]\n"/var/SpecificSDRRec" = "[PSU_2]\\nsdrRecId=9\\nPresence=1\\n"\n')
        self.assertEqual(self.outcome("add", *self.root(), "--class", "psu-fru", "--slot", "2", board=board)[0],
                         "already-recorded")
        with self.library_file("var/SpecificSDRRec", "wb") as file:
            file.write(b"")
        self.assertEqual(self.told("add", *self.root(), "--class", "psu-fru", "--slot", "2", board=board)["outcome"],
                         "added")

    def threshold_file(self, profile_id):
        entry = struct.pack("<17s8BBH", b"GPU_TEMP_01", 0, 77, 0, 0, 0, 0, 0, 0, 0, 0x10)
        image = struct.pack("<IH", profile_id, 1) + entry
        with self.library_file("conf/BMC1/sensor_threshold.dat", "wb") as file:
            file.write(image + bytes(14344 - len(image)))

    def test_stored_user_thresholds_are_laid_over(self):
        self.threshold_file(0)
        told = self.told("add", *self.root(), *GPU, "--uc", "100")
        self.assertEqual(told["record"]["thresholds"]["uc"]["raw"], 77)

    def test_stored_user_thresholds_of_another_profile_are_dropped(self):
        self.threshold_file(16)
        told = self.told("add", *self.root(), *GPU, "--uc", "100")
        self.assertEqual(told["record"]["thresholds"]["uc"]["raw"], 100)
        self.assertFalse(os.path.exists(os.path.join(self.path("root"), "conf/BMC1/sensor_threshold.dat")))

    def test_list_without_a_description_only_lists(self):
        self.assertEqual(self.call("add", "--list"), "Repository: 0 records (0 full, 0 compact, 0 FRU locators), profile default\n")
        text = self.call("add", "--list", "--class", "psu-fru", "--slot", "2")
        self.assertIn("Repository: 1 record (0 full, 0 compact, 1 FRU locator), profile default\nID  NAME", text)

    def test_nothing_is_left_behind_without_a_root(self):
        self.run_raw("add", "--board", TWO_SOCKET, *GPU, env={"TMPDIR": self.folder.name})
        self.assertEqual(os.listdir(self.folder.name), [])

    # ---- a description in a file --------------------------------------------------------------------

    def description(self, text):
        return ["--description", self.board(text, "description.toml")]

    def test_a_file_describes_with_the_same_keys(self):
        told = self.told("add", "-p", "ferrisk", *self.description(
            'class = "temperature"\ndevice_type = "nvme-disk"\nslot = 3\nsub_type = 1\nbitmap = ["unc", "uc", "unr"]\n'
            "unr = 80\nuc = 70\nunc = 65\n"))
        self.assertEqual(told["record"]["record"], plain(NVME3))

    def test_options_go_over_the_file(self):
        words = self.description('class = "psu-fru"\nslot = 7\n')
        self.assertEqual(self.told("add", *words)["record"]["name"], "PSU7_FRU")
        self.assertEqual(self.told("add", *words, "--slot", "2")["record"]["record"], PSU2)

    def wrong_description(self, text, line):
        words = self.description(text)
        told = self.refused(2, "add", "--board", BASE, *words)
        self.assertTrue(told.startswith(f"oxa-sensors: {words[1]}:{line}:"), told)
        return told

    def test_an_unknown_key_is_told_with_file_line_and_the_nearest(self):
        self.assertIn("unknown key 'solt' in the file; did you mean 'slot'?",
                      self.wrong_description('class = "fan"\nsolt = 3\n', 2))

    def test_an_unknown_key_that_is_near_nothing_gets_all(self):
        self.assertIn("known keys are 'class' 'device_type'", self.wrong_description('class = "fan"\nxyzzyxyzzy = 3\n',
                                                                                     2))

    def test_a_number_out_of_range_is_told_with_file_and_line(self):
        self.assertIn("'slot' in the file is 256; it must be a number 0 to 255",
                      self.wrong_description('class = "fan"\n\nslot = 256\n', 3))
        self.assertIn("'bitmap' in the file is 65536", self.wrong_description('class = "fan"\nbitmap = 65536\n', 2))
        self.assertIn("'class' in the file is -1; it must be a number 0 to 4294967295",
                      self.wrong_description("class = -1\n", 1))

    def test_a_wrong_type_is_told_with_file_and_line(self):
        self.assertIn("'uc' in the file is the text \"hot\"", self.wrong_description('class = "fan"\nuc = "hot"\n', 2))
        self.assertIn("'slot' in the file is true", self.wrong_description('class = "fan"\nslot = true\n', 2))

    def test_an_unknown_word_is_told_with_file_line_and_the_nearest(self):
        self.assertIn("did you mean 'temperature'?", self.wrong_description('class = "temprature"\n', 1))
        self.assertIn("did you mean 'nvme-disk'?",
                      self.wrong_description('class = "fan"\ndevice_type = "nvme_disk"\n', 2))
        self.assertIn("it must be a number 0 to 65535 or thresholds such as",
                      self.wrong_description('class = "fan"\nbitmap = "uc,up"\n', 2))
        self.assertIn("it must be a number 0 to 65535", self.wrong_description('class = "fan"\nbitmap = ["uc", 3]\n',
                                                                               2))

    def test_broken_toml_is_told_with_file_and_line(self):
        self.assertIn("broken TOML", self.wrong_description('class = "fan"\nslot = = 3\n', 2))

    def test_a_file_that_cannot_be_read_is_told(self):
        line = self.refused(2, "add", "--board", BASE, "--description", "/nowhere/x.toml")
        self.assertTrue(line.startswith("oxa-sensors: /nowhere/x.toml: cannot be read (No such file"), line)
        self.assertIn("is a directory", self.refused(2, "add", "--board", BASE, "--description", self.folder.name))

    def test_a_file_without_class_is_told(self):
        self.assertIn("no sensor class", self.refused(2, "add", "--board", BASE, *self.description("slot = 3\n")))

    # ---- wrong options ------------------------------------------------------------------------------

    def test_a_missing_class_is_told(self):
        self.assertIn("no sensor class: give --class", self.refused(2, "add", "--board", BASE, "--slot", "3"))
        self.assertIn("no sensor class: give --class", self.refused(2, "add", "--board", BASE))

    def test_remove_asks_which_power_supply(self):
        told = "no power supply: give --slot or a --description with the key 'slot'"
        self.assertIn(told, self.refused(2, "remove", "--board", BASE))
        self.assertIn(told, self.refused(2, "remove", "--board", BASE, "--class", "psu-fru"))
        self.assertIn(told, self.refused(2, "remove", "--board", BASE, *self.description('class = "psu-fru"\n')))
        self.assertEqual(self.outcome("remove", "--device-type", "2"), ("nothing-to-remove", 0))

    def test_numbers_out_of_range_are_told_with_their_option(self):
        for option in ("device-type", "slot", "sub-type", "index", "seq", "second-port", "unr", "uc", "unc", "lnc",
                       "lc",
                       "lnr", "hysteresis"):
            with self.subTest(option):
                line = self.refused(2, "add", "--board", BASE, *GPU[:2], f"--{option}", "256")
                self.assertIn(f"--{option} 256: it must be a number 0 to 255", line)
        self.assertIn("--bitmap 0x10000: ", self.refused(2, "add", "--board", BASE, *GPU, "--bitmap", "0x10000"))
        self.assertIn("--class 0x100000000: ", self.refused(2, "add", "--board", BASE, "--class", "0x100000000"))
        self.assertIn("--slot -1: ", self.refused(2, "add", "--board", BASE, "--class", "fan", "--slot=-1"))
        self.assertIn("--slot x: ", self.refused(2, "add", "--board", BASE, "--class", "fan", "--slot", "x"))

    def test_misspelt_words_get_the_nearest(self):
        self.assertIn("--class temperatur: did you mean 'temperature'?",
                      self.refused(2, "add", "--board", BASE, "--class", "temperatur"))
        self.assertIn("--device-type nvmedisk: did you mean 'nvme-disk'?",
                      self.refused(2, "add", "--board", BASE, *GPU[:2], "--device-type", "nvmedisk"))
        self.assertIn("--bitmap uc,,unc: it must be", self.refused(2, "add", "--board", BASE, *GPU, "--bitmap",
                                                                   "uc,,unc"))

    def test_a_misspelt_option_gets_the_nearest(self):
        self.assertIn("did you mean --slot?", self.refused(2, "add", "--board", BASE, "--slto", "3"))
        self.assertIn("unknown option '--record'", self.refused(2, "remove", "--board", BASE, "--record", "--slot",
                                                                "1"))

    def test_board_and_profile_are_checked(self):
        self.assertIn("--board is required", self.refused(2, "add", *GPU))
        self.assertIn("boards/nowhere.toml", self.refused(2, "add", "--board", "boards/nowhere.toml", *GPU))
        line = self.refused(2, "add", "--board", BASE, *GPU, "-p", "sabln")
        self.assertIn("unknown profile 'sabln'; available: default, ", line)
        self.assertIn(", ferrisk, sablin;", line)  # without a static driver, with run-time sensors
        path = self.board("[cpus]\ncuont = 2\n")
        self.assertTrue(self.refused(2, "remove", "--board", path, "--slot",
                                     "1").startswith(f"oxa-sensors: {path}:2:"))

    def test_an_address_is_checked(self):
        for address, why in (("127.0.0.1:x", "'x' is no port"), ("127.0.0.1:0", "'0' is no port"),
                             ("127.0.0.1:65536", "'65536' is no port"), (":9001", "no host")):
            with self.subTest(address):
                self.assertIn(why, self.refused(2, "add", "--board", BASE, *GPU, "--bmc", address))
        self.assertIn("--list shows the repository in memory",
                      self.refused(2, "add", "--board", BASE, "--list", "--bmc", "127.0.0.1:9001"))

    def test_a_root_that_is_no_directory_is_told(self):
        self.board("", "file")
        self.assertIn("--root " + self.path("file"), self.refused(2, "add", "--board", BASE, *GPU, "--root",
                                                                  self.path("file")))

    def test_a_damaged_repository_is_told(self):
        self.call("add", *self.root(), *GPU)
        path = os.path.join(self.path("root"), "repository.sdr")
        with open(path, "rb") as file:
            good = file.read()
        for bad, why in ((good[:-1], "record 1: the file ends within it"), (good + b"\1\0\x51",
                                                                            "record 2: the file ends"),
                         (good.replace(b"\x51", b"\x50", 1), "record 1: no record")):
            with self.subTest(why):
                with open(path, "wb") as file:
                    file.write(bad)
                self.assertIn(why, self.refused(2, "add", "--board", TWO_SOCKET, *self.root(), *GPU))

    def test_a_folder_of_another_repository_is_told(self):
        self.call("add", *self.root(), *GPU)
        self.assertIn("was used without --bmc", self.refused(2, "add", "--board", BASE, *self.root(), *GPU, "--bmc",
                                                             "127.0.0.1:9001"))

    # ---- the rest -----------------------------------------------------------------------------------

    def test_log_goes_to_standard_error_and_to_json(self):
        done = self.run_raw("add", "--board", TWO_SOCKET, *GPU, "--log")
        lines = done.stderr.decode().splitlines()
        self.assertIn("info 42 oxa_specific_sdr.c:# SDR_AddSpecificSensor: Add SDR: sensor device type: 0x100", lines)
        self.assertFalse([line for line in lines if line.startswith("call ")])
        self.assertIn("info 42 oxa_specific_sdr.c:# SDR_AddSpecificSensor: Add SDR: sensor device type: 0x100",
                      self.told("add", *GPU)["log"])

    def test_trace_has_the_calls(self):
        done = self.run_raw("add", "--board", TWO_SOCKET, *GPU, "--trace")
        self.assertIn(b"call IPMICMD_AddSDR(", done.stderr)
        self.assertEqual(done.stdout.decode(), self.call("add", *GPU))

    def test_help_names_every_option_and_word(self):
        for command in ("add", "remove"):
            text = self.out(command, "--help")
            for word in ("--board", "--profile", "--description", "--class", "--device-type", "--slot", "--sub-type",
                         "--index", "--seq", "--second-port", "--bitmap", "--unr", "--uc", "--unc", "--lnc", "--lc",
                         "--lnr", "--hysteresis", "--root", "--list", "--bmc", "--json", "--log", "--trace",
                         "nvme-disk",
                         "psu-fru", "Exit status"):
                self.assertIn(word, text)


if __name__ == "__main__":
    main()
