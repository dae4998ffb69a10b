# SPDX-License-Identifier: GPL-3.0-or-later
"""What add and scenario say of a BMC that has records already, refuses some, or is not the one of the files."""
import json

from bmc import BmcTest, SENSORS, main, run

STORY = "scenarios/day.toml"
PSU = ("add", "--board", "boards/two_socket_2u.toml", "--class", "psu-fru", "--slot")


class Tests(BmcTest):
    def story(self, *words, code=0):
        done = run(SENSORS, "scenario", STORY, "--bmc", self.bmc.address, *words)
        self.assertEqual((done.returncode, done.stderr), (code, b""))
        return done.stdout.decode()

    def test_what_a_bmc_had_before_the_story_is_counted_and_left_out(self):
        self.story()
        text = self.story()
        self.assertIn("Repository at the end: 55 records (", text)
        self.assertIn(" FRU locators); the BMC had 55 records before", text)
        self.assertIn("Event log at the end: 2 events; the BMC had 2 events before", text)
        self.assertEqual(len(self.dump()), 110)

    def test_a_record_of_before_that_a_story_removes_is_not_counted(self):
        told = json.loads(self.story("--json"))
        self.assertEqual((told["as_expected"], told["differences"]), (True, []))
        # the record file of the second story holds the id of a record of the first
        own = [r["record_id"] for r in told["repository"]]
        path = self.path("thief.toml")
        with open(path, "w", encoding="utf-8") as file:
            file.write('board = "board.toml"\n[[step]]\nremove = { slot = 2 }\nexpect = "removed"\n')
        with open(self.path("board.toml"), "w", encoding="utf-8") as file:
            file.write(f'[files]\n"/var/SpecificSDRRec" = "[PSU_2]\\nsdrRecId={own[0]}\\nPresence=1\\n"\n')
        done = run(SENSORS, "scenario", path, "--bmc", self.bmc.address)
        self.assertEqual((done.returncode, done.stderr), (0, b""))
        self.assertIn(b"the BMC had 54 records before", done.stdout)

    def test_a_code_of_the_bmc_is_told_with_its_meaning(self):
        # 27 bytes are sent for a sub card whose length byte says 24
        done = run(SENSORS, "add", "--board", "boards/base_48.toml", "--class", "sub-card-fru", "--slot", "15", "--bmc",
                   self.bmc.address)
        self.assertEqual((done.returncode, done.stderr), (1, b""))
        self.assertIn(b"refused, result 0x00C7: Request data length invalid; BMC: refused with C7h\n", done.stdout)

    def test_a_wrong_password_is_an_error_with_the_reason(self):
        done = run(SENSORS, "scenario", STORY, "--bmc", self.bmc.address, "--password", "wrong")
        self.assertEqual((done.returncode, done.stdout), (1, b""))
        self.assertIn(b"password", done.stderr)
        self.assertEqual(done.stderr.count(b"\n"), 1)

    def test_a_folder_of_a_bmcs_repository_is_not_used_without_it(self):
        self.assertEqual(run(SENSORS, *PSU, "1", "--root", self.path("root"), "--bmc", self.bmc.address).returncode, 0)
        done = run(SENSORS, *PSU, "2", "--root", self.path("root"))
        self.assertEqual((done.returncode, done.stdout), (2, b""))
        self.assertIn(b"was used with --bmc", done.stderr)


if __name__ == "__main__":
    main()
