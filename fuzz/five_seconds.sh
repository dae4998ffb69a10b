#!/bin/sh
# SPDX-License-Identifier: GPL-3.0-or-later
#
# five_seconds.sh BUILD TARGET CORPUS
#   Runs a fuzzer for five seconds from the seeds in the tree, which it does not change.
set -eu
build=$1
target=$2
corpus=$3
fresh=$(mktemp -d)
trap 'rm -rf "$fresh"' EXIT
mkdir -p "$build/finds"
rc=0
"$build/fuzz_$target" -max_total_time=5 -max_len=1024 -timeout=20 -print_final_stats=1 \
    -artifact_prefix="$build/finds/$target-" "$fresh" "$corpus/$target" >"$fresh.log" 2>&1 || rc=$?
tail -n 40 "$fresh.log"
input=$(sed -n 's/^.*Test unit written to //p' "$fresh.log" | tail -n 1)
rm -f "$fresh.log"
[ -z "$input" ] || echo "again: $build/fuzz_$target $input"
exit "$rc"
