#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Line and branch coverage of the library by the test suite.
#   1. configures build/coverage with -DNLS_COVERAGE=ON (--coverage -O0 everywhere),
#   2. builds it and runs every CTest entry except the valgrind ones (valgrind adds nothing to
#      coverage and is slow on an -O0 build),
#   3. runs gcovr over the library sources only (errlib, memmgr, ianacs, nls, glib, convlib; not
#      tests/, bench/, fuzz/ nor GoogleTest) and prints the line and branch totals, overall and per
#      module.
# Reports written:
#   build/coverage/coverage.txt          per-file line coverage with the uncovered line numbers
#   build/coverage/coverage-branches.txt per-file branch coverage
#   build/coverage/html/index.html       annotated sources
#   build/coverage/coverage.json         gcovr's raw data (input of the per-module summaries)
# Usage: scripts/coverage.sh [--no-build]   (--no-build: only re-run the tests and the report)
set -uo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
. "$root/scripts/deps.sh"
nls_require_packages cmake make g++ googletest libgtest-dev locales gcovr libglib2.0-dev pkg-config || exit 1

jobs=$(nproc 2>/dev/null || echo 2)
dir="$root/build/coverage"

if [ "${1:-}" != "--no-build" ]; then
    echo "=== configure and build $dir"
    cmake -S "$root" -B "$dir" -DCMAKE_BUILD_TYPE=Debug -DNLS_COVERAGE=ON >/dev/null || exit 1
    cmake --build "$dir" -j "$jobs" || exit 1
fi
# The library's modules, as the build lists them.
read -r -a modules <<<"$(tr ';' ' ' <"$dir/nls_modules.txt")"

# Counters of an earlier run would add up with this one.
find "$dir" -name '*.gcda' -delete

echo "=== test"
ctest --test-dir "$dir" -j "$jobs" -E '\.valgrind$' --timeout 900 >"$dir/ctest.log" 2>&1
test_status=$?
grep -E 'tests passed|tests failed' "$dir/ctest.log" | tail -n 1
[ $test_status -ne 0 ] && grep -A200 'The following tests FAILED' "$dir/ctest.log"

# Library sources only: the module folders; headers in include/ are counted where they have
# inline code (none at present).
filters=()
for mod in "${modules[@]}"; do
    filters+=(--filter "$root/$mod/")
done
common=(--root "$root" --object-directory "$dir" --exclude-unreachable-branches
        --exclude-throw-branches)

echo "=== gcovr"
cd "$root" || exit 1
gcovr "${common[@]}" "${filters[@]}" --json "$dir/coverage.json" || exit 1
gcovr --root "$root" -a "$dir/coverage.json" --txt "$dir/coverage.txt" || exit 1
gcovr --root "$root" -a "$dir/coverage.json" --txt "$dir/coverage-branches.txt" --branches ||
    exit 1
mkdir -p "$dir/html"
gcovr --root "$root" -a "$dir/coverage.json" --html-details "$dir/html/index.html" || exit 1

# One summary line per module: lines and branches.
summary() {
    local label=$1
    shift
    local out
    out=$(gcovr --root "$root" -a "$dir/coverage.json" "$@" --print-summary -o /dev/null)
    printf '%-8s %s   %s\n' "$label" \
        "$(grep '^lines:' <<<"$out" | sed 's/^lines: *//')" \
        "$(grep '^branches:' <<<"$out" | sed 's/^branches: *//')"
}
echo
echo "=== Coverage of the library (lines   branches)"
for mod in "${modules[@]}"; do
    summary "$mod" --filter "$root/$mod/"
done
summary "total" "${filters[@]}"
echo
echo "Reports: $dir/coverage.txt, $dir/coverage-branches.txt, $dir/html/index.html"
exit $test_status
