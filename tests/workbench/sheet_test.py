# SPDX-License-Identifier: GPL-3.0-or-later
"""A customer's sheet of limits: written, read as spreadsheets save it, held against sets, made rows and images of."""
import json
import os
import random
import resource
import struct

from support import BASE, FULLEST, SOURCE, TWO_SOCKET, Workbench, main

# base_48, default: INPUT_TEMP UNC 45, UC 50, UNR 52 (1 °C a count, signed); VCC12V LC 9.6, LNC 10.8, UNC 13.2, UC 14.4
# (0.1 V a count); CPU_VOLTS_00 and _01 1.2 1.25 1.3 2.3 2.35 2.4 V (0.01 V a count)
HEAD = "Name,Unit,LNR,LC,LNC,UNC,UC,UNR\n"
UNC, UC, UNR = 8, 16, 32


class SheetTest(Workbench):
    def setUp(self):
        super().setUp()
        self.sheet = self.path("limits.csv")

    def write(self, content):
        with open(self.sheet, "wb") as file:
            file.write(content if isinstance(content, bytes) else content.encode())

    def text(self, path=None):
        with open(path or self.sheet, encoding="utf-8", newline="") as file:
            return file.read()

    def export(self, board=BASE, *words):
        self.assertEqual(self.out("sheet", "export", "--board", board, "-o", self.sheet, *words), "")

    def edit(self, old, new):
        text = self.text()
        self.assertEqual(text.count(old), 1, old)
        self.write(text.replace(old, new))

    def check(self, code, board=BASE, *words):
        done = self.run_raw("sheet", "check", self.sheet, "--board", board, *words, "--json")
        self.assertEqual((done.returncode, done.stderr.decode()), (code, ""), done.stdout)
        return json.loads(done.stdout)

    def found(self, content, board=BASE):
        """Rule, name, text and cell of what a sheet of few rows comes to, but for the sensors that it leaves out."""
        self.write(content)
        done = self.run_raw("sheet", "check", self.sheet, "--board", board, "--json")
        self.assertEqual((done.returncode, done.stderr.decode()), (1, ""))
        return [(f["rule"], f["name"], f["text"], f["place"]["cell"])
                for f in json.loads(done.stdout)["findings"] if f["rule"] != "missing"]

    def faults(self, content):
        self.write(content)
        done = self.run_raw("sheet", "check", self.sheet, "--board", BASE)
        self.assertEqual((done.returncode, done.stdout), (2, b""))
        head = "oxa-sensors: " + self.sheet + ":"
        lines = done.stderr.decode().splitlines()
        self.assertTrue(all(line.startswith(head) for line in lines), lines)
        return [line[len(head):] for line in lines]


class Documents(SheetTest):
    def test_every_document_names_board_and_profile(self):
        self.export(BASE, "--profile", "kestrin")
        for words in (("export",), ("check", self.sheet), ("rows", self.sheet),
                      ("image", self.sheet, "-o", self.path("t.dat"))):
            data = self.json("sheet", *words, "--board", BASE, "--profile", "kestrin")
            self.assertEqual((data["board"], data["profile"]), (BASE, {"name": "kestrin", "id": 1}), words)


class Export(SheetTest):
    def test_a_row_has_the_limits_of_a_sensor_in_its_unit(self):
        self.export()
        lines = self.text().splitlines()
        self.assertEqual(lines[0] + "\n", HEAD)
        self.assertIn("INPUT_TEMP,°C,,,,45,50,52", lines)
        self.assertIn("VCC12V,V,,9.6,10.8,13.2,14.4,", lines)
        self.assertIn("CPU_TEMP_00,°C,,,,,,", lines)

    def test_sensors_of_states_have_no_row_and_all_others_one(self):
        self.export()
        full = [s["name"] for s in self.json("list", "--board", BASE)["sensors"] if s["thresholds"]]
        self.assertEqual([line.split(",")[0] for line in self.text().splitlines()[1:]], full)

    def test_the_semicolon_style_is_what_european_spreadsheets_read(self):
        self.export(BASE, "--style", "semicolon")
        text = self.text()
        self.assertTrue(text.startswith("\ufeffName;Unit;LNR;LC;LNC;UNC;UC;UNR\r\n"), text[:50])
        self.assertIn("\r\nVCC12V;V;;9,6;10,8;13,2;14,4;\r\n", text)

    def test_tabs_and_standard_output(self):
        self.assertIn("VCC12V\tV\t\t9.6\t10.8\t13.2\t14.4\t\n",
                      self.out("sheet", "export", "--board", BASE, "--style", "tab"))

    def test_json_has_the_thresholds_of_list(self):
        data = self.json("sheet", "export", "--board", BASE)
        self.assertEqual((data["format"], data["profile"]["name"], data["sheet"]), (1, "default", None))
        one = next(s for s in data["sensors"] if s["name"] == "VCC12V")
        self.assertEqual(one, {"name": "VCC12V", "unit": "V", "thresholds": self.sensor("VCC12V")["thresholds"]})
        self.assertEqual((one["thresholds"]["uc"]["value"], one["thresholds"]["unr"]), (14.4, None))


