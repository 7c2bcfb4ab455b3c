#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# The style and static checks of the library sources (the module folders; the public headers
# keep the hand-aligned layout of their reference comments and constants), warnings as errors:
#   - clang-format (.clang-format): every file formatted as the tool would format it;
#   - one comment style: "//" comments in the module sources (block comments are left to the
#     public headers' reference comments);
#   - clang-tidy (.clang-tidy): bugprone-*, performance-*, braces around every statement and no
#     function longer than 120 lines, with the compile commands of a build tree.
# Usage: scripts/lint.sh [build tree with compile_commands.json]   (default: build/lint)
set -uo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
. "$root/scripts/deps.sh"
nls_require_packages cmake clang-format clang-tidy || exit 1
cd "$root" || exit 1

tree=${1:-$root/build/lint}
if [ ! -f "$tree/compile_commands.json" ]; then
    cmake -S "$root" -B "$tree" -DNLS_BUILD_TESTS=OFF -DCMAKE_EXPORT_COMPILE_COMMANDS=ON \
        >/dev/null || exit 1
fi
modules=$(tr ';' ' ' <"$tree/nls_modules.txt")
sources=()
for mod in $modules; do
    for f in "$mod"/*.cpp "$mod"/*.h "$mod"/*/*.h; do
        [ -e "$f" ] && sources+=("$f")
    done
done
status=0

echo "=== clang-format"
if ! clang-format --dry-run -Werror "${sources[@]}"; then
    echo "clang-format: run clang-format -i on the files above"
    status=1
fi

echo "=== comment style"
blocks=$(grep -nE '^\s*/\*|[^/]/\*[^*]' "${sources[@]}" | grep -v 'SPDX-License-Identifier')
if [ -n "$blocks" ]; then
    echo "block comments in module sources (write // comments):"
    echo "$blocks"
    status=1
fi

echo "=== clang-tidy"
cpp=()
for f in "${sources[@]}"; do
    [[ "$f" == *.cpp ]] && cpp+=("$f")
done
if ! clang-tidy -p "$tree" --quiet "${cpp[@]}" >"$tree/clang-tidy.log" 2>&1; then
    grep -E 'warning:|error:' -A3 "$tree/clang-tidy.log"
    echo "clang-tidy reported findings (whole log: $tree/clang-tidy.log)"
    status=1
fi
[ $status -eq 0 ] && echo "lint: ${#sources[@]} library sources clean"
exit $status
