# SPDX-License-Identifier: GPL-3.0-or-later
"""Compiling and linking one mutant beside the build it departs from.

A workshop has the library's sources as files of its own and everything else as links into the copy, so that the copy
and its build folder stay as they are."""
import os
import shutil
import subprocess

from place import bytes_of


class Refused(Exception):
    """The compiler or the linker does not take it."""


class Workshop:
    def __init__(self, place, name, more_flags=()):
        self.place, self.more_flags = place, list(more_flags)
        self.top = os.path.join(place.top, name)
        self.source = os.path.join(self.top, "source")
        self.changed = {}  # object file of the build -> object file of the mutant
        shutil.rmtree(self.source, ignore_errors=True)
        os.makedirs(self.source)
        shutil.copytree(os.path.join(place.tree, "library"), os.path.join(self.source, "library"))
        for entry in os.listdir(place.tree):
            if entry not in ("library", "build"):
                os.symlink(os.path.join(place.tree, entry), os.path.join(self.source, entry))

    def moved(self, text):
        """A command's word, with the paths of the copy's sources, but not of its build, turned into ours."""
        kept = text.replace(self.place.build, "\0")
        return kept.replace(self.place.tree, self.source).replace("\0", self.place.build)

    def path(self, kind, name):
        path = os.path.join(self.top, kind, name)
        os.makedirs(os.path.dirname(path), exist_ok=True)
        return path

    def write(self, file, text):
        with open(os.path.join(self.source, file), "w", encoding="utf-8") as out:
            out.write(text)

    def compile(self, unit):
        """Compiles a unit; whether another object came out than that of the build."""
        output = self.path("objects", unit.output)
        command = [self.moved(word) for word in unit.command]
        command[command.index("-o") + 1] = output
        self.do(command + [f"-fmacro-prefix-map={self.source}={self.place.tree}"] + self.more_flags)
        if bytes_of(output) == bytes_of(os.path.join(self.place.build, unit.output)):
            return False
        self.changed[unit.output] = output
        return True

    def link(self, target, more=()):
        """Links a program or the shared object with the changed objects in the places of the others."""
        output = self.path("linked", target)
        command = [self.changed.get(word, word) for word in self.place.link_command(target)]
        command[command.index("-o") + 1] = output
        self.do(command + list(more))
        self.lay_plugins_beside(output)
        return output

    def lay_plugins_beside(self, program):
        """A program that looks for one beside itself finds it; without it a test would fail of whatever was changed."""
        for name in os.listdir(self.place.build):
            beside = os.path.join(os.path.dirname(program), name)
            if name.endswith("_plugin.so") and not os.path.lexists(beside):
                os.symlink(os.path.join(self.place.build, name), beside)

    def link_library(self, more=()):
        own, links = self.place.library_links()
        folder = os.path.dirname(self.link(own, more))
        for name in links:
            os.symlink(own, os.path.join(folder, name))
        return folder

    def do(self, command):
        done = subprocess.run(command, cwd=self.place.build, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                              text=True, check=False)
        if done.returncode != 0:
            raise Refused(next((line for line in done.stdout.splitlines() if "error" in line), done.stdout[-200:]))

    def clear(self):
        self.changed = {}
        shutil.rmtree(os.path.join(self.top, "linked"), ignore_errors=True)
