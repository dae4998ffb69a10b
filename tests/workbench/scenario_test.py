# SPDX-License-Identifier: GPL-3.0-or-later
"""oxa-sensors scenario: stories in memory.  What a step comes to follows from the rules, not from a run."""
import json
import os
import signal
import subprocess
import time

from support import SENSORS, SOURCE, Workbench, main

DAY = "scenarios/day.toml"
TEMP = 'class = "temperature", device_type = "nvme-disk", sub_type = 1, uc = 70'
STATUS = 'class = "disk-status", device_type = "nvme-disk", sub_type = 1, bitmap = 1'
GPU = 'class = "temperature", device_type = "gpu", slot = 1, uc = 100'
BOARD = '[board]\nid = 0x5481\n[[disks.backplane]]\nstart_slot = 0\ndisk_count = 24\n'


def step(*lines):
    return "[[step]]\n" + "\n".join(lines) + "\n"


def interruptible():
    """Whoever runs the tests may ignore signals (nohup, a shell's background)."""
    for one in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP):
        signal.signal(one, signal.SIG_DFL)


class Tests(Workbench):
    def story(self, *steps, profile="ferrisk", board=BOARD, head=""):
        self.board(board, "board.toml")
        return self.board(f'board = "board.toml"\nprofile = "{profile}"\n{head}' + "".join(steps), "story.toml")

    def run_story(self, *steps, code=0, **more):
        done = self.run_raw("scenario", self.story(*steps, **more), "--json")
        self.assertEqual((done.returncode, done.stderr.decode()), (code, ""), done.stdout.decode())
        return json.loads(done.stdout)

    def words(self, *steps, **more):
        """Outcomes of all steps, one after the other."""
        return [o["outcome"] for s in self.run_story(*steps, **more)["steps"] for o in s["outcomes"]]

    def names(self, told):
        return [(r["record_id"], r["name"]) for r in told["repository"]]

    # ---- the day ------------------------------------------------------------------------------------

    def test_the_day_goes_as_the_rules_say(self):
        told = self.json("scenario", DAY)
        self.assertEqual([s["step"] for s in told["steps"] if s["expected"] is False], [])
        self.assertEqual((told["as_expected"], told["violations"], told["differences"]), (True, [], []))

    def test_the_day_ends_with_the_records_that_the_rules_say(self):
        def disk(slot):  # slots 20 to 23 are at the rear
            rear = "_R" if slot > 19 else ""
            return f"NVME{slot}{rear}_Temp", f"NVME{slot}{rear}_Status"

        wanted = [name for slot in range(23) for name in disk(slot)] + [disk(23)[1]]
        wanted = list(enumerate(wanted + ["HGX UBB", "GPU1_Temp", "HGX UBB"], 1))
        wanted += [(53, "PSU2_FRU"), (54, "GPU2_Temp"), (55, disk(23)[0]), (56, "NEO CARD"), (57, "NIC_TEMP_04")]
        told = self.json("scenario", DAY)
        self.assertEqual(self.names(told), wanted)
        locators = {r["record_id"]: r["fru_id"] for r in told["repository"] if r["fru_id"] is not None}
        self.assertEqual(locators, {48: 36, 50: 35, 53: 18, 56: 36})
        self.assertEqual([e["bytes"] for e in told["events"]], [
            "00 00 E0 00 00 00 03 04 00 04 0D 00 6F A1 00 13", "00 00 C0 00 00 00 00 0A 00 04 08 00 6F A1 02 11"])
        self.assertEqual(sorted({s["life"] for s in told["steps"]}), [1, 2, 3])

    def test_the_text_of_the_day_tells_steps_and_both_ends(self):
        text = self.out("scenario", DAY)
        for part in ("A day of a storage server\nboard boards/two_socket_2u.toml, profile ferrisk\n",
                     "step 1: 23 NVMe disks come, each with temperature and status  [as expected]\n",
                     "46 times added: records 1 to 46, NVME0_Temp to NVME22_R_Status\n",
                     "refused, result 0x00C4: Out of space\n",
                     "Repository at the end: 55 records (27 full, 24 compact, 4 ",
                     "Event log at the end: 2 events\n", "all as expected\n"):
            self.assertIn(part, text)
        self.assertNotIn("info 42", text)

    def test_log_shows_the_lines_under_every_outcome(self):
        text = self.out("scenario", DAY, "--log")
        self.assertEqual(text.count("oxa_specific_sdr.c:# SDR_AddSpecificSensor: Add SDR: sensor device type: 0x100\n"),
                         23 + 1 + 1 + 1 + 2 + 2)  # disks, disk 23, GPUs, disk 3, disk 23 again, the last two
        self.assertIn("      extended store: slot 1, device 0xF2/4\n", text)
        self.assertIn("      record file: PSU_1 is record 51\n", text)

    # ---- lives --------------------------------------------------------------------------------------

    def test_a_registered_disk_is_registered_until_the_restart(self):
        add = step(f"add = {{ {TEMP}, slot = 3 }}", "record = false")
        self.assertEqual(self.words(add, add, step("restart = true"), add),
                         ["added", "already-registered", "no-thresholds", "added"])

    def test_the_status_of_a_registered_disk_is_another_sensor(self):
        self.assertEqual(self.words(step("slots = 3", f"add = [ {{ {TEMP} }}, {{ {STATUS} }} ]")), ["added", "added"])

    def test_files_and_repository_stay_and_ids_go_on_over_restarts(self):
        told = self.run_story(step('add = { class = "psu-fru", slot = 1 }'),
                              step('add = { class = "psu-fru", slot = 2 }'),
                              step("restart = true"), step('add = { class = "psu-fru", slot = 1 }'),
                              step("remove = { slot = 2 }"), step("restart = true"),
                              step('add = { class = "psu-fru", slot = 2 }'))
        self.assertEqual([o["outcome"] for s in told["steps"] for o in s["outcomes"]],
                         ["added", "added", "no-thresholds", "already-recorded", "removed", "no-thresholds", "added"])
        self.assertEqual(self.names(told), [(1, "PSU1_FRU"), (3, "PSU2_FRU")])

    def test_a_story_may_begin_with_a_restart(self):
        told = self.run_story(step('restart = { profile = "default" }'), step(f"add = {{ {GPU} }}"))
        self.assertEqual(self.names(told), [(1, "GPU_TEMP_01")])

    def test_user_thresholds_live_over_a_restart_and_not_over_a_profile(self):
        save = step('thresholds = { sensor = "GPU1_Temp", unc = 60, uc = 70, unr = 80 }')
        add = step(f"add = {{ {GPU} }}", "record = false")
        told = self.run_story(save, step("restart = true"), add, step('restart = { profile = "default" }'), add)
        self.assertEqual([o["outcome"] for s in told["steps"] for o in s["outcomes"]],
                         ["saved", "thresholds-loaded", "added", "thresholds-discarded", "added"])
        raws = [{k: v["raw"] for k, v in r["thresholds"].items() if v} for r in told["repository"]]
        self.assertEqual(raws, [{"unc": 60, "uc": 70, "unr": 80}, {"uc": 100}])

    def test_thresholds_that_cannot_be_written_are_told(self):
        save = step('thresholds = { sensor = "GPU1_Temp", uc = 70 }')
        self.assertEqual(self.words(step('fault = { call = "oxa_fopen_s" }'), save), ["done", "not-stored"])
        self.assertEqual(self.words(step('fault = { call = "MW_GetSensorThreshInfo" }'), save), ["done", "not-saved"])

    # ---- faults -------------------------------------------------------------------------------------

    def three_adds(self, fault, more=""):
        adds = [step(f'add = {{ class = "psu-fru", slot = {n} }}') for n in (1, 2, 3)]
        return self.words(step(f"fault = {{ call = \"IPMICMD_AddSDR\", result = 0xC4{fault} }}"),
                          adds[0], more, adds[1], adds[2])

    def test_a_fault_holds_until_it_is_cleared(self):
        self.assertEqual(self.three_adds(""), ["done", "refused", "refused", "refused"])
        self.assertEqual(self.three_adds("", step("clear_faults = true")),
                         ["done", "refused", "done", "added", "added"])

    def test_occurrences_count_from_the_step(self):
        self.assertEqual(self.three_adds(", occurrence = 1"), ["done", "refused", "added", "added"])
        self.assertEqual(self.three_adds(", occurrence = 2"), ["done", "added", "refused", "added"])
        self.assertEqual(self.three_adds(", occurrence = 2, from_then_on = true"), ["done", "added", "refused",
                                                                                    "refused"])

    def test_faults_hold_over_a_restart_and_go_on_counting(self):
        restart = step("restart = true")
        self.assertEqual(self.three_adds(", occurrence = 1", restart), ["done", "refused", "no-thresholds", "added",
                                                                        "added"])
        self.assertEqual(self.three_adds(", occurrence = 3", restart), ["done", "added", "no-thresholds", "added",
                                                                        "refused"])
        self.assertEqual(self.three_adds(', occurrence = 2, args = "len=24"', restart),
                         ["done", "added", "no-thresholds", "refused", "added"])
        self.assertEqual(self.three_adds(", occurrence = 2, from_then_on = true", restart),
                         ["done", "added", "no-thresholds", "refused", "refused"])

    def test_the_boards_own_faults_stay_in_force(self):
        board = BOARD + '[[fault]]\ncall = "IPMICMD_AddSDR"\nresult = 0xC3\n'
        add = step('add = { class = "psu-fru", slot = 1 }')
        self.assertEqual(self.words(add, step("clear_faults = true"), add, step("restart = true"), add, board=board),
                         ["refused", "done", "refused", "no-thresholds", "refused"])

    # ---- changes ------------------------------------------------------------------------------------

    def test_a_change_counts_from_its_step_on_and_over_restarts(self):
        fan = step('add = { class = "fan", device_type = "fan-plain", slot = 1, uc = 9 }', "record = false")
        self.assertEqual(self.words(fan, step("change = { board = { id = 0x5497 } }"), fan, step("restart = true"), fan,
                                    step("[step.change.board]", "id = 0x5481"), fan),
                         ["added", "done", "not-built", "no-thresholds", "not-built", "done", "added"])

    def test_a_change_replaces_lists_and_keeps_what_it_does_not_name(self):
        front = step(f"add = {{ {TEMP}, slot = 3 }}", "record = false")
        told = self.run_story(front,
                              step('change = { disks = { backplane = [ { start_slot = 0, disk_count = 24, location '
                                          '= "Rear" } ] } }'), step("restart = true"), front)
        self.assertEqual(self.names(told), [(1, "NVME3_Temp"), (2, "NVME3_R_Temp")])

    def test_a_change_of_files_is_written_there_and_then_and_once(self):
        told = self.run_story(
            step('change = { files = { "/var/SpecificSDRRec" = "[PSU_2]\\nsdrRecId=9\\nPresence=1\\n" } }'),
            step('add = { class = "psu-fru", slot = 2 }'), step("change = { psus = { count = 2 } }"),
                              step("restart = true"),
            step('add = { class = "psu-fru", slot = 2 }'), step("remove = { slot = 2 }"))
        self.assertEqual([(o["outcome"], o["code"]) for s in told["steps"] for o in s["outcomes"]],
                         [("done", 0), ("already-recorded", 0xFFFF), ("done", 0), ("no-thresholds", 0),
                          ("already-recorded", 0xFFFF), ("refused", 0xCB)])

    def test_the_boards_files_are_laid_down_at_the_first_start_only(self):
        board = BOARD + '[files]\n"/var/SpecificSDRRec" = "[PSU_1]\\nsdrRecId=7\\nPresence=1\\n"\n'
        add = step('add = { class = "psu-fru", slot = 1 }')
        forget = step('change = { files = { "/var/SpecificSDRRec" = "" } }')
        self.assertEqual(self.words(add, forget, step("restart = true"), add, board=board),
                         ["already-recorded", "done", "no-thresholds", "added"])

    # ---- conveniences -------------------------------------------------------------------------------

    def test_slots_are_a_number_a_range_or_a_list(self):
        for text, slots in (("5", [5]), ('"1-3"', [1, 2, 3]), ('[1, "4-5"]', [1, 4, 5])):
            with self.subTest(text):
                told = self.run_story(step(f"slots = {text}", f"add = {{ {TEMP} }}"))
                self.assertEqual([r["name"] for r in told["repository"]], [f"NVME{n}_Temp" for n in slots])

    def test_descriptions_of_one_slot_come_together(self):
        told = self.run_story(step('slots = "1-2"', f"add = [ {{ {TEMP} }}, {{ {STATUS} }} ]"))
        self.assertEqual([r["name"] for r in told["repository"]],
                         ["NVME1_Temp", "NVME1_Status", "NVME2_Temp", "NVME2_Status"])

    def test_a_step_can_be_repeated(self):
        self.assertEqual(self.words(step("repeat = 3", f"add = {{ {GPU} }}")),
                         ["added", "already-present", "already-present"])
        self.assertEqual(len(self.run_story(step("repeat = 5", 'event = "addPOSTErrorSel"'))["events"]), 5)

    def test_without_record_the_callers_part_is_not_done(self):
        for words in (step("record = false", f"add = {{ {GPU} }}") + step(f"add = {{ {GPU} }}"),):
            self.assertEqual(self.words(words), ["added", "added"])
        told = self.run_story(step('add = { class = "psu-fru", slot = 1 }'), step("remove = { slot = 1 }"),
                              head="record = false\n")
        self.assertEqual([o["outcome"] for s in told["steps"] for o in s["outcomes"]], ["added", "nothing-to-remove"])

    def test_events_that_a_machine_does_not_report_and_that_fail_are_told(self):
        fault = step('fault = { call = "IPMICMD_AddSELEntry" }')
        self.assertEqual(self.words(step('event = ["addPOSTErrorSel", "addMemError 1 14 0 0"]'), fault,
                                    step('event = "addPOSTErrorSel"')),
                         ["written", "not-reported", "done", "failed"])

    # ---- expectations -------------------------------------------------------------------------------

    def unexpected(self, expect, *more):
        told = self.run_story(step(f"add = {{ {GPU} }}", f"expect = {expect}", *more), code=1)
        self.assertFalse(told["as_expected"])
        self.assertFalse(told["steps"][0]["expected"])
        return told["steps"][0]["unexpected"]

    def test_every_kind_of_expectation_that_is_not_met_ends_with_1(self):
        subject = "temperature (0x0100), device type 2 (gpu), slot 1, bitmap 0x10, UC 100: "
        for expect, text in (('"refused"', subject + "added, result 0x0000, expected refused"),
                             ("{ code = 0xC4 }", subject + "result 0x0000, expected 0x00C4"),
                             ('{ name = "GPU2_Temp" }', subject + "GPU1_Temp, expected GPU2_Temp"),
                             ("{ uc = 89 }", subject + "threshold uc 88, expected 89"),
                             ("{ lc = 1 }", subject + "threshold lc none, expected 1"),
                             ("{ records = 2 }", "1 records, expected 2"), ("{ events = 1 }", "0 events, expected 1"),
                             ('{ log = "nowhere" }', subject + 'no such line in the log, expected "nowhere"')):
            with self.subTest(expect):
                self.assertEqual(self.unexpected(expect), [text])

    def test_what_is_met_is_not_told(self):
        expect = ('expect = { outcome = "added", code = 0, name = "GPU1_Temp", unc = 85, uc = 88, unr = 90, '
                  'records = 1, events = 0, log = "Name:GPU1_Temp." }')
        told = self.run_story(step(f"add = {{ {GPU} }}", expect))
        self.assertEqual((told["steps"][0]["expected"], told["as_expected"]), (True, True))

    def test_the_same_difference_is_told_once(self):
        path = self.story(step('slots = "1-9"', f"add = {{ {TEMP} }}", 'expect = "refused"'))
        done = self.run_raw("scenario", path)
        text = done.stdout.decode()
        self.assertEqual(done.returncode, 1)
        self.assertEqual(text.count("expected refused"), 1)
        self.assertIn("expected refused (9 times)", text)
        self.assertIn("step 1: add  [NOT as expected]", text)
        self.assertIn("1 of 1 NOT as expected: 1", text)

    def test_a_list_of_outcomes_goes_with_the_order(self):
        steps = [step("repeat = 2", f"add = {{ {GPU} }}", 'expect = ["added", "already-present"]')]
        self.assertTrue(self.run_story(*steps)["as_expected"])
        wrong = steps[0].replace('["added", "already-present"]', '["already-present", "added"]')
        self.assertEqual(len(self.run_story(wrong, code=1)["steps"][0]["unexpected"]), 2)

    # ---- kills --------------------------------------------------------------------------------------

    def test_a_power_supply_that_was_added_and_not_recorded_is_added_twice(self):
        """The repository has the record before the record file is saved: the second change of the step."""
        psu = 'add = { class = "psu-fru", slot = 1 }'
        told = self.run_story(step(psu, 'kill = { change = 2 }', 'expect = { outcome = "killed", records = 1 }'),
                              step("restart = true"), step(psu, 'expect = { outcome = "added", records = 2 }'))
        self.assertEqual(self.names(told), [(1, "PSU1_FRU"), (2, "PSU1_FRU")])
        self.assertEqual([s["life"] for s in told["steps"]], [1, 2, 2])

    def test_a_sensor_whose_slot_is_torn_is_added_twice(self):
        gpu = "add = { " + GPU + " }"
        self.assertEqual(self.words(step(gpu, "kill = { write = 1, percent = 50 }"), step("restart = true"), step(gpu)),
                         ["killed", "no-thresholds", "added"])
        self.assertEqual(self.words(step(gpu, "kill = { write = 2, percent = 0 }"), step("restart = true"), step(gpu)),
                         ["killed", "no-thresholds", "already-present"])  # the slot is whole, its entry is not

    def test_limits_that_are_killed_while_they_are_saved_are_lost(self):
        limits = 'thresholds = { sensor = "GPU1_Temp", uc = 80 }'
        steps = (step(limits, "kill = { write = 1, percent = 0 }"), step("restart = true"))
        self.assertEqual(self.words(*steps), ["killed", "thresholds-discarded"])  # an empty file is of profile 0
        self.assertEqual(self.words(*steps, profile="default"), ["killed", "thresholds-loaded"])

    def test_what_was_done_before_the_kill_is_told_and_stays(self):
        two = "add = [{ class = \"psu-fru\", slot = 1 }, { class = \"psu-fru\", slot = 2 }]"
        self.assertEqual(self.words(step('event = "addDiskSEL 4 1 19 0"'),
                                    step(two, "kill = { change = 3 }", 'expect = ["added", "killed"]'),
                                    step("restart = true", "expect = { events = 1, records = 1 }"),
                                    step(two, 'expect = ["already-recorded", "added"]')),
                         ["written", "added", "killed", "no-thresholds", "already-recorded", "added"])

    def test_a_process_that_outlives_its_step_is_told(self):
        path = self.story(step('add = { class = "psu-fru", slot = 1 }', "kill = { change = 3 }"))
        self.assertIn("step 1: the step is over and the process lives: it makes fewer changes",
                      self.refused(1, "scenario", path))

    def test_a_kill_is_checked(self):
        psu = 'add = { class = "psu-fru", slot = 1 }'
        for kill in ("{}", "{ change = 1, write = 1 }", "{ change = 1, percent = 5 }", "{ percent = 5 }"):
            with self.subTest(kill):
                self.assertIn("{ change = N } or { write = N, percent = N }",
                              self.refused(2, "scenario", self.story(step(psu, "kill = " + kill))))
        self.assertIn("it must be a table", self.refused(2, "scenario", self.story(step(psu, "kill = true"))))
        self.assertIn("does not go with 'restart'",
                      self.refused(2, "scenario", self.story(step("restart = true", "kill = { change = 1 }"))))
        self.assertIn("the process was killed in the step before",
                      self.refused(2, "scenario", self.story(step(psu, "kill = { change = 1 }"), step(psu))))

    # ---- wrong stories ------------------------------------------------------------------------------

    def wrong(self, line, *steps, **more):
        path = self.story(*steps, **more)
        told = self.refused(2, "scenario", path)
        self.assertTrue(told.startswith(f"oxa-sensors: {path}:{line}:"), told)
        return told

    def test_unknown_keys_get_the_nearest(self):
        self.assertIn("unknown key 'ad' in [[step]]; did you mean 'add'?", self.wrong(4, step(f"ad = {{ {GPU} }}")))
        self.assertIn("unknown key 'deviec_type' in [[step.add]]; did you mean 'device_type'?",
                      self.wrong(4, step('add = { class = "fan", deviec_type = 3 }')))
        self.assertIn("unknown key 'cuont' in [step.change.psus]; did you mean 'count'?",
                      self.wrong(4, step("change = { psus = { cuont = 1 } }")))
        self.assertIn("unknown key 'profil' in [step.restart]; did you mean 'profile'?",
                      self.wrong(4, step('restart = { profil = "default" }')))
        self.assertIn("unknown key 'kall' in [[step.fault]]; did you mean 'call'?",
                      self.wrong(4, step('fault = { kall = "IPMICMD_AddSDR" }')))
        self.assertIn("unknown key 'sensr' in [[step.thresholds]]; did you mean 'sensor'?",
                      self.wrong(4, step('thresholds = { sensr = "X" }')))
        self.assertIn("unknown key 'nam' in [step.expect]; did you mean 'name'?",
                      self.wrong(5, step(f"add = {{ {GPU} }}", 'expect = { nam = "X" }')))
        self.assertIn("unknown key 'bord' in the file", self.wrong(3, step("restart = true"), head="bord = 1\n"))

    def test_a_step_does_one_thing(self):
        self.assertIn("[[step]] says nothing that happens; give one of add, remove, change,",
                      self.wrong(3, step('name = "x"')))
        self.assertIn("[[step]] has both 'restart' and 'clear_faults'",
                      self.wrong(5, step("restart = true", "clear_faults = true")))

    def test_keys_that_do_not_go_with_a_step_are_told(self):
        for key, value in (("slots", "1"), ("record", "true"), ("repeat", "2")):
            with self.subTest(key):
                self.assertIn(f"'{key}' in [[step]] does not go with 'restart'",
                              self.wrong(5, step("restart = true", f"{key} = {value}")))

    def test_values_are_checked(self):
        self.assertIn("'slots' in [[step]] is the text \"1-\"", self.wrong(4, step('slots = "1-"',
                                                                                   f"add = {{ {TEMP} }}")))
        self.assertIn("it must be a slot number", self.wrong(4, step("slots = 256", f"add = {{ {TEMP} }}")))
        self.assertIn("holds slot 1 twice", self.wrong(4, step("slots = [1, 1]", f"add = {{ {TEMP} }}")))
        self.assertIn("gives a slot beside 'slots'", self.wrong(5, step("slots = 1", f"add = {{ {GPU} }}")))
        self.assertIn("'remove' in [[step]] has no key 'slot'; say which power", self.wrong(4, step("remove = { }")))
        self.assertIn("has no key 'class'", self.wrong(4, step("add = { slot = 1 }")))
        self.assertIn("'repeat' in [[step]] is 0", self.wrong(4, step("repeat = 0", f"add = {{ {GPU} }}")))
        self.assertIn("'restart' in [[step]] is false; it must be true or", self.wrong(4, step("restart = false")))
        self.assertIn("'clear_faults' in [[step]] is false; it must be true", self.wrong(4,
                                                                                         step("clear_faults = false")))
        self.assertIn("has no key 'sensor'", self.wrong(4, step("thresholds = { uc = 3 }")))
        self.assertIn("'uc' in [[step.thresholds]] is 256", self.wrong(4,
                                                                       step('thresholds = { sensor = "X", uc = 256 }')))
        self.assertIn("a text of 1 to 16", self.wrong(4, step('thresholds = { sensor = "12345678901234567", uc = 1 }')))

    def test_faults_that_cannot_act_are_told(self):
        self.assertIn("did you mean 'IPMICMD_AddSDR'?", self.wrong(4, step('fault = { call = "IPMICMD_AddSRD" }')))
        self.assertIn("this function cannot fail", self.wrong(4, step('fault = { call = "GetLiquidCoolingFlag" }')))

    def test_events_are_checked(self):
        self.assertIn("no call of a builder; ", self.wrong(4, step('event = "addDiskSELL 1 2 3 4"')))
        self.assertIn("addDiskSEL", self.wrong(4, step('event = "addDiskSEL 1 2"')))
        self.assertIn("a builder and its arguments", self.wrong(4, step("event = 3")))

    def test_changes_are_checked(self):
        self.assertIn("a running machine does not change its profile",
                      self.wrong(4, step("change = { board = { custom_id = 3 } }")))
        self.assertIn("a change sets no faults",
                      self.wrong(4, step('change = { fault = [ { call = "IPMICMD_AddSDR" } ] }')))
        self.assertIn("the board cannot become this ('silk' in [fans] numbers 3 fans",
                      self.wrong(4, step('change = { fans = { count = 2 } }'),
                                 board=BOARD + "[fans]\ncount = 3\nsilk = [1, 2, 3]\n"))

    def test_expectations_are_checked(self):
        self.assertIn("unknown outcome 'aded' in 'expect' in [[step]]; did you mean 'added'?",
                      self.wrong(5, step(f"add = {{ {GPU} }}", 'expect = "aded"')))
        self.assertIn("remove comes to removed, nothing-to-remove, not-removable, refused",
                      self.wrong(5, step("remove = { slot = 1 }", 'expect = "thresholds-loaded"')))
        self.assertIn("lists 2 outcomes; the step has 3",
                      self.wrong(6, step("slots = [1, 2, 3]", f"add = {{ {TEMP} }}", 'expect = ["added", "added"]')))
        self.assertIn("'expect' in [[step]] is 3", self.wrong(5, step(f"add = {{ {GPU} }}", "expect = 3")))
        self.assertIn("'uc' in [step.expect] is 300", self.wrong(5, step(f"add = {{ {GPU} }}",
                                                                         "expect = { uc = 300 }")))

    def test_the_head_of_a_story_is_checked(self):
        path = self.board(step("restart = true"), "story.toml")
        self.assertIn("the file has no key 'board'", self.refused(2, "scenario", path))
        self.story()
        path = self.board('board = "board.toml"\n', "story.toml")
        self.assertIn("the file has no key 'step'", self.refused(2, "scenario", path))
        self.assertIn("'profile' in the file is the text \"feris\"; it must be a number 0 to 4294967295 or",
                      self.wrong(2, step("restart = true"), profile="feris"))
        self.assertIn("'step' in the file is 3", self.wrong(3, "step = 3\n"))
        path = self.board('board = "nowhere.toml"\n' + step("restart = true"), "story.toml")
        told = self.refused(2, "scenario", path)
        self.assertTrue(told.startswith(f"oxa-sensors: {path}:1:9: 'board' in the file: "), told)
        self.assertIn("nowhere.toml cannot be read (No such file", told)

    def test_a_wrong_board_is_told_with_its_own_line(self):
        path = self.story(step("restart = true"), board="[cpus]\ncuont = 1\n")
        self.assertIn(self.path("board.toml") + ":2:1: unknown key 'cuont'", self.refused(2, "scenario", path))

    def test_a_story_that_cannot_be_read_is_told(self):
        self.assertIn("/nowhere/x.toml: cannot be read (No such file", self.refused(2, "scenario", "/nowhere/x.toml"))
        self.assertIn("broken TOML", self.wrong(4, step("add = = 3")))
        self.assertIn("FILE is required", self.refused(2, "scenario"))

    def test_a_bmc_that_is_not_there_is_told(self):
        self.assertIn("'x' is no port", self.refused(2, "scenario", DAY, "--bmc", "127.0.0.1:x"))

    # ---- the rest -----------------------------------------------------------------------------------

    def test_nothing_is_left_behind(self):
        self.run_raw("scenario", DAY, env={"TMPDIR": self.folder.name})
        self.assertEqual(os.listdir(self.folder.name), [])

    def test_the_board_is_looked_for_beside_the_story(self):

        done = subprocess.run([SENSORS, "scenario", os.path.join(SOURCE, DAY)], capture_output=True, cwd="/",
                              timeout=60,
                              check=False)
        self.assertEqual((done.returncode, done.stderr), (0, b""))

    def test_every_story_of_the_folder_goes_as_it_says(self):
        stories = [name for name in os.listdir(os.path.join(SOURCE, "scenarios")) if name.endswith(".toml")]
        self.assertIn("day.toml", stories)
        for name in stories:
            with self.subTest(name):
                self.out("scenario", f"scenarios/{name}")

    def test_the_example_of_the_readme_goes_as_it_says(self):
        with open(os.path.join(SOURCE, "scenarios", "README.md"), encoding="utf-8") as file:
            example = file.read().split("```toml\n")[1].split("```")[0]
        boards = os.path.join(SOURCE, "boards")
        path = self.board(example.replace('"../boards/', f'"{boards}/'), "example.toml")
        self.assertIn("2 steps, 2 with an expectation, all as expected", self.out("scenario", path))

    # ---- what is left in TMPDIR -------------------------------------------------------------------

    def begun(self):
        """A story that takes long, and the folder of temporary files in which its own now is."""
        os.makedirs(self.path("tmp"), exist_ok=True)
        path = self.story(*[step(f"add = {{ {GPU} }}", "repeat = 10000")] * 30)
        process = subprocess.Popen([SENSORS, "scenario", path], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                                   env=dict(os.environ, TMPDIR=self.path("tmp")), start_new_session=True,
                                   preexec_fn=interruptible)
        self.addCleanup(process.wait)
        self.addCleanup(process.kill)
        for _ in range(1000):
            if os.listdir(self.path("tmp")):
                break
            time.sleep(0.01)
        self.assertEqual(len(os.listdir(self.path("tmp"))), 1)
        self.assertIsNone(process.poll())
        return process

    def test_ctrl_c_leaves_nothing_behind(self):
        for how in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP):
            process = self.begun()
            os.killpg(process.pid, how)
            self.assertEqual(process.wait(timeout=20), -how)
            self.assertEqual(os.listdir(self.path("tmp")), [])

    def test_what_a_killed_story_left_goes_with_the_next_command(self):
        process = self.begun()
        process.kill()
        process.wait(timeout=20)
        for _ in range(1000):  # until its child is gone too
            self.run_raw("list", "--board", self.path("board.toml"), env={"TMPDIR": self.path("tmp")})
            if not os.listdir(self.path("tmp")):
                return
        self.fail(os.listdir(self.path("tmp")))

    def test_the_folder_of_a_story_that_runs_stays(self):
        process = self.begun()
        before = os.listdir(self.path("tmp"))
        self.run_raw("list", "--board", self.path("board.toml"), env={"TMPDIR": self.path("tmp")})
        self.assertIsNone(process.poll())
        self.assertEqual(os.listdir(self.path("tmp")), before)

    def test_help_names_every_option(self):
        text = self.out("scenario", "--help")
        for word in ("FILE", "--bmc", "--user", "--password", "--log", "--json", "Exit status"):
            self.assertIn(word, text)


if __name__ == "__main__":
    main()
