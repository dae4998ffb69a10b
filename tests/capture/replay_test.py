# SPDX-License-Identifier: GPL-3.0-or-later
"""What was recorded on a machine comes out again at the desk, byte for byte, and what comes out otherwise is found."""
import json
import os
import shutil
import subprocess
import unittest

from support import FULLEST, PROFILES, RECORDER, SENSORS, SOURCE, TWO_SOCKET, Captures, boards, main

# Every way in which a rule can let a call go wrong, at calls whose answers the library treats differently.
FAULTS = (
    'call = "HAL_GetCpuMaxCount"',
    'call = "HAL_GetPsuMaxCount"\nresult = -7',
    'call = "HalFanService.GetFanSilkByIndex"\nargs = "index=2"\nsucceed = true\noutput = 99',
    'call = "HAL_GetSensorNotSupportFlagBySensor"\noutput = 0',
    'call = "Hal_GetStandPcieSlotCounts"\nresult = 3',
    'call = "HalCpuInst"\nnull_object = true',
    'call = "HalHddBackpanelInst"\nnull_operation = true',
    'call = "HalFanInst"\noccurrence = 3\nfrom_then_on = true',
    'call = "OAL_SemLockByKey"\noccurrence = 20',
    'call = "sigwrap_open_mode"\noccurrence = 5\nerrno_value = 13',
    'call = "sigwrap_read"\noccurrence = 7\nerrno_value = 5',
    'call = "lseek"\noccurrence = 9\nerrno_value = 22',
    'call = "memcpy_s"\noccurrence = 12',
    'call = "snprintf_s"\noccurrence = 30',
    'call = "snprintf_s"\nfrom_then_on = true\noccurrence = 40',
    'call = "strnlen_s"\noccurrence = 4\nresult = 3',
    'call = "oxa_memset_s"',
    'call = "oxa_strerror_s"',
    'call = "HAL_GetDimmSensorNameIndex"\nargs = "dimm=1"',
)


class Replays(Captures):
    def test_every_board_under_every_profile_comes_out_the_same(self):
        for board in boards():
            with self.subTest(board):
                self.record("passes", board, *PROFILES)
                self.assertEqual(self.same()["entries"], len(PROFILES))

    def test_every_kind_of_fault_comes_out_the_same(self):
        with open(TWO_SOCKET, encoding="utf-8") as file:
            text = file.read()
        for fault in FAULTS:
            with self.subTest(fault):
                board = self.board(f"{text}\n[[fault]]\n{fault}\n")
                self.record("passes", board, "default", "kestrin")
                self.same()

    def test_thresholds_sensors_that_come_and_go_and_events_come_out_the_same(self):
        self.record("day", TWO_SOCKET)
        told = self.same()
        self.assertGreater(told["entries"], 130)

    def test_threads_come_out_the_same(self):
        self.record("threads", TWO_SOCKET)
        told = self.replay()
        self.assertEqual(told["played"]["entries"], 400)
        self.assertTrue(any("4 threads" in remark for remark in told["remarks"]), told["remarks"])
        self.assertTrue(told["played"]["same"])

    def test_a_full_store_is_told_once(self):
        stored = " ".join(f"{byte:02X}" for byte in self.full_store())
        with open(FULLEST, encoding="utf-8") as file:
            board = self.board(f'{file.read()}\n[files]\n"/var/tmp/extSDR.dat" = {{ hex = "{stored}" }}\n')
        self.record("passes", board, "default")
        told = self.same()
        calls = self.sensors("replay", self.file, "--calls").stdout
        read = 16320 * calls.count("sigwrap_read(")
        self.assertGreater(read, 10e6)
        self.assertLess(told["bytes"], 1e6)

    @staticmethod
    def full_store():
        for slot in range(255):
            name = f"STORED_{slot:03d}".encode()
            record = bytes((slot, 0, 0x51, 1, 43 + len(name))).ljust(47, b"\0") + bytes((0xC0 + len(name),)) + name
            yield from record.ljust(64, b"\0")


@unittest.skipUnless(os.environ["OXA_RECORDED_SENSORS"], "the workbench is not built for this processor")
class Stories(Captures):
    def test_the_story_of_a_day_comes_out_the_same_in_each_of_its_processes(self):
        done = subprocess.run([os.environ["OXA_RECORDED_SENSORS"], "scenario", "scenarios/day.toml"], cwd=SOURCE,
                              capture_output=True, text=True, check=True, timeout=60,
                              env={**os.environ, "LD_PRELOAD": RECORDER, "OXA_CAPTURE": self.path("%p.cap")})
        self.assertEqual(done.stdout, self.sensors("scenario", "scenarios/day.toml").stdout)
        files = [self.path(name) for name in os.listdir(self.folder.name)]
        told = [self.same(file) for file in files]
        self.assertGreater(len(told), 1)
        self.assertGreater(sum(one["entries"] for one in told), 15)


