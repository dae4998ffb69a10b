#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Writes the expected sets into expected/, or checks that the files there are what the model says.

The sets stand in expected/<profile>/<board>.txt: of Default on every board, of the other profiles on the boards named
below.  expected/generators.txt lists every exported generator.

    make_expected.py            writes
    make_expected.py --check    changes nothing; exit 1 and a list when a file is missing, stale or left over
"""
import pathlib
import sys

HERE = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(HERE))
import generators  # noqa: E402
from board import load  # noqa: E402
from profile_sets import PROFILES, text_of  # noqa: E402

BOARDS = HERE.parents[1] / "boards"
EXPECTED = HERE / "expected"
# Boards on which the sets of all profiles are laid down, beside the guards; the Default set is laid down on every board.
FOR_ALL_PROFILES = ("base_48", "empty", "fullest", "gpu_8_5502", "gpu_8_550f", "gpu_8_5517", "kestrin_8gpu",
                    "rack_5605", "simplified", "small_5497")


def wanted():
    yield EXPECTED / "generators.txt", generators.text()
    for path in sorted(BOARDS.rglob("*.toml")):
        name = "-".join(path.relative_to(BOARDS).with_suffix("").parts)
        board = load(path)
        for profile in PROFILES:
            if profile == "default" or name in FOR_ALL_PROFILES or name.startswith("guards-"):
                yield EXPECTED / profile / f"{name}.txt", text_of(profile, board)


def main():
    files = dict(wanted())
    present = set(EXPECTED.rglob("*.txt"))
    if "--check" in sys.argv[1:]:
        wrong = [f"missing or stale: {path.relative_to(EXPECTED)}" for path, text in files.items()
                 if not path.exists() or path.read_text() != text]
        wrong += [f"left over: {path.relative_to(EXPECTED)}" for path in sorted(present - set(files))]
        if wrong:
            wrong.append("a board was added, removed or changed, or the model was: run tests/model/make_expected.py "
                         "and look at what it changed (docs/adding-a-board.md)")
        print("\n".join(wrong or [f"{len(files)} files are as the model says"]))
        sys.exit(1 if wrong or not files else 0)
    for path in present - set(files):
        path.unlink()
    for path, text in files.items():
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text)
    print(f"{len(files)} files written")


if __name__ == "__main__":
    main()
