# SPDX-License-Identifier: GPL-3.0-or-later
"""Exit codes, error lines, help, colour, pipes."""
import glob
import os
import re
import subprocess

from support import BASE, SENSORS, SOURCE, Workbench, main

COMMON = ["--help", "--board", "--profile", "--trace", "--log", "--json"]

# What the last line of the pass says on each guard board.
GUARDS = {
    "board_id_fails": "get Board Id failed",
    "psu_count_fails": "get pem max count failed",
    "cpu_silk_overflow": "ucIndex may overflow. (ucCPUCnt+ucCpuSilkStart) = 256!",
    "psu_count_255": "ucIndex may overflow. dwPSUCnt = 255!",
    "dimm_count_255": "ucIndex may overflow. dwDimmCnt = 255!",
    "pcie_count_255": "ucIndex may overflow. ucPcieCnt = 255!",
    "fan_count_255": "ucIndex may overflow. ucFanCnt = 255!",
    "disk_range_overflow": "diskIndex may overflow.",
    "ocp_count_255": "ucIndex may overflow. ucOCPCnt = 255!",
}


class Tests(Workbench):
    def test_help_names_every_command(self):
        text = self.out("--help")
        for word in ("list", "show", "export", "diff", "check", "--version", "Exit status"):
            self.assertIn(word, text)

    def test_help_of_list_names_every_option(self):
        text = self.out("list", "--help")
        for option in COMMON + ["--filter"]:
            self.assertIn(option, text)

    def test_help_of_show_names_every_option(self):
        text = self.out("show", "--help")
        for option in COMMON + ["NAME"]:
            self.assertIn(option, text)

    def test_help_of_export_names_every_option(self):
        text = self.out("export", "--help")
        for option in COMMON + ["--format", "raw", "csv", "--output", "--keep-ids", "--number"]:
            self.assertIn(option, text)

    def test_version_names_the_librarys_version_and_the_commit(self):
        with open(os.path.join(SOURCE, "CMakeLists.txt"), encoding="utf-8") as file:
            version = re.search(r"project\(\S+ VERSION (\S+)", file.read())[1]
        git = subprocess.run(["git", "-C", SOURCE, "rev-parse", "--short=12", "HEAD"], capture_output=True, check=False)
        commit = git.stdout.decode().strip() if os.path.exists(os.path.join(SOURCE, ".git")) else "unknown"
        self.assertRegex(self.out("--version"),
                         rf"^oxa-sensors {re.escape(version)} \(commit {commit}( with changes)?\)\n$")

    def commit_header(self, folder, *settings):
        """What a build from this folder would say."""
        header = os.path.join(self.folder.name, "version_text.h")
        subprocess.run(["cmake", "-D", f"SOURCE={folder}", "-D", "VERSION=1.2.3", "-D", f"HEADER={header}", *settings,
                        "-P", os.path.join(SOURCE, "workbench", "base", "commit.cmake")], check=True)
        with open(header, encoding="utf-8") as file:
            return file.read(), os.stat(header).st_mtime_ns

    def test_a_tree_without_git_has_an_unknown_commit_also_within_another_tree(self):
        subprocess.run(["git", "init", "-q", self.folder.name], check=True)
        inner = os.path.join(self.folder.name, "unpacked")
        os.mkdir(inner)
        self.assertIn('OXA_COMMIT "unknown"', self.commit_header(inner)[0])
        self.assertIn('OXA_COMMIT "4711"', self.commit_header(inner, "-D", "COMMIT=4711")[0])

    def test_the_commit_is_written_anew_only_when_it_is_another(self):
        tree = os.path.join(self.folder.name, "tree")
        git = ["git", "-C", tree, "-c", "user.name=n", "-c", "user.email=e@x"]
        subprocess.run(["git", "init", "-q", tree], check=True)
        with open(os.path.join(tree, "a"), "w", encoding="ascii") as file:
            file.write("1")
        subprocess.run([*git, "add", "a"], check=True)
        subprocess.run([*git, "commit", "-qm", "a"], check=True)
        first = self.commit_header(tree)
        self.assertEqual(first, self.commit_header(tree))
        self.assertRegex(first[0], r'OXA_VERSION "1\.2\.3"\n#define OXA_COMMIT "[0-9a-f]{12}"')
        with open(os.path.join(tree, "a"), "w", encoding="ascii") as file:
            file.write("23")
        self.assertIn(" with changes", self.commit_header(tree)[0])

    def test_the_example_of_every_help_works(self):
        for name in ("boards", "scenarios", "library", "tests"):
            os.symlink(os.path.join(SOURCE, name), self.path(name))
        os.symlink(SENSORS, self.path("oxa-sensors"))
        environment = dict(os.environ, PATH=self.folder.name + os.pathsep + os.environ["PATH"])
        groups = {"thresholds": ("set", "show", "preflight"),  # a file is set before it is shown
                  "sheet": ("export", "check", "rows", "image")}
        commands = ["", *re.findall(r"^  ([a-z-]+)  ", self.out("--help").partition("Subcommands:")[2], re.M)]
        commands += [f"{group} {name}" for group, names in groups.items() for name in names]
        self.assertGreater(len(commands), 12)
        for command in commands:
            with self.subTest(command):
                example = re.search(r"^Example:\n  (oxa-sensors .*)$", self.out(*command.split(), "--help"), re.M)[1]
                self.assertTrue(example.split("oxa-sensors ")[-1].startswith(command or "list"), example)
                if command in ("serve", "push", "verify"):  # a BMC simulator is needed; see tests/end_to_end
                    continue
                done = subprocess.run(["sh", "-c", example], cwd=self.folder.name, env=environment, timeout=60,
                                      capture_output=True, check=False)
                told = re.sub(rb"oxa-sensors: note: \d+ steps a minute.*\n", b"", done.stderr)  # of explore, where it takes long
                self.assertEqual((done.returncode, told), (1 if command == "diff" else 0, b""), example)
                self.assertTrue(done.stdout or command == "export", example)

    def test_no_command_is_refused_with_the_commands(self):
        self.assertIn("list, show, why, export, ", self.refused(2))

    def test_a_misspelt_command_gets_the_nearest(self):
        self.assertIn("unknown command 'lst'; did you mean list?", self.refused(2, "lst", "--board", BASE))

    def test_a_misspelt_option_gets_the_nearest(self):
        self.assertIn("unknown option '--bord'; did you mean --board?", self.refused(2, "list", "--bord", BASE))

    def test_a_missing_board_option_is_refused(self):
        self.assertIn("--board is required", self.refused(2, "list"))

    def told(self, *words):
        """What a wrong line is told, without the hint at --help."""
        line = self.refused(2, *words)
        self.assertRegex(line, r" \(see oxa-sensors[a-z -]* --help\)$")
        return line[len("oxa-sensors: "):line.rindex(" (see ")]

    def test_an_option_without_its_value_is_told_how_it_is_written(self):
        self.assertEqual(self.told("list", "-b"), "--board: its value is missing; write --board FILE")
        self.assertEqual(self.told("list", "-b", BASE, "--profile="),
                         "--profile: its value is missing; write --profile NAME")
        self.assertEqual(self.told("export", "-b", BASE, "--format"),
                         "--format: its value is missing; write --format raw|json|csv|freeipmi-cache")
        self.assertEqual(self.told("thresholds", "set", "x", "-s", "y", "--description"),
                         "--description: its value is missing; write --description FILE")

    def test_an_option_that_takes_two_values_says_so(self):
        for values in (["1"], ["1", "2", "3"]):
            self.assertEqual(self.told("thresholds", "set", "x", "-s", "y", "--further", *values),
                             "--further takes 2 values; write --further N N")

    def test_an_option_that_is_given_twice_is_refused(self):
        self.assertEqual(self.told("list", "-b", BASE, "--board", BASE), "--board is given 2 times; once is enough")

    def test_a_word_that_is_none_of_several_gets_them(self):
        self.assertEqual(self.told("export", "-b", BASE, "--format", "xml"),
                         "--format xml: raw, json, csv or freeipmi-cache is wanted")

    def test_a_number_that_is_none_gets_its_range(self):
        for word in ("x", "5x", "-1", "70000", "0x10", "1.5", "99999999999999999999"):
            self.assertEqual(self.told("serve", "--empty", "--port", word),
                             f"--port {word}: a whole number from 0 to 65535 is wanted")
        self.assertEqual(self.told("event", "addPOSTErrorSel", "--count", "0"),
                         "--count 0: a whole number from 1 to 1000000 is wanted")

    def test_numbers_are_decimal_whatever_they_begin_with(self):
        self.assertIn("sent 10 times", self.out("event", "addPOSTErrorSel", "--count", "010"))

    def test_a_flag_takes_no_value(self):
        for value in ("no", "3", "true", "false", "1", "{}", ""):
            for words, flag in ((["list", "-b", BASE], "--json"), (["list"], "--help"), (["list"], "-h"), ([], "--version"),
                                (["add", "-b", BASE], "--no-record"), (["add", "-b", BASE], "--record"),
                                (["check"], "-v"), (["thresholds", "show", "x"], "--json")):
                with self.subTest(flag=flag, value=value):
                    self.assertEqual(self.told(*words, f"{flag}={value}"), f"{flag} takes no value")
        self.assertEqual(self.told("check", "-vh=true"), "-h takes no value")

    def test_what_is_no_flag_may_hold_an_equals_sign(self):
        self.assertIn("no sensor '--json=true'", self.refused(2, "show", "-b", BASE, "--", "--json=true"))
        self.out("export", "-b", BASE, "--format=csv", f"--output={self.path('h=v.csv')}")
        self.assertTrue(os.path.exists(self.path("h=v.csv")))

    def test_a_path_that_cannot_be_meant_is_refused(self):
        for path in ("", "--log"):
            self.assertEqual(self.told("list", "--board", path),
                             f"--board {path or repr(path)}: the name of a file is wanted")
        self.assertEqual(self.told("list", f"-b={BASE}"), f"--board ={BASE}: the name of a file is wanted")
        self.assertEqual(self.told("export", "-b", BASE, "-o", ""), "--output '': the name of a file is wanted")
        self.assertEqual(self.told("check", "--boards", ""), "--boards '': the name of a folder is wanted")
        self.assertEqual(self.told("list", "-b", BASE, "--from", ""), "--from '': a source is wanted")
        self.assertEqual(self.told("report", "-b", BASE, "-o", "x", "--against", ""), "--against '': a set is wanted")
        self.assertEqual(self.told("doctor", "--root", "x", "--repository", ""), "--repository '': a source is wanted")
        self.assertEqual(self.told("doctor", "--root", "x", "--repair", ""),
                         "--repair '': the name of a folder is wanted")
        self.assertEqual(self.told("event", "addDiskSEL", "4", "1", "5", "0", "-b", BASE, "--bmc", ""),
                         "--bmc '': HOST:PORT is wanted")

    def test_an_option_before_its_command_is_told_its_place(self):
        self.assertEqual(self.told("--log", "list", "-b", BASE),
                         "'--log' stands before the command; write oxa-sensors list --log")
        self.assertEqual(self.told("list", "-b", BASE, "--", "x"), "unknown argument 'x'")

    def test_help_and_version_that_cannot_be_written_are_told(self):
        for words in (["--help"], ["show", "--help"], ["--version"]):
            with open("/dev/full", "wb") as full:
                done = subprocess.run([SENSORS, *words], stdout=full, stderr=subprocess.PIPE, timeout=60, check=False)
            self.assertEqual((done.returncode, done.stderr),
                             (2, b"oxa-sensors: standard output: cannot write: No space left on device\n"))

    def test_a_missing_board_file_is_named(self):
        line = self.refused(2, "list", "--board", "boards/nowhere.toml")
        self.assertIn("boards/nowhere.toml", line)

    def test_an_unknown_key_is_told_with_file_and_line(self):
        path = self.board("[board]\nid = 0x5481\n\n[cpus]\ncuont = 2\n")
        line = self.refused(2, "list", "--board", path)
        self.assertTrue(line.startswith(f"oxa-sensors: {path}:5:1: "), line)
        self.assertIn("count", line)

    def test_a_wrong_type_is_told_with_file_and_line(self):
        path = self.board("[board]\nid = 0x5481\n[cpus]\ncount = \"two\"\n")
        self.assertTrue(self.refused(2, "show", "ME", "--board", path).startswith(f"oxa-sensors: {path}:4:"))

    def test_a_number_out_of_range_is_told_with_file_and_line(self):
        path = self.board("[cpus]\ncount = 256\n")
        self.assertTrue(self.refused(2, "export", "--board", path).startswith(f"oxa-sensors: {path}:2:"))

    def test_broken_toml_is_told_with_file_and_line(self):
        path = self.board("[board]\nid = = 1\n")
        self.assertTrue(self.refused(2, "list", "--board", path).startswith(f"oxa-sensors: {path}:2:"))

    def test_an_unknown_profile_gets_the_available_ones(self):
        line = self.refused(2, "list", "--board", BASE, "--profile", "defualt")
        self.assertIn("'defualt'", line)
        self.assertIn("available: default", line)

    def test_a_profile_without_driver_is_told_in_one_line(self):
        line = self.refused(2, "list", "--board", BASE, "--profile", "sablin")
        self.assertIn("profile 'sablin' has no static driver", line)
        self.assertIn("available: default, kestrin, pellago, vorana, astrel, quorral, lumora, durnow, ferrisk", line)

    def test_help_of_diff_names_every_option_and_exit_status(self):
        text = self.out("diff", "--help")
        for option in ("--board", "--json", "PROFILE@BOARD", "0 equal; 1 different; 2 wrong input"):
            self.assertIn(option, text)

    def test_help_of_check_names_every_option_and_exit_status(self):
        text = self.out("check", "--help")
        for option in ("--board", "--boards", "--profile", "--verbose", "--json", "1 new findings; 2 wrong input"):
            self.assertIn(option, text)

    def test_every_guard_board_ends_with_exit_1_and_its_reason(self):
        boards = sorted(glob.glob(os.path.join(SOURCE, "boards", "guards", "*.toml")))
        self.assertEqual({os.path.basename(b)[:-5] for b in boards}, set(GUARDS))
        for name, reason in GUARDS.items():
            with self.subTest(name):
                line = self.refused(1, "list", "--board", f"boards/guards/{name}.toml")
                self.assertIn("ended without a count", line)
                self.assertTrue(line.endswith(reason), line)

    def test_trace_goes_to_standard_error_and_leaves_the_result_alone(self):
        plain = self.out("list", "--board", BASE, "--json")
        done = self.run_raw("list", "--board", BASE, "--json", "--trace")
        self.assertEqual(done.stdout.decode(), plain)
        self.assertIn("HAL_GetCpuMaxCount", done.stderr.decode())
        self.assertIn("OXA_AddDefaultStaticSensor: ucCnt = 48!", done.stderr.decode())

    def test_log_prints_the_library_lines_only(self):
        done = self.run_raw("list", "--board", BASE, "--log")
        self.assertIn("OXA_AddDefaultStaticSensor: ucCnt = 48!", done.stderr.decode())
        self.assertNotIn("call HAL_GetCpuMaxCount", done.stderr.decode())

    def test_the_log_is_printed_for_a_failed_pass_too(self):
        done = self.run_raw("list", "--board", "boards/guards/psu_count_255.toml", "--log")
        self.assertEqual(done.returncode, 1)
        self.assertGreater(len(done.stderr.splitlines()), 5)

    def test_a_closed_pipe_is_no_crash(self):
        board = ["--board", BASE]
        for command in (["list", *board], ["show", "*", *board], ["export", "--format", "csv", *board], ["--help"],
                        ["show", "--help"], ["--version"]):
            with self.subTest(command):
                reading, writing = os.pipe()
                os.close(reading)
                done = subprocess.run([SENSORS, *command], stdout=writing, stderr=subprocess.PIPE,
                                      cwd=SOURCE, timeout=60, check=False)
                os.close(writing)
                self.assertEqual((done.returncode, done.stderr), (0, b""))

    def test_a_full_device_is_told(self):
        with open("/dev/full", "wb") as full:
            done = subprocess.run([SENSORS, "list", "--board", BASE], stdout=full, stderr=subprocess.PIPE,
                                  cwd=SOURCE, timeout=60, check=False)
        self.assertEqual(done.returncode, 2)
        self.assertIn(b"No space left", done.stderr)

    def on_a_terminal(self, *words, **environment):
        out = self.on_terminal("list", "--board", BASE, "--filter", "CPU_V*", *words, **environment)
        self.assertIn(b"CPU_VOLTS_00", out)
        return out

    def test_a_terminal_gets_colour(self):
        self.assertIn(b"\033[", self.on_a_terminal())

    def test_no_color_switches_colour_off(self):
        self.assertNotIn(b"\033", self.on_a_terminal(NO_COLOR="1"))

    def test_an_empty_no_color_counts_as_unset(self):
        self.assertIn(b"\033[", self.on_a_terminal(NO_COLOR=""))

    def test_a_pipe_gets_no_colour(self):
        done = self.run_raw("list", "--board", BASE, env={"TERM": "xterm"})
        self.assertNotIn(b"\033", done.stdout)

    def test_the_option_goes_over_terminal_and_variable(self):
        self.assertNotIn(b"\033", self.on_a_terminal("--color=never"))
        self.assertIn(b"\033[", self.on_a_terminal("--color", "always", NO_COLOR="1"))
        self.assertNotIn(b"\033", self.on_a_terminal("--color=auto", NO_COLOR="1"))
        self.assertIn("\033[", self.out("list", "--board", BASE, "--color=always"))

    def test_every_command_takes_colour_always(self):
        day = ("scenario", "scenarios/day.toml")
        for words in (("show", "*TEMP", "-b", BASE), ("diff", "default", "kestrin", "-b", BASE), day,
                      ("check", "-b", BASE, "-p", "default"), ("event", "addDiskSEL", "4", "1", "5", "0"),
                      ("decode-sel", "01 00 C0 89 12 00 00 E4 00 04 15 00 87 A1 05 FF")):
            with self.subTest(words[0]):
                self.assertIn(b"\033[", self.run_raw(*words, "--color=always").stdout)
                self.assertNotIn(b"\033[", self.run_raw(*words).stdout)

    def test_another_word_for_colour_is_refused(self):
        self.assertIn("--color maybe: auto, always or never is wanted", self.refused(2, "list", "--board", BASE, "--color=maybe"))

    def test_nothing_is_left_behind_in_tmpdir(self):
        self.run_raw("list", "--board", BASE, env={"TMPDIR": self.folder.name})
        self.assertEqual(os.listdir(self.folder.name), [])


if __name__ == "__main__":
    main()
