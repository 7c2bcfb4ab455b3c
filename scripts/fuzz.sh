#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Builds the libFuzzer targets (fuzz/fuzz_*.cpp) with clang in build/fuzz and runs each one for a
# bounded time, one after the other, on a scratch copy of its seed corpus (fuzz/corpus/<target>/
# is never written). Prints one summary line per target and exits non-zero when a target finds
# a crash (its input is kept in build/fuzz/artifacts/<target>/) or the build fails.
# Usage: scripts/fuzz.sh --smoke [target...]            about 10 s per target
#        scripts/fuzz.sh --long [seconds] [target...]   default 300 s per target
set -uo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
. "$root/scripts/deps.sh"
nls_require_packages cmake make clang libclang-rt-14-dev || exit 1

seconds=10
case "${1:-}" in
    --smoke) shift ;;
    --long)
        shift
        seconds=300
        if [[ "${1:-}" =~ ^[0-9]+$ ]]; then
            seconds=$1
            shift
        fi
        ;;
    *) echo "usage: $0 --smoke [target...] | --long [seconds] [target...]" >&2; exit 2 ;;
esac

targets=("$@")
if [ ${#targets[@]} -eq 0 ]; then
    for src in "$root"/fuzz/fuzz_*.cpp; do
        targets+=("$(basename "$src" .cpp)")
    done
fi

dir="$root/build/fuzz"
echo "=== fuzz: configure and build (clang) in $dir"
if ! CC=clang CXX=clang++ cmake -S "$root" -B "$dir" -DNLS_FUZZ=ON -DNLS_BUILD_TESTS=OFF \
        -DCMAKE_BUILD_TYPE=RelWithDebInfo >"$dir.configure.log" 2>&1; then
    cat "$dir.configure.log"
    echo "=== fuzz: CONFIGURE FAILED"
    exit 1
fi
if ! cmake --build "$dir" -j 2 --target "${targets[@]}"; then
    echo "=== fuzz: BUILD FAILED"
    exit 1
fi

export ASAN_OPTIONS=detect_leaks=1:abort_on_error=0:allocator_may_return_null=0
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1

status=0
failed=0
summaries=()
for t in "${targets[@]}"; do
    corpus="$dir/corpus/$t"
    artifacts="$dir/artifacts/$t"
    log="$dir/logs/$t.log"
    mkdir -p "$corpus" "$artifacts" "$dir/logs"
    if [ -d "$root/fuzz/corpus/$t" ]; then
        cp -n "$root/fuzz/corpus/$t"/* "$corpus"/ 2>/dev/null
    fi
    echo "=== fuzz: $t for ${seconds} s"
    "$dir/fuzz/$t" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 -max_len=1024 \
        -print_final_stats=1 -artifact_prefix="$artifacts/" "$corpus" >"$log" 2>&1
    rc=$?
    runs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log" | tail -n 1)
    [ -n "$runs" ] || runs=$(sed -n 's/.*Done \([0-9]*\) runs.*/\1/p' "$log" | tail -n 1)
    [ -n "$runs" ] || runs='?'
    if [ $rc -eq 0 ]; then
        summaries+=("fuzz $t: ${seconds} s, $runs executions, no finding")
    else
        summaries+=("fuzz $t: FAILED (exit $rc) after $runs executions; input in $artifacts/, log $log")
        grep -m 5 -E 'ERROR|runtime error|SUMMARY|deadly signal' "$log"
        failed=$((failed + 1))
        status=1
    fi
    echo "${summaries[-1]}"
done

echo "=== fuzz summary"
printf '%s\n' "${summaries[@]}"
echo "fuzz: $(( ${#targets[@]} - failed )) passed, $failed failed"
exit $status
