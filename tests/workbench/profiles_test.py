# SPDX-License-Identifier: GPL-3.0-or-later
"""All profiles: counts per group worked out by hand from the boards' facts, and the words for their sensors."""
import json
import os

from support import BASE, FULLEST, Workbench, main

# The fullest board: 8 CPUs with voltage domains (no PCH, no Tjmax, no Tcontrol), 128 DIMMs, 12 PSUs in two groups,
# 20 fans, 96 disks of which 48 are NVMe, 8 OCP cards, 32 PCIe slots, 4 switch-board volts and currents, leak sensor.
#   table: rows less the PCH temperature (Kestrin: less three)      CPU: 8 x sensors per CPU + 4 voltage domains
#   memory: 128 x 2     PSU: 12 x kinds + 2     disk: 96 + 48     OCP: 8 x 2
#   liquid cooling: rows + indexed ones
EXPECTED = {
    "default": {"table": 25, "CPU": 8 * 5 + 4, "PSU": 12 * 6 + 2, "fan": 20, "PCIe": 32, "liquid cooling": 12 + 6},
    "kestrin": {"table": 37, "CPU": 8 * 5 + 4, "PSU": 12 * 8 + 2, "fan": 20, "PCIe": 32,
                "extras": 4 + 8 + 4 + 8, "liquid cooling": 14 + 4 + 2 * 3},
    "pellago": {"table": 20, "CPU": 8 * 5 + 4, "PSU": 12 * 5 + 2, "fan": 20, "PCIe": 32},
    "vorana": {"table": 23, "CPU": 8 * 9 + 4, "PSU": 12 * 6 + 2, "PCIe": 32},
    "astrel": {"table": 20, "CPU": 8 * 4 + 4, "PSU": 12 * 4 + 2, "fan": 20, "PCIe": 32},
    "quorral": {"table": 27, "CPU": 8 * 7 + 4, "PSU": 12 * 6 + 2, "fan": 20, "PCIe": 32},
    "lumora": {"table": 27, "CPU": 8 * 4 + 4, "PSU": 12 * 6 + 2, "extras": 1},
    "durnow": {"table": 18, "CPU": 8 * 4 + 4, "PSU": 12 * 6 + 2, "fan": 20, "PCIe": 32},
    "ferrisk": {"table": 25, "CPU": 8 * 4, "PSU": 12 * 8 + 2},
}
EVERYWHERE = {"memory": 256, "disk": 144, "OCP": 16, "switch board": 8}
IDS = {"default": 0, "kestrin": 1, "pellago": 2, "vorana": 3, "astrel": 4, "quorral": 6, "lumora": 7, "durnow": 11,
       "ferrisk": 16}


