# SPDX-License-Identifier: GPL-3.0-or-later
"""Builds the shared object once more, from a copy of the sources in another folder, under another locale, time zone
and umask."""
import os
import shutil
import subprocess
import sys

NOT_COPIED = shutil.ignore_patterns("build", ".git", ".cache", "__pycache__")
LIBRARY_ALONE = [f"-DOXA_BUILD_{what}=OFF" for what in ("TESTS", "WORKBENCH", "BENCH", "FUZZ")]


def copied(source, folder):
    """A copy of the sources below a folder, and a build folder beside it."""
    copy, build = os.path.join(folder, "sources"), os.path.join(folder, "of", "another", "build")
    shutil.copytree(source, copy, ignore=NOT_COPIED)
    return copy, build


def built(cmake, copy, build, settings):
    """Path of the shared object that CMake makes of the copy with these settings."""
    elsewhere = dict(os.environ, LC_ALL="C", TZ="Asia/Kathmandu")
    for step in ([cmake, *settings, *LIBRARY_ALONE, "-S", copy, "-B", build],
                 [cmake, "--build", build, "--target", "oxaspecificsensorinfo", "-j", str(os.cpu_count())]):
        done = subprocess.run(step, cwd=copy, env=elsewhere, umask=0o077, capture_output=True, text=True)
        if done.returncode != 0:
            sys.exit(f"{' '.join(step)}\n{done.stdout}{done.stderr}failed with {done.returncode}")
    return os.path.join(build, "liboxaspecificsensorinfo.so")
