# SPDX-License-Identifier: GPL-3.0-or-later
"""What came of mutants, kept from run to run, and the list of those that change nothing."""
import json
import os
from dataclasses import asdict

from judge import EQUIVALENT, SURVIVED, Verdict


class Results:
    """A line of JSON for each mutant.  What the tests noticed holds as long as the library is the same and that test
    is still there; a survivor is tried again when anything has changed."""

    def __init__(self, path, library, everything, tests):
        self.path, self.library, self.everything = path, library, everything
        self.known = {}
        if os.path.exists(path):
            with open(path, encoding="utf-8") as lines:
                for line in lines:
                    self.take(json.loads(line), tests)

    def take(self, entry, tests):
        holds = entry["library"] == self.library
        if entry["outcome"] == SURVIVED or entry["outcome"] == EQUIVALENT:
            holds = entry["everything"] == self.everything
        elif entry["outcome"] == "killed":
            holds = holds and entry["by"] in tests
        if holds:
            self.known[entry["mutant"]] = Verdict(entry["outcome"], entry["by"], entry["tests"], entry["seconds"])

    def forget(self):
        self.known = {}
        if os.path.exists(self.path):
            os.unlink(self.path)

    def add(self, mutation, verdict):
        self.known[mutation.key()] = verdict
        entry = {"mutant": mutation.key(), "change": mutation.says(), "library": self.library,
                 "everything": self.everything, **asdict(verdict)}
        entry["tests"] = verdict.tests if verdict.outcome == SURVIVED else []
        with open(self.path, "a", encoding="utf-8") as out:
            out.write(json.dumps(entry) + "\n")


class Equivalents:
    """Mutants that nobody can notice: file, line as it is written, change and reason, a line each, then an empty
    one.  Lines of the file that begin with # are comments."""

    def __init__(self, path):
        self.reasons = {}
        with open(path, encoding="utf-8") as text:
            lines = "".join(line for line in text if not line.startswith("#"))
        for entry in lines.split("\n\n"):
            parts = [part.strip() for part in entry.strip().split("\n")]
            if parts == [""]:
                continue
            if len(parts) < 4:
                raise SystemExit(f"{path}: an entry has file, line, change and reason: {parts}")
            self.reasons[tuple(parts[:3])] = " ".join(parts[3:])

    def reason(self, mutation):
        return self.reasons.get((mutation.file, mutation.source, mutation.says()))

    def stale(self, mutations):
        met = {(one.file, one.source, one.says()) for one in mutations}
        return [entry for entry in self.reasons if entry not in met]