class Check(SheetTest):
    def test_a_limit_that_differs_is_told_with_its_place(self):
        self.export()
        self.edit("INPUT_TEMP,°C,,,,45,50,52", "INPUT_TEMP,°C,,,,45,48,52")
        number = 1 + [line.split(",")[0] for line in self.text().splitlines()].index("INPUT_TEMP")
        (finding,) = self.check(1)["findings"]
        self.assertEqual(finding, {"rule": "value", "name": "INPUT_TEMP", "text": "UC 48 °C, the set has 50",
                                   "place": {"line": number, "column": len("INPUT_TEMP,°C,,,,45,") + 1,
                                             "cell": f"G{number}"}, "in_the_way": False})
        done = self.run_raw("sheet", "check", self.sheet, "--board", BASE)
        lines = done.stdout.decode().splitlines()
        self.assertEqual(lines[0], f"{self.sheet}:{number}:21: G{number}: INPUT_TEMP: UC 48 °C, the set has 50")
        self.assertIn(" 1 difference; profile default, board " + BASE, lines[-1])

    def test_what_a_byte_can_hold(self):
        self.assertEqual(self.found(HEAD + "VCC12V,V,,9.6,10.8,13.2,14.43,\n"),
                         [("byte", "VCC12V", "UC 14.43 V: a byte holds 14.4 or 14.5", "G2")])
        # 255 counts of 0.1 V; 127 and -128 of 1 °C
        self.assertEqual(self.found(HEAD + "VCC12V,V,,9.6,10.8,13.2,25.6,\nINPUT_TEMP,°C,-129,,,45,50,128\n"),
                         [("range", "VCC12V", "UC 25.6 V: a byte ends at 25.5 V", "G2"),
                          ("range", "INPUT_TEMP", "LNR -129 °C: a byte begins at -128 °C", "C3"),
                          ("range", "INPUT_TEMP", "UNR 128 °C: a byte ends at 127 °C", "H3")])

    def test_limits_that_do_not_rise(self):
        self.assertEqual(self.found(HEAD + "VCC12V,V,,9.6,10.8,14.4,14.4,\n"),
                         [("value", "VCC12V", "UNC 14.4 V, the set has 13.2", "F2"),
                          ("order", "VCC12V", "UC 14.4 V is not above UNC 14.4 V", "G2")])
        self.assertEqual(self.found(HEAD + "VCC12V,V,,9.6,10.8,,12,\n"),
                         [("gone", "VCC12V", "UNC 13.2 V of the set is empty in the sheet", "A2"),
                          ("value", "VCC12V", "UC 12 V, the set has 14.4", "G2"),
                          ("order", "VCC12V", "UC 12 V is not above UNC 13.2 V of the set", "G2")])

    def test_limits_that_only_one_side_has(self):
        self.assertEqual(self.found(HEAD + "INPUT_TEMP,°C,,5,,45,-,52\n"),
                         [("new", "INPUT_TEMP", "LC 5 °C: the set has no LC", "D2"),
                          ("gone", "INPUT_TEMP", "UC 50 °C of the set is empty in the sheet", "A2")])

    def test_names_that_are_not_in_the_set_and_sensors_that_are_not_in_the_sheet(self):
        found = self.found(HEAD + "INPUT_TEMPP,°C,,,,45,50,52\nFAN_REDUNDANCY,,,,,,1,\n")
        self.assertEqual((found[0][0], found[0][3]), ("name", "A2"))
        self.assertIn("did you mean INPUT_TEMP", found[0][2])
        self.assertEqual(found[1], ("discrete", "FAN_REDUNDANCY", "a sensor of states: it has no limits", "A3"))
        missing = {f["name"]: f["text"] for f in self.check(1)["findings"] if f["rule"] == "missing"}
        self.assertEqual(missing["INPUT_TEMP"], "not in the sheet; the set has UNC 45 °C, UC 50 °C, UNR 52 °C")
        self.assertEqual(missing["CPU_TEMP_00"], "not in the sheet")

    def test_twenty_names_that_are_not_in_the_set_get_the_nearest(self):
        found = self.found(HEAD + "".join(f"INPUT_TEMPP{i},°C,,,,45,50,52\n" for i in range(25)))
        self.assertEqual([f[0] for f in found], ["name"] * 25)
        self.assertEqual([i for i, f in enumerate(found) if "did you mean INPUT_TEMP" in f[2]], list(range(20)))
        self.assertEqual(found[20][2], "no such sensor in the set")

    def test_what_an_unknown_name_costs_does_not_grow_with_the_set(self):
        """Each was held against every name of the set: ten times as long for ten times the sensors."""
        taken = []
        self.write(HEAD + "".join(f"NOBODY_KNOWS_{i},V,,,,,1,\n" for i in range(20000)))
        for board in (BASE, FULLEST):  # 48 sensors, and more than 600
            before = resource.getrusage(resource.RUSAGE_CHILDREN).ru_utime
            self.assertEqual(self.run_raw("sheet", "check", self.sheet, "--board", board).returncode, 1)
            taken.append(resource.getrusage(resource.RUSAGE_CHILDREN).ru_utime - before)
        self.assertLess(taken[1] / taken[0], 4, taken)

    def test_a_sensor_that_the_board_lacks_is_told_apart_from_one_that_nobody_knows(self):
        # base_48 has two power supplies; PSU_PIN_%02d is their row, which prints no PSU_PINN_03
        self.assertEqual(self.found(HEAD + "PSU_PIN_03,W,,,,,900,\n"),
                         [("absent", "PSU_PIN_03", "not on this board, though profile default has a row for it", "A2")])
        self.assertEqual(self.found(HEAD + "PSU_PINN_03,W,,,,,900,\n")[0][0], "name")

    def test_a_name_that_begins_as_a_row_does_costs_no_more_than_another(self):
        """Eight rows of astrel begin with CPU and a number; that each prints all its numbers for each name would be seen."""
        taken = []
        for begin in ("XPU", "CPU"):
            self.write(HEAD + "".join(f"{begin}_{i:05},V,,,,,1,\n" for i in range(20000)))
            before = resource.getrusage(resource.RUSAGE_CHILDREN).ru_utime
            self.assertEqual(self.run_raw("sheet", "check", self.sheet, "--board", BASE, "--profile", "astrel").returncode, 1)
            taken.append(resource.getrusage(resource.RUSAGE_CHILDREN).ru_utime - before)
        self.assertLess(taken[1] / taken[0], 4, taken)

    def test_another_unit(self):
        self.assertEqual(self.found(HEAD + "VCC12V,mV,,,,,14400,\n"),
                         [("unit", "VCC12V", "the sheet says mV, the sensor reads in V", "B2")])

    def test_sensors_without_limits_are_listed_and_no_difference(self):
        self.export()
        data = self.check(0)
        self.assertIn("CPU_TEMP_00", data["without_limits"])
        self.assertNotIn("INPUT_TEMP", data["without_limits"])

    def test_columns_that_are_not_looked_at_are_told(self):
        self.export()
        lines = self.text().splitlines()
        self.write("\n".join([lines[0] + ",Remark"] + [line + ",x" for line in lines[1:]]) + "\n")
        self.assertEqual(self.check(0)["ignored_columns"], ["Remark"])


