#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""The name of the shared object, which sections and relocations it has, how big it is."""
import argparse
import os
import re
import tempfile
from collections import Counter

from common import declared_pointers, fault, figure, finish, run, sections

RELATIVE = {"R_ARM_RELATIVE", "R_X86_64_RELATIVE", "R_AARCH64_RELATIVE"}
BY_NAME = {"R_ARM_JUMP_SLOT", "R_ARM_GLOB_DAT", "R_X86_64_JUMP_SLO", "R_X86_64_JUMP_SLOT", "R_X86_64_GLOB_DAT",
           "R_AARCH64_JUMP_SLOT", "R_AARCH64_GLOB_DAT"}
ABSOLUTE = {"R_ARM_ABS32", "R_X86_64_64", "R_AARCH64_ABS64"}
FORBIDDEN = (".init_array", ".fini_array", ".preinit_array", ".ctors", ".dtors", ".init", ".fini", ".tdata", ".tbss",
             ".eh_frame", ".ARM.extab", ".gcc_except_table")


def check_name(args):
    """Programs find it by the name in it, linkers by the plain one."""
    names = re.findall(r"\(SONAME\).*\[(.*)\]", run(args.readelf, "-dW", args.library))
    if names != [args.soname]:
        fault(f"is called {names} instead of {args.soname}")
    folder, whole = os.path.split(args.library)
    for link in (args.soname, args.soname.rpartition(".")[0]):
        if os.path.realpath(os.path.join(folder, link)) != os.path.realpath(os.path.join(folder, whole)):
            fault(f"{link} does not lead to {whole}")


def check_relocations(args, declared):
    kinds = Counter(re.findall(r"\bR_[A-Z0-9_]+\b", run(args.readelf, "-rW", args.library)))
    for kind in sorted(set(kinds) - RELATIVE - BY_NAME - ABSOLUTE):
        fault(f"{kinds[kind]} relocations of kind {kind}")
    figure("relocations by absolute symbol address", sum(kinds[kind] for kind in ABSOLUTE), 0, "relocations")
    relative = sum(kinds[kind] for kind in RELATIVE)
    figure("RELATIVE relocations, the pointers of the declared tables", relative, declared + args.switch_pointers,
           "relocations")
    if relative < declared:
        fault(f"{relative} RELATIVE relocations for {declared} declared pointers: a table is not what its header says")


def stripped_size(args):
    with tempfile.TemporaryDirectory() as directory:
        copy = os.path.join(directory, "stripped.so")
        run(args.strip, "--strip-unneeded", "-o", copy, args.library)
        return os.path.getsize(copy)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--library", required=True)
    parser.add_argument("--readelf", required=True)
    parser.add_argument("--strip", required=True)
    parser.add_argument("--size-budget", type=int, required=True)
    parser.add_argument("--bss-budget", type=int, required=True)
    parser.add_argument("--soname", required=True, help="the name that programs ask for")
    parser.add_argument("--switch-pointers", type=int, default=0,
                        help="pointers more that a compiler may make of a switch between addresses")
    parser.add_argument("--cc", required=True)
    parser.add_argument("--include", required=True)
    arguments = parser.parse_args()

    check_name(arguments)
    sizes = {name: size for name, (_, size) in sections(arguments.readelf, arguments.library).items()}
    for name in FORBIDDEN:
        if sizes.get(name, 0):
            fault(f"has a section {name} of {sizes[name]} bytes")
    figure("shared object, whole and stripped", stripped_size(arguments), arguments.size_budget, "bytes")
    check_relocations(arguments, declared_pointers(arguments.cc, arguments.include))
    figure(".data", sizes.get(".data", 0), 0, "bytes")
    figure(".bss", sizes.get(".bss", 0), arguments.bss_budget, "bytes")
    finish()


if __name__ == "__main__":
    main()
