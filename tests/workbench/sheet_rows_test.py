# SPDX-License-Identifier: GPL-3.0-or-later
"""Sheets of all sets; and a sheet made rows, built, and held against the set that the built library makes."""
import csv
import glob
import io
import json
import os
import subprocess

from support import FULLEST, SENSORS, SOURCE, TWO_SOCKET, Workbench, main

CXX = os.environ.get("OXA_CXX", "c++")
FLAGS = ("-std=c++20", "-Os", "-fPIC", "-fno-ident", "-fvisibility=hidden", "-fno-exceptions", "-fno-rtti",
         "-fno-threadsafe-statics", "-fdata-sections")
OBJECTS = os.path.join(os.path.dirname(SENSORS), "CMakeFiles", "oxa_objects.dir", "library")
PROFILES = ("default", "kestrin", "pellago", "vorana", "astrel", "quorral", "lumora", "durnow", "ferrisk")
STYLES = ("comma", "semicolon", "tab")
WRITABLE = ("°C", "V", "A", "W", "RPM")


class RoundTrips(Workbench):
    def test_every_set_is_as_in_its_own_sheet(self):
        sheet = self.path("limits.csv")
        boards = sorted(b for b in os.listdir(os.path.join(SOURCE, "boards")) if b.endswith(".toml"))
        for i, board in enumerate(boards):
            for k, profile in enumerate(PROFILES):
                with self.subTest(board=board, profile=profile):
                    words = ("--board", "boards/" + board, "--profile", profile)
                    self.out("sheet", "export", *words, "-o", sheet, "--style", STYLES[(i + k) % 3])
                    self.assertEqual(self.json("sheet", "check", sheet, *words)["findings"], [])

    def compile(self, profile, include, name):
        """The profile's file, with the list of this folder."""
        out = self.path(name)
        done = subprocess.run([CXX, *FLAGS, "-I", include, "-I", SOURCE, "-I", os.path.join(SOURCE, "include"), "-c",
                               os.path.join(SOURCE, "library", "profiles", profile + ".cpp"), "-o", out],
                              capture_output=True, check=False)
        self.assertEqual(done.returncode, 0, done.stderr.decode())
        return out

    def constants(self, name):
        """Bytes of constant data in an object."""
        lines = subprocess.run(["size", "-A", name], capture_output=True, check=True).stdout.decode().splitlines()
        return sum(int(line.split()[1]) for line in lines if line.startswith(".rodata"))

    def edited(self, board, profile):
        """A sheet whose highest limits are a count higher, with one for power supplies that had none."""
        sensors = self.json("list", "--board", board, "--profile", profile)["sensors"]
        text = self.out("sheet", "export", "--board", board, "--profile", profile)
        rows = list(csv.reader(io.StringIO(text)))
        factor = {s["name"]: s["reading"]["factor"] for s in sensors if s["thresholds"]}
        code = {s["name"]: s["device"]["code"] for s in sensors}
        changed = []
        for row in rows[1:]:
            given = [i for i in range(2, 8) if row[i]]
            if row[1] not in WRITABLE or code[row[0]] == 0x4C:  # CPU voltages whose factor is the platform's
                continue
            if given:
                row[given[-1]] = f"{float(row[given[-1]]) + factor[row[0]]:.4f}"
            elif code[row[0]] in (0x4F, 0x52):  # volts and temperatures of power supplies
                row[6] = f"{100 * factor[row[0]]:.4f}"
            else:
                continue
            changed.append(row[0])
        with open(self.path("limits.csv"), "w", encoding="utf-8", newline="") as file:
            csv.writer(file, delimiter=";").writerows(rows)
        return changed

    def round_trip(self, board, profile):
        changed = self.edited(board, profile)
        self.assertGreater(len(changed), 5)
        words = (self.path("limits.csv"), "--board", board, "--profile", profile)
        self.assertEqual(self.run_raw("sheet", "check", *words).returncode, 1)
        rows = self.json("sheet", "rows", *words)["rows"]
        self.assertLessEqual(set(changed), {name for row in rows for name in row["sensors"]})

        os.makedirs(self.path("library/profiles"), exist_ok=True)
        name = os.path.join("library", "profiles", profile + ".def")
        with open(os.path.join(SOURCE, name), encoding="utf-8") as file:
            before = file.read()
        with open(self.path(name), "w", encoding="utf-8") as file:
            file.write(before)
        patch = self.out("sheet", "rows", *words)
        done = subprocess.run(["patch", "-p1"], input=patch.encode(), cwd=self.folder.name, capture_output=True,
                              check=False)
        self.assertEqual(done.returncode, 0, done.stdout)
        built = self.compile(profile, self.folder.name, "new.o")
        as_it_was = self.compile(profile, SOURCE, "old.o")
        self.assertEqual(self.constants(built) - self.constants(as_it_was), sum(row["bytes"] for row in rows))

        library = self.path("lib.so")
        others = [o for o in glob.glob(OBJECTS + "/**/*.o", recursive=True)
                  if os.path.relpath(o, OBJECTS) != f"profiles/{profile}.cpp.o"]
        done = subprocess.run([CXX, "-shared", "-o", library, built, *others], capture_output=True, check=False)
        self.assertEqual(done.returncode, 0, done.stderr.decode())
        done = self.run_raw("sheet", "check", *words, "--json", env={"LD_PRELOAD": library})
        self.assertEqual((done.returncode, json.loads(done.stdout)["findings"], done.stderr), (0, [], b""))

    def test_rows_of_a_sheet_build_what_the_sheet_says_on_a_server(self):
        self.round_trip(TWO_SOCKET, "default")

    def test_rows_of_a_sheet_build_what_the_sheet_says_on_the_fullest_board(self):
        self.round_trip(FULLEST, "kestrin")


if __name__ == "__main__":
    main()
