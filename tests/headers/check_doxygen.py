#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Doxygen reads the public headers without a warning, and everything that they declare has a comment.

Functions outside include/oxa/profiles also describe each argument and the result; the generators of a profile share
theirs, which stand at their function types."""
import argparse
import os
import shutil
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ElementTree

SKIPPED = 77
SETTINGS = {
    "QUIET": "YES",
    "EXTRACT_ALL": "NO",
    "GENERATE_HTML": "NO",
    "GENERATE_LATEX": "NO",
    "GENERATE_XML": "YES",
    "XML_PROGRAMLISTING": "NO",
    "RECURSIVE": "YES",
    "FULL_PATH_NAMES": "YES",
    "JAVADOC_AUTOBRIEF": "YES",
    "OPTIMIZE_OUTPUT_FOR_C": "YES",
    "TYPEDEF_HIDES_STRUCT": "YES",
    "MACRO_EXPANSION": "YES",
    "EXPAND_ONLY_PREDEF": "YES",
    "PREDEFINED": '"OXA_AT(type,field,offset)=" "OXA_SIZE(type,size)=" "OXA_SASSERT(cond,text)=" '
                  '"PLAT_PRINTF(fmt,first)="',
    "WARNINGS": "YES",
    "WARN_IF_UNDOCUMENTED": "YES",
    "WARN_IF_DOC_ERROR": "YES",
    "WARN_IF_INCOMPLETE_DOC": "YES",
}


def doxygen(include, directory, **more):
    """Lines of warnings; the XML is in directory/xml."""
    settings = SETTINGS | {"INPUT": f'"{include}"', "OUTPUT_DIRECTORY": f'"{directory}"',
                           "STRIP_FROM_PATH": f'"{include}"'} | more
    doxyfile = os.path.join(directory, "Doxyfile")
    with open(doxyfile, "w", encoding="utf-8") as out:
        out.writelines(f"{name} = {value}\n" for name, value in settings.items())
    done = subprocess.run(["doxygen", doxyfile], capture_output=True, text=True, cwd=directory)
    if done.returncode != 0:
        sys.exit(f"{done.stdout}{done.stderr}doxygen failed with {done.returncode}")
    return [line for line in done.stderr.splitlines() if line.strip()]


def text_of(element):
    return "".join(element.itertext()).strip() if element is not None else ""


def documented(element):
    return bool(text_of(element.find("briefdescription")) or text_of(element.find("detaileddescription")))


def is_guard(member):
    return member.get("kind") == "define" and member.findtext("name").endswith("_H")


def faults_of(member, file, in_profile):
    """What a declaration lacks."""
    name = member.findtext("name") or "enum"
    where = f"{file}: {member.get('kind')} {name}"
    if not documented(member):
        yield f"{where} has no comment"
    of_function = member.get("kind") == "function" or bool(member.findtext("argsstring")) and "(*" in text_of(
        member.find("type"))
    if not of_function or in_profile and "Static" not in name and "Modify" not in name:
        return
    described = {text_of(item) for item in member.iter("parametername")}
    for parameter in member.findall("param"):
        argument = parameter.findtext("declname")
        if argument and argument not in described:
            yield f"{where} does not describe {argument}"
    if text_of(member.find("type")) not in ("void", "") and not any(
            section.get("kind") == "return" for section in member.iter("simplesect")):
        yield f"{where} does not describe its result"


def undocumented(directory):
    """(faults, number of declarations that were looked at)"""
    faults, count = [], 0
    folder = os.path.join(directory, "xml")
    for name in sorted(os.listdir(folder)):
        for compound in ElementTree.parse(os.path.join(folder, name)).getroot().iter("compounddef"):
            if compound.get("kind") not in ("file", "struct"):
                continue
            file = compound.find("location").get("file")
            if not documented(compound):
                faults.append(f"{file}: {compound.findtext('compoundname')} has no comment")
            for member in compound.iter("memberdef"):
                if is_guard(member):
                    continue
                count += 1
                faults += faults_of(member, file, "/profiles/" in file)
    return faults, count


parser = argparse.ArgumentParser(description=__doc__)
parser.add_argument("--include", required=True)
arguments = parser.parse_args()

if shutil.which("doxygen") is None:
    print("skipped: doxygen is not installed")
    sys.exit(SKIPPED)
with tempfile.TemporaryDirectory() as scratch:
    found = doxygen(os.path.abspath(arguments.include), scratch)
    missing, looked_at = undocumented(scratch)
assert looked_at > 500, f"only {looked_at} declarations: the headers were not read"
for line in found + missing:
    print(f"FAULT: {line}")
print(f"{looked_at} declarations, {len(found)} warnings, {len(missing)} without their comment")
sys.exit(1 if found or missing else 0)
