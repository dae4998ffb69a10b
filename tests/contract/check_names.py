#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Exports and imports of the shared object: exactly what is declared, nothing else."""
import argparse

from common import declarations, dynamic_symbols, fault, finish, libc_names, same


def check_exports(args):
    functions, data = declarations(args.cc, args.include, "oxa/exports.h")
    visible = dynamic_symbols(args.nm, args.library, "--defined-only")
    same("exported name", {name for name, _ in visible}, functions | data, "oxa/exports.h")
    for name, letter in sorted(visible):
        if name in functions and letter != "T":
            fault(f"{name} is declared as a function and exported as '{letter}'")
        if name in data and letter not in "RDB":
            fault(f"{name} is declared as data and exported as '{letter}'")
    print(f"{len(functions)} declared functions and {len(data)} declared data objects, {len(visible)} exported names")


def check_imports(args):
    platform, _ = declarations(args.cc, args.include, "oxa/platform.h")
    imported = {name for name, _ in dynamic_symbols(args.nm, args.library, "--undefined-only")}
    libc = libc_names(args.libc_list, args.build)
    for name in sorted(imported - platform - libc):
        fault(f"{name} is imported and is neither a platform function nor in {args.libc_list}")
    for name in sorted(libc & platform):
        fault(f"{name} in {args.libc_list} is a platform function")
    for name in sorted(libc - imported):
        fault(f"{name} in {args.libc_list} is not imported by the {args.build} build")
    print(f"{len(imported & platform)} of {len(platform)} platform functions imported, "
          f"libc: {' '.join(sorted(imported & libc))}")


parser = argparse.ArgumentParser(description=__doc__)
parser.add_argument("what", choices=("exports", "imports"))
parser.add_argument("--library", required=True)
parser.add_argument("--include", required=True)
parser.add_argument("--cc", required=True)
parser.add_argument("--nm", required=True)
parser.add_argument("--libc-list")
parser.add_argument("--build", help="armhf, arm64, g++ or clang")
arguments = parser.parse_args()
{"exports": check_exports, "imports": check_imports}[arguments.what](arguments)
finish()
