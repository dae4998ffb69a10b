#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Links the library's objects a second time, every symbol resolved, against a stub of the platform: a library
that defines the declared platform functions and nothing else."""
import argparse
import os
import tempfile

from common import declarations, run

parser = argparse.ArgumentParser(description=__doc__)
parser.add_argument("--cc", required=True)
parser.add_argument("--include", required=True)
parser.add_argument("objects", nargs="+")
arguments = parser.parse_args()

functions, _ = declarations(arguments.cc, arguments.include, "oxa/platform.h")
with tempfile.TemporaryDirectory() as directory:
    source, stub = os.path.join(directory, "stub.c"), os.path.join(directory, "libplatform.so")
    with open(source, "w", encoding="utf-8") as out:
        out.writelines(f"void {name}(void);\nvoid {name}(void) {{}}\n" for name in sorted(functions))
    run(arguments.cc, "-shared", "-fPIC", "-fno-builtin", "-o", stub, source)
    run(arguments.cc, "-shared", "-nostartfiles", "-Wl,-z,defs,--gc-sections,-Bsymbolic-functions", "-o",
        os.path.join(directory, "library.so"), *arguments.objects, stub)
print(f"{len(arguments.objects)} objects resolved by {len(functions)} platform functions and libc")
