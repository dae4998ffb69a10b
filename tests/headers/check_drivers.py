#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""The comment of each static driver names every sensor that the driver builds itself, counts records per part as the
profile's list does, and the sum of the largest one is STATIC_SLOT_MAX."""
import argparse
import os
import re
import sys

# Lines of a list (library/profiles/<profile>.def) that have no function: LABELLED and DRIVER.
LINE = re.compile(r"^(STATIC_TABLE|RACK_TABLE|CDU_TABLE|SINGLE|INDEXED|INDEX_LAST|LABELLED|DRIVER)\((.*)\)$", re.M)
PER_PART = {"CPU": {"kCpu", "kCpuMore"}, "PSU": {"kPsu"}, "DIMM": {"kDimm"}, "PCIe slot": {"kPcie"}, "fan": {"kFan"},
            "disk slot": {"kDisk", "kNvme"}, "backplane": {"kDiskGroup"}, "OCP card": {"kOcp", "kOcpError"},
            "switch chip": {"kSwitchChip"}}
# How many parts the library takes at most: counts are bytes, and 255 ends the pass for some of them; disk slots and
# backplanes as far as no slot is on two backplanes.
MOST = {"CPU": 255, "PSU": 254, "DIMM": 254, "PCIe slot": 254, "fan": 254, "disk slot": 255, "backplane": 32,
        "OCP card": 254, "switch chip": 255}
faults = []


def pattern(name):
    """The name as headers write it: # for a number, ## for two digits, (label) for a text."""
    return re.sub(r"%1?[duX]", "#", re.sub(r"%02[du]", "##", name)).replace("%s", "(label)")


def read_list(path):
    """(groups, names without a function)"""
    with open(path, encoding="utf-8") as source:
        rows = LINE.findall(source.read())
    groups, names = [], []
    for kind, arguments in rows:
        groups.append(arguments.split(",")[0] if kind not in ("STATIC_TABLE", "RACK_TABLE", "CDU_TABLE") else kind)
        if kind in ("LABELLED", "DRIVER"):
            # texts of refusals and announcements are no names
            shown = re.sub(r'(?:Refused|Announced)\("[^"]*"\)', "", arguments)
            names += [pattern(text) for text in re.findall(r'"([^"]+)"', shown)]
    return groups, names


def comment_of_driver(text):
    comment = re.search(r"/\*\*\n( \* Builds the whole static set.*?)\*/", text, flags=re.S)
    return " ".join(re.sub(r"^ \* ?", "", comment[1], flags=re.M).split())


def most_records(comment, path):
    """Parts and records per part, and all that do not go by a part."""
    told = re.search(r"Records at most, .*? need: (.*?)\. ", comment)[1]
    told = told.replace(" (or 1 per CPU under simplification)", "")
    per_part, fixed = {}, 0
    for item in re.split(r", | and ", told):
        count, rest = item.split(" ", 1) if " " in item else (item, "")
        if rest.startswith("per "):
            per_part[rest[len("per "):]] = int(count)
        else:
            fixed += int(count)
    for part in per_part:
        if part not in PER_PART:
            faults.append(f"{path}: nothing is known of a {part}")
    return per_part, fixed


parser = argparse.ArgumentParser(description=__doc__)
parser.add_argument("--include", required=True)
parser.add_argument("--lists", required=True, help="library/profiles")
arguments = parser.parse_args()

sums, looked_up = {}, 0
folder = os.path.join(arguments.include, "oxa", "profiles")
for name in sorted(os.listdir(folder)):
    profile = name.removesuffix(".h")
    with open(os.path.join(folder, name), encoding="utf-8") as source:
        driver = comment_of_driver(source.read())
    groups, names = read_list(os.path.join(arguments.lists, f"{profile}.def"))
    itself = driver[driver.index("Built by the driver itself"):]
    for sensor in names:
        looked_up += 1
        if f'"{sensor}"' not in itself:
            faults.append(f'{name}: the driver builds "{sensor}" itself, which its comment does not say')
    for sensor in set(re.findall(r'"([^"]+)"', itself)) - set(names):
        faults.append(f'{name}: the driver does not build "{sensor}" itself')
    per_part, fixed = most_records(driver, name)
    for part, count in per_part.items():
        listed = sum(group in PER_PART.get(part, ()) for group in groups)
        if listed != count:
            faults.append(f"{name}: the comment says {count} records per {part}, the list has {listed}")
    sums[profile] = fixed + sum(MOST.get(part, 0) * count for part, count in per_part.items())
with open(os.path.join(arguments.include, "oxa", "records.h"), encoding="utf-8") as source:
    slots = int(re.search(r"^#define STATIC_SLOT_MAX (\d+)u$", source.read(), flags=re.M)[1])
if max(sums.values()) != slots:
    faults.append(f"records.h: STATIC_SLOT_MAX is {slots}, the largest set {max(sums.values())} ({sums})")
assert len(sums) == 9 and looked_up > 100, f"{len(sums)} profiles, {looked_up} names: headers or lists were not read"
for line in faults:
    print(f"FAULT: {line}")
print(f"{len(sums)} profiles, {looked_up} sensors without a function, largest set {max(sums.values())}, "
      f"{len(faults)} faults")
sys.exit(1 if faults else 0)
