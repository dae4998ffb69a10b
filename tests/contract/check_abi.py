#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""The shape that other programs were compiled against (abi.py) is the one kept in armhf.abi.  It is read from a second
build of the same sources with -g, whose machine code is the shipped one's and which tells no folder.

--write takes the new shape over, unless that would break programs under the same SONAME, or move the SONAME where
none breaks."""
import argparse
import os
import shutil
import tempfile

import abi
from common import fault, finish, run
from second_build import built, copied

STRIP = "arm-linux-gnueabihf-strip"


def check_no_folder(library, folder):
    with open(library, "rb") as file:
        if folder.encode() in file.read():
            fault(f"the build with -g names the folder that it was built in: see cmake/library.cmake")


def code_of(library, folder):
    """The object as it is loaded; the build id is left out, it is made of debug information as well."""
    out = os.path.join(folder, "stripped.so")
    run(STRIP, "--strip-unneeded", "--remove-section=.note.gnu.build-id", "-o", out, library)
    with open(out, "rb") as file:
        return file.read()


def check(arguments, new):
    change, words = abi.compare(arguments.kept, new)
    names = abi.soname(arguments.kept), abi.soname(new)
    if change == abi.SAME and names[0] == names[1]:
        with open(new, encoding="utf-8") as file:
            print(f"{names[1]}: the shape of {file.read().count('elf-symbol-id=')} exported names is the kept one")
        return
    print(words)
    advice = abi.what_to_do(change, *names)
    fault(advice or f"{change}: {arguments.kept} is behind; scripts/abi-dump takes the new shape over")


def write(arguments, new):
    if os.path.exists(arguments.kept):
        names = abi.soname(arguments.kept), abi.soname(new)
        change, words = abi.compare(arguments.kept, new)
        print(f"{change} {words}".strip())
        advice = abi.what_to_do(change, *names)
        if advice:
            fault(advice)
            return
        if change == abi.SAME:
            return
    shutil.copyfile(new, arguments.kept)
    print(f"written: {arguments.kept}")


parser = argparse.ArgumentParser(description=__doc__)
parser.add_argument("--source", required=True)
parser.add_argument("--kept", required=True)
parser.add_argument("--cmake", default="cmake")
parser.add_argument("--library", help="the object as shipped, to be compared with")
parser.add_argument("--write", action="store_true")
options = parser.parse_args()

with tempfile.TemporaryDirectory() as directory:
    copy, build = copied(options.source, directory)
    with_debug = built(options.cmake, copy, build, ["--preset", "armhf", "-DCMAKE_CXX_FLAGS=-g"])
    check_no_folder(with_debug, directory)
    if options.library and code_of(with_debug, directory) != code_of(options.library, directory):
        fault("the build with -g has other machine code than the one shipped: its shape says nothing")
    shape = os.path.join(directory, "new.abi")
    abi.dump(with_debug, os.path.join(copy, "include"), shape)
    (write if options.write else check)(options, shape)
finish()
