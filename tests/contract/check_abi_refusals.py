#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""contract.abi tells changes that break programs from those that do not: a small library is changed in one place at a
time, and each change must be found for what it is."""
import argparse
import itertools
import os
import tempfile

import abi
from common import fault, finish, run

# All of it in the header: types that are defined elsewhere are no business of other programs.
TINY = """
typedef enum { LOW, HIGH } Level;
typedef struct { unsigned char id; unsigned short value; } Row;
const Row g_atRows[3] = {{1, 2}};
unsigned char g_ucCount;
int Add(const Row *row, unsigned char index) { return row->value + 1; }
unsigned short Sum(void) { return g_atRows[0].value; }
Level Ask(Row row) { return row.value > 7 ? HIGH : LOW; }
"""
# (what is changed, what that is to programs, text before, text after)
CHANGES = (
    ("nothing", abi.SAME, "", ""),
    ("a body", abi.SAME, "> 7", "> 8"),
    ("the name of a parameter", abi.SAME, "unsigned char index", "unsigned char other"),
    ("a value of a table", abi.SAME, "{1, 2}", "{1, 9}"),
    ("a function more", abi.ADDED, "Level Ask", "int More(void) { return 1; }\nLevel Ask"),
    ("a table more", abi.ADDED, "unsigned char g_ucCount;", "unsigned char g_ucCount, g_aucMore[4];"),
    ("a parameter more", abi.BROKEN, "unsigned char index", "unsigned char index, int more"),
    ("a parameter less", abi.BROKEN, ", unsigned char index", ""),
    ("a wider parameter", abi.BROKEN, "unsigned char index", "long long index"),
    ("another result", abi.BROKEN, "unsigned short Sum", "unsigned char Sum"),
    ("a longer table", abi.BROKEN, "g_atRows[3]", "g_atRows[4]"),
    ("a shorter table", abi.BROKEN, "g_atRows[3]", "g_atRows[2]"),
    ("a wider object", abi.BROKEN, "unsigned char g_ucCount", "unsigned short g_ucCount"),
    ("members in another order", abi.BROKEN, "unsigned char id; unsigned short value;",
     "unsigned short value; unsigned char id;"),
    ("a member more", abi.BROKEN, "unsigned short value;", "unsigned short value; int more;"),
    ("a packed structure", abi.BROKEN, "} Row", "} __attribute__((packed)) Row"),
    ("another value of an enumerator", abi.BROKEN, "LOW, HIGH }", "LOW, HIGH = 2 }"),
    ("a function hidden", abi.BROKEN, "unsigned short Sum", '__attribute__((visibility("hidden"))) unsigned short Sum'),
    ("a function renamed", abi.BROKEN, "Sum(", "Total("),
    ("an object removed", abi.BROKEN, "unsigned char g_ucCount;", ""),
)


def dump_of(cc, directory, before="", after="", soname="libtiny.so.0"):
    header, source, library, out = (os.path.join(directory, name) for name in ("tiny.h", "tiny.c", "tiny.so", "new.abi"))
    if before and before not in TINY:
        fault(f"{before} is no part of the small library")
    for path, text in ((header, TINY.replace(before, after) if before else TINY), (source, '#include "tiny.h"\n')):
        with open(path, "w", encoding="utf-8") as file:
            file.write(text)
    run(cc, "-g", "-Os", "-fPIC", "-shared", "-nostdlib", f"-Wl,-soname,{soname}", "-o", library, source)
    abi.dump(library, directory, out)
    return out


def check_changes(cc, kept, directory):
    for what, expected, before, after in CHANGES:
        found, words = abi.compare(kept, dump_of(cc, directory, before, after))
        if found != expected:
            fault(f"{what}: taken for {found}, is {expected}: {words}")
        if (found == abi.SAME) != (not words):
            fault(f"{what}: {'nothing' if not words else 'something'} is said of it")


def check_advice():
    """A dump is replaced when programs break and the number moves, or when neither happens."""
    for change, new in itertools.product((abi.SAME, abi.ADDED, abi.BROKEN), ("libtiny.so.0", "libtiny.so.1")):
        refused = abi.what_to_do(change, "libtiny.so.0", new) is not None
        if refused != ((change == abi.BROKEN) != (new == "libtiny.so.1")):
            fault(f"{change}, libtiny.so.0 to {new}: {'refused' if refused else 'taken'}")


parser = argparse.ArgumentParser(description=__doc__)
parser.add_argument("--cc", required=True)
arguments = parser.parse_args()
with tempfile.TemporaryDirectory() as folder, tempfile.TemporaryDirectory() as first:
    first_dump = dump_of(arguments.cc, first)
    check_changes(arguments.cc, first_dump, folder)
    renamed_dump = dump_of(arguments.cc, folder, soname="libtiny.so.1")
    if abi.compare(first_dump, renamed_dump)[0] != abi.SAME or abi.soname(renamed_dump) != "libtiny.so.1":
        fault("another SONAME is taken for another shape")
check_advice()
print(f"{len(CHANGES)} changes, {sum(row[1] == abi.BROKEN for row in CHANGES)} of them break programs")
finish()
