# SPDX-License-Identifier: GPL-3.0-or-later
"""The checks: what must be found, what is known, exit codes."""
import json
import os
import shutil

from support import BASE, FULLEST, SOURCE, Workbench, main

CPU = """[board]
id = 0x5481
[cpus]
count = 2
type = "domain_volt"
[cpus.voltage.1]
m = 5
exponents = 0xD0
mask = 0x38
unr = 250
uc = {uc}
unc = 230
"""


class Tests(Workbench):
    def check(self, code, *words):
        done = self.run_raw("check", *words, "--json")
        self.assertEqual((done.returncode, done.stderr), (code, b""), (words, done.stderr))
        return json.loads(done.stdout)

    def found(self, data, known):
        return {(f["rule"], f["profile"], f["subject"]): f for f in data["findings"] if f["known"] == known}

    def test_all_boards_and_profiles_have_known_findings_only(self):
        data = self.check(0, "--boards", "boards")
        boards = [b for b in os.listdir(os.path.join(SOURCE, "boards")) if b.endswith(".toml")]
        self.assertEqual((data["sets"], data["tables"], data["new"]), (9 * len(boards), 10, 0))
        self.assertTrue(all(f["reason"] for f in data["findings"]))

    def test_every_known_finding_is_met_by_the_boards(self):
        self.assertEqual(self.check(0, "--boards", "boards", "--verbose")["not_met"], [])

    def test_the_oddities_that_are_kept_are_found(self):
        known = self.found(self.check(0, "--board", FULLEST), True)
        for key in (("name-number", "kestrin", "SNIC_NIC_Temp"),
                    ("name-length", "quorral", "P*_SNIC_NIC_Temp"),
                    ("name-meets", "ferrisk", "NIC*_Temp"),
                    ("name-meets-static", "ferrisk", "NIC*_Temp"),
                    ("fru-id", "all", "PSU 17-20, card pool"),
                    ("fru-id", "sablin", "PSU 17-20, card pool"),
                    ("name-unique", "default", "CPU_PROCHOT"),
                    ("entity-instance", "default", "INPUT_VOLTS_*")):
            self.assertIn(key, known)
        self.assertIn("17 characters from number 10 on", known["name-length", "quorral", "P*_SNIC_NIC_Temp"]["text"])
        self.assertIn("FRU id 33-36", known["fru-id", "all", "PSU 17-20, card pool"]["text"])
        self.assertIn("FRU id 41-44", known["fru-id", "sablin", "PSU 17-20, card pool"]["text"])
        self.assertIn("8 compact sensors", known["name-unique", "default", "CPU_PROCHOT"]["text"])
        self.assertIn("12 sensors of one kind share Power Supply 0x60",
                      known["entity-instance", "default", "INPUT_VOLTS_*"]["text"])

    def test_names_that_grow_too_long_are_those_of_16_characters_with_a_one_digit_number(self):
        # by hand: the patterns of Quorral's table that have 16 characters with both numbers of one digit
        known = self.found(self.check(0, "--profile", "quorral"), True)
        long = {subject for rule, _, subject in known if rule == "name-length" and "front" not in subject}
        self.assertEqual(long, {"P*_GPU_SFP#_Temp", "P*_Net_SFP#_Temp", "P*_SNIC_NIC_Temp", "P*_OCP_SFP#_Temp"})

    def test_kestrin_fan_names_have_room_for_one_hexadecimal_digit(self):
        known = self.found(self.check(0, "--profile", "kestrin"), True)
        self.assertIn("from number 16 on", known["name-length", "kestrin", "SYS_Fan*_Speed_F"]["text"])

    def test_sablin_has_its_tables_checked(self):
        data = self.check(0, "--profile", "sablin", "--board", BASE)
        self.assertEqual((data["sets"], data["tables"]), (0, 1))

    def test_thresholds_out_of_order_are_new(self):
        # 5 mV a count: UC 220 = 1.1 V under UNC 230 = 1.15 V
        data = self.check(1, "--profile", "default", "--board", self.board(CPU.format(uc=220)))
        finding = self.found(data, False)["threshold-order", "default", "CPU0_D0_N2"]
        self.assertEqual(finding["text"].strip(), "UNC 1.15 is not below UC 1.1 V")
        self.check(0, "--profile", "default", "--board", self.board(CPU.format(uc=240)))

    def test_equal_thresholds_are_out_of_order(self):
        data = self.check(1, "--profile", "default", "--board", self.board(CPU.format(uc=230)))
        self.assertIn(("threshold-order", "default", "CPU0_D0_N2"), self.found(data, False))

    def test_names_that_are_equal_once_cut_are_new(self):
        # 16 characters less "MEM_TEMP_" leave 7, less "MEM_STATUS_" 5
        path = self.board('[board]\nid = 1\n[dimms]\ncount = 2\nnames = ["ABCDEFG1", "ABCDEFG2"]\n')
        new = self.found(self.check(1, "--profile", "default", "--board", path), False)
        self.assertEqual(set(new), {("name-unique", "default", "MEM_TEMP_ABCDEFG"),
                                    ("name-unique", "default", "MEM_STATUS_ABCDE")})

    def test_a_factor_of_0_is_new(self):
        path = self.board("[cpus]\ncount = 1\ntype = \"domain_volt\"\n[cpus.voltage.2]\nm = 0\n")
        new = self.found(self.check(1, "--profile", "default", "--board", path), False)
        self.assertEqual(set(new), {("scale", "default", "CPU0_D1_N2")})

    def test_a_board_without_set_is_a_finding(self):
        data = self.check(1, "--profile", "durnow", "--boards", "boards/guards")
        new = self.found(data, False)
        self.assertIn(("no-set", "durnow", "boards/guards/psu_count_255.toml"), new)

    def test_findings_of_several_boards_are_told_once(self):
        for name in ("a.toml", "b.toml"):
            shutil.copy(os.path.join(SOURCE, BASE), self.path(name))
        data = self.check(0, "--profile", "default", "--boards", self.folder.name)
        finding = self.found(data, True)["name-unique", "default", "CPU_PROCHOT"]
        self.assertEqual([os.path.basename(b) for b in finding["boards"]], ["a.toml", "b.toml"])

    def test_broken_files_of_a_folder_are_told_and_the_others_are_checked(self):
        shutil.copy(os.path.join(SOURCE, BASE), self.path("good.toml"))
        self.board("cpu = 1\n", "a.toml")
        self.board("[board\n", "z.toml")
        done = self.run_raw("check", "--profile", "default", "--boards", self.folder.name)
        self.assertEqual(done.returncode, 2)
        lines = done.stderr.decode().splitlines()
        self.assertEqual([line[:line.index(".toml:") + 7] for line in lines],
                         [f"oxa-sensors: {self.path(name)}:1" for name in ("a.toml", "z.toml")])
        self.assertIn(b"1 set and 1 name table checked", done.stdout)
        data = json.loads(self.run_raw("check", "-p", "default", "--boards", self.folder.name, "--json").stdout)
        self.assertEqual((data["sets"], len(data["unreadable"])), (1, 2))
        self.assertTrue(data["findings"])

    def test_long_work_is_told_on_a_terminal_only_and_leaves_no_trace(self):
        for name in range(10):
            shutil.copy(os.path.join(SOURCE, FULLEST), self.path(f"{name}.toml"))
        words = ("check", "--boards", self.folder.name)
        told = self.on_terminal(*words, stream="stderr").decode()
        self.assertRegex(told, r"^(\r\x1b\[Kchecking \d+ of 90 sets)+\r\x1b\[K$")

    def test_verbose_has_full_scale_and_step_of_every_analog_sensor(self):
        data = self.check(0, "--profile", "default", "--board", BASE, "--verbose")
        scales = {s["name"]: (s["minimum"], s["maximum"], s["step"], s["unit"]) for s in data["scales"]}
        self.assertEqual(scales["CPU_VOLTS_00"], (0, 2.55, 0.01, "V"))
        self.assertEqual(scales["INPUT_TEMP"], (-128, 127, 1, "°C"))
        self.assertEqual(scales["INPUT_VOLTS_01"], (0, 510, 2, "V"))
        self.assertEqual(scales["PSU_PIN_01"], (0, 255 * 14, 14, "W"))
        analog = [s["name"] for s in self.json("list", "--board", BASE)["sensors"] if s["reading"]]
        self.assertEqual([s["name"] for s in data["scales"]], analog)

    def test_scales_are_left_out_otherwise(self):
        self.assertNotIn("scales", self.check(0, "--profile", "default", "--board", BASE))

    def test_text_tells_known_findings_with_their_reason(self):
        text = self.out("check", "--profile", "default", "--board", BASE)
        self.assertRegex(text, r"(?m)^known +name-unique +default +CPU_PROCHOT +2 compact sensors have this name$")
        self.assertIn("= all CPUs have this name", text)
        self.assertRegex(text, r"1 set and 1 name table checked: 0 new findings, \d+ known; profile default\n$")

    def test_wrong_input_ends_with_2(self):
        self.assertIn("unknown profile 'kestin'", self.refused(2, "check", "--profile", "kestin"))
        self.assertIn("boards/nowhere", self.refused(2, "check", "--boards", "boards/nowhere"))
        self.assertIn("no board descriptions", self.refused(2, "check", "--boards", self.folder.name))
        self.assertIn("x.toml:1", self.refused(2, "check", "--board", self.board("cpu = 1\n")))

    def test_nothing_is_left_behind_in_tmpdir(self):
        done = self.run_raw("check", "--board", BASE, env={"TMPDIR": self.folder.name})
        self.assertEqual(done.returncode, 0)
        self.assertEqual(os.listdir(self.folder.name), [])

    def test_every_mistake_of_a_broken_board_has_its_line(self):
        self.board("[cpus]\ncuont = 1\n[psus]\ncuont = 1\n", "broken.toml")
        done = self.run_raw("check", "--boards", self.folder.name)
        lines = done.stderr.decode().splitlines()
        self.assertEqual((done.returncode, len(lines)), (2, 2), lines)
        for line, place in zip(lines, ("broken.toml:2:", "broken.toml:4:"), strict=True):
            self.assertTrue(line.startswith("oxa-sensors: ") and place in line, line)


if __name__ == "__main__":
    main()
