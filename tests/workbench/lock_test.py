# SPDX-License-Identifier: GPL-3.0-or-later
"""The lock: what stands in it, what a difference from it means, how it is merged; and the lock of the tree's own boards."""
import json
import os
import random
import re
import shutil
import subprocess
import sys
import unittest
import zlib

from support import BASE, SENSORS, SOURCE, TWO_SOCKET, Workbench, main

sys.path.insert(0, os.path.join(SOURCE, "tests", "model"))
from specific_names import FRONT_NAMES  # noqa: E402

LOCK = "boards/sensors.lock"
RENEW = f"{os.path.relpath(SENSORS, SOURCE)} lock --boards boards -o {LOCK}"
# include/oxa/specific_sensors.h: rows of the ten name tables; the families' entries; the catalogue
NAMES = 48 + 48 + 48 + 56 + 45 + 45 + 39 + 44 + 51 + 14
CARDS = 11
FRONT_TYPES = ("3", "5", "15", "16", "19")  # RAID, NIC, HBA, FC, smart NIC


class LockTest(Workbench):
    def setUp(self):
        super().setUp()
        self.boards = self.path("boards")
        os.mkdir(self.boards)
        self.lock = self.path("sensors.lock")

    def copy(self, board, name=None):
        shutil.copy(os.path.join(SOURCE, board), os.path.join(self.boards, name or os.path.basename(board)))

    def write(self):
        return self.out("lock", "--boards", self.boards, "-o", self.lock)

    def text(self):
        with open(self.lock, encoding="utf-8") as file:
            return file.read()

    def edit(self, pattern, replacement, count=None):
        """As if the lock had been written by a library that built something else."""
        text, done = re.subn(pattern, replacement, self.text(), flags=re.M)
        self.assertTrue(done == count if count else done, (pattern, done))
        with open(self.lock, "w", encoding="utf-8") as file:
            file.write(text)

    def check(self, code=1):
        done = self.run_raw("lock", "--boards", self.boards, "--check", self.lock, "--json")
        self.assertEqual((done.returncode, done.stderr.decode()), (code, ""))
        return json.loads(done.stdout)

    def told(self, data):
        return {(d["what"], d["profile"], d["subject"]): d["text"] for d in data["differences"]}

    def faults(self, *words):
        done = self.run_raw("lock", *words)
        self.assertEqual((done.returncode, done.stdout), (2, b""), (words, done.stderr))
        return done.stderr.decode().splitlines()


class TheTreesOwnBoards(Workbench):
    def test_they_build_what_is_locked(self):
        done = self.run_raw("lock", "--boards", "boards", "--check", LOCK)
        if done.returncode == 1:
            self.fail(f"the boards build other sensors than {LOCK} says.\n{done.stdout.decode()}\n"
                      f"If all of it is meant, type this and commit the file with your change:\n\n    {RENEW}\n")
        self.assertEqual((done.returncode, done.stderr), (0, b""))

    def test_a_merge_keeps_the_lines_of_both_branches(self):
        with open(os.path.join(SOURCE, ".gitattributes"), encoding="utf-8") as file:
            self.assertIn(LOCK + " merge=union\n", file.read())