class Sources(Captures):
    """A capture in place of a board."""

    def test_every_board_under_every_profile_builds_the_same_from_its_capture(self):
        for board in boards():
            with self.subTest(board):
                self.record("passes", board, *PROFILES)
                written = self.path("from.toml")
                told = json.loads(self.sensors("board-from", self.file, "-o", written, "--json").stdout)
                self.assertEqual(told["unsaid"], [])
                self.assertEqual([one["profile"] for one in told["passes"]], list(PROFILES))
                self.assertEqual({one["difference"] for one in told["passes"]}, {""})
                for profile in PROFILES[:2]:
                    self.assertEqual(self.listed(f"capture:{self.file}", profile), self.listed(board, profile))
                    self.assertEqual(self.listed(written, profile), self.listed(board, profile))

    def listed(self, board, profile):
        done = subprocess.run([SENSORS, "list", "--board", board, "--profile", profile, "--json"], capture_output=True,
                              text=True, cwd=SOURCE, check=False, timeout=60)
        return [one["record"] + one["entry"] for one in json.loads(done.stdout).get("sensors", [])]

    def test_a_fault_of_the_platform_is_in_the_board(self):
        with open(TWO_SOCKET, encoding="utf-8") as file:
            board = self.board(f'{file.read()}\n[[fault]]\ncall = "HalFanService.GetFanSilkByIndex"\nargs = "index=2"\n')
        self.record("passes", board, "default")
        text = self.sensors("board-from", self.file).stdout
        self.assertTrue(text.endswith('\n[[fault]]\ncall = "HalFanService.GetFanSilkByIndex"\nargs = "index=2"\n'), text)

    def test_names_of_dimms_are_written_as_the_pattern_that_gives_them(self):
        for said in ('names = "{cpu}{channel}{slot}"\ndimms_per_cpu = 8',
                     'names = "{cpu}{letter}{slot}"\ndimms_per_cpu = 4\nslots_per_channel = 1',
                     'names = "D{n}"',
                     'names = ["left", "right", "top", "low", "5", "6", "7", "8", "9", "10", "11", "12"]'):
            with self.subTest(said):
                self.record("passes", self.board(f"[dimms]\ncount = 12\n{said}\n"), "default")
                self.assertIn(f"\n{said}\n", self.sensors("board-from", self.file).stdout)

    def test_a_dropped_sensor_of_the_machine_has_its_reason_at_the_desk(self):
        with open(TWO_SOCKET, encoding="utf-8") as file:
            board = self.board(f'{file.read()}\n[[fault]]\ncall = "HAL_InputTemp_GetI2cClient"\n')
        self.record("passes", board, "default")
        told = self.sensors("why", "--board", f"capture:{self.file}", "INPUT_TEMP", status=1).stdout
        self.assertIn("INPUT_TEMP: not in the set of default", told)
        self.assertIn("HAL_InputTemp_GetI2cClient", told)

    def test_every_command_with_a_board_takes_a_capture(self):
        self.record("passes", TWO_SOCKET, "default")
        source = f"capture:{self.file}"
        self.assertIn("164 sensors", self.sensors("list", "--board", source).stdout)
        self.assertEqual(self.sensors("list", "--from", source, "--profile", "kestrin").stdout,
                         self.sensors("list", "--board", source, "--profile", "kestrin").stdout)
        self.assertIn("INPUT_TEMP: full record", self.sensors("show", "--board", source, "INPUT_TEMP").stdout)
        for other in (source, f"default@{source}"):
            self.assertIn("164 the same", self.sensors("diff", other, f"default@{TWO_SOCKET}").stdout)
        self.sensors("check", "--board", source)
        lock = self.path("x.lock")
        self.sensors("lock", "--boards", source, "-o", lock)
        self.sensors("lock", "--boards", source, "--check", lock)

    def test_what_is_no_capture_is_refused_in_one_line(self):
        with open(self.file, "wb") as file:
            file.write(b"[board]\n")
        for words in (("replay", self.file), ("board-from", self.file), ("list", "--board", f"capture:{self.file}")):
            self.assertEqual(self.sensors(*words, status=2).stderr,
                             f"oxa-sensors: {self.file}: no capture (it does not begin with OXACAPT)\n")
        missing = self.path("missing")
        self.assertEqual(self.sensors("replay", missing, status=2).stderr,
                         f"oxa-sensors: {missing}: No such file or directory\n")


