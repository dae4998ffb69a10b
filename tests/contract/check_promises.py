# SPDX-License-Identifier: GPL-3.0-or-later
"""Every test that docs/guarantees.md, security.md, hardening.md and releasing.md name in brackets exists.

In "[`ThresholdDamage`, `ADamagedFile*`]" a name is a suite or a case of GoogleTest, a method of a Python test, or a
test of CTest; "*" stands for any letters.
"""
import argparse
import fnmatch
import pathlib
import re
import sys

DOCS = ("docs/guarantees.md", "docs/security.md", "docs/hardening.md", "docs/releasing.md")
# a bracket that is no link, with names in it
BRACKET = re.compile(r"\[([^\]\[]*`[^\]\[]*)\](?!\()")
NAME = re.compile(r"`([A-Za-z]\w*(?:\.\w+)*[\w*]*)`")


def tests_of(source):
    names = set()
    for file in source.glob("tests/**/*"):
        if file.suffix == ".cpp":
            for suite, case in re.findall(r"^TEST(?:_F|_P)?\((\w+),\s*(\w+)\)", file.read_text(encoding="utf-8"), re.M):
                names |= {suite, case, f"{suite}.{case}"}
        elif file.suffix == ".py":
            names |= set(re.findall(r"^    def (test_\w+)", file.read_text(encoding="utf-8"), re.M))
        elif file.name == "CMakeLists.txt":
            text = file.read_text(encoding="utf-8")
            names |= {f"contract.{name}" for name in re.findall(r"oxa_add_check\((\w+)", text)}
            names |= set(re.findall(r"add_test\(NAME ([\w.]+)", text))
    return names


def faults_of(name, text, tests):
    for bracket in BRACKET.finditer(text):
        for wanted in NAME.finditer(bracket[1]):
            if not any(fnmatch.fnmatchcase(test, wanted[1]) for test in tests):
                line = text.count("\n", 0, bracket.start(1) + wanted.start()) + 1
                yield f"{name}:{line}: no test is named {wanted[1]}"


def main():
    options = argparse.ArgumentParser()
    options.add_argument("--source", type=pathlib.Path, required=True)
    source = options.parse_args().source
    tests = tests_of(source)
    faults = []
    named = 0
    for name in DOCS:
        text = (source / name).read_text(encoding="utf-8")
        named += sum(len(NAME.findall(bracket[1])) for bracket in BRACKET.finditer(text))
        faults += faults_of(name, text, tests)
    print("\n".join(faults) or f"{named} names of tests, all there")
    sys.exit(1 if faults or named == 0 else 0)


if __name__ == "__main__":
    main()