class Content(LockTest):
    def test_a_line_says_what_the_record_says(self):
        # all six limits: assertion and deassertion mask 95 7A, both bytes of the reading mask 3F
        self.copy(BASE)
        self.write()
        line = re.search(r"^base_48 default CPU_VOLTS_01 .*$", self.text(), re.M).group()
        sensor = self.sensor("CPU_VOLTS_01")
        name = len("CPU_VOLTS_01")
        slot = bytes.fromhex(sensor["record"]) + b"\xff" * (16 - name)
        slot = slot.ljust(64, b"\0") + bytes.fromhex(sensor["entry"])
        bus, address = sensor["device"]["bus"], sensor["device"]["address"]
        self.assertEqual(line, f"base_48 default CPU_VOLTS_01 full 02/01 03.60 4B/0.0.1@{bus}.{address:02X} x*0.01 V "
                               "lnr=1.2,lc=1.25,lnc=1.3,unc=2.3,uc=2.35,unr=2.4 957A.957A.3F3F 3/3 7F68 "
                               f"{zlib.crc32(slot):08X}")

    def test_every_sensor_of_every_profile_has_one_line_in_the_order_of_its_set(self):
        self.copy(TWO_SOCKET)
        self.assertIn(": 1461 sensors and ", self.write())
        lines = [line.split() for line in self.text().splitlines() if line[0] not in "@#"]
        for profile in self.json("list", "--profile", "all", "--board", TWO_SOCKET)["profiles"]:
            names = [s["name"] for s in
                     self.json("list", "--profile", profile["name"], "--board", TWO_SOCKET)["sensors"]]
            mine = [line for line in lines if line[:2] == ["two_socket_2u", profile["name"]]]
            self.assertEqual([line[2].split("#")[0] for line in mine], names)
        self.assertEqual(len({tuple(line[:7]) for line in lines}), len(lines))

    def test_the_run_time_tables_have_a_line_for_each_row(self):
        self.copy(BASE)
        self.write()
        lines = [line.split() for line in self.text().splitlines() if line.startswith("@")]
        count = {tag: sum(line[0] == tag for line in lines) for tag in ("@name", "@card")}
        self.assertEqual(count, {"@name": NAMES, "@card": CARDS})
        self.assertIn("@name default temperature 2:gpu 1 GPU_SFP#_TEMP_* -".split(), lines)
        self.assertIn(["@family", "temperature", "17:brenmor", "13", "DPU_DIMMB"], lines)

    def test_each_name_that_a_front_slot_changes_has_a_line_with_what_it_becomes(self):
        """By the model of the names, which knows nothing of the library."""
        self.copy(BASE)
        self.write()
        lines = [line.split() for line in self.text().splitlines()]
        wanted = [["@front", *line[1:5], FRONT_NAMES[line[5]]] for line in lines
                  if line[0] == "@name" and line[3].split(":")[0] in FRONT_TYPES and line[5] in FRONT_NAMES]
        self.assertEqual([line for line in lines if line[0] == "@front"], wanted)
        self.assertEqual({line[5] for line in wanted}, set(FRONT_NAMES.values()))
        self.assertIn(["@front", "default", "temperature", "5:nic", "1", "NIC_SFP#_T_F-*"], wanted)

    def test_the_same_boards_give_the_same_bytes(self):
        self.copy(BASE)
        self.write()
        first = self.text()
        self.write()
        self.assertEqual(self.text(), first)
        self.assertNotIn(self.folder.name, first)

    def test_a_written_lock_is_as_locked(self):
        self.copy(BASE)
        self.copy(TWO_SOCKET)
        self.write()
        self.assertEqual(self.check(0)["differences"], [])
        self.assertEqual(self.out("lock", "--boards", self.boards, "--check", self.lock),
                         f"{self.lock}: {457 + 1461} sensors of 18 sets are as locked\n")

    def test_a_board_whose_name_has_blanks_stays_one_word(self):
        self.copy(BASE, "@a b%.toml")
        self.write()
        self.assertIn("\n%40a%20b%25 default CPU_PROCHOT ", self.text())
        self.check(0)
        os.remove(os.path.join(self.boards, "@a b%.toml"))
        self.copy(BASE)
        self.assertIn(("board", None, "@a b%"), self.told(self.check()))


