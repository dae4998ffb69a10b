# SPDX-License-Identifier: GPL-3.0-or-later
"""From records back to calls: every kind of input, ambiguity, losses, exit codes."""
import json
import subprocess

from support import SENSORS, SOURCE, Workbench, main

POST = "00 00 02 00 00 00 00 20 00 04 0F 00 6F 80 FA 00"
MINOR = "01 00 C0 89 12 00 00 E4 00 04 15 00 87 A1 05 FF"
DISK = "02 00 E0 00 00 00 03 04 00 04 0D 43 6F A2 00 15"
NOBODYS = "00 00 02 00 00 00 00 20 00 04 01 30 01 59 00 00"

# What ipmitool 1.8.19 printed for two records, one with and one without types in words.
IPMITOOL = """SDRR successfully erased
Err in cmd get sensor sdr info
SEL Record ID          : 0001
 Record Type           : 02
 Timestamp             : S+ 70/001 S+ 70/001
 Generator ID          : 0020
 EvM Revision          : 04
 Sensor Type           : Memory
 Sensor Number         : 00
 Event Type            : Generic Discrete
 Event Direction       : Deassertion Event
 Event Data            : 010500
 Description           : Predictive Failure Asserted

SEL Record ID          : 0002
 Record Type           : c0  (OEM timestamped)
 Timestamp             : S+ 70/001 S+ 70/001
 Manufactacturer ID    : 0400e4
 OEM Defined           : 150087a105ff [......]

SEL Record ID          : 0004
 Record Type           : e0  (OEM non-timestamped)
 OEM Defined           : 000000030400040d436fa20015 [........Co...]

"""


