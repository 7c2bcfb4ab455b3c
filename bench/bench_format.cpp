/* SPDX-License-Identifier: MIT */
// bench_format.cpp - GLIB_snprintf against the C library's snprintf on the same formats and
// arguments: integers, strings, a mix of conversions and one long string.

#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdio>

#include <nlssupport/glib.h>

namespace {

constexpr int kInputs = 64;

// Deterministic integers of every magnitude and both signs.
struct IntegerInputs {
    int32_t v[kInputs][4];
    IntegerInputs() {
        uint32_t x = 12345u;
        for (int i = 0; i < kInputs; ++i) {
            for (int j = 0; j < 4; ++j) {
                x = x * 1103515245u + 12345u;
                const uint32_t digits = (x >> 8) % 10u;  // 1..10 digits
                uint32_t limit = 1;
                for (uint32_t d = 0; d <= digits && limit < 1000000000u; ++d)
                    limit *= 10;
                int32_t value = static_cast<int32_t>((x >> 3) % limit);
                if (x & 0x10000u)
                    value = -value;
                v[i][j] = value;
            }
        }
    }
};
const IntegerInputs gIntegers;

const char *const kWords[] = {"alpha",   "be",      "gamma-delta", "epsilon", "zeta_eta_theta",
                              "iota",    "kappa",   "lambda mu",   "nu",      "xi omicron pi",
                              "rho",     "sigma",   "tau",         "upsilon", "phi chi psi",
                              "omega"};
constexpr int kWordCount = sizeof kWords / sizeof kWords[0];

void BM_GlibSnprintfIntegers(benchmark::State &state) {
    char buf[128];
    int i = 0;
    for (auto _ : state) {
        const int32_t *v = gIntegers.v[i++ & (kInputs - 1)];
        benchmark::DoNotOptimize(
            GLIB_snprintf(buf, sizeof buf - 1, "%d %d %d %d", v[0], v[1], v[2], v[3]));
        benchmark::ClobberMemory();
    }
}
BENCHMARK(BM_GlibSnprintfIntegers);

void BM_LibcSnprintfIntegers(benchmark::State &state) {
    char buf[128];
    int i = 0;
    for (auto _ : state) {
        const int32_t *v = gIntegers.v[i++ & (kInputs - 1)];
        benchmark::DoNotOptimize(std::snprintf(buf, sizeof buf, "%d %d %d %d", static_cast<int>(v[0]),
                                               static_cast<int>(v[1]), static_cast<int>(v[2]),
                                               static_cast<int>(v[3])));
        benchmark::ClobberMemory();
    }
}
BENCHMARK(BM_LibcSnprintfIntegers);

void BM_GlibSnprintfStrings(benchmark::State &state) {
    char buf[128];
    int i = 0;
    for (auto _ : state) {
        ++i;
        benchmark::DoNotOptimize(GLIB_snprintf(buf, sizeof buf - 1, "%s %s %s",
                                               kWords[i % kWordCount], kWords[(i + 5) % kWordCount],
                                               kWords[(i + 11) % kWordCount]));
        benchmark::ClobberMemory();
    }
}
BENCHMARK(BM_GlibSnprintfStrings);

void BM_LibcSnprintfStrings(benchmark::State &state) {
    char buf[128];
    int i = 0;
    for (auto _ : state) {
        ++i;
        benchmark::DoNotOptimize(std::snprintf(buf, sizeof buf, "%s %s %s", kWords[i % kWordCount],
                                               kWords[(i + 5) % kWordCount],
                                               kWords[(i + 11) % kWordCount]));
        benchmark::ClobberMemory();
    }
}
BENCHMARK(BM_LibcSnprintfStrings);

void BM_GlibSnprintfMixed(benchmark::State &state) {
    char buf[128];
    int i = 0;
    for (auto _ : state) {
        const int32_t *v = gIntegers.v[i & (kInputs - 1)];
        const char *w = kWords[i % kWordCount];
        ++i;
        benchmark::DoNotOptimize(GLIB_snprintf(buf, sizeof buf - 1, "%5d|%-10s|%08x|%c|%.3s|%%",
                                               v[0], w, static_cast<uint32_t>(v[1]),
                                               'A' + (i & 15), w));
        benchmark::ClobberMemory();
    }
}
BENCHMARK(BM_GlibSnprintfMixed);

void BM_LibcSnprintfMixed(benchmark::State &state) {
    char buf[128];
    int i = 0;
    for (auto _ : state) {
        const int32_t *v = gIntegers.v[i & (kInputs - 1)];
        const char *w = kWords[i % kWordCount];
        ++i;
        benchmark::DoNotOptimize(std::snprintf(buf, sizeof buf, "%5d|%-10s|%08x|%c|%.3s|%%",
                                               static_cast<int>(v[0]), w,
                                               static_cast<unsigned>(v[1]), 'A' + (i & 15), w));
        benchmark::ClobberMemory();
    }
}
BENCHMARK(BM_LibcSnprintfMixed);

// One "%s" of 200 bytes: the cost of copying a long body. Bytes processed are the 200 bytes
// written, so the console shows the throughput.
constexpr int kLongStringBytes = 200;

struct LongString {
    char text[kLongStringBytes + 1];
    LongString() {
        for (int i = 0; i < kLongStringBytes; ++i)
            text[i] = static_cast<char>('a' + i % 26);
        text[kLongStringBytes] = 0;
    }
};
const LongString gLongString;

void BM_GlibSnprintfLongString(benchmark::State &state) {
    char buf[kLongStringBytes + 56];
    for (auto _ : state) {
        benchmark::DoNotOptimize(GLIB_snprintf(buf, sizeof buf - 1, "%s", gLongString.text));
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * kLongStringBytes);
}
BENCHMARK(BM_GlibSnprintfLongString);

void BM_LibcSnprintfLongString(benchmark::State &state) {
    char buf[kLongStringBytes + 56];
    for (auto _ : state) {
        benchmark::DoNotOptimize(std::snprintf(buf, sizeof buf, "%s", gLongString.text));
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * kLongStringBytes);
}
BENCHMARK(BM_LibcSnprintfLongString);

}  // namespace
