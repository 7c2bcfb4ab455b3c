#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Builds the Debian packages of debian/ (libnlssupport1, libnlssupport-dev, nlsreport and their
# -dbgsym packages) with dpkg-buildpackage -us -uc -b. The build runs in a copy of the source
# tree under build/package (or NLS_PACKAGE_TREE), so that nothing is written outside the
# checkout; the .deb files, the .changes and the .buildinfo file land in build/package/debs (or
# in the directory given as argument).
# Usage: scripts/package.sh [output directory]
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
. "$root/scripts/deps.sh"
nls_require_packages cmake make g++ dpkg-dev debhelper file || exit 1

out=${1:-$root/build/package/debs}
work=${NLS_PACKAGE_TREE:-$root/build/package}
version=$(dpkg-parsechangelog -l "$root/debian/changelog" -S Version)
src=$work/nlssupport-${version%-*}

rm -rf "$src" "$work"/*.deb "$work"/*.changes "$work"/*.buildinfo
mkdir -p "$src" "$out"
out=$(cd "$out" && pwd)
# The copy: everything but build trees and version-control data.
(cd "$root" && tar --exclude=./build --exclude=./.git --exclude=./out -cf - .) | tar -xf - -C "$src"
if ! (cd "$src" && dpkg-buildpackage -us -uc -b) >"$work/dpkg-buildpackage.log" 2>&1; then
    tail -n 60 "$work/dpkg-buildpackage.log" >&2
    echo "dpkg-buildpackage failed; the whole log is $work/dpkg-buildpackage.log" >&2
    exit 1
fi
rm -f "$out"/*.deb "$out"/*.changes "$out"/*.buildinfo
mv "$work"/*.deb "$work"/*.changes "$work"/*.buildinfo "$out"/
rm -rf "$src"
ls -1 "$out"/*.deb
