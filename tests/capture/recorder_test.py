# SPDX-License-Identifier: GPL-3.0-or-later
"""The recorder never stands in the firmware's way, and says in the file where a capture is not whole."""
import os
import resource
import signal
import stat
import subprocess
import sys
import time
import unittest

from support import CC, EMULATOR, FULLEST, LIBRARY, RECORDER, SOURCE, TWO_SOCKET, Captures, command, main

sys.path.append(os.path.join(SOURCE, "tests", "contract"))
from common import platform_stub  # noqa: E402

INCLUDE = os.path.join(SOURCE, "include")

# A function of a platform in which the process dies.
DYING = """#include <stdint.h>
#include <stdlib.h>
int32_t HAL_GetFanPowerAccuracy(uint32_t *to);
int32_t HAL_GetFanPowerAccuracy(uint32_t *to) { (void)to; abort(); }
"""

# A service that writes an event and says what came of it.
WRITING = """#include <stdio.h>
#include "oxa/exports.h"
int main(void) { printf("%s\\n", addPOSTErrorSel() == OXA_FAILED ? "failed" : "written"); return 0; }
"""
OPENING = "LIBIPMI_Create_IPMI_Local_Session"

# A function of a platform that calls the library back.
CALLING_BACK = """#include <stdint.h>
uint32_t getExtDevTabCount(void);
int32_t HAL_GetFanPowerAccuracy(uint32_t *to);
int32_t HAL_GetFanPowerAccuracy(uint32_t *to) { *to = getExtDevTabCount() & 1; return 0; }
"""


