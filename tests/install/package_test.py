# SPDX-License-Identifier: GPL-3.0-or-later
"""The Debian packages: built by scripts/package, judged by lintian, installed into empty systems, built again elsewhere.

Empty systems come from a Debian mirror; where none can be reached those tests are skipped and say so.  One of another
processor is unpacked by its package manager, and its programs run under the emulator: the kernel of a test machine seldom
starts them by itself."""
import filecmp
import glob
import os
import re
import shutil
import tempfile
import unittest
import urllib.request

from support import BUILD, LIBRARY, SOURCE, STRICT, files_below, main, page_blocks, platform_stub, run

VERSION = "1.0.0-1"
MIRROR = "http://deb.debian.org/debian"
TRIPLETS = {"amd64": "x86_64-linux-gnu", "armhf": "arm-linux-gnueabihf"}


def mirror_is_there():
    try:
        with urllib.request.urlopen(f"{MIRROR}/dists/{suite()}/InRelease", timeout=20):
            return True
    except OSError:
        return False


def suite():
    with open("/etc/os-release", encoding="utf-8") as file:
        return re.search(r"^VERSION_CODENAME=(\w+)$", file.read(), re.M)[1]


class Packages(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.kept = tempfile.TemporaryDirectory()
        cls.addClassCleanup(cls.kept.cleanup)
        cls.top = cls.kept.name
        os.chmod(cls.top, 0o755) # for the package manager's own user
        cls.packages = os.environ.get("OXA_PACKAGES") or cls.build("first") # built before, by hand: for work on the tests

    @classmethod
    def build(cls, name):
        output = os.path.join(cls.top, name)
        run(os.path.join(SOURCE, "scripts", "package"), "--output", output, "--work",
            os.path.join(cls.top, f"work-of-{name}"))
        shutil.rmtree(os.path.join(cls.top, f"work-of-{name}"))
        return output

    def deb(self, name, architecture="amd64"):
        return os.path.join(self.packages, f"{name}_{VERSION}_{architecture}.deb")

    def unpacked(self, *debs):
        folder = tempfile.mkdtemp(dir=self.top)
        for deb in debs:
            run("dpkg-deb", "-x", deb, folder)
        return folder

    def field(self, deb, name):
        return run("dpkg-deb", "-f", deb, name).strip()

    # ---- what there is

    def test_there_are_the_packages_of_both_processors_with_their_debug_symbols_and_the_sources(self):
        wanted = {f"oxaspecificsensorinfo_{VERSION}.dsc", f"oxaspecificsensorinfo_{VERSION}.debian.tar.xz",
                  f"oxaspecificsensorinfo_{VERSION.split('-', maxsplit=1)[0]}.orig.tar.xz",
                  f"oxa-sensors_{VERSION}_amd64.deb", f"oxa-sensors-dbgsym_{VERSION}_amd64.deb"}
        for architecture in TRIPLETS:
            wanted |= {f"{name}_{VERSION}_{architecture}.deb" for name in (
                "liboxaspecificsensorinfo1", "liboxaspecificsensorinfo1-dbgsym", "liboxaspecificsensorinfo-dev",
                "oxa-capture", "oxa-capture-dbgsym")}
        self.assertEqual(files_below(self.packages), wanted)

    def test_lintian_finds_no_error(self):
        files = glob.glob(f"{self.packages}/*.deb") + glob.glob(f"{self.packages}/*.dsc")
        said = run("lintian", "--allow-root", "--fail-on", "error", *files)
        print(said)

    def test_libraries_of_both_processors_can_be_installed_side_by_side(self):
        for name in ("liboxaspecificsensorinfo1", "liboxaspecificsensorinfo-dev", "oxa-capture"):
            trees = []
            for architecture in TRIPLETS:
                self.assertEqual(self.field(self.deb(name, architecture), "Multi-Arch"), "same")
                trees.append(self.unpacked(self.deb(name, architecture)))
            for path in files_below(trees[0]) & files_below(trees[1]):
                self.assertTrue(filecmp.cmp(*(os.path.join(tree, path) for tree in trees), shallow=False), path)

    def test_what_runs_on_a_bmc_depends_on_libc_alone(self):
        for architecture in TRIPLETS:
            for name in ("liboxaspecificsensorinfo1", "oxa-capture"):
                self.assertRegex(self.field(self.deb(name, architecture), "Depends"), r"^libc6 \(>= [\d.]+\)$")

    def test_the_packaged_library_has_the_code_that_was_tested(self):
        tree = self.unpacked(self.deb("liboxaspecificsensorinfo1"))
        packaged = os.path.join(tree, "usr/lib", TRIPLETS["amd64"], f"{LIBRARY}.1")
        for section in (".text", ".rodata"):
            found = []
            for path in (packaged, os.path.join(BUILD, f"{LIBRARY}.1")):
                copy = os.path.join(tree, f"section{len(found)}")
                run("objcopy", "-O", "binary", f"--only-section={section}", path, copy)
                with open(copy, "rb") as file:
                    found.append(file.read())
            self.assertGreater(len(found[0]), 0)
            self.assertEqual(found[0], found[1], section)

    def test_the_symbols_file_has_exactly_what_is_exported(self):
        tree = self.unpacked(self.deb("liboxaspecificsensorinfo1", "armhf"))
        path = os.path.join(tree, "usr/lib", TRIPLETS["armhf"], f"{LIBRARY}.1")
        exported = {line.split()[-1] for line in run("nm", "-D", "--defined-only", path).splitlines()}
        with open(os.path.join(SOURCE, "packaging/debian/liboxaspecificsensorinfo1.symbols"), encoding="utf-8") as file:
            listed = set(re.findall(r"^ (\w+)@Base ", file.read(), re.M))
        self.assertEqual(listed, exported)

    def test_every_licence_of_the_sources_is_in_the_copyright_file(self):
        tree = self.unpacked(self.deb("oxa-sensors"))
        with open(os.path.join(tree, "usr/share/doc/oxa-sensors/copyright"), encoding="utf-8") as file:
            text = file.read()
        for pattern, licence in (("*", "Apache-2.0"), ("simulator/*", "GPL-3+"), ("include/oxa/simulator.h", "GPL-3+")):
            stanza = next(one for one in text.split("\n\n") if re.search(rf"^(Files:)? {re.escape(pattern)}$", one, re.M))
            self.assertIn(f"License: {licence}", stanza)

    # ---- in empty systems

    def system(self, architecture, *more):
        """Runs mmdebstrap, which takes our packages from a folder of ours and theirs from the mirror."""
        if not mirror_is_there():
            self.skipTest(f"no Debian mirror at {MIRROR}: the packages were installed nowhere")
        with open(os.path.join(self.packages, "Packages"), "w", encoding="utf-8") as out:
            out.write(run("dpkg-scanpackages", "--multiversion", ".", cwd=self.packages).split("dpkg-scanpackages:")[0])
        self.addCleanup(os.unlink, os.path.join(self.packages, "Packages"))
        root = tempfile.mkdtemp(dir=self.top)
        os.chmod(root, 0o755)
        return root, run("mmdebstrap", "--quiet", f"--architectures={architecture}", *more, suite(), root,
                         f"deb {MIRROR} {suite()} main", f"deb [trusted=yes] copy:{self.packages} ./")

    def test_on_an_empty_system_the_workbench_lists_and_a_foreign_program_counts_is_recorded_and_played(self):
        tree = self.unpacked(self.deb("liboxaspecificsensorinfo1"), self.deb("liboxaspecificsensorinfo-dev"),
                             self.deb("oxa-sensors"))
        where = os.path.join(tree, "usr/lib", TRIPLETS["amd64"])
        source = os.path.join(tree, "sensors.c")
        with open(source, "w", encoding="utf-8") as file:
            file.write(page_blocks("c")["sensors"])
        words = run("pkg-config", "--cflags", "--libs", "oxasimulator",
                    env={"PKG_CONFIG_LIBDIR": f"{where}/pkgconfig", "PKG_CONFIG_SYSROOT_DIR": tree}).split()
        run("cc", *STRICT, source, *words, "-o", f"{tree}/sensors")
        board = "/usr/share/oxa-sensors/boards/two_socket_2u.toml"
        recorded = "OXA_CAPTURE=/machine.cap LD_PRELOAD=liboxacapture.so"
        root, said = self.system("amd64", "--variant=essential",
                                 "--include=oxa-sensors,oxa-capture,liboxaspecificsensorinfo-dev",
                                 f"--customize-hook=copy-in {tree}/sensors /",
                                 f'--customize-hook=chroot "$1" oxa-sensors list --board {board}',
                                 f'--customize-hook=chroot "$1" env {recorded} /sensors {board}',
                                 '--customize-hook=chroot "$1" oxa-sensors replay /machine.cap')
        self.addCleanup(shutil.rmtree, root, ignore_errors=True)
        self.assertIn("164 sensors (70 full, 94 compact), profile default", said)
        self.assertRegex(said, r"(?m)^164 sensors$")
        self.assertIn("everything came out the same, byte for byte", said)

    def test_on_an_empty_system_of_the_bmc_a_foreign_program_starts(self):
        root, _ = self.system("armhf", "--variant=extract", "--skip=check/qemu",
                              "--include=liboxaspecificsensorinfo1,liboxaspecificsensorinfo-dev")
        self.addCleanup(shutil.rmtree, root, ignore_errors=True)
        where = os.path.join(root, "usr/lib", TRIPLETS["armhf"])
        for name, text in (("tables", page_blocks("c")["tables"]), ("stub", platform_stub())):
            with open(os.path.join(root, f"{name}.c"), "w", encoding="utf-8") as file:
                file.write(text)
        words = run("pkg-config", "--cflags", "--libs", "oxaspecificsensorinfo",
                    env={"PKG_CONFIG_LIBDIR": f"{where}/pkgconfig", "PKG_CONFIG_SYSROOT_DIR": root}).split()
        run("arm-linux-gnueabihf-gcc", *STRICT, "-fno-builtin", f"{root}/tables.c", f"{root}/stub.c", *words, "-o",
            f"{root}/tables")
        said = run("qemu-arm", "-L", root, f"{root}/tables")
        self.assertEqual(len(said.splitlines()), 10, said)
        self.assertIn("profile 20: 51 names\n", said)

    # ---- again

    def test_built_again_in_another_folder_they_are_the_same_to_the_byte(self):
        again = self.build("again-in-a-folder-with-a-longer-name")
        self.assertEqual(files_below(again), files_below(self.packages) - {"Packages"})
        for name in sorted(files_below(again)):
            self.assertTrue(filecmp.cmp(os.path.join(again, name), os.path.join(self.packages, name), shallow=False), name)


if __name__ == "__main__":
    main()
