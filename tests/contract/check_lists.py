#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Every profile's list of sensors beside its public header: the same generators with the same shape, those of a table
in the table's order."""
import argparse
import os
import re

from common import fault, finish, same

SHAPES = {"STATIC_TABLE": "static", "RACK_TABLE": "static", "CDU_TABLE": "static", "SINGLE": "static",
          "INDEXED": "indexed", "INDEX_LAST": "index last"}
LINE = re.compile(r"^(STATIC_TABLE|RACK_TABLE|CDU_TABLE|SINGLE|INDEXED|INDEX_LAST)\(([^\"]*)", re.M)
DECLARATION = re.compile(r"uint8_t\s+(\w+)\s*\(([^)]*)\)\s*;")


def listed(path):
    """[(line, function)] in the order of the list"""
    with open(path, encoding="utf-8") as text:
        return [(line, words.split(",")[-2].strip()) for line, words in LINE.findall(text.read())]


def declared(path):
    """{function: shape} in the order of the header"""
    with open(path, encoding="utf-8") as source:
        text = re.sub(r"/\*.*?\*/", "", source.read(), flags=re.S)
    shapes = {}
    for name, arguments in DECLARATION.findall(text):
        kinds = ["byte" if "*" not in argument else "pointer" for argument in arguments.split(",")]
        shapes[name] = {("pointer", "pointer"): "static", ("byte", "pointer", "pointer"): "indexed",
                        ("pointer", "pointer", "byte"): "index last"}.get(tuple(kinds), "other")
    return shapes


parser = argparse.ArgumentParser(description=__doc__)
parser.add_argument("--lists", required=True, help="library/profiles")
parser.add_argument("--include", required=True)
arguments = parser.parse_args()

lists = sorted(name[:-len(".def")] for name in os.listdir(arguments.lists)
               if name.endswith(".def") and os.path.exists(os.path.join(arguments.lists, name[:-len("def")] + "cpp"))
               and name != "profiles.def")
if not lists:
    fault("no lists")
total = 0
for profile in lists:
    rows = listed(os.path.join(arguments.lists, profile + ".def"))
    header = declared(os.path.join(arguments.include, "oxa", "profiles", profile + ".h"))
    generators = {name: shape for name, shape in header.items() if shape != "other"}
    same(f"generator of {profile}.def", {name for _, name in rows}, set(generators), f"oxa/profiles/{profile}.h")
    for line, name in rows:
        if generators.get(name, SHAPES[line]) != SHAPES[line]:
            fault(f"{name} is {SHAPES[line]} in {profile}.def and {generators[name]} in its header")
    for table in ("STATIC_TABLE", "CDU_TABLE", "RACK_TABLE"):
        wanted = [name for line, name in rows if line == table]
        order = [name for name in header if name in wanted]
        if order != wanted:
            fault(f"oxa/profiles/{profile}.h does not have the order of {profile}.def in {table}")
    total += len(rows)
print(f"{len(lists)} lists, {total} generators")
finish()
