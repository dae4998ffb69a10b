# SPDX-License-Identifier: GPL-3.0-or-later
"""The library within another project: the fourth way of docs/using-the-library.md."""
import os

from support import CMAKE, SOURCE, OfThePage, main, run


class Page(OfThePage):
    def project(self, settings):
        os.symlink(SOURCE, os.path.join(self.folder, "liboxaspecificsensorinfo"))
        return ("cmake_minimum_required(VERSION 3.25)\nproject(desk LANGUAGES C CXX)\n"
                f"{settings}\nadd_subdirectory(liboxaspecificsensorinfo)\n")

    def test_with_add_subdirectory(self):
        self.libraries = f"{self.folder}/out/liboxaspecificsensorinfo"
        self.configure_and_build(self.project("set(OXA_BUILD_SIMULATOR ON)"))

    def test_by_default_the_library_alone_is_built_and_nothing_installed(self):
        self.write("CMakeLists.txt", self.project("enable_testing()"))
        run(CMAKE, "-G", "Ninja", "-S", self.folder, "-B", f"{self.folder}/out")
        listed = run("ninja", "-C", f"{self.folder}/out", "-t", "targets", "all")
        made = {line.split(":")[0] for line in listed.splitlines() if "_LINKER__" in line}
        self.assertEqual(made, {"liboxaspecificsensorinfo/liboxaspecificsensorinfo.so.1.0.0"})
        commands = run("ninja", "-C", f"{self.folder}/out", "-t", "commands", "oxaspecificsensorinfo")
        self.assertIn("-Wconversion", commands)
        self.assertNotIn("-Werror", commands)
        self.assertIn("No tests were found", run("ctest", "--test-dir", f"{self.folder}/out"))
        run(CMAKE, "--install", f"{self.folder}/out", "--prefix", f"{self.folder}/usr")
        self.assertFalse(os.path.exists(f"{self.folder}/usr"))


if __name__ == "__main__":
    main()