class Tests(Workbench):
    def fields(self, name, which, profile, board=FULLEST):
        sensors = self.json("show", name, "--profile", profile, "--board", board)["sensors"]
        return {f["offset"]: f for f in sensors[0][which]}

    def test_groups_of_every_profile_on_the_fullest_board(self):
        data = self.json("list", "--profile", "all", "--board", FULLEST)
        self.assertEqual({p["name"]: p["id"] for p in data["profiles"]}, IDS)
        for profile in data["profiles"]:
            with self.subTest(profile["name"]):
                wanted = dict(EVERYWHERE, **EXPECTED[profile["name"]])
                self.assertEqual({g: n for g, n in profile["groups"].items() if n}, wanted)
                self.assertEqual(profile["count"], sum(wanted.values()))
                self.assertEqual(profile["full"] + profile["compact"], profile["count"])

    def test_each_profile_alone_has_the_count_of_the_summary(self):
        data = self.json("list", "--profile", "all", "--board", BASE)
        for profile in data["profiles"]:
            with self.subTest(profile["name"]):
                alone = self.json("list", "--profile", profile["name"], "--board", BASE)
                self.assertEqual(alone["count"], profile["count"])
                self.assertEqual(alone["profile"], {"name": profile["name"], "id": profile["id"]})

    def test_the_summary_as_text_has_a_dash_for_an_empty_group(self):
        lines = self.out("list", "--profile", "all", "--board", FULLEST).splitlines()
        self.assertEqual(lines[0].split()[:5], ["PROFILE", "ALL", "FULL", "COMPACT", "TABLE"])
        ferrisk = next(line for line in lines if line.startswith("ferrisk")).split()
        self.assertEqual(ferrisk[1], str(25 + 32 + 256 + 98 + 144 + 16 + 8))
        self.assertEqual(ferrisk[4:], ["25", "32", "256", "98", "-", "144", "16", "-", "8", "-", "-"])
        self.assertEqual(lines[-1], "9 profiles, board " + FULLEST)

    def test_the_filter_counts_matching_names_only(self):
        data = self.json("list", "--profile", "all", "--board", BASE, "--filter", "*Redundan*")
        for profile in data["profiles"]:  # fans in the table, one PSU group
            self.assertEqual(profile["groups"]["PSU"], 1, profile)

    def test_profiles_without_set_are_told_and_the_others_are_shown(self):
        # 255 fans end the pass of the profiles that have a sensor per fan
        words = ("list", "--profile", "all", "--board", "boards/guards/fan_count_255.toml")
        done = self.run_raw(*words)
        lines = done.stdout.decode().splitlines()
        alone = {name: self.run_raw("list", "--profile", name, *words[3:]).returncode for name in IDS}
        self.assertEqual(set(alone.values()), {0, 1})  # some of both
        self.assertEqual(done.returncode, 1)
        self.assertEqual(lines[-1], f"9 profiles, board {words[-1]}")
        told = {line.split()[0]: line.split()[1:] for line in lines[1:10]}
        for name, status in alone.items():
            self.assertEqual(told[name][0] == "no", status == 1, name)
        failed = [name for name, status in alone.items() if status == 1]
        errors = done.stderr.decode().splitlines()
        self.assertEqual([line.split(":")[1] for line in errors], [f" profile {name}" for name in failed])
        self.assertTrue(all("ucFanCnt = 255!" in line for line in errors), errors)
        data = json.loads(self.run_raw(*words, "--json").stdout)
        self.assertEqual([p["name"] for p in data["profiles"] if "no_set" in p], failed)
        self.assertEqual(len(data["profiles"]), 9)

    def test_the_sets_of_a_summary_leave_nothing_in_tmpdir(self):
        done = self.run_raw("list", "--profile", "all", "--board", BASE, env={"TMPDIR": self.folder.name})
        self.assertEqual(done.returncode, 0)
        self.assertEqual(os.listdir(self.folder.name), [])

    def test_every_device_code_of_every_profile_has_a_name(self):
        for name in IDS:
            for board in (FULLEST, BASE):
                with self.subTest(name, board=board):
                    text = self.out("show", "*", "--profile", name, "--board", board)
                    self.assertNotIn("no name known", text)
                    self.assertNotIn("differs from", text)

    def test_cdu_values_in_their_units(self):
        # M 5, R -2 litres per minute; M 28 rpm; M 5, R -2 kilopascal
        sensors = {s["name"]: s for s in self.json("list", "--profile", "kestrin", "--board", FULLEST)["sensors"]}
        self.assertEqual(sensors["CDU_Flow_Rate"]["reading"]["factor"], 0.05)
        self.assertEqual(sensors["CDU_Flow_Rate"]["reading"]["unit_text"], "liters / minute")
        self.assertEqual(sensors["CDU_Fan1_Speed"]["reading"]["formula"], "x * 28 RPM")
        self.assertEqual(sensors["CDU_Supply_Press"]["reading"]["factor"], 0.05)
        self.assertEqual(sensors["CDU_Supply_Press"]["reading"]["unit_text"], "kPA")  # libfreeipmi writes it so

    def test_54_v_rail_thresholds_in_volts(self):
        # 0.3 V a count: UC 235, UNC 233, LC 102, LNC 107
        sensors = {s["name"]: s for s in self.json("list", "--profile", "kestrin", "--board", FULLEST)["sensors"]}
        for name in ("SYS_54V", "GPU8_PWR_Volts"):
            values = {k: t["value"] for k, t in sensors[name]["thresholds"].items() if t}
            self.assertEqual(values, {"uc": 70.5, "unc": 69.9, "lc": 30.6, "lnc": 32.1})

    def test_indexes_are_explained_by_kind_not_by_name(self):
        self.assertEqual(self.fields("GPU3_PWR_Volts", "entry_fields", "kestrin")[3]["set_by"], "GPU from 1")
        self.assertEqual(self.fields("GPU3_PWR_Volts", "entry_fields", "kestrin")[20]["meaning"], ["54 V rail"])
        self.assertEqual(self.fields("Cpu2_Temp", "record_fields", "quorral")[9]["set_by"], "0x60 + CPU number from 0")
        self.assertEqual(self.fields("CDU_PS2_Vin", "record_fields", "kestrin")[9]["set_by"], "0xE0 + index from 1")
        self.assertIsNone(self.fields("SW_Total_Power", "entry_fields", "kestrin")[3]["set_by"])


if __name__ == "__main__":
    main()
