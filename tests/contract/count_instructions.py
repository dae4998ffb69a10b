#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Counts the library's own instructions in a whole static pass: qemu-arm runs instruction_probe one instruction at
a time and logs every one whose address lies in the library's .text.  Platform functions, libc and the PLT lie
elsewhere and count nothing; file access and the duplicate scan are counted apart, everything else counts, what only
serves log lines as well.

For each board one run learns the load address and the records and one counts with an empty extended store.  On the
first board another counts with a full one: 255 slots made from the pass's own records with the last character of each
name changed, so that none matches."""
import argparse
import bisect
import os
import re
import subprocess
import sys
import tempfile
from collections import Counter

from common import call_graphs, fault, figure, finish, plain_names, run, sections

SLOT, SLOTS = 64, 255
NAME = {1: 48, 2: 32}  # record type -> offset of the name; its length byte stands before it


def full_store(records):
    """255 slots, none of which has the type and name of a record of the pass."""
    taken = {(record[3], bytes(record[NAME[record[3]] - 1:])) for record in records if record[3] in NAME}
    slots = []
    for letter in b"~^`|":
        for record in records:
            if record[3] not in NAME:
                continue
            start = NAME[record[3]]
            length = record[start - 1] & 0x3F
            if length == 0:
                continue
            changed = bytearray(record)
            changed[start + min(length, SLOT - start) - 1] = letter
            if (changed[3], bytes(changed[start - 1:])) not in taken:
                slots.append(bytes(changed))
    if len(slots) < SLOTS:
        slots = slots * (SLOTS // max(len(slots), 1) + 1)
    return b"".join(slots[:SLOTS])


def functions_of(nm, library, graphs):
    """Sorted [(address, name, unit)]; the unit is the source file that the call graph names."""
    unit_of = {}
    for path in graphs:
        unit = os.path.basename(path)[:-len(".ci")]
        for line in open(path, encoding="utf-8"):
            node = re.match(r'node: \{ title: "(?:[^"]*:)?([^":]+)" label: "[^"]*bytes', line)
            if node:
                unit_of[node.group(1)] = unit
    found = {}
    for line in run(nm, "--defined-only", library).splitlines():
        address, letter, name = line.split()
        if letter in "tT" and not name.startswith("$"):
            found[int(address, 16) & ~1] = (name, unit_of.get(name, "?"))
    return sorted((address, shown, unit) for (address, (_, unit)), shown
                  in zip(found.items(), plain_names(name for name, _ in found.values())))


class Probe:
    def __init__(self, args, board, directory):
        self.args, self.directory = args, directory
        self.board = os.path.join(args.boards, board + ".toml")
        self.records_path = os.path.join(directory, "records")

    def _output(self, text):
        base = re.search(r"^base ([0-9a-f]+)$", text, re.M)
        records = re.search(r"^records (\d+)$", text, re.M)
        if not base or not records:
            sys.exit(f"the probe said: {text}")
        return int(base.group(1), 16), int(records.group(1))

    def learn(self):
        base, count = self._output(run(*self.args.emulator.split(","), self.args.probe, self.board, "--records",
                                       self.records_path))
        image = open(self.records_path, "rb").read()
        return base, [image[at:at + SLOT] for at in range(0, len(image), SLOT)][:count]

    def count(self, base, text, store=None, only=None):
        """Counter over offsets in the library, and the number of records."""
        start, size = text
        emulator = self.args.emulator.split(",")
        command = [emulator[0], "-singlestep", "-d", "exec,nochain", "-dfilter", f"{base + start:#x}+{size:#x}",
                   *emulator[1:], self.args.probe, self.board]
        if store:
            command += ["--store", store]
        if only:
            command += [only, "1"]
        hits = Counter()
        with subprocess.Popen(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE, bufsize=1 << 20) as child:
            for line in child.stderr:  # Trace 0: 0x7fc4e8200400 [00000480/3f7da2e0/00000000/00000201]
                if line.startswith(b"Trace"):
                    hits[line.split(b"/", 2)[1]] += 1
            output = child.stdout.read().decode()
        if child.returncode != 0:
            sys.exit(f"{' '.join(command)} failed with {child.returncode}")
        again, records = self._output(output)
        if again != base:
            sys.exit(f"the library moved from {base:#x} to {again:#x} between two runs")
        return Counter({int(pc, 16) - base: number for pc, number in hits.items()}), records


def by_function(hits, functions):
    """(instructions, entries) by (name, unit); entries = how often the first instruction ran."""
    starts = [address for address, _, _ in functions]
    instructions, entries = Counter(), Counter()
    for offset, number in hits.items():
        address, name, unit = functions[bisect.bisect_right(starts, offset) - 1]
        instructions[name, unit] += number
        if offset == address:
            entries[name, unit] += number
    return instructions, entries


def count_pass(args, board, budget, context):
    """The whole pass over a board with an empty store; gives the probe, the load address and the records."""
    functions, text, _ = context
    probe = Probe(args, board, context[2])
    base, records = probe.learn()
    if not records:
        sys.exit(f"the pass over {board} made no record")
    hits, count = probe.count(base, text)
    instructions, _ = by_function(hits, functions)
    purposes = {"file access": args.io.split(","), "duplicate scan": args.scan.split(",")}
    apart = {key: purpose for key in instructions for purpose, names in purposes.items() if set(key) & set(names)}
    own = sum(number for key, number in instructions.items() if key not in apart)
    print(f"{board}: {count} records, {sum(instructions.values()):,} instructions in the library, "
          f"{own:,} of them beyond {', '.join(purposes)}")
    for key, number in instructions.most_common(args.top):
        print(f"  {number:8,}  {number / count:6.1f} a record  {key[0]} ({key[1]}) {apart.get(key, '')}".rstrip())
    figure(f"library instructions per static record, {board}", round(own / count, 1), budget, "instructions")
    return probe, base, records


def count_scan(args, probe, base, records, context):
    functions, text, directory = context
    store = os.path.join(directory, "store")
    with open(store, "wb") as out:
        out.write(full_store(records))
    hits, count = probe.count(base, text, store)
    if count != len(records):
        fault(f"{len(records)} records with an empty store, {count} with a full one")
    instructions, entries = by_function(hits, functions)
    scan = args.scan.split(",")
    scans = max((entries[key] for key in entries if key[0] == scan[0]), default=0)
    if scans == 0:
        sys.exit(f"{scan[0]} did not run")
    scanned = sum(number for key, number in instructions.items() if key[0] in scan)
    print(f"{scans} scans over {SLOTS} slots, {scanned:,} instructions")
    figure("instructions per stored slot in the duplicate scan", round(scanned / scans / SLOTS, 1), args.scan_budget,
           "instructions")


def count_each(args, probe, base, context, what, only, budget):
    functions, text, _ = context
    hits, count = probe.count(base, text, only=only)
    if count == 0:
        sys.exit(f"the probe wrote or added no {what}")
    instructions, _ = by_function(hits, functions)
    print(f"{count} times {what}, {sum(hits.values()):,} instructions")
    for key, number in instructions.most_common(args.top):
        print(f"  {number:8,}  {number / count:6.1f} each  {key[0]} ({key[1]})")
    figure(f"library instructions per {what}", round(sum(hits.values()) / count, 1), budget, "instructions")


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--probe", required=True)
    parser.add_argument("--boards", required=True, help="the folder of board files")
    parser.add_argument("--board", action="append", required=True, help="name=budget per record; the first one is "
                        "used for everything else as well")
    parser.add_argument("--library", required=True)
    parser.add_argument("--emulator", required=True, help="qemu-arm,-L,...")
    parser.add_argument("--nm", required=True)
    parser.add_argument("--readelf", required=True)
    parser.add_argument("--io", required=True, help="functions or units (x.cpp) that access files, by commas")
    parser.add_argument("--scan", required=True, help="functions of the duplicate scan, the entry first, by commas")
    parser.add_argument("--scan-budget", type=int, required=True)
    parser.add_argument("--event-budget", type=int, required=True)
    parser.add_argument("--add-budget", type=int, required=True)
    parser.add_argument("--top", type=int, default=12)
    parser.add_argument("objects", nargs="+")
    args = parser.parse_args()

    functions = functions_of(args.nm, args.library, call_graphs(args.objects))
    text = sections(args.readelf, args.library)[".text"]
    with tempfile.TemporaryDirectory() as directory:
        context = functions, text, directory
        boards = [board.split("=") for board in args.board]
        passes = [count_pass(args, name, int(budget), context) for name, budget in boards]
        probe, base, records = passes[0]
        count_scan(args, probe, base, records, context)
        count_each(args, probe, base, context, "event", "--events", args.event_budget)
        count_each(args, probe, base, context, "sensor added at run time", "--adds", args.add_budget)
    finish()


if __name__ == "__main__":
    main()
