/* SPDX-License-Identifier: MIT */
// bench_charset.cpp - CONV_WChar16StrToUTF8 against iconv from UTF-16LE, and the cost of one
// IANACS_GetMibEnum lookup.

#include <benchmark/benchmark.h>

#include <iconv.h>

#include <cstdint>
#include <cstring>

#include <nlssupport/convlib.h>
#include <nlssupport/ianacs.h>

namespace {

constexpr int kUnits = 256;

// 256 units of mixed text: ASCII, Latin-1, Greek and CJK (no surrogates, so both sides read
// every unit as one character).
struct WideText {
    uint16_t units[kUnits + 1];
    WideText() {
        const uint16_t sample[] = {'H', 'e', 'l', 'l', 'o', ' ', 0xE9, 0xFC, ' ', 0x3B1, 0x3B2,
                                   ' ', 0x65E5, 0x672C, 0x8A9E, ' ', 'a', 'b', 'c', '1', '2'};
        for (int i = 0; i < kUnits; ++i)
            units[i] = sample[i % (sizeof sample / sizeof sample[0])];
        units[kUnits] = 0;
    }
};
const WideText gText;

void BM_ConvWChar16StrToUTF8(benchmark::State &state) {
    char out[kUnits * 3 + 8];
    uint32_t written = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(
            CONV_WChar16StrToUTF8(gText.units, kUnits, out, sizeof out, &written));
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * kUnits * 2);
}
BENCHMARK(BM_ConvWChar16StrToUTF8);

void BM_LibcIconvUTF16(benchmark::State &state) {
    iconv_t cd = iconv_open("UTF-8", "UTF-16LE");
    if (cd == reinterpret_cast<iconv_t>(-1)) {
        state.SkipWithError("iconv_open failed");
        return;
    }
    char out[kUnits * 3 + 8];
    for (auto _ : state) {
        char *in = reinterpret_cast<char *>(const_cast<uint16_t *>(gText.units));
        size_t inLeft = kUnits * 2;
        char *o = out;
        size_t outLeft = sizeof out;
        iconv(cd, nullptr, nullptr, nullptr, nullptr);
        benchmark::DoNotOptimize(iconv(cd, &in, &inLeft, &o, &outLeft));
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * kUnits * 2);
    iconv_close(cd);
}
BENCHMARK(BM_LibcIconvUTF16);

// Names as callers pass them: preferred names, aliases in mixed case, vendor names and misses.
const char *const kNames[16] = {"UTF-8",      "iso-8859-1", "ISO_8859-15", "windows-1252",
                                "Shift_JIS",  "EUC-KR",     "big5",        "KOI8-R",
                                "US-ASCII",   "latin1",     "cp850",       "TIS-620",
                                "no-such-set", "UTF-16LE",  "ibm037",      "x"};

void BM_IanacsGetMibEnum(benchmark::State &state) {
    int32_t mib = 0;
    int i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(IANACS_GetMibEnum(kNames[i++ & 15], &mib));
        benchmark::DoNotOptimize(mib);
    }
}
BENCHMARK(BM_IanacsGetMibEnum);

}  // namespace