class Fleets(SheetTest):
    """One sheet for boards that have not all of its sensors: that of the fullest board, held against another."""

    def setUp(self):
        super().setUp()
        self.export(BASE)
        self.own = self.names()
        self.image(self.path("own.dat"))
        self.export(FULLEST)
        self.absent = [name for name in self.names() if name not in self.own]
        self.assertGreater(len(self.absent), 100)

    def names(self):
        return [line.split(",")[0] for line in self.text().splitlines()[1:]]

    def image(self, path, *words):
        return self.out("sheet", "image", self.sheet, "--board", BASE, "-o", path, *words)

    def test_every_sensor_that_another_board_of_the_profile_has_is_absent(self):
        found = [f for f in self.check(1)["findings"] if f["rule"] != "missing"]
        self.assertEqual([f["name"] for f in found], self.absent)
        self.assertEqual({(f["rule"], f["in_the_way"]) for f in found}, {("absent", True)})

    def test_absent_sensors_are_left_out_on_demand_and_counted(self):
        data = self.check(1, BASE, "--skip-absent")
        self.assertEqual(data["skipped"], self.absent)
        self.assertEqual([(f["rule"], f["name"]) for f in data["findings"]],
                         [("missing", name) for name in self.own if name not in self.names()])
        text = self.run_raw("sheet", "check", self.sheet, "--board", BASE, "--skip-absent").stdout.decode()
        self.assertIn(f"\n{self.sheet}: {len(self.absent)} sensors are not on this board and left out: ", text)

    def test_an_image_is_that_of_the_boards_own_sheet(self):
        lines = self.run_raw("sheet", "image", self.sheet, "--board", BASE, "-o", self.path("x.dat")).stderr.decode()
        self.assertEqual(lines.count("; --skip-absent leaves it out\n"), len(self.absent))
        self.assertFalse(os.path.exists(self.path("x.dat")))
        said = self.image(self.path("x.dat"), "--skip-absent")
        self.assertTrue(said.startswith(f"{len(self.absent)} sensors are not on this board and left out: "), said)
        with open(self.path("x.dat"), "rb") as ours, open(self.path("own.dat"), "rb") as own:
            self.assertEqual(ours.read(), own.read())

    def test_rows_are_those_of_the_sensors_that_are_there(self):
        self.edit("INPUT_TEMP,°C,,,,45,50,52", "INPUT_TEMP,°C,,,,45,48,52")
        data = self.json("sheet", "rows", self.sheet, "--board", BASE, "--skip-absent")
        self.assertEqual(([row["sensors"] for row in data["rows"]], data["skipped"]), ([["INPUT_TEMP"]], self.absent))
        self.assertIn("left out: ", self.out("sheet", "rows", self.sheet, "--board", BASE, "--skip-absent"))

    def test_names_that_nobody_knows_are_not_left_out(self):
        self.write(HEAD + "PSU_PINN_03,W,,,,,900,\n")
        data = self.check(1, BASE, "--skip-absent")
        self.assertEqual((data["skipped"], data["findings"][0]["rule"]), ([], "name"))

    def test_a_sheet_without_a_sensor_of_the_board_makes_no_image(self):
        self.write(HEAD + "PSU_PIN_03,W,,,,,900,\n")
        self.assertIn("no limits in it for this board", self.refused(
            2, "sheet", "image", self.sheet, "--board", BASE, "-o", self.path("x.dat"), "--skip-absent"))