class Differences(LockTest):
    def setUp(self):
        super().setUp()
        self.copy(BASE)
        self.write()

    def test_a_limit_is_told_in_its_unit_with_the_line_of_the_lock(self):
        self.edit(r"^(base_48 default INPUT_TEMP .*)uc=50", r"\1uc=48", 1)
        data = self.check()
        number = 1 + [line[:26] for line in self.text().splitlines()].index("base_48 default INPUT_TEMP")
        self.assertEqual(data["differences"],
                         [{"what": "changed", "profile": "default", "subject": "INPUT_TEMP", "text": "UC 48 °C -> 50 °C",
                           "names": ["INPUT_TEMP"], "boards": ["base_48"], "records": 1, "line": number}])
        self.assertEqual(data["thresholds_in_force"], {"default": ["INPUT_TEMP"]})
        self.assertEqual((data["thresholds_dropped"], data["names_gone"]), ({}, {}))

    def test_a_renamed_sensor_loses_stored_thresholds_and_its_name_is_gone(self):
        self.edit(r"^base_48 default INPUT_TEMP ", "base_48 default INLET_TEMP ", 1)
        data = self.check()
        self.assertEqual(self.told(data), {("renamed", "default", "INLET_TEMP"): "INPUT_TEMP"})
        self.assertEqual(data["thresholds_dropped"], {"default": ["INLET_TEMP"]})
        self.assertEqual(data["names_gone"], {"default": ["INLET_TEMP"]})

    def test_renamed_sensors_without_limits_lose_no_thresholds(self):
        self.edit(r"^base_48 default CPU_TEMP_", "base_48 default CPU_T_", 2)
        data = self.check()
        self.assertEqual(self.told(data), {("renamed", "default", "CPU_T_*"): "CPU_TEMP_*"})
        self.assertEqual(data["differences"][0]["records"], 2)
        self.assertEqual((data["thresholds_dropped"], data["names_gone"]), ({}, {"default": ["CPU_T_00", "CPU_T_01"]}))

    def test_another_mask_drops_stored_thresholds(self):
        # without UNR: assertion 800A -> 8002, deassertion 807A -> 8032, reading mask 38 -> 18
        self.edit(r"^(base_48 default INPUT_TEMP .*),unr=52 \S+ ", r"\1 8002.8032.1818 ", 1)
        data = self.check()
        self.assertEqual(self.told(data), {("changed", "default", "INPUT_TEMP"): "UNR 52 °C is new"})
        self.assertEqual(data["thresholds_dropped"], {"default": ["INPUT_TEMP"]})

    def test_another_factor_reads_stored_thresholds_and_names_otherwise(self):
        self.edit(r"^(base_48 default VCC12V .*) x\*0\.1 V ", r"\1 x*0.2 V ", 1)
        data = self.check()
        self.assertEqual(self.told(data), {("changed", "default", "VCC12V"): "reading x*0.2 V -> x*0.1 V"})
        self.assertEqual(data["thresholds_read_otherwise"], {"default": ["VCC12V"]})
        self.assertEqual(data["names_read_otherwise"], {"default": ["VCC12V"]})

    def test_sensors_that_came_and_went(self):
        self.edit(r"^base_48 default VCC12V .*\n", "", 1)
        self.edit(r"^(base_48 default )INPUT_TEMP( full 01/01 )37.60 00/", r"\1GONE_TEMP\g<2>37.60 FE/", 1)
        data = self.check()
        self.assertEqual(self.told(data), {
            ("removed", "default", "GONE_TEMP"): "full, Temperature, Air Inlet, signed*1 °C, UNC 45 °C, UC 50 °C, UNR 52 °C",
            ("added", "default", "VCC12V"):
                "full, Voltage, System Board, x*0.1 V, LC 9.6 V, LNC 10.8 V, UNC 13.2 V, UC 14.4 V",
            ("added", "default", "INPUT_TEMP"):
                "full, Temperature, Air Inlet, signed*1 °C, UNC 45 °C, UC 50 °C, UNR 52 °C"})
        self.assertEqual(data["thresholds_dropped"], {"default": ["GONE_TEMP"]})

    def test_one_of_two_sensors_of_one_name_goes_and_the_name_stays(self):
        self.edit(r"^(base_48 default CPU_STATUS_01 .*)$", r"\1\nbase_48 default CPU_PROCHOT compact 07/6F 03.62 "
                  "4D/2.0.2 - - - 0004.0004.0004 1/1 6740 00000000", 1)
        data = self.check()
        self.assertEqual(self.told(data), {("removed", "default", "CPU_PROCHOT"): "compact, Processor, Processor"})
        self.assertEqual(data["names_gone"], {})

    def test_no_byte_of_record_or_entry_changes_unseen(self):
        self.edit(r"^(base_48 default ACPI_STATUS .*) \S+$", r"\1 00000000", 1)
        (change,) = self.told(self.check()).values()
        self.assertIn("bytes that the lock does not spell out", change)

    def test_another_order_of_the_records_is_told(self):
        self.edit(r"^(base_48 default INPUT_TEMP .*\n)(base_48 default ENV_HUMI .*\n)", r"\2\1", 1)
        self.assertEqual(self.told(self.check()),
                         {("order", "default", "INPUT_TEMP"): "stands before ENV_HUMI now"})

    def test_boards_and_profiles_that_came_and_went(self):
        self.edit(r"^base_48 kestrin .*\n", "")
        self.edit(r"\Z", "old default A full 01/01 37.60 00/0.0.0 x*1 V - 0000.0000.0000 1/1 7F68 00000000\n"
                  "base_48 nobody A full 01/01 37.60 00/0.0.0 x*1 V - 0000.0000.0000 1/1 7F68 00000000\n", 1)
        self.copy(TWO_SOCKET)
        self.assertEqual(self.told(self.check()), {
            ("board", None, "old"): "is in the lock and not among the boards",
            ("board", None, "two_socket_2u"): "is new: 1461 sensors of 9 profiles are not in the lock",
            ("profile", "nobody", ""): "is in the lock and has no sensors now",
            ("profile", "kestrin", ""): "is new: not in the lock"})

    def test_names_of_run_time_sensors(self):
        self.edit(r"^(@name kestrin temperature 2:gpu 0) \S+", r"\1 GPU_T*", 1)
        self.edit(r"^(@name kestrin temperature 15:hba 0 \S+) -$", r"\1 0x0018", 1)
        self.edit(r"^@card halvik-card-fru .*\n", "", 1)
        self.edit(r"^(@front astrel temperature 3:raid 0) \S+", r"\1 FRAID*", 1)
        data = self.check()
        told = self.told(data)
        self.assertTrue(told["table", "kestrin", "name temperature 2:gpu 0"].startswith("GPU_T* -> "), told)
        self.assertEqual(told["table", "kestrin", "name temperature 15:hba 0"], "0x0018 -> -")
        self.assertTrue(told["table", None, "card halvik-card-fru"].endswith(" is new"), told)
        self.assertTrue(told["table", "astrel", "front temperature 3:raid 0"].startswith("FRAID* -> "), told)
        self.assertEqual(len(told), 4)
        self.assertIn("GPU_T*", data["thresholds_dropped"]["kestrin"])
        self.assertEqual(len(data["thresholds_dropped"]["kestrin"]), 2)  # the bitmap is the mask
        self.assertEqual(data["thresholds_dropped"]["astrel"], ["FRAID*"])
        self.assertEqual(data["names_gone"], {"kestrin": ["GPU_T*"], "astrel": ["FRAID*"]})

    def test_alike_on_several_boards_is_told_once(self):
        self.copy(TWO_SOCKET)
        self.write()
        self.edit(r"^(\w+ default INPUT_TEMP .*)uc=50", r"\1uc=48", 2)
        (change,) = self.check()["differences"]
        self.assertEqual((change["boards"], change["records"]), (["base_48", "two_socket_2u"], 2))

    def test_the_text_says_how_to_renew(self):
        self.edit(r"^(base_48 default INPUT_TEMP .*)uc=50", r"\1uc=48", 1)
        done = self.run_raw("lock", "--boards", self.boards, "--check", self.lock)
        lines = done.stdout.decode().splitlines()
        self.assertEqual(done.returncode, 1)
        self.assertEqual(lines[1].split(), "changed default INPUT_TEMP UC 48 °C -> 50 °C base_48".split())
        self.assertEqual(lines[-1], f"If all of it is meant: oxa-sensors lock --boards {self.boards} -o {self.lock}")

    def test_annotations_for_a_workflow(self):
        self.edit(r"^(base_48 default INPUT_TEMP .*)uc=50", r"\1uc=48", 1)
        done = self.run_raw("lock", "--boards", self.boards, "--check", self.lock, "--format", "github")
        first = done.stdout.decode().splitlines()[0]
        self.assertEqual(done.returncode, 1)
        self.assertRegex(first, r"^::error file=\S+/sensors\.lock,line=\d+,title=Sensors::changed default INPUT_TEMP: "
                         r"UC 48 °C -> 50 °C \(base_48\)$")

    def test_a_table_for_a_comment(self):
        self.edit(r"^(base_48 default INPUT_TEMP .*)uc=50", r"\1uc=48", 1)
        done = self.run_raw("lock", "--boards", self.boards, "--check", self.lock, "--format", "markdown")
        self.assertIn(r"| changed | default | INPUT\_TEMP | UC 48 °C -> 50 °C | base\_48 |", done.stdout.decode())

    def test_names_that_mean_something_to_a_table_or_terminal_stay_one_line_of_text(self):
        self.edit(r"^(base_48 default )INPUT_TEMP ", r"\1%0A%1B[a](b)&lt;~~x|y ", 1)
        done = self.run_raw("lock", "--boards", self.boards, "--check", self.lock, "--format", "markdown")
        self.assertIn(r"| renamed | default | ??\[a\](b)\&lt;\~\~x\|y | INPUT\_TEMP | base\_48 |", done.stdout.decode())
        self.assertNotIn(b"\x1b", done.stdout)


