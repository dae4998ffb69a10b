# SPDX-License-Identifier: GPL-3.0-or-later
"""Which board and profile a command works with: the option, else the environment, else the board file, else default.
The same in every command, and the profile is told in every summary."""
import glob
import os
import shutil

from support import BASE, SENSORS, SOURCE, Workbench, main

POST = "00 00 02 00 00 00 00 20 00 04 0F 00 6F 80 FA 00"  # of addPOSTErrorSel
KESTRIN = 'custom_id = "kestrin"\n'
CAN_SERVE = shutil.which("ipmi_sim") and os.path.exists(
    os.path.join(os.path.dirname(SENSORS), "oxa_ipmi_sim_plugin.so"))
INLET = "Inlet_Temp"  # Kestrin's name of what others call INPUT_TEMP


class Tests(Workbench):
    def setUp(self):
        super().setUp()
        with open(os.path.join(SOURCE, BASE), encoding="utf-8") as file:
            text = file.read()
        assert "custom_id" not in text
        self.plain = BASE
        self.kestrin = self.board(text.replace("[board]\n", "[board]\n" + KESTRIN, 1), "kestrin.toml")

    def ran(self, *words, **environment):
        done = self.run_raw(*words, env=environment)
        self.assertEqual((done.returncode, done.stderr), (0, b""), words)
        return done.stdout.decode()

    def static_commands(self):
        """What each of them says of the profile, by command; they work with the option, or the environment, alike."""
        commands = {
            "list": (["list"], "profile {}, board"),
            "show": (["show", "*"], r"of \d+, profile {}\n"),
            "export": (["export", "--format", "json"], '"name": "{}"'),
            "check": (["check"], "; profile {}\n"),
            "serve": (["serve", "--port", "0", "--run", "true", "--json"], '"{}"'),
            "event": (["event", "addDiskSEL", "4", "1", "5", "0"], "record 1, profile {}\n"),
            "add": (["add", "--class", "temperature", "--device-type", "gpu", "--slot", "1", "--uc", "90"],
                    "machine +board .*, profile {}\n"),
        }
        if not CAN_SERVE:
            del commands["serve"]
        return commands

    def test_a_board_names_its_profile_and_every_command_takes_it(self):
        for name, (words, wanted) in self.static_commands().items():
            if name == "check":  # of all profiles unless told
                continue
            with self.subTest(name):
                self.assertRegex(self.ran(*words, "--board", self.kestrin), wanted.format("kestrin"))
                self.assertRegex(self.ran(*words, "--board", self.plain), wanted.format("default"))

    def test_the_environment_goes_over_the_board_and_the_option_over_the_environment(self):
        for name, (words, wanted) in self.static_commands().items():
            with self.subTest(name):
                board = ["--board", self.kestrin]
                self.assertRegex(self.ran(*words, *board, OXA_PROFILE="pellago"), wanted.format("pellago"))
                self.assertRegex(self.ran(*words, *board, "-p", "vorana", OXA_PROFILE="pellago"),
                                 wanted.format("vorana"))

    def test_a_board_of_the_environment_is_taken_where_none_is_given(self):
        for name, (words, wanted) in self.static_commands().items():
            with self.subTest(name):
                profile = "kestrin"
                more = ["-p", profile] if name == "check" else []
                self.assertRegex(self.ran(*words, *more, OXA_BOARD=self.kestrin), wanted.format(profile))
                if name != "check":
                    self.assertRegex(self.ran(*words, "-b", self.plain, OXA_BOARD=self.kestrin),
                                     wanted.format("default"))

    def test_an_empty_variable_is_none(self):
        self.assertIn("profile kestrin,", self.ran("list", "-b", self.kestrin, OXA_PROFILE="", OXA_BOARD=""))
        done = self.run_raw("list", env={"OXA_BOARD": ""})
        self.assertEqual(done.returncode, 2)
        self.assertIn(b"--board is required", done.stderr)

    def test_wrong_names_in_the_environment_are_refused_as_wrong_options_are(self):
        for words in (["list"], ["show", "*"], ["export"], ["check"], ["add", "--list"], ["decode-sel", "00"]):
            with self.subTest(words[0]):
                given = [] if words[0] == "decode-sel" else ["-b", BASE]
                done = self.run_raw(*words, *given, env={"OXA_PROFILE": "kestrel"})
                self.assertEqual(done.returncode, 2)
                self.assertIn(b"unknown profile 'kestrel'", done.stderr)

    def test_folders_and_empty_repositories_win_over_a_board_of_the_environment(self):
        done = self.run_raw("check", "--boards", "boards", "-p", "default", env={"OXA_BOARD": "/nowhere.toml"})
        self.assertEqual(done.returncode, 0, done.stderr)
        boards = glob.glob(os.path.join(SOURCE, "boards", "*.toml"))
        self.assertIn(f"{len(boards)} sets and", done.stdout.decode())
        if not CAN_SERVE:
            self.skipTest("no ipmi_sim, or no plug-in for it")
        out = self.ran("serve", "--empty", "--port", "0", "--run", "true", "--json", OXA_BOARD=self.kestrin)
        self.assertIn('"board": null', out)

    def test_check_counts_the_board_of_the_environment(self):
        self.assertIn("1 set and 1 name table checked", self.ran("check", "-p", "default", OXA_BOARD=BASE))
        self.assertIn("0 sets and 1 name table checked", self.ran("check", "-p", "default"))
        self.assertTrue(self.ran("check").endswith("; all profiles\n"))

    def test_sides_of_a_comparison_take_the_board_of_the_environment(self):
        self.assertIn("A: default@" + BASE, self.ran("diff", "default", "default", OXA_BOARD=BASE))

    def test_a_profile_that_the_library_does_not_know_is_asked_for(self):
        path = self.board("[board]\ncustom_id = 99\n")
        line = self.refused(2, "list", "--board", path)
        self.assertIn(f"{path}: custom_id 99 is no profile's; --profile tells which is meant: default, ", line)
        self.assertIn("profile default", self.out("list", "--board", path, "-p", "default"))

    def test_a_board_of_a_customer_without_static_sensors_is_told(self):
        path = self.board('[board]\ncustom_id = "sablin"\n')
        self.assertIn("profile 'sablin' has no static driver", self.refused(2, "list", "--board", path))

    def test_thresholds_are_saved_under_the_boards_profile(self):
        words = ["--sensor", INLET, "--uc", "51"]
        out = self.out("thresholds", "set", self.path("t.dat"), *words, "--board", self.kestrin)
        self.assertIn("profile 1 (kestrin), entry 1 of 1", out)

    def test_a_file_of_another_profile_than_the_boards_is_not_added_to_and_is_dropped(self):
        path = self.path("t.dat")
        self.out("thresholds", "set", path, "--sensor", "INPUT_TEMP", "--uc", "51", "--board", self.plain)
        line = self.refused(2, "thresholds", "set", path, "--sensor", INLET, "--uc", "51", "-b", self.kestrin)
        self.assertIn("saved under profile 0 (default); a machine of profile 1 (kestrin) deletes it", line)
        done = self.run_raw("thresholds", "preflight", path, "-b", self.kestrin)
        self.assertEqual(done.returncode, 1)
        self.assertIn(b"profile kestrin: ", done.stdout)
        self.assertIn(b"1 dropped", done.stdout)

    def test_a_board_that_names_no_profile_leaves_it_to_the_threshold_file(self):
        path = self.path("t.dat")
        self.out("thresholds", "set", path, "--sensor", "X", "--uc", "9", "-p", "pellago")
        self.assertIn("profile pellago: ", self.run_raw("thresholds", "preflight", path, "-b", self.plain).stdout.decode())

    def test_a_profile_is_named_in_any_case_or_by_its_number(self):
        for name in ("KESTRIN", "Kestrin", "1"):
            for command, (words, wanted) in self.static_commands().items():
                with self.subTest(command=command, name=name):
                    self.assertRegex(self.ran(*words, "--board", self.plain, "--profile", name),
                                     wanted.format("kestrin"))
            self.assertRegex(self.ran("list", "--board", self.plain, OXA_PROFILE=name), "profile kestrin, board")
            self.assertIn("0 removed", self.ran("diff", f"{name}@{self.plain}", "kestrin@" + self.plain))
            self.assertEqual(self.ran("decode-sel", "-p", name, POST), self.ran("decode-sel", "-p", "kestrin", POST))
        self.assertRegex(self.ran("list", "--board", self.plain, "--profile", "ALL"), r"\n9 profiles,")
        self.assertRegex(self.ran("check", "--profile", "20"), "; profile sablin\n")

    def test_an_unknown_profile_gets_the_nearest_in_every_command(self):
        for words, _ in self.static_commands().values():
            words = [word for word in words if word != "--json"]
            line = self.refused(2, *words, "--board", self.plain, "--profile", "kestrn")
            self.assertRegex(line, "^oxa-sensors: unknown profile 'kestrn'; available: .*; did you mean kestrin[?]$")
        line = self.refused(2, "diff", "kestrn@" + self.plain, "default@" + self.plain)
        self.assertRegex(line, "unknown profile 'kestrn'; available: .*; did you mean kestrin[?]$")


if __name__ == "__main__":
    main()
