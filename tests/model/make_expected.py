#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Writes the expected set of every board into expected/, or checks that the files there are what the model says.

    make_expected.py            writes
    make_expected.py --check    changes nothing; exit 1 and a list when a file is missing, stale or left over
"""
import pathlib
import sys

HERE = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(HERE))
from board import load  # noqa: E402
from default_set import text_of  # noqa: E402

BOARDS = HERE.parents[1] / "boards"
EXPECTED = HERE / "expected"


def wanted():
    for path in sorted(BOARDS.rglob("*.toml")):
        name = "-".join(path.relative_to(BOARDS).with_suffix("").parts)
        yield EXPECTED / f"{name}.txt", text_of(load(path))


def main():
    files = dict(wanted())
    present = set(EXPECTED.glob("*.txt"))
    if "--check" in sys.argv[1:]:
        wrong = [f"missing or stale: {path.name}" for path, text in files.items()
                 if not path.exists() or path.read_text() != text]
        wrong += [f"left over: {path.name}" for path in sorted(present - set(files))]
        print("\n".join(wrong or [f"{len(files)} files are as the model says"]))
        sys.exit(1 if wrong or not files else 0)
    EXPECTED.mkdir(exist_ok=True)
    for path in present - set(files):
        path.unlink()
    for path, text in files.items():
        path.write_text(text)
    print(f"{len(files)} files written")


if __name__ == "__main__":
    main()
