# SPDX-License-Identifier: GPL-3.0-or-later
"""A folder in which another oxa-sensors works: waited for, and given up after ten seconds."""
import fcntl
import os
import threading
import time

from support import BASE, Workbench, main

PSU = ("--class", "psu-fru", "--slot")


class Tests(Workbench):
    def test_a_folder_that_stays_busy_is_given_up_in_one_line(self):
        root = self.path("root")
        os.mkdir(root)
        folder = os.open(root, os.O_RDONLY)
        self.addCleanup(os.close, folder)
        fcntl.flock(folder, fcntl.LOCK_EX)
        begin = time.monotonic()
        line = self.refused(2, "remove", "-b", BASE, "--slot", "1", "--root", root)
        self.assertIn(f"--root {root}: another oxa-sensors has been working in it for 10 seconds; try again", line)
        self.assertLess(time.monotonic() - begin, 20)

    def test_a_folder_that_gets_free_is_waited_for(self):
        root = self.path("root")
        os.mkdir(root)
        folder = os.open(root, os.O_RDONLY)
        fcntl.flock(folder, fcntl.LOCK_EX)
        threading.Timer(1, os.close, (folder,)).start()
        begin = time.monotonic()
        self.out("add", "-b", BASE, *PSU, "1", "--root", root)
        self.assertGreater(time.monotonic() - begin, 0.9)


if __name__ == "__main__":
    main()
