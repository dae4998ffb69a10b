# SPDX-License-Identifier: GPL-3.0-or-later
"""The page of report: what stands in it is what list, show, why and diff tell; it is safe, whole, and needs nothing else."""
import base64
import hashlib
import html.parser
import json
import os
import re

from support import BASE, SOURCE, TWO_SOCKET, Workbench, main

LOCK = "boards/sensors.lock"
BAD_NAMES = ["<b>x", "</b>", "<!--", "&lt;", "{{a}}", "'\\\"`"]  # an ID string has room for 7 more


class Reader(html.parser.HTMLParser):
    """Elements with their attributes, and the text of the last element of each kind."""

    def __init__(self, text):
        super().__init__()
        self.tags, self.open = [], False
        self.feed(text)
        self.close()

    def handle_starttag(self, tag, attrs):
        self.tags.append([tag, dict(attrs), ""])
        self.open = True

    def handle_endtag(self, tag):
        self.open = False

    def handle_data(self, data):
        if self.open:
            self.tags[-1][2] += data


class Page:
    def __init__(self, text):
        self.text = text
        self.tags = Reader(text).tags

    def of(self, tag, **attributes):
        return [(attrs, text) for name, attrs, text in self.tags if name == tag and attributes.items() <= attrs.items()]

    def data(self, name):
        ((_, text),) = self.of("script", id=name)
        return json.loads(text)

    def sets(self):
        return [self.data(f"set-{at}") for at, told in enumerate(self.data("report")["sets"]) if "no_set" not in told]


class ReportTest(Workbench):
    def report(self, *words, board=BASE, code=0):
        done = self.run_raw("report", "--board", board, *words, "-o", self.path("set.html"))
        self.assertEqual(done.returncode, code, done.stderr)
        self.said = done
        with open(self.path("set.html"), encoding="utf-8") as file:
            return Page(file.read())

    def kept(self, data, *left_out):
        return {key: value for key, value in data.items() if key not in left_out}


class WhatStandsInIt(ReportTest):
    def test_sensors_are_those_of_list(self):
        (told,) = self.report("--profile", "kestrin").sets()
        listed = self.json("list", "--board", BASE, "--profile", "kestrin")
        more = ("group", "record_fields", "entry_fields", "row", "asked", "change")
        self.assertEqual([self.kept(sensor, *more) for sensor in told["sensors"]], listed["sensors"])
        for key in ("board", "profile", "count", "full", "compact"):
            self.assertEqual(told[key], listed[key])

    def test_fields_of_every_byte_are_those_of_show(self):
        (told,) = self.report(board=TWO_SOCKET).sets()
        shown = self.json("show", "--board", TWO_SOCKET, "*")["sensors"]
        self.assertEqual(len(told["sensors"]), len(shown))
        for sensor, other in zip(told["sensors"], shown):
            for key in ("record_fields", "entry_fields"):
                self.assertEqual([told["fields"][at] for at in sensor[key]],
                                 [self.kept(field, "bytes") for field in other[key]], (sensor["name"], key))

    def test_reasons_are_those_of_why(self):
        (told,) = self.report(board=TWO_SOCKET).sets()
        answers = json.loads(self.run_raw("why", "--board", TWO_SOCKET, "--json", "*").stdout)["profiles"][0]["sensors"]
        answers = {answer["ordinal"]: answer for answer in answers if answer["in_set"]}
        self.assertEqual(len(answers), told["count"])

        def within(offset, fields):
            return any(field["offset"] <= offset < field["offset"] + field["size"] for field in fields)
        for sensor in told["sensors"]:
            answer = answers[sensor["ordinal"]]
            self.assertEqual(told["rows"][sensor["row"]], answer["row"])
            self.assertEqual(len(sensor["asked"]), len(answer["asked"]))
            for asked, other in zip((told["asked"][at] for at in sensor["asked"]), answer["asked"]):
                bytes_of = ("record_bytes", "entry_bytes")
                self.assertEqual(self.kept(asked, *bytes_of), self.kept(other, *bytes_of), sensor["name"])
                self.assertTrue(all(within(offset, other["entry_bytes"]) for offset in asked["entry_bytes"]))
                self.assertTrue(all(within(offset, other["record_bytes"]) for offset in asked["record_bytes"]
                                    if offset < len(sensor["record"].split())))

    def test_groups_are_those_that_list_counts(self):
        page = self.report("--profile", "all", board=TWO_SOCKET)
        counted = self.json("list", "--board", TWO_SOCKET, "--profile", "all")["profiles"]
        self.assertEqual(len(page.sets()), 9)
        for told, profile in zip(page.sets(), counted):
            groups = [sensor["group"] for sensor in told["sensors"]]
            self.assertEqual({name: groups.count(name) for name in told["groups"]}, profile["groups"])

    def test_several_boards_and_profiles_are_every_board_under_every_profile_once(self):
        page = self.report("--board", TWO_SOCKET, "--board", BASE, "--profile", "kestrin", "--profile", "DEFAULT")
        told = [(one["board"], one["profile"]["name"]) for one in page.data("report")["sets"]]
        self.assertEqual(told, [(BASE, "kestrin"), (BASE, "default"), (TWO_SOCKET, "kestrin"), (TWO_SOCKET, "default")])
        self.assertEqual([(one["board"], one["profile"]["name"]) for one in page.sets()], told)

    def test_without_a_profile_it_is_the_boards_own(self):
        board = self.board("[board]\ncustom_id = 1\n")
        self.assertEqual(self.report(board=board).data("report")["sets"][0]["profile"]["name"], "kestrin")

    def test_the_board_is_called_by_its_name(self):
        board = self.board('[board]\nname = "rack 7"\n')
        self.assertEqual(self.report(board=board).data("report")["sets"][0]["title"], "rack 7")
        self.assertEqual(self.report().data("report")["sets"][0]["title"], "base_48")

    def test_a_path_that_is_no_utf_8_is_shown_as_far_as_it_is(self):
        path = os.path.join(os.fsencode(self.folder.name), b"b\xff.toml")
        with open(path, "wb") as file:
            file.write(b"[psus]\ncount = 1\n")
        (told,) = self.report(board=os.fsdecode(path)).sets()
        self.assertTrue(any(one["from"].endswith("b\ufffd.toml:2: [psus] count") for one in told["asked"]), told["asked"][:9])

    def test_it_is_the_same_at_every_call(self):
        self.assertEqual(self.report("--profile", "all").text, self.report("--profile", "all").text)


