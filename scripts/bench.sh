#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Builds the benchmarks in Release (build/bench), generates the locales of the whole-process
# comparison (build/bench/locales, used through LOCPATH), runs every benchmark with repetitions
# and writes the result table into docs/performance.md. Takes a few minutes; the first run also
# generates 30 locales with localedef.
# Usage: scripts/bench.sh [extra Google Benchmark options]...
set -euo pipefail
extra=("$@")
root=$(cd "$(dirname "$0")/.." && pwd)
. "$root/scripts/deps.sh"
nls_require_packages cmake make g++ libbenchmark-dev locales

dir="$root/build/bench"
jobs=$(nproc 2>/dev/null || echo 2)
cmake -S "$root" -B "$dir" -DCMAKE_BUILD_TYPE=Release -DNLS_BUILD_BENCH=ON -DNLS_BUILD_TESTS=OFF \
    >/dev/null
cmake --build "$dir" -j "$jobs" --target nls_bench nlsreport >/dev/null

# The 30 locales: C, POSIX and C.UTF-8 (under LOCPATH the C library looks for them there too)
# and 27 locales of as many code sets. Entries are "name source charmap".
locdir="$dir/locales"
mkdir -p "$locdir"
locales=(
    "C POSIX ANSI_X3.4-1968"
    "POSIX POSIX ANSI_X3.4-1968"
    "C.UTF-8 C UTF-8"
    "en_US.UTF-8 en_US UTF-8"
    "en_US.ISO-8859-1 en_US ISO-8859-1"
    "en_GB.ISO-8859-1 en_GB ISO-8859-1"
    "de_DE.ISO-8859-15 de_DE ISO-8859-15"
    "fr_FR.UTF-8 fr_FR UTF-8"
    "es_ES.UTF-8 es_ES UTF-8"
    "pl_PL.ISO-8859-2 pl_PL ISO-8859-2"
    "cs_CZ.ISO-8859-2 cs_CZ ISO-8859-2"
    "ru_RU.KOI8-R ru_RU KOI8-R"
    "ru_RU.CP1251 ru_RU CP1251"
    "ru_RU.ISO-8859-5 ru_RU ISO-8859-5"
    "uk_UA.KOI8-U uk_UA KOI8-U"
    "el_GR.ISO-8859-7 el_GR ISO-8859-7"
    "he_IL.ISO-8859-8 he_IL ISO-8859-8"
    "tr_TR.ISO-8859-9 tr_TR ISO-8859-9"
    "lt_LT.ISO-8859-13 lt_LT ISO-8859-13"
    "th_TH.TIS-620 th_TH TIS-620"
    "hy_AM.ARMSCII-8 hy_AM ARMSCII-8"
    "ka_GE.GEORGIAN-PS ka_GE GEORGIAN-PS"
    "tg_TJ.KOI8-T tg_TJ KOI8-T"
    "ja_JP.EUC-JP ja_JP EUC-JP"
    "ja_JP.UTF-8 ja_JP UTF-8"
    "ko_KR.EUC-KR ko_KR EUC-KR"
    "zh_CN.GBK zh_CN GBK"
    "zh_CN.GB18030 zh_CN GB18030"
    "zh_TW.BIG5 zh_TW BIG5"
    "zh_HK.BIG5-HKSCS zh_HK BIG5-HKSCS"
)
todo=()
for entry in "${locales[@]}"; do
    set -- $entry
    [ -d "$locdir/$1" ] || todo+=("$entry")
done
if [ ${#todo[@]} -gt 0 ]; then
    echo "Generating ${#todo[@]} locales into $locdir"
    printf '%s\n' "${todo[@]}" |
        xargs -P "$jobs" -L 1 sh -c \
            'localedef --no-archive -c -i "$1" -f "$2" "'"$locdir"'/$0" >/dev/null 2>&1 || true'
fi
count=0
for entry in "${locales[@]}"; do
    set -- $entry
    if [ -d "$locdir/$1" ]; then
        count=$((count + 1))
    else
        echo "warning: locale $1 could not be generated" >&2
    fi
done

# Repetitions interleaved in random order, so that both sides of a pair see the same machine
# load; the tables report the median of the repetitions.
table=$(mktemp)
trap 'rm -f "$table"' EXIT
"$dir/bench/nls_bench" --benchmark_repetitions=7 --benchmark_min_time=0.1 \
    --benchmark_enable_random_interleaving=true \
    --nls_locpath="$locdir" --nls_markdown="$table" ${extra[@]+"${extra[@]}"}

# docs/performance.md: the generated table between the markers, the hand-written text around it
# kept as it is.
doc="$root/docs/performance.md"
begin='<!-- bench:begin -->'
end='<!-- bench:end -->'
cpu=$(sed -n 's/^model name[[:space:]]*: //p' /proc/cpuinfo | head -n 1)
generated=$(mktemp)
{
    echo "$begin"
    echo
    echo "Measured $(date -u '+%Y-%m-%d %H:%M UTC') on ${cpu:-unknown CPU} ($(nproc) CPUs),"
    echo "$(uname -sr), $(ldd --version | head -n 1 | sed 's/^ldd //'), $(g++ --version | head -n 1)."
    echo "Medians of 7 interleaved repetitions; CPU time per call, wall-clock time for the"
    echo "whole-process row ($count locales). Ratio = our time / libc time (below 1: ours is faster)."
    echo
    echo "| Routine | Ours | libc | Ratio | Target | Result |"
    echo "|---|---|---|---|---|---|"
    cat "$table"
    echo
    echo "$end"
} >"$generated"
if [ -f "$doc" ] && grep -q "$begin" "$doc"; then
    awk -v gen="$generated" -v b="$begin" -v e="$end" '
        $0 == b { while ((getline line < gen) > 0) print line; skip = 1; next }
        $0 == e { skip = 0; next }
        !skip { print }' "$doc" >"$doc.tmp"
    mv "$doc.tmp" "$doc"
else
    { echo "# Performance"; echo; cat "$generated"; } >"$doc"
fi
rm -f "$generated"
echo "Wrote $doc"
