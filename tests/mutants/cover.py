# SPDX-License-Identifier: GPL-3.0-or-later
"""Which tests run which lines of the library, and how long each takes: every test runs once on a library that notes
its blocks."""
import bisect
import functools
import hashlib
import json
import os
import re
import shutil
import subprocess
import tempfile
import time
from concurrent.futures import ThreadPoolExecutor
from dataclasses import dataclass

from mutant import Workshop
from place import LIBRARY, bytes_of, run

TRACE_FLAGS = ["-O0", "-g1", "-fsanitize-coverage=trace-pc", "-Wno-error"]
# Checks of the shared object, the lists and the compile-time checks: they run no line, but notice what tests cannot.
CHECKS = ("contract.exports", "contract.imports", "contract.lists", "contract.refusals", "headers.drivers")
# Threads under a sanitizer, and what is about these mutants.
NOT_HERE = ("events_threads_tsan_test", "install.", "mutants.")
PATIENCE = 600  # seconds
NEVER = 1e9  # seconds of a test that cannot be traced
TOO_LONG = 5.0  # seconds of a test that is left out; that can only make more mutants survive


@dataclass
class Test:
    name: str
    command: list
    environment: list
    folder: str
    program: str = ""  # file in the build folder, when it is one of ours
    seconds: float = 0.0
    blocks: tuple = ()
    check: bool = False

    def run(self, settings, patience, replaced=lambda word: word):
        """Whether it passes."""
        environment = dict(os.environ)
        environment.update(replaced(one).split("=", 1) for one in self.environment)
        environment.update(settings)
        process = subprocess.Popen([replaced(word) for word in self.command], cwd=self.folder, env=environment,
                                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, stdin=subprocess.DEVNULL,
                                   start_new_session=True)
        try:
            return process.wait(patience) == 0
        except subprocess.TimeoutExpired:
            return False
        finally:
            end(process)


def end(process):
    """Ends a test and whatever it started."""
    try:
        os.killpg(process.pid, 9)
    except ProcessLookupError:
        pass
    process.wait()


def tests_of(place):
    for name, command, environment, folder in place.tests():
        if name.startswith(NOT_HERE) or name.startswith(("contract.", "headers.")) and name not in CHECKS:
            continue
        words = command + [one.split("=", 1)[1] for one in environment]
        ours = [os.path.relpath(word, place.build) for word in words
                if os.path.dirname(word) == place.build and os.access(word, os.X_OK) and ".so" not in os.path.basename(word)]
        yield Test(name, command, environment, folder, ours[0] if ours else "", check=name in CHECKS)


class Map:
    """Blocks of the traced library (addresses) and its lines: "file:line" -> numbers of blocks."""

    def __init__(self, blocks, lines):
        self.blocks, self.lines = blocks, {where: set(found) for where, found in lines.items()}

    def kept(self):
        return {"blocks": self.blocks, "lines": {where: sorted(found) for where, found in self.lines.items()}}

    def hit(self, trace):
        """A test whose processes may not write so long a file leaves a short one, or an empty one."""
        return tuple(n for n, at in enumerate(self.blocks) if at < len(trace) and trace[at])


def map_of(library, source):
    blocks, addresses, marks = [], [], False
    for line in run(["objdump", "-d", "--no-show-raw-insn", library], None).splitlines():
        instruction = re.match(r"\s*([0-9a-f]+):\s+(.*)", line)
        if not instruction:
            continue
        if marks:
            blocks.append(int(instruction[1], 16))
        marks = "<__sanitizer_cov_trace_pc" in instruction[2]
        addresses.append(int(instruction[1], 16))
    places = run(["addr2line", "-e", library], None, input="\n".join(f"{at:x}" for at in addresses)).splitlines()
    lines = {}
    for at, where in zip(addresses, places):
        line = line_of(where, source)
        block = bisect.bisect_right(blocks, at) - 1
        if line and block >= 0:
            lines.setdefault(line, set()).add(block)
    if not lines:
        raise SystemExit(f"{library}: no block of it belongs to a line of the sources")
    return Map(blocks, lines)


def line_of(where, source):
    """What addr2line says as "library/x.cpp:12"; empty when that is none of the sources.  A build may tell paths within
    the tree only."""
    path, _, number = where.split(" ")[0].rpartition(":")
    path = os.path.relpath(os.path.normpath(os.path.join(source, path)), source)
    return f"{path}:{number}" if number.isdigit() and number != "0" and not path.startswith("..") else ""


