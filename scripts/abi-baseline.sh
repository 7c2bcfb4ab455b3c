#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Writes the ABI baseline of libnlssupport.so.1 (tests/abi/libnlssupport.so.1.abi) with
# libabigail's abidw: the exported functions and variables with their version nodes, and the
# public types reachable from them (types outside the public headers are dropped). The test
# Abi.SharedLibraryKeepsBaselineAbi compares every native build with it. Run this only for a
# deliberate change of the interface, and commit the new baseline with the change.
# Usage: scripts/abi-baseline.sh [library]   (default: a native build in build/abi)
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
. "$root/scripts/deps.sh"
nls_require_packages cmake make g++ abigail-tools || exit 1

lib=${1:-}
if [ -z "$lib" ]; then
    tree=$root/build/abi
    cmake -S "$root" -B "$tree" -DCMAKE_BUILD_TYPE=RelWithDebInfo -DNLS_BUILD_TESTS=OFF >/dev/null
    cmake --build "$tree" -j "$(nproc 2>/dev/null || echo 2)" --target nlssupport_shared >/dev/null
    lib=$(find "$tree" -maxdepth 1 -name 'libnlssupport.so.1.*' | head -n 1)
    headers=$tree/include/nlssupport
else
    headers=$(dirname "$lib")/include/nlssupport
fi
"$root/tests/abi/abi_dump.sh" "$root" "$headers" "$lib" "$root/tests/abi/libnlssupport.so.1.abi"
echo "ABI baseline written to tests/abi/libnlssupport.so.1.abi from $lib"
