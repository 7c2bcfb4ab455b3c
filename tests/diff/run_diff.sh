#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Runs a differential driver of tests/diff/ against two builds of the library: a reference
# commit and the working tree. The driver is compiled twice (the public headers of the working
# tree, which only add to the reference's), linked once with each static library, run with the
# same arguments, and the two outputs must be identical. Release builds, native by default,
# i386 with NLS_DIFF_M32=1. Build trees go to build/diff/.
# Usage: tests/diff/run_diff.sh <reference commit> <driver.cpp> [driver arguments...]
# Example: tests/diff/run_diff.sh HEAD tests/diff/dt_diff.cpp 5000000
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
ref=$(git -C "$root" rev-parse --short "$1")
driver=$(cd "$(dirname "$2")" && pwd)/$(basename "$2")
shift 2
arch=native
flags=()
cmake_flags=()
if [ "${NLS_DIFF_M32:-0}" = 1 ]; then
    arch=i386
    flags=(-m32)
    cmake_flags=(-DNLS_M32=ON)
fi
work=$root/build/diff
mkdir -p "$work"

# build_lib <source tree> <build tree>: the static library, Release, no tests.
build_lib() {
    cmake -S "$1" -B "$2" -DCMAKE_BUILD_TYPE=Release -DNLS_BUILD_TESTS=OFF "${cmake_flags[@]}" \
        >/dev/null
    cmake --build "$2" -j "$(nproc 2>/dev/null || echo 2)" --target nlssupport_static >/dev/null
}

refsrc=$work/ref-$ref
if [ ! -d "$refsrc" ]; then
    git -C "$root" worktree add --detach "$refsrc" "$ref" >/dev/null 2>&1 ||
        { git -C "$root" worktree prune; git -C "$root" worktree add --detach "$refsrc" "$ref" >/dev/null; }
fi
build_lib "$refsrc" "$refsrc/build-$arch"
build_lib "$root" "$work/current-$arch"

name=$(basename "$driver" .cpp)
for side in reference current; do
    if [ $side = reference ]; then lib=$refsrc/build-$arch/libnlssupport.a; else lib=$work/current-$arch/libnlssupport.a; fi
    g++ -std=c++20 -O2 "${flags[@]}" -I"$root/include" -I"$work/current-$arch/include" "$driver" \
        "$lib" -o "$work/$name-$side-$arch"
done
"$work/$name-reference-$arch" "$@" >"$work/$name-reference-$arch.out" &
"$work/$name-current-$arch" "$@" >"$work/$name-current-$arch.out"
wait
cat "$work/$name-current-$arch.out"
if cmp -s "$work/$name-reference-$arch.out" "$work/$name-current-$arch.out"; then
    echo "$name ($arch): identical to $ref"
else
    echo "$name ($arch): DIFFERS from $ref:"
    diff "$work/$name-reference-$arch.out" "$work/$name-current-$arch.out" || true
    exit 1
fi
