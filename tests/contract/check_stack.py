#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Worst own stack of every exported function, from the call graph and frame sizes that GCC wrote beside the objects
(-fcallgraph-info=su).  Calls through pointers follow indirect_calls.txt; platform and libc functions count nothing.

Budgets: stack_budgets.txt, first matching line holds."""
import argparse
import fnmatch
import re
from functools import lru_cache

from common import call_graphs, declared_exports, fault, figure, finish, plain_names

NODE = re.compile(r'node: \{ title: "([^"]*)" label: "([^"]*)"(.*)\}')
EDGE = re.compile(r'edge: \{ sourcename: "([^"]*)" targetname: "([^"]*)"')
FRAME = re.compile(r"(\d+) bytes \(([a-z,]+)\)")
INDIRECT = "__indirect_call"


def read_graph(paths):
    frames, calls = {}, {}
    for path in paths:
        for line in open(path, encoding="utf-8"):
            node, edge = NODE.match(line), EDGE.match(line)
            if node:
                frame = FRAME.search(node.group(2))
                title = node.group(1)
                if not frame:
                    continue
                if "dynamic" in frame.group(2) and "bounded" not in frame.group(2):
                    fault(f"{title} has a frame of unbounded size")
                frames[title] = int(frame.group(1))
            elif edge:
                calls.setdefault(edge.group(1), set()).add(edge.group(2))
    shown = dict(zip(frames, plain_names(title.rsplit(":", 1)[-1] for title in frames)))
    return frames, shown, calls


def read_rules(path):
    """Lines of "left -> right, right", comments cut off."""
    for line in open(path, encoding="utf-8"):
        line = line.split("#")[0].strip()
        if line:
            left, right = line.split("->")
            yield left.strip(), [part.strip() for part in right.split(",")]


def add_indirect(path, frames, shown, calls):
    """Replaces calls through pointers by what they may reach; every such caller needs a line."""
    rules, used = list(read_rules(path)), set()
    for caller in [title for title, targets in calls.items() if INDIRECT in targets]:
        calls[caller].discard(INDIRECT)
        matching = [index for index, (left, _) in enumerate(rules) if fnmatch.fnmatchcase(shown[caller], left)]
        if not matching:
            fault(f"{shown[caller]} calls through a pointer and has no line in indirect_calls.txt")
        for index in matching:
            used.add(index)
            for pattern in rules[index][1]:
                targets = {title for title in frames if fnmatch.fnmatchcase(shown[title], pattern)}
                if pattern != "platform" and not targets:
                    fault(f"indirect_calls.txt: nothing is called {pattern}")
                calls[caller] |= targets - {caller}
    for index, (left, _) in enumerate(rules):
        if index not in used:
            fault(f"indirect_calls.txt: {left} calls nothing through a pointer")


def budget_of(name, budgets):
    for pattern, right in budgets:
        if fnmatch.fnmatchcase(name, pattern):
            return pattern, int(right[0])
    raise SystemExit(f"stack_budgets.txt has no line for {name}")


parser = argparse.ArgumentParser(description=__doc__)
parser.add_argument("--cc", required=True)
parser.add_argument("--include", required=True)
parser.add_argument("--indirect", required=True)
parser.add_argument("--budgets", required=True)
parser.add_argument("--top", type=int, default=10)
parser.add_argument("objects", nargs="+")
arguments = parser.parse_args()

frames, shown, calls = read_graph(call_graphs(arguments.objects))
add_indirect(arguments.indirect, frames, shown, calls)
on_path = []


@lru_cache(maxsize=None)
def worst(title):
    """(bytes, path) of the deepest chain of calls that starts here, platform functions not counted."""
    if title in on_path:
        fault(f"recursion: {' > '.join(shown[step] for step in on_path[on_path.index(title):])}")
        return 0, ()
    on_path.append(title)
    deepest = max((worst(target) for target in sorted(calls.get(title, ())) if target in frames), default=(0, ()))
    on_path.pop()
    return frames[title] + deepest[0], (f"{shown[title]} {frames[title]}",) + deepest[1]


budgets = [(left, right) for left, right in read_rules(arguments.budgets)]
exported = sorted(title for title in declared_exports(arguments.cc, arguments.include) if title in frames)
if not exported:
    fault("no exported function found in the call graph")
groups = {}
for title in exported:
    pattern, budget = budget_of(title, budgets)
    groups.setdefault((pattern, budget), []).append((worst(title)[0], title))
for (pattern, budget), members in groups.items():
    size, title = max(members)
    figure(f"own stack, {title if pattern == '*' or len(members) == 1 else pattern}"
           f"{' (worst of all others)' if pattern == '*' else ''}", size, budget, "bytes")
    for member_size, member in sorted(members):
        if member_size > budget and member != title:
            fault(f"own stack of {member}: {member_size} bytes, budget {budget}")
for pattern, right in budgets:
    if (pattern, int(right[0])) not in groups:
        fault(f"stack_budgets.txt: no exported function is called {pattern}")
print("deepest, one of those that go the same way:")
ways = {worst(title)[1][2:]: worst(title) for title in exported}
for size, path in sorted(ways.values(), reverse=True)[:arguments.top]:
    print(f"  {size:6,}  {' > '.join(path)}")
finish()