class Differences(Captures):
    def with_library(self, change):
        """A folder with a library of the desk whose bytes are changed."""
        folder = self.path("other")
        os.mkdir(folder)
        desk = os.path.join(os.path.dirname(SENSORS), "liboxaspecificsensorinfo.so.1")
        with open(desk, "rb") as file:
            code = change(file.read())
        with open(os.path.join(folder, "liboxaspecificsensorinfo.so.1"), "wb") as file:
            file.write(code)
        return folder

    def play_with(self, folder):
        program = self.path("oxa-sensors")  # the linked path is looked at first: another place, other libraries
        shutil.copy(SENSORS, program)
        return subprocess.run([program, "replay", self.file], capture_output=True, text=True, check=False, cwd=SOURCE,
                              env={**os.environ, "LD_LIBRARY_PATH": folder}, timeout=60)

    def test_a_library_with_one_changed_limit_is_found_at_that_byte(self):
        self.record("passes", TWO_SOCKET, "default")
        with open(os.path.join(os.path.dirname(SENSORS), "liboxaspecificsensorinfo.so.1"), "rb") as file:
            code = file.read()
        first, behind, limit = 12, 44, 37  # of a full record: what its row says, in it the upper critical limit
        for sensor in json.loads(self.sensors("list", "--board", TWO_SOCKET, "--json").stdout)["sensors"]:
            record = bytes.fromhex(sensor["record"].replace(" ", ""))
            row = record[first:behind]
            if record[3] == 1 and record[limit] and code.count(row) == 1:
                break
        at = code.index(row) + limit - first
        done = self.play_with(self.with_library(lambda code: code[:at] + bytes((code[at] + 1,)) + code[at + 1:]))
        self.assertEqual(done.returncode, 1, done.stdout + done.stderr)
        found = [line for line in done.stdout.splitlines() if line.startswith("entry 1: ")]
        self.assertEqual(found[0], f"entry 1: OXA_AddDefaultStaticSensor, sensor {sensor['ordinal']}, record: byte {limit}: "
                         f"0x{record[limit]:02X} recorded, 0x{record[limit] + 1:02X} now")
        # a row of several sensors is changed in all of them, and in nothing else
        self.assertTrue(all(f"record: byte {limit}: " in line for line in found), found)

    def test_another_line_of_the_log_is_found_at_its_call(self):
        self.record("passes", TWO_SOCKET, "default")
        done = self.play_with(self.with_library(lambda code: code.replace(b"ucCnt = %d!", b"ucCNT = %d!")))
        self.assertEqual(done.returncode, 1, done.stdout + done.stderr)
        self.assertRegex(done.stdout, r'entry 1, call \d+: _ssp_info, parameter 5: character \d+: "[^"]*ucCnt = \d+!" '
                         r'recorded, "[^"]*ucCNT = \d+!" now\n')

    def test_another_question_is_found_where_it_is_asked(self):
        self.record("passes", TWO_SOCKET, "default")
        with open(self.file, "rb") as file:
            whole = file.read()
        # the name of a call that was recorded: the library asks for the real one
        self.write_with(whole, b"HAL_GetFanPowerAccuracy", b"HAL_GetFanPowerAccurac_")
        done = self.sensors("replay", self.file, status=1).stdout
        self.assertRegex(done, r"entry 1, call \d+: HAL_GetFanPowerAccuracy: called now; recorded is HAL_GetFanPowerAccurac_\(\)")

    def write_with(self, whole, before, behind):
        """The capture with another name in its block, whose checksum is put right."""
        at = whole.index(before) - 2  # the item's kind and length
        block = at - 12
        size = int.from_bytes(whole[block:block + 4], "little")
        payload = whole[at:at + (size + 3) // 4 * 4].replace(before, behind)
        total = 0x811C9DC5
        words = whole[block:block + 8] + payload
        for word in range(0, len(words), 4):
            total = (total ^ int.from_bytes(words[word:word + 4], "little")) * 0x01000193 & 0xFFFFFFFF
        with open(self.file, "wb") as file:
            file.write(whole[:block + 8] + total.to_bytes(4, "little") + payload + whole[at + len(payload):])

    def test_nothing_of_a_damaged_capture_is_played_beyond_the_damage(self):
        self.record("passes", TWO_SOCKET, "default", "kestrin")
        with open(self.file, "rb") as file:
            whole = file.read()
        with open(self.file, "wb") as file:
            file.write(whole[:len(whole) // 2] + bytes((whole[len(whole) // 2] ^ 1,)) + whole[len(whole) // 2 + 1:])
        told = self.replay()
        self.assertIn("the file is damaged at byte ", told["remarks"][0])
        self.assertLess(told["bytes"], len(whole) // 2 + 1)
        self.assertTrue(told["played"]["same"])
        self.assertIn("\n# the file is damaged at byte ", self.sensors("board-from", self.file).stdout)
        self.assertIn("the file is damaged at byte ",
                      self.sensors("list", "--board", f"capture:{self.file}", "--profile", "default").stderr)


if __name__ == "__main__":
    main()
