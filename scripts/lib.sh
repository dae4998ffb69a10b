# SPDX-License-Identifier: Apache-2.0
# Shared by the scripts beside it; sourced from the top directory.

# Runs a command; its output is shown only when it fails.
quietly() {
    local log rc=0
    log=$(mktemp)
    "$@" >"$log" 2>&1 || rc=$?
    [ "$rc" -eq 0 ] || cat "$log" >&2
    rm -f "$log"
    return "$rc"
}

# Lets ccache keep what was compiled with precompiled headers, and find it again from another build folder: a test unit
# is compiled once for all host tiers, not once for each.
export CCACHE_SLOPPINESS=pch_defines,time_macros
export CCACHE_BASEDIR=$PWD CCACHE_NOHASHDIR=1

# Compiler launchers for cmake: ccache where it is installed.
launchers() {
    if command -v ccache >/dev/null; then
        echo "-DCMAKE_C_COMPILER_LAUNCHER=ccache -DCMAKE_CXX_COMPILER_LAUNCHER=ccache"
    fi
}
