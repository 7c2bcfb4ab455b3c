#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Differential check of the formatter: builds tests/diff/format_diff.cpp against the library of a
# build tree and a reference glibformat.cpp taken from a git revision (read with git show; the
# work tree and the repository are left as they are), then runs it.
# Usage: tests/diff/format_diff.sh <build-dir> [-m32] [revision] [formats] [seed]
#   <build-dir>  a tree of this project with libnlssupport.a built (cmake --build <dir>
#                --target nlssupport_static); configured with -DNLS_M32=ON for -m32
#   revision     the reference (default HEAD); formats default 2000000; seed default 1
# KEEP=1 keeps the work directory (the program and the renamed reference object).
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
build=$(cd "$1" && pwd)
arch=${2:-}
rev=${3:-HEAD}
formats=${4:-2000000}
seed=${5:-1}
lib="$build/libnlssupport.a"
[ -f "$lib" ] || { echo "no $lib: build the nlssupport_static target first" >&2; exit 2; }

work=$(mktemp -d)
trap '[ -n "${KEEP:-}" ] || rm -rf "$work"' EXIT
[ -n "${KEEP:-}" ] && echo "work directory: $work"
# The reference sources: the formatter and the headers it includes, at the revision.
mkdir -p "$work/ref/glib" "$work/ref/include/nlssupport"
git -C "$root" show "$rev:glib/glibformat.cpp" >"$work/ref/glib/glibformat.cpp"
git -C "$root" show "$rev:glib/glib_internal.h" >"$work/ref/glib/glib_internal.h"
for h in glib.h convlib.h errlib.h; do
    git -C "$root" show "$rev:include/nlssupport/$h" >"$work/ref/include/nlssupport/$h"
done
# Compiled as the library compiles it in Release; its entry points renamed.
g++ $arch -std=c++20 -O3 -DNDEBUG -fPIC -I "$work/ref/include" -I "$work/ref" \
    -c "$work/ref/glib/glibformat.cpp" -o "$work/ref_format.o"
syms=()
for f in GLIB_snprintf GLIB_vsnprintf GLIB_swprintf GLIB_vswprintf; do
    syms+=(--redefine-sym "$f=ref_$f")
done
objcopy "${syms[@]}" "$work/ref_format.o"
g++ $arch -std=c++20 -O2 -Wall -Wextra -I "$root/include" -I "$build/include" \
    "$root/tests/diff/format_diff.cpp" "$work/ref_format.o" "$lib" -o "$work/format_diff"
"$work/format_diff" "$formats" "$seed"