class Spreadsheets(SheetTest):
    """One row, written in the ways of spreadsheets, is the same row."""

    def same(self, content):
        self.assertEqual(self.found(content), [])

    def test_separators_quotes_marks_and_line_ends(self):
        for separator, point in ((",", "."), (";", ","), (";", "."), ("\t", ","), ("\t", ".")):
            row = separator.join(["VCC12V", "V", "", "9.6", "10.8", "13.2", "14.4", ""]).replace(".", point)
            head = HEAD.strip().replace(",", separator)
            for end in ("\n", "\r\n", "\r"):
                for mark in ("", "\ufeff"):
                    with self.subTest(separator=separator, point=point, end=end, mark=mark):
                        self.same(mark + head + end + row + end)
        self.same(HEAD + '"VCC12V","V","","9,6","10,8","13,2","14,4",""\n')
        self.same('"Name";"UC";"UNC";"LNC";"LC"\n"VCC12V";"14,4";"13,2";"10,8";"9,6"')

    def test_columns_in_any_order_rows_that_are_short_empty_or_padded(self):
        self.same("uc,unc,lnc,lc,sensor\n14.4,13.2,10.8,9.6,VCC12V\n\n,,,,\n")
        self.same(HEAD + " VCC12V , V ,-, 9.6 ,10.80,13.2,+14.4\n")

    def test_units_behind_numbers_odd_minus_signs_and_no_break_spaces(self):
        self.same(HEAD + "VCC12V,V,,9.6 V,10.8V,13.2\u00a0V,14.4 V,\n")
        self.same(HEAD + "VCC12V,V,,\u00a09.6,10.8\u00a0,13.2,14.4,\n")
        self.assertEqual(self.found(HEAD + "INPUT_TEMP,°C,\u22125,,,45,50,52\n"),
                         [("new", "INPUT_TEMP", "LNR -5 °C: the set has no LNR", "C2")])

    def test_the_unit_in_other_character_sets(self):
        for unit in ("°C".encode("latin-1"), b"C", b"degC", "° C".encode()):
            self.same(HEAD.encode() + b"INPUT_TEMP," + unit + b",,,,45,50,52\n")

    def test_the_line_of_a_row_behind_a_cell_of_several_lines(self):
        self.write("Name,Remark,UC\n\"PCH_TEMP\",\"two\nlines\",\nINPUT_TEMP,\"a \"\"b\"\"\",48\n")
        (place,) = [f["place"] for f in self.check(1)["findings"] if f["rule"] == "value"]
        self.assertEqual(place, {"line": 4, "column": len('INPUT_TEMP,"a ""b""",') + 1, "cell": "C3"})


