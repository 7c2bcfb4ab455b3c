#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Differential check of the number, UTF-8 and matching routines: builds the static library of a
# previous revision (exported with git archive; the repository is not touched) and of the working
# tree, both in Release, links them into nls_diff (see CMakeLists.txt) and runs it, natively and
# for 32-bit i386 (-m32). A locale with "," as its decimal point is generated for the run.
#
# Usage: tests/diff/nls_diff.sh --ref=<revision> [--arch=native|m32|both] [nls_diff options...]
#        tests/diff/nls_diff.sh --ref-tree=<source directory> [...]
#   e.g. tests/diff/nls_diff.sh --ref=HEAD~1 --scale=2 double utf8
# Builds under build/diff/. Exit status 0 when every architecture agreed.
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
ref=""
reftree=""
arch=both
args=()
for a in "$@"; do
    case "$a" in
        --ref=*) ref=${a#--ref=} ;;
        --ref-tree=*) reftree=$(cd "${a#--ref-tree=}" && pwd) ;;
        --arch=*) arch=${a#--arch=} ;;
        *) args+=("$a") ;;
    esac
done
if [ -z "$ref" ] && [ -z "$reftree" ]; then
    echo "usage: $0 --ref=<revision>|--ref-tree=<dir> [--arch=native|m32|both]" \
        "[nls_diff options...]" >&2
    exit 2
fi
jobs=2
dir="$root/build/diff"
mkdir -p "$dir"

# The previous revision's sources, exported afresh when the revision changes, or a source tree
# named as it is.
if [ -n "$reftree" ]; then
    refsrc=$reftree
    rev=$reftree
else
    refsrc="$dir/ref-src"
    rev=$(git -C "$root" rev-parse --verify "$ref^{commit}")
fi
if [ "$(cat "$dir/ref-rev" 2>/dev/null || true)" != "$rev" ]; then
    rm -rf "$dir"/ref-native "$dir"/ref-m32
    if [ -z "$reftree" ]; then
        rm -rf "$refsrc"
        mkdir -p "$refsrc"
        git -C "$root" archive "$rev" | tar -x -C "$refsrc"
    fi
    echo "$rev" >"$dir/ref-rev"
fi

locdir="$dir/locales"
if [ ! -d "$locdir/de_DE.UTF-8" ]; then
    mkdir -p "$locdir"
    localedef --no-archive -c -i de_DE -f UTF-8 "$locdir/de_DE.UTF-8" >/dev/null 2>&1 || true
fi

library() {  # <source tree> <build dir> <extra cmake options...>
    local src=$1 bin=$2
    shift 2
    cmake -S "$src" -B "$bin" -DCMAKE_BUILD_TYPE=Release -DNLS_BUILD_TESTS=OFF "$@" >/dev/null
    cmake --build "$bin" -j "$jobs" --target nlssupport_static >/dev/null
}

status=0
for a in native m32; do
    [ "$arch" = both ] || [ "$arch" = "$a" ] || continue
    opts=()
    flags=""
    if [ "$a" = m32 ]; then
        opts=(-DNLS_M32=ON)
        flags=-m32
    fi
    echo "== $a: reference $rev"
    library "$refsrc" "$dir/ref-$a" "${opts[@]+"${opts[@]}"}"
    library "$root" "$dir/cur-$a" "${opts[@]+"${opts[@]}"}"
    cmake -S "$root/tests/diff" -B "$dir/prog-$a" -DCMAKE_CXX_FLAGS="$flags" \
        -DNLS_DIFF_REFERENCE_LIB="$dir/ref-$a/libnlssupport.a" \
        -DNLS_DIFF_CURRENT_LIB="$dir/cur-$a/libnlssupport.a" >/dev/null
    cmake --build "$dir/prog-$a" -j "$jobs" >/dev/null
    LOCPATH="$locdir" "$dir/prog-$a/nls_diff" "${args[@]+"${args[@]}"}" || status=1
done
exit $status
