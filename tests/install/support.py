# SPDX-License-Identifier: GPL-3.0-or-later
"""A tree as it is installed, and programs that are built against it outside of ours."""
import os
import re
import shlex
import subprocess
import sys
import tempfile
import unittest

SOURCE = os.environ["OXA_SOURCE"]
BUILD = os.environ["OXA_BUILD"]
CC = os.environ["OXA_CC"]
CXX = os.environ["OXA_CXX"]
CMAKE = os.environ["OXA_CMAKE"]
READELF = os.environ["OXA_READELF"]
LIBDIR = os.environ["OXA_LIBDIR"]
TOOLCHAIN = os.environ["OXA_TOOLCHAIN"]
EMULATOR = shlex.split(os.environ["OXA_EMULATOR"])
CROSS = bool(TOOLCHAIN)
BOARD = os.path.join(SOURCE, "boards", "two_socket_2u.toml")
LIBRARY = "liboxaspecificsensorinfo.so"
STRICT = ["-Wall", "-Wextra", "-Werror"]


# What the page says of them, and what follows from the library's rules: the board's card is printed with its slot.
SAYS = {
    "sensors": "164 sensors\n",
    "tables": "profile 0: 48 names\n",
    "service": "164 static sensors\nnetwork card: NIC_TEMP_03\nthe same again: refused\nevent: written\n",
}


def run(*command, **more):
    """Both outputs of a command that must succeed."""
    environment = {**os.environ, **more.pop("env", {})}
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, env=environment,
                          check=False, **more)
    if done.returncode != 0:
        raise AssertionError(f"{shlex.join(command)}\n{done.stdout}\nfailed with {done.returncode}")
    return done.stdout


def install(root, *components):
    """DESTDIR=root, prefix /usr."""
    for component in components or ("runtime", "dev", "tools"):
        run(CMAKE, "--install", BUILD, "--prefix", "/usr", "--component", component, env={"DESTDIR": root})
    return os.path.join(root, "usr")


def files_below(folder):
    return {os.path.relpath(os.path.join(where, name), folder) for where, _, names in os.walk(folder) for name in names}


def started(program, *words, libraries=(), environment=()):
    """How a program ends, (exit code, both outputs), under the emulator where it is for another machine."""
    settings = {**dict(environment), "LD_LIBRARY_PATH": ":".join(libraries)}
    command = [program, *words]
    if EMULATOR: # its own libraries are not those of the program
        command = [*EMULATOR, *(word for key, value in settings.items() for word in ("-E", f"{key}={value}")), *command]
        settings = {}
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False,
                          timeout=60, env={**os.environ, **settings})
    return done.returncode, done.stdout


def needed_by(program):
    return re.findall(r"\(NEEDED\).*\[(.*)\]", run(READELF, "-dW", program))


def pkgconfig(*words, root="", folder=""):
    """Words of a package that is installed below a root, or of the one in a folder."""
    where = folder or os.path.join(root, "usr", LIBDIR, "pkgconfig")
    return shlex.split(run("pkg-config", *words, env={"PKG_CONFIG_LIBDIR": where, "PKG_CONFIG_SYSROOT_DIR": root}))


def page_blocks(language):
    """Blocks of the page in a language: programs by the name in their first line, of others the text."""
    with open(os.path.join(SOURCE, "docs", "using-the-library.md"), encoding="utf-8") as page:
        blocks = re.findall(rf"^```{language}\n(.*?)^```", page.read(), re.M | re.S)
    return {re.match(r"/\* (\w+)\.c: ", block)[1]: block for block in blocks} if language == "c" else blocks


def platform_stub():
    sys.path.insert(0, os.path.join(SOURCE, "tests", "contract"))
    import common # noqa: E402
    return common.platform_stub(CC, os.path.join(SOURCE, "include"))


class Outside(unittest.TestCase):
    """A folder outside of the tree."""

    @classmethod
    def setUpClass(cls):
        cls.kept = tempfile.TemporaryDirectory()
        cls.addClassCleanup(cls.kept.cleanup)
        cls.root = os.path.join(cls.kept.name, "root")
        cls.usr = install(cls.root)
        cls.libraries = os.path.join(cls.usr, LIBDIR)

    def setUp(self):
        folder = tempfile.TemporaryDirectory(dir=self.kept.name)
        self.addCleanup(folder.cleanup)
        self.folder = folder.name

    def write(self, name, text):
        path = os.path.join(self.folder, name)
        os.makedirs(os.path.dirname(path), exist_ok=True)
        with open(path, "w", encoding="utf-8") as file:
            file.write(text)
        return path

    def says(self, program, *words):
        """What a program prints that must succeed."""
        code, said = started(program, *words, libraries=[self.libraries])
        self.assertEqual(code, 0, said)
        return said


class OfThePage(Outside):
    """The programs of docs/using-the-library.md, in both languages."""

    def check(self, program, name):
        said = self.says(program, BOARD)
        self.assertEqual(said[:len(SAYS[name])] if name == "tables" else said, SAYS[name])

    def compile_all(self, words, libraries):
        self.libraries = libraries
        for name, text in page_blocks("c").items():
            for compiler, standard, end in ((CC, "c11", "c"), (CXX, "c++20", "cpp")):
                with self.subTest(name, standard=standard):
                    program = os.path.join(self.folder, f"{name}_{end}")
                    run(compiler, f"-std={standard}", *STRICT, self.write(f"{name}.{end}", text), *words, "-o", program)
                    self.check(program, name)

    def configure_and_build(self, text, *settings):
        """A project of all programs in both languages, made of the page's own."""
        for name, program in page_blocks("c").items():
            for end in ("c", "cpp"):
                self.write(f"{name}.{end}", program)
            text += f"""
                add_executable({name}_c {name}.c)
                add_executable({name}_cpp {name}.cpp)
                set_target_properties({name}_c PROPERTIES C_STANDARD 11 C_EXTENSIONS OFF)
                set_target_properties({name}_cpp PROPERTIES CXX_STANDARD 20 CXX_EXTENSIONS OFF)
                target_link_libraries({name}_c PRIVATE oxa::simulator)
                target_link_libraries({name}_cpp PRIVATE oxa::simulator)"""
        self.write("CMakeLists.txt", text)
        target = [f"-DCMAKE_TOOLCHAIN_FILE={TOOLCHAIN}"] if TOOLCHAIN else []
        run(CMAKE, "-G", "Ninja", "-S", self.folder, "-B", f"{self.folder}/out", f"-DCMAKE_C_COMPILER={CC}",
            f"-DCMAKE_CXX_COMPILER={CXX}", "-DCMAKE_C_FLAGS=-Wall -Wextra -Werror",
            "-DCMAKE_CXX_FLAGS=-Wall -Wextra -Werror", *target, *settings)
        run(CMAKE, "--build", f"{self.folder}/out")
        for name in page_blocks("c"):
            for end in ("c", "cpp"):
                with self.subTest(name, language=end):
                    self.check(f"{self.folder}/out/{name}_{end}", name)


def main():
    """Runs the tests; the last line says how many passed, for scripts/test to add up."""
    result = unittest.main(module="__main__", exit=False).result
    failed = len({test.id() for test, _ in result.failures + result.errors})
    skipped = len(result.skipped)
    print(f"cases: {result.testsRun - failed - skipped} passed, {failed} failed, {skipped} skipped")
    sys.exit(0 if result.wasSuccessful() and result.testsRun else 1)