class Faults(SheetTest):
    def test_what_is_no_sheet(self):
        self.assertEqual(self.faults(""), ["1:1: A1: nothing in it; the first row names the columns: Name, Unit, LNR, LC, "
                                           "LNC, UNC, UC, UNR"])
        self.assertEqual(self.faults("a,b\n1,2\n"), ["1:1: A1: no column 'Name' in the first row",
                                                     "1:1: A1: no column LNR, LC, LNC, UNC, UC or UNR in the first row"])
        self.assertEqual(self.faults("Name,UC,uc\n"), ["1:9: C1: a second column 'uc'"])
        (line,) = self.faults(HEAD.encode("utf-16"))
        self.assertEqual(line, "1:1: zero bytes: no text (a workbook, or UTF-16); save it as CSV, UTF-8")

    def test_cells_that_cannot_be_read_are_told_all_with_their_places(self):
        self.assertEqual(self.faults(HEAD + "VCC12V,V,,9.6x,,,\"1.234,5\",\nINPUT_TEMP,°C,,,,,1e999,nan\n"),
                         ["2:11: D2: '9.6x' is no number",
                          "2:18: G2: '1.234,5': one decimal point or comma is wanted, nothing between thousands",
                          "3:19: G3: '1e999' is no number", "3:25: H3: 'nan' is no number"])

    def test_a_sign_too_many_is_no_number(self):
        self.assertEqual(self.faults(HEAD + "INPUT_TEMP,°C,+-5,,,,,\n"), ["2:15: C2: '+-5' is no number"])

    def test_decimal_commas_that_part_cells_are_told_and_make_no_limits(self):
        # 14,4 without quotes: UC 14 V and a cell that no column names
        told = "2:11: C2: '4' is behind the last column of the first row"
        (line,) = self.faults("Name,UC\nVCC12V,14,4\n")
        self.assertTrue(line.startswith(told), line)
        self.assertIn(told, self.refused(2, "sheet", "image", self.sheet, "--board", BASE, "-o", self.path("t.dat")))
        self.assertFalse(os.path.exists(self.path("t.dat")))

    def test_what_is_longer_than_any_sheet_is_read_to_no_end(self):
        """Sixteen million cells took gigabytes, a cell of tabs hours."""
        for content in ("," * 15_000_000, "a\n" * 1_000_001):
            (line,) = self.faults(HEAD + content)
            self.assertIn("more than a million cells", line)
        self.assertEqual(self.faults(HEAD + "\t" * 2_000_000 + "VCC12V,V,x\n"), ["2:2000010: C2: 'x' is no number"])

    def test_rows_without_a_name_or_with_one_twice(self):
        self.assertEqual(self.faults(HEAD + ",V,,,,,14.4,\nVCC12V,V\nVCC12V,V\n"),
                         ["2:1: A2: a row without a name", "4:1: A4: VCC12V is in A3 already"])

    def test_a_quote_that_is_not_closed(self):
        self.assertEqual(self.faults(HEAD + "VCC12V,\"V,,,,,,\nA,B\n"), ["2:8: B2: the quote that opens here is not closed"])

    def test_damaged_sheets_are_read_to_an_end(self):
        self.export(BASE, "--style", "semicolon")
        with open(self.sheet, "rb") as file:
            good = file.read()
        rng = random.Random(8)
        for _ in range(60):
            bad = bytearray(good)
            for _ in range(rng.choice((1, 3, 30))):
                at = rng.randrange(len(bad))
                bad[at:at + rng.choice((0, 1, 1, 9))] = rng.choice((b"", b'"', b";", b"\r", b"\n", b"\xff", b"-", b"9" * 400, b"%"))
            self.write(bytes(bad))
            done = self.run_raw("sheet", "check", self.sheet, "--board", BASE)
            self.assertIn(done.returncode, (0, 1, 2), bad)
            for line in done.stderr.decode("latin-1").splitlines():
                self.assertTrue(line.startswith("oxa-sensors: " + self.sheet), line)

    def test_files_and_options_that_cannot_be_used(self):
        self.refused(2, "sheet", "check", "/nowhere", "--board", BASE)
        self.refused(2, "sheet", "check", self.folder.name, "--board", BASE)
        self.write(HEAD)
        self.refused(2, "sheet", "check", self.sheet, "--board", "/nowhere")
        self.refused(2, "sheet", "check", self.sheet, "--board", "boards/guards/psu_count_fails.toml")
        self.refused(2, "sheet", "export", "--board", BASE, "-o", "/nowhere/x")
        self.refused(2, "sheet", "image", self.sheet, "--board", BASE, "-o", self.path("x"))
        self.assertFalse(os.path.exists(self.path("x")))