class WrongInput(LockTest):
    def test_boards_without_a_set_are_told_and_nothing_is_written(self):
        self.copy("boards/guards/psu_count_fails.toml")
        self.copy(BASE)
        lines = self.faults("--boards", self.boards, "-o", self.lock)
        self.assertEqual(len(lines), 9)  # a profile each
        self.assertTrue(all("psu_count_fails.toml: the pass ended without a count" in line for line in lines), lines)
        self.assertFalse(os.path.exists(self.lock))

    def test_a_wrong_board_file_is_told_once(self):
        with open(os.path.join(self.boards, "x.toml"), "w", encoding="utf-8") as file:
            file.write("[psu]\ncuont = 2\n")
        (line,) = self.faults("--boards", self.boards, "-o", self.lock)
        self.assertIn("x.toml", line)

    def test_no_lock_another_format_conflicts_and_doubled_lines(self):
        self.copy(BASE)
        self.write()
        good = self.text()
        line = re.search(r"^base_48 default INPUT_TEMP .*\n", good, re.M)
        place = good[:line.end()].count("\n")
        cases = [("", ":1:1: no lock file: it does not begin with"), ("hello\n", ":1:1: no lock file"),
                 (good.replace("lock 1:", "lock 2:", 1), ":1:20: a lock of another format than 1"),
                 (good[:line.end()] + "<<<<<<< HEAD\n" + good[line.end():], f":{place + 1}:1: a conflict that a merge left"),
                 (good[:line.end()] + line.group().replace("uc=50", "uc=51") + good[line.end():],
                  f":{place + 1}:1: line {place} is about the same: two branches changed it"),
                 (good + "base_48 default X\n", f":{good.count(chr(10)) + 1}:18: 3 words; a sensor's line has 14"),
                 (good + "base_48 default X full 01 37.60 77/7.0.0 x*1 V - 0000.0000.0000 0/0 0000 00000000\n",
                  f":{good.count(chr(10)) + 1}:24: '01': the sensor type and event/reading type are written as 01/6F"),
                 (good + "base_48 default X compact 01/6F 37 77/7.0.0 - - - 0000.0000.0000 0/0 0000 00000000\n",
                  f":{good.count(chr(10)) + 1}:33: '37': the entity and instance are written as 37.60"),
                 (good + "base_48 default X compact 01/6F 37.60 77/7.0.0 - - - 8032 0/0 0000 00000000\n",
                  f":{good.count(chr(10)) + 1}:54: '8032': the masks are written as 8032.8018.1B1B"),
                 (good + "base_48 default \x1b[31m\n", f":{good.count(chr(10)) + 1}:17: a control character"),
                 (good + "@nome a b\n", f":{good.count(chr(10)) + 1}:1: '@nome' is no table of a lock"),
                 (good + "@name a b\n", f":{good.count(chr(10)) + 1}:10: the line ends within @name")]
        for text, expected in cases:
            with self.subTest(expected):
                with open(self.lock, "w", encoding="utf-8") as file:
                    file.write(text)
                (told,) = self.faults("--boards", self.boards, "--check", self.lock)
                self.assertTrue(told.startswith("oxa-sensors: " + self.lock + expected), told)

    def test_damaged_locks_are_read_to_an_end(self):
        self.copy("boards/empty.toml")
        self.write()
        good = self.text().encode()
        rng = random.Random(8)
        for _ in range(20):
            bad = bytearray(good)
            for _ in range(rng.choice((1, 10, 100))):
                at = rng.randrange(100, len(bad))
                bad[at:at + rng.choice((0, 1, 1, 9))] = rng.choice((b"", b" ", b"\n", b"\xff", b"%", b"@", b"#", b"=", b","))
            with open(self.lock, "wb") as file:
                file.write(bad)
            done = self.run_raw("lock", "--boards", self.boards, "--check", self.lock)
            self.assertIn(done.returncode, (0, 1, 2), done.stderr)
            for line in done.stderr.decode("latin-1").splitlines():
                self.assertTrue(line.startswith("oxa-sensors: " + self.lock + ":"), line)

    def test_options_that_do_not_go_together(self):
        for words in ((), ("-o", "x", "--check", "y"), ("-o", "x", "--format", "markdown")):
            self.refused(2, "lock", "--boards", "boards", *words)
        done = self.run_raw("lock", "--boards", "boards", "--check", "y", "--json", "--format", "github")
        self.assertEqual(done.returncode, 2)
        self.refused(2, "lock", "--boards", "boards", "--check", "/nowhere")
        self.refused(2, "lock", "--boards", "boards", "--check", self.boards)
        self.refused(2, "lock", "--boards", self.boards, "-o", self.lock)  # no board in it

    def test_a_folder_in_the_place_of_a_capture_is_told_how_it_is_written(self):
        for words in (("lock", "-o", self.lock), ("lock", "--check", LOCK), ("check",)):
            self.assertEqual(self.refused(2, *words, "--boards", "capture:boards"),
                             "oxa-sensors: capture:boards: a capture is a file, and this a folder; for the boards in it write boards")
        self.assertFalse(os.path.exists(self.lock))


