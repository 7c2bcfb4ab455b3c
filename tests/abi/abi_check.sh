#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# The ABI guard of libnlssupport.so.1. abidiff's exit status is a bit set: 1 an error, 2 a usage
# error, 4 a change of the ABI, 8 an incompatible change. Three comparisons:
#   1. the committed baseline against the freshly built library: any incompatible change fails
#      (a function removed, a type or signature changed); additions pass;
#   2. the 1.0.0 interface against the fresh library: adding a function under the new version
#      node LIBNLSSUPPORT_1.1 is an ABI change (4) but not an incompatible one;
#   3. the same two read the other way round, as if NLSSUPPORT_GetVersion were removed: the guard
#      must see an incompatible change (8), or it could not catch a real one.
# Usage: abi_check.sh <source dir> <generated header dir> <library> <work dir>
set -uo pipefail
src=$1
headers=$2
lib=$3
work=$4
baseline=$src/tests/abi/libnlssupport.so.1.abi
first=$src/tests/abi/libnlssupport.so.1-1.0.0.abi
mkdir -p "$work"
"$src/tests/abi/abi_dump.sh" "$src" "$headers" "$lib" "$work/current.abi" || exit 1

abidiff "$baseline" "$work/current.abi" >"$work/baseline.diff" 2>&1
rc=$?
cat "$work/baseline.diff"
if [ $((rc & 11)) -ne 0 ]; then
    echo "FAIL: libnlssupport.so.1 is not compatible with tests/abi/libnlssupport.so.1.abi (abidiff $rc)"
    echo "A deliberate change of the interface refreshes the baseline: scripts/abi-baseline.sh"
    exit 1
fi

abidiff "$first" "$work/current.abi" >"$work/added.diff" 2>&1
rc=$?
if [ "$rc" -ne 4 ] || ! grep -q 'NLSSUPPORT_GetVersion' "$work/added.diff"; then
    cat "$work/added.diff"
    echo "FAIL: a function added under a new version node should be a compatible change (abidiff $rc)"
    exit 1
fi

abidiff "$work/current.abi" "$first" >"$work/removed.diff" 2>&1
rc=$?
if [ $((rc & 8)) -eq 0 ]; then
    cat "$work/removed.diff"
    echo "FAIL: a removed function was not reported as an incompatible change (abidiff $rc)"
    exit 1
fi
echo "ABI compatible with the baseline; additions pass, removals are caught"
