# SPDX-License-Identifier: GPL-3.0-or-later
"""What the checks of the shared object have in common: running tools, reading headers, printing figures
beside their budgets."""
import re
import subprocess
import sys

FIGURES = []  # (name, measured, budget, unit), in the order they were printed
FAULTS = []


def run(*command):
    """Standard output of a command that must succeed."""
    done = subprocess.run(command, capture_output=True, text=True)
    if done.returncode != 0:
        sys.exit(f"{' '.join(command)}\n{done.stdout}{done.stderr}failed with {done.returncode}")
    return done.stdout


def figure(name, measured, budget, unit):
    """A measured figure that must not exceed its budget.  scripts/size-report reads these lines."""
    FIGURES.append((name, measured, budget, unit))
    verdict = "ok" if measured <= budget else "ABOVE BUDGET"
    print(f"figure: {name}: {measured:,} {unit} (budget {budget:,}): {verdict}")
    if measured > budget:
        FAULTS.append(f"{name}: {measured:,} {unit} is above the budget of {budget:,}")


def fault(text):
    FAULTS.append(text)


def same(what, found, wanted, wanted_name):
    """Two sets of names that must be equal."""
    for name in sorted(found - wanted):
        fault(f"{what} {name} is not in {wanted_name}")
    for name in sorted(wanted - found):
        fault(f"{name} stands in {wanted_name} but is no {what}")


def finish():
    for text in FAULTS:
        print(f"FAULT: {text}")
    sys.exit(1 if FAULTS else 0)


def header_text(compiler, include, header):
    """What a header and those of ours that it includes declare, preprocessed."""
    text = run(compiler, "-E", "-xc", "-std=c11", "-I", include, f"{include}/{header}")
    own, keep = [], False
    for line in text.splitlines():
        marker = re.match(r'# \d+ "([^"]*)"', line)
        if marker:
            keep = marker.group(1).startswith(include)
        elif keep and not line.startswith("#"):
            own.append(line)
    return "\n".join(own)


def declarations(compiler, include, header):
    """(functions, data objects) that a header declares, as two sets of names."""
    functions, data = set(), set()
    for statement in _statements(header_text(compiler, include, header)):
        if re.match(r"(typedef|enum|struct|_Static_assert)\b", statement):
            continue
        if statement.startswith("extern"):
            data.add(re.search(r"(\w+)\s*(\[[^]]*\]\s*)*$", statement).group(1))
        elif "(" in statement:
            functions.add(re.search(r"(\w+)\s*\(", statement).group(1))
    return functions, data


def declared_exports(compiler, include):
    """Names of everything that the library is to export."""
    functions, data = declarations(compiler, include, "oxa/exports.h")
    return functions | data


def declared_pointers(compiler, include):
    """How many pointers the tables hold that the header declares: each is a relocation, and nothing else may be."""
    text = header_text(compiler, include, "oxa/exports.h")
    pointers = {}
    for name in re.findall(r"typedef\s+[\w\s*]+\(\s*\*\s*(\w+)\s*\)\s*\(", text):
        pointers[name] = 1
    for body, name in re.findall(r"typedef\s+struct\s+\w+\s*\{(.*?)\}\s*(\w+)\s*;", text, re.S):
        members = [" ".join(member.split()) for member in body.split(";") if member.strip()]
        pointers[name] = sum("*" in member or member.split()[0] in pointers for member in members)
    tables = re.findall(r"extern\s+const\s+(\w+)\s+\w+\s*\[\s*(\d+)\s*\]\s*;", text)
    return sum(pointers.get(kind, 0) * int(rows) for kind, rows in tables)


def platform_stub(compiler, include, without=()):
    """A platform in C that has all functions and answers 0: enough for programs that ask little of it."""
    functions, _ = declarations(compiler, include, "oxa/platform.h")
    return "".join(f"long {name}(void);\nlong {name}(void) {{ return 0; }}\n"
                   for name in sorted(set(functions) - set(without)))


def _statements(text):
    """Statements at depth 0, bodies in braces dropped."""
    depth, current = 0, ""
    for char in text:
        if char == "{":
            depth += 1
        elif char == "}":
            depth -= 1
        elif depth == 0 and char == ";":
            if current.strip():
                yield " ".join(current.split())
            current = ""
        elif depth == 0:
            current += char


def dynamic_symbols(nm, library, *options):
    """(name, type letter) of every dynamic symbol, versions cut off; version nodes are no symbols."""
    found = set()
    for line in run(nm, "-D", *options, library).splitlines():
        fields = line.split()
        name, letter = fields[-1].split("@")[0], fields[-2]
        if letter != "A":
            found.add((name, letter))
    return found


def sections(readelf, library):
    """name -> (address, size)"""
    found = {}
    for line in run(readelf, "-SW", library).splitlines():
        match = re.match(r"\s*\[\s*\d+\]\s+(\S+)\s+\S+\s+([0-9a-f]+)\s+[0-9a-f]+\s+([0-9a-f]+)", line)
        if match:
            found[match.group(1)] = int(match.group(2), 16), int(match.group(3), 16)
    return found


def plain_names(symbols):
    """Linker names without namespaces, arguments and the marks of a compiler's clones."""
    done = subprocess.run(["c++filt", "-p"], input="\n".join(symbols), capture_output=True, text=True, check=True)
    return [re.sub(r" \[clone .*|<.*", "", re.sub(r"\(anonymous namespace\)::", "", name)).split("::")[-1]
            for name in done.stdout.split("\n")]


def call_graphs(objects):
    """The call-graph files that GCC wrote beside the objects."""
    return [re.sub(r"\.o$", ".ci", path) for path in objects]


def libc_names(path, build):
    """Names of the list of C library functions that hold for a build ("armhf", "arm64", "g++", "clang")."""
    names = set()
    for line in open(path, encoding="utf-8"):
        words = line.split("#")[0].split()
        if words and (len(words) == 1 or build in words[1:]):
            names.add(words[0])
    return names
