#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Configures, builds and runs every test in three configurations, the concurrency tests under
# ThreadSanitizer, then smoke-runs the fuzzers:
#   x86_64   native build
#   i386     32-bit build (-m32), GoogleTest compiled for -m32 from Debian's googletest sources
#   asan     native build under AddressSanitizer + UndefinedBehaviorSanitizer
#   tsan     native build under ThreadSanitizer: the concurrency tests only (see below)
#   fuzz     every libFuzzer target for about 10 seconds (scripts/fuzz.sh --smoke, clang)
# Build trees go to build/test-<configuration> (build/fuzz for the fuzzers). Ends with CTest's
# summary line of each configuration; exits non-zero when any configuration fails.
# Usage: scripts/test-all.sh [x86_64|i386|asan|tsan|fuzz]...   (default: all five)
set -uo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
. "$root/scripts/deps.sh"
nls_require_packages cmake make g++ g++-multilib googletest libgtest-dev locales valgrind clang \
    libclang-rt-14-dev clang-format clang-tidy doxygen dpkg-dev debhelper lintian abigail-tools \
    libglib2.0-dev file pkg-config || exit 1

jobs=$(nproc 2>/dev/null || echo 2)
configs=("$@")
[ ${#configs[@]} -eq 0 ] && configs=(x86_64 i386 asan tsan fuzz)

export ASAN_OPTIONS=detect_leaks=1:abort_on_error=0
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
# Any ThreadSanitizer report ends the test process with a failure.
export TSAN_OPTIONS=halt_on_error=1:second_deadlock_stack=1

status=0
summaries=()
fuzzline=""
for cfg in "${configs[@]}"; do
    if [ "$cfg" = fuzz ]; then
        echo "=== fuzz: smoke run"
        mkdir -p "$root/build"
        "$root/scripts/fuzz.sh" --smoke 2>&1 | tee "$root/build/fuzz-smoke.log"
        rc=${PIPESTATUS[0]}
        [ "$rc" -ne 0 ] && status=1
        fuzzline="fuzz smoke, $(tail -n 1 "$root/build/fuzz-smoke.log")"
        continue
    fi
    targets=()
    selection=()
    case "$cfg" in
        x86_64) flags=() ;;
        i386)   flags=(-DNLS_M32=ON) ;;
        asan)   flags=(-DNLS_SANITIZE=ON) ;;
        # ThreadSanitizer slows the code down many times over and does not mix with the tests
        # that replace malloc or run under valgrind. Only what it is there for, the tests
        # labelled "concurrency" (tests/concurrency/), is built and run, to keep CI time down;
        # every other test runs in the three configurations above.
        tsan)   flags=(-DNLS_TSAN=ON)
                targets=(--target concurrency_test)
                selection=(-L concurrency) ;;
        *) echo "unknown configuration: $cfg" >&2; exit 2 ;;
    esac
    dir="$root/build/test-$cfg"
    log="$dir/ctest.log"
    echo "=== $cfg: configure and build"
    if ! cmake -S "$root" -B "$dir" -DCMAKE_BUILD_TYPE=RelWithDebInfo "${flags[@]}" >/dev/null ||
       ! cmake --build "$dir" -j "$jobs" "${targets[@]}"; then
        echo "=== $cfg: BUILD FAILED"
        summaries+=("$cfg:" "build failed")
        status=1
        continue
    fi
    echo "=== $cfg: test"
    ctest --test-dir "$dir" -j "$jobs" "${selection[@]}" --output-on-failure --timeout 600 2>&1 |
        tee "$log"
    rc=${PIPESTATUS[0]}
    [ "$rc" -ne 0 ] && status=1
    summaries+=("$cfg:" "$(grep -E 'tests passed|tests failed' "$log" | tail -n 1)")
done

echo
echo "=== Summary"
[ -n "$fuzzline" ] && echo "$fuzzline"
for line in "${summaries[@]}"; do
    echo "$line"
done
exit $status