class Recorder(Captures):
    def test_without_a_name_nothing_is_written(self):
        plain = self.start("passes", TWO_SOCKET, "default")
        done = self.start("passes", TWO_SOCKET, "default", preload=(RECORDER,))
        self.assertEqual((done.returncode, done.stdout), (0, plain.stdout))
        self.assertEqual(os.listdir(self.folder.name), [])

    def test_the_file_is_its_owners_alone(self):
        self.record("passes", TWO_SOCKET, "default")
        self.assertEqual(stat.S_IMODE(os.stat(self.file).st_mode), 0o600)

    def test_a_path_that_cannot_be_written_disturbs_nobody(self):
        for name in ("/nowhere/x.cap", self.folder.name, "/dev/full", "/proc/self/x"):
            self.record("passes", TWO_SOCKET, "default", file=name)

    def test_a_link_is_not_followed(self):
        os.symlink(self.path("elsewhere"), self.file)
        self.record("passes", TWO_SOCKET, "default")
        self.assertFalse(os.path.exists(self.path("elsewhere")))

    def test_a_pipe_in_its_place_stays_a_pipe(self):
        os.mkfifo(self.file, 0o644)
        before = os.stat(self.file)
        self.record("passes", TWO_SOCKET, "default")
        after = os.stat(self.file)
        self.assertEqual((after.st_mode, after.st_ino), (before.st_mode, before.st_ino))
        self.assertEqual(os.listdir(self.folder.name), ["machine.cap"])

    @unittest.skipIf(os.geteuid() != 0 or EMULATOR, "files of others are made by root alone")
    def test_an_empty_file_of_somebody_else_is_not_written(self):
        with open(self.file, "wb"):
            os.chown(self.file, 65534, 65534)
        self.record("passes", TWO_SOCKET, "default")
        self.assertEqual((os.stat(self.file).st_uid, os.stat(f"{self.file}.1").st_uid), (0, 65534))
        self.assertEqual(os.path.getsize(f"{self.file}.1"), 0)
        self.same()

    def test_a_program_that_closes_its_file_keeps_its_own(self):
        own = self.path("own")
        self.record("closes", FULLEST, own)
        with open(own, "rb") as file:
            self.assertEqual(file.read(), b"the program's own\n" * 10000)
        told = self.replay()
        self.assertIn("the capture is not whole: the program closed its file", told["remarks"])
        self.assertTrue(told["played"]["same"])

    def test_signals_while_it_writes_hold_nobody_up(self):
        self.record("signals", TWO_SOCKET, "default")

    def test_a_platform_that_calls_the_library_back_is_told_as_one_call(self):
        back = self.compiled("back.so", CALLING_BACK, "-shared", "-fPIC")
        self.start("passes", TWO_SOCKET, "default", preload=(RECORDER, back), OXA_CAPTURE=self.file)
        self.assertEqual(self.same()["entries"], 1)

    def test_more_threads_than_there_are_numbers_come_out_the_same(self):
        self.record("many", TWO_SOCKET)
        told = self.replay()
        self.assertFalse([remark for remark in told["remarks"] if "damaged" in remark], told["remarks"])
        self.assertGreater(told["played"]["entries"], 300)
        self.assertTrue(told["played"]["same"])

    def test_at_its_limit_the_capture_says_that_it_is_not_whole(self):
        self.record("passes", FULLEST, "default", OXA_CAPTURE_LIMIT=65536)
        self.assertLessEqual(os.path.getsize(self.file), 65536)
        told = self.replay(status=0)
        self.assertIn("the capture is not whole: its limit is reached (OXA_CAPTURE_LIMIT)", told["remarks"])
        self.assertTrue(told["remarks"][1].startswith("the capture ends within entry 1, OXA_AddDefaultStaticSensor()"),
                        told["remarks"])
        self.assertTrue(told["played"]["same"])

    def test_at_the_limit_of_the_process_the_firmware_goes_on(self):
        def bound():
            resource.setrlimit(resource.RLIMIT_FSIZE, (100000, 100000))
        line, settings = command("passes", FULLEST, "default", preload=(RECORDER,), OXA_CAPTURE=self.file)
        done = subprocess.run(line, capture_output=True, text=True, env=settings, check=False, preexec_fn=bound)
        self.assertEqual((done.returncode, done.stdout), (0, self.start("passes", FULLEST, "default").stdout))
        self.assertIn("the capture is not whole", self.replay()["remarks"][0])

    def test_on_a_full_disk_the_firmware_goes_on_and_the_capture_says_so(self):
        small = self.path("small")
        os.mkdir(small)
        mounted = subprocess.run(["mount", "-t", "tmpfs", "-o", "size=96k", "small", small], capture_output=True,
                                 check=False)
        if mounted.returncode != 0:
            self.skipTest("a small file system may not be mounted here")
        self.addCleanup(subprocess.run, ["umount", small], check=True)
        self.record("passes", FULLEST, "default", file=os.path.join(small, "x.cap"))
        told = self.replay(os.path.join(small, "x.cap"))
        self.assertIn("the capture is not whole: the disk is full", told["remarks"])
        self.assertTrue(told["played"]["same"])

    def test_a_process_that_dies_leaves_its_last_call(self):
        dying = self.compiled("dying.so", DYING, "-shared", "-fPIC")
        done = self.start("passes", TWO_SOCKET, "default", preload=(RECORDER, dying), OXA_CAPTURE=self.file)
        self.assertNotEqual(done.returncode, 0)
        told = self.replay()
        self.assertEqual(told["last_call"]["call"], "HAL_GetFanPowerAccuracy")
        self.assertFalse(told["last_call"]["returned"])
        self.assertIn("its last call: HAL_GetFanPowerAccuracy() = did not return", told["remarks"][0])
        self.assertTrue(told["played"]["same"])

    def compiled(self, name, text, *options):
        with open(self.path(f"{name}.c"), "w", encoding="utf-8") as file:
            file.write(text)
        subprocess.run([CC, f"-I{INCLUDE}", self.path(f"{name}.c"), *options, "-o", self.path(name)], check=True)
        return self.path(name)

    def test_a_function_that_the_firmware_does_not_have_failed_and_the_capture_says_so(self):
        platform = self.compiled("platform.so", platform_stub(CC, INCLUDE, without=(OPENING,)), "-shared", "-fPIC",
                                 "-fno-builtin")
        program = self.compiled("service", WRITING, "-Wl,--unresolved-symbols=ignore-all,--no-as-needed", platform,
                                LIBRARY, f"-Wl,-rpath,{os.path.dirname(LIBRARY)}:{self.folder.name}")
        plain = self.start(program=program)
        self.assertEqual(plain.stdout, "")
        self.assertIn(OPENING, plain.stderr)
        done = self.start(program=program, preload=(RECORDER,), OXA_CAPTURE=self.file)
        self.assertEqual((done.returncode, done.stdout), (0, "failed\n"), done.stderr)
        told = self.same()
        self.assertIn(f"the firmware does not have {OPENING}", told["remarks"])

    def test_a_process_that_is_killed_leaves_what_it_had_written(self):
        line, settings = command("loop", TWO_SOCKET, "default", preload=(RECORDER,), OXA_CAPTURE=self.file)
        with subprocess.Popen(line, env=settings) as child:
            until = time.monotonic() + 60
            while not os.path.exists(self.file) or os.path.getsize(self.file) < 300000:
                self.assertLess(time.monotonic(), until)
                time.sleep(0.01)
            child.send_signal(signal.SIGKILL)
        told = self.replay()
        self.assertFalse(told["ended"])
        self.assertGreater(told["entries"], 1)
        self.assertTrue(told["played"]["same"])

    def test_the_capture_of_the_process_before_is_kept(self):
        self.record("passes", TWO_SOCKET, "default")
        before = os.path.getsize(self.file)
        self.record("passes", TWO_SOCKET, "default", "kestrin")
        self.assertEqual(os.path.getsize(f"{self.file}.1"), before)
        self.assertEqual(self.same()["entries"], 2)

    def test_the_name_may_hold_the_number_of_the_process(self):
        self.record("passes", TWO_SOCKET, "default", file=self.path("at.%p.cap"))
        found = os.listdir(self.folder.name)
        self.assertEqual(len(found), 1, found)
        self.assertEqual(found[0], f"at.{self.replay(self.path(found[0]))['process']}.cap")


@unittest.skipIf(EMULATOR, "an emulator's time is not a processor's")
class Cost(Captures):
    """What a pass costs with the recorder, over what it costs without."""

    def ratio(self, board):
        def nanoseconds(**settings):
            return float(self.start("time", board, "default", "40", **settings).stdout)
        ratios = []
        for _ in range(7):  # other work beside it makes one side slower
            without = nanoseconds()
            ratios.append(nanoseconds(preload=(RECORDER,), OXA_CAPTURE=self.file, OXA_CAPTURE_LIMIT=16 << 20) / without)
        print(f"recorder: {min(ratios):.2f} times the pass of {os.path.basename(board)}")
        return min(ratios)

    def test_with_an_empty_store_at_most_a_third_more(self):
        self.assertLessEqual(self.ratio(TWO_SOCKET), 1.3)

    def test_with_a_full_store_at_most_two_thirds_more(self):
        with open(TWO_SOCKET, encoding="utf-8") as file:
            board = self.board(f'{file.read()}\n[files]\n"/var/tmp/extSDR.dat" = {{ size = 16320, fill = 1 }}\n')
        self.assertLessEqual(self.ratio(board), 1.6)

    def test_of_the_biggest_set_the_file_costs_more(self):
        self.assertLessEqual(self.ratio(FULLEST), 1.5)  # 120 KB of a file that has to be made


if __name__ == "__main__":
    main()
