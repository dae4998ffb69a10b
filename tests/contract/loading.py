# SPDX-License-Identifier: GPL-3.0-or-later
"""What a shared object asks of whoever loads it, and what is read-only or not executable once it is loaded."""
import re

from common import dynamic_symbols, run

GUARDS = re.compile(r"__stack_chk_\w+|__\w+_chk|__chk_fail|__fortify_fail")


def _segments(readelf, library):
    """[(kind, address, bytes in the file, rights)]"""
    row = re.compile(r"\s*(\w+)\s+0x[0-9a-f]+\s+0x([0-9a-f]+)\s+0x[0-9a-f]+\s+0x([0-9a-f]+)\s+0x[0-9a-f]+\s+([RWE ]{3})\s")
    rows = filter(None, map(row.match, run(readelf, "-lW", library).splitlines()))
    return [(found[1], int(found[2], 16), int(found[3], 16), found[4]) for found in rows]


def faults_of_dynamic(readelf, library):
    dynamic = run(readelf, "-dW", library)
    needed = re.findall(r"\(NEEDED\).*\[(.*)\]", dynamic)
    if needed != ["libc.so.6"]:
        yield f"needs {', '.join(needed) or 'nothing'} instead of libc.so.6 alone"
    if re.search(r"\((RPATH|RUNPATH)\)", dynamic):
        yield "says where its libraries are looked for (RPATH)"
    if re.search(r"\bTEXTREL\b", dynamic):
        yield "has text relocations"
    if not re.search(r"\(BIND_NOW\)|\bNOW\b", dynamic):
        yield "is not bound at load"


def faults_of_segments(readelf, library, segments):
    """segments: how many are loaded, None when the linker may choose."""
    rows = _segments(readelf, library)
    loads = [row for row in rows if row[0] == "LOAD"]
    if segments is not None and len(loads) != segments:
        yield f"is loaded in {len(loads)} parts instead of {segments}: constants and code share pages or not"
    if any("W" in rights and "E" in rights for _, _, _, rights in loads):
        yield "has a part that is writable and executable"
    if [rights for kind, _, _, rights in rows if kind == "GNU_STACK"] != ["RW "]:
        yield "asks for an executable stack, or does not say that it needs none"
    read_only_later = [(start, size) for kind, start, size, _ in rows if kind == "GNU_RELRO"]
    for _, start, size, rights in loads:
        if "W" in rights and (start, size) not in read_only_later:
            yield "keeps data writable that the loader has written (RELRO)"


def version_of(text):
    return tuple(map(int, text.split(".")))


def faults_of_symbols(nm, readelf, library, glibc):
    for name, _ in sorted(dynamic_symbols(nm, library, "--undefined-only")):
        if GUARDS.fullmatch(name):
            yield f"imports {name}: a guard that is switched off in cmake/library.cmake"
    wanted = re.findall(r"Name: (\w+?)_([0-9.]+|\w+)\s", run(readelf, "-VW", library))
    for system, version in wanted:
        if system != "GLIBC" or not re.fullmatch(r"[0-9.]+", version) or version_of(version) > version_of(glibc):
            yield f"needs {system}_{version}, newer than GLIBC_{glibc}"


def faults_of(nm, readelf, library, glibc, segments):
    yield from faults_of_dynamic(readelf, library)
    yield from faults_of_segments(readelf, library, segments)
    yield from faults_of_symbols(nm, readelf, library, glibc)
