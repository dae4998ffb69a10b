# SPDX-License-Identifier: GPL-3.0-or-later
"""What the components put where."""
import os
import re
import tempfile
import unittest

from support import BUILD, CROSS, LIBDIR, LIBRARY, READELF, SOURCE, Outside, files_below, install, main, run, started

VERSION = "1.0.0"


class Components(unittest.TestCase):
    def files(self, component):
        with tempfile.TemporaryDirectory() as root:
            return files_below(install(root, component))

    def test_runtime_is_the_shared_object_under_its_three_names_and_nothing_else(self):
        self.assertEqual(self.files("runtime"), {f"{LIBDIR}/{LIBRARY}{end}" for end in ("", ".1", f".{VERSION}")})

    def test_dev_has_every_header_of_the_library_and_not_the_simulators(self):
        wanted = {f"include/{name}" for name in files_below(os.path.join(SOURCE, "include"))}
        found = {name for name in self.files("dev") if name.startswith("include/")}
        self.assertEqual(found, wanted - {"include/oxa/simulator.h"})

    def test_capture_is_the_recorder_and_nothing_else(self):
        self.assertEqual(self.files("capture"), {f"{LIBDIR}/liboxacapture.so"})

    def test_dev_and_tools_have_no_file_twice(self):
        self.assertEqual(self.files("dev") & self.files("tools"), set())

    def test_tools_have_every_board_and_scenario(self):
        found = self.files("tools")
        for folder in ("boards", "scenarios"):
            wanted = {f"share/oxa-sensors/{folder}/{name}" for name in files_below(os.path.join(SOURCE, folder))}
            self.assertLessEqual(wanted, found)

    def test_a_listed_man_page_schema_and_completion_is_installed(self):
        project = """
            cmake_minimum_required(VERSION 3.25)
            project(listing C CXX)
            set(OXA_INSTALL ON)
            foreach(list OXA_MAN_PAGES OXA_SCHEMAS OXA_BASH_COMPLETIONS OXA_ZSH_COMPLETIONS OXA_FISH_COMPLETIONS)
              file(WRITE ${CMAKE_BINARY_DIR}/${list} "")
              set_property(GLOBAL APPEND PROPERTY ${list} ${CMAKE_BINARY_DIR}/${list})
            endforeach()
            add_subdirectory(%s oxa)
            """
        with tempfile.TemporaryDirectory() as top:
            with open(os.path.join(top, "CMakeLists.txt"), "w", encoding="utf-8") as file:
                file.write(project % SOURCE)
            run("cmake", "-S", top, "-B", f"{top}/build")
            run("cmake", "--install", f"{top}/build", "--prefix", f"{top}/usr", "--component", "tools")
            self.assertEqual(files_below(f"{top}/usr"), {
                "share/man/man1/OXA_MAN_PAGES", "share/oxa-sensors/schema/OXA_SCHEMAS",
                "share/bash-completion/completions/OXA_BASH_COMPLETIONS",
                "share/zsh/vendor-completions/OXA_ZSH_COMPLETIONS",
                "share/fish/vendor_completions.d/OXA_FISH_COMPLETIONS"})


class Tree(Outside):
    def test_the_version_stands_in_one_place(self):
        found = []
        for folder in (".", "cmake", "include", "library", "simulator", "workbench", "scripts"):
            for name in files_below(os.path.join(SOURCE, folder)) if folder != "." else os.listdir(SOURCE):
                path = os.path.join(SOURCE, folder, name)
                if os.path.isfile(path) and not name.endswith(".md"):
                    with open(path, encoding="utf-8") as file:
                        found += [os.path.normpath(path)] if VERSION in file.read() else []
        self.assertEqual(found, [os.path.join(SOURCE, "CMakeLists.txt")])

    def test_no_installed_text_names_the_build_folder_or_the_root(self):
        for name in sorted(files_below(self.usr)):
            path = os.path.join(self.usr, name)
            if re.search(r"\.(cmake|pc|h)$", name):
                with open(path, encoding="utf-8") as file:
                    text = file.read()
                for folder in (BUILD, SOURCE, self.root):
                    self.assertNotIn(folder, text, name)

    def test_no_installed_program_looks_for_libraries_in_the_build_folder(self):
        for name in sorted(files_below(self.usr)):
            if ".so" in name or name.startswith("bin/"):
                paths = re.findall(r"R(?:UN)?PATH.*\[(.*)\]", run(READELF, "-dW", os.path.join(self.usr, name)))
                self.assertIn(paths, ([], ["$ORIGIN"], ["$ORIGIN/../" + LIBDIR]), name)

    @unittest.skipIf(CROSS, "the workbench is not built for the BMC")
    def test_the_installed_workbench_starts_wherever_the_tree_stands(self):
        board = os.path.join(self.usr, "share/oxa-sensors/boards/two_socket_2u.toml")
        code, said = started(os.path.join(self.usr, "bin/oxa-sensors"), "list", "--board", board)
        self.assertEqual((code, said.splitlines()[-1].split(" (")[0]), (0, "164 sensors"))

    @unittest.skipIf(CROSS, "the workbench is not built for the BMC")
    def test_the_installed_workbench_finds_the_installed_plug_in(self):
        plugin = os.path.join(self.usr, LIBDIR, "oxa-sensors/oxa_ipmi_sim_plugin.so")
        self.assertTrue(os.path.exists(plugin))
        os.rename(plugin, plugin + ".away")
        self.addCleanup(os.rename, plugin + ".away", plugin)
        board = os.path.join(self.usr, "share/oxa-sensors/boards/base_48.toml")
        _, without = started(os.path.join(self.usr, "bin/oxa-sensors"), "serve", "--board", board)
        self.assertIn("oxa_ipmi_sim_plugin.so is missing", without)


if __name__ == "__main__":
    main()
