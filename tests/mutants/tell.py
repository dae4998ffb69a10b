# SPDX-License-Identifier: GPL-3.0-or-later
"""What a run says."""
from judge import EQUIVALENT, KILLED, REFUSED, SURVIVED

GOAL = 97.0  # per cent
WORDS = {KILLED: "killed by", SURVIVED: "SURVIVED", REFUSED: "refused:", EQUIVALENT: "equivalent:"}


def progress(number, total, mutation, verdict):
    return (f"[{number}/{total}] {mutation.file}:{mutation.line} {mutation.says()} "
            f"{WORDS[verdict.outcome]} {verdict.by[:120]} ({verdict.seconds:.1f} s)")


def survivor(mutation, text, verdict):
    """A survivor with its change and the tests that ran it."""
    old = text.split("\n")
    new = mutation.apply(text).split("\n")
    begin, end = mutation.line - 1, mutation.line + mutation.old.count("\n")
    lines = [f"survived: {mutation.file}:{mutation.line} {mutation.says()}"]
    lines += [f"  -{line}" for line in old[begin:end]] + [f"  +{line}" for line in new[begin:end] if line.strip()]
    shown = ", ".join(verdict.tests[:3]) or "none"
    more = f" and {len(verdict.tests) - 3} more" if len(verdict.tests) > 3 else ""
    return "\n".join(lines + [f"  tests: {shown}{more}"])


def share(verdicts):
    """Per cent of what compiles and is not equivalent that is noticed."""
    killed = sum(one.outcome == KILLED for one in verdicts)
    survived = sum(one.outcome == SURVIVED for one in verdicts)
    return 100.0 * killed / (killed + survived) if killed + survived else 100.0


def closing(verdicts):
    count = {outcome: sum(one.outcome == outcome for one in verdicts) for outcome in WORDS}
    return (f"{count[KILLED]} killed, {count[SURVIVED]} survived, {count[REFUSED]} refused by the compiler, "
            f"{count[EQUIVALENT]} equivalent; {share(verdicts):.1f} % of compiling, non-equivalent")
