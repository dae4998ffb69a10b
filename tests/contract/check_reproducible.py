#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""The same sources and compiler make the same shared object, byte for byte, wherever it is built and whatever a packager
switches on or off: a second build of a copy, in folders of other names and another depth and with other flags before
ours, is compared with the first."""
import argparse
import re
import tempfile

from common import fault, finish, run
from second_build import built, copied

PACKAGER = {"CMAKE_CXX_FLAGS": "-fstack-protector-strong -fstack-clash-protection -D_FORTIFY_SOURCE=2",
            "CMAKE_SHARED_LINKER_FLAGS": "-Wl,-z,norelro,-z,lazy,-z,execstack"}


def with_packager(settings):
    """The same settings with a packager's flags behind those that each of them has."""
    for setting in settings:
        more = next((flags for name, flags in PACKAGER.items() if setting.startswith(f"-D{name}=")), None)
        yield f"{setting} {more}" if more else setting


def section_at(readelf, library, offset):
    for line in run(readelf, "-SW", library).splitlines():
        row = re.match(r"\s*\[\s*\d+\]\s+(\S+)\s+\S+\s+[0-9a-f]+\s+([0-9a-f]+)\s+([0-9a-f]+)", line)
        if row and 0 <= offset - int(row[2], 16) < int(row[3], 16):
            return row[1]
    return "no section"


def differences(readelf, first, second):
    """Sections in which two objects of the same shape differ, or what else tells them apart."""
    with open(first, "rb") as one, open(second, "rb") as other:
        one, other = one.read(), other.read()
    if len(one) != len(other):
        return [f"sizes, {len(one)} and {len(other)} bytes"]
    places = (at for at in range(len(one)) if one[at] != other[at])
    return list(dict.fromkeys(section_at(readelf, first, at) for _, at in zip(range(1000), places)))


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--library", required=True)
    parser.add_argument("--source", required=True)
    parser.add_argument("--cmake", required=True)
    parser.add_argument("--readelf", required=True)
    parser.add_argument("settings", nargs="*", help="-DNAME=VALUE: how the first one was built")
    arguments = parser.parse_args()

    with tempfile.TemporaryDirectory() as folder:
        copy, build = copied(arguments.source, folder)
        second = built(arguments.cmake, copy, build, ["-G", "Ninja", *with_packager(arguments.settings)])
        for what in differences(arguments.readelf, arguments.library, second):
            fault(f"two builds of the same sources differ: {what}")
        with open(second, "rb") as file:
            print(f"two builds compared, of {len(file.read()):,} bytes")
    finish()


if __name__ == "__main__":
    main()
