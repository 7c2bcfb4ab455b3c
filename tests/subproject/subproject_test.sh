#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Configures, builds and runs the C-only parent project of tests/subproject/parent, which adds
# the source tree with add_subdirectory, and checks that the static program does not load the
# shared library.
# Usage: subproject_test.sh <source dir> <work dir> <C compiler> <C++ compiler>
set -euo pipefail
src=$1
work=$2
rm -rf "$work"
CC=$3 CXX=$4 cmake -S "$src/tests/subproject/parent" -B "$work" -DNLS_SOURCE_DIR="$src" \
    -DCMAKE_BUILD_TYPE=Release >"$work.configure.log" 2>&1 ||
    { cat "$work.configure.log"; exit 1; }
cmake --build "$work" -j "$(nproc 2>/dev/null || echo 2)" >"$work.build.log" 2>&1 ||
    { cat "$work.build.log"; exit 1; }
"$work/parent_shared"
"$work/parent_static"
if grep -q 'NEEDED *libnlssupport' <<<"$(objdump -p "$work/parent_static")"; then
    echo "parent_static loads the shared library"
    exit 1
fi
rm -rf "$work" "$work.configure.log" "$work.build.log"
echo "C-only parent project built and ran both library forms"
