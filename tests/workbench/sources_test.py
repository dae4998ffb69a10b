# SPDX-License-Identifier: GPL-3.0-or-later
"""Sets from files: what 'ipmitool sdr dump' writes of real machines, with records of every type.  Records are put together
here, byte by byte as the IPMI tables have them."""
import json
import random

from support import BASE, TWO_SOCKET, Workbench, main


def record(number, kind, body):
    return bytes([number & 0xFF, number >> 8, 0x51, kind, len(body)]) + bytes(body)


def full(number, name, uc=50, mask=0x10, **more):
    """A temperature in degrees, with an upper critical limit."""
    coded = more.get("coded", bytes([0xC0 | len(name)]) + name.encode())
    body = bytearray(43)
    body[0:9] = 0x20, 0, number, 7, 1, 0x7F, 0x68, 1, more.get("event", 1)
    body[13], body[14] = mask, mask
    body[15:18] = more.get("units", 0x80), 1, 0
    body[18] = more.get("function", 0)
    body[19], body[24] = 1, more.get("exponents", 0)
    body[29:31] = 0x7F, 0x80
    body[32] = uc
    return record(number, 1, bytes(body[:42]) + coded)


def compact(number, name, event=0x6F, mask=1):
    body = bytearray(26)
    body[0:9] = 0x20, 0, number, 3, 1, 0x67, 0x40, 7, event
    body[9] = body[13] = mask
    return record(number, 2, bytes(body) + bytes([0xC0 | len(name)]) + name.encode())


def event_only(number, name):
    body = [0x20, 0, 0x77, 7, 1, 0x12, 0x6F, 1, 0, 0, 0]
    return record(number, 3, bytes(body) + bytes([0xC0 | len(name)]) + name.encode())


def locator(number, kind, head, name):
    return record(number, kind, bytes(head) + bytes([0xC0 | len(name)]) + name.encode())


FRU = locator(3, 0x11, [0x20, 17, 0x80, 0, 0, 0x10, 0, 10, 1, 0], "PSU1_FRU")
FRU_CHIP = locator(4, 0x11, [0x20, 0xA0, 0x00, 0, 0, 0x10, 0, 10, 2, 0], "EEPROM")
CONTROLLER = locator(5, 0x12, [0x20, 0, 0, 0, 0, 0, 0xBF, 7, 1, 0], "BMC")
DEVICE = locator(6, 0x10, [0x20, 0x90, 0, 0, 0, 0, 0, 7, 2, 0], "Expander")
OEM = record(7, 0xC0, [0x57, 1, 0, 1, 2, 3])
ASSOCIATION = record(8, 8, [7, 1, 0, 1, 1, 0, 0, 0, 0, 0, 0])
UNKNOWN = record(9, 0x33, [1, 2])
ASIDE = [FRU, FRU_CHIP, CONTROLLER, DEVICE, OEM, ASSOCIATION, UNKNOWN, event_only(10, "Watchdog")]
SENSORS = [full(1, "Inlet"), compact(2, "CPU0")]
COUNT = ("2 FRU locators, 1 MC locator, 1 device locator, 1 OEM record, 1 entity association, "
         "1 record of type 0x33, 1 event-only record")


