# SPDX-License-Identifier: GPL-3.0-or-later
"""Why a sensor that comes at run time is as it is: what why --description tells is what add does."""
import json

from support import BASE, TWO_SOCKET, Workbench, main

GPU = {"class": "temperature", "device_type": "gpu", "slot": 1, "uc": 90}
FAN = {"class": "fan", "slot": 9}
PSU = {"class": "psu-fru", "slot": 1}
# Offsets of record and entry: instance 9, limits 36 to 41, name from 48 of a full record
INSTANCE, UC, NAME = 9, 37, 48


class Tests(Workbench):
    def description(self, keys):
        text = "".join(f"{key} = {json.dumps(value)}\n" for key, value in keys.items())
        return self.board(text, "description.toml")

    def why(self, keys, code=0, board=TWO_SOCKET, profile="default"):
        done = self.run_raw("why", "--board", board, "--profile", profile, "--description", self.description(keys), "--json")
        self.assertEqual((done.returncode, done.stderr.decode()), (code, ""))
        told = json.loads(done.stdout)
        self.assertEqual((told["format"], told["board"]), (1, board))
        (answer,) = told["profiles"]
        return answer

    def add(self, keys, board=TWO_SOCKET, profile="default"):
        path = self.description(keys)
        return json.loads(self.run_raw("add", "--board", board, "--profile", profile, "--description", path, "--json").stdout)

    def key(self, answer, name):
        (key,) = [key for key in answer["keys"] if key["key"] == name]
        return key

    def offsets(self, told, where="record"):
        return {field["offset"] for field in told[where + "_bytes"]}

    def test_the_slot_is_in_the_instance_and_in_the_name(self):
        slot = self.key(self.why(GPU), "slot")
        self.assertEqual((slot["value"], slot["gone_when"]), ("1", []))
        self.assertLessEqual({INSTANCE, NAME}, self.offsets(slot))

    def test_a_limit_is_its_byte_and_nothing_else(self):
        self.assertEqual(self.offsets(self.key(self.why(GPU), "uc")), {UC})
        self.assertEqual(self.key(self.why(GPU), "unr")["record_bytes"], [])  # the bitmap has it not

    def test_what_a_key_sets_is_what_add_changes(self):
        for keys in (GPU, FAN, PSU):
            answer = self.why(keys)
            before = bytes.fromhex(self.add(keys)["record"]["record"])
            for name in ("slot", "uc", "hysteresis", "seq", "index"):
                told = self.key(answer, name)
                value = int(told["value"]) + 1
                if str(value) in told["gone_when"] or name == "slot" and keys is PSU:
                    continue
                after = bytes.fromhex(self.add({**keys, name: value})["record"]["record"])
                changed = {at for at in range(4, max(len(before), len(after))) if before[at:at + 1] != after[at:at + 1]}
                if name == "uc" and "uc" not in keys:
                    continue  # add announces a limit that is given; the key alone does not
                covered = {at for field in told["record_bytes"] for at in range(field["offset"], field["offset"] + field["size"])}
                self.assertLessEqual(changed, covered, (keys, name))

    def test_values_with_which_it_is_gone_are_refused_by_add(self):
        tried = 0
        for keys in (GPU, FAN):
            for key in self.why(keys)["keys"]:
                for value in key["gone_when"]:
                    self.assertNotEqual(self.add({**keys, key["key"]: int(value)})["outcome"], "added", (keys, key))
                    tried += 1
        self.assertGreater(tried, 2)

    def test_what_is_not_added_has_the_reason_of_add(self):
        keys = {"class": "temperature", "device_type": "nvme-disk", "slot": 3}
        answer, added = self.why(keys, code=1), self.add(keys)
        self.assertEqual((answer["outcome"], answer["why"], answer["record"]), (added["outcome"], added["why"], None))

    def test_values_with_which_it_would_come_are_taken_by_add(self):
        tried = 0
        for keys in ({"class": "temperature", "device_type": "nvme-disk", "slot": 3}, {**FAN, "sub_type": 1}):
            for key in self.why(keys, code=1)["keys"]:
                for value in key["added_when"]:
                    self.assertEqual(self.add({**keys, key["key"]: int(value)})["outcome"], "added", (keys, key))
                    tried += 1
        self.assertGreater(tried, 1)

    def test_the_profile_is_an_answer_and_others_are_tried(self):
        answer = self.why(GPU, profile="kestrin")
        (asked,) = [asked for asked in answer["asked"] if asked["call"] == "IPMI_LoadCustomID"]
        self.assertEqual((asked["answer"], asked["from"]), ("1", "profile kestrin"))
        self.assertIn(NAME, self.offsets(asked))

    def test_a_profile_that_lacks_it_is_told_with_those_that_have_it(self):
        outcomes, hba = {}, {"class": "temperature", "device_type": "hba", "slot": 1}
        done = self.run_raw("why", "--board", BASE, "--profile", "all", "--description", self.description(hba), "--json")
        told = {answer["name"]: answer for answer in json.loads(done.stdout)["profiles"]}
        self.assertEqual(len(told), 10)
        for name in told:
            outcomes[name] = self.add(hba, board=BASE, profile=name)["outcome"]
            self.assertEqual(told[name]["outcome"], outcomes[name], name)
        lacking = [name for name, outcome in outcomes.items() if outcome != "added"]
        self.assertEqual((done.returncode, len(lacking)), (1, 1))
        for name in lacking:
            self.assertTrue(any("IPMI_LoadCustomID() answering" in tried for tried in told[name]["tried"]), name)

    def test_an_answer_is_told_with_the_line_that_gave_it(self):
        board = self.board('[board]\nid = 0x5481\n[[fault]]\ncall = "IPMI_LoadCustomID"\n')
        answer = self.why(GPU, board=board, code=self.run_raw("why", "--board", board, "--description", self.description(GPU)).returncode)
        (asked,) = [asked for asked in answer["asked"] if asked["call"] == "IPMI_LoadCustomID"]
        self.assertEqual((asked["failed"], asked["from"]), (True, f"{board}:3: [[fault]]"))
        fan = self.why(FAN)
        (asked,) = [asked for asked in fan["asked"] if asked["call"] == "get_default_board_id"]
        self.assertEqual(asked["from"], f"{TWO_SOCKET}:7: [board] id")

    def test_a_locators_fields_have_names(self):
        told = self.key(self.why(PSU), "device_type")
        names = {field["field"] for field in told["record_bytes"]}
        self.assertLessEqual({"FRU id", "entity instance", "ID string"}, names)
        self.assertIn("0", told["gone_when"])  # power supplies count from 1

    def test_the_text_says_the_same(self):
        text = self.out("why", "--board", TWO_SOCKET, "--description", self.description(GPU))
        self.assertTrue(text.startswith("GPU_TEMP_01: added, profile default\n"), text)
        for part in ("  key     uc = 90\n    sets  record 37 UC threshold\n", "  asked   IPMI_LoadCustomID() = 0\n    from  profile default\n"):
            self.assertIn(part, text)

    def test_wrong_input_is_told(self):
        path = self.description(GPU)
        for words, part in ((("INPUT_TEMP", "--description", path), "names, or --dropped, or --description"),
                            (("--dropped", "--description", path), "names, or --dropped, or --description"),
                            (("--description", "/nowhere.toml"), "/nowhere.toml"),
                            (("--description", self.board('slot = 1\n')), "no sensor class"),
                            (("--description", self.board('class = "fan"\nsolt = 3\n', "y.toml")), "y.toml:2:1: unknown key 'solt'")):
            self.assertIn(part, self.refused(2, "why", "--board", BASE, *words))


if __name__ == "__main__":
    main()
