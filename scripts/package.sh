#!/usr/bin/env bash
# Builds the Debian packages libnlssupport1, libnlssupport-dev and nlsreport with CPack's DEB
# generator: configures a Release tree with the /usr prefix in build/package, builds it and
# writes the .deb files into build/package/debs (or into the directory given as argument).
# Usage: scripts/package.sh [output directory]
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
. "$root/scripts/deps.sh"
nls_require_packages cmake make g++ dpkg-dev file || exit 1

out=${1:-$root/build/package/debs}
tree=${NLS_PACKAGE_TREE:-$root/build/package}
jobs=$(nproc 2>/dev/null || echo 2)

cmake -S "$root" -B "$tree" -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX=/usr \
    -DNLS_BUILD_TESTS=OFF >/dev/null
cmake --build "$tree" -j "$jobs" >/dev/null
mkdir -p "$out"
out=$(cd "$out" && pwd)
rm -f "$out"/*.deb
(cd "$tree" && cpack -G DEB -B "$out/cpack" >/dev/null)
mv "$out"/cpack/*.deb "$out"/
rm -rf "$out/cpack"
ls -1 "$out"/*.deb
