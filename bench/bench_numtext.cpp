/* SPDX-License-Identifier: MIT */
// bench_numtext.cpp - the text-to-number routines against strtol and strtod. The C library side
// does what a caller needs to get the same answer: errno cleared, the end checked (trailing
// blanks skipped where the library allows them) and the 32-bit range tested.

#include <benchmark/benchmark.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include <nlssupport/convlib.h>

namespace {

constexpr int kInputs = 64;

// Decimal integer texts of every length, both signs, in two spellings: bare and with blanks
// around a signed number.
struct IntegerTexts {
    char bare[kInputs][16];
    char blanks[kInputs][24];
    IntegerTexts() {
        uint32_t x = 777u;
        for (int i = 0; i < kInputs; ++i) {
            x = x * 1103515245u + 12345u;
            const uint32_t digits = 1 + (x >> 8) % 10u;
            uint32_t limit = 1;
            for (uint32_t d = 0; d < digits && limit < 1000000000u; ++d)
                limit *= 10;
            int32_t value = static_cast<int32_t>((x >> 2) % limit);
            if (x & 0x20000u)
                value = -value;
            std::snprintf(bare[i], sizeof bare[i], "%d", static_cast<int>(value));
            std::snprintf(blanks[i], sizeof blanks[i], "  %+d  ", static_cast<int>(value));
        }
    }
};
const IntegerTexts gIntegers;

const char *const kDoubles[16] = {"3.14159",  "-2.5e10",     "12345.678", "1e-5",
                                  "0.1",      "-0.000123",   "6.02214076e23", "42",
                                  "999999.999", "1.7976931348623157e308", "2.2250738585072014e-308",
                                  "-7.25",    "100.5E+3",    "0.333333333333", "5e0", "-1"};

// strtol as a caller uses it in place of CONV_StringToInt32: the whole text, in 32-bit range.
inline bool LibcInt32(const char *text, int32_t *out, bool trailingBlanks) {
    char *end;
    errno = 0;
    const long v = std::strtol(text, &end, 10);
    if (trailingBlanks)
        while (*end == ' ')
            ++end;
    if (end == text || *end != 0 || errno != 0 || v < INT32_MIN || v > INT32_MAX)
        return false;
    *out = static_cast<int32_t>(v);
    return true;
}

void BM_ConvStringToInt32(benchmark::State &state) {
    int32_t v = 0;
    int i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(
            CONV_StringToInt32(&v, gIntegers.bare[i++ & (kInputs - 1)], 0, '.'));
        benchmark::DoNotOptimize(v);
    }
}
BENCHMARK(BM_ConvStringToInt32);

void BM_LibcStrtol(benchmark::State &state) {
    int32_t v = 0;
    int i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(LibcInt32(gIntegers.bare[i++ & (kInputs - 1)], &v, false));
        benchmark::DoNotOptimize(v);
    }
}
BENCHMARK(BM_LibcStrtol);

void BM_ConvStringToInt32Blanks(benchmark::State &state) {
    int32_t v = 0;
    int i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(CONV_StringToInt32(&v, gIntegers.blanks[i++ & (kInputs - 1)],
                                                    CONV_NUM_LEADING_BLANKS |
                                                        CONV_NUM_TRAILING_BLANKS,
                                                    '.'));
        benchmark::DoNotOptimize(v);
    }
}
BENCHMARK(BM_ConvStringToInt32Blanks);

void BM_LibcStrtolBlanks(benchmark::State &state) {
    int32_t v = 0;
    int i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(LibcInt32(gIntegers.blanks[i++ & (kInputs - 1)], &v, true));
        benchmark::DoNotOptimize(v);
    }
}
BENCHMARK(BM_LibcStrtolBlanks);

void BM_ConvStringToDouble(benchmark::State &state) {
    double d = 0;
    int i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(CONV_StringToDouble(
            &d, kDoubles[i++ & 15], CONV_NUM_DECIMAL_POINT | CONV_NUM_EXPONENT, '.'));
        benchmark::DoNotOptimize(d);
    }
}
BENCHMARK(BM_ConvStringToDouble);

void BM_LibcStrtod(benchmark::State &state) {
    double d = 0;
    int i = 0;
    for (auto _ : state) {
        const char *text = kDoubles[i++ & 15];
        char *end;
        errno = 0;
        d = std::strtod(text, &end);
        benchmark::DoNotOptimize(end == text || *end != 0 || errno != 0);
        benchmark::DoNotOptimize(d);
    }
}
BENCHMARK(BM_LibcStrtod);

}  // namespace
