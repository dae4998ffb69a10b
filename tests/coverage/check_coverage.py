#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Every line, every branch and every condition of the library has run, but for the listed exceptions.

Reads the counters that the tests left (LLVM_PROFILE_FILE) through llvm-cov's export, adds up what the same place in
the sources did in all objects and instantiations, and names each gap as file:line:column with its text.  docs/proof.md
says what counts.
"""
import argparse
import json
import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
CODE, EXPANSION = 0, 1  # kinds of regions in the export
EXCEPTIONS_MAX = 10


class Sources:
    def __init__(self, root):
        self.root = root
        self.lines = {}

    def own(self, path):
        return path.startswith(f"{self.root}/library/")

    def name(self, path):
        return str(pathlib.Path(path).relative_to(self.root))

    def line(self, path, number):
        if path not in self.lines:
            self.lines[path] = pathlib.Path(path).read_text().splitlines()
        return self.lines[path][number - 1]

    def text(self, path, span):
        first, column, last, end = span
        return self.line(path, first)[column - 1 : end - 1 if last == first else None]

    def for_the_compiler(self, function):
        """Whether a function that no object holds code of is marked as one that the compiler may run: it has run when
        the library was built.  Any other function without code is dead."""
        path, (first, column, *_) = function["filenames"][0], function["regions"][0]
        self.line(path, first)
        lines = self.lines[path]
        head = lines[first - 1][: column - 1]
        while first > 1 and not re.search(r"[;}]\s*$", lines[first - 2]) and lines[first - 2].strip():
            first -= 1
            head = lines[first - 1] + " " + head
        return re.search(r"\bconst(expr|eval)\b", head) is not None

    def lacks_only_a_default(self, path, span):
        """Whether this is the condition of a switch without a default over a scoped enumeration: the build stops
        (-Wall -Werror) unless every enumerator has its case, so that no value is left for the branch past them."""
        self.line(path, 1)
        before = self.line(path, span[0])[: span[1] - 1]
        if not before.rstrip().endswith("switch ("):
            return False
        rest = "\n".join(self.lines[path][span[0] - 1 :])
        depth, end = 0, len(rest)
        for match in re.finditer(r"[{}]", rest):
            depth += 1 if match.group() == "{" else -1
            if depth == 0:
                end = match.end()
                break
        labels = re.findall(r"\b(default|case [^:]+(?:::\w+)*):(?!:)", rest[:end])
        return bool(labels) and all(re.fullmatch(r"case \w+::\w+", label) for label in labels)


class Places:
    """What happened at each place.  A place in a macro or a list is told apart by the lines that use it."""

    def __init__(self, sources, with_code):
        self.sources = sources
        self.with_code = with_code  # names of functions
        self.regions = {}
        self.branches = {}
        self.decisions = {}

    def add(self, function):
        if function["name"] not in self.with_code and self.sources.for_the_compiler(function):
            return
        files = function["filenames"]
        used_at = {r[6]: (r[5], tuple(r[:4])) for r in function["regions"] if r[7] == EXPANSION}

        def place(file, span):
            chain = [(files[file], tuple(span))]
            while file in used_at:
                file, at = used_at[file]
                chain.append((files[file], at))
            return tuple(chain) if any(self.sources.own(path) for path, _ in chain) else None

        for region in function["regions"]:
            if region[7] == CODE and tuple(region[:2]) != tuple(region[2:4]):
                self.count(self.regions, place(region[5], region[:4]), [region[4]])
        for branch in function["branches"]:
            self.count(self.branches, place(branch[6], branch[:4]), branch[4:6])
        for decision in function["mcdc_records"]:
            # the export says no file: it is that of the first condition, which starts where the decision does
            file = next((b[6] for b in function["branches"] if b[:2] == decision[:2]), 0)
            self.count(self.decisions, place(file, decision[:4]), decision[6])

    @staticmethod
    def count(where, key, counts):
        if key is None:
            return
        old = where.get(key, [0] * len(counts))
        where[key] = [a + b for a, b in zip(old, counts, strict=True)]

    def gaps(self):
        for key, (count,) in self.regions.items():
            if not count:
                yield key, "never ran"
        for key, (true, false) in self.branches.items():
            if not true and not self.sources.lacks_only_a_default(*key[0]):
                yield key, "never true"
            if not false:
                yield key, "never false"
        for key, shown in self.decisions.items():
            for number, covered in enumerate(shown, 1):
                if not covered:
                    yield key, f"condition {number} of {len(shown)} never decides alone"

    def lines(self):
        """Lines that hold code, and those of them where all of it ran."""
        ran = {}
        for key, (count,) in sorted(self.regions.items(), key=lambda item: item[0][0][1][0]):
            path, (first, _, last, _) = key[0]
            for line in range(first, last + 1):
                ran[path, line] = (ran.get((path, line), True) if line == first else True) and bool(count)
        return sum(ran.values()), len(ran)

    def figures(self):
        sides = [
            bool(count)
            for key, counts in self.branches.items()
            for count in (counts[1:] if self.sources.lacks_only_a_default(*key[0]) else counts)
        ]
        conditions = [bool(c) for shown in self.decisions.values() for c in shown]
        return {
            "lines": self.lines(),
            "regions": (sum(bool(c[0]) for c in self.regions.values()), len(self.regions)),
            "branches": (sum(sides), len(sides)),
            "conditions (MC/DC)": (sum(conditions), len(conditions)),
        }


class Exceptions:
    def __init__(self, path):
        lines = path.read_text().splitlines()
        self.entries = [line for line in lines if line.strip() and not line.startswith("#")]
        self.met = set()
        self.faults = []
        if len(self.entries) > EXCEPTIONS_MAX:
            self.faults.append(f"{len(self.entries)} exceptions, at most {EXCEPTIONS_MAX} are allowed")
        for entry in self.entries:
            if len(entry.split(": ", 2)) != 3:
                self.faults.append(f"not 'file: what cannot be reached: reason': {entry}")

    def covers(self, file, line):
        for entry in self.entries:
            parts = entry.split(": ", 2)
            if len(parts) == 3 and parts[0] == file and parts[1] in line:
                self.met.add(entry)
                return True
        return False

    def unmet(self):
        return [f"exception without a gap: {entry}" for entry in self.entries if entry not in self.met]


def functions_with_code(merged, llvm):
    """Every function that the compiler made code of has counters, whether it ran or not."""
    shown = subprocess.run(
        [f"llvm-profdata{llvm}", "show", "--all-functions", merged], check=True, capture_output=True, text=True
    ).stdout
    return set(re.findall(r"^  (\S.*):$", shown, re.MULTILINE))


def export(merged, objects, llvm):
    command = [f"llvm-cov{llvm}", "export", f"-instr-profile={merged}", objects[0]]
    command += [f"-object={path}" for path in objects[1:]]
    return json.loads(subprocess.run(command, check=True, capture_output=True).stdout)["data"][0]


def counted_objects(build):
    return [path for path in sorted(build.iterdir()) if path.is_file() and b"__llvm_covmap" in path.read_bytes()]


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--build", type=pathlib.Path, default=ROOT / "build/coverage")
    parser.add_argument("--llvm", default="-19", help="suffix of llvm-cov and llvm-profdata")
    arguments = parser.parse_args()

    profiles = sorted(arguments.build.glob("profiles/*.profraw"))
    objects = counted_objects(arguments.build)
    if not profiles or not objects:
        sys.exit("no counters: build the coverage preset and run its tests with LLVM_PROFILE_FILE")
    merged = arguments.build / "coverage.profdata"
    subprocess.run([f"llvm-profdata{arguments.llvm}", "merge", "-o", merged, *profiles], check=True)
    data = export(merged, objects, arguments.llvm)
    sources = Sources(ROOT)
    places = Places(sources, functions_with_code(merged, arguments.llvm))
    for function in data["functions"]:
        places.add(function)

    exceptions = Exceptions(pathlib.Path(__file__).with_name("exceptions.txt"))
    faults = exceptions.faults
    for key, what in sorted(places.gaps()):
        (path, span), users = key[0], key[1:]
        shown = f"{sources.name(path)}:{span[0]}:{span[1]}"
        if exceptions.covers(sources.name(path), sources.line(path, span[0])):
            print(f"listed: {shown}: {what}: {sources.text(path, span)}")
            continue
        used = "".join(f", used at {sources.name(file)}:{at[0]}:{at[1]}" for file, at in users)
        faults.append(f"{shown}: {what}: {sources.text(path, span)}{used}")
    faults += exceptions.unmet()

    for name, (covered, count) in places.figures().items():
        print(f"{name}: {covered} of {count}")
    print(f"exceptions: {len(exceptions.entries)}, gaps and faults: {len(faults)}")
    for fault in faults:
        print(fault)
    sys.exit(1 if faults else 0)


main()
