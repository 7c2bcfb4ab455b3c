/* SPDX-License-Identifier: MIT */
// bench_charset.cpp - CONV_WChar16StrToUTF8 against iconv from UTF-16LE on mixed, ASCII and
// mostly non-ASCII text, and the cost of one IANACS_GetMibEnum lookup.

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

// 256 units of plain ASCII, and 256 units of mostly non-ASCII text (Cyrillic and CJK words
// with spaces between them, one unit in five ASCII).
struct OtherTexts {
    uint16_t ascii[kUnits + 1];
    uint16_t nonAscii[kUnits + 1];
    OtherTexts() {
        const char sample[] = "The quick brown fox jumps over the lazy dog, 0123456789. ";
        for (int i = 0; i < kUnits; ++i)
            ascii[i] = static_cast<uint16_t>(sample[i % (sizeof sample - 1)]);
        ascii[kUnits] = 0;
        const uint16_t words[] = {0x041F, 0x0440, 0x0438, 0x0432, 0x0435, ' ', 0x043C,
                                  0x0438, 0x0440, 0x0443, ' ', 0x4E16, 0x754C, 0x60A8,
                                  0x597D, ' ', 0x0414, 0x043E, 0x043C, ' ', 0x6F22, 0x5B57,
                                  0x6587, 0x5316, ' '};
        for (int i = 0; i < kUnits; ++i)
            nonAscii[i] = words[i % (sizeof words / sizeof words[0])];
        nonAscii[kUnits] = 0;
    }
};
const OtherTexts gOther;

// The two sides on any 256-unit text.
void EncodeUtf8(benchmark::State &state, const uint16_t *units) {
    char out[kUnits * 3 + 8];
    uint32_t written = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(CONV_WChar16StrToUTF8(units, kUnits, out, sizeof out, &written));
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * kUnits * 2);
}

void IconvUtf8(benchmark::State &state, const uint16_t *units) {
    iconv_t cd = iconv_open("UTF-8", "UTF-16LE");
    if (cd == reinterpret_cast<iconv_t>(-1)) {
        state.SkipWithError("iconv_open failed");
        return;
    }
    char out[kUnits * 3 + 8];
    for (auto _ : state) {
        char *in = reinterpret_cast<char *>(const_cast<uint16_t *>(units));
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

void BM_ConvWChar16StrToUTF8(benchmark::State &state) {
    EncodeUtf8(state, gText.units);
}
BENCHMARK(BM_ConvWChar16StrToUTF8);

void BM_LibcIconvUTF16(benchmark::State &state) {
    IconvUtf8(state, gText.units);
}
BENCHMARK(BM_LibcIconvUTF16);

void BM_ConvWChar16StrToUTF8Ascii(benchmark::State &state) {
    EncodeUtf8(state, gOther.ascii);
}
BENCHMARK(BM_ConvWChar16StrToUTF8Ascii);

void BM_LibcIconvUTF16Ascii(benchmark::State &state) {
    IconvUtf8(state, gOther.ascii);
}
BENCHMARK(BM_LibcIconvUTF16Ascii);

void BM_ConvWChar16StrToUTF8NonAscii(benchmark::State &state) {
    EncodeUtf8(state, gOther.nonAscii);
}
BENCHMARK(BM_ConvWChar16StrToUTF8NonAscii);

void BM_LibcIconvUTF16NonAscii(benchmark::State &state) {
    IconvUtf8(state, gOther.nonAscii);
}
BENCHMARK(BM_LibcIconvUTF16NonAscii);

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
