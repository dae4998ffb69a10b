# SPDX-License-Identifier: GPL-3.0-or-later
"""Every sensor and every row of every profile on every board has its answer."""
import glob
import json
import os

from support import SOURCE, Workbench, main

BOARDS = sorted(os.path.relpath(path, SOURCE) for path in glob.glob(os.path.join(SOURCE, "boards", "**", "*.toml"),
                                                                    recursive=True))
STEP = int(os.environ.get("OXA_SWEEP_STEP", 3))  # every third profile of a board, and others of the next


class Tests(Workbench):
    def told(self, board, profile):
        done = self.run_raw("why", "--board", board, "--profile", profile, "--json", "*")
        self.assertIn(done.returncode, (0, 1))
        self.assertEqual(done.stderr, b"")
        self.assertNotIn(b"unknown", done.stdout)
        return json.loads(done.stdout)["profiles"][0]

    def test_each_sensor_is_told_once_and_each_row_that_gave_none(self):
        listed = self.json("list", "--board", "boards/empty.toml", "--profile", "all")
        profiles = [profile["name"] for profile in listed["profiles"]]
        self.assertEqual(len(profiles), 9)
        self.assertGreater(len(BOARDS), 15)
        for i, board in enumerate(BOARDS):
            for profile in profiles[i % STEP::STEP]:
                told = self.told(board, profile)
                built = [s for s in told["sensors"] if s["in_set"]]
                at = (board, profile)
                self.assertEqual(sorted(s["ordinal"] for s in built), list(range(1, told["count"] + 1)), at)
                missing = [s["row"]["line"] for s in told["sensors"] if not s["in_set"]]
                self.assertEqual(len(missing), len(set(missing)), at)
                self.assertEqual(len(set(missing) | {s["row"]["line"] for s in built}), told["rows"], at)
                self.assertTrue(all(s["text"] and s["cause"] for s in told["sensors"] if not s["in_set"]), at)
                self.assertTrue(all(a["from"] for s in built for a in s["asked"]), at)


if __name__ == "__main__":
    main()
