#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Every public header compiles alone, twice in a row, as C11 and as C++20, without a warning."""
import argparse
import os
import tempfile

from common import run

WARNINGS = ("-Wall", "-Wextra", "-Wpedantic", "-pedantic", "-Werror")

parser = argparse.ArgumentParser(description=__doc__)
parser.add_argument("--cc", required=True)
parser.add_argument("--cxx", required=True)
parser.add_argument("--include", required=True)
arguments = parser.parse_args()

headers = [os.path.relpath(os.path.join(where, name), arguments.include)
           for where, _, names in os.walk(arguments.include) for name in names if name.endswith(".h")]
assert headers, "no headers"
with tempfile.TemporaryDirectory() as directory:
    for header in sorted(headers):
        for compiler, standard, suffix in ((arguments.cc, "c11", "c"), (arguments.cxx, "c++20", "cpp")):
            source = os.path.join(directory, f"alone.{suffix}")
            with open(source, "w", encoding="utf-8") as out:
                out.write(f"#include <{header}>\n#include <{header}>\nextern int nothing;\n")
            run(compiler, f"-std={standard}", *WARNINGS, "-I", arguments.include, "-fsyntax-only", source)
            print(f"{header} as {standard}: ok")
