# SPDX-License-Identifier: GPL-3.0-or-later
"""The copy of the tree that mutants are made of, built as it is shipped."""
import functools
import hashlib
import json
import os
import re
import shlex
import shutil
import subprocess
from dataclasses import dataclass, field

LIBRARY = "liboxaspecificsensorinfo.so"  # a link to the one whose name has the version


def run(command, where, **more):
    """A command that has to succeed; what it wrote."""
    done = subprocess.run(command, cwd=where, text=True, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, **more)
    if done.returncode != 0:
        raise SystemExit(f"{shlex.join(command)[:500]}\n{done.stdout[-2000:]}\nfailed with {done.returncode}")
    return done.stdout


@dataclass
class Unit:
    """An object file."""
    command: list
    source: str
    output: str  # relative to the build folder
    reads: set = field(default_factory=set)  # files of the tree

    def of_library(self):
        return self.output.startswith("CMakeFiles/oxa_objects.dir/")


class Place:
    """build/mutants: the copy (tree) with its build folder (tree/build/release), and what is kept from run to run."""

    def __init__(self, source):
        self.source = source
        self.top = os.path.join(source, "build", "mutants")
        self.tree = os.path.join(self.top, "tree")
        self.build = os.path.join(self.tree, "build", "release")

    def files(self):
        listed = run(["git", "ls-files", "-co", "--exclude-standard"], self.source).splitlines()
        return sorted(name for name in listed if os.path.isfile(os.path.join(self.source, name)))

    def update(self):
        """Brings the copy up to date; files that are the same keep their time, so that little is built."""
        names = self.files()
        for name in names:
            old, new = os.path.join(self.tree, name), os.path.join(self.source, name)
            if not os.path.exists(old) or bytes_of(old) != bytes_of(new):
                os.makedirs(os.path.dirname(old), exist_ok=True)
                shutil.copy(new, old)
        for where, folders, found in os.walk(self.tree):
            if where == self.tree:
                folders.remove("build") if "build" in folders else None
            for name in found:
                path = os.path.join(where, name)
                if os.path.relpath(path, self.tree) not in names:
                    os.unlink(path)

    def make(self, jobs):
        environment = {**os.environ, "CCACHE_BASEDIR": self.tree, "CCACHE_NOHASHDIR": "1", "CCACHE_DEPEND": "1",
                       "CCACHE_SLOPPINESS": "pch_defines,time_macros"}
        launchers = [f"-DCMAKE_{language}_COMPILER_LAUNCHER=ccache" for language in ("C", "CXX")
                     if shutil.which("ccache")]
        run(["cmake", "--preset", "release", "-DOXA_BUILD_BENCH=OFF", *launchers], self.tree, env=environment)
        run(["cmake", "--build", "--preset", "release", "-j", str(jobs)], self.tree, env=environment)

    def digest(self, *folders):
        """Of all files below the folders of the copy, but of this tool's."""
        sum_ = hashlib.sha1()
        for name in self.files():
            if name.startswith(tuple(folder + "/" for folder in folders)) and not name.startswith("tests/mutants/"):
                sum_.update(name.encode() + b"\0" + bytes_of(os.path.join(self.tree, name)))
        return sum_.hexdigest()[:16]

    def texts(self, folder, *endings):
        return {name: bytes_of(os.path.join(self.tree, name)).decode() for name in self.files()
                if name.startswith(folder + "/") and name.endswith(endings)}

    def units(self):
        """All object files of the build, by name."""
        with open(os.path.join(self.build, "compile_commands.json"), encoding="utf-8") as commands:
            entries = json.load(commands)
        units = {}
        for entry in entries:
            command = shlex.split(entry["command"])
            command = command[1:] if os.path.basename(command[0]) == "ccache" else command
            output = command[command.index("-o") + 1]
            units[output] = Unit(command, entry["file"], output)
        name = None
        for line in run(["ninja", "-t", "deps"], self.build).splitlines():
            if not line.startswith(" "):
                name = line.split(":")[0]
            elif name in units:
                path = os.path.normpath(os.path.join(self.build, line.strip()))
                if path.startswith(self.tree + "/") and not path.startswith(self.build):
                    units[name].reads.add(os.path.relpath(path, self.tree))
        return units

    def readers_of_data(self, units):
        """Which object files name data of which units of the library: {owner: {readers}}."""
        built = [name for name in units if name.endswith(".o") and os.path.exists(os.path.join(self.build, name))]
        listed = run(["nm", "-A", "-P", "-g", *built], self.build)
        words = [(line.split(": ", 1)[0], *line.split(": ", 1)[1].split()[:2]) for line in listed.splitlines()]
        owners = {}
        for output, symbol, kind in words:
            if kind in "BDGRSVu" and units[output].of_library():
                owners.setdefault(symbol, set()).add(output)
        readers = {}
        for output, symbol, kind in words:
            for owner in owners.get(symbol, ()) if kind == "U" else ():
                readers.setdefault(owner, set()).add(output)
        return readers

    @functools.cache
    def link_command(self, target):
        """How a program or the shared object is linked: without what CMake does before and after."""
        last = run(["ninja", "-t", "commands", "-s", target], self.build).strip().splitlines()[-1]
        return shlex.split(re.search(r"^: && (.*?) && ", last)[1])

    def library_links(self):
        """Names of the shared object in the build folder: the file's own, then the links to it."""
        own = os.path.basename(os.path.realpath(os.path.join(self.build, LIBRARY)))
        return own, [name for name in os.listdir(self.build) if name.startswith(LIBRARY) and name != own]

    def tests(self):
        """What ctest would run, case by case: name, command, environment, folder."""
        listed = json.loads(run(["ctest", "--show-only=json-v1"], self.build))
        for test in listed["tests"]:
            if "command" not in test:
                raise SystemExit(f"{test['name']} is not built")
            wanted = {one["name"]: one["value"] for one in test["properties"]}
            if LEFT_OUT.intersection(wanted.get("LABELS", [])) or "PASS_REGULAR_EXPRESSION" in wanted:
                continue
            for name, command in cases(test["name"], test["command"]):
                yield name, command, wanted.get("ENVIRONMENT", []), wanted["WORKING_DIRECTORY"]


# On demand, too long to be run for each change, or with a build of their own; and what ctest judges by more than the exit
# code is left out too.
LEFT_OUT = {"end_to_end", "endurance", "faults", "fleet", "long", "package", "page", "valgrind"}


def cases(name, command):
    """The cases of a program of many, or the test itself."""
    if len(command) == 1:
        suite = ""
        for line in run([*command, "--gtest_list_tests"], ".").splitlines():
            words = line.split("#")[0].rstrip()
            if not words.startswith(" "):
                suite = words
            elif suite:
                case = suite + words.strip()
                yield f"{name}.{case}", [*command, "--gtest_filter=" + case]
    elif name.startswith("workbench."):
        with open(command[-1], encoding="utf-8") as source:
            found = re.findall(r"^class (\w+)|^    def (test_\w+)", source.read(), re.MULTILINE)
        suite = ""
        for kind, method in found:
            suite = kind or suite
            if method:
                yield f"{name}.{method}", [*command, f"{suite}.{method}"]
    else:
        yield name, command


def bytes_of(path):
    with open(path, "rb") as source:
        return source.read()