class Tests(Workbench):
    def decode(self, text, *words):
        done = subprocess.run([SENSORS, "decode-sel", "--json", *words], input=text if isinstance(text, bytes) else
                              text.encode(), capture_output=True, cwd=SOURCE, timeout=60, check=False)
        self.assertEqual(done.returncode, 0, done.stderr)
        return json.loads(done.stdout)["records"]

    def calls(self, text, *words):
        return [[c["call"] for c in record["candidates"]] for record in self.decode(text, *words)]

    def test_raw_hex_in_any_usual_spelling(self):
        for text in (POST, POST.lower(), POST.replace(" ", ""), POST.replace(" ", ","), POST.replace(" ", ", "),
                     " ".join("0x" + b for b in POST.split()), " ".join(b + "h" for b in POST.split()),
                     "00000010: 0000 0200 0000 0020 0004 0f00 6f80 fa00  ........ ....o...", "# a remark\n\n" + POST):
            with self.subTest(text):
                self.assertEqual(self.calls(text), [["addPOSTErrorSel"]])

    def test_bytes_on_the_command_line(self):
        self.assertIn("addPOSTErrorSel", self.out("decode-sel", *POST.split()))
        self.assertIn("addPOSTErrorSel", self.out("decode-sel", POST))

    def test_several_lines_are_several_records(self):
        self.assertEqual(self.calls("\n".join((POST, MINOR, DISK))),
                         [["addPOSTErrorSel"], ["addMinorCDUFaultSel reason=5 assertFlag=1"],
                          ["addDiskSEL entityId=? slotNum=3 eventNum=21 eventDir=0"]])

    def test_a_file_of_16_byte_records(self):
        path = self.path("sel.raw")
        with open(path, "wb") as file:
            file.write(bytes.fromhex(POST + MINOR + DISK))
        shown = self.out("decode-sel", path)
        self.assertIn("record 2: " + MINOR + "\n  addMinorCDUFaultSel reason=5 assertFlag=1\n", shown)
        self.assertNotIn("turned round", shown)

    def test_oem_records_as_ipmitool_writeraw_turns_them_round(self):
        turned = MINOR.replace("E4 00 04", "04 00 E4")
        records = self.decode(bytes.fromhex(POST + turned + DISK))
        self.assertEqual(records[1]["bytes"], MINOR)
        self.assertIn("turned round", records[1]["where"])
        self.assertEqual([r["candidates"][0]["builder"] for r in records],
                         ["addPOSTErrorSel", "addMinorCDUFaultSel", "addDiskSEL"])

    def test_one_clear_record_settles_the_order_of_a_whole_file(self):
        # a network port's bytes 7 to 9 read either way: entity 0Bh, 67h, 45h or entity 45h, 67h, 0Bh
        port = "03 00 C0 00 00 00 00 0B 67 45 27 00 6F 00 02 03"
        alone = self.calls(bytes.fromhex(port))
        self.assertEqual([call.split()[1] for call in alone[0]], ["entityId=11", "entityId=69"])
        settled = self.calls(bytes.fromhex(port + MINOR))
        self.assertEqual([call.split()[1] for call in settled[0]], ["entityId=11"])
        turned = self.calls(bytes.fromhex(port + MINOR.replace("E4 00 04", "04 00 E4")))
        self.assertEqual([call.split()[1] for call in turned[0]], ["entityId=69"])

    def test_ipmitool_sel_list_v(self):
        self.assertEqual(self.calls(IPMITOOL), [["addMemPredictiveFault dimmNum=5 assertFlag=1"],
                                                ["addMinorCDUFaultSel reason=5 assertFlag=1"],
                                                ["addDiskSEL entityId=? slotNum=3 eventNum=21 eventDir=0"]])

    def test_oem_lines_of_ipmitool_sel_list(self):
        text = ("   1 |  Pre-Init  |0000004744| Memory | Predictive Failure Asserted | Deasserted\n"
                "   2 |  Pre-Init  |0000004745| OEM record c0 | 0400e4 | 150087a105ff\n"
                "   4 | OEM record e0 | 000000030400040d436fa20015\n")
        self.assertEqual(self.calls(text), [["addMinorCDUFaultSel reason=5 assertFlag=1"],
                                            ["addDiskSEL entityId=? slotNum=3 eventNum=21 eventDir=0"]])

    def test_freeipmi_hex_dump(self):
        text = ("RID:[02][00] RT:[C0] TS:[89][12][00][00] GID:[E4][00] ER:[04] ST:[15] SN:[00] EDIR:[87] "
                "ED1: [A1] ED2: [05] ED3: [FF]\n")
        self.assertEqual(self.calls(text), [["addMinorCDUFaultSel reason=5 assertFlag=1"]])

    def test_a_predicted_disk_fault_has_two_readings(self):
        # 18h is written for event 24 and for 27 to 29
        record = self.decode("00 00 E0 00 00 00 03 04 00 04 0D 43 6F A1 00 18")[0]
        first, second = record["candidates"]
        self.assertEqual((first["arguments"]["eventNum"], second["arguments"]["eventNum"]), (24, 27))
        self.assertIn("eventNum is 27 to 29, the record does not tell which", second["losses"])
        self.assertEqual(first["looked_up"], {"foundNumber": 0x43})

    def test_a_word_above_255_is_a_reading_only_where_there_is_no_other(self):
        # event 280 leaves 18h in its byte too, but 24 does and is a byte; event 1Eh of a power module would have types
        self.assertNotIn("eventNum=280", str(self.calls("00 00 E0 00 00 00 03 04 00 04 0D 00 6F A1 00 18")))
        self.assertEqual(self.calls("00 00 C0 00 00 00 00 0A 00 04 08 00 00 00 05 1E"),
                         [["addPEMSEL location=5 eventNum=286 eventDir=?"]])

    def test_a_machine_check_of_bank_7fh_with_high_bit_or_of_bank_ffh(self):
        record = self.decode("00 00 02 00 00 00 00 20 00 04 07 12 6F 0B 01 FF")[0]
        found = [(c["arguments"]["bankHighBit"], c["arguments"]["bankNum"]) for c in record["candidates"]]
        self.assertEqual(found, [(1, 0x7F), (None, 0xFF)])

    def test_two_builders_for_one_record(self):
        # controller event 5 and alarm 5 of entity 16 are sent without types
        builders = [c["builder"] for c in self.decode("00 00 C0 00 00 00 00 10 05 04 00 00 00 00 00 00")[0]["candidates"]]
        self.assertEqual(builders, ["addControllerSEL", "addSELAlarm"])

    def test_what_the_record_does_not_hold_is_said(self):
        record = self.decode("00 00 C0 00 00 00 00 0B 67 45 27 00 EF 00 02 03")[0]
        self.assertIsNone(record["candidates"][0]["arguments"]["eventNum"])
        self.assertIn("eventNum is not in the record", record["candidates"][0]["losses"])

    def test_profiles_that_do_not_report_the_event_are_said(self):
        drop = self.decode("00 00 02 00 00 00 00 20 03 04 08 77 6F 01 21 03")[0]["candidates"]
        self.assertEqual([(c["builder"], c["profiles"]) for c in drop], [("addPowerDropSEL", ["vorana"])])
        self.assertNotIn("kestrin", self.decode(DISK)[0]["candidates"][0]["profiles"])

    def test_a_profile_narrows_the_answers(self):
        self.assertEqual(self.calls(POST + "\n" + DISK, "-p", "kestrin"), [["addPOSTErrorSel"], []])

    def test_a_call_as_printed_writes_the_record_again(self):
        for record in (POST, MINOR, "00 00 C0 00 00 00 00 0B 67 45 27 00 EF 00 02 03"):
            call = self.decode(record)[0]["candidates"][0]["call"]
            written = self.json("event", *call.split())["record"]["bytes"]
            self.assertEqual(written.split()[7:], record.split()[7:])

    def test_records_of_others_are_shown_as_such(self):
        records = self.decode(POST + "\n" + NOBODYS)
        self.assertEqual([len(r["candidates"]) for r in records], [1, 0])

    def test_nothing_of_ours_ends_with_1(self):
        done = self.run_raw("decode-sel", NOBODYS)
        self.assertEqual(done.returncode, 1)
        self.assertIn(b"no event builder writes this record", done.stdout)
        self.assertEqual(done.stderr.decode(), "oxa-sensors: no event builder wrote any of the 1 records\n")

    def test_wrong_input_is_refused(self):
        short = self.path("short.raw")
        with open(short, "wb") as file:
            file.write(bytes(17))
        for words, part in ((["nowhere.raw"], "nowhere.raw: No such file"), ([self.folder.name], "Is a directory"),
                            ([short], "17 bytes are no whole number of 16-byte records"),
                            (["00", "beef", "-"], "line 1 has 3 bytes"),
                            ([POST, "-p", "nobody"], "unknown profile 'nobody'"),
                            (["/dev/null"], "no event record")):
            with self.subTest(words):
                self.assertIn(part, self.refused(2, "decode-sel", *words))

    def test_a_line_of_too_few_or_too_many_bytes_is_told_their_number(self):
        for words, said in ((POST.split()[:15], "line 1 has 15 bytes; a record has 16"),
                            (["0x51"], "line 1 has 1 byte; a record has 16"),
                            ([*POST.split(), "00"], "line 1 has 17 bytes; a record has 16, and a line of its own"),
                            (["".join(POST.split())[:31]],
                             "line 1 has 31 hexadecimal digits; a record has 32, for 16 bytes")):
            self.assertEqual(self.refused(2, "decode-sel", *words), f"oxa-sensors: '{' '.join(words)}': {said}")
        path = self.path("a.txt")
        with open(path, "w", encoding="ascii") as file:
            file.write(POST + "\n\n# short\n" + POST[:-3] + "\n")
        self.assertEqual(self.refused(2, "decode-sel", path),
                         f"oxa-sensors: {path}: line 4 has 15 bytes; a record has 16")

    def test_a_cut_record_of_ipmitool_is_refused(self):
        path = self.path("cut.txt")
        with open(path, "w", encoding="utf-8") as file:
            file.write(IPMITOOL[:IPMITOOL.index(" Event Data")])
        self.assertIn("the record that begins in line 3 is not whole", self.refused(2, "decode-sel", path))

    def test_help_names_the_inputs(self):
        text = self.out("decode-sel", "--help")
        for word in ("writeraw", "sel list -v", "--hex-dump", "--profile", "--json"):
            self.assertIn(word, text)


if __name__ == "__main__":
    main()
