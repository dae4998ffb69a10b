# SPDX-License-Identifier: GPL-3.0-or-later
"""What --json prints: one form for the same thing in all commands, and an object when there is no result."""
import json
import subprocess

from support import BASE, SENSORS, SOURCE, Workbench, main

PROFILE = {"name": "kestrin", "id": 1}
GPU = ("--class", "temperature", "--device-type", "gpu", "--slot", "1", "--uc", "90")


class Tests(Workbench):
    def documents(self):
        """Of every command that has --json, by command."""
        machine = ("--board", BASE, "--profile", "kestrin")
        self.out("thresholds", "set", self.path("t.dat"), "--sensor", "Inlet_Temp", "--uc", "51", *machine)
        self.out("add", *GPU, "--root", self.path("root"), *machine)
        with open(self.path("gpu.toml"), "w", encoding="utf-8") as file:
            file.write('class = "temperature"\ndevice_type = "gpu"\nslot = 1\nuc = 90\n')
        runs = {
            "list": ("list", *machine), "list all": ("list", "--board", BASE, "--profile", "all"),
            "show": ("show", "Inlet_Temp", *machine), "export": ("export", *machine),
            "report": ("report", *machine, "-o", self.path("set.html")),
            "diff": ("diff", "kestrin", "kestrin", "--board", BASE), "check": ("check", *machine),
            "event": ("event", "addDiskSEL", "4", "1", "5", "0", *machine), "event list": ("event", "--list"),
            "decode-sel": ("decode-sel", "00 00 E0 00 00 00 03 04 00 04 0D 43 6F A1 00 18"),
            "add": ("add", *GPU, "--list", *machine),
            "remove": ("remove", "--list", *machine), "scenario": ("scenario", "scenarios/day.toml"),
            "why": ("why", "Inlet_Temp", *machine),
            "why description": ("why", "--description", self.path("gpu.toml"), *machine),
            "explore": ("explore", "--parts", "psu:1", "--depth", "1", *machine),
            "doctor": ("doctor", "--root", self.path("root"), "--profile", "kestrin"),
            "thresholds show": ("thresholds", "show", self.path("t.dat")),
            "thresholds set": ("thresholds", "set", self.path("t.dat"), "--sensor", "Inlet_Temp", "--uc", "49", *machine),
            "thresholds preflight": ("thresholds", "preflight", self.path("t.dat"), *machine),
        }
        return {name: json.loads(self.run_raw(*words, "--json").stdout) for name, words in runs.items()}

    def test_every_document_begins_with_its_format(self):
        for name, data in self.documents().items():
            with self.subTest(name):
                self.assertEqual((next(iter(data)), data["format"]), ("format", 1))
                self.assertNotIn("error", data)

    def test_a_profile_is_name_and_id_everywhere(self):
        documents = self.documents()
        for name in ("list", "show", "export", "event", "add", "remove", "thresholds preflight", "doctor", "explore"):
            self.assertEqual(documents[name]["profile"], PROFILE, name)
        self.assertEqual(documents["diff"]["a"]["profile"], PROFILE)
        self.assertEqual(documents["scenario"]["profile"], {"name": "ferrisk", "id": 16})
        for name in ("thresholds show", "thresholds set", "thresholds preflight"):
            self.assertEqual(documents[name]["saved_under"], PROFILE, name)
        for name in ("list all", "why", "why description"):
            self.assertIn(PROFILE, [{key: p[key] for key in ("name", "id")} for p in documents[name]["profiles"]], name)

    def test_a_threshold_is_an_object_under_its_name_or_null_everywhere(self):
        # UNC 45, UC 50, UNR 52 °C of the record; UC 49 saved; UC 90 of the description
        documents = self.documents()
        names = ["lnr", "lc", "lnc", "unc", "uc", "unr"]
        listed = next(s for s in documents["list"]["sensors"] if s["name"] == "Inlet_Temp")["thresholds"]
        self.assertEqual((listed["uc"], listed["lc"]), ({"raw": 50, "value": 50, "settable": True}, None))
        self.assertEqual(documents["show"]["sensors"][0]["thresholds"], listed)
        stored = documents["thresholds set"]["entry"]["thresholds"]
        self.assertEqual((stored["uc"], stored["lc"]), ({"raw": 49}, None))
        added = documents["add"]["record"]["thresholds"]
        self.assertEqual((added["uc"]["raw"], added["uc"]["value"], added["lc"]), (90, 90, None))
        for thresholds in (listed, stored, added):
            self.assertEqual(sorted(thresholds), sorted(names))

    def test_records_and_events_have_their_id_and_bytes_under_the_same_names(self):
        documents = self.documents()
        self.assertEqual(documents["list"]["sensors"][0]["record_id"], 0)
        self.assertEqual(documents["export"]["sensors"][0]["record_id"], 1)
        self.assertEqual(documents["add"]["record"]["record_id"], 1)
        self.assertEqual(documents["add"]["repository"][0]["record_id"], 1)
        self.assertEqual(documents["decode-sel"]["records"][0]["record_id"], 0)
        event = documents["scenario"]["events"][0]
        self.assertEqual(event["record_id"], 1)
        for told in (event, documents["event"]["record"]):
            self.assertEqual(len(bytes.fromhex(told["bytes"])), 16)
            self.assertTrue(told["standard"])

    def test_a_failure_is_an_object_on_standard_output_in_every_command(self):
        for code, words in (
                (2, ("list", "--board", "/nowhere.toml")), (2, ("show", "NONE", "--board", BASE)),
                (1, ("list", "--board", "boards/guards/psu_count_255.toml")),
                (2, ("export", "--board", BASE, "-o", "/nowhere/x")), (2, ("diff", "default", "/nowhere")),
                (2, ("report", "--board", BASE, "-o", "/nowhere/x")),
                (2, ("check", "--boards", "/nowhere")), (2, ("event", "addDiskSEL", "4")),
                (2, ("decode-sel", "/nowhere")), (2, ("add", "--board", BASE, "--class", "x")),
                (2, ("remove", "--board", "/nowhere.toml", "--slot", "1")), (2, ("scenario", "/nowhere.toml")),
                (2, ("serve", "--board", "/nowhere.toml")), (2, ("thresholds", "show", "/nowhere")),
                (2, ("thresholds", "preflight", "/nowhere", "--board", BASE)),
                (2, ("thresholds", "set", self.path("t"), "--sensor", "A"))):
            with self.subTest(words):
                self.assertTrue(self.refused_in_json(code, *words))

    def test_usage_that_cannot_be_understood_is_an_object_too(self):
        self.assertIn("did you mean list?", self.refused_in_json(2, "lst"))
        self.assertIn("--board is required", self.refused_in_json(2, "list"))

    def test_a_result_that_is_no_success_stays_the_only_document(self):
        done = self.run_raw("decode-sel", "00 00 FF 00 00 00 00 10 05 04 00 00 00 00 00 00", "--json")
        self.assertEqual(done.returncode, 1)
        self.assertIn("records", json.loads(done.stdout))
        self.assertIn(b"no event builder wrote any", done.stderr)

    def test_a_failure_without_json_prints_nothing_on_standard_output(self):
        self.refused(2, "list", "--board", "/nowhere.toml")

    def test_a_full_device_is_told_once(self):
        with open("/dev/full", "wb") as full:
            done = subprocess.run([SENSORS, "list", "--board", BASE, "--json"], stdout=full, stderr=subprocess.PIPE,
                                  cwd=SOURCE, timeout=60, check=False)
        self.assertEqual(done.returncode, 2)
        self.assertEqual(len(done.stderr.splitlines()), 1)


if __name__ == "__main__":
    main()
