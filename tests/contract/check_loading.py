#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""The shared object loads as docs/hardening.md says: libc alone and no new one, bound at load, read-only after it, no
executable stack, no guard that was not chosen.

--refusals instead of --library: small libraries, each with one of these faults, are found out."""
import argparse
import os
import tempfile

from common import fault, finish, run
from loading import faults_of

SOURCE = """
#include <string.h>
#include <stdlib.h>
extern int Far(char *text);
extern int (*const g_ptFar)(char *text);
int (*const g_ptFar)(char *text) = Far;
char g_acText[64];
char *Copy(const char *text, size_t length);
char *Copy(const char *text, size_t length) {
    char copy[64];
    memcpy(copy, text, length);
    Far(copy);
    return strchr(g_acText, copy[0]);
}
"""
RIGHT = ("-O2", "-fPIC", "-shared", "-nostartfiles", "-fno-stack-protector", "-U_FORTIFY_SOURCE",
         "-Wl,--hash-style=gnu,-z,relro,-z,now,-z,noexecstack")
NEW_CALL = """#include <sys/random.h>
extern long Random(void *to);
long Random(void *to) { return getrandom(to, 4, 0); }
"""
POINTER_IN_CODE = """__asm__(".text\\n.balign 8\\n.global Pointer\\nPointer: " WORD " g_acText\\n");
"""
# (a word of the fault that is found, options behind the right ones, text behind the source)
WRONG = (
    ("", (), ""),
    ("libm.so.6", ("-Wl,--no-as-needed", "-lm"), ""),
    ("RPATH", ("-Wl,-rpath,/opt",), ""),
    ("text relocations", ("-Wl,-z,notext",), POINTER_IN_CODE),
    ("not bound", ("-Wl,-z,lazy",), ""),
    ("RELRO", ("-Wl,-z,norelro",), ""),
    ("RELRO", (), "int g_iWritable = 5;\n"),
    ("executable stack", ("-Wl,-z,execstack",), ""),
    ("writable and executable", (), '__asm__(".section .wx,\\"awx\\"\\n.zero 8\\n.text\\n");\n'),
    ("__stack_chk_fail", ("-fstack-protector-strong",), ""),
    ("__memcpy_chk", ("-D_FORTIFY_SOURCE=2",), ""),
    ("GLIBC_2.25", (), NEW_CALL),
)


def check_refusals(args):
    with tempfile.TemporaryDirectory() as directory:
        source, library = os.path.join(directory, "tiny.c"), os.path.join(directory, "tiny.so")
        for word, options, text in WRONG:
            with open(source, "w", encoding="utf-8") as out:
                out.write(SOURCE + text)
            run(args.cc, *RIGHT, '-DWORD=".long"' if args.bits == 32 else '-DWORD=".quad"', *options, source, *options,
                "-o", library)
            found = list(faults_of(args.nm, args.readelf, library, args.glibc, None))
            if not any(word in line for line in found) if word else found:
                fault(f"{' '.join(options)} {text.strip()}: {found or 'no fault'}; expected: {word or 'none'}")
        parts = 1 + sum("LOAD" in line for line in run(args.readelf, "-lW", library).splitlines())
        if not any("parts" in line for line in faults_of(args.nm, args.readelf, library, args.glibc, parts)):
            fault("another number of parts is not found")
    print(f"{len(WRONG)} small libraries, {sum(bool(row[0]) for row in WRONG)} of them wrong")


parser = argparse.ArgumentParser(description=__doc__)
parser.add_argument("--nm", required=True)
parser.add_argument("--readelf", required=True)
parser.add_argument("--glibc", required=True, help="the newest symbol version that may be asked for")
parser.add_argument("--segments", type=int, help="how many segments are loaded")
parser.add_argument("--library")
parser.add_argument("--refusals", action="store_true")
parser.add_argument("--cc")
parser.add_argument("--bits", type=int)
arguments = parser.parse_args()
if arguments.refusals:
    check_refusals(arguments)
else:
    found_faults = list(faults_of(arguments.nm, arguments.readelf, arguments.library, arguments.glibc,
                                  arguments.segments))
    for line in found_faults:
        fault(line)
    if not found_faults:
        print(f"libc.so.6 alone, no newer than GLIBC_{arguments.glibc}, bound at load, read-only after it, no "
              "executable stack")
finish()
