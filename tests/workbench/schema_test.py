# SPDX-License-Identifier: GPL-3.0-or-later
"""The schemas of TOML files: they are those in the tree, take every file that is shipped and refuse what the readers
refuse, as far as a schema can tell.  Judged by a validator that knows nothing of the readers."""
import ast
import glob
import json
import os
import re
import tomllib
import unittest

from support import SOURCE, Workbench, main

try:
    import jsonschema
except ImportError:
    jsonschema = None

FILES = {"board": "boards/board.schema.json", "story": "scenarios/story.schema.json",
         "description": "scenarios/description.schema.json"}
# What a schema cannot say: one value against another, and an order within a text (docs/workbench.md lists it too).
BEYOND = {"RangeBackwards", "DimmNames", "FanNumbers", "NvmeSlot", "FanNumber", "DiskSlot", "PcieSlot", "PlainPcieSlot",
          "SensorUnderTwoNames", "NumberedTable", "DimmName", "DimmPattern"}
STORY = 'board = "b.toml"\n[[step]]\n'
WRONG_STORIES = ["[[step]]\nrestart = true\n", 'board = "b.toml"\n', STORY, STORY + "restart = 1\n", STORY + "restart = false\n",
                 STORY + "ad = {}\n", STORY + "restart = true\nclear_faults = true\n", STORY + "restart = true\nrepeat = 0\n",
                 STORY + "restart = { profile = 'kestrel' }\n", STORY + "add = { class = 'temprature' }\n",
                 STORY + "add = { slot = 256 }\n", STORY + "remove = 3\n", STORY + "event = []\n", STORY + "event = 3\n",
                 STORY + "thresholds = { uc = 3 }\n", STORY + "thresholds = { sensor = 'A', uc = 300 }\n",
                 STORY + "change = { fault = [] }\n", STORY + "change = { board = { custom_id = 1 } }\n",
                 STORY + "change = { cpus = { count = 256 } }\n", STORY + "fault = { call = 'nothing' }\n",
                 STORY + "clear_faults = true\nexpect = { cod = 1 }\n", STORY + "clear_faults = true\nexpect = { uc = 256 }\n",
                 STORY + "add = {}\nslots = '1-300'\n", "profile = 3.5\n" + STORY + "restart = true\n"]
WRONG_DESCRIPTIONS = ["clas = 1\n", "class = 'temprature'\n", "class = 4294967296\n", "slot = -1\n", "slot = '1'\n", "uc = 256\n",
                      "bitmap = 'uc,xx'\n", "bitmap = ['uc', 1]\n", "bitmap = 65536\n", "device_type = 'nvme'\n",
                      "hysteresis = true\n"]


def shipped():
    for pattern, kind in (("boards/*.toml", "board"), ("boards/guards/*.toml", "board"), ("scenarios/*.toml", "story")):
        for path in sorted(glob.glob(os.path.join(SOURCE, pattern))):
            yield path, kind


def broken_boards():
    """Name and text of every file that the board reader's own tests refuse, when it is TOML at all."""
    with open(os.path.join(SOURCE, "tests", "board_files", "board_file_errors_test.cpp"), encoding="utf-8") as file:
        source = file.read()
    literal = r'"(?:[^"\\]|\\.)*"'
    for name, text in re.findall(rf'\{{"(\w+)",\s*((?:{literal}\s*)+),\s*(?:{literal}\s*)+', source):
        content = "".join(ast.literal_eval(part) for part in re.findall(literal, text))
        try:
            yield name, tomllib.loads(content)
        except tomllib.TOMLDecodeError:
            continue


def described(path, schema, missing):
    for key, inner in schema.get("properties", {}).items():
        if "description" not in inner:
            missing.append(f"{path}.{key}")
        described(f"{path}.{key}", inner, missing)
    for inner in [schema.get("additionalProperties"), schema.get("items"), *schema.get("anyOf", [])]:
        if isinstance(inner, dict):
            described(path, inner, missing)