class Differences(ReportTest):
    def differences(self, told):
        return {sensor["name"]: sensor["change"] for sensor in told["sensors"] if "change" in sensor}

    def test_they_are_those_of_diff(self):
        for board, profile, was in ((BASE, "kestrin", "default"), (TWO_SOCKET, "default", "default@" + BASE)):
            (told,) = self.report("--profile", profile, "--against", was, board=board).sets()
            diff = json.loads(self.run_raw("diff", was, f"{profile}@{board}", "--board", board, "--json").stdout)
            self.compare(told, diff)

    def compare(self, told, diff):
        by_what = {what: sorted(s["name"] for s in told["sensors"] if s.get("change", {}).get("what") == what)
                   for what in ("changed", "renamed", "added")}
        self.assertEqual(by_what, {what: sorted(one.get("new_name", one["name"]) for one in diff[what]) for what in by_what})
        self.assertTrue(by_what["added"] and (by_what["changed"] or by_what["renamed"]))
        self.assertEqual(told["against"]["removed"], [self.kept(one, "ordinal") for one in diff["removed"]])
        self.assertEqual(told["against"]["label"], diff["a"]["source"])
        changes = {one.get("new_name", one["name"]): one["changes"] for one in diff["changed"] + diff["renamed"]}
        for name, change in self.differences(told).items():
            if change["what"] != "added":
                self.assertEqual([(line["where"], line["offset"], line["was"], line["now"]) for line in change["lines"]],
                                 [(one["where"], one["offset"], one["a"], one["b"]) for one in changes[name]])

    def test_a_profile_is_that_of_each_board(self):
        told = self.report("--board", TWO_SOCKET, "--against", "default").sets()
        self.assertEqual([one["against"]["label"] for one in told], [f"default@{BASE}", f"default@{TWO_SOCKET}"])
        self.assertEqual([self.differences(one) for one in told], [{}, {}])

    def test_against_an_exported_set(self):
        exported = self.json("export", "--board", BASE)
        for sensor in exported["sensors"]:
            if sensor["name"] == "INPUT_TEMP":  # the upper critical limit, 50 °C, was 48
                record = sensor["record"].split()
                record[37] = "30"
                sensor["record"] = " ".join(record)
        with open(self.path("was.json"), "w", encoding="utf-8") as file:
            json.dump(exported, file)
        (told,) = self.report("--against", self.path("was.json")).sets()
        self.assertEqual(self.differences(told), {"INPUT_TEMP": {"what": "changed", "lines": [
            {"where": "record", "offset": 37, "field": "UC threshold", "was": ["48 °C"], "now": ["50 °C"]}]}})

    def lock(self, *edits):
        with open(os.path.join(SOURCE, LOCK), encoding="utf-8") as file:
            text = file.read()
        for pattern, replacement in edits:
            text, count = re.subn(pattern, replacement, text, flags=re.M)
            self.assertEqual(count, 1, pattern)
        with open(self.path("my.lock"), "w", encoding="utf-8") as file:
            file.write(text)
        return self.path("my.lock")

    def test_against_the_trees_own_lock_nothing_differs(self):
        for told in self.report("--board", TWO_SOCKET, "--profile", "all", "--against", LOCK).sets():
            self.assertEqual((self.differences(told), told["against"]), ({}, {"label": LOCK, "removed": []}))

    def test_against_a_lock_they_are_what_lock_would_say(self):
        lock = self.lock((r"^(base_48 default INPUT_TEMP .*)uc=50", r"\1uc=48"), (r"^(base_48 default )PCH_TEMP ", r"\1PCH "),
                         (r"^base_48 default ENV_HUMI .*\n", ""),
                         (r"^(base_48 default )(OUTPUT_TEMP .*)$", r"\1\2\n\1GONE full 01/01 37.60 77/7.0.0 x*1 V - "
                          "0000.0000.0000 1/1 7F68 00000000"))
        (told,) = self.report("--against", lock).sets()
        self.assertEqual(self.differences(told), {
            "INPUT_TEMP": {"what": "changed", "lines": [{"text": "UC 48 °C -> 50 °C"}]},
            "PCH_TEMP": {"what": "renamed", "lines": [], "was": "PCH"}, "ENV_HUMI": {"what": "added", "lines": []}})
        self.assertEqual([one["name"] for one in told["against"]["removed"]], ["GONE"])

    def test_a_board_that_the_lock_has_not_is_no_difference(self):
        board = self.board("[cpus]\ncount = 1\n", "other.toml")
        (told,) = self.report("--against", LOCK, board=board).sets()
        self.assertEqual((self.differences(told), told["against"]["nothing"]), ({}, "not in the lock"))


