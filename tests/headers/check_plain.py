#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""The public headers can be read without a preprocessor: functions and tables are declared plainly, and a profile's
generators stand in the order of its tables, as many as the comment, the table and its count say."""
import argparse
import os
import re
import sys

# Macros with arguments; the first three state layouts, the last one lets compilers look at formats.
MACROS = {"OXA_AT", "OXA_SIZE", "OXA_SASSERT", "PLAT_PRINTF"}
TYPE = r"(?:const )?(?:void|bool|char|int|size_t|u?int(?:8|16|32)_t|[A-Z][A-Za-z]+) \*?"
PLAIN = (
    re.compile(r"(?:typedef|enum)\b"),
    re.compile(r"(?:OXA_AT|OXA_SIZE|OXA_SASSERT)\("),
    re.compile(TYPE + r"\w+\([^()]*\)(?: PLAT_PRINTF\(\d, \d\))?$"),
    re.compile(r"extern (?:const )?\w+ \w+(?:\[\d+\])?$"),
)
faults = []


def without_comments(text):
    return re.sub(r"/\*.*?\*/", " ", text, flags=re.S)


def statements(text):
    """Statements at depth 0, bodies in braces dropped."""
    depth, current = 0, ""
    for char in text:
        if char == "{":
            depth += 1
        elif char == "}":
            depth -= 1
        elif char == ";" and depth == 0:
            yield " ".join(current.split())
            current = ""
        elif depth == 0:
            current += char


def check_plain(path, text):
    """How many declarations the header has."""
    code = re.sub(r"^#.*(?:\\\n.*)*$", "", without_comments(text), flags=re.M)
    code = re.sub(r'extern "C" \{', "", code)
    code = re.sub(r"^\}\s*$", "", code, flags=re.M)
    found = [statement for statement in statements(code) if statement]
    for statement in found:
        if not any(form.match(statement) for form in PLAIN):
            faults.append(f"{path}: not a plain declaration: {statement}")
    for name in re.findall(r"^#\s*define (\w+)\(", text, flags=re.M):
        if name not in MACROS:
            faults.append(f"{path}: macro {name} is none of {', '.join(sorted(MACROS))}")
    return len(found)


def check_tables(path, text):
    """How many tables the profile has."""
    groups = re.split(r"/\*\* \\name ", text)[1:]
    tables = 0
    for group in groups:
        title = group.split("*/")[0].strip()
        code = without_comments("/* " + group)
        rows = re.findall(r"^uint8_t (\w+)\(uint8_t \*pucSDRRec, DevTabEntry \*ptDEVTab\);", code, flags=re.M)
        table = re.search(r"extern const StaticGenFn (\w+)\[(\d+)\];\s*extern const uint8_t (\w+);", code)
        told = re.search(r": (\d+) rows, in this order$", title)
        if bool(table) != bool(told):
            faults.append(f'{path}: "{title}": a table and the words "N rows, in this order" belong together')
        if not table or not told:
            continue
        tables += 1
        counted = re.search(rf"Rows of #{table[1]}: (\d+)\.", group)
        numbers = {int(told[1]), len(rows), int(table[2]), int(counted[1]) if counted else None}
        if len(numbers) != 1:
            faults.append(f"{path}: {table[1]}: the comment says {told[1]} rows, {len(rows)} generators are declared, "
                          f"the table has {table[2]}, its count {counted[1] if counted else 'no number'}")
        if len(set(rows)) != len(rows):
            faults.append(f"{path}: {table[1]}: a generator stands twice")
        if code.index(table[0]) < max(code.index(f"{row}(") for row in rows):
            faults.append(f"{path}: {table[1]} stands before its generators")
    if tables == 0:
        faults.append(f"{path}: no table")
    return tables


parser = argparse.ArgumentParser(description=__doc__)
parser.add_argument("--include", required=True)
arguments = parser.parse_args()

declared, found_tables, headers = 0, 0, 0
for where, _, names in sorted(os.walk(arguments.include)):
    for name in sorted(name for name in names if name.endswith(".h")):
        header = os.path.relpath(os.path.join(where, name), arguments.include)
        with open(os.path.join(where, name), encoding="utf-8") as source:
            content = source.read()
        headers += 1
        declared += check_plain(header, content)
        if os.path.basename(where) == "profiles":
            found_tables += check_tables(header, content)
assert declared > 500 and found_tables >= 9, f"{declared} declarations, {found_tables} tables: headers were not read"
for line in faults:
    print(f"FAULT: {line}")
print(f"{headers} headers, {declared} declarations, {found_tables} generator tables, {len(faults)} faults")
sys.exit(1 if faults else 0)