class Tests(Workbench):
    def schema(self, kind):
        return json.loads(self.out("schema", kind))

    def validator(self, kind):
        if jsonschema is None:
            self.skipTest("no python3-jsonschema")
        schema = self.schema(kind)
        jsonschema.Draft7Validator.check_schema(schema)
        return jsonschema.Draft7Validator(schema)

    def test_the_files_in_the_tree_are_what_the_command_prints(self):
        for kind, path in FILES.items():
            with open(os.path.join(SOURCE, path), encoding="utf-8") as file:
                self.assertEqual(file.read(), self.out("schema", kind), f"oxa-sensors schema {kind} > {path}")

    def test_every_shipped_file_names_its_schema_in_the_first_line(self):
        for path, kind in shipped():
            with open(path, encoding="utf-8") as file:
                first = file.readline()
            self.assertTrue(first.startswith("#:schema "), path)
            named = os.path.normpath(os.path.join(os.path.dirname(path), first.split()[1]))
            self.assertEqual(named, os.path.join(SOURCE, FILES[kind]), path)

    def test_every_shipped_file_is_taken(self):
        validators = {kind: self.validator(kind) for kind in FILES}
        count = 0
        for path, kind in shipped():
            with open(path, "rb") as file:
                self.assertEqual([e.message for e in validators[kind].iter_errors(tomllib.load(file))], [], path)
            count += 1
        self.assertGreaterEqual(count, 21)

    def test_every_broken_board_is_refused_but_for_what_a_schema_cannot_say(self):
        validator = self.validator("board")
        taken = {name for name, data in broken_boards() if validator.is_valid(data)}
        self.assertEqual(taken, BEYOND)
        self.assertGreater(len(list(broken_boards())), 55)

    def test_broken_stories_and_descriptions_are_refused_by_schema_and_reader(self):
        self.board("", "b.toml")
        for kind, texts in (("story", WRONG_STORIES), ("description", WRONG_DESCRIPTIONS)):
            validator = self.validator(kind)
            for text in texts:
                with self.subTest(text):
                    self.assertFalse(validator.is_valid(tomllib.loads(text)))
                    path = self.board(text, "wrong.toml")
                    words = ("scenario", path) if kind == "story" else ("add", "-b", self.path("b.toml"), "--description", path)
                    self.refused(2, *words)

    def test_forms_that_the_readers_allow_are_taken(self):
        story, description = self.validator("story"), self.validator("description")
        for text in (STORY + "add = { class = 'temperature', device_type = 1, bitmap = 'uc,unr' }\nslots = '1-3'\n",
                     STORY + "add = [{ class = 0xFF0A }, {}]\nexpect = ['added', 'added']\n",
                     STORY + "restart = { profile = 8 }\nexpect = { outcome = 'no-thresholds', records = 2 }\n",
                     STORY + "change = { cpus = { count = 1 } }\n", STORY + "event = ['a 1', 'b 2']\nrepeat = 3\n"):
            self.assertEqual([e.message for e in story.iter_errors(tomllib.loads(text))], [], text)
        self.assertTrue(description.is_valid({"bitmap": ["uc", "unr"], "slot": 3}))

    def test_every_key_is_described(self):
        for kind in FILES:
            missing = []
            described("", self.schema(kind), missing)
            self.assertEqual(missing, [], kind)

    def test_descriptions_are_those_of_the_readmes(self):
        with open(os.path.join(SOURCE, "workbench", "commands", "schema_meanings.def"), encoding="utf-8") as file:
            from_tables = file.read().split("\n// What those tables leave")[0]
        meanings = re.findall(r'^MEANING\("(\w+)", "(\S+)", (".*")\)$', from_tables, re.M)
        self.assertGreater(len(meanings), 130)
        readme = {}
        for kind, path in (("board", "boards/README.md"), ("story", "scenarios/README.md")):
            with open(os.path.join(SOURCE, path), encoding="utf-8") as file:
                readme[kind] = file.read()
        for kind, key, text in meanings:
            name = "(any)" if key.endswith("*") else f"`{key.split('.')[-1]}`"
            self.assertRegex(readme[kind], rf"(?m)^\|[^|\n]*{re.escape(name)}.*\| {re.escape(ast.literal_eval(text))} \|$")

    def test_another_kind_is_refused(self):
        self.assertIn("board, story or description is wanted", self.refused(2, "schema", "boards"))


if __name__ == "__main__":
    main()
