#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Builds the HTML reference of the public headers with Doxygen into build/docs/html (or into the
# directory given as the first argument). Every Doxygen warning fails the build: the warnings are
# printed and the script exits non-zero.
# Usage: scripts/docs.sh [output directory]
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
. "$root/scripts/deps.sh"
nls_require_packages cmake doxygen || exit 1

out=${1:-$root/build/docs}
mkdir -p "$out"
out=$(cd "$out" && pwd)
rm -rf "$out/html" "$out/warnings.log"
version=$(sed -n 's/^project(nlsreport VERSION \([0-9.]*\).*/\1/p' "$root/CMakeLists.txt")
# The generated <nlssupport/version.h> is documented with the other headers.
cmake -DNLS_VERSION="$version" -DNLS_VERSION_INCLUDE_DIR="$out/include" \
    -P "$root/cmake/VersionHeader.cmake"

if ! NLS_SOURCE_DIR=$root NLS_DOCS_OUT=$out NLS_GENERATED_INCLUDE=$out/include NLS_VERSION=$version \
        doxygen "$root/docs/reference/Doxyfile" || [ -s "$out/warnings.log" ]; then
    echo "Doxygen reported warnings:" >&2
    cat "$out/warnings.log" >&2
    exit 1
fi
echo "Reference written to $out/html/index.html"
