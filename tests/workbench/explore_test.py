# SPDX-License-Identifier: GPL-3.0-or-later
"""oxa-sensors explore: numbers of states and steps are counted by hand, stories follow from how the library works."""
import json
import os
import resource
import tomllib

from support import BASE, SOURCE, TWO_SOCKET, Workbench, main

KNOWN = os.path.join(SOURCE, "workbench", "explore", "known_findings.toml")


class Tests(Workbench):
    def walk(self, parts, depth, faults=0, board=TWO_SOCKET, code=0, more=()):
        done = self.run_raw("explore", "-b", board, "-p", "ferrisk", "--parts", parts, "--depth", str(depth), "--faults", str(faults), *more,
                            "--json")
        self.assertEqual(done.returncode, code, done.stderr)
        return json.loads(done.stdout)

    def stories(self, walked):
        return {(f["rule"], f["subject"]): f["story"] for f in walked["findings"]}

    # ---- states -------------------------------------------------------------------------------------

    def test_one_power_supply_is_in_five_states(self):
        """Never seen, there, gone; once a locator was built, the process knows the offset of FRU ids until it starts anew.
        It comes, goes, fails, a user sets limits, the process starts anew: five steps from each."""
        for depth, states, steps in ((1, 2, 5), (2, 4, 10), (3, 5, 20), (9, 5, 25)):
            with self.subTest(depth):
                walked = self.walk("psu:1", depth)
                self.assertEqual((walked["states"], walked["steps"], walked["findings"]), (states, steps, []))

    def test_the_order_in_which_parts_come_makes_no_other_state(self):
        """Two power supplies, never seen, there or gone: nine, one of them without the offset, the others with and without."""
        walked = self.walk("psu:1-2", 7)
        self.assertEqual((walked["states"], walked["levels"]), (17, [2, 5, 5, 3, 1, 0]))
        self.assertEqual(walked["steps"], 17 * 8)

    def test_a_walk_comes_to_the_same_twice(self):
        words = ("explore", "-b", TWO_SOCKET, "-p", "ferrisk", "--parts", "disk:0,psu:1", "--depth", "2", "--faults", "1", "--json")
        self.assertEqual(self.run_raw(*words).stdout, self.run_raw(*words).stdout)

    # ---- what is found ------------------------------------------------------------------------------

    def test_a_refused_disk_counts_as_registered(self):
        stories = self.stories(self.walk("disk:0", 1, 1))
        self.assertEqual(stories["registry", "disk comes, the repository refuses the record"],
                         ["disk 0 comes; the repository refuses the record"])

    def test_a_locator_that_was_added_and_not_recorded_is_added_twice(self):
        stories = self.stories(self.walk("psu:1", 2, 1))
        self.assertEqual(stories["record-file no-entry", "psu comes, killed"], ["psu 1 comes; killed before change 2"])
        # the library's own load of the record file is the first, that of its caller's update the second
        self.assertEqual(stories["one-record", "psu comes; after record-file no-entry"],
                         ["psu 1 comes; the record file cannot be loaded (call 2)", "psu 1 comes"])

    def test_pools_hand_out_ids_in_use_after_a_restart(self):
        stories = self.stories(self.walk("ubb:1,card:2", 3))
        self.assertEqual(stories["one-id", "card comes"], ["ubb 1 comes", "the process starts anew", "card 2 comes"])

    def test_limits_that_were_being_saved_are_torn(self):
        """An empty file is of profile 0, so Ferrisk deletes it; one with the profile in it is taken as far as it goes."""
        stories = self.stories(self.walk("gpu:1", 2, 1))
        self.assertEqual(stories["limits torn", "a user sets limits, killed"],
                         ["gpu 1 comes", "a user sets limits; killed in write 1, after 50 % of it"])

    def test_what_is_not_known_ends_with_1(self):
        """On a board where no INI file can ever be saved no step of the story fails it."""
        with open(os.path.join(SOURCE, BASE), encoding="utf-8") as board:
            path = self.board(board.read() + '\n[[fault]]\ncall = "IniSaveFile"\n')
        walked = self.walk("psu:1", 1, board=path, code=1)
        self.assertEqual([(f["rule"], f["subject"], f["known"]) for f in walked["findings"]],
                         [("record-file no-entry", "psu comes", False)])
        self.assertEqual(walked["new"], 1)
        told = self.run_raw("explore", "-b", path, "--parts", "psu:1", "--depth", "1")
        self.assertIn(b"NEW  record-file no-entry: psu comes\n    1 psu 1 comes\n", told.stdout)

    def test_every_known_finding_has_a_story_that_is_met(self):
        with open(KNOWN, "rb") as file:
            known = tomllib.load(file)["finding"]
        told = set()
        for parts, depth, faults in (("disk:0", 1, 1), ("psu:1,ubb:1", 2, 1), ("gpu:1", 3, 1), ("ubb:1,card:2", 3, 0)):
            told.update(tuple(f["story"]) for f in self.walk(parts, depth, faults)["findings"])
        self.assertGreater(len(known), 5)
        for finding in known:
            self.assertIn(tuple(finding["story"]), told, finding["rule"])

    # ---- stories as files ---------------------------------------------------------------------------

    def test_the_stories_are_files_for_scenario(self):
        walked = self.walk("psu:1,gpu:1", 2, 1, more=("--stories", self.path("stories")))
        files = [f["file"] for f in walked["findings"]]
        self.assertEqual(sorted(files), sorted(os.listdir(self.path("stories"))))
        ends = {}
        for finding in walked["findings"]:
            with self.subTest(finding["file"]):
                told = self.json("scenario", os.path.join(self.path("stories"), finding["file"]))
                ends[finding["rule"], finding["subject"]] = [r["name"] for r in told["repository"]]
        self.assertEqual(ends["one-record", "psu comes; after record-file no-entry"], ["PSU1_FRU", "PSU1_FRU"])

    # ---- wrong input --------------------------------------------------------------------------------

    def test_wrong_parts_are_told(self):
        for parts, why in (("dsik:0", "did you mean disk?"), ("disk", "its number is missing"), ("disk:x", "a number is 0 to 254"),
                           ("disk:3-1", "the last is below the first"), ("disk:1,disk:0-2", "disk 1 is named twice"),
                           ("", "no part"), ("psu:1,", "nothing stands behind its last comma"),
                           ("disk:0-40", "more than 32 parts")):
            with self.subTest(parts):
                self.assertIn(why, self.refused(2, "explore", "-b", BASE, "--parts", parts))
        self.assertIn("psu 0 is not added on this board", self.refused(2, "explore", "-b", BASE, "--parts", "psu:0"))
        self.assertIn("1 to 20 steps", self.refused(2, "explore", "-b", BASE, "--parts", "psu:1", "--depth", "0"))
        self.assertTrue(self.refused_in_json(2, "explore", "-b", "/nowhere.toml", "--parts", "psu:1"))

    def test_a_place_for_stories_that_cannot_be_is_told_before_the_walk(self):
        """Four parts, six steps, two faults: the walk would take longer than any test may."""
        self.assertIn("Not a directory", self.refused(2, "explore", "-b", BASE, "--parts", "psu:1-2,gpu:1,ubb:1", "--depth",
                                                      "6", "--faults", "2", "--stories", BASE))

    def test_stories_of_a_capture_are_refused_for_no_file_can_name_it(self):
        self.assertIn("board-from makes one of it",
                      self.refused(2, "explore", "-b", "capture:tests/capture/machine.cap", "--parts", "psu:1", "--depth", "1",
                                   "--stories", self.path("stories")))
        self.assertFalse(os.path.exists(self.path("stories")))

    def test_a_walk_that_cannot_go_on_is_no_finding(self):
        """The first state is made in a process of its own, whose pipe is the fourth and fifth open file."""
        done = self.run_raw("explore", "-b", BASE, "--parts", "psu:1",
                            preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_NOFILE, (4, 4)))
        self.assertEqual((done.returncode, done.stdout, done.stderr.decode()),
                         (2, b"", "oxa-sensors: no pipe: Too many open files\n"))


if __name__ == "__main__":
    main()
