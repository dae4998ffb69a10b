# SPDX-License-Identifier: GPL-3.0-or-later
"""Cross building: the environment of an SDK goes before what cmake/armhf.cmake says; a sysroot takes the install."""
import json
import os
import shlex
import shutil

from support import CMAKE, LIBDIR, SOURCE, TOOLCHAIN, Outside, main, page_blocks, run

TRIPLET = "arm-linux-gnueabihf"
FACTS = """
    cmake_minimum_required(VERSION 3.25)
    project(facts C CXX)
    add_executable(one one.c)
    file(WRITE ${CMAKE_BINARY_DIR}/facts "${CMAKE_C_COMPILER}\\n${CMAKE_CXX_COMPILER}\\n${CMAKE_SYSROOT}\\n"
      "${CMAKE_SYSTEM_PROCESSOR}\\n${SDK_TOOLCHAIN_WAS_READ}\\n")
    """


class Sdk(Outside):
    def setUp(self):
        super().setUp()
        self.write("CMakeLists.txt", FACTS)
        self.write("one.c", "int main(void) { return 0; }\n")
        self.sysroot = self.make_sysroot(os.path.join(self.folder, "sysroot"))

    @staticmethod
    def make_sysroot(root):
        """The cross packages as one finds them in an SDK: below usr/ of a folder."""
        os.makedirs(f"{root}/usr")
        for name in ("include", "lib"):
            os.symlink(f"/usr/{TRIPLET}/{name}", f"{root}/usr/{name}")
        os.symlink("usr/lib", f"{root}/lib")
        os.symlink(f"/usr/{TRIPLET}", f"{root}/usr/{TRIPLET}") # the linker's script for libc names its place
        return root

    def sdk_compiler(self, name, behind):
        path = self.write(f"bin/{name}", f"#!/bin/sh\nexec {behind} \"$@\"\n")
        os.chmod(path, 0o755)
        return path

    def configure(self, **environment):
        """Facts and compile command of a project that is configured with our toolchain file."""
        shutil.rmtree(f"{self.folder}/out", ignore_errors=True)
        environment = {"CC": "", "CXX": "", "CFLAGS": "", **environment}
        run(CMAKE, "-G", "Ninja", "-S", self.folder, "-B", f"{self.folder}/out", "-DCMAKE_EXPORT_COMPILE_COMMANDS=ON",
            f"-DCMAKE_TOOLCHAIN_FILE={TOOLCHAIN}", env=environment)
        run(CMAKE, "--build", f"{self.folder}/out")
        with open(f"{self.folder}/out/facts", encoding="utf-8") as file:
            facts = dict(zip(("cc", "cxx", "sysroot", "processor", "own"), file.read().split("\n")))
        with open(f"{self.folder}/out/compile_commands.json", encoding="utf-8") as file:
            facts["command"] = shlex.split(json.load(file)[0]["command"])
        facts["machine"] = run("readelf", "-h", f"{self.folder}/out/one")
        return facts

    def test_without_an_sdk_debians_cross_compilers_are_taken(self):
        facts = self.configure()
        self.assertEqual([os.path.basename(facts[one]) for one in ("cc", "cxx")], [f"{TRIPLET}-gcc", f"{TRIPLET}-g++"])
        self.assertIn("ARM", facts["machine"])

    def test_compilers_with_their_options_and_flags_of_the_environment_are_taken(self):
        cc, cxx = (self.sdk_compiler(f"arm-sdk-{name}", f"{TRIPLET}-{name}") for name in ("gcc", "g++"))
        facts = self.configure(CC=f"{cc} -mthumb -mfpu=vfpv3-d16", CXX=f"{cxx} -mthumb", CFLAGS="-O2 -DFROM_SDK")
        self.assertEqual((facts["cc"], facts["cxx"], facts["processor"]), (cc, cxx, "arm"))
        for word in ("-mfpu=vfpv3-d16", "-DFROM_SDK"):
            self.assertIn(word, facts["command"])

    def test_a_compiler_of_the_desk_in_the_environment_is_not_taken(self):
        facts = self.configure(CC="gcc", CXX="g++")
        self.assertEqual([os.path.basename(facts[one]) for one in ("cc", "cxx")], [f"{TRIPLET}-gcc", f"{TRIPLET}-g++"])

    def test_the_root_of_the_sdk_is_taken(self):
        facts = self.configure(SDKTARGETSYSROOT=self.sysroot)
        self.assertEqual(facts["sysroot"], self.sysroot)
        self.assertIn(f"--sysroot={self.sysroot}", facts["command"])

    def test_the_toolchain_file_of_the_sdk_is_taken_in_place_of_ours(self):
        own = self.write("sdk.cmake", f"""
            set(CMAKE_SYSTEM_NAME Linux)
            set(CMAKE_SYSTEM_PROCESSOR armv7-sdk)
            set(CMAKE_C_COMPILER {TRIPLET}-gcc-12)
            set(CMAKE_CXX_COMPILER {TRIPLET}-g++-12)
            set(SDK_TOOLCHAIN_WAS_READ yes)
            """)
        facts = self.configure(CMAKE_TOOLCHAIN_FILE=own, CC="gcc")
        self.assertEqual((facts["processor"], facts["own"]), ("armv7-sdk", "yes"))
        self.assertTrue(facts["cc"].endswith("gcc-12"))

    def test_a_build_folder_keeps_its_compiler_when_the_environment_is_gone(self):
        cc, cxx = (self.sdk_compiler(f"arm-sdk-{name}", f"{TRIPLET}-{name}") for name in ("gcc", "g++"))
        self.assertEqual(self.configure(CC=cc, CXX=cxx)["cc"], cc)
        run(CMAKE, f"{self.folder}/out", env={"CC": "", "CXX": ""})
        with open(f"{self.folder}/out/facts", encoding="utf-8") as file:
            self.assertEqual(file.readline().strip(), cc)

    def test_the_library_itself_is_built_with_the_sdks_environment(self):
        cc, cxx = (self.sdk_compiler(f"arm-sdk-{name}", f"{TRIPLET}-{name}") for name in ("gcc", "g++"))
        out = f"{self.folder}/library"
        run(CMAKE, "-G", "Ninja", "-S", SOURCE, "-B", out, f"-DCMAKE_TOOLCHAIN_FILE={TOOLCHAIN}", "-DOXA_BUILD_TESTS=OFF",
            "-DOXA_BUILD_WORKBENCH=OFF", "-DOXA_BUILD_SIMULATOR=OFF", "-DCMAKE_BUILD_TYPE=Release",
            env={"CC": cc, "CXX": f"{cxx} -mthumb", "SDKTARGETSYSROOT": self.sysroot})
        listed = run("ninja", "-C", out, "-t", "commands", "oxaspecificsensorinfo")
        command = next(line for line in listed.splitlines() if "plain.cpp" in line)
        for word in (cxx, "-mthumb", f"--sysroot={self.sysroot}"):
            self.assertIn(word, command.split())

    def test_a_program_is_built_against_a_sysroot_that_the_tree_was_installed_into(self):
        shutil.copytree(self.usr, f"{self.sysroot}/usr", dirs_exist_ok=True, symlinks=True,
                        ignore=lambda folder, names: [name for name in names if name in ("lib", "include")
                                                      and folder == self.usr])
        for name in ("lib", "include"): # what was a link becomes a folder that has ours besides
            os.unlink(f"{self.sysroot}/usr/{name}")
            os.mkdir(f"{self.sysroot}/usr/{name}")
            for entry in os.listdir(f"/usr/{TRIPLET}/{name}"):
                os.symlink(f"/usr/{TRIPLET}/{name}/{entry}", f"{self.sysroot}/usr/{name}/{entry}")
            shutil.copytree(f"{self.usr}/{name}", f"{self.sysroot}/usr/{name}", dirs_exist_ok=True, symlinks=True)
        self.write("sensors.c", page_blocks("c")["sensors"])
        self.write("CMakeLists.txt", page_blocks("cmake")[0])
        run(CMAKE, "-G", "Ninja", "-S", self.folder, "-B", f"{self.folder}/out", f"-DCMAKE_TOOLCHAIN_FILE={TOOLCHAIN}",
            env={"SDKTARGETSYSROOT": self.sysroot, "CC": "", "CXX": ""})
        run(CMAKE, "--build", f"{self.folder}/out")
        board = os.path.join(SOURCE, "boards", "two_socket_2u.toml")
        self.libraries = f"{self.sysroot}/usr/{LIBDIR}"
        self.assertEqual(self.says(f"{self.folder}/out/sensors", board), "164 sensors\n")


if __name__ == "__main__":
    main()
