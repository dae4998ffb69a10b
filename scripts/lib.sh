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

# "watched WHAT COMMAND...": the same for a command that takes minutes.  Says at once that it has begun, then how far
# it is (the last "[34/120]" or "34/120 Test" of its output): in a line that moves on a terminal, in a line a minute
# elsewhere; and how long it took.
watched() {
    local what=$1 began=$SECONDS told=$SECONDS log rc=0 moves=false
    shift
    [ ! -t 1 ] || moves=true
    log=$(mktemp)
    $moves || echo "   $what ..."
    "$@" >"$log" 2>&1 &
    local pid=$!
    while kill -0 "$pid" 2>/dev/null; do
        if $moves; then
            printf '\r\033[K   %s ... %s %d s' "$what" "$(progress "$log")" $((SECONDS - began))
        elif [ $((SECONDS - told)) -ge 60 ]; then
            echo "   $what ... $(progress "$log") $((SECONDS - began)) s"
            told=$SECONDS
        fi
        sleep 0.5
    done
    wait "$pid" || rc=$?
    ! $moves || printf '\r\033[K'
    if [ "$rc" -eq 0 ]; then
        echo "   $what: $((SECONDS - began)) s"
    else
        cat "$log" >&2
    fi
    rm -f "$log"
    return "$rc"
}

progress() {
    grep -oE '^(\[[0-9]+/[0-9]+\]| *[0-9]+/[0-9]+ Test)' "$1" | tail -n 1 | sed 's/ *Test//; s/^ *//'
}

# Compiler launchers for cmake: ccache where it is installed.  It keeps what was compiled with precompiled headers too,
# goes by the files that were read (the preprocessor would read an old precompiled header), and finds a unit again from
# another build folder, so that a test is compiled once for all host tiers.
launchers() {
    local settings="CCACHE_DEPEND=1;CCACHE_SLOPPINESS=pch_defines,time_macros;CCACHE_BASEDIR=$PWD;CCACHE_NOHASHDIR=1"
    if command -v ccache >/dev/null; then
        echo "-DCMAKE_C_COMPILER_LAUNCHER=env;$settings;ccache -DCMAKE_CXX_COMPILER_LAUNCHER=env;$settings;ccache"
    fi
}
