# SPDX-License-Identifier: GPL-3.0-or-later
"""The programs of docs/using-the-library.md: built outside of the tree, as C11 and as C++20, in three of the four ways
(subproject_test.py has the fourth)."""
import os

from support import BUILD, CMAKE, SAYS, TOOLCHAIN, OfThePage, main, page_blocks, pkgconfig, run

class Page(OfThePage):
    def project_of_the_page(self):
        [text] = page_blocks("cmake")
        self.assertIn("find_package(oxaspecificsensorinfo 1 REQUIRED COMPONENTS simulator)", text)
        return text

    def test_the_page_has_the_three_programs(self):
        self.assertEqual(set(page_blocks("c")), set(SAYS))

    def test_with_pkg_config_and_the_installed_tree(self):
        self.compile_all(pkgconfig("--cflags", "--libs", "oxasimulator", root=self.root), self.libraries)

    def test_with_pkg_config_and_the_build_folder(self):
        self.compile_all(pkgconfig("--cflags", "--libs", "oxasimulator", folder=BUILD), BUILD)

    def test_with_find_package_and_the_installed_tree(self):
        where = os.path.join(self.libraries, "cmake", "oxaspecificsensorinfo")
        self.configure_and_build(self.project_of_the_page(), f"-Doxaspecificsensorinfo_DIR={where}")

    def test_with_find_package_and_the_build_folder(self):
        self.libraries = BUILD
        self.configure_and_build(self.project_of_the_page(), f"-Doxaspecificsensorinfo_DIR={BUILD}")

    def test_find_package_refuses_another_major_version_and_a_missing_component(self):
        where = os.path.join(self.libraries, "cmake", "oxaspecificsensorinfo")
        simulator = os.path.join(where, "oxaspecificsensorinfo-simulator.cmake")
        target = [f"-DCMAKE_TOOLCHAIN_FILE={TOOLCHAIN}"] if TOOLCHAIN else []

        def configure(line):
            self.write("CMakeLists.txt", f"cmake_minimum_required(VERSION 3.25)\nproject(x C)\n{line}\n")
            run(CMAKE, "-S", self.folder, "-B", f"{self.folder}/x", f"-Doxaspecificsensorinfo_DIR={where}", *target)

        configure("find_package(oxaspecificsensorinfo 1.0 REQUIRED COMPONENTS simulator)")
        with self.assertRaisesRegex(AssertionError, "version: 1.0.0"):
            configure("find_package(oxaspecificsensorinfo 2 REQUIRED)")
        os.rename(simulator, simulator + ".away")
        self.addCleanup(os.rename, simulator + ".away", simulator)
        configure("find_package(oxaspecificsensorinfo 1 REQUIRED)")
        with self.assertRaisesRegex(AssertionError, "its component 'simulator' is not installed"):
            configure("find_package(oxaspecificsensorinfo 1 REQUIRED COMPONENTS simulator)")


if __name__ == "__main__":
    main()