@unittest.skipUnless(shutil.which("git"), "git is not installed")
class Merges(LockTest):
    def git(self, *words, code=0):
        done = subprocess.run(["git", "-c", "user.name=a", "-c", "user.email=a@b.c", *words], cwd=self.folder.name,
                              capture_output=True, check=False)
        self.assertEqual(done.returncode, code, (words, done.stdout, done.stderr))

    def commit(self, what):
        self.git("add", "-A")
        self.git("commit", "-qm", what)

    def setUp(self):
        super().setUp()
        shutil.copy(os.path.join(SOURCE, ".gitattributes"), self.folder.name)
        with open(self.path(".gitattributes"), "a", encoding="utf-8") as file:
            file.write("sensors.lock merge=union\n")
        self.copy(BASE, "a.toml")
        self.copy(BASE, "z.toml")
        self.write()
        self.git("init", "-q", "-b", "main")
        self.commit("first")
        self.git("branch", "other")

    def test_two_branches_that_each_add_a_board_need_no_hand(self):
        self.copy(BASE, "m.toml")  # alike but for the name, at one place of the lock
        self.write()
        self.commit("m")
        self.git("checkout", "-q", "other")
        self.copy(BASE, "n.toml")
        self.write()
        self.commit("n")
        self.git("merge", "-q", "--no-edit", "main")
        self.check(0)

    def test_two_branches_that_change_one_record_are_told_apart(self):
        self.edit(r"^(a default INPUT_TEMP .*)uc=50", r"\1uc=48", 1)
        self.commit("48")
        self.git("checkout", "-q", "other")
        self.edit(r"^(a default INPUT_TEMP .*)uc=50", r"\1uc=49", 1)
        self.commit("49")
        self.git("merge", "-q", "--no-edit", "main")
        (line,) = self.faults("--boards", self.boards, "--check", self.lock)
        self.assertIn("two branches changed it, and a merge kept both; write the lock again", line)


if __name__ == "__main__":
    main()
