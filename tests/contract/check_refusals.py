#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Mistakes in lists of sensors, kinds, names and device types stop the build: each is compiled here, and the compiler's
message must name the fault and show the line."""
import argparse
import os
import subprocess
import tempfile

from common import fault, finish

PROFILE = """
#include "library/profiles/profiles.h"
#include "library/static_sensors/pass.h"
using namespace oxa;
namespace {
constexpr ProfileNames kNames = NamesOf(CUSTOM_ID_DEFAULT);
constexpr PassOrder kPass = {.aeSteps = {STEPS}};
}
extern "C" {
uint8_t First(uint8_t *, DevTabEntry *);
uint8_t Second_(uint8_t *, DevTabEntry *);
}
#define OXA_SENSOR_LIST "LIST"
#include "library/static_sensors/sensors_of_list.h"
"""
LIST = '#include "library/static_sensors/list_begin.h"\n{}\n#include "library/static_sensors/list_end.h"\n'
INLET = 'STATIC_TABLE(kInletTemp, First, "Inlet", Limits({}))'
GOOD = 'STATIC_TABLE(kInletTemp, First, "Inlet")'

# fault, lines of a list, steps of the pass
LISTS = [
    ("", GOOD, "Step::kTable"),
    ("", INLET.format("{.unc = Celsius(40), .uc = Celsius(43)}"), "Step::kTable"),
    ("", 'STATIC_TABLE(kRail12V, First, "Rail", Limits({.uc = Rounded(Volts(14.53))}))', "Step::kTable"),
    ("sensor_name_longer_than_16_characters", 'STATIC_TABLE(kInletTemp, First, "A_name_of_17_char")', "Step::kTable"),
    # a number in hexadecimal may have two digits, or one where the pattern says so
    ("", 'DRIVER(kFan, kFanStatusHex, "A_name_of_15_ch%1X", Announced("Fan"))', "Step::kFans"),
    ("sensor_name_longer_than_16_characters", 'DRIVER(kFan, kFanStatusHex, "A_name_of_15_ch%X", Announced("Fan"))',
     "Step::kFans"),
    ("limits_out_of_order", INLET.format("{.unc = Celsius(51)}"), "Step::kTable"),
    ("limits_out_of_order", INLET.format("{.unc = Celsius(45), .uc = Celsius(45)}"), "Step::kTable"),
    ("limit_in_another_unit_than_the_reading", INLET.format("{.uc = Volts(48)}"), "Step::kTable"),
    ("limit_outside_the_range_of_a_count", INLET.format("{.unr = Celsius(128)}"), "Step::kTable"),
    ("limit_that_no_count_holds_exactly_say_Rounded", INLET.format("{.uc = Celsius(48.5)}"), "Step::kTable"),
    ("limits_of_a_sensor_that_has_none", 'STATIC_TABLE(kLeakage, First, "Leak", Limits({.uc = Celsius(48)}))',
     "Step::kTable"),
    ("row_says_the_same_as_its_kind", INLET.format("{.uc = Celsius(50)}"), "Step::kTable"),
    ("row_lacks_the_text_of_its_refusal", 'DRIVER(kCpu, kCpuVrTemp, "CPU%d_VR")', "Step::kCpus"),
    # a gate that names what it refuses: as it is, or with the index
    ("row_lacks_the_text_of_its_refusal", 'DRIVER(kCpu, kPchTemp, "PCH%d")', "Step::kCpus"),
    ("row_lacks_the_text_of_its_refusal", 'DRIVER(kCpu, kPowerFault, "Fault%d")', "Step::kCpus"),
    ("row_lacks_the_text_of_its_refusal", 'DRIVER(kCpu, kBoardPower, "Power%d")', "Step::kCpus"),
    ("row_lacks_the_text_of_its_refusal", 'DRIVER(kCpu, kSwitchTotalPower, "Volts%d")', "Step::kCpus"),
    ("row_lacks_the_text_of_its_refusal", 'DRIVER(kPsu, kPsuInputVolts, "Volts")', "Step::kPsus"),
    ("", 'DRIVER(kPsu, kPsuInputVolts, "Volts%d")', "Step::kPsus"),
    ("dimm_group_without_Announced", 'DRIVER(kDimmGroup, kDimmGroupTemp, "DIMMG%d_Temp")', "Step::kMemory"),
    ("sensor_name_twice_in_a_profile", GOOD + '\nSTATIC_TABLE(kOutletTemp, Second_, "Inlet")', "Step::kTable"),
    ("generator_twice_in_a_profile", GOOD + '\nSTATIC_TABLE(kOutletTemp, First, "Outlet")', "Step::kTable"),
    ("row_stands_outside_its_group", GOOD + '\nDRIVER(kDisk, kDiskStatus, "D%d")\n'
     'STATIC_TABLE(kOutletTemp, Second_, "Outlet")', "Step::kTable, Step::kDisks"),
    ("row_of_a_group_that_no_step_of_the_profile_walks", GOOD, "Step::kDisks"),
    ("step_without_the_rows_that_it_walks", GOOD, "Step::kTable, Step::kFans"), # of no line: the pass is wrong
    ("step_without_the_rows_that_it_walks", GOOD, "Step::kTable, Step::kLiquidCooling}, .ucCduFans = {6"),
    ("First", 'STATIC_TABLE(kNoSuchKind, First, "Inlet")', "Step::kTable"),
]

# Each group with the step that walks its rows: without the step the build stops, with it it does not.
GROUPS = {
    "kRackTable": "kRackBoard", "kCduTable": "kLiquidCooling", "kCduFan": "kLiquidCooling",
    "kCduSupply": "kLiquidCooling", "kSwitchPower": "kSwitchCard", "kSwitchTemp": "kSwitchCard",
    "kSwitchAir": "kSwitchAir", "kCpu": "kCpus", "kCpuMore": "kCpus", "kCpuDomain": "kCpuDomains", "kPsu": "kPsus",
    "kPsuRedundancy": "kPsus", "kDimm": "kMemory", "kDimmGroup": "kMemory", "kPcie": "kPcie", "kFan": "kFans",
    "kDisk": "kDisks", "kNvme": "kDisks", "kDiskGroup": "kDisks", "kOcp": "kOcp", "kOcpError": "kOcp",
    "kPowerModule": "kPowerModules", "kUbbRetimer": "kUbbRetimers", "kSwitchChip": "kSwitchChips",
    "kGpuRail": "kGpuRails", "kLanSwitch": "kLanSwitch",
}

BAD_PATTERN = "name_pattern_is_empty_or_unprintable"
SNIPPETS = [
    ("IsAsLongAsDeclared", '#include "library/static_sensors/pass.h"\nuint8_t Generate(uint8_t *, DevTabEntry *);\n'
     'extern const StaticGenFn atTable[2];\nconstexpr StaticGenFn atTable[] = {Generate};\n'
     'static_assert(oxa::IsAsLongAsDeclared(atTable));\n'),
    (BAD_PATTERN, '#include "library/specific_sensors/name_tables.h"\nusing namespace oxa::snr;\n'
     'constexpr SnrInfoRec kNames[] = {Name(kClassTemp, kGpu, kMain, "")};\n'),
    *[(wanted, '#include "library/specific_sensors/name_tables.h"\nusing namespace oxa::snr;\n'
       f'constexpr SnrInfoRec kNames[] = {{Name(kClassTemp, kGpu, kMain, "{name}")}};\n')
      for name, wanted in ((" ~", ""), ("16_characters_~~", ""), ("17_characters_~~~", BAD_PATTERN),
                           ("A\\x1F\" \"B", BAD_PATTERN), ("A\\x7F", BAD_PATTERN), ("A\\0B", BAD_PATTERN))],
    ("name_table_holds_a_key_twice", '#include "library/specific_sensors/name_tables.h"\nusing namespace oxa::snr;\n'
     'constexpr SnrInfoRec kNames[] = {Name(kClassTemp, kGpu, kMain, "A"), Name(kClassTemp, kGpu, kMain, "B")};\n'
     'static_assert(CheckNames(kNames, false));\n'),
    ("name_pattern_prints_more_than_16_characters", '#include "library/specific_sensors/name_tables.h"\n'
     'using namespace oxa::snr;\nconstexpr SnrInfoRec kNames[] = {Name(kClassTemp, kGpu, kMain, "A_name_of_16_ch*")};\n'
     'static_assert(CheckNames(kNames, true));\n'),
    ("exponent_out_of_range", '#include "library/static_sensors/kinds/shapes.h"\n'
     'constexpr oxa::SensorKind t = oxa::Analog(oxa::kEntityDisk, oxa::ReadsVolts(1, 8), {});\n'),
    ("limits_out_of_order", '#include "library/static_sensors/kinds/shapes.h"\nconstexpr oxa::SensorKind t = '
     'oxa::Full({.tReading = oxa::kReadsCelsius, .tLimits = {.unc = oxa::Celsius(9), .uc = oxa::Celsius(8)}}, {});\n'),
    ("no_profile_of_that_id_has_a_driver", '#include "library/profiles/profiles.h"\n'
     'constexpr auto t = oxa::NamesOf(CUSTOM_ID_SABLIN);\n'),
    ("value_is_not_in_the_builders_list", '#include "library/events/builders.h"\nusing namespace oxa::sel;\n'
     'constexpr auto kValues = List(kReason);\n'
     'constexpr auto t = MakeBuilder("x", FailText::kFail, kValues, Data2(kSlotNum));\n'),
]


def compiles(args, source):
    done = subprocess.run([args.cxx, "-std=c++20", "-fsyntax-only", "-I", args.source, "-I",
                           os.path.join(args.source, "include"), "-I", os.path.dirname(source), source],
                          capture_output=True, text=True)
    return done.returncode == 0, done.stderr


def check(args, wanted, source, line):
    good, message = compiles(args, source)
    shown = " ".join(line.split())
    if not wanted:
        if not good:
            fault(f"{shown}\n  does not compile: {message[:400]}")
    elif good:
        fault(f"{shown}\n  compiles, and should stop with {wanted}")
    elif wanted not in message:
        fault(f"{shown}\n  stops without {wanted}: {message[:400]}")
    elif args.shown not in message:
        fault(f"{shown}\n  stops with {wanted}, but the message does not say where")


def check_groups(args, directory, source):
    """A row of every group, and a pass that walks none of them, or all but those of one step."""
    rows = {group: f'DRIVER({group}, kPsuTemp, "{group[1:15]}%d", Announced("x"))' for group in GROUPS}
    with open(os.path.join(directory, "wrong.def"), "w", encoding="utf-8") as out:
        out.write(LIST.format("\n".join(rows.values())))
    for left_out in sorted(set(GROUPS.values())):
        steps = [f"Step::{step}" for step in sorted(set(GROUPS.values())) if step != left_out]
        with open(source, "w", encoding="utf-8") as out:
            out.write(PROFILE.replace("STEPS", ", ".join(steps)).replace('"LIST"', '"wrong.def"'))
        _, message = compiles(args, source)
        message = message.replace('\\"', '"') # as clang shows the texts of a refusal
        refused = {line for line in message.splitlines() if "row_of_a_group_that_no_step_of_the_profile_walks" in line}
        for group, step in GROUPS.items():
            named = any(f'"{group[1:15]}%d"' in line for line in refused)
            if named != (step == left_out):
                fault(f"{group}: {'refused' if named else 'taken'} by a pass without {left_out}: {message[:400]}")


parser = argparse.ArgumentParser(description=__doc__)
parser.add_argument("--cxx", required=True)
parser.add_argument("--source", required=True)
arguments = parser.parse_args()

with tempfile.TemporaryDirectory() as directory:
    source = os.path.join(directory, "wrong.cpp")
    for expected, lines, steps in LISTS:
        with open(os.path.join(directory, "wrong.def"), "w", encoding="utf-8") as out:
            out.write(LIST.format(lines))
        with open(source, "w", encoding="utf-8") as out:
            out.write(PROFILE.replace("STEPS", steps).replace('"LIST"', '"wrong.def"'))
        arguments.shown = "wrong.cpp" if expected.startswith("step_") else "wrong.def"
        check(arguments, expected, source, lines)
    check_groups(arguments, directory, source)
    arguments.shown = "wrong.cpp"
    for expected, text in SNIPPETS:
        with open(source, "w", encoding="utf-8") as out:
            out.write(text)
        check(arguments, expected, source, text.splitlines()[-1])
ALL = LISTS + SNIPPETS
print(f"{len(ALL)} lists and snippets, {sum(bool(row[0]) for row in ALL)} of them wrong")
finish()