class Safety(ReportTest):
    def hostile(self):
        """A page whose names want to be markup."""
        names = ", ".join(json.dumps(name) for name in BAD_NAMES)
        board = self.board(f'[board]\nname = "</script><script>alert(1)</script>"\n[dimms]\ncount = {len(BAD_NAMES)}\nnames = [{names}]\n')
        self.out("export", "--board", board, "--json", "-o", self.path("was.json"))
        with open(self.path("was.json"), encoding="utf-8") as file:
            was = json.load(file)
        for sensor in was["sensors"]:
            sensor["record"] = sensor["record"].replace(b"INPUT_TEMP".hex(" ").upper(), b"</script>!".hex(" ").upper())
        with open(self.path("was.json"), "w", encoding="utf-8") as file:
            json.dump(was, file)
        return self.report("--against", self.path("was.json"), board=board)

    def test_names_stay_names(self):
        page = self.hostile()
        names = {sensor["name"] for sensor in page.sets()[0]["sensors"]}
        for name in BAD_NAMES:
            self.assertTrue(any(name in one for one in names), (name, names))
        self.assertEqual(page.data("report")["sets"][0]["title"], "</script><script>alert(1)</script>")
        was = [sensor["change"]["was"] for sensor in page.sets()[0]["sensors"] if sensor["name"] == "INPUT_TEMP"]
        self.assertEqual(was, ["</script>!"])

    def test_the_markup_is_the_same_whatever_names_say(self):
        def markup(page):
            return [(tag, attrs) for tag, attrs, _ in page.tags]
        self.assertEqual(markup(self.hostile()), markup(self.report()))

    def test_no_data_holds_a_character_that_begins_markup(self):
        page = self.hostile()
        for attrs, text in page.of("script", type="application/json"):
            self.assertNotIn("<", text, attrs)
            self.assertTrue(text.isascii(), attrs)
        self.assertEqual(page.text.count("<script"), 3)

    def test_only_the_pages_own_script_and_style_may_run(self):
        page = self.report()
        ((policy, _),) = page.of("meta", **{"http-equiv": "Content-Security-Policy"})
        words = dict(part.strip().split(" ", 1) for part in policy["content"].split(";"))
        self.assertEqual(words["default-src"], "'none'")
        for element, directive in (("style", "style-src"), ("script", "script-src")):
            ((_, text),) = [(attrs, text) for attrs, text in page.of(element) if "type" not in attrs]
            digest = base64.b64encode(hashlib.sha256(text.encode()).digest()).decode()
            self.assertEqual(words[directive], f"'sha256-{digest}'")
        self.assertEqual(set(words), {"default-src", "img-src", "base-uri", "form-action", "style-src", "script-src"})

    def test_it_refers_to_nothing(self):
        page = self.report()
        for tag, attrs, _ in page.tags:
            for name in ("src", "href", "action", "data", "srcset"):
                self.assertEqual(attrs.get(name, "data:,"), "data:,", tag)
            self.assertFalse([name for name in attrs if name.startswith("on") or name == "style"], tag)
        style = page.of("style")[0][1]
        self.assertNotRegex(style, r"url\(|@import")

    def test_scripts_make_no_markup_of_text(self):
        folder = os.path.join(SOURCE, "workbench", "report")
        scripts = [name for name in os.listdir(folder) if name.endswith(".js")]
        self.assertGreater(len(scripts), 2)
        for name in scripts:
            with open(os.path.join(folder, name), encoding="utf-8") as file:
                self.assertNotRegex(file.read(), r"innerHTML|outerHTML|insertAdjacentHTML|document\.write|\beval\b|new Function|</")


