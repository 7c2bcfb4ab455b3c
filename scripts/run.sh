#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Builds nlsreport and runs it on a few locales. Locales that the machine lacks are generated
# with localedef into build/run/locales (LOCPATH), so no root is needed for them.
# Usage: scripts/run.sh [locale]...   (default: a sample of locales and one invalid name)
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
. "$root/scripts/deps.sh"
nls_require_packages cmake make g++ locales

dir="$root/build/run"
cmake -S "$root" -B "$dir" -DCMAKE_BUILD_TYPE=Release -DNLS_BUILD_TESTS=OFF >/dev/null
cmake --build "$dir" -j "$(nproc 2>/dev/null || echo 2)" --target nlsreport >/dev/null

locdir="$dir/locales"
mkdir -p "$locdir"
# name input charmap
sample=(
    "C.UTF-8 C UTF-8"
    "en_US.ISO-8859-1 en_US ISO-8859-1"
    "de_DE.ISO-8859-15 de_DE ISO-8859-15"
    "ja_JP.EUC-JP ja_JP EUC-JP"
    "ko_KR.EUC-KR ko_KR EUC-KR"
    "zh_CN.GBK zh_CN GBK"
    "zh_TW.BIG5 zh_TW BIG5"
    "ru_RU.KOI8-R ru_RU KOI8-R"
    "th_TH.TIS-620 th_TH TIS-620"
)
names=(C POSIX)
for entry in "${sample[@]}"; do
    read -r name input charmap <<<"$entry"
    if [ ! -d "$locdir/$name" ]; then
        # localedef may warn (and exit non-zero) about a locale it still writes: check the result.
        localedef --no-archive -c -i "$input" -f "$charmap" "$locdir/$name" >/dev/null 2>&1 || true
    fi
    names+=("$name")
done
names+=(xx_XX.NOT-A-LOCALE)

if [ $# -gt 0 ]; then
    names=("$@")
fi
LOCPATH="$locdir" "$dir/nlsreport" "${names[@]}"
