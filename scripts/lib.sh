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

# Lets ccache keep what was compiled with precompiled headers.
export CCACHE_SLOPPINESS=pch_defines,time_macros

# Compiler launchers for cmake: ccache where it is installed.
launchers() {
    if command -v ccache >/dev/null; then
        echo "-DCMAKE_C_COMPILER_LAUNCHER=ccache -DCMAKE_CXX_COMPILER_LAUNCHER=ccache"
    fi
}
