# SPDX-License-Identifier: GPL-3.0-or-later
"""The shape of a shared object as programs that use it were compiled against it: names, parameters, sizes of tables,
layouts of structures.  abidw reads it from debug information, abidiff compares two of them."""
import os
import re
import shutil
import subprocess
import sys
import tempfile

from common import run

SAME, ADDED, BROKEN = "same", "added", "broken"
if not shutil.which("abidw") or not shutil.which("abidiff"):
    sys.exit("abidw and abidiff are missing: scripts/install-deps abi")


def dump(library, headers, out):
    """Writes the shape of an object that was compiled with -g, without a word of where it was built."""
    text = run("abidw", "--headers-dir", headers, "--drop-private-types", "--exported-interfaces-only",
               "--drop-undefined-syms", "--no-corpus-path", "--no-comp-dir-path", "--no-show-locs",
               "--no-parameter-names", "--type-id-style", "hash", library)
    with open(out, "w", encoding="utf-8") as file:
        file.write(text)


def soname(path):
    with open(path, encoding="utf-8") as file:
        return re.search(r"<abi-corpus [^>]*soname='([^']*)'", file.read())[1]


def _differ(first, second, *options):
    """(whether two dumps differ, abidiff's words)"""
    done = subprocess.run(["abidiff", *options, first, second], capture_output=True, text=True)
    if done.returncode & 3:
        sys.exit(f"abidiff {first} {second}\n{done.stdout}{done.stderr}failed with {done.returncode}")
    return done.returncode != 0, done.stdout


def compare(kept, new):
    """(SAME, ADDED or BROKEN, abidiff's words): what programs compiled against the kept shape find in the new one.
    The SONAME is not part of it."""
    with tempfile.TemporaryDirectory() as directory:
        renamed = os.path.join(directory, "kept.abi")
        with open(kept, encoding="utf-8") as source, open(renamed, "w", encoding="utf-8") as out:
            out.write(source.read().replace(f"soname='{soname(kept)}'", f"soname='{soname(new)}'", 1))
        differs, words = _differ(renamed, new)
        if not differs:
            return SAME, ""
        breaks, _ = _differ(renamed, new, "--no-added-syms")
        return (BROKEN if breaks else ADDED), words


def what_to_do(change, kept_soname, new_soname):
    """What is wrong with a change and what is to be done; None when the kept dump may become the new one."""
    moved = kept_soname != new_soname
    if change == BROKEN and not moved:
        return (f"programs that were compiled against {kept_soname} break: put back what they know, or raise the "
                "number of the SONAME as well (docs/releasing.md)")
    if change != BROKEN and moved:
        return (f"the SONAME went from {kept_soname} to {new_soname}, but no program breaks: put its number back, "
                "every program would have to be linked again for nothing (docs/releasing.md)")
    return None