def trace_library(place, units, jobs):
    """Folder of a library that notes its blocks, and their map."""
    shop = Workshop(place, "trace", TRACE_FLAGS)
    notes = shop.path("objects", "trace.o")
    shop.do(["cc", "-O2", "-fPIC", "-c", os.path.join(place.tree, "tests", "mutants", "trace.c"), "-o", notes])
    with ThreadPoolExecutor(jobs) as workers:
        list(workers.map(shop.compile, [unit for unit in units.values() if unit.of_library()]))
    folder = shop.link_library([notes])
    return folder, map_of(os.path.join(folder, LIBRARY), shop.source)


def fingerprint(test, place, library):
    """What a test's trace depends on."""
    sum_ = hashlib.sha1(library.encode() + repr((test.command, test.environment)).encode())
    for word in test.command + [f"{place.build}/{test.program}"]:
        if os.path.isfile(word):
            sum_.update(digest_of(word))
    return sum_.hexdigest()


@functools.cache
def digest_of(path):
    return hashlib.sha1(bytes_of(path)).digest()


class Coverage:
    """Traces of all tests; those that are as they were are not run again."""

    def __init__(self, place, units, jobs, say):
        self.place, self.file, self.say = place, os.path.join(place.top, "coverage.json"), say
        library = place.digest("library", "include")
        known = json.loads(bytes_of(self.file)) if os.path.exists(self.file) else {}
        known = known if known.get("library") == library else {"tests": {}}
        tests = list(tests_of(place))
        prints = {test.name: fingerprint(test, place, library) for test in tests}
        new = [test for test in tests if known["tests"].get(test.name, [""])[0] != prints[test.name]]
        if new:
            say(f"which lines do {len(new)} tests run?")
            known.update(library=library, **self.trace_all(new, prints, units, jobs, known["tests"]))
            with open(self.file, "w", encoding="utf-8") as out:
                json.dump(known, out)
        self.map = Map(**known["map"])
        self.take(tests, known["tests"])

    def trace_all(self, new, prints, units, jobs, traces):
        workshop = os.path.join(self.place.top, "trace")
        shutil.rmtree(workshop, ignore_errors=True)  # of a run that was stopped
        folder, self.map = trace_library(self.place, units, jobs)
        with ThreadPoolExecutor(jobs) as workers:
            for test, found in zip(new, workers.map(lambda test: self.trace(test, folder), new)):
                traces[test.name] = [prints[test.name], *found]
        shutil.rmtree(workshop, ignore_errors=True)
        return {"map": self.map.kept(), "tests": traces}

    def take(self, tests, traces):
        self.tests, self.by_block = {}, {}
        for test in tests:
            _, test.seconds, test.blocks = traces[test.name]
            if test.seconds < TOO_LONG:
                self.tests[test.name] = test
                for block in test.blocks:
                    self.by_block.setdefault(block, set()).add(test.name)

    def trace(self, test, folder):
        with tempfile.TemporaryDirectory() as scratch:
            path = os.path.join(scratch, "trace")
            began = time.monotonic()
            settings = {} if test.check else {"LD_LIBRARY_PATH": folder, "OXA_MUTANTS_TRACE": path}
            if not test.run(settings, PATIENCE):
                return self.left_out(test)
            seconds = time.monotonic() - began
            return seconds, self.map.hit(bytes_of(path)) if os.path.exists(path) else ()

    def left_out(self, test):
        """What compares all that the library keeps in memory does not bear that its blocks are noted there."""
        if not test.run({}, PATIENCE):
            raise SystemExit(f"{test.name} fails without any change")
        self.say(f"left out, it fails where blocks are noted: {test.name}")
        return NEVER, ()

    def of_lines(self, file, first, last):
        """Names of the tests that run one of the lines; None where no code is."""
        found = [self.map.lines[f"{file}:{line}"] for line in range(first, last + 1)
                 if f"{file}:{line}" in self.map.lines]
        if not found:
            return None
        return {name for blocks in found for block in blocks for name in self.by_block.get(block, ())}

    def of_units(self, units, tree):
        """Names of the tests that run anything of units and the lists that they are made of."""
        files = {os.path.relpath(unit.source, tree) for unit in units}
        files |= {name for unit in units for name in unit.reads if name.endswith(".def")}
        return self.where(lambda name: name in files)

    def of_room(self, unit, tree):
        room = "/".join(os.path.relpath(unit.source, tree).split("/")[:2]) + "/"
        return self.where(lambda name: name.startswith(room))

    def where(self, is_wanted):
        blocks = {block for where, found in self.map.lines.items() if is_wanted(where.rpartition(":")[0])
                  for block in found}
        return {name for block in blocks for name in self.by_block.get(block, ())}