class Rows(SheetTest):
    def rows(self, content, *words, board=TWO_SOCKET, profile="astrel"):
        self.write(content)
        return self.json("sheet", "rows", self.sheet, "--board", board, "--profile", profile, *words)["rows"]

    def refused_rows(self, content, *words, board=TWO_SOCKET, profile="astrel"):
        self.write(content)
        return self.refused(2, "sheet", "rows", self.sheet, "--board", board, "--profile", profile, *words)

    def test_a_row_gets_what_the_set_has_otherwise(self):
        (row,) = self.rows(HEAD + "Inlet_Temp,°C,,,,40,43,52\nSYS_12V,V,,9.6,10.8,13.2,14.4,\n")
        self.assertEqual(row["new"], 'STATIC_TABLE(kInletTemp, Astrel_GenINLETTEMPSDR, "Inlet_Temp", '
                                     'Limits({.unc = Celsius(40), .uc = Celsius(43)}))')
        self.assertEqual((row["sensors"], row["bytes"]), (["Inlet_Temp"], 12))  # six of the masks, six limits
        with open(os.path.join(SOURCE, "library/profiles/astrel.def"), encoding="utf-8") as file:
            self.assertEqual(file.read().splitlines()[row["line"] - 1], row["old"])

    def test_the_patch_can_be_applied(self):
        self.write(HEAD + "Inlet_Temp,°C,,,,40,43,52\n")
        lines = self.out("sheet", "rows", self.sheet, "--board", TWO_SOCKET, "--profile", "astrel").splitlines()
        self.assertEqual(lines[0], "library/profiles/astrel.def: 1 row changes, 12 bytes more (1 without limits of their "
                                   "own before)")
        self.assertEqual(lines[1:3], ["--- a/library/profiles/astrel.def", "+++ b/library/profiles/astrel.def"])
        self.assertRegex(lines[3], r"^@@ -(\d+) \+\1 @@$")
        self.assertEqual([line[0] for line in lines[4:]], ["-", "+"])

    def test_a_value_between_two_bytes_is_refused_or_rounded(self):
        sheet = HEAD + "SYS_12V,V,,9.6,10.8,13.2,14.47,\n"
        column = len("SYS_12V,V,,9.6,10.8,13.2,") + 1
        self.assertIn(f":2:{column}: G2: SYS_12V: UC 14.47 V: a byte holds 14.4 or 14.5; --round takes the nearest",
                      self.refused_rows(sheet))
        (row,) = self.rows(sheet, "--round")
        self.assertTrue(row["new"].endswith(', "SYS_12V", Limits({.uc = Rounded(Volts(14.47))}))'), row)

    def test_one_row_for_all_its_sensors(self):
        (row,) = self.rows(HEAD + "PSU1_Vin,V,,,,,264,\nPSU2_Vin,V,,,,,264,\n")
        self.assertEqual(row["sensors"], ["PSU1_Vin", "PSU2_Vin"])
        self.assertTrue(row["new"].endswith('"PSU%d_Vin", Limits({.uc = Volts(264)}))'), row)
        self.assertIn("one row builds PSU1_Vin and PSU2_Vin, and the sheet gives them different limits",
                      self.refused_rows(HEAD + "PSU1_Vin,V,,,,,264,\nPSU2_Vin,V,,,,,262,\n"))

    def test_a_row_that_has_limits_keeps_those_that_the_sheet_has_not(self):
        path = self.path("own.def")
        with open(path, "w", encoding="utf-8") as file:
            file.write('// a list\nSTATIC_TABLE(kInletTemp, F, "Inlet_Temp", '
                       'Limits({.lc = Celsius(5), .uc = Rounded(Celsius(44.5))}))\n')
        (row,) = self.rows(HEAD + "Inlet_Temp,°C,,,,40,43,52\n", "--list", path)
        self.assertEqual((row["line"], row["bytes"], row["new"]),
                         (2, 0, 'STATIC_TABLE(kInletTemp, F, "Inlet_Temp", '
                                'Limits({.lc = Celsius(5), .unc = Celsius(40), .uc = Celsius(43)}))'))

    def test_an_empty_cell_takes_no_limit_away(self):
        self.write(HEAD + "Inlet_Temp,°C,,,,40,43,\n")
        text = self.out("sheet", "rows", self.sheet, "--board", TWO_SOCKET, "--profile", "astrel")
        self.assertIn("empty in the sheet and not to be taken away by a row: Inlet_Temp\n", text)
        self.assertNotIn("unr", text)

    def test_what_rows_cannot_say(self):
        self.assertIn("Env_Humi reads in %, which limits of a list cannot be written in",
                      self.refused_rows(HEAD + "Env_Humi,%,,,,,90,\n"))
        self.assertIn("MEM_Total_Power: its factor is not the list's (memory power accuracy of the platform)",
                      self.refused_rows(HEAD + "MEM_Total_Power,W,,,,,300,\n"))
        self.assertIn("no such sensor in the set", self.refused_rows(HEAD + "Inlet,°C,,,,,43,\n"))
        self.assertIn("UC 44 °C is not above UNC 45 °C of the set", self.refused_rows(HEAD + "Inlet_Temp,°C,,,,,44,\n"))
        self.assertIn("--list names the profile's list",
                      self.refused_rows(HEAD + "Inlet_Temp,°C,,,,,46,\n", "--list", "/nowhere"))

    def test_a_list_whose_rows_go_on_in_another_line_is_edited_by_hand(self):
        list_file = self.path("x.def")
        row = 'STATIC_TABLE(kInletTemp, F, "Inlet_Temp"'
        for text in (row + ", Limits({.unc = Celsius(40),\n    .uc = Celsius(43)}))\n", row + "\n)\n", row + ") // (x)\n",
                     row + ", Limits({.unc = Celsius(40))\n"):
            with open(list_file, "w", encoding="utf-8") as file:
                file.write(text)
            self.assertIn("x.def:1: the row does not end with its line",
                          self.refused_rows(HEAD + "Inlet_Temp,°C,,,,,46,\n", "--list", list_file))

    def test_what_is_no_list_has_no_rows(self):
        list_file = self.path("x.def")
        with open(list_file, "w", encoding="utf-8") as file:
            file.write("A(" + "x" * 300_000 + '"Inlet_Temp")\n')
        self.assertIn("no row prints Inlet_Temp", self.refused_rows(HEAD + "Inlet_Temp,°C,,,,,46,\n", "--list", list_file))
        self.assertIn("a folder", self.refused_rows(HEAD + "Inlet_Temp,°C,,,,,46,\n", "--list", self.folder.name))

    def test_the_nearest_pattern_is_the_sensors_row(self):
        # DIMM%s_Temp prints DIMMG0_Temp as well; simplified.toml has sensors of groups of DIMMs
        names = [s["name"] for s in self.json("list", "--board", "boards/simplified.toml", "--profile",
                                              "astrel")["sensors"] if s["name"].startswith("DIMMG")]
        self.assertTrue(names)
        (row,) = self.rows(HEAD + "".join(f"{name},°C,,,,,90,\n" for name in names), board="boards/simplified.toml")
        self.assertIn('"DIMMG%d_Temp"', row["new"])


