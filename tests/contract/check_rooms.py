#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""The rooms of the library know each other in one direction only, and so do those of the workbench; profiles are told
apart in their own room only, and other programs of the tree read nothing of the library but its public headers and its
catalogues.  No source stands outside the rooms, and no header without a reader."""
import argparse
import os
import re

from common import fault, finish

# room -> the rooms that it may include, or reach through their public headers
MAY_KNOW = {
    "record": (),
    "store": ("record",),
    "thresholds": ("record",),
    "events": ("record",),
    "specific_sensors": ("record", "store", "thresholds"),
    "static_sensors": ("record", "store"),
    "profiles": ("record", "specific_sensors", "static_sensors"),
}
# The same for the workbench; its main.cpp knows base and commands.
WORKBENCH_MAY_KNOW = {
    "base": (),
    "replay": ("base",),
    "sets": ("base", "replay"),
    "explain": ("base", "sets"),
    "checks": ("base", "sets"),
    "serve": ("base", "sets"),
    "events": ("base", "sets"),
    "why": ("base", "sets", "runtime"),
    "compare": ("base", "sets", "explain"),
    "runtime": ("base", "sets", "events"),
    "sources": ("base", "replay", "sets", "runtime"),
    "lock": ("base", "sets", "runtime"),
    "fleet": ("base", "sets", "runtime", "sources", "lock"),
    "scenario": ("base", "events", "runtime"),
    "report": ("base", "sets", "explain", "compare", "lock", "sources", "why"),
    "sheet": ("base", "sets"),
    "thresholds": ("base", "sets", "runtime"),
    "doctor": ("base", "sets", "runtime", "thresholds"),
    "explore": ("base", "sets", "events", "runtime", "scenario", "thresholds", "doctor"),
    "commands": ("base", "sets", "explain", "checks", "serve", "events", "compare", "runtime", "lock", "fleet",
                 "scenario", "replay", "report", "sheet", "sources", "thresholds", "doctor", "explore", "why"),
    "main.cpp": ("base", "commands"),
}
PUBLIC = {"oxa/store.h": "store", "oxa/thresholds.h": "thresholds", "oxa/events.h": "events",
          "oxa/specific_sensors.h": "specific_sensors"}
# OXA_CheckifAddCpuSensorByIndex and SDR_GetSepcificFruSDRRecID are declared beside the store.
CATALOGUES = re.compile(r"library/\w+/(\w+_)?catalogue\.h$|library/record/(leakage_key|traits)\.h$|.*\.def$")
INCLUDE = re.compile(r'^\s*#\s*include\s*"([^"]+)"', re.M)
OTHERS = ("simulator", "workbench", "bench", "fuzz", "capture")
OUTSIDE_THE_WORKBENCH = ("oxa", "library", "simulator", "capture")
HOUSE = ("include", "library", *OTHERS, "tests")
# Read by programs outside the tree, and by CMake.
READ_ELSEWHERE = re.compile(r"include/oxa/(exports|platform)\.h$|tests/support/precompiled\.h$")


def sources(top):
    for where, _, names in sorted(os.walk(top)):
        yield from (os.path.join(where, name) for name in sorted(names) if name.endswith((".h", ".cpp", ".c", ".def")))


def text_of(path):
    with open(path, encoding="utf-8") as source:
        return source.read()


def check_library(top):
    arrows = set()
    for path in sources(os.path.join(top, "library")):
        shown = os.path.relpath(path, top)
        room = shown.split(os.sep)[1]
        text = text_of(path)
        for name in INCLUDE.findall(text):
            known = name.split("/")[1] if name.startswith("library/") else PUBLIC.get(name)
            if known is None or known == room:
                continue
            arrows.add((room, known))
            if known not in MAY_KNOW[room]:
                fault(f"{shown} includes {name}: {room} must not know {known}")
        if room != "profiles" and "CUSTOM_ID_" in text:
            fault(f"{shown} tests a profile id; what it asks belongs into the profiles' traits")
    return arrows


def check_workbench(top):
    arrows = set()
    bench = os.path.join(top, "workbench")
    for path in sources(bench):
        room = os.path.relpath(path, bench).split(os.sep)[0]
        shown = os.path.relpath(path, top)
        if room not in WORKBENCH_MAY_KNOW:
            fault(f"{shown} stands in no room of the workbench")
            continue
        for name in INCLUDE.findall(text_of(path)):
            known = name.split("/")[0]
            if known == room or known in OUTSIDE_THE_WORKBENCH:
                continue
            arrows.add((room, known))
            if known not in WORKBENCH_MAY_KNOW[room]:
                fault(f"{shown} includes {name}: {room} must not know {known}")
    return arrows


def check_others(top):
    for other in OTHERS:
        for path in sources(os.path.join(top, other)):
            for name in INCLUDE.findall(text_of(path)):
                if name.startswith("library/") and not CATALOGUES.match(name):
                    fault(f"{os.path.relpath(path, top)} includes {name}, which is no catalogue")


def check_strays(top):
    for folder in sorted(os.listdir(top)):
        if folder in HOUSE or folder == "build" or folder.startswith("."):
            continue
        for path in sources(os.path.join(top, folder)):
            fault(f"{os.path.relpath(path, top)} stands in none of {', '.join(HOUSE)}")
    paths = [path for folder in HOUSE for path in sources(os.path.join(top, folder))]
    read = {os.path.basename(name) for path in paths for name in re.findall(r'"([^"\s]+\.(?:h|def))"', text_of(path))}
    for path in paths:
        if path.endswith((".h", ".def")) and os.path.basename(path) not in read and not READ_ELSEWHERE.search(path):
            fault(f"{os.path.relpath(path, top)} is included by nothing")


parser = argparse.ArgumentParser(description=__doc__)
parser.add_argument("--source", required=True)
arguments = parser.parse_args()
library = check_library(arguments.source)
workbench = check_workbench(arguments.source)
check_others(arguments.source)
check_strays(arguments.source)
for house, rooms, found in (("library", MAY_KNOW, library), ("workbench", WORKBENCH_MAY_KNOW, workbench)):
    print(f"{house}: {len(rooms)} rooms, {len(found)} arrows: " + ", ".join(f"{a} > {b}" for a, b in sorted(found)))
finish()
