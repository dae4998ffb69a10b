# SPDX-License-Identifier: GPL-3.0-or-later
"""What doctor says of the files of a machine; damage by the thousand is doctor_damage_test.cpp's."""
import json
import os
import resource
import shutil
import struct

from support import BASE, Workbench, main

STORE, ENTRIES = "var/tmp/extSDR.dat", "var/tmp/extDevTab.dat"
RECORDS, FRU_IDS = "var/SpecificSDRRec", "var/tmp/purchaseCardFruId"
LIMITS = "conf/BMC1/sensor_threshold.dat"
REPOSITORY = "repository.sdr"
GPU = ("--class", "temperature", "--device-type", "gpu", "--uc", "90", "--slot")
IMAGE = 14344
MEGABYTE = 1 << 20


class Tests(Workbench):
    def setUp(self):
        """Three GPUs (records 1 to 3), two power supplies (4, 5), a card with FRU id 36 (6), limits of one sensor."""
        super().setUp()
        self.root = self.path("root")
        for slot in "123":
            self.out("add", "-b", BASE, *GPU, slot, "--root", self.root)
        for slot in "12":
            self.out("add", "-b", BASE, "--class", "psu-fru", "--slot", slot, "--root", self.root)
        self.out("add", "-b", BASE, "--class", "hgx-ubb-fru", "--slot", "1", "--root", self.root)
        os.makedirs(os.path.join(self.root, "conf/BMC1"))
        self.out("thresholds", "set", os.path.join(self.root, LIMITS), "--sensor", "GPU_TEMP_01", "--uc", "80")

    def read(self, file, root=None):
        with open(os.path.join(root or self.root, file), "rb") as stream:
            return stream.read()

    def write(self, file, content):
        with open(os.path.join(self.root, file), "wb") as stream:
            stream.write(content if isinstance(content, bytes) else content.encode())

    def report(self, *words):
        done = self.run_raw("doctor", "--root", self.root, *words, "--json")
        self.assertEqual(done.stderr, b"")
        report = json.loads(done.stdout)
        self.assertEqual(done.returncode, 1 if report["findings"] else 0)
        return report

    def found(self, *words):
        return [(f["rule"], f["file"], f["place"]) for f in self.report(*words)["findings"]]

    def one(self, rule, file, place, *words):
        """The one finding that there must be."""
        report = self.report(*words)
        self.assertEqual([(f["rule"], f["file"], f["place"]) for f in report["findings"]], [(rule, file, place)])
        return report["findings"][0]

    # ---- a machine that is well ---------------------------------------------------------------------

    def test_a_machine_that_is_well_has_no_finding_and_its_next_start_is_told(self):
        report = self.report()
        self.assertEqual(report["findings"], [])
        self.assertEqual([f["holds"] for f in report["files"]],
                         ["1 entry, saved under profile 0 (default)", "3 slots", "3 entries", "3 devices present",
                          "1 card", "6 records"])
        self.assertEqual(report["next_start"][0], "takes the user thresholds of 1 sensors")
        self.assertIn("knows 3 stored sensors", report["next_start"][1])
        self.assertIn("1 (record 4), 2 (record 5)", report["next_start"][2])
        self.assertIn("in use by now: 36 (record 6, 'HGX UBB')", report["next_start"][3])

    def test_the_folder_stays_as_it_is(self):
        before = {f: self.read(f) for f in (STORE, ENTRIES, RECORDS, FRU_IDS, LIMITS, REPOSITORY)}
        self.write(STORE, before[STORE][:70])
        self.report("--repair", self.path("new"))
        self.assertEqual(self.read(STORE), before[STORE][:70])
        for file in (ENTRIES, RECORDS, FRU_IDS, LIMITS, REPOSITORY):
            self.assertEqual(self.read(file), before[file])

    # ---- the store ----------------------------------------------------------------------------------

    def test_a_torn_slot_loses_its_sensor(self):
        self.write(STORE, self.read(STORE)[:2 * 64 + 13])
        self.assertEqual(self.found(), [("torn", STORE, "byte 128"), ("no-entry", STORE, None),
                                        ("orphaned", ENTRIES, "entry 3")])

    def test_a_slot_of_other_bytes_is_foreign(self):
        store = self.read(STORE)
        self.write(STORE, store[:64] + b"#!/bin/sh\n".ljust(64, b" ") + store[128:])
        self.assertEqual(self.found(), [("foreign", STORE, "slot 2"), ("no-entry", STORE, None)])

    def test_a_sensor_stored_twice_is_found_once_by_the_library(self):
        store, entries = self.read(STORE), self.read(ENTRIES)
        self.write(STORE, store + store[:64])
        self.write(ENTRIES, entries + entries[:32])
        self.assertIn("stands in slot 1 already", self.one("twice", STORE, "slot 4")["text"])

    def test_a_sensor_that_the_repository_does_not_hold_cannot_be_added(self):
        self.write(REPOSITORY, self.read(REPOSITORY)[59:])  # a full record with a name of 11 characters
        finding = self.one("orphaned", STORE, "slot 1")
        self.assertIn("cannot be added", finding["library"])
        self.assertIn("already-present", self.run_raw("add", "-b", BASE, *GPU, "1", "--root", self.root).stdout.decode())

    def test_a_sensor_that_is_not_stored_is_added_a_second_time(self):
        self.write(STORE, self.read(STORE)[:128])
        self.write(ENTRIES, self.read(ENTRIES)[:64])
        self.assertIn("record 3 ('GPU_TEMP_03')", self.one("no-entry", STORE, None)["text"])
        self.out("add", "-b", BASE, *GPU, "3", "--root", self.root)
        self.assertIn("'GPU_TEMP_03' is there twice", self.one("twice", REPOSITORY, "record 7")["text"])

    def test_a_stored_record_that_is_not_the_repositorys_is_stale(self):
        store = bytearray(self.read(STORE))
        store[64 + 37] = 91  # UC of slot 2
        self.write(STORE, bytes(store))
        self.assertIn("byte 37 is 0x5B, in the repository 0x5A", self.one("stale", STORE, "slot 2")["text"])

    def test_two_sensors_with_one_number(self):
        store, entries = bytearray(self.read(STORE)), bytearray(self.read(ENTRIES))
        store[7] = store[64 + 7] = entries[4] = entries[32 + 4] = 9
        self.write(STORE, bytes(store))
        self.write(ENTRIES, bytes(entries))
        self.assertIn("sensor number 0x09, as slot 1", self.one("twice", STORE, "slot 2")["text"])

    def test_more_than_255_slots(self):
        self.write(STORE, self.read(STORE) + b"\0" * (253 * 64))
        self.assertIn(("foreign", STORE, "byte 16320"), self.found())

    # ---- the device table ---------------------------------------------------------------------------

    def test_entries_that_are_swapped_are_told_with_whose_they_are(self):
        entries = self.read(ENTRIES)
        self.write(ENTRIES, entries[32:64] + entries[:32] + entries[64:])
        report = self.report()
        self.assertEqual([(f["rule"], f["place"]) for f in report["findings"]],
                         [("stale", "entry 1"), ("stale", "entry 2")])
        self.assertIn("it is that of slot 2, 'GPU_TEMP_02'", report["findings"][0]["text"])

    def test_an_entry_with_another_device_code(self):
        entries = self.read(ENTRIES)
        self.write(ENTRIES, bytes([entries[0] ^ 1]) + entries[1:])
        self.assertIn("byte 0 is", self.one("foreign", ENTRIES, "entry 1")["text"])

    def test_records_without_entries_and_zeros(self):
        entries = self.read(ENTRIES)
        self.write(ENTRIES, entries[:32] + b"\0" * 32)
        self.assertEqual(self.found(), [("no-entry", ENTRIES, "entry 2"), ("no-entry", ENTRIES, "entry 3")])

    # ---- the record file ----------------------------------------------------------------------------

    def test_an_id_that_is_not_in_the_repository(self):
        self.write(RECORDS, self.read(RECORDS).replace(b"sdrRecId=5", b"sdrRecId=50"))
        report = self.report()
        self.assertEqual([(f["rule"], f["place"]) for f in report["findings"]],
                         [("stale", "[PSU_2]"), ("no-entry", "[PSU_2]")])
        self.assertIn("can be neither added nor removed", report["findings"][0]["library"])
        done = self.run_raw("remove", "-b", BASE, "--slot", "2", "--root", self.root)
        self.assertIn(b"refused, result 0x00CB", done.stdout)
        done = self.run_raw("add", "-b", BASE, "--class", "psu-fru", "--slot", "2", "--root", self.root)
        self.assertIn(b"already-recorded", done.stdout)

    def test_an_id_of_another_record_takes_that_one_away(self):
        self.write(RECORDS, self.read(RECORDS).replace(b"sdrRecId=5", b"sdrRecId=1"))
        report = self.report()
        self.assertIn("record 1 ('GPU_TEMP_01') is not its locator", report["findings"][0]["text"])
        self.assertIn("removed: record 1, GPU_TEMP_01", self.out("remove", "-b", BASE, "--slot", "2", "--root", self.root))

    def test_an_id_in_use_twice(self):
        self.write(RECORDS, self.read(RECORDS).replace(b"sdrRecId=5", b"sdrRecId=4"))
        self.assertIn(("twice", RECORDS, "[PSU_2]"), self.found())

    def test_lines_and_sections_of_others(self):
        self.write(RECORDS, self.read(RECORDS) + b"[FAN_1]\nsdrRecId=3\nhello\n")
        self.assertEqual(self.found(), [("foreign", RECORDS, "line 12"), ("foreign", RECORDS, "[FAN_1]")])

    def test_four_times_the_lines_take_four_times_the_time(self):
        """Each line was compared with all before it: a minute for 60,000, sixteen times as long for four times as many."""
        for file, section, key in ((RECORDS, "PSU_1", "k%06d=1\n"), (FRU_IDS, "HGX UBB", "k%06d_FruId =1\n")):
            taken = []
            for count in (3000, 12000):
                self.write(file, f"[{section}]\n" + "".join(key % i for i in range(count)))
                before = resource.getrusage(resource.RUSAGE_CHILDREN).ru_utime
                self.assertEqual(self.run_raw("doctor", "--root", self.root).returncode, 1)
                taken.append(resource.getrusage(resource.RUSAGE_CHILDREN).ru_utime - before)
            self.assertLess(taken[1] / taken[0], 6, (file, taken))

    def long(self, file, content):
        """The findings of a file of this content, whose length must be told as it is."""
        self.write(file, content)
        report = self.report()
        self.assertEqual([f["bytes"] for f in report["files"] if f["file"] == file], [len(content)])
        return [(f["rule"], f["file"], f["place"], f["text"]) for f in report["findings"]]

    def test_an_ini_file_over_a_megabyte_is_told_not_to_have_been_looked_at_whole(self):
        for file in (RECORDS, FRU_IDS):
            content = self.read(file)
            lines = (content + MEGABYTE // 999 * (b" " * 999 + b"\n"))[:MEGABYTE - 6] + b"\n"
            with self.subTest(file):
                self.assertEqual(self.long(file, lines + b"    \n"), [])
                told = [("foreign", file, None, f"has {MEGABYTE + 10} bytes; only what is whole in the first {MEGABYTE} was looked at")]
                # the line that the end of the megabyte cuts is neither torn nor foreign
                self.assertEqual(self.long(file, lines + b"what cuts it?\n\n"), told)
                self.write(file, content)

    def test_a_repository_over_a_megabyte_is_told_not_to_have_been_looked_at_whole(self):
        content = self.read(REPOSITORY)
        for number in range(1000, 1000 + MEGABYTE // 64):  # records of others
            content += struct.pack("<HBBB", number, 0x51, 0xC0, 59) + bytes(59)
        self.assertGreater(len(content), MEGABYTE)
        self.assertNotEqual((MEGABYTE - len(content)) % 64, 0)  # one is cut
        self.assertEqual(self.long(REPOSITORY, content),
                         [("foreign", REPOSITORY, None,
                           f"has {len(content)} bytes; only what is whole in the first {MEGABYTE} was looked at")])
        self.root = self.mended()
        self.assertEqual(self.found(), [])

    def test_limits_and_slots_over_a_megabyte_are_more_than_the_library_looks_at(self):
        for file, place in ((STORE, "byte 16320"), (ENTRIES, "byte 8160"), (LIMITS, None)):
            content = self.read(file)
            with self.subTest(file):
                told = self.long(file, content + b"x" * MEGABYTE)
                self.assertIn(("foreign", file, place), [finding[:3] for finding in told])
                self.write(file, content)

    def test_a_file_that_ends_within_a_number(self):
        self.write(RECORDS, "[PSU_1]\nsdrRecId=4\nPresence=1\n[PSU_2]\nPresence=1\nsdrRecId=5")
        self.assertEqual(self.one("torn", RECORDS, None)["mended"], "as the repository has it")

    def test_presence_and_id_that_do_not_go_together(self):
        for text in ("sdrRecId=0\nPresence=1", "sdrRecId=5\nPresence=0", "sdrRecId=5\nPresence=2", "sdrRecId=5"):
            with self.subTest(text):
                self.write(RECORDS, f"[PSU_1]\nsdrRecId=4\nPresence=1\n[PSU_2]\n{text}\n")
                self.assertEqual([f[2] for f in self.found() if f[0] != "no-entry"], ["[PSU_2]"])

    # ---- FRU ids of cards ---------------------------------------------------------------------------

    def test_a_fru_id_that_is_cut_and_one_of_no_card(self):
        whole = self.read(FRU_IDS)
        self.assertIn(b"=36\n", whole)
        self.write(FRU_IDS, whole.replace(b"=36\n", b"=3\n"))
        self.assertIn(("foreign", FRU_IDS, "'HGX UBB'"), self.found())
        self.write(FRU_IDS, whole.replace(b"=36\n", b"=35\n"))
        self.assertIn("record 6 ('HGX UBB') has 36 in slot 1", self.one("stale", FRU_IDS, "'HGX UBB'")["text"])

    def test_two_cards_of_one_name_have_one_entry(self):
        """The second process's pool begins anew: the same FRU id, too."""
        self.out("add", "-b", BASE, "--class", "hgx-ubb-fru", "--slot", "2", "--root", self.root)
        self.assertEqual(self.found(), [("no-entry", FRU_IDS, "'HGX UBB'"), ("twice", REPOSITORY, "record 7")])

    # ---- limits -------------------------------------------------------------------------------------

    def limits(self, count, *names, custom_id=0, mask=0x10):
        entries = b"".join(struct.pack("<17s6s2sBH", name.encode(), bytes([0, 80, 0, 0, 0, 0]), b"\0\0", 0, mask)
                           for name in names)
        return (struct.pack("<IH", custom_id, count) + entries).ljust(IMAGE, b"\0")

    def test_limits_that_end_early_are_told_with_what_is_lost(self):
        self.write(LIMITS, self.limits(3, "GPU_TEMP_01", "GPU_TEMP_02", "GPU_TEMP_03")[:6 + 28 + 5])
        finding = self.one("torn", LIMITS, None)
        self.assertIn("39 bytes, a threshold image has 14344; 14305 are missing", finding["text"])
        self.assertIn("2 of 3 entries are lost", finding["library"])

    def test_limits_of_another_profile_are_deleted(self):
        self.write(LIMITS, self.limits(1, "GPU_TEMP_01", custom_id=7))
        self.assertEqual(self.found(), [])
        finding = self.one("stale", LIMITS, None, "--profile", "default")
        self.assertIn("saved under profile 7 (lumora), the machine has profile 0 (default)", finding["text"])
        self.assertEqual(self.report("--profile", "default")["next_start"][0],
                         "deletes the user thresholds: they are not of profile 0 (default)")

    def test_limits_for_another_mask_or_in_a_wrong_order_are_never_applied(self):
        self.write(LIMITS, self.limits(1, "GPU_TEMP_01", mask=0x18))
        self.assertIn("UNC 0 is", "UNC 0 is" + self.one("refused", LIMITS, "entry 1")["text"])
        self.write(LIMITS, self.limits(1, "GPU_TEMP_01", mask=0x30))
        self.assertIn("UC 80 is not below UNR 0", self.one("refused", LIMITS, "entry 1")["text"])

    def test_orphaned_limits_are_known_with_the_board(self):
        self.write(LIMITS, self.limits(2, "GPU_TEMP_01", "NOWHERE_TEMP"))
        self.assertEqual(self.found(), [])
        self.assertIn("'NOWHERE_TEMP'", self.one("orphaned", LIMITS, "entry 2", "--board", BASE)["text"])

    def test_counted_entries_without_a_name_are_one_finding(self):
        self.write(LIMITS, self.limits(200, "GPU_TEMP_01"))
        self.one("foreign", LIMITS, "entries 2 to 200")

    def test_a_name_saved_twice(self):
        self.write(LIMITS, self.limits(2, "GPU_TEMP_01", "GPU_TEMP_01"))
        self.one("twice", LIMITS, "entry 2")

    # ---- the folder ---------------------------------------------------------------------------------

    def test_something_else_in_the_place_of_a_file(self):
        path = os.path.join(self.root, STORE)
        os.unlink(path)
        os.symlink("/etc/passwd", path)
        finding = self.report()["findings"][0]
        self.assertEqual((finding["rule"], finding["file"]), ("foreign", STORE))
        self.assertIn("a link to /etc/passwd is in its place", finding["text"])
        self.assertEqual(finding["mended"], "as the repository has it, else left out")
        self.report("--repair", self.path("new"))
        self.assertEqual(len(self.read(STORE, self.path("new"))), 3 * 64)
        os.unlink(path)
        os.mkfifo(path)
        self.assertIn("a pipe", self.report()["findings"][0]["text"])
        os.unlink(os.path.join(self.root, LIMITS))
        os.mkdir(os.path.join(self.root, LIMITS))
        finding = next(f for f in self.report("--repair", self.path("newer"))["findings"] if f["file"] == LIMITS)
        self.assertEqual(finding["mended"], "left out")
        self.assertFalse(os.path.lexists(os.path.join(self.path("newer"), LIMITS)))

    def test_a_folder_that_is_a_link_is_that_of_the_machine(self):
        """As on a BMC whose /var/tmp is a link to /tmp: not the desk's /tmp, which has no such files."""
        os.rename(os.path.join(self.root, "var/tmp"), os.path.join(self.root, "ram"))
        for target in ("/ram", "../ram", "/var/../../../ram/."):
            os.symlink(target, os.path.join(self.root, "var/tmp"))
            for root in (self.root, self.root + "/"):
                self.assertIn("3 slots", self.out("doctor", "--root", root))
            os.unlink(os.path.join(self.root, "var/tmp"))
        desks = self.path("desks")
        os.rename(os.path.join(self.root, "ram"), desks)
        os.symlink(desks, os.path.join(self.root, "var/tmp"))
        self.assertEqual(self.report()["files"][1]["holds"], "not there")

    def test_folders_that_are_links_in_a_circle_are_refused(self):
        shutil.rmtree(os.path.join(self.root, "var/tmp"))
        os.symlink("/var/tmp", os.path.join(self.root, "var/tmp"))
        self.assertIn("symbolic links", self.refused(2, "doctor", "--root", self.root))

    def test_a_torn_repository(self):
        self.write(REPOSITORY, self.read(REPOSITORY)[:-3])
        self.assertIn(("torn", REPOSITORY, "byte 225"), self.found())  # 3 * 59 + 2 * 24 bytes in front of it

    def test_without_a_repository_files_are_held_against_one_another_only(self):
        os.unlink(os.path.join(self.root, REPOSITORY))
        self.assertEqual(self.found(), [])
        self.assertIn("no repository.sdr", self.out("doctor", "--root", self.root))

    def test_a_repository_from_elsewhere(self):
        other = self.path("other.sdr")
        os.rename(os.path.join(self.root, REPOSITORY), other)
        self.assertEqual(self.found("--repository", other), [])
        with open(other, "r+b") as file:
            file.truncate(2 * 59)  # two GPUs
        report = self.report("--repository", other, "--repair", self.path("new"))
        self.assertIn(("orphaned", STORE, "slot 3"), [(f["rule"], f["file"], f["place"]) for f in report["findings"]])
        self.assertEqual(report["files"][5]["file"], other)
        self.assertEqual(self.read(REPOSITORY, self.path("new")), self.read(other))
        self.assertEqual(len(self.read(STORE, self.path("new"))), 2 * 64)
        self.assertIn("no file that can be read, nor bmc://HOST",
                      self.refused(2, "doctor", "--root", self.root, "--repository", "/nowhere"))
        self.assertIn("no host", self.refused(2, "doctor", "--root", self.root, "--repository", "bmc://"))
        self.assertIn("no file that can be read", self.refused(2, "doctor", "--root", self.root, "--repository", "x" * 5000))

    def test_a_bmc_that_does_not_answer_is_no_finding(self):
        self.assertIn("no session", self.refused(2, "doctor", "--root", self.root, "--repository", "bmc://127.0.0.1:1",
                                                 "--timeout", "1"))

    def test_what_is_no_machine_is_refused(self):
        self.assertIn("No such file or directory", self.refused(2, "doctor", "--root", self.path("nowhere")))
        os.mkdir(self.path("empty"))
        self.assertIn("no file of a machine is in it", self.refused(2, "doctor", "--root", self.path("empty")))
        self.assertIn("--root is required", self.refused(2, "doctor"))
        self.assertTrue(self.refused_in_json(2, "doctor", "--root", self.path("nowhere")))

    # ---- mended -------------------------------------------------------------------------------------

    def mended(self):
        new = self.path("mended")
        shutil.rmtree(new, ignore_errors=True)
        self.report("--repair", new)
        return new

    def test_store_entries_and_records_come_back_from_the_repository(self):
        self.write(RECORDS, "[PSU_1]\nsdrRecId=4\nPresence=1\n[PSU_2]\nsdrRecId=5\nPresence=1\n")  # no card: never read
        before = {f: self.read(f) for f in (STORE, ENTRIES, RECORDS, FRU_IDS)}
        for file in before:
            with self.subTest(file):
                self.write(file, before[file][:len(before[file]) // 2])
                new = self.mended()
                self.assertEqual(self.read(file, new), before[file])
                self.out("doctor", "--root", new)
                self.write(file, before[file])

    def test_limits_keep_what_is_whole(self):
        whole = self.limits(3, "GPU_TEMP_01", "GPU_TEMP_02", "GPU_TEMP_03")
        self.write(LIMITS, whole[:6 + 2 * 28 + 20])
        self.assertEqual(self.read(LIMITS, self.mended()), self.limits(2, "GPU_TEMP_01", "GPU_TEMP_02"))

    def test_a_copy_never_goes_where_something_is(self):
        os.mkdir(self.path("new"))
        self.assertIn("is there already", self.refused(2, "doctor", "--root", self.root, "--repair", self.path("new")))
        self.assertIn("is there already", self.refused(2, "doctor", "--root", self.root, "--repair", self.root))
        self.assertEqual(os.listdir(self.path("new")), [])


if __name__ == "__main__":
    main()
