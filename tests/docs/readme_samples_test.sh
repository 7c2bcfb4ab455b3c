#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Compiles every C sample of README.md (the ```c blocks) as a C11 translation unit and every C++
# sample (```cpp) as C++20, against the public headers, warnings as errors, so that the README
# never shows code that does not build.
# Usage: readme_samples_test.sh <source dir> <generated include dir> <C compiler> <C++ compiler>
#        [flags]
set -euo pipefail
src=$1
generated=$2
cc=$3
cxx=$4
flags=${5:-}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

awk -v dir="$work" '
    /^```c$/ { n++; file = sprintf("%s/sample%02d.c", dir, n); inside = 1; next }
    /^```cpp$/ { n++; file = sprintf("%s/sample%02d.cpp", dir, n); inside = 1; next }
    /^```/   { inside = 0; next }
    inside   { print > file }
' "$src/README.md"
count=$(find "$work" -name 'sample*.c' | wc -l)
if [ "$count" -lt 5 ]; then
    echo "expected at least 5 C samples in README.md, found $count"
    exit 1
fi
for sample in "$work"/sample*.c; do
    # shellcheck disable=SC2086
    "$cc" -std=c11 -Wall -Wextra -Werror -pedantic $flags -I"$src/include" -I"$generated" -c "$sample" \
        -o "${sample%.c}.o" || { echo "README sample does not compile:"; cat -n "$sample"; exit 1; }
done
for sample in "$work"/sample*.cpp; do
    [ -e "$sample" ] || { echo "expected a C++ sample in README.md"; exit 1; }
    # shellcheck disable=SC2086
    "$cxx" -std=c++20 -Wall -Wextra -Werror -pedantic $flags -I"$src/include" -I"$generated" \
        -c "$sample" -o "${sample%.cpp}.o" ||
        { echo "README sample does not compile:"; cat -n "$sample"; exit 1; }
    count=$((count + 1))
done
echo "$count README samples compile"