class Images(SheetTest):
    def image(self, content, *words, board=BASE):
        self.write(content)
        path = self.path("t.dat")
        data = self.json("sheet", "image", self.sheet, "--board", board, "-o", path, *words)
        with open(path, "rb") as file:
            return data, file.read()

    def refused_image(self, content, *words):
        self.write(content)
        line = self.refused(2, "sheet", "image", self.sheet, "--board", BASE, "-o", self.path("t.dat"), *words)
        self.assertFalse(os.path.exists(self.path("t.dat")))
        return line

    def test_the_bytes_of_an_image(self):
        data, image = self.image(HEAD + "INPUT_TEMP,°C,,,,40,43,47\nPCH_TEMP,°C,,,,,,\n")
        entry = struct.pack("<17s6B2BxH", b"INPUT_TEMP", 47, 43, 40, 0, 0, 0, 0, 0, UNR | UC | UNC)
        self.assertEqual(image[:6 + 28], struct.pack("<IH", 0, 1) + entry)
        self.assertEqual(image[34:], bytes(14344 - 34))
        self.assertEqual((data["format"], data["profile"]["id"], data["entries"]), (1, 0, 1))

    def test_the_whole_sheet_applies_to_the_boards_records(self):
        self.export(FULLEST)
        path = self.path("t.dat")
        self.out("sheet", "image", self.sheet, "--board", FULLEST, "-o", path)
        done = self.run_raw("thresholds", "preflight", path, "--board", FULLEST)
        self.assertEqual(done.returncode, 0, done.stdout)

    def test_another_profile_is_the_images(self):
        self.write(HEAD + "Inlet_Temp,°C,,,,40,43,47\n")
        path = self.path("t.dat")
        self.out("sheet", "image", self.sheet, "--board", BASE, "--profile", "kestrin", "-o", path)
        self.assertEqual(self.json("thresholds", "show", path)["saved_under"], {"name": "kestrin", "id": 1})

    def test_an_empty_cell_keeps_the_records_limit(self):
        data, image = self.image(HEAD + "INPUT_TEMP,°C,,,,40,43,\n")
        self.assertEqual((image[6 + 17:6 + 20], data["kept"]), (bytes([52, 43, 40]), ["INPUT_TEMP"]))

    def test_rounding_is_asked_for(self):
        self.assertIn("a byte holds 14.4 or 14.5; --round takes the nearest",
                      self.refused_image(HEAD + "VCC12V,V,,9.6,10.8,13.2,14.47,\n"))
        _, image = self.image(HEAD + "VCC12V,V,,9.6,10.8,13.2,14.47,\n", "--round")
        self.assertEqual(image[6 + 18], 145)

    def test_what_an_image_cannot_hold(self):
        self.assertIn("A2: INPUT_TEMP: the record has no LC, and a user's thresholds add none",
                      self.refused_image(HEAD + "INPUT_TEMP,°C,,5,,45,50,52\n"))
        # -5 °C is 251, above 45 and 50 for who compares bytes without sign
        self.assertIn("UNC 251 is not below UC 50 as bytes, which are compared without sign",
                      self.refused_image(HEAD + "INPUT_TEMP,°C,,,,-5,50,52\n"))
        self.assertIn("no limits in it", self.refused_image(HEAD + "PCH_TEMP,°C,,,,,,\n"))


if __name__ == "__main__":
    main()
