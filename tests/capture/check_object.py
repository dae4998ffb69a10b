#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""The recorder loads where the library loads: nothing but libc (and the libdl that old ones have apart), no newer symbol,
no heap, and no bigger than its budget."""
import argparse
import os
import subprocess
import re
import sys
import tempfile

sys.path.append(os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "contract"))
from common import dynamic_symbols, fault, figure, finish, run  # noqa: E402

HEAP = {"malloc", "calloc", "realloc", "free", "strdup", "aligned_alloc", "posix_memalign"}

parser = argparse.ArgumentParser(description=__doc__)
for name in ("library", "nm", "readelf", "strip"):
    parser.add_argument(f"--{name}", required=True)
parser.add_argument("--glibc", help="the newest symbol version that may be asked for")
parser.add_argument("--most", required=True, type=int, help="bytes of the stripped file")
arguments = parser.parse_args()

needed = set(re.findall(r"\(NEEDED\).*\[(.*)\]", run(arguments.readelf, "-dW", arguments.library)))
if not needed <= {"libc.so.6", "libdl.so.2"}:
    fault(f"needs {', '.join(sorted(needed))}")
if arguments.glibc and "libdl.so.2" not in needed:
    fault("does not ask for libdl.so.2, where old C libraries have dlsym")
names = {name for name, _ in dynamic_symbols(arguments.nm, arguments.library, "--undefined-only")}
for name in sorted(names & HEAP):
    fault(f"takes memory from the heap: {name}")
if any(name.startswith(("_ZS", "_ZN", "__cxa", "__gxx")) for name in names):
    fault("needs something of C++ at run time")
for version in re.findall(r"Name: GLIBC_([0-9.]+)", run(arguments.readelf, "-VW", arguments.library)):
    wanted = arguments.glibc or version
    if tuple(map(int, version.split("."))) > tuple(map(int, wanted.split("."))):
        fault(f"needs GLIBC_{version}")
with tempfile.TemporaryDirectory() as folder:
    stripped = os.path.join(folder, "stripped.so")
    subprocess.run([arguments.strip, "-o", stripped, arguments.library], check=True)
    figure("recorder, stripped", os.path.getsize(stripped), arguments.most, "bytes")
finish()
