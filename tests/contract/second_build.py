# SPDX-License-Identifier: GPL-3.0-or-later
"""Builds the shared object once more, from a copy of the sources in another folder, under another locale, time zone
and umask."""
import os
import shutil
import subprocess

from common import run

NOT_COPIED = shutil.ignore_patterns("build", ".git", ".cache", "__pycache__")
LIBRARY_ALONE = [f"-DOXA_BUILD_{what}=OFF" for what in ("TESTS", "WORKBENCH", "BENCH", "FUZZ")]


def copied(source, folder):
    """A copy of the sources below a folder, and a build folder beside it."""
    copy, build = os.path.join(folder, "sources"), os.path.join(folder, "of", "another", "build")
    shutil.copytree(source, copy, ignore=NOT_COPIED)
    return copy, build


def built(cmake, copy, build, settings):
    """Path of the shared object that CMake makes of the copy with these settings."""
    os.environ.update(LC_ALL="C", TZ="Asia/Kathmandu", CMAKE_BUILD_PARALLEL_LEVEL=str(os.cpu_count()))
    os.umask(0o077)
    configured = subprocess.run([cmake, *settings, *LIBRARY_ALONE, "-S", copy, "-B", build], cwd=copy,
                                capture_output=True, text=True)
    if configured.returncode != 0:
        raise SystemExit(f"{configured.stdout}{configured.stderr}the copy of the sources cannot be configured")
    run(cmake, "--build", build, "--target", "oxaspecificsensorinfo")
    return os.path.join(build, "liboxaspecificsensorinfo.so")
