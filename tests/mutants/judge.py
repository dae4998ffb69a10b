# SPDX-License-Identifier: GPL-3.0-or-later
"""Is a mutant noticed?"""
import os
import shutil
import time
from dataclasses import dataclass, field

from mutant import Refused, Workshop

KILLED, SURVIVED, REFUSED, EQUIVALENT = "killed", "survived", "refused", "equivalent"
SHORTEST = 5  # seconds that a test gets at least
LONGER = 10  # times as long as usual may a test take
QUICK = 0.3  # seconds


@dataclass
class Verdict:
    outcome: str
    by: str = ""  # the test that fails, what the compiler says, or why it is the same
    tests: list = field(default_factory=list)  # those that ran
    seconds: float = 0.0


class Judge:
    """Makes mutants one after the other; each worker has one."""

    def __init__(self, place, units, coverage, number):
        self.place, self.units, self.coverage = place, units, coverage
        self.programs, self.readers = programs_of(place, units, coverage), place.readers_of_data(units)
        self.shop = Workshop(place, f"workshop.{os.getpid()}.{number}")
        self.killers = {}  # file -> tests that noticed a mutant of it, the last one first

    def judge(self, mutation, text):
        began = time.monotonic()
        self.shop.write(mutation.file, mutation.apply(text))
        try:
            verdict = self.try_out(mutation)
        except Refused as refused:
            verdict = Verdict(REFUSED, str(refused))
        finally:
            self.shop.write(mutation.file, text)
            self.shop.clear()
        verdict.seconds = time.monotonic() - began
        return verdict

    def try_out(self, mutation):
        run = set().union(*self.programs.values())
        readers = [unit for unit in self.units.values()
                   if mutation.file in unit.reads and (unit.of_library() or unit.output in run)]
        changed = [unit for unit in readers if unit.of_library() and self.shop.compile(unit)]
        others = [unit for unit in readers if not unit.of_library()]
        if changed:
            folder = self.shop.link_library()
            wanted = self.covering(mutation, changed)
        else:
            folder, wanted = self.place.build, set()
            changed = [unit for unit in others if self.shop.compile(unit)]
            others = []
        affected = self.affected(changed + others)
        if not wanted:
            wanted = self.of_programs(affected)
        names = self.in_order(wanted, mutation.file, affected)
        killer, ran = self.first_failing(names, folder, affected, others)
        if killer:
            self.remember(mutation.file, killer)
            return Verdict(KILLED, killer, ran)
        if not changed and not mutation.checks:
            return Verdict(EQUIVALENT, "the same object code", ran)
        return Verdict(SURVIVED, "", ran)

    def covering(self, mutation, changed):
        """Tests that run the statement; of what has no code of its own, those that run what it may have changed.  A line of
        a list is code for one that includes it and data for another.
        Programs with objects of the library in themselves are not traced: they count as running all of them."""
        found = self.coverage.of_lines(mutation.file, mutation.first, mutation.last)
        if found is None or mutation.checks or mutation.file.endswith(".def"):
            found = (found or set()).union(*(self.reaching(unit) for unit in changed))
        return found | self.of_programs(self.affected(changed))

    def reaching(self, unit):
        """Tests that run code of a unit or of one that reads its data, and those of programs that read it themselves;
        where nothing of this is known, tests that run anything of its room."""
        readers = [self.units[output] for output in self.readers.get(unit.output, ())]
        found = self.coverage.of_units([unit] + [one for one in readers if one.of_library()], self.place.tree)
        found |= self.of_programs(self.affected(one for one in readers if not one.of_library()))
        return found or self.coverage.of_room(unit, self.place.tree)

    def of_programs(self, programs):
        return {test.name for test in self.coverage.tests.values() if test.program in programs}

    def affected(self, units):
        """Programs that have one of the units in themselves."""
        outputs = {unit.output for unit in units}
        return {program for program, objects in self.programs.items() if outputs & objects}

    def in_order(self, names, file, affected):
        """Quick ones before slow ones, programs that have to be made anew after the others; of these what noticed a
        change of this file before goes first, then the quickest.  The checks come last."""
        tests = self.coverage.tests
        killers = {name: n for n, name in enumerate(self.killers.get(file, []))}

        def place(name):
            test = tests[name]
            return (test.seconds > QUICK, test.program in affected, killers.get(name, len(killers)), test.seconds)

        return sorted(names, key=place) + [name for name, test in tests.items() if test.check]

    def first_failing(self, names, folder, affected, others):
        """The first test that fails, and fails again, so that a busy machine kills nothing; and all that ran."""
        made, compiled, ran = {}, set(), []
        for name in names:
            test = self.coverage.tests[name]
            if test.program in affected and test.program not in made:
                made[test.program] = self.make(test.program, others, compiled)
            ran.append(name)
            if not self.passes(test, folder, made) and not self.passes(test, folder, made):
                return name, ran
        return "", ran

    def passes(self, test, folder, made):
        return test.run({"LD_LIBRARY_PATH": folder}, max(SHORTEST, LONGER * test.seconds),
                        lambda word: self.replaced(word, made, folder, test.check))

    def make(self, program, others, compiled):
        """Makes a program anew when its turn comes, with what of it has not been compiled yet."""
        for unit in others:
            if unit.output in self.programs[program] and unit.output not in compiled:
                self.shop.compile(unit)
                compiled.add(unit.output)
        return self.shop.link(program)

    def replaced(self, word, made, folder, check):
        """A word of a test's command or environment, for the mutant."""
        for program, path in made.items():
            word = path if word == os.path.join(self.place.build, program) else word
            word = word.replace(f"={self.place.build}/{program}", f"={path}")
        if check and self.place.build in word:
            return word.replace(self.place.build + "/liboxa", folder + "/liboxa")
        return self.shop.moved(word) if check else word

    def remember(self, file, killer):
        known = self.killers.setdefault(file, [])
        if killer in known:
            known.remove(killer)
        known.insert(0, killer)
        del known[20:]

    def close(self):
        shutil.rmtree(self.shop.top, ignore_errors=True)


def programs_of(place, units, coverage):
    """Objects of each program that a test runs."""
    programs = sorted({test.program for test in coverage.tests.values() if test.program})
    return {program: set(place.link_command(program)) & set(units) for program in programs}