class ExitCodes(ReportTest):
    def nothing(self):
        self.assertFalse(os.path.exists(self.path("set.html")))

    def test_the_line_says_what_was_written(self):
        self.report("--profile", "default", "--profile", "kestrin")
        self.assertEqual(self.said.stdout.decode(), f"{self.path('set.html')}: 2 sets, 133 sensors\n")
        self.assertEqual(self.said.stderr, b"")

    def test_json_says_the_same(self):
        told = self.json("report", "--board", BASE, "-o", self.path("set.html"))
        self.assertEqual((told["format"], told["page"], told["bytes"]),
                         (1, self.path("set.html"), os.path.getsize(self.path("set.html"))))
        with open(self.path("set.html"), encoding="utf-8") as file:
            self.assertEqual(told["sets"], Page(file.read()).data("report")["sets"])

    def test_a_board_without_a_set_is_told_and_the_others_are_written(self):
        page = self.report("--board", "boards/guards/psu_count_fails.toml", code=1)
        self.assertEqual([("no_set" in one) for one in page.data("report")["sets"]], [False, True])
        (line,) = self.said.stderr.decode().splitlines()
        self.assertTrue(line.startswith("oxa-sensors: profile default: boards/guards/psu_count_fails.toml: the pass ended "), line)
        self.assertEqual(len(page.sets()), 1)

    def test_no_set_at_all_writes_nothing(self):
        line = self.refused(1, "report", "--board", "boards/guards/psu_count_fails.toml", "-o", self.path("set.html"))
        self.assertIn("the pass ended without a count", line)
        self.nothing()

    def test_wrong_input_writes_nothing(self):
        out = ("-o", self.path("set.html"))
        with open(self.path("bad.lock"), "w", encoding="utf-8") as file:
            file.write("# oxa-sensors lock 2: x\n")
        broken = self.board("[cpus]\ncuont = 2\n")
        for words, part in (
                (("--board", "/nowhere.toml"), "/nowhere.toml"), (("--board", BASE, "--board", broken), "did you mean 'count'"),
                (("--board", BASE, "--profile", "kestrel"), "did you mean kestrin"),
                (("--board", BASE, "--profile", "sablin"), "no static driver"),
                (("--board", BASE, "--against", "/nowhere"), "'/nowhere' is neither a profile"),
                (("--board", BASE, "--against", BASE), "is a board description"),
                (("--board", BASE, "--against", self.path("bad.lock")), ":1:20: a lock of another format"),
                (("--board", BASE, "--against", "default@boards/guards/psu_count_fails.toml"), "ended without a count")):
            with self.subTest(words):
                self.assertIn(part, self.refused(2, "report", *words, *out))
                self.nothing()

    def test_a_place_that_cannot_be_written_is_told(self):
        self.assertIn("/nowhere/x.html", self.refused(2, "report", "--board", BASE, "-o", "/nowhere/x.html"))

    def test_board_and_page_are_required(self):
        self.assertIn("--board is required", self.refused(2, "report", "-o", self.path("set.html")))
        self.assertIn("--output is required", self.refused(2, "report", "--board", BASE))

    def test_board_and_profile_come_from_the_environment(self):
        environment = {"OXA_BOARD": BASE, "OXA_PROFILE": "kestrin"}
        done = self.run_raw("report", "-o", self.path("set.html"), "--json", env=environment)
        (told,) = json.loads(done.stdout)["sets"]
        self.assertEqual((told["board"], told["profile"]["name"]), (BASE, "kestrin"))


if __name__ == "__main__":
    main()
