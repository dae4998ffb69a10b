# SPDX-License-Identifier: GPL-3.0-or-later
"""Linking: programs of other people, old ones, and the flags of a distribution."""
import os
import shutil
import unittest

from support import (BOARD, BUILD, CC, CROSS, LIBDIR, LIBRARY, READELF, STRICT, Outside, install, main, needed_by,
                     page_blocks, pkgconfig, platform_stub, run, started)

# A program of the library alone.  Without a table it needs the library for one function.
NO_TABLE = """
#include <oxa/events.h>
#include <stdio.h>
int main(void) { printf("%u\\n", (unsigned)ipmi_add_sel_entry(NULL)); return 0; }
"""
DISTRIBUTION = ["-O2", "-fPIE", "-pie", "-Wl,--as-needed", "-Wl,-z,now", "-Wl,-z,relro"]


class Linking(Outside):
    def link(self, name, text, *more, package="oxaspecificsensorinfo"):
        """Compiled and linked with the words of the installed package."""
        program = os.path.join(self.folder, name)
        words = pkgconfig("--cflags", "--libs", package, root=self.root)
        run(CC, "-std=c11", *STRICT, self.write(f"{name}.c", text), *words, *more, "-o", program)
        return program

    def stub(self, *more, name="stub"):
        """An object of a platform that answers 0."""
        path = os.path.join(self.folder, f"{name}.o")
        run(CC, "-fPIC", "-fno-builtin", "-c", self.write(f"{name}.c", platform_stub()), *more, "-o", path)
        return path

    def distribution_flags(self):
        """The least that one sets, and Debian's whole set."""
        yield DISTRIBUTION
        if shutil.which("dpkg-buildflags"):
            environment = {"DEB_HOST_ARCH": "armhf" if CROSS else "amd64", "DEB_BUILD_MAINT_OPTIONS": "hardening=+all"}
            words = [run("dpkg-buildflags", "--get", name, env=environment).split()
                     for name in ("CPPFLAGS", "CFLAGS", "LDFLAGS")]
            yield [word for flags in words for word in flags] + ["-Wl,--as-needed"]

    # ---- programs with the platform in them

    def test_a_program_without_any_platform_links_and_says_at_its_start_what_is_missing(self):
        program = self.link("alone", NO_TABLE)
        code, said = started(program, libraries=[self.libraries])
        self.assertNotEqual(code, 0)
        self.assertRegex(said, r"undefined symbol: \w+|symbol lookup error")

    def test_a_program_with_the_platform_in_itself_links_and_starts(self):
        self.assertEqual(self.says(self.link("own", NO_TABLE, self.stub())), "65535\n")

    def test_a_program_with_the_platform_in_an_archive_behind_the_library_links_and_starts(self):
        archive = os.path.join(self.folder, "libplatform.a")
        run("ar", "rcs", archive, self.stub())
        self.assertEqual(self.says(self.link("own", NO_TABLE, archive)), "65535\n")

    def test_an_archive_before_the_library_gives_it_nothing(self):
        archive = os.path.join(self.folder, "libplatform.a")
        run("ar", "rcs", archive, self.stub())
        program = os.path.join(self.folder, "before")
        run(CC, self.write("before.c", NO_TABLE), archive, *pkgconfig("--cflags", "--libs", "oxaspecificsensorinfo",
                                                                      root=self.root), "-o", program)
        self.assertIn("undefined symbol", started(program, libraries=[self.libraries])[1])

    def test_a_program_that_loads_the_library_itself_shows_its_platform_with_rdynamic_only(self):
        text = f"""
            #include <dlfcn.h>
            #include <stdio.h>
            int main(void) {{
                if (dlopen("{LIBRARY}.1", RTLD_NOW) == NULL)
                    return puts(dlerror()), 1;
                return 0;
            }}
            """
        for more, wanted in (([], 1), (["-rdynamic"], 0)):
            program = os.path.join(self.folder, f"loader{wanted}")
            run(CC, "-std=c11", *STRICT, self.write("loader.c", text), self.stub(), *more, "-o", program)
            self.assertEqual(started(program, libraries=[self.libraries])[0], wanted)

    def test_a_program_whose_sections_are_dropped_when_unused_keeps_its_platform(self):
        flags = ["-ffunction-sections", "-fdata-sections", "-Wl,--gc-sections"]
        self.assertEqual(self.says(self.link("own", NO_TABLE, self.stub("-ffunction-sections"), *flags)), "65535\n")

    def test_a_program_that_names_a_table_and_one_that_does_not_link_with_a_distributions_flags(self):
        for flags in self.distribution_flags():
            for name, text in (("no_table", NO_TABLE), ("tables", page_blocks("c")["tables"])):
                with self.subTest(name, flags=flags):
                    program = self.link(name, text, self.stub(), *flags)
                    self.assertIn(f"{LIBRARY}.1", needed_by(program))
                    self.assertIn("\n", self.says(program))

    def test_the_same_programs_link_against_the_simulated_platform_with_a_distributions_flags(self):
        for flags in self.distribution_flags():
            for name, wanted in (("sensors", "164 sensors\n"), ("service", "164 static sensors\n")):
                with self.subTest(name, flags=flags):
                    program = self.link(name, page_blocks("c")[name], *flags, package="oxasimulator")
                    self.assertTrue(self.says(program, BOARD).startswith(wanted))

    def test_a_table_that_a_program_names_has_the_librarys_content(self):
        for flags in ([], DISTRIBUTION, ["-no-pie", "-fno-pie"]):
            with self.subTest(flags=flags):
                said = self.says(self.link("tables", page_blocks("c")["tables"], self.stub(), *flags))
                # as oxa/specific_sensors.h says at the tables
                self.assertEqual(sorted(said.splitlines()), sorted(f"profile {profile}: {count} names" for profile, count in (
                    (0, 48), (1, 48), (2, 48), (3, 56), (4, 45), (6, 45), (7, 39), (11, 44), (16, 14), (20, 51))))

    # ---- the shared objects

    def test_a_c_program_on_the_simulated_platform_needs_no_cxx_itself(self):
        program = self.link("sensors", page_blocks("c")["sensors"], package="oxasimulator")
        self.assertFalse([name for name in needed_by(program) if "stdc++" in name])
        self.assertEqual(self.says(program, BOARD), "164 sensors\n")

    def test_the_simulated_platform_shows_no_cxx_names(self):
        path = os.path.join(self.libraries, "liboxasimulator.so.1")
        names = [line.split()[-1] for line in run("nm", "-D", "--defined-only", path).splitlines()]
        self.assertIn("oxa_simulator_open", names)
        self.assertEqual([name for name in names if name.startswith("_Z")], [])

    # ---- programs that were linked before the name had a number

    def old_program(self):
        """Linked against a library whose name in it has no number: what programs of before ask for."""
        old = os.path.join(self.folder, "old")
        os.mkdir(old)
        run(CC, "-shared", "-fPIC", "-nostdlib", f"-Wl,-soname,{LIBRARY}", "-o", os.path.join(old, LIBRARY),
            self.write("old_library.c", "unsigned ipmi_add_sel_entry(const void *p);\n"
                                        "unsigned ipmi_add_sel_entry(const void *p) { return p != 0; }\n"))
        program = os.path.join(self.folder, "old_program")
        run(CC, "-std=c11", *STRICT, self.write("old_program.c", NO_TABLE), self.stub(), "-rdynamic", "-I",
            os.path.join(self.usr, "include"), "-L", old, "-loxaspecificsensorinfo", "-o", program)
        self.assertIn(LIBRARY, needed_by(program))
        return program

    def test_a_program_linked_before_the_name_had_a_number_starts_with_the_runtime_component_alone(self):
        program = self.old_program()
        where = os.path.join(install(os.path.join(self.folder, "target"), "runtime"), LIBDIR)
        self.assertEqual(started(program, libraries=[where]), (0, "65535\n"))

    def test_the_same_program_does_not_start_where_the_plain_name_is_missing(self):
        program = self.old_program()
        where = os.path.join(install(os.path.join(self.folder, "target"), "runtime"), LIBDIR)
        os.unlink(os.path.join(where, LIBRARY))
        self.assertNotEqual(started(program, libraries=[where])[0], 0)

    def test_the_build_folder_has_the_plain_name_too(self):
        self.assertEqual(started(self.old_program(), libraries=[BUILD]), (0, "65535\n"))


if __name__ == "__main__":
    main()
