#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""clang-format leaves every source as it is, and clang-tidy (.clang-tidy at the top) finds nothing in the library."""
import argparse
import json
import os
import subprocess
from concurrent.futures import ThreadPoolExecutor

from common import fault, finish

FORMATTED = ("library", "capture", "simulator", "workbench", "tests", "bench", "fuzz")
LIBRARY = ("library",)


def sources(top, rooms):
    for room in rooms:
        for where, _, names in sorted(os.walk(os.path.join(top, room))):
            yield from (os.path.join(where, name) for name in sorted(names) if name.endswith((".h", ".cpp", ".c")))


def check_format(path):
    done = subprocess.run(["clang-format", "--dry-run", "-Werror", path], capture_output=True, text=True)
    if done.returncode != 0:
        return f"{path} is not formatted: clang-format -i"
    return None


def check_tidy(path, build):
    done = subprocess.run(["clang-tidy", "--quiet", "-p", build, path], capture_output=True, text=True)
    if done.returncode != 0:
        return done.stdout.strip() or done.stderr.strip()
    return None


parser = argparse.ArgumentParser(description=__doc__)
parser.add_argument("--source", required=True)
parser.add_argument("--build", required=True, help="where compile_commands.json is")
parser.add_argument("--only", choices=("format", "tidy"))
arguments = parser.parse_args()

library = tuple(os.path.join(arguments.source, room) + os.sep for room in LIBRARY)
with open(os.path.join(arguments.build, "compile_commands.json"), encoding="utf-8") as commands:
    units = sorted({entry["file"] for entry in json.load(commands) if entry["file"].startswith(library)})
# include/ is left out: its tables are aligned by hand
formatted = list(sources(arguments.source, FORMATTED))
with ThreadPoolExecutor(os.cpu_count()) as pool:
    results = []
    if arguments.only != "tidy":
        results += pool.map(check_format, formatted)
    if arguments.only != "format":
        results += pool.map(lambda path: check_tidy(path, arguments.build), units)
for text in sorted(set(filter(None, results))):
    fault(text)
print(f"{len(formatted)} files formatted, {len(units)} units of the library read by clang-tidy")
finish()