class Tests(Workbench):
    def file(self, records, name="dump"):
        with open(self.path(name), "wb") as file:
            file.write(b"".join(records))
        return self.path(name)

    def mixed(self):
        return self.file([SENSORS[0], *ASIDE, SENSORS[1]])

    def test_sensors_are_listed_and_every_other_record_is_set_aside_with_a_count(self):
        text = self.out("list", "--from", self.mixed())
        lines = text.splitlines()
        self.assertEqual([line.split()[1] for line in lines[1:3]], ["Inlet", "CPU0"])
        self.assertEqual(lines[-2:], [f"2 sensors (1 full, 1 compact), {self.path('dump')}", "set aside: " + COUNT])

    def test_what_is_set_aside_is_told_with_its_kind_and_what_it_leads_to(self):
        rows = {r["record_id"]: r for r in self.json("list", "--from", self.mixed())["set_aside"]}
        self.assertEqual({n: (r["kind"], r["name"], r["what"]) for n, r in rows.items()}, {
            3: ("FRU locator", "PSU1_FRU", "FRU id 17, Power Supply 0x01"),
            4: ("FRU locator", "EEPROM", "device at 0xA0, Power Supply 0x02"),
            5: ("MC locator", "BMC", "slave address 0x20, System Board 0x01"),
            6: ("device locator", "Expander", "device at 0x20/0x90, System Board 0x02"),
            7: ("OEM record", "", "manufacturer 343"),
            8: ("entity association", "", "container System Board 0x01"),
            9: ("record of type 0x33", "", ""),
            10: ("event-only record", "Watchdog", "System Event of System Board 0x01, sensor number 119")})
        self.assertEqual([rows[n]["place"] for n in range(3, 11)], list(range(2, 10)))
        self.assertEqual(bytes.fromhex(rows[7]["record"]), OEM)

    def test_a_dump_has_no_device_table_and_no_profile(self):
        data = self.json("list", "--from", self.mixed())
        self.assertEqual((data["board"], data["profile"], data["source"], data["count"]),
                         (None, None, self.path("dump"), 2))
        self.assertEqual([(s["device"], s["entry"]) for s in data["sensors"]], [(None, None)] * 2)
        self.assertEqual([s["name"] for s in data["sensors"]], ["Inlet", "CPU0"])
        self.assertEqual(data["sensors"][0]["thresholds"]["uc"], {"raw": 50, "value": 50, "settable": True})

    def test_a_sensor_of_a_dump_is_shown_without_saying_what_set_its_bytes(self):
        text = self.out("show", "--from", self.mixed(), "Inlet")
        self.assertIn("50 °C", text)
        self.assertNotIn("  = ", text)
        self.assertNotIn("Device-table", text)

    def test_a_record_that_is_set_aside_is_shown_by_its_name(self):
        text = self.out("show", "--from", self.mixed(), "psu1_fru", "Inlet")
        self.assertIn("PSU1_FRU: FRU locator of 24 bytes, record 3, FRU id 17, Power Supply 0x01\n", text)
        self.assertIn("Inlet: full record of 53 bytes, sensor 1 of 2", text)
        self.assertIn(FRU[:16].hex(" ").upper(), text)
        self.assertIn("EEPROM: FRU locator", self.out("show", "--from", self.mixed(), "EEP*"))
        self.assertIn("no sensor 'Nothing' among 2", self.refused(2, "show", "--from", self.mixed(), "Nothing"))

    def test_two_dumps_are_compared_by_their_sensors_only(self):
        other = self.file([SENSORS[1], full(1, "Inlet", uc=48), OEM], "other")
        done = self.run_raw("diff", self.mixed(), other, "--json")
        data = json.loads(done.stdout)
        self.assertEqual(done.returncode, 1, done.stderr)
        change, = data["changed"]
        self.assertEqual((change["name"], [(c["field"], c["a"], c["b"]) for c in change["changes"]]),
                         ("Inlet", [("UC threshold", ["50 °C"], ["48 °C"])]))
        self.assertEqual((len(data["a"]["set_aside"]), len(data["b"]["set_aside"]), data["same"]), (8, 1, 1))
        text = self.run_raw("diff", self.mixed(), other).stdout.decode()
        self.assertIn(f"dump, 2 sensors (records only, no device table); set aside: {COUNT}\n", text)

    def test_check_looks_at_the_sensors_of_a_dump(self):
        self.out("check", "--from", self.mixed())
        twice = self.file([SENSORS[0], full(2, "Inlet"), FRU], "twice")
        done = self.run_raw("check", "--from", twice, "--json")
        data = json.loads(done.stdout)
        self.assertEqual((done.returncode, [(f["rule"], f["subject"], f["profile"]) for f in data["findings"]]),
                         (1, [("name-unique", "Inlet", "-")]))
        self.assertEqual(len(data["set_aside"]), 1)

    def test_what_is_known_of_a_profile_is_known_of_its_dump(self):
        self.out("export", "--board", BASE, "-o", self.path("base"))
        done = self.run_raw("check", "--from", self.path("base"))
        self.assertEqual(done.returncode, 1)
        self.assertIn(b"NEW     name-unique  -        CPU_PROCHOT", done.stdout)
        self.assertIn("known   name-unique  default  CPU_PROCHOT",
                      self.out("check", "--from", self.path("base"), "--profile", "default"))

    def test_an_export_is_the_dump_it_was_made_from_without_what_is_set_aside(self):
        out = self.path("out")
        self.out("export", "--from", self.mixed(), "-o", out)
        with open(out, "rb") as file:
            self.assertEqual(file.read(), b"".join(SENSORS))

    def test_what_list_prints_as_json_is_a_source_too(self):
        with open(self.path("a.json"), "w", encoding="utf-8") as file:
            file.write(self.out("list", "--from", self.mixed(), "--json"))
        self.out("diff", self.path("a.json"), self.mixed())

    def test_a_profile_on_a_board_is_a_source_like_the_board(self):
        self.assertEqual(self.json("list", "--from", "kestrin@" + BASE),
                         self.json("list", "--board", BASE, "--profile", "kestrin"))
        self.assertEqual(self.json("list", "--from", "kestrin", "--board", TWO_SOCKET),
                         self.json("list", "--board", TWO_SOCKET, "--profile", "kestrin"))

    def test_a_profile_beside_a_source_of_another_is_refused(self):
        with open(self.path("a.json"), "w", encoding="utf-8") as file:
            file.write(self.out("list", "--board", BASE, "--profile", "kestrin", "--json"))
        for source in ("kestrin@" + BASE, self.path("a.json")):
            for command in (["list"], ["show", "ME"], ["check"], ["export"]):
                self.assertEqual(self.refused(2, *command, "--from", source, "--profile", "Astrel"),
                                 f"oxa-sensors: --profile astrel contradicts --from {source}, which is of kestrin")
            self.assertEqual(self.json("list", "--from", source, "--profile", "1"), self.json("list", "--from", source))
        self.assertIn("--profile astrel contradicts --from kestrin, ",
                      self.refused(2, "list", "--from", "kestrin", "--board", BASE, "--profile", "astrel"))
        self.assertIn("unknown profile 'nope'", self.refused(2, "list", "--from", "kestrin@" + BASE, "--profile", "nope"))

    def test_a_board_beside_a_source_that_does_not_ask_for_it_is_refused(self):
        for source in ("kestrin@" + BASE, self.mixed()):
            self.assertEqual(self.refused(2, "list", "--from", source, "--board", TWO_SOCKET),
                             f"oxa-sensors: --board {TWO_SOCKET} contradicts --from {source}")
        self.out("list", "--from", "kestrin@" + BASE, "--board", BASE)

    def test_a_source_goes_over_board_and_profile_of_the_environment(self):
        done = self.run_raw("list", "--from", "kestrin@" + BASE, "--json",
                            env={"OXA_PROFILE": "astrel", "OXA_BOARD": TWO_SOCKET})
        self.assertEqual((done.returncode, json.loads(done.stdout)), (0, self.json("list", "--from", "kestrin@" + BASE)))

    def one(self, record_bytes):
        return self.json("list", "--from", self.file([record_bytes], "one"))["sensors"][0]

    def test_names_are_read_in_every_code(self):
        # 6 bits a character, the first one lowest: I=29h P=30h M=2Dh I=29h make the bytes 29h DCh A6h
        self.assertEqual(self.one(full(1, "", coded=bytes([0x83, 0x29, 0xDC, 0xA6])))["name"], "IPMI")
        self.assertEqual(self.one(full(1, "", coded=bytes([0x42, 0x12, 0x3B])))["name"], "123-")
        self.assertEqual(self.one(full(1, "", coded=bytes([0xC0])))["name"], "")
        self.assertEqual(self.one(full(1, "", coded=b"\xC4\x1b[1m"))["name"], "?[1m")

    def test_a_reading_that_is_not_linear_is_told_with_its_function(self):
        sensor = self.one(full(1, "Root", function=0x0A, units=0, exponents=0))
        self.assertEqual(sensor["reading"]["formula"], "sqrt(x * 1) °C")
        self.assertEqual(sensor["thresholds"]["uc"]["value"], 7.071068)  # the root of 50
        self.assertIsNone(sensor["hysteresis"]["positive"]["value"])

    def test_a_sensor_whose_factors_are_not_in_the_record_has_no_reading(self):
        sensor = self.one(full(1, "Curve", function=0x70))
        self.assertEqual((sensor["reading"], sensor["thresholds"]), (None, None))

    def test_oem_states_and_compact_thresholds_are_no_obstacle(self):
        states = self.one(compact(1, "Vendor", event=0x72, mask=5))["events"]
        self.assertEqual([s["bit"] for s in states["assertion"]], [0, 2])
        self.assertEqual([s["bit"] for s in self.one(compact(1, "Old", event=1, mask=0x80))["events"]["assertion"]], [7])

    def test_a_sensor_that_cannot_be_read_is_set_aside_with_the_reason(self):
        cut = record(2, 1, [0x20, 0, 1, 7, 1])
        data = self.json("list", "--from", self.file([SENSORS[0], cut, record(3, 1, bytes(200))]))
        self.assertEqual([(r["record_id"], r["kind"]) for r in data["set_aside"]],
                         [(2, "unreadable sensor record"), (3, "unreadable sensor record")])
        self.assertIn("205 bytes; a sensor's record has at most 64", data["set_aside"][1]["what"])

    def test_a_file_that_ends_within_a_record_is_refused_with_its_number(self):
        for records, words in (([SENSORS[0], FRU[:-1]], "record 2: the file ends within it"),
                               ([SENSORS[0], b"\1\0\x51"], "record 2: the file ends within its header"),
                               ([b"\1\0\x77\1\0"], "record 1: no sensor data record"),
                               ([FRU, OEM], "no records of sensors in it")):
            self.assertIn(words, self.refused(2, "list", "--from", self.file(records)))

    def test_a_damaged_dump_is_read_or_refused_and_nothing_of_it_reaches_the_terminal(self):
        whole = b"".join([SENSORS[0], *ASIDE, SENSORS[1]])
        for seed in range(150):
            chance = random.Random(seed)
            damaged = bytearray(whole)
            for _ in range(chance.randrange(1, 5)):
                damaged[chance.randrange(len(damaged))] = chance.randrange(256)
            if seed % 3 == 0:
                del damaged[chance.randrange(len(damaged)):]
            done = self.run_raw("show", "--from", self.file([damaged]), "*")
            self.assertIn(done.returncode, (0, 2), (seed, done.stderr))
            told = done.stdout.decode() + done.stderr.decode()
            self.assertEqual([c for c in told if c < " " and c != "\n"], [], seed)

    def test_a_sensor_in_json_that_cannot_be_read_is_wrong_input(self):
        with open(self.path("a.json"), "w", encoding="ascii") as file:
            json.dump({"profile": None, "sensors": [{"record": "01 00 51 01 FF", "entry": None}]}, file)
        self.assertIn(self.path("a.json") + ": record 1: its length byte 0xFF reaches beyond the slot",
                      self.refused(2, "list", "--from", self.path("a.json")))

    def test_a_record_id_that_looks_like_a_brace_is_no_json(self):
        data = self.json("list", "--from", self.file([full(0x7B, "Inlet")]))
        self.assertEqual(data["sensors"][0]["record_id"], 0x7B)

    def test_the_repository_of_our_own_story_is_a_source(self):
        self.out("add", "--board", TWO_SOCKET, "--root", self.path("root"), "--class", "psu-fru", "--slot", "2")
        self.out("add", "--board", TWO_SOCKET, "--root", self.path("root"), "--class", "temperature",
                 "--device-type", "gpu", "--slot", "1")
        data = self.json("list", "--from", self.path("root/repository.sdr"))
        self.assertEqual(([s["name"] for s in data["sensors"]], [r["name"] for r in data["set_aside"]]),
                         (["GPU_TEMP_01"], ["PSU2_FRU"]))

    def test_a_cache_of_freeipmi_begins_and_ends_as_its_own(self):
        # seven fixed bytes, the version of the commands with its digits turned, count, two stamps, a sum; size and sum at the end
        out = self.path("cache")
        self.out("export", "--from", self.mixed(), "--format", "freeipmi-cache", "-o", out)
        with open(out, "rb") as file:
            data = file.read()
        self.assertEqual(data[:19], bytes.fromhex("728c9d1f 00010002 15 0200") + bytes(8))
        self.assertEqual((sum(data[:20]) & 0xFF, sum(data) & 0xFF), (0, 0))
        self.assertEqual(data[20:-5], b"".join(SENSORS))
        self.assertEqual(int.from_bytes(data[-5:-1], "little"), len(data))

    def test_sources_that_are_none_are_wrong_input(self):
        for source, words in (("nowhere.dump", "neither a profile"), ("bmc://", "no host"), ("bmc://x:0", "'0' is no port"),
                              ("bmc://[::1:623", "no host"), ("bmc://x:623:1", "is no port")):
            self.assertIn(words, self.refused(2, "list", "--from", source), source)
        self.assertIn("--board is required, or --from SOURCE", self.refused(2, "list"))
        self.assertIn("--board is required", self.refused(2, "list", "--profile", "all"))
        self.assertIn("--profile all", self.refused(2, "list", "--profile", "all", "--from", self.mixed()))
        self.assertIn("--boards", self.refused(2, "check", "--boards", "boards", "--from", self.mixed()))


if __name__ == "__main__":
    main()
