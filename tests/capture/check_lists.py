#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""The recorder stands before every function that the headers name: before all that the library imports, and before all
that it exports but the generators and what is worked out from its arguments alone."""
import argparse
import os
import re
import sys

sys.path.append(os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "contract"))
from common import declarations, dynamic_symbols, fault, finish, libc_names  # noqa: E402

# Asks no platform and keeps nothing; or gets a pointer into the library's tables (getNameInfo).
OF_ITS_ARGUMENTS_ALONE = {
    "ConvertIntToUnsignedChar", "GetPurchaseCardName", "GetVoltAccuracy", "getNameInfo", "getSilkInfo", "getentityid",
    "modifyEntityInstance", "strrpc", "useBrenmorSensorIndex"}
GENERATOR = re.compile(r"Gen[A-Z]\w*SDR$|\w+_Gen\w+$")
# Of the C library: what answers something about the machine.
NO_ANSWER = {"__errno_location", "bcmp", "memcmp", "memcpy", "memset"}

parser = argparse.ArgumentParser(description=__doc__)
for name in ("source", "cc", "nm", "library"):
    parser.add_argument(f"--{name}", required=True)
arguments = parser.parse_args()
include = os.path.join(arguments.source, "include")
exported, _ = declarations(arguments.cc, include, "oxa/exports.h")
imported, _ = declarations(arguments.cc, include, "oxa/platform.h")
libc = libc_names(os.path.join(arguments.source, "tests", "contract", "libc_imports.txt"), "armhf") - NO_ANSWER
wanted = imported | libc | {
    name for name in exported if not GENERATOR.match(name)} - OF_ITS_ARGUMENTS_ALONE
found = {name for name, _ in dynamic_symbols(arguments.nm, arguments.library, "--defined-only")}
for name in sorted(wanted - found):
    fault(f"the recorder does not stand before {name}")
for name in sorted(found - wanted):
    fault(f"the recorder shows {name}, which the library neither imports nor exports as an entry")
print(f"{len(found)} functions")
finish()
