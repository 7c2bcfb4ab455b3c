/* SPDX-License-Identifier: MIT */
// bench_numtext.cpp - the text-to-number routines against strtol and strtod, and the decimal
// value codecs on their own. The C library side does what a caller needs to get the same answer:
// errno cleared, the end checked (trailing blanks skipped where the library allows them) and the
// 32-bit range tested.

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

// One short text ("12.5") and one long text (17 significant digits and an exponent), each read
// over and over: the two ends of what the conversion is given.
constexpr char kShortDouble[] = "12.5";
constexpr char kLongDouble[] = "-1.2345678901234567e-89";

void StringToDoubleOne(benchmark::State &state, const char *text) {
    double d = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(
            CONV_StringToDouble(&d, text, CONV_NUM_DECIMAL_POINT | CONV_NUM_EXPONENT, '.'));
        benchmark::DoNotOptimize(d);
    }
}

void StrtodOne(benchmark::State &state, const char *text) {
    double d = 0;
    for (auto _ : state) {
        char *end;
        errno = 0;
        d = std::strtod(text, &end);
        benchmark::DoNotOptimize(end == text || *end != 0 || errno != 0);
        benchmark::DoNotOptimize(d);
    }
}

void BM_ConvStringToDoubleShort(benchmark::State &state) {
    StringToDoubleOne(state, kShortDouble);
}
BENCHMARK(BM_ConvStringToDoubleShort);

void BM_LibcStrtodShort(benchmark::State &state) {
    StrtodOne(state, kShortDouble);
}
BENCHMARK(BM_LibcStrtodShort);

void BM_ConvStringToDoubleLong(benchmark::State &state) {
    StringToDoubleOne(state, kLongDouble);
}
BENCHMARK(BM_ConvStringToDoubleLong);

void BM_LibcStrtodLong(benchmark::State &state) {
    StrtodOne(state, kLongDouble);
}
BENCHMARK(BM_LibcStrtodLong);

// Decimal values: texts of 1 to 15 digits with and without a fraction and a sign, read into
// packed values, and the packed values written back as text. No C library peer: the time per
// call is reported.
struct DecimalInputs {
    char texts[16][24];
    uint8_t values[16][16];
    uint32_t precisions[16];
    uint32_t scales[16];
    bool valid = true;
    DecimalInputs() {
        uint32_t x = 4242u;
        for (int i = 0; i < 16; ++i) {
            x = x * 1103515245u + 12345u;
            const int intDigits = 1 + static_cast<int>((x >> 8) % 9u);
            const int fracDigits = static_cast<int>((x >> 16) % 7u);
            char *p = texts[i];
            if (x & 0x100000u)
                *p++ = '-';
            for (int d = 0; d < intDigits; ++d) {
                x = x * 1103515245u + 12345u;
                *p++ = static_cast<char>('1' + (x >> 16) % 9u);
            }
            *p++ = '.';
            for (int d = 0; d < fracDigits; ++d) {
                x = x * 1103515245u + 12345u;
                *p++ = static_cast<char>('0' + (x >> 16) % 10u);
            }
            *p = '\0';
            valid = valid && CONV_StringToDecimal(values[i], texts[i], sizeof values[i],
                                                  &precisions[i], &scales[i],
                                                  CONV_NUM_DECIMAL_POINT, '.') == CONV_OK;
        }
    }
};
const DecimalInputs gDecimals;

void BM_ConvStringToDecimal(benchmark::State &state) {
    uint8_t value[16];
    uint32_t precision = 0;
    uint32_t scale = 0;
    int i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(CONV_StringToDecimal(value, gDecimals.texts[i++ & 15],
                                                      sizeof value, &precision, &scale,
                                                      CONV_NUM_DECIMAL_POINT, '.'));
        benchmark::ClobberMemory();
    }
}
BENCHMARK(BM_ConvStringToDecimal);

void BM_ConvDecimalToString(benchmark::State &state) {
    if (!gDecimals.valid) {
        state.SkipWithError("a decimal input could not be read");
        return;
    }
    char text[32];
    uint32_t length = 0;
    int i = 0;
    for (auto _ : state) {
        const int k = i++ & 15;
        benchmark::DoNotOptimize(CONV_DecimalToString(text, gDecimals.values[k], sizeof text,
                                                      gDecimals.precisions[k], gDecimals.scales[k],
                                                      '.', CONV_DECIMAL_PACKED, &length));
        benchmark::ClobberMemory();
    }
}
BENCHMARK(BM_ConvDecimalToString);

}  // namespace
