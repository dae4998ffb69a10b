#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Changes the library in one small place after the other and sees whether a test notices."""
import argparse
import fcntl
import os
import queue
import random
import sys
import time
from concurrent.futures import ThreadPoolExecutor

import find
import tell
from cover import Coverage
from judge import EQUIVALENT, Judge, Verdict
from place import Place
from results import Equivalents, Results

HERE = os.path.dirname(os.path.abspath(__file__))
SOURCE = os.path.dirname(os.path.dirname(HERE))
LIBRARY_FOLDERS = ("library", "include")
TEST_FOLDERS = ("simulator", "workbench", "tests", "boards", "scenarios")
STOPPED = 3  # exit code


def arguments():
    parser = argparse.ArgumentParser(prog="scripts/mutants", description=__doc__)
    parser.add_argument("--sample", type=int, default=300, help="how many mutants (300)")
    parser.add_argument("--seed", type=int, default=1, help="which ones (1)")
    parser.add_argument("--all", action="store_true", help="all of them: a night's work, goes on where it stopped")
    parser.add_argument("--only", metavar="FILE[:LINE]", help="all of a file or a line")
    parser.add_argument("--share", metavar="I/N", help="every Nth of them from the Ith on, for runs beside each other")
    parser.add_argument("--list", action="store_true", help="print the mutants and try none")
    parser.add_argument("--fresh", action="store_true", help="forget what earlier runs found")
    parser.add_argument("--minutes", type=float, help="stop after that time; the same command goes on")
    parser.add_argument("-j", "--jobs", type=int, default=2, help="workers (2)")
    return parser.parse_args()


def say(text):
    print(text, flush=True)


def part(mutations, wanted):
    first, count = (int(word) for word in (wanted or "1/1").split("/"))
    return mutations[first - 1::count]


def chosen(mutations, wanted):
    if wanted.only:
        file, _, line = wanted.only.partition(":")
        return [one for one in mutations if one.file == file and line in ("", str(one.line))]
    if wanted.all or wanted.sample >= len(mutations):
        return mutations
    return random.Random(wanted.seed).sample(mutations, wanted.sample)


class Run:
    """The chosen mutants, tried by several workers."""

    def __init__(self, chosen_, texts, equivalents, results):
        self.chosen, self.texts, self.equivalents, self.results = chosen_, texts, equivalents, results
        self.verdicts = {}

    def known(self, mutation):
        reason = self.equivalents.reason(mutation)
        return Verdict(EQUIVALENT, reason) if reason else self.results.known.get(mutation.key())

    def judges(self, place, units, coverage, jobs):
        return [Judge(place, units, coverage, number) for number in range(jobs)]

    def go(self, make_judges, jobs, ends):
        open_ = []
        for mutation in self.chosen:
            verdict = self.known(mutation)
            if verdict:
                self.verdicts[mutation.key()] = verdict
            else:
                open_.append(mutation)
        if not open_:
            return
        judges, free = make_judges(), queue.SimpleQueue()
        for judge in judges:
            free.put(judge)

        def one(mutation):
            if time.monotonic() > ends:
                return
            judge = free.get()
            verdict = judge.judge(mutation, self.texts[mutation.file])
            free.put(judge)
            self.verdicts[mutation.key()] = verdict
            self.results.add(mutation, verdict)
            say(tell.progress(len(self.verdicts), len(self.chosen), mutation, verdict))

        with ThreadPoolExecutor(jobs) as workers:
            list(workers.map(one, open_))
        for judge in judges:
            judge.close()

    def finish(self):
        found = [(one, self.verdicts[one.key()]) for one in self.chosen if one.key() in self.verdicts]
        for mutation, verdict in found:
            if verdict.outcome == "survived":
                say(tell.survivor(mutation, self.texts[mutation.file], verdict))
        verdicts = [verdict for _, verdict in found]
        if len(found) < len(self.chosen):
            say(f"stopped after {len(found)} of {len(self.chosen)}; the same command goes on: {tell.closing(verdicts)}")
            return STOPPED
        say(tell.closing(verdicts))
        return 0 if tell.share(verdicts) >= tell.GOAL else 1


def find_all(place):
    """Texts of the library by file, and every mutant of them."""
    texts = place.texts("library", ".cpp", ".h", ".def")
    enumerators = find.Enumerators([*texts.values(), *place.texts("include", ".h").values()])
    return texts, [one for file, text in sorted(texts.items()) for one in find.mutations(file, text, enumerators)]


def prepare(place, jobs):
    """Units, coverage and results of the copy as it is built."""
    place.make(jobs)
    units = place.units()
    coverage = Coverage(place, units, jobs, say)
    library = place.digest(*LIBRARY_FOLDERS)
    everything = place.digest(*LIBRARY_FOLDERS, *TEST_FOLDERS)
    return units, coverage, Results(os.path.join(place.top, "results.jsonl"), library, everything, coverage.tests)


def main():
    wanted = arguments()
    began = time.monotonic()
    ends = began + 60 * wanted.minutes if wanted.minutes else float("inf")
    place = Place(SOURCE)
    os.makedirs(place.top, exist_ok=True)
    with open(os.path.join(place.top, "lock"), "w", encoding="utf-8") as lock:
        fcntl.flock(lock, fcntl.LOCK_EX)  # runs beside each other prepare one after the other
        place.update()
        texts, mutations = find_all(place)
        picked = part(chosen(mutations, wanted), wanted.share)
        equivalents = Equivalents(os.path.join(place.tree, "tests", "mutants", "equivalent.txt"))
        say(f"{len(mutations)} mutants are possible, {len(picked)} are chosen")
        for entry in equivalents.stale(mutations):
            say("equivalent.txt: nothing is like " + " | ".join(entry))
        if wanted.list:
            for one in picked:
                say(f"{one.file}:{one.line} {one.says()} in: {one.source}")
            return 0
        units, coverage, results = prepare(place, wanted.jobs)
    if wanted.fresh:
        results.forget()
    run = Run(picked, texts, equivalents, results)
    run.go(lambda: run.judges(place, units, coverage, wanted.jobs), wanted.jobs, ends)
    code = run.finish()
    say(f"{time.monotonic() - began:.0f} s")
    return code


if __name__ == "__main__":
    sys.exit(main())
